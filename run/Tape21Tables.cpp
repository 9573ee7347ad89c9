// SPDX-License-Identifier: GPL-3.0-or-later
#include "run/Tape21Tables.h"

#include "platform/text.h"

#include <algorithm>
#include <limits>

namespace kalvo {

namespace {

using Kind = Tape21Problem::Kind;

constexpr int kMostOrdinates = 9999; ///< four digits; only a count in exponent form says more
constexpr qint64 kMostColumns = 2'000'000;

/// What a table in the making holds so far: how far the reading came and how large its last header left it.
struct Extent
{
    int stations = 0; ///< whose header was taken
    int listed = 0;   ///< whose name was listed, also when the header could not be taken
    int records = 0;  ///< that found a column
    int rows = 0;
    int cols = 0;
    std::optional<Tape21Problem> problem;
};

/// Goes through the stations in file order as the reader does, with the size that `colsAt` gives the table at each
/// header and the column that `columnOf` gives each record. A record without a column ends it.
template <class ColsAt, class ColumnOf>
Extent extentOf(const Tape21& tape, const ColsAt& colsAt, const ColumnOf& columnOf)
{
    Extent extent;
    const int count = static_cast<int>(tape.records.size());
    for (size_t s = 0; s < tape.stations.size(); ++s) {
        const qint64 cols = colsAt(static_cast<int>(s), tape.stations[s].header);
        if (cols > kMostColumns) {
            extent.problem = Tape21Problem{Kind::TooManyRecords, 0, {}};
            extent.listed = static_cast<int>(s) + 1;
            return extent;
        }
        extent.cols = static_cast<int>(cols);
        extent.stations = extent.listed = static_cast<int>(s) + 1;
        const int end = s + 1 < tape.stations.size() ? tape.stations[s + 1].firstRecord : count;
        for (; extent.records < end; ++extent.records) {
            if (columnOf(extent.records) >= extent.cols) {
                extent.problem = Tape21Problem{Kind::OutsideTable, 0, tape.stations[s].name};
                return extent;
            }
        }
    }
    extent.problem = tape.problem;
    extent.listed = static_cast<int>(tape.stationNames.size());
    return extent;
}

/// How many flows of each station's records stay visible: a later header with fewer ordinates cuts the table's rows.
std::vector<int> visibleOrdinates(const Tape21& tape, int stations)
{
    std::vector<int> visible(static_cast<size_t>(stations));
    int least = std::numeric_limits<int>::max();
    for (int s = stations; s-- > 0;)
        visible[static_cast<size_t>(s)] = least =
            std::min(least, tape.stations[static_cast<size_t>(s)].header.ordinates);
    return visible;
}

int tableRows(const Tape21& tape, int stations)
{
    size_t longest = kMostOrdinates;
    for (const HydrographRecord& record : tape.records)
        longest = std::max(longest, record.flows.size());
    const int ordinates = tape.stations[static_cast<size_t>(stations - 1)].header.ordinates;
    return std::min(ordinates, static_cast<int>(longest)) + 1;
}

void resize(FlexGrid& grid, int rows, int cols)
{
    grid.setRows(rows);
    grid.setCols(cols);
}

/// Hands a record's flows to its column, cut to what stays visible.
void putFlows(FlexGrid& table, int col, HydrographRecord& record, int visible)
{
    std::vector<double> flows = std::move(record.flows);
    const auto room = static_cast<size_t>(std::min(visible, table.rows() - 1));
    if (flows.size() > room)
        flows.resize(room);
    table.setNumberColumn(col, 1, std::move(flows), generalText);
}

void putTimes(FlexGrid& table, double intervalMinutes, QStringView hourPicture)
{
    std::vector<double> minutes(static_cast<size_t>(table.rows() - 1));
    std::vector<double> hours(minutes.size());
    for (size_t i = 0; i < minutes.size(); ++i) {
        minutes[i] = static_cast<double>(i) * intervalMinutes;
        hours[i] = minutes[i] / 60.0;
    }
    const QString picture = hourPicture.toString();
    table.setNumberColumn(0, 1, std::move(hours), [picture](double hour) { return pictureText(hour, picture); });
    table.setNumberColumn(1, 1, std::move(minutes), generalText);
    table.setTextMatrix(0, 0, QStringLiteral("Time (hrs)"));
    table.setTextMatrix(0, 1, QStringLiteral("Time (min)"));
}

void putHydrographs(Tape21& tape, const Extent& extent, ResultTables& tables)
{
    FlexGrid& hydrographs = tables.hydrographTable;
    const FlexGrid::Bulk bulk(hydrographs);
    const FlexGrid::Bulk bulkPeaks(tables.peakRow);
    resize(hydrographs, tableRows(tape, extent.stations), extent.cols);
    resize(tables.peakRow, 2, extent.cols - 1);
    const std::vector<int> visible = visibleOrdinates(tape, extent.stations);
    for (int k = 0; k < std::min(extent.records, extent.cols - 2); ++k) {
        HydrographRecord& record = tape.records[static_cast<size_t>(k)];
        const auto station = static_cast<size_t>(record.station);
        const QString label = recordLabel(tape.stations[station].name, record.ratio, record.plan, record.jd);
        hydrographs.setTextMatrix(0, k + 2, label);
        tables.peakRow.setTextMatrix(0, k + 1, label);
        if (record.isWhole)
            tables.peakRow.setTextMatrix(1, k + 1, generalText(record.peak));
        putFlows(hydrographs, k + 2, record, visible[station]);
    }
}

void putNumberLists(ResultTables& tables)
{
    GrapherLists& lists = tables.GRAPHER;
    lists.List3.addNumbers(tables.counts.graphPlans);
    lists.List4.addNumbers(tables.counts.graphPlans);
    lists.List2.addNumbers(tables.counts.numRatios);
    lists.List5.addNumbers(tables.counts.numJD);
    for (ListModel* list : {&lists.List1, &lists.List2, &lists.List4, &lists.List5})
        if (list->count() == 1)
            list->select(0);
}

} // namespace

QString recordLabel(const QString& stationName, int ratio, int plan, int jd)
{
    const QChar blank(u' ');
    return Trim(stationName) + blank + signedText(ratio) + blank + signedText(plan) + blank + signedText(jd);
}

std::optional<Tape21Problem> fillTables(Tape21&& tape, ResultTables& tables, const TextMeasure& measure,
                                        QStringView hourPicture)
{
    GrapherLists& lists = tables.GRAPHER;
    for (ListModel* list : {&lists.List1, &lists.List2, &lists.List4, &lists.List5})
        list->clear();
    tables.hydrographTable.clear();
    tables.peakRow.clear();
    tables.peakTable.clear();

    const auto colsAt = [](int s, const Tape21Header& h) { return qint64(s + 1) * h.plansWide * h.jds * h.ratios + 2; };
    const Extent extent = extentOf(tape, colsAt, [](int record) { return record + 2; });
    lists.List1.items = tape.stationNames.mid(0, extent.listed);
    tables.counts.numStations = lists.List1.count();
    if (extent.stations == 0)
        return extent.problem;

    const Tape21Header& last = tape.stations[static_cast<size_t>(extent.stations - 1)].header;
    tables.counts.graphPlans = last.plansWide;
    tables.counts.numJD = last.jds;
    tables.counts.numRatios = last.ratios;
    tables.lastOrdinates = last.ordinates;
    tables.lastIntervalMinutes = last.intervalMinutes;
    putHydrographs(tape, extent, tables);
    if (extent.problem)
        return extent.problem;
    fillPeakTable(tables, measure);
    {
        const FlexGrid::Bulk bulk(tables.hydrographTable);
        putTimes(tables.hydrographTable, last.intervalMinutes, hourPicture);
    }
    putNumberLists(tables);
    tables.tableCounts = tables.counts;
    return std::nullopt;
}

void fillPeakTable(ResultTables& tables, const TextMeasure& measure)
{
    const RunCounts& counts = tables.counts;
    FlexGrid& table = tables.peakTable;
    const FlexGrid::Bulk bulk(table);
    table.clear();
    resize(table, counts.numStations + 1, (tables.hydrographTable.cols() - 2) / std::max(counts.numStations, 1) + 1);
    const int width = measure.textWidth(QStringLiteral("WWWWWWWWWWWW"));
    for (int col = 1; col < table.cols(); ++col) {
        table.setColWidth(col, width);
        table.setColAlignment(col, FlexGrid::RightTop);
    }
    table.setTextMatrix(0, 0, QStringLiteral("KK Name"));
    int k = 0;
    for (int s = 1; s <= counts.numStations; ++s) {
        table.setTextMatrix(s, 0, Trim(tables.GRAPHER.List1.items[s - 1]));
        for (int j = 1; j <= counts.numJD; ++j)
            for (int p = 1; p <= counts.graphPlans; ++p)
                for (int r = 1; r <= counts.numRatios; ++r) {
                    ++k;
                    const int col = 1 + (p - 1) + (j - 1) + (r - 1);
                    table.setTextMatrix(0, col,
                                        QStringLiteral("Ratio ") + signedText(r) + QStringLiteral(" Plan ") +
                                            signedText(p) + QStringLiteral(" JD ") + signedText(j));
                    table.setTextMatrix(s, col, tables.peakRow.textMatrix(1, k));
                }
    }
}

std::optional<Tape21Problem> getTape21Data(const QString& path, OldFormTarget target, const Progress& progress)
{
    return fillOldForm(readOldTape21File(path, progress), target);
}

std::optional<Tape21Problem> fillOldForm(Tape21&& tape, OldFormTarget target)
{
    FlexGrid& hydrographs = target.hydrographTable;
    const FlexGrid::Bulk bulk(hydrographs);
    const FlexGrid::Bulk bulkRow(target.peakRow);
    const FlexGrid::Bulk bulkTable(target.peakTable);
    for (FlexGrid* grid : {&hydrographs, &target.peakRow, &target.peakTable})
        grid->clear();

    const auto colsAt = [](int s, const Tape21Header& h) { return qint64(h.jds + h.plansWide) * (s + 1) + 2; };
    const auto columnOf = [&tape](int index) {
        const HydrographRecord& record = tape.records[static_cast<size_t>(index)];
        return record.station * tape.stations[static_cast<size_t>(record.station)].header.plansWide + record.plan + 1;
    };
    const Extent extent = extentOf(tape, colsAt, columnOf);
    target.counts.numStations = extent.listed;
    if (extent.stations == 0)
        return extent.problem;
    const Tape21Header& last = tape.stations[static_cast<size_t>(extent.stations - 1)].header;
    target.counts.numPlans = last.plansWide;
    target.counts.numJD = last.jds;

    int widest = 0;
    int mostPlans = 0;
    for (int k = 0; k < extent.records; ++k) {
        widest = std::max(widest, columnOf(k));
        mostPlans = std::max(mostPlans, tape.records[static_cast<size_t>(k)].plan);
    }
    resize(hydrographs, tableRows(tape, extent.stations), extent.cols);
    resize(target.peakRow, 2, std::max(2, widest + 1));
    resize(target.peakTable, extent.stations + 2, mostPlans + 2);
    const std::vector<int> visible = visibleOrdinates(tape, extent.stations);
    for (int k = 0; k < extent.records; ++k) {
        HydrographRecord& record = tape.records[static_cast<size_t>(k)];
        const int col = columnOf(k);
        const QString name = Trim(tape.stations[static_cast<size_t>(record.station)].name);
        const QString label = name + QChar(u' ') + signedText(record.plan);
        target.peakRow.setTextMatrix(0, col, label);
        target.peakTable.setTextMatrix(record.station + 2, 0, name);
        target.peakTable.setTextMatrix(1, record.plan + 1, QStringLiteral("Plan ") + signedText(record.plan));
        if (record.isWhole) {
            target.peakRow.setTextMatrix(1, col, generalText(record.peak));
            target.peakTable.setTextMatrix(record.station + 2, record.plan + 1, generalText(record.peak));
        }
        if (col >= hydrographs.cols())
            continue; // a later header has taken the column away
        hydrographs.setTextMatrix(0, col, label);
        putFlows(hydrographs, col, record, visible[static_cast<size_t>(record.station)]);
    }
    if (extent.problem)
        return extent.problem;
    putTimes(hydrographs, last.intervalMinutes, u"#######.00");
    target.List2.addNumbers(last.plansWide);
    return std::nullopt;
}

} // namespace kalvo
