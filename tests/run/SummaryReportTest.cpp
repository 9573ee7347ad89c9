// SPDX-License-Identifier: GPL-3.0-or-later
#include "run/SummaryReport.h"

#include "platform/text.h"
#include "run/EngineLocator.h"
#include "run/HecErrors.h"
#include "run/RunOutcome.h"
#include "tests/support/GridText.h"
#include "tests/support/ScriptedServices.h"

#include <gtest/gtest.h>

namespace kalvo {
namespace {

constexpr auto kNormalEnd = "\r\n *** NORMAL END OF HEC-1 ***\r\n";
constexpr auto kHeading =
    "                 PEAK FLOW AND STAGE (END-OF-PERIOD) SUMMARY FOR MULTIPLE PLAN-RATIO ECONOMIC COMPUTATIONS";

QStringList linesOfText(const char* text)
{
    return QString::fromLatin1(text).split(QLatin1Char('\n'));
}

// -- Marks -----------------------------------------------------------------------------------------------------------

struct Marks
{
    const char* name;
    const char* report;
    bool holdsNormalEnd, endsNormally;
    int errors;
};

class ReportMarksOf : public testing::TestWithParam<Marks>
{
};

TEST_P(ReportMarksOf, AReport)
{
    const ReportMarks marks = reportMarksOfText(QString::fromLatin1(GetParam().report));
    EXPECT_EQ(marks.holdsNormalEnd, GetParam().holdsNormalEnd);
    EXPECT_EQ(marks.endsNormally, GetParam().endsNormally);
    EXPECT_EQ(marks.errorCount, GetParam().errors);
}

INSTANTIATE_TEST_SUITE_P(
    , ReportMarksOf,
    testing::Values(Marks{"Good", "1***\r\n RUNOFF\r\n\r\n *** NORMAL END OF HEC-1 ***\r\n", true, true, 0},
                    Marks{"WithoutLineEnd", " *** NORMAL END OF HEC-1 ***", true, true, 0},
                    Marks{"WordsInACommentCard", "    5      KM   *** NORMAL END OF HEC-1 ***\n", true, false, 0},
                    Marks{"ErrorsOfBothForms", " *** HEC1 ERROR 12 ***\n *** HEC-1 ERROR  3 ***\n", false, false, 2},
                    Marks{"ErrorInACommentCard", "   5      KM   *** HEC1 ERROR 12 ***\n *** NORMAL END OF HEC-1 ***",
                          true, true, 0},
                    Marks{"WarningsAreNoErrors", " *** WARNING ***\n *** NORMAL END OF HEC-1 ***", true, true, 0},
                    Marks{"CutInTheLastLine", " *** NORMAL END OF HEC", false, false, 0},
                    Marks{"Empty", "", false, false, 0}),
    [](const auto& row) { return row.param.name; });

TEST(ReportMarksOfFiles, HugeReportsCostNoMemory)
{
    // A sparse file: hundreds of megabytes without a single line end, ended by the words of the normal end.
    ScriptedServices services;
    QFile file(services.path("checky.out"));
    ASSERT_TRUE(file.open(QIODevice::ReadWrite));
    file.write(" *** HEC1 ERROR 12 ***\r\n");
    ASSERT_TRUE(file.seek(qint64(1) << 28));
    file.write(kNormalEnd);
    file.close();
    const ReportMarks marks = reportMarks(file.fileName());
    EXPECT_TRUE(marks.holdsNormalEnd);
    EXPECT_EQ(marks.errorCount, 1);
}

TEST(ReportMarksOfFiles, MissingAndBlankReports)
{
    ScriptedServices services;
    EXPECT_FALSE(reportMarks(services.path("none")).isThere);
    const ReportMarks blank = reportMarks(services.put("checky.out", " \r\n\r\n"));
    EXPECT_TRUE(blank.isThere);
    EXPECT_FALSE(blank.hasText);
}

// -- The verdict -----------------------------------------------------------------------------------------------------

struct Judged
{
    const char* name;
    ProcessEnd::Kind end;
    int exitCode;
    const char* report; ///< null: none was written
    RunOutcome::Verdict verdict;
};

class Verdicts : public testing::TestWithParam<Judged>
{
};

TEST_P(Verdicts, ComeFromWhatWasWritten)
{
    const Judged& j = GetParam();
    const ReportMarks marks = j.report ? reportMarksOfText(QString::fromLatin1(j.report)) : ReportMarks{};
    const RunOutcome outcome = judgeRun({j.end, j.exitCode, {}}, marks);
    EXPECT_EQ(outcome.verdict, j.verdict);
    EXPECT_FALSE(outcome.text().isEmpty());
}

using V = RunOutcome::Verdict;
using E = ProcessEnd::Kind;
INSTANTIATE_TEST_SUITE_P(
    , Verdicts,
    testing::Values(Judged{"Good", E::Exited, 0, kNormalEnd, V::NormalEnd},
                    Judged{"GoodWithAnOddStatus", E::Exited, 7, kNormalEnd, V::NormalEnd},
                    Judged{"ErrorTextWithStatusZero", E::Exited, 0, " *** HEC1 ERROR 12 ***\n", V::EndedWithErrors},
                    Judged{"ErrorBehindTheWordsInAComment", E::Exited, 0,
                           "  5 KM *** NORMAL END OF HEC-1 ***\n *** HEC1 ERROR 12 ***\n", V::EndedWithErrors},
                    Judged{"OnlyTheWordsInAComment", E::Exited, 0, "  5 KM *** NORMAL END OF HEC-1 ***\n",
                           V::EndedWithErrors},
                    Judged{"StopsInTheMiddle", E::Exited, 0, "HEC-1 INPUT\n", V::EndedWithErrors},
                    Judged{"NoReport", E::Exited, 0, nullptr, V::WroteNothing},
                    Judged{"BlankReport", E::Exited, 0, "\n  \n", V::WroteNothing},
                    Judged{"KilledBehindANormalEnd", E::Crashed, -1, kNormalEnd, V::Crashed},
                    Judged{"StoppedByTheUser", E::Stopped, -1, kNormalEnd, V::Stopped},
                    Judged{"NotStarted", E::NotStarted, -1, nullptr, V::NotStarted}),
    [](const auto& row) { return row.param.name; });

// -- Summary ---------------------------------------------------------------------------------------------------------

struct Ordinates
{
    const char* name;
    const char* report;
    bool isThere;
    const char* text;
};

class OrdinateCounts : public testing::TestWithParam<Ordinates>
{
};

TEST_P(OrdinateCounts, FromTheFirstLineWithBothWords)
{
    ScriptedServices services;
    const OrdinateCount count = findOrdinateCount(services.put("checky.out", GetParam().report));
    EXPECT_TRUE(count.canBeRead);
    EXPECT_EQ(count.isThere, GetParam().isThere);
    EXPECT_EQ(count.text.toStdString(), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(
    , OrdinateCounts,
    testing::Values(Ordinates{"JobData",
                              "x\r\n                       NQ         300  NUMBER OF HYDROGRAPH ORDINATES\r\n", true,
                              "300"},
                    Ordinates{"WordsAheadOfNq", "NUMBER OF HYDROGRAPH ORDINATES NQ 5", true, ""},
                    Ordinates{"NotThere", "NQ 300\r\nNUMBER OF HYDROGRAPH ORDINATES\r\n", false, ""}),
    [](const auto& row) { return row.param.name; });

TEST(SummaryBlocks, RunFromTheHeadingWithSevenAndElevenLines)
{
    QStringList lines{"ROUTED TO ahead of the heading", kHeading, "x", "ROUTED TO one"};
    for (int i = 1; i <= 6; ++i)
        lines << QString("a%1").arg(i);
    lines << "PUMP FLOW TO two";
    for (int i = 1; i <= 12; ++i)
        lines << QString("b%1").arg(i);
    lines << "ROUTED TO last"
          << "c1";
    const auto blocks = summaryBlocks(lines);
    ASSERT_EQ(blocks.size(), 3);
    EXPECT_EQ(blocks[0].lines.size(), 7);
    EXPECT_EQ(blocks[0].lines.last(), "a6");
    EXPECT_EQ(blocks[1].kind, SummaryBlock::Kind::PumpFlowTo);
    EXPECT_EQ(blocks[1].lines.size(), 11);
    EXPECT_EQ(blocks[1].lines.last(), "b10");
    EXPECT_EQ(blocks[2].lines, (QStringList{"ROUTED TO last", "c1"})) << "what is there, at the end";

    // A second heading lists what stands behind it once more.
    lines.insert(10, kHeading);
    EXPECT_EQ(summaryBlocks(lines).size(), 5);
}

constexpr auto kBasin = "%1\n ROUTED TO\n+                  BASIN       .00      1    FLOW        19.      28.\n"
                        "                                             TIME      12.75    12.92\n\n"
                        "                                       ** PEAK STAGES IN FEET **\n"
                        "                                        1   STAGE%2\n"
                        "                                             TIME      12.75    12.92\n";

struct Stages
{
    const char* name;
    const char* stages; ///< behind the word STAGE
    const char* items;
    bool differ;
};

class BasinStagesOf : public testing::TestWithParam<Stages>
{
};

TEST_P(BasinStagesOf, FixedPlacesAndWords)
{
    const QString report = QString::fromLatin1(kBasin).arg(kHeading, GetParam().stages);
    const BasinStages stages = basinStages(summaryBlocks(report.split(QLatin1Char('\n'))));
    EXPECT_EQ(stages.items.join(' ').toStdString(), GetParam().items);
    EXPECT_EQ(stages.differ(), GetParam().differ);
}

INSTANTIATE_TEST_SUITE_P(
    , BasinStagesOf,
    testing::Values(Stages{"SixOfSixCharacters", "      102.01   104.04   105.41   106.82   107.71   108.20",
                           "102.01 104.04 105.41 106.82 107.71 108.20", false},
                    // At 1000 feet a number is seven wide: the fixed places count one blank less each time.
                    Stages{"AThousandFeet", "     1002.01  1004.04  1005.41  1006.82  1007.71  1008.20",
                           " 1005.41  1008.20  ", true}),
    [](const auto& row) { return row.param.name; });

TEST(BasinStagesByWords, WordsAreReadWhereTheFixedPlacesFail)
{
    const QString report = QString::fromLatin1(kBasin).arg(kHeading, "     1002.01  1004.04");
    EXPECT_EQ(basinStages(summaryBlocks(report.split(QLatin1Char('\n')))).parsed, (QStringList{"1002.01", "1004.04"}));
    EXPECT_EQ(basinStages({}).items, QStringList(6, QString()));
}

TEST(StorageSummaries, KindByTheFirstHeadingAndLinesToTheNormalEnd)
{
    const auto standard =
        storageSummary(linesOfText("x\n PEAK FLOW AND STAGE (END-OF-PERIOD)\na\nb\n *** NORMAL END OF HEC-1 ***\nc"));
    EXPECT_EQ(standard.kind, StorageSummary::Kind::Standard);
    EXPECT_EQ(standard.lines, (QStringList{"a", "b"}));
    EXPECT_EQ(storageSummary(linesOfText("x\n           RUNOFF SUMMARY\na")).kind, StorageSummary::Kind::Type1);
    EXPECT_EQ(storageSummary(linesOfText("x\n          RUNOFF SUMMARY\na")).kind, StorageSummary::Kind::None)
        << "ten blanks";
}

TEST(ReportTime, SeventhLineOrTheOneBehindTheBannersWord)
{
    QStringList lines(6, QString());
    lines << " * RUN DATE  15JUN98  TIME  10:21:38     *"
          << "";
    EXPECT_EQ(reportRunTime(lines).value_or(""), "10:21:38    ");
    EXPECT_TRUE(chkytime(lines, QTime(10, 21, 50)).hecRanOK) << "an old report passes, with a warning";
    EXPECT_TRUE(chkytime(lines, QTime(10, 21, 50)).isOld);
    EXPECT_FALSE(chkytime(lines, QTime(10, 21, 40)).hecRanOK) << "a fresh one fails";
    lines[7] = lines[6];
    lines[6] = "Brevanholt";
    EXPECT_TRUE(reportRunTime(lines));
    lines[6] = "";
    EXPECT_FALSE(reportRunTime(lines));
    EXPECT_FALSE(reportRunTime({}));
}

// -- Error numbers and texts -----------------------------------------------------------------------------------------

TEST(HecErrors, NumberStandsAtItsPlaceInTheLine)
{
    EXPECT_EQ(hecErrorNumber(" *** HEC1 ERROR 12 ***").value_or("none"), "12");
    EXPECT_EQ(hecErrorNumber(" *** HEC1 ERROR  3 ***").value_or("none"), "3");
    EXPECT_EQ(hecErrorNumber(" *** HEC-1 ERROR 12 ***").value_or("none"), "12");
    EXPECT_EQ(hecErrorNumber("  *** HEC1 ERROR 12 ***").value_or("none"), "R 1") << "the place counts, not the word";
    EXPECT_FALSE(hecErrorNumber(" *** HEC1 WARNING 12 ***"));
}

TEST(HecErrors, TextsAreRecordsOfThreeItemsAndTheLastOfANumberWins)
{
    const HecErrorTexts texts("12,First,Once\r\n\"3\",\"With, commas\",\"A, b\"\r\n12,Second,Twice\r\n13,Short");
    EXPECT_EQ(texts.text("12"), "Second\r\nTwice");
    EXPECT_EQ(texts.text("3"), "With, commas\r\nA, b");
    EXPECT_EQ(texts.text("13"), "") << "a short last record";
    EXPECT_EQ(texts.text("03"), "") << "numbers are compared as texts";
}

TEST(HecErrors, ShippedTextsAreWholeRecords)
{
    ScriptedServices services;
    const auto file = readFile(services.folder.dataFile("HECErrorDEscriptions.txt"));
    ASSERT_TRUE(file);
    const QStringList items = listItemsOf(*file);
    ASSERT_EQ(items.size() % 3, 0);
    for (qsizetype i = 0; i < items.size(); i += 3) {
        bool isNumber = false;
        items[i].toInt(&isNumber);
        EXPECT_TRUE(isNumber && items[i].size() <= 2)
            << items[i].toStdString() << ": a comma without quotes shifts all records";
        EXPECT_GT(items[i + 1].size(), 3);
        EXPECT_GT(items[i + 2].size(), 10);
    }
}

// -- Which HEC-1 -----------------------------------------------------------------------------------------------------

struct EngineLocatorTest : testing::Test
{
    ScriptedServices services;
    EnginePlaces places;

    EngineLocatorTest()
    {
        for (const char* folder : {"home", "beside", "path"})
            QDir(services.directory.path()).mkdir(folder);
        places.programFolder = services.path("home");
        places.executableFolder = services.path("beside");
        places.path = QStringList{services.path("path")};
    }
    QString put(const char* name, bool executable = true)
    {
        const QString path = services.put(name, "x");
        QFile::setPermissions(path, executable ? QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner
                                               : QFile::ReadOwner | QFile::WriteOwner);
        return path;
    }
};

TEST_F(EngineLocatorTest, LooksInTheProgramsFolderThenBesideThenOnThePath)
{
    HecEngine engine = locateEngine(places);
    EXPECT_FALSE(engine.isFound());
    EXPECT_TRUE(engine.whyNot.contains("There is no HEC-1"));
    const QString onPath = put("path/hec1");
    EXPECT_EQ(locateEngine(places).program, onPath);
    const QString beside = put("beside/hec1");
    EXPECT_EQ(locateEngine(places).program, beside);
    const QString own = put("home/HEC1");
    EXPECT_EQ(locateEngine(places).program, own) << "whatever its case";
    places.overridden = onPath;
    EXPECT_EQ(locateEngine(places).program, onPath);
}

TEST_F(EngineLocatorTest, WhatTheUserPutThereIsNotPassedOverInSilence)
{
    put("beside/hec1");
    put("home/hec1", false);
    EXPECT_TRUE(locateEngine(places).whyNot.contains("is not a program"));
    places.overridden = services.path("nowhere/hec1");
    EXPECT_TRUE(locateEngine(places).whyNot.contains("does not exist"));
}

TEST_F(EngineLocatorTest, AProgramOfTheOtherSystemNeedsItsHelper)
{
    const QString exe = put("home/hec1.exe");
    const QString beside = put("beside/hec1");
    EXPECT_EQ(locateEngine(places).program, beside) << "without wine it cannot be started";
    const QString wine = put("path/wine");
    HecEngine engine = locateEngine(places);
    EXPECT_EQ(engine.program, wine);
    EXPECT_EQ(engine.ahead, QStringList{exe});
    EXPECT_TRUE(engine.described().contains("wine"));
    places.isWindows = true;
    engine = locateEngine(places);
    EXPECT_EQ(engine.program, "cmd.exe");
    EXPECT_EQ(engine.ahead.value(0), "/c");
}

} // namespace
} // namespace kalvo
