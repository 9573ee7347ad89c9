// SPDX-License-Identifier: GPL-3.0-or-later
// Grids as texts, so that a test reads like the screen: cells parted by '|', rows by a line end.
#pragma once

#include "platform/FlexGrid.h"

#include <string>

namespace kalvo {

/// A grid without fixed rows or columns that holds a text. Returned by gridOf; take it with `auto grid = gridOf(...)`
/// (a FlexGrid can neither be copied nor moved).
class TextGrid : public FlexGrid
{
public:
    explicit TextGrid(const char* text);
};

/// The grid of a text such as "KK|SUB1\nBA|1.5"; as many columns as the longest row. The text is UTF-8.
TextGrid gridOf(const char* text);

/// Writes such a text with its first cell at (row, col); the grid grows when it is too small.
void putCells(FlexGrid& grid, int row, int col, const char* text);

/// All cells of a grid as text.
std::string gridText(const FlexGrid& grid);
/// The cells of an area, all four sides belonging to it.
std::string gridText(const FlexGrid& grid, int top, int left, int bottom, int right);

} // namespace kalvo

/// Lets EXPECT_EQ print texts of Qt. Found by GoogleTest through the name's own namespace.
QT_BEGIN_NAMESPACE
inline void PrintTo(const QString& text, std::ostream* out)
{
    *out << '"' << text.toStdString() << '"';
}
inline void PrintTo(const QByteArray& bytes, std::ostream* out)
{
    *out << '"' << bytes.toStdString() << '"';
}
QT_END_NAMESPACE
