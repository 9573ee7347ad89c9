// SPDX-License-Identifier: GPL-3.0-or-later
#include "graphics/CurveChoice.h"
#include "graphics/CurveColors.h"

#include "platform/ColorVision.h"
#include "tests/graphics/GraphTables.h"
#include "tests/support/GridText.h"

#include <gtest/gtest.h>

namespace kalvo {
namespace {

TEST(CurveIndex, CountsPlanOutermostThenRatioThenJd)
{
    ResultTables tables;
    fillFrom(tables, risingStation({.name = "SUB1", .jds = "2", .plans = "2", .ratios = "3"}, 3, 12) +
                         risingStation({.name = "SUB1", .jds = "2", .plans = "2", .ratios = "3"}, 3, 12));
    const CurveIndex index(tables.peakRow, tables.tableCounts);
    ASSERT_EQ(index.stations(), 2) << "two stations of one name";
    for (int station = 0; station < 2; ++station)
        for (int ratio = 0; ratio < 3; ++ratio)
            for (int plan = 0; plan < 2; ++plan)
                for (int jd = 0; jd < 2; ++jd) {
                    const int column = index.columnOf(station, ratio, plan, jd);
                    EXPECT_EQ(column, 2 + station * 12 + plan * 6 + ratio * 2 + jd);
                    EXPECT_EQ(tables.hydrographTable.textMatrix(0, column),
                              QString("SUB1  %1  %2  %3").arg(ratio + 1).arg(plan + 1).arg(jd + 1));
                }
    for (const int beyond : {-1, 2})
        EXPECT_EQ(index.columnOf(beyond, 0, 0, 0), 0);
    EXPECT_EQ(index.columnOf(0, 3, 0, 0), 0);
    EXPECT_EQ(index.columnOf(0, 0, 0, -1), 0);
}

TEST(CurveIndex, StationsHaveTheirOwnCountsAndNamesOfAnyKind)
{
    ResultTables tables;
    fillFrom(tables, risingStation({.name = "A 1 1 1"}, 3, 1) + risingStation({.name = "", .ratios = "3"}, 3, 3) +
                         risingStation({.name = "12 3", .ratios = "2"}, 3, 2));
    const CurveIndex index(tables.peakRow, tables.tableCounts);
    EXPECT_EQ(index.stations(), 3);
    EXPECT_EQ(index.columnOf(0, 0, 0, 0), 2);
    EXPECT_EQ(index.columnOf(0, 1, 0, 0), 0) << "this station has one ratio";
    EXPECT_EQ(index.columnOf(1, 2, 0, 0), 5);
    EXPECT_EQ(index.columnOf(2, 1, 0, 0), 7);
}

TEST(CurveIndex, ACutReadingGivesWhatWasRead)
{
    ResultTables tables;
    std::string tape = risingStation({.name = "S", .plans = "2", .ratios = "2"}, 3, 4);
    fillFrom(tables, tape.substr(0, tape.size() - 50)); // in the third of four records
    const CurveIndex index(tables.peakRow, tables.tableCounts);
    EXPECT_EQ(index.columnOf(0, 0, 1, 0), 4);
    EXPECT_EQ(index.columnOf(0, 1, 1, 0), 0);
    const FlexGrid empty;
    EXPECT_EQ(CurveIndex(empty, {}).stations(), 0);
    auto odd = gridOf("|S 1|S 2|T 1|T 2\n|1|2|3|4");
    EXPECT_EQ(CurveIndex(odd, {2, 2, 2, 1, 1}).columnOf(1, 1, 0, 0), 5) << "labels without their numbers";
}

TEST(ChosenCurves, AreAllCombinationsInTheOrderOfTheLists)
{
    ResultTables tables;
    fillFrom(tables,
             risingStation({.name = "A", .ratios = "2"}, 3, 2) + risingStation({.name = "B", .ratios = "2"}, 3, 2));
    GrapherLists& lists = tables.GRAPHER;
    EXPECT_EQ(missingChoice(lists), "stations, ratios") << "lists of one entry have it selected";
    lists.List1.selected = {0, 1};
    lists.List2.selected = {1};
    EXPECT_EQ(missingChoice(lists), "");
    const auto curves = chosenCurves(lists, CurveIndex(tables.peakRow, tables.tableCounts));
    EXPECT_EQ(curves, (std::vector<CurveId>{{3, 0, 1, 0, 0}, {5, 1, 1, 0, 0}}));
    EXPECT_EQ(legendText(lists, tables.peakRow, curves[1]), "B         Rt 2 Pln 1 JD 1 Q=6");
    EXPECT_EQ(getgraphindex(0, 1, 2, 3), "");
}

TEST(CurveColors, PaleAndLikeColoursAreDrawnAgain)
{
    std::vector<int> parts = {255, 255, 250, 200, 30, 30, 205, 35, 28, 20, 40, 220};
    size_t next = 0;
    CurveColors colors([&] { return parts[next++ % parts.size()]; });
    EXPECT_EQ(colors.next(), rgb(200, 30, 30)) << "not the near white";
    EXPECT_EQ(colors.next(), rgb(20, 40, 220)) << "not the other red";
    EXPECT_EQ(next, parts.size());
}

TEST(CurveColors, EveryGeneratorComesToAnEndAndEveryColourCanBeSeen)
{
    for (const int stuck : {0, 255, 254, 90000, -5}) {
        CurveColors colors([stuck] { return stuck; });
        for (int i = 0; i < 10; ++i)
            EXPECT_GE(contrastRatio(colors.next(), rgb(255, 255, 255)), 2.5) << stuck;
    }
    CurveColors random;
    Rgb last = random.next();
    for (int i = 0; i < 200; ++i) {
        const Rgb color = random.next();
        EXPECT_NE(color, last);
        EXPECT_GE(contrastRatio(color, rgb(255, 255, 255)), 2.5);
        EXPECT_GE(contrastRatio(color, readableOn(color)), 4.5) << "the legend's text on it";
        last = color;
    }
}

} // namespace
} // namespace kalvo
