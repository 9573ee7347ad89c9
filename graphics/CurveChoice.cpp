// SPDX-License-Identifier: GPL-3.0-or-later
#include "graphics/CurveChoice.h"

#include "platform/text.h"

#include <algorithm>
#include <array>

namespace kalvo {

namespace {

struct RecordNumbers
{
    int ratio = 0, plan = 0, jd = 0;
};

/// The three numbers at the end of a label; all 0 where there are none. The name ahead of them may hold anything.
RecordNumbers numbersOf(const QString& label)
{
    std::array<int, 3> numbers{};
    qsizetype end = label.size();
    for (size_t i = 3; i-- > 0;) {
        while (end > 0 && label[end - 1] == u' ')
            --end;
        qsizetype start = end;
        while (start > 0 && label[start - 1].isDigit())
            --start;
        bool ok = false;
        numbers[i] = QStringView(label).mid(start, end - start).toInt(&ok);
        if (!ok || (start > 0 && label[start - 1] != u' '))
            return {};
        end = start;
    }
    return {numbers[0], numbers[1], numbers[2]};
}

int listNumber(const ListModel& list, int index)
{
    // Items are the numbers from 1; a list that is shorter than the choice made from it still gives the right one.
    return index < list.count() ? leadingInt32(list.items[index].toStdString()) : index + 1;
}

} // namespace

CurveIndex::CurveIndex(const FlexGrid& peakRow, const RunCounts& counts)
{
    bool hasNumbers = true;
    for (int col = 1; peakRow.rows() > 0 && col < peakRow.cols(); ++col) {
        const QString label = peakRow.textMatrix(0, col);
        if (label.isEmpty())
            break;
        const RecordNumbers record = numbersOf(label);
        if (record.ratio < 1 || record.plan < 1 || record.jd < 1) {
            hasNumbers = false;
            break;
        }
        if (m_stations.empty() || (record.ratio == 1 && record.plan == 1 && record.jd == 1))
            m_stations.push_back({col + 1, 1, 1, 1});
        Station& station = m_stations.back();
        station.ratios = std::max(station.ratios, record.ratio);
        station.plans = std::max(station.plans, record.plan);
        station.jds = std::max(station.jds, record.jd);
        m_lastColumn = col + 1;
    }
    if (hasNumbers)
        return;
    m_stations.clear();
    m_lastColumn = peakRow.cols();
    const qint64 each = qint64(1) * counts.numRatios * counts.graphPlans * counts.numJD;
    for (int s = 0; each > 0 && s < counts.numStations && s * each + 2 <= peakRow.cols(); ++s)
        m_stations.push_back({static_cast<int>(s * each) + 2, counts.numRatios, counts.graphPlans, counts.numJD});
}

int CurveIndex::columnOf(int station, int ratio, int plan, int jd) const
{
    if (station < 0 || station >= stations())
        return 0;
    const Station& own = m_stations[static_cast<size_t>(station)];
    if (ratio < 0 || plan < 0 || jd < 0 || ratio >= own.ratios || plan >= own.plans || jd >= own.jds)
        return 0;
    const int column = own.firstColumn + (plan * own.ratios + ratio) * own.jds + jd;
    return column <= m_lastColumn ? column : 0;
}

std::vector<CurveId> chosenCurves(const GrapherLists& lists, const CurveIndex& index)
{
    std::vector<CurveId> curves;
    for (const int station : lists.List1.selected)
        for (const int ratio : lists.List2.selected)
            for (const int plan : lists.List4.selected)
                for (const int jd : lists.List5.selected)
                    curves.push_back({index.columnOf(station, ratio, plan, jd), station, ratio, plan, jd});
    return curves;
}

QString missingChoice(const GrapherLists& lists)
{
    QStringList missing;
    if (lists.List1.selected.isEmpty())
        missing << QStringLiteral("stations");
    if (lists.List2.selected.isEmpty())
        missing << QStringLiteral("ratios");
    if (lists.List4.selected.isEmpty())
        missing << QStringLiteral("plans");
    if (lists.List5.selected.isEmpty())
        missing << QStringLiteral("JD simulations");
    return missing.join(QStringLiteral(", "));
}

QString legendText(const GrapherLists& lists, const FlexGrid& peakRow, const CurveId& curve)
{
    const int peakCol = curve.column - 1;
    const QString peak =
        peakCol >= 1 && peakCol < peakRow.cols() && peakRow.rows() > 1 ? peakRow.textMatrix(1, peakCol) : QString();
    return lists.List1.items.value(curve.station) + QStringLiteral(" Rt ") +
           generalText(listNumber(lists.List2, curve.ratio)) + QStringLiteral(" Pln ") +
           generalText(listNumber(lists.List4, curve.plan)) + QStringLiteral(" JD ") +
           generalText(listNumber(lists.List5, curve.jd)) + QStringLiteral(" Q=") + peak;
}

QString getgraphindex(int station, int ratio, int plan, int jd)
{
    for (const int index : {station, ratio, plan, jd})
        static_cast<void>(Trim(signedText(index + 1)));
    return {};
}

} // namespace kalvo
