// SPDX-License-Identifier: GPL-3.0-or-later
#include "run/IndexTable.h"

#include "platform/CommandGuard.h"
#include "platform/text.h"

namespace kalvo {

namespace {

constexpr int kFirstRow = 2;
constexpr int kStartRows = 200;

void setChoice(ListModel& list, int count)
{
    list.enabled = count != 1;
    if (count == 1)
        list.select(0);
}

void fillLists(IndexLists& lists, const RunCounts& counts, bool addsTarget)
{
    lists.List6.addNumbers(counts.numRatios);
    lists.List5.addNumbers(counts.numJD);
    lists.List4.addNumbers(counts.numPlans);
    if (addsTarget)
        lists.List1.add(QStringLiteral("   Target"));
    setChoice(lists.List6, counts.numRatios);
    lists.List6.enabled = false;
    setChoice(lists.List5, counts.numJD);
    setChoice(lists.List4, counts.numPlans);
    setChoice(lists.List1, counts.numStations);
}

} // namespace

std::optional<Tape21Problem> newGetHydrodata(const QString& path, FlexGrid& indexTable, IndexLists* lists,
                                             RunCounts& counts, const IndexReaderOptions& options)
{
    return fillIndexTable(readTape21IndexFile(path, options.progress), indexTable, lists, counts, options);
}

std::optional<Tape21Problem> fillIndexTable(Tape21Index&& index, FlexGrid& indexTable, IndexLists* lists,
                                            RunCounts& counts, const IndexReaderOptions& options)
{
    using namespace index_column;
    const FlexGrid::Bulk bulk(indexTable);
    indexTable.clear();
    indexTable.setCols(kColumns);
    indexTable.setRows(index.records.empty() ? kStartRows : static_cast<int>(index.records.size()) + kFirstRow);

    int row = kFirstRow;
    for (const IndexedRecord& record : index.records) {
        indexTable.setRowTexts(row, kStationName,
                               {index.stationNames[record.station - 1], QString::number(record.station),
                                QString::number(record.ratio), QString::number(record.plan), QString::number(record.jd),
                                QString::number(row - 1)});
        if (record.isWhole)
            indexTable.setTextMatrix(row, kPeak, generalText(record.peak));
        ++row;
    }
    for (const QString& name : std::as_const(index.stationNames))
        if (looksLikeFlows(name)) {
            qCWarning(logRun).noquote() << "TAPE21: a line of flows was taken for the header of a station (" + name +
                                               "): the plan digit of the header ahead of it is blank";
            break;
        }

    counts.numStations = static_cast<int>(index.stationNames.size());
    if (counts.numStations > 0) {
        counts.numJD = index.jds;
        counts.numPlans = index.plans;
        counts.numRatios = index.ratios;
    }
    if (lists != nullptr) {
        if (options.clearsList1)
            lists->List1.clear();
        lists->List1.items += index.stationNames;
        if (!index.problem)
            fillLists(*lists, counts, options.addsTarget);
    }
    return index.problem;
}

bool hasSingleHydrograph(const RunCounts& counts)
{
    return counts.numJD == 1 && counts.numRatios == 1 && counts.numPlans == 1 && counts.numStations == 1;
}

int newGetGraphindex(const FlexGrid& indexTable, const QVariant& station, const QVariant& jd, const QVariant& ratio,
                     const QVariant& plan)
{
    using namespace index_column;
    const std::pair<int, QString> wanted[] = {{kStation, Trim(station.toString())},
                                              {kRatio, Trim(ratio.toString())},
                                              {kPlan, Trim(plan.toString())},
                                              {kJd, Trim(jd.toString())}};
    for (int row = kFirstRow; row < indexTable.rows(); ++row) {
        const auto matches = [&](const auto& cell) { return indexTable.textMatrix(row, cell.first) == cell.second; };
        if (std::all_of(std::begin(wanted), std::end(wanted), matches))
            return row;
    }
    return 0;
}

} // namespace kalvo
