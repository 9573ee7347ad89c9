// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QPalette>
#include <QString>

namespace kalvo {

/// Colours of a dark desktop, for systems whose own Qt does not follow theirs.
QPalette darkPalette();

/// "dark" and "light" put the program into those colours whatever the desktop says; any other text leaves them to the
/// desktop.
void applyTheme(const QString& theme);

} // namespace kalvo
