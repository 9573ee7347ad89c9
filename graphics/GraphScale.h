// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/FlexGrid.h"

#include <QString>

namespace kalvo {

/// Taken off the width and the height of the picture, in twips, so that the last tick and the labels below the time
/// axis have room.
inline constexpr double kGraphMargin = 250.0;

/// A scroll bar as the scale sees it.
struct ScrollState
{
    int min = 0;
    int max = 0;
    int value = 0;
};

/// The largest values of a run.
struct GraphExtent
{
    double maxFlow = 0.0; ///< of all peaks, not below 0; cfs, or m3/s for a metric deck
    double maxTime = 0.0; ///< minutes
};

/// A cell as a number; NaN for one that holds none.
double cellNumber(const FlexGrid& grid, int row, int col);

/// @param peakRow row 1 holds the peaks, from column 1.
/// @param hydrographTable column 1 holds the minutes, from row 1. Cells without a number count for nothing.
GraphExtent graphExtent(const FlexGrid& peakRow, const FlexGrid& hydrographTable);

/// How flow and time become twips on the picture. x counts from the flow axis to the right, y from the top down.
struct GraphScale
{
    double flowRange = 0.0; ///< shown along the whole flow axis
    double timeRange = 0.0; ///< minutes, shown along the whole time axis
    double axisWidth = 0.0; ///< twips
    double axisHeight = 0.0;
    double shift = 0.0;  ///< twips of the time axis that lie to the left of the picture
    double xScale = 0.0; ///< twips a minute; 0 for a null range
    double yScale = 0.0; ///< twips a unit of flow; 0 for a null range

    /// True when nothing can be drawn: a range of zero.
    bool isNull() const { return !(xScale > 0.0 && yScale > 0.0); }
    /// Where the time axis runs.
    double originY() const { return axisHeight; }
    /// Hours of a place on the picture; 0 for a null range.
    double hoursAt(double x) const;
    /// Flow of a place on the picture; never negative, 0 for a null range.
    double flowAt(double y) const;
};

/// @param vertical shrinks the flow range from 1.1 x the largest peak at its lower end to nothing at its upper one.
/// @param horizontal shrinks the time range from the whole time at its upper end to nothing at 0.
/// @param width,height of the picture in twips.
/// @param shiftPercent of the width.
GraphScale graphScale(const GraphExtent& extent, ScrollState vertical, ScrollState horizontal, double width,
                      double height, int shiftPercent);

/// What stands beside the vertical scroll bar: 1.0 to 201.0, by the upper end of the bar alone.
QString verticalExpansionText(ScrollState bar);
/// The same for the horizontal one.
QString horizontalExpansionText(ScrollState bar);

/// Highest value of the shift, in percent of the width, at which the end of the time still comes into view.
int largestShift(ScrollState horizontal, double width);

/// Time and flow under the pointer, as the text boxes show them.
QString pointerHoursText(const GraphScale& scale, double x);
QString pointerFlowText(const GraphScale& scale, double y);

} // namespace kalvo
