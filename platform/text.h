// SPDX-License-Identifier: GPL-3.0-or-later
// Every numeric text of the program goes through here, so that 0.05 looks the same in every screen and no locale ever
// changes a number. Positions in a text count from 1, as they do in the deck's own descriptions.
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QStringView>

#include <string_view>

namespace kalvo {

// -- Numbers out of texts ----------------------------------------------------------------------------------------
/// The number at the start of a text, 0 if there is none. Leading blanks are skipped; the first character that does
/// not belong to the number ends it (an inner blank and a comma too: "1,280" is 1); an exponent (E or D) counts only
/// with digits behind it. Values past the range of a double become 0.
double leadingNumber(QStringView text);
double leadingNumber(std::string_view text);
/// The same, rounded half to even into a 16-bit integer; a value outside throws std::out_of_range.
int leadingInt16(std::string_view text);
/// The same into a 32-bit integer.
int leadingInt32(std::string_view text);
/// The whole item as a number: true and the value when every character belongs to it (E or D exponent, no blank, no
/// NaN, no INF).
bool parseWholeNumber(std::string_view item, double& value);

// -- Texts out of numbers ----------------------------------------------------------------------------------------
/// Shortest decimal text of at most 15 significant digits: plain digits with a zero ahead of the point between 1E-15
/// and 1E15, exponent form ("1E+15", "1.5E-16") outside; "0" for both zeros.
QString generalText(double value);
/// The same as bytes, written at `out` (at least 32 bytes free); gives the end. For loops over many values.
char* writeGeneralText(char* out, double value);
/// generalText with a blank ahead of a number that is not negative, so that "Ratio" + signedText(1) has one blank.
QString signedText(double value);
/// A picture such as "#####0.000", "###,###,##0.00", "#######.0000", "######.##": '0' always shows a digit, '#' only
/// where one stands, a comma in the picture groups by thousands, the point always stands once the picture has one.
/// Rounded half away from zero on the 15-digit text. A minus stands ahead.
QString pictureText(double value, QStringView picture);
/// Rounded half to even to `decimals` places, judged on the 15-digit text (0.15 to one place is 0.2, 0.25 is 0.2).
double roundHalfEven(double value, int decimals);

// -- Pieces of texts; positions from 1 -----------------------------------------------------------------------------
/// `length` characters from position `start`; what reaches past the end is left out, a start past the end gives "".
QString Mid(QStringView text, qsizetype start, qsizetype length = -1);
QString Left(QStringView text, qsizetype length);
QString Right(QStringView text, qsizetype length);
/// Position of `what` at or behind `start`, 0 when it is not there.
qsizetype InStr(QStringView text, QStringView what, qsizetype start = 1);
/// Blanks (code 32 alone: tabs are text) taken off.
QString Trim(QStringView text);
QString LTrim(QStringView text);
QString RTrim(QStringView text);

// -- Pasted blocks -------------------------------------------------------------------------------------------------
/// Lines of a pasted text: one for a text that is not empty plus one for each CR; 1 when that gives 0.
int numofrows(QStringView text);
/// Columns of a pasted text: 1 plus one for each TAB.
int numofcols(QStringView text);
/// Deletes every LF in place and returns the text.
QString removelfs(QString& text);
/// Puts a CR ahead of every LF that has none, so that removelfs never glues lines of other programs together.
QString withCrLf(const QString& text);

// -- Files as text -------------------------------------------------------------------------------------------------
/// The lines of a file read as bytes (Latin-1): CR LF, LF and CR each end a line, a last line without an end counts,
/// there is no extra line behind the last end, and a last line of code 26 alone (an old end-of-file mark) is dropped.
QStringList linesOf(const QByteArray& bytes);
/// List items of a file as BASIC reads them: parted by commas or line ends, blanks around an item dropped, an item in
/// double quotes taken whole with its commas.
QStringList listItemsOf(const QByteArray& bytes);

} // namespace kalvo
