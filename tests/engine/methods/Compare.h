// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numeric>
#include <random>
#include <span>
#include <vector>

namespace hec1::methods::test {

using Values = std::vector<double>;

/// Where two series differ most, and by how much.
struct Deviation
{
    std::size_t index = 0;
    double absolute = 0;
};

inline Deviation worstDeviation(std::span<const double> computed, std::span<const double> expected)
{
    Deviation worst;
    for (std::size_t i = 0; i < std::min(computed.size(), expected.size()); ++i) {
        const double d = std::abs(computed[i] - expected[i]);
        if (!(d <= worst.absolute))
            worst = {i, d};
    }
    return worst;
}

inline void expectSeries(std::span<const double> computed, std::span<const double> expected, double tolerance)
{
    ASSERT_EQ(computed.size(), expected.size());
    const Deviation worst = worstDeviation(computed, expected);
    EXPECT_LE(worst.absolute, tolerance) << "element " << worst.index << " is " << computed[worst.index]
                                         << ", expected " << expected[worst.index];
}

inline double sum(std::span<const double> values)
{
    return std::accumulate(values.begin(), values.end(), 0.0);
}

/// A flood of one rise and one fall on top of `base`, `count` ordinates long.
inline Values flood(std::size_t count, double base, double peak, std::size_t peakAt)
{
    Values q(count);
    for (std::size_t i = 0; i < count; ++i) {
        const double t = static_cast<double>(i) / static_cast<double>(peakAt);
        q[i] = base + (peak - base) * std::pow(t * std::exp(1 - t), 4);
    }
    return q;
}

inline Values randomValues(std::size_t count, double low, double high, unsigned seed)
{
    std::mt19937 generator(seed);
    std::uniform_real_distribution<double> uniform(low, high);
    Values values(count);
    for (double& v : values)
        v = uniform(generator);
    return values;
}

} // namespace hec1::methods::test
