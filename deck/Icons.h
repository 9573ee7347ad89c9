// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QIcon>
#include <QString>

class QPalette;

namespace kalvo {

/// One of the program's own line drawings ("open", "undo"), in the palette's text colour and, disabled, in a faint one,
/// so that it suits light and dark desktops. Take it anew when the palette changes.
QIcon lineIcon(const QString& name, const QPalette& palette);

} // namespace kalvo
