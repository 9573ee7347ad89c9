// SPDX-License-Identifier: GPL-3.0-or-later
// Peaks and runoff volumes through their own menus, keys and windows, with the commands of a page beside them.
#include "results/ResultScreens.h"
#include "results/ResultCommands.h"

#include "platform/ResultGrid.h"
#include "run/Tape21Tables.h"
#include "tests/run/TapeText.h"
#include "tests/support/GridText.h"
#include "tests/support/ScriptedServices.h"

#include <QAction>
#include <QContextMenuEvent>
#include <QHelpEvent>
#include <QLabel>
#include <QMenu>
#include <QPushButton>
#include <QTest>
#include <QToolTip>

#include <gtest/gtest.h>

namespace kalvo {
namespace {

struct ResultScreens : testing::Test
{
    ScriptedServices services;
    Screens screens;
    std::shared_ptr<ResultDesk> desk =
        std::make_shared<ResultDesk>(services.services, screens, std::make_shared<ResultTables>());
    QWidget mainScreen;
    Commands commands;
    std::function<bool()> readAgain = [] { return false; };
    std::unique_ptr<ResultCommands> page;

    ResultScreens()
    {
        desk->tables().follow(screens);
        registerResultScreens(screens, desk, [this] { return &mainScreen; });
        commands.add("runhec", [] {});
        page = std::make_unique<ResultCommands>(desk, commands, [this] { return readAgain(); });
        mainScreen.show();
    }
    ~ResultScreens() override { screens.unloadAll(); }

