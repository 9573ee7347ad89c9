// SPDX-License-Identifier: GPL-3.0-or-later
#include "deck/FreeFormat.h"

#include "deck/Deck.h"
#include "platform/text.h"

#include <algorithm>

namespace kalvo {

using namespace deck_layout;

namespace {

/// From this code on the third character of a line is text and not a delimiter.
constexpr char16_t kFirstFieldCode = 46;

bool isDelimiter(QChar c)
{
    return c == u',' || c == u' ' || c == u'\t';
}

QString withoutRuns(const QString& text, QChar of)
{
    QString single;
    single.reserve(text.size());
    for (const QChar c : text)
        if (c != of || single.isEmpty() || single.back() != of)
            single.append(c);
    return single;
}

/// Capitals one by one, so that no letter becomes two and the columns stay.
QString withIdInCapitals(QStringView line)
{
    QString card = line.toString();
    for (qsizetype i = 0; i < std::min<qsizetype>(2, card.size()); ++i)
        card[i] = card[i].toUpper();
    return card;
}

/// Goes through the lines of a text, each without its LF or CR LF; behind the last LF stands one more line.
template <class Take> void forEachLine(QStringView text, Take take)
{
    qsizetype start = 0;
    while (start <= text.size()) {
        qsizetype end = text.indexOf(u'\n', start);
        if (end < 0)
            end = text.size();
        QStringView line = text.sliced(start, end - start);
        if (line.endsWith(u'\r'))
            line.chop(1);
        take(line);
        start = end + 1;
    }
}

QStringList cutCells(const QString& card)
{
    constexpr int kPieces = kLastColumn + 1;
    QStringList cells;
    cells.reserve(kPieces);
    for (int column = 1; column <= kPieces; ++column)
        cells.append(Deck::getrecnums(card, column));
    while (cells.size() > 1 && cells.back().isEmpty())
        cells.removeLast();
    return cells;
}

QStringList partedCells(const QString& card)
{
    QStringList cells;
    qsizetype start = 0;
    for (qsizetype i = 0; i < card.size() && cells.size() + 1 < kLastFreeColumn; ++i) {
        if (!isDelimiter(card[i]))
            continue;
        cells.append(card.sliced(start, i - start));
        start = i + 1;
    }
    cells.append(card.sliced(start));
    return cells;
}

QString firstWord(QStringView text)
{
    qsizetype start = 0;
    while (start < text.size() && isDelimiter(text[start]))
        ++start;
    qsizetype end = start;
    while (end < text.size() && !isDelimiter(text[end]))
        ++end;
    return text.sliced(start, end - start).toString();
}

class FreeReader
{
public:
    void take(QStringView line)
    {
        const QString card = withIdInCapitals(line);
        const QString cardId = card.left(2);
        const bool cut = isCutByColumns(cardId);
        const QStringList cells = cut ? cutCells(card) : partedCells(card);
        m_row = static_cast<int>(m_cards.rows.size()) + 1;
        if (cut)
            noteCut(card, cardId, cells);
        else
            noteParted(card, cells);
        m_cards.columns = std::max(m_cards.columns, static_cast<int>(cells.size()) + 1);
        m_cards.rows.append(cells);
    }
    FixedCards cards() { return std::move(m_cards); }

private:
    void noteCut(const QString& card, const QString& cardId, const QStringList& cells)
    {
        if (cardId == u"KK")
            m_cards.stations.append({m_row, firstWord(QStringView(card).sliced(2)), Trim(cells.value(1))});
        if (cardId == u"*F") {
            const QString word = Trim(QStringView(card).sliced(2)).toUpper();
            if (word == u"REE" || word == u"IX")
                m_cards.formatRows.append(m_row);
            if (word == u"IX")
                m_cards.fixRows.append(m_row);
        }
        if (RTrim(card).size() > kCutCharacters)
            m_cards.cutRows.append(m_row);
    }
    void noteParted(const QString& card, const QStringList& cells)
    {
        if (cells.size() > kLastColumn)
            m_cards.overflow = true;
        if (cells.size() == kLastFreeColumn && std::any_of(cells.back().begin(), cells.back().end(), isDelimiter))
            m_cards.joinedRows.append(m_row);
        if (Trim(cells.front()).size() > fieldWidth(kIdColumn))
            m_cards.longIdRows.append(m_row);
        const auto fields =
            std::count_if(cells.begin() + 1, cells.end(), [](const QString& c) { return !c.isEmpty(); });
        if (fields > 1 && (card.startsWith(u"ZR") || card.startsWith(u"ZW")))
            m_cards.dssRows.append(m_row);
    }

