// SPDX-License-Identifier: GPL-3.0-or-later
// kalvo-run as its users start it: the built program, with the engine of this house or with a HEC-1 that ends badly.
#include "tests/support/GridText.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QThread>

#include <gtest/gtest.h>

namespace kalvo {
namespace {

constexpr int kLongestMs = 60000;

QString program(const char* name)
{
#ifdef Q_OS_WIN
    return QString::fromLatin1(KALVO_BIN_DIR "/%1.exe").arg(QLatin1String(name));
#else
    return QString::fromLatin1(KALVO_BIN_DIR "/%1").arg(QLatin1String(name));
#endif
}

struct KalvoRun : testing::Test
{
    QTemporaryDir folder;
    QString temporary; ///< where kalvo-run makes its run folders: must be empty afterwards
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    QByteArray out, err;

    KalvoRun()
    {
        useTemporary("tmp");
        for (const char* name : {"KALVO_HEC1", "KALVO_HOME"})
            environment.remove(QString::fromLatin1(name));
    }
    ~KalvoRun() override { EXPECT_TRUE(left().isEmpty()) << "left behind: " << left().join(' ').toStdString(); }

    void useTemporary(const QString& name)
    {
        QDir(folder.path()).mkpath(name);
        temporary = folder.filePath(name);
        environment.insert("TMPDIR", temporary);
    }
    QStringList left() const
    {
        return QDir(temporary).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
    }
    void useFakeHec1() { environment.insert("KALVO_HEC1", program("fake_hec1")); }
    QString deck(const QString& name, const QByteArray& text)
    {
        QFile file(folder.filePath(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.write(text) == text.size());
        return file.fileName();
    }
    static QString sample(const char* name)
    {
        return QString::fromLatin1(KALVO_SOURCE_DIR "/tests/decks/") + QLatin1String(name);
    }
    QByteArray file(const char* name) const
    {
        QFile there(folder.filePath(QLatin1String(name)));
        return there.open(QIODevice::ReadOnly) ? there.readAll() : QByteArray("not there");
    }
    int run(const QStringList& arguments)
    {
        QProcess process;
        start(process, arguments);
        EXPECT_TRUE(process.waitForFinished(kLongestMs));
        return end(process);
    }
    void start(QProcess& process, const QStringList& arguments)
    {
        process.setProcessEnvironment(environment);
        process.setWorkingDirectory(folder.path());
        process.start(program("kalvo-run"), arguments);
        ASSERT_TRUE(process.waitForStarted(kLongestMs)) << process.errorString().toStdString();
    }
    int end(QProcess& process)
    {
        out = process.readAllStandardOutput();
        err = process.readAllStandardError();
        return process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
    }
};

TEST_F(KalvoRun, EverySampleDeckRuns)
{
    const QDir samples(QString::fromLatin1(KALVO_SOURCE_DIR "/tests/decks"));
    QStringList decks;
    for (const QString& name : samples.entryList({"*.dat"}))
        decks << samples.filePath(name);
    ASSERT_GE(decks.size(), 10);
    EXPECT_EQ(run(decks), 0) << err.toStdString();
    EXPECT_EQ(out.count("detent.dat,"), 5 * 6) << "five stations, six ratios";
    EXPECT_TRUE(out.contains("metric.dat,UP,1,1,1,"));
    EXPECT_EQ(out.count(",m3/s\r\n"), out.count("metric.dat,"));
}

TEST_F(KalvoRun, OutputIsTheSameForAnyJobsUnderAnyLocale)
{
    const QStringList decks{sample("detent.dat"), sample("plans2.dat"), sample("metric.dat"), sample("jdarea.dat")};
    QByteArray first;
    for (const char* locale : {"C", "de_DE.UTF-8", "tr_TR.UTF-8", "ar_EG.UTF-8", "no_SUCH"})
        for (const char* jobs : {"1", "3"}) {
            environment.insert("LC_ALL", locale);
            ASSERT_EQ(
                run(QStringList{"--jobs", jobs, "--peaks", "p.csv", "--hydrographs", "h.csv", "--json", "-"} + decks),
                0)
                << locale << err.toStdString();
            EXPECT_EQ(err, "") << locale;
            const QByteArray all = out + file("p.csv") + file("h.csv");
            if (first.isEmpty())
                first = all;
            EXPECT_EQ(all == first, true) << locale << " with " << jobs << " jobs";
        }
    EXPECT_TRUE(first.contains("\r\n"));
}

TEST_F(KalvoRun, FoldersMayHaveAnyName)
{
    const QString odd = QString::fromUtf8("\u00dcber die Br\u00fccke, \"na\u00efve\" ") + QString(180, 'x');
    useTemporary(odd);
    const QString path = folder.filePath(odd) + "-deck";
    QDir().mkpath(path);
    const QString deck = path + QString::fromUtf8("/\u6d2a\u6c34 1.dat");
    ASSERT_TRUE(QFile::copy(sample("scs1.dat"), deck));
    for (const char* locale : {"C", "de_DE.UTF-8"}) {
        environment.insert("LC_ALL", locale);
        EXPECT_EQ(run({deck, "--peaks", path + "/p.csv"}), 0) << err.toStdString();
        QFile peaks(path + "/p.csv");
        ASSERT_TRUE(peaks.open(QIODevice::ReadOnly));
        EXPECT_TRUE(peaks.readAll().contains(QString(deck).replace("\"", "\"\"").toUtf8()));
    }
}

TEST_F(KalvoRun, APictureIsDrawn)
{
    EXPECT_EQ(run({sample("scs1.dat"), "--plot", "p.png"}), 0) << err.toStdString();
    EXPECT_TRUE(file("p.png").startsWith("\x89PNG"));
}

struct End
{
    const char* deck; ///< what the HEC-1 does, and the row's name
    int status;
    const char* words; ///< on standard error
};

class Ends : public KalvoRun, public testing::WithParamInterface<End>
{
};

TEST_P(Ends, OfABadHec1)
{
    useFakeHec1();
    const QString path = deck("a deck.dat", GetParam().deck);
    EXPECT_EQ(run({path}), GetParam().status);
    EXPECT_TRUE(err.contains(GetParam().words)) << err.toStdString();
    EXPECT_TRUE(QByteArray(GetParam().words).isEmpty() || err.contains("a deck.dat: "));
    EXPECT_TRUE(out.startsWith("deck,station,plan,ratio,jd,peak,time_to_peak_h,volume,unit\r\n"));
}

INSTANTIATE_TEST_SUITE_P(, Ends,
                         testing::Values(End{"good", 0, ""},
                                         End{"errors", 1, "*** HEC1 ERROR 12 *** CARD OUT OF ORDER"},
                                         End{"nothing", 6, "wrote no report"}, End{"crash", 6, "crashed"},
                                         End{"torn", 3, "TAPE21"}, End{"huge", 0, ""}),
                         [](const auto& row) { return row.param.deck; });

TEST_F(KalvoRun, TheHighestStatusOfAllDecksCounts)
{
    useFakeHec1();
    EXPECT_EQ(run({deck("1", "good"), deck("2", "errors"), deck("3", "good")}), 1);
    EXPECT_EQ(run({deck("1", "good"), deck("2", "errors"), "missing.dat"}), 3);
    EXPECT_EQ(run({deck("1", "crash"), deck("2", "errors"), "missing.dat"}), 6);
    EXPECT_TRUE(err.contains("missing.dat: the deck does not exist"));
}

TEST_F(KalvoRun, WrongUsageAndUnwritableOutputs)
{
    EXPECT_EQ(run({}), 2);
    EXPECT_EQ(run({"--nonsense", "a.dat"}), 2);
    EXPECT_TRUE(err.contains("--help"));
    EXPECT_EQ(run({"--help"}), 0);
    EXPECT_TRUE(out.contains("--timeout"));
    useFakeHec1();
    const QString good = deck("good.dat", "good");
    EXPECT_EQ(run({good, "--peaks", "no/such/folder.csv"}), 3);
    EXPECT_EQ(run({good, "--peaks", "."}), 3);
    if (QFile::exists("/dev/full")) {
        EXPECT_EQ(run({good, "--peaks", "/dev/full"}), 3) << "a full disk is told at the close";
    }
    environment.insert("KALVO_HEC1", folder.filePath("nowhere"));
    EXPECT_EQ(run({good}), 6);
    EXPECT_TRUE(err.contains("does not exist"));
}

TEST_F(KalvoRun, AHangingDeckEndsAtTheTimeLimit)
{
    useFakeHec1();
    QElapsedTimer timer;
    timer.start();
    EXPECT_EQ(run({"--timeout", "0.3", deck("a", "hang"), deck("b", "good")}), 5);
    EXPECT_LT(timer.elapsed(), 20000);
    EXPECT_TRUE(err.contains("longer than the time limit")) << err.toStdString();
    EXPECT_TRUE(out.contains("b,STA1,1,1,1,1234567.5,"));
}

TEST_F(KalvoRun, AnInterruptStopsTheChildrenAndRemovesTheFolders)
{
    useFakeHec1();
    environment.insert("KALVO_TEST_SIGN", folder.filePath("sign"));
    QStringList decks;
    for (int i = 0; i < 6; ++i)
        decks << deck(QString("d%1").arg(i), "hang");
    QProcess process;
    start(process, QStringList{"--jobs", "2"} + decks);
    for (int i = 0; i < 1000 && !QFile::exists(folder.filePath("sign")); ++i)
        QThread::msleep(10);
    ASSERT_FALSE(left().isEmpty()) << "it runs";
    process.terminate();
    ASSERT_TRUE(process.waitForFinished(kLongestMs));
    EXPECT_EQ(end(process), 5) << err.toStdString();
    EXPECT_TRUE(err.contains("d5: cancelled ahead of its start"));
}

} // namespace
} // namespace kalvo
