// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/GridActions.h"

#include <algorithm>
#include <cmath>

namespace kalvo {

namespace {

constexpr double kHeadingRoom = 1.2; ///< width of a column to that of its heading

} // namespace

bool hasRange(const FlexGrid& grid)
{
    return grid.row() != grid.rowSel() || grid.col() != grid.colSel();
}

qint64 selectedCells(const FlexGrid& grid)
{
    if (grid.rows() == 0 || grid.cols() == 0)
        return 0;
    const FlexGrid::Area area = grid.selection();
    return qint64(area.bottom - area.top + 1) * (area.right - area.left + 1);
}

void selectWhole(FlexGrid& grid)
{
    if (grid.rows() == 0 || grid.cols() == 0)
        return;
    const FlexGrid::Bulk bulk(grid);
    grid.setFixedRows(0);
    grid.setFixedCols(0);
    grid.select(0, 0, grid.rows() - 1, grid.cols() - 1);
}

bool toggleTitles(FlexGrid& grid)
{
    const FlexGrid::Bulk bulk(grid);
    const bool becomeTitles = grid.fixedCols() == 0;
    grid.setFixedRows(becomeTitles ? std::min(1, grid.rows()) : 0);
    grid.setFixedCols(becomeTitles ? std::min(1, grid.cols()) : 0);
    return !becomeTitles;
}

void fitToHeadings(FlexGrid& grid, int firstCol, const TextMeasure& measure)
{
    if (grid.rows() == 0)
        return;
    const FlexGrid::Bulk bulk(grid);
    for (int col = firstCol; col < grid.cols(); ++col) {
        grid.setColAlignment(col, FlexGrid::RightTop);
        const auto wanted = static_cast<int>(std::ceil(kHeadingRoom * measure.textWidth(grid.textMatrix(0, col))));
        if (grid.colWidth(col) < wanted)
            grid.setColWidth(col, wanted);
    }
}

int wheelStep(bool pageMode, int gridHeight, int headerHeight)
{
    if (!pageMode || headerHeight <= 0)
        return 1;
    return std::max(1, static_cast<int>(std::floor(static_cast<double>(gridHeight) / headerHeight - 3.0)));
}

int wheelTopRow(int topRow, int rows, int delta, int step, int first)
{
    return delta < 1 ? std::min(topRow + step, rows - 1) : std::max(topRow - step, first);
}

} // namespace kalvo
