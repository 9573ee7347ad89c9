// SPDX-License-Identifier: GPL-3.0-or-later
// The main screen without a pointer.
#include "tests/deck/MainScreen.h"

#include <QSet>
#include <QToolBar>
#include <QToolTip>

namespace kalvo {
namespace {

using Keyboard = MainScreen;

QChar mnemonicOf(const QString& caption)
{
    const QKeySequence keys = QKeySequence::mnemonic(caption);
    return keys.isEmpty() ? QChar() : QChar(keys[0].key());
}

TEST_F(Keyboard, NoKeyIsTakenTwiceAndOwnEntriesHaveALetterOfTheirOwn)
{
    QHash<QKeySequence, QString> taken;
    const QList<QAction*> actions = form.findChildren<QAction*>();
    for (const QAction* action : actions) {
        const QList<QKeySequence> keys = action->shortcuts();
        for (const QKeySequence& key : keys) {
            EXPECT_FALSE(taken.contains(key)) << key.toString().toStdString() << ": " << taken.value(key).toStdString()
                                              << " and " << action->objectName().toStdString();
            taken.insert(key, action->objectName());
        }
    }
    QSet<QChar> letters;
    const QList<QAction*> bar = form.menuBar()->actions();
    for (const QAction* action : bar) {
        if (!action->isVisible())
            continue;
        const QChar letter = mnemonicOf(action->text());
        EXPECT_TRUE(!letter.isNull() && !letters.contains(letter)) << action->text().toStdString();
        letters.insert(letter);
    }
    // The other captions are given, and some of them share a letter.
    for (const char* own : {"mnu_ruler", "mnu_statustext", "mnu_memory"}) {
        const QAction& entryOfOurs = entry(own);
        const QChar letter = mnemonicOf(entryOfOurs.text());
        EXPECT_FALSE(letter.isNull()) << own;
        const QList<QAction*> neighbours = qobject_cast<QMenu*>(entryOfOurs.associatedObjects().front())->actions();
        for (const QAction* other : neighbours)
            EXPECT_TRUE(other == &entryOfOurs || mnemonicOf(other->text()) != letter) << other->text().toStdString();
    }
}

TEST_F(Keyboard, AnEntryWithoutACommandIsNeverThereToBeChosen)
{
    for (const char* empty : {"mnu_parser", "mnu_openfreeformat"})
        EXPECT_FALSE(entry(empty).isVisible() || entry(empty).isEnabled()) << empty;
}

TEST_F(Keyboard, AltAndALetterRunsWhatStandsOnTheBar)
{
    for (QWidget* from : {static_cast<QWidget*>(&Grid1()), static_cast<QWidget*>(&Text1())}) {
        from->setFocus();
        const int rows = grid.rows();
        QTest::keyClick(from, Qt::Key_I, Qt::AltModifier);
        EXPECT_EQ(grid.rows(), rows + 1) << from->objectName().toStdString();
    }
}

TEST_F(Keyboard, ShiftF10OpensThePopupOverTheCell)
{
    auto* popup = find<QMenu>("Popup");
    for (QWidget* from : {static_cast<QWidget*>(&Grid1()), static_cast<QWidget*>(&Text1())}) {
        editAt(3, 4);
        from->setFocus();
        QTest::keyClick(from, Qt::Key_F10, Qt::ShiftModifier);
        ASSERT_TRUE(popup->isVisible()) << from->objectName().toStdString();
        EXPECT_TRUE(Grid1().cellRect(3, 4).contains(Grid1().mapFromGlobal(popup->pos())));
        QTest::keyClick(popup, Qt::Key_Escape);
        EXPECT_FALSE(popup->isVisible());
        EXPECT_EQ(form.focusWidget(), from);
    }
}

TEST_F(Keyboard, TextSizeAndTheStatusLineHaveKeysAlsoWithoutTheToolbar)
{
    entry("mnu_toggletoolbar").trigger();
    Text1().setFocus();
    const double size = grid.cellFontSize();
    press(Qt::Key_Plus, Qt::ControlModifier);
    EXPECT_EQ(grid.cellFontSize(), size + 1.0);
    press(Qt::Key_Minus, Qt::ControlModifier);
    press(Qt::Key_Minus, Qt::ControlModifier);
    EXPECT_EQ(grid.cellFontSize(), size - 1.0);

    page.panels.set(7, "a help text that is longer than the bar is wide");
    press(Qt::Key_F6);
    EXPECT_TRUE(QToolTip::text().contains("longer than the bar is wide"));
    QToolTip::hideText();
    press(Qt::Key_F6, Qt::ShiftModifier);
    EXPECT_TRUE(panel(7).startsWith("Memory in Use: "));
}

TEST_F(Keyboard, TabGoesBetweenGridAndEditorAndIsNeverCaught)
{
    editAt(3, 4);
    QSet<QString> met;
    for (int i = 0; i < 6; ++i) {
        press(Qt::Key_Tab);
        ASSERT_NE(form.focusWidget(), nullptr);
        met.insert(form.focusWidget()->objectName());
    }
    EXPECT_EQ(met, QSet<QString>({"Grid1", "Text1"}));
    EXPECT_EQ(grid.col(), 4);
}

TEST_F(Keyboard, ARowCommandTakesTheFormerCellsHelpAwayButNotWhatItTold)
{
    open("BA   1.5\r\nZZ\r\n");
    grid.setCursor(1, 2);
    ASSERT_FALSE(panel(7).isEmpty());
    page.commands.run("newinsertrow");
    EXPECT_EQ(panel(7), "") << "the row under the cursor is a new one";
    grid.setCursor(2, 2);
    page.panels.set(7, "told by a command");
    page.editing.showField();
    EXPECT_EQ(panel(7), "told by a command");
}

} // namespace
} // namespace kalvo
