// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/FlexGrid.h"

#include "platform/FlexGridData.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <stdexcept>

namespace kalvo {

using namespace grid_data;

void grid_data::throwOutside(const char* what, int index, int last)
{
    std::string message = std::string(what) + " " + std::to_string(index);
    message += last < 0 ? " of a grid that has none" : " is outside the grid's 0 to " + std::to_string(last);
    throw std::out_of_range(message);
}

double NumberColumn::at(int row) const
{
    const auto place = static_cast<size_t>(row - firstRow);
    return row >= firstRow && place < values.size() ? values[place] : std::numeric_limits<double>::quiet_NaN();
}

QString NumberColumn::textAt(int row) const
{
    const double value = at(row);
    return std::isnan(value) ? QString() : format(value);
}

QString Body::textAt(int atRow, int atCol) const
{
    const NumberColumn* column = numberColumn(atCol);
    if (column && column->backs(atRow))
        return column->textAt(atRow);
    const RowPtr& cells = rows.at(atRow);
    return cells && static_cast<size_t>(atCol) < cells->texts.size() ? cells->texts[static_cast<size_t>(atCol)]
                                                                     : QString();
}

void Body::checkRow(int atRow) const
{
    if (atRow < 0 || atRow >= rowCount())
        throwOutside("Row", atRow, rowCount() - 1);
}

void Body::checkCol(int atCol) const
{
    if (atCol < 0 || atCol >= cols)
        throwOutside("Column", atCol, cols - 1);
}

namespace {

bool hasLooks(const RowPtr& cells)
{
    return cells && std::any_of(cells->looks.begin(), cells->looks.end(), [](quint32 look) { return look != 0; });
}

} // namespace

// -- Writing cells ----------------------------------------------------------------------------------------------

RowCells& FlexGrid::Private::writable(int row)
{
    RowPtr& cells = body.rows[row];
    if (!cells)
        cells = new RowCells;
    return *cells;
}

bool FlexGrid::Private::writeText(int row, int col, const QString& text)
{
    const NumberColumn* column = body.numberColumn(col);
    if (column && column->backs(row))
        turnIntoText(col);
    const auto place = static_cast<size_t>(col);
    const RowPtr& now = body.rows.at(row);
    const bool held = now && place < now->texts.size();
    if (held ? now->texts[place] == text : text.isEmpty())
        return false;
    std::vector<QString>& texts = writable(row).texts;
    if (texts.size() <= place) {
        // Rows are mostly filled from left to right: a narrow grid gets its room at once, a wide one as it comes.
        if (texts.empty())
            texts.reserve(std::max<size_t>(place + 1, static_cast<size_t>(std::min(body.cols, 16))));
        texts.resize(place + 1);
    }
    texts[place] = text;
    return true;
}

NumberColumn& FlexGrid::Private::writableNumbers(int col)
{
    NumberColumnPtr& column = body.numbers[col];
    if (column.use_count() > 1)
        column = std::make_shared<NumberColumn>(*column);
    return *column;
}

void FlexGrid::Private::turnIntoText(int col)
{
    const NumberColumnPtr column = body.numbers.at(col);
    body.numbers[col].reset();
    const int rows = std::min(body.rowCount(), column->firstRow + static_cast<int>(column->values.size()));
    for (int row = column->firstRow; row < rows; ++row)
        writeText(row, col, column->textAt(row));
}

void FlexGrid::Private::moveNumbers(int at, int insertedRows, int removedRows)
{
    for (int col = 0; col < body.numbers.size(); ++col) {
        if (!body.numbers.at(col))
            continue;
        NumberColumn& column = writableNumbers(col);
        const int count = static_cast<int>(column.values.size());
        const int from = std::clamp(at - column.firstRow, 0, count);
        const int to = std::clamp(at + removedRows - column.firstRow, 0, count);
        column.values.erase(column.values.begin() + from, column.values.begin() + to);
        if (at <= column.firstRow)
            column.firstRow += insertedRows - std::min(removedRows, column.firstRow - at);
        else if (from < static_cast<int>(column.values.size()))
            column.values.insert(column.values.begin() + from, static_cast<size_t>(insertedRows),
                                 std::numeric_limits<double>::quiet_NaN());
    }
}

// Rows that were dropped must come back empty when the grid grows again.
void FlexGrid::Private::cutNumbers()
{
    for (int col = 0; col < body.numbers.size(); ++col) {
        const NumberColumn* column = body.numberColumn(col);
        if (!column)
            continue;
        const auto room = static_cast<size_t>(std::max(0, body.rowCount() - column->firstRow));
        if (column->values.size() > room)
            writableNumbers(col).values.resize(room);
    }
}

// -- Signals ------------------------------------------------------------------------------------------------------

void FlexGrid::Private::cellsChanged(int top, int left, int bottom, int right)
{
    ++revision;
    if (bulkDepth > 0)
        bulkPending = true;
    else if (top <= bottom && left <= right)
        Q_EMIT q.cellsChanged(top, left, bottom, right);
}

void FlexGrid::Private::layoutChanged()
{
    ++revision;
    ++layoutRevision;
    if (bulkDepth > 0)
        bulkPending = true;
    else
        Q_EMIT q.layoutChanged();
}

void FlexGrid::Private::selectionChanged()
{
    ++revision;
    if (bulkDepth > 0)
        bulkPending = true;
    else
        Q_EMIT q.selectionChanged();
}

void FlexGrid::Private::setTop(int row)
{
    row = std::max(0, std::min(std::max(row, q.fixedRows()), body.rowCount() - 1));
    if (row == body.topRow)
        return;
    body.topRow = row;
    ++revision;
    if (bulkDepth > 0)
        bulkPending = true;
    else
        Q_EMIT q.topRowChanged(row);
}

FlexGrid::Bulk::Bulk(FlexGrid& grid) : m_grid(grid)
{
    ++m_grid.d->bulkDepth;
}

FlexGrid::Bulk::~Bulk()
{
    Private& p = *m_grid.d;
    if (--p.bulkDepth == 0 && p.bulkPending) {
        p.bulkPending = false;
        Q_EMIT m_grid.bulkChanged();
    }
}

quint64 FlexGrid::revision() const
{
    return d->revision;
}

quint64 FlexGrid::layoutRevision() const
{
    return d->layoutRevision;
}

// -- Size ---------------------------------------------------------------------------------------------------------

FlexGrid::FlexGrid(QObject* parent) : QObject(parent), d(std::make_unique<Private>(*this))
{
    d->body.cols = 2;
    d->body.rows.resize(2);
    d->body.heights = QList<int>(2, kStandardRowHeight);
    d->widths = QList<int>(2, kStandardColWidth);
    d->alignments = QList<int>(2, LeftCenter);
    d->body.row = d->body.col = d->body.rowSel = d->body.colSel = d->body.topRow = 1;
}

FlexGrid::~FlexGrid() = default;

int FlexGrid::rows() const
{
    return d->body.rowCount();
}

int FlexGrid::cols() const
{
    return d->body.cols;
}

void FlexGrid::Private::shrinkTo(int rowCount, int colCount, const std::function<void()>& work)
{
    const bool moves = body.row >= std::max(rowCount, 1) || body.col >= std::max(colCount, 1);
    if (moves)
        Q_EMIT q.leavingCell();
    work();
    const int lastRow = std::max(body.rowCount() - 1, 0), lastCol = std::max(body.cols - 1, 0);
    const bool cut = std::max(body.row, body.rowSel) > lastRow || std::max(body.col, body.colSel) > lastCol;
    body.row = std::min(body.row, lastRow);
    body.rowSel = std::min(body.rowSel, lastRow);
    body.col = std::min(body.col, lastCol);
    body.colSel = std::min(body.colSel, lastCol);
    layoutChanged();
    setTop(body.topRow);
    if (leftCol > lastCol)
        leftCol = lastCol;
    if (cut)
        selectionChanged();
    if (moves && body.rowCount() > 0 && body.cols > 0)
        Q_EMIT q.enteredCell();
}

void FlexGrid::setRows(int count)
{
    if (count < 0)
        throw std::out_of_range("A grid cannot have " + std::to_string(count) + " rows");
    const int now = rows();
    if (count == now)
        return;
    d->shrinkTo(count, d->body.cols, [this, count] {
        const int before = rows();
        d->body.rows.resize(count);
        d->body.heights.resize(count);
        if (count > before)
            std::fill(d->body.heights.begin() + before, d->body.heights.end(), d->defaultRowHeight);
        else
            d->cutNumbers();
    });
}

void FlexGrid::setCols(int count)
{
    if (count < 0)
        throw std::out_of_range("A grid cannot have " + std::to_string(count) + " columns");
    if (count == cols())
        return;
    d->shrinkTo(rows(), count, [this, count] {
        Body& body = d->body;
        const int before = body.cols;
        const auto room = static_cast<size_t>(count);
        for (int row = 0; count < before && row < body.rowCount(); ++row) {
            const RowPtr& cells = body.rows.at(row);
            if (!cells || (cells->texts.size() <= room && cells->looks.size() <= room))
                continue;
            RowCells& cut = d->writable(row);
            cut.texts.resize(std::min(cut.texts.size(), room));
            cut.looks.resize(std::min(cut.looks.size(), room));
        }
        if (!body.numbers.isEmpty())
            body.numbers.resize(count);
        d->widths.resize(count);
        d->alignments.resize(count);
        if (count > before) {
            std::fill(d->widths.begin() + before, d->widths.end(), kStandardColWidth);
            std::fill(d->alignments.begin() + before, d->alignments.end(), static_cast<int>(LeftCenter));
        }
        body.cols = count;
    });
}

// A grid that is emptied for a moment keeps its wish for fixed rows.
int FlexGrid::fixedRows() const
{
    return std::min(d->fixedRows, rows());
}

int FlexGrid::fixedCols() const
{
    return std::min(d->fixedCols, cols());
}

void FlexGrid::setFixedRows(int count)
{
    if (count < 0 || count > rows())
        throwOutside("Count of fixed rows", count, rows());
    if (count == d->fixedRows)
        return;
    d->fixedRows = count;
    d->layoutChanged();
    d->setTop(count);
}

void FlexGrid::setFixedCols(int count)
{
    if (count < 0 || count > cols())
        throwOutside("Count of fixed columns", count, cols());
    if (count == d->fixedCols)
        return;
    d->fixedCols = count;
    d->leftCol = std::max(0, std::min(count, cols() - 1));
    d->layoutChanged();
}

void FlexGrid::insertRow(int at, int count)
{
    if (at < 0 || at > rows())
        throwOutside("Row", at, rows());
    if (count < 0)
        throw std::out_of_range("Cannot insert " + std::to_string(count) + " rows");
    if (count == 0)
        return;
    d->body.rows.insert(at, count, RowPtr());
    d->body.heights.insert(at, count, d->defaultRowHeight);
    d->moveNumbers(at, count, 0);
    d->layoutChanged();
    d->cellsChanged(at, 0, rows() - 1, cols() - 1);
}

void FlexGrid::removeRow(int at, int count)
{
    d->body.checkRow(at);
    if (count < 0 || count > rows() - at)
        throwOutside("Row", at + count - 1, rows() - 1);
    if (count == 0)
        return;
    d->shrinkTo(rows() - count, cols(), [this, at, count] {
        d->body.rows.remove(at, count);
        d->body.heights.remove(at, count);
        d->moveNumbers(at, 0, count);
    });
    d->cellsChanged(at, 0, rows() - 1, cols() - 1);
}

void FlexGrid::clear()
{
    Body& body = d->body;
    body.rows = QList<RowPtr>(body.rows.size());
    body.numbers.clear();
    body.looks = std::make_shared<LookTable>();
    d->mayHaveLooks = false;
    d->cellsChanged(0, 0, rows() - 1, cols() - 1);
}

// -- Text ---------------------------------------------------------------------------------------------------------

QString FlexGrid::textMatrix(int row, int col) const
{
    d->body.checkCell(row, col);
    return d->body.textAt(row, col);
}

void FlexGrid::setTextMatrix(int row, int col, const QString& text)
{
    d->body.checkCell(row, col);
    if (d->writeText(row, col, text))
        d->cellsChanged(row, col, row, col);
}

QString FlexGrid::text() const
{
    return textMatrix(row(), col());
}

void FlexGrid::setText(const QString& text)
{
    d->body.checkCell(row(), col());
    const Area area = d->target();
    bool changed = false;
    for (int row = area.top; row <= area.bottom; ++row)
        for (int col = area.left; col <= area.right; ++col)
            changed = d->writeText(row, col, text) || changed;
    if (changed)
        d->cellsChanged(area.top, area.left, area.bottom, area.right);
}

QStringList FlexGrid::rowTexts(int row, int firstCol) const
{
    d->body.checkRow(row);
    if (firstCol < 0 || firstCol > cols())
        throwOutside("Column", firstCol, cols());
    QStringList texts;
    texts.reserve(cols() - firstCol);
    for (int col = firstCol; col < cols(); ++col)
        texts.append(d->body.textAt(row, col));
    return texts;
}

void FlexGrid::setRowTexts(int row, int firstCol, const QStringList& texts)
{
    d->body.checkRow(row);
    if (firstCol < 0 || firstCol > cols())
        throwOutside("Column", firstCol, cols());
    const int count = std::min(static_cast<int>(texts.size()), cols() - firstCol);
    bool changed = false;
    if (d->body.numbers.isEmpty() && !d->body.rows.at(row)) {
        // The way of a deck that is being loaded: room for the row once, as far as it has texts.
        int used = count;
        while (used > 0 && texts.at(used - 1).isEmpty())
            --used;
        if (used > 0) {
            std::vector<QString>& cells = d->writable(row).texts;
            cells.reserve(static_cast<size_t>(firstCol + used));
            cells.resize(static_cast<size_t>(firstCol));
            cells.insert(cells.end(), texts.begin(), texts.begin() + used);
            changed = true;
        }
    } else {
        for (int i = 0; i < count; ++i)
            changed = d->writeText(row, firstCol + i, texts.at(i)) || changed;
    }
    if (changed)
        d->cellsChanged(row, firstCol, row, firstCol + count - 1);
}

// -- Numbers ------------------------------------------------------------------------------------------------------

void FlexGrid::setNumberColumn(int col, int firstRow, std::vector<double> values, NumberFormatter format)
{
    d->body.checkCol(col);
    if (firstRow < 0 || firstRow > rows())
        throwOutside("Row", firstRow, rows());
    if (values.size() > static_cast<size_t>(rows() - firstRow))
        throw std::out_of_range(std::to_string(values.size()) + " numbers from row " + std::to_string(firstRow) +
                                " on reach past a grid of " + std::to_string(rows()) + " rows");
    if (!format)
        throw std::invalid_argument("A number column needs a formatter");
    Body& body = d->body;
    if (body.numbers.isEmpty())
        body.numbers.resize(cols());
    // Texts behind the numbers would come to light again when the column is turned into text.
    const auto place = static_cast<size_t>(col);
    for (int row = firstRow; row < body.rowCount(); ++row) {
        const RowPtr& cells = body.rows.at(row);
        if (cells && place < cells->texts.size() && !cells->texts[place].isEmpty())
            d->writable(row).texts[place] = QString();
    }
    const NumberColumnPtr before = body.numbers.at(col);
    body.numbers[col] = std::make_shared<NumberColumn>(NumberColumn{firstRow, std::move(values), std::move(format)});
    d->cellsChanged(before ? std::min(before->firstRow, firstRow) : firstRow, col, rows() - 1, col);
}

bool FlexGrid::isNumberColumn(int col) const
{
    d->body.checkCol(col);
    return d->body.numberColumn(col) != nullptr;
}

double FlexGrid::number(int row, int col) const
{
    d->body.checkCell(row, col);
    const NumberColumn* column = d->body.numberColumn(col);
    return column ? column->at(row) : std::numeric_limits<double>::quiet_NaN();
}

std::optional<FlexGrid::Numbers> FlexGrid::numbers(int col) const
{
    d->body.checkCol(col);
    const NumberColumn* column = d->body.numberColumn(col);
    if (!column)
        return std::nullopt;
    return Numbers{column->firstRow, column->values, &column->format};
}

// -- Snapshots ----------------------------------------------------------------------------------------------------

FlexGrid::Snapshot::Snapshot() = default;
FlexGrid::Snapshot::Snapshot(const Snapshot&) = default;
FlexGrid::Snapshot& FlexGrid::Snapshot::operator=(const Snapshot&) = default;
FlexGrid::Snapshot::~Snapshot() = default;

bool FlexGrid::Snapshot::isEmpty() const
{
    return !d;
}

int FlexGrid::Snapshot::rows() const
{
    return d ? d->body.rowCount() : 0;
}

int FlexGrid::Snapshot::cols() const
{
    return d ? d->body.cols : 0;
}

QString FlexGrid::Snapshot::textMatrix(int row, int col) const
{
    if (!d)
        throwOutside("Row", row, -1);
    d->body.checkCell(row, col);
    return d->body.textAt(row, col);
}

FlexGrid::Snapshot FlexGrid::snapshot() const
{
    Snapshot taken;
    taken.d = std::make_shared<Snapshot::Data>(Snapshot::Data{d->body});
    return taken;
}

void FlexGrid::restore(const Snapshot& snapshot)
{
    if (snapshot.isEmpty())
        return;
    const Snapshot kept = snapshot; // whoever listens may drop the one that was handed in
    const Body& from = kept.d->body;
    const bool moves = from.row != row() || from.col != col();
    if (moves)
        Q_EMIT leavingCell();
    {
        Bulk bulk(*this);
        setCols(from.cols); // for widths and alignments
        d->body = from;
        d->mayHaveLooks = true;
        ++d->layoutRevision;
        ++d->revision;
        d->bulkPending = true;
    }
    if (moves && rows() > 0 && cols() > 0)
        Q_EMIT enteredCell();
}

void FlexGrid::restoreTexts(const Snapshot& snapshot)
{
    if (snapshot.isEmpty())
        return;
    const Snapshot kept = snapshot; // as in restore
    const Body& from = kept.d->body;
    Body& body = d->body;
    const Bulk bulk(*this);
    setRows(from.rowCount());
    const int width = std::min(cols(), from.cols);
    const bool plain = cols() == from.cols && body.numbers.isEmpty() && from.numbers.isEmpty();
    bool changed = false;
    for (int row = 0; row < body.rowCount(); ++row) {
        const RowPtr& now = body.rows.at(row);
        const RowPtr& then = from.rows.at(row);
        if (plain && now == then)
            continue;
        if (plain && !hasLooks(now) && !hasLooks(then)) {
            body.rows[row] = then;
            changed = true;
            continue;
        }
        for (int col = 0; col < width; ++col)
            changed = d->writeText(row, col, from.textAt(row, col)) || changed;
    }
    if (changed)
        d->cellsChanged(0, 0, rows() - 1, cols() - 1);
}

bool FlexGrid::sharesRow(const Snapshot& snapshot, int row) const
{
    d->body.checkRow(row);
    return row < snapshot.rows() && snapshot.d->body.rows.at(row) == d->body.rows.at(row);
}

} // namespace kalvo
