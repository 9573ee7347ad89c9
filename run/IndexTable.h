// SPDX-License-Identifier: GPL-3.0-or-later
// The index of a TAPE21: one row for each hydrograph with its station, ratio, plan, JD, record number and peak. Each
// screen that lets the user choose hydrographs has an index of its own.
#pragma once

#include "platform/FlexGrid.h"
#include "run/ResultTables.h"
#include "run/Tape21.h"

#include <QVariant>

#include <optional>

namespace kalvo {

/// The list boxes that go with an index, under the same names on every screen.
struct IndexLists
{
    ListModel List1; ///< stations, untrimmed
    ListModel List4; ///< plans
    ListModel List5; ///< JD simulations
    ListModel List6; ///< ratios; never takes a choice
};

/// In what the copies of the index reader differ.
struct IndexReaderOptions
{
    bool clearsList1 = false; ///< the others rely on their callers
    bool addsTarget = false;  ///< ends the stations with the item "   Target"
    Progress progress = {};
};

/// Columns of an index table. Rows 0 and 1 stay empty; the first record is in row 2.
namespace index_column {
inline constexpr int kStationName = 0;
inline constexpr int kStation = 1;
inline constexpr int kRatio = 2;
inline constexpr int kPlan = 3;
inline constexpr int kJd = 4;
inline constexpr int kRecord = 5;
inline constexpr int kPeak = 6;
inline constexpr int kColumns = 8;
} // namespace index_column

/// `newGetHydrodata`: reads a TAPE21 in index order into an index table, its lists and the counts. The table is emptied
/// first, so that a failed run never shows the rows of the one before.
/// @param lists null for a reader without lists.
/// @return the problem that ended it, after which only the stations are listed; readers end without a word then.
std::optional<Tape21Problem> newGetHydrodata(const QString& path, FlexGrid& indexTable, IndexLists* lists,
                                             RunCounts& counts, const IndexReaderOptions& options = {});
/// `firstnewGethydrodata` (and `newGetHydrodata2`): the same reader into a table alone.
inline std::optional<Tape21Problem> firstnewGethydrodata(const QString& path, FlexGrid& indexTable, RunCounts& counts)
{
    return newGetHydrodata(path, indexTable, nullptr, counts);
}
/// The filling alone, of what was read.
std::optional<Tape21Problem> fillIndexTable(Tape21Index&& index, FlexGrid& indexTable, IndexLists* lists,
                                            RunCounts& counts, const IndexReaderOptions& options = {});

/// True when a run has but one hydrograph, which cannot be compared with anything.
bool hasSingleHydrograph(const RunCounts& counts);

/// `newGetGraphindex`: the first row whose station, JD, ratio and plan equal the given ones as trimmed texts; 0 when
/// none does. The record's number is one less than the row.
int newGetGraphindex(const FlexGrid& indexTable, const QVariant& station, const QVariant& jd, const QVariant& ratio,
                     const QVariant& plan);

} // namespace kalvo
