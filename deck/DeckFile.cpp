// SPDX-License-Identifier: GPL-3.0-or-later
#include "deck/DeckFile.h"

#include "deck/Deck.h"
#include "platform/text.h"

#include <algorithm>

namespace kalvo {

using namespace deck_layout;

namespace {

/// Appends text as bytes. Gives false when it held something that Open would refuse or that a byte cannot hold.
bool appendText(QByteArray& out, const QString& text)
{
    bool plain = true;
    for (const QChar c : text) {
        const char16_t code = c.unicode();
        plain = plain && code >= 9 && code <= 127;
        if (code == u'\r' || code == u'\n') {
            // A line end inside a cell would make two cards of one.
            plain = false;
            out.append(' ');
        } else {
            out.append(code < 256 ? static_cast<char>(code) : '?');
        }
    }
    return plain;
}

QStringList cellsOf(QStringView line)
{
    QStringList cells;
    cells.reserve(kLastColumn);
    for (int column = 1; column <= kLastColumn; ++column)
        cells.append(Deck::getrecnums(line, column));
    return cells;
}

/// The card of a row as a save writes it: the ID is trimmed ahead of every save.
QByteArray savedCard(QStringList cells)
{
    if (!cells.isEmpty())
        cells[0] = trimmedId(cells[0]);
    QByteArray card;
    appendCard(card, cells, !isFreeTextId(cells.value(0)));
    return card;
}

QByteArrayView withoutEndBlanks(QByteArrayView bytes)
{
    while (!bytes.isEmpty() && bytes.back() == ' ')
        bytes.chop(1);
    return bytes;
}

/// Lines joined by CR LF, those without text at the end left out.
class CardCollector
{
public:
    void add(const QByteArray& card)
    {
        m_bytes += card;
        m_bytes += "\r\n";
        if (!withoutEndBlanks(card).isEmpty())
            m_used = m_bytes.size();
    }
    QByteArray bytes() const { return m_bytes.left(m_used); }

private:
    QByteArray m_bytes;
    qsizetype m_used = 0;
};

/// The fields of a free-format card behind its ID: parted by one comma, with or without blanks around it, or by blanks.
QList<QByteArray> freeFields(QByteArrayView card)
{
    QList<QByteArray> fields;
    const QByteArray text = withoutEndBlanks(card.size() > 2 ? card.sliced(2) : QByteArrayView()).toByteArray();
    qsizetype at = 0;
    const auto skipBlanks = [&] {
        while (at < text.size() && text[at] == ' ')
            ++at;
    };
    skipBlanks();
    while (at < text.size()) {
        const qsizetype start = at;
        while (at < text.size() && text[at] != ' ' && text[at] != ',')
            ++at;
        fields.append(text.mid(start, at - start));
        skipBlanks();
        if (at < text.size() && text[at] == ',') {
            ++at;
            skipBlanks();
        }
    }
    return fields;
}

bool isFormatCard(const QStringList& cells, QStringView word)
{
    return cells.size() > 1 && cells[0] == u"*F" && Trim(cells[1]) == word;
}

} // namespace

DeckLines readDeck(const QByteArray& bytes)
{
    DeckLines deck;
    deck.lines = linesOf(bytes);
    for (qsizetype i = 0; i < deck.lines.size() && !deck.refusal; ++i) {
        if (deck.lines[i].size() > kLongestLine)
            deck.refusal = DeckRefusal::LineTooLong;
        else if (i < 2 && !isweird(deck.lines[i]))
            deck.refusal = DeckRefusal::NotText;
        if (deck.refusal)
            deck.refusedLine = static_cast<int>(i) + 1;
    }
    if (deck.refusal)
        deck.lines.clear();
    return deck;
}

bool isTextFile(const QByteArray& bytes)
{
    return std::all_of(bytes.begin(), bytes.end(), [](char c) {
        const auto code = static_cast<unsigned char>(c);
        return code >= 9 && code <= 127;
    });
}

bool isweird(QStringView line)
{
    return std::all_of(line.begin(), line.end(), [](QChar c) { return c.unicode() < 128; });
}

DeckBytes writeDeck(const FlexGrid& grid)
{
    DeckBytes deck;
    deck.bytes.reserve(qsizetype{82} * grid.rows());
    for (int row = 1; row < grid.rows(); ++row) {
        const QStringList cells = grid.rowTexts(row, kIdColumn);
        if (!isFreeTextId(cells.value(0)) && cells.value(0).size() > fieldWidth(kIdColumn)) {
            deck.longIdRow = row;
            break;
        }
        const qsizetype start = deck.bytes.size();
        const CardNotes notes = appendCard(deck.bytes, cells, !isFreeTextId(cells.value(0)));
        if (notes.pushed)
            deck.pushedRows.append(row);
        if (notes.odd)
            deck.oddRows.append(row);
        if (deck.bytes.size() - start > kLongestLine)
            deck.overlongRows.append(row);
        deck.bytes += "\r\n";
    }
    return deck;
}

CardNotes appendCard(QByteArray& out, const QStringList& cells, bool padded)
{
    CardNotes notes;
    for (qsizetype i = 0; i < cells.size(); ++i) {
        const QString& cell = cells[i];
        if (padded) {
            const qsizetype blanks = fieldWidth(static_cast<int>(i) + 1) - cell.size();
            notes.pushed = notes.pushed || blanks < 0;
            if (blanks > 0)
                out.append(blanks, ' ');
        }
        if (!appendText(out, cell))
            notes.odd = true;
    }
    return notes;
}

QByteArray canonicalDeck(const QStringList& lines)
{
    CardCollector cards;
    for (const QString& line : lines)
        cards.add(savedCard(cellsOf(line)));
    return cards.bytes();
}

QByteArray canonicalDeck(const FlexGrid& grid)
{
    CardCollector cards;
    for (int row = 1; row < grid.rows(); ++row)
        cards.add(savedCard(grid.rowTexts(row, kIdColumn)));
    return cards.bytes();
}

QByteArray canonicalDeck(const QList<QStringList>& cells)
{
    CardCollector cards;
    for (QStringList card : cells) {
        card.resize(kLastColumn);
        cards.add(savedCard(card));
    }
    return cards.bytes();
}

SaveEffect effectOfSaving(const QStringList& lines, const FlexGrid& grid)
{
    SaveEffect effect;
    bool behindEnd = false;
    for (int row = 1; row <= lines.size() && row < grid.rows(); ++row) {
        const QByteArray line = lines[row - 1].toLatin1();
        if (behindEnd) {
            effect.droppedLines += withoutEndBlanks(line).isEmpty() ? 0 : 1;
            continue;
        }
        const QStringList cells = grid.rowTexts(row, kIdColumn);
        if (withoutEndBlanks(savedCard(cells)) != withoutEndBlanks(line))
            ++effect.changedLines;
        behindEnd = cells.value(0) == u"ZZ";
    }
    return effect;
}

FreeFormat freeFormatOf(const FlexGrid& grid)
{
    FreeFormat found;
    bool isFree = false;
    for (int row = 1; row < grid.rows(); ++row) {
        const QStringList cells = grid.rowTexts(row, kIdColumn);
        if (cells.value(0) == u"ZZ")
            break;
        if (isFormatCard(cells, u"REE")) {
            isFree = true;
            found.freeRow = found.freeRow == 0 ? row : found.freeRow;
        } else if (isFormatCard(cells, u"IX")) {
            isFree = false;
        } else if (isFree && !isFreeTextId(cells.value(0)) && !cells.value(0).contains(u'*')) {
            QList<QByteArray> read = freeFields(cells.join(QString()).toLatin1());
            QList<QByteArray> written = freeFields(savedCard(cells));
            if (cells.value(0) == u"KK") {
                // Behind the station's name stands a description; a blank more or less in it means nothing.
                read = read.mid(0, 1);
                written = written.mid(0, 1);
            }
            if (read != written)
                found.brokenRows.append(row);
        }
    }
    return found;
}

QString lineNumbers(const FlexGrid& grid, const QList<int>& rows)
{
    constexpr qsizetype kNamed = 12;
    QStringList names;
    for (const int row : rows.first(std::min(kNamed, rows.size()))) {
        int labelled = row;
        while (labelled > 0 && grid.textMatrix(labelled, 0).isEmpty())
            --labelled;
        const QString label = labelled > 0 ? grid.textMatrix(labelled, 0) : QStringLiteral("0");
        names.append(labelled == row ? label : QStringLiteral("after ") + label);
    }
    QString text = names.join(QStringLiteral(", "));
    if (rows.size() > kNamed)
        text += QStringLiteral(" and %1 more").arg(rows.size() - kNamed);
    return text;
}

} // namespace kalvo
