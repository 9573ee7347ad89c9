// SPDX-License-Identifier: GPL-3.0-or-later
// The viewers of the printed report, and what they share.
#pragma once

#include "platform/Screens.h"
#include "platform/Services.h"

#include <functional>

class QAction;
class QMainWindow;

namespace kalvo {

/// What an output viewer is made with.
struct ViewerSurroundings
{
    Screens& screens;
    Services& services;
    std::function<void()> toMainScreen; ///< gives the keyboard back to the deck
    std::function<QString()> deckName;  ///< file name of the deck, offered for a save; may be empty
};

/// Makes the screens known as "Form12" and "Oform".
void registerOutputViewers(const ViewerSurroundings& around);

/// An entry of a viewer's menu under its given name; its body runs guarded.
QAction* addViewerEntry(QMainWindow& viewer, const QString& menu, const char* name, const QString& caption,
                        std::function<void()> body);

} // namespace kalvo
