// SPDX-License-Identifier: GPL-3.0-or-later
#include "results/ColumnFit.h"

namespace kalvo {

namespace {

constexpr int kMargins = 8 * kTwipsPerPixel; ///< left and right of a cell's text

} // namespace

void widenToText(FlexGrid& grid, int col, const QString& text, const TextMeasure& measure)
{
    const int wanted = measure.textWidth(text) + kMargins;
    if (!text.isEmpty() && grid.colWidth(col) < wanted)
        grid.setColWidth(col, wanted);
}

void widenToTexts(FlexGrid& grid, int col, int firstRow, const TextMeasure& measure)
{
    for (int row = firstRow; row < grid.rows(); ++row)
        widenToText(grid, col, grid.textMatrix(row, col), measure);
}

} // namespace kalvo
