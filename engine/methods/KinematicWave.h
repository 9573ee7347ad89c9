// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "engine/methods/ChannelFlow.h"

#include <span>
#include <vector>

namespace hec1::methods {

/// UK: one overland-flow plane.
struct OverlandPlane
{
    double length = 0; ///< ft or m
    double slope = 0;
    double roughness = 0;
    double percent = 100; ///< of the subbasin
    int minSteps = 5;     ///< least number of distance steps
};

/// Flow off a unit width of plane (ft2/s or m2/s) at each ordinate.
/// @param excess depth (in or mm) of the interval that ends at the ordinate. @param runoff as long as `excess`.
/// @throws std::invalid_argument for a length, slope, roughness or interval that is not positive.
/// Source: Lighthill and Whitham (1955), Wooding (1965); HEC-1 User's Manual (1998) section 3 (kinematic wave);
/// Chow, Maidment and Mays (1988) section 9.3.
void overlandFlow(const OverlandPlane& plane, double intervalHours, const UnitSystem& units,
                  std::span<const double> excess, std::span<double> runoff);

/// RK: kinematic-wave routing.
/// @param inflow at the head of the channel, or empty. @param lateral total inflow along the channel, spread evenly, or
/// empty. At least one is given. @param outflow as long; may be the same memory as either.
/// @throws std::invalid_argument for a length or interval that is not positive, or no or unequal inflows.
void routeKinematicWave(const ChannelFlow& channel, double length, int minSteps, double intervalHours,
                        std::span<const double> inflow, std::span<const double> lateral, std::span<double> outflow);

/// One channel of a kinematic-wave subbasin, from collectors down to the main channel, which stands last.
struct SubbasinChannel
{
    StandardChannel channel;
    double contributingArea = 0; ///< of one typical collector (sq mi or sq km); not used for the main channel
    int minSteps = 2;
    bool muskingumCunge = false; ///< an RD card in place of RK
};

/// UK with RK or RD: rain to flow through planes, collectors and main channel. The outflow of a typical collector times
/// (area served by the next channel / its own area) enters the next evenly along its length.
/// @param excess one span for each plane. @param upstream enters the head of the main channel, or empty.
/// @param flow as long as the excess.
/// @throws std::invalid_argument as the parts, for a collector without area, or planes that do not add up to more than
/// 0 percent.
void kinematicSubbasin(std::span<const OverlandPlane> planes, std::span<const std::span<const double>> excess,
                       std::span<const SubbasinChannel> channels, double area, double intervalHours,
                       const UnitSystem& units, std::span<const double> upstream, std::span<double> flow);

} // namespace hec1::methods
