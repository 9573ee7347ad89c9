// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/methods/Averages.h"
#include "engine/methods/ChannelFlow.h"
#include "engine/methods/ChannelSections.h"
#include "engine/methods/LagRouting.h"
#include "engine/methods/Muskingum.h"
#include "engine/methods/MuskingumCunge.h"

#include "tests/engine/methods/Compare.h"

#include <string>

namespace hec1::methods::test {
namespace {

constexpr UnitSystem kEnglish = english();

// Chow, Maidment and Mays (1988), example 8.4.1: published to the whole cfs; the first inflow makes the outflow 85.
TEST(Muskingum, GivesThePublishedHydrograph)
{
    const Values inflow{84.46, 93,  137, 208, 320, 442, 546, 630, 678, 691, 675,
                        634,   571, 477, 390, 329, 247, 184, 134, 108, 90};
    const Values published{85,  91,  114, 159, 233, 324, 420, 509, 578, 623,
                           642, 635, 603, 546, 479, 413, 341, 274, 215, 170};
    Values outflow(inflow.size());
    routeMuskingum(inflow, outflow, 2.3, .15, 1, 1);
    expectSeries(std::span(outflow).subspan(1), published, .7);
    const MuskingumWeights w = muskingumWeights(2.3, .15, 1);
    EXPECT_NEAR(w.first, .3442, 5e-5);
    EXPECT_NEAR(w.second, .0631, 5e-5);
    EXPECT_NEAR(w.previous, .5927, 5e-5);
}

TEST(Muskingum, ManyStepsAreTheSameAsOneAfterTheOther)
{
    const Values inflow = randomValues(80, 0, 500, 2);
    for (const int steps : {1, 2, 3, 4, 7}) {
        Values together(inflow.size()), apart = inflow;
        routeMuskingum(inflow, together, 5.0, .2, steps, 1);
        for (int i = 0; i < steps; ++i)
            routeMuskingum(apart, apart, 5.0 / steps, .2, 1, 1);
        expectSeries(together, apart, 1e-9);
    }
}

TEST(Muskingum, HalfWeightAtTheStepIsAPureLag)
{
    const Values inflow{0, 50, 200, 600, 1000, 800, 500, 250, 100, 40, 0, 0};
    Values outflow(inflow.size());
    routeMuskingum(inflow, outflow, 2, .5, 2, 1);
    expectSeries(outflow, Values{0, 0, 0, 50, 200, 600, 1000, 800, 500, 250, 100, 40}, 1e-9);
    EXPECT_TRUE(muskingumIsStable(1, .5, 1));
    EXPECT_FALSE(muskingumIsStable(.4, .2, 1));
    EXPECT_FALSE(muskingumIsStable(3, .2, 1));
    EXPECT_THROW(routeMuskingum(inflow, outflow, 2, .6, 1, 1), std::invalid_argument);
    EXPECT_THROW(routeMuskingum(inflow, outflow, 2, .2, 0, 1), std::invalid_argument);
}

TEST(StraddleStagger, AveragesAndLags)
{
    const Values inflow{0, 0, 10, 40, 60, 50, 30, 10, 0, 0, 0, 0};
    Values outflow(inflow.size());
    routeStraddleStagger(inflow, outflow, 1, 3, 2);
    expectSeries(outflow, Values{0, 0, 0, 10. / 3, 50. / 3, 110. / 3, 50, 140. / 3, 30, 40. / 3, 10. / 3, 0}, 1e-9);
    routeStraddleStagger(inflow, outflow, 2, 2, 0); // Tatum: twice the mean of this and the one before
    EXPECT_NEAR(outflow[4], (60 + 2 * 40 + 10) / 4.0, 1e-9);
    routeStraddleStagger(Values{7, 7, 9}, outflow, 3, 5, 400);
    EXPECT_NEAR(outflow[0], 7, 1e-9); // before the run the first value holds
    EXPECT_THROW(routeStraddleStagger(inflow, outflow, 1, 0, 2), std::invalid_argument);
}

EightPointSection compoundSection()
{
    return {
        .06, .035, .06, 5000, .008, 0, {0, 80, 150, 160, 190, 200, 280, 360}, {112, 106, 105, 100, 100, 105, 106, 112}};
}

TEST(NormalDepth, AddsOverbanksAndChannel)
{
    struct Row
    {
        double elevation, area, flow;
    };
    for (const Row& row :
         {Row{100.632, 19.7, 53}, Row{103.158, 114.7, 823}, Row{106.316, 389.5, 3213}, Row{112, 2005, 19045}}) {
        const SectionFlow flow = normalFlow(compoundSection(), row.elevation, kEnglish);
        EXPECT_NEAR(flow.area, row.area, .005 * row.area) << row.elevation;
        EXPECT_NEAR(flow.flow, row.flow, .005 * row.flow + .5) << row.elevation;
    }
    const auto table = normalDepthTable(compoundSection(), kEnglish);
    ASSERT_EQ(table.size(), 20u);
    EXPECT_NEAR(table[1].elevation, 100.632, .001);
    const RatingTable rating = reachRating(table, 5000, kEnglish);
    EXPECT_NEAR(rating.storage.back(), 2005 * 5000 / 43560.0, 1);
    EightPointSection higher = compoundSection();
    higher.maxElevation = 120; // the ends go up as walls
    EXPECT_NEAR(normalDepthTable(higher, kEnglish).back().topWidth, 360, 1e-9);
}

TEST(NormalDepth, RefusesSectionsThatCannotFlow)
{
    EightPointSection flat = compoundSection();
    flat.y.fill(100);
    EXPECT_THROW(normalDepthTable(flat, kEnglish), std::invalid_argument);
    EightPointSection back = compoundSection();
    back.x[4] = 1;
    EXPECT_THROW(normalDepthTable(back, kEnglish), std::invalid_argument);
    EightPointSection smooth = compoundSection();
    smooth.leftRoughness = 0;
    EXPECT_THROW(normalDepthTable(smooth, kEnglish), std::invalid_argument);
}

struct ShapeCase
{
    std::string name;
    StandardChannel channel;
    double area, flow, tolerance;
};
class Shapes : public testing::TestWithParam<ShapeCase>
{
};

TEST_P(Shapes, FlowCelerityAndAreaAgree)
{
    const auto& [name, channel, area, flow, tolerance] = GetParam();
    const ChannelFlow shape(channel, kEnglish);
    EXPECT_NEAR(shape.flow(area), flow, tolerance * flow);
    for (const double a : {1e-6, .01, 1.0, 33.0, 5e4}) {
        EXPECT_NEAR(shape.area(shape.flow(a)) / a, 1, 1e-9) << a;
        EXPECT_NEAR(shape.celerity(a), (shape.flow(a * 1.0001) - shape.flow(a * .9999)) / (a * .0002),
                    1e-4 * shape.celerity(a))
            << a;
    }
    EXPECT_EQ(shape.flow(0), 0);
    EXPECT_EQ(shape.area(-1), 0);
}

// Flows from the Manning equation by hand, and from the table of kinematic parameters.
INSTANTIATE_TEST_SUITE_P(
    , Shapes,
    testing::Values(
        ShapeCase{"Trapezoid",
                  {100, .005, .035, ChannelShape::Trapezoid, 50, 6},
                  124,
                  1.486 / .035 * 124 * std::pow(124 / (50 + 4 * std::sqrt(37.0)), 2. / 3) * std::sqrt(.005),
                  1e-12},
        ShapeCase{"Triangle",
                  {100, .01, .03, ChannelShape::Trapezoid, 0, 2},
                  8,
                  .94 / .03 * .1 * std::cbrt(2. / 5) * 16,
                  .005},
        ShapeCase{"WideRectangle",
                  {100, .01, .03, ChannelShape::Trapezoid, 1000, 0},
                  500,
                  1.486 / .03 * .1 * std::pow(500, 5. / 3) / 100,
                  .001},
        ShapeCase{"Deep", {100, .01, .03, ChannelShape::Deep, 4, 0}, 16, .72 / .03 * .1 * std::pow(16, 4. / 3), 1e-12},
        ShapeCase{"Circular",
                  {100, .01, .015, ChannelShape::Circular, 2.5, 0},
                  3,
                  .804 / .015 * .1 * std::pow(2.5, 1. / 6) * std::pow(3, 1.25),
                  1e-12}),
    [](const auto& row) { return row.param.name; });

TEST(ChannelShapes, WithoutSizeAreRefused)
{
    for (const StandardChannel& c :
         {StandardChannel{100, .01, .03, ChannelShape::Trapezoid, 0, 0},
          StandardChannel{100, .01, .03, ChannelShape::Circular, 0, 0},
          StandardChannel{100, 0, .03, ChannelShape::Deep, 4, 0}, StandardChannel{0, .01, .03}})
        EXPECT_THROW(ChannelFlow(c, kEnglish), std::invalid_argument);
}

const StandardChannel kReach{8580, .005, .035, ChannelShape::Trapezoid, 50, 6};

Values muskingumCunge(const Values& inflow, const ChannelFlow& channel, double length, double slope, double hours,
                      const Values& lateral = {})
{
    Values outflow(inflow.size());
    routeMuskingumCunge(channel, length, slope, hours, inflow, lateral, outflow);
    return outflow;
}

TEST(MuskingumCunge, KeepsVolumeAndPeakOfASlowFlood)
{
    const ChannelFlow channel(kReach, kEnglish);
    for (const double hours : {.05, .25, 1.0}) {
        const auto count = static_cast<std::size_t>(80 / hours);
        const Values inflow = flood(count, 20, 340, count / 5);
        const Values outflow = muskingumCunge(inflow, channel, kReach.length, kReach.slope, hours);
        EXPECT_NEAR(trapezoidalMean(outflow), trapezoidalMean(inflow), .002 * trapezoidalMean(inflow)) << hours;
        const double peak = outflow[peakIndex(outflow)];
        EXPECT_LE(peak, 340.0 + 1e-6);
        EXPECT_GE(peak, 338.0);
        EXPECT_GE(*std::min_element(outflow.begin(), outflow.end()), 0);
    }
}

TEST(MuskingumCunge, SteadyFlowStaysSteadyWithLateralInflow)
{
    const ChannelFlow channel(kReach, kEnglish);
    const Values outflow =
        muskingumCunge(Values(50, 100.0), channel, kReach.length, kReach.slope, .25, Values(50, 30.0));
    expectSeries(outflow, Values(50, 130.0), 1e-6);
}

TEST(MuskingumCunge, SillyReachesGiveFiniteFlows)
{
    const Values inflow{0, 0, 1e6, 0, 0, 5, 1e-9, 0, 300, 0, 0, 0};
    for (const double length : {1e-3, 1.0, 1e4, 1e7})
        for (const double slope : {1e-7, .01, 3.0})
            for (const ChannelShape shape : {ChannelShape::Trapezoid, ChannelShape::Deep, ChannelShape::Circular}) {
                const ChannelFlow channel({length, slope, .03, shape, 5, 1}, kEnglish);
                for (const double q : muskingumCunge(inflow, channel, length, slope, .5))
                    ASSERT_TRUE(q >= 0 && q <= 1.5e6) << length << " " << slope << " " << q;
            }
    const ChannelFlow section(compoundSection(), kEnglish);
    const Values outflow = muskingumCunge(flood(200, 10, 6000, 20), section, 5000, .008, .25);
    EXPECT_NEAR(outflow[peakIndex(outflow)], 6000, 100);
}

} // namespace
} // namespace hec1::methods::test

TEST(MuskingumTogether, GivesEachHydrographWhatItGetsAlone)
{
    for (const int steps : {1, 2, 3})
        for (const std::size_t count : {1U, 4U, 7U}) {
            constexpr std::size_t n = 50;
            std::vector<double> in(count * n), together(count * n), alone(n);
            for (std::size_t i = 0; i < in.size(); ++i)
                in[i] = static_cast<double>((i * 7919) % 613);
            hec1::methods::routeMuskingumTogether(in, together, n, 1.3, .2, steps, .25);
            for (std::size_t k = 0; k < count; ++k) {
                hec1::methods::routeMuskingum(std::span(in).subspan(k * n, n), alone, 1.3, .2, steps, .25);
                for (std::size_t i = 0; i < n; ++i)
                    ASSERT_EQ(together[k * n + i], alone[i])
                        << steps << " steps, hydrograph " << k << ", ordinate " << i;
            }
        }
}
