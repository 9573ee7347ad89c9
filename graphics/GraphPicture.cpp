// SPDX-License-Identifier: GPL-3.0-or-later
#include "graphics/GraphPicture.h"

#include "graphics/CurvePath.h"
#include "graphics/GraphTicks.h"
#include "platform/text.h"

#include <QBuffer>
#include <QFont>
#include <QFontMetricsF>
#include <QPainter>

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

namespace kalvo {

namespace {

// The border around what the scales reach, in pixels. The left one holds seven digits and the axis title.
constexpr double kLeft = 70.0;
constexpr double kTop = 10.0;
constexpr double kBottom = 20.0;

constexpr double kTwips = kTwipsPerPixel;
constexpr double kLabelPixels = 11.0;
constexpr double kTextPixels = 12.0;
constexpr double kPatchWidth = 100.0; ///< twips
constexpr double kPatchHeight = 150.0;
constexpr double kLabelGap = 40.0; ///< twips between an axis and its labels
constexpr double kHourMark = 50.0;
constexpr double kLabelledMark = 100.0;
constexpr double kLabelledMarkWidth = 50.0;
constexpr double kStartMark = 30.0;
constexpr double kWildLength = 12.0; ///< widths of the picture; a flood wave has two or three
constexpr double kFourDigits = 4.0;

QFont fontOf(double pixels)
{
    QFont font;
    font.setPixelSize(static_cast<int>(pixels));
    return font;
}

/// A line that goes up and down many times within a pixel: for each column of device pixels one upright bar from its
/// lowest to its highest point.
void drawBars(QPainter& painter, const QList<QPointF>& line, double scale, double pen)
{
    const auto columnOf = [scale](const QPointF& point) { return static_cast<int>(std::floor(point.x() * scale)); };
    const int first = columnOf(line.first());
    const int last = columnOf(line.last());
    if (last < first)
        return;
    struct Bar
    {
        double top = std::numeric_limits<double>::max(), bottom = -std::numeric_limits<double>::max();
    };
    std::vector<Bar> bars(static_cast<size_t>(last - first) + 1);
    for (qsizetype i = 1; i < line.size(); ++i) {
        const QPointF from = line[i - 1], way = line[i] - from;
        for (int column = columnOf(from); column <= std::min(columnOf(line[i]), last); ++column) {
            const auto yAt = [&](double x) {
                return from.y() + way.y() * (way.x() > 0.0 ? std::clamp((x - from.x()) / way.x(), 0.0, 1.0) : 1.0);
            };
            const double y1 = way.x() > 0.0 ? yAt(column / scale) : from.y(), y2 = yAt((column + 1) / scale);
            Bar& bar = bars[static_cast<size_t>(std::max(column - first, 0))];
            bar.top = std::min({bar.top, y1, y2});
            bar.bottom = std::max({bar.bottom, y1, y2});
        }
    }
    const QColor color = painter.pen().color();
    for (size_t i = 0; i < bars.size(); ++i)
        if (bars[i].top <= bars[i].bottom)
            painter.fillRect(QRectF((first + static_cast<int>(i)) / scale, bars[i].top - pen / 2.0, 1.0 / scale,
                                    bars[i].bottom - bars[i].top + pen),
                             color);
}

/// A range as a title shows it: four digits are more than can be read off an axis.
QString roundedText(double value)
{
    if (value == 0.0)
        return QStringLiteral("0");
    const double digits = kFourDigits - 1.0 - std::floor(std::log10(std::abs(value)));
    return generalText(digits > 0.0 ? roundHalfEven(value, static_cast<int>(digits)) : std::round(value));
}

} // namespace

void GraphPicture::reset(const QSizeF& pixels, double scale)
{
    m_pixels = pixels;
    m_axes.reset();
    const QSize device(std::max(1, static_cast<int>(std::lround(pixels.width() * scale))),
                       std::max(1, static_cast<int>(std::lround(pixels.height() * scale))));
    if (m_image.size() != device)
        m_image = QImage(device, QImage::Format_RGB32);
    m_image.setDevicePixelRatio(scale);
    m_image.fill(Qt::white);
}

double GraphPicture::width() const
{
    return std::max(0.0, (m_pixels.width() - kLeft) * kTwips);
}

double GraphPicture::height() const
{
    return std::max(0.0, (m_pixels.height() - kTop - kBottom) * kTwips);
}

QPointF GraphPicture::twipsAt(const QPointF& pixel) const
{
    return {(pixel.x() - kLeft) * kTwips, (pixel.y() - kTop) * kTwips};
}

QPointF GraphPicture::pixelAt(const QPointF& twips) const
{
    return {twips.x() / kTwips + kLeft, twips.y() / kTwips + kTop};
}

QByteArray GraphPicture::encoded(const char* format) const
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    QImage plain = m_image.convertToFormat(QImage::Format_RGB888);
    plain.setDevicePixelRatio(1.0);
    if (!plain.save(&buffer, format))
        bytes.clear();
    return bytes;
}

