// SPDX-License-Identifier: GPL-3.0-or-later
#include "deck/CellEditing.h"
#include "deck/EditorPlacement.h"
#include "deck/SystemFamily.h"
#include "deck/TextSize.h"
#include "platform/GridActions.h"

#include "tests/deck/FakeEditBox.h"
#include "tests/support/GridText.h"
#include "tests/support/ScriptedServices.h"

#include <gtest/gtest.h>

namespace kalvo {
namespace {

using Kind = EditorMove::Kind;

// -- Keys
// --------------------------------------------------------------------------------------------------------------

struct KeyRow
{
    const char* name;
    Qt::Key key;
    Qt::KeyboardModifiers modifiers;
    EditorState at;
    Kind kind;
    int row = 0;
    int col = 0;
    bool caretAtEnd = false;
};

EditorState at(int row, int col, int caret = 0, int length = 0)
{
    return {row, col, 201, 12, caret, length};
}

struct EditorKeys : testing::TestWithParam<KeyRow>
{
};

TEST_P(EditorKeys, MoveTheCursor)
{
    const KeyRow& p = GetParam();
    const EditorMove move = editorMove(p.key, p.modifiers, p.at);
    EXPECT_EQ(move.kind, p.kind);
    if (p.kind == Kind::Cell) {
        EXPECT_EQ(move.row, p.row);
        EXPECT_EQ(move.col, p.col);
        EXPECT_EQ(move.caretAtEnd, p.caretAtEnd);
    }
}

constexpr Qt::KeyboardModifiers kNo = Qt::NoModifier;
constexpr Qt::KeyboardModifiers kAlt = Qt::AltModifier;

INSTANTIATE_TEST_SUITE_P(
    , EditorKeys,
    testing::Values(KeyRow{"CtrlAlone", Qt::Key_Control, kNo, at(5, 5), Kind::Grid},
                    KeyRow{"CtrlOfAltGr", Qt::Key_Control, kAlt, at(5, 5), Kind::None},
                    KeyRow{"CtrlWithAltGrHeld", Qt::Key_Control, Qt::GroupSwitchModifier, at(5, 5), Kind::None},
                    KeyRow{"PageUpFrom11", Qt::Key_PageUp, kNo, at(11, 5), Kind::Cell, 1, 5},
                    KeyRow{"PageUpFrom25", Qt::Key_PageUp, kNo, at(25, 5), Kind::Cell, 15, 5},
                    KeyRow{"PageUpFrom10GoesToTheFirst", Qt::Key_PageUp, kNo, at(10, 5), Kind::Cell, 1, 5},
                    KeyRow{"PageUpOnTheFirst", Qt::Key_PageUp, kNo, at(1, 5), Kind::None},
                    KeyRow{"PageDown", Qt::Key_PageDown, kNo, at(190, 5), Kind::Cell, 200, 5},
                    KeyRow{"PageDownNearTheEnd", Qt::Key_PageDown, kNo, at(191, 5), Kind::Cell, 200, 5},
                    KeyRow{"PageDownOnTheLast", Qt::Key_PageDown, kNo, at(200, 5), Kind::None},
                    KeyRow{"End", Qt::Key_End, kNo, at(5, 2), Kind::Cell, 5, 11},
                    KeyRow{"EndInTheLastColumnMovesTheCaret", Qt::Key_End, kNo, at(5, 11), Kind::None},
                    KeyRow{"Home", Qt::Key_Home, kNo, at(5, 7), Kind::Cell, 5, 1},
                    KeyRow{"LeftAheadOfTheText", Qt::Key_Left, kNo, at(5, 7, 0, 3), Kind::Cell, 5, 6, true},
                    KeyRow{"LeftWithinTheText", Qt::Key_Left, kNo, at(5, 7, 1, 3), Kind::None},
                    KeyRow{"AltLeftWithinTheText", Qt::Key_Left, kAlt, at(5, 7, 2, 3), Kind::Cell, 5, 6, false},
                    KeyRow{"LeftInTheFirstColumn", Qt::Key_Left, kNo, at(5, 1), Kind::None},
                    KeyRow{"AltLeftInTheFirstColumn", Qt::Key_Left, kAlt, at(5, 1), Kind::None},
                    KeyRow{"RightBehindTheText", Qt::Key_Right, kNo, at(5, 7, 3, 3), Kind::Cell, 5, 8},
                    KeyRow{"RightWithinTheText", Qt::Key_Right, kNo, at(5, 7, 2, 3), Kind::None},
                    KeyRow{"RightInAnEmptyCell", Qt::Key_Right, kNo, at(5, 7), Kind::Cell, 5, 8},
                    KeyRow{"AltRightWithinTheText", Qt::Key_Right, kAlt, at(5, 7, 0, 3), Kind::Cell, 5, 8},
                    KeyRow{"RightInTheLastColumn", Qt::Key_Right, kNo, at(5, 11), Kind::None},
                    KeyRow{"Up", Qt::Key_Up, kNo, at(2, 7), Kind::Cell, 1, 7},
                    KeyRow{"UpOnTheFirst", Qt::Key_Up, kNo, at(1, 7), Kind::None},
                    KeyRow{"Down", Qt::Key_Down, kNo, at(199, 7), Kind::Cell, 200, 7},
                    KeyRow{"DownOnTheLast", Qt::Key_Down, kNo, at(200, 7), Kind::None},
                    KeyRow{"Enter", Qt::Key_Return, kNo, at(5, 7, 1, 3), Kind::Cell, 5, 8},
                    KeyRow{"EnterInTheLastColumn", Qt::Key_Return, kNo, at(5, 11), Kind::Reenter},
                    KeyRow{"EnterOnTheKeypad", Qt::Key_Enter, kNo, at(5, 1), Kind::Cell, 5, 2},
                    KeyRow{"EnterOnTheLastRow", Qt::Key_Return, kNo, at(200, 7), Kind::None},
                    KeyRow{"EnterInTheLastCell", Qt::Key_Return, kNo, at(200, 11), Kind::None},
                    KeyRow{"ALetterIsTheBoxs", Qt::Key_A, kNo, at(5, 7), Kind::None}),
    [](const auto& row) { return row.param.name; });

// -- Area
// ----------------------------------------------------------------------------------------------------------------

struct AreaRow
{
    const char* name;
    const char* acres;
    const char* stored; ///< empty: nothing
};

struct AreaConversion : testing::TestWithParam<AreaRow>
{
};

TEST_P(AreaConversion, FitsFieldOneOrIsRefused)
{
    const SquareMiles area = squareMilesOf(QString::fromUtf8(GetParam().acres));
    EXPECT_EQ(area.text, QString::fromLatin1(GetParam().stored));
    EXPECT_LE(area.text.size(), 6);
    EXPECT_FALSE(area.message.isEmpty());
}

INSTANTIATE_TEST_SUITE_P(
    , AreaConversion,
    testing::Values(AreaRow{"HundredAcres", "100", "0.1562"}, AreaRow{"OneMile", "640", "1"},
                    AreaRow{"SmallestKept", "1", "0.0015"}, AreaRow{"CommaEndsTheNumber", "1,280", "0.0015"},
                    AreaRow{"BlankAhead", " 1280 ", "2"}, AreaRow{"LargestThatFits", "639999360", "999999"},
                    AreaRow{"ACutWouldTakeDigits", "640000000", ""}, AreaRow{"Negative", "-100", ""},
                    AreaRow{"NoDigit", "many", ""}, AreaRow{"OutOfRange", "1e308", ""}, AreaRow{"Zero", "0", "0"}),
    [](const auto& row) { return row.param.name; });

// -- Entering and leaving
// ------------------------------------------------------------------------------------------------

struct WordsForFields : FieldHelp
{
    QString variableName(const QString& id, const QString& field) const override { return id + u'/' + field; }
    QString variableDescription(const QString& id, const QString& variable) const override
    {
        return id + ": " + variable;
    }
    QString cardDescription(const QString& id) const override { return "about " + id; }
};

struct CellEditingTest : testing::Test
{
    ScriptedServices services;
    StatusPanels panels;
    Deck deck{services, panels};
    CellEditing editing{deck};
    WordsForFields words;
    FakeEditBox box{deck};

