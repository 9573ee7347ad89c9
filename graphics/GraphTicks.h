// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <vector>

namespace kalvo {

/// A tick of the flow axis.
struct FlowTick
{
    double step = 0.0;   ///< of the rung that drew it
    double flow = 0.0;   ///< tick number x step
    double length = 0.0; ///< twips
    QString label;
};

/// Ticks in the order of drawing: each rung of the ladder whose limit is above the range, coarsest first. A finer rung
/// draws over the labels of a coarser one. None for a range below 1, nor for 3,000,000 and more.
/// @param axisLength twips. @param yScale twips a unit of flow; anything not above 0 gives no tick.
std::vector<FlowTick> flowTicks(double axisLength, double yScale);

/// Marks of the time axis.
struct TimeTicks
{
    std::vector<qint64> hourMarks; ///< hours without a label
    std::vector<qint64> labelled;  ///< hours with one
};

/// Marks that come into view. Hours are counted as integers, so that hour 6 never reads 5.
/// @param axisLength twips. @param xScale twips a minute; anything not above 0 gives no mark.
/// @param shift twips of the axis that lie to the left of the picture.
TimeTicks timeTicks(double axisLength, double xScale, double shift);

} // namespace kalvo
