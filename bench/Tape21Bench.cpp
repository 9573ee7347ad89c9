// SPDX-License-Identifier: GPL-3.0-or-later
// The readers of TAPE21 beside the bare limit: std::from_chars over the mapped file, item by item. The program makes
// its file itself (500 stations, 6 ratios, 2,000 ordinates) and ends with the ratios, which do not depend on the
// machine.
#include "bench/LargeTape.h"
#include "platform/Services.h"
#include "run/IndexTable.h"
#include "run/Tape21Tables.h"

#include <QFile>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <charconv>
#include <fstream>
#include <iostream>
#include <map>

using namespace kalvo;

namespace {

constexpr int kStations = 500;
constexpr int kRatios = 6;
constexpr int kOrdinates = 2000;
constexpr double kValues = double(kStations) * kRatios * kOrdinates;

class Measure : public TextMeasure
{
public:
    int textWidth(const QString& text) const override { return 120 * static_cast<int>(text.size()); }
    QStringList fontNames() const override { return {}; }
};

QString g_path;

double bareLoop(const char* at, const char* end)
{
    double largest = 0.0;
    while (at != end) {
        double value = 0.0;
        const auto [next, error] = std::from_chars(at, end, value);
        if (error == std::errc()) {
            largest = std::max(largest, value);
            at = next;
        } else {
            ++at; // blanks, line ends, the letters of headers
        }
    }
    return largest;
}

void BareLoop(benchmark::State& state)
{
    for (auto _ : state) {
        QFile file(g_path);
        if (!file.open(QIODevice::ReadOnly))
            return state.SkipWithError("no file");
        const auto* bytes = reinterpret_cast<const char*>(file.map(0, file.size()));
        benchmark::DoNotOptimize(bareLoop(bytes, bytes + file.size()));
    }
}

void FullReader(benchmark::State& state)
{
    const Measure measure;
    for (auto _ : state) {
        ResultTables tables;
        if (const auto problem = fillTables(readTape21File(g_path), tables, measure))
            return state.SkipWithError(qUtf8Printable(problem->text()));
        state.PauseTiming();
        if (tables.peakRow.cols() != kStations * kRatios + 1 || tables.hydrographTable.rows() != kOrdinates + 1)
            state.SkipWithError("the table is not whole");
        state.ResumeTiming();
    }
}

void IndexReader(benchmark::State& state)
{
    for (auto _ : state) {
        FlexGrid grid;
        IndexLists lists;
        RunCounts counts;
        if (const auto problem = newGetHydrodata(g_path, grid, &lists, counts))
            return state.SkipWithError(qUtf8Printable(problem->text()));
    }
}

BENCHMARK(BareLoop)->Unit(benchmark::kMillisecond)->MinTime(2.0)->Repetitions(3);
BENCHMARK(FullReader)->Unit(benchmark::kMillisecond)->MinTime(2.0)->Repetitions(3);
BENCHMARK(IndexReader)->Unit(benchmark::kMillisecond)->MinTime(2.0)->Repetitions(3);

/// A line of /proc/self/status in bytes; 0 where there is none.
double memory(const std::string& name)
{
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);)
        if (line.rfind(name, 0) == 0)
            return std::stod(line.substr(name.size() + 1)) * 1024.0;
    return 0.0;
}

/// Keeps the least time of each benchmark: on a busy machine it is the one that means something.
class Ratios : public benchmark::ConsoleReporter
{
public:
    void ReportRuns(const std::vector<Run>& runs) override
    {
        ConsoleReporter::ReportRuns(runs);
        for (const Run& run : runs) {
            if (run.run_type != Run::RT_Iteration || run.error_occurred)
                continue;
            const auto [place, isNew] = m_least.try_emplace(run.run_name.function_name, run.GetAdjustedRealTime());
            if (!isNew)
                place->second = std::min(place->second, run.GetAdjustedRealTime());
        }
    }
    double ratio(const std::string& name) const
    {
        const auto real = m_least.find(name), bare = m_least.find("BareLoop");
        return real == m_least.end() || bare == m_least.end() ? 0.0 : real->second / bare->second;
    }

private:
    std::map<std::string, double> m_least;
};

} // namespace

int main(int argc, char* argv[])
{
    const QTemporaryDir folder;
    g_path = folder.filePath("TAPE21");
    double bytesAValue = 0.0, peakBytesAValue = 0.0;
    {
        const QByteArray text = largeTape(kStations, kRatios, kOrdinates);
        QString why;
        if (!writeFile(g_path, text, &why)) {
            std::cerr << qPrintable(why) << '\n';
            return 1;
        }
        std::cout << "TAPE21 of " << static_cast<double>(text.size()) / 1e6 << " MB\n";
    }
    {
        std::ofstream("/proc/self/clear_refs") << "5"; // the high-water mark starts anew
        const double before = memory("VmRSS:");
        ResultTables tables;
        const Measure measure;
        fillTables(readTape21File(g_path), tables, measure);
        bytesAValue = (memory("VmRSS:") - before) / kValues;
        peakBytesAValue = (memory("VmHWM:") - before) / kValues;
    }
    benchmark::Initialize(&argc, argv);
    Ratios ratios;
    benchmark::RunSpecifiedBenchmarks(&ratios);
    std::cout << "\nfull reader / bare loop:  " << ratios.ratio("FullReader") << "  (goal: at most 1.3)\n"
              << "index reader / bare loop: " << ratios.ratio("IndexReader") << "  (goal: at most 1.15)\n"
              << "memory of the full reader: " << bytesAValue << " bytes a value, " << peakBytesAValue
              << " at its highest  (goal: at most 12)\n";
    return 0;
}
