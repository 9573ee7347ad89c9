// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/FlexGrid.h"
#include "platform/Services.h"
#include "run/ResultTables.h"

#include <QString>

#include <vector>

namespace kalvo {

/// How much water one hydrograph carried.
struct RunoffVolume
{
    QString label;          ///< of the record, as the table of hydrographs names it
    double volume = 0.0;    ///< cubic feet, or m3 for a metric run
    bool isStillUp = false; ///< its last flow is above 1 or below -1: it had not ended when the run did
};

/// The volumes of all hydrographs of a table: the sum of flow at the end of each step times the length of the step, so
/// that the first ordinate does not count. Hours and flows are the numbers that the cells' texts give; an empty cell of
/// a hydrograph that is shorter than the others adds nothing. Columns without a label end the table.
/// Throws std::runtime_error when the hours are not filled in.
std::vector<RunoffVolume> runoffVolumes(const FlexGrid& hydrographTable);

/// Lays the volumes out for `FrmRunoffVolumes`: four rows for each station, plan and JD simulation, from row 2 on, with
/// a column for each ratio. `counts` are those of the run that filled the table. An irregular table gets as many rows
/// as its records need.
void fillVolumes(FlexGrid& Grid1, const std::vector<RunoffVolume>& volumes, const RunCounts& counts,
                 const TextMeasure& measure);

/// The same as a plain list for other programs: a row for each record, its volume without grouping.
void listVolumes(FlexGrid& list, const std::vector<RunoffVolume>& volumes);

} // namespace kalvo
