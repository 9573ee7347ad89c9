// SPDX-License-Identifier: GPL-3.0-or-later
// Decks in free format: the ID in the first two characters, then fields parted by commas, blanks or TABs. Text in,
// cards out, and back; nothing here shows a message or touches a disk. Every routine takes one pass over its text.
#pragma once

#include "deck/DeckFile.h"
#include "platform/FlexGrid.h"

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>
#include <QStringView>

#include <optional>

namespace kalvo {

/// No free deck is larger than this; what is, is something else, and a text box would choke on it.
inline constexpr qsizetype kLargestFreeText = qsizetype{16} << 20; ///< characters
inline constexpr qsizetype kLongestFreeLine = 32000;
inline constexpr qsizetype kMostFreeLines = 200000;
/// Last grid column that a field goes into; the rest of a longer line stands there in one piece.
inline constexpr int kLastFreeColumn = 99;
/// Characters of a line that the columns of a card hold, the overflow column behind the tenth field included.
inline constexpr qsizetype kCutCharacters = 88;

/// Why a text is too large for a free deck, for the user; empty when it is not.
QString whyNotFreeText(QStringView text);

/// A free file's text as the editor holds it: lines without blanks at their end, joined by LF. A line whose third
/// character has a code of 46 or more (a digit, a letter, a point, but no sign and no delimiter) gets a blank ahead of
/// it, so that an ID is parted from a field written up against it.
QString freeTextOf(const QByteArray& bytes);
/// A text with LF alone where lines ended in CR LF.
QString withLf(const QString& text);
/// Every two LF in a row become one, in one pass: of three blank lines one stays.
QString withoutBlankLines(const QString& text);
/// Each run of blanks, or of TABs, becomes one.
QString twospaces(const QString& text);
QString twotabs(const QString& text);

/// True for the IDs (two characters, in capitals) whose cards hold free text. Their lines are cut at the card's fixed
/// columns; all others are parted at delimiters.
bool isCutByColumns(QStringView id);

/// The name that a KK line gives its station.
struct StationName
{
    int row = 0;   ///< of the grid, from 1
    QString given; ///< the first word behind the ID
    QString read;  ///< what HEC-1 finds in card columns 3 to 8
};

/// A free deck laid out in fixed fields. Rows are counted from 1, as in the grid.
struct FixedCards
{
    QList<QStringList> rows; ///< cells from grid column 1 on, as many as the line filled
    int columns = 12;        ///< that the grid needs, column 0 included
    bool overflow = false;   ///< a line has fields behind the tenth
    // What the user should look at before he trusts the result:
    QList<StationName> stations;
    QList<int> longIdRows; ///< an ID of more than 2 characters, which no save can write
    QList<int> dssRows;    ///< ZR or ZW with several fields, which a save writes without blanks between them
    QList<int> formatRows; ///< `*FREE` and `*FIX` cards, which stay cards of the deck
    QList<int> fixRows;    ///< `*FIX` alone: the fixed lines behind it are parted at their blanks all the same
    QList<int> cutRows;    ///< text behind kCutCharacters is left out
    QList<int> joinedRows; ///< more fields than kLastFreeColumn
};

/// Lays a free text out in fixed fields. Lines end with LF or CR LF. Every delimiter ends a field, so two in a row
/// leave an empty cell; an ID of small letters is put in capitals.
FixedCards fixedFromFree(QStringView text);

/// Remarks on a conversion for the user, one line each; empty when there is nothing to say.
QStringList remarksOn(const FixedCards& cards);
/// "4, 7, 9 and 3 more".
QString rowList(const QList<int>& rows);

/// The cards of the translation grid as a deck file: columns 1 to 11 of every row, further ones as far as the row has
/// text, up to the first ZZ or else to the last row with text. Rows of KM, ID, ZR, ZW and of IDs with a `*` are written
/// as they stand, all others right-justified. An ID of more than 2 characters ends it (`longIdRow`).
DeckBytes writeFixedCards(const FlexGrid& grid);

/// The deck as delimited text: each row's trimmed cells 1 to 11 joined by one blank, CR LF behind. Empty cells leave
/// double blanks. None when a row's ID is empty.
std::optional<QString> delimitedText(const FlexGrid& deckGrid);

} // namespace kalvo
