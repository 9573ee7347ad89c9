// SPDX-License-Identifier: GPL-3.0-or-later
// Opening and saving a deck of 5,000 cards, each beside its bare limit: the bytes read and cut into lines and fields
// without a grid, and the same bytes written without asking the grid for them. Then what happens behind the user's
// back: the copy for the case of a crash, and the look at the deck's file.
#include "bench/BenchServices.h"
#include "deck/Deck.h"
#include "deck/DeckFile.h"
#include "deck/FileCommands.h"
#include "platform/FlexGridView.h"
#include "platform/text.h"

#include <QApplication>
#include <QDir>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

using namespace kalvo;

namespace {

constexpr int kCards = 5000;

QByteArray deckText()
{
    QByteArray text = "ID   A DECK OF MANY CARDS\r\nIT     5 01JAN95    0000     300\r\n";
    while (text.count('\n') < kCards - 1) {
        text += "KK  SUB1  A STATION WITH A DESCRIPTION\r\n"
                "KO     0       0       0       0      21\r\n"
                "BA  0.42\r\n"
                "PC0.0000  0.0053  0.0108  0.0164  0.0223  0.0284  0.0347  0.0414  0.0483  0.0555\r\n"
                "PC0.0632  0.0712  0.0797  0.0887  0.0984  0.1089  0.1203  0.1328  0.1467  0.1625\r\n"
                "LS     0      76       5\r\n"
                "UD  0.95\r\n";
    }
    const QList<QByteArray> lines = text.split('\n').mid(0, kCards - 1);
    return lines.join('\n') + "\nZZ\r\n";
}

/// A main screen without its controls: the deck, its commands and the grid on a window of usual size.
struct Page : BenchServices<>
{
    StatusPanels panels;
    Commands commands;
    Screens screens;
    Deck deck{services, panels};
    FileCommands files{deck, services, commands, panels, screens};
    FlexGridView view{deck.Grid1};
    QString path = directory.filePath(QStringLiteral("deck.dat"));
    QByteArray text = deckText();

    Page()
    {
        if (!writeFile(path, text))
            qFatal("cannot write %s", qPrintable(path));
        view.resize(1280, 700);
        view.show();
        QApplication::processEvents();
    }
};

void openIntoShownGrid(benchmark::State& state)
{
    Page page;
    for (auto _ : state) {
        if (!page.files.opener(page.path))
            state.SkipWithError("not opened");
        page.view.viewport()->repaint();
        QApplication::processEvents();
    }
    state.counters["cards"] = kCards;
}
BENCHMARK(openIntoShownGrid)->Unit(benchmark::kMillisecond);

void bareReadAndSlice(benchmark::State& state)
{
    const Page page;
    for (auto _ : state) {
        const auto bytes = readFile(page.path);
        for (const QString& line : linesOf(*bytes))
            for (int column = 1; column <= deck_layout::kLastColumn; ++column)
                benchmark::DoNotOptimize(Deck::getrecnums(line, column));
    }
}
BENCHMARK(bareReadAndSlice)->Unit(benchmark::kMillisecond);

void savefileOfTheGrid(benchmark::State& state)
{
    Page page;
    page.files.opener(page.path);
    for (auto _ : state)
        if (!page.files.savefile(QStringLiteral("checky.dat")).isSaved())
            state.SkipWithError("not saved");
}
BENCHMARK(savefileOfTheGrid)->Unit(benchmark::kMillisecond);

void bareWrite(benchmark::State& state)
{
    Page page;
    page.files.opener(page.path);
    const QByteArray bytes = writeDeck(page.deck.Grid1).bytes;
    const QString path = page.folder.file(QStringLiteral("checky.dat"));
    for (auto _ : state)
        benchmark::DoNotOptimize(writeFile(path, bytes));
}
BENCHMARK(bareWrite)->Unit(benchmark::kMillisecond);

/// At most twice a minute while somebody types: compares with the deck's file, writes the copy safely to the disk.
void copyForACrash(benchmark::State& state)
{
    Page page;
    page.files.opener(page.path);
    page.deck.currentFilePath = page.path;
    int value = 0;
    for (auto _ : state) {
        page.deck.Grid1.setTextMatrix(5, 3, QString::number(++value));
        page.files.recoveryCopy().tick();
    }
    if (page.files.recoveryCopy().path().isEmpty())
        state.SkipWithError("not kept");
}
BENCHMARK(copyForACrash)->Unit(benchmark::kMillisecond);

/// Each time the window is activated; the bare limit is to read the file.
void lookAtFile(benchmark::State& state)
{
    Page page;
    page.files.opener(page.path);
    page.deck.currentFilePath = page.path;
    for (auto _ : state)
        page.files.lookAtFile();
}
BENCHMARK(lookAtFile)->Unit(benchmark::kMillisecond);

void bareRead(benchmark::State& state)
{
    const Page page;
    for (auto _ : state)
        benchmark::DoNotOptimize(readFile(page.path));
}
BENCHMARK(bareRead)->Unit(benchmark::kMillisecond);

} // namespace
