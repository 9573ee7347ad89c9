// SPDX-License-Identifier: GPL-3.0-or-later
// What every grid of results can do, without a display: titles, select all, the forms of a copy, CSV.
#include "platform/GridActions.h"
#include "platform/GridCopy.h"
#include "platform/GridCsv.h"

#include "platform/text.h"
#include "tests/support/GridText.h"
#include "tests/support/ScriptedServices.h"

#include <gtest/gtest.h>

#include <random>

namespace kalvo {
namespace {

TEST(GridActions, SelectAllTakesTheTitlesAndLeavesTheTickForTheNextToggle)
{
    TextGrid grid = gridOf("Name|A\nSUB1|1\nSUB2|2");
    grid.setFixedRows(1);
    grid.setFixedCols(1);
    grid.setCursor(1, 1);
    EXPECT_FALSE(hasRange(grid));
    selectWhole(grid);
    EXPECT_EQ(grid.clip(), "Name\tA\rSUB1\t1\rSUB2\t2");
    EXPECT_EQ(grid.row() + grid.col() + grid.fixedRows() + grid.fixedCols(), 0);
    EXPECT_FALSE(toggleTitles(grid)) << "they are ordinary cells since Select All: the first toggle makes titles";
    EXPECT_EQ(grid.fixedRows(), 1);
    EXPECT_EQ(grid.fixedCols(), 1);
    EXPECT_TRUE(toggleTitles(grid));
    EXPECT_EQ(grid.fixedRows() + grid.fixedCols(), 0);

    FlexGrid empty;
    empty.setRows(0);
    selectWhole(empty);
    toggleTitles(empty);
    toggleTitles(empty);
    EXPECT_EQ(selectedCells(empty), 0);
}

TEST(GridActions, ColumnsAreWidenedToTheirHeadingsAndNeverNarrowed)
{
    TextGrid grid = gridOf("Time|A|LONG NAME  1  1  1");
    grid.setColWidth(1, 5000);
    fitToHeadings(grid, 1, ScriptedTextMeasure()); // 120 twips a character
    EXPECT_EQ(grid.colWidth(0), FlexGrid::kStandardColWidth);
    EXPECT_EQ(grid.colWidth(1), 5000);
    EXPECT_EQ(grid.colWidth(2), 18 * 144);
    EXPECT_EQ(grid.colAlignment(2), FlexGrid::RightTop);
}

struct CopyRow
{
    const char* name;
    CopyRule rule;
    const char* clip;
    const char* copied;
};
class CopyRules : public testing::TestWithParam<CopyRow>
{
};
TEST_P(CopyRules, ShapeTheText)
{
    EXPECT_EQ(byCopyRule(GetParam().clip, GetParam().rule), GetParam().copied);
}
INSTANTIATE_TEST_SUITE_P(
    , CopyRules,
    testing::Values(CopyRow{"AsIs", CopyRule::AsIs, "a\t\tb\rc\nd", "a\t\tb\rc\nd"},
                    CopyRow{"CrLf", CopyRule::CrLf, "a\t\tb\rc", "a\t\tb\r\nc"},
                    CopyRow{"CrOnlyAlsoForLineFeedsInCells", CopyRule::CrOnly, "a\rb\nc\r\nd", "a\rbc\rd"},
                    CopyRow{"EmptyCellsCollapse", CopyRule::CrLfCollapsed, "a\t\t\t\tb\rc", "a\tb\r\nc"},
                    CopyRow{"TabsAheadOfALineEndGo", CopyRule::CrLfCollapsed, "a\t\t\rb\t\t", "a\r\nb\t"},
                    CopyRow{"EmptyRowsStay", CopyRule::CrLfCollapsed, "a\r\t\t\rb", "a\r\n\r\nb"}),
    [](const auto& row) { return row.param.name; });

TEST(GridCopy, EightPassesLeaveOneTabOf256AndTwoOf257)
{
    EXPECT_EQ(byCopyRule(QString(256, u'\t') + "x", CopyRule::CrLfCollapsed), "\tx");
    EXPECT_EQ(byCopyRule(QString(257, u'\t') + "x", CopyRule::CrLfCollapsed), "\t\tx");
}

TEST(GridCopy, RowByRowIsTheSameAsTheWholeClip)
{
    std::mt19937 random(7);
    const QString characters = QStringLiteral("ab\r\n\t");
    for (int round = 0; round < 60; ++round) {
        FlexGrid grid;
        grid.setRows(5);
        grid.setCols(6);
        for (int cell = 0; cell < 30; ++cell)
            if (random() % 3 == 0)
                grid.setTextMatrix(cell / 6, cell % 6, characters.mid(random() % 5, random() % 4));
        const auto below = [&random](int count) { return static_cast<int>(random() % static_cast<unsigned>(count)); };
        grid.select(below(5), below(6), below(5), below(6));
        for (const CopyRule rule : {CopyRule::AsIs, CopyRule::CrLf, CopyRule::CrOnly, CopyRule::CrLfCollapsed})
            ASSERT_EQ(selectionText(grid, rule).value(), byCopyRule(grid.clip(), rule));
    }
}

TEST(GridCopy, MillionsOfCellsAreAskedAboutAndTooManyRefused)
{
    ScriptedServices services;
    FlexGrid grid;
    grid.setRows(1001);
    grid.setCols(1001);
    grid.select(1, 1, 1000, 1000);
    EXPECT_TRUE(confirmLargeCopy(grid, services.dialogs)) << "a million is copied without a word";
    grid.select(0, 1, 1000, 1000);
    services.dialogs.willAnswer(Button::No);
    EXPECT_FALSE(confirmLargeCopy(grid, services.dialogs));
    EXPECT_TRUE(services.dialogs.last().text.contains("1001000 cells"));

    services.clipboard.setText("as it was");
    EXPECT_TRUE(copySelection(grid, CopyRule::CrLf, services.clipboard, 5000).contains("too large"));
    EXPECT_EQ(services.clipboard.raw(), "as it was");
    EXPECT_EQ(copySelection(grid, CopyRule::CrLf, services.clipboard), "");
    EXPECT_EQ(services.clipboard.raw().size(), 1001 * 999 + 1000 * 2);
}

TEST(GridCsv, QuotesWhatNeedsItAndPutsUnitsIntoTheHeadings)
{
    ScriptedServices services;
    TextGrid grid = gridOf("KK Name|A, upper||C\nsay \"hi\"|1.5||\nB\xC3\xBC"
                           "ch|-0.25|x|");
    grid.setNumberColumn(3, 1, {1280.125}, generalText);
    const QString path = services.path("table.csv");
    EXPECT_EQ(writeGridCsv(grid, path, [](int col) { return col > 0 ? QStringLiteral("cfs") : QString(); }), "");
    EXPECT_EQ(services.bytes("table.csv"), "KK Name,\"A, upper (cfs)\",,C (cfs)\r\n"
                                           "\"say \"\"hi\"\"\",1.5,,1280.125\r\n"
                                           "B\xC3\xBC"
                                           "ch,-0.25,x,\r\n");
    EXPECT_TRUE(writeGridCsv(grid, services.path("no/such/folder.csv")).contains("cannot be written"));
}

TEST(GridCsv, ManyPiecesMakeOneFile)
{
    ScriptedServices services;
    FlexGrid grid;
    grid.setRows(3001);
    grid.setCols(41);
    for (int col = 0; col < 41; ++col)
        grid.setNumberColumn(col, 1, std::vector<double>(3000, 12345.675), generalText);
    EXPECT_EQ(writeGridCsv(grid, services.path("large.csv")), "");
    const QByteArray bytes = services.bytes("large.csv");
    EXPECT_EQ(bytes.size(), 42 + 3000 * (41 * 10 + 1));
    EXPECT_EQ(bytes.count("12345.675"), 3000 * 41);
}

} // namespace
} // namespace kalvo
