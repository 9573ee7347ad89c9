// SPDX-License-Identifier: GPL-3.0-or-later
// The `.hyd` file: a block of the table of hydrographs as text in print zones, the way that spreadsheets and plotting
// programs of old take it in.
#pragma once

#include "platform/FlexGrid.h"
#include "platform/Services.h"

#include <QByteArray>
#include <QString>

#include <optional>

namespace kalvo {

/// Columns of a print zone.
inline constexpr int kPrintZone = 14;

/// Adds one item to a line of print zones and pads it with blanks to the start of the next zone. At least one blank
/// follows, so that an item that fills its zone never touches the next one; an empty item keeps its zone.
void addPrintZone(QByteArray& line, const QString& item);

/// What the user is told when the table's selection cannot be saved: none is there, or it was dragged backwards. None
/// when it can be.
std::optional<MessageBox> whyNotSavable(const FlexGrid& table);

/// Writes the table's selection: a line "Time Hrs" with the headings of the selected columns, then for each selected
/// row its hours and its cells. A selection that starts in row 0 gives the headings twice. Every line, the last one
/// too, ends in a CR alone. Written piece by piece, so that the memory does not grow with the table; a file that was
/// there before stays as it was unless the new one is whole.
/// @return why the file is not there, empty when it is safely written.
QString writeHydFile(const FlexGrid& table, const QString& path);

} // namespace kalvo