void GraphPicture::drawAxes(const Axes& axes)
{
    if (m_axes == axes)
        return;
    m_axes = axes;
    QPainter painter(&m_image);
    painter.setFont(fontOf(kLabelPixels));
    painter.setPen(QPen(Qt::black, 1.0));
    const QPointF origin = pixelAt(axes.origin);
    const double right = pixelAt(axes.origin + QPointF(axes.timeRange * axes.xScale, 0.0)).x();
    const double top = pixelAt(axes.origin - QPointF(0.0, axes.flowRange * axes.yScale)).y();
    painter.drawLine(origin, QPointF(origin.x(), top));
    painter.drawLine(origin, QPointF(right, origin.y()));
    drawFlowLabels(painter, axes);
    drawTimeMarks(painter, axes);
    drawTitles(painter, axes);
}

void GraphPicture::drawFlowLabels(QPainter& painter, const Axes& axes) const
{
    const QFontMetricsF metrics(painter.font());
    for (const FlowTick& tick : flowTicks(axes.flowRange * axes.yScale, axes.yScale)) {
        const QPointF at = axes.origin - QPointF(0.0, tick.flow * axes.yScale);
        painter.drawLine(pixelAt(at), pixelAt(at + QPointF(tick.length, 0.0)));
        // The patch is as wide as the label where that is wider, or parts of a coarser label would stay.
        const double wide = std::max(kPatchWidth, metrics.horizontalAdvance(tick.label) * kTwips);
        const QRectF patch(pixelAt(at - QPointF(kLabelGap + wide, kPatchHeight / 2.0)),
                           QSizeF(wide, kPatchHeight) / kTwips);
        painter.fillRect(patch, Qt::white);
        painter.drawText(patch, Qt::AlignRight | Qt::AlignVCenter | Qt::TextDontClip, tick.label);
    }
}

void GraphPicture::drawTimeMarks(QPainter& painter, const Axes& axes) const
{
    const QFontMetricsF metrics(painter.font());
    const TimeTicks ticks = timeTicks(axes.timeRange * axes.xScale, axes.xScale, axes.shift);
    const auto placeOf = [&axes](qint64 hour) {
        return axes.origin + QPointF(static_cast<double>(hour) * 60.0 * axes.xScale - axes.shift, 0.0);
    };
    for (const qint64 hour : ticks.hourMarks)
        painter.drawLine(pixelAt(placeOf(hour)), pixelAt(placeOf(hour) - QPointF(0.0, kHourMark)));
    double free = pixelAt(axes.origin).x() - kLeft;
    for (const qint64 hour : ticks.labelled) {
        const QPointF at = placeOf(hour);
        painter.fillRect(QRectF(pixelAt(at - QPointF(kLabelledMarkWidth / 2.0, kLabelledMark)),
                                QSizeF(kLabelledMarkWidth, kLabelledMark) / kTwips),
                         Qt::black);
        const QString label = QString::number(hour);
        const double wide = metrics.horizontalAdvance(label);
        const QPointF middle = pixelAt(at + QPointF(0.0, kLabelGap));
        if (middle.x() - wide / 2.0 < free)
            continue; // one over the other, none could be read
        painter.drawText(QPointF(middle.x() - wide / 2.0, middle.y() + metrics.ascent()), label);
        free = middle.x() + wide / 2.0 + 3.0;
    }
}

