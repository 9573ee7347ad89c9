// SPDX-License-Identifier: GPL-3.0-or-later
// What the viewer of hydrographs and the centers of mass cost with 3,000 hydrographs of 2,001 ordinates. Beside the
// centers stands one pass over the bare numbers, beside a frame of the viewer one of a table of 10 x 10.
#include "bench/BenchServices.h"
#include "platform/ResultGrid.h"
#include "platform/text.h"
#include "results/CenterOfMass.h"
#include "results/HydFile.h"
#include "results/hydrodata_HydrodataViewer.h"

#include <QApplication>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

using namespace kalvo;

namespace {

constexpr int kRecords = 3000;
constexpr int kOrdinates = 2001;

/// Flows as HEC-1 writes them: eight digits, rising and falling.
std::vector<double> flowsOf(int record, int ordinates)
{
    std::vector<double> flows;
    flows.reserve(static_cast<size_t>(ordinates));
    quint32 random = 12345u + static_cast<quint32>(record);
    for (int i = 0; i < ordinates; ++i) {
        random = random * 1664525u + 1013904223u;
        flows.push_back((random >> 8) % 10'000'000 / 1000.0);
    }
    return flows;
}

void fill(FlexGrid& table, int rows, int cols)
{
    const FlexGrid::Bulk bulk(table);
    table.setRows(rows);
    table.setCols(cols);
    std::vector<double> hours, minutes;
    for (int i = 0; i < rows - 1; ++i) {
        minutes.push_back(i * 5.0);
        hours.push_back(i * 5.0 / 60.0);
    }
    table.setNumberColumn(0, 1, std::move(hours), [](double hour) { return pictureText(hour, u"#######.0000"); });
    table.setNumberColumn(1, 1, std::move(minutes), generalText);
    table.setTextMatrix(0, 0, QStringLiteral("Time (hrs)"));
    table.setTextMatrix(0, 1, QStringLiteral("Time (min)"));
    for (int col = 2; col < cols; ++col) {
        table.setTextMatrix(0, col, QStringLiteral("S%1  1  1  1").arg(col));
        table.setNumberColumn(col, 1, flowsOf(col, rows - 1), generalText);
    }
}

const FlexGrid& hydrographs()
{
    static FlexGrid table;
    if (table.cols() < kRecords)
        fill(table, kOrdinates + 1, kRecords + 2);
    return table;
}

void BM_Hydrographs_OnePass(benchmark::State& state)
{
    std::vector<double> hours;
    for (int i = 0; i < kOrdinates; ++i)
        hours.push_back(i * 5.0 / 60.0);
    std::vector<std::vector<double>> records;
    for (int record = 0; record < kRecords; ++record)
        records.push_back(flowsOf(record + 2, kOrdinates));
    for (auto _ : state) {
        double total = 0.0;
        for (const std::vector<double>& flows : records) {
            double sum = 0.0, moments = 0.0;
            for (size_t i = 0; i < flows.size(); ++i) {
                sum += flows[i];
                moments += hours[i] * flows[i];
            }
            total += moments / sum;
        }
        benchmark::DoNotOptimize(total);
    }
}

void BM_CenterOfMass(benchmark::State& state)
{
    const FlexGrid& table = hydrographs();
    FlexGrid Form11;
    for (auto _ : state)
        if (fillCenters(table, Form11))
            return state.SkipWithError("not all of them");
}

void BM_HydFile_WholeTable(benchmark::State& state)
{
    FlexGrid table;
    fill(table, kOrdinates + 1, kRecords + 2);
    table.select(0, 0, kOrdinates, kRecords + 1);
    const QTemporaryDir folder;
    for (auto _ : state)
        if (!writeHydFile(table, folder.filePath(QStringLiteral("all.hyd"))).isEmpty())
            return state.SkipWithError("not written");
}

/// The viewer with a table of so many rows and columns, in a window that shows ten of each.
struct Viewer : BenchServices<>
{
    Viewer(int rows, int cols)
    {
        fill(desk->tables().hydrographTable, rows, cols);
        screen.resize(960, 290);
        screen.show();
        QCoreApplication::processEvents();
    }
    FlexGrid& table() { return desk->tables().hydrographTable; }
    QWidget& cells() { return *screen.findChild<ResultGrid*>()->viewport(); }

    Screens screens;
    std::shared_ptr<ResultDesk> desk =
        std::make_shared<ResultDesk>(services, screens, std::make_shared<ResultTables>());
    hydrodata screen{std::make_shared<HydrodataDesk>(desk), {}};
};

/// Scrolls on by a row and a column and draws all that is shown.
void BM_Viewer_ScrolledFrame(benchmark::State& state)
{
    Viewer viewer(static_cast<int>(state.range(0)), static_cast<int>(state.range(1)));
    FlexGrid& table = viewer.table();
    int step = 0;
    for (auto _ : state) {
        ++step;
        table.setTopRow(1 + step % (table.rows() - 1));
        table.setLeftCol(1 + step % (table.cols() - 1));
        viewer.cells().repaint();
    }
}

void BM_Viewer_Activation(benchmark::State& state)
{
    Viewer viewer(kOrdinates + 1, kRecords + 2);
    for (auto _ : state) {
        QEvent activation(QEvent::WindowActivate);
        QApplication::sendEvent(&viewer.screen, &activation);
    }
}

BENCHMARK(BM_Hydrographs_OnePass)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_CenterOfMass)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_HydFile_WholeTable)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Viewer_ScrolledFrame)->Args({11, 11})->Args({kOrdinates + 1, kRecords + 2})->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Viewer_Activation)->Unit(benchmark::kMillisecond);

} // namespace
