// SPDX-License-Identifier: GPL-3.0-or-later
// The viewer of hydrographs and the centers of mass through their own menus, keys and windows.
#include "results/HydrodataScreens.h"

#include "platform/ResultGrid.h"
#include "tests/run/TapeText.h"
#include "tests/support/GridText.h"
#include "tests/support/ScriptedServices.h"

#include "run/Tape21Tables.h"

#include <QAction>
#include <QApplication>
#include <QContextMenuEvent>
#include <QHelpEvent>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QTest>
#include <QToolTip>

#include <gtest/gtest.h>

namespace kalvo {
namespace {

struct HydrodataScreens : testing::Test
{
    ScriptedServices services;
    Screens screens;
    std::shared_ptr<ResultDesk> desk =
        std::make_shared<ResultDesk>(services.services, screens, std::make_shared<ResultTables>());
    std::shared_ptr<HydrodataDesk> logic = std::make_shared<HydrodataDesk>(desk);

    HydrodataScreens()
    {
        desk->tables().follow(screens);
        registerHydrodataScreens(screens, logic, {});
    }
    ~HydrodataScreens() override { screens.unloadAll(); }

    FlexGrid& table() { return logic->table(); }
    QMainWindow& shown(const char* name)
    {
        screens.show(name);
        return window(name);
    }
    QMainWindow& window(const char* name)
    {
        auto* found = screens.loadAs<QMainWindow>(name);
        if (!found)
            throw std::runtime_error(name);
        EXPECT_TRUE(QTest::qWaitForWindowActive(found));
        return *found;
    }
    QMainWindow& viewer()
    {
        EXPECT_FALSE(fillTables(readTape21(station({"A", "60"}, {0, 1, 0}) + station({"LONG NAME", "60"}, {0, 0, 2})),
                                desk->tables(), services.measure));
        desk->tables().deckName = "storm";
        return shown("hydrodata");
    }
    template <class Control> static Control& in(QWidget& screen, const char* name)
    {
        auto* control = screen.findChild<Control*>(QString::fromLatin1(name));
        if (!control)
            throw std::runtime_error(name);
        return *control;
    }
    static void trigger(QWidget& screen, const char* name) { in<QAction>(screen, name).trigger(); }
    /// Names and captions of all menus, in their order.
    static std::string menus(QMainWindow& screen)
    {
        QStringList lines;
        for (const QAction* top : screen.menuBar()->actions()) {
            lines << top->menu()->objectName();
            for (const QAction* entry : top->menu()->actions())
                lines << "  " + entry->objectName() + " " + entry->text();
        }
        return lines.join('\n').toStdString();
    }
};

TEST_F(HydrodataScreens, TheViewerShowsTheTableUnderItsWords)
{
    QMainWindow& screen = viewer();
    EXPECT_EQ(screen.windowTitle(), " Hydrodata Viewer");
    EXPECT_EQ(in<QLabel>(screen, "Label1").text(), "Flows by KK Station Name / Ratio / Plan / JD Simulation");
    EXPECT_EQ(menus(screen), "mnu_file\n"
                             "  mnu_saveselect Save Selection\n"
                             "  mnu_saveCsv Save as CS&V\n"
                             "  Endhydrodata &Return\n"
                             "mnu_edit\n"
                             "  mnu_ToggleRowsandColumns Toggle &Titles of Rows and Columns\n"
                             "  copyhydrodata &Copy\n"
                             "  mnu_centerofMass Hydrograph Center of &Mass\n"
                             "  mnu_HydroGraph Quick Hydro&Graph");
    EXPECT_GE(table().colWidth(1), 10 * 120) << "Time (min)";
    EXPECT_EQ(table().colWidth(3), 2592) << "1.2 times the 18 letters of LONG NAME  1  1  1";
    EXPECT_EQ(table().colAlignment(2), 6);
    for (const QSize size : {QSize(700, 500), QSize(900, 300)}) {
        screen.resize(size);
        QCoreApplication::processEvents();
        auto& grid = in<ResultGrid>(screen, "Grid1");
        EXPECT_EQ(grid.size(), size - QSize(40, 76)) << "less 600 and 1150 twips";
        const QRect words = in<QLabel>(screen, "Label1").geometry();
        EXPECT_LE(std::abs(words.center().x() - grid.geometry().center().x()), 1);
        EXPECT_TRUE(words.top() >= 0 && words.bottom() <= grid.geometry().top());
    }
}

TEST_F(HydrodataScreens, TheTimeColumnsStartWithTheWidthOfFiveLetters)
{
    services.measure.setTwipsPerCharacter(200);
    screens.load("hydrodata");
    EXPECT_EQ(table().colWidth(0), 1000);
    EXPECT_EQ(table().colWidth(1), 1000);
}

TEST_F(HydrodataScreens, EachActivationWidensWhatIsTooNarrowAndNothingElse)
{
    QMainWindow& screen = viewer();
    table().setColWidth(2, 5000);
    table().setColWidth(3, 10);
    shown("Form20");
    EXPECT_EQ(&shown("hydrodata"), &screen);
    EXPECT_EQ(table().colWidth(2), 5000);
    EXPECT_EQ(table().colWidth(3), 2592);
}

TEST_F(HydrodataScreens, CopiesHaveTheirLinesEndedByCrAlone)
{
    QMainWindow& screen = viewer();
    auto& grid = in<ResultGrid>(screen, "Grid1");
    table().select(1, 2, 2, 3);
    trigger(screen, "copyhydrodata");
    EXPECT_EQ(services.clipboard.raw(), "0\t0\r1\t0");
    table().select(2, 2, 3, 2);
    QContextMenuEvent ask(QContextMenuEvent::Mouse, QPoint(30, 30), grid.viewport()->mapToGlobal(QPoint(30, 30)));
    QApplication::sendEvent(grid.viewport(), &ask);
    auto& popup = in<QMenu>(screen, "Popup");
    EXPECT_TRUE(popup.isVisible());
    in<QAction>(popup, "pop_Copy").trigger();
    popup.hide();
    EXPECT_EQ(services.clipboard.raw(), "1\r0");
    trigger(screen, "mnu_ToggleRowsandColumns");
    EXPECT_EQ(table().fixedRows() + table().fixedCols(), 0);
    EXPECT_TRUE(in<QAction>(screen, "mnu_ToggleRowsandColumns").isChecked());
}

TEST_F(HydrodataScreens, TheChartIsAskedForWithTheTableAsItIsSelected)
{
    QMainWindow& screen = viewer();
    table().select(1, 2, 3, 3);
    FlexGrid::Area asked{};
    QObject::connect(desk.get(), &ResultDesk::quickGraphWanted,
                     [&](const FlexGrid& grid) { asked = grid.selection(); });
    trigger(screen, "mnu_HydroGraph");
    EXPECT_EQ(asked, (FlexGrid::Area{1, 2, 3, 3}));
}

TEST_F(HydrodataScreens, TheTipTellsTheUnitOfTheRun)
{
    services.put("checky.dat", "ID\r\nIM\r\nKK  A\r\n");
    auto& grid = in<ResultGrid>(viewer(), "Grid1");
    const QPoint place = grid.cellRect(1, 2).center();
    QHelpEvent ask(QEvent::ToolTip, grid.viewport()->mapFrom(&grid, place), grid.mapToGlobal(place));
    QApplication::sendEvent(grid.viewport(), &ask);
    EXPECT_EQ(QToolTip::text(), "A  1  1  1: 0 m3/s");
    services.dialogs.willAnswer(services.path("table.csv"));
    grid.saveCsv();
    EXPECT_TRUE(
        services.bytes("table.csv")
            .startsWith("Time (hrs),Time (min),A  1  1  1 (m3/s),LONG NAME  1  1  1 (m3/s)\r\n.0000,0,0,0\r\n"));
}

TEST_F(HydrodataScreens, ReturnKeepsTheTableAndClosingForgetsIt)
{
    QMainWindow& screen = viewer();
    int returned = 0;
    QStringList closed;
    QObject::connect(desk.get(), &ResultDesk::returned, [&] { ++returned; });
    QObject::connect(desk.get(), &ResultDesk::closed, [&](const QString& name) { closed << name; });
    trigger(screen, "Endhydrodata");
    EXPECT_FALSE(screen.isVisible());
    EXPECT_TRUE(desk->holdsHydrographs());
    EXPECT_EQ(returned, 1);

    trigger(shown("hydrodata"), "mnu_centerofMass");
    EXPECT_TRUE(screens.isVisible("Form20"));
    window("hydrodata").close();
    QCoreApplication::processEvents();
    EXPECT_FALSE(screens.isLoaded("hydrodata"));
    EXPECT_FALSE(screens.isLoaded("Form11"));
    EXPECT_FALSE(desk->holdsHydrographs());
    EXPECT_EQ(returned, 2);
    EXPECT_EQ(closed, QStringList{"hydrodata"});
}

TEST_F(HydrodataScreens, TheCentersAreCopiedExplainedAndLeft)
{
    viewer();
    ASSERT_TRUE(logic->center_of_mass());
    QMainWindow& list = window("Form20");
    EXPECT_EQ(list.windowTitle(), " Hydrograph Center of Mass");
    EXPECT_GE(logic->Form20Grid.colWidth(0), 18 * 120) << "the whole of the longest label";
    trigger(list, "mnu_copyAll");
    const QString whole = "KK Station\tTime (hrs)\r\n\t\r\nA  1  1  1\t1.0\r\nLONG NAME  1  1  1\t2.0";
    EXPECT_EQ(services.clipboard.raw(), whole);
    logic->Form20Grid.select(2, 0, 2, 1);
    trigger(list, "mnu_copy");
    EXPECT_EQ(services.clipboard.raw(), "A  1  1  1\t1.0");
    trigger(list, "pop_copyAll");
    EXPECT_EQ(services.clipboard.raw(), whole);

    QMainWindow& working = shown("Form11");
    EXPECT_EQ(working.windowTitle(), " Center of Mass");
    EXPECT_EQ(in<QLabel>(working, "Label1").text(), "Center of Mass by KK Station Name / Ratio / Plan / JD Simulation");
    logic->Form11Grid.select(1, 2, 2, 2);
    trigger(working, "mnu_copy");
    EXPECT_EQ(services.clipboard.raw(), "A  1  1  1\r\n1.0");
    for (QMainWindow* each : {&list, &working}) {
        services.dialogs.willAnswer(Button::Ok);
        trigger(*each, "mnu_assistance");
        EXPECT_EQ(services.dialogs.texts().back(),
                  "The Time Value Center of Mass is computed to be the Sum of (Q cfs) x (t sec) / (Sum Q cfs)");
    }

    bool returned = false;
    QObject::connect(desk.get(), &ResultDesk::returned, [&] { returned = true; });
    trigger(list, "mnu_return");
    EXPECT_FALSE(list.isVisible());
    EXPECT_FALSE(returned) << "the table of hydrographs is still there";
    screens.load("hydrodata")->hideScreen();
    working.close();
    EXPECT_FALSE(working.isVisible());
    EXPECT_TRUE(returned);
    EXPECT_EQ(logic->Form11Grid.textMatrix(2, 2), "1.0") << "kept until the next run";
}

} // namespace
} // namespace kalvo
