// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/FlexGrid.h"

#include <QList>
#include <QPointF>
#include <QRectF>

#include <optional>

namespace kalvo {

/// How minutes and flows become points of an image.
struct CurveMap
{
    QPointF origin; ///< of time 0 and flow 0
    double perMinute = 0.0;
    double perFlow = 0.0; ///< upwards
    QRectF window;        ///< what lies outside is cut off
    /// A pixel of the screen, 0 for an exact path. Points in one column of them are drawn as one upright line
    /// from the lowest to the highest, and points that stand less than a tenth of one off the line are left out: what
    /// the eye sees is the same, and a curve of any length costs no more than the image is wide.
    double pixel = 0.0;
};

/// A curve cut to the window: lines to be drawn one after the other.
struct CurvePath
{
    QList<QList<QPointF>> lines;
    double length = 0.0;          ///< of all lines
    std::optional<QPointF> start; ///< where the first ordinate stands, also outside the window
};

/// One pass over the table: column 1 holds the minutes, `col` the flows, from row 1 until the first blank cell. A cell
/// that holds something else than a number is left out, and the line is broken there.
CurvePath curvePath(const FlexGrid& hydrographTable, int col, const CurveMap& map);

} // namespace kalvo
