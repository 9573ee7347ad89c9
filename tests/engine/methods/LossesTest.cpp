// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/methods/Losses.h"

#include "tests/engine/methods/Compare.h"

#include <limits>
#include <string>

namespace hec1::methods::test {
namespace {

constexpr UnitSystem kEnglish = english();
const Values kHalfHours{0, .3, .4, 1.0, .5, .1};

Values excessOf(const LossMethod& method, double impervious, double hours, const Values& rain,
                const UnitSystem& units = kEnglish)
{
    Values excess(rain.size());
    rainfallExcess(method, impervious, hours, units, rain, excess);
    return excess;
}

struct LossCase
{
    std::string name;
    LossMethod method;
    double impervious;
    double hours;
    Values rain;
    Values excess;
    double tolerance;
};

class LossVectors : public testing::TestWithParam<LossCase>
{
};

TEST_P(LossVectors, GiveTheExcessOfEachInterval)
{
    const LossCase& c = GetParam();
    expectSeries(excessOf(c.method, c.impervious, c.hours, c.rain), c.excess, c.tolerance);
}

INSTANTIATE_TEST_SUITE_P(
    , LossVectors,
    testing::Values(
        LossCase{
            "InitialUniform", InitialUniformLoss{.5, .2}, 10, .5, kHalfHours, {0, .030, .130, .910, .410, .010}, 1e-9},
        LossCase{"CurveNumberWithPavement",
                 CurveNumberLoss{0, 80},
                 10,
                 .5,
                 kHalfHours,
                 {0, .0300, .0533, .4369, .3190, .0689},
                 6e-5},
        LossCase{"CurveNumberChow552",
                 CurveNumberLoss{0, 80},
                 0,
                 1,
                 {.20, .70, .37, 1.04, 2.34, .64, .07},
                 {0, .06, .12, .58, 1.83, .56, .06},
                 .011},
        LossCase{"CurveNumberOfWater", CurveNumberLoss{0, 100}, 0, .5, kHalfHours, kHalfHours, 1e-12},
        LossCase{"Exponential",
                 ExponentialLoss{.3, .6, 3, .6},
                 0,
                 .5,
                 kHalfHours,
                 {0, .1454, .2421, .7594, .3585, .0471},
                 6e-5},
        LossCase{"Holtan", HoltanLoss{.1, .4, 2.0, 1.4}, 0, .5, kHalfHours, {0, 0, 0, .6723, .2440, 0}, 6e-5},
        LossCase{"GreenAmptChow54",
                 GreenAmptLoss{0, .247, 11.01, 1.09},
                 0,
                 1.0 / 6,
                 {.18, .21, .26, .32, .37, .43, .64, 1.14, 3.18, 1.65, .81, .52, .42, .36, .28, .24, .19, .17},
                 {0, 0, 0, 0, 0, 0, .209, .752, 2.820, 1.310, .485, .207, .117, .065, 0, 0, 0, 0},
                 6e-4},
        LossCase{"AllPaved", InitialUniformLoss{9, 9}, 100, .5, kHalfHours, kHalfHours, 1e-12}),
    [](const auto& row) { return row.param.name; });

// Steady rain of 2 in/h on K = 0.4 in/h, suction 6 in, deficit 0.30: ponding after 13.5 minutes, then the implicit
// Green-Ampt equation; solved apart by fixed-point iteration.
TEST(GreenAmpt, FollowsTheClosedFormAtAnyStep)
{
    const GreenAmptLoss soil{0, .30, 6, .4};
    for (const double minutes : {1.0, 5.0, 15.0}) {
        const auto count = static_cast<std::size_t>(120 / minutes);
        const Values excess = excessOf(soil, 0, minutes / 60, Values(count, 2.0 * minutes / 60));
        EXPECT_NEAR(sum(excess), 1.8079, 2e-4) << minutes;
        const auto firstHour = std::span(excess).first(count / 2);
        EXPECT_NEAR(sum(firstHour), .6138, 2e-4) << minutes;
    }
}

TEST(CurveNumber, ExcessOfAStormDoesNotDependOnItsPattern)
{
    const Values wild = randomValues(40, 0, .2, 7);
    const double total = sum(wild);
    const double retention = 1000.0 / 74 - 10;
    const double expected = std::pow(total - .2 * retention, 2) / (total + .8 * retention);
    EXPECT_NEAR(sum(excessOf(CurveNumberLoss{0, 74}, 0, .25, wild)), expected, 1e-12);
    Values millimetres = wild;
    for (double& v : millimetres)
        v *= 25.4;
    EXPECT_NEAR(sum(excessOf(CurveNumberLoss{0, 74}, 0, .25, millimetres, metric())), expected * 25.4, 1e-10);
}

TEST(Losses, AStormWorkedInTwoPiecesIsTheSameStorm)
{
    const Values rain = randomValues(30, 0, .5, 3);
    for (const LossMethod& method : {LossMethod{InitialUniformLoss{.8, .3}}, LossMethod{CurveNumberLoss{0, 70}},
                                     LossMethod{ExponentialLoss{.4, .5, 2, .5}}, LossMethod{HoltanLoss{.1, .5, 3, 1.4}},
                                     LossMethod{GreenAmptLoss{.2, .3, 5, .2}}}) {
        Values pieces(rain.size());
        LossState state;
        rainfallExcess(method, 5, .5, kEnglish, std::span(rain).first(11), std::span(pieces).first(11), &state);
        rainfallExcess(method, 5, .5, kEnglish, std::span(rain).subspan(11), std::span(pieces).subspan(11), &state);
        expectSeries(pieces, excessOf(method, 5, .5, rain), 1e-13);
    }
}

TEST(Losses, ExcessStaysBetweenNothingAndTheRain)
{
    Values rain = randomValues(60, -1, 4, 11);
    rain[7] = 1e6;
    rain[8] = 1e-300;
    for (const LossMethod& method :
         {LossMethod{InitialUniformLoss{1e9, 0}}, LossMethod{CurveNumberLoss{0, 1e-6}},
          LossMethod{CurveNumberLoss{1e-9, 100}}, LossMethod{ExponentialLoss{1e6, 1e6, 50, 1}},
          LossMethod{HoltanLoss{0, 1e6, 1e6, 3}}, LossMethod{HoltanLoss{}}, LossMethod{GreenAmptLoss{0, 1, 1e5, 1e-9}},
          LossMethod{GreenAmptLoss{0, 0, 0, 0}}, LossMethod{GreenAmptLoss{0, .4, 8, 0}}}) {
        const Values excess = excessOf(method, 30, .25, rain);
        for (std::size_t i = 0; i < rain.size(); ++i) {
            EXPECT_GE(excess[i], 0) << method.index() << " " << i;
            EXPECT_LE(excess[i], std::max(rain[i], 0.0)) << method.index() << " " << i;
        }
    }
}

struct BadLoss
{
    std::string name;
    LossMethod method;
    double hours = 1;
};

class BadLosses : public testing::TestWithParam<BadLoss>
{
};

TEST_P(BadLosses, AreRefused)
{
    EXPECT_THROW(excessOf(GetParam().method, 0, GetParam().hours, {1}), std::invalid_argument);
}

const double kNan = std::numeric_limits<double>::quiet_NaN();
INSTANTIATE_TEST_SUITE_P(, BadLosses,
                         testing::Values(BadLoss{"CurveNumberZero", CurveNumberLoss{0, 0}},
                                         BadLoss{"CurveNumberOver100", CurveNumberLoss{0, 101}},
                                         BadLoss{"NegativeRate", InitialUniformLoss{0, -1}},
                                         BadLoss{"RatioBelowOne", ExponentialLoss{1, 1, .5, .5}},
                                         BadLoss{"DeficitAboveOne", GreenAmptLoss{0, 1.5, 5, 1}},
                                         BadLoss{"NotANumber", InitialUniformLoss{kNan, 1}},
                                         BadLoss{"NoInterval", InitialUniformLoss{0, 1}, 0}),
                         [](const auto& row) { return row.param.name; });

} // namespace
} // namespace hec1::methods::test