    FixedCards m_cards;
    int m_row = 0;
};

QString stationRemark(const QList<StationName>& stations)
{
    constexpr qsizetype kNamed = 40;
    QStringList names;
    for (const StationName& station : stations.first(std::min(kNamed, stations.size()))) {
        const QString read = station.read.isEmpty() ? QStringLiteral("(blank)") : station.read;
        names.append(station.read == station.given
                         ? read
                         : QStringLiteral("%1 (row %2, not %3)").arg(read).arg(station.row).arg(station.given));
    }
    QString text = QStringLiteral("Stations as HEC-1 will read them, from card columns 3 to 8: ") +
                   names.join(QStringLiteral("; "));
    if (stations.size() > kNamed)
        text += QStringLiteral(" and %1 more").arg(stations.size() - kNamed);
    return text;
}

/// Last row that a save writes.
int lastCardRow(const FlexGrid& grid)
{
    int last = 0;
    for (int row = 1; row < grid.rows(); ++row) {
        const QStringList cells = grid.rowTexts(row, kIdColumn);
        if (!Trim(cells.join(QString())).isEmpty())
            last = row;
        if (Trim(cells.value(0)) == u"ZZ")
            break;
    }
    return last;
}

bool isWrittenAsItStands(const QString& id)
{
    return isFreeTextId(id) || id.contains(u'*');
}

} // namespace

// -- The text as a whole ---------------------------------------------------------------------------------------------

QString whyNotFreeText(QStringView text)
{
    if (text.size() > kLargestFreeText)
        return QStringLiteral("It has %1 characters, too many for a HEC-1 input deck.").arg(text.size());
    qsizetype lines = 0;
    qsizetype longLine = 0;
    qsizetype longest = 0;
    forEachLine(text, [&](QStringView line) {
        ++lines;
        if (line.size() > kLongestFreeLine && longLine == 0) {
            longLine = lines;
            longest = line.size();
        }
    });
    if (longLine > 0)
        return QStringLiteral("Its line %1 has %2 characters; a line of a HEC-1 input deck is short.")
            .arg(longLine)
            .arg(longest);
    if (lines > kMostFreeLines)
        return QStringLiteral("It has %1 lines, too many for a HEC-1 input deck.").arg(lines);
    return {};
}

QString freeTextOf(const QByteArray& bytes)
{
    QStringList lines = linesOf(bytes);
    for (QString& line : lines) {
        line = RTrim(line);
        if (line.size() > 2 && line[2].unicode() >= kFirstFieldCode)
            line.insert(2, u' ');
    }
    return lines.join(u'\n');
}

QString withLf(const QString& text)
{
    QString plain = text;
    return plain.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
}

QString withoutBlankLines(const QString& text)
{
    QString fewer = text;
    return fewer.replace(QStringLiteral("\n\n"), QStringLiteral("\n"));
}

QString twospaces(const QString& text)
{
    return withoutRuns(text, u' ');
}

QString twotabs(const QString& text)
{
    return withoutRuns(text, u'\t');
}

// -- Free to fixed ---------------------------------------------------------------------------------------------------

bool isCutByColumns(QStringView id)
{
    return id == u"ID" || id == u"KM" || id == u"KK" || id == u"ZZ" || id.contains(u'*');
}

FixedCards fixedFromFree(QStringView text)
{
    FreeReader reader;
    forEachLine(text, [&reader](QStringView line) { reader.take(line); });
    return reader.cards();
}

QString rowList(const QList<int>& rows)
{
    constexpr qsizetype kNamed = 12;
    QStringList names;
    for (const int row : rows.first(std::min(kNamed, rows.size())))
        names.append(QString::number(row));
    QString text = names.join(QStringLiteral(", "));
    if (rows.size() > kNamed)
        text += QStringLiteral(" and %1 more").arg(rows.size() - kNamed);
    return text;
}

QStringList remarksOn(const FixedCards& cards)
{
    QStringList remarks;
    const auto remark = [&remarks](const QList<int>& rows, const QString& text) {
        if (!rows.isEmpty())
            remarks.append(text.arg(rowList(rows)));
    };
    remark(cards.longIdRows, QStringLiteral("An ID has more than 2 characters, marked in the grid; part it from its "
                                            "first field, or the deck cannot be saved: row(s) %1."));
    remark(cards.joinedRows, QStringLiteral("Too many fields for the grid; the rest of the line stands in its last "
                                            "column: row(s) %1."));
    remark(cards.cutRows, QStringLiteral("Text behind character 88 of the line is left out: row(s) %1."));
    remark(cards.formatRows,
           QStringLiteral("*FREE and *FIX stay cards of the converted deck; delete them: row(s) %1."));
    remark(cards.fixRows,
           QStringLiteral("Lines behind a *FIX card were parted at their blanks like all others, so that "
                          "blank fields are lost or moved: behind row(s) %1."));
    remark(cards.dssRows, QStringLiteral("ZR and ZW cards are parted at their blanks but saved without any; put their "
                                         "blanks back: row(s) %1."));
    if (!cards.stations.isEmpty())
        remarks.append(stationRemark(cards.stations));
    return remarks;
}

DeckBytes writeFixedCards(const FlexGrid& grid)
{
    DeckBytes deck;
    const int last = lastCardRow(grid);
    deck.bytes.reserve(qsizetype{82} * last);
    for (int row = 1; row <= last; ++row) {
        QStringList cells = grid.rowTexts(row, kIdColumn);
        const QString cardId = trimmedId(cells.value(0));
        if (cardId.size() > fieldWidth(kIdColumn)) {
            deck.longIdRow = row;
            break;
        }
        cells[0] = cardId;
        while (cells.size() > kLastColumn && cells.back().isEmpty())
            cells.removeLast();
        const qsizetype start = deck.bytes.size();
        const CardNotes notes = appendCard(deck.bytes, cells, !isWrittenAsItStands(cardId));
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

// -- Fixed to free ---------------------------------------------------------------------------------------------------

std::optional<QString> delimitedText(const FlexGrid& deckGrid)
{
    QString text;
    for (int row = 1; row < deckGrid.rows(); ++row) {
        QStringList cells = deckGrid.rowTexts(row, kIdColumn);
        // Before the trim: a blank line that came from a file is two blanks, and passes.
        if (cells.value(0).isEmpty())
            return std::nullopt;
        for (QString& cell : cells)
            cell = Trim(cell);
        text += cells.mid(0, kLastColumn).join(u' ');
        text += QStringLiteral("\r\n");
    }
    return text;
}

} // namespace kalvo
