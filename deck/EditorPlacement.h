// SPDX-License-Identifier: GPL-3.0-or-later
// Where the floating editor lies, how far the wheel scrolls and how the text grows: arithmetic of the main screen
// without the screen. All lengths are twips.
#pragma once

namespace kalvo {

/// The grid and its current cell as `setTextbox` finds them. The cell's place counts from the grid's top left.
struct EditorSurroundings
{
    int gridTop = 0;
    int gridLeft = 0;
    int gridWidth = 0;
    int gridHeight = 0;
    int cellTop = 0;
    int cellLeft = 0;
    int cellWidth = 0;
    int cellHeight = 0;
    int headerHeight = 0;
    int headerWidth = 0; ///< of the fixed column
    bool isFirstRowVisible = true;
    bool isLastRowVisible = true;
    bool isCellVisible = true;
    int roomUnderLastRow = 0;
    bool isHiddenRow = false;
    double fontSize = 8.25; ///< points, of the cell
    int lineHeight = 0;     ///< of one line of its font
};

struct EditorPlace
{
    bool shown = false;
    int left = 0;
    int top = 0;
    int width = 0;
    int height = 0;

    bool operator==(const EditorPlace&) const = default;
};

/// A vertical scroll bar stands when the first row is scrolled away or little is free under the last one.
bool hasScrollBar(const EditorSurroundings& around);

/// The editor's place. It is not shown over a hidden row, over a cell that lies past the edge, or under the headers;
/// it is cut where the cell reaches past the grid, but never below one line.
EditorPlace placeEditor(const EditorSurroundings& around);

/// The editor's place once the user has dragged an edge of a row or column: as wide as the cell up to the grid's own
/// edge, also where `placeEditor` keeps room for a scroll bar that does not stand. A bar stands when the last row is
/// out of view.
EditorPlace FitTextBox(const EditorSurroundings& around);

/// The mark `noFitAfterDrag` after the pointer moved over the grid to (x, y) from its top left, while edges can be
/// dragged. It is judged only in the cells and with the current one in view: 1 where a vertical scroll bar stands, 0
/// where none does; otherwise it stays as it was. While it is 1 the end of a drag does not run FitTextBox.
int noFitAfterMove(int noFitAfterDrag, const EditorSurroundings& around, int x, int y);

/// The text size after `uptext` (16 at most) and `DOWNTEXT` (7 at least), points.
double largerText(double points);
double smallerText(double points);

} // namespace kalvo
