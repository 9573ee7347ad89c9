// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/methods/UnitGraphs.h"

#include "engine/methods/Interpolate.h"
#include "engine/methods/Require.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace hec1::methods {

namespace {

// NEH Part 630 chapter 16, table 16-1: time over time of peak, flow over peak flow.
constexpr std::array kScsTime{0.0, .1,  .2,  .3,  .4,  .5,  .6,  .7,  .8,  .9,  1.0, 1.1, 1.2, 1.3, 1.4, 1.5, 1.6,
                              1.7, 1.8, 1.9, 2.0, 2.2, 2.4, 2.6, 2.8, 3.0, 3.2, 3.4, 3.6, 3.8, 4.0, 4.5, 5.0};
constexpr std::array kScsFlow{0.0,  .03,  .10,  .19,  .31,  .47,  .66,  .82,  .93,  .99,  1.0,
                              .99,  .93,  .86,  .78,  .68,  .56,  .46,  .39,  .33,  .28,  .207,
                              .147, .107, .077, .055, .040, .029, .021, .015, .011, .005, 0.0};
static_assert(kScsTime.size() == kScsFlow.size());

// Area under the table: what its ordinates add up to, times the step, once the step is small.
constexpr double scsArea()
{
    double area = 0;
    for (std::size_t i = 1; i < kScsTime.size(); ++i)
        area += (kScsFlow[i] + kScsFlow[i - 1]) / 2 * (kScsTime[i] - kScsTime[i - 1]);
    return area;
}
constexpr double kScsArea = scsArea();
constexpr double kSmallStep = 1e-4; // in times of peak

/// Accumulated share of the area at a share `t` of the time of concentration.
double accumulatedArea(std::span<const double> timeArea, double t)
{
    if (t >= 1)
        return 1;
    if (t <= 0)
        return 0;
    if (timeArea.empty()) {
        const double shorter = std::min(t, 1 - t);
        const double share = 1.414 * shorter * std::sqrt(shorter);
        return t <= 0.5 ? share : 1 - share;
    }
    const double place = t * static_cast<double>(timeArea.size() - 1);
    const auto i = std::min(static_cast<std::size_t>(place), timeArea.size() - 2);
    const double value = timeArea[i] + (place - static_cast<double>(i)) * (timeArea[i + 1] - timeArea[i]);
    return value / timeArea.back();
}

void checkTimeArea(std::span<const double> timeArea)
{
    if (timeArea.empty())
        return;
    require(timeArea.size() >= 2, "the time-area curve has fewer than two values");
    require(timeArea.front() >= 0 && isPositive(timeArea.back()), "the time-area curve has no area");
    require(std::is_sorted(timeArea.begin(), timeArea.end()), "the time-area curve falls");
}

/// Makes the ordinates of a Clark graph of unit volume one after the other, as shares of the volume in an interval.
class ClarkOrdinates
{
public:
    ClarkOrdinates(double tcHours, double storageHours, double intervalHours, std::span<const double> timeArea)
        : m_timeArea(timeArea), m_step(intervalHours / tcHours),
          // A reservoir quicker than half an interval cannot be resolved: the weight would pass 1 and the flow
          // oscillate.
          m_weight(std::min(intervalHours / (storageHours + intervalHours / 2), 1.0))
    {
    }
    double next()
    {
        const double area = accumulatedArea(m_timeArea, static_cast<double>(++m_count) * m_step);
        const double before = m_out;
        m_out += m_weight * (area - m_area - m_out);
        m_area = area;
        return (before + m_out) / 2;
    }
    bool allAreaContributes() const { return m_area >= 1; }

private:
    std::span<const double> m_timeArea;
    double m_step, m_weight;
    double m_area = 0, m_out = 0;
    std::size_t m_count = 0;
};

struct GraphPeak
{
    double share = 0; ///< of the volume in one interval
    double hours = 0;
};

/// Peak of a Clark graph and its time, refined by the parabola through the three highest ordinates.
GraphPeak clarkPeak(double tcHours, double storageHours, double intervalHours, std::span<const double> timeArea)
{
    ClarkOrdinates graph(tcHours, storageHours, intervalHours, timeArea);
    double before = 0, highest = 0, after = 0, last = 0;
    std::size_t at = 0;
    bool afterKnown = true;
    for (std::size_t i = 1;; ++i) {
        const double value = graph.next();
        if (!afterKnown) {
            after = value;
            afterKnown = true;
        }
        if (value > highest) {
            before = last;
            highest = value;
            at = i;
            afterKnown = false;
        }
        last = value;
        if (graph.allAreaContributes() && afterKnown && value < highest)
            break;
    }
    const double bend = before - 2 * highest + after;
    const double offset = bend < 0 ? (before - after) / (2 * bend) : 0;
    return {highest - (before - after) * offset / 4, (static_cast<double>(at) + offset) * intervalHours};
}

struct SnyderParameters
{
    double lagHours;
    double peakingCoefficient;
};

SnyderParameters snyderOf(double tc, double r, double dt, std::span<const double> timeArea)
{
    const GraphPeak peak = clarkPeak(tc, r, dt, timeArea);
    return {1.048 * (peak.hours - 0.75 * dt), peak.share / dt * (peak.hours - dt / 2)};
}

/// Zero of a rising function in [low, high], or the end nearest to it: false position that halves the weight of an end
/// which stays (Illinois), and the interval itself where that goes slowly, as at the small jumps that whole ordinates
/// cause.
template <typename Function> double solveRising(double low, double high, double resolution, Function f)
{
    double atLow = f(low), atHigh = f(high);
    if (atLow >= 0 || atHigh <= 0)
        return atLow >= 0 ? low : high;
    int side = 0;
    for (int i = 0; i < 60 && high - low > resolution; ++i) {
        double middle = i % 4 == 3 ? (low + high) / 2 : (low * atHigh - high * atLow) / (atHigh - atLow);
        middle = std::clamp(middle, low + resolution / 4, high - resolution / 4);
        const double at = f(middle);
        if (at < 0) {
            low = middle;
            atLow = at;
            atHigh /= side == -1 ? 2 : 1;
            side = -1;
        } else {
            high = middle;
            atHigh = at;
            atLow /= side == 1 ? 2 : 1;
            side = 1;
        }
    }
    return (low + high) / 2;
}

} // namespace

