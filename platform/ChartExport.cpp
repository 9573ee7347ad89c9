// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/ChartExport.h"

#include <QBuffer>
#include <QFileInfo>
#include <QPdfWriter>
#include <QSvgGenerator>

#include "platform/CustomPlot.h"

#include <array>
#include <utility>

namespace kalvo {
namespace {

QString drawVectors(QCustomPlot& plot, QPaintDevice& device, QSize size)
{
    QCPPainter painter;
    if (!painter.begin(&device))
        return QStringLiteral("The picture could not be drawn.");
    painter.setMode(QCPPainter::pmVectorized);
    painter.setMode(QCPPainter::pmNoCaching);
    plot.toPainter(&painter, size.width(), size.height());
    return painter.end() ? QString() : QStringLiteral("The picture could not be finished.");
}

QString drawSvg(QCustomPlot& plot, QIODevice& target, QSize size)
{
    QSvgGenerator svg;
    svg.setOutputDevice(&target);
    svg.setSize(size);
    svg.setViewBox(QRect(QPoint(0, 0), size));
    return drawVectors(plot, svg, size);
}

QString drawPdf(QCustomPlot& plot, QIODevice& target, QSize size)
{
    constexpr double kPointsPerPixel = 72.0 / 96.0;
    QPdfWriter pdf(&target);
    pdf.setResolution(96);
    pdf.setPageMargins(QMarginsF());
    pdf.setPageSize(QPageSize(QSizeF(size) * kPointsPerPixel, QPageSize::Point));
    return drawVectors(plot, pdf, size);
}

QString drawPixels(QCustomPlot& plot, QIODevice& target, QSize size, double scale, const char* format)
{
    QImage image(size * scale, QImage::Format_RGB32);
    if (image.isNull())
        return QStringLiteral("There is no memory for a picture of %1 x %2 pixels.")
            .arg(size.width() * scale)
            .arg(size.height() * scale);
    image.setDevicePixelRatio(scale);
    image.fill(Qt::white);
    const QString why = drawVectors(plot, image, size);
    if (!why.isEmpty())
        return why;
    return image.save(&target, format)
               ? QString()
               : QStringLiteral("The picture could not be made a %1.").arg(QLatin1String(format));
}

} // namespace

std::optional<PictureKind> pictureKindOf(const QString& path)
{
    static constexpr std::array<std::pair<const char*, PictureKind>, 4> kEndings = {
        {{"png", PictureKind::Png}, {"svg", PictureKind::Svg}, {"pdf", PictureKind::Pdf}, {"bmp", PictureKind::Bmp}}};
    const QString ending = QFileInfo(path).suffix().toLower();
    for (const auto& [name, kind] : kEndings)
        if (ending == QLatin1String(name))
            return kind;
    return std::nullopt;
}

QByteArray plotPicture(QCustomPlot& plot, QSize size, PictureKind kind, double scale, QString& why)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    switch (kind) {
    case PictureKind::Svg:
        why = drawSvg(plot, buffer, size);
        break;
    case PictureKind::Pdf:
        why = drawPdf(plot, buffer, size);
        break;
    case PictureKind::Png:
        why = drawPixels(plot, buffer, size, scale, "PNG");
        break;
    case PictureKind::Bmp:
        why = drawPixels(plot, buffer, size, scale, "BMP");
        break;
    }
    buffer.close();
    return why.isEmpty() ? bytes : QByteArray();
}

} // namespace kalvo
