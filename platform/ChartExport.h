// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QSize>
#include <QString>

#include <optional>

class QCustomPlot;

namespace kalvo {

enum class PictureKind
{
    Png,
    Svg,
    Pdf,
    Bmp
};

/// The kind that a file name's ending tells, in any case; none for another ending.
std::optional<PictureKind> pictureKindOf(const QString& path);

/// A plot as the bytes of a picture file, drawn anew at `size`, in the device independent pixels of a screen.
/// @param scale pixels of a PNG or BMP to one of those; SVG and PDF have lines instead of pixels.
/// @param why says why nothing came of it; the bytes are empty then.
QByteArray plotPicture(QCustomPlot& plot, QSize size, PictureKind kind, double scale, QString& why);

} // namespace kalvo
