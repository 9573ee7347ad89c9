// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "results/ResultWindow.h"

#include <memory>

namespace kalvo {

/// Makes the result screens known by their names, ahead of the pages whose commands open them: a command is there only
/// when its screen is.
/// @param mainWindow gives the first main screen, which the screens stand above.
void registerResultScreens(Screens& screens, const std::shared_ptr<ResultDesk>& desk,
                           const ResultWindow::MainWindow& mainWindow);

} // namespace kalvo
