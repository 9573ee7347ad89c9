// SPDX-License-Identifier: GPL-3.0-or-later
// The detailed routings that HEC-1 writes for pools with an ST card (FLOW_AND_STAGE_STORAGE.TXT): for each station,
// plan and ratio a line that names them, a line of headings and a line for each ordinate.
#pragma once

#include "platform/FlexGrid.h"
#include "platform/GridCsv.h"
#include "platform/Services.h"

#include <QString>
#include <QStringList>

#include <optional>
#include <string_view>

namespace kalvo {

/// The file rules ahead of a viewer of detailed routings. False when there is nothing to show, which has been told, and
/// when the user does not want to wait for a file of more than 2,400,000 bytes.
bool mayShowDetailedRoutings(Services& services);

/// What `List1` of `DetRes` lists, one entry for each "LOW AREA=" of the text: station, ratio and the place to jump to,
/// "BASIN   RATIO  1     //   16". The words are searched from position 0 and cut from position 1, which is what puts
/// the six characters of the station ahead of them into the label. The list ends with the first block that has no
/// "RATIO" or whose label would start ahead of the text.
/// @param text as the text box holds it, lines ended by CR LF
QStringList jumpEntries(std::string_view text);

/// The place behind the last "//" of an entry, in characters from 0; none when no number stands there.
std::optional<qsizetype> jumpPosition(const QString& entry);

/// The columns of the report parted by TABs. Runs of six, five, four, three and two blanks each become one, then pairs
/// of TABs fall to one, three times: seven blanks leave one behind the TAB, sixty leave two TABs.
QString columnsByTabs(QString text);

/// What became of a file in the grid.
enum class GridFill
{
    Whole,
    Cut,    ///< the file has more lines than the grid takes
    Missing ///< the file cannot be read; the grid holds the headings alone
};
/// Lines that the grid of routings takes. It holds a line at nine times the memory that the text does.
inline constexpr int kMostGridLines = 1'000'000;

/// Lays the file out in the grid of `detres2`: headings in columns 1 to 6 of row 0, a row for each line. What reaches
/// past column 6 is dropped.
GridFill fillRoutingGrid(FlexGrid& grid, const QString& path, int mostLines = kMostGridLines);

/// Units of that grid's columns, by the deck that was run.
UnitOfColumn routingUnits(const ProgramFolder& folder);

} // namespace kalvo