    CellEditingTest()
    {
        editing.setFieldHelp(&words);
        putCells(deck.Grid1, 1, 1, "ID|TEST\n*|note\nKK|SUB1\nBA|   1.5|      7\nZW| A=RIV\nZZ");
        deck.newlines();
        deck.setTextbox();
    }
    FlexGrid& grid() { return deck.Grid1; }
    QString cell(int row, int col) { return grid().textMatrix(row, col); }
};

TEST_F(CellEditingTest, WhatIsTypedGoesIntoTheCellThatIsLeft)
{
    box.contents = "OTHER";
    grid().setCursor(3, 2);
    EXPECT_EQ(cell(1, 1), "OTHER");
    EXPECT_EQ(cell(3, 2), "SUB1");
    EXPECT_FALSE(deck.dataSaved);
}

TEST_F(CellEditingTest, AMereWalkLeavesTheDeckSavedAndItsTextCardsAlone)
{
    for (int row = 1; row < 7; ++row)
        for (int col = 1; col < 12; ++col)
            grid().setCursor(row, col);
    EXPECT_TRUE(deck.dataSaved);
    EXPECT_EQ(cell(5, 2), " A=RIV");
    EXPECT_EQ(cell(4, 2), "1.5") << "a number is written right-justified, whatever stands ahead of it";
}

TEST_F(CellEditingTest, AStarTypedIntoTheIdRenumbersWhenTheCellIsLeft)
{
    grid().setCursor(3, 1);
    box.contents = "* ";
    grid().setCursor(4, 1);
    EXPECT_EQ(gridText(grid(), 1, 0, 5, 0), "1\n\n\n2\n3");
}

TEST_F(CellEditingTest, PanelsTellCardRowFieldAndHelp)
{
    grid().setCursor(4, 3);
    EXPECT_EQ(panels.text(3), "BA Card ");
    EXPECT_EQ(panels.text(4), " Row 3 ");
    EXPECT_EQ(panels.text(5), " Field 2 ");
    EXPECT_EQ(panels.text(6), "BA/2");
    EXPECT_EQ(panels.text(7), "BA: BA/2");
    grid().setCol(1);
    EXPECT_EQ(panels.text(5), " Field 0 ");
    EXPECT_EQ(panels.text(7), "about BA");
    panels.set(7, "HEC-1 Failed!");
    editing.showField();
    EXPECT_EQ(panels.text(7), "HEC-1 Failed!");
}

TEST_F(CellEditingTest, TheDeckGrowsByTwoRowsNearItsEnd)
{
    grid().setCursor(grid().rows() - 4, 1);
    EXPECT_EQ(grid().rows(), 201);
    grid().setCursor(198, 1);
    EXPECT_EQ(grid().rows(), 203);
    EXPECT_EQ(gridText(grid(), 200, 0, 202, 0), "199\n200\n201") << "one comment row is not numbered";
    EXPECT_EQ(grid().rowHeight(202), deck_layout::kRowHeight);
    EXPECT_EQ(box.placed, 4) << "placed once for each cell entered";
}

TEST_F(CellEditingTest, AHiddenRowIsEnteredWithoutAWord)
{
    grid().setRowHeight(200, deck_layout::kHiddenHeight);
    panels.set(3, "as before");
    grid().setCursor(200, 4);
    EXPECT_EQ(grid().rows(), 201);
    EXPECT_EQ(panels.text(3), "as before");
}

TEST_F(CellEditingTest, NothingHappensWhileTheEditorIsSuspended)
{
    box.contents = "X";
    deck.setEditorActive(false);
    grid().setCursor(199, 4);
    EXPECT_EQ(cell(1, 1), "ID");
    EXPECT_EQ(grid().rows(), 201);
}

TEST_F(CellEditingTest, TypingRecordsTheOldDeckAndTurnsYellowPastTheField)
{
    int recorded = 0;
    editing.setRecorder([&] { ++recorded; });
    const auto tintOf = [&](int col, const char* text) {
        grid().setCursor(3, col);
        box.contents = QString::fromLatin1(text);
        editing.typed();
        const auto tint = box.tint;
        box.contents = cell(3, col);
        return tint;
    };
    EXPECT_EQ(tintOf(1, "KK"), EditBox::Tint::Pressed);
    EXPECT_EQ(tintOf(1, "KKK"), EditBox::Tint::TooLong);
    EXPECT_EQ(tintOf(2, "123456"), EditBox::Tint::Pressed);
    EXPECT_EQ(tintOf(2, "1234567"), EditBox::Tint::TooLong);
    EXPECT_EQ(tintOf(3, "12345678"), EditBox::Tint::Pressed);
    EXPECT_EQ(tintOf(11, "123456789"), EditBox::Tint::TooLong);
    EXPECT_EQ(recorded, 6);
    EXPECT_EQ(tintOnEntering(3, 9, false), EditBox::Tint::TooLong);
    EXPECT_EQ(tintOnEntering(3, 8, false), EditBox::Tint::AtRest);
    EXPECT_EQ(tintOnEntering(3, 8, true), EditBox::Tint::Pressed);
}

TEST_F(CellEditingTest, AcresBecomeSquareMilesOnFieldOneOfABaCardOnly)
{
    int recorded = 0;
    editing.setRecorder([&] { ++recorded; });
    grid().setCursor(4, 3);
    EXPECT_FALSE(editing.convertArea());
    grid().setCursor(3, 2);
    EXPECT_FALSE(editing.convertArea());

    grid().setCursor(4, 2);
    services.dialogs.willAnswer("100");
    EXPECT_TRUE(editing.convertArea());
    EXPECT_EQ(services.dialogs.last().text, "Enter Area in Acres (converts to Square Miles) ");
    EXPECT_EQ(cell(4, 2), "0.1562");
    EXPECT_EQ(box.contents, "0.1562");
    EXPECT_EQ(panels.text(7), "100 acres = 0.15625 sq mi");
    EXPECT_FALSE(deck.dataSaved);
    EXPECT_EQ(recorded, 1);

    services.dialogs.willAnswer("none");
    EXPECT_TRUE(editing.convertArea());
    services.dialogs.willCancel();
    EXPECT_TRUE(editing.convertArea());
    EXPECT_EQ(cell(4, 2), "0.1562");
    EXPECT_EQ(recorded, 1);
}

TEST_F(CellEditingTest, TheTipOfARowIsItsCellsJoinedByCommas)
{
    EXPECT_EQ(rowTip(deck, 3), "KK,SUB1,,,,,,,,,");
    EXPECT_EQ(rowTip(deck, 0), "");
    EXPECT_EQ(rowTip(deck, 900), "");
}

TEST_F(CellEditingTest, LargerTextGoesToTheWholeGridAndKeepsTheSelection)
{
    grid().setRowHeight(7, deck_layout::kHiddenHeight);
    grid().select(3, 2, 4, 5);
    deck.setEditorActive(true);
    uptext(deck);
    EXPECT_EQ(grid().selection(), (FlexGrid::Area{3, 2, 4, 5}));
    EXPECT_EQ(grid().cellFormat(0, 11).fontSize, 9.25);
    EXPECT_EQ(grid().cellFormat(200, 1).fontSize, 9.25);
    EXPECT_EQ(grid().rowHeight(4), 250) << "9.25 points x 27 = 249.75";
    EXPECT_EQ(grid().rowHeight(7), deck_layout::kHiddenHeight);
    EXPECT_GT(grid().colWidth(9), 500) << "an empty column stays wide enough to type into";
    for (int i = 0; i < 20; ++i)
        uptext(deck);
    EXPECT_EQ(grid().cellFontSize(), 16.0);
    for (int i = 0; i < 20; ++i)
        DOWNTEXT(deck);
    EXPECT_EQ(grid().cellFontSize(), 7.0);
}

// -- Placing the editor
// --------------------------------------------------------------------------------------------------

EditorSurroundings wideGrid()
{
    EditorSurroundings around;
    around.gridTop = 600;
    around.gridLeft = 200;
    around.gridWidth = 10000;
    around.gridHeight = 6000;
    around.cellTop = 640;
    around.cellLeft = 900;
    around.cellWidth = 960;
    around.cellHeight = 320;
    around.headerHeight = 320;
    around.headerWidth = 600;
    around.roomUnderLastRow = 900;
    around.lineHeight = 210;
    return around;
}

TEST(EditorPlacement, LiesExactlyOverTheCell)
{
    EXPECT_EQ(placeEditor(wideGrid()), (EditorPlace{true, 1100, 1240, 960, 320}));
}

TEST(EditorPlacement, IsCutAtTheRightEdge)
{
    EditorSurroundings around = wideGrid();
    around.cellLeft = 9500;
    EXPECT_EQ(placeEditor(around).width, 10000 - 9500 - 45);
    around.isFirstRowVisible = false;
    EXPECT_EQ(placeEditor(around).width, 10000 - 9500 - 280 - 10);
    around.isFirstRowVisible = true;
    around.roomUnderLastRow = 74;
    EXPECT_TRUE(hasScrollBar(around));
    around.roomUnderLastRow = 75;
    EXPECT_FALSE(hasScrollBar(around));
}

TEST(EditorPlacement, IsNeverLowerThanALine)
{
    EditorSurroundings around = wideGrid();
    around.gridTop = 0;
    around.cellTop = 5700; // letter: 6000 - 5700 - 520 is below nothing
    EXPECT_EQ(placeEditor(around).height, around.lineHeight);
}

TEST(EditorPlacement, IsNotShownPastAnEdgeOrOverAHiddenRow)
{
    const auto shown = [](auto change) {
        EditorSurroundings around = wideGrid();
        change(around);
        return placeEditor(around).shown;
    };
    EXPECT_TRUE(shown([](auto& a) { a.cellLeft = 9785; })); // 10000 - 26 x 8.25 = 9785.5
    EXPECT_FALSE(shown([](auto& a) { a.cellLeft = 9786; }));
    EXPECT_FALSE(shown([](auto& a) { a.cellLeft = 9606, a.isFirstRowVisible = false; }));
    EXPECT_TRUE(shown([](auto& a) { a.cellTop = 5785; }));
    EXPECT_FALSE(shown([](auto& a) { a.cellTop = 5786; }));
    EXPECT_FALSE(shown([](auto& a) { a.cellTop = 0; })) << "under the header";
    EXPECT_FALSE(shown([](auto& a) { a.cellLeft = 100; })) << "under the line numbers";
    EXPECT_FALSE(shown([](auto& a) { a.isHiddenRow = true; }));
}

TEST(FitTextBox, FitsToTheGridsOwnEdgesAfterADrag)
{
    EXPECT_EQ(FitTextBox(wideGrid()), (EditorPlace{true, 1100, 1240, 960, 320}));
    EditorSurroundings around = wideGrid();
    around.cellLeft = 9040;
    EXPECT_EQ(FitTextBox(around).width, 960) << "ends at the edge";
    around.cellLeft = 9041;
    EXPECT_EQ(FitTextBox(around).width, 10000 - 9041 - 25);
    around.isLastRowVisible = false;
    EXPECT_EQ(FitTextBox(around).width, 10000 - 9041 - 280 - 10);

    around = wideGrid();
    around.cellTop = 5800;
    around.cellHeight = 900;
    EXPECT_EQ(FitTextBox(around).height, 900) << "no scroll bar, no cut";
    around.isLastRowVisible = false;
    EXPECT_EQ(FitTextBox(around).height, 6000 + 600 - 5800 - 520);
    around.gridTop = 0;
    EXPECT_EQ(FitTextBox(around).height, around.lineHeight);
}

TEST(FitTextBox, IsHiddenOverAHiddenRowOrACellOutOfSight)
{
    const auto shown = [](auto change) {
        EditorSurroundings around = wideGrid();
        change(around);
        return FitTextBox(around).shown;
    };
    EXPECT_TRUE(shown([](auto& a) { a.cellLeft = 9900; }));
    EXPECT_FALSE(shown([](auto& a) { a.cellLeft = 9901; }));
    EXPECT_TRUE(shown([](auto& a) { a.cellLeft = 9650, a.isLastRowVisible = false; }));
    EXPECT_FALSE(shown([](auto& a) { a.cellLeft = 9651, a.isLastRowVisible = false; }));
    EXPECT_TRUE(shown([](auto& a) { a.cellTop = 5800; }));
    EXPECT_FALSE(shown([](auto& a) { a.cellTop = 5801; }));
    EXPECT_FALSE(shown([](auto& a) { a.cellTop = 0; })) << "under the header";
    EXPECT_FALSE(shown([](auto& a) { a.isHiddenRow = true; }));
}

TEST(FitTextBox, IsBlockedWhereThePointerWentOverAScrolledGrid)
{
    EditorSurroundings around = wideGrid(); // headers 600 wide and 320 high
    EXPECT_EQ(noFitAfterMove(1, around, 625, 345), 0);
    EXPECT_EQ(noFitAfterMove(1, around, 624, 345), 1) << "over the line numbers";
    EXPECT_EQ(noFitAfterMove(1, around, 625, 344), 1) << "over the header";
    around.roomUnderLastRow = 74;
    EXPECT_EQ(noFitAfterMove(0, around, 625, 345), 1);
    around.roomUnderLastRow = 75;
    EXPECT_EQ(noFitAfterMove(1, around, 625, 345), 0);
    around.isFirstRowVisible = false;
    EXPECT_EQ(noFitAfterMove(0, around, 625, 345), 1);
    around.isCellVisible = false;
    EXPECT_EQ(noFitAfterMove(0, around, 625, 345), 0) << "the current cell is out of view: not judged";
}

TEST(Wheel, ScrollsByOneRowOrAPageButNeverBackwards)
{
    EXPECT_EQ(wheelStep(false, 6000, 320), 1);
    EXPECT_EQ(wheelStep(true, 6000, 320), 15);
    EXPECT_EQ(wheelStep(true, 900, 320), 1) << "a low window";
    EXPECT_EQ(wheelStep(true, 6000, 0), 1);
    EXPECT_EQ(wheelTopRow(5, 201, -120, 15), 20);
    EXPECT_EQ(wheelTopRow(199, 201, -120, 15), 200);
    EXPECT_EQ(wheelTopRow(5, 201, 120, 15), 1);
    EXPECT_EQ(wheelTopRow(5, 201, 120, 1), 4);
}

TEST(SystemFamily, NamesOldSystemsAndDefaultsToTheCommandInterpreter)
{
    const auto name = [](int platform, int major, int minor) { return systemFamily(platform, major, minor).name; };
    EXPECT_EQ(name(1, 4, 90), "Windows Mellinnium");
    EXPECT_EQ(name(2, 5, 0), "Windows 2000");
    EXPECT_EQ(name(2, 5, 2), "Windows XP");
    EXPECT_EQ(name(2, 6, 1), "Windows Vista");
    EXPECT_EQ(name(2, 10, 0), "Failed");
    EXPECT_EQ(systemFamily(2, 6, 0).message, " Windows XP, NT, 2000, Vista or W7 in use ");
    EXPECT_EQ(systemFamily(1, 4, 0).message, " Windows Operating System - defaulted to XP compatibility ");
    EXPECT_TRUE(systemFamily(1, 4, 0).isNTFamily);
}

} // namespace
} // namespace kalvo
