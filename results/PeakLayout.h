// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/FlexGrid.h"
#include "run/ResultTables.h"

#include <QStringList>

namespace kalvo {

/// `getpeaks`: another layout of the peaks, a row for each station and plan with a column for each ratio, or where
/// there are no more ratios than plans a row for each station and ratio with a column for each plan; the JD simulations
/// follow one another. No command calls it.
///
/// The row in the index table is taken for the column in `peakRow`, which counts from one less: every cell shows the
/// peak of the record behind its own, and the last record finds none, which throws std::out_of_range with the rows
/// ahead of it filled. That is how those who compare with older listings know it.
/// @param stationNames of the run, untrimmed, in deck order.
/// @param indexTable as an index reader fills it; a record that it does not know shows 0.
void getpeaks(const QStringList& stationNames, const RunCounts& counts, const FlexGrid& indexTable,
              const FlexGrid& peakRow, FlexGrid& target);

} // namespace kalvo
