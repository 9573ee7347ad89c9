// SPDX-License-Identifier: GPL-3.0-or-later
#include "run/RunCommands.h"

#include "TapeText.h"
#include "run/DebugOutput.h"
#include "tests/deck/FakeEditBox.h"
#include "tests/support/GridText.h"
#include "tests/support/ScriptedServices.h"

#include <QCoreApplication>
#include <QSignalSpy>

#include <gtest/gtest.h>

namespace kalvo {
namespace {

const QByteArray kGoodReport = "1***\r\n\r\n *** NORMAL END OF HEC-1 ***\r\n";
const QByteArray kBadReport = " *** HEC1 ERROR 99 ***\r\n *** HEC-1 ERROR 98 ***\r\n";
const QString kFiveLines =
    "HEC-1 did not Run properly\r\nCheck HEC-1 Input Data!\r\nThis type of error is often generated "
    "by incorrect or\r\nincomplete data in the Input File\r\n\r\n";
const QString kTryDebug =
    kFiveLines + "Note any Errors in the Hec-1 Output or try running in Debug Screen mode (Tools Menu)";
const QString kSeeDebug = kFiveLines + "Note any Errors in the Hec-1 Output as well as the DeBug screen";

/// A screen that tells what was done to it.
struct LoggedScreen : Screen
{
    LoggedScreen(QString screenName, QStringList& log) : name(std::move(screenName)), did(log) {}
    void showScreen() override
    {
        did << name + " shown";
        visible = true;
    }
    void hideScreen() override { visible = false; }
    bool isScreenVisible() const override { return visible; }
    void repaintScreen() override { did << name + " painted"; }
    QString name;
    QStringList& did;
    bool visible = false;
};

struct RunCommandsTest : testing::Test
{
    ScriptedServices services;
    StatusPanels panels;
    Commands commands;
    Screens screens;
    Deck deck{services, panels};
    FakeEditBox box{deck};
    QStringList did;
    std::unique_ptr<RunCommands> run;

