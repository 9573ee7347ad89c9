// SPDX-License-Identifier: GPL-3.0-or-later
#include "graphics/QuickChart.h"

#include "platform/text.h"
#include "results/TableNumbers.h"

#include <algorithm>

namespace kalvo {
namespace {

constexpr int kHours = 0;

QVector<double> columnOf(const FlexGrid& table, TableNumbers& numbers, int col, const FlexGrid::Area& block)
{
    QVector<double> values;
    values.reserve(block.bottom - block.top + 1);
    if (block.top == 0)
        values.append(numberOfText(table.textMatrix(0, col)));
    const std::span<const double> cells = numbers.column(col);
    for (int row = std::max(1, block.top); row <= block.bottom; ++row)
        values.append(cells[static_cast<size_t>(row) - 1]);
    return values;
}

} // namespace

std::optional<QVector<ChartSeries>> quickChartOf(const FlexGrid& table)
{
    const FlexGrid::Area block = table.selection();
    if (block.top == block.bottom && block.left == block.right)
        return std::nullopt;
    TableNumbers numbers(table);
    const QVector<double> hours = columnOf(table, numbers, kHours, block);
    QVector<ChartSeries> all;
    for (int col = block.left; col <= block.right; ++col) {
        const QString heading = Trim(table.textMatrix(0, col));
        all.append({heading.isEmpty() ? QStringLiteral("Column %1").arg(col) : heading, hours,
                    columnOf(table, numbers, col, block), false});
    }
    return all;
}

QString quickTip(const QVector<ChartSeries>& all, ChartPoint point)
{
    const double value = all.at(point.series).y.at(point.index);
    return QStringLiteral("%1,%2,%3").arg(point.series + 1).arg(point.index + 1).arg(generalText(value));
}

} // namespace kalvo
