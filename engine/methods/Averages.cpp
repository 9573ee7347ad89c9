// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/methods/Averages.h"

#include <algorithm>
#include <cmath>

namespace hec1::methods {

std::size_t peakIndex(std::span<const double> values)
{
    if (values.empty())
        return 0;
    return static_cast<std::size_t>(std::max_element(values.begin(), values.end()) - values.begin());
}

double trapezoidalMean(std::span<const double> values)
{
    if (values.empty())
        return 0;
    if (values.size() == 1)
        return values[0];
    double sum = (values.front() + values.back()) / 2;
    for (std::size_t i = 1; i + 1 < values.size(); ++i)
        sum += values[i];
    return sum / static_cast<double>(values.size() - 1);
}

double greatestMean(std::span<const double> values, double hours, double intervalHours)
{
    const std::size_t n = values.size();
    const double intervals = hours / intervalHours;
    if (n < 2 || !(intervals < static_cast<double>(n - 1)))
        return trapezoidalMean(values);
    if (!(intervals > 0))
        return values[peakIndex(values)];

    // The stretch holds `whole` intervals and a `part` of one more; it begins or ends at an ordinate.
    const double nearest = std::round(intervals);
    const double exact = std::abs(intervals - nearest) < 1e-9 * nearest ? nearest : intervals;
    const auto whole = static_cast<std::size_t>(exact);
    const double part = exact - static_cast<double>(whole);

    double window = 0;
    for (std::size_t i = 0; i < whole; ++i)
        window += (values[i] + values[i + 1]) / 2;
    const auto partAfter = [&](std::size_t last) {
        return part > 0 ? part * (values[last] + part / 2 * (values[last + 1] - values[last])) : 0;
    };
    const auto partBefore = [&](std::size_t first) {
        return part > 0 ? part * (values[first] + part / 2 * (values[first - 1] - values[first])) : 0;
    };
    double best = -HUGE_VAL;
    for (std::size_t first = 0;; ++first) {
        const std::size_t last = first + whole;
        if (part == 0 || last + 1 < n)
            best = std::max(best, window + partAfter(last));
        if (part > 0 && first > 0)
            best = std::max(best, window + partBefore(first));
        if (last + 1 >= n)
            break;
        window += (values[last] + values[last + 1] - values[first] - values[first + 1]) / 2;
    }
    return best / exact;
}

double depthAreaWeight(double area, double lowerArea, double upperArea)
{
    const double smallest = 0.01;
    const double lower = lowerArea > 0 ? lowerArea : smallest;
    if (!(upperArea > lower))
        return area > lower ? 1 : 0;
    if (!(area > lower))
        return 0;
    return std::min(std::log(area / lower) / std::log(upperArea / lower), 1.0);
}

} // namespace hec1::methods
