// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/FlexGrid.h"

#include <QByteArray>
#include <QString>

#include <functional>

namespace kalvo {

/// A text as one field of a CSV file (RFC 4180), UTF-8: in double quotes where it holds a comma, a quote or a line end.
QByteArray csvField(const QString& text);

/// What stands behind the heading of a column of numbers, in brackets ("cfs"); empty for a column without a unit. A
/// column without a heading gets none either.
using UnitOfColumn = std::function<QString(int col)>;

/// Writes a whole grid as CSV, whatever is selected: row 0 holds the headings, each with its unit, every further row
/// one line; fields as the grid shows them, so always with a dot; lines ended by CR LF. Written piece by piece, so that
/// the memory does not grow with the grid; a file that was there before stays as it was unless the new one is whole.
/// @return why the file is not there, empty when it is safely written.
QString writeGridCsv(const FlexGrid& grid, const QString& path, const UnitOfColumn& unit = {});

} // namespace kalvo
