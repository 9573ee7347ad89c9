// SPDX-License-Identifier: GPL-3.0-or-later
// The audit of a deck and its marks at 500, 5,000 and 50,000 cards, beside the bare limit: every cell of the grid read
// once. The whole command shows its list and the grid besides.
#include "bench/BenchServices.h"
#include "deck/CardMarks.h"
#include "deck/Form2_Audit.h"
#include "deck/Workspace.h"
#include "platform/FlexGridView.h"

#include <QApplication>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

using namespace kalvo;

namespace {

QStringList cardsOf(int count, bool good)
{
    static const QStringList kGood = {"KK  SUB1  A STATION WITH A DESCRIPTION",
                                      "KO     0       0       0       0      21", "BA  0.42",
                                      "LS     0      76       5", "UD  0.95"};
    // Some rows of every kind that the list or the remarks tell, so that neither may look through the other ones again.
    static const QStringList kBad = {
        "kk  SUB1", "KO     0", "BA  0.42", "l1     0      76       5", "*   0.95", QString::fromUtf8("KM  caf\u00e9")};
    const QStringList& kinds = good ? kGood : kBad;
    QStringList cards;
    for (int i = 0; i < count - 1; ++i)
        cards << kinds[i % kinds.size()];
    cards << QStringLiteral("ZZ");
    return cards;
}

struct Page : BenchServices<>
{
    Screens screens;
    Workspace page{services, screens};
    FlexGridView view{page.deck.Grid1};
    std::mt19937 random{1};

    Page(benchmark::State& state, bool good)
    {
        page.deck.setCards(cardsOf(static_cast<int>(state.range(0)), good));
        page.deck.newlines();
        Form2::registerIn(page.audit, page.editContext, nullptr);
        view.resize(1280, 700);
        view.show();
        QApplication::processEvents();
        state.SetComplexityN(state.range(0));
    }
};

void sizes(benchmark::internal::Benchmark* bench)
{
    bench->Arg(500)->Arg(5000)->Arg(50000)->Unit(benchmark::kMillisecond)->Complexity();
}

void bareRead(benchmark::State& state)
{
    const Page page(state, true);
    const FlexGrid& grid = page.page.deck.Grid1;
    for (auto _ : state)
        for (int row = 1; row < grid.rows(); ++row)
            for (int col = 0; col < grid.cols(); ++col)
                benchmark::DoNotOptimize(grid.textMatrix(row, col).size());
}
BENCHMARK(bareRead)->Apply(sizes);

void auditOfGoodCards(benchmark::State& state)
{
    const Page page(state, true);
    for (auto _ : state)
        benchmark::DoNotOptimize(auditDeck(page.page.deck.Grid1));
}
BENCHMARK(auditOfGoodCards)->Apply(sizes);

void auditOfBadCards(benchmark::State& state)
{
    const Page page(state, false);
    for (auto _ : state)
        benchmark::DoNotOptimize(auditDeck(page.page.deck.Grid1));
}
BENCHMARK(auditOfBadCards)->Apply(sizes);

void command(benchmark::State& state, const char* name, bool good)
{
    Page page(state, good);
    for (auto _ : state) {
        page.page.commands.run(QString::fromLatin1(name));
        page.view.viewport()->repaint();
        QApplication::processEvents();
    }
}
BENCHMARK_CAPTURE(command, auditdata, "auditdata", true)->Apply(sizes);
BENCHMARK_CAPTURE(command, auditdataOfBadCards, "auditdata", false)->Apply(sizes);
BENCHMARK_CAPTURE(command, hiliteKK, "hiliteKK", true)->Apply(sizes);
BENCHMARK_CAPTURE(command, mnu_identkkgroups, "mnu_identkkgroups", true)->Apply(sizes);
BENCHMARK_CAPTURE(command, recolorKKGroups, "recolorKKGroups", true)->Apply(sizes);

void restoreOfColouredDeck(benchmark::State& state)
{
    Page page(state, true);
    for (auto _ : state) {
        state.PauseTiming();
        identifyKKGroups(page.page.deck, page.random);
        state.ResumeTiming();
        page.page.commands.run(QStringLiteral("mnu_restore"));
    }
}
BENCHMARK(restoreOfColouredDeck)->Apply(sizes);

} // namespace
