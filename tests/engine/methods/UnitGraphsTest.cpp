// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/methods/UnitGraphs.h"

#include "tests/engine/methods/Compare.h"

namespace hec1::methods::test {
namespace {

constexpr UnitSystem kEnglish = english();
constexpr std::size_t kMany = 100'000;

TEST(ScsUnitGraph, FollowsTheDimensionlessTable)
{
    const Values expected{51.6, 164.0, 329.8, 423.1, 423.1, 358.5, 263.9, 174.5, 120.5, 86.2, 59.4,
                          41.7, 28.9,  20.1,  14.1,  9.8,   6.7,   4.7,   3.6,   2.4,   1.4,  0.5};
    const Values graph = scsUnitGraph(1, 1.0, .25, kEnglish, kMany);
    expectSeries(graph, expected, .005 * 423.1);
    const Values metricGraph = scsUnitGraph(10, 1.0, .25, metric(), kMany);
    expectSeries(std::span(metricGraph).first(9), Values{.222, .705, 1.417, 1.818, 1.818, 1.541, 1.134, .750, .518},
                 .005 * 1.818);
}

TEST(ScsUnitGraph, HoldsOneUnitOfDepthAtEveryStep)
{
    for (const double hours : {1.0 / 60, .1, .25, .29, 1.0, 4.0, 50.0})
        EXPECT_NEAR(unitGraphDepth(scsUnitGraph(3.7, 1.0, hours, kEnglish, kMany), 3.7, hours, kEnglish), 1, 1e-12)
            << hours;
    const Values slow = scsUnitGraph(1, 1e5, .25, kEnglish, 500); // a flood far longer than the run: its foot, not more
    EXPECT_NEAR(slow[499], 484 / 1e5 * .3 * 500 * .25 / 1e5, .003 * slow[499]);
    const Values whole = scsUnitGraph(1, 1, .05, kEnglish, kMany);
    const Values cut = scsUnitGraph(1, 1, .05, kEnglish, 20);
    expectSeries(cut, std::span(whole).first(20), 0); // a short run sees the same graph, not a stretched one
}

TEST(ClarkUnitGraph, FollowsTheBuiltInTimeAreaCurve)
{
    const Values expected{326, 1155, 2017, 2363, 2013, 1438, 1027, 734, 524, 374, 267, 191, 136, 97, 70, 50, 36, 25};
    const Values graph = clarkUnitGraph(10, 2.0, 1.5, .5, kEnglish, {}, kMany, .995);
    expectSeries(graph, expected, .6);
    EXPECT_NEAR(unitGraphDepth(graph, 10, .5, kEnglish), .995, .001);
    EXPECT_NEAR(unitGraphDepth(clarkUnitGraph(10, 2.0, 1.5, .5, kEnglish, {}, kMany), 10, .5, kEnglish), 1, 1e-4);
}

// V. M. Ponce's published example: isochrones of 10, 30, 20 and 40 sq km an hour apart, R = 2 h, 1 cm in 2 hours.
TEST(ClarkUnitGraph, FollowsAGivenTimeAreaCurve)
{
    const Values published{2.778, 15.556, 34.333, 51.156, 58.471, 46.194, 27.716, 16.63, 9.978, 5.987,
                           3.592, 2.155,  1.293,  .776,   .466,   .279,   .168,   .101,  .06,   .036};
    const Values graph = clarkUnitGraph(100, 4, 2, 1, metric(), Values{0, 10, 40, 60, 100}, kMany);
    Values flow(21);
    convolve(Values{0, 5, 5}, graph, flow);
    expectSeries(std::span(flow).subspan(1), published, .002);
}

TEST(ClarkUnitGraph, StaysSoundAtItsEdges)
{
    for (const double storage : {0.0, .01, .2, 1.0, 1000.0})
        for (const double tc : {.001, .5, 7.3, 500.0}) {
            const Values graph = clarkUnitGraph(5, tc, storage, .5, kEnglish, {}, 20'000);
            EXPECT_GE(*std::min_element(graph.begin(), graph.end()), 0) << tc << " " << storage;
            EXPECT_LE(unitGraphDepth(graph, 5, .5, kEnglish), 1 + 1e-9) << tc << " " << storage;
        }
    EXPECT_THROW(clarkUnitGraph(5, 0, 1, .5, kEnglish, {}, kMany), std::invalid_argument);
    EXPECT_THROW(clarkUnitGraph(5, 1, -1, .5, kEnglish, {}, kMany), std::invalid_argument);
    EXPECT_THROW(clarkUnitGraph(5, 1, 1, .5, kEnglish, Values{0, 5, 4, 6}, kMany), std::invalid_argument);
    EXPECT_THROW(clarkUnitGraph(5, 1, 1, .5, kEnglish, Values{0, 0}, kMany), std::invalid_argument);
}

TEST(SnyderUnitGraph, FindsTheClarkGraphOfItsLagAndPeak)
{
    const SnyderGraph graph = snyderUnitGraph(20, 3.0, .60, .5, kEnglish, {}, kMany);
    EXPECT_TRUE(graph.converged);
    EXPECT_NEAR(graph.tcHours, 3.41, .02 * 3.41);
    EXPECT_NEAR(graph.storageHours, 3.00, .02 * 3.00);
    EXPECT_NEAR(*std::max_element(graph.ordinates.begin(), graph.ordinates.end()), 2554, .02 * 2554);
    EXPECT_NEAR(graph.lagHours, 3.0, .01);
    EXPECT_NEAR(graph.peakingCoefficient, .60, .003);
}

TEST(SnyderUnitGraph, ConvergesOverTheCommonRangeAndSaysWhenItCannot)
{
    for (const double cp : {.4, .5, .6, .7})
        for (const double lag : {1.0, 3.3, 8.6, 40.0})
            EXPECT_TRUE(snyderUnitGraph(100, lag, cp, .25, kEnglish, {}, kMany).converged) << cp << " " << lag;
    EXPECT_FALSE(snyderUnitGraph(100, 3, .97, .25, kEnglish, {}, kMany).converged); // sharper than translation alone
    EXPECT_FALSE(snyderUnitGraph(100, .05, .6, 1.0, kEnglish, {}, kMany).converged);
    EXPECT_THROW(snyderUnitGraph(100, 3, 0, 1, kEnglish, {}, kMany), std::invalid_argument);
    EXPECT_THROW(snyderUnitGraph(100, 1e9, .6, 1, kEnglish, {}, kMany), std::invalid_argument);
}

/// The definition, one product at a time.
Values plainConvolution(const Values& excess, const Values& graph, std::size_t count)
{
    Values flow(count, 0.0);
    for (std::size_t i = 0; i < excess.size(); ++i)
        for (std::size_t k = 0; k < graph.size() && i + k < count; ++k)
            flow[i + k] += excess[i] * graph[k];
    return flow;
}

TEST(Convolution, IsTheSumOfItsProductsWhateverTheLengths)
{
    unsigned seed = 1;
    for (const std::size_t rain : {1u, 2u, 3u, 7u, 50u})
        for (const std::size_t graph : {1u, 4u, 5u, 22u, 90u})
            for (const std::size_t run : {1u, 3u, 40u, 200u}) {
                Values excess = randomValues(rain, 0, 1, ++seed);
                excess[rain / 2] = 0;
                const Values ordinates = randomValues(graph, 0, 500, ++seed);
                Values flow(run, -7.0);
                convolve(excess, ordinates, flow);
                expectSeries(flow, plainConvolution(excess, ordinates, run), 1e-9);
            }
    Values flow(5, -7.0);
    convolve(Values(5, 0.0), Values{1, 2}, flow);
    expectSeries(flow, Values(5, 0.0), 0);
}

// Highway Hydrology (FHWA 2002), example 6.1: published to the whole cfs.
TEST(Convolution, GivesThePublishedFlood)
{
    Values flow(10);
    convolve(Values{0, .4, .8, .6}, Values{108, 493, 601, 565, 260, 161, 72}, flow);
    expectSeries(flow, Values{0, 43, 284, 700, 1003, 917, 611, 314, 154, 43}, .7);
}

} // namespace
} // namespace hec1::methods::test
