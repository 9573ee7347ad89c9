// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "deck/Deck.h"

#include <QLineEdit>

namespace kalvo {

/// The floating text box `Text1` itself: a line edit that leaves the deck's shortcuts alone, starts with its caret
/// ahead of the text and takes the characters of a card only. Where it lies and what its keys do is decided by the main
/// screen.
class EditorBox : public QLineEdit
{
    Q_OBJECT

public:
    explicit EditorBox(QWidget* parent = nullptr);

    /// Fills the box without telling anybody; the caret goes ahead of the first character. Characters that no card
    /// takes stay when they were in the cell already.
    void fill(const QString& text);
    void setTint(EditBox::Tint tint);
    EditBox::Tint tint() const { return m_tint; }
    /// The cell's font and colour.
    void setLook(const QFont& font, const QColor& text);

Q_SIGNALS:
    /// Ahead of the line edit's own handling; who accepts the event takes it.
    void keyInBox(QKeyEvent* key);
    void mousePressedInBox();
    void doubleClicked();
    void menuAsked(const QPoint& globalPoint);
    void focusChanged(bool hasFocus);
    void toolTipAsked();
    /// The user changed the text; `fill` does not tell.
    void typed();

protected:
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    EditBox::Tint m_tint = EditBox::Tint::AtRest;
    QColor m_textColor = Qt::black;
    QString m_foreign; ///< characters of the filled text that could not be typed
    friend class CardCharacters;
};

} // namespace kalvo
