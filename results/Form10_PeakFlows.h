// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "results/ResultWindow.h"

class QLabel;

namespace kalvo {

class ResultGrid;

/// " Peak Flows": the peak of every hydrograph, a row for each station. From here the peaks are saved as the earlier
/// state of a project.
class Form10 : public ResultWindow
{
    Q_OBJECT

public:
    Form10(std::shared_ptr<ResultDesk> desk, MainWindow mainWindow);

    void repaintScreen() override;

protected:
    void activated() override { repaintScreen(); }
    void layOut(const QSize& central) override;

private:
    void buildMenu();

    ResultGrid* Grid1 = nullptr;
    QLabel* m_unit = nullptr;
};

} // namespace kalvo
