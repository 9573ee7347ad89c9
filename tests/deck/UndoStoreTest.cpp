// SPDX-License-Identifier: GPL-3.0-or-later
#include "deck/UndoCommands.h"

#include "FakeEditBox.h"
#include "deck/CellEditing.h"
#include "tests/support/GridText.h"
#include "tests/support/ScriptedServices.h"

#include <QFileInfo>

#include <gtest/gtest.h>

#include <random>

namespace kalvo {
namespace {

// -- The store -------------------------------------------------------------------------------------------------------

TEST(UndoStore, GoesBackAndOnceForth)
{
    auto grid = gridOf("a|b\nc|d");
    UndoStore store;
    store.record(grid);
    grid.setTextMatrix(0, 0, "1");
    store.record(grid);
    grid.setTextMatrix(0, 0, "2");
    EXPECT_EQ(store.undoCount(), 3);

    store.undo(grid);
    EXPECT_EQ(gridText(grid), "1|b\nc|d");
    store.undo(grid);
    EXPECT_EQ(gridText(grid), "a|b\nc|d");
    EXPECT_FALSE(store.canUndo());
    store.redo(grid);
    EXPECT_EQ(gridText(grid), "1|b\nc|d") << "the state between the two, not the newest one";
    EXPECT_TRUE(store.redoEmpty());
    EXPECT_EQ(store.undoCount(), 2);
    store.undo(grid);
    EXPECT_EQ(gridText(grid), "a|b\nc|d") << "the position taken back was live again";
}

TEST(UndoStore, BringsBackRowsAndCursorButNoLooks)
{
    auto grid = gridOf("a|b\nc|d\ne|f");
    grid.setCursor(2, 1);
    grid.setTopRow(1);
    UndoStore store;
    store.record(grid);
    grid.setRowHeight(1, 10);
    grid.setCursor(0, 0);
    grid.setCellBackColor(rgb(1, 2, 3));
    grid.setTopRow(0);
    grid.insertRow(0, 2);
    store.undo(grid);
    EXPECT_EQ(gridText(grid), "a|b\nc|d\ne|f");
    EXPECT_EQ(grid.row(), 2);
    EXPECT_EQ(grid.col(), 1);
    EXPECT_EQ(grid.topRow(), 1);
    EXPECT_EQ(grid.cellFormat(2, 0).backColor, rgb(1, 2, 3)) << "looks stay where they are on the screen";
    store.redo(grid);
    EXPECT_EQ(gridText(grid), "|\n|\na|b\nc|d\ne|f");
}

TEST(UndoStore, CellsWithTabsAndLineEndsComeBackWhole)
{
    auto grid = gridOf("a|b\nc|d");
    grid.setTextMatrix(0, 0, "x\ty\rz");
    UndoStore store;
    store.record(grid);
    grid.setTextMatrix(0, 0, "");
    store.undo(grid);
    EXPECT_EQ(grid.textMatrix(0, 0), "x\ty\rz");
}

TEST(UndoStore, TellsTheSizeOfPlainTexts)
{
    auto grid = gridOf("ab|c\nd|");
    const auto clipOfAll = [&] {
        grid.select(0, 0, grid.rows() - 1, grid.cols() - 1);
        return grid.clip().size();
    };
    UndoStore store;
    EXPECT_EQ(store.estimatedBytes(), 9) << "3 x (1 + 2)";
    qint64 texts = clipOfAll();
    store.record(grid);
    grid.setTextMatrix(1, 1, "longer");
    texts += clipOfAll();
    store.record(grid);
    grid.insertRow(1);
    texts += clipOfAll();
    store.record(grid);
    EXPECT_EQ(store.estimatedBytes(), texts + 3 * (4 + 2));
    store.undo(grid);
    EXPECT_EQ(store.estimatedBytes(), texts + 3 * (3 + 2)) << "positions taken back are counted on";
    store.reset();
    EXPECT_EQ(store.estimatedBytes(), 9);
}

TEST(UndoStore, LevelsShareTheRowsThatNobodyWrote)
{
    FlexGrid grid;
    grid.setCols(12);
    grid.setRows(1000);
    for (int row = 0; row < grid.rows(); ++row)
        grid.setTextMatrix(row, 1, QString::number(row));
    UndoStore store;
    for (int level = 0; level < 50; ++level) {
        store.record(grid);
        grid.setTextMatrix(level, 2, "x");
    }
    int shared = 0;
    for (int row = 0; row < grid.rows(); ++row)
        shared += grid.sharesRow(store.levels().front().deck, row);
    EXPECT_EQ(shared, grid.rows() - 50);
    store.undo(grid);
    EXPECT_TRUE(grid.sharesRow(store.levels().front().deck, 999)) << "a step back writes only what differs";

    store.record(grid);
    CellFormat bold;
    bold.bold = true;
    grid.setCellFormat(700, 1, bold);
    grid.insertRow(1);
    store.undo(grid);
    const FlexGrid::Snapshot& level = store.levels().at(49).deck;
    EXPECT_TRUE(grid.sharesRow(level, 998)) << "rows that had moved are shared again, not copied";
    EXPECT_EQ(grid.textMatrix(701, 1), "701");
    EXPECT_TRUE(grid.cellFormat(701, 1).bold) << "looks stay where they are";
    grid.setTextMatrix(998, 1, "x");
    EXPECT_EQ(level.textMatrix(998, 1), "998") << "and a level never follows the grid";
}

TEST(UndoStore, ANewLevelAfterStepsBackReplacesTheOldOne)
{
    auto grid = gridOf("0");
    UndoStore store;
    for (const char* text : {"1", "2", "3"}) {
        store.record(grid);
        grid.setTextMatrix(0, 0, text);
    }
    store.undo(grid);
    store.undo(grid);
    store.record(grid);
    EXPECT_TRUE(store.redoEmpty());
    EXPECT_EQ(store.undoCount(), 3);
    EXPECT_EQ(store.levels().size(), 3u) << "never trimmed";
    grid.setTextMatrix(0, 0, "new");
    store.undo(grid);
    EXPECT_EQ(gridText(grid), "1");
}

TEST(UndoStore, RandomEditsComeBackInReverse)
{
    auto grid = gridOf("a|b|c\nd|e|f\ng|h|i\nj|k|l");
    UndoStore store;
    std::mt19937 random(7);
    const auto below = [&](int end) { return static_cast<int>(random() % static_cast<unsigned>(end)); };
    std::vector<std::string> states;
    for (int step = 0; step < 300; ++step) {
        states.push_back(gridText(grid));
        store.record(grid);
        switch (below(4)) {
        case 0:
            grid.insertRow(below(grid.rows() + 1), 1 + below(3));
            break;
        case 1:
            if (grid.rows() > 2)
                grid.removeRow(below(grid.rows() - 1), 1);
            break;
        case 2:
            grid.setRows(1 + below(12));
            break;
        default:
            grid.setCursor(below(grid.rows()), below(3));
            grid.setText(QString::number(step));
        }
    }
    for (auto state = states.rbegin(); state != states.rend(); ++state) {
        const std::string before = gridText(grid);
        store.undo(grid);
        ASSERT_EQ(gridText(grid), *state);
        store.redo(grid);
        ASSERT_EQ(gridText(grid), before);
        store.undo(grid);
    }
    EXPECT_FALSE(store.canUndo());
}

// -- The commands ----------------------------------------------------------------------------------------------------

struct CountingScreen : Screen
{
    void showScreen() override {}
    void hideScreen() override {}
    bool isScreenVisible() const override { return true; }
};

struct UndoCommandsTest : testing::Test
{
    ScriptedServices services;
    StatusPanels panels;
    Commands commands;
    Screens screens;
    Deck deck{services, panels};
    FakeEditBox box{deck};
    FileCommands files{deck, services, commands, panels, screens};
    UndoCommands undo{deck, services, commands, panels, screens, files};
    QStringList ran;

