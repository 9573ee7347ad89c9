// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "run/ResultTables.h"

#include <QString>

#include <vector>

namespace kalvo {

/// One curve: its column of the hydrograph table, and its entries in the lists, from 0.
struct CurveId
{
    int column = 0; ///< 0 when the station has no such hydrograph
    int station = 0;
    int ratio = 0;
    int plan = 0;
    int jd = 0;

    bool operator==(const CurveId&) const = default;
};

/// Finds a curve's column by its place in the order of the records: plan outermost, then ratio, JD innermost, each
/// station with its own counts. Names are not looked at, for two stations may share one.
class CurveIndex
{
public:
    CurveIndex() = default;
    /// Walks the labels of `peakRow`, whose last three numbers are ratio, plan and JD. Where a label has none, every
    /// station is taken to have `counts`.
    CurveIndex(const FlexGrid& peakRow, const RunCounts& counts);

    /// Column of the hydrograph table, at least 2; 0 when there is no such hydrograph. Indexes from 0.
    int columnOf(int station, int ratio, int plan, int jd) const;
    int stations() const { return static_cast<int>(m_stations.size()); }

private:
    struct Station
    {
        int firstColumn = 0; ///< of the hydrograph table
        int ratios = 1, plans = 1, jds = 1;
    };
    std::vector<Station> m_stations;
    int m_lastColumn = 0; ///< a reading that ended in the midst of a station left no more
};

/// Every combination of the selected entries: stations outermost, then ratios, plans, JD simulations. Those that a
/// station does not have come with column 0.
std::vector<CurveId> chosenCurves(const GrapherLists& lists, const CurveIndex& index);

/// "stations, ratios": the lists in which nothing is selected; empty when a curve can be drawn.
QString missingChoice(const GrapherLists& lists);

/// A row of the legend: station, " Rt " ratio, " Pln " plan, " JD " simulation, " Q=" peak.
QString legendText(const GrapherLists& lists, const FlexGrid& peakRow, const CurveId& curve);

/// Forms the trimmed text of each index plus 1 and returns an empty text. Nothing depends on it: columns are counted.
QString getgraphindex(int station, int ratio, int plan, int jd);

} // namespace kalvo
