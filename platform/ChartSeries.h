// SPDX-License-Identifier: GPL-3.0-or-later
// What a chart shows and the arithmetic on it, without a widget: looks that can be told apart, ranges, ticks, the point
// under the pointer, the way of the keyboard cursor.
#pragma once

#include "platform/FlexGrid.h"

#include <QString>
#include <QVector>

namespace kalvo {

/// One curve. `x` and `y` are equally long; a NaN in either is a gap. Curves of one chart may have different lengths.
struct ChartSeries
{
    QString label = {};
    QVector<double> x = {}; ///< rising; hours on a time axis
    QVector<double> y = {};
    bool excluded = false; ///< not drawn, not hit, not measured, but still there
};

/// Rain above the flow, on its time axis. `depths[i]` fell in the time that ends at `times[i]`.
struct ChartRain
{
    QString label = {};
    QVector<double> times = {}; ///< as the x of the series
    QVector<double> depths = {};
    QString unit = {}; ///< "in" or "mm"
};

enum class ChartDash
{
    Solid,
    Dash,
    Dot,
    DashDot
};
enum class ChartMarker
{
    Circle,
    Square,
    Triangle,
    Diamond,
    Cross,
    Plus,
    TriangleDown
};

/// How a curve is drawn. Of the first 200 no two are alike, and of those that share a colour the next ones differ in
/// dash and marker.
struct ChartLook
{
    Rgb color = Rgb::None;
    ChartDash dash = ChartDash::Solid;
    ChartMarker marker = ChartMarker::Circle;

    bool operator==(const ChartLook&) const = default;
};
inline constexpr int kChartColors = 8;
inline constexpr Rgb kLightPaper = rgb(255, 255, 255);
inline constexpr Rgb kDarkPaper = rgb(30, 31, 34);
/// @param series index from 0
ChartLook chartLook(int series, bool onDark);

/// A data point: index of the series and of the point within it, from 0; -1 for none.
struct ChartPoint
{
    int series = -1;
    int index = -1;

    bool isNone() const { return series < 0; }
    bool operator==(const ChartPoint&) const = default;
};

struct ChartRange
{
    double lower = 0.0;
    double upper = 1.0;

    double size() const { return upper - lower; }
    bool operator==(const ChartRange&) const = default;
};

/// One axis as it lies on the screen.
struct ChartScale
{
    ChartRange range;
    double pixelLower = 0.0; ///< where `range.lower` stands
    double pixelUpper = 1.0;
    bool isLog = false;

    double pixel(double value) const;
    double value(double pixel) const;
    /// The range that keeps what stands at `pixel` in place and shows `factor` times as much.
    ChartRange zoomed(double pixel, double factor) const;
    /// The range after the picture was drawn along by `pixels`.
    ChartRange moved(double pixels) const;
};

/// True where a curve has a point to draw.
bool hasPoint(const ChartSeries& series, int index);
/// All times of curves that are not excluded and of the rain; 0 to 1 when there are none, never empty.
ChartRange wholeTimeRange(const QVector<ChartSeries>& all, const ChartRain& rain = {});
/// All values, from 0 (a flood starts from nothing: an axis that starts elsewhere makes a small rise look like one) or
/// the least negative one, with room above. On a log axis from the least value above 0.
ChartRange wholeValueRange(const QVector<ChartSeries>& all, bool isLog);

/// The data point next to a place on the screen, none when no point lies within `radius` pixels.
ChartPoint nearestPoint(const QVector<ChartSeries>& all, const ChartScale& xAxis, const ChartScale& yAxis,
                        double xPixel, double yPixel, double radius);
/// The curve whose line (not only its points) passes within `radius` pixels; -1 for none.
int nearestSeries(const QVector<ChartSeries>& all, const ChartScale& xAxis, const ChartScale& yAxis, double xPixel,
                  double yPixel, double radius);

/// The keyboard cursor `steps` points further along its curve; gaps are jumped, the ends hold it. From no point it
/// starts at the first point of the first curve shown.
ChartPoint alongSeries(const QVector<ChartSeries>& all, ChartPoint from, int steps);
/// The same time, or the next one to it, on the next (`step` 1) or last (-1) curve that is not excluded; round and
/// round.
ChartPoint acrossSeries(const QVector<ChartSeries>& all, ChartPoint from, int step);

/// Distance of ticks that reads well for times in hours: 1, 2, 3, 6, 12 hours, whole days, or round minutes.
double hourTickStep(double rangeHours, int wantedTicks);
/// Text of a tick as a plain number. A tick at 0 comes as the rest of a subtraction, which `step` tells from a value.
QString tickLabel(double value, double step);
/// Text of a tick at `hours`: a plain number, or "1:40" where ticks stand whole minutes apart and a part of an hour
/// would have digits without end.
QString hourTickLabel(double hours, double step);

} // namespace kalvo
