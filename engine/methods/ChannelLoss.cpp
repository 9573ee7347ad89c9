// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/methods/ChannelLoss.h"

#include "engine/methods/Interpolate.h"

#include <algorithm>

namespace hec1::methods {

void takeChannelLoss(double constantLoss, double lossShare, std::span<double> flow)
{
    const double kept = 1 - std::clamp(lossShare, 0.0, 1.0);
    const double constant = std::max(constantLoss, 0.0);
    for (double& q : flow)
        q = std::max(q - constant, 0.0) * kept;
}

void takePercolation(double rate, double invert, double reachLength, const std::vector<SectionFlow>& table,
                     const UnitSystem& units, std::span<double> flow)
{
    std::vector<double> flows, losses;
    flows.reserve(table.size());
    losses.reserve(table.size());
    for (const SectionFlow& level : table) {
        const double wetted = level.elevation > invert ? level.wettedPerimeter * reachLength : 0;
        flows.push_back(level.flow);
        losses.push_back(rate * wetted / units.lossAreaInLengths);
    }
    for (double& q : flow)
        q = std::max(q - std::max(interpolateOnwards(flows, losses, q), 0.0), 0.0);
}

} // namespace hec1::methods
