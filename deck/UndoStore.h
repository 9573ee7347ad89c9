// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/FlexGrid.h"

#include <QtGlobal>

#include <optional>
#include <vector>

namespace kalvo {

/// One state of the deck: the texts of all rows and columns, header and line numbers too, and where the cursor stood.
/// Heights, colours and fonts of the snapshot are never put back.
struct UndoLevel
{
    FlexGrid::Snapshot deck;
    int row = 1;
    int col = 1;
    int topRow = 1;
    qint64 clipLength = 0; ///< characters of the texts in `Clip` form
};

/// The undo levels of one deck and its one redo level. Levels share all rows that no edit has written between them: a
/// level costs a pointer a row (40 KB for 5,000 cards) once the grid is written, and next to nothing before that.
class UndoStore
{
public:
    /// The next free position: 1 when there is nothing to take back.
    int undoCount() const { return m_count; }
    bool canUndo() const { return m_count >= 2; }
    bool redoEmpty() const { return !m_redo.has_value(); }

    /// Stores the grid as it stands at the next position and drops the redo level. Costs a comparison a row.
    void record(const FlexGrid& grid);
    /// Keeps the grid as the redo level and goes back to the last recorded state. Only with `canUndo`. What was stored
    /// at that position stays, so that `redo` makes it live again.
    void undo(FlexGrid& grid);
    /// Goes to the redo level, which is then gone. Only without `redoEmpty`.
    void redo(FlexGrid& grid);
    void dropRedo() { m_redo.reset(); }
    /// Forgets everything.
    void reset();

    /// Characters of all stored texts, those of positions taken back included, and 3 for each position: the size of a
    /// store of plain texts, not that of this one, which shares its rows.
    qint64 estimatedBytes() const;

    /// What is stored, in the order of positions (the first is position 1); may reach past `undoCount` - 1.
    const std::vector<UndoLevel>& levels() const { return m_levels; }

private:
    UndoLevel levelOf(const FlexGrid& grid);
    qint64 measure(const FlexGrid& grid, const FlexGrid::Snapshot& snapshot);

    std::vector<UndoLevel> m_levels;
    std::optional<UndoLevel> m_redo;
    int m_count = 1;
    FlexGrid::Snapshot m_measured; ///< whose row lengths stand in `m_rowLengths`
    std::vector<qint64> m_rowLengths;
};

/// Puts the texts and the cursor of a level into the grid. Heights and looks stay where they are; rows that the grid
/// gains are of its standard height. Rows without looks are shared with the level again, and cost no copy.
void pour(const UndoLevel& level, FlexGrid& grid);

} // namespace kalvo
