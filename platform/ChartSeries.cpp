// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/ChartSeries.h"

#include "platform/text.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

namespace kalvo {
namespace {

// Found by search: on its paper each colour has a contrast of 3 or more, and any two of them stand apart by 25 or more
// to full colour vision and to eyes without red, green or blue cones.
constexpr std::array<Rgb, kChartColors> kOnLight = {rgb(8, 64, 130),    rgb(225, 114, 3), rgb(3, 169, 102),
                                                    rgb(188, 122, 166), rgb(140, 60, 12), rgb(105, 111, 255),
                                                    rgb(4, 0, 0),       rgb(82, 53, 77)};
constexpr std::array<Rgb, kChartColors> kOnDark = {rgb(47, 106, 239),  rgb(241, 216, 57), rgb(6, 213, 108),
                                                   rgb(224, 129, 171), rgb(224, 69, 13),  rgb(181, 162, 255),
                                                   rgb(206, 255, 215), rgb(127, 102, 74)};
constexpr int kMarkers = 7; // no common divisor with the colours, so that the pairs repeat late
constexpr int kDashes = 4;

double squaredDistanceToSegment(double px, double py, double ax, double ay, double bx, double by)
{
    const double dx = bx - ax, dy = by - ay;
    const double length = dx * dx + dy * dy;
    const double t = length > 0.0 ? std::clamp(((px - ax) * dx + (py - ay) * dy) / length, 0.0, 1.0) : 0.0;
    const double x = ax + t * dx - px, y = ay + t * dy - py;
    return x * x + y * y;
}

int firstShown(const QVector<ChartSeries>& all)
{
    for (int s = 0; s < all.size(); ++s)
        for (int i = 0; !all[s].excluded && i < all[s].y.size(); ++i)
            if (hasPoint(all[s], i))
                return s;
    return -1;
}

} // namespace

ChartLook chartLook(int series, bool onDark)
{
    const auto& colors = onDark ? kOnDark : kOnLight;
    return {colors[static_cast<size_t>(series % kChartColors)],
            static_cast<ChartDash>((series / kChartColors) % kDashes), static_cast<ChartMarker>(series % kMarkers)};
}

double ChartScale::pixel(double value) const
{
    const double part = isLog ? std::log(value / range.lower) / std::log(range.upper / range.lower)
                              : (value - range.lower) / range.size();
    return pixelLower + part * (pixelUpper - pixelLower);
}

double ChartScale::value(double pixel) const
{
    const double part = (pixel - pixelLower) / (pixelUpper - pixelLower);
    return isLog ? range.lower * std::pow(range.upper / range.lower, part) : range.lower + part * range.size();
}

ChartRange ChartScale::zoomed(double pixel, double factor) const
{
    const double fixed = value(pixel);
    if (isLog)
        return {fixed * std::pow(range.lower / fixed, factor), fixed * std::pow(range.upper / fixed, factor)};
    return {fixed + (range.lower - fixed) * factor, fixed + (range.upper - fixed) * factor};
}

ChartRange ChartScale::moved(double pixels) const
{
    return {value(pixelLower - pixels), value(pixelUpper - pixels)};
}

bool hasPoint(const ChartSeries& series, int index)
{
    return std::isfinite(series.x[index]) && std::isfinite(series.y[index]);
}

ChartRange wholeTimeRange(const QVector<ChartSeries>& all, const ChartRain& rain)
{
    double lower = std::numeric_limits<double>::infinity(), upper = -lower;
    const auto take = [&](const QVector<double>& times) {
        for (const double time : times)
            if (std::isfinite(time)) {
                lower = std::min(lower, time);
                upper = std::max(upper, time);
            }
    };
    for (const ChartSeries& series : all)
        if (!series.excluded)
            take(series.x);
    take(rain.times);
    if (lower > upper)
        return {};
    return upper > lower ? ChartRange{lower, upper} : ChartRange{lower - 0.5, upper + 0.5};
}

ChartRange wholeValueRange(const QVector<ChartSeries>& all, bool isLog)
{
    constexpr double kRoomAbove = 0.06;
    double least = std::numeric_limits<double>::infinity(), most = -least;
    for (const ChartSeries& series : all)
        for (int i = 0; !series.excluded && i < series.y.size(); ++i)
            if (hasPoint(series, i) && (!isLog || series.y[i] > 0.0)) {
                least = std::min(least, series.y[i]);
                most = std::max(most, series.y[i]);
            }
    if (isLog)
        return least > most ? ChartRange{0.1, 1.0} : ChartRange{least * 0.9, std::max(most * 1.2, least * 2.0)};
    if (least > most)
        return {};
    const double lower = std::min(0.0, least), upper = std::max(0.0, most);
    const double size = upper - lower;
    return {lower < 0.0 ? lower - kRoomAbove * size : 0.0, size > 0.0 ? upper + kRoomAbove * size : 1.0};
}

ChartPoint nearestPoint(const QVector<ChartSeries>& all, const ChartScale& xAxis, const ChartScale& yAxis,
                        double xPixel, double yPixel, double radius)
{
    ChartPoint best;
    double bestSquare = radius * radius;
    const double one = xAxis.value(xPixel - radius), other = xAxis.value(xPixel + radius);
    const double from = std::min(one, other), to = std::max(one, other);
    for (int s = 0; s < all.size(); ++s) {
        const ChartSeries& series = all[s];
        if (series.excluded)
            continue;
        for (int i = 0; i < series.x.size(); ++i) {
            if (!(series.x[i] >= from && series.x[i] <= to)) // false for a NaN too
                continue;
            const double dx = xAxis.pixel(series.x[i]) - xPixel, dy = yAxis.pixel(series.y[i]) - yPixel;
            const double square = dx * dx + dy * dy;
            if (square <= bestSquare) {
                // Of equal ones the last drawn lies on top.
                bestSquare = square;
                best = {s, i};
            }
        }
    }
    return best;
}

int nearestSeries(const QVector<ChartSeries>& all, const ChartScale& xAxis, const ChartScale& yAxis, double xPixel,
                  double yPixel, double radius)
{
    int best = -1;
    double bestSquare = radius * radius;
    for (int s = 0; s < all.size(); ++s) {
        const ChartSeries& series = all[s];
        double lastX = 0.0, lastY = 0.0;
        bool hasLast = false;
        for (int i = 0; !series.excluded && i < series.x.size(); ++i) {
            const double x = xAxis.pixel(series.x[i]), y = yAxis.pixel(series.y[i]);
            const bool isPoint = std::isfinite(x) && std::isfinite(y);
            if (isPoint && x >= xPixel - radius && (hasLast ? lastX : x) <= xPixel + radius) {
                const double square =
                    squaredDistanceToSegment(xPixel, yPixel, hasLast ? lastX : x, hasLast ? lastY : y, x, y);
                if (square <= bestSquare) {
                    bestSquare = square;
                    best = s;
                }
            }
            hasLast = isPoint;
            lastX = x;
            lastY = y;
        }
    }
    return best;
}

ChartPoint alongSeries(const QVector<ChartSeries>& all, ChartPoint from, int steps)
{
    const int s = from.isNone() ? firstShown(all) : from.series;
    if (s < 0)
        return {};
    const ChartSeries& series = all[s];
    const int way = steps < 0 ? -1 : 1;
    int at = from.isNone() ? -1 : from.index;
    int left = from.isNone() ? 1 : std::abs(steps);
    int last = from.isNone() ? -1 : from.index;
    while (left > 0) {
        at += from.isNone() ? 1 : way;
        if (at < 0 || at >= series.x.size())
            break;
        if (hasPoint(series, at)) {
            last = at;
            --left;
        }
    }
    return last < 0 ? ChartPoint{} : ChartPoint{s, last};
}

ChartPoint acrossSeries(const QVector<ChartSeries>& all, ChartPoint from, int step)
{
    if (from.isNone())
        return alongSeries(all, from, 0);
    const int count = static_cast<int>(all.size());
    const double time = all[from.series].x[from.index];
    for (int k = 1; k <= count; ++k) {
        const int s = ((from.series + k * step) % count + count) % count;
        const ChartSeries& series = all[s];
        int best = -1;
        for (int i = 0; !series.excluded && i < series.x.size(); ++i)
            if (hasPoint(series, i) && (best < 0 || std::abs(series.x[i] - time) < std::abs(series.x[best] - time)))
                best = i;
        if (best >= 0)
            return {s, best};
    }
    return {};
}

double hourTickStep(double rangeHours, int wantedTicks)
{
    constexpr std::array<double, 19> kSteps = {1.0 / 60, 2.0 / 60, 5.0 / 60, 10.0 / 60, 15.0 / 60, 0.5, 1,   2,   3,  4,
                                               6,        12,       24,       48,        72,        120, 240, 480, 720};
    const double wanted = rangeHours / std::max(1, wantedTicks);
    if (wanted < kSteps.front() || wanted > kSteps.back()) {
        const double power = std::pow(10.0, std::floor(std::log10(wanted)));
        const double lead = wanted / power;
        return power * (lead <= 1.0 ? 1.0 : lead <= 2.0 ? 2.0 : lead <= 5.0 ? 5.0 : 10.0);
    }
    return *std::lower_bound(kSteps.begin(), kSteps.end(), wanted);
}

QString tickLabel(double value, double step)
{
    return generalText(std::abs(value) < 1e-9 * step ? 0.0 : roundHalfEven(value, 12));
}

QString hourTickLabel(double hours, double step)
{
    constexpr double kMinute = 1.0 / 60.0;
    if (step < 0.99 * kMinute || step >= 1.0)
        return tickLabel(hours, step);
    const qint64 minutes = std::llround(std::abs(hours) * 60.0);
    return QStringLiteral("%1%2:%3")
        .arg(hours < 0.0 && minutes > 0 ? QStringLiteral("-") : QString(), QString::number(minutes / 60))
        .arg(minutes % 60, 2, 10, QChar(u'0'));
}

} // namespace kalvo
