// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <span>

namespace hec1 {

/// The stretches over which the greatest mean is printed, in hours; the whole run comes behind them.
inline constexpr std::array<double, 3> kAverageHours{6, 24, 72};

/// Greatest means over 6, 24 and 72 hours and the mean of the whole run; a run shorter than a stretch gives its own
/// mean.
std::array<double, 4> greatestMeans(std::span<const double> values, double intervalHours);

/// Decimals of a table of flows whose greatest is given: small flows need them to be told apart.
int flowDecimals(double greatest);

} // namespace hec1
