// SPDX-License-Identifier: GPL-3.0-or-later
// What the user does to a FlexGridView with keys, buttons and wheel.
#include "platform/FlexGridModel.h"
#include "platform/FlexGridPainter.h"
#include "platform/FlexGridView.h"

#include <QHelpEvent>
#include <QMetaMethod>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <QToolTip>

#include <algorithm>

namespace kalvo {

namespace {

constexpr int kWheelStep = 120;
constexpr int kDragInterval = 50; ///< milliseconds between two steps while a selection is dragged past the edge

} // namespace

// -- Keys ---------------------------------------------------------------------------------------------------------

void FlexGridView::keyPressEvent(QKeyEvent* event)
{
    event->ignore();
    Q_EMIT keyOnGrid(event);
    if (!event->isAccepted() && moveByKey(*event))
        event->accept();
}

bool FlexGridView::moveByKey(const QKeyEvent& key)
{
    const Qt::KeyboardModifiers with = key.modifiers() & ~(Qt::KeypadModifier | Qt::ShiftModifier);
    const bool ctrl = with == Qt::ControlModifier;
    if ((with != Qt::NoModifier && !ctrl) || m_model->rowCount() == 0 || m_model->columnCount() == 0)
        return false;
    const bool stretch = key.modifiers().testFlag(Qt::ShiftModifier);
    int row = stretch ? m_grid.rowSel() : m_grid.row(), col = stretch ? m_grid.colSel() : m_grid.col();
    const int firstRow = m_grid.fixedRows(), lastRow = m_grid.rows() - 1;
    const int firstCol = m_grid.fixedCols(), lastCol = m_grid.cols() - 1;
    const auto walk = [&](int step, int count) {
        for (int to = row + step; count > 0 && to >= firstRow && to <= lastRow; to += step)
            if (pixelsOf(m_grid.rowHeight(to)) > 0) {
                row = to;
                --count;
            }
    };
    switch (key.key()) {
    case Qt::Key_Home:
        col = firstCol;
        row = ctrl ? firstRow : row;
        break;
    case Qt::Key_End:
        col = lastCol;
        row = ctrl ? lastRow : row;
        break;
    case Qt::Key_Up:
        walk(-1, 1);
        break;
    case Qt::Key_Down:
        walk(1, 1);
        break;
    case Qt::Key_PageUp:
        walk(-1, rowsPerPage());
        break;
    case Qt::Key_PageDown:
        walk(1, rowsPerPage());
        break;
    case Qt::Key_Left:
        col = std::max(col - 1, firstCol);
        break;
    case Qt::Key_Right:
        col = std::min(col + 1, lastCol);
        break;
    default:
        return false;
    }
    const bool homeOrEnd = key.key() == Qt::Key_Home || key.key() == Qt::Key_End;
    if (ctrl && !homeOrEnd)
        return false;
    if (!stretch) {
        m_grid.setCursor(row, col);
        return true;
    }
    m_grid.select(m_grid.row(), m_grid.col(), row, col);
    const QModelIndex end = m_model->itemAt(row, col);
    if (end.isValid())
        scrollTo(end);
    return true;
}

// -- Mouse on the cells -------------------------------------------------------------------------------------------

void FlexGridView::mousePressEvent(QMouseEvent* event)
{
    event->accept();
    if (event->button() != Qt::LeftButton)
        return;
    follow();
    Q_EMIT leftPressed();
    const QPoint at = event->position().toPoint();
    const int row = rowAt(at.y()), col = columnAt(at.x());
    if (row < 0 || col < 0)
        return;
    // A cell at the edge comes into full view when the button is up: were it to move now, it would move under the
    // pointer, which stretches the selection.
    m_holdScroll = m_dragging = true;
    if (event->modifiers().testFlag(Qt::ShiftModifier))
        m_grid.select(m_grid.row(), m_grid.col(), m_model->gridRow(row), m_model->gridCol(col));
    else
        m_grid.setCursor(m_model->gridRow(row), m_model->gridCol(col));
}

void FlexGridView::mouseMoveEvent(QMouseEvent* event)
{
    const QPoint at = event->position().toPoint();
    if (event->buttons() == Qt::NoButton) {
        const QPoint inView = viewport()->mapTo(this, at);
        Q_EMIT pointerMoved(inView.x() * kTwipsPerPixel, inView.y() * kTwipsPerPixel);
        return;
    }
    if (!m_dragging || !event->buttons().testFlag(Qt::LeftButton))
        return;
    stretchTo(at);
    if (viewport()->rect().contains(at))
        m_dragTimer.stop();
    else if (!m_dragTimer.isActive())
        m_dragTimer.start(kDragInterval, this);
}

void FlexGridView::stretchTo(const QPoint& viewportPoint)
{
    follow();
    if (m_model->rowCount() == 0 || m_model->columnCount() == 0)
        return;
    const int x = std::clamp(viewportPoint.x(), 0, std::max(viewport()->width() - 1, 0));
    const int y = std::clamp(viewportPoint.y(), 0, std::max(viewport()->height() - 1, 0));
    const int row = rowAt(y), col = columnAt(x);
    m_grid.select(m_grid.row(), m_grid.col(), row < 0 ? m_grid.rows() - 1 : m_model->gridRow(row),
                  col < 0 ? m_grid.cols() - 1 : m_model->gridCol(col));
}

void FlexGridView::timerEvent(QTimerEvent* event)
{
    if (event->timerId() == m_followTimer.timerId()) {
        m_followTimer.stop();
        follow();
    } else if (event->timerId() == m_dragTimer.timerId()) {
        const QPoint at = viewport()->mapFromGlobal(QCursor::pos());
        const QRect inside = viewport()->rect();
        const auto step = [](int place, int first, int last) { return place > last ? 1 : place < first ? -1 : 0; };
        verticalScrollBar()->setValue(verticalScrollBar()->value() + step(at.y(), inside.top(), inside.bottom()));
        horizontalScrollBar()->setValue(horizontalScrollBar()->value() + step(at.x(), inside.left(), inside.right()));
        stretchTo(at);
    } else {
        QTableView::timerEvent(event);
    }
}

void FlexGridView::mouseReleaseEvent(QMouseEvent* event)
{
    event->accept();
    if (event->button() != Qt::LeftButton)
        return;
    m_dragTimer.stop();
    const FlexGrid::Area area = m_grid.selection();
    const bool oneCell = area.top == area.bottom && area.left == area.right;
    if (m_dragging && oneCell && m_followsCursor)
        showCursorCell();
    m_holdScroll = m_dragging = false;
}

void FlexGridView::mouseDoubleClickEvent(QMouseEvent* event)
{
    event->accept();
    const QPoint at = event->position().toPoint();
    const int row = rowAt(at.y()), col = columnAt(at.x());
    if (event->button() == Qt::LeftButton && row >= 0 && col >= 0)
        Q_EMIT gridDoubleClicked(m_model->gridRow(row), m_model->gridCol(col));
}

void FlexGridView::wheelEvent(QWheelEvent* event)
{
    static const QMetaMethod turned = QMetaMethod::fromSignal(&FlexGridView::wheelTurned);
    if (event->angleDelta().y() == 0 || !isSignalConnected(turned)) {
        QTableView::wheelEvent(event);
        return;
    }
    event->accept();
    // Touch pads send many small turns: they add up, and a change of direction starts anew.
    if ((m_wheelRest > 0) != (event->angleDelta().y() > 0))
        m_wheelRest = 0;
    m_wheelRest += event->angleDelta().y();
    for (; std::abs(m_wheelRest) >= kWheelStep; m_wheelRest -= m_wheelRest > 0 ? kWheelStep : -kWheelStep)
        Q_EMIT wheelTurned(m_wheelRest > 0 ? kWheelStep : -kWheelStep, event->modifiers());
}

void FlexGridView::contextMenuEvent(QContextMenuEvent* event)
{
    event->accept();
    if (event->reason() == QContextMenuEvent::Keyboard && m_grid.rows() > 0 && m_grid.cols() > 0)
        Q_EMIT contextMenuAsked(mapToGlobal(cellRect(m_grid.row(), m_grid.col()).center()));
    else
        Q_EMIT contextMenuAsked(event->globalPos());
}

// -- Headers ------------------------------------------------------------------------------------------------------

void FlexGridView::pressHeader(int section, bool columns, bool stretch)
{
    if (m_model->rowCount() == 0 || m_model->columnCount() == 0)
        return;
    // A press on a header must not scroll away what the user looks at.
    const QScopedValueRollback hold(m_holdScroll, true);
    if (columns) {
        const int col = m_model->gridCol(section);
        m_grid.select(m_grid.fixedRows(), stretch ? m_grid.col() : col, m_grid.rows() - 1, col);
    } else {
        const int row = m_model->gridRow(section);
        m_grid.select(stretch ? m_grid.row() : row, m_grid.fixedCols(), row, m_grid.cols() - 1);
    }
}

void FlexGridView::selectAll()
{
    if (m_model->rowCount() == 0 || m_model->columnCount() == 0)
        return;
    const QScopedValueRollback hold(m_holdScroll, true);
    m_grid.select(m_grid.fixedRows(), m_grid.fixedCols(), m_grid.rows() - 1, m_grid.cols() - 1);
}

bool FlexGridView::eventFilter(QObject* watched, QEvent* event)
{
    auto* widget = qobject_cast<QWidget*>(watched);
    const bool header = watched == m_columns->viewport() || watched == m_lines->viewport();
    if (!widget || !(header || watched == m_corner))
        return QTableView::eventFilter(watched, event);
    switch (event->type()) {
    case QEvent::Paint:
        if (watched != m_corner)
            break;
        paintCorner(*widget);
        return true;
    case QEvent::MouseMove:
        if (const auto* mouse = static_cast<QMouseEvent*>(event); mouse->buttons() == Qt::NoButton) {
            const QPoint at = widget->mapTo(this, mouse->position().toPoint());
            Q_EMIT pointerMoved(at.x() * kTwipsPerPixel, at.y() * kTwipsPerPixel);
        }
        break;
    case QEvent::MouseButtonPress:
        if (static_cast<QMouseEvent*>(event)->button() == Qt::LeftButton)
            Q_EMIT leftPressed();
        break;
    case QEvent::MouseButtonRelease:
        if (static_cast<QMouseEvent*>(event)->button() != Qt::LeftButton)
            break;
        if (m_userResized) // told when the header has seen the release too
            QMetaObject::invokeMethod(this, &FlexGridView::resizedByUser, Qt::QueuedConnection);
        m_userResized = false;
        break;
    case QEvent::ToolTip:
        if (m_tip)
            return showTip(static_cast<QHelpEvent*>(event)->globalPos());
        break;
    default:
        break;
    }
    return QTableView::eventFilter(watched, event);
}

bool FlexGridView::viewportEvent(QEvent* event)
{
    if (event->type() == QEvent::ToolTip && m_tip)
        return showTip(static_cast<QHelpEvent*>(event)->globalPos());
    return QTableView::viewportEvent(event);
}

bool FlexGridView::showTip(const QPoint& globalPoint)
{
    const QPoint at = mapFromGlobal(globalPoint);
    const int row = rowAtPoint(at), col = colAtPoint(at);
    const QString text = row >= 0 && col >= 0 ? m_tip(row, col) : QString();
    if (text.isEmpty())
        QToolTip::hideText();
    else
        QToolTip::showText(globalPoint, text, this, QRect(cellRect(row, col)));
    return true;
}

} // namespace kalvo
