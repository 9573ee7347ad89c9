// SPDX-License-Identifier: GPL-3.0-or-later
// The output viewer over a report of 100 MB: from asking for it to the first screen, its outline, what it holds in
// memory, a search to the end; and the shrink of 200,000 lines. Beside them the file read and walked over once, as bare
// limits.
#include "bench/BenchServices.h"
#include "platform/LargeTextView.h"
#include "run/Form12_OutputViewer.h"
#include "run/OutlineDock.h"
#include "run/ViewerScreens.h"

#include <QApplication>
#include <QFile>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <cstring>

using namespace kalvo;

namespace {

constexpr qsizetype kReportBytes = qsizetype(100) << 20;
constexpr qsizetype kShrinkLines = 200'000;

QByteArray pageHeading(qsizetype page)
{
    return "1" + QByteArray(55, ' ') + "HEC-1 INPUT" + QByteArray(45, ' ') + "PAGE" +
           QByteArray::number(page).rightJustified(3) + "\r\n\r\n   LINE      ID.......1.......2.......3\r\n\r\n\r\n";
}

/// The input listing: pages of fifty cards with an empty line ahead of each station.
QByteArray listing(qsizetype lines)
{
    QByteArray text;
    for (qsizetype page = 1, line = 0; line < lines; ++page) {
        text += pageHeading(page);
        for (int card = 0; card < 50; ++card)
            text += card % 12 == 0 ? "\r\n      6      KK    SUB1  UPPER BRUSH FORK\r\n"
                                   : "     12      PC  0.0632  0.0712  0.0797  0.0887  0.0984  0.1089  0.1203\r\n";
        text += "  \r\n \r\n\r\n\r\n";
        line += 63;
    }
    return text;
}

/// One station at print level 1: box, echo, unit graph and a table of 150 lines.
QByteArray station(int number)
{
    const QByteArray name = "S" + QByteArray::number(number);
    QByteArray text = QByteArray(" ***").repeated(33) +
                      "\r\n\r\n                   **************\r\n"
                      "    6 KK           *" +
                      name.rightJustified(10) +
                      "  *      UPPER BRUSH FORK\r\n"
                      "                   **************\r\n\r\n    8 BA        SUBBASIN CHARACTERISTICS\r\n"
                      "                    TAREA        5.60  SUBBASIN AREA\r\n\r\n"
                      "                                                           UNIT HYDROGRAPH\r\n"
                      "             67.      203.      391.      661.      977.     1213.     1345.\r\n\r\n"
                      "                                            HYDROGRAPH AT STATION " +
                      name + "\r\n\r\n";
    for (int line = 0; line < 150; ++line)
        text += "    15 JUN 0000    1     .00     .00       .00          2.        *"
                "    15 JUN 1230  151     .02     .00       .01        579.\r\n";
    return text;
}

QByteArray largeReport()
{
    QByteArray text = "1" + QByteArray(41, '*') + "\r\n";
    for (int line = 2; line < 7; ++line)
        text += " *\r\n";
    text += " * RUN DATE  23NOV26  TIME  06:09:33     *\r\n" + QByteArray(1500, ' ') + "\r\n" + listing(100'000);
    for (int number = 1; text.size() < kReportBytes; ++number)
        text += station(number);
    return text + " *** NORMAL END OF HEC-1 ***\r\n";
}

struct Viewer : BenchServices<>
{
    Screens screens;
    QString path = directory.filePath(QStringLiteral("checky.out"));
    qsizetype size = 0;

    Viewer()
    {
        const QByteArray report = largeReport();
        size = report.size();
        if (!writeFile(path, report))
            qFatal("cannot write %s", qPrintable(path));
        registerOutputViewers({screens, services, [] {}, {}});
    }
    Form12& form() { return *screens.loadAs<Form12>(QStringLiteral("Form12")); }
    LargeTextView& rb1() { return *form().findChild<LargeTextView*>(QStringLiteral("rb1")); }
    OutlineDock& outline() { return *form().findChild<OutlineDock*>(QStringLiteral("Outline")); }

    void unload()
    {
        screens.unload(QStringLiteral("Form12"));
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QApplication::processEvents();
    }
    void showToFirstPaint()
    {
        screens.show(QStringLiteral("Form12"));
        rb1().repaint();
        form().repaint();
    }
    void readOutline()
    {
        while (!outline().isComplete())
            QApplication::processEvents();
    }
};

Viewer& viewer()
{
    static Viewer made;
    return made;
}

/// Bytes in memory, -1 where the system does not tell.
qint64 residentBytes()
{
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly))
        return -1;
    for (const QByteArray& line : status.readAll().split('\n'))
        if (line.startsWith("VmRSS:"))
            return line.mid(6).trimmed().split(' ').front().toLongLong() * 1024;
    return -1;
}

