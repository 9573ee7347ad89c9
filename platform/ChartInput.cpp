// SPDX-License-Identifier: GPL-3.0-or-later
// What the user does to a chart: mouse, wheel, keys.
#include "platform/Chart.h"

#include "platform/ChartPlot.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMouseEvent>
#include <QRubberBand>
#include <QToolTip>
#include <QWheelEvent>

#include <cmath>

namespace kalvo {
namespace {

constexpr double kZoomOfAStep = 0.8;
constexpr int kLeastBand = 6; ///< pixels; a smaller rectangle is a slip of the hand

} // namespace

// -- Mouse -----------------------------------------------------------------------------------------------------------

void Chart::mousePressEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton) {
        QWidget::mousePressEvent(event);
        return;
    }
    setFocus(Qt::MouseFocusReason);
    m_drag = {true, false, event->pos(), m_plot->timeScale(), m_plot->valueScale()};
    if (event->modifiers() & Qt::ShiftModifier) {
        if (!m_band)
            m_band = new QRubberBand(QRubberBand::Rectangle, this);
        m_band->setGeometry(QRect(event->pos(), QSize()));
        m_band->show();
    }
}

void Chart::mouseMoveEvent(QMouseEvent* event)
{
    if (m_drag.isOn) {
        dragTo(event->pos());
        return;
    }
    if (!m_tipped.isNone() && pointAt(event->pos()) != m_tipped)
        dropTip();
}

void Chart::dragTo(QPoint place)
{
    const QPoint way = place - m_drag.from;
    if (!m_drag.hasMoved && way.manhattanLength() < QApplication::startDragDistance())
        return;
    m_drag.hasMoved = true;
    dropTip();
    if (m_band && m_band->isVisible()) {
        m_band->setGeometry(QRect(m_drag.from, place).normalized());
        return;
    }
    setTimeRange(m_drag.time.moved(way.x()));
    setValueRange(m_drag.value.moved(way.y()));
}

void Chart::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton || !m_drag.isOn)
        return;
    m_drag.isOn = false;
    if (m_band && m_band->isVisible()) {
        m_band->hide();
        if (m_drag.hasMoved)
            zoomInto(QRect(m_drag.from, event->pos()).normalized());
    } else if (!m_drag.hasMoved) {
        click(event->pos());
    }
}

void Chart::zoomInto(const QRect& band)
{
    const QRect part = band.intersected(m_plot->flowRect());
    if (part.width() < kLeastBand || part.height() < kLeastBand)
        return;
    const ChartScale time = m_plot->timeScale(), value = m_plot->valueScale();
    setTimeRange({time.value(part.left()), time.value(part.left() + part.width())});
    setValueRange({value.value(part.top() + part.height()), value.value(part.top())});
}

void Chart::click(QPoint place)
{
    const ChartPoint point = pointAt(place);
    selectSeries(point.isNone() ? seriesAt(place) : point.series);
    if (point.isNone())
        return;
    setCursorPoint(point);
    Q_EMIT pointClicked(point.series, point.index);
}

void Chart::mouseDoubleClickEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton)
        return;
    m_drag.isOn = false;
    dropTip();
    if (titleRect().contains(event->pos())) {
        editTitle();
        return;
    }
    const int series = seriesAt(event->pos());
    if (series >= 0)
        Q_EMIT seriesDoubleClicked(series);
    else
        showWhole();
}

void Chart::wheelEvent(QWheelEvent* event)
{
    const int delta = event->angleDelta().y() != 0 ? event->angleDelta().y() : event->angleDelta().x();
    const QPointF at = event->position();
    const double factor = std::pow(kZoomOfAStep, delta / 120.0);
    const QRect flow = m_plot->flowRect();
    const ChartScale time = m_plot->timeScale(), value = m_plot->valueScale(); // asked for later they would draw twice
    const bool onTimes = at.y() > flow.bottom(), onValues = at.x() < flow.left();
    dropTip();
    if (!onValues && !(event->modifiers() & Qt::ControlModifier))
        setTimeRange(time.zoomed(at.x(), factor));
    if (!onTimes && !(event->modifiers() & Qt::ShiftModifier))
        setValueRange(value.zoomed(at.y(), factor));
    event->accept();
}

void Chart::leaveEvent(QEvent* event)
{
    dropTip();
    QWidget::leaveEvent(event);
}

void Chart::showPointTip(ChartPoint point, const QString& text)
{
    if (!isPoint(point))
        return;
    m_tipped = point;
    setToolTip(text);
    QToolTip::showText(mapToGlobal(placeOf(point)), text, this);
}

void Chart::dropTip()
{
    if (m_tipped.isNone())
        return;
    m_tipped = {};
    setToolTip(QString());
    QToolTip::hideText();
    Q_EMIT pointLeft();
}

bool Chart::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_titleEditor && m_titleEditor) {
        if (event->type() == QEvent::MouseButtonDblClick) {
            closeTitleEditor(true);
            return true;
        }
        if (event->type() == QEvent::KeyPress && static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape) {
            closeTitleEditor(false);
            return true;
        }
    }
    return QWidget::eventFilter(watched, event);
}

// -- Keys ------------------------------------------------------------------------------------------------------------

bool Chart::moveCursor(const QKeyEvent& key)
{
    const int step = key.modifiers() & Qt::ControlModifier ? 10 : 1;
    ChartPoint to;
    switch (key.key()) {
    case Qt::Key_Left:
        to = alongSeries(m_series, m_cursor, -step);
        break;
    case Qt::Key_Right:
        to = alongSeries(m_series, m_cursor, step);
        break;
    case Qt::Key_Up:
        to = acrossSeries(m_series, m_cursor, -1);
        break;
    case Qt::Key_Down:
        to = acrossSeries(m_series, m_cursor, 1);
        break;
    default:
        return false;
    }
    if (m_cursor.isNone() && isSeries(m_selected))
        to = alongSeries(m_series, {m_selected, -1}, 1);
    dropTip();
    selectSeries(to.series);
    setCursorPoint(to);
    return true;
}

void Chart::keyPressEvent(QKeyEvent* event)
{
    if (moveCursor(*event))
        return;
    switch (event->key()) {
    case Qt::Key_Home:
        showWhole();
        break;
    case Qt::Key_Plus:
    case Qt::Key_Equal:
        zoom(kZoomOfAStep);
        break;
    case Qt::Key_Minus:
        zoom(1.0 / kZoomOfAStep);
        break;
    case Qt::Key_Escape:
        dropTip();
        setCursorPoint({});
        selectSeries(-1);
        break;
    default:
        QWidget::keyPressEvent(event);
    }
}

} // namespace kalvo
