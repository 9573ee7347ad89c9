// SPDX-License-Identifier: GPL-3.0-or-later
#include "results/RunoffVolumes.h"

#include "platform/text.h"
#include "results/TableNumbers.h"
#include "run/Tape21Tables.h"
#include "tests/run/TapeText.h"
#include "tests/support/GridText.h"
#include "tests/support/ScriptedServices.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

namespace kalvo {
namespace {

struct Volumes
{
    explicit Volumes(const std::string& tape)
    {
        EXPECT_FALSE(fillTables(readTape21(tape), tables, ScriptedTextMeasure()));
        fill();
    }
    void fill()
    {
        fillVolumes(Grid1, runoffVolumes(tables.hydrographTable), tables.tableCounts, ScriptedTextMeasure());
    }

    ResultTables tables;
    FlexGrid Grid1;
};

TEST(RunoffVolumes, StandInGroupsOfFourRowsWithAColumnForEachRatio)
{
    Volumes volumes(risingStation({"A", "60", "1", "1", "3"}, 2, 3, 100) +
                    risingStation({"B", "60", "1", "1", "3"}, 2, 3, -3));
    volumes.tables.counts = {}; // another reader's do not matter
    volumes.fill();
    EXPECT_EQ(gridText(volumes.Grid1), "|Ratio  1|Ratio  2|Ratio  3\n"
                                       "|||\n"
                                       "KK NAME|A  1  1  1|A  2  1  1|A  3  1  1\n"
                                       "Volume (cf) |363,600.000|370,800.000|378,000.000\n"
                                       "|+/-|+/-|+/-\n"
                                       "|||\n"
                                       "KK NAME|B  1  1  1|B  2  1  1|B  3  1  1\n"
                                       "Volume (cf) |-7,200.000|0.000|7,200.000\n"
                                       "|+/-||+/-\n"
                                       "|||");
    EXPECT_EQ(volumes.Grid1.colWidth(0), 6 * 120);
    EXPECT_EQ(volumes.Grid1.colWidth(3), 10 * 120);
    EXPECT_EQ(volumes.Grid1.colAlignment(1), FlexGrid::RightCenter);
}

struct MarkRow
{
    const char* name;
    std::vector<double> flows;
    const char* volume;
    bool isStillUp;
};
class VolumeOf : public testing::TestWithParam<MarkRow>
{
};
TEST_P(VolumeOf, OneHydrograph)
{
    TapeHeader header{"A", "5"};
    header.ordinates = std::to_string(GetParam().flows.size());
    const Volumes volumes(station(header, GetParam().flows));
    EXPECT_EQ(volumes.Grid1.textMatrix(3, 1), GetParam().volume);
    EXPECT_EQ(volumes.Grid1.textMatrix(4, 1), GetParam().isStillUp ? "+/-" : "");
}
// Hours enter with four decimals: the steps of five minutes are .0833, .0834 (from .0833 to .1667) and .0833.
INSTANTIATE_TEST_SUITE_P(, VolumeOf,
                         testing::Values(MarkRow{"FirstOrdinateDoesNotCount", {500, 0, 0}, "0.000", false},
                                         MarkRow{"HoursAsTheyStand", {0, 1, 1, 0}, "600.120", false},
                                         MarkRow{"EndsAtOne", {0, 0, 1}, "300.240", false},
                                         MarkRow{"EndsAboveOne", {0, 0, 1.01}, "303.242", true},
                                         MarkRow{"EndsBelowMinusOne", {0, 0, -1.01}, "-303.242", true},
                                         MarkRow{"OneOrdinate", {7}, "0.000", true},
                                         MarkRow{"AllZero", {0, 0, 0}, "0.000", false}),
                         [](const auto& row) { return row.param.name; });

TEST(RunoffVolumes, AShorterHydrographEndsWhereItsFlowsEnd)
{
    const Volumes volumes(risingStation({"SHORT", "60"}, 2, 1, 10) + risingStation({"LONG", "60"}, 4, 1, -3));
    EXPECT_EQ(volumes.Grid1.textMatrix(3, 1), "39,600.000");
    EXPECT_EQ(volumes.Grid1.textMatrix(4, 1), "+/-");
    EXPECT_EQ(volumes.Grid1.textMatrix(8, 1), "");
}

TEST(RunoffVolumes, CountsThatDoNotFitTheTableLoseNoRecord)
{
    Volumes volumes(risingStation({"A", "60"}, 2, 1) + risingStation({"B", "60"}, 2, 1));
    volumes.tables.tableCounts.numStations = 1;
    volumes.fill();
    EXPECT_EQ(volumes.Grid1.textMatrix(6, 1), "B  1  1  1");
    volumes.tables.tableCounts = {9000, 9000, 1, 9000, 9000};
    volumes.fill();
    EXPECT_EQ(volumes.Grid1.textMatrix(6, 1), "B  1  1  1") << "counts of no run are not taken at their word";
    volumes.tables.tableCounts = {};
    volumes.fill();
    EXPECT_EQ(volumes.Grid1.textMatrix(6, 1), "B  1  1  1");
    volumes.tables.forget("hydrodata");
    EXPECT_TRUE(runoffVolumes(volumes.tables.hydrographTable).empty());
}

TEST(RunoffVolumes, ATableWithoutTimesIsNotComputed)
{
    Volumes volumes(risingStation({"A", "60"}, 2, 1));
    volumes.tables.hydrographTable.setTextMatrix(2, 0, "");
    EXPECT_THROW(runoffVolumes(volumes.tables.hydrographTable), std::runtime_error);
}

TEST(RunoffVolumes, TheListForOtherProgramsIsNotGrouped)
{
    FlexGrid list;
    listVolumes(list, {{"A  1  1  1", 1234567.5, true}, {"B  1  1  1", 0, false}});
    EXPECT_EQ(gridText(list), "KK NAME|Volume|+/-\nA  1  1  1|1234567.500|+/-\nB  1  1  1|0.000|");
}

/// Numbers of every kind that a run's file can hold: few decimals, many, tiny, huge, negative.
double randomFlow(std::mt19937_64& random)
{
    const double size = std::pow(10.0, static_cast<double>(random() % 40) - 20.0);
    const double any = (static_cast<double>(random() % 2'000'001) - 1'000'000.0) * size / 3.0;
    switch (random() % 6) {
    case 0:
        return any;
    case 1:
        return std::round(any * 1000.0) / 1000.0;
    case 2:
        return static_cast<double>(random() % 10'000'000) / 1000.0;
    case 3:
        return static_cast<double>(random()) * 1.7;
    case 4:
        return std::nextafter(static_cast<double>(random() % 1000) / 100.0, 1e9);
    default:
        return static_cast<double>(random() % 4) - 1.0;
    }
}

TEST(TableNumbers, AreWhatTheTextsGive)
{
    std::mt19937_64 random(20240611);
    FlexGrid table;
    table.setRows(1001);
    table.setCols(60);
    for (int col = 0; col < table.cols(); ++col) {
        std::vector<double> flows(col % 5 == 4 ? 700 : 1000);
        for (double& flow : flows) // every third column is of the kind that stays as it stands
            flow = col % 3 == 0 ? static_cast<double>(random() % 10'000'000) / 1000.0 : randomFlow(random);
        if (col % 7 == 6)
            table.setNumberColumn(col, 1, flows, [](double flow) { return pictureText(flow, u"#######.0000"); });
        else
            table.setNumberColumn(col, 1, flows, generalText);
    }
    table.setTextMatrix(500, 11, "no number");
    table.setTextMatrix(501, 11, " 12.5 ");
    TableNumbers numbers(table);
    for (int col = 0; col < table.cols(); ++col) {
        const std::span<const double> column = numbers.column(col);
        ASSERT_EQ(column.size(), 1000u);
        for (int row = 1; row < table.rows(); ++row) {
            const QString text = table.textMatrix(row, col);
            const double number = column[static_cast<size_t>(row - 1)];
            if (text.isEmpty() || text == "no number")
                ASSERT_TRUE(std::isnan(number)) << row << ", " << col;
            else
                ASSERT_EQ(number, leadingNumber(text)) << text.toStdString();
        }
    }
}

} // namespace
} // namespace kalvo
