// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "results/HydrodataDesk.h"
#include "results/ResultWindow.h"

#include <memory>

namespace kalvo {

class ResultGrid;

/// " Hydrograph Center of Mass": the hours of the center of mass, a row for each hydrograph.
class Form20 : public ResultWindow
{
    Q_OBJECT

public:
    Form20(std::shared_ptr<HydrodataDesk> logic, MainWindow mainWindow);
    ~Form20() override;

private:
    void buildMenus();
    void copyAll();
    void activated() override;
    void closedByUser() override { m_logic->leaveCenters(objectName()); }

    const std::shared_ptr<HydrodataDesk> m_logic;
    ResultGrid* Grid1 = nullptr;
};

} // namespace kalvo
