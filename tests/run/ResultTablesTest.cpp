// SPDX-License-Identifier: GPL-3.0-or-later
#include "run/Tape21Tables.h"

#include "TapeText.h"
#include "run/IndexTable.h"
#include "tests/support/GridText.h"
#include "tests/support/ScriptedServices.h"

#include <gtest/gtest.h>

namespace kalvo {
namespace {

using Kind = Tape21Problem::Kind;

struct Filled
{
    explicit Filled(const std::string& text) { problem = fillTables(readTape21(text), tables, measure); }
    std::string peaks() const { return gridText(tables.peakTable); }
    std::string flows() const { return gridText(tables.hydrographTable); }

    ScriptedTextMeasure measure;
    ResultTables tables;
    std::optional<Tape21Problem> problem;
};

TEST(FullReader, OneOfEverythingFillsTheSmallestTables)
{
    const Filled run(station({"SUB1"}, {1.5, 20, 0.25}));
    EXPECT_FALSE(run.problem);
    EXPECT_EQ(run.flows(), "Time (hrs)|Time (min)|SUB1  1  1  1\n"
                           ".0000|0|1.5\n"
                           ".0833|5|20\n"
                           ".1667|10|0.25");
    EXPECT_EQ(gridText(run.tables.peakRow), "|SUB1  1  1  1\n|20");
    EXPECT_EQ(run.peaks(), "KK Name|Ratio  1 Plan  1 JD  1\nSUB1|20");
    const GrapherLists& lists = run.tables.GRAPHER;
    EXPECT_EQ(lists.List1.items, QStringList{"SUB1     "}) << "untrimmed";
    for (const ListModel* list : {&lists.List1, &lists.List2, &lists.List4, &lists.List5}) {
        EXPECT_EQ(list->count(), 1);
        EXPECT_TRUE(list->isSelected(0));
    }
    EXPECT_EQ(lists.List3.items, QStringList{"1"});
    EXPECT_FALSE(lists.List3.isSelected(0));
    EXPECT_TRUE(run.tables.hydrographTable.isNumberColumn(2)) << "eight bytes a flow";
    EXPECT_EQ(run.tables.peakTable.colWidth(1), 12 * 120);
    EXPECT_EQ(run.tables.peakTable.colAlignment(1), 6);
}

TEST(FullReader, TimeColumnsOfThreeHundredOrdinates)
{
    const Filled run(risingStation({"A", "5"}, 300, 1));
    const FlexGrid& table = run.tables.hydrographTable;
    EXPECT_EQ(table.textMatrix(300, 0), "24.9167");
    EXPECT_EQ(table.textMatrix(300, 1), "1495");
}

TEST(FullReader, PeakTablesColumnIsTheSumOfTheOffsets)
{
    // Plan outermost: peaks 1 (p1r1), 2 (p1r2), 3 (p2r1), 4 (p2r2).
    const Filled run(station({"A", "5", "1", "2", "2", "1"}, {1, 2, 3, 4}));
    EXPECT_EQ(run.peaks(), "KK Name|Ratio  1 Plan  1 JD  1|Ratio  1 Plan  2 JD  1|Ratio  2 Plan  2 JD  1|\n"
                           "A|1|3|4|");
    EXPECT_EQ(run.tables.GRAPHER.List4.items, (QStringList{"1", "2"}));
    EXPECT_FALSE(run.tables.GRAPHER.List4.isSelected(0));
}

TEST(FullReader, PeakTableWalksTheFileOrderUnderItsOwnLoops)
{
    // File order of 2 JD x 2 ratios: r1j1 r1j2 r2j1 r2j2; the table's loops go r1j1 r2j1 r1j2 r2j2.
    const Filled run(station({"A", "5", "2", "1", "2", "1"}, {1, 2, 3, 4}));
    EXPECT_EQ(run.peaks(), "KK Name|Ratio  1 Plan  1 JD  1|Ratio  1 Plan  1 JD  2|Ratio  2 Plan  1 JD  2|\n"
                           "A|1|3|4|");
}

TEST(FullReader, TheLastHeaderRulesTheRows)
{
    const Filled growing(risingStation({"A"}, 2, 1) + risingStation({"B"}, 3, 1));
    EXPECT_EQ(gridText(growing.tables.hydrographTable, 1, 2, 3, 3), "1|1\n2|2\n|3");
    const Filled shrinking(risingStation({"A"}, 3, 1) + risingStation({"B", "10"}, 2, 1));
    EXPECT_EQ(shrinking.flows(), "Time (hrs)|Time (min)|A  1  1  1|B  1  1  1\n.0000|0|1|1\n.1667|10|2|2");
    EXPECT_EQ(gridText(shrinking.tables.peakRow, 1, 1, 1, 2), "3|2") << "peaks were taken ahead of the cut";
    const Filled both(risingStation({"A"}, 3, 1) + risingStation({"B"}, 1, 1) + risingStation({"C"}, 3, 1));
    EXPECT_EQ(gridText(both.tables.hydrographTable, 1, 2, 3, 4), "1|1|1\n||2\n||3")
        << "what was cut does not come back";
}

TEST(FullReader, SmallerCountsBehindLargerOnesEndInTheTable)
{
    const Filled run(risingStation({"A", "5", "1", "1", "3"}, 2, 3) + risingStation({"B", "5", "1", "1", "1"}, 2, 1));
    ASSERT_TRUE(run.problem);
    EXPECT_EQ(run.problem->kind, Kind::OutsideTable);
    EXPECT_EQ(run.flows(), "||A  1  1  1|A  2  1  1\n||1|3\n||2|4") << "columns that the last header took are gone";
    EXPECT_EQ(run.tables.counts.numStations, 2);
    EXPECT_EQ(run.peaks(), "|\n|") << "nothing that was not read whole is summed up";
}

TEST(FullReader, ABrokenRecordLeavesWhatWasRead)
{
    const Filled run(risingStation({"A"}, 3, 1) + headerLine({"B", "5", "1", "1", "1", "3"}) + "\n7 8 dry\n" +
                     risingStation({"C"}, 3, 1));
    ASSERT_TRUE(run.problem);
    EXPECT_EQ(run.problem->kind, Kind::NotANumber);
    EXPECT_EQ(run.flows(), "||A  1  1  1|B  1  1  1\n||1|7\n||2|8\n||3|");
    EXPECT_EQ(gridText(run.tables.peakRow, 1, 1, 1, 2), "3|");
    EXPECT_EQ(run.tables.GRAPHER.List1.count(), 2);
    EXPECT_TRUE(run.tables.GRAPHER.List4.items.isEmpty());
}

TEST(FullReader, ASecondReadForgetsTheFirst)
{
    Filled run(risingStation({"A", "5", "1", "1", "6"}, 9, 6));
    run.problem = fillTables(readTape21(risingStation({"B"}, 2, 1)), run.tables, run.measure);
    EXPECT_EQ(run.flows(), "Time (hrs)|Time (min)|B  1  1  1\n.0000|0|1\n.0833|5|2");
    EXPECT_EQ(run.peaks(), "KK Name|Ratio  1 Plan  1 JD  1\nB|2");
    EXPECT_EQ(run.tables.GRAPHER.List2.count(), 1);
    EXPECT_EQ(run.tables.GRAPHER.List3.count(), 2) << "the one list that grows until its screen is unloaded";
    run.tables.forget("GRAPHER");
    EXPECT_EQ(run.tables.GRAPHER.List3.count(), 0);
}

TEST(FullReader, CountsThatLieCostNoMemory)
{
    std::string text;
    for (int i = 0; i < 500; ++i)
        text += risingStation({"A"}, 1, 1);
    const Filled run(text + headerLine({"B", "5", "9", "99", "99", "9"}) + "\n1\n");
    EXPECT_TRUE(run.problem);
    EXPECT_LT(run.tables.hydrographTable.cols(), 1000);
    const Filled tall(headerLine({"B", "5", "1", "1", "1", "1E9"}) + "\n1 2 3\n");
    EXPECT_EQ(tall.tables.hydrographTable.rows(), 10'000);
}

// -- Old form --------------------------------------------------------------------------------------------------------

struct OldForm
{
    explicit OldForm(const std::string& text)
    {
        problem = fillOldForm(readOldTape21(text), {hydrographs, peakRow, peakTable, List2, counts});
    }
    FlexGrid hydrographs, peakRow, peakTable;
    ListModel List2;
    RunCounts counts;
    std::optional<Tape21Problem> problem;
};

TEST(OldForm, TakesTheRatioFieldForPlansAndLeavesAHeadingRow)
{
    const OldForm run(risingStation({"A", "30", "1", "", "2"}, 2, 2) +
                      risingStation({"B", "30", "1", "", "2"}, 2, 2, 5));
    EXPECT_FALSE(run.problem);
    EXPECT_EQ(gridText(run.hydrographs), "Time (hrs)|Time (min)|A  1|A  2|B  1|B  2||\n"
                                         ".00|0|1|3|5|7||\n"
                                         ".50|30|2|4|6|8||");
    EXPECT_EQ(gridText(run.peakRow), "||A  1|A  2|B  1|B  2\n||2|4|6|8") << "the same columns in both";
    EXPECT_EQ(gridText(run.peakTable), "|||\n||Plan  1|Plan  2\nA||2|4\nB||6|8");
    EXPECT_EQ(run.List2.items, (QStringList{"1", "2"}));
    EXPECT_EQ(run.counts.numPlans, 2);
}

TEST(OldForm, StationsOverlapWithMoreThanOneJd)
{
    const OldForm run(risingStation({"A", "5", "2", "", "2"}, 1, 4) + risingStation({"B", "5", "2", "", "2"}, 1, 4, 5));
    EXPECT_FALSE(run.problem);
    EXPECT_EQ(gridText(run.hydrographs, 0, 2, 1, 7), "A  1|A  2|B  1|B  2|B  3|B  4\n1|2|5|6|7|8");
}

TEST(OldForm, MoreRecordsThanColumnsEndIt)
{
    const OldForm run(risingStation({"A", "5", "3", "", "3"}, 1, 9));
    ASSERT_TRUE(run.problem);
    EXPECT_EQ(run.problem->kind, Kind::OutsideTable);
}

// -- Index -----------------------------------------------------------------------------------------------------------

struct Indexed
{
    explicit Indexed(const std::string& text, const IndexReaderOptions& options = {}) { read(text, options); }
    void read(const std::string& text, const IndexReaderOptions& options = {})
    {
        problem = fillIndexTable(readTape21Index(text), table, &lists, counts, options);
    }
    FlexGrid table;
    IndexLists lists;
    RunCounts counts;
    std::optional<Tape21Problem> problem;
};

TEST(IndexReader, GivesARowForEachRecordFromRowTwo)
{
    const Indexed run(station({"A", "5", "1", "2", "2", "1"}, {1, 2, 3, 4.25}) +
                      station({"B", "5", "1", "2", "2", "1"}, {5, 6, 7, 8}));
    EXPECT_FALSE(run.problem);
    EXPECT_EQ(gridText(run.table), "|||||||\n|||||||\n"
                                   "A        |1|1|1|1|1|1|\n"
                                   "A        |1|2|1|1|2|2|\n"
                                   "A        |1|1|2|1|3|3|\n"
                                   "A        |1|2|2|1|4|4.25|\n"
                                   "B        |2|1|1|1|5|5|\n"
                                   "B        |2|2|1|1|6|6|\n"
                                   "B        |2|1|2|1|7|7|\n"
                                   "B        |2|2|2|1|8|8|");
    EXPECT_EQ(newGetGraphindex(run.table, 2, 1, 2, 1), 7);
    EXPECT_EQ(newGetGraphindex(run.table, " 2 ", "1 ", 1, 2), 8) << "trimmed texts do as well";
    EXPECT_EQ(newGetGraphindex(run.table, 3, 1, 1, 1), 0);
}

TEST(IndexReader, SetsTheListsByTheCounts)
{
    Indexed run(station({"A", "5", "1", "2", "1", "1"}, {1, 2}));
    EXPECT_EQ(run.lists.List4.items, (QStringList{"1", "2"}));
    EXPECT_TRUE(run.lists.List4.enabled);
    EXPECT_FALSE(run.lists.List4.isSelected(0));
    EXPECT_FALSE(run.lists.List5.enabled);
    EXPECT_TRUE(run.lists.List5.isSelected(0));
    EXPECT_FALSE(run.lists.List6.enabled) << "ratios never take a choice";
    EXPECT_TRUE(run.lists.List6.isSelected(0));
    EXPECT_FALSE(run.lists.List1.enabled);

    run.read(station({"B"}, {1, 2, 3}), {.clearsList1 = true, .addsTarget = true});
    EXPECT_EQ(run.lists.List1.items, (QStringList{"B        ", "   Target"}));
    EXPECT_EQ(run.lists.List4.count(), 3) << "the callers clear the other lists";
    EXPECT_TRUE(hasSingleHydrograph(run.counts));
}

TEST(IndexReader, AFailedRunShowsNoRowsOfTheOneBefore)
{
    Indexed run(risingStation({"A"}, 3, 1));
    run.read("");
    EXPECT_TRUE(run.problem);
    EXPECT_EQ(run.table.rows(), 200);
    EXPECT_EQ(run.table.textMatrix(2, 0), "");
    EXPECT_EQ(run.counts.numStations, 0);
}

TEST(IndexReader, ABrokenRecordHasNoPeakAndFillsNoLists)
{
    const Indexed run(risingStation({"A"}, 3, 1) + headerLine({"B"}) + "\n9 dry\n");
    EXPECT_TRUE(run.problem);
    EXPECT_EQ(gridText(run.table, 2, 0, 3, 6), "A        |1|1|1|1|1|3\nB        |2|1|1|1|2|");
    EXPECT_EQ(run.lists.List1.count(), 2);
    EXPECT_EQ(run.lists.List4.count(), 0);
    const Indexed cut(risingStation({"A"}, 3, 1) + "\r\n");
    EXPECT_EQ(cut.table.textMatrix(2, 6), "3") << "a whole record keeps its peak when a later header fails";
}

TEST(ResultTables, AScreenThatIsUnloadedForgetsItsTable)
{
    struct Shown : Screen
    {
        void showScreen() override {}
        void hideScreen() override {}
        bool isScreenVisible() const override { return true; }
    };
    Filled run(risingStation({"A"}, 3, 1));
    Screens screens;
    for (const char* name : {"hydrodata", "Form10"}) {
        screens.add(name, [] { return std::make_unique<Shown>(); });
        screens.load(name);
    }
    run.tables.follow(screens);
    screens.unload("hydrodata");
    EXPECT_EQ(run.tables.hydrographTable.rows(), 20);
    EXPECT_EQ(run.tables.hydrographTable.textMatrix(0, 2), "");
    EXPECT_EQ(run.tables.peakTable.textMatrix(1, 0), "A");
    screens.unload("Form10");
    EXPECT_EQ(run.tables.peakTable.textMatrix(1, 0), "");
}

} // namespace
} // namespace kalvo
