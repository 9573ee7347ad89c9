// SPDX-License-Identifier: GPL-3.0-or-later
// The viewers of reservoir routings through their own menus, keys and clicks.
#include "platform/FlexGridView.h"
#include "platform/LargeTextView.h"
#include "run/DetRes_DetailedRoutings.h"
#include "run/RoutingCommands.h"
#include "run/detres2_RoutingGrid.h"
#include "run/frmRouting_RoutingOutput.h"
#include "tests/support/GridText.h"
#include "tests/support/ScriptedServices.h"

#include <QAction>
#include <QLabel>
#include <QListView>
#include <QPushButton>
#include <QTest>

#include <gtest/gtest.h>

namespace kalvo {
namespace {

constexpr auto kStages = "FLOW_AND_STAGE_STORAGE.TXT";
const QString kNoRoutings = "There are no Routings in the HEC-1 input data.";
const QString kNoData = "No Data was provided for Reservoir Routings.";

QByteArray report(const char* name)
{
    return readFile(QStringLiteral(KALVO_SOURCE_DIR "/tests/run/reports/") + QString::fromLatin1(name))
        .value_or(QByteArray());
}

/// Stands for the viewer of the whole report.
struct Viewer : QWidget, Screen
{
    Viewer()
    {
        rb1.setObjectName("rb1");
        rb1.setText(TextBuffer(report("one_ratio.txt")));
        resize(600, 300);
    }
    void showScreen() override { show(); }
    void hideScreen() override { hide(); }
    bool isScreenVisible() const override { return isVisible(); }
    LargeTextView rb1{this};
};

struct RoutingScreens : testing::Test
{
    ScriptedServices services;
    Commands commands;
    Screens screens;
    RunEvents events;
    RoutingCommands routing{services, commands, screens, events};
    int returns = 0;

    RoutingScreens()
    {
        registerRoutingScreens(screens, services, [this] { ++returns; });
        services.put("checky.out", report("six_ratios.txt"));
        services.put(kStages, report("six_ratios_stages.txt"));
    }
    ~RoutingScreens() override { screens.unloadAll(); }