    RunCommandsTest()
    {
        for (const char* name : {"graph", "viewhec1", "graphdata", "mnu_hydrodata", "mnu_runoffvolumes",
                                 "mnu_peakflows", "mnu_tabular", "mnu_saveAll"})
            commands.setEnabled(QString::fromLatin1(name), false);
        deck.setCards({"ID a deck", "IT     5", "KK  OUT", "IT    15", "ZZ", "KM parked"});
        makeRun();
    }
    ~RunCommandsTest() override { screens.unloadAll(); }
    void makeRun()
    {
        EnginePlaces places;
        places.overridden = QCoreApplication::applicationFilePath();
        run = std::make_unique<RunCommands>(deck, services, commands, panels, screens, places);
    }
    void know(const char* screen, bool loaded = true)
    {
        const QString name = QString::fromLatin1(screen);
        screens.add(name, [this, name] { return std::make_unique<LoggedScreen>(name, did); });
        if (loaded)
            screens.show(name);
        did.clear();
    }
    bool on(const char* name) const { return commands.isEnabledFlag(QString::fromLatin1(name)); }
    QStringList told() const { return services.dialogs.texts(); }
    QString panel7() const { return panels.text(7); }
    void tell(int boxes)
    {
        for (int i = 0; i < boxes; ++i)
            services.dialogs.willAnswer(Button::Ok);
    }
};

// -- A good run ------------------------------------------------------------------------------------------------------

TEST_F(RunCommandsTest, GoodRunWritesTheDeckStartsHec1AndOpensTheOutput)
{
    services.put("CHECKY.OUT", kGoodReport);
    services.put("TAPE21", "old flows");
    services.process.will([this](const ProcessStart& start) {
        EXPECT_TRUE(panels.isWaiting());
        EXPECT_FALSE(on("viewhec1"));
        EXPECT_EQ(services.bytes("TAPE21"), "");
        EXPECT_TRUE(services.folder.spellings("checky.out").isEmpty()) << "in no spelling";
        EXPECT_TRUE(services.bytes("checky.dat").startsWith("ID a deck"));
        EXPECT_FALSE(services.bytes("checky.dat").contains("parked")) << "the grid was trimmed to ZZ";
        return ScriptedChildProcess::writes({{"checky.out", kGoodReport}})(start);
    });
    QSignalSpy began(&run->events, &RunEvents::aboutToRun), ended(&run->events, &RunEvents::finished);
    EXPECT_TRUE(commands.run("runhec"));

    ASSERT_EQ(services.process.started().size(), 1u);
    const ProcessStart& start = services.process.started().front();
    EXPECT_EQ(start.program, QCoreApplication::applicationFilePath());
    EXPECT_EQ(start.arguments, (QStringList{"INPUT=checky.dat", "OUTPUT=checky.out", "DSS=checky.dss"}));
    EXPECT_EQ(start.workingFolder, services.folder.path());
    EXPECT_EQ(panel7(), "HEC-1 Ran O.K. at 4:05:06 AM");
    EXPECT_TRUE(run->state.hecRanOK);
    EXPECT_GT(run->state.runResult, 0);
    EXPECT_EQ(run->state.Text2.trimmed(), "15") << "the last IT card";
    EXPECT_FALSE(run->state.ZWpresent);
    EXPECT_FALSE(panels.isWaiting());
    for (const char* name : {"graph", "viewhec1", "graphdata"})
        EXPECT_TRUE(on(name)) << name;
    for (const char* name : {"mnu_hydrodata", "mnu_runoffvolumes", "mnu_peakflows", "mnu_tabular"})
        EXPECT_FALSE(on(name)) << name << " waits for the graph command";
    EXPECT_EQ(began.count(), 1);
    EXPECT_EQ(ended.count(), 1);
    EXPECT_TRUE(told().isEmpty());
}

TEST_F(RunCommandsTest, ThePanelTellsTheRunAndKeepsWhatTheWritingToldAsItsTip)
{
    deck.Grid1.setTextMatrix(2, 3, "123456789");
    services.process.will([this](const ProcessStart& start) {
        EXPECT_EQ(panel7(), "Running Hec-1");
        EXPECT_TRUE(panels.toolTip(7).startsWith("1 card(s) behind the ZZ card")) << panels.toolTip(7).toStdString();
        EXPECT_TRUE(panels.toolTip(7).contains("push the rest of their line: line(s) 2"));
        return ScriptedChildProcess::writes({{"checky.out", kGoodReport}})(start);
    });
    run->runhec_Click();
    EXPECT_TRUE(panel7().startsWith("HEC-1 Ran O.K. at ")) << panel7().toStdString();
    EXPECT_TRUE(panels.toolTip(7).contains("behind the ZZ card")) << "still there when the run is over";

    deck.Grid1.setTextMatrix(2, 3, "1");
    services.process.will(ScriptedChildProcess::writes({{"checky.out", kGoodReport}}));
    run->runhec_Click();
    EXPECT_EQ(panels.toolTip(7), "") << "of this run there is nothing to tell";
}

TEST_F(RunCommandsTest, ARefusedFreeFormatLeavesTheLastRunsFiles)
{
    deck.setCards({"*FREE", "KK OUT", "ZZ"});
    services.put("checky.out", kGoodReport);
    services.dialogs.willAnswer(Button::Cancel);
    run->runhec_Click();
    EXPECT_TRUE(services.process.started().empty());
    EXPECT_EQ(services.bytes("checky.out"), kGoodReport);
}

TEST_F(RunCommandsTest, TheEditBoxGoesIntoTheDeckFirst)
{
    deck.setCards({"ID a deck"});
    deck.Grid1.setCursor(2, 1);
    deck.setEditorActive(true);
    box.setShown(true);
    box.setText("ZZ");
    services.process.willWrite({{"checky.out", kGoodReport}});
    run->runhec_Click();
    EXPECT_TRUE(run->state.hecRanOK) << "a ZZ that was just typed counts";
}

TEST_F(RunCommandsTest, ResultScreensGoAndComparisonScreensArePaintedAgain)
{
    for (const char* name : {"Form11", "GRAPHER", "Form10", "hydrodata", "frmCompare", "frmMulti", "SVols"})
        know(name);
    services.process.willWrite({{"checky.out", kGoodReport}});
    run->runhec_Click();
    for (const char* name : {"Form11", "GRAPHER", "Form10", "hydrodata"})
        EXPECT_FALSE(screens.isLoaded(name)) << name;
    EXPECT_EQ(did, (QStringList{"SVols painted", "frmCompare painted", "frmMulti painted"}));
}

TEST_F(RunCommandsTest, PeakFlowMonitorComesUpAndGivesTheFocusBack)
{
    know("Form6", false);
    commands.setChecked("mnu_peakflowMonitor", true);
    QSignalSpy focus(&run->events, &RunEvents::focusWanted);
    for (int i = 0; i < 2; ++i) {
        services.process.willWrite({{"checky.out", kGoodReport}});
        run->runhec_Click();
    }
    EXPECT_EQ(did, (QStringList{"Form6 shown", "Form6 painted"}));
    EXPECT_EQ(focus.count(), 2);
}

// -- Runs that do not come to be -------------------------------------------------------------------------------------

TEST_F(RunCommandsTest, WithoutZzNothingIsRun)
{
    deck.setCards({"ID a deck", "zz", " ZZ"});
    tell(2);
    run->runhec_Click();
    EXPECT_EQ(panel7(), "Run with Insufficient Data Attempted");
    run->mnu_rundebug();
    EXPECT_EQ(told(), (QStringList{"You Need a ZZ Card to End the Data! Enter Data Now:", "Enter Data Now:"}));
    EXPECT_TRUE(services.process.started().empty());
    EXPECT_FALSE(on("viewhec1"));
    EXPECT_FALSE(run->isRunning());
}

TEST_F(RunCommandsTest, AHalfWrittenDeckIsNotRun)
{
    deck.Grid1.setTextMatrix(3, 1, "KKK");
    tell(1);
    run->runhec_Click();
    ASSERT_EQ(told().size(), 1);
    EXPECT_TRUE(told().first().startsWith("Error in Data at Savefile")) << told().first().toStdString();
    EXPECT_TRUE(services.process.started().empty());
    EXPECT_FALSE(panels.isWaiting());
}

TEST_F(RunCommandsTest, NoHec1IsToldWithThePartOfTheOldWords)
{
    services.process.willNotStart("'hec1' does not exist.");
    tell(1);
    run->runhec_Click();
    EXPECT_EQ(told(), QStringList{"Error Running HEC1E.EXE Try Again:"});
    EXPECT_EQ(run->state.runResult, -1);
    EXPECT_TRUE(panel7().contains("'hec1' does not exist.")) << "why stands in the status bar";
    EXPECT_FALSE(on("viewhec1")) << "as the steps ahead left it";
    EXPECT_FALSE(panels.isWaiting());
}

TEST_F(RunCommandsTest, AProgramFolderThatIsGoneIsTold)
{
    ASSERT_TRUE(QDir(services.folder.path()).removeRecursively());
    tell(1);
    run->runhec_Click();
    EXPECT_TRUE(told().value(0).startsWith("HEC-1 cannot be run."));
    EXPECT_TRUE(services.process.started().empty());
}

TEST_F(RunCommandsTest, ASecondRunIsIgnoredWhileOneIsGoing)
{
    deck.setCards({"KK  OUT", "ZZ"});
    deck.trimtozz();
    services.process.willWriteAfter(
        [this] {
            EXPECT_TRUE(run->isRunning());
            EXPECT_EQ(panel7(), "Running Hec-1");
            run->runhec_Click();
            run->mnu_rundebug();
        },
        {{"checky.out", kGoodReport}});
    run->runhec_Click();
    EXPECT_EQ(services.process.started().size(), 1u);
    EXPECT_TRUE(run->state.hecRanOK);
}

// -- Bad ends --------------------------------------------------------------------------------------------------------

TEST_F(RunCommandsTest, ErrorTextWithStatusZeroIsAFailureThatIsTold)
{
    services.put("HECErrorDEscriptions.txt", "99,First,one\r\n98,Second,two\r\n");
    services.process.willWrite({{"checky.out", kBadReport}});
    tell(1);
    services.dialogs.willAnswer(Button::Ok, [this] {
        EXPECT_FALSE(run->state.hecRanOK);
        EXPECT_FALSE(on("viewhec1"));
    });
    run->runhec_Click();
    EXPECT_EQ(told(), (QStringList{"\r\nFirst\r\none\r\nSecond\r\ntwo", kTryDebug}));
    EXPECT_EQ(services.dialogs.shown()[0].title, "Kalvo Error in HEC-1");
    EXPECT_EQ(services.dialogs.shown()[0].icon, Icon::Warning);
    EXPECT_EQ(panel7(), "HEC-1 Failed!");
    EXPECT_EQ(run->state.outcome.verdict, RunOutcome::Verdict::EndedWithErrors);
    EXPECT_TRUE(run->state.hecRanOK) << "told, so that the output can be viewed";
    EXPECT_TRUE(on("viewhec1"));
    run->CheckNormalEndLite();
    EXPECT_FALSE(run->state.hecRanOK);
}

TEST_F(RunCommandsTest, ManyErrorsAreOnlySaidToBeNumerous)
{
    services.put("HECErrorDEscriptions.txt", "99,Title,\"" + QByteArray(988, 'x') + "\"\r\n");
    services.put("checky.out", kBadReport.left(24).repeated(2));
    tell(2);
    run->findHecError(); // 2 x 999 characters
    services.put("checky.out", kBadReport.left(24).repeated(3));
    run->findHecError();
    EXPECT_EQ(told().value(0).size(), 2 * (2 + 5 + 2 + 988));
    EXPECT_EQ(told().value(1), "Errors are Numerous  -Check Output");
}

TEST_F(RunCommandsTest, ARunThatWritesNothingIsNotJudgedByTheOneBefore)
{
    services.put("checky.out", kGoodReport);
    run->state.hecRanOK = true;
    services.process.willEndAtOnce();
    tell(1);
    run->runhec_Click();
    EXPECT_EQ(run->state.outcome.verdict, RunOutcome::Verdict::WroteNothing);
    EXPECT_EQ(told(), QStringList{kTryDebug});
    EXPECT_EQ(panel7(), "HEC-1 Failed!");
}

TEST_F(RunCommandsTest, AKilledHec1IsAFailureWhateverItsReportSays)
{
    services.process.willBeKilled({{"checky.out", kGoodReport}});
    tell(1);
    run->runhec_Click();
    EXPECT_EQ(run->state.outcome.verdict, RunOutcome::Verdict::Crashed);
    EXPECT_EQ(told(), QStringList{kTryDebug});
}

TEST_F(RunCommandsTest, AHangingHec1EndsByTheUsersWill)
{
    services.process.willHang([this] { run->cancelRun(); }, {{"checky.out", "as far as it came"}});
    run->runhec_Click();
    EXPECT_EQ(run->state.outcome.verdict, RunOutcome::Verdict::Stopped);
    EXPECT_EQ(panel7(), "HEC-1 was stopped before its end.");
    EXPECT_FALSE(run->state.hecRanOK);
    EXPECT_TRUE(on("viewhec1")) << "how far it came may show why";
    EXPECT_FALSE(on("graphdata"));
    EXPECT_FALSE(panels.isWaiting());
    services.process.willWrite({{"checky.out", kGoodReport}});
    run->runhec_Click();
    EXPECT_TRUE(run->state.hecRanOK) << "the next run goes as ever";
}

TEST_F(RunCommandsTest, AHugeReportIsJudgedLikeAnyOther)
{
    services.process.willWriteHuge("checky.out", qint64(1) << 28, {{"checky.out", kGoodReport}});
    run->runhec_Click();
    EXPECT_TRUE(run->state.outcome.isNormalEnd());
}

TEST_F(RunCommandsTest, NormalEndInACommentCardSetsTheFlagButNotTheVerdict)
{
    services.process.willWrite({{"checky.out", "   5  KM  *** NORMAL END OF HEC-1 ***\r\nSTOP\r\n"}});
    run->runhec_Click();
    EXPECT_TRUE(run->state.hecRanOK);
    EXPECT_EQ(run->state.outcome.verdict, RunOutcome::Verdict::EndedWithErrors);
    EXPECT_TRUE(run->state.outcome.text().contains("listing of a card"));
}

TEST_F(RunCommandsTest, LookingForTheNormalEndWithoutAReportChangesNothing)
{
    run->state.hecRanOK = true;
    panels.set(7, "as before");
    run->chknormalend();
    EXPECT_TRUE(run->state.hecRanOK);
    EXPECT_EQ(panel7(), "as before");
    run->CheckNormalEndLite();
    EXPECT_FALSE(run->state.hecRanOK);
    services.put("checky.out", kGoodReport);
    run->chknormalend();
    EXPECT_EQ(panel7(), "HEC-1 Ran O.K. at 4:05:06 AM");
    run->state.hecRanOK = false;
    run->chkoutisopen();
    EXPECT_TRUE(run->state.hecRanOK);
}

TEST_F(RunCommandsTest, OrdinatesOfTheLastReport)
{
    EXPECT_EQ(run->getnumords(), "") << "without a report: silently";
    services.put("checky.out", "   NQ   300  NUMBER OF HYDROGRAPH ORDINATES\r\n");
    EXPECT_EQ(run->getnumords(), "300");
    services.put("checky.out", kGoodReport);
    tell(1);
    EXPECT_EQ(run->getnumords(), "");
    EXPECT_EQ(told(), QStringList{"Check IT Card"});
}

// -- In a window, and with the debug screen --------------------------------------------------------------------------

TEST_F(RunCommandsTest, InAWindowItIsJudgedAfterThreeSeconds)
{
    commands.run("mnu_winhec");
    EXPECT_TRUE(commands.isChecked("mnu_winhec"));
    services.process.willWrite({{"checky.out", kGoodReport}});
    run->runhec_Click();
    EXPECT_TRUE(services.process.started().front().inWindow);
    EXPECT_EQ(services.clock.waits(), std::vector<int>{3000});
    EXPECT_TRUE(run->state.hecRanOK);
    commands.run("mnu_winhec");
    EXPECT_FALSE(commands.isChecked("mnu_winhec"));
}

TEST_F(RunCommandsTest, DebugRunShowsTheConsoleAheadOfTheVerdict)
{
    know("frmDebugOutput", false);
    commands.setEnabled("runhec", false);
    services.process.willWrite({{"checky.out", kBadReport}, {"kalvodebugoutput.txt", "one,two\r\nthree\r\n"}});
    services.dialogs.willAnswer(Button::Ok, [this] { EXPECT_EQ(did, QStringList{"frmDebugOutput shown"}); });
    tell(1);
    services.put("HECErrorDEscriptions.txt", "99,First,one\r\n");
    run->mnu_rundebug();
    EXPECT_EQ(services.process.started().front().outputFile, "kalvodebugoutput.txt");
    EXPECT_EQ(told().last(), kSeeDebug);
    EXPECT_TRUE(run->state.hecRanOK);
    for (const char* name : {"graph", "viewhec1", "graphdata", "runhec"})
        EXPECT_TRUE(on(name)) << name;

    DebugOutput output;
    EXPECT_TRUE(output.read(services.path("kalvodebugoutput.txt")));
    EXPECT_EQ(output.List1(), (QStringList{"   one", "   two", "   three"}));
    EXPECT_FALSE(output.read(services.path("none")));
    EXPECT_TRUE(output.List1().isEmpty());
}

// -- Graph -----------------------------------------------------------------------------------------------------------

struct GraphTest : RunCommandsTest
{
    const QString kRemedy =
        " Error opening Tape21 from HEC-1 - Possible Remedy is to Remove any *FREE Lines or there is no "
        "Graph Data in the Tape21 for this Run ";
};

TEST_F(GraphTest, IsACommandOnlyWhereItsScreenIs)
{
    EXPECT_FALSE(commands.has("graph"));
    know("GRAPHER", false);
    makeRun();
    EXPECT_TRUE(commands.has("graph"));
}

TEST_F(GraphTest, ReadsTheTablesAndOpensTheResultCommands)
{
    know("GRAPHER");
    services.put("checky.out", kGoodReport);
    services.put("TAPE21", QByteArray::fromStdString(risingStation({"SUB1"}, 3, 1)));
    EXPECT_TRUE(run->graph());
    EXPECT_EQ(did, QStringList{"GRAPHER shown"});
    EXPECT_EQ(run->tables.peakTable.textMatrix(1, 1), "3");
    for (const char* name : {"mnu_hydrodata", "mnu_runoffvolumes", "mnu_peakflows", "mnu_tabular", "mnu_saveAll"})
        EXPECT_TRUE(on(name)) << name;
    EXPECT_EQ(panels.progress(), -1);
}

TEST_F(GraphTest, ATimeStepTooWideForTheHeaderComesFromTheReport)
{
    know("GRAPHER");
    services.put("TAPE21", QByteArray::fromStdString(risingStation({"SUB1", "***"}, 3, 1)));
    services.put("checky.out", "     NMIN      1440  MINUTES IN COMPUTATION INTERVAL\r\n" + kGoodReport);
    EXPECT_TRUE(run->graph());
    EXPECT_EQ(run->tables.hydrographTable.textMatrix(3, 1), "2880");
    EXPECT_EQ(run->tables.hydrographTable.textMatrix(3, 0), "48.0000");
    services.put("checky.out", kGoodReport);
    EXPECT_TRUE(run->graph());
    EXPECT_TRUE(panel7().contains("all times of the tables are 0"));
}

TEST_F(GraphTest, AStationThatCutsTheOthersIsNamed)
{
    know("GRAPHER");
    services.put("checky.out", kGoodReport);
    const auto tape = [](int first, int second) {
        return QByteArray::fromStdString(risingStation({"SUB1"}, first, 1) + risingStation({"SUB2"}, second, 1));
    };
    services.put("TAPE21", tape(3, 4));
    EXPECT_TRUE(run->graph());
    EXPECT_FALSE(panel7().contains("SUB2"));
    services.put("TAPE21", tape(4, 3));
    EXPECT_TRUE(run->graph());
    EXPECT_EQ(run->tables.hydrographTable.rows(), 4);
    EXPECT_TRUE(panel7().contains("station SUB2 has fewer ordinates"));
}

TEST_F(GraphTest, LooksForTheNormalEndOnceMore)
{
    services.put("checky.out", kBadReport);
    services.put("TAPE21", QByteArray::fromStdString(risingStation({"SUB1"}, 3, 1)));
    run->state.hecRanOK = true;
    tell(1);
    EXPECT_FALSE(run->graph());
    EXPECT_EQ(told(), QStringList{"Hec-1 Problem with Input Data!"});
    EXPECT_EQ(run->tables.peakTable.textMatrix(1, 1), "");
}

TEST_F(GraphTest, EmptyAndBrokenTapesAreTold)
{
    know("GRAPHER", false);
    services.put("checky.out", kGoodReport);
    services.put("TAPE21", "");
    tell(3);
    EXPECT_FALSE(run->graph());
    EXPECT_EQ(told().last(), "There is no Graphing Data for this HEC-1 Run!");
    EXPECT_FALSE(screens.isLoaded("GRAPHER"));

    commands.setEnabled("runhec", false);
    services.put("TAPE21", QByteArray::fromStdString(risingStation({"SUB1"}, 3, 1)) + "\r\n");
    EXPECT_FALSE(run->graph());
    EXPECT_TRUE(told().last().startsWith("Line 3 of TAPE21")) << told().last().toStdString();
    EXPECT_TRUE(told().last().endsWith(kRemedy));
    EXPECT_TRUE(on("runhec"));
    EXPECT_FALSE(on("mnu_hydrodata"));
    EXPECT_EQ(panels.progress(), -1);
    EXPECT_EQ(run->tables.hydrographTable.textMatrix(3, 2), "3") << "what was read stays";

    services.folder.remove("TAPE21");
    EXPECT_FALSE(run->graph());
    EXPECT_TRUE(told().last().endsWith(kRemedy));
}

} // namespace
} // namespace kalvo
