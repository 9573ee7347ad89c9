// SPDX-License-Identifier: GPL-3.0-or-later
// Any bytes as a free-format text: the translation keeps every line and every character that its columns can hold, and
// what it writes loads as a deck again.
#include "deck/DeckFile.h"
#include "deck/FreeFormat.h"
#include "platform/FlexGrid.h"
#include "platform/text.h"

#include <QByteArray>

#include <cstdint>
#include <cstdlib>

using namespace kalvo;

namespace {

void check(bool holds)
{
    if (!holds)
        std::abort();
}

void checkLine(QStringView line, const QStringList& cells)
{
    check(!cells.isEmpty() && cells.size() <= kLastFreeColumn);
    const QString joined = cells.join(QString());
    if (isCutByColumns(cells.front().left(2)) && cells.front().size() <= 2) {
        check(joined.size() == qMin(line.size(), kCutCharacters));
        return;
    }
    // Every delimiter that parted two cells is gone, nothing else.
    check(joined.size() + cells.size() - 1 == line.size());
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    const QString text = size % 2 == 0 ? freeTextOf(bytes) : QString::fromUtf8(bytes);
    check(!twospaces(text).contains(QStringLiteral("  ")));
    check(!twotabs(text).contains(QStringLiteral("\t\t")));
    check(withoutBlankLines(text).size() <= text.size());
    if (!whyNotFreeText(text).isEmpty())
        return 0;
    const FixedCards cards = fixedFromFree(text);
    const QStringList lines = text.split(u'\n');
    check(cards.rows.size() == lines.size());
    FlexGrid grid;
    grid.setCols(cards.columns);
    grid.setRows(static_cast<int>(cards.rows.size()) + 1);
    for (qsizetype i = 0; i < lines.size(); ++i) {
        QStringView line(lines[i]);
        if (line.endsWith(u'\r'))
            line.chop(1);
        checkLine(line, cards.rows[i]);
        check(cards.rows[i].size() < cards.columns);
        grid.setRowTexts(static_cast<int>(i) + 1, 1, cards.rows[i]);
    }
    remarksOn(cards);
    const DeckBytes deck = writeFixedCards(grid);
    check(deck.bytes.isEmpty() || deck.bytes.endsWith("\r\n"));
    if (deck.longIdRow == 0 && deck.overlongRows.isEmpty() && deck.oddRows.isEmpty())
        check(!readDeck(deck.bytes).refusal);
    if (const auto free = delimitedText(grid))
        check(free->count(u'\n') >= grid.rows() - 1);
    return 0;
}
