// SPDX-License-Identifier: GPL-3.0-or-later
#include "results/CenterOfMass.h"

#include "platform/text.h"
#include "results/TableNumbers.h"
#include "run/ResultTables.h"

#include <cmath>
#include <span>
#include <vector>

namespace kalvo {

namespace {

constexpr int kLabels = 1;  ///< row of Form11's table
constexpr int kCenters = 2; ///< row of Form11's table

/// None when a cell is no number, or the sums are beyond all numbers.
std::optional<double> centerOf(const std::vector<double>& hours, std::span<const double> flows)
{
    double sum = 0.0, moments = 0.0;
    for (size_t i = 0; i < flows.size(); ++i) {
        sum += flows[i];
        moments += hours[i] * flows[i];
    }
    const double center = sum == 0.0 ? moments - moments : moments / sum; // no number stays none
    return std::isfinite(center) ? std::optional(center) : std::nullopt;
}

CenterProblem problemOf(const FlexGrid& table, int col, const std::vector<double>& hours, std::span<const double> flows)
{
    CenterProblem problem{0, col, table.textMatrix(0, col), {}};
    for (size_t i = 0; i < flows.size() && problem.row == 0; ++i) {
        if (!std::isnan(flows[i]) && !std::isnan(hours[i]))
            continue;
        problem.row = static_cast<int>(i) + 1;
        problem.cell = table.textMatrix(problem.row, std::isnan(flows[i]) ? col : 0);
    }
    return problem;
}

} // namespace

std::optional<CenterProblem> fillCenters(const FlexGrid& hydrographs, FlexGrid& Form11)
{
    const FlexGrid::Bulk bulk(Form11);
    Form11.clear();
    Form11.setRows(3);
    Form11.setCols(hydrographs.cols());
    for (int col = ResultTables::kFirstRecord; col < hydrographs.cols(); ++col)
        Form11.setTextMatrix(kLabels, col, hydrographs.textMatrix(0, col));
    TableNumbers numbers(hydrographs);
    const std::vector<double> hours = numbers.copyOf(0);
    for (int col = ResultTables::kFirstRecord; col < hydrographs.cols(); ++col) {
        const std::span<const double> flows = numbers.column(col);
        const std::optional<double> center = centerOf(hours, flows);
        if (!center)
            return problemOf(hydrographs, col, hours, flows);
        Form11.setTextMatrix(kCenters, col, pictureText(*center, u"####0.0##"));
    }
    return std::nullopt;
}

QString CenterProblem::text() const
{
    const QString why = row > 0 ? QStringLiteral("row %1 holds '%2', which is no number").arg(row).arg(cell)
                                : QStringLiteral("its sums are too large");
    return QStringLiteral("the center of mass of column %1 (%2) cannot be computed: %3").arg(col).arg(label, why);
}

void listCenters(const FlexGrid& Form11, FlexGrid& Form20, const TextMeasure& measure)
{
    const FlexGrid::Bulk bulk(Form20);
    Form20.clear();
    Form20.setRows(Form11.cols());
    Form20.setCols(2);
    Form20.setColAlignment(1, FlexGrid::RightTop);
    const int width = measure.textWidth(QStringLiteral("WWWWWWWW"));
    for (int col = 0; col < Form20.cols(); ++col)
        Form20.setColWidth(col, width);
    Form20.setTextMatrix(0, 0, QStringLiteral("KK Station"));
    Form20.setTextMatrix(0, 1, QStringLiteral("Time (hrs)"));
    for (int col = 1; col < Form11.cols(); ++col)
        for (int row = 1; row < Form11.rows(); ++row)
            Form20.setTextMatrix(col, row - 1, Form11.textMatrix(row, col));
}

QString centerOfMassHelp()
{
    return QStringLiteral("The Time Value Center of Mass is computed to be the Sum of (Q cfs) x (t sec) / (Sum Q cfs)");
}

QByteArray wcmFile(const FlexGrid& Form20, const QString& deckName)
{
    const QByteArray lineEnd = "\r\n";
    QByteArray file = "Center of Mass" + lineEnd;
    file += "HEC-1 Data: " + deckName.toLatin1() + lineEnd + lineEnd;
    for (int row = 0; row < Form20.rows(); ++row) {
        for (const QString& cell : Form20.rowTexts(row))
            file += cell.toLatin1() + '\t';
        file += lineEnd;
    }
    return file;
}

} // namespace kalvo
