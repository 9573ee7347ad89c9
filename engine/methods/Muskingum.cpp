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

namespace {

/// `kTogether` hydrographs of n values each, one behind the other, through one subreach.
template <std::size_t kTogether>
void routeLanes(const double* in, double* out, std::size_t n, const MuskingumWeights& weights)
{
    double before[kTogether], q[kTogether];
    for (std::size_t k = 0; k < kTogether; ++k)
        out[k * n] = q[k] = before[k] = in[k * n];
    for (std::size_t i = 1; i < n; ++i)
        for (std::size_t k = 0; k < kTogether; ++k) {
            const double now = in[k * n + i];
            q[k] = weights.first * before[k] + weights.second * now + weights.previous * q[k];
            before[k] = now;
            out[k * n + i] = q[k];
        }
}

} // namespace

void routeMuskingumTogether(std::span<const double> inflows, std::span<double> outflows, std::size_t ordinates,
                            double kHours, double x, int steps, double intervalHours)
{
    const std::size_t n = ordinates, count = n == 0 ? 0 : outflows.size() / n;
    std::size_t done = 0;
    if (steps == 1) {
        const MuskingumWeights weights = muskingumWeights(kHours, x, intervalHours);
        for (; done + 4 <= count; done += 4)
            routeLanes<4>(inflows.data() + done * n, outflows.data() + done * n, n, weights);
        for (; done + 2 <= count; done += 2)
            routeLanes<2>(inflows.data() + done * n, outflows.data() + done * n, n, weights);
    }
    for (; done < count; ++done)
        routeMuskingum(inflows.subspan(done * n, n), outflows.subspan(done * n, n), kHours, x, steps, intervalHours);
}

} // namespace hec1::methods
