// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/methods/LagRouting.h"

#include "engine/methods/Require.h"

#include <algorithm>
#include <vector>

namespace hec1::methods {

void routeStraddleStagger(std::span<const double> inflow, std::span<double> outflow, int steps, int averaged, int lag)
{
    require(steps >= 1, "number of routing steps is below 1");
    require(averaged >= 1, "number of averaged ordinates is below 1");
    require(lag >= 0, "lag is negative");
    if (outflow.data() != inflow.data())
        std::copy(inflow.begin(), inflow.end(), outflow.begin());
    const auto n = static_cast<long long>(outflow.size());
    if (n == 0)
        return;

    // sums[i] is the sum of the first i inflows, so that the mean of any stretch costs one subtraction.
    std::vector<double> sums(static_cast<std::size_t>(n) + 1);
    for (int step = 0; step < steps; ++step) {
        double* q = outflow.data();
        for (long long i = 0; i < n; ++i)
            sums[static_cast<std::size_t>(i) + 1] = sums[static_cast<std::size_t>(i)] + q[i];
        const double head = q[0], tail = q[n - 1];
        const auto sumBefore = [&](long long index) { // the ends carry on with their own value
            if (index < 0)
                return head * static_cast<double>(index);
            if (index > n)
                return sums[static_cast<std::size_t>(n)] + tail * static_cast<double>(index - n);
            return sums[static_cast<std::size_t>(index)];
        };
        for (long long i = 0; i < n; ++i) {
            const long long begin = i - lag - averaged / 2;
            q[i] = (sumBefore(begin + averaged) - sumBefore(begin)) / averaged;
        }
    }
}

} // namespace hec1::methods
