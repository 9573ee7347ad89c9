// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "results/ResultWindow.h"

class QPushButton;

namespace kalvo {

class ResultGrid;

/// " Kalvo Station Peak Flows": the peak of every hydrograph, a column for each, in the order of the run's file.
class Form9 : public ResultWindow
{
    Q_OBJECT

public:
    Form9(std::shared_ptr<ResultDesk> desk, MainWindow mainWindow);

    void repaintScreen() override;

protected:
    void layOut(const QSize& central) override;

private:
    void buildMenu();

    ResultGrid* PKS = nullptr;
    QPushButton* Command1 = nullptr;
};

} // namespace kalvo
