// SPDX-License-Identifier: GPL-3.0-or-later
// The table of hydrographs without its screen: what the commands of a page do with it, and who goes with whom.
#include "results/HydrodataCommands.h"

#include "tests/run/TapeText.h"
#include "tests/support/GridText.h"
#include "tests/support/ScriptedServices.h"

#include "run/Tape21Tables.h"

#include <gtest/gtest.h>

namespace kalvo {
namespace {

/// A screen of which only the comings and goings matter.
struct BareScreen : Screen
{
    void showScreen() override { shown = true; }
    void hideScreen() override { shown = false; }
    bool isScreenVisible() const override { return shown; }
    bool shown = false;
};

struct Hydrodata : testing::Test
{
    ScriptedServices services;
    Screens screens;
    std::shared_ptr<ResultDesk> desk =
        std::make_shared<ResultDesk>(services.services, screens, std::make_shared<ResultTables>());
    std::shared_ptr<HydrodataDesk> hydrodata;
    Commands commands;
    StatusPanels panels;
    std::unique_ptr<HydrodataCommands> group;
    std::string tape; ///< of the last run
    bool hecRanOK = true;
    int reads = 0;
    int quickGraphsDropped = 0;

    Hydrodata()
    {
        desk->tables().follow(screens);
        for (const char* name :
             {"hydrodata", "Form11", "Form20", "FrmRunoffVolumes", "Form10", "Form15", "Form9", "GRAPHER"})
            screens.add(name, [] { return std::make_unique<BareScreen>(); });
        hydrodata = std::make_shared<HydrodataDesk>(desk);
        group = std::make_unique<HydrodataCommands>(
            hydrodata, commands, panels, HydrodataSource{[this] { return graph(); }, [this] { return hecRanOK; }});
        QObject::connect(desk.get(), &ResultDesk::quickGraphsUnwanted, [this] { ++quickGraphsDropped; });
    }

