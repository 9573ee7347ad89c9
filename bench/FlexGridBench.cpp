// SPDX-License-Identifier: GPL-3.0-or-later
// What the grid and its view cost. Beside each stands the bare limit or the small case, so that figures are ratios.
#include "platform/FlexGrid.h"
#include "platform/FlexGridView.h"

#include <QApplication>

#include <benchmark/benchmark.h>

using namespace kalvo;

namespace {

constexpr int kCards = 5000;

const std::vector<QStringList>& cards()
{
    static const std::vector<QStringList> all = [] {
        std::vector<QStringList> made;
        for (int card = 0; card < kCards; ++card) {
            QStringList cells{QStringLiteral("QI")};
            for (int field = 0; field < 10; ++field)
                cells.append(QString::number(card + field * 0.5));
            made.push_back(cells);
        }
        return made;
    }();
    return all;
}

void layOut(FlexGrid& grid)
{
    grid.setCols(12);
    for (int col = 0; col < 12; ++col)
        grid.setColWidth(col, 900);
}

void load(FlexGrid& grid)
{
    const FlexGrid::Bulk bulk(grid);
    grid.clear();
    grid.setRows(kCards + 1);
    int row = 0;
    for (const QStringList& cells : cards()) {
        grid.setRowTexts(++row, 1, cells);
        grid.setTextMatrix(row, 0, QString::number(row));
    }
    grid.setAllRowHeights(320);
}

void BM_LoadDeck_BareLists(benchmark::State& state)
{
    std::vector<std::vector<QString>> rows;
    for (auto _ : state) {
        rows.clear();
        int number = 0;
        for (const QStringList& cells : cards()) {
            std::vector<QString>& row = rows.emplace_back();
            row.reserve(12);
            row.push_back(QString::number(++number));
            row.insert(row.end(), cells.begin(), cells.end());
        }
        benchmark::DoNotOptimize(rows);
    }
}

void BM_LoadDeck_Grid(benchmark::State& state)
{
    FlexGrid grid;
    layOut(grid);
    for (auto _ : state)
        load(grid);
}

void BM_LoadDeck_ShownGrid(benchmark::State& state)
{
    FlexGrid grid;
    layOut(grid);
    FlexGridView view(grid);
    view.resize(1280, 700);
    view.show();
    QCoreApplication::processEvents();
    for (auto _ : state) {
        state.PauseTiming();
        grid.setRows(201);
        QCoreApplication::processEvents();
        state.ResumeTiming();
        load(grid);
        QCoreApplication::processEvents();
        view.viewport()->repaint();
    }
}

void BM_Keystroke_ShownDeck(benchmark::State& state)
{
    FlexGrid grid;
    layOut(grid);
    load(grid);
    FlexGridView view(grid);
    view.resize(1280, 700);
    view.show();
    QCoreApplication::processEvents();
    int i = 0;
    FlexGrid::Snapshot level;
    for (auto _ : state) {
        level = grid.snapshot(); // undo keeps one for each keystroke
        grid.setTextMatrix(5, 3, QString::number(++i));
        QCoreApplication::processEvents();
    }
}

void BM_MoveCursor_ShownDeck(benchmark::State& state)
{
    FlexGrid grid;
    layOut(grid);
    load(grid);
    FlexGridView view(grid);
    view.resize(1280, 700);
    view.show();
    QCoreApplication::processEvents();
    int i = 0;
    for (auto _ : state) {
        grid.setCursor(2 + (++i % 20), 3);
        QCoreApplication::processEvents();
    }
}

void BM_SnapshotAndWrite(benchmark::State& state)
{
    FlexGrid grid;
    layOut(grid);
    load(grid);
    int i = 0;
    for (auto _ : state) {
        const FlexGrid::Snapshot level = grid.snapshot();
        grid.setTextMatrix(1 + i % kCards, 2, QString::number(i));
        ++i;
    }
}

void BM_HideEveryOtherRow_ShownDeck(benchmark::State& state)
{
    FlexGrid grid;
    layOut(grid);
    load(grid);
    FlexGridView view(grid);
    view.resize(1280, 700);
    view.show();
    QCoreApplication::processEvents();
    bool hide = false;
    for (auto _ : state) {
        hide = !hide;
        for (int row = 1; row <= kCards; row += 2) // without a Bulk, as a careless loop would
            grid.setRowHeight(row, hide ? 10 : 320);
        QCoreApplication::processEvents();
        view.viewport()->repaint();
    }
}

// One whole frame of a number table of so many rows and columns.
void BM_Frame(benchmark::State& state)
{
    const int rows = static_cast<int>(state.range(0)), cols = static_cast<int>(state.range(1));
    FlexGrid grid;
    {
        const FlexGrid::Bulk bulk(grid);
        grid.setRows(rows);
        grid.setCols(cols);
        for (int col = 1; col < cols; ++col)
            grid.setNumberColumn(col, 1, std::vector<double>(static_cast<size_t>(rows - 1), col * 0.25),
                                 [](double value) { return QString::number(value, 'f', 2); });
    }
    FlexGridView view(grid);
    view.resize(1280, 700);
    view.show();
    QCoreApplication::processEvents();
    for (auto _ : state)
        view.viewport()->repaint();
}

BENCHMARK(BM_LoadDeck_BareLists)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_LoadDeck_Grid)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_LoadDeck_ShownGrid)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Keystroke_ShownDeck)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_MoveCursor_ShownDeck)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_SnapshotAndWrite)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_HideEveryOtherRow_ShownDeck)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Frame)->Args({60, 30})->Args({2001, 3002})->Unit(benchmark::kMillisecond);

} // namespace
