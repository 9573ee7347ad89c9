// SPDX-License-Identifier: GPL-3.0-or-later
// What an undo level costs, at 500, 5,000 and 50,000 cards: a keystroke that is recorded and written, beside the copy
// of all texts that a store without shared rows would take; a step back and forth over a changed cell and over an
// inserted row, which moves every card below it.
#include "deck/UndoStore.h"

#include <QString>

#include <benchmark/benchmark.h>

#include <malloc.h>

using namespace kalvo;

namespace {

void fill(FlexGrid& grid, int cards)
{
    grid.setCols(12);
    grid.setRows(cards + 1);
    for (int row = 1; row < grid.rows(); ++row)
        for (int col = 0; col < grid.cols(); ++col)
            grid.setTextMatrix(row, col, QString::number(row * 12 + col));
}

void keystroke(benchmark::State& state)
{
    FlexGrid grid;
    fill(grid, static_cast<int>(state.range(0)));
    UndoStore store;
    int key = 0;
    for (auto _ : state) {
        store.record(grid);
        grid.setTextMatrix(1 + key % 400, 3, QString::number(key));
        if (++key % 1000 == 0) {
            state.PauseTiming();
            store.reset();
            state.ResumeTiming();
        }
    }
    state.SetComplexityN(state.range(0));
}
/// What the allocator has handed out after 200 keystrokes, a level each.
void memoryOfAKeystroke(benchmark::State& state)
{
    constexpr int kKeys = 200;
    double bytes = 0;
    for (auto _ : state) {
        FlexGrid grid;
        fill(grid, static_cast<int>(state.range(0)));
        UndoStore store;
        store.record(grid); // the first one measures every text
        const auto before = mallinfo2();
        for (int key = 0; key < kKeys; ++key) {
            grid.setTextMatrix(1 + key % 400, 3, QString::number(key));
            store.record(grid);
        }
        const auto after = mallinfo2();
        bytes = static_cast<double>(after.uordblks + after.hblkhd - before.uordblks - before.hblkhd) / kKeys;
    }
    state.counters["bytes"] = bytes;
    state.SetComplexityN(state.range(0));
}
BENCHMARK(memoryOfAKeystroke)->Arg(500)->Arg(5000)->Arg(50000)->Iterations(1);
BENCHMARK(keystroke)->Arg(500)->Arg(5000)->Arg(50000)->Complexity(benchmark::oN)->Unit(benchmark::kMicrosecond);

void bareCopyOfAllTexts(benchmark::State& state)
{
    FlexGrid grid;
    fill(grid, static_cast<int>(state.range(0)));
    grid.select(0, 0, grid.rows() - 1, grid.cols() - 1);
    for (auto _ : state)
        benchmark::DoNotOptimize(grid.clip());
}
BENCHMARK(bareCopyOfAllTexts)->Arg(500)->Arg(5000)->Arg(50000)->Unit(benchmark::kMicrosecond);

void undoAndRedo(benchmark::State& state, void (*change)(FlexGrid&))
{
    FlexGrid grid;
    fill(grid, static_cast<int>(state.range(0)));
    UndoStore store;
    store.record(grid);
    change(grid);
    for (auto _ : state) {
        store.undo(grid);
        store.redo(grid);
    }
    state.SetComplexityN(state.range(0));
}

void overOneCell(benchmark::State& state)
{
    undoAndRedo(state, [](FlexGrid& grid) { grid.setTextMatrix(7, 3, QStringLiteral("x")); });
}
BENCHMARK(overOneCell)->Arg(500)->Arg(5000)->Arg(50000)->Complexity(benchmark::oN)->Unit(benchmark::kMicrosecond);

void overAnInsertedRow(benchmark::State& state)
{
    undoAndRedo(state, [](FlexGrid& grid) { grid.insertRow(1); });
}
BENCHMARK(overAnInsertedRow)->Arg(500)->Arg(5000)->Arg(50000)->Complexity(benchmark::oN)->Unit(benchmark::kMicrosecond);

} // namespace

BENCHMARK_MAIN();
