// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/ChartSeries.h"
#include "platform/ColorVision.h"

#include <cmath>
#include <limits>
#include <set>
#include <tuple>

#include <gtest/gtest.h>

using namespace kalvo;

namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

ChartSeries seriesOf(QVector<double> y, bool excluded = false)
{
    ChartSeries series{QString(), {}, std::move(y), excluded};
    for (int i = 0; i < series.y.size(); ++i)
        series.x.append(i);
    return series;
}

/// Ten pixels to an hour, one to a unit of flow, upwards.
const ChartScale kTimes{{0.0, 100.0}, 0.0, 1000.0, false};
const ChartScale kFlows{{0.0, 200.0}, 200.0, 0.0, false};

} // namespace

TEST(ColorVision, AgreesWithKnownDistances)
{
    const Rgb white = rgb(255, 255, 255), black = rgb(0, 0, 0);
    EXPECT_NEAR(colorDistance(white, black), 100.0, 0.1);
    EXPECT_NEAR(contrastRatio(white, black), 21.0, 0.01);
    EXPECT_NEAR(colorDistance(rgb(255, 0, 0), rgb(0, 255, 0)), 170.6, 0.5) << "sRGB red to green, CIE 1976";
    EXPECT_LT(colorDistance(rgb(200, 80, 60), rgb(128, 112, 50), Vision::NoRed),
              0.5 * colorDistance(rgb(200, 80, 60), rgb(128, 112, 50)))
        << "a red and an olive come together without red cones";
}

TEST(ChartLooks, CanBeToldApartOnBothPapersByAllEyes)
{
    for (const bool dark : {false, true}) {
        const Rgb paper = dark ? kDarkPaper : kLightPaper;
        for (int a = 0; a < kChartColors; ++a) {
            EXPECT_GE(contrastRatio(chartLook(a, dark).color, paper), 3.0) << dark << ' ' << a;
            for (int b = 0; b < a; ++b)
                EXPECT_GE(leastColorDistance(chartLook(a, dark).color, chartLook(b, dark).color), 25.0)
                    << dark << ' ' << a << ' ' << b;
        }
        std::set<std::tuple<Rgb, ChartDash, ChartMarker>> looks;
        for (int s = 0; s < 200; ++s) {
            const ChartLook look = chartLook(s, dark), next = chartLook(s + kChartColors, dark);
            looks.insert({look.color, look.dash, look.marker});
            EXPECT_TRUE(look.dash != next.dash && look.marker != next.marker);
        }
        EXPECT_EQ(looks.size(), 200u);
    }
}

TEST(ChartRanges, StartAtNothingAndLeaveGapsAndExcludedOut)
{
    const QVector<ChartSeries> all{seriesOf({10, 100, kNaN}), seriesOf({5000}, true)};
    EXPECT_EQ(wholeTimeRange(all), (ChartRange{0, 2}));
    EXPECT_EQ(wholeTimeRange(all, {{}, {1, 48}, {0, 1}, {}}), (ChartRange{0, 48})) << "rain that outlasts the flow";
    EXPECT_EQ(wholeValueRange(all, false).lower, 0.0);
    EXPECT_NEAR(wholeValueRange(all, false).upper, 106.0, 1e-9);
    EXPECT_LT(wholeValueRange({seriesOf({-20, 30})}, false).lower, -20.0);
    const ChartRange log = wholeValueRange({seriesOf({0, -1, 10, 100})}, true);
    EXPECT_NEAR(log.lower, 9.0, 1e-9);
    for (const QVector<ChartSeries>& empty :
         {QVector<ChartSeries>{}, {seriesOf({})}, {seriesOf({kNaN})}, {seriesOf({0, 0})}, {seriesOf({7})}}) {
        EXPECT_GT(wholeTimeRange(empty).size(), 0.0);
        EXPECT_GT(wholeValueRange(empty, false).size(), 0.0);
        EXPECT_GT(wholeValueRange(empty, true).lower, 0.0);
        EXPECT_GT(wholeValueRange(empty, true).size(), 0.0);
    }
}

