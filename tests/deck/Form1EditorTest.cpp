// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/deck/MainScreen.h"

#include <QSignalSpy>

namespace kalvo {
namespace {

using Form1Editor = MainScreen;

TEST_F(Form1Editor, StartsEmptyWithTheEditorAtRestOverTheFirstCell)
{
    EXPECT_EQ(grid.rows(), 201);
    EXPECT_EQ(grid.row(), 1);
    EXPECT_EQ(grid.col(), 1);
    EXPECT_TRUE(Text1().isVisible());
    EXPECT_EQ(Text1().text(), "");
    EXPECT_EQ(tint(), kAtRest);
    EXPECT_EQ(Text1().geometry(), Grid1().cellRect(1, 1));
    EXPECT_EQ(form.size(), QSize(973, 613));
    EXPECT_EQ(panel(7), "Help and System Information");
}

TEST_F(Form1Editor, AKeyOnTheGridReplacesTheTextAndTheNextOneGoesBehindIt)
{
    open("KKSUB1  \r\nBA   1.5\r\nZZ\r\n");
    grid.setCursor(2, 2);
    Grid1().setFocus();
    type("12");
    EXPECT_EQ(Text1().text(), "12");
    EXPECT_TRUE(Text1().hasFocus());
    EXPECT_EQ(tint(), kPressed);
    press(Qt::Key_Return);
    EXPECT_EQ(cell(2, 2), "12");
    EXPECT_EQ(cell(2, 3), "");
    EXPECT_FALSE(page.deck.dataSaved);
}

TEST_F(Form1Editor, TypedTextGoesIntoTheCellThatIsLeftWhateverLeavesIt)
{
    struct Leaving
    {
        const char* name;
        std::function<void()> leave;
        int row, col;
    };
    const std::vector<Leaving> ways = {
        {"Enter", [&] { press(Qt::Key_Return); }, 5, 6},
        {"Down", [&] { press(Qt::Key_Down); }, 6, 5},
        {"Up", [&] { press(Qt::Key_Up); }, 4, 5},
        {"Right", [&] { press(Qt::Key_Right); }, 5, 6},
        {"AltLeft", [&] { press(Qt::Key_Left, Qt::AltModifier); }, 5, 4},
        {"PageDown", [&] { press(Qt::Key_PageDown); }, 15, 5},
        {"PageUp", [&] { press(Qt::Key_PageUp); }, 1, 5},
        {"Home", [&] { press(Qt::Key_Home); }, 5, 1},
        {"End", [&] { press(Qt::Key_End); }, 5, 11},
        {"Click",
         [&] {
             QTest::mouseClick(Grid1().viewport(), Qt::LeftButton, Qt::NoModifier,
                               Grid1().viewport()->mapFrom(&Grid1(), Grid1().cellRect(9, 3).center()));
         },
         9, 3},
    };
    int number = 0;
    for (const Leaving& way : ways) {
        SCOPED_TRACE(way.name);
        const std::string typed = "v" + std::to_string(++number);
        editAt(5, 5);
        Text1().selectAll();
        type(typed.c_str());
        way.leave();
        EXPECT_EQ(cell(5, 5).toStdString(), typed);
        EXPECT_EQ(cell(way.row, way.col), "");
        EXPECT_EQ(grid.row(), way.row);
        EXPECT_EQ(grid.col(), way.col);
        EXPECT_EQ(Text1().text(), "");
        EXPECT_EQ(Text1().geometry(), Grid1().cellRect(way.row, way.col));
    }
}

TEST_F(Form1Editor, EnterInTheLastColumnKeepsTheCellAndItsNeighbour)
{
    open("QI     1       2       3       4       5       6       7       8       9      10\r\nZZ\r\n");
    grid.setTextMatrix(1, 10, "   9");
    editAt(1, 11);
    type("5");
    press(Qt::Key_Return);
    EXPECT_EQ(cell(1, 11), "510");
    EXPECT_EQ(cell(1, 10), "   9");
    EXPECT_EQ(grid.col(), 11);
    EXPECT_TRUE(Text1().hasFocus());
}

TEST_F(Form1Editor, TheCaretWalksThroughTheTextFromItsStart)
{
    open("QI    12      34\r\nZZ\r\n");
    editAt(1, 2);
    EXPECT_EQ(Text1().cursorPosition(), 0);
    press(Qt::Key_Right);
    press(Qt::Key_Right);
    EXPECT_EQ(grid.col(), 2);
    press(Qt::Key_Right);
    EXPECT_EQ(grid.col(), 3);
    EXPECT_EQ(Text1().cursorPosition(), 0);
    press(Qt::Key_Left);
    EXPECT_EQ(grid.col(), 2);
    EXPECT_EQ(Text1().cursorPosition(), 2) << "a plain Left comes in at the end";
}

TEST_F(Form1Editor, TheNinthCharacterTurnsItYellowAndTakingItAwayTurnsItBack)
{
    editAt(1, 3);
    type("12345678");
    EXPECT_EQ(tint(), kPressed);
    type("9");
    EXPECT_EQ(tint(), kTooLong);
    press(Qt::Key_Backspace);
    EXPECT_EQ(tint(), kPressed);
    type("9");
    press(Qt::Key_Home); // to the ID and back
    grid.setCursor(1, 3);
    press(Qt::Key_Backspace); // ahead of the text: nothing to take away
    EXPECT_EQ(Text1().text(), "123456789");
    EXPECT_EQ(tint(), kTooLong) << "a key that changes nothing leaves the warning";
    press(Qt::Key_Down);
    EXPECT_EQ(tint(), kPressed);
    press(Qt::Key_Up);
    EXPECT_EQ(tint(), kTooLong) << "a long field is yellow again on entering";
    Grid1().setFocus();
    EXPECT_EQ(tint(), kFocusLost);
    EXPECT_EQ(cell(1, 3), "123456789");
}

TEST_F(Form1Editor, CtrlAloneGivesTheKeyboardToTheGrid)
{
    editAt(2, 2);
    const auto down = [&](int key, Qt::KeyboardModifiers modifiers, const QString& text = {}) {
        QKeyEvent event(QEvent::KeyPress, key, modifiers, text);
        QCoreApplication::sendEvent(&Text1(), &event);
    };
    down(Qt::Key_Control, Qt::ControlModifier);
    EXPECT_TRUE(Grid1().hasFocus());
    Text1().setFocus();
    down(Qt::Key_Control, Qt::ControlModifier | Qt::AltModifier);
    EXPECT_TRUE(Text1().hasFocus());
    down(Qt::Key_At, Qt::ControlModifier | Qt::AltModifier, "@");
    EXPECT_EQ(Text1().text(), "@");
}

TEST_F(Form1Editor, TheBoxLeavesTheDecksCombinationsAlone)
{
    const std::vector<std::pair<Qt::Key, const char*>> keys = {{Qt::Key_A, "mnu_redo"},
                                                               {Qt::Key_C, "editcopy"},
                                                               {Qt::Key_V, "pasteover"},
                                                               {Qt::Key_X, "editcut"},
                                                               {Qt::Key_Z, "mnu_undo"}};
    QGuiApplication::clipboard()->setText("CLIP");
    services.clipboard.setText("CLIP");
    editAt(2, 2);
    type("ab");
    QStringList ran;
    for (const auto& [key, name] : keys)
        page.commands.add(name, [&ran, command = name] { ran << command; });
    for (const auto& [key, name] : keys) {
        ran.clear();
        page.commands.setEnabled(name, true);
        Text1().setFocus();
        QTest::keyClick(&Text1(), key, Qt::ControlModifier);
        EXPECT_EQ(ran, QStringList(name));
        // Nobody has the key now: still it is no key of the box.
        page.commands.setEnabled(name, false);
        QKeyEvent event(QEvent::KeyPress, key, Qt::ControlModifier);
        QCoreApplication::sendEvent(&Text1(), &event);
    }
    EXPECT_EQ(Text1().text(), "ab");
    EXPECT_FALSE(Text1().hasSelectedText());
    EXPECT_EQ(QGuiApplication::clipboard()->text(), "CLIP");
}

TEST_F(Form1Editor, TakesTheCharactersOfACardOnlyAndKeepsWhatWasThere)
{
    editAt(2, 2);
    for (const QChar c : QString::fromUtf8("a\u00e9b\u00b0")) {
        QKeyEvent event(QEvent::KeyPress, 0, Qt::NoModifier, c);
        QCoreApplication::sendEvent(&Text1(), &event);
    }
    EXPECT_EQ(Text1().text(), "ab");
    grid.setTextMatrix(3, 2, QString::fromUtf8("caf\u00e9"));
    editAt(3, 2);
    EXPECT_EQ(Text1().text(), QString::fromUtf8("caf\u00e9"));
    press(Qt::Key_Down);
    EXPECT_EQ(cell(3, 2), QString::fromUtf8("caf\u00e9"));
    EXPECT_EQ(cell(2, 2), "ab");
}

TEST_F(Form1Editor, AKeyPressedMeansThatTheOutputIsOld)
{
    page.commands.add("viewhec1", [] {});
    const auto outputOpen = [&](bool open) {
        page.commands.setEnabled("viewhec1", open);
        page.commands.setEnabled("graphdata", open);
    };
    const auto isOpen = [&] { return page.commands.isEnabled("viewhec1") || page.commands.isEnabledFlag("graphdata"); };
    page.commands.add("runhec", [] {});
    outputOpen(true);
    editAt(3, 3);
    EXPECT_FALSE(entry("runhec").isEnabled());
    press(Qt::Key_Down);
    EXPECT_TRUE(entry("runhec").isEnabled());
    EXPECT_TRUE(isOpen()) << "a mere move changes nothing";
    type("1");
    EXPECT_FALSE(isOpen());
    outputOpen(true);
    QTest::mouseClick(&Text1(), Qt::LeftButton);
    EXPECT_FALSE(isOpen());
    outputOpen(true);
    page.deck.noteChange();
    EXPECT_FALSE(isOpen());
    EXPECT_FALSE(find<QMenu>("graphdata")->menuAction()->isEnabled());
}

TEST_F(Form1Editor, AHiddenRowHasNoEditorAndTheArrowsGoOn)
{
    open("KKSUB1\r\nBA   1.5\r\nZZ\r\n");
    grid.setRowHeight(2, deck_layout::kHiddenHeight);
    editAt(1, 2);
    press(Qt::Key_Down);
    EXPECT_EQ(grid.row(), 2);
    EXPECT_FALSE(Text1().isVisible());
    EXPECT_TRUE(Grid1().hasFocus());
    type("9");
    press(Qt::Key_Down);
    EXPECT_EQ(grid.row(), 3);
    EXPECT_TRUE(Text1().isVisible());
    EXPECT_TRUE(Text1().hasFocus()) << "it had the keyboard before the hidden row";
    EXPECT_EQ(cell(2, 2), "   1.5") << "what is typed over a hidden row goes nowhere";
    EXPECT_TRUE(page.deck.dataSaved);
}

TEST_F(Form1Editor, ScrollingACellOutOfSightStoresWhatWasTypedThere)
{
    editAt(2, 4);
    type("77");
    grid.setTopRow(60);
    QCoreApplication::processEvents();
    EXPECT_FALSE(Text1().isVisible());
    EXPECT_EQ(cell(2, 4), "77");
    grid.setTopRow(1);
    QCoreApplication::processEvents();
    EXPECT_TRUE(Text1().isVisible());
    EXPECT_EQ(Text1().text(), "77");
    EXPECT_EQ(Text1().geometry(), Grid1().cellRect(2, 4));
}

TEST_F(Form1Editor, ResizingKeepsWhatIsTypedAndFollowsTheCell)
{
    editAt(4, 10);
    type("42");
    form.resize(700, 480);
    QCoreApplication::processEvents();
    form.resize(1280, 760);
    QCoreApplication::processEvents();
    EXPECT_EQ(Text1().text() + cell(4, 10), QStringLiteral("42")) << "typed once, and not lost";
    press(Qt::Key_Down);
    EXPECT_EQ(cell(4, 10), "42");
}

TEST_F(Form1Editor, ADraggedEdgeFitsTheEditorUnlessThePointerHasForbiddenIt)
{
    form.resize(1280, 760);
    open("KKA1    \r\nZZ\r\n");
    entry("mnu_adjustgrids").trigger();
    editAt(2, 4);
    type("42");
    QWidget* header = Grid1().horizontalHeader()->viewport();
    const auto widen = [&](int pixels) {
        const int edge = Grid1().columnViewportPosition(3) + Grid1().columnWidth(3) - 1;
        const QPoint to(edge + pixels, 5);
        QTest::mousePress(header, Qt::LeftButton, Qt::NoModifier, QPoint(edge, 5));
        QMouseEvent move(QEvent::MouseMove, to, header->mapToGlobal(to), Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(header, &move);
        QTest::mouseRelease(header, Qt::LeftButton, Qt::NoModifier, to);
        QCoreApplication::processEvents();
    };
    const auto roomRight = [&] { return Grid1().width() - Text1().geometry().right() - 1; };
    const int before = grid.colWidth(4);
    widen(Grid1().width());
    ASSERT_GT(grid.colWidth(4), before);
    EXPECT_EQ(roomRight(), 3) << "at start nothing is fitted: cut as on entering";
    const QPoint inCells(Grid1().viewport()->rect().center());
    QMouseEvent hover(QEvent::MouseMove, inCells, Grid1().viewport()->mapToGlobal(inCells), Qt::NoButton, Qt::NoButton,
                      Qt::NoModifier);
    QCoreApplication::sendEvent(Grid1().viewport(), &hover);
    widen(15);
    EXPECT_EQ(roomRight(), 2) << "fitted up to the grid's own edge";
    EXPECT_EQ(Text1().text(), "42");
    EXPECT_EQ(Text1().geometry().topLeft(), Grid1().cellRect(2, 4).topLeft());
    press(Qt::Key_Down);
    EXPECT_EQ(cell(2, 4), "42");
}

TEST_F(Form1Editor, F5ConvertsAcresFromTheBoxAndFromTheGrid)
{
    open("BA      \r\nZZ\r\n");
    for (const bool fromGrid : {false, true}) {
        SCOPED_TRACE(fromGrid);
        editAt(1, 2);
        if (fromGrid)
            Grid1().setFocus();
        services.dialogs.willAnswer(fromGrid ? "640" : "100");
        press(Qt::Key_F5);
        EXPECT_EQ(cell(1, 2), fromGrid ? "1" : "0.1562");
        EXPECT_EQ(Text1().text(), cell(1, 2));
    }
}

TEST_F(Form1Editor, TheDeckGrowsUnderTheCursorSoThatEnterNeverStops)
{
    editAt(197, 11);
    for (int i = 0; i < 10; ++i)
        press(Qt::Key_Down);
    EXPECT_EQ(grid.row(), 207);
    EXPECT_GE(grid.rows(), 210);
    EXPECT_TRUE(Text1().isVisible());
    EXPECT_TRUE(Grid1().rowIsVisible(207));
}

TEST_F(Form1Editor, ACommandStoresTheBoxFirst)
{
    editAt(3, 3);
    type("5");
    QString seen;
    page.commands.add("mnu_goto", [&] { seen = cell(3, 3); });
    entry("mnu_goto").trigger();
    EXPECT_EQ(seen, "5");
}

TEST_F(Form1Editor, TheWheelScrollsARowAndWithCtrlAPage)
{
    const auto turn = [&](int delta, Qt::KeyboardModifiers modifiers) {
        const QPointF at = Grid1().viewport()->rect().center();
        QWheelEvent event(at, Grid1().viewport()->mapToGlobal(at), {}, {0, delta}, Qt::NoButton, modifiers,
                          Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(Grid1().viewport(), &event);
    };
    turn(-120, Qt::NoModifier);
    EXPECT_EQ(grid.topRow(), 2);
    const int rowsOfPage = Grid1().heightTwips() / grid.rowHeight(0) - 3;
    turn(-120, Qt::ControlModifier);
    EXPECT_EQ(grid.topRow(), 2 + rowsOfPage);
    turn(120, Qt::ControlModifier);
    turn(120, Qt::NoModifier);
    EXPECT_EQ(grid.topRow(), 1);
}

TEST_F(Form1Editor, TipsAreShownOnlyWhenAskedFor)
{
    page.panels.set(7, "basin area");
    const auto tip = [&] {
        QHelpEvent event(QEvent::ToolTip, QPoint(2, 2), Text1().mapToGlobal(QPoint(2, 2)));
        QCoreApplication::sendEvent(&Text1(), &event);
        return Text1().toolTip();
    };
    EXPECT_EQ(tip(), "");
    entry("mnu_fieldtips").trigger();
    EXPECT_TRUE(entry("mnu_fieldtips").isChecked());
    EXPECT_EQ(tip(), "basin area");
}

TEST_F(Form1Editor, ReplacingTheDeckShowsItsFirstCellInTheBox)
{
    editAt(7, 7);
    type("lost");
    services.dialogs.willAnswer(Button::Ok);
    open("ID  TITLE\r\nZZ\r\n");
    EXPECT_EQ(grid.row(), 1);
    EXPECT_EQ(Text1().text(), "ID");
    EXPECT_TRUE(page.deck.dataSaved);
    EXPECT_EQ(panel(3), "ID Card ");
}

} // namespace
} // namespace kalvo
