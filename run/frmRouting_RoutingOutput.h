// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "run/RoutingOutput.h"
#include "run/RoutingWindow.h"

class QLabel;
class QListView;
class QPushButton;
class QStringListModel;

namespace kalvo {

/// "Reservoir Routing Output": the routings out of the summary of HEC-1's report. Where the report has a summary of
/// another form instead, the way to it stands beside the message. Closing forgets the list.
class frmRouting : public RoutingWindow
{
    Q_OBJECT

public:
    explicit frmRouting(ViewerSurroundings around);

    /// Reads the last report, shows the list, and tells when there is none.
    void showScreen() override;
    /// Reads again; what is missing is said on the screen alone.
    void repaintScreen() override;

private:
    void buildControls();
    void buildMenus();
    void copySelection();
    void find(bool again);
    void showRunoffSummary();

    RoutingOutput m_output;
    QListView* List2 = nullptr;
    QStringListModel* m_lines = nullptr;
    QLabel* Label1 = nullptr;
    QPushButton* Command1 = nullptr;
};

} // namespace kalvo
