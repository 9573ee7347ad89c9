// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "engine/methods/ChannelFlow.h"

#include <span>

namespace hec1::methods {

/// Internal steps of a Muskingum-Cunge routing, for the report.
struct MuskingumCungeSteps
{
    double seconds = 0;
    double distance = 0; ///< ft or m
    double peakFlow = 0; ///< greatest outflow at an internal step
    double peakMinutes = 0;
};

/// RD: Muskingum-Cunge routing with parameters that follow the flow.
/// @param lateral total inflow along the reach (cfs or m3/s) at each ordinate, spread evenly; or empty.
/// @param outflow as long as `inflow`; may be the same memory. The first outflow is that of steady flow.
/// @throws std::invalid_argument for a length, slope or interval that is not positive.
/// Source: Cunge (1969), Ponce and Yevjevich (1978); HEC-1 User's Manual (1998) section 3; HEC-HMS Technical Reference
/// Manual (2000) chapter 8; Chow, Maidment and Mays (1988) section 9.7.
MuskingumCungeSteps routeMuskingumCunge(const ChannelFlow& channel, double length, double slope, double intervalHours,
                                        std::span<const double> inflow, std::span<const double> lateral,
                                        std::span<double> outflow);

} // namespace hec1::methods
