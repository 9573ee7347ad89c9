// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/support/GridText.h"

namespace kalvo {

TextGrid::TextGrid(const char* text)
{
    setFixedRows(0);
    setFixedCols(0);
    setRows(0);
    setCols(0);
    putCells(*this, 0, 0, text);
}

TextGrid gridOf(const char* text)
{
    return TextGrid(text);
}

void putCells(FlexGrid& grid, int row, int col, const char* text)
{
    const QStringList lines = QString::fromUtf8(text).split(QLatin1Char('\n'));
    if (grid.rows() < row + lines.size())
        grid.setRows(row + static_cast<int>(lines.size()));
    for (int i = 0; i < lines.size(); ++i) {
        const QStringList cells = lines[i].split(QLatin1Char('|'));
        if (grid.cols() < col + cells.size())
            grid.setCols(col + static_cast<int>(cells.size()));
        for (int k = 0; k < cells.size(); ++k)
            grid.setTextMatrix(row + i, col + k, cells[k]);
    }
}

std::string gridText(const FlexGrid& grid)
{
    return gridText(grid, 0, 0, grid.rows() - 1, grid.cols() - 1);
}

std::string gridText(const FlexGrid& grid, int top, int left, int bottom, int right)
{
    std::string all;
    for (int row = top; row <= bottom; ++row) {
        if (row > top)
            all += '\n';
        for (int col = left; col <= right; ++col) {
            if (col > left)
                all += '|';
            all += grid.textMatrix(row, col).toStdString();
        }
    }
    return all;
}

} // namespace kalvo
