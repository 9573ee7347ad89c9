// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "engine/methods/Units.h"

#include <span>

namespace hec1::methods {

/// DT with DI and DQ.
struct DiversionRule
{
    std::span<const double> inflow;   ///< DI, not falling
    std::span<const double> diverted; ///< DQ
    double maxFlow = 0;               ///< DVRSMX; 0: no limit
    double maxVolume = 0;             ///< DSTRMX in acre-feet or thousand cubic metres; 0: no limit
};

/// Splits a hydrograph. The diverted flow follows the table (held outside it), never exceeds the inflow or `maxFlow`,
/// and stops for the rest of the run once `maxVolume` has gone: the volume under the diverted hydrograph does not
/// exceed it.
/// @param remainder as long as `flow`, may be the same memory; `diverted` likewise.
/// @throws std::invalid_argument for unequal counts, an empty table or one whose inflows fall.
/// Source: HEC-1 User's Manual (1998) section 3 (diversions).
void divert(const DiversionRule& rule, double intervalHours, const UnitSystem& units, std::span<const double> flow,
            std::span<double> diverted, std::span<double> remainder);

} // namespace hec1::methods
