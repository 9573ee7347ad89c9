// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "results/HydrodataDesk.h"
#include "results/ResultWindow.h"

#include <memory>

namespace kalvo {

class ResultGrid;

/// " Center of Mass": the working table of the centers of mass, a column for each hydrograph. It is loaded to be filled
/// and no command shows it.
class Form11 : public ResultWindow
{
    Q_OBJECT

public:
    Form11(std::shared_ptr<HydrodataDesk> logic, MainWindow mainWindow);
    ~Form11() override;

private:
    void buildMenus();
    void activated() override;
    void closedByUser() override { m_logic->leaveCenters(objectName()); }

    const std::shared_ptr<HydrodataDesk> m_logic;
    ResultGrid* Grid1 = nullptr;
};

} // namespace kalvo
