// SPDX-License-Identifier: GPL-3.0-or-later
#include "graphics/GraphScale.h"

#include "platform/text.h"
#include "results/TableNumbers.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace kalvo {

namespace {

constexpr double kHeadroom = 1.1;
constexpr int kMostShift = 1'000'000; ///< percent; a bar beyond it could not be moved by hand

double expansion(ScrollState bar)
{
    return (bar.max == 0 ? 0.0 : static_cast<double>(bar.value) / bar.max) * 200.0 + 1.0;
}

} // namespace

double cellNumber(const FlexGrid& grid, int row, int col)
{
    const double number = grid.number(row, col);
    if (std::isfinite(number))
        return number;
    const double value = numberOfText(grid.textMatrix(row, col));
    return std::isfinite(value) ? value : std::numeric_limits<double>::quiet_NaN();
}

GraphExtent graphExtent(const FlexGrid& peakRow, const FlexGrid& hydrographTable)
{
    GraphExtent extent;
    for (int col = 1; peakRow.rows() > 1 && col < peakRow.cols(); ++col)
        extent.maxFlow = std::fmax(extent.maxFlow, cellNumber(peakRow, 1, col));
    for (int row = 1; hydrographTable.cols() > 1 && row < hydrographTable.rows(); ++row)
        extent.maxTime = std::fmax(extent.maxTime, cellNumber(hydrographTable, row, 1));
    return extent;
}

double GraphScale::hoursAt(double x) const
{
    return xScale > 0.0 ? (x + shift) / (60.0 * xScale) : 0.0;
}

double GraphScale::flowAt(double y) const
{
    return yScale > 0.0 ? std::max(0.0, (originY() - y) / yScale) : 0.0;
}

GraphScale graphScale(const GraphExtent& extent, ScrollState vertical, ScrollState horizontal, double width,
                      double height, int shiftPercent)
{
    GraphScale scale;
    scale.axisWidth = std::max(0.0, width - kGraphMargin);
    scale.axisHeight = std::max(0.0, height - kGraphMargin);
    scale.shift = shiftPercent / 100.0 * width;
    const int span = vertical.max - vertical.min;
    scale.flowRange = span == 0 ? 0.0 : kHeadroom * extent.maxFlow * (vertical.max - vertical.value) / span;
    scale.timeRange = horizontal.max == 0 ? 0.0 : extent.maxTime * horizontal.value / horizontal.max;
    // Also false for what a division would carry out of all numbers.
    if (scale.flowRange > 0.0 && scale.timeRange > 0.0 && scale.axisWidth > 0.0 && scale.axisHeight > 0.0 &&
        std::isfinite(scale.axisWidth / scale.timeRange) && std::isfinite(scale.axisHeight / scale.flowRange)) {
        scale.xScale = scale.axisWidth / scale.timeRange;
        scale.yScale = scale.axisHeight / scale.flowRange;
    }
    return scale;
}

QString verticalExpansionText(ScrollState bar)
{
    return pictureText(expansion(bar), u"###0.0");
}

QString horizontalExpansionText(ScrollState bar)
{
    return pictureText(expansion(bar), u"####.0");
}

int largestShift(ScrollState horizontal, double width)
{
    if (horizontal.value <= 0 || width <= kGraphMargin)
        return 0;
    const double hidden = (width - kGraphMargin) * (static_cast<double>(horizontal.max) / horizontal.value - 1.0);
    return static_cast<int>(std::clamp(std::ceil(100.0 * hidden / width), 0.0, static_cast<double>(kMostShift)));
}

QString pointerHoursText(const GraphScale& scale, double x)
{
    return pictureText(scale.hoursAt(x), u"######.##");
}

QString pointerFlowText(const GraphScale& scale, double y)
{
    if (y > scale.originY())
        return QStringLiteral("0");
    return pictureText(scale.flowAt(y), u"########.##");
}

} // namespace kalvo
