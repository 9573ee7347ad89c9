// SPDX-License-Identifier: GPL-3.0-or-later
#include "results/HydrodataScreens.h"

#include "results/Form11_CenterOfMassTable.h"
#include "results/Form20_CenterOfMass.h"
#include "results/hydrodata_HydrodataViewer.h"

namespace kalvo {

void registerHydrodataScreens(Screens& screens, const std::shared_ptr<HydrodataDesk>& logic,
                              const ResultWindow::MainWindow& mainWindow)
{
    screens.add(QStringLiteral("hydrodata"),
                [logic, mainWindow] { return std::make_unique<hydrodata>(logic, mainWindow); });
    screens.add(QStringLiteral("Form11"), [logic, mainWindow] { return std::make_unique<Form11>(logic, mainWindow); });
    screens.add(QStringLiteral("Form20"), [logic, mainWindow] { return std::make_unique<Form20>(logic, mainWindow); });
}

} // namespace kalvo
