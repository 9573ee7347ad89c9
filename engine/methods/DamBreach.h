// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "engine/methods/Reservoir.h"
#include "engine/methods/StorageRouting.h"

#include <optional>
#include <span>

namespace hec1::methods {

/// SB: the breach when it is complete.
struct Breach
{
    double bottom = 0;
    double width = 0;
    double sideSlope = 0;
    double hours = 0; ///< TFAIL
    double failElevation = 0;
};

/// One line of the dam safety table.
struct DamSummary
{
    bool failed = false;
    double failureHours = 0; ///< when the breach began; 0 when it did not
    double peakElevation = 0;
    double depthOverDam = 0; ///< greatest; 0 when not overtopped or there is no ST
    double peakStorage = 0;
    double peakFlow = 0; ///< at the short steps
    double peakFlowHours = 0;
    double hoursOverTop = 0;
    StorageRoutingNotes notes;
};

/// Routes a pool with its outlets, dam and breach. The breach begins when the pool first reaches its fail elevation (on
/// the straight line between ordinates); bottom and width grow in a straight line of time over `hours`, the bottom from
/// the top of the dam (without ST: from the fail elevation). From then on the routing takes steps of one fiftieth of
/// the growth or shorter; ordinates are those of the run. Breach flow = c1 b y^1.5 + c2 z y^2.5 under the head y over
/// the breach bottom (broad-crested weir); tailwater is left out.
/// @param rating mergedRating of the same pool and outlets. Other arguments as routePool.
/// @throws std::invalid_argument as StorageIndication, or for a breach with negative width, slope or duration.
/// Source: HEC-1 User's Manual (1998) section 3 (dam safety analysis); Fread, DAMBRK (1984) for the weir terms.
DamSummary routeDam(const PoolStorage& pool, const PoolOutlets& outlets, const RatingTable& rating,
                    const std::optional<Breach>& breach, double intervalHours, const UnitSystem& units,
                    std::span<const double> inflow, const PoolStart& start, std::span<double> outflow,
                    std::span<double> storage, std::span<double> elevation, std::span<const Pump> pumps = {},
                    std::span<double> pumped = {});

} // namespace hec1::methods
