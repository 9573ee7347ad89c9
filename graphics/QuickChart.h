// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/ChartSeries.h"
#include "platform/FlexGrid.h"

#include <optional>

namespace kalvo {

/// The selected block of a table of hydrographs as curves: one a column, named by row 0, over the hours of column 0.
/// A selection dragged backwards gives the same as one dragged forwards. A cell whose text is no number is a gap, and
/// so is a row whose hours are none. None for a single cell: that is no block to draw.
std::optional<QVector<ChartSeries>> quickChartOf(const FlexGrid& table);

/// What the tip of a data point says: number of the curve, number of its row (both from 1) and the value, joined by
/// ",".
QString quickTip(const QVector<ChartSeries>& all, ChartPoint point);

} // namespace kalvo
