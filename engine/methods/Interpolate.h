// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
#include <cstddef>
#include <span>

namespace hec1::methods {

/// Straight-line interpolation of y at `x` in a table with `xs` not falling. Outside the table the end value holds.
/// An empty table gives 0. Where several points share one x the last of them counts.
inline double interpolateHeld(std::span<const double> xs, std::span<const double> ys, double x)
{
    const std::size_t n = std::min(xs.size(), ys.size());
    if (n == 0)
        return 0;
    const auto above = static_cast<std::size_t>(
        std::upper_bound(xs.begin(), xs.begin() + static_cast<std::ptrdiff_t>(n), x) - xs.begin());
    if (above == 0)
        return ys[0];
    if (above == n)
        return ys[n - 1];
    const double t = (x - xs[above - 1]) / (xs[above] - xs[above - 1]);
    return ys[above - 1] + t * (ys[above] - ys[above - 1]);
}

/// As interpolateHeld, but past the last point the last rising segment goes on in a straight line.
inline double interpolateOnwards(std::span<const double> xs, std::span<const double> ys, double x)
{
    const std::size_t n = std::min(xs.size(), ys.size());
    if (n < 2 || x <= xs[n - 1])
        return interpolateHeld(xs, ys, x);
    std::size_t i = n - 1;
    while (i > 0 && !(xs[n - 1] > xs[i - 1]))
        --i;
    if (i == 0)
        return ys[n - 1];
    return ys[n - 1] + (x - xs[n - 1]) * (ys[n - 1] - ys[i - 1]) / (xs[n - 1] - xs[i - 1]);
}

} // namespace hec1::methods
