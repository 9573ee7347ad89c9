// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/FlexGridView.h"

#include "platform/FlexGridModel.h"
#include "platform/FlexGridPainter.h"

#include <QAbstractButton>
#include <QGuiApplication>
#include <QHelpEvent>
#include <QItemSelectionModel>
#include <QMetaMethod>
#include <QPainter>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <QSignalBlocker>

#include <algorithm>

namespace kalvo {

FlexGridView::FlexGridView(FlexGrid& grid, QWidget* parent)
    : QTableView(parent), m_grid(grid), m_painter(std::make_unique<FlexGridPainter>(grid)),
      m_model(new FlexGridModel(grid, this))
{
    m_painter->setBaseFont(font());
    setItemDelegate(new FlexGridDelegate(grid, *m_painter, this));
    buildHeaders();
    setModel(m_model);
    setShowGrid(false); // cells draw their own lines, so that hidden rows leave none behind
    setEditTriggers(NoEditTriggers);
    setSelectionMode(ContiguousSelection);
    setTabKeyNavigation(false);
    setWordWrap(false);
    setAutoScroll(false);
    setVerticalScrollMode(ScrollPerItem);
    setHorizontalScrollMode(ScrollPerItem);
    setMouseTracking(true);
    viewport()->setAttribute(Qt::WA_Hover, false); // no cell looks different under the pointer
    viewport()->setBackgroundRole(QPalette::Window);
    connectGrid();
    follow();
}

FlexGridView::~FlexGridView() = default;

void FlexGridView::buildHeaders()
{
    m_columns = new FlexGridHeader(m_grid, *m_painter, Qt::Horizontal, this);
    m_lines = new FlexGridHeader(m_grid, *m_painter, Qt::Vertical, this);
    setHorizontalHeader(m_columns);
    setVerticalHeader(m_lines);
    connectHeader(m_columns, true);
    connectHeader(m_lines, false);
    m_corner = findChild<QAbstractButton*>(QString(), Qt::FindDirectChildrenOnly);
    if (m_corner)
        m_corner->installEventFilter(this);
}

void FlexGridView::connectHeader(FlexGridHeader* header, bool columns)
{
    // The table would select on its own; here the grid's selection is the only one.
    disconnect(header, &QHeaderView::sectionPressed, this, nullptr);
    disconnect(header, &QHeaderView::sectionEntered, this, nullptr);
    connect(header, &QHeaderView::sectionPressed, this, [this, columns](int section) {
        pressHeader(section, columns, QGuiApplication::keyboardModifiers().testFlag(Qt::ShiftModifier));
    });
    connect(header, &QHeaderView::sectionEntered, this,
            [this, columns](int section) { pressHeader(section, columns, true); });
    connect(header, &QHeaderView::sectionDoubleClicked, this, [this, columns](int section) {
        Q_EMIT gridDoubleClicked(columns ? 0 : m_model->gridRow(section), columns ? m_model->gridCol(section) : 0);
    });
    connect(header, &QHeaderView::sectionResized, this,
            [this, columns](int section, int, int pixels) { takeUserSize(section, pixels, columns); });
    header->viewport()->setMouseTracking(true);
    header->viewport()->installEventFilter(this);
}

void FlexGridView::connectGrid()
{
    // The model has connected before: its rows and columns are right when these are called.
    connect(&m_grid, &FlexGrid::selectionChanged, this, &FlexGridView::follow);
    connect(&m_grid, &FlexGrid::topRowChanged, this, &FlexGridView::follow);
    connect(&m_grid, &FlexGrid::leftColChanged, this, &FlexGridView::follow);
    connect(&m_grid, &FlexGrid::bulkChanged, this, &FlexGridView::follow);
    connect(&m_grid, &FlexGrid::cellsChanged, this, [this](int top, int left) {
        if (m_corner && top < m_grid.fixedRows() && left < m_grid.fixedCols())
            m_corner->update();
    });
    // A loop over all heights signals each: the sizes are looked through once, when it is over or somebody asks.
    connect(&m_grid, &FlexGrid::layoutChanged, this, [this] {
        m_followTimer.start(0, this);
        viewport()->update();
    });
    const auto scrolled = [this] {
        if (!m_following)
            writeScrollBack();
    };
    connect(verticalScrollBar(), &QScrollBar::valueChanged, this, scrolled);
    connect(horizontalScrollBar(), &QScrollBar::valueChanged, this, scrolled);
}

// -- From the grid to the view ------------------------------------------------------------------------------------

void FlexGridView::follow()
{
    if (m_following || m_seen == m_grid.revision())
        return;
    {
        const QScopedValueRollback guard(m_following, true);
        m_model->followSize();
        if (m_seenLayout != m_grid.layoutRevision())
            followLayout();
        followSelection();
        followScroll();
        m_seen = m_grid.revision();
    }
    if (m_moved) {
        m_moved = false;
        Q_EMIT viewMoved();
    }
}

void FlexGridView::followLayout()
{
    m_seenLayout = m_grid.layoutRevision();
    m_followTimer.stop();
    takeGridFont();
    m_columns->setVisible(m_grid.fixedRows() > 0);
    m_lines->setVisible(m_grid.fixedCols() > 0);
    applySizes(*m_columns, true);
    applySizes(*m_lines, false);
    const Rgb behind = m_grid.colors().backColorBkg;
    QPalette around; // inherits, so that it goes from light to dark with the view
    if (behind != Rgb::None)
        around.setColor(QPalette::Window, QColor(static_cast<QRgb>(behind)));
    viewport()->setPalette(around);
    updateGeometries();
    viewport()->update();
    if (m_corner)
        m_corner->update();
    m_seenArea = {-1, -1, -1, -1};
    m_moved = true;
}

void FlexGridView::applySizes(FlexGridHeader& header, bool columns)
{
    const QScopedValueRollback guard(m_applyingSizes, true);
    const QSignalBlocker silent(header); // the table would note every section for a later look of its own
    header.setUpdatesEnabled(false);
    const int count = header.count();
    const auto wanted = [&](int section) {
        return pixelsOf(columns ? m_grid.colWidth(m_model->gridCol(section))
                                : m_grid.rowHeight(m_model->gridRow(section)));
    };
    // Most sections are of one size. It is made the header's own, and only those that differ are set one by one.
    const int usual = count > 0 ? wanted(count / 2) : 0;
    if (usual > 0 && usual != header.defaultSectionSize())
        header.setDefaultSectionSize(usual);
    for (int section = 0; section < count; ++section) {
        const int pixels = wanted(section);
        if (header.sectionSize(section) != pixels)
            header.resizeSection(section, pixels);
    }
    header.setUpdatesEnabled(true);
}

void FlexGridView::takeGridFont()
{
    QFont wanted;
    if (!m_grid.fontName().isEmpty())
        wanted.setFamily(m_grid.fontName());
    if (m_grid.fontSize() > 0)
        wanted.setPointSizeF(m_grid.fontSize());
    if (wanted != font())
        setFont(wanted);
}

void FlexGridView::followSelection()
{
    const QModelIndex current = m_model->itemAt(m_grid.row(), m_grid.col());
    if (current != currentIndex())
        selectionModel()->setCurrentIndex(current, QItemSelectionModel::NoUpdate);
    const FlexGrid::Area area = m_grid.selection();
    if (area == m_seenArea)
        return;
    m_seenArea = area;
    const QModelIndex topLeft =
        m_model->itemAt(std::max(area.top, m_grid.fixedRows()), std::max(area.left, m_grid.fixedCols()));
    const QModelIndex bottomRight = m_model->itemAt(area.bottom, area.right);
    if (topLeft.isValid() && bottomRight.isValid())
        selectionModel()->select(QItemSelection(topLeft, bottomRight), QItemSelectionModel::ClearAndSelect);
    else
        selectionModel()->clearSelection();
    m_columns->viewport()->update();
    m_lines->viewport()->update();
}

void FlexGridView::followScroll()
{
    const bool scrolled = m_grid.topRow() != m_seenTop || m_grid.leftCol() != m_seenLeft;
    const bool moved = m_grid.row() != m_seenRow || m_grid.col() != m_seenCol;
    m_seenRow = m_grid.row();
    m_seenCol = m_grid.col();
    if (scrolled) {
        m_seenTop = m_grid.topRow();
        m_seenLeft = m_grid.leftCol();
        verticalScrollBar()->setValue(m_seenTop - m_grid.fixedRows());
        horizontalScrollBar()->setValue(m_seenLeft - m_grid.fixedCols());
    } else if (moved && m_followsCursor && !m_holdScroll && isVisible()) {
        scrollTo(m_model->itemAt(m_seenRow, m_seenCol));
    }
    writeScrollBack();
}

// Before the view is shown its bars know nothing of how far they reach; then the grid's own wish stands.
void FlexGridView::writeScrollBack()
{
    if (!isVisible() || m_model->rowCount() == 0 || m_model->columnCount() == 0)
        return;
    m_seenTop = std::min(verticalScrollBar()->value() + m_grid.fixedRows(), m_grid.rows() - 1);
    m_seenLeft = std::min(horizontalScrollBar()->value() + m_grid.fixedCols(), m_grid.cols() - 1);
    m_grid.setTopRow(m_seenTop);
    m_grid.setLeftCol(m_seenLeft);
}

void FlexGridView::showCursorCell()
{
    follow();
    const QModelIndex current = m_model->itemAt(m_grid.row(), m_grid.col());
    if (current.isValid() && isVisible())
        scrollTo(current);
}

void FlexGridView::setUserResizing(bool on)
{
    m_userResizing = on;
    const auto mode = on ? QHeaderView::Interactive : QHeaderView::Fixed;
    const QSignalBlocker columnsSilent(m_columns), linesSilent(m_lines);
    m_columns->setSectionResizeMode(mode);
    m_lines->setSectionResizeMode(mode);
}

void FlexGridView::takeUserSize(int section, int pixels, bool columns)
{
    if (m_applyingSizes || !m_userResizing)
        return;
    m_userResized = true;
    if (columns)
        m_grid.setColWidth(m_model->gridCol(section), pixels * kTwipsPerPixel);
    else
        m_grid.setRowHeight(m_model->gridRow(section), pixels * kTwipsPerPixel);
}

// -- Measures -----------------------------------------------------------------------------------------------------

QRect FlexGridView::cellRect(int row, int col) const
{
    // The view may be asked in the middle of a Bulk, or between a change and its signal.
    const_cast<FlexGridView*>(this)->follow();
    QRect rect(0, 0, pixelsOf(m_grid.colWidth(col)), pixelsOf(m_grid.rowHeight(row)));
    if (col >= m_grid.fixedCols()) {
        rect.moveLeft(viewport()->x() + columnViewportPosition(col - m_grid.fixedCols()));
    } else {
        int left = m_lines->x();
        for (int before = 0; before < col; ++before)
            left += pixelsOf(m_grid.colWidth(before));
        rect.moveLeft(left);
    }
    if (row >= m_grid.fixedRows()) {
        rect.moveTop(viewport()->y() + rowViewportPosition(row - m_grid.fixedRows()));
    } else {
        int top = m_columns->y();
        for (int before = 0; before < row; ++before)
            top += pixelsOf(m_grid.rowHeight(before));
        rect.moveTop(top);
    }
    return rect;
}

int FlexGridView::CellTop() const
{
    return cellRect(m_grid.row(), m_grid.col()).top() * kTwipsPerPixel;
}

int FlexGridView::CellLeft() const
{
    return cellRect(m_grid.row(), m_grid.col()).left() * kTwipsPerPixel;
}

int FlexGridView::CellWidth() const
{
    return cellRect(m_grid.row(), m_grid.col()).width() * kTwipsPerPixel;
}

int FlexGridView::CellHeight() const
{
    return cellRect(m_grid.row(), m_grid.col()).height() * kTwipsPerPixel;
}

int FlexGridView::rowPos(int row) const
{
    return cellRect(row, 0).top() * kTwipsPerPixel;
}

bool FlexGridView::rowIsVisible(int row) const
{
    const QRect rect = cellRect(row, 0);
    const int top = rect.top() - viewport()->y();
    return row < m_grid.fixedRows() || (top < viewport()->height() && top + std::max(rect.height(), 1) > 0);
}

bool FlexGridView::colIsVisible(int col) const
{
    const QRect rect = cellRect(0, col);
    const int left = rect.left() - viewport()->x();
    return col < m_grid.fixedCols() || (left < viewport()->width() && left + std::max(rect.width(), 1) > 0);
}

int FlexGridView::rowAtPoint(const QPoint& point) const
{
    const_cast<FlexGridView*>(this)->follow();
    if (!rect().contains(point))
        return -1;
    const int inCells = point.y() - viewport()->y();
    if (inCells >= 0) {
        const int row = rowAt(inCells);
        return row < 0 ? -1 : m_model->gridRow(row);
    }
    for (int row = 0; row < m_grid.fixedRows(); ++row)
        if (point.y() <= cellRect(row, 0).bottom())
            return row;
    return -1;
}

int FlexGridView::colAtPoint(const QPoint& point) const
{
    const_cast<FlexGridView*>(this)->follow();
    if (!rect().contains(point))
        return -1;
    const int inCells = point.x() - viewport()->x();
    if (inCells >= 0) {
        const int col = columnAt(inCells);
        return col < 0 ? -1 : m_model->gridCol(col);
    }
    for (int col = 0; col < m_grid.fixedCols(); ++col)
        if (point.x() <= cellRect(0, col).right())
            return col;
    return -1;
}

int FlexGridView::rowsPerPage() const
{
    if (m_grid.rows() == 0)
        return 1;
    const int pixels = pixelsOf(m_grid.rowHeight(std::min(m_grid.topRow(), m_grid.rows() - 1)));
    return std::max(1, viewport()->height() / std::max(pixels, 1));
}

// -- Qt's own hooks -----------------------------------------------------------------------------------------------

void FlexGridView::paintEvent(QPaintEvent* event)
{
    follow();
    QTableView::paintEvent(event);
}

void FlexGridView::showEvent(QShowEvent* event)
{
    QTableView::showEvent(event);
    m_seen = m_seenLayout = ~quint64(0);
    m_seenTop = m_seenLeft = -1;
    m_holdScroll = m_dragging = false; // a view that was hidden under a pressed button saw no release
    follow();
}

void FlexGridView::resizeEvent(QResizeEvent* event)
{
    QTableView::resizeEvent(event);
    Q_EMIT viewMoved();
}

void FlexGridView::changeEvent(QEvent* event)
{
    QTableView::changeEvent(event);
    if (event->type() == QEvent::FontChange)
        m_painter->setBaseFont(font());
}

void FlexGridView::scrollContentsBy(int dx, int dy)
{
    QTableView::scrollContentsBy(dx, dy);
    if (m_following)
        m_moved = true;
    else
        Q_EMIT viewMoved();
}

void FlexGridView::paintCorner(QWidget& corner)
{
    QPainter painter(&corner);
    QRect cell(0, 0, 0, 0);
    for (int row = 0; row < m_grid.fixedRows(); ++row) {
        cell.setHeight(pixelsOf(m_grid.rowHeight(row)));
        cell.moveLeft(0);
        for (int col = 0; col < m_grid.fixedCols(); ++col) {
            cell.setWidth(pixelsOf(m_grid.colWidth(col)));
            m_painter->paintCell(painter, cell, row, col, FlexGridPainter::Place::Corner, palette());
            cell.moveLeft(cell.right() + 1);
        }
        cell.moveTop(cell.bottom() + 1);
    }
}

} // namespace kalvo
