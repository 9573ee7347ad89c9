// SPDX-License-Identifier: GPL-3.0-or-later
// Import viewer, free format editor, translation and text view through their own menus and keys.
#include "tests/deck/MainScreen.h"

#include "deck/Form5_ImportViewer.h"
#include "deck/Form7_FreeTranslation.h"
#include "deck/Form8_FreeEditor.h"
#include "deck/Free_TextView.h"

#include <QLabel>
#include <QPlainTextEdit>
#include <QScrollBar>

namespace kalvo {
namespace {

struct ImportScreens : MainScreen
{
    template <class Window> Window& screen(const char* name)
    {
        auto* window = screens.loadAs<Window>(QString::fromLatin1(name));
        if (!window)
            throw std::runtime_error(name);
        return *window;
    }
    template <class Control> Control& in(QWidget& window, const char* name)
    {
        auto* control = window.findChild<Control*>(QString::fromLatin1(name));
        if (!control)
            throw std::runtime_error(name);
        return *control;
    }
    void trigger(QWidget& window, const char* name) { in<QAction>(window, name).trigger(); }
    QStringList told() const { return services.dialogs.texts(); }

    Form8& editor(const char* text)
    {
        entry("mnu_freeformat").trigger();
        Form8& form8 = screen<Form8>("Form8");
        EXPECT_TRUE(QTest::qWaitForWindowActive(&form8));
        in<QPlainTextEdit>(form8, "RichTextBox1").setPlainText(QString::fromUtf8(text));
        return form8;
    }
    Form7& translation(const char* text)
    {
        trigger(editor(text), "mnu_convert");
        EXPECT_TRUE(screens.isVisible("Form7"));
        return screen<Form7>("Form7");
    }
    Form5& viewer(const QByteArray& deck)
    {
        services.dialogs.willAnswer(put(deck, "other.dat"));
        entry("mnu_import").trigger();
        EXPECT_TRUE(screens.isVisible("Form5"));
        return screen<Form5>("Form5");
    }
};

TEST_F(ImportScreens, RowsOfAnotherDeckArePastedIntoTheMainScreen)
{
    open("ID MINE\r\nZZ\r\n");
    Form5& form5 = viewer("ID OTHER\r\nKK  SUB1\r\nBA  1.65\r\nZZ\r\n");
    EXPECT_EQ(form5.windowTitle(), "Import HEC-1 Data from " + services.path("other.dat"));
    auto& view = in<FlexGridView>(form5, "Grid1");
    ASSERT_TRUE(QTest::qWaitForWindowActive(&form5));
    view.grid().setCursor(2, 1);
    QTest::keyClick(&view, Qt::Key_Down, Qt::ShiftModifier);
    for (int i = 0; i < 10; ++i)
        QTest::keyClick(&view, Qt::Key_Right, Qt::ShiftModifier);
    QTest::keyClick(&view, Qt::Key_C, Qt::ControlModifier);
    EXPECT_TRUE(services.clipboard.raw().startsWith("KK\t  SUB1\t")) << services.clipboard.raw().toStdString();
    EXPECT_TRUE(entry("editpaste").isEnabled());
    EXPECT_TRUE(entry("Paste").isEnabled()) << "the tool button too";
    trigger(form5, "quit");
    EXPECT_FALSE(screens.isLoaded("Form5"));
    grid.setCursor(2, 1);
    entry("editpaste").trigger();
    EXPECT_EQ(gridText(grid, 1, 1, 4, 2), "ID| MINE\nKK|  SUB1\nBA|  1.65\nZZ|");
}

TEST_F(ImportScreens, TheViewerOpensAnotherFileAndExplainsItself)
{
    Form5& form5 = viewer("KK  A\r\nZZ\r\n");
    services.dialogs.willAnswer(put("KM" + QByteArray(88, 'x') + "\r\nZZ\r\n", "third.dat"));
    trigger(form5, "mnu_open");
    EXPECT_TRUE(form5.windowTitle().endsWith("third.dat"));
    EXPECT_TRUE(in<QLabel>(form5, "Label1").isVisible());
    for (const char* name : {"mnu_assistance", "mnu_about"}) {
        services.dialogs.willAnswer(Button::Ok);
        trigger(form5, name);
    }
    EXPECT_EQ(
        told().mid(told().size() - 2),
        (QStringList{"Open a File - Select Rows - then COPY - you can use Paste in Main Screen to transfer the rows!",
                     "Open other files to review and import data."}));
    auto& view = in<FlexGridView>(form5, "Grid1");
    QContextMenuEvent ask(QContextMenuEvent::Mouse, QPoint(30, 30), view.viewport()->mapToGlobal(QPoint(30, 30)));
    QApplication::sendEvent(view.viewport(), &ask);
    auto& popup = in<QMenu>(form5, "Popup");
    EXPECT_TRUE(popup.isVisible());
    view.grid().select(2, 1, 2, 1);
    trigger(popup, "pop_Copy");
    popup.hide();
    EXPECT_EQ(services.clipboard.raw(), "ZZ");
}

TEST_F(ImportScreens, TheEditorReadsAFileAndTakesItBack)
{
    Form8& form8 = editor("typed");
    auto& box = in<QPlainTextEdit>(form8, "RichTextBox1");
    services.dialogs.willAnswer(put("BA1.65\r\n\r\n\r\nZZ  \r\n", "free.dat"));
    trigger(form8, "mnu_open");
    EXPECT_EQ(box.toPlainText(), "BA 1.65\n\n\nZZ");
    EXPECT_TRUE(box.isVisible());
    trigger(form8, "mnu_removeblankLines");
    EXPECT_EQ(box.toPlainText(), "BA 1.65\n\nZZ") << "three line ends in a row: one pair goes";
    trigger(form8, "mnu_undo");
    trigger(form8, "mnu_undo");
    EXPECT_EQ(box.toPlainText(), "typed");
    services.clipboard.setText("KK  A\r\nZZ");
    trigger(form8, "mnu_paste");
    EXPECT_EQ(box.toPlainText(), "KK  A\nZZ");
    services.dialogs.willAnswer(services.path("out.dat"));
    trigger(form8, "mnu_SaveasFREEFormat");
    EXPECT_EQ(services.bytes("out.dat"), "KK  A\r\nZZ");
}

TEST_F(ImportScreens, TheTranslationIsMendedInTheLeftPanelAndPasted)
{
    open("ID MINE\r\nZZ\r\n");
    Form7& form7 = translation("KK A1 WEST SLOPE\nBA   1.65  2\nZZ");
    EXPECT_EQ(form7.windowTitle(), " Kalvo FREE Format Input Translation");
    auto& view = in<FlexGridView>(form7, "Grid1");
    auto& left = in<QPlainTextEdit>(form7, "RichTextBox1");
    EXPECT_TRUE(in<QPlainTextEdit>(form7, "Remarks").toPlainText().contains("A1 WE (row 1, not A1)"));
    EXPECT_EQ(gridText(view.grid(), 2, 1, 2, 6), "BA|||1.65||2");
    trigger(form7, "mnu_removesp");
    EXPECT_EQ(left.toPlainText(), "KK A1 WEST SLOPE\nBA 1.65 2\nZZ");
    EXPECT_EQ(in<QPlainTextEdit>(screen<Form8>("Form8"), "RichTextBox1").toPlainText(), left.toPlainText());
    EXPECT_EQ(left.textCursor().selectedText().size(), left.toPlainText().size());
    trigger(form7, "mnu_convert");
    EXPECT_EQ(gridText(view.grid(), 2, 1, 2, 4), "BA|1.65|2|");
    services.dialogs.willAnswer(services.path("new.dat"));
    trigger(form7, "mnu_save");
    EXPECT_TRUE(services.bytes("new.dat").contains("BA  1.65       2 "));
    services.dialogs.willAnswer(Button::Ok);
    trigger(form7, "mnu_help");
    EXPECT_EQ(told().last(), "Procedure: Select Rows, Copy, Paste Selection on Main Input Screen");
    trigger(form7, "mnu_undo");
    EXPECT_EQ(left.toPlainText(), "KK A1 WEST SLOPE\nBA   1.65  2\nZZ");

    view.grid().select(2, 1, 2, 11);
    trigger(form7, "mnu_copy");
    trigger(form7, "mnu_returnfrom7");
    EXPECT_FALSE(screens.isLoaded("Form7"));
    EXPECT_FALSE(screens.isLoaded("Form8"));
    EXPECT_TRUE(page.imports.freeFormat()->remarks().isEmpty());
    grid.setCursor(2, 1);
    entry("editpaste").trigger();
    EXPECT_EQ(gridText(grid, 1, 1, 3, 3), "ID| MINE|\nBA|1.65|2\nZZ||");
    entry("mnu_freeformat").trigger();
    EXPECT_EQ(in<QPlainTextEdit>(screen<Form8>("Form8"), "RichTextBox1").toPlainText(), "")
        << "an unloaded editor has forgotten its text";
}

TEST_F(ImportScreens, TheDeckIsShownSavedAndCopiedAsText)
{
    open("KK  SUB1\r\nBA  1.65\r\nZZ\r\n");
    entry("mnu_SaveAsTextFile").trigger();
    ASSERT_TRUE(screens.isVisible("Free"));
    Free& free = screen<Free>("Free");
    EXPECT_EQ(free.windowTitle(), " View of Input File as Delimited Text File");
    auto& box = in<QPlainTextEdit>(free, "Text1");
    EXPECT_EQ(box.toPlainText(), "KK SUB1         \nBA 1.65         \nZZ          \n");
    free.resize(700, 500);
    QApplication::processEvents();
    EXPECT_EQ(box.width(), 700 - 400 / kTwipsPerPixel);
    EXPECT_EQ(box.height(), 500 - 1200 / kTwipsPerPixel);
    auto& advice = in<QLabel>(free, "Label1");
    EXPECT_GE(advice.height(), advice.heightForWidth(advice.width()));
    services.dialogs.willAnswer(services.path("deck.txt"));
    trigger(free, "mnu_Save");
    EXPECT_EQ(services.bytes("deck.txt"), "KK SUB1         \r\nBA 1.65         \r\nZZ          \r\n");
    trigger(free, "mnu_Copy");
    EXPECT_EQ(services.clipboard.raw().toLatin1(), services.bytes("deck.txt"));
    services.dialogs.willAnswer(Button::Ok);
    trigger(free, "mnu_Help");
    EXPECT_EQ(told().last(), "This is the Input screen as it will look saved as a Text File - will work as a HEC-1 "
                             "Free Format");
    box.setPlainText("");
    services.dialogs.willAnswer(Button::Ok);
    trigger(free, "mnu_Save");
    EXPECT_EQ(told().last(), "No Data to Save!");
    trigger(free, "mnu_Quit");
    EXPECT_FALSE(screens.isLoaded("Free"));
}

TEST_F(ImportScreens, TheyMayOutliveTheirPage)
{
    auto last = std::make_unique<Screens>();
    {
        Workspace other(services, *last);
        Form1 window(other);
        window.load();
        for (const char* name : {"Form5", "Form7", "Form8", "Free"})
            last->show(QString::fromLatin1(name));
        last->unloadAll();
    }
    last.reset();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

} // namespace
} // namespace kalvo
