// SPDX-License-Identifier: GPL-3.0-or-later
#include "run/BatchRun.h"

#include "TapeText.h"
#include "run/BatchTables.h"
#include "tests/support/GridText.h"
#include "tests/support/ScriptedServices.h"

#include <QCoreApplication>
#include <QTimer>

#include <gtest/gtest.h>

namespace kalvo {
namespace {

using namespace batch_status;

const QByteArray kGoodReport = "1***\r\n\r\n *** NORMAL END OF HEC-1 ***\r\n";

// -- Command line ----------------------------------------------------------------------------------------------------

struct Usage
{
    const char* name;
    QStringList arguments;
    const char* error; ///< a part of it
};

class WrongUsage : public testing::TestWithParam<Usage>
{
};

TEST_P(WrongUsage, IsNamed)
{
    const BatchOptions options = batchOptions(QStringList{"kalvo-run"} + GetParam().arguments);
    EXPECT_TRUE(options.usageError.contains(QLatin1String(GetParam().error))) << options.usageError.toStdString();
}

INSTANTIATE_TEST_SUITE_P(
    , WrongUsage,
    testing::Values(Usage{"NoDeck", {"--peaks", "-"}, "no deck"},
                    Usage{"UnknownOption", {"--peak", "-", "a.dat"}, "'--peak'"},
                    Usage{"MissingValue", {"a.dat", "--peaks"}, "--peaks needs a value"},
                    Usage{"EmptyValue", {"a.dat", "--peaks="}, "name of a file"},
                    Usage{"JobsZero", {"--jobs", "0", "a.dat"}, "--jobs"},
                    Usage{"JobsWord", {"--jobs", "many", "a.dat"}, "'many'"},
                    Usage{"TimeoutNegative", {"--timeout", "-1", "a.dat"}, "--timeout"},
                    Usage{"TimeoutNan", {"--timeout", "nan", "a.dat"}, "--timeout"},
                    Usage{"TwoToStandardOutput", {"--peaks", "-", "--json", "-", "a.dat"}, "standard output"},
                    Usage{"PlotToStandardOutput", {"--plot", "-", "a.dat"}, "standard output"},
                    Usage{"PlotOfUnknownKind", {"--plot", "a.bmp", "a.dat"}, ".png"},
                    Usage{"OutputOverADeck", {"--report", "./a.dat", "a.dat"}, "named twice"},
                    Usage{"OneFileTwice", {"--report", "x", "--json=x", "a.dat"}, "named twice"},
                    Usage{"DeckFromStandardInput", {"-"}, "standard input"}),
    [](const auto& row) { return row.param.name; });

TEST(BatchOptions, TakesEveryOption)
{
    const BatchOptions options =
        batchOptions({"kalvo-run", "--hydrographs", "h.csv", "--json=j.json", "--jobs", "4", "--timeout", "0.5",
                      "--keep", "--details", "d.csv", "--plot", "p.SVG", "--report", "-", "a.dat", "--", "--odd.dat"});
    EXPECT_EQ(options.usageError, "");
    EXPECT_EQ(options.decks, (QStringList{"a.dat", "--odd.dat"}));
    EXPECT_EQ(options.peaks, "") << "only where nothing else is asked for";
    EXPECT_EQ(options.timeoutMs, 500);
    EXPECT_EQ(options.jobs, 4);
    EXPECT_TRUE(options.keep);
    EXPECT_EQ(batchOptions({"kalvo-run", "a.dat"}).peaks, "-");
}

// -- Tables ----------------------------------------------------------------------------------------------------------

TEST(BatchTables, PeaksWithTimeAndVolume)
{
    // A triangle of 0, 726, 0 cfs at 30 minutes: 726 x 1800 s / 43560 = 30 acre-feet.
    const Tape21 tape = readTape21(station({"A, \"B\"", "30", "1", "1", "1", "3"}, {0, 726, 0}));
    EXPECT_EQ(peaksCsv("x.dat", tape, {}), "x.dat,\"A, \"\"B\"\"\",1,1,1,726,0.5,30,cfs\r\n");
    EXPECT_EQ(peaksCsv("x.dat", tape, {true}), "x.dat,\"A, \"\"B\"\"\",1,1,1,726,0.5,1306.8,m3/s\r\n");
    EXPECT_TRUE(hydrographsCsv("x.dat", tape, {})
                    .startsWith("x.dat,\"A, \"\"B\"\"\",1,1,1,0,0,cfs\r\nx.dat,\"A, \"\"B\"\"\",1,1,1,30,726,cfs\r\n"));
}

TEST(BatchTables, FullOrderOfRecords)
{
    const QByteArray csv = peaksCsv("d", readTape21(station({"A", "5", "2", "1", "2", "1"}, {1, 2, 3, 4})), {});
    EXPECT_EQ(csv, "d,A,1,1,1,1,0,0,cfs\r\nd,A,1,1,2,2,0,0,cfs\r\nd,A,1,2,1,3,0,0,cfs\r\nd,A,1,2,2,4,0,0,cfs\r\n");
}

TEST(BatchTables, UnitsOfTheDeck)
{
    EXPECT_TRUE(unitsOfDeck("ID x\r\nIM\r\nKK A\r\n").isMetric);
    EXPECT_TRUE(unitsOfDeck("*FREE\nIM,1\nKK A\n").isMetric);
    EXPECT_FALSE(unitsOfDeck("ID x\nIT 5\nKK A\nIM\n").isMetric) << "behind the first station it is no job card";
    EXPECT_FALSE(unitsOfDeck("ID IM\n").isMetric);
    EXPECT_FALSE(unitsOfDeck("").isMetric);
}

TEST(BatchTables, JsonEscapesWhatStationsAndDecksHold)
{
    const QByteArray json = deckJson("a\"\\\t.dat", {}, 6, {"one"}, readTape21(station({"S"}, {1, 2, 3})), {});
    EXPECT_TRUE(json.startsWith("{\"deck\": \"a\\\"\\\\\\u0009.dat\", \"verdict\": \"not started\", \"status\": 6"));
    EXPECT_TRUE(json.contains("\"messages\": [\"one\"]"));
    EXPECT_TRUE(json.contains("\"flows\": [1, 2, 3]"));
}

// -- Runs ------------------------------------------------------------------------------------------------------------

/// Decks in a folder of their own; what HEC-1 does is told by each deck's first line.
struct BatchRunTest : testing::Test
{
    ScriptedServices services;
    BatchOptions options;
    QStringList talk;
    HecEngine engine{"hec1", "hec1", {}, {}};
    std::atomic_int started = 0;
    QString lastFolder;

