// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <span>

namespace hec1::methods {

/// BF as on the card. Flows in cfs or m3/s.
struct BaseFlowCard
{
    double startFlow = 0;     ///< STRTQ; negative: per unit of area
    double recessionFlow = 0; ///< QRCSN; negative: share of the peak of the total hydrograph; 0: no recession limb
    double hourlyRatio = 1;   ///< RTIOR; values below 1 count as 1
};

/// Adds base flow to direct runoff. Before the recession total(t) = direct(t) + q0 r^-t (t in hours from ordinate 0).
/// After the peak, from each time t1 where total falls through Qr (on the straight line between ordinates) the flow is
/// not below Qr r^-(t-t1); a later rise above that curve follows the total again, and falls back to a new recession.
/// @param flow direct runoff in, total flow out. @param baseFlow total less direct; as long as `flow`, or empty.
/// Source: HEC-1 User's Manual (1998) section 3 (base flow); HEC-HMS Technical Reference Manual (2000) chapter 7.
void addBaseFlow(const BaseFlowCard& card, double area, double intervalHours, std::span<double> flow,
                 std::span<double> baseFlow = {});

} // namespace hec1::methods
