// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "engine/methods/Units.h"

#include <array>
#include <cstddef>
#include <span>
#include <vector>

namespace hec1::methods {

/// A series of the deck (PI, PC, QI, QO ...) with the time of its first value, in minutes from ordinate 0.
struct TimeSeries
{
    double startMinutes = 0;
    double intervalMinutes = 0;
    std::vector<double> values;
};

/// PI to a mass curve: one value more than `increments`; it begins with 0 at the start of the first interval.
TimeSeries massCurve(const TimeSeries& increments);

/// Rain of each of `rain.size()` computation intervals (element 0 is 0, element i fell in the interval that ends at
/// ordinate i) from a mass curve (PC, or massCurve of a PI), on straight lines, flat outside. A falling mass curve
/// counts as flat.
/// @throws std::invalid_argument for an interval that is not positive.
void rainFromMassCurve(const TimeSeries& mass, double intervalMinutes, std::span<double> rain);

/// Whole depth of a mass curve: last value less first.
double massCurveTotal(const TimeSeries& mass);

/// PB: scales a pattern so that the whole of it (`patternTotal`, also what lies outside the run) comes to `storm`.
/// A storm of 0 leaves the pattern as it is. @throws std::invalid_argument when the pattern holds no rain.
void scaleToStorm(std::span<double> rain, double patternTotal, double storm);

/// QI, QO ...: instantaneous series on straight lines; the end values hold outside.
void sampleSeries(const TimeSeries& series, double intervalMinutes, std::span<double> values);

/// A gage as PT and PR weigh it.
struct GageTotal
{
    double total = 0;        ///< PRCPN, or the sum of a recording gage
    double normalAnnual = 0; ///< ANAPN; 0: not given
    double weight = 0;       ///< PW
};

/// Weighted storm total of a subbasin, adjusted by normal annual precipitation when the subbasin and every gage have
/// it.
/// @throws std::invalid_argument when weights are negative or add up to 0.
/// Source: HEC-1 User's Manual (1998) section 3 (precipitation, weighted gages).
double weightedStormTotal(std::span<const GageTotal> gages, double basinNormalAnnual);

/// Weighted pattern of recording gages: pattern[i] = sum(p[j][i] w[j]) / sum w.
/// @throws std::invalid_argument for unequal counts or weights that are negative or add up to 0.
void weightedPattern(std::span<const std::span<const double>> patterns, std::span<const double> weights,
                     std::span<double> rain);

/// PH durations in minutes: 5, 15, 60 minutes, 2, 3, 6, 12, 24 hours, 2, 4, 7, 10 days.
inline constexpr std::array<double, 12> kHypotheticalMinutes{5,   15,   60,   120,  180,   360,
                                                             720, 1440, 2880, 5760, 10080, 14400};

/// PH as on the card.
struct HypotheticalStorm
{
    double frequencyPercent = 0;     ///< 50, 20 and 10 turn the depths into an annual series
    double area = 0;                 ///< storm area, sq mi or sq km; 0: no reduction
    std::array<double, 12> depths{}; ///< in or mm; 0: not given
};

/// Factor by which an areal mean is less than the point depth. Source: U.S. Weather Bureau TP-40 and TP-49 as fitted in
/// the HEC-1 User's Manual (1998) section 3. @param squareMiles storm area. @param hours duration.
double arealReduction(double squareMiles, double hours);

/// Blocks of the balanced storm, one for each interval of the run from the first on; element 0 of `rain` is 0, the
/// first block is element 1. Depths lie on straight lines of log depth against log duration; blocks fall off to both
/// sides of the middle. Returns the depth of the whole storm, also what lies behind the end of `rain`.
/// @throws std::invalid_argument when no depth is given, one is negative or falls with duration, or one inside is
/// missing. Source: HEC-1 User's Manual (1998) section 3 (hypothetical storms); TP-40; NWS HYDRO-35.
double hypotheticalStorm(const HypotheticalStorm& storm, double intervalMinutes, const UnitSystem& units,
                         std::span<double> rain);

/// PM as on the card.
struct ProbableMaximumStorm
{
    double indexDepth = 0;
    double transposition = 0; ///< TRSPC; 0: 1 - 0.3008 / TRSDA^0.17718, at least 0.80
    double area = 0;          ///< TRSDA
    bool southwestern = false;
    std::array<double, 6> percents{}; ///< largest 6, 12, 24, 48, 72, 96 hours; 0: not used
};
/// Rain of the storm from ordinate 0 on; returns its total depth.
/// @throws std::invalid_argument without an index depth or without percentages.
/// Source: HMR-33; EM 1110-2-1411; HEC-1 User's Manual (1998) section 3.
double probableMaximumStorm(const ProbableMaximumStorm& storm, double intervalMinutes, const UnitSystem& units,
                            std::span<double> rain);

/// PS as on the card.
struct StandardProjectStorm
{
    double indexDepth = 0;
    double transposition = 0;
    double area = 0;
    bool southwestern = false;
};
/// Rain of the 96-hour storm from ordinate 0 on; returns its total depth.
double standardProjectStorm(const StandardProjectStorm& storm, double intervalMinutes, const UnitSystem& units,
                            std::span<double> rain);

} // namespace hec1::methods
