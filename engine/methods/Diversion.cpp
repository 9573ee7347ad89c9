// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/methods/Diversion.h"

#include "engine/methods/Interpolate.h"
#include "engine/methods/Require.h"

#include <algorithm>
#include <limits>

namespace hec1::methods {

void divert(const DiversionRule& rule, double intervalHours, const UnitSystem& units, std::span<const double> flow,
            std::span<double> diverted, std::span<double> remainder)
{
    require(!rule.inflow.empty(), "the diversion table is empty");
    require(rule.inflow.size() == rule.diverted.size(),
            "the diversion table has unequal numbers of inflows and diverted flows");
    require(std::is_sorted(rule.inflow.begin(), rule.inflow.end()), "the inflows of the diversion table fall");

    // Every ordinate but the first stands for one whole interval, the first for half of one. As the hydrograph ends
    // at 0 once the volume is used up, the sum so taken is the area under it.
    double left =
        rule.maxVolume > 0 ? rule.maxVolume * units.storageFlowHours : std::numeric_limits<double>::infinity();
    double share = intervalHours / 2;
    for (std::size_t i = 0; i < flow.size(); ++i) {
        const double inflow = flow[i];
        double out = interpolateHeld(rule.inflow, rule.diverted, inflow);
        if (rule.maxFlow > 0)
            out = std::min(out, rule.maxFlow);
        out = std::clamp(out, 0.0, std::max(inflow, 0.0));
        if (out * share >= left) {
            out = left / share;
            left = 0;
        } else {
            left -= out * share;
        }
        share = intervalHours;
        diverted[i] = out;
        remainder[i] = inflow - out;
    }
}

} // namespace hec1::methods