/// What the axes show, and where they end: a range that no tick fits is told here alone.
void GraphPicture::drawTitles(QPainter& painter, const Axes& axes) const
{
    const double hours = axes.timeRange / 60.0;
    const double from = axes.xScale > 0.0 ? axes.shift / (60.0 * axes.xScale) : 0.0;
    const QString time = QStringLiteral("Time in hours, %1 to %2").arg(roundedText(from), roundedText(from + hours));
    const QString unit = m_flowUnit.isEmpty() ? QString() : QStringLiteral(" in ") + m_flowUnit;
    const QString flow = QStringLiteral("Flow%1, 0 to %2").arg(unit, roundedText(axes.flowRange));
    painter.save();
    const QRectF foot(kLeft, m_pixels.height() - kBottom, m_pixels.width() - kLeft, kBottom - 3.0);
    painter.fillRect(foot, Qt::white);
    painter.drawText(foot, Qt::AlignCenter, time);
    painter.rotate(-90.0);
    const QRectF side(-pixelAt(axes.origin).y(), 2.0, pixelAt(axes.origin).y(), kLabelPixels + 4.0);
    painter.fillRect(side, Qt::white);
    painter.drawText(side, Qt::AlignCenter, flow);
    painter.restore();
}

void GraphPicture::drawCurve(const FlexGrid& hydrographTable, int col, const GraphScale& scale, Rgb color,
                             double penTwips)
{
    const double pen = std::max(1.0, penTwips / kTwips);
    const QRectF paper(pixelAt({0.0, 0.0}) - QPointF(0.0, kTop), QSizeF(width() / kTwips, kTop + height() / kTwips));
    CurveMap map;
    map.origin = pixelAt({-scale.shift, scale.originY()});
    map.perMinute = scale.xScale / kTwips;
    map.perFlow = scale.yScale / kTwips;
    map.window = paper.adjusted(-pen, -pen, pen, pen);
    map.pixel = 1.0 / m_image.devicePixelRatio();
    const CurvePath path = curvePath(hydrographTable, col, map);

    QPainter painter(&m_image);
    painter.setClipRect(paper);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
    painter.setPen(QPen(QColor(static_cast<QRgb>(color)), pen, Qt::SolidLine, Qt::FlatCap, Qt::BevelJoin));
    if (path.start && map.window.contains(*path.start))
        painter.drawLine(*path.start, *path.start + QPointF(kStartMark / kTwips, 0.0));
    // The outline of a line that crosses itself thousands of times costs seconds to fill.
    const bool isWild = path.length > kWildLength * m_pixels.width();
    painter.setRenderHint(QPainter::Antialiasing, !isWild);
    for (const QList<QPointF>& line : path.lines)
        if (isWild)
            drawBars(painter, line, m_image.devicePixelRatio(), pen);
        else
            painter.drawPolyline(line.constData(), static_cast<int>(line.size()));
}

void GraphPicture::fillBox(const QPointF& middle, Rgb color)
{
    const QPointF half(kEraserTwips / 2.0, kEraserTwips / 2.0);
    QPainter(&m_image).fillRect(QRectF(pixelAt(middle - half), pixelAt(middle + half)),
                                QColor(static_cast<QRgb>(color)));
    m_axes.reset();
}

void GraphPicture::writeText(const QPointF& at, const QString& text, Rgb color)
{
    QPainter painter(&m_image);
    painter.setFont(fontOf(kTextPixels));
    painter.setPen(QColor(static_cast<QRgb>(color)));
    painter.drawText(pixelAt(at) + QPointF(0.0, QFontMetricsF(painter.font()).ascent()), text);
}

} // namespace kalvo
