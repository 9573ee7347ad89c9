// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/methods/Muskingum.h"

#include "engine/methods/Require.h"

#include <algorithm>

namespace hec1::methods {

MuskingumWeights muskingumWeights(double kHours, double x, double intervalHours)
{
    require(isNotNegative(kHours), "Muskingum K is negative");
    require(x >= 0 && x <= 0.5, "Muskingum X is not between 0 and 0.5");
    require(isPositive(intervalHours), "computation interval is not positive");
    const double twoK = 2 * kHours;
    const double divisor = twoK * (1 - x) + intervalHours;
    return {(intervalHours + twoK * x) / divisor, (intervalHours - twoK * x) / divisor,
            (twoK * (1 - x) - intervalHours) / divisor};
}

bool muskingumIsStable(double kHours, double x, double intervalHours)
{
    // A hair of room, so that K and X that sit exactly on the limit are not warned of for the sake of rounding.
    const double ratio = kHours / intervalHours;
    const double room = 1e-9;
    return ratio >= 1 / (2 * (1 - x)) - room && (x <= 0 || ratio <= 1 / (2 * x) + room);
}

void routeMuskingum(std::span<const double> inflow, std::span<double> outflow, double kHours, double x, int steps,
                    double intervalHours)
{
    require(steps >= 1, "number of Muskingum subreaches is below 1");
    const auto [first, second, previous] = muskingumWeights(kHours / steps, x, intervalHours);
    if (outflow.data() != inflow.data())
        std::copy(inflow.begin(), inflow.end(), outflow.begin());
    const std::size_t n = outflow.size();
    if (n == 0)
        return;
    double* q = outflow.data();
    // Two subreaches in one pass: each is a chain of dependent steps, and two chains interleave at the price of one.
    int left = steps;
    for (; left >= 2; left -= 2) {
        double in = q[0], middle = q[0], out = q[0];
        for (std::size_t i = 1; i < n; ++i) {
            const double nextMiddle = first * in + second * q[i] + previous * middle;
            out = first * middle + second * nextMiddle + previous * out;
            in = q[i];
            middle = nextMiddle;
            q[i] = out;
        }
    }
    if (left == 1) {
        double in = q[0], out = q[0];
        for (std::size_t i = 1; i < n; ++i) {
            out = first * in + second * q[i] + previous * out;
            in = q[i];
            q[i] = out;
        }
    }
}

} // namespace hec1::methods
