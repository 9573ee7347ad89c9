// SPDX-License-Identifier: GPL-3.0-or-later
#include "results/RunoffVolumes.h"

#include "platform/text.h"
#include "results/TableNumbers.h"

#include <algorithm>
#include <cmath>
#include <span>
#include <stdexcept>

namespace kalvo {

namespace {

constexpr double kSecondsInHour = 3600.0;
constexpr double kEndedBelow = 1.0;
constexpr int kGroup = 4; ///< rows of a station, plan and JD simulation
/// That empty rows are made for. Only headers that belong to no run have a product of counts beyond it.
constexpr qint64 kMostGroups = 1'000'000;

/// Lengths of the steps in hours; step i ends at ordinate i, the first one is 0, for the first flow does not count.
std::vector<double> stepsOf(const std::vector<double>& hours)
{
    std::vector<double> steps(hours.size());
    for (size_t i = 0; i < hours.size(); ++i) {
        if (std::isnan(hours[i]))
            throw std::runtime_error("row " + std::to_string(i + 1) + " of the table of hydrographs has no time");
        steps[i] = i == 0 ? 0.0 : hours[i] - hours[i - 1];
    }
    return steps;
}

/// Adds up one hydrograph, piece by piece.
struct Summing
{
    const std::vector<double>& steps;
    double volume = 0.0;
    double last = 0.0; ///< flow that is there

    void take(std::span<const double> flows, size_t first)
    {
        double sum = volume; // in a register, which a member is not
        for (size_t i = 0; i < flows.size(); ++i)
            sum += steps[first + i] * flows[i] * kSecondsInHour;
        if (std::isnan(sum))
            return takeWithEmptyCells(flows, first);
        volume = sum;
        last = flows.empty() ? last : flows.back();
    }

private:
    void takeWithEmptyCells(std::span<const double> flows, size_t first)
    {
        for (size_t i = 0; i < flows.size(); ++i) {
            if (std::isnan(flows[i]))
                continue;
            volume += steps[first + i] * flows[i] * kSecondsInHour;
            last = flows[i];
        }
    }
};

} // namespace

std::vector<RunoffVolume> runoffVolumes(const FlexGrid& hydrographTable)
{
    std::vector<RunoffVolume> volumes;
    if (hydrographTable.rows() == 0 || hydrographTable.cols() <= ResultTables::kFirstRecord)
        return volumes;
    TableNumbers numbers(hydrographTable);
    std::vector<double> steps;
    for (int col = ResultTables::kFirstRecord; col < hydrographTable.cols(); ++col) {
        const QString label = hydrographTable.textMatrix(0, col);
        if (label.isEmpty())
            break;
        if (col == ResultTables::kFirstRecord)
            steps = stepsOf(numbers.copyOf(0));
        Summing sum{steps};
        numbers.forEachPiece(col, [&sum](std::span<const double> flows, size_t first) { sum.take(flows, first); });
        volumes.push_back({label, sum.volume, std::fabs(sum.last) > kEndedBelow});
    }
    return volumes;
}

void fillVolumes(FlexGrid& Grid1, const std::vector<RunoffVolume>& volumes, const RunCounts& counts,
                 const TextMeasure& measure)
{
    const FlexGrid::Bulk bulk(Grid1);
    const int ratios = std::max(counts.numRatios, 1);
    Grid1.clear();
    Grid1.setCols(ratios + 1);
    const qint64 groups = qint64(counts.graphPlans) * counts.numStations * counts.numJD;
    Grid1.setRows(static_cast<int>(std::clamp<qint64>(groups, 0, kMostGroups)) * kGroup + 2);
    Grid1.setFixedRows(1);
    Grid1.setColWidth(0, measure.textWidth(QStringLiteral("WWWWWW")));
    for (int ratio = 1; ratio <= ratios; ++ratio) {
        Grid1.setColWidth(ratio, measure.textWidth(QStringLiteral("WWWWWWWWWW")));
        Grid1.setColAlignment(ratio, FlexGrid::RightCenter);
        Grid1.setTextMatrix(0, ratio, QStringLiteral("Ratio ") + signedText(ratio));
    }
    int group = -2;
    for (size_t i = 0; i < volumes.size(); ++i) {
        const int k = static_cast<int>(i % static_cast<size_t>(ratios));
        if (k == 0)
            group += kGroup;
        // Counts that differ from station to station leave more records than the last station's counts tell of.
        if (group + 2 >= Grid1.rows())
            Grid1.setRows(group + kGroup);
        Grid1.setTextMatrix(group, 0, QStringLiteral("KK NAME"));
        Grid1.setTextMatrix(group + 1, 0, QStringLiteral("Volume (cf) "));
        Grid1.setTextMatrix(group, k + 1, volumes[i].label);
        Grid1.setTextMatrix(group + 1, k + 1, pictureText(volumes[i].volume, u"#########,###0.000"));
        if (volumes[i].isStillUp)
            Grid1.setTextMatrix(group + 2, k + 1, QStringLiteral("+/-"));
    }
}

void listVolumes(FlexGrid& list, const std::vector<RunoffVolume>& volumes)
{
    const FlexGrid::Bulk bulk(list);
    list.clear();
    list.setCols(3);
    list.setRows(static_cast<int>(volumes.size()) + 1);
    list.setRowTexts(0, 0, {QStringLiteral("KK NAME"), QStringLiteral("Volume"), QStringLiteral("+/-")});
    for (size_t i = 0; i < volumes.size(); ++i)
        list.setRowTexts(static_cast<int>(i) + 1, 0,
                         {volumes[i].label, pictureText(volumes[i].volume, u"0.000"),
                          volumes[i].isStillUp ? QStringLiteral("+/-") : QString()});
}

} // namespace kalvo
