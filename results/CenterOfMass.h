// SPDX-License-Identifier: GPL-3.0-or-later
// Time of the center of mass of every hydrograph: the sum of hours x flow over the sum of flows.
#pragma once

#include "platform/FlexGrid.h"
#include "platform/Services.h"

#include <QByteArray>
#include <QString>

#include <optional>

namespace kalvo {

/// The cell at which the centers of mass came to their end, as row and column of the table of hydrographs.
struct CenterProblem
{
    int row = 0; ///< 0: no cell, the column's sums are beyond all numbers
    int col = 0;
    QString label; ///< heading of the column
    QString cell;  ///< what stands there

    QString text() const;
};

/// Fills `Form11`'s table: row 1 the labels of the table of hydrographs, row 2 the hours of the center of mass, both
/// from column 2 on. The numbers are those that the texts of the cells show, hours with their four decimals among
/// them. A hydrograph whose flows sum up to exactly 0 has its center at 0.
/// @return the first cell that is no number, such as an empty one below a short hydrograph; the columns from there on
/// have their labels alone.
std::optional<CenterProblem> fillCenters(const FlexGrid& hydrographs, FlexGrid& Form11);

/// Fills `Form20`'s table out of it: a row for each column, label and hours. Row 1 stays empty, for column 1 has no
/// hydrograph.
void listCenters(const FlexGrid& Form11, FlexGrid& Form20, const TextMeasure& measure);

/// How the centers are worked out, as their screens tell it.
QString centerOfMassHelp();

/// The `.wcm` file of `Form20`'s table: a title, a line with the deck's name, an empty line, then the rows with each
/// cell followed by a TAB. CR LF ends each line.
QByteArray wcmFile(const FlexGrid& Form20, const QString& deckName);

} // namespace kalvo
