// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/FlexGridModel.h"

#include <QColor>
#include <QFont>

#include <algorithm>

namespace kalvo {

FlexGridModel::FlexGridModel(FlexGrid& grid, QObject* parent)
    : QAbstractTableModel(parent), m_grid(grid), m_rows(grid.rows() - grid.fixedRows()),
      m_cols(grid.cols() - grid.fixedCols()), m_fixedRows(grid.fixedRows()), m_fixedCols(grid.fixedCols())
{
    connect(&grid, &FlexGrid::cellsChanged, this, &FlexGridModel::tellCells);
    connect(&grid, &FlexGrid::layoutChanged, this, &FlexGridModel::followSize);
    connect(&grid, &FlexGrid::bulkChanged, this, [this] {
        followSize();
        tellAll();
    });
}

int FlexGridModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : m_rows;
}

int FlexGridModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : m_cols;
}

// Between a change of the grid's size and the model's taking it over, a view may ask for what is gone.
bool FlexGridModel::stands(int gridRow, int gridCol) const
{
    return gridRow >= 0 && gridCol >= 0 && gridRow < m_grid.rows() && gridCol < m_grid.cols();
}

Qt::Alignment FlexGridModel::alignmentFlags(int columnAlignment)
{
    // 0 to 2 left, 3 to 5 centre, 6 to 8 right; top, centre and bottom in each. 9: left for texts.
    if (columnAlignment < 0 || columnAlignment > 8)
        return Qt::AlignLeft | Qt::AlignVCenter;
    constexpr Qt::AlignmentFlag across[] = {Qt::AlignLeft, Qt::AlignHCenter, Qt::AlignRight};
    constexpr Qt::AlignmentFlag down[] = {Qt::AlignTop, Qt::AlignVCenter, Qt::AlignBottom};
    return across[columnAlignment / 3] | down[columnAlignment % 3];
}

QVariant FlexGridModel::data(const QModelIndex& index, int role) const
{
    const int row = gridRow(index.row()), col = gridCol(index.column());
    if (!index.isValid() || !stands(row, col))
        return {};
    switch (role) {
    case Qt::DisplayRole:
        return m_grid.textMatrix(row, col);
    case Qt::TextAlignmentRole:
        return QVariant(alignmentFlags(m_grid.colAlignment(col)));
    case Qt::ForegroundRole:
    case Qt::BackgroundRole: {
        const CellFormat& look = m_grid.cellFormat(row, col);
        const Rgb color = role == Qt::ForegroundRole ? look.foreColor : look.backColor;
        return color == Rgb::None ? QVariant() : QVariant(QColor(static_cast<QRgb>(color)));
    }
    case Qt::FontRole: {
        const CellFormat& look = m_grid.cellFormat(row, col);
        if (look == CellFormat())
            return {};
        const QString name = look.fontName.isEmpty() ? m_grid.fontName() : look.fontName;
        QFont font = name.isEmpty() ? QFont() : QFont(name);
        font.setPointSizeF(look.fontSize > 0 ? look.fontSize : m_grid.fontSize());
        font.setBold(look.bold);
        font.setItalic(look.italic);
        font.setUnderline(look.underline);
        font.setStrikeOut(look.strikeThrough);
        return font;
    }
    default:
        return {};
    }
}

QVariant FlexGridModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    const bool columns = orientation == Qt::Horizontal;
    const int row = columns ? 0 : gridRow(section), col = columns ? gridCol(section) : 0;
    if (section < 0 || !stands(row, col))
        return {};
    if (role == Qt::TextAlignmentRole)
        return QVariant(alignmentFlags(m_grid.colAlignment(col)));
    if (role != Qt::DisplayRole)
        return {};
    QStringList texts;
    for (int fixed = 0; fixed < (columns ? m_fixedRows : m_fixedCols); ++fixed)
        texts.append(columns ? m_grid.textMatrix(fixed, col) : m_grid.textMatrix(row, fixed));
    return texts.join(columns ? QLatin1Char('\n') : QLatin1Char(' '));
}

QModelIndex FlexGridModel::itemAt(int gridRow, int gridCol) const
{
    return index(gridRow - m_fixedRows, gridCol - m_fixedCols);
}

void FlexGridModel::followSize()
{
    const int fixedRows = m_grid.fixedRows(), fixedCols = m_grid.fixedCols();
    const int rows = m_grid.rows() - fixedRows, cols = m_grid.cols() - fixedCols;
    if (fixedRows != m_fixedRows || fixedCols != m_fixedCols) {
        beginResetModel();
        m_fixedRows = fixedRows;
        m_fixedCols = fixedCols;
        m_rows = rows;
        m_cols = cols;
        endResetModel();
        return;
    }
    // Where rows came or went is not known any more. At the end is as good, since all cells are told to have changed.
    if (rows > m_rows) {
        beginInsertRows({}, m_rows, rows - 1);
        m_rows = rows;
        endInsertRows();
    } else if (rows < m_rows) {
        beginRemoveRows({}, rows, m_rows - 1);
        m_rows = rows;
        endRemoveRows();
    }
    if (cols > m_cols) {
        beginInsertColumns({}, m_cols, cols - 1);
        m_cols = cols;
        endInsertColumns();
    } else if (cols < m_cols) {
        beginRemoveColumns({}, cols, m_cols - 1);
        m_cols = cols;
        endRemoveColumns();
    }
}

void FlexGridModel::tellCells(int top, int left, int bottom, int right)
{
    const int firstRow = std::max(top - m_fixedRows, 0), lastRow = std::min(bottom - m_fixedRows, m_rows - 1);
    const int firstCol = std::max(left - m_fixedCols, 0), lastCol = std::min(right - m_fixedCols, m_cols - 1);
    if (top < m_fixedRows && firstCol <= lastCol)
        Q_EMIT headerDataChanged(Qt::Horizontal, firstCol, lastCol);
    if (left < m_fixedCols && firstRow <= lastRow)
        Q_EMIT headerDataChanged(Qt::Vertical, firstRow, lastRow);
    if (firstRow <= lastRow && firstCol <= lastCol)
        Q_EMIT dataChanged(index(firstRow, firstCol), index(lastRow, lastCol));
}

void FlexGridModel::tellAll()
{
    tellCells(0, 0, m_grid.rows() - 1, m_grid.cols() - 1);
}

} // namespace kalvo
