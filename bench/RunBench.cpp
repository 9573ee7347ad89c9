// SPDX-License-Identifier: GPL-3.0-or-later
// What a run costs beyond the engine's own process: the bare engine, the run from deck to judged outcome, and
// kalvo-run, in turns so that a busy machine is busy for all of them.
#include "platform/QtChildProcess.h"
#include "run/BatchRun.h"
#include "run/RunDriver.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>

using namespace kalvo;

namespace {

constexpr int kRounds = 60;
constexpr auto kDeck = "ID bench\r\n"
                       "IT    15                     100\r\n"
                       "IO     5\r\n"
                       "KK  SUB1\r\n"
                       "KO     5       0       0       0      21\r\n"
                       "BA   1.5\r\n"
                       "PB   4.0\r\n"
                       "PC   0.0     0.1     0.3     0.6     0.9     1.0\r\n"
                       "LS     0      80\r\n"
                       "UD   0.8\r\n"
                       "ZZ\r\n";

/// Least and middle of the times, in milliseconds.
struct Times
{
    std::vector<double> all;
    double least() const { return *std::min_element(all.begin(), all.end()); }
    double middle()
    {
        std::nth_element(all.begin(), all.begin() + kRounds / 2, all.end());
        return all[kRounds / 2];
    }
};

template <class Work> void add(Times& times, const Work& work)
{
    QElapsedTimer timer;
    timer.start();
    work();
    times.all.push_back(static_cast<double>(timer.nsecsElapsed()) / 1e6);
}

bool isWhole(const ProcessEnd& end)
{
    return end.kind == ProcessEnd::Kind::Exited && end.exitCode == 0;
}

} // namespace

int main(int argc, char* argv[])
{
    QCoreApplication app(argc, argv);
    const QTemporaryDir home;
    const QString bin = QStringLiteral(KALVO_BIN_DIR "/");
    const RunFolder folder{ProgramFolder(home.path(), {})};
    if (!writeFile(home.filePath("checky.dat"), kDeck))
        return 1;
    HecEngine engine;
    engine.path = engine.program = bin + "hec1";
    QtChildProcess process;
    Times bare, judged, batch;
    for (int i = 0; i < kRounds; ++i) {
        bool ok = true;
        add(bare, [&] {
            ok = ok && isWhole(process.run(
                           {engine.program, {"INPUT=checky.dat", "OUTPUT=o", "DSS=d"}, home.path(), {}, false, 0}));
        });
        add(judged, [&] { ok = ok && folder.clear().isEmpty() && runHec1(folder, engine, process).isNormalEnd(); });
        add(batch, [&] {
            ok = ok && isWhole(process.run(
                           {bin + "kalvo-run", {"--peaks", "p.csv", "checky.dat"}, home.path(), {}, false, 0}));
        });
        if (!ok) {
            std::fputs("a run did not end normally\n", stderr);
            return 1;
        }
    }
    std::printf("milliseconds (least, middle of %d; differences of the least, which a busy machine disturbs least)\n",
                kRounds);
    std::printf("bare engine:      %7.2f %7.2f\n", bare.least(), bare.middle());
    std::printf("judged run:       %7.2f %7.2f   above the engine: %6.2f  (goal: at most 20)\n", judged.least(),
                judged.middle(), judged.least() - bare.least());
    std::printf("kalvo-run:        %7.2f %7.2f   above the engine: %6.2f  (goal: at most 30)\n", batch.least(),
                batch.middle(), batch.least() - bare.least());
    return 0;
}
