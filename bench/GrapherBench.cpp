// SPDX-License-Identifier: GPL-3.0-or-later
// From the Graph command to the first picture of a run of 60 MB, beside the reader alone; the same with 3,000 stations
// in the list; what a curve costs, and 60 of them, on a plain and on a fine screen. Flows without any order are the
// worst case, a flood wave is what users have.
#include "bench/BenchServices.h"
#include "bench/LargeTape.h"
#include "graphics/GraphScreens.h"
#include "platform/text.h"
#include "run/GraphCommand.h"
#include "run/Tape21Tables.h"

#include <QApplication>
#include <QListWidget>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <cmath>
#include <iostream>
#include <map>

using namespace kalvo;

namespace {

constexpr int kOrdinates = 2000;
constexpr int kCurves = 60;

/// A program folder with the last run's files.
struct RunThatEnded
{
    QTemporaryDir directory;
    RunThatEnded(int stations, int ratios)
    {
        if (!writeFile(directory.filePath("TAPE21"), largeTape(stations, ratios, kOrdinates)) ||
            !writeFile(directory.filePath("checky.out"), "*** NORMAL END OF HEC-1 ***\r\n"))
            qFatal("cannot write into %s", qPrintable(directory.path()));
    }
    QString tape() const { return directory.filePath("TAPE21"); }
};

const RunThatEnded& run(int stations)
{
    static std::map<int, RunThatEnded> runs;
    return runs.try_emplace(stations, stations, 3000 / stations).first->second;
}

struct Page : BenchServices<>
{
    Screens screens;
    std::shared_ptr<ResultTables> tables = std::make_shared<ResultTables>();
    std::shared_ptr<ResultDesk> desk = std::make_shared<ResultDesk>(services, screens, tables);
    Commands commands;
    StatusPanels panels;
    RunState state;
    GraphCommand command{services, commands, panels, screens, *tables, state};

    explicit Page(const QString& path) : BenchServices(path)
    {
        tables->follow(screens);
        registerGrapher(screens, desk, {});
    }
    GRAPHER& grapher() { return *screens.loadAs<GRAPHER>("GRAPHER"); }
    /// Chooses one curve and draws it, down to the paint.
    void firstPicture()
    {
        GRAPHER& screen = grapher();
        for (const char* list : {"List1", "List2"})
            screen.findChild<QListWidget*>(list)->item(0)->setSelected(true);
        screen.Command2_Click();
        screen.repaint();
        QApplication::processEvents();
    }
};

void readerAlone(benchmark::State& state)
{
    const QString path = run(static_cast<int>(state.range(0))).tape();
    const QtTextMeasure measure{QApplication::font()};
    for (auto _ : state) {
        ResultTables tables;
        if (const auto problem = fillTables(readTape21File(path), tables, measure))
            return state.SkipWithError(qUtf8Printable(problem->text()));
    }
}

void graphToFirstPicture(benchmark::State& state)
{
    const QString path = run(static_cast<int>(state.range(0))).directory.path();
    for (auto _ : state) {
        Page page(path);
        if (!page.command.graph())
            return state.SkipWithError("Graph failed");
        page.firstPicture();
        if (page.grapher().picture().image().isNull())
            return state.SkipWithError("there is no picture");
    }
}

/// 60 columns of 2,000 ordinates: waves with a peak each, or no order at all.
void fillWaves(FlexGrid& table, bool isWave)
{
    table.setRows(kOrdinates + 1);
    table.setCols(kCurves + 2);
    quint32 random = 1;
    for (int col = 1; col < kCurves + 2; ++col) {
        std::vector<double> values(kOrdinates);
        for (int i = 0; i < kOrdinates; ++i) {
            random = random * 1664525u + 1013904223u;
            const double t = (i - 400.0 - 10.0 * col) / 120.0;
            values[static_cast<size_t>(i)] = col == 1 ? 5.0 * i
                                             : isWave ? 10.0 * (col + 20) * std::exp(-t * t)
                                                      : (random >> 8) % 1000;
        }
        table.setNumberColumn(col, 1, std::move(values), generalText);
    }
}

/// @param range 0: 1 for waves, 0 for no order. 1: device pixels to a pixel.
void sixtyCurves(benchmark::State& state)
{
    FlexGrid table;
    fillWaves(table, state.range(0) == 1);
    GraphPicture picture;
    picture.reset({800.0, 600.0}, static_cast<double>(state.range(1)));
    const GraphScale scale =
        graphScale({1000.0, 5.0 * kOrdinates}, {0, 100, 0}, {0, 100, 100}, picture.width(), picture.height(), 0);
    const GraphPicture::Axes axes{{0.0, scale.originY()}, scale.xScale,    scale.yScale,
                                  scale.timeRange,        scale.flowRange, scale.shift};
    for (auto _ : state) {
        picture.reset({800.0, 600.0}, static_cast<double>(state.range(1)));
        for (int col = 2; col < kCurves + 2; ++col) {
            picture.drawAxes(axes);
            picture.drawCurve(table, col, scale, rgb(200, 3 * col, 40), 0.003 * picture.height());
        }
        benchmark::DoNotOptimize(picture.image().constBits());
    }
}

BENCHMARK(readerAlone)->Arg(500)->Arg(3000)->Unit(benchmark::kMillisecond)->Repetitions(5);
BENCHMARK(graphToFirstPicture)->Arg(500)->Arg(3000)->Unit(benchmark::kMillisecond)->Repetitions(5);
BENCHMARK(sixtyCurves)
    ->ArgNames({"wave", "scale"})
    ->ArgsProduct({{1, 0}, {1, 2}})
    ->Unit(benchmark::kMillisecond)
    ->Repetitions(3);

/// Keeps the least time of each: on a busy machine it is the one that means something.
class Least : public benchmark::ConsoleReporter
{
public:
    void ReportRuns(const std::vector<Run>& runs) override
    {
        ConsoleReporter::ReportRuns(runs);
        for (const Run& one : runs) {
            if (one.run_type != Run::RT_Iteration || one.error_occurred)
                continue;
            const std::string name = one.run_name.function_name + "/" + one.run_name.args;
            const auto [place, isNew] = m_least.try_emplace(name, one.GetAdjustedRealTime());
            if (!isNew)
                place->second = std::min(place->second, one.GetAdjustedRealTime());
        }
    }
    double least(const std::string& name) const
    {
        const auto found = m_least.find(name);
        return found == m_least.end() ? 0.0 : found->second;
    }

private:
    std::map<std::string, double> m_least;
};

} // namespace

int main(int argc, char* argv[])
{
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    Least least;
    benchmark::RunSpecifiedBenchmarks(&least);
    for (const char* stations : {"500", "3000"})
        if (const double bare = least.least(std::string("readerAlone/") + stations); bare > 0.0)
            std::cout << "Graph to first picture / reader alone, " << stations
                      << " stations: " << least.least(std::string("graphToFirstPicture/") + stations) / bare
                      << "  (goal: at most 1.3)\n";
    return 0;
}
