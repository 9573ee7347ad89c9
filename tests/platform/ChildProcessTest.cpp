// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/QtChildProcess.h"
#include "platform/QtClock.h"
#include "tests/support/GridText.h"
#include "tests/support/ScriptedServices.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QProcess>
#include <QTimer>

#include <gtest/gtest.h>

#include <array>
#include <thread>
#include <vector>

using namespace kalvo;
using Kind = ProcessEnd::Kind;

namespace {

#if defined(Q_OS_WIN)
const QString kChild = QStringLiteral(KALVO_BIN_DIR "/test_child.exe");
#else
const QString kChild = QStringLiteral(KALVO_BIN_DIR "/test_child");
#endif

class ChildProcesses : public testing::Test
{
protected:
    ProcessStart start(const QStringList& arguments)
    {
        ProcessStart s;
        s.program = kChild;
        s.arguments = arguments;
        s.workingFolder = folder.path();
        return s;
    }
    QString path(const QString& name) const { return folder.filePath(name); }

    /// Calls `then` once the child has shown that it lives.
    void whenBeating(std::function<void()> then)
    {
        auto* timer = new QTimer(&owner);
        QObject::connect(timer, &QTimer::timeout, &owner, [this, timer, then = std::move(then)] {
            if (QFileInfo(path("beat")).size() == 0)
                return;
            timer->stop();
            then();
        });
        timer->start(5);
    }

    /// True when nothing adds to the beat any more.
    bool isSilent() const
    {
        const qint64 before = QFileInfo(path("beat")).size();
        std::this_thread::sleep_for(std::chrono::milliseconds(150));
        return QFileInfo(path("beat")).size() == before;
    }

