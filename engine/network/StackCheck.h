// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "engine/cards/Diagnostics.h"
#include "engine/network/JobModel.h"

namespace hec1 {

/// Follows the stack of hydrographs through the network without computing, so that all its faults show at once: too few
/// hydrographs to combine or route, flows fetched that nothing stores, hydrographs left over, more of them than memory
/// holds.
void checkStack(const Job& job, Diagnostics& diagnostics);

} // namespace hec1
