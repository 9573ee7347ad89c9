// SPDX-License-Identifier: GPL-3.0-or-later
// How the cells of a FlexGrid are drawn, items and headers alike. For FlexGridView.
#pragma once

#include "platform/FlexGrid.h"

#include <QAbstractItemDelegate>
#include <QColor>
#include <QFont>
#include <QHeaderView>
#include <QPalette>

#include <vector>

namespace kalvo {

/// Pixels of so many twips. What is hidden by the deck's rule (below 16 twips) has none.
constexpr int pixelsOf(int twips)
{
    return twips < 16 ? 0 : (twips + kTwipsPerPixel / 2) / kTwipsPerPixel;
}

/// A colour between two, from all of `a` (0) to all of `b` (1).
QColor blend(const QColor& a, const QColor& b, double shareOfB);

/// Draws single cells from the grid itself: no variant, and no string beyond the cell's own, is made on the way.
class FlexGridPainter
{
public:
    explicit FlexGridPainter(const FlexGrid& grid) : m_grid(grid) {}

    enum class Place
    {
        Item,
        Header,
        Corner
    };
    /// Draws cell (row, col) of the grid into `rect`, grid lines at its right and lower edge included.
    void paintCell(QPainter& painter, const QRect& rect, int row, int col, Place place, const QPalette& palette) const;
    /// The font of a cell; `base` where neither the cell nor the grid names one.
    const QFont& fontOf(const CellFormat& look, const QFont& base) const;
    void forgetFonts() { m_fonts.clear(); }
    void setBaseFont(const QFont& font);

private:
    struct Ink
    {
        QColor fore, back; ///< an invalid back is what stands there already
    };
    Ink inkOf(const CellFormat& look, int row, int col, Place place, const QPalette& palette) const;
    QColor lineColor(Place place, const QPalette& palette) const;

    const FlexGrid& m_grid;
    QFont m_base;
    mutable std::vector<std::pair<CellFormat, QFont>> m_fonts; ///< few: a grid holds few looks
};

/// The items of the table.
class FlexGridDelegate : public QAbstractItemDelegate
{
    Q_OBJECT

public:
    FlexGridDelegate(const FlexGrid& grid, const FlexGridPainter& painter, QObject* parent);
    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    /// Room for the text, so that a double click on a column's edge fits the column to it.
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;

private:
    const FlexGrid& m_grid;
    const FlexGridPainter& m_painter;
};

/// All fixed rows, or all fixed columns, as one header.
class FlexGridHeader : public QHeaderView
{
    Q_OBJECT

public:
    FlexGridHeader(const FlexGrid& grid, const FlexGridPainter& painter, Qt::Orientation orientation, QWidget* parent);
    QSize sizeHint() const override;
    /// Pixels of all fixed rows' heights, or fixed columns' widths.
    int thickness() const;

protected:
    void paintSection(QPainter* painter, const QRect& rect, int section) const override;

private:
    const FlexGrid& m_grid;
    const FlexGridPainter& m_painter;
};

} // namespace kalvo
