// SPDX-License-Identifier: GPL-3.0-or-later
// The viewers of reservoir routings, and what they share.
#pragma once

#include "platform/Screens.h"
#include "platform/Services.h"

#include <QList>

#include <functional>

class QAction;
class QMainWindow;

namespace kalvo {

/// Makes the screens known as "frmRouting", "DetRes" and "detres2".
/// @param toMainScreen is called when the user goes back to the main screen
void registerRoutingScreens(Screens& screens, Services& services, std::function<void()> toMainScreen);

/// What the menus of the viewers do. A body that is missing leaves its entry out.
struct RoutingMenu
{
    std::function<void()> save, saveCsv, copy, copyAsData, selectAll, find, findAgain, grid, goBack;
};

/// Builds the menu bar of a viewer with the entries that have bodies.
/// @return entries for its pop-up
QList<QAction*> buildRoutingMenu(QMainWindow& viewer, const RoutingMenu& menu);

} // namespace kalvo
