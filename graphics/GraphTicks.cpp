// SPDX-License-Identifier: GPL-3.0-or-later
#include "graphics/GraphTicks.h"

#include "platform/text.h"

#include <cmath>

namespace kalvo {

namespace {

struct Rung
{
    double below; ///< flow range, not itself
    double step;
};

constexpr Rung kLadder[] = {{3000000, 100000}, {250000, 10000}, {30000, 5000}, {6000, 500}, {2500, 100},
                            {1250, 50},        {250, 10},       {50, 5},       {10, 1},     {3, 0.1}};
constexpr double kLongTick = 150.0; ///< twips
constexpr double kShortTick = 60.0;
constexpr double kFinestLongStep = 100.0;

constexpr double kHourMarksAbove = 100.0; ///< twips an hour
constexpr double kSixHoursFrom = 300.0;   ///< twips for six hours
constexpr double kNearestMarks = 15.0;    ///< twips: a pixel

/// The whole part, where a quotient that is a whole number but for its last bits counts as that number.
double wholePart(double value)
{
    return std::floor(value * (1.0 + 1e-12));
}

/// Every `every`-th hour in view. On a time axis of years only so many that they stand a pixel apart.
std::vector<qint64> hoursInView(qint64 every, double axisLength, double twipsAnHour, double shift)
{
    std::vector<qint64> hours;
    const double apart = static_cast<double>(every) * twipsAnHour;
    const double stride = std::ceil(std::max(1.0, kNearestMarks / apart)) * static_cast<double>(every);
    const double last = (axisLength + shift) / twipsAnHour * (1.0 + 1e-12);
    if (!(last < 9e15)) // beyond it hours are no integers any more
        return hours;
    const double first = std::max(1.0, std::ceil(shift / twipsAnHour / stride - 1e-9));
    for (double n = first; n * stride <= last; ++n)
        hours.push_back(static_cast<qint64>(n * stride));
    return hours;
}

} // namespace

std::vector<FlowTick> flowTicks(double axisLength, double yScale)
{
    std::vector<FlowTick> ticks;
    if (!(yScale > 0.0) || !(axisLength > 0.0))
        return ticks;
    const double range = wholePart(axisLength / yScale);
    for (const Rung& rung : kLadder) {
        if (!(range < rung.below))
            continue;
        const int count = static_cast<int>(wholePart(range / rung.step));
        const double length = rung.step >= kFinestLongStep ? kLongTick : kShortTick;
        for (int number = 1; number <= count; ++number) {
            const double flow = number * rung.step;
            ticks.push_back({rung.step, flow, length, generalText(flow)});
        }
    }
    return ticks;
}

TimeTicks timeTicks(double axisLength, double xScale, double shift)
{
    TimeTicks ticks;
    const double twipsAnHour = 60.0 * xScale;
    if (!(twipsAnHour > 0.0) || !(axisLength > 0.0))
        return ticks;
    if (twipsAnHour > kHourMarksAbove)
        ticks.hourMarks = hoursInView(1, axisLength, twipsAnHour, shift);
    ticks.labelled = hoursInView(6.0 * twipsAnHour < kSixHoursFrom ? 60 : 6, axisLength, twipsAnHour, shift);
    return ticks;
}

} // namespace kalvo
