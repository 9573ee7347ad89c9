// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <span>

namespace hec1::methods {

/// O2 = first I1 + second I2 + previous O1; the three add up to 1.
struct MuskingumWeights
{
    double first;
    double second;
    double previous;
};

/// Weights of one subreach with travel time `kHours`.
/// @throws std::invalid_argument for K negative, X outside 0..0.5, or an interval that is not positive.
/// Source: Chow, Maidment and Mays (1988) equations 8.4.7 to 8.4.10; HEC-1 User's Manual (1998) section 3.
MuskingumWeights muskingumWeights(double kHours, double x, double intervalHours);

/// True when 1/(2(1-X)) <= K/DT <= 1/(2X): outside it the routed flow can be negative or oscillate.
bool muskingumIsStable(double kHours, double x, double intervalHours);

/// RM: routes through `steps` equal subreaches; `kHours` is the travel time of the whole reach. The first outflow is
/// the first inflow. `outflow` is as long as `inflow` and may be the same memory.
/// @throws std::invalid_argument as muskingumWeights, or for steps below 1.
void routeMuskingum(std::span<const double> inflow, std::span<double> outflow, double kHours, double x, int steps,
                    double intervalHours);

/// The same reach for several hydrographs of `ordinates` values each, one behind the other in `inflows` and `outflows`.
/// Gives exactly what routeMuskingum gives for each; four chains of dependent steps go side by side at the price of
/// one.
void routeMuskingumTogether(std::span<const double> inflows, std::span<double> outflows, std::size_t ordinates,
                            double kHours, double x, int steps, double intervalHours);

} // namespace hec1::methods
