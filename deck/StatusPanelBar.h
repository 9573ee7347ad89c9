// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/StatusPanels.h"

#include <QStatusBar>
#include <QString>

#include <array>
#include <functional>

class QProgressBar;
class QToolButton;

namespace kalvo {

class StatusPanelLabel;

/// The status bar of the main screen: shows the seven panels, the progress bar `pb`, and, while HEC-1 runs, a button
/// that stops it. Decides nothing: it mirrors the StatusPanels.
class StatusPanelBar : public QStatusBar
{
    Q_OBJECT

public:
    explicit StatusPanelBar(StatusPanels& panels, QWidget* parent = nullptr);

    /// Shows the text as a small coloured picture, as wide as the text; the panel's plain text goes.
    void PanelSetText(int panel, const QString& text, const QColor& back, const QColor& fore);
    /// The text that a panel shows now, picture or plain.
    QString shownText(int panel) const;
    /// Said in panel 7's tip below its text; asked for when the tip is shown.
    void setEngineText(std::function<QString()> text) { m_engineText = std::move(text); }
    QString tip(int panel) const;

Q_SIGNALS:
    void panelClicked(int panel);
    void cancelClicked();

private:
    void buildPanels();
    void buildRunControls();
    void showPanel(int panel);

    StatusPanels& m_panels;
    std::array<StatusPanelLabel*, StatusPanels::kPanels> m_labels{};
    QProgressBar* m_progress = nullptr;
    QToolButton* m_cancel = nullptr;
    std::function<QString()> m_engineText;
};

} // namespace kalvo
