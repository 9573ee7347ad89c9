// SPDX-License-Identifier: GPL-3.0-or-later
// What a program without a window asks of the terminal that it was started from.
#pragma once

#include <functional>

namespace kalvo {

/// True when a person reads what is written there: progress belongs on a terminal and nowhere else.
bool isStandardErrorATerminal();
bool isStandardOutputATerminal();

/// Calls `stop` from the event loop of the calling thread when the user presses Ctrl+C or the program is asked to end
/// (SIGINT, SIGTERM, SIGHUP). A second request ends the program at once, in case the first hangs. One caller only: a
/// later call replaces the earlier function, and an empty one restores what the system does by itself.
void onInterrupt(std::function<void()> stop);

} // namespace kalvo