    void read(const std::string& tape)
    {
        EXPECT_FALSE(fillTables(readTape21(tape), desk->tables(), services.measure));
        desk->tables().deckName = "storm";
        desk->tables().tellChanged();
        desk->tables().tellFilled();
    }
    QMainWindow& opened(const char* command, const char* name)
    {
        EXPECT_TRUE(commands.run(command));
        auto* window = screens.loadAs<QMainWindow>(name);
        if (!window)
            throw std::runtime_error(name);
        EXPECT_TRUE(QTest::qWaitForWindowActive(window));
        return *window;
    }
    template <class Control> static Control& in(QWidget& window, const char* name)
    {
        auto* control = window.findChild<Control*>(QString::fromLatin1(name));
        if (!control)
            throw std::runtime_error(name);
        return *control;
    }
    static void trigger(QWidget& window, const char* name) { in<QAction>(window, name).trigger(); }
    QString copied() const { return services.clipboard.raw(); }
    static QString tipOver(ResultGrid& grid, int row, int col)
    {
        const QPoint at = grid.viewport()->mapFrom(&grid, grid.cellRect(row, col).center());
        QHelpEvent ask(QEvent::ToolTip, at, grid.viewport()->mapToGlobal(at));
        QApplication::sendEvent(grid.viewport(), &ask);
        return QToolTip::text();
    }
    static void press(ResultGrid& grid, QKeySequence::StandardKey key) { QTest::keySequence(&grid, QKeySequence(key)); }
};

const std::string kTwoRatios =
    risingStation({"UPPER", "60", "1", "1", "2"}, 2, 2) + risingStation({"OUT", "60", "1", "1", "2"}, 2, 2, -2);

TEST_F(ResultScreens, PeakFlowsAreCopiedWithAndWithoutTheirTitles)
{
    read(kTwoRatios);
    QMainWindow& form = opened("mnu_tabular", "Form10");
    auto& Grid1 = in<ResultGrid>(form, "Grid1");
    EXPECT_EQ(form.windowTitle(), " Peak Flows");
    EXPECT_EQ(Grid1.grid().colWidth(0), 6 * 120);
    EXPECT_EQ(Grid1.width(), form.width() - 550 / 15);
    EXPECT_EQ(Grid1.height(), form.height() - 1200 / 15);

    auto& edit = in<QMenu>(form, "mnu_edit");
    auto& copy = in<QAction>(form, "mnu_copy");
    Grid1.grid().setCursor(1, 1);
    Q_EMIT edit.aboutToShow();
    EXPECT_FALSE(copy.isEnabled()) << "one cell is no range";
    press(Grid1, QKeySequence::Copy);
    EXPECT_EQ(copied(), "2") << "the keyboard copies it all the same";
    Grid1.grid().select(2, 2, 1, 1);
    Q_EMIT edit.aboutToShow();
    EXPECT_TRUE(copy.isEnabled());
    copy.trigger();
    EXPECT_EQ(copied(), "2\t4\r\n0\t1");

    press(Grid1, QKeySequence::SelectAll);
    trigger(form, "pop_Copy");
    EXPECT_TRUE(copied().startsWith("KK Name\tRatio  1 Plan  1 JD  1\tRatio  2")) << copied().toStdString();
    auto& toggle = in<QAction>(form, "mnu_ToggleRowsandColumns");
    EXPECT_FALSE(toggle.isChecked());
    toggle.trigger();
    EXPECT_FALSE(toggle.isChecked()) << "Select All had made the titles ordinary cells";
    EXPECT_EQ(Grid1.grid().fixedRows() + Grid1.grid().fixedCols(), 2);
    toggle.trigger();
    EXPECT_TRUE(toggle.isChecked());
    EXPECT_EQ(Grid1.grid().fixedRows() + Grid1.grid().fixedCols(), 0);
}

TEST_F(ResultScreens, MouseAndWheelOnTheGrid)
{
    std::string tape;
    for (int i = 0; i < 60; ++i)
        tape += station({"S" + std::to_string(i)}, {1, 2, 3});
    read(tape);
    QMainWindow& form = opened("mnu_tabular", "Form10");
    auto& Grid1 = in<ResultGrid>(form, "Grid1");
    form.menuBar()->setFocus();
    QTest::mouseClick(Grid1.viewport(), Qt::LeftButton, {}, QPoint(20, 20));
    EXPECT_TRUE(Grid1.hasFocus());
    const auto turn = [&](int delta, Qt::KeyboardModifiers with) {
        QWheelEvent event(QPointF(30, 30), Grid1.viewport()->mapToGlobal(QPointF(30, 30)), {}, {0, delta}, {}, with,
                          Qt::NoScrollPhase, false);
        QApplication::sendEvent(Grid1.viewport(), &event);
        return Grid1.grid().topRow();
    };
    EXPECT_EQ(turn(-120, {}), 2);
    EXPECT_EQ(turn(-120, Qt::ControlModifier), 2 + Grid1.heightTwips() / Grid1.grid().rowHeight(0) - 3);
    EXPECT_EQ(turn(120, Qt::ControlModifier), 2);
    Grid1.toggleTitles();
    turn(120, {});
    EXPECT_EQ(turn(120, {}), 0) << "titles that are ordinary rows come into view";

    QContextMenuEvent ask(QContextMenuEvent::Mouse, QPoint(30, 30), Grid1.viewport()->mapToGlobal(QPoint(30, 30)));
    QApplication::sendEvent(Grid1.viewport(), &ask);
    EXPECT_TRUE(in<QMenu>(form, "Popup").isVisible());
    in<QMenu>(form, "Popup").hide();
}

TEST_F(ResultScreens, ClosingClosesTheCommandAndReturnDoesNot)
{
    read(kTwoRatios);
    for (const auto& [command, name] : {std::pair{"mnu_tabular", "Form10"}, std::pair{"mnu_peakflows", "Form9"}}) {
        QMainWindow& form = opened(command, name);
        trigger(form, "mnu_return");
        EXPECT_FALSE(form.isVisible());
        EXPECT_TRUE(commands.isEnabled(command));
        EXPECT_TRUE(QTest::qWaitForWindowActive(&mainScreen));
        opened(command, name).close();
        EXPECT_FALSE(form.isVisible());
        EXPECT_FALSE(commands.isEnabled(command)) << name;
        EXPECT_TRUE(screens.isLoaded(name)) << "the table stays until the next run";
    }
    EXPECT_EQ(desk->tables().peakTable.textMatrix(1, 0), "UPPER");
    commands.setEnabled("mnu_tabular", true);
    screens.unload("Form10");
    EXPECT_FALSE(commands.isEnabled("mnu_tabular")) << "with the screen went its table";
}

TEST_F(ResultScreens, StationPeaksAreOneRowAsTheGridGivesIt)
{
    read(kTwoRatios);
    QMainWindow& form = opened("mnu_peakflows", "Form9");
    auto& PKS = in<ResultGrid>(form, "PKS");
    auto& Command1 = in<QPushButton>(form, "Command1");
    EXPECT_EQ(form.windowTitle(), " Kalvo Station Peak Flows");
    EXPECT_EQ(PKS.width(), form.width() - 500 / 15);
    EXPECT_EQ(Command1.y(), PKS.height() + 20);
    EXPECT_EQ(Command1.x(), (form.width() - Command1.width() - 400 / 15) / 2);
    EXPECT_EQ(PKS.grid().colWidth(0), 120);
    PKS.grid().select(0, 1, 1, 2);
    trigger(form, "mnu_copy");
    EXPECT_EQ(copied(), "UPPER  1  1  1\tUPPER  2  1  1\r2\t4");
    services.dialogs.willAnswer(Button::Ok);
    trigger(form, "mnu_assistance");
    EXPECT_EQ(services.dialogs.last().text,
              "Peak Flows versus KK Station - Use Copy to transfer data to another Application");
    EXPECT_EQ(services.dialogs.last().icon, Icon::None);
    QTest::mouseClick(&Command1, Qt::LeftButton);
    EXPECT_FALSE(form.isVisible());
}

TEST_F(ResultScreens, TheUnitOfTheRunStandsInTipsAndInCsv)
{
    services.put("checky.dat", "ID METRIC\r\nIM\r\nKK  A\r\nZZ\r\n");
    read(kTwoRatios);
    QMainWindow& form = opened("mnu_tabular", "Form10");
    EXPECT_EQ(in<QLabel>(form, "Label1").text(), "Flows in m3/s");
    services.dialogs.willAnswer(services.path("peaks.csv"));
    trigger(form, "mnu_saveCsv");
    EXPECT_EQ(services.bytes("peaks.csv"), "KK Name,Ratio  1 Plan  1 JD  1 (m3/s),Ratio  2 Plan  1 JD  1 (m3/s)\r\n"
                                           "UPPER,2,4\r\nOUT,0,1\r\n");
    EXPECT_EQ(services.dialogs.last().file.initialName, "storm");
    EXPECT_EQ(tipOver(in<ResultGrid>(form, "Grid1"), 1, 1), "m3/s");
    auto& volumes = in<ResultGrid>(opened("mnu_runoffvolumes", "FrmRunoffVolumes"), "Grid1");
    EXPECT_EQ(tipOver(volumes, 3, 1), "m3: the deck of this run has metric units");
    EXPECT_EQ(volumes.grid().textMatrix(3, 0), "Volume (cf) ");

    services.put("checky.dat", "ID ENGLISH\r\nKK  A\r\nZZ\r\n");
    read(kTwoRatios);
    EXPECT_EQ(in<QLabel>(form, "Label1").text(), "Flows in cfs");
    services.dialogs.willAnswer(services.path("no/such/folder.csv"));
    services.dialogs.willAnswer(Button::Ok);
    trigger(form, "mnu_saveCsv");
    EXPECT_TRUE(services.dialogs.last().text.startsWith("The table is not saved."));
}

TEST_F(ResultScreens, VolumesHoldRunsBackWhileTheyAreOpen)
{
    read(kTwoRatios);
    desk->tables().counts.numPlans = 0;
    QMainWindow& form = opened("mnu_runoffvolumes", "FrmRunoffVolumes");
    EXPECT_EQ(desk->tables().counts.numPlans, 1);
    EXPECT_EQ(form.windowTitle(), " Runoff Volumes");
    EXPECT_FALSE(commands.isEnabled("runhec"));
    trigger(form, "mnu_return");
    EXPECT_TRUE(commands.isEnabled("runhec"));
    EXPECT_TRUE(screens.isLoaded("FrmRunoffVolumes"));
    opened("mnu_runoffvolumes", "FrmRunoffVolumes").close();
    EXPECT_TRUE(commands.isEnabled("runhec"));
    EXPECT_FALSE(screens.isLoaded("FrmRunoffVolumes"));
    opened("mnu_runoffvolumes", "FrmRunoffVolumes");
    screens.unload("FrmRunoffVolumes");
    EXPECT_TRUE(commands.isEnabled("runhec")) << "also when another screen takes it along";
}

TEST_F(ResultScreens, VolumesOfATableThatIsGoneAreReadAgain)
{
    EXPECT_TRUE(commands.run("mnu_runoffvolumes"));
    EXPECT_FALSE(screens.isLoaded("FrmRunoffVolumes")) << "nothing to show, and the reading has told why";
    EXPECT_TRUE(commands.isEnabled("runhec"));
    readAgain = [this] {
        read(kTwoRatios);
        return true;
    };
    read(kTwoRatios);
    desk->tables().forget("hydrodata"); // as the closing of its screen does
    auto& Grid1 = in<ResultGrid>(opened("mnu_runoffvolumes", "FrmRunoffVolumes"), "Grid1");
    EXPECT_EQ(Grid1.grid().textMatrix(2, 1), "UPPER  1  1  1");
}

TEST_F(ResultScreens, VolumesAreCopiedCollapsedOrAsTheyStand)
{
    read(kTwoRatios);
    QMainWindow& form = opened("mnu_runoffvolumes", "FrmRunoffVolumes");
    auto& Grid1 = in<ResultGrid>(form, "Grid1");
    Grid1.grid().select(6, 0, 8, 2);
    trigger(form, "mnu_copy");
    EXPECT_EQ(copied(), "KK NAME\tOUT  1  1  1\tOUT  2  1  1\r\nVolume (cf) \t-3,600.000\t3,600.000\r\n\t");
    read(risingStation({"A", "60", "1", "1", "2"}, 2, 2, -2)); // the second one ends at 1, the first one at -1
    read(station({"A", "60", "1", "1", "2"}, {0, 0, 0, 0, 0, 9}));
    Grid1.grid().select(3, 0, 5, 2);
    trigger(form, "mnu_copy");
    EXPECT_EQ(copied(), "Volume (cf) \t0.000\t32,400.000\r\n\t+/-\r\n\t") << "the mark lands below the first ratio";
    trigger(form, "mnu_copyWithEmptyCells");
    EXPECT_EQ(copied(), "Volume (cf) \t0.000\t32,400.000\r\n\t\t+/-\r\n\t\t");
    services.dialogs.willAnswer(services.path("volumes.csv"));
    trigger(form, "mnu_saveCsv");
    EXPECT_EQ(services.bytes("volumes.csv"),
              "KK NAME,Volume (cf),+/-\r\nA  1  1  1,0.000,\r\nA  2  1  1,32400.000,+/-\r\n");
}

} // namespace
} // namespace kalvo