    QWidget& opened(const char* command, const char* name)
    {
        EXPECT_TRUE(commands.run(QString::fromLatin1(command)));
        auto* screen = screens.loadAs<QWidget>(QString::fromLatin1(name));
        if (!screen || !QTest::qWaitForWindowActive(screen))
            throw std::runtime_error(name);
        return *screen;
    }
    QWidget& frmRouting() { return opened("mnu_routing", "frmRouting"); }
    QWidget& DetRes() { return opened("mnu_detailed_ReservoirRoutings", "DetRes"); }
    template <class Control> Control& in(QWidget& window, const char* name)
    {
        auto* control = window.findChild<Control*>(QString::fromLatin1(name));
        if (!control)
            throw std::runtime_error(name);
        return *control;
    }
    void trigger(QWidget& window, const char* name) { in<QAction>(window, name).trigger(); }
    QString lastTold() const { return services.dialogs.texts().last(); }
    void willSaveAs(const char* name) { services.dialogs.willAnswer(services.path(QString::fromLatin1(name))); }
};

QStringList items(const QListView& list)
{
    QStringList texts;
    for (int row = 0; row < list.model()->rowCount(); ++row)
        texts << list.model()->index(row, 0).data().toString();
    return texts;
}

// -- frmRouting ------------------------------------------------------------------------------------------------------

TEST_F(RoutingScreens, TheRoutingsAreListedCopiedFoundAndSaved)
{
    QWidget& screen = frmRouting();
    EXPECT_EQ(screen.windowTitle(), "Reservoir Routing Output");
    auto& List2 = in<QListView>(screen, "List2");
    ASSERT_EQ(items(List2).size(), 10);
    EXPECT_FALSE(in<QLabel>(screen, "Label1").isVisible());
    for (const char* later : {"mnu_print", "mnu_printersetup"})
        EXPECT_FALSE(in<QAction>(screen, later).isEnabled());

    services.dialogs.willAnswer(Button::Ok);
    QTest::keyClick(&List2, Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(lastTold(), "Nothing Selected");
    services.dialogs.willAnswer("stage ");
    trigger(screen, "mnu_Find");
    EXPECT_EQ(services.dialogs.last().text, "Find in Routings");
    EXPECT_EQ(List2.currentIndex().row(), 7);
    QTest::keyClick(&List2, Qt::Key_C, Qt::ControlModifier);
    EXPECT_TRUE(services.clipboard.raw().contains("STAGE      101.82")) << services.clipboard.raw().toStdString();
    QTest::keyClick(&List2, Qt::Key_A, Qt::ControlModifier);
    trigger(screen, "mnu_Copy");
    EXPECT_EQ(services.clipboard.raw(), items(List2).join("\r\n"));

    willSaveAs("mine.txt");
    trigger(screen, "mnu_Save");
    const FileDialog asked = services.dialogs.last().file;
    EXPECT_EQ(asked.title, " Kalvo Save Reservoir Routings");
    EXPECT_EQ(asked.filter, "(*.txt)|*.txt| Text Files (*.txr)|*.txr");
    EXPECT_EQ(asked.defaultExtension, "txt");
    EXPECT_EQ(services.bytes("mine.txt"), (items(List2).join("\r\n") + "\r\n").toLatin1());
    services.dialogs.willAnswer(services.path("none/mine.txt"));
    services.dialogs.willAnswer(Button::Ok);
    trigger(screen, "mnu_Save");
    EXPECT_TRUE(lastTold().contains("could not be written")) << lastTold().toStdString();

    trigger(screen, "mnu_Return");
    EXPECT_EQ(returns, 1);
    EXPECT_FALSE(screens.isLoaded("frmRouting")) << "the list is forgotten";
}

TEST_F(RoutingScreens, OneRatioIsToldAndLedToTheOtherSummary)
{
    services.put("checky.out", report("one_ratio.txt"));
    screens.add("Form12", [] { return std::make_unique<Viewer>(); });
    services.dialogs.willAnswer(Button::Ok);
    QWidget& screen = frmRouting();
    EXPECT_EQ(lastTold(), kNoRoutings);
    EXPECT_TRUE(in<QLabel>(screen, "Label1").text().startsWith(kNoRoutings + "\n"));
    auto& Command1 = in<QPushButton>(screen, "Command1");
    ASSERT_TRUE(Command1.isVisible());
    QTest::mouseClick(&Command1, Qt::LeftButton);
    const auto& rb1 = screens.loadAs<Viewer>("Form12")->rb1;
    EXPECT_TRUE(rb1.text().line(rb1.topLine()).contains("RUNOFF SUMMARY"));
    services.dialogs.willAnswer(Button::Ok);
    trigger(screen, "mnu_Save");
    EXPECT_EQ(lastTold(), "No Data to Save!");

    services.put("checky.out", report("six_ratios.txt"));
    Q_EMIT events.finished({});
    EXPECT_EQ(items(in<QListView>(screen, "List2")).size(), 10) << "a run repaints what is open";
    EXPECT_FALSE(Command1.isVisible());
    services.folder.remove("checky.out");
    Q_EMIT events.finished({});
    EXPECT_TRUE(in<QLabel>(screen, "Label1").text().contains("checky.out")) << "without a box";
}

// -- DetRes ----------------------------------------------------------------------------------------------------------

TEST_F(RoutingScreens, AClickOnAnEntryBringsItsBlockToTheTop)
{
    QWidget& screen = DetRes();
    EXPECT_EQ(screen.windowTitle(), "Detailed Reservoir Routings");
    auto& List1 = in<QListView>(screen, "List1");
    auto& rb = in<LargeTextView>(screen, "rb");
    ASSERT_EQ(items(List1).size(), 6);
    EXPECT_EQ(rb.SelStart(), 0);
    const QModelIndex fourth = List1.model()->index(3, 0);
    QTest::mouseClick(List1.viewport(), Qt::LeftButton, {}, List1.visualRect(fourth).center());
    EXPECT_TRUE(rb.text().mid(rb.SelStart(), 9) == "LOW AREA=");
    EXPECT_TRUE(rb.text().line(rb.topLine()).contains("RATIO  4"));
    EXPECT_EQ(rb.topLine(), rb.text().lineFromChar(rb.SelStart()));
}

TEST_F(RoutingScreens, LineFeedsAloneKeepThePlacesTrue)
{
    QByteArray bytes = report("six_ratios_stages.txt");
    services.put(kStages, bytes.replace("\r\n", "\n"));
    QWidget& screen = DetRes();
    auto& List1 = in<QListView>(screen, "List1");
    List1.setCurrentIndex(List1.model()->index(4, 0));
    QTest::keyClick(&List1, Qt::Key_Return);
    auto& rb = in<LargeTextView>(screen, "rb");
    EXPECT_TRUE(rb.text().line(rb.topLine()).contains("RATIO  5"));
    EXPECT_TRUE(rb.text().mid(rb.SelStart(), 9) == "LOW AREA=");
}

TEST_F(RoutingScreens, DetailsAreFoundCopiedAndSaved)
{
    QWidget& screen = DetRes();
    auto& rb = in<LargeTextView>(screen, "rb");
    services.dialogs.willAnswer("ratio  2");
    QTest::keyClick(&rb, Qt::Key_F, Qt::ControlModifier);
    EXPECT_EQ(rb.SelText(), "RATIO  2");
    QTest::keyClick(&rb, Qt::Key_F3);
    EXPECT_EQ(rb.SelText(), "RATIO  2") << "from the start again";
    services.dialogs.willAnswer("ORDNT");
    trigger(screen, "mnu_Find");
    const qsizetype first = rb.SelStart();
    QTest::keyClick(&rb, Qt::Key_F3);
    EXPECT_GT(rb.SelStart(), first);
    for (const char* absent : {"nowhere", "\xe2\x82\xac"}) {
        services.dialogs.willAnswer(absent);
        services.dialogs.willAnswer(Button::Ok);
        trigger(screen, "mnu_Find");
        EXPECT_EQ(lastTold(), QString("\"%1\" was not found.").arg(absent));
    }
    services.dialogs.willCancel();
    trigger(screen, "mnu_Find");

    rb.select(rb.text().lineStart(1), rb.text().lineStart(3) - rb.text().lineStart(1));
    trigger(screen, "mnu_copyasData");
    EXPECT_EQ(services.clipboard.raw(),
              "\tORDNT\tHR MIN\tOUTFLOW\tSTORAGE\t STAGE\tQLOWL\r\n\t1\t0 00\t.00\t.000\t100.000\t.00\r\n");
    trigger(screen, "mnu_Copy");
    EXPECT_TRUE(services.clipboard.raw().startsWith(" ORDNT   HR MIN "));
    trigger(screen, "mnu_SelectAll");
    EXPECT_EQ(rb.SelLength(), rb.text().length());
    willSaveAs("all.txt");
    trigger(screen, "mnu_Save");
    EXPECT_EQ(services.bytes("all.txt"), report("six_ratios_stages.txt"));
    screen.close();
    EXPECT_FALSE(screens.isLoaded("DetRes"));
    EXPECT_EQ(returns, 1);
}

TEST_F(RoutingScreens, AfterARunWithoutPoolsTheDetailsAreGone)
{
    QWidget& screen = DetRes();
    services.folder.remove(kStages);
    Q_EMIT events.finished({});
    EXPECT_TRUE(in<LargeTextView>(screen, "rb").text().isEmpty());
    EXPECT_TRUE(items(in<QListView>(screen, "List1")).isEmpty());
    services.put(kStages, "");
    services.dialogs.willAnswer(Button::Ok);
    screens.show("DetRes");
    EXPECT_EQ(lastTold(), kNoData);
    services.dialogs.willAnswer(Button::Ok);
    trigger(screen, "mnu_Copy");
    EXPECT_EQ(lastTold(), "Nothing Selected");
}

TEST_F(RoutingScreens, DamagedFilesAreShownAsTheyAre)
{
    for (const QByteArray& bytes :
         {report("six_ratios_stages.txt").left(1234), QByteArray(" STATION\r LOW AREA=\r"), QByteArray(1 << 20, 'x'),
          QByteArray("LOW AREA=\0RATIO", 15), report("one_ratio.txt")}) {
        services.put(kStages, bytes);
        services.put("checky.out", bytes);
        auto& rb = in<LargeTextView>(DetRes(), "rb");
        EXPECT_EQ(rb.text().mid(0, 8), bytes.left(8));
        rb.grab();
        services.dialogs.willAnswer(Button::Ok);
        frmRouting().grab();
        EXPECT_EQ(lastTold(), kNoRoutings);
    }
}

// -- detres2 ---------------------------------------------------------------------------------------------------------

TEST_F(RoutingScreens, TheGridHoldsTheSameFile)
{
    trigger(DetRes(), "mnu_Grid");
    QWidget& screen = *screens.loadAs<QWidget>("detres2");
    ASSERT_TRUE(QTest::qWaitForWindowActive(&screen));
    auto& Grid1 = in<FlexGridView>(screen, "Grid1");
    EXPECT_EQ(gridText(Grid1.grid(), 0, 1, 0, 6), "ORDNT|HR MIN|OUTFLOW|STORAGE|STAGE|QLOWL");
    Grid1.grid().select(3, 1, 4, 3);
    trigger(screen, "mnu_Copy");
    EXPECT_EQ(services.clipboard.raw(), "1\t0 00\t.00\r\n2\t0 15\t.00");
    services.put("checky.dat", "ID metric\r\nIM\r\nKK A\r\nZZ\r\n");
    Q_EMIT events.finished({});
    willSaveAs("grid.csv");
    trigger(screen, "mnu_saveCsv");
    EXPECT_TRUE(services.bytes("grid.csv")
                    .startsWith(",ORDNT,HR MIN,OUTFLOW (m3/s),STORAGE (1000 m3),STAGE (m),QLOWL (m3/s)\r\n"))
        << services.bytes("grid.csv").left(200).toStdString();
    trigger(screen, "mnu_SelectAll");
    trigger(screen, "mnu_Copy");
    EXPECT_EQ(services.clipboard.raw().count('\n'), report("six_ratios_stages.txt").count('\n'));
    trigger(screen, "mnu_ToggleRowsandColumns");
    EXPECT_EQ(Grid1.grid().fixedRows(), 1) << "titles again";
    services.folder.remove(kStages);
    Q_EMIT events.finished({});
    EXPECT_EQ(Grid1.grid().rows(), 1);
    trigger(screen, "mnu_Return");
    EXPECT_FALSE(screens.isLoaded("detres2"));
    auto& text = *screens.loadAs<QWidget>("DetRes");
    EXPECT_TRUE(QTest::qWaitForWindowActive(&text));
    EXPECT_EQ(returns, 0) << "the text that the grid was opened from is still there";
    text.close();
    EXPECT_EQ(returns, 1);
}

} // namespace
} // namespace kalvo
