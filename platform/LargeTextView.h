// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/TextBuffer.h"

#include <QAbstractScrollArea>
#include <QBasicTimer>
#include <QPoint>
#include <QString>

#include <algorithm>
#include <optional>

namespace kalvo {

/// Shows a text of any length that is read and not edited: one character a cell in a font of fixed pitch, no wrapping.
/// Only the lines in the window are ever drawn, so that a report of 100 MB is as quick as one of a page.
///
/// Positions and lines count from 0. `SelStart` is where the selection begins, or the caret stands; a position between
/// the two characters of a line end is shown behind the line.
class LargeTextView : public QAbstractScrollArea
{
    Q_OBJECT

public:
    explicit LargeTextView(QWidget* parent = nullptr);
    ~LargeTextView() override;

    /// Takes a new text. Caret and first line shown stay where the new text still has them; nothing is selected.
    void setText(TextBuffer text);
    const TextBuffer& text() const { return m_text; }
    /// The text for a change in place; call `refresh` when it is done.
    TextBuffer& editableText() { return m_text; }
    /// Takes in that the text has changed or another font is set.
    void refresh();
    /// Said in the middle of the window while the text is empty.
    void setPlaceholder(const QString& words);

    qsizetype SelStart() const { return std::min(m_anchor, m_caret); }
    qsizetype SelLength() const { return std::max(m_anchor, m_caret) - SelStart(); }
    /// Moves the caret and selects nothing; brings it into the window. Positions outside give the nearest one.
    void setSelStart(qsizetype position);
    /// Stretches the selection from SelStart on.
    void setSelLength(qsizetype count);
    /// Both, with the start of the selection in the window.
    void select(qsizetype start, qsizetype count);
    /// The selected text; empty for none.
    QString SelText() const;

    /// The line that stands at the top of the window; near the end of the text the last page is shown instead.
    void setTopLine(qsizetype line);
    qsizetype topLine() const;
    /// Whole lines in the window, at least 1.
    int linesPerPage() const;

    /// Every match of this text is marked wherever it comes into the window; none marks nothing.
    void setMarked(std::optional<TextNeedle> needle);

Q_SIGNALS:
    /// The pop-up menu is wanted, at a point of the whole screen.
    void contextMenuAsked(const QPoint& globalPoint);
    void topLineChanged(qsizetype line);

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void timerEvent(QTimerEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;

private:
    struct Cell
    {
        qsizetype line = 0;
        qsizetype column = 0;
    };
    void measure();
    void moveCaret(qsizetype position, bool selects);
    void moveByLines(qsizetype lines, bool selects);
    void moveByCharacter(bool forward, bool selects);
    bool moveByKey(const QKeyEvent& event, bool selects);
    void showCaret();
    Cell cellOf(qsizetype position) const;
    qsizetype positionAt(const QPoint& point) const;
    qsizetype positionOf(qsizetype line, qsizetype column) const;
    void paintLine(QPainter& painter, qsizetype line, int top);
    void paintMarks(QPainter& painter, const QByteArray& line, int top) const;
    void paintSelection(QPainter& painter, const QString& shown, qsizetype line, int top) const;
    void drawCells(QPainter& painter, const QString& shown, qsizetype from, qsizetype to, int top) const;
    double xOf(qsizetype column) const;

    TextBuffer m_text;
    QString m_placeholder;
    std::optional<TextNeedle> m_marked;
    qsizetype m_anchor = 0;
    qsizetype m_caret = 0;
    qsizetype m_wishedColumn = 0; ///< of moves up and down, which pass shorter lines
    double m_cellWidth = 8.0;     ///< pixels
    int m_cellHeight = 16;
    int m_ascent = 12;
    bool m_isDragging = false;
    QPoint m_dragPoint;
    QBasicTimer m_dragTimer;
};

/// The system's font of fixed pitch: reports and cards are read by their columns.
QFont fixedPitchFont(double points);

} // namespace kalvo