TEST(ChartScales, ZoomKeepsThePlaceUnderThePointer)
{
    for (const bool isLog : {false, true}) {
        const ChartScale scale{{1.0, 1000.0}, 300.0, 0.0, isLog};
        const double fixed = scale.value(120.0);
        ChartScale zoomed = scale;
        zoomed.range = scale.zoomed(120.0, 0.5);
        EXPECT_NEAR(zoomed.pixel(fixed), 120.0, 1e-9);
        ChartScale moved = scale;
        moved.range = scale.moved(30.0);
        EXPECT_NEAR(moved.pixel(fixed), 150.0, 1e-9);
        EXPECT_NEAR(scale.value(scale.pixel(77.0)), 77.0, 1e-9);
    }
}

TEST(ChartHits, FindThePointAndTheLineNextToThePointer)
{
    const QVector<ChartSeries> all{seriesOf({0, 50, 100, kNaN, 100}), seriesOf({100, 50, 0}),
                                   seriesOf({0, 50, 100}, true)};
    const auto pointAt = [&](double x, double y) { return nearestPoint(all, kTimes, kFlows, x, y, 5.0); };
    EXPECT_EQ(pointAt(22, 98), (ChartPoint{0, 2}));
    EXPECT_EQ(pointAt(10, 150), (ChartPoint{1, 1})) << "of two points in one place the one on top";
    EXPECT_TRUE(pointAt(30, 100).isNone()) << "a gap";
    EXPECT_TRUE(pointAt(20, 190).isNone());
    const auto seriesAt = [&](double x, double y) { return nearestSeries(all, kTimes, kFlows, x, y, 5.0); };
    EXPECT_EQ(seriesAt(5, 175), 0) << "between two points";
    EXPECT_EQ(seriesAt(15, 175), 1);
    EXPECT_EQ(seriesAt(30, 100), -1) << "no line over a gap";
    EXPECT_EQ(seriesAt(40, 100), 0) << "a point between gaps";
}

TEST(ChartCursor, JumpsGapsKeepsTheTimeAndPassesExcludedCurvesBy)
{
    QVector<ChartSeries> all{seriesOf({1, 2}, true), seriesOf({kNaN, 1, kNaN, kNaN, 2, 3}), seriesOf({kNaN, kNaN}),
                             seriesOf({4, 5, 6})};
    EXPECT_EQ(alongSeries(all, {}, 1), (ChartPoint{1, 1}));
    EXPECT_EQ(alongSeries(all, {1, 1}, 1), (ChartPoint{1, 4}));
    EXPECT_EQ(alongSeries(all, {1, 1}, 10), (ChartPoint{1, 5})) << "the end holds it";
    EXPECT_EQ(alongSeries(all, {1, 5}, -10), (ChartPoint{1, 1}));
    EXPECT_EQ(acrossSeries(all, {1, 5}, 1), (ChartPoint{3, 2})) << "a shorter curve gives its nearest time";
    EXPECT_EQ(acrossSeries(all, {3, 0}, 1), (ChartPoint{1, 1}));
    EXPECT_EQ(acrossSeries(all, {3, 0}, -1), (ChartPoint{1, 1}));
    all = {seriesOf({kNaN})};
    EXPECT_TRUE(alongSeries(all, {}, 1).isNone());
    EXPECT_TRUE(acrossSeries({}, {}, 1).isNone());
}

TEST(ChartTicks, FallOnHoursAndDays)
{
    EXPECT_DOUBLE_EQ(hourTickStep(24.0, 8), 3.0);
    EXPECT_DOUBLE_EQ(hourTickStep(25.0, 8), 4.0);
    EXPECT_DOUBLE_EQ(hourTickStep(1.0, 6), 10.0 / 60.0);
    EXPECT_DOUBLE_EQ(hourTickStep(720.0, 8), 120.0);
    EXPECT_GT(hourTickStep(1e6, 8), 1e5);
    EXPECT_LT(hourTickStep(1e-4, 8), 1e-4);
    EXPECT_EQ(hourTickLabel(100.0 / 60.0, 10.0 / 60.0), "1:40");
    EXPECT_EQ(hourTickLabel(-0.25, 0.25), "-0:15");
    EXPECT_EQ(hourTickLabel(0.5, 0.5), "0:30");
    EXPECT_EQ(hourTickLabel(36.0, 12.0), "36");
    EXPECT_EQ(hourTickLabel(1e-17, 3.0), "0");
}
