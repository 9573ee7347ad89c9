// SPDX-License-Identifier: GPL-3.0-or-later
// Free format decks and decks to import from, of 500, 5,000 and 50,000 cards: from the file to the grid that the user
// sees, and back to text. The bare limit is to part the file's bytes into lines.
#include "bench/BenchServices.h"
#include "deck/DeckFile.h"
#include "deck/FreeFormatDesk.h"
#include "deck/ImportDeck.h"
#include "platform/text.h"

#include <QApplication>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

using namespace kalvo;

namespace {

QByteArray freeDeck(int cards)
{
    QByteArray text = "ID A DECK IN FREE FORMAT\r\n";
    for (int card = 1; card < cards - 1; ++card) {
        const QByteArray number = QByteArray::number(card);
        switch (card % 4) {
        case 0:
            text += "KK  S" + number + "\r\n";
            break;
        case 1:
            text += "BA1." + number + ",,0.5\r\n";
            break;
        case 2:
            text += "LS  0\t76.5  5   " + number + "\r\n";
            break;
        default:
            text += "PC 0.01 0.02 0.03 0.04 0.05 0.06 0.07 0.08 0.09 0." + number + "\r\n";
        }
    }
    return text + "ZZ\r\n";
}

QByteArray fixedDeck(const QByteArray& freeText)
{
    FlexGrid grid;
    const FixedCards cards = fixedFromFree(freeTextOf(freeText));
    grid.setCols(cards.columns);
    grid.setRows(static_cast<int>(cards.rows.size()) + 1);
    for (qsizetype i = 0; i < cards.rows.size(); ++i)
        grid.setRowTexts(static_cast<int>(i) + 1, 1, cards.rows[i]);
    return writeFixedCards(grid).bytes;
}

/// Chooses one file again and again.
class OneFile : public QtDialogs
{
public:
    QString path;
    std::optional<QString> openFile(const FileDialog&) override { return path; }
    Button message(const MessageBox& box) override
    {
        qFatal("%s", qPrintable(box.text));
        return Button::Cancel;
    }
};

struct Place : BenchServices<OneFile>
{
    Screens screens;
    RecentFiles recent{services};
    QByteArray bytes;

    Place(benchmark::State& state, bool fixed) : bytes(freeDeck(static_cast<int>(state.range(0))))
    {
        if (fixed)
            bytes = fixedDeck(bytes);
        dialogs.path = directory.filePath(QStringLiteral("deck.dat"));
        if (!writeFile(dialogs.path, bytes))
            qFatal("the deck could not be written");
        state.SetComplexityN(state.range(0));
    }
};

void bareLines(benchmark::State& state)
{
    const Place place(state, false);
    for (auto _ : state)
        benchmark::DoNotOptimize(linesOf(place.bytes));
}

void openFreeText(benchmark::State& state)
{
    Place place(state, false);
    FreeFormatDesk desk(place.services, place.screens, place.recent);
    for (auto _ : state)
        benchmark::DoNotOptimize(desk.openFree());
}

void removeExtraSpaces(benchmark::State& state)
{
    const Place place(state, true); // columns of blanks
    const QString text = QString::fromLatin1(place.bytes);
    for (auto _ : state)
        benchmark::DoNotOptimize(twospaces(text));
}

void translateToFixed(benchmark::State& state)
{
    Place place(state, false);
    FreeFormatDesk desk(place.services, place.screens, place.recent);
    const QString text = freeTextOf(place.bytes);
    for (auto _ : state)
        desk.convert(text);
}

void writeTranslation(benchmark::State& state)
{
    Place place(state, false);
    FreeFormatDesk desk(place.services, place.screens, place.recent);
    desk.convert(freeTextOf(place.bytes));
    for (auto _ : state)
        benchmark::DoNotOptimize(writeFixedCards(desk.Grid1));
}

void importOtherDeck(benchmark::State& state)
{
    Place place(state, true);
    ImportDeck viewer(place.services);
    for (auto _ : state)
        if (!viewer.import())
            qFatal("nothing was imported");
}

void deckAsDelimitedText(benchmark::State& state)
{
    Place place(state, true);
    ImportDeck viewer(place.services);
    viewer.import();
    for (auto _ : state)
        benchmark::DoNotOptimize(delimitedText(viewer.Grid1));
}

#define KALVO_SIZES ->Arg(500)->Arg(5000)->Arg(50000)->Complexity(benchmark::oN)->Unit(benchmark::kMillisecond)
BENCHMARK(bareLines) KALVO_SIZES;
BENCHMARK(openFreeText) KALVO_SIZES;
BENCHMARK(removeExtraSpaces) KALVO_SIZES;
BENCHMARK(translateToFixed) KALVO_SIZES;
BENCHMARK(writeTranslation) KALVO_SIZES;
BENCHMARK(importOtherDeck) KALVO_SIZES;
BENCHMARK(deckAsDelimitedText) KALVO_SIZES;

} // namespace
