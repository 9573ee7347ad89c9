// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "results/HydrodataDesk.h"
#include "results/ResultWindow.h"

#include <memory>

class QLabel;

namespace kalvo {

class ResultGrid;

/// " Hydrodata Viewer": every ordinate of every hydrograph of the last run. Closing it forgets them, Return does not.
/// (`oldfg1`, a narrower grid that nothing fills, is left out.)
class hydrodata : public ResultWindow
{
    Q_OBJECT

public:
    hydrodata(std::shared_ptr<HydrodataDesk> logic, MainWindow mainWindow);

private:
    void buildMenus();
    QString tip(int row, int col) const;
    void closedByUser() override;
    void activated() override;
    void layOut(const QSize& central) override;

    const std::shared_ptr<HydrodataDesk> m_logic;
    QLabel* Label1 = nullptr;
    ResultGrid* Grid1 = nullptr;
};

} // namespace kalvo
