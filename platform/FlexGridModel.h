// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/FlexGrid.h"

#include <QAbstractTableModel>

namespace kalvo {

/// A FlexGrid as Qt's item views see it: the cells behind the fixed rows and columns are the items, fixed rows are the
/// horizontal header, fixed columns the vertical one (several are joined by a line end or a blank). It holds no data of
/// its own and is read only; the grid must outlive it.
class FlexGridModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    explicit FlexGridModel(FlexGrid& grid, QObject* parent = nullptr);

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;

    /// Row and column of the grid behind an item, and back (invalid for a fixed cell).
    int gridRow(int row) const { return row + m_fixedRows; }
    int gridCol(int col) const { return col + m_fixedCols; }
    QModelIndex itemAt(int gridRow, int gridCol) const;

    /// Takes over the grid's present size. The grid's signals bring it about; only who needs the model up to date
    /// within a FlexGrid::Bulk calls it.
    void followSize();

    /// Qt's alignment flags for a column alignment of a FlexGrid.
    static Qt::Alignment alignmentFlags(int columnAlignment);

private:
    bool stands(int gridRow, int gridCol) const;
    void tellCells(int top, int left, int bottom, int right);
    void tellAll();

    FlexGrid& m_grid;
    int m_rows = 0, m_cols = 0; ///< as the views know them
    int m_fixedRows = 0, m_fixedCols = 0;
};

} // namespace kalvo
