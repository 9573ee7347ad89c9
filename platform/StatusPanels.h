// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/FlexGrid.h"

#include <QObject>
#include <QString>

#include <array>

namespace kalvo {

/// How a panel is drawn when it is to stand out; the plain look is the bar's own.
struct PanelLook
{
    Rgb foreColor = Rgb::None; ///< None: the palette's own text colour
    bool centred = false;
    int minimumWidth = 0;  ///< twips; 0: as wide as the text asks for
    double fontSize = 0.0; ///< points; 0: the bar's own

    bool operator==(const PanelLook&) const = default;
};

/// The texts of the main screen's status bar, panels 1 to 7. Logic writes here; the bar shows it. Also carries the progress
/// bar `pb` (percent, or hidden) and the pointer over the grid, which are told in the same way.
class StatusPanels : public QObject
{
    Q_OBJECT

public:
    static constexpr int kPanels = 7;
    explicit StatusPanels(QObject* parent = nullptr) : QObject(parent) {}

    /// Panel numbers outside 1..7 throw std::out_of_range.
    QString text(int panel) const { return m_texts.at(static_cast<size_t>(panel - 1)); }
    void set(int panel, const QString& text)
    {
        m_texts.at(static_cast<size_t>(panel - 1)) = text;
        Q_EMIT panelChanged(panel, text);
    }
    /// What a panel says more than it has room for; empty for none. Stays when the panel's text changes.
    QString toolTip(int panel) const { return m_toolTips.at(static_cast<size_t>(panel - 1)); }
    void setToolTip(int panel, const QString& tip)
    {
        QString& own = m_toolTips.at(static_cast<size_t>(panel - 1));
        if (own == tip)
            return;
        own = tip;
        Q_EMIT toolTipChanged(panel, tip);
    }
    const PanelLook& look(int panel) const { return m_looks.at(static_cast<size_t>(panel - 1)); }
    void setLook(int panel, const PanelLook& look)
    {
        PanelLook& own = m_looks.at(static_cast<size_t>(panel - 1));
        if (own == look)
            return;
        own = look;
        Q_EMIT lookChanged(panel);
    }
    /// Percent 0 to 100 shows the bar, -1 hides it.
    void setProgress(int percent)
    {
        if (percent != m_progress)
            Q_EMIT progressChanged(m_progress = percent);
    }
    int progress() const { return m_progress; }
    /// The hourglass over the grid while HEC-1 runs.
    void setWaiting(bool on)
    {
        if (on != m_waiting)
            Q_EMIT waitingChanged(m_waiting = on);
    }
    bool isWaiting() const { return m_waiting; }

Q_SIGNALS:
    void panelChanged(int panel, const QString& text);
    void toolTipChanged(int panel, const QString& tip);
    void lookChanged(int panel);
    void progressChanged(int percent);
    void waitingChanged(bool on);

private:
    std::array<QString, kPanels> m_texts;
    std::array<QString, kPanels> m_toolTips;
    std::array<PanelLook, kPanels> m_looks;
    int m_progress = -1;
    bool m_waiting = false;
};

} // namespace kalvo
