// SPDX-License-Identifier: GPL-3.0-or-later
#include "results/CenterOfMass.h"

#include "platform/text.h"
#include "tests/run/TapeText.h"
#include "tests/support/GridText.h"
#include "tests/support/ScriptedServices.h"

#include "run/Tape21Tables.h"

#include <gtest/gtest.h>

#include <random>

namespace kalvo {
namespace {

struct Centers
{
    explicit Centers(const FlexGrid& hydrographs) { problem = fillCenters(hydrographs, Form11); }
    std::string row(int number) const { return gridText(Form11, number, 0, number, Form11.cols() - 1); }

    FlexGrid Form11;
    std::optional<CenterProblem> problem;
};

std::string centers(const std::string& tape)
{
    ResultTables tables;
    EXPECT_FALSE(fillTables(readTape21(tape), tables, ScriptedTextMeasure()));
    const Centers computed(tables.hydrographTable);
    EXPECT_FALSE(computed.problem);
    return computed.row(2);
}

TEST(CenterOfMass, IsTheSumOfHoursTimesFlowOverTheSumOfFlows)
{
    EXPECT_EQ(centers(station({"A", "60"}, {1, 2, 1})), "||1.0");
    EXPECT_EQ(centers(station({"A", "60"}, {0, 1, 2})), "||1.667") << "five thirds of an hour, three decimals at most";
    EXPECT_EQ(centers(station({"A", "60"}, {0, 0, 0})), "||0.0");
    EXPECT_EQ(centers(station({"A", "60"}, {-1, 0, 1})), "||0.0") << "a sum of exactly 0 is no divisor";
    EXPECT_EQ(centers(station({"A", "60"}, {-1, -2, -1})), "||1.0");
    EXPECT_EQ(centers(station({"A", "60", "1", "1", "1", "1"}, {7})), "||0.0") << "one ordinate";
    EXPECT_EQ(centers(station({"A", "0"}, {1, 2, 3})), "||0.0") << "no time step";
    EXPECT_EQ(centers(station({"A", "60"}, {1, 0, 0}) + station({"B", "60"}, {0, 0, 1})), "||0.0|2.0");
}

TEST(CenterOfMass, HoursEnterWithTheFourDecimalsOfTheirText)
{
    // 1000 x .0167 h over 0.1; a sixtieth of an hour would give 166.667.
    EXPECT_EQ(centers(station({"A", "1", "1", "1", "1", "2"}, {-999.9, 1000})), "||167.0");
}

TEST(CenterOfMass, ACellThatIsNoNumberStopsHalfWay)
{
    const auto table = gridOf("Time (hrs)|Time (min)|A|B|C\n0.0|0|1|1|1\n1.0|60|1||1");
    const Centers computed(table);
    ASSERT_TRUE(computed.problem);
    EXPECT_EQ(computed.row(1), "||A|B|C");
    EXPECT_EQ(computed.row(2), "||0.5||") << "columns ahead of it are there, it and those behind it are not";
    EXPECT_EQ(computed.problem->text(), "the center of mass of column 3 (B) cannot be computed: row 2 holds '', which "
                                        "is no number");
    EXPECT_TRUE(Centers(gridOf("h|m|A\n0.0|0|1 cfs")).problem);
    EXPECT_TRUE(Centers(gridOf("h|m|A\n|0|1")).problem) << "hours";

    ResultTables tables;
    fillTables(readTape21(risingStation({"SHORT"}, 2, 1) + risingStation({"LONG"}, 3, 1)), tables,
               ScriptedTextMeasure());
    EXPECT_EQ(Centers(tables.hydrographTable).problem->col, 2);
}

/// The same by way of every cell's text.
QString byTexts(const FlexGrid& table, int col)
{
    double flows = 0.0, moments = 0.0;
    for (int row = 1; row < table.rows(); ++row) {
        const double q = leadingNumber(table.textMatrix(row, col));
        flows += q;
        moments += leadingNumber(table.textMatrix(row, 0)) * q;
    }
    return pictureText(flows == 0.0 ? 0.0 : moments / flows, u"####0.0##");
}

TEST(CenterOfMass, GivesTheDigitsOfTheTextsWhateverTheFlows)
{
    constexpr int kRows = 700;
    std::mt19937_64 random(20010203);
    std::uniform_real_distribution<double> flow(-1.0, 1.0);
    std::uniform_int_distribution<int> power(-18, 18);
    FlexGrid table;
    table.setRows(kRows + 1);
    table.setCols(42);
    const auto put = [&table](int col, const std::function<double(int)>& value, FlexGrid::NumberFormatter format) {
        std::vector<double> values;
        for (int i = 0; i < kRows; ++i)
            values.push_back(value(i));
        table.setNumberColumn(col, 1, std::move(values), std::move(format));
    };
    put(
        0, [](int i) { return i * 7 / 60.0; }, [](double hour) { return pictureText(hour, u"#######.0000"); });
    for (int col = 2; col < 42; ++col)
        put(
            col,
            [&](int) {
                if (col % 4 == 0) // what TAPE21 holds
                    return std::nearbyint(flow(random) * 1e7) / 1e3;
                if (col % 4 == 1) // digits that no text shows
                    return flow(random) * 1e4;
                return flow(random) * std::pow(10.0, power(random));
            },
            generalText);
    // The cancellation of large flows brings the last digits to light.
    table.setTextMatrix(5, 41, "-1234567.8901234");
    table.setTextMatrix(6, 41, " 1234567.8901234");
    table.setTextMatrix(6, 41, "1.2345678901234E+06");
    const Centers computed(table);
    ASSERT_FALSE(computed.problem) << computed.problem->text().toStdString();
    for (int col = 2; col < 42; ++col)
        EXPECT_EQ(computed.Form11.textMatrix(2, col), byTexts(table, col)) << col;
}

TEST(CenterOfMass, TheListHasARowForEachColumnAndGoesIntoItsFile)
{
    const auto table = gridOf("Time (hrs)|Time (min)|SUB, 1  1  1  1|\"B\"  1  1  1\n0.0|0|0|1\n1.0|60|1|0");
    const Centers computed(table);
    FlexGrid Form20;
    listCenters(computed.Form11, Form20, ScriptedTextMeasure());
    EXPECT_EQ(gridText(Form20), "KK Station|Time (hrs)\n|\nSUB, 1  1  1  1|1.0\n\"B\"  1  1  1|0.0");
    EXPECT_EQ(Form20.colAlignment(1), 6);
    EXPECT_EQ(Form20.colWidth(0), 8 * 120);
    EXPECT_EQ(wcmFile(Form20, "storm 1"), "Center of Mass\r\nHEC-1 Data: storm 1\r\n\r\n"
                                          "KK Station\tTime (hrs)\t\r\n\t\t\r\n"
                                          "SUB, 1  1  1  1\t1.0\t\r\n\"B\"  1  1  1\t0.0\t\r\n");
}

} // namespace
} // namespace kalvo
