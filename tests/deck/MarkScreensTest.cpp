// SPDX-License-Identifier: GPL-3.0-or-later
// Audit, comment entry and marks through the main screen's own menus, keys and screens.
#include "tests/deck/MainScreen.h"

#include "deck/CardMarks.h"
#include "deck/Form2_Audit.h"
#include "deck/NewIDCard_IdentifyCards.h"
#include "deck/editcomms_CommentEntry.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>

namespace kalvo {
namespace {

struct MarkScreensTest : MainScreen
{
    template <class Window> Window* screen(const char* name)
    {
        EXPECT_TRUE(screens.isVisible(QString::fromLatin1(name))) << name;
        return screens.loadAs<Window>(QString::fromLatin1(name));
    }
    template <class Control> Control* in(QWidget* window, const char* name)
    {
        auto* control = window->findChild<Control*>(QString::fromLatin1(name));
        EXPECT_NE(control, nullptr) << name;
        return control;
    }
    void expectNothingCutOff(QWidget* window)
    {
        QApplication::processEvents();
        for (const QAbstractButton* button : window->findChildren<QAbstractButton*>())
            EXPECT_GE(button->width(), button->sizeHint().width()) << button->objectName().toStdString();
    }
};

constexpr auto kDeck = "ID   A DECK\r\nKK  SUB1SOME   WORDS BEHIND THE NAME\r\nBA  12.5\r\nko\r\nKKSUB2\r\nZZ\r\n";

// -- Audit -----------------------------------------------------------------------------------------------------------

struct AuditScreen : MarkScreensTest
{
    Form2* audit()
    {
        open(kDeck);
        entry("auditdata").trigger();
        return screen<Form2>("Form2");
    }
};

TEST_F(AuditScreen, ListsTheFindingsBesideTheDeck)
{
    Form2* form2 = audit();
    ASSERT_NE(form2, nullptr);
    EXPECT_EQ(form2->windowTitle(), " Audit HEC-1 Input DATA");
    EXPECT_FALSE(form2->isModal());
    auto* list = in<QListWidget>(form2, "List1");
    ASSERT_EQ(list->count(), 3);
    EXPECT_EQ(list->item(0)->text(), "Lower Case or Incorrect Character(s) ko in row 4");
    expectNothingCutOff(form2);

    grid.setTextMatrix(4, 1, "KO");
    grid.setTextMatrix(4, 6, "21");
    EXPECT_EQ(list->count(), 3) << "not refreshed until the next audit";
    entry("auditdata").trigger();
    ASSERT_EQ(list->count(), 1);
    EXPECT_EQ(list->item(0)->text(), "   Primary Input Check is O.K.");
    EXPECT_EQ(screen<Form2>("Form2"), form2);
}

TEST_F(AuditScreen, AClickShowsTheCardAndEnterGoesThere)
{
    Form2* form2 = audit();
    auto* list = in<QListWidget>(form2, "List1");
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, list->visualItemRect(list->item(1)).center());
    EXPECT_EQ(grid.row(), 4);
    EXPECT_EQ(grid.col(), 1);
    EXPECT_TRUE(screens.isVisible("Form2"));
    grid.setCursor(1, 5);
    list->setCurrentRow(0);
    QTest::keyClick(list, Qt::Key_Return);
    EXPECT_EQ(grid.row(), 4);
    EXPECT_TRUE(QTest::qWaitForWindowActive(&form));
    EXPECT_EQ(Text1().text(), "ko");
}

TEST_F(AuditScreen, GoesByButtonAndEscAndLeavesTheGridTheFocus)
{
    for (const bool byKey : {false, true}) {
        Form2* form2 = audit();
        if (byKey)
            QTest::keyClick(in<QListWidget>(form2, "List1"), Qt::Key_Escape);
        else
            in<QPushButton>(form2, "Command1")->click();
        EXPECT_FALSE(screens.isLoaded("Form2"));
        EXPECT_EQ(form.focusWidget(), form.grid());
    }
}

TEST_F(AuditScreen, AnAuditThatEndsEarlyShowsNothingButEmptiesAnOpenList)
{
    Form2* form2 = audit();
    grid.setTextMatrix(6, 1, "YY");
    services.dialogs.willAnswer(Button::Ok);
    entry("auditdata").trigger();
    auto* list = in<QListWidget>(form2, "List1");
    ASSERT_EQ(list->count(), 1);
    EXPECT_EQ(list->item(0)->text(), "ZZ Card is Missing");
    screens.unload("Form2");
    services.dialogs.willAnswer(Button::Ok);
    entry("auditdata").trigger();
    EXPECT_FALSE(screens.isLoaded("Form2"));
}

// -- Comment entry ---------------------------------------------------------------------------------------------------

using CommentScreen = MarkScreensTest;

TEST_F(CommentScreen, OpensOnTextCardsAlone)
{
    struct Row
    {
        const char* id;
        bool opens;
    };
    for (const Row& row : {Row{"ID", true}, Row{"KM", true}, Row{"*", true}, Row{"a*", true}, Row{"  ", true},
                           Row{"ZW", true}, Row{"ZR", true}, Row{"KK", true}, Row{"ZZ", true}, Row{"", false},
                           Row{"BA", false}, Row{"kk", false}, Row{" ", false}}) {
        grid.setTextMatrix(1, 1, QString::fromLatin1(row.id));
        page.deck.setTextbox();
        entry("Commententry").trigger();
        EXPECT_EQ(screens.isVisible("editcomms"), row.opens) << '"' << row.id << '"';
        screens.unload("editcomms");
    }
}

TEST_F(CommentScreen, EditsTheTextBehindAStationsName)
{
    open(kDeck);
    grid.setCursor(2, 4);
    QTest::mouseDClick(form.grid()->viewport(), Qt::LeftButton, {},
                       form.grid()->cellRect(2, 6).center() - form.grid()->viewport()->pos());
    auto* box = screen<editcomms>("editcomms");
    ASSERT_NE(box, nullptr);
    EXPECT_EQ(box->windowTitle(), " Edit Comments");
    EXPECT_TRUE(box->isModal());
    auto* text = in<QLineEdit>(box, "Text1");
    EXPECT_EQ(text->text().trimmed(), "SOME   WORDS BEHIND THE NAME");
    EXPECT_EQ(in<QLineEdit>(box, "Text2")->text(), "2");
    auto* position = in<QLabel>(box, "Label2");
    EXPECT_EQ(position->text(), "9");
    QTest::keyClick(text, Qt::Key_Right);
    EXPECT_EQ(position->text(), "10");
    expectNothingCutOff(box);

    text->selectAll();
    QTest::keyClicks(text, QString("0123456789").repeated(9));
    EXPECT_EQ(text->text().size(), 72) << "takes no more than the card";
    EXPECT_EQ(position->text(), "81");
    QTest::keyClick(text, Qt::Key_Return);
    EXPECT_FALSE(screens.isLoaded("editcomms"));
    EXPECT_EQ(gridText(grid, 2, 1, 2, 4), "KK|  SUB1|01234567|89012345");
    EXPECT_EQ(cell(2, 11), "45678901");
    EXPECT_EQ(panel(2), "Undo 2 ");
    entry("mnu_undo").trigger();
    EXPECT_EQ(cell(2, 3), "SOME   W");
}

TEST_F(CommentScreen, StartsAtColumnThreeAndLeavesWithoutSaving)
{
    grid.setTextMatrix(1, 1, "**");
    page.deck.setTextbox();
    for (const char* way : {"Command2", "Esc"}) {
        grid.select(1, 2, 3, 4);
        entry("Commententry").trigger();
        auto* box = screen<editcomms>("editcomms");
        ASSERT_NE(box, nullptr);
        EXPECT_EQ(in<QLabel>(box, "Label2")->text(), "3");
        auto* text = in<QLineEdit>(box, "Text1");
        QTest::keyClicks(text, "gone");
        if (*way == 'E')
            QTest::keyClick(text, Qt::Key_Escape);
        else
            in<QPushButton>(box, way)->click();
        EXPECT_FALSE(screens.isLoaded("editcomms"));
        EXPECT_EQ(cell(1, 2), "");
        EXPECT_EQ(grid.rowSel(), *way == 'E' ? 3 : 1) << "Cancel Edit collapses the selection";
    }
}

TEST_F(CommentScreen, TextThatDoesNotFitIsShownAndTold)
{
    grid.setTextMatrix(1, 1, "KM");
    grid.setTextMatrix(1, 2, QString(80, u'x'));
    page.deck.setTextbox();
    entry("Commententry").trigger();
    auto* box = screen<editcomms>("editcomms");
    ASSERT_NE(box, nullptr);
    EXPECT_EQ(in<QLineEdit>(box, "Text1")->text().size(), 80);
    EXPECT_TRUE(in<QLabel>(box, "Label1")->text().startsWith("2 characters behind the card's end"));
}

// -- Marks -----------------------------------------------------------------------------------------------------------

using MarkKeys = MarkScreensTest;

TEST_F(MarkKeys, KeysAndToolButtonsMarkTheDeck)
{
    open(kDeck);
    press(Qt::Key_K, Qt::ControlModifier);
    EXPECT_EQ(grid.cellFormat(2, 2).foreColor, rgb(252, 22, 22));
    press(Qt::Key_I, Qt::ControlModifier);
    EXPECT_TRUE(isGroupColor(grid.cellFormat(3, 11).backColor));
    press(Qt::Key_F1);
    EXPECT_FALSE(grid.hasCellFormats());
    form.toolButtonClicked("IDKKGROUPS");
    EXPECT_TRUE(page.deck.kkGroupsShown);
    form.toolButtonClicked("KK");
    EXPECT_TRUE(grid.cellFormat(5, 1).bold);
    form.toolButtonClicked("RESTORECOLORS");
    EXPECT_FALSE(grid.hasCellFormats());
}

TEST_F(MarkKeys, IdentifiesCardsOfOneKind)
{
    open(kDeck);
    grid.setCursor(3, 3);
    press(Qt::Key_Q, Qt::ControlModifier);
    auto* box = screen<NewIDCard>("NewIDCard");
    ASSERT_NE(box, nullptr);
    EXPECT_EQ(box->windowTitle(), " Identify Cards");
    EXPECT_EQ(in<QLabel>(box, "Label1")->text(), "Select the Type of Card and the Line will be Highlighted");
    auto* combo = in<QComboBox>(box, "Combo1");
    QStringList ids;
    for (int i = 0; i < combo->count(); ++i)
        ids << combo->itemText(i);
    EXPECT_EQ(ids.join('|'), "BA|ID|KK|ZZ|ko");
    EXPECT_EQ(combo->currentText(), "BA");
    EXPECT_EQ(box->focusWidget(), in<QPushButton>(box, "OKButton"));
    expectNothingCutOff(box);

    Text1().setText("typed"); // beside the open screen
    combo->lineEdit()->selectAll();
    QTest::keyClicks(combo->lineEdit(), "kkx");
    EXPECT_EQ(combo->currentText(), "KK");
    QTest::keyClick(combo->lineEdit(), Qt::Key_Return);
    EXPECT_FALSE(screens.isLoaded("NewIDCard"));
    EXPECT_EQ(grid.cellFormat(5, 11).foreColor, rgb(22, 22, 242));
    EXPECT_EQ(grid.cellFormat(3, 1).foreColor, Rgb::None);
    entry("mnu_newidcards").trigger();
    QTest::keyClick(screen<NewIDCard>("NewIDCard")->focusWidget(), Qt::Key_Return);
    EXPECT_EQ(grid.cellFormat(3, 1).foreColor, rgb(22, 22, 242)) << "Enter presses OK, which has the keyboard";
    EXPECT_EQ(grid.row(), 3);
    EXPECT_TRUE(Text1().isVisible());
    EXPECT_EQ(cell(3, 3), "typed");
}

TEST_F(MarkKeys, AnEmptyDeckHasNothingToIdentify)
{
    entry("mnu_newidcards").trigger();
    auto* box = screen<NewIDCard>("NewIDCard");
    ASSERT_NE(box, nullptr);
    auto* combo = in<QComboBox>(box, "Combo1");
    EXPECT_EQ(combo->currentText(), "No Data to Identify");
    combo->setEditText("");
    in<QPushButton>(box, "OKButton")->click();
    EXPECT_TRUE(screens.isVisible("NewIDCard")) << "no ID, nothing happens";
    in<QPushButton>(box, "CancelButton")->click();
    EXPECT_FALSE(screens.isLoaded("NewIDCard"));
}

TEST_F(MarkKeys, AClonePageHasScreensOfItsOwn)
{
    form.setCloneMaker([this](Workspace& first) { return std::make_unique<Workspace>(services, screens, &first); });
    open(kDeck);
    entry("mnu_clone").trigger();
    Workspace& clone = form.clonePage()->page();
    clone.deck.Grid1.setTextMatrix(1, 1, "KM");
    clone.deck.Grid1.setTextMatrix(1, 2, "MINE");
    clone.deck.setTextbox();
    clone.commands.run("Commententry");
    EXPECT_FALSE(screens.isLoaded("editcomms"));
    auto* box = screens.loadAs<editcomms>(clone.editContext.screenName("editcomms"));
    ASSERT_NE(box, nullptr);
    EXPECT_EQ(in<QLineEdit>(box, "Text1")->text(), "MINE");
    in<QPushButton>(box, "Command1")->click();
    clone.commands.run("mnu_identkkgroups");
    EXPECT_FALSE(page.deck.kkGroupsShown);
    EXPECT_EQ(cell(1, 1), "ID");
}

TEST_F(MarkKeys, TheWindowTakesItsColoursAndTheGridKeepsIts)
{
    ItemColors colors = page.looks.itemColors();
    colors[static_cast<size_t>(ColorItem::FormBack)] = rgb(10, 60, 20);
    colors[static_cast<size_t>(ColorItem::EditText)] = rgb(200, 0, 0);
    page.looks.applyItems(colors);
    EXPECT_EQ(form.palette().color(QPalette::Window), QColor(10, 60, 20));
    EXPECT_NE(form.grid()->palette().color(QPalette::Base), QColor(10, 60, 20));
    EXPECT_EQ(Text1().palette().color(QPalette::Text), QColor(200, 0, 0));
    grid.setCursor(2, 2);
    EXPECT_EQ(Text1().palette().color(QPalette::Text), QColor(Qt::black)) << "takes its cell's colour again";
}

} // namespace
} // namespace kalvo
