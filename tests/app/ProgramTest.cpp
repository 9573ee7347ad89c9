// SPDX-License-Identifier: GPL-3.0-or-later
// The whole program as its user goes through it: a real deck, a real HEC-1, every screen; only the questions are
// scripted.
#include "app/Program.h"

#include "deck/Form1_MainScreen.h"
#include "graphics/HydroGrapher_QuickHydroGrapher.h"
#include "platform/QtChildProcess.h"
#include "tests/support/GridText.h"
#include "tests/support/ScriptedServices.h"

#include <QAction>
#include <QApplication>
#include <QFile>
#include <QMainWindow>
#include <QTest>

#include <gtest/gtest.h>

namespace kalvo {
namespace {

struct ProgramTest : testing::Test
{
    ScriptedServices scripted;
    QtChildProcess process;
    Services services{scripted.dialogs, scripted.clipboard, scripted.clock, process, scripted.folder, scripted.measure};
    Program program{services, QStringLiteral(KALVO_BIN_DIR)};
    Form1& form = program.load();

    ProgramTest()
    {
        form.show();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&form));
    }

    static QString example(const char* name) { return QStringLiteral(KALVO_SOURCE_DIR "/examples/") + name; }
    void open(const char* name) { program.page().files.opencommandline(example(name)); }
    bool on(const char* command) { return program.page().commands.isEnabled(QString::fromLatin1(command)); }
    bool run(const char* command) { return program.page().commands.run(QString::fromLatin1(command)); }
    bool isShown(const char* screen) { return program.screens().isVisible(QString::fromLatin1(screen)); }
    void trigger(const char* screen, const char* entry)
    {
        auto* window = program.screens().loadAs<QMainWindow>(QString::fromLatin1(screen));
        ASSERT_TRUE(window) << screen;
        auto* action = window->findChild<QAction*>(QString::fromLatin1(entry));
        ASSERT_TRUE(action) << entry;
        action->trigger();
    }
    /// What a command saved under the name that the dialog is answered with.
    QByteArray saved(const char* screen, const char* entry, const char* name)
    {
        scripted.dialogs.willAnswer(scripted.path(name));
        trigger(screen, entry);
        return scripted.bytes(name);
    }
};

TEST_F(ProgramTest, EveryScreenIsBuiltShownAndClosedWithNothingToShow)
{
    scripted.dialogs.willAlwaysSayOk();
    const QStringList names = program.screens().names();
    EXPECT_GE(names.size(), 25);
    for (const QString& name : names) {
        program.screens().show(name);
        EXPECT_TRUE(program.screens().isLoaded(name)) << name.toStdString();
        QApplication::processEvents();
        for (QWidget* window : QApplication::topLevelWidgets())
            if (window != &form && window->isVisible())
                window->close();
        program.screens().unload(name);
        QApplication::processEvents();
        EXPECT_FALSE(program.screens().isLoaded(name)) << name.toStdString();
    }
}

TEST_F(ProgramTest, ARealRunIsSeenOnEveryResultScreen)
{
    open("detention.dat");
    EXPECT_FALSE(on("viewhec1"));
    ASSERT_TRUE(run("runhec"));
    ASSERT_TRUE(run("graph"));
    EXPECT_TRUE(isShown("GRAPHER"));

    for (const char* command : {"mnu_hydrodata", "mnu_peakflows", "mnu_tabular", "mnu_runoffvolumes", "viewhec1",
                                "mnu_routing", "mnu_detailed_ReservoirRoutings"})
        EXPECT_TRUE(run(command)) << command;
    for (const char* screen : {"hydrodata", "Form9", "Form10", "FrmRunoffVolumes", "Form12", "frmRouting", "DetRes"})
        EXPECT_TRUE(isShown(screen)) << screen;
    EXPECT_FALSE(on("runhec")) << "the volumes are open";
    trigger("FrmRunoffVolumes", "mnu_return");
    EXPECT_TRUE(on("runhec"));

    const QByteArray peaks = saved("Form10", "mnu_savepeaks", "site.pek");
    EXPECT_TRUE(
        peaks.startsWith("Peak Flow File - Ratios /Plans/JD Simulations\r\n 5 \r\n 6 \r\n 1 \r\n 1 \r\nSITE\t337.5"))
        << peaks.left(90).toStdString();
    EXPECT_EQ(peaks.count("\r\n"), 10);
    trigger("hydrodata", "mnu_centerofMass");
    EXPECT_TRUE(isShown("Form20"));
    EXPECT_TRUE(saved("Form20", "mnu_save", "site.wcm").startsWith("Center of Mass\r\n"));

    ASSERT_TRUE(run("runhec"));
    for (const char* screen : {"GRAPHER", "hydrodata", "Form10", "Form20", "FrmRunoffVolumes"})
        EXPECT_FALSE(program.screens().isLoaded(screen)) << screen << " holds what is no longer so";
    for (const char* command : {"mnu_hydrodata", "mnu_peakflows", "mnu_tabular", "mnu_runoffvolumes"})
        EXPECT_FALSE(on(command)) << command;
}

TEST_F(ProgramTest, ASelectionOfTheTableOpensAQuickGraphThatGoesWithTheTable)
{
    open("detention.dat");
    ASSERT_TRUE(run("runhec"));
    ASSERT_TRUE(run("graph"));
    ASSERT_TRUE(run("mnu_hydrodata"));
    FlexGrid& table = program.tables().hydrographTable;
    table.setRow(1);
    table.setCol(2);
    table.setRowSel(table.rows() - 1);
    table.setColSel(4);
    const auto charts = [] {
        int open = 0;
        for (const QWidget* window : QApplication::topLevelWidgets())
            open += qobject_cast<const HydroGrapher*>(window) && window->isVisible() ? 1 : 0;
        return open;
    };
    trigger("hydrodata", "mnu_HydroGraph");
    trigger("hydrodata", "mnu_HydroGraph");
    EXPECT_EQ(charts(), 2);
    trigger("hydrodata", "Endhydrodata");
    QApplication::processEvents();
    EXPECT_EQ(charts(), 0);
}

TEST_F(ProgramTest, AScreenGoesBackToThePageThatWasUsedLast)
{
    open("detention.dat");
    ASSERT_TRUE(run("runhec"));
    ASSERT_TRUE(run("graph"));
    ASSERT_TRUE(run("mnu_clone"));
    Form1* clone = nullptr;
    for (QWidget* window : QApplication::topLevelWidgets())
        if (auto* page = qobject_cast<Form1*>(window); page && page != &form)
            clone = page;
    ASSERT_TRUE(clone && QTest::qWaitForWindowActive(clone));
    const auto leave = [this](const char* command, const char* screen, const char* entry) {
        EXPECT_TRUE(run(command));
        EXPECT_TRUE(QTest::qWaitForWindowActive(program.screens().loadAs<QWidget>(QString::fromLatin1(screen))));
        trigger(screen, entry);
    };
    leave("viewhec1", "Form12", "mnu_Quit");
    EXPECT_TRUE(QTest::qWaitForWindowActive(clone));
    leave("mnu_hydrodata", "hydrodata", "Endhydrodata");
    EXPECT_TRUE(QTest::qWaitForWindowActive(clone));
    clone->hide();
    leave("mnu_detailed_ReservoirRoutings", "DetRes", "mnu_Return");
    EXPECT_TRUE(QTest::qWaitForWindowActive(&form)) << "the clone is gone";
}

} // namespace
} // namespace kalvo
