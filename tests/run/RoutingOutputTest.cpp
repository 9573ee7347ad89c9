// SPDX-License-Identifier: GPL-3.0-or-later
// The readers behind the viewers of reservoir routings.
#include "run/RoutingOutput.h"

#include "run/DetailedRoutings.h"
#include "run/RoutingCommands.h"
#include "run/RunFolder.h"
#include "run/SummaryReport.h"
#include "tests/support/GridText.h"
#include "tests/support/ScriptedServices.h"

#include <QElapsedTimer>

#include <gtest/gtest.h>

namespace kalvo {
namespace {

constexpr auto kStages = "FLOW_AND_STAGE_STORAGE.TXT";
constexpr auto kNoData = "No Data was provided for Reservoir Routings.\r\n"
                         "The ST Card is Required in the Routing to use this Routine";
const QByteArray kHeading = "        PEAK FLOW AND STAGE (END-OF-PERIOD) SUMMARY\r\n";
const QByteArray kRouting = " ROUTED TO\r\na\r\nb\r\nc\r\nd\r\ne\r\nf\r\nbehind\r\n";
const QByteArray kPump = " PUMP FLOW TO\r\n1\r\n2\r\n3\r\n4\r\n5\r\n6\r\n7\r\n8\r\n9\r\n10\r\nbehind\r\n";

QByteArray report(const char* name)
{
    QString why;
    const auto bytes =
        readFile(QStringLiteral(KALVO_SOURCE_DIR "/tests/run/reports/") + QString::fromLatin1(name), &why);
    EXPECT_TRUE(bytes) << why.toStdString();
    return bytes.value_or(QByteArray());
}

// -- The summary -----------------------------------------------------------------------------------------------------

struct Listed
{
    const char* name;
    QByteArray report;
    const char* List2; ///< joined by '|' behind the two empty lines
};

class RoutingsOf : public testing::TestWithParam<Listed>
{
};

TEST_P(RoutingsOf, AReport)
{
    ScriptedServices services;
    RoutingOutput output = getrouting(services.put("checky.out", GetParam().report));
    EXPECT_TRUE(output.canBeRead);
    EXPECT_FALSE(output.isCut);
    ASSERT_GE(output.List2.size(), 2);
    EXPECT_TRUE(output.List2.takeFirst().isEmpty() && output.List2.takeFirst().isEmpty());
    EXPECT_EQ(output.List2.join('|'), GetParam().List2);
}

INSTANTIATE_TEST_SUITE_P(
    , RoutingsOf,
    testing::Values(Listed{"SevenLinesAndAnEmptyOne", kHeading + kRouting, " ROUTED TO|a|b|c|d|e|f|"},
                    Listed{"ElevenLinesOfAPump", kHeading + kPump, " PUMP FLOW TO|1|2|3|4|5|6|7|8|9|10|"},
                    Listed{"HeadingInTheVeryFirstLineCounts", kHeading + "x\r\n" + kRouting, " ROUTED TO|a|b|c|d|e|f|"},
                    Listed{"AheadOfTheHeadingNothing", kRouting + kHeading, ""},
                    Listed{"BlocksOverlap", kHeading + " ROUTED TO\r\n ROUTED TO\r\nb\r\nc\r\nd\r\ne\r\nf\r\ng\r\n",
                           " ROUTED TO| ROUTED TO|b|c|d|e|f|| ROUTED TO|b|c|d|e|f|g|"},
                    Listed{"BothWordsInALine", kHeading + "ROUTED TO PUMP FLOW TO\r\n1\r\n",
                           "ROUTED TO PUMP FLOW TO|1||"
                           "ROUTED TO PUMP FLOW TO|1|"},
                    Listed{"SecondHeadingRepeatsWhatIsBehindIt", kHeading + kRouting + kHeading + " ROUTED TO\r\n",
                           " ROUTED TO|a|b|c|d|e|f|| ROUTED TO|| ROUTED TO|"},
                    Listed{"CutInABlock", kHeading + " ROUTED TO\r\na\r\nb", " ROUTED TO|a|b|"},
                    Listed{"CarriageReturnsAlone", kHeading.chopped(1) + " ROUTED TO\ra\rb\rc\rd\re\rf\rg\r",
                           " ROUTED TO|a|b|c|d|e|f|"},
                    Listed{"LineOfAMegabyte", kHeading + QByteArray(1 << 20, 'x') + "\r\n" + kRouting,
                           " ROUTED TO|a|b|c|d|e|f|"},
                    Listed{"Empty", "", ""}),
    [](const auto& row) { return row.param.name; });

TEST(RoutingOutputs, ReportsOfRealRuns)
{
    ScriptedServices services;
    const RoutingOutput six = getrouting(services.put("checky.out", report("six_ratios.txt")));
    EXPECT_EQ(six.List2.size(), 2 + 8);
    EXPECT_EQ(six.List2[2], " ROUTED TO");
    EXPECT_EQ(six.List2[3],
              "+                 BASIN       .00      1    FLOW         17.      27.      33.      37.    "
              "  69.     122.");
    EXPECT_TRUE(six.List2[7].contains("STAGE      101.82   103.80"));
    EXPECT_TRUE(six.List2[8].contains("TIME")) << "the last of the seven";
    EXPECT_FALSE(six.isInRunoffSummary);

    // One plan and one ratio: the report lists its two routings in a summary of another form.
    const QByteArray one = report("one_ratio.txt");
    const RoutingOutput other = getrouting(services.put("checky.out", one));
    EXPECT_FALSE(other.hasRoutings());
    EXPECT_TRUE(other.isInRunoffSummary);
    const TextBuffer text(kHeading + "           RUNOFF SUMMARY\r\n" + one);
    const qsizetype place = runoffSummaryOf(text);
    EXPECT_TRUE(text.line(text.lineFromChar(place) + 1).contains("FLOW IN CUBIC FEET")) << "the one with routings";
    QByteArray withoutRoutings = one;
    withoutRoutings.replace("ROUTED TO", "LAGGED TO");
    EXPECT_FALSE(getrouting(services.put("checky.out", withoutRoutings)).isInRunoffSummary);
    EXPECT_EQ(runoffSummaryOf(TextBuffer(withoutRoutings)), -1);

    EXPECT_FALSE(getrouting(services.path("none")).canBeRead);
}

TEST(RoutingOutputs, ThousandsOfHeadingsCostTheirOwnBlocksAlone)
{
    ScriptedServices services;
    QByteArray many;
    for (int i = 0; i < 100'000; ++i)
        many += kHeading;
    QElapsedTimer timer;
    timer.start();
    EXPECT_EQ(getrouting(services.put("checky.out", many)).List2.size(), 2);
    EXPECT_EQ(getrouting(services.put("checky.out", many + kRouting)).List2.size(), 2 + 100'000 * 8);
    EXPECT_LT(timer.elapsed(), 20'000) << "a search from each of them would take minutes";

    const RoutingOutput tooMany = getrouting(services.put("checky.out", many + kRouting + kRouting));
    EXPECT_TRUE(tooMany.isCut);
    EXPECT_LT(tooMany.List2.size(), 2 * kMostSummaryLines);
}

// -- The detailed file -----------------------------------------------------------------------------------------------

struct Entries
{
    const char* name;
    QByteArray text;
    const char* entries; ///< joined by '|'
};

class JumpEntriesOf : public testing::TestWithParam<Entries>
{
};

TEST_P(JumpEntriesOf, AText)
{
    const QByteArray& text = GetParam().text;
    EXPECT_EQ(jumpEntries({text.constData(), static_cast<size_t>(text.size())}).join('|'), GetParam().entries);
}

INSTANTIATE_TEST_SUITE_P(
    , JumpEntriesOf,
    testing::Values(Entries{"OneBlock", " STATION BASIN  LOW AREA=     3.140  PLAN  1  RATIO 12    =     .460\r\n",
                            "BASIN   RATIO 12     //   16"},
                    Entries{"LabelOpensOneCharacterAheadOfTheWord", "*POND12 LOW AREA= 1xRATIO  3 abcdef",
                            "POND12 xRATIO  3 ab  //   8"},
                    Entries{"NextSearchStartsTwentyFiveBehind",
                            "*POND12 LOW AREA= LOW AREA= 1234567 LOW AREA= RATIO 1 RATIO 2 345678901 RATIO 3 45678",
                            "POND12  RATIO 1 RAT  //   8|234567  RATIO 3 456  //   36"},
                    Entries{"FewerRatiosEndTheList",
                            "*POND12 LOW AREA= 1 RATIO  1\r\n*POND13 LOW AREA= 2 RATIO\r\n*POND14 LOW "
                            "AREA= 3",
                            "POND12  RATIO  1\r\n*  //   8|POND13  RATIO\r\n*PON  //   38"},
                    Entries{"StationAheadOfTheText", "ABCDE LOW AREA= 1 RATIO  1", ""},
                    Entries{"RatioAtTheStart", "RATIO POND LOW AREA= 1 RATIO  1", ""},
                    Entries{"CutInTheRatio", "*POND12 LOW AREA= 1 RATIO", "POND12  RATIO  //   8"},
                    Entries{"Empty", "", ""}),
    [](const auto& row) { return row.param.name; });

TEST(JumpEntries, OfARealFileLeadToTheirBlocks)
{
    const QByteArray text = report("six_ratios_stages.txt");
    const QStringList entries = jumpEntries({text.constData(), static_cast<size_t>(text.size())});
    ASSERT_EQ(entries.size(), 6);
    for (int ratio = 1; ratio <= 6; ++ratio) {
        const QString& entry = entries[ratio - 1];
        EXPECT_TRUE(entry.startsWith(QString("BASIN   RATIO  %1     //   ").arg(ratio))) << entry.toStdString();
        const auto position = jumpPosition(entry);
        ASSERT_TRUE(position);
        EXPECT_TRUE(text.mid(*position).startsWith("LOW AREA="));
    }
    EXPECT_EQ(jumpPosition("A//B  RATIO 1  //   7 "), 7) << "a station may hold the mark too";
    EXPECT_FALSE(jumpPosition("no mark"));
    EXPECT_FALSE(jumpPosition("POND //   x"));
}

TEST(ColumnsByTabs, FollowTheOrderOfTheReplacements)
{
    const QString tab = "\t";
    const auto blanks = [](int count) { return columnsByTabs("a" + QString(count, ' ') + "b").mid(1).chopped(1); };
    for (const int count : {2, 3, 4, 5, 6, 8, 9, 10, 11, 12, 18})
        EXPECT_EQ(blanks(count), tab) << count;
    EXPECT_EQ(blanks(1), " ");
    EXPECT_EQ(blanks(7), "\t ");
    EXPECT_EQ(blanks(13), "\t ");
    EXPECT_EQ(blanks(48), tab) << "eight TABs fall to one";
    EXPECT_EQ(blanks(60), "\t\t") << "ten to five, three, two";
    EXPECT_EQ(columnsByTabs(" ORDNT   HR MIN      OUTFLOW"), "\tORDNT\tHR MIN\tOUTFLOW");
    EXPECT_EQ(columnsByTabs("    11     2 30        67.06\r\n    12"), "\t11\t2 30\t67.06\r\n\t12");
}

TEST(RoutingGrid, HoldsARowForEachLineUnderItsHeadings)
{
    ScriptedServices services;
    FlexGrid grid;
    const QByteArray file = report("six_ratios_stages.txt");
    ASSERT_EQ(fillRoutingGrid(grid, services.put(kStages, file)), GridFill::Whole);
    EXPECT_EQ(grid.cols(), 7);
    EXPECT_EQ(grid.rows(), file.count('\n') + 1);
    EXPECT_EQ(gridText(grid, 0, 0, 3, 6), "|ORDNT|HR MIN|OUTFLOW|STORAGE|STAGE|QLOWL\n"
                                          " STATION BASIN|LOW AREA=|3.140|PLAN|1|RATIO|1\n"
                                          "|ORDNT|HR MIN|OUTFLOW|STORAGE| STAGE|QLOWL\n"
                                          "|1|0 00|.00|.000|100.000|.00")
        << "what reaches past the last column is dropped";

    const int lines = static_cast<int>(file.count('\n'));
    EXPECT_EQ(fillRoutingGrid(grid, services.path(kStages), lines), GridFill::Whole);
    EXPECT_EQ(fillRoutingGrid(grid, services.path(kStages), lines - 1), GridFill::Cut);
    EXPECT_EQ(grid.rows(), lines);
    ASSERT_EQ(fillRoutingGrid(grid, services.put(kStages, QByteArray(1 << 20, 'x'))), GridFill::Whole);
    ASSERT_GT(grid.rows(), 1);
    EXPECT_TRUE(grid.textMatrix(1, 0).startsWith('x')) << "a line without any end";
    EXPECT_EQ(fillRoutingGrid(grid, services.path("none")), GridFill::Missing);
    EXPECT_EQ(gridText(grid), "|ORDNT|HR MIN|OUTFLOW|STORAGE|STAGE|QLOWL");
}

// -- Commands --------------------------------------------------------------------------------------------------------

struct RoutingCommandsTest : testing::Test
{
    struct Shown : Screen
    {
        explicit Shown(QStringList& log) : did(log) {}
        void showScreen() override { did << "shown"; }
        void hideScreen() override {}
        bool isScreenVisible() const override { return true; }
        void repaintScreen() override { did << "painted"; }
        QStringList& did;
    };
    ScriptedServices services;
    Commands commands;
    Screens screens;
    RunEvents events;
    QStringList did;
    RoutingCommands routing{services, commands, screens, events};

    RoutingCommandsTest()
    {
        screens.add("DetRes", [this] { return std::make_unique<Shown>(did); });
    }
    ~RoutingCommandsTest() override { screens.unloadAll(); }
    QStringList askForDetails()
    {
        did.clear();
        EXPECT_TRUE(commands.run("mnu_detailed_ReservoirRoutings"));
        return did;
    }
};

TEST_F(RoutingCommandsTest, WithoutDataTheDetailsAreRefused)
{
    const auto refused = [this] {
        services.dialogs.forget();
        services.dialogs.willAnswer(Button::Ok);
        return askForDetails().isEmpty() && services.dialogs.texts() == QStringList{kNoData};
    };
    EXPECT_TRUE(refused()) << "missing";
    for (const char* bytes : {"", "\r\n STATION", "\r", "\n"}) {
        services.put(kStages, bytes);
        EXPECT_TRUE(refused()) << bytes;
    }
    services.folder.remove(kStages);
    ASSERT_TRUE(QDir(services.folder.path()).mkdir(kStages));
    EXPECT_TRUE(refused()) << "a folder of that name";
    QDir(services.folder.path()).rmdir(kStages);
    services.put("flow_and_stage_storage.txt", " ");
    EXPECT_EQ(askForDetails(), QStringList{"shown"}) << "another spelling, a first line of blanks";
    Q_EMIT events.finished({});
    EXPECT_EQ(did, (QStringList{"shown", "painted"})) << "a run is over";
}

TEST_F(RoutingCommandsTest, LargeFilesAreAskedForFirst)
{
    const QByteArray line(2'399'999, 'x');
    services.put(kStages, line + "y");
    EXPECT_EQ(askForDetails(), QStringList{"shown"}) << "2,400,000 bytes: no question";
    services.put(kStages, line + "yz");
    services.dialogs.willAnswer(Button::Cancel);
    EXPECT_TRUE(askForDetails().isEmpty());
    services.dialogs.willAnswer(Button::Ok);
    EXPECT_EQ(askForDetails(), QStringList{"shown"});
    EXPECT_EQ(services.dialogs.last().buttons, Buttons::OkCancel);
    EXPECT_EQ(services.dialogs.last().text,
              "This is a large file and may take time to load and view.\r\n"
              "You may review the file FLOW_AND_STAGE_STORAGE.TXT in the Kalvo application "
              "directory using a word processor");
}

TEST_F(RoutingCommandsTest, ARunForgetsTheStagesOfTheDeckBeforeIt)
{
    services.put("FLOW_AND_STAGE_STORAGE.TXT", report("six_ratios_stages.txt"));
    services.put("Flow_And_Stage_Storage.txt", "old");
    EXPECT_EQ(RunFolder(services.folder).clear(), QString());
    EXPECT_TRUE(services.folder.spellings(kStages).isEmpty());
    services.dialogs.willAnswer(Button::Ok);
    EXPECT_TRUE(askForDetails().isEmpty());
}

} // namespace
} // namespace kalvo
