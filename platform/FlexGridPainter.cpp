// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/FlexGridPainter.h"

#include "platform/FlexGridModel.h"

#include <QFontMetrics>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace kalvo {

QColor blend(const QColor& a, const QColor& b, double shareOfB)
{
    const auto mix = [shareOfB](int x, int y) { return static_cast<int>(std::lround(x + (y - x) * shareOfB)); };
    return {mix(a.red(), b.red()), mix(a.green(), b.green()), mix(a.blue(), b.blue())};
}

namespace {

constexpr int kSideMargin = 4; ///< pixels between a cell's edge and its text
constexpr int kTopMargin = 2;

QColor colorOf(Rgb color, const QColor& otherwise)
{
    return color == Rgb::None ? otherwise : QColor(static_cast<QRgb>(color));
}

// Relative luminance and contrast ratio, W3C Web Content Accessibility Guidelines 2.1.
double luminance(const QColor& color)
{
    const auto linear = [](double part) {
        return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

double contrast(const QColor& a, const QColor& b)
{
    const double la = luminance(a), lb = luminance(b);
    return (std::max(la, lb) + 0.05) / (std::min(la, lb) + 0.05);
}

// Marks such as deep blue or black were chosen for paper; on a dark palette they are lifted until they can be read.
QColor readable(QColor fore, const QColor& back)
{
    const QColor towards = luminance(back) > 0.18 ? Qt::black : Qt::white;
    for (int step = 0; step < 8 && contrast(fore, back) < 3.0; ++step)
        fore = blend(fore, towards, 0.3);
    return fore;
}

bool within(const FlexGrid::Area& area, int row, int col)
{
    return row >= area.top && row <= area.bottom && col >= area.left && col <= area.right;
}

} // namespace

void FlexGridPainter::setBaseFont(const QFont& font)
{
    m_base = font;
    m_fonts.clear();
}

const QFont& FlexGridPainter::fontOf(const CellFormat& look, const QFont& base) const
{
    if (look.fontName.isEmpty() && look.fontSize <= 0 && !look.bold && !look.italic && !look.underline &&
        !look.strikeThrough)
        return base;
    CellFormat key = look;
    key.foreColor = key.backColor = Rgb::None;
    for (const auto& [known, font] : m_fonts)
        if (known == key)
            return font;
    QFont font = base;
    if (!look.fontName.isEmpty())
        font.setFamily(look.fontName);
    if (look.fontSize > 0)
        font.setPointSizeF(look.fontSize);
    font.setBold(base.bold() || look.bold);
    font.setItalic(base.italic() || look.italic);
    font.setUnderline(look.underline);
    font.setStrikeOut(look.strikeThrough);
    if (m_fonts.size() > 64) // a grid with so many fonts costs more, never more memory
        m_fonts.clear();
    m_fonts.reserve(66); // references that were handed out stay good
    m_fonts.emplace_back(key, font);
    return m_fonts.back().second;
}

FlexGridPainter::Ink FlexGridPainter::inkOf(const CellFormat& look, int row, int col, Place place,
                                            const QPalette& palette) const
{
    const GridColors& own = m_grid.colors();
    const FlexGrid::Area area = m_grid.selection();
    if (place != Place::Item) {
        Ink ink{colorOf(own.foreColorFixed, palette.color(QPalette::WindowText)),
                colorOf(own.backColorFixed, palette.color(QPalette::Button))};
        const bool column = place == Place::Header && row < m_grid.fixedRows();
        const bool marked = place == Place::Header &&
                            (column ? col >= area.left && col <= area.right : row >= area.top && row <= area.bottom);
        if (marked)
            ink.back = blend(ink.back, palette.color(QPalette::Highlight), 0.25);
        if (look.backColor != Rgb::None)
            ink.back = colorOf(look.backColor, ink.back);
        ink.fore = readable(colorOf(look.foreColor, ink.fore), ink.back);
        return ink;
    }
    const bool cursor = row == m_grid.row() && col == m_grid.col();
    if (!cursor && within(area, row, col))
        return {colorOf(own.foreColorSel, palette.color(QPalette::HighlightedText)),
                colorOf(own.backColorSel, palette.color(QPalette::Highlight))};
    const QColor back = colorOf(look.backColor, colorOf(own.backColor, palette.color(QPalette::Base)));
    QColor fore = colorOf(look.foreColor, colorOf(own.foreColor, palette.color(QPalette::Text)));
    // A mark brings its own back colour to a light or dark palette: the palette's text gives way to black or white.
    if (look.foreColor == Rgb::None && look.backColor != Rgb::None && contrast(fore, back) < 7.0)
        fore = contrast(Qt::black, back) > contrast(Qt::white, back) ? Qt::black : Qt::white;
    return {readable(fore, back), back};
}

QColor FlexGridPainter::lineColor(Place place, const QPalette& palette) const
{
    if (place == Place::Item)
        return colorOf(m_grid.colors().gridColor,
                       blend(palette.color(QPalette::Base), palette.color(QPalette::Text), 0.16));
    return colorOf(m_grid.colors().gridColorFixed,
                   blend(palette.color(QPalette::Button), palette.color(QPalette::WindowText), 0.28));
}

void FlexGridPainter::paintCell(QPainter& painter, const QRect& rect, int row, int col, Place place,
                                const QPalette& palette) const
{
    if (rect.height() <= 0 || rect.width() <= 0 || row >= m_grid.rows() || col >= m_grid.cols())
        return;
    const CellFormat& look = m_grid.cellFormat(row, col);
    const Ink ink = inkOf(look, row, col, place, palette);
    painter.fillRect(rect, ink.back);
    if (m_grid.gridLines() || place != Place::Item) {
        const QColor line = lineColor(place, palette);
        painter.fillRect(rect.right(), rect.top(), 1, rect.height(), line);
        painter.fillRect(rect.left(), rect.bottom(), rect.width(), 1, line);
    }
    const QString text = m_grid.textMatrix(row, col);
    if (!text.isEmpty()) {
        const QFont& font = fontOf(look, m_base);
        painter.setFont(font);
        painter.setPen(ink.fore);
        // Very small rows give their margin up before they cut a letter.
        const QFontMetrics metrics(font);
        const int top = std::clamp((rect.height() - 1 - metrics.height()) / 2, 0, kTopMargin);
        const QRect room = rect.adjusted(kSideMargin, top, -kSideMargin, -1);
        // A number that is cut must not look like another number: where the text ends early it says so.
        const QString shown = metrics.horizontalAdvance(text) > room.width()
                                  ? metrics.elidedText(text, Qt::ElideRight, room.width())
                                  : text;
        const Qt::Alignment alignment = FlexGridModel::alignmentFlags(m_grid.colAlignment(col));
        painter.drawText(room, static_cast<int>(alignment) | Qt::TextSingleLine, shown);
    }
    if (place == Place::Item && row == m_grid.row() && col == m_grid.col()) {
        painter.setPen(QPen(palette.color(QPalette::Highlight), 1));
        painter.drawRect(rect.adjusted(0, 0, -2, -2));
    }
}

// -- Items --------------------------------------------------------------------------------------------------------

FlexGridDelegate::FlexGridDelegate(const FlexGrid& grid, const FlexGridPainter& painter, QObject* parent)
    : QAbstractItemDelegate(parent), m_grid(grid), m_painter(painter)
{
}

void FlexGridDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    m_painter.paintCell(*painter, option.rect, index.row() + m_grid.fixedRows(), index.column() + m_grid.fixedCols(),
                        FlexGridPainter::Place::Item, option.palette);
}

QSize FlexGridDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    const int row = index.row() + m_grid.fixedRows(), col = index.column() + m_grid.fixedCols();
    if (row >= m_grid.rows() || col >= m_grid.cols())
        return {};
    const QFontMetrics metrics(m_painter.fontOf(m_grid.cellFormat(row, col), option.font));
    return {metrics.horizontalAdvance(m_grid.textMatrix(row, col)) + 2 * kSideMargin + 2,
            metrics.height() + 2 * kTopMargin};
}

