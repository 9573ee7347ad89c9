// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/LargeTextView.h"

#include "platform/DarkPaper.h"

#include <QEvent>
#include <QFontDatabase>
#include <QFontMetricsF>
#include <QGuiApplication>
#include <QPaintEvent>
#include <QPainter>
#include <QScrollBar>

#include <algorithm>
#include <cmath>
#include <limits>

namespace kalvo {

namespace {

constexpr int kMargin = 4; ///< pixels at the left of the text

int asInt(qsizetype value)
{
    return static_cast<int>(std::clamp<qsizetype>(value, 0, std::numeric_limits<int>::max()));
}

/// Characters that have no picture are shown as blanks, each in a cell of its own.
QString shownText(const QByteArray& bytes)
{
    QString text = QString::fromLatin1(bytes);
    for (QChar& c : text)
        if (c.unicode() < 0x20 || (c.unicode() >= 0x7F && c.unicode() < 0xA0))
            c = u' ';
    return text;
}

} // namespace

QFont fixedPitchFont(double points)
{
    QFont font = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    font.setStyleHint(QFont::Monospace);
    font.setFixedPitch(true);
    font.setPointSizeF(points);
    return font;
}

LargeTextView::LargeTextView(QWidget* parent) : QAbstractScrollArea(parent)
{
    setFont(fixedPitchFont(8.25));
    setFocusPolicy(Qt::StrongFocus);
    viewport()->setCursor(Qt::IBeamCursor);
    viewport()->setBackgroundRole(QPalette::Base);
    viewport()->setAutoFillBackground(true);
    verticalScrollBar()->setSingleStep(1);
    horizontalScrollBar()->setSingleStep(4);
    measure();
}

LargeTextView::~LargeTextView() = default;

// -- Text ------------------------------------------------------------------------------------------------------------

void LargeTextView::setText(TextBuffer text)
{
    m_caret = m_anchor = SelStart();
    m_text = std::move(text);
    refresh();
}

void LargeTextView::refresh()
{
    m_caret = std::clamp<qsizetype>(m_caret, 0, m_text.length());
    m_anchor = std::clamp<qsizetype>(m_anchor, 0, m_text.length());
    m_wishedColumn = cellOf(m_caret).column;
    measure();
    viewport()->update();
}

void LargeTextView::setPlaceholder(const QString& words)
{
    m_placeholder = words;
    viewport()->update();
}

void LargeTextView::measure()
{
    const QFontMetricsF metrics(font());
    // Over many characters, because the width of one may be rounded.
    m_cellWidth = std::max(1.0, metrics.horizontalAdvance(QString(100, u'0')) / 100.0);
    m_cellHeight = std::max(1, static_cast<int>(std::ceil(metrics.height())));
    m_ascent = static_cast<int>(std::ceil(metrics.ascent()));
    const int columns = static_cast<int>((viewport()->width() - kMargin) / m_cellWidth);
    verticalScrollBar()->setPageStep(linesPerPage());
    verticalScrollBar()->setRange(0, asInt(m_text.lineCount() - linesPerPage()));
    horizontalScrollBar()->setPageStep(std::max(1, columns));
    horizontalScrollBar()->setRange(0, asInt(m_text.longestLine() + 1 - columns));
}

// -- Selection -------------------------------------------------------------------------------------------------------

void LargeTextView::setSelStart(qsizetype position)
{
    select(position, 0);
}

void LargeTextView::setSelLength(qsizetype count)
{
    m_anchor = SelStart();
    m_caret = std::clamp<qsizetype>(m_anchor + std::max<qsizetype>(count, 0), 0, m_text.length());
    viewport()->update();
}

void LargeTextView::select(qsizetype start, qsizetype count)
{
    moveCaret(start, false);
    setSelLength(count);
}

QString LargeTextView::SelText() const
{
    return QString::fromLatin1(m_text.mid(SelStart(), SelLength()));
}

void LargeTextView::moveCaret(qsizetype position, bool selects)
{
    m_caret = std::clamp<qsizetype>(position, 0, m_text.length());
    if (!selects)
        m_anchor = m_caret;
    m_wishedColumn = cellOf(m_caret).column;
    showCaret();
    viewport()->update();
}

LargeTextView::Cell LargeTextView::cellOf(qsizetype position) const
{
    const qsizetype line = m_text.lineFromChar(position);
    return {line, std::clamp<qsizetype>(position - m_text.lineStart(line), 0, m_text.lineLength(line))};
}

qsizetype LargeTextView::positionOf(qsizetype line, qsizetype column) const
{
    line = std::clamp<qsizetype>(line, 0, m_text.lineCount() - 1);
    return m_text.lineStart(line) + std::clamp<qsizetype>(column, 0, m_text.lineLength(line));
}

qsizetype LargeTextView::positionAt(const QPoint& point) const
{
    const auto row = static_cast<qsizetype>(std::floor(static_cast<double>(point.y()) / m_cellHeight));
    const double column = std::round((point.x() - kMargin) / m_cellWidth) + horizontalScrollBar()->value();
    return positionOf(topLine() + row, static_cast<qsizetype>(std::max(column, 0.0)));
}

void LargeTextView::showCaret()
{
    const Cell cell = cellOf(m_caret);
    const qsizetype page = linesPerPage();
    if (cell.line < topLine())
        setTopLine(cell.line);
    else if (cell.line >= topLine() + page)
        setTopLine(cell.line - page + 1);
    QScrollBar& across = *horizontalScrollBar();
    const qsizetype columns = across.pageStep();
    if (cell.column < across.value())
        across.setValue(cell.column < columns ? 0
                                              : asInt(cell.column)); // from the line's start where that shows it too
    else if (cell.column >= across.value() + columns)
        across.setValue(asInt(cell.column - columns + 1));
}

// -- Scrolling -------------------------------------------------------------------------------------------------------

void LargeTextView::setTopLine(qsizetype line)
{
    verticalScrollBar()->setValue(asInt(line));
}

qsizetype LargeTextView::topLine() const
{
    return verticalScrollBar()->value();
}

int LargeTextView::linesPerPage() const
{
    return std::max(1, viewport()->height() / m_cellHeight);
}

void LargeTextView::scrollContentsBy(int, int dy)
{
    viewport()->update();
    if (dy != 0)
        Q_EMIT topLineChanged(topLine());
}

void LargeTextView::resizeEvent(QResizeEvent* event)
{
    QAbstractScrollArea::resizeEvent(event);
    measure();
}

void LargeTextView::changeEvent(QEvent* event)
{
    QAbstractScrollArea::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) {
        const qsizetype top = topLine();
        measure();
        setTopLine(top);
        viewport()->update();
    }
}

