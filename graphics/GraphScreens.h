// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "graphics/GRAPHER_Grapher.h"
#include "platform/Screens.h"
#include "results/ResultDesk.h"

#include <memory>

namespace kalvo {

/// Makes the screen known as "GRAPHER". The command `graph` exists only where it is.
/// @param sources is asked at each load, so that what it tells may come later than this call.
void registerGrapher(Screens& screens, std::shared_ptr<ResultDesk> desk, GraphSources sources);

} // namespace kalvo