std::vector<double> scsUnitGraph(double area, double lagHours, double intervalHours, const UnitSystem& units,
                                 std::size_t maxOrdinates)
{
    require(isPositive(area), "area of the unit graph is not positive");
    require(isPositive(lagHours), "SCS lag is not positive");
    require(isPositive(intervalHours), "computation interval is not positive");
    const double peakHours = intervalHours / 2 + lagHours;
    const double step = intervalHours / peakHours;
    const double peakFlow = units.scsPeak * area / peakHours;

    std::vector<double> graph;
    graph.reserve(std::min(maxOrdinates, static_cast<std::size_t>(std::min(kScsTime.back() / step, 1e7)) + 1));
    double depth = 0;
    const double shareOfUnit = intervalHours / (units.runoffFlow * area);
    std::size_t segment = 0;
    for (std::size_t n = 1;; ++n) {
        const double t = static_cast<double>(n) * step;
        if (t >= kScsTime.back())
            break;
        if (graph.size() == maxOrdinates && step < kSmallStep) {
            depth = kScsArea * peakFlow * peakHours / (units.runoffFlow * area);
            break;
        }
        while (t > kScsTime[segment + 1])
            ++segment;
        const double along = (t - kScsTime[segment]) / (kScsTime[segment + 1] - kScsTime[segment]);
        const double flow = peakFlow * (kScsFlow[segment] + along * (kScsFlow[segment + 1] - kScsFlow[segment]));
        depth += flow * shareOfUnit;
        if (graph.size() < maxOrdinates)
            graph.push_back(flow);
    }
    for (double& flow : graph)
        flow /= depth;
    return graph;
}

std::vector<double> clarkUnitGraph(double area, double tcHours, double storageHours, double intervalHours,
                                   const UnitSystem& units, std::span<const double> timeArea, std::size_t maxOrdinates,
                                   double volumeKept)
{
    require(isPositive(area), "area of the unit graph is not positive");
    require(isPositive(tcHours), "time of concentration is not positive");
    require(isNotNegative(storageHours), "Clark storage coefficient is negative");
    require(isPositive(intervalHours), "computation interval is not positive");
    checkTimeArea(timeArea);
    ClarkOrdinates ordinates(tcHours, storageHours, intervalHours, timeArea);
    const double toFlow = units.runoffFlow * area / intervalHours;
    std::vector<double> graph;
    double volume = 0;
    while (graph.size() < maxOrdinates && !(volume >= volumeKept)) {
        const double share = ordinates.next();
        volume += share;
        graph.push_back(share * toFlow);
    }
    return graph;
}

