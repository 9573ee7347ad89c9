// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/methods/Storms.h"

#include "tests/engine/methods/Compare.h"

#include <functional>
#include <string>

namespace hec1::methods::test {
namespace {

constexpr UnitSystem kEnglish = english();

double wettest(const Values& rain, std::size_t intervals)
{
    double best = 0;
    for (std::size_t i = 0; i + intervals <= rain.size(); ++i)
        best = std::max(best, sum(std::span(rain).subspan(i, intervals)));
    return best;
}

TEST(RainSeries, IncrementsFallInTheIntervalThatBeginsAtTheirTime)
{
    const TimeSeries hourly{60, 60, {.4, 0, 1.2}};
    Values rain(11);
    rainFromMassCurve(massCurve(hourly), 30, rain);
    expectSeries(rain, Values{0, 0, 0, .2, .2, 0, 0, .6, .6, 0, 0}, 1e-12);
}

TEST(RainSeries, MassCurveIsCutWhereTheRunIs)
{
    const TimeSeries mass{-30, 15, {0, 1, 2, 3, 4}}; // began before the run: that rain is lost
    Values rain(5);
    rainFromMassCurve(mass, 10, rain);
    expectSeries(rain, Values{0, 2.0 / 3, 2.0 / 3, 2.0 / 3, 0}, 1e-12);
    EXPECT_EQ(massCurveTotal(mass), 4);
    const TimeSeries falling{0, 10, {0, 2, 1, 3}};
    rainFromMassCurve(falling, 10, rain);
    expectSeries(rain, Values{0, 2, 0, 1, 0}, 1e-12);
}

TEST(RainSeries, PatternIsScaledByTheWholeOfItself)
{
    Values rain{0, 1, 1};
    scaleToStorm(rain, 4, 10);
    expectSeries(rain, Values{0, 2.5, 2.5}, 1e-12);
    scaleToStorm(rain, 4, 0);
    expectSeries(rain, Values{0, 2.5, 2.5}, 0);
    EXPECT_THROW(scaleToStorm(rain, 0, 3), std::invalid_argument);
}

TEST(FlowSeries, EndValuesHoldOutside)
{
    Values q(6);
    sampleSeries({15, 20, {10, 30}}, 10, q);
    expectSeries(q, Values{10, 10, 15, 25, 30, 30}, 1e-12);
}

TEST(Gages, TotalsAreWeightedAndAdjustedByAnnualRain)
{
    const std::vector<GageTotal> gages{{3, 40, 1}, {4, 50, 3}};
    EXPECT_NEAR(weightedStormTotal(gages, 0), 3.75, 1e-12);
    EXPECT_NEAR(weightedStormTotal(gages, 45), 45 * 15.0 / 190, 1e-12);
    EXPECT_NEAR(weightedStormTotal(std::vector<GageTotal>{{3, 40, 1}, {4, 0, 3}}, 45), 3.75, 1e-12);
    EXPECT_THROW(weightedStormTotal(std::vector<GageTotal>{{3, 40, 0}}, 0), std::invalid_argument);
    const Values first{0, 1, 0}, second{0, 0, 2};
    Values rain(3);
    weightedPattern(std::vector<std::span<const double>>{first, second}, Values{3, 1}, rain);
    expectSeries(rain, Values{0, .75, .5}, 1e-12);
}

TEST(HypotheticalStorm, BlocksFallOffFromTheMiddle)
{
    HypotheticalStorm storm;
    storm.depths = {.50, 1.00, 2.00, 2.40, 2.60, 3.00};
    Values rain(8);
    EXPECT_NEAR(hypotheticalStorm(storm, 60, kEnglish, rain), 3, 1e-12);
    expectSeries(rain, Values{0, .1108, .1591, .4000, 2.0000, .2000, .1301, 0}, 6e-5);
}

// NOAA Atlas 14 depths of Kerrville, Texas, one percent, against the depths that a published balanced storm holds.
TEST(HypotheticalStorm, HoldsTheDepthOfEveryDuration)
{
    HypotheticalStorm storm;
    storm.frequencyPercent = 1;
    storm.area = .01;
    storm.depths = {1.17, 2.32, 4.27, 5.77, 6.82, 8.63};
    Values rain(100);
    hypotheticalStorm(storm, 5, kEnglish, rain);
    for (const auto& [intervals, depth] : std::vector<std::pair<std::size_t, double>>{
             {1, 1.17}, {3, 2.32}, {12, 4.27}, {24, 5.77}, {36, 6.82}, {72, 8.63}})
        EXPECT_NEAR(wettest(rain, intervals), depth, .003) << intervals;
    for (const auto& [intervals, depth] :
         std::vector<std::pair<std::size_t, double>>{{18, 5.0923}, {30, 6.3261}, {48, 7.5199}, {60, 8.1119}})
        EXPECT_NEAR(wettest(rain, intervals), depth, .010) << intervals;
}

TEST(HypotheticalStorm, ReducesForAreaAndSeries)
{
    for (const auto& [hours, factor] : std::vector<std::pair<double, double>>{
             {.5, .8651}, {1, .9016}, {3, .9382}, {6, .9522}, {24, .9747}, {1.0 / 12, .8651}})
        EXPECT_NEAR(arealReduction(22, hours), factor, 6e-5) << hours;
    HypotheticalStorm storm;
    storm.depths = {.5, 1, 2};
    storm.frequencyPercent = 50;
    Values rain(20);
    EXPECT_NEAR(hypotheticalStorm(storm, 5, kEnglish, rain), 1.76, 1e-12);
    storm.depths = {0, 1, 2};
    storm.frequencyPercent = 0;
    hypotheticalStorm(storm, 5, kEnglish, rain); // below the shortest duration the depth is shared out evenly
    EXPECT_NEAR(wettest(rain, 1), 1.0 / 3, 1e-12);
}

TEST(SpilledStorms, HoldTheirDepth)
{
    ProbableMaximumStorm storm{24, 0, 200, false, {80, 90, 100, 110, 115, 118}};
    Values rain(400);
    const double total = probableMaximumStorm(storm, 15, kEnglish, rain);
    EXPECT_NEAR(total, 24 * 1.18 * .882, .003 * total);
    EXPECT_NEAR(sum(rain), total, 1e-9);
    EXPECT_NEAR(wettest(rain, 24), 24 * .80 * .882, .003 * total);
    EXPECT_NEAR(wettest(rain, 4), .38 * 24 * .80 * .882, .003 * total);
    StandardProjectStorm project{11, .9, 200, false};
    const double projectTotal = standardProjectStorm(project, 60, kEnglish, rain);
    EXPECT_NEAR(projectTotal, 11 * .9 / 100 * (3.5 + 15.5 + 6 + 182.15 - 14.3537 * std::log(280)), 1e-9);
    EXPECT_NEAR(sum(rain), projectTotal, 1e-9);
    EXPECT_GE(*std::min_element(rain.begin(), rain.end()), 0);
}

struct BadStorm
{
    std::string name;
    std::array<double, 12> depths;
};
class BadStorms : public testing::TestWithParam<BadStorm>
{
};
TEST_P(BadStorms, AreRefused)
{
    HypotheticalStorm storm;
    storm.depths = GetParam().depths;
    Values rain(10);
    EXPECT_THROW(hypotheticalStorm(storm, 5, kEnglish, rain), std::invalid_argument);
}
INSTANTIATE_TEST_SUITE_P(, BadStorms,
                         testing::Values(BadStorm{"NoDepth", {}}, BadStorm{"Gap", {.5, 0, 2}},
                                         BadStorm{"Falling", {.5, .4, 2}}, BadStorm{"Negative", {-.5, 1}}),
                         [](const auto& row) { return row.param.name; });

} // namespace
} // namespace hec1::methods::test