    QString deck(const QString& name, const QByteArray& text) { return services.put(name, text); }
    ProcessEnd behave(const ProcessStart& start)
    {
        ++started;
        lastFolder = start.workingFolder;
        const QDir folder(start.workingFolder);
        const QByteArray deckText = readFile(folder.filePath("checky.dat")).value_or("");
        if (deckText.startsWith("nothing"))
            return {ProcessEnd::Kind::Exited, 0, {}};
        if (deckText.startsWith("crash"))
            return {ProcessEnd::Kind::Crashed, -1, {}};
        if (deckText.startsWith("errors")) {
            writeFile(folder.filePath("checky.out"), " *** HEC1 ERROR 12 *** CARD 3\r\n");
            return {ProcessEnd::Kind::Exited, 1, {}};
        }
        writeFile(folder.filePath("checky.out"), "REPORT OF " + deckText + "\r\n" + kGoodReport);
        if (deckText.startsWith("noko"))
            return {ProcessEnd::Kind::Exited, 0, {}};
        if (deckText.startsWith("torn")) {
            writeFile(folder.filePath("TAPE21"), "torn");
            return {ProcessEnd::Kind::Exited, 0, {}};
        }
        const std::string name = deckText.left(8).trimmed().toStdString();
        if (deckText.startsWith("daily") || deckText.startsWith("nostep")) {
            const QByteArray listing = "     3    KM NMIN 7 MINUTES IN COMPUTATION INTERVAL\r\n";
            const QByteArray jobData = "       NMIN      1440  MINUTES IN COMPUTATION INTERVAL\r\n";
            writeFile(folder.filePath("checky.out"),
                      listing + (deckText.startsWith("daily") ? jobData : QByteArray()) + kGoodReport);
            writeFile(folder.filePath("TAPE21"), QByteArray::fromStdString(risingStation({name, "***"}, 3, 1)));
            return {ProcessEnd::Kind::Exited, 0, {}};
        }
        writeFile(folder.filePath("TAPE21"), QByteArray::fromStdString(risingStation({name}, 3, 1)));
        if (!start.arguments.filter("DETAILS=").isEmpty())
            writeFile(folder.filePath("details.csv"), "station,value\r\n" + QByteArray::fromStdString(name) + ",1\r\n");
        return {ProcessEnd::Kind::Exited, 0, {}};
    }
    int run()
    {
        BatchRun batch(options, {.engine = engine,
                                 .newProcess =
                                     [this] {
                                         auto process = std::make_unique<ScriptedChildProcess>();
                                         process->willAlways([this](const ProcessStart& s) { return behave(s); });
                                         return process;
                                     },
                                 .talk = [this](const QString& line) { talk << line; },
                                 .progress = {},
                                 .plotProgram = {}});
        return batch.run();
    }
    QByteArray output(const char* name) const { return readFile(services.path(name)).value_or("not there"); }
};

TEST_F(BatchRunTest, GivesTheBytesOfTheDeckToHec1AndLeavesNoFolderBehind)
{
    const QByteArray bytes = "A1  *FREE, odd \xFF bytes\nwithout an end";
    options.decks << deck("a.dat", bytes);
    options.peaks = services.path("p.csv");
    options.report = services.path("r.txt");
    options.json = services.path("j.json");
    options.details = services.path("d.csv");
    EXPECT_EQ(run(), kNormalEnd);
    EXPECT_TRUE(output("r.txt").startsWith("REPORT OF " + bytes));
    EXPECT_EQ(output("p.csv"),
              QByteArray(kPeaksHeading) + options.decks[0].toUtf8() + ",A1  *FRE,1,1,1,3,0.166667,0.027548,cfs\r\n");
    EXPECT_EQ(output("d.csv"), "station,value\r\nA1  *FRE,1\r\n") << "of one deck as HEC-1 wrote it";
    EXPECT_TRUE(talk.isEmpty()) << talk.join('\n').toStdString();
    EXPECT_FALSE(QFileInfo::exists(lastFolder));
}

struct DeckStatus
{
    const char* deck; ///< its first word is the row's name
    int status;
    const char* talk;
};

class Statuses : public BatchRunTest, public testing::WithParamInterface<DeckStatus>
{
};

TEST_P(Statuses, OfOneDeck)
{
    const QString path = deck("a.dat", GetParam().deck);
    options.decks << path;
    options.peaks = services.path("p.csv");
    EXPECT_EQ(run(), GetParam().status);
    ASSERT_FALSE(talk.isEmpty());
    EXPECT_TRUE(talk.first().startsWith(path + ": "));
    EXPECT_TRUE(talk.join('\n').contains(QLatin1String(GetParam().talk))) << talk.join('\n').toStdString();
    EXPECT_EQ(output("p.csv"), kPeaksHeading);
}

INSTANTIATE_TEST_SUITE_P(, Statuses,
                         testing::Values(DeckStatus{"errors", kHecErrors, "*** HEC1 ERROR 12 *** CARD 3"},
                                         DeckStatus{"nothing", kNoRun, "wrote no report"},
                                         DeckStatus{"crash", kNoRun, "crashed"},
                                         DeckStatus{"noko", kNormalEnd, "no KO card has 21 in field 5"},
                                         DeckStatus{"torn", kFileTrouble, "station header"},
                                         DeckStatus{"nostep", kFileTrouble, "the time step (NMIN)"}),
                         [](const auto& row) { return row.param.deck; });

TEST_F(BatchRunTest, ATimeStepThatDoesNotFitIntoTheTapeComesFromTheReport)
{
    options.decks << deck("a.dat", "daily");
    options.peaks = services.path("p.csv");
    options.hydrographs = services.path("h.csv");
    EXPECT_EQ(run(), kNormalEnd) << talk.join('\n').toStdString();
    // 1, 2, 3 cfs a day apart: 4 cfs x 86,400 s / 43,560.
    EXPECT_TRUE(output("p.csv").endsWith(",daily,1,1,1,3,48,7.933884,cfs\r\n")) << output("p.csv").toStdString();
    EXPECT_TRUE(output("h.csv").endsWith(",2880,3,cfs\r\n"));
}

TEST_F(BatchRunTest, ManyDecksKeepTheirOrderWhateverTheJobs)
{
    for (int i = 0; i < 40; ++i)
        options.decks << deck(QString("d%1.dat").arg(i),
                              i % 7 == 3 ? QByteArray("errors") : 'S' + QByteArray::number(i));
    options.decks << services.path("missing.dat");
    QByteArray first;
    QStringList firstTalk;
    for (const int jobs : {1, 2, 8}) {
        options.jobs = jobs;
        options.json = services.path("j.json");
        options.hydrographs = services.path("h.csv");
        options.details = services.path("d.csv");
        talk.clear();
        EXPECT_EQ(run(), kFileTrouble);
        const QByteArray all = output("j.json") + output("h.csv") + output("d.csv");
        if (jobs == 1) {
            first = all;
            firstTalk = talk;
            EXPECT_EQ(all.count("\"deck\""), 41);
            EXPECT_EQ(all.count("deck,station,value"), 1) << "one heading over the details of all decks";
        }
        EXPECT_EQ(all, first) << jobs;
        EXPECT_EQ(talk, firstTalk);
    }
}

TEST_F(BatchRunTest, AnOutputThatCannotBeWrittenIsToldAheadOfAnyRun)
{
    options.decks << deck("a.dat", "A");
    options.peaks = services.path("no/such/folder/p.csv");
    EXPECT_EQ(run(), kFileTrouble);
    EXPECT_EQ(started, 0);
    EXPECT_TRUE(talk.value(0).contains("cannot be written"));
}

TEST_F(BatchRunTest, KeepLeavesTheRunFolderAndTellsIt)
{
    options.decks << deck("a.dat", "A");
    options.peaks = services.path("p.csv");
    options.keep = true;
    EXPECT_EQ(run(), kNormalEnd);
    EXPECT_TRUE(talk.value(0).endsWith(lastFolder));
    EXPECT_TRUE(QFileInfo::exists(lastFolder + "/TAPE21"));
    QDir(lastFolder).removeRecursively();
}

TEST_F(BatchRunTest, NoHec1IsToldForEveryDeck)
{
    engine = {{}, {}, {}, "There is no HEC-1."};
    options.decks << deck("a.dat", "A") << deck("b.dat", "B");
    options.peaks = services.path("p.csv");
    EXPECT_EQ(run(), kNoRun);
    EXPECT_EQ(talk.filter("There is no HEC-1.").size(), 2);
}

TEST_F(BatchRunTest, APictureNeedsHydrographsAndItsProgram)
{
    options.decks << deck("a.dat", "noko");
    options.plot = services.path("p.png");
    EXPECT_EQ(run(), kFileTrouble);
    EXPECT_TRUE(talk.last().contains("there are no hydrographs"));
    options.decks = {deck("a.dat", "A")};
    EXPECT_EQ(run(), kFileTrouble);
    EXPECT_TRUE(talk.last().contains("kalvo-plot"));
}

} // namespace
} // namespace kalvo
