// SPDX-License-Identifier: GPL-3.0-or-later
// What a user does to any grid of results, as changes of the grid's own state: whoever shows the grid follows.
#pragma once

#include "platform/FlexGrid.h"
#include "platform/Services.h"

namespace kalvo {

/// True when more than one cell is selected.
bool hasRange(const FlexGrid& grid);
/// Cells of the selection.
qint64 selectedCells(const FlexGrid& grid);

/// Selects everything, titles too: there are no fixed rows and columns any more, the cursor stands in (0, 0) and the
/// selection ends in the last cell. A grid without cells stays as it is.
void selectWhole(FlexGrid& grid);
/// Makes the first row and column titles again when column 0 is an ordinary one, else makes both ordinary, so that they
/// can be selected and copied.
/// @return true when titles are ordinary cells now: the state of the entry's tick.
bool toggleTitles(FlexGrid& grid);

/// Aligns the columns from `firstCol` on to the right and widens those that are narrower than 1.2 times their heading
/// in row 0. Costs a look at the headings, however many rows there are.
void fitToHeadings(FlexGrid& grid, int firstCol, const TextMeasure& measure);

/// Rows that one click of the wheel scrolls: 1, or with `pageMode` (Ctrl held) what the grid shows less 3, at least 1.
/// Heights in the same unit.
int wheelStep(bool pageMode, int gridHeight, int headerHeight);
/// The top row after the wheel turned by `delta`: below 1 is towards the user and goes down, to the last row at most;
/// up it goes to row 1, or to `first` where the titles have become ordinary rows.
int wheelTopRow(int topRow, int rows, int delta, int step, int first = 1);

} // namespace kalvo
