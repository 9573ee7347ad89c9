// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/Screens.h"
#include "results/HydrodataDesk.h"
#include "results/ResultWindow.h"

#include <memory>

namespace kalvo {

/// Makes the screens known as "hydrodata", "Form11" and "Form20".
void registerHydrodataScreens(Screens& screens, const std::shared_ptr<HydrodataDesk>& logic,
                              const ResultWindow::MainWindow& mainWindow);

} // namespace kalvo
