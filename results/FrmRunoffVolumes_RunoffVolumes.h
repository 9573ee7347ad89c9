// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/FlexGrid.h"
#include "results/ResultWindow.h"
#include "results/RunoffVolumes.h"

#include <vector>

namespace kalvo {

class ResultGrid;

/// " Runoff Volumes": the volume of every hydrograph, with a mark below those that had not ended when the run stopped.
/// No run can be started while it is open, for it reads the table of hydrographs at length.
class FrmRunoffVolumes : public ResultWindow
{
    Q_OBJECT

public:
    FrmRunoffVolumes(std::shared_ptr<ResultDesk> desk, MainWindow mainWindow);
    ~FrmRunoffVolumes() override;

    void showScreen() override;
    void hideScreen() override;
    /// Works the volumes out again.
    void repaintScreen() override;

protected:
    void closedByUser() override;

private:
    void buildControls();
    void buildMenu();
    void leave();
    void saveList();
    QString unit() const;
    QString tipOf(int row) const;

    FlexGrid m_table;
    std::vector<RunoffVolume> m_volumes;
    ResultGrid* Grid1 = nullptr;
};

} // namespace kalvo
