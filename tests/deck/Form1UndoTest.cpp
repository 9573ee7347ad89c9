// SPDX-License-Identifier: GPL-3.0-or-later
// Undo and the card catalogue through the real keys, menus and panels of the main screen.
#include "tests/deck/MainScreen.h"

namespace kalvo {
namespace {

using Form1Undo = MainScreen;

TEST_F(Form1Undo, RecordingAKeystrokeLeavesFocusCaretAndTextAlone)
{
    editAt(2, 3);
    type("15");
    QTest::keyClick(&Text1(), Qt::Key_Left);
    type("2");
    EXPECT_EQ(Text1().text(), "125");
    EXPECT_EQ(Text1().cursorPosition(), 2);
    EXPECT_TRUE(Text1().hasFocus());
    EXPECT_EQ(panel(2), "Undo 4 ");
}

TEST_F(Form1Undo, MovingAboutRecordsNothing)
{
    open("KKSUB1\r\nBA   1.5\r\nZZ\r\n");
    editAt(1, 1);
    for (const Qt::Key key : {Qt::Key_Down, Qt::Key_Return, Qt::Key_End, Qt::Key_PageDown, Qt::Key_Home})
        press(key);
    EXPECT_EQ(page.deck.undoCount, 1);
    EXPECT_FALSE(entry("mnu_undo").isEnabled());
}

TEST_F(Form1Undo, KeysAndMenusGoBackAndForthAndTheKeyboardStaysInTheBox)
{
    open("KKSUB1\r\nBA   1.5\r\nZZ\r\n");
    editAt(2, 2);
    type("9"); // ahead of what stands there
    press(Qt::Key_Return);
    EXPECT_EQ(cell(2, 2), "91.5");
    EXPECT_TRUE(entry("mnu_undo").isEnabled());
    editAt(1, 4);
    entry("mnu_undo").trigger();
    EXPECT_EQ(cell(2, 2), "1.5");
    EXPECT_EQ(Text1().text(), "1.5") << "the cursor is back where the key was pressed";
    EXPECT_EQ(panel(3) + panel(5), "BA Card  Field 1 ") << "and the status bar tells that cell";
    EXPECT_TRUE(Text1().hasFocus());
    EXPECT_FALSE(entry("mnu_undo").isEnabled());
    EXPECT_TRUE(entry("mnu_popupredo").isEnabled());
    entry("mnu_popupredo").trigger();
    EXPECT_EQ(cell(2, 2), "91.5");
    EXPECT_TRUE(entry("mnupopupundo").isEnabled());
    EXPECT_FALSE(entry("mnu_redo").isEnabled());
    EXPECT_FALSE(page.deck.dataSaved);
}

TEST_F(Form1Undo, TheSettingsMenuTurnsRecordingOffAndOn)
{
    QAction& off = entry("mnu_undooff");
    off.trigger();
    EXPECT_TRUE(off.isChecked());
    EXPECT_EQ(panel(2), "Undo Off ");
    editAt(2, 3);
    type("1");
    EXPECT_EQ(page.deck.undoCount, 1);
    off.trigger();
    EXPECT_FALSE(off.isChecked());
    EXPECT_EQ(panel(2), "Undo On ");
    type("2");
    EXPECT_EQ(panel(2), "Undo 2 ");
}

TEST_F(Form1Undo, TheStatusBarTellsFieldsOfAnOpenedDeck)
{
    open("BA   1.5\r\nLS     0      76\r\nSL 210.0    -1.0\r\nZZ\r\n");
    editAt(1, 2);
    EXPECT_EQ(panel(6), " TAREA ");
    EXPECT_TRUE(panel(7).endsWith(" (960 Acres)"));
    press(Qt::Key_Return);
    EXPECT_EQ(panel(6), " SNAP ");
    editAt(2, 3);
    EXPECT_EQ(panel(6), " CRVNBR ");
    editAt(3, 3);
    EXPECT_EQ(panel(7), "Orifice Area is Negative!");
    editAt(4, 1);
    EXPECT_EQ(panel(5), " Field 0 ");
    EXPECT_EQ(panel(7), page.catalogue.getcarddescription("ZZ"));
}

} // namespace
} // namespace kalvo
