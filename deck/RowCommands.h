// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "deck/EditContext.h"

#include <QObject>

#include <vector>

namespace kalvo {

/// The commands that add, take away, hide and show rows of one page's deck. Adds `newinsertrow` (with `insertrow` and
/// the pop-up's `mnupopupinsertline`), `deleterow`, `mnu_deletelines` (`mnupopupdeletelines`), `mnu_hiderows`, `unhide`
/// and `trimtozz` to the commands.
///
/// Rows move as rows: every cell keeps its text, whatever characters it holds, and a row's colours, fonts and height go
/// with it. The cost of each command is a pointer a row and the new line numbers below the place.
class RowCommands : public QObject
{
    Q_OBJECT

public:
    explicit RowCommands(const EditContext& context);

    /// One empty row above the cursor, which stays where it is and so stands in the new row.
    void newinsertrow();
    /// Takes the cursor's row out. A deck of one card row stays as it is.
    void mnu_newDeleteRow();
    /// Takes all rows of the selection out. When these are all cards, the rows stay and are empty.
    void mnu_deletelines();

    /// `count` empty rows above the cursor; the grid grows by as many. Records one level, which holds the deck with the
    /// empty rows in: whoever calls it has recorded the deck of before. A failure is told.
    /// @return false when the rows could not be made.
    bool MULTI_INSERT(int count);
    /// `count` empty rows above the cursor of a grid that keeps its size: the last rows fall off its end, so the caller
    /// grows it first. Records one level. Heights stay where they are; panel 7 names cards that were lost.
    void newMulti_Insert(int count);

    /// Keeps the height of every row in `rowHeightsSaved`, indexed by row.
    void GETRowHS();
    /// After `count` rows were inserted ahead of `row`: rows above it get their saved heights, rows from `row` +
    /// `count` on those of the row `count` above. The inserted rows are left alone.
    void SETRowHS(int row, int count);
    /// After `count` rows were taken out at `row`: rows above it get their saved heights, those from it on the saved
    /// heights of the row `count` below.
    void SetDelRowHS(int row, int count);
    const std::vector<int>& rowHeightsSaved() const { return m_heights; }

    /// Hides the rows of the selection; the cursor goes to the next row that can be seen.
    void mnu_hiderows();
    /// Shows every hidden row, as high as the first row that is not hidden.
    void unhide();
    /// Drops the rows behind the ZZ card, or says that there is none.
    void trimtozz();

Q_SIGNALS:
    /// The keyboard goes back to the grid after a row was deleted.
    void gridFocusWanted();

private:
    int cursorRow() const;
    void insertEmptyRows(int row, int count);
    void deleteAllCards();
    void hide(const FlexGrid::Area& area);
    int savedHeight(int row) const;
    void setHeight(int row, int twips);

    EditContext m_context;
    Deck& m_deck;
    FlexGrid& m_grid;
    std::vector<int> m_heights;
};

} // namespace kalvo
