// SPDX-License-Identifier: GPL-3.0-or-later
#include "graphics/GraphScale.h"
#include "graphics/GraphTicks.h"

#include "tests/support/GridText.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>

namespace kalvo {
namespace {

constexpr ScrollState kNoVertical{0, 1000, 0};
constexpr ScrollState kNoHorizontal{0, 1000, 1000};

TEST(GraphExtent, TakesTheLargestPeakAndTimeAndLeavesWordsOut)
{
    auto peaks = gridOf("|A  1  1  1|B  1  1  1|C  1  1  1\n9999|12.5|lost|1280");
    auto times = gridOf("Time (hrs)|Time (min)\n0|0\n.5|30\n|x\n|");
    const GraphExtent extent = graphExtent(peaks, times);
    EXPECT_EQ(extent.maxFlow, 1280.0) << "column 0 is no peak";
    EXPECT_EQ(extent.maxTime, 30.0);
    auto low = gridOf("|A\n|-3");
    FlexGrid empty;
    EXPECT_EQ(graphExtent(low, empty).maxFlow, 0.0);
}

TEST(GraphScale, LeavesTheMarginAndTenPercentAboveTheLargestPeak)
{
    const GraphScale scale = graphScale({1000.0, 1495.0}, kNoVertical, kNoHorizontal, 10250.0, 5750.0, 0);
    EXPECT_DOUBLE_EQ(scale.xScale, 10000.0 / 1495.0);
    EXPECT_DOUBLE_EQ(scale.yScale, 5500.0 / 1100.0);
    EXPECT_EQ(scale.originY(), 5500.0);
    EXPECT_NEAR(scale.hoursAt(10000.0), 1495.0 / 60.0, 1e-9);
    EXPECT_NEAR(scale.flowAt(500.0), 1000.0, 1e-9);
}

TEST(GraphScale, BarsShrinkTheRangesAndTellTheirExpansion)
{
    const ScrollState vertical{200, 1000, 600}, horizontal{0, 1000, 250};
    const GraphScale scale = graphScale({1000.0, 600.0}, vertical, horizontal, 10250.0, 5750.0, 50);
    EXPECT_DOUBLE_EQ(scale.flowRange, 1100.0 * 400.0 / 800.0) << "the range goes by both ends of the bar";
    EXPECT_DOUBLE_EQ(scale.timeRange, 150.0);
    EXPECT_DOUBLE_EQ(scale.shift, 5125.0);
    EXPECT_NEAR(scale.hoursAt(0.0), 5125.0 / 10000.0 * 150.0 / 60.0, 1e-9);
    EXPECT_EQ(verticalExpansionText(vertical), "121.0") << "its label by the upper one alone";
    EXPECT_EQ(verticalExpansionText({0, 1000, 0}), "1.0");
    EXPECT_EQ(horizontalExpansionText({0, 1000, 1000}), "201.0");
    EXPECT_EQ(horizontalExpansionText({0, 0, 0}), "1.0") << "a bar without a range divides by nothing";
}

TEST(GraphScale, TheWholeTimeCanBeShiftedIntoView)
{
    EXPECT_EQ(largestShift(kNoHorizontal, 10250.0), 0);
    const ScrollState tenth{0, 1000, 100};
    const int most = largestShift(tenth, 10250.0);
    const GraphScale scale = graphScale({1.0, 1000.0}, kNoVertical, tenth, 10250.0, 5750.0, most);
    EXPECT_GE(scale.hoursAt(scale.axisWidth), 1000.0 / 60.0);
    EXPECT_EQ(largestShift({0, 1000, 0}, 10250.0), 0);
    EXPECT_EQ(largestShift({0, 1000, 1}, 100.0), 0) << "a picture smaller than its margin";
}

TEST(GraphScale, NullRangesNeverDivide)
{
    const auto isNull = [](GraphExtent extent, ScrollState v, ScrollState h, double width) {
        const GraphScale scale = graphScale(extent, v, h, width, 5000.0, 0);
        EXPECT_EQ(scale.hoursAt(100.0), 0.0);
        EXPECT_EQ(scale.flowAt(100.0), 0.0);
        return scale.isNull();
    };
    EXPECT_TRUE(isNull({0.0, 600.0}, kNoVertical, kNoHorizontal, 9000.0)) << "peaks of zero";
    EXPECT_TRUE(isNull({10.0, 0.0}, kNoVertical, kNoHorizontal, 9000.0)) << "one ordinate";
    EXPECT_TRUE(isNull({10.0, 600.0}, {0, 1000, 1000}, kNoHorizontal, 9000.0)) << "bar at its upper end";
    EXPECT_TRUE(isNull({10.0, 600.0}, kNoVertical, {0, 1000, 0}, 9000.0)) << "bar at its left end";
    EXPECT_TRUE(isNull({10.0, 600.0}, {5, 5, 5}, {0, 0, 0}, 9000.0)) << "bars without a range";
    EXPECT_TRUE(isNull({10.0, 600.0}, kNoVertical, kNoHorizontal, 250.0)) << "no room but the margin";
    EXPECT_TRUE(isNull({1e-310, 600.0}, kNoVertical, kNoHorizontal, 9000.0)) << "beyond all numbers";
}

TEST(GraphScale, PointerTexts)
{
    const GraphScale scale = graphScale({1000.0, 600.0}, kNoVertical, kNoHorizontal, 10250.0, 5750.0, 0);
    EXPECT_EQ(pointerHoursText(scale, 10000.0), "10.");
    EXPECT_EQ(pointerHoursText(scale, 1234.0), "1.23");
    EXPECT_EQ(pointerFlowText(scale, 0.0), "1100.");
    EXPECT_EQ(pointerFlowText(scale, 3333.0), "433.4");
    EXPECT_EQ(pointerFlowText(scale, 5501.0), "0") << "below the axis";
}

/// Number of ticks of each step, coarsest first: "1x100 5x5".
std::string rungs(double range)
{
    std::string text;
    const std::vector<FlowTick> ticks = flowTicks(7000.0, 7000.0 / range);
    for (size_t i = 0; i < ticks.size();) {
        size_t next = i;
        while (next < ticks.size() && ticks[next].step == ticks[i].step)
            ++next;
        text +=
            (text.empty() ? "" : " ") + std::to_string(next - i) + "x" +
            std::to_string(ticks[i].step).substr(0, ticks[i].step < 1 ? 3 : std::to_string(ticks[i].step).find('.'));
        i = next;
    }
    return text;
}

TEST(FlowTicks, EveryRungAboveTheRangeIsDrawnFromTheCoarsestOn)
{
    const std::map<double, std::string> cases = {{4000000, ""},
                                                 {3000000, ""},
                                                 {2999999, "29x100000"},
                                                 {250000, "2x100000"},
                                                 {249999, "2x100000 24x10000"},
                                                 {30000, "3x10000"},
                                                 {6000, "1x5000"},
                                                 {5999, "1x5000 11x500"},
                                                 {2500, "5x500"},
                                                 {1250, "2x500 12x100"},
                                                 {1249, "2x500 12x100 24x50"},
                                                 {249, "2x100 4x50 24x10"},
                                                 {10, "1x10 2x5"},
                                                 {9.9, "1x5 9x1"},
                                                 {3, "3x1"},
                                                 {2.9, "2x1 20x0.1"},
                                                 {1, "1x1 10x0.1"},
                                                 {0.9, ""},
                                                 {0.0, ""}};
    for (const auto& [range, expected] : cases)
        EXPECT_EQ(rungs(range), expected) << range;
}

TEST(FlowTicks, LengthsAndLabels)
{
    const std::vector<FlowTick> ticks = flowTicks(7000.0, 7000.0 / 240.0);
    EXPECT_EQ(ticks.front().label, "100");
    EXPECT_EQ(ticks.front().length, 150.0);
    EXPECT_EQ(ticks[2].step, 50.0);
    EXPECT_EQ(ticks[2].length, 60.0) << "finer than 100";
    const std::vector<FlowTick> small = flowTicks(7000.0, 7000.0 / 2.0);
    EXPECT_EQ(small[2].label, "0.1");
    EXPECT_EQ(small[4].label, "0.3") << "and not 0.30000000000000004";
    EXPECT_EQ(small.back().label, "2");
    EXPECT_TRUE(flowTicks(7000.0, 0.0).empty());
    EXPECT_TRUE(flowTicks(7000.0, -1.0).empty());
}

TEST(TimeTicks, MarksGoByTheRoomOfAnHour)
{
    using testing::ElementsAre;
    const auto at = [](double twipsAnHour, double hours) {
        return timeTicks(twipsAnHour * hours, twipsAnHour / 60.0, 0.0);
    };
    EXPECT_EQ(at(101.0, 24.0).hourMarks.size(), 24u);
    EXPECT_TRUE(at(100.0, 24.0).hourMarks.empty()) << "over 100, not from 100 on";
    EXPECT_THAT(at(101.0, 25.0).labelled, ElementsAre(6, 12, 18, 24));
    EXPECT_THAT(at(50.0, 130.0).labelled, testing::Contains(6)) << "six hours of exactly 300 twips";
    EXPECT_THAT(at(49.9, 130.0).labelled, ElementsAre(60, 120));
    EXPECT_THAT(at(101.0, 5.0).labelled, ElementsAre());
    // Whole hours that no division gives exactly.
    const TimeTicks odd = timeTicks(10000.0, 10000.0 / (6.0 * 60.0 * 3.0), 0.0);
    EXPECT_THAT(odd.labelled, ElementsAre(6, 12, 18));
}

TEST(TimeTicks, ShiftedAndEndlessAxes)
{
    const TimeTicks shifted = timeTicks(1500.0, 2.0, 120.0 * 10.5);
    EXPECT_EQ(shifted.hourMarks.front(), 11) << "hours left of the picture are not drawn";
    EXPECT_EQ(shifted.labelled, (std::vector<qint64>{12, 18}));
    EXPECT_TRUE(timeTicks(1500.0, 0.0, 0.0).labelled.empty());
    // A table whose times are damaged must not draw a mark for every 60 hours of a million years.
    EXPECT_LE(timeTicks(10000.0, 10000.0 / 1e12, 0.0).labelled.size(), 1000u);
    EXPECT_TRUE(timeTicks(10000.0, 1e-300, 0.0).labelled.empty());
}

} // namespace
} // namespace kalvo
