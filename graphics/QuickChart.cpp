// SPDX-License-Identifier: GPL-3.0-or-later
#include "graphics/QuickChart.h"

#include "platform/text.h"

#include <QtNumeric>

namespace kalvo {
namespace {

constexpr int kHours = 0;
constexpr int kFirstFlow = 2;

double numberOf(const QString& text)
{
    double value = 0.0;
    const QByteArray item = Trim(text).toLatin1();
    return parseWholeNumber({item.constData(), static_cast<size_t>(item.size())}, value) ? value : qQNaN();
}

QVector<double> columnOf(const FlexGrid& table, int col, const FlexGrid::Area& block)
{
    QVector<double> values;
    values.reserve(block.bottom - block.top + 1);
    // A flow's text is its number without loss; the texts of the times are rounded, and count as they are shown.
    const bool takesNumbers = col >= kFirstFlow && table.isNumberColumn(col);
    for (int row = block.top; row <= block.bottom; ++row) {
        double value = takesNumbers ? table.number(row, col) : qQNaN();
        if (!takesNumbers || (row == 0 && qIsNaN(value)))
            value = numberOf(table.textMatrix(row, col));
        values.append(value);
    }
    return values;
}

} // namespace

std::optional<QVector<ChartSeries>> quickChartOf(const FlexGrid& table)
{
    const FlexGrid::Area block = table.selection();
    if (block.top == block.bottom && block.left == block.right)
        return std::nullopt;
    const QVector<double> hours = columnOf(table, kHours, block);
    QVector<ChartSeries> all;
    for (int col = block.left; col <= block.right; ++col) {
        const QString heading = Trim(table.textMatrix(0, col));
        all.append({heading.isEmpty() ? QStringLiteral("Column %1").arg(col) : heading, hours,
                    columnOf(table, col, block), false});
    }
    return all;
}

QString quickTip(const QVector<ChartSeries>& all, ChartPoint point)
{
    const double value = all.at(point.series).y.at(point.index);
    return QStringLiteral("%1,%2,%3").arg(point.series + 1).arg(point.index + 1).arg(generalText(value));
}

} // namespace kalvo
