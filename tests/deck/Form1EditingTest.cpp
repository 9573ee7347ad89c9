// SPDX-License-Identifier: GPL-3.0-or-later
// The editing commands as the user reaches them: keys, menus, pop-up, tool buttons, and the screens FR and frmGOTO.
#include "deck/FR_FindAndReplace.h"
#include "deck/frmGOTO_GoTo.h"
#include "tests/deck/MainScreen.h"

#include <QApplication>
#include <QPushButton>
#include <QToolButton>

namespace kalvo {
namespace {

struct Form1Editing : MainScreen
{
    std::string text(int rows) const { return gridText(grid, 1, 1, rows, 3); }
    void openThree() { open("KKA1    \r\nBA   1.5       2\r\nZZ\r\n"); }
    /// A menu as it stands open.
    void openMenu(const char* name)
    {
        auto* menu = find<QMenu>(name);
        menu->popup(form.mapToGlobal(QPoint(5, 5)));
        QCoreApplication::processEvents();
        menu->hide();
    }
    void click(const char* toolButton) { QTest::mouseClick(find<QToolButton>(toolButton), Qt::LeftButton); }
    template <class Dialog> Dialog& dialog(const char* name)
    {
        auto* made = dynamic_cast<Dialog*>(screens.load(name));
        EXPECT_NE(made, nullptr);
        return *made;
    }
    static QLineEdit& field(QWidget& dialog, const char* name)
    {
        return *dialog.findChild<QLineEdit*>(QString::fromLatin1(name));
    }
    static void press(QWidget& dialog, const char* name)
    {
        QTest::mouseClick(dialog.findChild<QPushButton*>(QString::fromLatin1(name)), Qt::LeftButton);
    }
    static void pressByEnter(QWidget& dialog, const char* name)
    {
        auto* button = dialog.findChild<QPushButton*>(QString::fromLatin1(name));
        button->setFocus();
        QTest::keyClick(button, Qt::Key_Return);
    }
    using MainScreen::press;
};

TEST_F(Form1Editing, CopyAndPasteByKeysWithoutEverOpeningAMenu)
{
    openThree();
    editAt(2, 2);
    press(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(services.clipboard.raw(), "1.5") << "the cell, not a marked piece of the editor";
    editAt(1, 3);
    press(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(cell(1, 3), "1.5");
    EXPECT_EQ(Text1().text(), "1.5");
    editAt(2, 1);
    press(Qt::Key_P, Qt::ControlModifier);
    EXPECT_EQ(cell(2, 1), "1.5");
    EXPECT_EQ(cell(3, 1), "BA");
    editAt(3, 1);
    press(Qt::Key_X, Qt::ControlModifier);
    EXPECT_EQ(services.clipboard.raw(), "BA");
    EXPECT_EQ(cell(3, 1), "");
    EXPECT_EQ(Text1().text(), "");
}

TEST_F(Form1Editing, AnEmptyCellLeavesTheClipboardAloneByKey)
{
    openThree();
    services.clipboard.setText("kept");
    editAt(1, 7);
    press(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(services.clipboard.raw(), "kept");
    EXPECT_FALSE(entry("editcopy").isEnabled());
    type("x");
    press(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(services.clipboard.raw(), "x") << "typed a moment ago, and taken as leaving the cell would";
    press(Qt::Key_L, Qt::ControlModifier);
    EXPECT_EQ(cell(1, 7), "");
    EXPECT_FALSE(entry("editpaste").isEnabled());
    EXPECT_FALSE(entry("Paste").isEnabled()) << "the tool button too";
    press(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(cell(1, 7), "x") << "a key asks anew, as the menu does";
}

TEST_F(Form1Editing, MenusAreBroughtUpToDateAsTheyOpen)
{
    openThree();
    services.clipboard.clear();
    editAt(1, 2);
    openMenu("edit");
    EXPECT_TRUE(entry("editcopy").isEnabled());
    EXPECT_FALSE(entry("editpaste").isEnabled());
    EXPECT_FALSE(entry("mnu_clearClipboard").isEnabled());
    EXPECT_FALSE(entry("mnupopupcut").isEnabled());
    openMenu("Popup");
    EXPECT_TRUE(entry("mnupopupcut").isEnabled());
    services.clipboard.setText("a\tb");
    openMenu("Popup");
    EXPECT_TRUE(entry("mnupopuppasteinsert").isEnabled());
    entry("mnupopuppasteinsert").trigger();
    EXPECT_EQ(cell(1, 2), "a");
    entry("mnupopupdeletelines").trigger();
    EXPECT_EQ(text(2), "KK|A1    |\nBA|   1.5|       2");
    openMenu("edit");
    entry("mnu_clearClipboard").trigger();
    EXPECT_FALSE(services.clipboard.hasText());
}

TEST_F(Form1Editing, EveryEntryOfEditingIsAliveAndToolButtonsDoTheSame)
{
    openThree();
    for (const char* name : {"editcopy",           "editcut",
                             "editpaste",          "pasteover",
                             "editclear",          "mnu_FindandReplace",
                             "mnu_clearClipboard", "mnu_deletelines",
                             "newinsertrow",       "deleterow",
                             "mnu_goto",           "trimtozz",
                             "mnu_hiderows",       "unhide",
                             "mnu_Bold",           "highlight",
                             "mnu_hifont",         "mnufitrows",
                             "mnufitcolumns",      "mnu_fitboth",
                             "mnu_cleanup",        "mnu_gridlines",
                             "mnu_adjustgrids",    "mnupopupcopy",
                             "mnupopupcut",        "mnupopuppasteinsert",
                             "mnupopupareapaste",  "mnupopupclear",
                             "mnupopupinsertline", "mnupopupdeletelines",
                             "insertrow"})
        EXPECT_TRUE(page.commands.has(name)) << name;
    grid.select(1, 1, 2, 2);
    click("Copy");
    EXPECT_EQ(services.clipboard.raw(), "KK\tA1    \r\nBA\t   1.5");
    click("Paste");
    EXPECT_EQ(text(3), "KK|A1    |\nBA|   1.5|\nKK|A1    |");
    click("Undo");
    click("Undo");
    grid.select(2, 1, 1, 1);
    click("Cut");
    EXPECT_EQ(text(2), "|A1    |\n|   1.5|       2");
    click("Undo");
    grid.select(1, 1, 2, 1);
    click("Deletelines");
    EXPECT_EQ(cell(1, 1), "ZZ");
    click("Undo");
    EXPECT_EQ(text(2), "KK|A1    |\nBA|   1.5|       2");
}

TEST_F(Form1Editing, RowCommandsKeepTheEditorOverItsCell)
{
    openThree();
    editAt(2, 2);
    Text1().selectAll();
    type("7.5");
    entry("newinsertrow").trigger();
    EXPECT_EQ(cell(3, 2), "7.5");
    EXPECT_EQ(cell(2, 2), "");
    EXPECT_EQ(Text1().text(), "");
    EXPECT_EQ(Text1().geometry(), Grid1().cellRect(2, 2));
    entry("deleterow").trigger();
    EXPECT_EQ(Text1().text(), "7.5");
    EXPECT_TRUE(Grid1().hasFocus());
    press(Qt::Key_H, Qt::ControlModifier);
    EXPECT_EQ(grid.row(), 3);
    EXPECT_EQ(Text1().text(), "");
    EXPECT_EQ(Text1().geometry(), Grid1().cellRect(3, 2));
    press(Qt::Key_U, Qt::ControlModifier);
    EXPECT_FALSE(page.deck.isHiddenRow(2));
    press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(cell(3, 2), "7.5") << "the row that was deleted is back";
    press(Qt::Key_T, Qt::ControlModifier);
    EXPECT_EQ(grid.rows(), 5) << "nothing stands behind ZZ any more";
}

TEST_F(Form1Editing, CleaningUpMakesTheWindowAsWideAsItsColumns)
{
    openThree();
    press(Qt::Key_F3);
    int sum = 0;
    for (int col = 0; col < grid.cols(); ++col)
        sum += grid.colWidth(col);
    EXPECT_EQ(form.width(), std::max((sum + 725) / kTwipsPerPixel, form.minimumWidth()));
}

TEST_F(Form1Editing, APasteGivesThePointerBack)
{
    openThree();
    services.clipboard.setText("x");
    bool wasBusy = false;
    QObject::connect(&page.edit, &EditCommands::busy, &form,
                     [&](bool on) { wasBusy = wasBusy || (on && QApplication::overrideCursor()); });
    press(Qt::Key_V, Qt::ControlModifier);
    EXPECT_TRUE(wasBusy);
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
}

TEST_F(Form1Editing, EditsWhileHec1RunsAreEditsLikeAnyOther)
{
    openThree();
    services.process.willHang([&] {
        editAt(2, 2);
        Text1().selectAll();
        type("7.5");
        entry("newinsertrow").trigger();
        grid.select(1, 1, 2, 3);
        entry("mnu_deletelines").trigger();
        press(Qt::Key_Z, Qt::ControlModifier);
        services.process.stop();
    });
    services.process.run({});
    EXPECT_EQ(text(4), "KK|A1    |\n||\nBA|7.5|       2\nZZ||");
    EXPECT_TRUE(page.deck.isEditorActive());
    EXPECT_TRUE(Text1().isVisible());
    EXPECT_EQ(panel(2), "Undo 5 ");
}

// -- Find and Replace ------------------------------------------------------------------------------------------------

TEST_F(Form1Editing, FindAndReplaceStaysOpenBesideTheDeck)
{
    openThree();
    services.dialogs.willAnswer(Button::Ok);
    press(Qt::Key_R, Qt::ControlModifier);
    EXPECT_EQ(services.dialogs.last().text, "Select an area to search");
    EXPECT_FALSE(screens.isLoaded("FR"));
    grid.select(1, 1, 2, 3);
    press(Qt::Key_R, Qt::ControlModifier);
    ASSERT_TRUE(screens.isVisible("FR"));
    FR& fr = dialog<FR>("FR");
    EXPECT_EQ(fr.windowTitle(), "Find and Replace");
    QTest::keyClicks(&field(fr, "Text1"), "1.5");
    QTest::keyClicks(&field(fr, "Text2"), "2.25");
    press(fr, "Command1");
    EXPECT_EQ(text(2), "KK|A1    |\nBA|   2.25|       2");
    EXPECT_EQ(panel(7), "1 place replaced");
    EXPECT_TRUE(screens.isVisible("FR"));
    QTest::keyClicks(&field(fr, "Text1"), "x");
    EXPECT_EQ(field(fr, "Text2").text(), "");
    press(fr, "Command2");
    EXPECT_FALSE(screens.isLoaded("FR"));
    press(Qt::Key_R, Qt::ControlModifier);
    EXPECT_EQ(field(dialog<FR>("FR"), "Text1").text(), "") << "unloaded is forgotten";
    pressByEnter(dialog<FR>("FR"), "Command3");
    EXPECT_FALSE(screens.isLoaded("FR")) << "Enter presses the button that has the keyboard";
}

// -- Go To -----------------------------------------------------------------------------------------------------------

TEST_F(Form1Editing, GoToHidesItselfAndGoesOnAtTheNextCall)
{
    QByteArray deck;
    for (int i = 0; i < 120; ++i)
        deck += i == 90 ? "KMFIND ME\r\n" : i == 100 ? "KMfind me too\r\n" : "BA\r\n";
    open(deck + "ZZ\r\n");
    press(Qt::Key_G, Qt::ControlModifier);
    ASSERT_TRUE(screens.isVisible("frmGOTO"));
    frmGOTO& goTo = dialog<frmGOTO>("frmGOTO");
    EXPECT_EQ(goTo.windowTitle(), " Go To");
    EXPECT_EQ(field(goTo, "Text2").text() + field(goTo, "Text3").text(), "11");
    grid.setCursor(2, 4);
    QTest::keyClicks(&field(goTo, "Text1"), "Find");
    EXPECT_EQ(field(goTo, "Text2").text() + field(goTo, "Text3").text(), "24") << "from the cursor's cell on";
    QTest::keyClick(&field(goTo, "Text1"), Qt::Key_Return);
    EXPECT_FALSE(goTo.isVisible());
    EXPECT_EQ(grid.row(), 91);
    EXPECT_TRUE(Grid1().rowIsVisible(91)) << "the hit is brought into sight";
    EXPECT_EQ(Text1().text(), "FIND M");
    EXPECT_EQ(panel(3), "KM Card ");
    press(Qt::Key_G, Qt::ControlModifier);
    EXPECT_EQ(field(goTo, "Text1").text(), "Find");
    press(goTo, "Command1");
    EXPECT_EQ(grid.row(), 101);
    press(Qt::Key_G, Qt::ControlModifier);
    press(goTo, "Command1");
    EXPECT_EQ(grid.row(), 101);
    EXPECT_EQ(panel(7), "\"Find\" was not found");
    press(Qt::Key_G, Qt::ControlModifier);
    QTest::keyClick(&field(goTo, "Text2"), Qt::Key_Escape);
    EXPECT_FALSE(screens.isLoaded("frmGOTO"));
    press(Qt::Key_G, Qt::ControlModifier);
    EXPECT_EQ(field(dialog<frmGOTO>("frmGOTO"), "Text1").text(), "");
    pressByEnter(dialog<frmGOTO>("frmGOTO"), "Command3");
    EXPECT_FALSE(screens.isLoaded("frmGOTO")) << "Enter is Cancel's here, not the default's";
}

TEST_F(Form1Editing, TheClonePagesScreensWorkOnItsOwnDeck)
{
    openThree();
    form.setCloneMaker(
        [](Workspace& first) { return std::make_unique<Workspace>(first.services, first.screens, &first); });
    entry("mnu_clone").trigger();
    Workspace& clone = form.clonePage()->page();
    clone.deck.Grid1.setTextMatrix(5, 5, "A1");
    clone.commands.run("mnu_goto");
    auto* goTo = dynamic_cast<frmGOTO*>(screens.load("frmGOTO (Clone)"));
    ASSERT_NE(goTo, nullptr);
    QTest::keyClicks(&field(*goTo, "Text1"), "a1");
    press(*goTo, "Command1");
    EXPECT_EQ(clone.deck.Grid1.row(), 5);
    EXPECT_EQ(grid.row(), 1);
}

} // namespace
} // namespace kalvo
