// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/StatusPanels.h"

#include <QColor>
#include <QString>
#include <QWidget>

#include <functional>

namespace kalvo {

/// One panel of a status bar: a line of text that is cut with an ellipsis where it does not fit, its whole text in the
/// tip.
class StatusPanelLabel : public QWidget
{
    Q_OBJECT

public:
    explicit StatusPanelLabel(QWidget* parent = nullptr);

    void setPlainText(const QString& text);
    /// The same as a coloured picture, as wide as the text.
    void setPicture(const QString& text, const QColor& back, const QColor& fore);
    QString text() const { return m_text; }
    bool isPicture() const { return m_back.isValid(); }
    QColor pictureTextColor() const { return m_fore; }
    /// The panel is never narrower than this text.
    void setSample(const QString& sample);
    /// The panel takes the room that its text asks for, where there is any.
    void setGrowsWithText(bool on) { m_growsWithText = on; }
    void setElideMode(Qt::TextElideMode mode) { m_elide = mode; }
    /// A thin line parts the panel from the one ahead.
    void setLineAhead(bool on) { m_lineAhead = on; }
    /// Said when the pointer rests on the panel; asked for at that moment.
    void setTip(std::function<QString()> tip) { m_tip = std::move(tip); }
    void setLook(const PanelLook& look);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

Q_SIGNALS:
    void clicked();

protected:
    void paintEvent(QPaintEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    bool event(QEvent* event) override;

private:
    QString m_text;
    QString m_sample;
    PanelLook m_look;
    std::function<QString()> m_tip;
    QColor m_back;
    QColor m_fore;
    Qt::TextElideMode m_elide = Qt::ElideRight;
    bool m_lineAhead = false;
    bool m_growsWithText = false;
};

} // namespace kalvo
