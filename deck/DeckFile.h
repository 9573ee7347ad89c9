// SPDX-License-Identifier: GPL-3.0-or-later
// A deck file: HEC-1's 80-column card images, one card a line, nothing else. Bytes in, cards out, and back; nothing
// here shows a message or touches a disk.
#pragma once

#include "platform/FlexGrid.h"

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>
#include <QStringView>

#include <optional>

namespace kalvo {

/// Why a file is not taken as a fixed-format deck.
enum class DeckRefusal
{
    LineTooLong, ///< over 82 characters
    NotText,     ///< line 1 or 2 holds a character of code 128 or more
};

struct DeckLines
{
    QStringList lines; ///< empty when refused
    std::optional<DeckRefusal> refusal;
    int refusedLine = 0; ///< from 1
};

/// The longest line that loads. Only 80 of its characters reach a column.
inline constexpr int kLongestLine = 82;

/// The cards of a file as Open takes them. Line by line: first its length, then, for lines 1 and 2, `isweird`.
DeckLines readDeck(const QByteArray& bytes);

/// True when every byte has a code from 9 up to 127.
bool isTextFile(const QByteArray& bytes);

/// False (!) for a line that holds a character of code 128 or more, True for a good one.
bool isweird(QStringView line);

/// What the writer came across. Rows are grid rows, from 1.
struct DeckBytes
{
    QByteArray bytes;
    int longIdRow = 0;       ///< the row whose ID has more than 2 characters: `bytes` end ahead of it; 0: none
    QList<int> pushedRows;   ///< a field longer than its columns pushes the rest of the line to the right
    QList<int> overlongRows; ///< the line is longer than Open takes
    QList<int>
        oddRows; ///< a character that Open refuses; one that no byte can hold is written as "?", a line end as a blank
};

/// The grid's cards as a file: rows 1 to the last, CR LF ends. Fields are right-justified in their columns; free-text
/// rows (isFreeTextId) are written cell by cell as they stand. A cell longer than its field is written whole.
DeckBytes writeDeck(const FlexGrid& grid);

/// What stood out on one card.
struct CardNotes
{
    bool pushed = false; ///< a field longer than its columns
    bool odd = false;    ///< see DeckBytes::oddRows
};
/// One card, cells from column 1 on, without a line end; `padded` right-justifies them in their fields.
CardNotes appendCard(QByteArray& out, const QStringList& cells, bool padded);

/// The cards of lines as a save would write them, whatever the length of an ID: for comparing decks, and for copies
/// that must not lose anything. Blank lines at the end are left out.
QByteArray canonicalDeck(const QStringList& lines);
QByteArray canonicalDeck(const FlexGrid& grid);
/// The same of cells: 1 to 11 of each row, as far as there is text.
QByteArray canonicalDeck(const QList<QStringList>& cards);

/// What a save would do to a deck that was just read.
struct SaveEffect
{
    int changedLines = 0; ///< lines that come back with other text (blanks at their ends do not count)
    int droppedLines = 0; ///< lines with text behind the first ZZ card
};
/// @param lines as read; `grid` holds them from row 1 on.
SaveEffect effectOfSaving(const QStringList& lines, const FlexGrid& grid);

/// Rows of a deck that HEC-1 reads as free format, between a `*FREE` and a `*FIX` card. The grid cuts every line at the
/// fixed columns, and the writer pads the last piece, which can split a number in two.
struct FreeFormat
{
    int freeRow = 0;       ///< the first `*FREE` card; 0: none
    QList<int> brokenRows; ///< rows that HEC-1 would read with other fields once they are written from the grid
};
FreeFormat freeFormatOf(const FlexGrid& grid);

/// The numbers that HEC-1 prints for these rows ("4, 7, 9 and 3 more"); a row without one is named "after 4".
QString lineNumbers(const FlexGrid& grid, const QList<int>& rows);

} // namespace kalvo