    bool graph()
    {
        ++reads;
        screens.show("GRAPHER");
        if (fillTables(readTape21(tape), desk->tables(), services.measure))
            return false;
        desk->tables().deckName = "storm";
        desk->tables().tellChanged();
        desk->tables().tellFilled();
        return true;
    }
    FlexGrid& table() { return hydrodata->table(); }
    bool visible(const char* screen) { return screens.isVisible(screen); }
    QStringList told() { return services.dialogs.texts(); }
};

TEST_F(Hydrodata, AllHydrographsAreCopiedAsTheyStandBehindTheGraph)
{
    tape = station({"A"}, {1.5, 20, 3});
    services.clipboard.setText("before");
    EXPECT_TRUE(commands.run("mnu_CopyHydrographs"));
    EXPECT_EQ(services.clipboard.raw(),
              "Time (hrs)\tTime (min)\tA  1  1  1\r.0000\t0\t1.5\r.0833\t5\t20\r.1667\t10\t3");
    EXPECT_TRUE(visible("GRAPHER"));
    EXPECT_FALSE(visible("hydrodata"));
    EXPECT_EQ(table().selection(), (FlexGrid::Area{0, 0, 3, 2}));
}

TEST_F(Hydrodata, MoreThan36000ValuesAreAskedFor)
{
    tape = risingStation({"A", "5", "1", "1", "3"}, 9000, 3); // 9,000 x 4, the minutes counted too
    EXPECT_TRUE(commands.run("mnu_CopyHydrographs"));
    EXPECT_EQ(services.clipboard.raw().count('\r'), 9000) << "36,000 are not asked for";

    tape = risingStation({"A", "5", "1", "1", "6"}, 5143, 6); // 36,001
    const auto question = [this](Button answer) {
        services.clipboard.setText("before");
        services.dialogs.willAnswer(answer);
        EXPECT_TRUE(commands.run("mnu_CopyHydrographs"));
        return services.clipboard.raw().count('\r');
    };
    EXPECT_EQ(question(Button::No), 0);
    EXPECT_EQ(services.clipboard.raw(), "before") << "not even cleared";
    EXPECT_EQ(question(Button::Yes), 5143);
    const auto& box = services.dialogs.last();
    EXPECT_EQ(box.title, "Copy All Hydrographs to Clipboard");
    EXPECT_EQ(box.buttons, Buttons::YesNo);
    EXPECT_EQ(box.text, "The number of data points of the hydrographs you selected are 36001.  This large amount of "
                        "data may affect you computer's clipboard memory.\r\n\r\nDo you want to Continue Copying this "
                        "data to the Clipboard?");
    EXPECT_FALSE(panels.isWaiting());
}

TEST_F(Hydrodata, AReadThatFailedCopiesNothing)
{
    tape = station({"A", "5", "1", "1", "1", "9"}, {1, 2}); // ends ahead of its ordinates
    services.clipboard.setText("before");
    commands.run("mnu_CopyHydrographs");
    EXPECT_EQ(services.clipboard.raw(), "before");
    commands.run("center_of_mass");
    EXPECT_FALSE(screens.isLoaded("Form11"));
    commands.run("mnu_hydrodata");
    EXPECT_FALSE(visible("hydrodata"));
}

TEST_F(Hydrodata, TheKeyReadsTheRunAndShowsTheCentersAlone)
{
    tape = station({"A", "60"}, {0, 1, 0});
    hecRanOK = false;
    commands.run("center_of_mass");
    EXPECT_EQ(reads, 0) << "nothing was run yet";
    hecRanOK = true;
    commands.run("center_of_mass");
    EXPECT_EQ(gridText(hydrodata->Form20Grid), "KK Station|Time (hrs)\n|\nA  1  1  1|1.0");
    EXPECT_TRUE(visible("Form20"));
    for (const char* other : {"GRAPHER", "hydrodata", "Form11"}) {
        EXPECT_FALSE(visible(other)) << other;
        EXPECT_TRUE(screens.isLoaded(other)) << other;
    }
}

TEST_F(Hydrodata, AShortHydrographEndsTheCentersWithoutAWord)
{
    tape = risingStation({"SHORT"}, 2, 1) + risingStation({"LONG"}, 3, 1);
    ASSERT_TRUE(graph());
    EXPECT_FALSE(hydrodata->center_of_mass());
    EXPECT_FALSE(visible("Form20"));
    EXPECT_TRUE(told().isEmpty());
    EXPECT_EQ(hydrodata->Form11Grid.textMatrix(1, 3), "LONG  1  1  1");
    EXPECT_EQ(hydrodata->Form11Grid.textMatrix(2, 2), "");
}

TEST_F(Hydrodata, WhatHangsOnTheTableGoesWithIt)
{
    tape = station({"A"}, {1, 2, 3});
    commands.run("mnu_hydrodata");
    EXPECT_TRUE(visible("hydrodata"));
    for (const char* name : {"FrmRunoffVolumes", "Form10", "Form15", "Form9"})
        screens.show(name);
    hydrodata->center_of_mass();
    screens.unload("hydrodata");
    for (const char* name : {"FrmRunoffVolumes", "Form10", "Form11", "Form15"})
        EXPECT_FALSE(screens.isLoaded(name)) << name;
    EXPECT_TRUE(screens.isLoaded("Form9"));
    EXPECT_TRUE(visible("Form20"));
    EXPECT_EQ(quickGraphsDropped, 1);
    EXPECT_EQ(gridText(hydrodata->Form11Grid), "|\n|");
    EXPECT_EQ(reads, 1);
    commands.run("mnu_hydrodata");
    EXPECT_EQ(reads, 2) << "the table went with its screen and is read again";
    EXPECT_EQ(table().textMatrix(3, 2), "3");
}

TEST_F(Hydrodata, ReturnHidesTheTableAndTakesTheChartsAlong)
{
    tape = station({"A"}, {1, 2, 3});
    commands.run("mnu_hydrodata");
    int returned = 0;
    QObject::connect(desk.get(), &ResultDesk::returned, [&] { returned += visible("hydrodata") ? 100 : 1; });
    hydrodata->Endhydrodata();
    EXPECT_EQ(returned, 1) << "the main screen comes forward once the table is hidden";
    EXPECT_EQ(quickGraphsDropped, 1);
    EXPECT_TRUE(screens.isLoaded("hydrodata")) << "its data stay";
}

TEST_F(Hydrodata, SavesAskUnderTheDecksNameAndTellWhatFailed)
{
    tape = station({"A"}, {1, 2, 3});
    graph();
    table().setCursor(1, 2);
    services.dialogs.willAnswer(Button::Ok);
    hydrodata->mnu_saveselect();
    EXPECT_EQ(told(), QStringList{"Need a Selection!"});

    table().select(1, 2, 2, 2);
    services.dialogs.willAnswer(services.path("out.hyd"));
    hydrodata->mnu_saveselect();
    const FileDialog asked = services.dialogs.last().file;
    EXPECT_EQ(asked.title, "Save Selected Hydrodata");
    EXPECT_EQ(asked.filter, "Data Files(*.hyd)|*.hyd|Text Files (*.txt)|*.txt");
    EXPECT_EQ(asked.filterIndex, 2);
    EXPECT_EQ(asked.defaultExtension, ".txt");
    EXPECT_EQ(asked.initialName, "storm");
    EXPECT_TRUE(asked.overwritePrompt);
    EXPECT_TRUE(services.bytes("out.hyd").startsWith("Time Hrs      A  1  1  1    \r.0000"));

    hydrodata->center_of_mass();
    services.dialogs.willAnswer(services.path("out.wcm"));
    hydrodata->mnu_save();
    EXPECT_EQ(services.dialogs.last().title, "Save Center of Mass Data");
    EXPECT_TRUE(services.bytes("out.wcm").startsWith("Center of Mass\r\nHEC-1 Data: storm\r\n\r\nKK Station\t"));

    for (const auto save : {&HydrodataDesk::mnu_saveselect, &HydrodataDesk::mnu_save}) {
        services.dialogs.willCancel();
        (hydrodata.get()->*save)();
        services.dialogs.willAnswer(services.path("no/such/folder"));
        services.dialogs.willAnswer(Button::Ok);
        (hydrodata.get()->*save)();
        EXPECT_EQ(services.dialogs.last().icon, Icon::Warning);
        EXPECT_TRUE(told().back().contains("no/such/folder")) << told().back().toStdString();
    }
}

TEST_F(Hydrodata, TheUnitIsThatOfTheDeckThatRan)
{
    tape = station({"A"}, {1, 2, 3});
    services.put("checky.dat", "ID x\r\nIT  5\r\nKK  A\r\nZZ\r\n");
    graph();
    EXPECT_EQ(desk->flowUnit(), "cfs");
    services.put("checky.dat", "ID x\r\nIM\r\nIT  5\r\nKK  A\r\nZZ\r\n");
    EXPECT_EQ(desk->flowUnit(), "cfs") << "until that deck is read too";
    graph();
    EXPECT_EQ(desk->flowUnit(), "m3/s");
}

} // namespace
} // namespace kalvo
