// SPDX-License-Identifier: GPL-3.0-or-later
#include "graphics/QuickChart.h"

#include "graphics/StationRain.h"
#include "platform/text.h"
#include "tests/support/GridText.h"
#include "tests/support/ScriptedServices.h"

#include <QtNumeric>

#include <gtest/gtest.h>

namespace kalvo {
namespace {

constexpr auto kTable = "Time (hrs)|Time (min)|A  1  1  1|B,C  1  1  1|\n"
                        ".0000|0|0|5|x\n"
                        ".0833|5|1.5|-6|\n"
                        ".1667|10|2.25|1E2|7\n"
                        "|15|3|8|9";

/// Curves as text: label, then time:value; "-" for a gap.
std::string text(const std::optional<QVector<ChartSeries>>& all)
{
    std::string made;
    for (const ChartSeries& one : all.value_or(QVector<ChartSeries>())) {
        made += one.label.toStdString() + ' ';
        for (int i = 0; i < one.y.size(); ++i)
            made += hasPoint(one, i)
                        ? generalText(one.x[i]).toStdString() + ':' + generalText(one.y[i]).toStdString() + ' '
                        : "- ";
        made.back() = '\n';
    }
    return made;
}

TEST(QuickChart, DrawsTheBlockWhicheverWayItWasDragged)
{
    auto table = gridOf(kTable);
    const std::string expected = "A  1  1  1 0:0 0.0833:1.5 0.1667:2.25\nB,C  1  1  1 0:5 0.0833:-6 0.1667:100\n";
    const int corners[][4] = {{1, 2, 3, 3}, {3, 3, 1, 2}, {1, 3, 3, 2}, {3, 2, 1, 3}};
    for (const auto& c : corners) {
        table.select(c[0], c[1], c[2], c[3]);
        EXPECT_EQ(text(quickChartOf(table)), expected) << c[0] << c[1];
    }
    table.select(2, 3, 2, 3);
    EXPECT_FALSE(quickChartOf(table)) << "a single cell is no block";
}

TEST(QuickChart, TextThatIsNoNumberIsAGap)
{
    auto table = gridOf(kTable);
    table.select(0, 0, 4, 4);
    EXPECT_EQ(text(quickChartOf(table)), "Time (hrs) - 0:0 0.0833:0.0833 0.1667:0.1667 -\n"
                                         "Time (min) - 0:0 0.0833:5 0.1667:10 -\n"
                                         "A  1  1  1 - 0:0 0.0833:1.5 0.1667:2.25 -\n"
                                         "B,C  1  1  1 - 0:5 0.0833:-6 0.1667:100 -\n"
                                         "Column 4 - - - 0.1667:7 -\n");
}

TEST(QuickChart, ColumnsOfNumbersGiveWhatTheirTextsSay)
{
    FlexGrid table;
    table.setCols(4);
    table.setRows(4);
    const auto hours = [](double hour) { return pictureText(hour, u"#######.0000"); };
    table.setNumberColumn(0, 1, {0.0, 1.0 / 12.0, 2.0 / 12.0}, hours);
    table.setNumberColumn(2, 1, {1.25, qQNaN(), 3.0}, generalText);
    table.setNumberColumn(3, 1, {7.0}, generalText); // a shorter record
    table.setTextMatrix(0, 2, "X");
    table.setTextMatrix(0, 3, "Y");
    table.select(0, 2, 3, 3);
    EXPECT_EQ(text(quickChartOf(table)), "X - 0:1.25 - 0.1667:3\nY - 0:7 - -\n");
}

TEST(QuickChart, TheTipTellsCurveRowAndValue)
{
    auto table = gridOf(kTable);
    table.select(1, 2, 3, 3);
    EXPECT_EQ(quickTip(*quickChartOf(table), {1, 2}), "2,3,100");
}

TEST(StationRain, IsThatOfTheLabelOverTheTimesOfTheRun)
{
    ScriptedServices services;
    const QString report =
        services.put("checky.out", "        NMIN          30  MINUTES IN COMPUTATION INTERVAL\r\n"
                                   "                    HYDROGRAPH AT STATION  SUB1\r\n"
                                   "                    PLAN 1, RATIO =   .50\r\n\r\n ****\r\n"
                                   "    DA MON HRMN  ORD    RAIN    LOSS    EXCESS      COMP Q        *\r\n"
                                   "     1 JAN 0000    1     .00     .00       .00          0.        *\r\n"
                                   "     1 JAN 0030    2     .25     .05       .20          3.        *\r\n"
                                   " ****\r\n                      (INCHES)         1.566\r\n");
    const ChartRain rain = stationRain(report, "SUB1  1  1  1");
    EXPECT_EQ(rain.times, (QVector<double>{0.0, 0.5}));
    EXPECT_EQ(rain.depths, (QVector<double>{0.0, 0.25}));
    EXPECT_EQ(rain.unit, "in");
    EXPECT_TRUE(stationRain(report, "SUB1  2  1  1").times.isEmpty());
    EXPECT_TRUE(stationRain(services.path("nothing.out"), "SUB1  1  1  1").times.isEmpty());
}

} // namespace
} // namespace kalvo
