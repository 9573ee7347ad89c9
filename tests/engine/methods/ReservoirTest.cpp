// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/methods/Reservoir.h"

#include "engine/methods/Averages.h"
#include "engine/methods/DamBreach.h"
#include "engine/methods/StorageRouting.h"
#include "tests/engine/methods/Compare.h"

#include <limits>

namespace hec1::methods::test {
namespace {

constexpr UnitSystem kEnglish = english();

/// Inflow less outflow of a run as storage.
double netVolume(std::span<const double> inflow, std::span<const double> outflow, double hours,
                 const UnitSystem& units = kEnglish)
{
    return units.volumeOf(trapezoidalMean(inflow) - trapezoidalMean(outflow),
                          hours * static_cast<double>(inflow.size() - 1));
}

TEST(ConicStorage, IsExactForPitsWithRoundNumbers)
{
    expectSeries(conicStorage(Values{3.10, 3.40, 3.70, 4.00}, Values{0, 1, 2, 3}), Values{0, 3.249, 6.798, 10.647},
                 6e-4);
    expectSeries(conicStorage(Values{0, 4, 9, 25}, Values{100, 105, 110, 120}), Values{0, 20. / 3, 115. / 3, 605. / 3},
                 1e-9);
    EXPECT_THROW(conicStorage(Values{1, 2}, Values{5, 5}), std::invalid_argument);
    EXPECT_THROW(conicStorage(Values{1, -2}, Values{5, 6}), std::invalid_argument);
}

TEST(Outlets, FollowTheirFormulas)
{
    EXPECT_NEAR(flowThrough({100, 3.14, .60, .5}, 106.5, kEnglish), 38.55, .006);
    EXPECT_EQ(flowThrough({100, 3.14, .60, .5}, 99, kEnglish), 0);
    EXPECT_NEAR(flowOver(Weir{50, 20, 3.0, 1.5}, 51.2), 78.87, .006);
    const DamCrest level{10, 100, 2.7, 1.5, {}, {}};
    EXPECT_NEAR(flowOver(level, 12), 2.7 * 100 * std::pow(2, 1.5), 1e-9);
    EXPECT_NEAR(flowOver(level, 12, 30), 2.7 * 70 * std::pow(2, 1.5), 1e-9);
    const DamCrest sloped{10, 0, 3, 1.5, {0, 100, 200}, {10, 11, 13}};
    EXPECT_NEAR(flowOver(sloped, 12), 3 * (100 * std::pow(1.5, 1.5) + 50 * std::pow(.5, 1.5)), 1e-9);
    EXPECT_EQ(flowOver(sloped, 10), 0);
}

PoolStorage pond()
{
    return {{100, 105, 110, 120}, {0, 20. / 3, 115. / 3, 605. / 3}};
}

PoolOutlets allOutlets()
{
    PoolOutlets outlets;
    outlets.lowLevel = LowLevelOutlet{101, 4, .6, .5};
    outlets.spillway = Weir{112.3, 40, 3.1, 1.5};
    outlets.dam = DamCrest{117.1, 300, 2.7, 1.5, {}, {}};
    return outlets;
}

TEST(MergedRating, FollowsTheFormulasBetweenItsPoints)
{
    const RatingTable table = mergedRating(pond(), allOutlets(), kEnglish);
    EXPECT_LT(table.elevation.size(), 3000u);
    for (double e = 100; e < 139; e += .0137) {
        std::size_t i = 1;
        while (table.elevation[i] < e)
            ++i;
        const double t = (e - table.elevation[i - 1]) / (table.elevation[i] - table.elevation[i - 1]);
        const double flow = table.flow[i - 1] + t * (table.flow[i] - table.flow[i - 1]);
        const double exact = outflowAt(allOutlets(), e, kEnglish);
        EXPECT_NEAR(flow, exact, 1e-4 * exact + .01) << e;
    }
    const RatingTable printed = printedRating(pond(), allOutlets(), kEnglish, 20);
    EXPECT_EQ(printed.elevation.size(), 20u);
    EXPECT_EQ(printed.elevation.front(), 100);
    EXPECT_EQ(printed.elevation.back(), 120);
    EXPECT_TRUE(std::find(printed.elevation.begin(), printed.elevation.end(), 112.3) != printed.elevation.end());
}

TEST(StorageIndication, GivesTheWorkedExample)
{
    const StorageIndication reach({{}, {0, 100}, {0, 1000}}, 1, kEnglish);
    const Values inflow{0, 100, 300, 500, 400, 200, 100, 0, 0, 0};
    Values outflow(10), storage(10);
    const StorageRoutingNotes notes = routePool(reach, inflow, {StartKind::Storage, 0}, outflow, storage, {});
    expectSeries(outflow, Values{0, 29.24, 129.10, 287.52, 382.54, 334.27, 226.51, 123.29, 51.19, 21.25}, .006);
    EXPECT_NEAR(storage.back(), netVolume(inflow, outflow, 1), 1e-9);
    EXPECT_FALSE(notes.aboveTable || notes.belowTable);
}

// Highway Hydrology (FHWA 2002), example 7.2: published to the whole cfs, some values read from a graph.
TEST(StorageIndication, GivesThePublishedCulvertFlood)
{
    const RatingTable table{{0, 1, 2, 3, 4, 5, 6, 6.3, 6.6, 6.9},
                            {0, .1607, .41322, .73462, 1.12489, 1.69881, 2.75482, 3.23691, 3.81084, 4.38476},
                            {0, 4, 13, 20, 26, 31, 35, 52, 82, 122}};
    const Values inflow{0, 11, 21, 30, 39, 49, 60, 49, 39, 30, 21, 11, 0};
    Values outflow(13), elevation(13);
    routePool(StorageIndication(table, .5, kEnglish), inflow, {StartKind::Elevation, 0}, outflow, {}, elevation);
    expectSeries(outflow, Values{0, 4, 14, 21, 27, 32, 35, 51, 45, 36, 34, 31, 22}, .7);
    EXPECT_NEAR(elevation[7], 6.3, .05);
}

TEST(StorageIndication, StartsWhereTheDeckSays)
{
    const StorageIndication reach({{10, 12, 14, 20}, {0, 10, 30, 100}, {0, 0, 40, 200}}, 1, kEnglish);
    struct Row
    {
        PoolStart start;
        double storage, flow, elevation;
    };
    for (const Row& row : {Row{{StartKind::Storage, 20}, 20, 20, 13}, Row{{StartKind::Elevation, 11}, 5, 0, 11},
                           Row{{StartKind::Outflow, 120}, 65, 120, 17}, Row{{StartKind::FirstInflow, 0}, 65, 120, 17},
                           Row{{StartKind::Outflow, 0}, 0, 0, 10}, Row{{StartKind::Elevation, 23}, 135, 280, 23},
                           Row{{StartKind::Storage, -5}, 0, 0, 10}}) {
        const PoolPoint point = reach.start(row.start, 120);
        EXPECT_NEAR(point.storage, row.storage, 1e-9);
        EXPECT_NEAR(point.flow, row.flow, 1e-9);
        EXPECT_NEAR(point.elevation, row.elevation, 1e-9);
    }
}

TEST(StorageIndication, KeepsVolumeOverTheTopOfItsTable)
{
    const StorageIndication reach({{}, {0, 1, 2}, {0, 50, 60}}, .25, kEnglish);
    const Values inflow = flood(300, 0, 900, 20);
    Values outflow(300), storage(300);
    EXPECT_TRUE(routePool(reach, inflow, {}, outflow, storage, {}).aboveTable);
    EXPECT_NEAR(storage.back(), netVolume(inflow, outflow, .25), 1e-9);
}

TEST(StorageIndication, RefusesRelationsThatMakeNoSense)
{
    const double nan = std::numeric_limits<double>::quiet_NaN();
    for (const RatingTable& table : {RatingTable{}, RatingTable{{}, {0, 1}, {0}}, RatingTable{{}, {1, 0}, {0, 1}},
                                     RatingTable{{}, {0, nan}, {0, 1}}, RatingTable{{}, {0, 1}, {1e6, 0}}})
        EXPECT_THROW(StorageIndication(table, 1, kEnglish), std::invalid_argument);
}

TEST(ReachRouting, SharesTheStorageAmongItsSteps)
{
    const RatingTable table{{}, {0, 50, 120}, {0, 400, 1500}};
    const Values inflow = flood(120, 30, 900, 15);
    Values together(120), storage(120), apart = inflow;
    routeReach(table, 3, 0, .5, kEnglish, inflow, {StartKind::FirstInflow, 0}, together, storage, {});
    const StorageIndication third(table, .5, kEnglish, 0, 3);
    for (int i = 0; i < 3; ++i)
        routePool(third, apart, {StartKind::Outflow, inflow[0]}, apart, {}, {});
    expectSeries(together, apart, 1e-9);
    EXPECT_NEAR(storage.back() - storage.front(), netVolume(inflow, together, .5), 1e-9);
}

TEST(ReachRouting, WedgeStorageKeepsVolumeAndComesBackToModifiedPuls)
{
    const RatingTable table{{}, {0, 50, 120}, {0, 400, 1500}};
    const Values inflow = flood(200, 30, 900, 15);
    Values plain(200), almost(200), wedge(200);
    routeReach(table, 2, 0, .5, kEnglish, inflow, {StartKind::FirstInflow, 0}, plain, {}, {});
    routeReach(table, 2, 1e-9, .5, kEnglish, inflow, {StartKind::FirstInflow, 0}, almost, {}, {});
    routeReach(table, 2, .3, .5, kEnglish, inflow, {StartKind::FirstInflow, 0}, wedge, {}, {});
    expectSeries(almost, plain, 1e-4);
    EXPECT_NEAR(trapezoidalMean(wedge), trapezoidalMean(inflow), .01);
    EXPECT_GT(wedge[peakIndex(wedge)], plain[peakIndex(plain)]); // wedge storage flattens less
}

TEST(Pumps, SwitchOnAndOffAndNeverPumpADryPool)
{
    const StorageIndication pool({{0, 10}, {0, 10}, {0, 0}}, 1, kEnglish);
    Values inflow(60, 0.0);
    for (std::size_t i = 1; i < 20; ++i)
        inflow[i] = 10;
    Values outflow(60), storage(60), elevation(60), pumped(60);
    const std::vector<Pump> pumps{{5, 2, 30}};
    routePool(pool, inflow, {}, outflow, storage, elevation, pumps, pumped);
    for (std::size_t i = 1; i < 60; ++i) {
        if (elevation[i - 1] > 5) {
            EXPECT_EQ(pumped[i], 30) << i;
        } else if (elevation[i - 1] < 2) {
            EXPECT_EQ(pumped[i], 0) << i;
        }
    }
    double out = 0;
    for (const double q : pumped)
        out += q;
    EXPECT_GT(out, 0);
    EXPECT_NEAR(storage.back(), netVolume(inflow, outflow, 1) - kEnglish.volumeOf(out, 1), 1e-9);
    const std::vector<Pump> greedy{{.1, .05, 1e6}};
    routePool(pool, inflow, {}, outflow, storage, elevation, greedy, pumped);
    EXPECT_EQ(*std::min_element(storage.begin(), storage.end()), 0);
}

TEST(Oscillation, NamesTheRangeOfOutflow)
{
    const RatingTable table{{}, {0, 10, 10.1, 50}, {0, 100, 300, 400}};
    const auto ranges = oscillationRanges(table, 1, kEnglish);
    ASSERT_EQ(ranges.size(), 1u);
    EXPECT_EQ(ranges[0].from, 100);
    EXPECT_EQ(ranges[0].to, 300);
    EXPECT_TRUE(oscillationRanges(table, .01, kEnglish).empty());
}

TEST(KnownFlows, GiveTheirStorage)
{
    Values storage(3);
    storageFromFlows(Values{0, 121, 121}, Values{0, 0, 121}, 4, 1, kEnglish, storage);
    expectSeries(storage, Values{4, 9, 14}, 1e-9);
}

struct DamRun
{
    Values inflow = flood(200, 20, 6000, 40), outflow, storage, elevation;
    DamSummary summary;
};

DamRun routeTheDam(const std::optional<Breach>& breach, double hours)
{
    const PoolStorage pool{{910, 918, 926, 934, 942, 950, 958}, {0, 180, 620, 1350, 2450, 4000, 6100}};
    PoolOutlets outlets;
    outlets.lowLevel = LowLevelOutlet{914, 20, .6, .5};
    outlets.spillway = Weir{940, 120, 3, 1.5};
    outlets.dam = DamCrest{944, 1400, 2.7, 1.5, {}, {}};
    DamRun run;
    const auto count = static_cast<std::size_t>(50 / hours) + 1;
    run.inflow = flood(count, 20, 6000, count / 5);
    run.outflow.resize(count);
    run.storage.resize(count);
    run.elevation.resize(count);
    run.summary = routeDam(pool, outlets, mergedRating(pool, outlets, kEnglish), breach, hours, kEnglish, run.inflow,
                           {StartKind::Elevation, 940}, run.outflow, run.storage, run.elevation);
    return run;
}

TEST(DamBreach, WithoutAFailureThePoolIsOnlyRouted)
{
    const DamRun sound = routeTheDam(std::nullopt, .25);
    const DamRun never = routeTheDam(Breach{915, 80, 1, 1.5, 990}, .25);
    expectSeries(never.outflow, sound.outflow, 0);
    EXPECT_FALSE(never.summary.failed);
    EXPECT_EQ(never.summary.failureHours, 0);
    EXPECT_NEAR(sound.storage.back() - sound.storage.front(), netVolume(sound.inflow, sound.outflow, .25), 1e-6);
    EXPECT_GT(sound.summary.hoursOverTop, 0);
    EXPECT_NEAR(sound.summary.depthOverDam, sound.summary.peakElevation - 944, 1e-12);
}

TEST(DamBreach, EmptiesThePoolAndKeepsTheVolume)
{
    const Breach breach{915, 80, 1, 1.5, 944.5};
    const DamRun coarse = routeTheDam(breach, .25), fine = routeTheDam(breach, .05);
    ASSERT_TRUE(coarse.summary.failed);
    EXPECT_GT(coarse.summary.peakFlow, 20'000);
    EXPECT_NEAR(coarse.summary.peakFlow, fine.summary.peakFlow, .005 * fine.summary.peakFlow);
    EXPECT_NEAR(coarse.summary.failureHours, fine.summary.failureHours, .05);
    EXPECT_GE(coarse.summary.peakFlow, coarse.outflow[peakIndex(coarse.outflow)]);
    EXPECT_LT(coarse.elevation.back(), 920);
    EXPECT_NEAR(fine.storage.back() - fine.storage.front(), netVolume(fine.inflow, fine.outflow, .05), 10);
}

TEST(DamBreach, SillyBreachesStayFinite)
{
    for (const Breach& breach : {Breach{910, 1e6, 50, 0, 900}, Breach{800, 1, 0, 1e-9, 940}, Breach{950, 80, 1, 1, 941},
                                 Breach{915, 0, 0, 1e6, 944}, Breach{915, 500, 2, .01, 940.1}}) {
        const DamRun run = routeTheDam(breach, 1);
        for (std::size_t i = 0; i < run.outflow.size(); ++i) {
            ASSERT_TRUE(std::isfinite(run.outflow[i]) && run.outflow[i] >= 0) << i;
            ASSERT_TRUE(run.elevation[i] >= 910 && run.elevation[i] < 2000) << i;
        }
    }
    EXPECT_THROW(routeTheDam(Breach{915, -1, 0, 1, 940}, 1), std::invalid_argument);
}

} // namespace
} // namespace hec1::methods::test