    UndoCommandsTest()
    {
        commands.setGate([this] { deck.storeEditBox(); });
        for (const char* name : {"unhide", "mnu_restore", "newdefaultmnu", "viewhec1"})
            commands.add(QString::fromLatin1(name), [this, name] { ran << QString::fromLatin1(name); });
    }
    /// A command that changes one cell of the deck, as all of them do it.
    void edit(int row, int column, const char* text)
    {
        undo.NewUndoAdd();
        deck.Grid1.setTextMatrix(row, column, QString::fromLatin1(text));
        deck.setTextbox();
    }
    QString cell(int row, int column) const { return deck.Grid1.textMatrix(row, column); }
    /// Which of undo, its twin, redo, its twin are enabled.
    std::string enabled() const
    {
        std::string all;
        for (const char* name : {"mnu_undo", "mnupopupundo", "mnu_redo", "mnu_popupredo"})
            all += commands.isEnabled(QString::fromLatin1(name)) ? '1' : '0';
        return all;
    }
    bool run(const char* name) { return commands.run(QString::fromLatin1(name)); }
};

TEST_F(UndoCommandsTest, EachEditIsOneStep)
{
    EXPECT_EQ(enabled(), "0000");
    EXPECT_FALSE(run("mnu_undo"));
    edit(1, 2, "one");
    EXPECT_EQ(panels.text(2), "Undo 2 ");
    EXPECT_EQ(enabled(), "1100");
    EXPECT_FALSE(deck.dataSaved);
    edit(1, 2, "two");
    deck.dataSaved = true;

    EXPECT_TRUE(run("mnu_undo"));
    EXPECT_EQ(cell(1, 2), "one");
    EXPECT_EQ(panels.text(2), "Undo 2 ");
    EXPECT_EQ(deck.undoCount, 2);
    EXPECT_FALSE(deck.dataSaved);
    EXPECT_EQ(enabled(), "1111");
    EXPECT_TRUE(run("mnupopupundo"));
    EXPECT_EQ(cell(1, 2), "");
    EXPECT_EQ(enabled(), "0011");

    EXPECT_TRUE(run("mnu_popupredo"));
    EXPECT_EQ(cell(1, 2), "one");
    EXPECT_EQ(enabled(), "1100");
    EXPECT_EQ(panels.text(2), "Undo 2 ");
    EXPECT_FALSE(run("mnu_redo")) << "there is one redo level";
}

TEST_F(UndoCommandsTest, RecordingTouchesNeitherEditorNorCursor)
{
    deck.Grid1.select(3, 4, 5, 6);
    box.contents = "half typed";
    const int placed = box.placed;
    int moves = 0;
    for (const auto signal : {&FlexGrid::selectionChanged, &FlexGrid::leavingCell, &FlexGrid::enteredCell})
        QObject::connect(&deck.Grid1, signal, &deck, [&moves] { ++moves; });
    undo.NewUndoAdd();
    EXPECT_EQ(box.contents, "half typed");
    EXPECT_EQ(box.placed, placed);
    EXPECT_TRUE(box.shown && deck.isEditorActive());
    EXPECT_EQ(deck.Grid1.selection(), (FlexGrid::Area{3, 4, 5, 6}));
    EXPECT_EQ(moves, 0);
}

TEST_F(UndoCommandsTest, AKeystrokeIsOneLevelAndUndoTakesTheTypedTextBack)
{
    CellEditing editing(deck);
    editing.setRecorder([this] { undo.NewUndoAdd(); });
    deck.Grid1.setCursor(1, 2);
    deck.Grid1.setTextMatrix(1, 2, "old");
    for (const char* text : {"n", "ne", "new"}) {
        box.contents = QString::fromLatin1(text);
        editing.typed();
    }
    EXPECT_EQ(panels.text(2), "Undo 4 ");
    EXPECT_TRUE(run("mnu_undo"));
    EXPECT_EQ(cell(1, 2), "old");
    EXPECT_EQ(box.contents, "old");
    EXPECT_TRUE(box.shown && deck.isEditorActive());
    EXPECT_TRUE(run("mnu_redo"));
    EXPECT_EQ(cell(1, 2), "new") << "the text in the editor was stored ahead of the step back";
    EXPECT_EQ(box.contents, "new");
}

TEST_F(UndoCommandsTest, AStepBackShowsAllRowsInDefaultLooksAndForgetsTheViewer)
{
    screens.add("Form12", [] { return std::make_unique<CountingScreen>(); });
    screens.load("Form12");
    edit(1, 1, "KK");
    deck.Grid1.setRows(5);
    run("mnu_undo");
    EXPECT_EQ(ran, (QStringList{"unhide", "mnu_restore", "newdefaultmnu"}));
    EXPECT_FALSE(screens.isLoaded("Form12"));
    EXPECT_FALSE(commands.isEnabled("viewhec1"));
    EXPECT_EQ(deck.Grid1.rows(), deck_layout::kNewRows);
    EXPECT_EQ(deck.Grid1.rowHeight(200), deck_layout::kRowHeight);
    EXPECT_EQ(cell(200, 0), "200");
    run("mnu_redo");
    EXPECT_EQ(deck.Grid1.rows(), 5);
    EXPECT_EQ(ran.size(), 3) << "a redo leaves looks alone";
}

TEST_F(UndoCommandsTest, LineNumbersAreRightAfterEveryStep)
{
    edit(1, 1, "ID");
    undo.NewUndoAdd();
    deck.Grid1.setTextMatrix(1, 1, "* "); // and the numbers are stale
    edit(2, 1, "KK");
    run("mnu_undo");
    EXPECT_EQ(gridText(deck.Grid1, 1, 0, 3, 1), "|* \n1|\n2|");
}

TEST_F(UndoCommandsTest, AnEditKillsTheRedoLevel)
{
    edit(1, 2, "a");
    run("mnu_undo");
    edit(1, 2, "b");
    EXPECT_TRUE(undo.redoEmpty());
    EXPECT_EQ(enabled(), "1100");
}

TEST_F(UndoCommandsTest, RedoOfNothingOnlyRefreshesTheCommands)
{
    commands.setEnabled("mnu_redo", true);
    EXPECT_TRUE(run("mnu_redo"));
    EXPECT_EQ(enabled(), "1100");
    EXPECT_EQ(deck.undoCount, 1);
}

TEST_F(UndoCommandsTest, PanelTwoIsRedAbove99)
{
    for (int level = 2; level <= 99; ++level)
        undo.undo_add();
    EXPECT_EQ(panels.text(2), "Undo 99 ");
    EXPECT_EQ(panels.look(2), PanelLook{});
    edit(1, 2, "x");
    EXPECT_EQ(panels.text(2), "Undo 100 ");
    EXPECT_EQ(panels.look(2).foreColor, rgb(255, 0, 0));
    EXPECT_TRUE(panels.look(2).centred);
    EXPECT_EQ(panels.look(2).minimumWidth, 500);
    EXPECT_EQ(panels.look(2).fontSize, 8.0);
    run("mnu_undo");
    EXPECT_EQ(panels.look(2), PanelLook{});
    run("mnu_redo");
    EXPECT_EQ(panels.look(2).foreColor, rgb(255, 0, 0));
}

TEST_F(UndoCommandsTest, MoreLevelsThanA16BitCounterHolds)
{
    for (int level = 0; level < 40000; ++level)
        undo.NewUndoAdd();
    EXPECT_EQ(panels.text(2), "Undo 40001 ");
    EXPECT_TRUE(run("mnu_undo"));
    EXPECT_EQ(panels.text(2), "Undo 40000 ");
}

TEST_F(UndoCommandsTest, SuppressedChangesAreNoEdits)
{
    deck.dataSaved = true;
    {
        const UndoCommands::Suppress quiet(undo);
        EXPECT_TRUE(undo.undoSuppressed());
        undo.NewUndoAdd();
    }
    EXPECT_EQ(deck.undoCount, 1);
    EXPECT_TRUE(deck.dataSaved);
    undo.NewUndoAdd();
    EXPECT_EQ(deck.undoCount, 2);
}

// -- Undo Off --------------------------------------------------------------------------------------------------------

TEST_F(UndoCommandsTest, UndoOffRecordsAndRestoresNothing)
{
    edit(1, 2, "a");
    edit(1, 2, "b");
    run("mnu_undo");
    run("mnu_undooff");
    EXPECT_EQ(panels.text(2), "Undo Off ");
    EXPECT_TRUE(commands.isChecked("mnu_undooff"));
    run("mnu_undo");
    run("mnu_redo");
    EXPECT_EQ(cell(1, 2), "a");
    EXPECT_FALSE(undo.redoEmpty()) << "neither does anything, so nothing is lost";

    edit(1, 2, "c");
    EXPECT_EQ(deck.undoCount, 2);
    EXPECT_FALSE(deck.dataSaved);
    EXPECT_TRUE(undo.redoEmpty()) << "else redo would pour the old state over the edit";
    EXPECT_EQ(enabled(), "1100");

    run("mnu_undooff");
    EXPECT_EQ(panels.text(2), "Undo On ");
    run("mnu_undo");
    EXPECT_EQ(cell(1, 2), "") << "levels from before are still there";
}

TEST_F(UndoCommandsTest, ALoadTakesTheTickOffButLeavesRecordingOffAndSaysSo)
{
    run("mnu_undooff");
    ASSERT_TRUE(files.opener(services.put("a.dat", "ID a\r\nZZ\r\n")));
    EXPECT_FALSE(commands.isChecked("mnu_undooff"));
    EXPECT_TRUE(undo.undoOff());
    EXPECT_EQ(panels.text(2), "Undo Off ");
    EXPECT_TRUE(panels.toolTip(2).startsWith("Undo Off"));
    run("mnu_undooff");
    EXPECT_TRUE(commands.isChecked("mnu_undooff"));
    services.dialogs.willAnswer(Button::Ok);
    files.newhec1();
    EXPECT_TRUE(commands.isChecked("mnu_undooff") && undo.undoOff()) << "New leaves tick and recording alone";
}

// -- Resets ----------------------------------------------------------------------------------------------------------

TEST_F(UndoCommandsTest, ALoadForgetsAllLevels)
{
    for (int level = 0; level < 120; ++level)
        undo.NewUndoAdd();
    deck.dataSaved = true;
    ASSERT_TRUE(files.opener(services.put("a.dat", "ID a\r\nZZ\r\n")));
    EXPECT_EQ(panels.text(2), "Undo 1 ");
    EXPECT_EQ(panels.look(2), PanelLook{});
    EXPECT_EQ(enabled(), "0000");
    EXPECT_TRUE(undo.store().levels().empty());
    edit(1, 2, "x");
    run("mnu_undo");
    EXPECT_EQ(cell(1, 2), " a") << "undo goes back to the deck that was loaded and no further";
}

TEST_F(UndoCommandsTest, ResetAsksAndTellsTheSize)
{
    edit(1, 2, "abc");
    edit(1, 2, "abcdef");
    const qint64 bytes = undo.store().estimatedBytes();
    services.dialogs.willAnswer(Button::No);
    run("mnu_resetundo");
    EXPECT_EQ(deck.undoCount, 3);
    const auto& asked = services.dialogs.last();
    EXPECT_EQ(asked.text, QString("There are about %1 bytes in Use by Undo\r\nPress YES to reset the Undo System - "
                                  "Warning! You will not be able to Undo recent Edits ")
                              .arg(bytes));
    EXPECT_EQ(asked.icon, Icon::Warning);
    EXPECT_EQ(asked.buttons, Buttons::YesNoCancel);
    EXPECT_EQ(asked.defaultButton, Button::No);
    EXPECT_EQ(asked.title, kApplicationTitle);

    services.dialogs.willAnswer(Button::Cancel);
    run("mnu_resetundo");
    EXPECT_EQ(deck.undoCount, 3);
    services.dialogs.willAnswer(Button::Yes);
    run("mnu_resetundo");
    EXPECT_EQ(panels.text(2), "Undo 1 ");
    EXPECT_EQ(enabled(), "0000");
    EXPECT_EQ(cell(1, 2), "abcdef") << "the deck itself stays";
}

// -- Undo to Last Run File -------------------------------------------------------------------------------------------

TEST_F(UndoCommandsTest, TheLastRunFileComesBackAndTheDeckOfBeforeIsKept)
{
    edit(1, 1, "KK");
    edit(1, 2, "mine");
    services.put("checky.dat", "ID last run\r\nZZ\r\n");
    services.dialogs.willAnswer(Button::Ok); // "Add the New Data?"
    run("mnu_restorelastrun");
    EXPECT_EQ(services.dialogs.texts(), QStringList{"Add the New Data?"});
    EXPECT_EQ(cell(1, 1), "ID");
    EXPECT_EQ(panels.text(1), "Using Last Run File");
    EXPECT_EQ(enabled(), "0000") << "the load forgot the level that this command took";
    EXPECT_TRUE(services.bytes("checkyrecovered.dat").contains("mine"));
}

TEST_F(UndoCommandsTest, ADeckThatIsSavedIsReplacedWithoutAQuestion)
{
    services.put("checky.dat", "ID last run\r\nZZ\r\n");
    run("mnu_restorelastrun");
    EXPECT_EQ(cell(1, 1), "ID");
    EXPECT_TRUE(services.dialogs.texts().isEmpty());
}

TEST_F(UndoCommandsTest, ARefusedLoadLeavesTheDeckAndOneLevel)
{
    edit(1, 2, "mine");
    services.put("checky.dat", "ID last run\r\nZZ\r\n");
    services.dialogs.willAnswer(Button::Cancel);
    run("mnu_restorelastrun");
    EXPECT_EQ(cell(1, 2), "mine");
    EXPECT_EQ(deck.undoCount, 3);
    EXPECT_EQ(panels.text(1), "Using Last Run File");
}

TEST_F(UndoCommandsTest, WithoutALastRunFileNothingIsTouched)
{
    edit(1, 2, "mine");
    services.dialogs.willAnswer(Button::Ok);
    run("mnu_restorelastrun");
    EXPECT_TRUE(services.dialogs.last().text.startsWith("There is no last run file"));
    EXPECT_EQ(cell(1, 2), "mine");
    EXPECT_EQ(deck.undoCount, 2);
    EXPECT_TRUE(deck.isGridShown());
}

} // namespace
} // namespace kalvo
