// SPDX-License-Identifier: GPL-3.0-or-later
#include "deck/RowCommands.h"

#include "tests/deck/EditPage.h"

namespace kalvo {
namespace {

using RowCommandsTest = EditPage;

TEST_F(RowCommandsTest, ARowIsInsertedAboveTheCursorAndTheLinesBelowAreCountedAgain)
{
    cards("KK|A\n*|note\nBA|1\nZZ");
    at(3, 2);
    ASSERT_TRUE(run("newinsertrow"));
    EXPECT_EQ(text(), "KK|A\n*|note\n\nBA|1\nZZ");
    EXPECT_EQ(lineNumbers(), "1,,2,3,4");
    EXPECT_EQ(cursor(), "3,2:3,2");
    EXPECT_EQ(box.contents, "") << "the editor shows the new row's cell";
    EXPECT_FALSE(deck.dataSaved);
    undoTo(1);
    EXPECT_EQ(text(), "KK|A\n*|note\nBA|1\nZZ");
}

TEST_F(RowCommandsTest, CellsMoveWholeWithTheirLooksWhateverTheyHold)
{
    cards("KK|a\tb\nBA|x\ry\n|\nZZ");
    CellFormat red;
    red.backColor = rgb(255, 0, 0);
    grid.setCellFormat(2, 2, red);
    at(1, 1);
    run("newinsertrow");
    EXPECT_EQ(text(), "\nKK|a\tb\nBA|x\ry\n\nZZ");
    EXPECT_EQ(grid.cellFormat(3, 2).backColor, rgb(255, 0, 0));
    run("deleterow");
    EXPECT_EQ(text(), "KK|a\tb\nBA|x\ry\n\nZZ");
    EXPECT_EQ(grid.cellFormat(2, 2).backColor, rgb(255, 0, 0));
}

TEST_F(RowCommandsTest, HiddenRowsStayHiddenAndTheCardUnderTheCursorStaysInSight)
{
    cards("A\nB\nC\nD\nZZ");
    hide({3});
    at(2, 1);
    run("newinsertrow");
    EXPECT_EQ(text(), "A\n\nB\nC\nD\nZZ");
    EXPECT_EQ(visibility(), "vvvhvv");
    at(4, 1);
    run("newinsertrow");
    EXPECT_EQ(visibility(), "vvvvhvv") << "a new row is seen even where a hidden one stood";
    at(2, 1);
    run("deleterow");
    run("deleterow");
    EXPECT_EQ(text(), "A\n\nC\nD\nZZ");
    EXPECT_EQ(visibility(), "vvhvv");
    drag(4, 1, 5, 2);
    run("mnu_deletelines");
    EXPECT_EQ(visibility(), "vvh");
}

// -- Deleting --------------------------------------------------------------------------------------------------------

TEST_F(RowCommandsTest, DeleteRowTakesTheCursorsRowOnly)
{
    cards("A\nB\nC\nD");
    drag(2, 2, 4, 5);
    run("deleterow");
    EXPECT_EQ(text(), "A\nC\nD");
    EXPECT_EQ(cursor(), "2,2:2,2");
    EXPECT_EQ(box.contents, "");
    at(3, 4);
    run("deleterow");
    EXPECT_EQ(text(), "A\nC");
    EXPECT_EQ(cursor(), "2,4:2,4") << "from the last row to the one above";
    run("deleterow");
    EXPECT_EQ(text(), "A");
    const int levels = deck.undoCount;
    run("deleterow");
    EXPECT_EQ(text(), "A") << "the last card row stays";
    EXPECT_EQ(deck.undoCount, levels);
    undoTo(1);
    EXPECT_EQ(text(), "A\nB\nC\nD");
}

struct DeleteLines
{
    const char* name;
    FlexGrid::Area dragged; ///< from (top, left) to (bottom, right), in any direction
    const char* left;
    const char* cursor;
};

struct RowCommandsDeleteLines : EditPage, testing::WithParamInterface<DeleteLines>
{
};

TEST_P(RowCommandsDeleteLines, TakesAllRowsOfTheSelection)
{
    const DeleteLines& row = GetParam();
    cards("A\nB|b\n*|c\nD\nZZ");
    hide({1, 2});
    drag(row.dragged.top, row.dragged.left, row.dragged.bottom, row.dragged.right);
    services.clipboard.setText("x");
    run("mnupopupdeletelines");
    EXPECT_EQ(text(), row.left);
    EXPECT_EQ(cursor(), row.cursor);
    EXPECT_TRUE(enabled("editpaste"));
    EXPECT_EQ(deck.undoCount, 2);
    EXPECT_EQ(grid.textMatrix(0, 2), "1") << "the header stays";
    undoTo(1);
    EXPECT_EQ(text(), "A\nB|b\n*|c\nD\nZZ");
}

INSTANTIATE_TEST_SUITE_P(, RowCommandsDeleteLines,
                         testing::Values(DeleteLines{"Downward", {2, 3, 3, 4}, "A\nD\nZZ", "2,1:2,1"},
                                         DeleteLines{"Upward", {3, 4, 2, 2}, "A\nD\nZZ", "2,1:2,1"},
                                         DeleteLines{"OneRow", {4, 5, 4, 5}, "A\nB|b\n*|c\nZZ", "4,1:4,1"},
                                         DeleteLines{"ToTheEnd", {4, 3, 5, 3}, "A\nB|b\n*|c", "3,3:3,1"},
                                         DeleteLines{"AllCards", {1, 1, 5, 11}, "\n\n\n\n", "1,1:1,1"},
                                         DeleteLines{"AllCardsUpward", {5, 2, 1, 2}, "\n\n\n\n", "1,1:1,1"}),
                         [](const auto& row) { return row.param.name; });

TEST_F(RowCommandsTest, DeletingAllCardsShowsEveryRowAndKeepsNoNumberOfBefore)
{
    cards("A\n*\nC");
    hide({1, 2, 3});
    drag(1, 1, 3, 1);
    run("mnu_deletelines");
    EXPECT_EQ(visibility(), "vvv");
    EXPECT_EQ(lineNumbers(), "1,2,3");
    EXPECT_EQ(panel7(), "3 rows deleted, 3 of them hidden");
}

// -- Blocks of empty rows --------------------------------------------------------------------------------------------

TEST_F(RowCommandsTest, TheLevelOfMultiInsertHoldsTheEmptyRows)
{
    cards("A\nB\nC\nZZ");
    hide({3});
    at(3, 1);
    EXPECT_TRUE(page.rows.MULTI_INSERT(2));
    EXPECT_EQ(text(), "A\nB\n\n\nC\nZZ");
    EXPECT_EQ(visibility(), "vvvvhv");
    EXPECT_EQ(deck.undoCount, 2);
    grid.setTextMatrix(3, 1, "X");
    undoTo(1);
    EXPECT_EQ(text(), "A\nB\n\n\nC\nZZ");
    EXPECT_EQ(lineNumbers(), "1,2,3,4,5,6");
}

TEST_F(RowCommandsTest, AnInsertionThatFailsIsToldAndLeavesTheDeck)
{
    cards("A\nZZ");
    services.dialogs.willAnswer(Button::Ok);
    EXPECT_FALSE(page.rows.MULTI_INSERT(-1));
    EXPECT_TRUE(services.dialogs.last().text.endsWith(" - Probably Can't Do this Operation:"));
    EXPECT_EQ(text(), "A\nZZ");
    EXPECT_TRUE(deck.isEditorActive());
}

TEST_F(RowCommandsTest, NewMultiInsertKeepsTheGridsSizeAndSaysWhatFellOff)
{
    cards("A\nB\nC\n\n");
    hide({2});
    at(2, 3);
    page.rows.newMulti_Insert(2);
    EXPECT_EQ(text(), "A\n\n\nB\nC");
    EXPECT_EQ(visibility(), "vhvvv") << "heights stay where they are";
    EXPECT_EQ(cursor(), "2,3:2,3");
    EXPECT_EQ(lineNumbers(), "1,2,3,4,5");
    EXPECT_EQ(panel7(), "1 of the new rows are hidden");
    page.rows.newMulti_Insert(1);
    EXPECT_EQ(text(), "A\n\n\n\nB");
    EXPECT_EQ(panel7(), "1 card at the end of the grid had no room any more; 1 of the new rows are hidden");
    page.rows.newMulti_Insert(50);
    EXPECT_EQ(text(), "A\n\n\n\n") << "it stops at the last row";
    undoTo(1);
    EXPECT_EQ(text(), "A\nB\nC\n\n");
}

TEST_F(RowCommandsTest, SavedHeightsFollowTheRowsOfACaller)
{
    cards("A\nB\nC\nD\nE");
    for (int row = 1; row <= 5; ++row)
        grid.setRowHeight(row, row * 100);
    const auto heights = [&] {
        std::string all;
        for (int row = 1; row < grid.rows(); ++row)
            all += std::to_string(grid.rowHeight(row)) + " ";
        return all;
    };
    page.rows.GETRowHS();
    EXPECT_EQ(page.rows.rowHeightsSaved().size(), 6u);
    grid.setRows(8);
    page.rows.SETRowHS(2, 2);
    EXPECT_EQ(heights(), "100 200 300 200 300 400 500 ") << "rows 2 and 3 are the inserted ones and are left alone";
    page.rows.GETRowHS();
    grid.setRows(6);
    page.rows.SetDelRowHS(2, 2);
    EXPECT_EQ(heights(), "100 200 300 400 500 ");
}

// -- Hiding ----------------------------------------------------------------------------------------------------------

TEST_F(RowCommandsTest, HidingSendsTheCursorToTheNextRowInSight)
{
    struct Hiding
    {
        const char* name;
        FlexGrid::Area dragged;
        const char* seen;
        int row;
    };
    for (const Hiding& hiding :
         {Hiding{"Downward", {2, 1, 3, 1}, "vhhvvvvvv", 4}, Hiding{"Upward", {3, 1, 2, 1}, "vhhvvvvvv", 4},
          Hiding{"UpwardFromTheFirst", {1, 1, 1, 1}, "hvvvvvvvv", 2},
          Hiding{"LastRow", {9, 1, 9, 1}, "vvvvvvvvh", 9}}) {
        SCOPED_TRACE(hiding.name);
        cards("A\nB\nC\nD\nE\nF\nG\nH\nZZ");
        deck.setrowheight();
        drag(hiding.dragged.top, hiding.dragged.left, hiding.dragged.bottom, hiding.dragged.right);
        run("mnu_hiderows");
        EXPECT_EQ(visibility(), hiding.seen);
        EXPECT_EQ(grid.row(), hiding.row);
        EXPECT_EQ(deck.undoCount, 1) << "hiding changes no card";
    }
}

TEST_F(RowCommandsTest, HiddenRowsAreStepppedOverAndAllComeBackAsHighAsTheFirstInSight)
{
    cards("A\nB\nC\nD\nE\nF\nG\nH\nZZ");
    hide({1, 3, 4});
    grid.setRowHeight(5, 444);
    at(2, 2);
    box.contents = "typed";
    run("mnu_hiderows");
    EXPECT_EQ(grid.row(), 5);
    EXPECT_EQ(grid.textMatrix(2, 2), "typed");
    EXPECT_EQ(page.panels.text(3), "E Card ") << "the status bar has followed";
    run("unhide");
    EXPECT_EQ(visibility(), "vvvvvvvvv");
    EXPECT_EQ(grid.rowHeight(1), 444);
    EXPECT_EQ(grid.row(), 5);
}

// -- ZZ --------------------------------------------------------------------------------------------------------------

TEST_F(RowCommandsTest, TrimmingCutsBehindTheFirstZZAndKeepsWhatWasCut)
{
    cards("KK|A\nZZ\nBA|1\n\nZZ");
    at(4, 1);
    run("trimtozz");
    EXPECT_EQ(text(), "KK|A\nZZ");
    EXPECT_EQ(grid.row(), 2);
    EXPECT_FALSE(deck.dataSaved) << "cards went";
    EXPECT_EQ(deck.undoCount, 1);
    EXPECT_NE(panel7().find("2 card(s)"), std::string::npos);
    deck.dataSaved = true;
    run("trimtozz");
    EXPECT_TRUE(deck.dataSaved);
}

TEST_F(RowCommandsTest, WithoutZZTheDeckStaysWhole)
{
    cards("KK|A\nBA|1\nzz");
    services.dialogs.willAnswer(Button::Ok);
    run("trimtozz");
    EXPECT_EQ(services.dialogs.last().text,
              "No \"ZZ\" Card Found - Input Data Requires a ZZ (End) Card in the last line.");
    EXPECT_EQ(text(), "KK|A\nBA|1\nzz");
}

// -- Groups of KK cards ----------------------------------------------------------------------------------------------

TEST_F(RowCommandsTest, ColouredGroupsAreColouredAgainWhereCardsMoved)
{
    cards("KK|A\nBA|1\nKK|B\nZZ");
    QStringList ran;
    for (const char* name : {"recolorKKGroups", "hiliteKK"})
        page.commands.add(name, [&ran, name] { ran << name; });
    run("newinsertrow");
    EXPECT_EQ(ran, QStringList()) << "nothing is coloured yet";
    deck.kkGroupsShown = true;
    for (const char* name : {"deleterow", "mnu_deletelines", "editcut", "editpaste", "pasteover", "editclear"}) {
        ran.clear();
        services.clipboard.setText("KK");
        drag(1, 1, 1, 2);
        page.commands.setEnabled(name, true);
        ASSERT_TRUE(run(name)) << name;
        EXPECT_EQ(ran, QStringList{"recolorKKGroups"}) << name;
    }
    ran.clear();
    run("newinsertrow");
    EXPECT_EQ(ran, QStringList({"recolorKKGroups", "hiliteKK"}));
}

} // namespace
} // namespace kalvo
