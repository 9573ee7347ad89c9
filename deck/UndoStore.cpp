// SPDX-License-Identifier: GPL-3.0-or-later
#include "deck/UndoStore.h"

#include <algorithm>

namespace kalvo {

void pour(const UndoLevel& level, FlexGrid& grid)
{
    const FlexGrid::Bulk bulk(grid);
    grid.restoreTexts(level.deck);
    grid.setCursor(level.row, level.col);
    grid.setTopRow(level.topRow);
}

void UndoStore::record(const FlexGrid& grid)
{
    UndoLevel level = levelOf(grid);
    const auto position = static_cast<size_t>(m_count - 1);
    if (position < m_levels.size())
        m_levels[position] = std::move(level);
    else
        m_levels.push_back(std::move(level));
    ++m_count;
    m_redo.reset();
}

void UndoStore::undo(FlexGrid& grid)
{
    m_redo = levelOf(grid);
    pour(m_levels.at(static_cast<size_t>(m_count - 2)), grid);
    --m_count;
}

void UndoStore::redo(FlexGrid& grid)
{
    pour(m_redo.value(), grid);
    m_redo.reset();
    ++m_count;
}

void UndoStore::reset()
{
    *this = UndoStore();
}

qint64 UndoStore::estimatedBytes() const
{
    qint64 sum = qint64{3} * (m_count + 2);
    for (const UndoLevel& level : m_levels)
        sum += level.clipLength;
    return sum;
}

UndoLevel UndoStore::levelOf(const FlexGrid& grid)
{
    UndoLevel level{grid.snapshot(), grid.row(), grid.col(), grid.topRow(), 0};
    level.clipLength = measure(grid, level.deck);
    return level;
}

/// Reads only the rows that were written since the last measure: a keystroke must not cost a walk over all texts.
qint64 UndoStore::measure(const FlexGrid& grid, const FlexGrid::Snapshot& snapshot)
{
    const int rows = grid.rows();
    m_rowLengths.resize(static_cast<size_t>(rows));
    qint64 sum = qint64{rows} * std::max(grid.cols() - 1, 0) + std::max(rows - 1, 0); // the TABs and CRs
    for (int row = 0; row < rows; ++row) {
        qint64& length = m_rowLengths[static_cast<size_t>(row)];
        if (!grid.sharesRow(m_measured, row)) {
            length = 0;
            for (int col = 0; col < grid.cols(); ++col)
                length += grid.textMatrix(row, col).size();
        }
        sum += length;
    }
    m_measured = snapshot;
    return sum;
}

} // namespace kalvo
