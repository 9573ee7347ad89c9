// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/FlexGrid.h"
#include "platform/Services.h"

#include <QString>

namespace kalvo {

/// Widens a column that is too narrow for a text, its margins included; never narrows one.
void widenToText(FlexGrid& grid, int col, const QString& text, const TextMeasure& measure);
/// The same for all texts of a column from `firstRow` on. Looks at every cell: for tables of labels.
void widenToTexts(FlexGrid& grid, int col, int firstRow, const TextMeasure& measure);

} // namespace kalvo