    QTemporaryDir folder{QDir::tempPath() + QStringLiteral("/kalvo test \u00e9XXXXXX")};
    QObject owner;
    QtChildProcess process;
};

TEST_F(ChildProcesses, EndAsTheyEnd)
{
    EXPECT_EQ(process.run(start({"exit", "0"})).kind, Kind::Exited);
    const ProcessEnd end = process.run(start({"exit", "3"}));
    EXPECT_EQ(end.kind, Kind::Exited);
    EXPECT_EQ(end.exitCode, 3);
    EXPECT_EQ(process.run(start({"crash"})).kind, Kind::Crashed);
    EXPECT_FALSE(process.isRunning());
}

TEST_F(ChildProcesses, RunInTheirFolderWithBothStreamsInTheFile)
{
    ASSERT_EQ(process.run(start({"where"})).exitCode, 0);
    EXPECT_EQ(readFile(path("where.txt")), QFileInfo(folder.path()).fileName().toUtf8());

    ProcessStart print = start({"print", "a  \"quoted\" b"});
    print.outputFile = "kalvodebugoutput.txt";
    ASSERT_EQ(process.run(print).exitCode, 0);
    const QByteArray output = readFile(path("kalvodebugoutput.txt")).value_or("");
    EXPECT_TRUE(output.contains("a  \"quoted\" b")) << output.toStdString();
    EXPECT_TRUE(output.contains("and on the other stream")) << output.toStdString();

    EXPECT_EQ(process.run(start({"input"})).exitCode, 0) << "a program that reads must not wait for a keyboard";
}

TEST_F(ChildProcesses, SayWhyTheyDidNotStart)
{
    ProcessStart missing = start({});
    missing.program = path("no such program");
    ProcessEnd end = process.run(missing);
    EXPECT_EQ(end.kind, Kind::NotStarted);
    EXPECT_TRUE(end.message.contains("does not exist")) << end.message.toStdString();

    ASSERT_TRUE(writeFile(path("hec1"), "just a text"));
    ProcessStart notAProgram = start({});
    notAProgram.program = path("hec1");
    end = process.run(notAProgram);
    EXPECT_EQ(end.kind, Kind::NotStarted);
    EXPECT_TRUE(end.message.contains("is not a program")) << end.message.toStdString();

    ASSERT_TRUE(QFile::setPermissions(path("hec1"), QFile::ReadOwner | QFile::ExeOwner));
    end = process.run(notAProgram); // allowed to start, but nothing that the system understands
    EXPECT_EQ(end.kind, Kind::NotStarted);
    EXPECT_TRUE(end.message.contains("could not be started")) << end.message.toStdString();

    ProcessStart nowhere = start({"exit", "0"});
    nowhere.workingFolder = path("gone");
    end = process.run(nowhere);
    EXPECT_EQ(end.kind, Kind::NotStarted);
    EXPECT_TRUE(end.message.contains("gone")) << end.message.toStdString();

    ProcessStart noOutput = start({"exit", "0"});
    noOutput.outputFile = "gone/output.txt";
    EXPECT_EQ(process.run(noOutput).kind, Kind::NotStarted);
    EXPECT_EQ(process.run(start({"exit", "0"})).kind, Kind::Exited) << "and the next run is as good as new";
}

TEST_F(ChildProcesses, StopReachesWhatTheProgramStarted)
{
    whenBeating([&] {
        EXPECT_TRUE(process.isRunning());
        process.stop();
    });
    EXPECT_EQ(process.run(start({"parent", "beat"})).kind, Kind::Stopped);
    EXPECT_TRUE(isSilent());
    process.stop(); // nothing runs: nothing happens
    EXPECT_EQ(process.run(start({"exit", "4"})).exitCode, 4);
}

TEST_F(ChildProcesses, MayBeStoppedFromAnotherThread)
{
    std::thread other([&] {
        while (QFileInfo(path("beat")).size() == 0)
            std::this_thread::sleep_for(std::chrono::milliseconds(2));
        process.stop();
    });
    EXPECT_EQ(process.run(start({"hang", "beat"})).kind, Kind::Stopped);
    other.join();
    EXPECT_TRUE(isSilent());
}

TEST_F(ChildProcesses, EndWithTheirTime)
{
    ProcessStart hang = start({"hang", "beat"});
    hang.timeoutMs = 150;
    QElapsedTimer clock;
    clock.start();
    EXPECT_EQ(process.run(hang).kind, Kind::Stopped);
    EXPECT_GE(clock.elapsed(), 149);
    EXPECT_LT(clock.elapsed(), 5000);
    ProcessStart quick = start({"exit", "0"});
    quick.timeoutMs = 60000;
    EXPECT_EQ(process.run(quick).kind, Kind::Exited);
}

TEST_F(ChildProcesses, LetEventsRunButNoSecondProgram)
{
    ProcessEnd second;
    whenBeating([&] {
        second = process.run(start({"exit", "0"}));
        process.stop();
    });
    process.run(start({"hang", "beat"}));
    EXPECT_EQ(second.kind, Kind::NotStarted);
    EXPECT_TRUE(second.message.contains("still running")) << second.message.toStdString();
}

TEST_F(ChildProcesses, GoWithTheApplication)
{
    whenBeating([] { QCoreApplication::quit(); });
    ProcessEnd end;
    QTimer::singleShot(0, &owner, [&] { end = process.run(start({"hang", "beat"})); });
    QCoreApplication::exec();
    EXPECT_EQ(end.kind, Kind::Stopped);
    EXPECT_TRUE(isSilent());
}

TEST_F(ChildProcesses, RunSideBySideInThreads)
{
    std::vector<std::thread> threads;
    std::array<int, 6> codes{};
    for (size_t i = 0; i < codes.size(); ++i)
        threads.emplace_back([this, i, &codes] {
            QtChildProcess own;
            for (int k = 0; k < 5; ++k)
                codes[i] += own.run(start({"exit", QString::number(i)})).exitCode;
        });
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(codes, (std::array<int, 6>{0, 5, 10, 15, 20, 25}));
}

TEST_F(ChildProcesses, CostLittleMoreThanTheBareProcess)
{
    // The peer starts and waits without an event loop. Best of many, because the machine has other work too.
    qint64 bare = std::numeric_limits<qint64>::max();
    qint64 ours = bare;
    for (int i = 0; i < 15; ++i) {
        QElapsedTimer clock;
        clock.start();
        QProcess peer;
        peer.start(kChild, {"exit", "0"});
        ASSERT_TRUE(peer.waitForFinished());
        bare = std::min(bare, clock.nsecsElapsed());
        clock.restart();
        ASSERT_EQ(process.run(start({"exit", "0"})).exitCode, 0);
        ours = std::min(ours, clock.nsecsElapsed());
    }
    RecordProperty("bare_us", static_cast<int>(bare / 1000));
    RecordProperty("ours_us", static_cast<int>(ours / 1000));
    EXPECT_LT(ours - bare, 5'000'000) << "bare " << bare << " ns, ours " << ours << " ns";
}

#if defined(Q_OS_UNIX) && !defined(Q_OS_MACOS)
/// The search path holds `folder` alone, and the shell.
class OnlyOnPath
{
public:
    explicit OnlyOnPath(const QString& folder) : m_before(qgetenv("PATH"))
    {
        qputenv("PATH", QFile::encodeName(folder));
    }
    ~OnlyOnPath() { qputenv("PATH", m_before); }

private:
    QByteArray m_before;
};

TEST_F(ChildProcesses, OpenAWindowWhereThereIsATerminal)
{
    ProcessStart inWindow = start({"INPUT=a b.dat", "$HOME"});
    inWindow.inWindow = true;
    const OnlyOnPath only(folder.path());
    ProcessEnd end = process.run(inWindow);
    EXPECT_EQ(end.kind, Kind::NotStarted);
    EXPECT_TRUE(end.message.contains("no terminal program")) << end.message.toStdString();

    // A terminal that writes down what it was asked to run.
    ASSERT_TRUE(writeFile(path("xterm"), "#!/bin/sh\nfor word; do printf '%s\\n' \"$word\"; done > words.part\n"
                                         "/bin/mv words.part words\n"));
    ASSERT_TRUE(QFile::setPermissions(path("xterm"), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
    end = process.run(inWindow);
    EXPECT_EQ(end.kind, Kind::Exited) << end.message.toStdString();
    for (int i = 0; i < 500 && !QFile::exists(path("words")); ++i)
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    const QStringList words = QString::fromUtf8(readFile(path("words")).value_or("")).split(QLatin1Char('\n'));
    ASSERT_GE(words.size(), 8);
    EXPECT_EQ(words.mid(0, 3), (QStringList{"-e", "sh", "-c"}));
    EXPECT_EQ(words.mid(words.indexOf(kChild), 3), (QStringList{kChild, "INPUT=a b.dat", "$HOME"}));
}
#endif

TEST(QtClocks, WaitWithEventsRunning)
{
    QtClock clock;
    int turns = 0;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, [&] { ++turns; });
    timer.start(1);
    const QDateTime before = clock.now();
    clock.wait(40);
    EXPECT_GE(before.msecsTo(clock.now()), 39);
    EXPECT_GT(turns, 2);
}

} // namespace
