// SPDX-License-Identifier: GPL-3.0-or-later
// The audit of a deck: mistakes of form that make HEC-1 fail or lose results. It looks at the texts of the cells alone;
// it knows nothing of the numbers in them and asks no catalogue.
#pragma once

#include "platform/FlexGrid.h"

#include <QString>
#include <QStringList>

#include <vector>

namespace kalvo {

/// One line of the audit's list.
struct AuditFinding
{
    QString text;
    int row = 0; ///< grid row that the line is about, from 1; 0: about the whole deck
    int col = 0; ///< grid column where the mistake stands; 0 when `row` is 0
};

struct AuditResult
{
    enum class End
    {
        Complete,
        NoZZ,        ///< ended at once: no row has the ID "ZZ"
        TooManyRows, ///< ended in the first pass: more than kMostEmptyIds rows without an ID
    };
    End end = End::Complete;
    std::vector<AuditFinding> findings; ///< in the order found: pass by pass, not row by row
    int numKKCards = 0;                 ///< of a complete audit
    FlexGrid::Snapshot deck;            ///< as it was audited; shares its rows with the grid
};

/// With one empty ID more the audit gives up: what is left of the deck is no deck.
inline constexpr int kMostEmptyIds = 3;

/// Checks rows 1 to the last of a deck's grid (row labels in column 0, IDs in column 1, header texts in row 0). One
/// look at each cell in each pass: linear in the cards.
AuditResult auditDeck(const FlexGrid& grid);

/// Where a finding's card stands now: its row while that holds the card that was audited, else the nearest row that
/// does, else the row of its number. 0 for a finding without a row, or when the grid has become too short.
int rowOfFinding(const FlexGrid& grid, const AuditResult& result, const AuditFinding& finding);

/// What the list does not tell, though Open or HEC-1 would stumble over it: lines longer than the card, TABs,
/// characters that are no plain text. Each piece names its lines as HEC-1 prints them; empty when there is nothing to
/// tell.
QStringList auditRemarks(const FlexGrid& grid);

} // namespace kalvo
