// SPDX-License-Identifier: GPL-3.0-or-later
#include "run/ViewerCommands.h"

namespace kalvo {

ViewerCommands::ViewerCommands(Commands& commands, Screens& screens, const RunEvents& events)
{
    commands.add(
        QStringLiteral("viewhec1"), [&screens] { screens.show(QStringLiteral("Form12")); }, logRun);
    // Hidden ones too: they forget which run they show.
    connect(&events, &RunEvents::finished, this, [&screens] {
        screens.repaint(QStringLiteral("Form12"));
        screens.repaint(QStringLiteral("Oform"));
    });
}

ViewerCommands::~ViewerCommands() = default;

} // namespace kalvo
