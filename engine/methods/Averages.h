// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <span>

namespace hec1::methods {

/// Index of the first of the greatest values; 0 of an empty span.
std::size_t peakIndex(std::span<const double> values);

/// Mean over the whole series by the trapezoidal rule; a single value is its own mean.
double trapezoidalMean(std::span<const double> values);

/// Greatest mean over any stretch of `hours` by the trapezoidal rule. Where `hours` is longer than the series the mean
/// of the whole series. Cost: one pass, whatever the length of the stretch.
double greatestMean(std::span<const double> values, double hours, double intervalHours);

/// Weight between two index storms for a station of `area`: ln(A/A1) / ln(A2/A1), held between 0 and 1. A first area of
/// 0 counts as 0.01. Source: HEC-1 User's Manual (1998) section 3 (depth-area relationship simulation).
double depthAreaWeight(double area, double lowerArea, double upperArea);

} // namespace hec1::methods
