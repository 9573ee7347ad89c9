// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/FlexGrid.h"

#include <algorithm>

namespace kalvo {

/// Puts cursor, selection and first row shown back as they were; for commands that give looks to a selection of their
/// own. The editor must be suspended while it lives.
class SelectionKeeper
{
public:
    explicit SelectionKeeper(FlexGrid& grid)
        : m_grid(grid), m_row(grid.row()), m_col(grid.col()), m_rowSel(grid.rowSel()), m_colSel(grid.colSel()),
          m_topRow(grid.topRow())
    {
    }
    ~SelectionKeeper()
    {
        const int last = m_grid.rows() - 1;
        m_grid.select(std::min(m_row, last), m_col, std::min(m_rowSel, last), m_colSel);
        m_grid.setTopRow(std::min(m_topRow, last));
    }
    SelectionKeeper(const SelectionKeeper&) = delete;
    SelectionKeeper& operator=(const SelectionKeeper&) = delete;

private:
    FlexGrid& m_grid;
    int m_row, m_col, m_rowSel, m_colSel, m_topRow;
};

} // namespace kalvo
