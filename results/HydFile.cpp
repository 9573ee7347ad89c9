// SPDX-License-Identifier: GPL-3.0-or-later
#include "results/HydFile.h"

#include "platform/OutputSink.h"

namespace kalvo {

namespace {

constexpr qsizetype kPiece = 1 << 18; ///< bytes that are written at once

} // namespace

void addPrintZone(QByteArray& line, const QString& item)
{
    line += item.toLatin1();
    line.append(kPrintZone - item.size() % kPrintZone, ' ');
}

std::optional<MessageBox> whyNotSavable(const FlexGrid& table)
{
    if (table.row() == table.rowSel() && table.col() == table.colSel())
        return MessageBox{QStringLiteral("Need a Selection!"), QString::fromLatin1(kApplicationTitle), Icon::Warning};
    if (table.colSel() < table.col() || table.rowSel() < table.row())
        return MessageBox{QStringLiteral("Select from top left to bottom right please!")};
    return std::nullopt;
}

QString writeHydFile(const FlexGrid& table, const QString& path)
{
    OutputSink file(path);
    if (const QString why = file.open(); !why.isEmpty())
        return why;
    const FlexGrid::Area block = table.selection();
    QByteArray piece;
    piece.reserve(2 * kPiece);
    const auto addCells = [&](int row) {
        for (int col = block.left; col <= block.right; ++col) {
            addPrintZone(piece, table.textMatrix(row, col));
            if (piece.size() >= kPiece) {
                file.write(piece);
                piece.resize(0);
            }
        }
        piece += '\r';
    };
    addPrintZone(piece, QStringLiteral("Time Hrs"));
    addCells(0);
    for (int row = block.top; row <= block.bottom; ++row) {
        addPrintZone(piece, table.textMatrix(row, 0));
        addCells(row);
    }
    file.write(piece);
    return file.close();
}

} // namespace kalvo
