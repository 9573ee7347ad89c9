// SPDX-License-Identifier: GPL-3.0-or-later
// Turns what the readers of TAPE21 found into the tables and lists that the result screens show.
#pragma once

#include "platform/Services.h"
#include "run/ResultTables.h"
#include "run/Tape21.h"

namespace kalvo {

/// Label of a record: the trimmed name, then ratio, plan and JD with two blanks ahead of each ("SUB1  1  1  1").
QString recordLabel(const QString& stationName, int ratio, int plan, int jd);

/// Fills `hydrographTable`, `peakRow`, `peakTable`, the lists of GRAPHER and the counts by the full reader's rules; the
/// flows are moved, not copied. After a problem the tables hold what was read ahead of it, and `peakTable`, the time
/// columns and the number lists are not filled. `hourPicture` is the form of the hour column.
/// @return the problem that ended the reading or the filling.
std::optional<Tape21Problem> fillTables(Tape21&& tape, ResultTables& tables, const TextMeasure& measure,
                                        QStringView hourPicture = u"#######.0000");

/// `peakTable` from `peakRow` and the station list. The column of a record is the sum of the offsets of plan, JD and
/// ratio, not their product, and the records are walked in file order whatever the loops' order: several records may
/// share a cell, and the last one stands.
void fillPeakTable(ResultTables& tables, const TextMeasure& measure);

/// Where the old form of the reader puts its results.
struct OldFormTarget
{
    FlexGrid& hydrographTable;
    FlexGrid& peakRow;
    FlexGrid& peakTable;
    ListModel& List2; ///< gets the numbers of the plans
    RunCounts& counts;
};

/// `getTape21Data`: the old form of the full reader, which knows no plan field.
/// @return the problem that ended it; its callers end without a word.
std::optional<Tape21Problem> getTape21Data(const QString& path, OldFormTarget target, const Progress& progress = {});
std::optional<Tape21Problem> fillOldForm(Tape21&& tape, OldFormTarget target);

} // namespace kalvo
