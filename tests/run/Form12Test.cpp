// SPDX-License-Identifier: GPL-3.0-or-later
// The viewers of the printed report through their own menus, keys, panels and clicks.
#include "run/Form12_OutputViewer.h"

#include "deck/StatusPanelLabel.h"
#include "platform/LargeTextView.h"
#include "run/LineCount.h"
#include "run/Oform_OutputList.h"
#include "run/OutlineDock.h"
#include "run/ViewerCommands.h"
#include "run/ViewerScreens.h"
#include "tests/support/ScriptedServices.h"

#include <QAction>
#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QMenu>
#include <QPushButton>
#include <QScrollBar>
#include <QTest>
#include <QToolButton>

#include <gtest/gtest.h>

namespace kalvo {
namespace {

/// A report as of a run at a time of day: banner, a heading on each page, stations.
QByteArray report(const char* time, int pages = 3)
{
    QByteArray text = "1*****************************************\r\n";
    for (int line = 2; line < 7; ++line)
        text += " *                                       *\r\n";
    text += QByteArray(" * RUN DATE  23NOV26  TIME  ") + time + "     *\r\n" + QByteArray(1600, '-') + "\r\n";
    for (int page = 1; page <= pages; ++page) {
        text += "1" + QByteArray(55, ' ') + "HEC-1 INPUT" + QByteArray(45, ' ') + "PAGE  " + QByteArray::number(page) +
                "\r\n\r\n   LINE      ID.......1\r\n\r\n" + (page > 1 ? "\r\n" : "");
        for (int card = 1; card <= 50; ++card)
            text += "      " + QByteArray::number(card) + "      KM    PEAK flow CARD\r\n";
    }
    for (const char* name : {"SUB1", "SUB2"})
        text += QByteArray("    9 KK           *      ") + name + "  *      A STATION\r\n" + QByteArray(40 * 2, '\n') +
                "      HYDROGRAPH AT STATION     " + name + "\r\n";
    return text + " *** NORMAL END OF HEC-1 ***\r\n";
}

struct Viewers : testing::Test
{
    ScriptedServices services;
    Commands commands;
    Screens screens;
    RunEvents events;
    ViewerCommands viewers{commands, screens, events};
    int returns = 0;

