// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "engine/methods/ChannelSections.h"
#include "engine/methods/Units.h"

#include <span>
#include <vector>

namespace hec1::methods {

/// RL: flow[i] = max(0, flow[i] - constantLoss) x (1 - lossShare), before routing. `lossShare` is held between 0 and 1.
/// Source: HEC-1 User's Manual (1998) section 3 (channel infiltration).
void takeChannelLoss(double constantLoss, double lossShare, std::span<double> flow);

/// RL fields 3 and 4: percolation through the bed of a reach with a normal-depth table: rate (cfs per acre or m3/s per
/// hectare) times the wetted area (wetted perimeter x reach length), never more than the flow. Below `invert` none.
void takePercolation(double rate, double invert, double reachLength, const std::vector<SectionFlow>& table,
                     const UnitSystem& units, std::span<double> flow);

} // namespace hec1::methods