// -- Headers ------------------------------------------------------------------------------------------------------

FlexGridHeader::FlexGridHeader(const FlexGrid& grid, const FlexGridPainter& painter, Qt::Orientation orientation,
                               QWidget* parent)
    : QHeaderView(orientation, parent), m_grid(grid), m_painter(painter)
{
    setMinimumSectionSize(0); // hidden rows have no height but stay where they are
    setSectionsClickable(true);
    setHighlightSections(false);
    setSectionResizeMode(QHeaderView::Fixed);
}

int FlexGridHeader::thickness() const
{
    int pixels = 0;
    if (orientation() == Qt::Horizontal)
        for (int row = 0; row < m_grid.fixedRows(); ++row)
            pixels += pixelsOf(m_grid.rowHeight(row));
    else
        for (int col = 0; col < m_grid.fixedCols(); ++col)
            pixels += pixelsOf(m_grid.colWidth(col));
    return pixels;
}

QSize FlexGridHeader::sizeHint() const
{
    return {thickness(), thickness()};
}

void FlexGridHeader::paintSection(QPainter* painter, const QRect& rect, int section) const
{
    const bool columns = orientation() == Qt::Horizontal;
    QRect cell = rect;
    for (int fixed = 0; fixed < (columns ? m_grid.fixedRows() : m_grid.fixedCols()); ++fixed) {
        const int row = columns ? fixed : section + m_grid.fixedRows();
        const int col = columns ? section + m_grid.fixedCols() : fixed;
        if (row >= m_grid.rows() || col >= m_grid.cols())
            return;
        if (columns)
            cell.setHeight(pixelsOf(m_grid.rowHeight(fixed)));
        else
            cell.setWidth(pixelsOf(m_grid.colWidth(fixed)));
        m_painter.paintCell(*painter, cell, row, col, FlexGridPainter::Place::Header, palette());
        if (columns)
            cell.moveTop(cell.bottom() + 1);
        else
            cell.moveLeft(cell.right() + 1);
    }
}

} // namespace kalvo
