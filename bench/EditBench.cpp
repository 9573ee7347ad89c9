// SPDX-License-Identifier: GPL-3.0-or-later
// The editing commands on decks of 500, 5,000 and 50,000 cards, with undo, in a grid on a window of usual size. The
// bare limit of a row command is to write the line number of every row below the place.
#include "bench/BenchServices.h"
#include "deck/Workspace.h"
#include "platform/FlexGridView.h"

#include <QApplication>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

using namespace kalvo;

namespace {

class TextClipboard : public Clipboard
{
public:
    bool hasText() const override { return !m_text.isEmpty(); }
    QString text() const override { return m_text; }
    void setText(const QString& text) override { m_text = text; }
    void setPicture(const QByteArray&) override { m_text.clear(); }
    void clear() override { m_text.clear(); }

private:
    QString m_text;
};

class AlwaysOk : public QtDialogs
{
public:
    Button message(const MessageBox&) override { return Button::Ok; }
};

struct Page : BenchServices<AlwaysOk, TextClipboard>
{
    Screens screens;
    Workspace page{services, screens};
    FlexGrid& grid = page.deck.Grid1;
    FlexGridView view{grid};

    explicit Page(benchmark::State& state)
    {
        const int cards = static_cast<int>(state.range(0));
        grid.setRows(cards + 1);
        for (int row = 1; row <= cards; ++row) {
            grid.setTextMatrix(row, 1, QStringLiteral("PC"));
            for (int col = 2; col < grid.cols(); ++col)
                grid.setTextMatrix(row, col, QString::number(row * 0.0001 + col, 'f', 4));
        }
        page.deck.newlines();
        view.resize(1280, 700);
        view.show();
        QApplication::processEvents();
        state.SetComplexityN(cards);
    }
    void run(const char* name)
    {
        page.commands.setEnabled(QString::fromLatin1(name), true);
        if (!page.commands.run(QString::fromLatin1(name)))
            qFatal("%s did not run", name);
    }
    QString rowsOfText(int rows)
    {
        grid.select(1, 1, rows, 11);
        return grid.clip();
    }
};

/// Times `command` alone; the deck of before comes back between two of them.
template <class Ahead> void timed(benchmark::State& state, const char* command, Ahead ahead)
{
    Page page(state);
    ahead(page);
    const FlexGrid::Snapshot start = page.grid.snapshot();
    const auto comeBack = [&] {
        page.grid.restore(start);
        QApplication::processEvents();
    };
    // The first level of undo looks at every text of the deck, the others at what was written since.
    page.run(command);
    comeBack();
    for (auto _ : state) {
        page.run(command);
        state.PauseTiming();
        comeBack();
        state.ResumeTiming();
    }
}

void insertRow(benchmark::State& state)
{
    timed(state, "newinsertrow", [](Page& page) { page.grid.setCursor(2, 1); });
}
void deleteRow(benchmark::State& state)
{
    timed(state, "deleterow", [](Page& page) { page.grid.setCursor(2, 1); });
}
void deleteLines(benchmark::State& state)
{
    timed(state, "mnu_deletelines", [](Page& page) { page.grid.select(2, 1, page.grid.rows() / 2, 1); });
}
void pasteOf1000Rows(benchmark::State& state)
{
    timed(state, "editpaste", [](Page& page) {
        page.clipboard.setText(page.rowsOfText(std::min(1000, page.grid.rows() - 1)));
        page.grid.setCursor(2, 1);
    });
}
void areaPasteOf1000Rows(benchmark::State& state)
{
    timed(state, "pasteover", [](Page& page) {
        page.clipboard.setText(page.rowsOfText(std::min(1000, page.grid.rows() - 1)));
        page.grid.setCursor(3, 1);
    });
}
/// A step back, or forth, over a pasted block: every row below it stands elsewhere.
void stepOverAPaste(benchmark::State& state, const char* step, const char* stepBack)
{
    Page page(state);
    page.clipboard.setText(page.rowsOfText(std::min(1000, page.grid.rows() - 1)));
    page.grid.setCursor(2, 1);
    page.run("editpaste");
    page.run("mnu_undo"); // the rows are empty again
    if (QLatin1String(step) == QLatin1String("mnu_undo"))
        page.run("mnu_redo");
    page.run(step);
    page.run(stepBack);
    QApplication::processEvents();
    for (auto _ : state) {
        page.run(step);
        state.PauseTiming();
        page.run(stepBack);
        QApplication::processEvents();
        state.ResumeTiming();
    }
}
void stepOverAnInsertedRow(benchmark::State& state, const char* step, const char* stepBack)
{
    Page page(state);
    page.grid.setCursor(2, 1);
    page.run("newinsertrow");
    if (QLatin1String(step) == QLatin1String("mnu_redo"))
        page.run("mnu_undo");
    QApplication::processEvents();
    for (auto _ : state) {
        page.run(step);
        state.PauseTiming();
        page.run(stepBack);
        QApplication::processEvents();
        state.ResumeTiming();
    }
}
void copyAll(benchmark::State& state)
{
    timed(state, "editcopy", [](Page& page) { page.view.selectAll(); });
}
void cutAll(benchmark::State& state)
{
    timed(state, "editcut", [](Page& page) { page.view.selectAll(); });
}
void replaceAll(benchmark::State& state)
{
    timed(state, "FR_ReplaceAll", [](Page& page) {
        page.view.selectAll();
        page.page.edit.findReplace.setFind(QStringLiteral(".0"));
        page.page.edit.findReplace.setReplacement(QStringLiteral(".1"));
    });
}
void goToTheLastCell(benchmark::State& state)
{
    timed(state, "frmGOTO_Find", [](Page& page) {
        page.grid.setTextMatrix(page.grid.rows() - 1, 11, QStringLiteral("here"));
        page.page.edit.goTo.setText(QStringLiteral("HERE"));
    });
}
void hideAndUnhide(benchmark::State& state)
{
    timed(state, "unhide", [](Page& page) {
        page.grid.select(2, 1, page.grid.rows() / 2, 1);
        page.run("mnu_hiderows");
    });
}
void fitBoth(benchmark::State& state)
{
    timed(state, "mnu_fitboth", [](Page&) {});
}
void boldAll(benchmark::State& state)
{
    timed(state, "mnu_Bold", [](Page& page) { page.view.selectAll(); });
}

void bareLineNumbers(benchmark::State& state)
{
    Page page(state);
    int shift = 0;
    for (auto _ : state) {
        ++shift;
        const FlexGrid::Bulk bulk(page.grid);
        for (int row = 1; row < page.grid.rows(); ++row)
            page.grid.setTextMatrix(row, 0, QString::number(row + shift));
    }
}

#define KALVO_SIZES ->Arg(500)->Arg(5000)->Arg(50000)->Complexity(benchmark::oN)->Unit(benchmark::kMillisecond)
BENCHMARK(bareLineNumbers) KALVO_SIZES;
BENCHMARK(insertRow) KALVO_SIZES;
BENCHMARK(deleteRow) KALVO_SIZES;
BENCHMARK(deleteLines) KALVO_SIZES;
BENCHMARK(pasteOf1000Rows) KALVO_SIZES;
BENCHMARK(areaPasteOf1000Rows) KALVO_SIZES;
BENCHMARK_CAPTURE(stepOverAPaste, undo, "mnu_undo", "mnu_redo") KALVO_SIZES;
BENCHMARK_CAPTURE(stepOverAPaste, redo, "mnu_redo", "mnu_undo") KALVO_SIZES;
BENCHMARK_CAPTURE(stepOverAnInsertedRow, undo, "mnu_undo", "mnu_redo") KALVO_SIZES;
BENCHMARK_CAPTURE(stepOverAnInsertedRow, redo, "mnu_redo", "mnu_undo") KALVO_SIZES;
BENCHMARK(copyAll) KALVO_SIZES;
BENCHMARK(cutAll) KALVO_SIZES;
BENCHMARK(replaceAll) KALVO_SIZES;
BENCHMARK(goToTheLastCell) KALVO_SIZES;
BENCHMARK(hideAndUnhide) KALVO_SIZES;
BENCHMARK(fitBoth) KALVO_SIZES;
BENCHMARK(boldAll) KALVO_SIZES;

} // namespace