qsizetype linesByMemchr(const char* at, const char* end)
{
    qsizetype lines = 0;
    for (; (at = static_cast<const char*>(std::memchr(at, '\n', static_cast<size_t>(end - at)))) != nullptr; ++at)
        ++lines;
    return lines;
}

void readFileAlone(benchmark::State& state)
{
    for (auto _ : state) {
        const auto bytes = readFile(viewer().path);
        benchmark::DoNotOptimize(bytes->constData());
    }
}

void firstScreen(benchmark::State& state)
{
    for (auto _ : state) {
        viewer().showToFirstPaint();
        state.PauseTiming();
        viewer().unload();
        state.ResumeTiming();
    }
}

void walkOverLinesAlone(benchmark::State& state)
{
    const QByteArray bytes = *readFile(viewer().path);
    for (auto _ : state)
        benchmark::DoNotOptimize(linesByMemchr(bytes.constData(), bytes.constData() + bytes.size()));
}

void outlineToItsEnd(benchmark::State& state)
{
    viewer().showToFirstPaint();
    for (auto _ : state) {
        viewer().outline().restart();
        viewer().readOutline();
    }
    viewer().unload();
}

void findToTheEnd(benchmark::State& state)
{
    viewer().showToFirstPaint();
    const TextNeedle wanted("normal end of", Qt::CaseInsensitive);
    for (auto _ : state)
        benchmark::DoNotOptimize(viewer().rb1().text().find(wanted));
    viewer().unload();
}

/// Memory while the report is shown with its whole outline, as multiples of the file.
void memoryOfTheFile(benchmark::State& state)
{
    for (auto _ : state) {
        const qint64 before = residentBytes();
        viewer().showToFirstPaint();
        viewer().readOutline();
        state.counters["files"] = static_cast<double>(residentBytes() - before) / static_cast<double>(viewer().size);
        viewer().unload();
    }
}

void moveTextAlone(benchmark::State& state)
{
    QByteArray text = listing(kShrinkLines);
    for (auto _ : state) {
        std::memmove(text.data(), text.constData() + 1, static_cast<size_t>(text.size() - 1));
        benchmark::DoNotOptimize(linesByMemchr(text.constData(), text.constData() + text.size()));
    }
}

void shrinkLines(benchmark::State& state)
{
    const QByteArray text = listing(kShrinkLines);
    ShrinkResult result;
    for (auto _ : state) {
        state.PauseTiming();
        TextBuffer report{QByteArray(text.constData(), text.size())};
        state.ResumeTiming();
        result = shrinkOutput(report);
    }
    state.counters["lines"] = static_cast<double>(result.linesBefore);
    state.counters["taken"] = static_cast<double>(result.linesTaken());
}

BENCHMARK(memoryOfTheFile)->Unit(benchmark::kMillisecond)->Iterations(1); // ahead of what leaves memory behind
BENCHMARK(readFileAlone)->Unit(benchmark::kMillisecond);
BENCHMARK(firstScreen)->Unit(benchmark::kMillisecond);
BENCHMARK(walkOverLinesAlone)->Unit(benchmark::kMillisecond);
BENCHMARK(outlineToItsEnd)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(findToTheEnd)->Unit(benchmark::kMillisecond);
BENCHMARK(moveTextAlone)->Unit(benchmark::kMillisecond);
BENCHMARK(shrinkLines)->Unit(benchmark::kMillisecond);

} // namespace
