// SPDX-License-Identifier: GPL-3.0-or-later
#include "deck/StatusPanelLabel.h"

#include "platform/text.h"

#include <QHelpEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QToolTip>

#include <algorithm>

namespace kalvo {

namespace {
constexpr int kMargin = 6;
constexpr int kHighest = 6; ///< room above and below the text together
} // namespace

StatusPanelLabel::StatusPanelLabel(QWidget* parent) : QWidget(parent)
{
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
}

void StatusPanelLabel::setPlainText(const QString& text)
{
    if (text == m_text && !m_back.isValid())
        return;
    m_text = text;
    m_back = QColor();
    m_fore = QColor();
    if (m_growsWithText)
        updateGeometry();
    update();
}

void StatusPanelLabel::setPicture(const QString& text, const QColor& back, const QColor& fore)
{
    m_text = text;
    m_back = back;
    m_fore = fore;
    if (m_growsWithText)
        updateGeometry();
    update();
}

void StatusPanelLabel::setSample(const QString& sample)
{
    m_sample = sample;
    updateGeometry();
}

void StatusPanelLabel::setLook(const PanelLook& look)
{
    m_look = look;
    if (look.fontSize > 0.0) {
        QFont own = font();
        own.setPointSizeF(look.fontSize);
        setFont(own);
    } else {
        setFont(QFont());
    }
    updateGeometry();
    update();
}

QSize StatusPanelLabel::sizeHint() const
{
    const QSize least = minimumSizeHint();
    if (!m_growsWithText || isPicture())
        return least;
    return {std::max(least.width(), fontMetrics().horizontalAdvance(Trim(m_text)) + 2 * kMargin + 2), least.height()};
}

QSize StatusPanelLabel::minimumSizeHint() const
{
    const int wide = fontMetrics().horizontalAdvance(m_sample) + 2 * kMargin;
    return {std::max(wide, m_look.minimumWidth / kTwipsPerPixel), fontMetrics().height() + kHighest};
}

void StatusPanelLabel::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    const QString shown = Trim(m_text);
    QRect area = rect().adjusted(kMargin, 0, -kMargin, 0);
    if (m_lineAhead) {
        QColor line = palette().color(QPalette::WindowText);
        line.setAlphaF(0.18F);
        painter.setPen(line);
        painter.drawLine(0, 4, 0, height() - 5);
    }
    if (m_back.isValid()) {
        const int wide = std::min(fontMetrics().horizontalAdvance(shown) + 2 * kMargin, width() - 4);
        const QRect chip(2, 2, wide, height() - 4);
        painter.setRenderHint(QPainter::Antialiasing);
        QColor edge = m_fore;
        edge.setAlphaF(0.35F);
        painter.setPen(edge);
        painter.setBrush(m_back);
        painter.drawRoundedRect(QRectF(chip).adjusted(0.5, 0.5, -0.5, -0.5), 4, 4);
        painter.setPen(m_fore);
        area = chip.adjusted(kMargin, 0, 0, 0);
    } else {
        painter.setPen(m_look.foreColor == Rgb::None ? palette().color(QPalette::WindowText)
                                                     : QColor(static_cast<QRgb>(m_look.foreColor)));
    }
    const int side = m_look.centred && !m_back.isValid() ? Qt::AlignHCenter : Qt::AlignLeft;
    painter.drawText(area, side | Qt::AlignVCenter | Qt::TextSingleLine,
                     fontMetrics().elidedText(shown, m_elide, area.width()));
}

void StatusPanelLabel::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton && rect().contains(event->pos()))
        Q_EMIT clicked();
}

bool StatusPanelLabel::event(QEvent* event)
{
    if (event->type() == QEvent::ToolTip) {
        QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(), m_tip ? m_tip() : Trim(m_text), this);
        return true;
    }
    return QWidget::event(event);
}

} // namespace kalvo
