// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "deck/FileCommands.h"

#include <functional>

namespace kalvo {

/// The pages that can take a deck from before a crash.
struct RecoveryPages
{
    FileCommands& first;
    /// Opens the second page and gives its commands; empty where there is no such page.
    std::function<FileCommands*()> second = {};
};

/// Called once the program has started, the command line's deck included: asks for each deck that a program left behind
/// whether to open it, as long as there is a page for it. A deck that is wanted comes up unsaved; one that is not goes
/// to the copy of the last unsaved deck and is never asked about again. The rest waits for the next start.
void offerLeftDecks(Services& services, const RecoveryPages& pages);

} // namespace kalvo
