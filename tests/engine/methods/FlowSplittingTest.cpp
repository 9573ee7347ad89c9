// SPDX-License-Identifier: GPL-3.0-or-later
// Base flow, diversions, channel losses and averages: the methods that work ordinate by ordinate.
#include "engine/methods/Averages.h"
#include "engine/methods/BaseFlow.h"
#include "engine/methods/ChannelLoss.h"
#include "engine/methods/Diversion.h"
#include "engine/methods/Interpolate.h"

#include "tests/engine/methods/Compare.h"

namespace hec1::methods::test {
namespace {

constexpr UnitSystem kEnglish = english();

TEST(BaseFlow, RecedesFromAShareOfThePeak)
{
    Values flow{0, 100, 300, 200, 100, 50, 20, 5, 0, 0}, base(10);
    const Values direct = flow;
    addBaseFlow({20, -.2, 1.1}, 1, 1, flow, base);
    expectSeries(flow, Values{20.00, 118.18, 316.53, 215.03, 113.66, 63.20, 57.46, 52.23, 47.48, 43.17}, .006);
    for (std::size_t i = 0; i < flow.size(); ++i)
        EXPECT_NEAR(direct[i] + base[i], flow[i], 1e-12);
}

TEST(BaseFlow, ReadsTheCardSignsAsDocumented)
{
    Values flow(4, 0.0);
    addBaseFlow({-3, 0, 0}, 10, 1, flow);
    expectSeries(flow, Values(4, 30.0), 1e-12); // per unit of area; a ratio below 1 is constant flow
    Values absolute{0, 100, 40, 10, 0, 0};
    addBaseFlow({0, 25, 1}, 1, 1, absolute);
    expectSeries(absolute, Values{0, 100, 40, 25, 25, 25}, 1e-12);
}

TEST(BaseFlow, SecondFloodRisesAboveTheRecessionAndRecedesAnew)
{
    Values flow{0, 400, 100, 0, 0, 200, 0, 0};
    addBaseFlow({0, 50, 2}, 1, 1, flow);
    EXPECT_DOUBLE_EQ(flow[5], 200);
    EXPECT_NEAR(flow[3], 50 * std::pow(2, -.5), 1e-9);
    EXPECT_NEAR(flow[6], 50 * std::pow(2, -.25), 1e-9);
    EXPECT_NEAR(flow[7], flow[6] / 2, 1e-9);
}

TEST(Diversion, FollowsItsTable)
{
    const Values inflows{0, 100, 150, 200, 300, 400}, diverted{0, 0, 15, 50, 140, 235};
    const Values flow{250, 0, 1000, -5};
    Values out(4), rest(4);
    divert({inflows, diverted, 0, 0}, 1, kEnglish, flow, out, rest);
    expectSeries(out, Values{95, 0, 235, 0}, 1e-9);
    expectSeries(rest, Values{155, 0, 765, -5}, 1e-9);
}

TEST(Diversion, KeepsToItsGreatestRateAndVolume)
{
    const Values table{0, 1000};
    const Values flow = flood(200, 0, 800, 40);
    Values out(200), rest(200);
    divert({table, table, 300, 0}, .25, kEnglish, flow, out, rest);
    EXPECT_DOUBLE_EQ(*std::max_element(out.begin(), out.end()), 300);
    const double whole = trapezoidalMean(out) * 199 * .25 / kEnglish.storageFlowHours;

    divert({table, table, 300, whole / 3}, .25, kEnglish, flow, out, rest);
    EXPECT_NEAR(trapezoidalMean(out) * 199 * .25 / kEnglish.storageFlowHours, whole / 3, 1e-9 * whole);
    EXPECT_EQ(out.back(), 0);
    for (std::size_t i = 0; i < flow.size(); ++i)
        EXPECT_NEAR(out[i] + rest[i], flow[i], 1e-12);
}

TEST(Diversion, RefusesATableThatMakesNoSense)
{
    Values one(1), other(1);
    const Values flow{1};
    const Values falling{5, 1}, rising{0, 1}, longer{0, 1, 2}, none;
    EXPECT_THROW(divert({falling, rising, 0, 0}, 1, kEnglish, flow, one, other), std::invalid_argument);
    EXPECT_THROW(divert({longer, rising, 0, 0}, 1, kEnglish, flow, one, other), std::invalid_argument);
    EXPECT_THROW(divert({none, none, 0, 0}, 1, kEnglish, flow, one, other), std::invalid_argument);
}

TEST(ChannelLoss, TakesTheConstantThenTheShare)
{
    Values flow{0, 5, 100, -3};
    takeChannelLoss(10, .2, flow);
    expectSeries(flow, Values{0, 0, 72, 0}, 1e-12);
}

TEST(ChannelLoss, PercolationGrowsWithTheWettedBed)
{
    std::vector<SectionFlow> table(3);
    table[1] = {2, 10, 5, 8, 50};
    table[2] = {4, 40, 15, 20, 400};
    Values flow{0, 50, 225, 400};
    takePercolation(2, 0, 43560, table, kEnglish, flow); // an acre of bed for each foot of perimeter
    expectSeries(flow, Values{0, 34, 197, 360}, 1e-9);
    Values small{50};
    takePercolation(1000, 0, 43560, table, kEnglish, small);
    EXPECT_EQ(small[0], 0);
}

TEST(Averages, GreatestMeanSlidesAndKnowsShortRuns)
{
    const Values q{0, 0, 10, 30, 10, 0, 0};
    EXPECT_EQ(peakIndex(Values{1, 7, 7, 2}), 1u);
    EXPECT_DOUBLE_EQ(greatestMean(q, 2, 1), 20);
    EXPECT_DOUBLE_EQ(greatestMean(q, 6, 1), trapezoidalMean(q));
    EXPECT_DOUBLE_EQ(greatestMean(q, 72, 1), trapezoidalMean(q));
    EXPECT_DOUBLE_EQ(greatestMean(q, 3, .5), trapezoidalMean(q));
    EXPECT_DOUBLE_EQ(greatestMean(Values{4}, 6, 1), 4);
    EXPECT_EQ(greatestMean({}, 6, 1), 0);
    // One and a half intervals: the peak side whole and half of the other.
    EXPECT_NEAR(greatestMean(q, 1.5, 1), (20 + .5 * 25) / 1.5, 1e-12);
}

TEST(Averages, SlidingSumAgreesWithAddingUpEachStretch)
{
    const Values q = randomValues(300, 0, 1000, 5);
    for (const std::size_t window : {1u, 24u, 72u, 299u}) {
        double best = 0;
        for (std::size_t i = 0; i + window < q.size(); ++i)
            best = std::max(best, trapezoidalMean(std::span(q).subspan(i, window + 1)));
        EXPECT_NEAR(greatestMean(q, static_cast<double>(window) * .25, .25), best, 1e-9) << window;
    }
}

TEST(DepthArea, InterpolatesOnTheLogarithmOfArea)
{
    const double w = depthAreaWeight(8.6, 2.8, 16);
    EXPECT_NEAR(w, .6438, 1e-4);
    EXPECT_NEAR(6880 + w * (5250 - 6880), 5831, 1);
    EXPECT_EQ(depthAreaWeight(1, 2.8, 16), 0);
    EXPECT_EQ(depthAreaWeight(100, 2.8, 16), 1);
    EXPECT_NEAR(depthAreaWeight(.1, 0, 1), .5, 1e-12);
}

TEST(Interpolation, HoldsOrGoesOnOutsideTheTable)
{
    const Values x{1, 2, 2, 4}, y{10, 20, 30, 50};
    EXPECT_EQ(interpolateHeld(x, y, 0), 10);
    EXPECT_EQ(interpolateHeld(x, y, 2), 30);
    EXPECT_EQ(interpolateHeld(x, y, 3), 40);
    EXPECT_EQ(interpolateHeld(x, y, 9), 50);
    EXPECT_EQ(interpolateOnwards(x, y, 6), 70);
    EXPECT_EQ(interpolateOnwards(Values{3, 3}, Values{1, 2}, 9), 2);
    EXPECT_EQ(interpolateHeld({}, {}, 1), 0);
}

} // namespace
} // namespace hec1::methods::test
