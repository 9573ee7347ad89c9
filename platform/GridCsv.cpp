// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/GridCsv.h"

#include "platform/OutputSink.h"

namespace kalvo {

namespace {

constexpr qsizetype kPiece = 1 << 18; ///< bytes that are written at once

QString headingOf(const FlexGrid& grid, int col, const UnitOfColumn& unit)
{
    const QString heading = grid.textMatrix(0, col);
    const QString measure = unit ? unit(col) : QString();
    if (measure.isEmpty() || heading.isEmpty())
        return heading;
    return heading + QStringLiteral(" (") + measure + QLatin1Char(')');
}

} // namespace

QByteArray csvField(const QString& text)
{
    QByteArray field = text.toUtf8();
    if (!field.contains(',') && !field.contains('"') && !field.contains('\r') && !field.contains('\n'))
        return field;
    return '"' + field.replace('"', "\"\"") + '"';
}

QString writeGridCsv(const FlexGrid& grid, const QString& path, const UnitOfColumn& unit)
{
    OutputSink file(path);
    if (const QString why = file.open(); !why.isEmpty())
        return why;
    QByteArray piece;
    piece.reserve(2 * kPiece);
    for (int row = 0; row < grid.rows(); ++row) {
        for (int col = 0; col < grid.cols(); ++col) {
            if (col > 0)
                piece += ',';
            piece += csvField(row == 0 ? headingOf(grid, col, unit) : grid.textMatrix(row, col));
            if (piece.size() >= kPiece) {
                file.write(piece);
                piece.resize(0); // keeps its room
            }
        }
        piece += "\r\n";
    }
    file.write(piece);
    return file.close();
}

} // namespace kalvo