    Viewers()
    {
        registerOutputViewers({screens, services, [this] { ++returns; }, [] { return QStringLiteral("storm.dat"); }});
        services.put("checky.out", report("06:09:33"));
    }
    Form12& form12()
    {
        EXPECT_TRUE(commands.run("viewhec1"));
        auto& form = *screens.loadAs<Form12>("Form12");
        EXPECT_TRUE(QTest::qWaitForWindowActive(&form));
        return form;
    }
    template <class Control> Control& in(QWidget& window, const char* name)
    {
        auto* control = window.findChild<Control*>(QString::fromLatin1(name));
        if (!control)
            throw std::runtime_error(name);
        return *control;
    }
    LargeTextView& rb1(Form12& form) { return in<LargeTextView>(form, "rb1"); }
    void trigger(QWidget& window, const char* name) { in<QAction>(window, name).trigger(); }
    QString panel(QWidget& form, int number)
    {
        return in<StatusPanelLabel>(form, qPrintable(QStringLiteral("panel%1").arg(number))).text();
    }
    void activate(QWidget& form)
    {
        QEvent event(QEvent::WindowActivate);
        QApplication::sendEvent(&form, &event);
    }
    bool holds(Form12& form, const char* text) { return rb1(form).text().find(text) >= 0; }
};

// -- Loading ----------------------------------------------------------------------------------------------------------

TEST_F(Viewers, TheReportIsReadAgainWhenItsStampIsAnother)
{
    Form12& form = form12();
    EXPECT_EQ(form.windowTitle(), "HEC-1 Output -  Large File Viewer");
    EXPECT_EQ(panel(form, 1), QStringLiteral("%1 Lines at full width").arg(lineCount(rb1(form))));
    rb1(form).setSelStart(77);
    rb1(form).setSelLength(5);
    services.put("checky.out", report("06:09:33") + "MORE\r\n");
    activate(form);
    EXPECT_FALSE(holds(form, "MORE")) << "of the same second";
    services.put("checky.out", report("06:09:34") + "MORE\r\n");
    activate(form);
    EXPECT_TRUE(holds(form, "MORE"));
    EXPECT_EQ(rb1(form).SelStart(), 77);
    EXPECT_EQ(rb1(form).SelLength(), 0);
}

TEST(RunStamp, StandsInTheSeventhLineOrIsEmpty)
{
    const QByteArray six = QByteArray("\r\n").repeated(6);
    const std::pair<QByteArray, const char*> cases[] = {
        {six + " * RUN DATE  23NOV26  TIME  06:09:33     *", "23NOV2606:09:33"},
        {six + " * RUN DATE 06/15/1990  TIME  10:21:38  *", "06/15/199010:21:38"},
        {six + "DATE TIME", ""},
        {six + " * TIME  06:09:33  DATE 1", ""},
        {"\r\n" + six + "DATE  23NOV26  TIME  06:09:33", ""},
        {"DATE  23NOV26  TIME  06:09:33", ""},
        {"", ""}};
    for (const auto& [text, stamp] : cases)
        EXPECT_EQ(runStamp(text), stamp) << text.trimmed().toStdString();
}

TEST_F(Viewers, ARunThatEndsIsShownWhateverItsStampSays)
{
    Form12& form = form12();
    services.put("checky.out", "short\n" + report("06:09:33"));
    Q_EMIT events.finished({});
    EXPECT_TRUE(holds(form, "short\r\n")) << "visible: at once";
    form.hide();
    services.put("checky.out", "other\n" + report("06:09:33"));
    Q_EMIT events.finished({});
    EXPECT_TRUE(holds(form, "short\r\n"));
    form12();
    EXPECT_TRUE(holds(form, "other\r\n")) << "hidden: when shown again";
}

TEST_F(Viewers, AReportWithoutStampIsReadAgainAndAMissingOneShowsWhy)
{
    services.put("checky.out", "no stamp here\n");
    Form12& form = form12();
    services.put("checky.out", "another text without one\n");
    activate(form);
    EXPECT_TRUE(holds(form, "another"));
    ASSERT_TRUE(services.folder.remove("checky.out"));
    activate(form);
    EXPECT_TRUE(rb1(form).text().isEmpty()) << "the former run's report does not stay";
    EXPECT_EQ(panel(form, 1), "1 Lines at full width");
    trigger(form, "mnu_shrinkoutput");
    EXPECT_FALSE(form.grab().isNull());
    services.put("checky.out", report("06:09:33"));
    activate(form);
    EXPECT_FALSE(rb1(form).text().isEmpty());
}

// -- Shrink, save, copy
// -------------------------------------------------------------------------------------------------

TEST_F(Viewers, ShrinkTellsBothCountsAndSaveWritesWhatIsShown)
{
    const QByteArray whole = report("06:09:33");
    Form12& form = form12();
    const qsizetype before = lineCount(rb1(form));
    QTest::keyClick(&rb1(form), Qt::Key_F11, Qt::ControlModifier);
    const qsizetype after = lineCount(rb1(form));
    EXPECT_LT(after, before - 10);
    EXPECT_EQ(panel(form, 1), QStringLiteral("%1 Lines at full width, shrunk from %2").arg(after).arg(before));
    activate(form);
    EXPECT_EQ(lineCount(rb1(form)), after) << "the same run: it stays shrunk";

    services.dialogs.willAnswer(services.path("saved.out"));
    trigger(form, "mnu_Save");
    const auto& asked = services.dialogs.last().file;
    EXPECT_EQ(asked.title, " Kalvo Save HEC-1 Output");
    EXPECT_EQ(asked.filter, "OUT Files(*.out)|*.out| Text Files (*.txt)|*.txt");
    EXPECT_EQ(asked.defaultExtension, "out");
    EXPECT_EQ(asked.initialName, "");
    EXPECT_EQ(services.bytes("saved.out"), rb1(form).text().mid(0, rb1(form).text().length()));
    EXPECT_EQ(services.bytes("checky.out"), whole) << "the run's own file is not touched";

    trigger(form, "mnu_reload");
    EXPECT_EQ(lineCount(rb1(form)), before);
}

TEST_F(Viewers, ASaveThatFailsIsToldAndTheTextStays)
{
    Form12& form = form12();
    for (const QString& path : {services.path("no such folder/x.out"), QStringLiteral("/dev/full")}) {
        if (path.startsWith("/dev") && !QFile::exists(path))
            continue;
        services.dialogs.willAnswer(path);
        services.dialogs.willAnswer(Button::Ok);
        trigger(form, "mnu_Save");
        EXPECT_TRUE(services.dialogs.last().text.startsWith("The File: " + path + " could not be written."))
            << services.dialogs.last().text.toStdString();
    }
    services.dialogs.willCancel();
    trigger(form, "mnu_Save");
    EXPECT_FALSE(rb1(form).text().isEmpty());
}

TEST_F(Viewers, SelectAllLeavesTheFirstCharacterOutAndCopyTakesTheSelection)
{
    services.put("checky.out", "abc\nd");
    Form12& form = form12();
    trigger(form, "mnu_Copy");
    EXPECT_FALSE(services.clipboard.hasText()) << "nothing is selected";
    QTest::keyClick(&rb1(form), Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(rb1(form).SelStart(), 1);
    EXPECT_EQ(rb1(form).SelLength(), 5);
    QTest::keyClick(&rb1(form), Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(services.clipboard.raw(), "bc\r\nd");
}

TEST_F(Viewers, OneLineIsTakenOutAndTheCaretStandsThere)
{
    services.put("checky.out", "a\nb\nc");
    Form12& form = form12();
    form.deleteOutputLine(3);
    form.deleteOutputLine(1);
    EXPECT_EQ(rb1(form).text().mid(0, 99), "a\r\nc");
    EXPECT_EQ(rb1(form).SelStart(), 3);
    form.deleteOutputLine(1);
    EXPECT_EQ(rb1(form).text().mid(0, 99), "a");
    EXPECT_EQ(panel(form, 1), "1 Lines at full width");
}

// -- Panels, pop-up, zoom
// -----------------------------------------------------------------------------------------------

TEST_F(Viewers, PanelsAnswerThePointerAndClicks)
{
    Form12& form = form12();
    const char* const texts[] = {"Top", "Bottom", "Return"};
    for (int under = 2; under <= 4; ++under) {
        QEvent enter(QEvent::Enter);
        QApplication::sendEvent(&in<StatusPanelLabel>(form, qPrintable(QStringLiteral("panel%1").arg(under))), &enter);
        for (int number = 2; number <= 4; ++number)
            EXPECT_EQ(panel(form, number), QString(texts[number - 2]) + (number == under ? " ***" : ""));
    }
    auto& last = in<StatusPanelLabel>(form, "panel4");
    QEvent leave(QEvent::Leave);
    QApplication::sendEvent(&last, &leave);
    EXPECT_EQ(panel(form, 4), "Return");

    QTest::mouseClick(&in<StatusPanelLabel>(form, "panel3"), Qt::LeftButton);
    EXPECT_EQ(rb1(form).SelStart(), rb1(form).text().length());
    EXPECT_GT(rb1(form).topLine(), 0);
    QTest::mouseClick(&in<StatusPanelLabel>(form, "panel2"), Qt::LeftButton);
    EXPECT_EQ(rb1(form).SelStart(), 1);
    EXPECT_EQ(rb1(form).topLine(), 0);
    trigger(in<QMenu>(form, "Popup"), "pop_Bot");
    EXPECT_EQ(rb1(form).SelStart(), rb1(form).text().length());
    QTest::mouseClick(&last, Qt::LeftButton);
    EXPECT_FALSE(form.isVisible());
    EXPECT_EQ(returns, 1);
    EXPECT_TRUE(screens.isLoaded("Form12")) << "Return hides";
}

TEST_F(Viewers, ZoomGoesInOnceAndOutOnce)
{
    Form12& form = form12();
    const auto states = [&] {
        return QStringLiteral("%1 %2 %3")
            .arg(rb1(form).font().pointSizeF())
            .arg(in<QAction>(form, "mnu_zoom").isEnabled())
            .arg(in<QAction>(form, "mnu_zoomout").isEnabled());
    };
    EXPECT_EQ(states(), "8.25 1 0");
    for (int i = 0; i < 2; ++i) {
        trigger(form, "mnu_zoom");
        EXPECT_EQ(states(), "11 0 1");
    }
    trigger(form, "mnu_zoomout");
    EXPECT_EQ(states(), "8.25 1 0");
    for (const char* later : {"mnu_printersetup", "printersettings", "mnu_print"})
        EXPECT_FALSE(in<QAction>(form, later).isEnabled());
}

// -- Beyond
// ---------------------------------------------------------------------------------------------------------------

TEST_F(Viewers, FindSelectsWhileTypingCountsAndComesRound)
{
    Form12& form = form12();
    auto& box = in<QLineEdit>(form, "FindText");
    auto& told = in<QLabel>(form, "FindCount");
    for (const Qt::Key next : {Qt::Key_F, Qt::Key_F3}) { // which has nothing to go on from
        QTest::keyClick(&rb1(form), next, next == Qt::Key_F ? Qt::ControlModifier : Qt::NoModifier);
        ASSERT_TRUE(box.isVisible());
        QTest::keyClick(&box, Qt::Key_Escape);
    }
    QTest::keyClick(&rb1(form), Qt::Key_F3);
    QTest::keyClicks(&box, "normal e");
    EXPECT_EQ(rb1(form).SelText(), "NORMAL E");
    EXPECT_TRUE(QTest::qWaitFor([&] { return told.text() == "1 of 1"; })) << told.text().toStdString();
    box.setText("Peak FLOW");
    EXPECT_TRUE(QTest::qWaitFor([&] { return told.text() == "1 of 150"; })) << told.text().toStdString();
    QTest::keyClick(&box, Qt::Key_Return, Qt::ShiftModifier);
    EXPECT_EQ(told.text(), "150 of 150, from the other end");
    QTest::keyClick(&box, Qt::Key_Return);
    EXPECT_EQ(told.text(), "1 of 150, from the other end");
    QTest::keyClick(&box, Qt::Key_F3);
    EXPECT_EQ(told.text(), "2 of 150");
    in<QCheckBox>(form, "FindMatchCase").setChecked(true);
    EXPECT_TRUE(QTest::qWaitFor([&] { return told.text() == "Not found"; })) << told.text().toStdString();
    box.setText(QString::fromUtf8("\u2603"));
    EXPECT_TRUE(QTest::qWaitFor([&] { return told.text() == "Not found"; }));
    EXPECT_EQ(rb1(form).SelLength(), 0);
    QTest::keyClick(&box, Qt::Key_Escape);
    EXPECT_FALSE(box.isVisible());
    EXPECT_TRUE(rb1(form).hasFocus());
}

TEST_F(Viewers, TheOutlineJumpsFollowsAndNarrows)
{
    Form12& form = form12();
    auto& dock = in<OutlineDock>(form, "Outline");
    auto& list = in<QListView>(form, "OutlineList");
    ASSERT_TRUE(QTest::qWaitFor([&] { return dock.isComplete(); }));
    const auto rows = [&] {
        QStringList texts;
        for (int row = 0; row < list.model()->rowCount(); ++row)
            texts << list.model()->index(row, 0).data().toString().trimmed();
        return texts;
    };
    EXPECT_EQ(rows(), (QStringList{"Title page", "Input listing", "Page  2", "Page  3", "SUB1  A STATION",
                                   "HYDROGRAPH AT STATION     SUB1", "SUB2  A STATION",
                                   "HYDROGRAPH AT STATION     SUB2", "NORMAL END OF HEC-1"}));
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, list.visualRect(list.model()->index(4, 0)).center());
    EXPECT_TRUE(rb1(form).text().line(rb1(form).topLine()).contains("SUB1"));
    rb1(form).setTopLine(0);
    EXPECT_EQ(list.currentIndex().row(), 0);
    in<QLineEdit>(form, "OutlineFilter").setText("sub2");
    EXPECT_EQ(rows().size(), 2);
    trigger(form, "mnu_shrinkoutput");
    ASSERT_TRUE(QTest::qWaitFor([&] { return dock.isComplete(); }));
    QTest::keyClick(&in<QLineEdit>(form, "OutlineFilter"), Qt::Key_Return);
    EXPECT_TRUE(rb1(form).text().line(rb1(form).text().lineFromChar(rb1(form).SelStart())).contains("SUB2"))
        << "lines are those of the shrunk report";
    services.put("checky.out", report("07:00:00"));
    activate(form);
    screens.unload("Form12"); // while the outline is being read
    QApplication::processEvents();
}

TEST_F(Viewers, KeysAndMouseSelectInTheText)
{
    services.put("checky.out", "first line 1.5E3 x\nab\n" + QByteArray(300, '\n') + "last");
    Form12& form = form12();
    LargeTextView& view = rb1(form);
    const auto after = [&](Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        QTest::keyClick(&view, key, modifiers);
        return std::pair(view.SelStart(), view.SelLength());
    };
    using At = std::pair<qsizetype, qsizetype>;
    view.setSelStart(10);
    EXPECT_EQ(after(Qt::Key_Down), At(22, 0)) << "the line is shorter";
    EXPECT_EQ(after(Qt::Key_Up), At(10, 0)) << "and the column is kept";
    EXPECT_EQ(after(Qt::Key_End, Qt::ShiftModifier), At(10, 8));
    EXPECT_EQ(after(Qt::Key_Right), At(18, 0));
    EXPECT_EQ(after(Qt::Key_Right), At(20, 0)) << "over both characters of the line end";
    EXPECT_EQ(after(Qt::Key_Left, Qt::ShiftModifier), At(18, 2));
    EXPECT_EQ(after(Qt::Key_Home), At(0, 0));
    EXPECT_EQ(after(Qt::Key_End, Qt::ControlModifier), At(view.text().length(), 0));
    EXPECT_EQ(view.topLine() + view.linesPerPage(), view.text().lineCount());
    after(Qt::Key_PageUp);
    EXPECT_LT(view.topLine() + view.linesPerPage(), view.text().lineCount());
    EXPECT_EQ(after(Qt::Key_Home, Qt::ControlModifier), At(0, 0));
    EXPECT_EQ(view.topLine(), 0);

    const QFontMetricsF cell(view.font());
    const auto pointAt = [&](int column, int line) {
        return QPoint(4 + int(column * cell.horizontalAdvance(QString(100, u'0')) / 100.0),
                      int((line + 0.5) * cell.height()));
    };
    QTest::mouseDClick(view.viewport(), Qt::LeftButton, {}, pointAt(13, 0));
    EXPECT_EQ(view.SelText(), "1.5E3");
    QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, pointAt(6, 0));
    QTest::mouseClick(view.viewport(), Qt::LeftButton, Qt::ShiftModifier, pointAt(1, 1));
    EXPECT_EQ(view.SelText(), "line 1.5E3 x\r\na");
    view.setTopLine(250);
    EXPECT_EQ(view.topLine(), 250);
    EXPECT_EQ(view.SelText(), "line 1.5E3 x\r\na") << "scrolling leaves the selection";
}

TEST_F(Viewers, ALineWithoutEndIsShownFromAnyColumn)
{
    services.put("checky.out", QByteArray(3'000'000, 'x') + "END" + QByteArray("\0\x1a\xff", 3));
    Form12& form = form12();
    LargeTextView& view = rb1(form);
    QTest::keyClick(&view, Qt::Key_End);
    EXPECT_EQ(view.SelStart(), 3'000'006);
    EXPECT_GT(view.horizontalScrollBar()->value(), 2'999'000);
    view.setMarked(TextNeedle("END"));
    EXPECT_FALSE(view.grab().isNull());
    QTest::keyClick(&view, Qt::Key_Home);
    EXPECT_EQ(view.horizontalScrollBar()->value(), 0);
}

TEST_F(Viewers, TheListHoldsTheLinesAndKeepsItsCurrentItem)
{
    screens.show("Oform");
    auto& form = *screens.loadAs<Oform>("Oform");
    EXPECT_EQ(form.windowTitle(), " HEC-1 OUTPUT");
    auto& list = in<QListView>(form, "List1");
    const int lines = list.model()->rowCount();
    EXPECT_EQ(list.model()->index(lines - 1, 0).data().toString(), " *** NORMAL END OF HEC-1 ***");
    EXPECT_EQ(list.currentIndex().row(), 1);
    in<QPushButton>(form, "Command2").click();
    EXPECT_EQ(list.currentIndex().row(), lines - 1);
    EXPECT_TRUE(in<QAction>(form, "Pop_top").isEnabled());
    EXPECT_FALSE(in<QAction>(form, "pop_Bot").isEnabled());

    services.put("checky.out", "one\ntwo\nthree\n");
    Q_EMIT events.finished({});
    EXPECT_EQ(list.model()->rowCount(), 3);
    EXPECT_EQ(list.currentIndex().row(), 1) << "the former one is not there";
    list.setCurrentIndex(list.model()->index(2, 0));
    services.put("checky.out", "1\n2\n3\n4\n");
    Q_EMIT events.finished({});
    EXPECT_EQ(list.currentIndex().row(), 2);
    trigger(form, "mnu_SelectAll");
    trigger(form, "editcopy");
    EXPECT_EQ(services.clipboard.raw(), "1\r\n2\r\n3\r\n4");
    trigger(form, "mnu_SelectNone");
    for (const int row : {3, 0})
        list.selectionModel()->select(list.model()->index(row, 0), QItemSelectionModel::Select);
    trigger(form, "editcopy");
    EXPECT_EQ(services.clipboard.raw(), "1\r\n4");

    services.dialogs.willAnswer(services.path("list.out"));
    trigger(form, "savehec1out");
    EXPECT_EQ(services.dialogs.last().file.initialName, "storm");
    EXPECT_EQ(services.dialogs.last().file.filter, "OUT Files(*.OUT)|*.OUT|Text Files (*.txt)|*.txt");
    EXPECT_EQ(services.bytes("list.out"), "1\r\n2\r\n3\r\n4\r\n");
    trigger(form, "zoomin");
    EXPECT_EQ(list.font().pointSizeF(), 11.0);
    EXPECT_GE(list.model()->index(0, 0).data(Qt::SizeHintRole).toSize().width(), 1200);

    services.put("checky.out", "alone");
    in<QPushButton>(form, "Command2").click();
    Q_EMIT events.finished({});
    EXPECT_EQ(list.currentIndex().row(), 0);
    in<QAction>(form, "pop_return").trigger();
    EXPECT_EQ(returns, 1);
    EXPECT_TRUE(screens.isLoaded("Oform"));
}

TEST_F(Viewers, OnlyEditControlsHaveLines)
{
    const QLineEdit single;
    EXPECT_EQ(lineCount(single), 1);
    try {
        lineCount(QLabel());
        FAIL();
    } catch (const NoEditControl& error) {
        EXPECT_EQ(error.number, 20000);
        EXPECT_STREQ(error.what(), "Expected: Text Box or other edit control");
    }
}

} // namespace
} // namespace kalvo