SnyderGraph snyderUnitGraph(double area, double lagHours, double peakingCoefficient, double intervalHours,
                            const UnitSystem& units, std::span<const double> timeArea, std::size_t maxOrdinates)
{
    require(isPositive(area), "area of the unit graph is not positive");
    require(isPositive(lagHours), "Snyder lag is not positive");
    require(peakingCoefficient > 0 && peakingCoefficient < 1, "Snyder peaking coefficient is not between 0 and 1");
    require(isPositive(intervalHours), "computation interval is not positive");
    require(lagHours / intervalHours <= 1e5, "Snyder lag is too long for the computation interval");
    checkTimeArea(timeArea);

    // The lag grows with the time of concentration, and CP falls as storage takes over from translation.
    const auto tcFor = [&](double storageRatio) {
        return solveRising(0.05 * lagHours, 10 * lagHours, 1e-6 * lagHours, [&](double tc) {
            return snyderOf(tc, storageRatio * tc, intervalHours, timeArea).lagHours - lagHours;
        });
    };
    // The share R / (Tc + R) spreads the search evenly between translation alone and storage alone.
    const double storageShare = solveRising(0, 0.98, 1e-6, [&](double share) {
        const double ratio = share / (1 - share), tc = tcFor(ratio);
        return peakingCoefficient - snyderOf(tc, ratio * tc, intervalHours, timeArea).peakingCoefficient;
    });
    const double storageRatio = storageShare / (1 - storageShare);

    SnyderGraph found;
    found.tcHours = tcFor(storageRatio);
    found.storageHours = storageRatio * found.tcHours;
    const SnyderParameters reached = snyderOf(found.tcHours, found.storageHours, intervalHours, timeArea);
    found.lagHours = reached.lagHours;
    found.peakingCoefficient = reached.peakingCoefficient;
    found.converged = std::abs(reached.lagHours - lagHours) <= 0.01 * lagHours &&
                      std::abs(reached.peakingCoefficient - peakingCoefficient) <= 0.01 * peakingCoefficient;
    found.ordinates =
        clarkUnitGraph(area, found.tcHours, found.storageHours, intervalHours, units, timeArea, maxOrdinates);
    return found;
}

double unitGraphDepth(std::span<const double> unitGraph, double area, double intervalHours, const UnitSystem& units)
{
    double sum = 0;
    for (const double flow : unitGraph)
        sum += flow;
    return area > 0 ? sum * intervalHours / (units.runoffFlow * area) : 0;
}

void convolve(std::span<const double> excess, std::span<const double> unitGraph, std::span<double> flow)
{
    std::fill(flow.begin(), flow.end(), 0.0);
    std::size_t begin = 0, end = excess.size();
    while (begin < end && excess[begin] == 0)
        ++begin;
    while (end > begin && excess[end - 1] == 0)
        --end;
    if (begin == end || begin >= flow.size() || unitGraph.empty())
        return;
    std::span<const double> inner = excess.subspan(begin, end - begin), outer = unitGraph;
    if (inner.size() < outer.size())
        std::swap(inner, outer);

    // Four values of the shorter series go through the longer one at once, so that each flow is loaded and stored
    // once for four products. The zeros around the longer series make the ends plain members of the loop.
    std::vector<double> padded(inner.size() + 6, 0.0);
    std::copy(inner.begin(), inner.end(), padded.begin() + 3);
    const std::size_t reach = inner.size() + 3;
    for (std::size_t i = 0; i < outer.size() && begin + i < flow.size(); i += 4) {
        const auto factor = [&](std::size_t k) { return i + k < outer.size() ? outer[i + k] : 0.0; };
        const double f0 = factor(0), f1 = factor(1), f2 = factor(2), f3 = factor(3);
        if (f0 == 0 && f1 == 0 && f2 == 0 && f3 == 0)
            continue;
        double* __restrict out = flow.data() + begin + i;
        const double* __restrict in = padded.data();
        const std::size_t count = std::min(reach, flow.size() - begin - i);
        for (std::size_t m = 0; m < count; ++m)
            out[m] += (f0 * in[m + 3] + f1 * in[m + 2]) + (f2 * in[m + 1] + f3 * in[m]);
    }
}

} // namespace hec1::methods
