// SPDX-License-Identifier: GPL-3.0-or-later
#include "results/ResultScreens.h"

#include "results/Form10_PeakFlows.h"
#include "results/Form9_StationPeakFlows.h"
#include "results/FrmRunoffVolumes_RunoffVolumes.h"

namespace kalvo {

void registerResultScreens(Screens& screens, const std::shared_ptr<ResultDesk>& desk,
                           const ResultWindow::MainWindow& mainWindow)
{
    screens.add(QStringLiteral("Form9"), [desk, mainWindow] { return std::make_unique<Form9>(desk, mainWindow); });
    screens.add(QStringLiteral("Form10"), [desk, mainWindow] { return std::make_unique<Form10>(desk, mainWindow); });
    screens.add(QStringLiteral("FrmRunoffVolumes"),
                [desk, mainWindow] { return std::make_unique<FrmRunoffVolumes>(desk, mainWindow); });
}

} // namespace kalvo
