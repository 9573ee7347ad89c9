// SPDX-License-Identifier: GPL-3.0-or-later
// Keys and mouse of the view of long texts.
#include "platform/LargeTextView.h"

#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QScrollBar>
#include <QTimerEvent>

#include <algorithm>

namespace kalvo {

namespace {

constexpr int kDragStepMs = 40;

/// Parts of a word as an engineer reads them: numbers with their point, names with their digits.
bool isWordPart(char c)
{
    const auto code = static_cast<unsigned char>(c);
    return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '.' || c == '-' ||
           c == '_' || code >= 0xC0;
}

} // namespace

// -- Keys ------------------------------------------------------------------------------------------------------------

void LargeTextView::keyPressEvent(QKeyEvent* event)
{
    if (event->matches(QKeySequence::SelectAll)) {
        m_anchor = 0;
        m_caret = m_text.length();
        viewport()->update();
        return;
    }
    if (!moveByKey(*event, event->modifiers() & Qt::ShiftModifier))
        QAbstractScrollArea::keyPressEvent(event);
}

bool LargeTextView::moveByKey(const QKeyEvent& event, bool selects)
{
    const bool far = event.modifiers() & Qt::ControlModifier;
    const Cell caret = cellOf(m_caret);
    switch (event.key()) {
    case Qt::Key_Left:
    case Qt::Key_Right:
        moveByCharacter(event.key() == Qt::Key_Right, selects);
        return true;
    case Qt::Key_Up:
    case Qt::Key_Down: {
        const int step = event.key() == Qt::Key_Up ? -1 : 1;
        if (far)
            verticalScrollBar()->setValue(verticalScrollBar()->value() + step);
        else
            moveByLines(step, selects);
        return true;
    }
    case Qt::Key_PageUp:
    case Qt::Key_PageDown: {
        const int page = std::max(1, linesPerPage() - 1);
        const int step = event.key() == Qt::Key_PageUp ? -page : page;
        verticalScrollBar()->setValue(verticalScrollBar()->value() + step);
        moveByLines(step, selects);
        return true;
    }
    case Qt::Key_Home:
        moveCaret(far ? 0 : positionOf(caret.line, 0), selects);
        return true;
    case Qt::Key_End:
        moveCaret(far ? m_text.length() : positionOf(caret.line, m_text.lineLength(caret.line)), selects);
        return true;
    default:
        return false;
    }
}

void LargeTextView::moveByCharacter(bool forward, bool selects)
{
    if (SelLength() > 0 && !selects) {
        moveCaret(forward ? SelStart() + SelLength() : SelStart(), false);
        return;
    }
    const Cell caret = cellOf(m_caret);
    if (forward)
        moveCaret(caret.column < m_text.lineLength(caret.line) ? m_caret + 1
                  : caret.line + 1 < m_text.lineCount()        ? m_text.lineStart(caret.line + 1)
                                                               : m_text.length(),
                  selects);
    else
        moveCaret(caret.column > 0 ? m_text.lineStart(caret.line) + caret.column - 1
                  : caret.line > 0 ? positionOf(caret.line - 1, m_text.lineLength(caret.line - 1))
                                   : 0,
                  selects);
}

void LargeTextView::moveByLines(qsizetype lines, bool selects)
{
    const qsizetype wished = m_wishedColumn;
    const qsizetype line = cellOf(m_caret).line + lines;
    moveCaret(positionOf(line, wished), selects);
    m_wishedColumn = wished;
}

// -- Mouse -----------------------------------------------------------------------------------------------------------

void LargeTextView::mousePressEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton)
        return;
    m_isDragging = true;
    m_dragPoint = event->pos();
    moveCaret(positionAt(event->pos()), event->modifiers() & Qt::ShiftModifier);
}

void LargeTextView::mouseMoveEvent(QMouseEvent* event)
{
    if (!m_isDragging)
        return;
    m_dragPoint = event->pos();
    moveCaret(positionAt(event->pos()), true);
    if (viewport()->rect().contains(event->pos()))
        m_dragTimer.stop();
    else if (!m_dragTimer.isActive())
        m_dragTimer.start(kDragStepMs, this);
}

void LargeTextView::mouseReleaseEvent(QMouseEvent*)
{
    m_isDragging = false;
    m_dragTimer.stop();
}

void LargeTextView::mouseDoubleClickEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton)
        return;
    const Cell cell = cellOf(positionAt(event->pos()));
    const qsizetype start = m_text.lineStart(cell.line);
    const qsizetype end = start + m_text.lineLength(cell.line);
    qsizetype from = start + cell.column;
    qsizetype to = from;
    while (from > start && isWordPart(m_text.at(from - 1)))
        --from;
    while (to < end && isWordPart(m_text.at(to)))
        ++to;
    moveCaret(from, false);
    setSelLength(to - from);
}

void LargeTextView::contextMenuEvent(QContextMenuEvent* event)
{
    Q_EMIT contextMenuAsked(event->globalPos());
}

/// While the pointer is held outside the window, the text goes by.
void LargeTextView::timerEvent(QTimerEvent* event)
{
    if (event->timerId() == m_dragTimer.timerId())
        moveCaret(positionAt(m_dragPoint), true);
    else
        QAbstractScrollArea::timerEvent(event);
}

void LargeTextView::focusInEvent(QFocusEvent* event)
{
    QAbstractScrollArea::focusInEvent(event);
    viewport()->update();
}

void LargeTextView::focusOutEvent(QFocusEvent* event)
{
    QAbstractScrollArea::focusOutEvent(event);
    m_isDragging = false;
    m_dragTimer.stop();
    viewport()->update();
}

} // namespace kalvo
