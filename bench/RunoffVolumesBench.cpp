// SPDX-License-Identifier: GPL-3.0-or-later
// Runoff volumes of 3,000 hydrographs of 2,001 ordinates beside one pass over the bare numbers, and what it costs to
// bring that table to the clipboard or into a file.
#include "platform/GridActions.h"
#include "platform/GridCopy.h"
#include "platform/GridCsv.h"
#include "results/RunoffVolumes.h"
#include "run/Tape21Tables.h"

#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <cmath>
#include <cstdio>
#include <cstdlib>

using namespace kalvo;

namespace {

constexpr int kStations = 500;
constexpr int kRatios = 6;
constexpr int kOrdinates = 2001;

class Measure : public TextMeasure
{
public:
    int textWidth(const QString& text) const override { return 120 * static_cast<int>(text.size()); }
    QStringList fontNames() const override { return {}; }
};

/// A flow of eight digits, as HEC-1 writes them.
double asWritten(double flow)
{
    char text[32];
    std::snprintf(text, sizeof text, "%.8g", flow);
    return std::strtod(text, nullptr);
}

/// Hydrographs that rise, peak at ordinate 400 and recede below a thousandth, each of another size.
Tape21 tapeOfManyRecords()
{
    Tape21 tape;
    for (int station = 0; station < kStations; ++station) {
        tape.stationNames.append(QStringLiteral("S%1").arg(station).leftJustified(Tape21Header::kNameLength));
        tape.stations.push_back(
            {tape.stationNames.back(), {5.0, false, 1, 1, 1, kRatios, kOrdinates}, station * kRatios});
        for (int ratio = 1; ratio <= kRatios; ++ratio) {
            HydrographRecord record{station, ratio, 1, 1, 0.0, true, {}};
            for (int i = 0; i < kOrdinates; ++i) {
                const double time = i / 400.0;
                record.flows.push_back(
                    asWritten((7.3 * station + 11.0) * ratio * std::pow(time * std::exp(1 - time), 5)));
            }
            tape.records.push_back(std::move(record));
        }
    }
    return tape;
}

ResultTables& manyRecords()
{
    static ResultTables tables;
    static const bool isFilled = !fillTables(tapeOfManyRecords(), tables, Measure());
    return isFilled ? tables : throw std::runtime_error("the table is not whole");
}

void BM_Volumes_OnePass(benchmark::State& state)
{
    const FlexGrid& table = manyRecords().hydrographTable;
    for (auto _ : state) {
        double total = 0.0;
        for (int col = 2; col < table.cols(); ++col) {
            double sum = 0.0;
            const std::span<const double> flows = table.numbers(col)->values;
            for (const double flow : flows)
                sum += flow;
            total += sum;
        }
        benchmark::DoNotOptimize(total);
    }
}

/// All that opening the screen computes: the volumes, and the table of 500 groups.
void BM_Volumes_Table(benchmark::State& state)
{
    const ResultTables& tables = manyRecords();
    FlexGrid Grid1;
    for (auto _ : state)
        fillVolumes(Grid1, runoffVolumes(tables.hydrographTable), tables.tableCounts, Measure());
    if (Grid1.textMatrix(kStations * 4 - 1, kRatios).isEmpty())
        state.SkipWithError("the last volume is missing");
}

void BM_Volumes_ThroughTexts(benchmark::State& state)
{
    const FlexGrid& table = manyRecords().hydrographTable;
    for (auto _ : state) {
        qsizetype length = 0;
        for (int col = 2; col < table.cols(); ++col)
            for (int row = 1; row < table.rows(); ++row)
                length += table.textMatrix(row, col).size();
        benchmark::DoNotOptimize(length);
    }
}

void BM_Grid_CopyWholeTable(benchmark::State& state)
{
    FlexGrid& table = manyRecords().hydrographTable;
    selectWhole(table);
    for (auto _ : state)
        benchmark::DoNotOptimize(selectionText(table, CopyRule::CrOnly));
}

void BM_Grid_CsvOfWholeTable(benchmark::State& state)
{
    const QTemporaryDir folder;
    for (auto _ : state)
        if (!writeGridCsv(manyRecords().hydrographTable, folder.filePath("table.csv")).isEmpty())
            state.SkipWithError("not written");
}

BENCHMARK(BM_Volumes_OnePass)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Volumes_Table)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Volumes_ThroughTexts)->Unit(benchmark::kMillisecond)->Iterations(1);
BENCHMARK(BM_Grid_CopyWholeTable)->Unit(benchmark::kMillisecond)->Iterations(1);
BENCHMARK(BM_Grid_CsvOfWholeTable)->Unit(benchmark::kMillisecond)->Iterations(1);

} // namespace
