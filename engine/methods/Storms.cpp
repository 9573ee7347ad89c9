// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/methods/Storms.h"

#include "engine/methods/Require.h"

#include <algorithm>
#include <cmath>

namespace hec1::methods {

TimeSeries massCurve(const TimeSeries& increments)
{
    TimeSeries mass{increments.startMinutes, increments.intervalMinutes, {}};
    mass.values.reserve(increments.values.size() + 1);
    double sum = 0;
    mass.values.push_back(0);
    for (const double value : increments.values)
        mass.values.push_back(sum += value);
    return mass;
}

void sampleSeries(const TimeSeries& series, double intervalMinutes, std::span<double> values)
{
    require(isPositive(series.intervalMinutes), "interval of the time series is not positive");
    const std::size_t n = series.values.size();
    if (n == 0) {
        std::fill(values.begin(), values.end(), 0.0);
        return;
    }
    const double last = static_cast<double>(n - 1);
    for (std::size_t i = 0; i < values.size(); ++i) {
        const double place = (static_cast<double>(i) * intervalMinutes - series.startMinutes) / series.intervalMinutes;
        if (!(place > 0)) {
            values[i] = series.values.front();
        } else if (place >= last) {
            values[i] = series.values.back();
        } else {
            const auto k = static_cast<std::size_t>(place);
            const double part = place - static_cast<double>(k);
            // Written so that a value that is hit exactly comes back exactly.
            values[i] =
                part == 0 ? series.values[k] : series.values[k] + part * (series.values[k + 1] - series.values[k]);
        }
    }
}

void rainFromMassCurve(const TimeSeries& mass, double intervalMinutes, std::span<double> rain)
{
    sampleSeries(mass, intervalMinutes, rain);
    if (rain.empty())
        return;
    double highest = rain[0];
    rain[0] = 0;
    for (std::size_t i = 1; i < rain.size(); ++i) {
        const double fallen = std::max(rain[i] - highest, 0.0);
        highest = std::max(highest, rain[i]);
        rain[i] = fallen;
    }
}

double massCurveTotal(const TimeSeries& mass)
{
    return mass.values.empty() ? 0 : mass.values.back() - mass.values.front();
}

void scaleToStorm(std::span<double> rain, double patternTotal, double storm)
{
    if (storm == 0)
        return;
    require(isPositive(patternTotal), "the rain pattern holds no rain");
    const double factor = storm / patternTotal;
    for (double& depth : rain)
        depth *= factor;
}

double weightedStormTotal(std::span<const GageTotal> gages, double basinNormalAnnual)
{
    double weights = 0, total = 0, annual = 0;
    bool adjust = basinNormalAnnual > 0;
    for (const GageTotal& gage : gages) {
        require(isNotNegative(gage.weight), "a gage weight is negative");
        weights += gage.weight;
        total += gage.weight * gage.total;
        annual += gage.weight * gage.normalAnnual;
        if (gage.weight > 0 && !(gage.normalAnnual > 0))
            adjust = false;
    }
    require(weights > 0, "the gage weights add up to 0");
    return adjust ? basinNormalAnnual * total / annual : total / weights;
}

void weightedPattern(std::span<const std::span<const double>> patterns, std::span<const double> weights,
                     std::span<double> rain)
{
    require(patterns.size() == weights.size(), "there are not as many gage weights as recording gages");
    double sum = 0;
    for (const double weight : weights) {
        require(isNotNegative(weight), "a gage weight is negative");
        sum += weight;
    }
    require(sum > 0, "the gage weights add up to 0");
    std::fill(rain.begin(), rain.end(), 0.0);
    for (std::size_t j = 0; j < patterns.size(); ++j)
        for (std::size_t i = 0; i < std::min(rain.size(), patterns[j].size()); ++i)
            rain[i] += weights[j] / sum * patterns[j][i];
}

double arealReduction(double squareMiles, double hours)
{
    constexpr std::array kHours{0.5, 1.0, 3.0, 6.0, 24.0, 48.0, 96.0, 168.0, 240.0};
    constexpr std::array kFactor{.48, .35, .22, .17, .09, .068, .055, .049, .044};
    if (!(squareMiles > 0))
        return 1;
    double factor = kFactor.back();
    if (hours <= kHours.front()) {
        factor = kFactor.front();
    } else {
        for (std::size_t i = 1; i < kHours.size(); ++i) {
            if (hours > kHours[i])
                continue;
            const double along = std::log(hours / kHours[i - 1]) / std::log(kHours[i] / kHours[i - 1]);
            factor = kFactor[i - 1] + along * (kFactor[i] - kFactor[i - 1]);
            break;
        }
    }
    return 1 - factor * (1 - std::exp(-0.015 * squareMiles));
}

namespace {

struct DurationDepth
{
    double minutes;
    double depth;
};

/// Factor that turns a partial-duration depth into one of the annual series (TP-40).
double annualSeriesFactor(double frequencyPercent)
{
    if (frequencyPercent == 50)
        return 0.88;
    if (frequencyPercent == 20)
        return 0.96;
    return frequencyPercent == 10 ? 0.99 : 1;
}

/// The depths of the card with those of 10 and 30 minutes put in (HYDRO-35), turned into annual means over the area.
std::vector<DurationDepth> durationDepths(const HypotheticalStorm& storm, const UnitSystem& units)
{
    std::vector<DurationDepth> curve;
    bool gap = false;
    for (std::size_t i = 0; i < storm.depths.size(); ++i) {
        const double depth = storm.depths[i];
        require(isNotNegative(depth), "a depth of the hypothetical storm is negative");
        if (depth == 0) {
            gap = !curve.empty();
            continue;
        }
        require(!gap, "a depth is missing between two durations of the hypothetical storm");
        require(curve.empty() || depth >= curve.back().depth,
                "a depth of the hypothetical storm is less than that of a shorter duration");
        if (i == 1 && !curve.empty())
            curve.push_back({10, 0.59 * depth + 0.41 * storm.depths[0]});
        if (i == 2 && !curve.empty() && storm.depths[1] > 0)
            curve.push_back({30, 0.49 * depth + 0.51 * storm.depths[1]});
        curve.push_back({kHypotheticalMinutes[i], depth});
    }
    require(!curve.empty(), "the hypothetical storm has no depth");
    const double series = annualSeriesFactor(storm.frequencyPercent);
    for (DurationDepth& point : curve)
        point.depth *= series * arealReduction(storm.area * units.squareMiles, point.minutes / 60);
    return curve;
}

/// Depth of the wettest `minutes`: straight lines in log depth against log duration; below the shortest duration in
/// proportion.
double depthOf(const std::vector<DurationDepth>& curve, double minutes)
{
    if (minutes <= curve.front().minutes)
        return curve.front().depth * minutes / curve.front().minutes;
    for (std::size_t i = 1; i < curve.size(); ++i) {
        if (minutes > curve[i].minutes)
            continue;
        const double along =
            std::log(minutes / curve[i - 1].minutes) / std::log(curve[i].minutes / curve[i - 1].minutes);
        return curve[i - 1].depth * std::pow(curve[i].depth / curve[i - 1].depth, along);
    }
    return curve.back().depth;
}

/// Takes out the derived depth of `derived` minutes where with it the interval just outside the given duration `given`
/// would be wetter than the one just inside: the wettest stretch of that length would then hold more than the deck
/// gives.
void dropDerivedDepth(std::vector<DurationDepth>& curve, double derived, double given, double intervalMinutes)
{
    const auto point =
        std::find_if(curve.begin(), curve.end(), [derived](const auto& p) { return p.minutes == derived; });
    if (point == curve.end() || curve.back().minutes <= given || intervalMinutes >= given)
        return;
    const double at = depthOf(curve, given);
    if (depthOf(curve, given + intervalMinutes) - at > at - depthOf(curve, given - intervalMinutes))
        curve.erase(point);
}

} // namespace

double hypotheticalStorm(const HypotheticalStorm& storm, double intervalMinutes, const UnitSystem& units,
                         std::span<double> rain)
{
    require(isPositive(intervalMinutes), "computation interval is not positive");
    std::vector<DurationDepth> curve = durationDepths(storm, units);
    dropDerivedDepth(curve, 30, 60, intervalMinutes);
    dropDerivedDepth(curve, 10, 15, intervalMinutes);
    const double duration = curve.back().minutes;
    const auto count = static_cast<std::ptrdiff_t>(std::ceil(duration / intervalMinutes - 1e-9));
    std::fill(rain.begin(), rain.end(), 0.0);

    // Block k is what the k-th interval of duration adds, so that the wettest k intervals hold the depth of that
    // duration.
    const std::ptrdiff_t middle = count / 2 + 1;
    double before = 0;
    for (std::ptrdiff_t k = 1; k <= count; ++k) {
        const double depth = depthOf(curve, std::min(static_cast<double>(k) * intervalMinutes, duration));
        const std::ptrdiff_t place = k % 2 == 1 ? middle + k / 2 : middle - k / 2;
        if (place > 0 && place < static_cast<std::ptrdiff_t>(rain.size()))
            rain[static_cast<std::size_t>(place)] = depth - before;
        before = depth;
    }
    return curve.back().depth;
}

namespace {

// Share of the largest six hours that falls in each of them (EM 1110-2-1411; Southwestern Division).
constexpr std::array<double, 6> kStandardHours{.10, .12, .15, .38, .14, .11};
constexpr std::array<double, 6> kSouthwesternHours{.04, .08, .19, .50, .11, .08};

double transposition(double given, double area, const UnitSystem& units)
{
    if (given > 0)
        return given;
    const double squareMiles = area * units.squareMiles;
    return squareMiles > 0 ? std::max(1 - 0.3008 / std::pow(squareMiles, 0.17718), 0.80) : 0.80;
}

/// Places in time of ranks 0 (largest), 1, 2, 3: the largest stands third of four, the second before it, the third
/// after.
std::vector<std::size_t> orderInTime(std::size_t count)
{
    switch (count) {
    case 1:
        return {0};
    case 2:
        return {1, 0};
    case 3:
        return {1, 0, 2};
    default:
        return {3, 1, 0, 2};
    }
}

/// Rain from six-hour depths in time order; those of the largest are shared out by hours.
double rainFromSixHours(const std::vector<double>& sixHours, bool southwestern, double intervalMinutes,
                        std::span<double> rain)
{
    const auto largest = std::max_element(sixHours.begin(), sixHours.end());
    const auto& shares = southwestern ? kSouthwesternHours : kStandardHours;
    TimeSeries hourly{0, 60, {}};
    for (auto depth = sixHours.begin(); depth != sixHours.end(); ++depth)
        for (const double share : shares)
            hourly.values.push_back(*depth * (depth == largest ? share : 1.0 / 6));
    const TimeSeries mass = massCurve(hourly);
    rainFromMassCurve(mass, intervalMinutes, rain);
    return massCurveTotal(mass);
}

} // namespace

double probableMaximumStorm(const ProbableMaximumStorm& storm, double intervalMinutes, const UnitSystem& units,
                            std::span<double> rain)
{
    constexpr std::array<std::size_t, 6> kQuarters{1, 2, 4, 8, 12, 16}; // six-hour blocks in each duration
    require(isPositive(storm.indexDepth), "the probable maximum storm has no index depth");
    require(isPositive(intervalMinutes), "computation interval is not positive");
    std::vector<double> blocks; // falling: what each further six hours add
    double before = 0;
    for (std::size_t i = 0; i < kQuarters.size(); ++i) {
        const double percent = storm.percents[i];
        require(isNotNegative(percent), "a percentage of the probable maximum storm is negative");
        if (percent == 0)
            continue;
        require(percent >= before,
                "a percentage of the probable maximum storm is less than that of a shorter duration");
        const double share = (percent - before) / static_cast<double>(kQuarters[i] - blocks.size());
        blocks.resize(kQuarters[i], share);
        before = percent;
    }
    require(!blocks.empty() && before > 0, "the probable maximum storm has no percentages");

    const double toDepth = storm.indexDepth / 100 * transposition(storm.transposition, storm.area, units);
    std::vector<double> inTime;
    const std::size_t days = (blocks.size() + 3) / 4;
    for (const std::size_t day : orderInTime(days)) {
        const std::size_t first = day * 4;
        for (const std::size_t quarter : orderInTime(std::min<std::size_t>(4, blocks.size() - first)))
            inTime.push_back(blocks[first + quarter] * toDepth);
    }
    return rainFromSixHours(inTime, storm.southwestern, intervalMinutes, rain);
}

double standardProjectStorm(const StandardProjectStorm& storm, double intervalMinutes, const UnitSystem& units,
                            std::span<double> rain)
{
    require(isPositive(storm.indexDepth), "the standard project storm has no index depth");
    require(isNotNegative(storm.area), "area of the standard project storm is negative");
    require(isPositive(intervalMinutes), "computation interval is not positive");
    const double squareMiles = storm.area * units.squareMiles;
    const double index = storm.indexDepth * units.inches;
    const std::array<double, 4> dayPercents{3.5, 15.5, std::max(182.15 - 14.3537 * std::log(squareMiles + 80), 0.0),
                                            6.0};

    // Share of the day in each six hours (EM 1110-2-1411 as fitted in the HEC-1 User's Manual).
    const double third = std::min(13.42 / std::pow(index + 11, 0.93), 1.0);
    const double second = std::min(0.055 * std::pow(std::max(index - 6, 0.0), 0.51), 1 - third);
    const double rest = 1 - third - second;
    const double skew = std::min(0.0165, rest / 2);
    const std::array<double, 4> quarters{rest / 2 - skew, second, third, rest / 2 + skew};

    const double toDepth = storm.indexDepth / 100 * transposition(storm.transposition, storm.area, units);
    std::vector<double> inTime;
    for (const double percent : dayPercents)
        for (const double share : quarters)
            inTime.push_back(percent * share * toDepth);
    return rainFromSixHours(inTime, storm.southwestern, intervalMinutes, rain);
}

} // namespace hec1::methods
