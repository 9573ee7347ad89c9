// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "run/ViewerWindow.h"

namespace kalvo {

/// Makes the screens known as "Form12" and "Oform".
void registerOutputViewers(const ViewerSurroundings& around);

} // namespace kalvo