// -- Painting --------------------------------------------------------------------------------------------------------

void LargeTextView::setMarked(std::optional<TextNeedle> needle)
{
    m_marked = std::move(needle);
    viewport()->update();
}

double LargeTextView::xOf(qsizetype column) const
{
    return kMargin + static_cast<double>(column - horizontalScrollBar()->value()) * m_cellWidth;
}

void LargeTextView::paintEvent(QPaintEvent* event)
{
    QPainter painter(viewport());
    painter.setFont(font());
    if (m_text.isEmpty() && !m_placeholder.isEmpty()) {
        painter.setFont(QGuiApplication::font());
        painter.setPen(palette().color(QPalette::PlaceholderText));
        painter.drawText(viewport()->rect().adjusted(20, 20, -20, -20), Qt::AlignCenter | Qt::TextWordWrap,
                         m_placeholder);
        return;
    }
    const int first = event->rect().top() / m_cellHeight;
    const int last = event->rect().bottom() / m_cellHeight;
    for (int row = first; row <= last && topLine() + row < m_text.lineCount(); ++row)
        paintLine(painter, topLine() + row, row * m_cellHeight);
    if (!hasFocus())
        return;
    const Cell caret = cellOf(m_caret);
    const int top = static_cast<int>(std::clamp<qsizetype>(caret.line - topLine(), -1, 10'000)) * m_cellHeight;
    painter.fillRect(QRectF(xOf(caret.column), top, 1.0, m_cellHeight), palette().color(QPalette::Text));
}

/// Draws the cells in the window alone, which keeps a line of megabytes as cheap as any other.
void LargeTextView::paintLine(QPainter& painter, qsizetype line, int top)
{
    const qsizetype left = horizontalScrollBar()->value();
    const qsizetype columns = static_cast<qsizetype>(viewport()->width() / m_cellWidth) + 2;
    const qsizetype length = m_text.lineLength(line);
    // Matches may begin left of the window.
    const qsizetype ahead = m_marked ? std::min(left, m_marked->size()) : 0;
    const qsizetype behind = m_marked ? m_marked->size() : 0;
    const qsizetype from = std::min(left - ahead, length);
    const QByteArray bytes =
        m_text.mid(m_text.lineStart(line) + from, std::min(length - from, ahead + columns + behind));
    if (m_marked)
        paintMarks(painter, bytes, top);
    const QString shown = shownText(bytes.mid(std::min(ahead, bytes.size()), columns));
    painter.setPen(palette().color(QPalette::Text));
    drawCells(painter, shown, left, left + shown.size(), top);
    paintSelection(painter, shown, line, top);
}

void LargeTextView::paintMarks(QPainter& painter, const QByteArray& line, int top) const
{
    const qsizetype left = horizontalScrollBar()->value();
    const qsizetype start = left - std::min(left, m_marked->size());
    const QColor mark = hasDarkPaper(palette()) ? QColor(110, 84, 0) : QColor(255, 222, 110);
    std::string_view rest(line.constData(), static_cast<size_t>(line.size()));
    for (qsizetype at = 0; (at = m_marked->findIn(rest)) >= 0;) {
        const qsizetype column = start + line.size() - static_cast<qsizetype>(rest.size()) + at;
        painter.fillRect(QRectF(xOf(column), top, m_cellWidth * static_cast<double>(m_marked->size()), m_cellHeight),
                         mark);
        rest.remove_prefix(static_cast<size_t>(at + m_marked->size()));
    }
}

void LargeTextView::drawCells(QPainter& painter, const QString& shown, qsizetype from, qsizetype to, int top) const
{
    const qsizetype left = horizontalScrollBar()->value();
    painter.drawText(QPointF(xOf(from), top + m_ascent), shown.mid(from - left, to - from));
}

void LargeTextView::paintSelection(QPainter& painter, const QString& shown, qsizetype line, int top) const
{
    const qsizetype start = m_text.lineStart(line);
    const qsizetype end = line + 1 < m_text.lineCount() ? m_text.lineStart(line + 1) : m_text.length();
    const qsizetype from = std::max(SelStart(), start);
    const qsizetype to = std::min(SelStart() + SelLength(), end);
    if (from >= to)
        return;
    const qsizetype left = horizontalScrollBar()->value();
    const qsizetype length = m_text.lineLength(line);
    // The line end is one cell, so that a selected empty line can be seen.
    const qsizetype firstCell = std::max(std::min(from - start, length), left);
    const qsizetype lastCell = to - start > length ? length + 1 : to - start;
    if (lastCell <= firstCell)
        return;
    const QPalette::ColorGroup group = hasFocus() ? QPalette::Active : QPalette::Inactive;
    const QRectF area(xOf(firstCell), top, std::min(xOf(lastCell), viewport()->width() + 1.0) - xOf(firstCell),
                      m_cellHeight);
    painter.fillRect(area, palette().color(group, QPalette::Highlight));
    painter.setPen(palette().color(group, QPalette::HighlightedText));
    drawCells(painter, shown, firstCell, std::min(lastCell, left + shown.size()), top);
}

} // namespace kalvo
