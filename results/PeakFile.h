// SPDX-License-Identifier: GPL-3.0-or-later
// The `.pek` file: the peaks of a run as the earlier state of a project, with which later runs are compared.
#pragma once

#include "platform/FlexGrid.h"
#include "results/ResultDesk.h"
#include "run/ResultTables.h"

#include <QByteArray>
#include <QStringList>

namespace kalvo {

/// The file's text: a fixed line, the counts of stations, ratios, plans and JD simulations, then each row of the table
/// below its headings as far as its first empty cell, every cell followed by a TAB; lines ended by CR LF.
QByteArray peakFileText(const FlexGrid& peakTable, const RunCounts& counts);

/// What a reader of that file will not find again: rows with an empty cell ahead of a filled one lose what is behind
/// it, and a comma, a quote or a TAB in a name makes two names of one. A reading that failed leaves a table without
/// stations. One line for each row; empty when all is well.
QStringList peakFileLosses(const FlexGrid& peakTable);

/// `newSavePeaks`: asks for a name and writes the table of peaks with the counts of the run that filled it. What was in
/// the file before is kept as NAME.bak. A failure and what the file cannot keep are told.
void newSavePeaks(ResultDesk& desk);

} // namespace kalvo
