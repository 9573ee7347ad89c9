// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "graphics/GraphScale.h"
#include "platform/FlexGrid.h"

#include <QByteArray>
#include <QImage>
#include <QPointF>
#include <QSizeF>
#include <QString>

#include <optional>

namespace kalvo {

/// The Grapher's picture: white paper on an image of its own. What is drawn is given in twips, 15 to a pixel: x from
/// the flow axis to the right, y from the top down. Around that lies a border for the labels of the axes, so that the
/// image is somewhat larger than `width` and `height`. The image may have more device pixels than that, so that lines
/// and letters stay smooth on a fine screen and under a zoom.
class GraphPicture
{
public:
    /// What a flow is, for the title of its axis; empty when nobody knows.
    void setFlowUnit(const QString& unit) { m_flowUnit = unit; }
    /// Empty paper. @param pixels of the whole image at 96 dots per inch. @param scale device pixels to one of those.
    void reset(const QSizeF& pixels, double scale);

    double width() const;  ///< twips, border not counted
    double height() const; ///< twips, border not counted
    QPointF twipsAt(const QPointF& pixel) const;
    QPointF pixelAt(const QPointF& twips) const;
    const QImage& image() const { return m_image; }
    /// The picture as a file of a format ("PNG", "BMP"), 24 bits a pixel.
    QByteArray encoded(const char* format) const;

    /// Axes as they are placed: scales in twips, ranges in minutes and flow, `shift` in twips.
    struct Axes
    {
        QPointF origin;
        double xScale = 0.0, yScale = 0.0;
        double timeRange = 0.0, flowRange = 0.0;
        double shift = 0.0;
        bool operator==(const Axes&) const = default;
    };
    /// Two lines from the origin, ticks and labels. The same axes once more are left out, as long as nothing has been
    /// painted over them.
    void drawAxes(const Axes& axes);
    /// Column `col` of the hydrograph table. @param penTwips width of the line; never drawn thinner than a pixel.
    void drawCurve(const FlexGrid& hydrographTable, int col, const GraphScale& scale, Rgb color, double penTwips);
    /// A filled box around a point: the eraser.
    void fillBox(const QPointF& middle, Rgb color);
    /// One line of text, its top left corner at a point.
    void writeText(const QPointF& at, const QString& text, Rgb color);

    static constexpr double kEraserTwips = 180.0; ///< height and width of the eraser

private:
    void drawFlowLabels(QPainter& painter, const Axes& axes) const;
    void drawTimeMarks(QPainter& painter, const Axes& axes) const;
    void drawTitles(QPainter& painter, const Axes& axes) const;

    QSizeF m_pixels;
    QImage m_image;
    QString m_flowUnit;
    std::optional<Axes> m_axes; ///< those that stand on the paper untouched
};

} // namespace kalvo
