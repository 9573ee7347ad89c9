// SPDX-License-Identifier: GPL-3.0-or-later
#include "graphics/GraphCanvas.h"

#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>

#include <algorithm>

namespace kalvo {

namespace {

constexpr double kKeyStep = 10.0;
constexpr double kCrossArm = 8.0;

} // namespace

GraphCanvas::GraphCanvas(QWidget* parent) : QWidget(parent)
{
    setMouseTracking(true);
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_OpaquePaintEvent);
    setCursor(Qt::CrossCursor);
}

void GraphCanvas::setSizes(const QSizeF& base, double zoom)
{
    m_base = base;
    m_zoom = zoom;
    resize((base * zoom).toSize());
    update();
}

void GraphCanvas::setHint(const QString& hint)
{
    m_hint = hint;
    setAccessibleDescription(hint);
    update();
}

QPointF GraphCanvas::keyPoint() const
{
    return m_key.x() < 0.0 ? QPointF(m_base.width() / 2.0, m_base.height() / 2.0) : m_key;
}

void GraphCanvas::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.fillRect(rect(), Qt::white);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    if (m_image && !m_image->isNull())
        painter.drawImage(QRectF(rect()), *m_image);
    if (!m_hint.isEmpty()) {
        painter.setPen(QColor(80, 80, 80));
        painter.drawText(rect().adjusted(24, 24, -24, -24), Qt::AlignCenter | Qt::TextWordWrap, m_hint);
    }
    if (!hasFocus())
        return;
    painter.setPen(QPen(QColor(61, 133, 198), 1.0));
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
    if (m_key.x() >= 0.0) {
        const QPointF at = m_key * m_zoom;
        painter.drawLine(at - QPointF(kCrossArm, 0.0), at + QPointF(kCrossArm, 0.0));
        painter.drawLine(at - QPointF(0.0, kCrossArm), at + QPointF(0.0, kCrossArm));
    }
}

void GraphCanvas::mousePressEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton)
        return;
    m_isDown = true;
    m_key = {-1.0, -1.0};
    Q_EMIT pressed(basePoint(event->position()));
}

void GraphCanvas::mouseMoveEvent(QMouseEvent* event)
{
    Q_EMIT pointed(basePoint(event->position()), m_isDown);
}

void GraphCanvas::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton || !m_isDown)
        return;
    m_isDown = false;
    Q_EMIT released(basePoint(event->position()));
}

void GraphCanvas::keyPressEvent(QKeyEvent* event)
{
    const double step = (event->modifiers() & Qt::ShiftModifier) ? 1.0 : kKeyStep;
    QPointF move;
    switch (event->key()) {
    case Qt::Key_Left:
        move = {-step, 0.0};
        break;
    case Qt::Key_Right:
        move = {step, 0.0};
        break;
    case Qt::Key_Up:
        move = {0.0, -step};
        break;
    case Qt::Key_Down:
        move = {0.0, step};
        break;
    case Qt::Key_Space:
        Q_EMIT pressed(keyPoint());
        Q_EMIT released(keyPoint());
        return;
    default:
        QWidget::keyPressEvent(event);
        return;
    }
    const QPointF to = keyPoint() + move;
    m_key = {std::clamp(to.x(), 0.0, m_base.width() - 1.0), std::clamp(to.y(), 0.0, m_base.height() - 1.0)};
    Q_EMIT pointed(m_key, false);
    update();
}

void GraphCanvas::focusInEvent(QFocusEvent* event)
{
    QWidget::focusInEvent(event);
    update();
}

void GraphCanvas::focusOutEvent(QFocusEvent* event)
{
    QWidget::focusOutEvent(event);
    update();
}

void GraphCanvas::contextMenuEvent(QContextMenuEvent* event)
{
    Q_EMIT menuAsked(event->globalPos());
}

void GraphWindow::resizeEvent(QResizeEvent* event)
{
    QScrollArea::resizeEvent(event);
    Q_EMIT resized();
}

} // namespace kalvo
