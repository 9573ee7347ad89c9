// SPDX-License-Identifier: GPL-3.0-or-later
// The cursor and selection of a FlexGrid, its heights and widths, and the looks of its cells.
#include "platform/FlexGridData.h"

#include <QHashFunctions>

#include <algorithm>
#include <array>

namespace kalvo {

using namespace grid_data;

// -- Cursor and selection -----------------------------------------------------------------------------------------

int FlexGrid::row() const
{
    return d->body.row;
}

int FlexGrid::col() const
{
    return d->body.col;
}

int FlexGrid::rowSel() const
{
    return d->body.rowSel;
}

int FlexGrid::colSel() const
{
    return d->body.colSel;
}

void FlexGrid::Private::moveTo(int row, int col, int rowSel, int colSel)
{
    const auto check = [&] {
        body.checkCell(row, col);
        body.checkCell(rowSel, colSel);
    };
    check();
    const bool moves = row != body.row || col != body.col;
    if (moves) {
        Q_EMIT q.leavingCell();
        check(); // who stores the cell that is left may also take rows away
    }
    const bool selects = row != body.row || col != body.col || rowSel != body.rowSel || colSel != body.colSel;
    body.row = row;
    body.col = col;
    body.rowSel = rowSel;
    body.colSel = colSel;
    if (selects)
        selectionChanged();
    if (moves)
        Q_EMIT q.enteredCell();
}

void FlexGrid::setRow(int row)
{
    d->moveTo(row, col(), row, col());
}

void FlexGrid::setCol(int col)
{
    d->moveTo(row(), col, row(), col);
}

void FlexGrid::setCursor(int row, int col)
{
    d->moveTo(row, col, row, col);
}

void FlexGrid::setRowSel(int rowSel)
{
    d->moveTo(row(), col(), rowSel, colSel());
}

void FlexGrid::setColSel(int colSel)
{
    d->moveTo(row(), col(), rowSel(), colSel);
}

void FlexGrid::select(int row, int col, int rowSel, int colSel)
{
    d->moveTo(row, col, rowSel, colSel);
}

FlexGrid::Area FlexGrid::selection() const
{
    return {std::min(row(), rowSel()), std::min(col(), colSel()), std::max(row(), rowSel()), std::max(col(), colSel())};
}

QString FlexGrid::clip() const
{
    const Area area = selection();
    d->body.checkCell(area.bottom, area.right);
    QString text;
    text.reserve((area.bottom - area.top + 1) * (area.right - area.left + 1) * 4);
    for (int row = area.top; row <= area.bottom; ++row) {
        if (row > area.top)
            text += QLatin1Char('\r');
        for (int col = area.left; col <= area.right; ++col) {
            if (col > area.left)
                text += QLatin1Char('\t');
            text += d->body.textAt(row, col);
        }
    }
    return text;
}

void FlexGrid::setClip(QStringView text)
{
    const Area area = selection();
    d->body.checkCell(area.bottom, area.right);
    bool changed = false;
    int row = area.top, col = area.left;
    qsizetype start = 0;
    for (qsizetype i = 0; i <= text.size() && row <= area.bottom; ++i) {
        const QChar at = i < text.size() ? text[i] : QLatin1Char('\r');
        if (at != QLatin1Char('\t') && at != QLatin1Char('\r'))
            continue;
        if (col <= area.right)
            changed = d->writeText(row, col, text.mid(start, i - start).toString()) || changed;
        start = i + 1;
        ++col;
        if (at == QLatin1Char('\r')) {
            ++row;
            col = area.left;
        }
    }
    if (changed)
        d->cellsChanged(area.top, area.left, area.bottom, area.right);
}

int FlexGrid::topRow() const
{
    return d->body.topRow;
}

void FlexGrid::setTopRow(int row)
{
    d->body.checkRow(row);
    d->setTop(row);
}

int FlexGrid::leftCol() const
{
    return d->leftCol;
}

void FlexGrid::setLeftCol(int col)
{
    d->body.checkCol(col);
    col = std::min(std::max(col, fixedCols()), cols() - 1);
    if (col == d->leftCol)
        return;
    d->leftCol = col;
    ++d->revision;
    if (d->bulkDepth > 0)
        d->bulkPending = true;
    else
        Q_EMIT leftColChanged(col);
}

// -- Heights, widths, alignment -----------------------------------------------------------------------------------

int FlexGrid::rowHeight(int row) const
{
    d->body.checkRow(row);
    return d->body.heights.at(row);
}

void FlexGrid::setRowHeight(int row, int twips)
{
    d->body.checkRow(row);
    twips = std::max(twips, 0);
    if (d->body.heights.at(row) == twips)
        return;
    d->body.heights[row] = twips;
    d->layoutChanged();
}

void FlexGrid::setAllRowHeights(int twips)
{
    d->body.heights.fill(std::max(twips, 0));
    d->layoutChanged();
}

int FlexGrid::defaultRowHeight() const
{
    return d->defaultRowHeight;
}

void FlexGrid::setDefaultRowHeight(int twips)
{
    d->defaultRowHeight = std::max(twips, 0);
}

int FlexGrid::colWidth(int col) const
{
    d->body.checkCol(col);
    return d->widths.at(col);
}

void FlexGrid::setColWidth(int col, int twips)
{
    d->body.checkCol(col);
    twips = std::max(twips, 0);
    if (d->widths.at(col) == twips)
        return;
    d->widths[col] = twips;
    d->layoutChanged();
}

int FlexGrid::colAlignment(int col) const
{
    d->body.checkCol(col);
    return d->alignments.at(col);
}

void FlexGrid::setColAlignment(int col, int alignment)
{
    d->body.checkCol(col);
    if (d->alignments.at(col) == alignment)
        return;
    d->alignments[col] = alignment;
    d->layoutChanged();
    d->cellsChanged(0, col, rows() - 1, col);
}

// -- Looks --------------------------------------------------------------------------------------------------------

size_t LookTable::Hash::operator()(const CellFormat& look) const
{
    return qHashMulti(size_t(0), static_cast<quint32>(look.foreColor), static_cast<quint32>(look.backColor),
                      look.fontName, look.fontSize, look.bold, look.italic, look.underline, look.strikeThrough);
}

quint32 LookTable::numberOf(const CellFormat& look)
{
    if (look == m_looks.front())
        return 0;
    const auto [at, added] = m_numbers.try_emplace(look, static_cast<quint32>(m_looks.size()));
    if (added)
        m_looks.push_back(look);
    return at->second;
}

quint32 Body::lookAt(int atRow, int atCol) const
{
    const RowPtr& cells = rows.at(atRow);
    return cells && static_cast<size_t>(atCol) < cells->looks.size() ? cells->looks[static_cast<size_t>(atCol)] : 0;
}

FlexGrid::Area FlexGrid::Private::target() const
{
    if (fillStyle == FillStyle::Repeat)
        return q.selection();
    return {body.row, body.col, body.row, body.col};
}

template <typename Change> void FlexGrid::Private::changeLook(const Area& area, Change change)
{
    body.checkCell(area.bottom, area.right);
    // A selection holds few looks, mostly one: the last one met saves the way through the table.
    quint32 lastNumber = body.lookAt(area.top, area.left);
    const auto changed = [&](quint32 number) {
        CellFormat look = (*body.looks)[number];
        change(look);
        return body.looks->numberOf(look);
    };
    quint32 lastChanged = changed(lastNumber);
    bool any = false;
    for (int row = area.top; row <= area.bottom; ++row) {
        for (int col = area.left; col <= area.right; ++col) {
            const quint32 number = body.lookAt(row, col);
            if (number != lastNumber) {
                lastNumber = number;
                lastChanged = changed(number);
            }
            if (lastChanged == number)
                continue;
            std::vector<quint32>& looks = writable(row).looks;
            if (looks.size() <= static_cast<size_t>(col))
                looks.resize(static_cast<size_t>(area.right) + 1);
            looks[static_cast<size_t>(col)] = lastChanged;
            any = true;
        }
    }
    if (!any)
        return;
    mayHaveLooks = true;
    cellsChanged(area.top, area.left, area.bottom, area.right);
}

const CellFormat& FlexGrid::Private::cursorLook() const
{
    return q.cellFormat(body.row, body.col);
}

FlexGrid::FillStyle FlexGrid::fillStyle() const
{
    return d->fillStyle;
}

void FlexGrid::setFillStyle(FillStyle style)
{
    d->fillStyle = style;
}

const CellFormat& FlexGrid::cellFormat(int row, int col) const
{
    d->body.checkCell(row, col);
    return (*d->body.looks)[d->body.lookAt(row, col)];
}

void FlexGrid::setCellFormat(int row, int col, const CellFormat& format)
{
    d->body.checkCell(row, col);
    d->changeLook({row, col, row, col}, [&](CellFormat& look) { look = format; });
}

Rgb FlexGrid::cellForeColor() const
{
    return d->cursorLook().foreColor;
}

Rgb FlexGrid::cellBackColor() const
{
    return d->cursorLook().backColor;
}

QString FlexGrid::cellFontName() const
{
    const QString& name = d->cursorLook().fontName;
    return name.isEmpty() ? d->fontName : name;
}

double FlexGrid::cellFontSize() const
{
    const double points = d->cursorLook().fontSize;
    return points > 0 ? points : d->fontSize;
}

bool FlexGrid::cellFontBold() const
{
    return d->cursorLook().bold;
}

bool FlexGrid::cellFontItalic() const
{
    return d->cursorLook().italic;
}

bool FlexGrid::cellFontUnderline() const
{
    return d->cursorLook().underline;
}

bool FlexGrid::cellFontStrikeThrough() const
{
    return d->cursorLook().strikeThrough;
}

void FlexGrid::setCellForeColor(Rgb color)
{
    d->changeLook(d->target(), [=](CellFormat& look) { look.foreColor = color; });
}

void FlexGrid::setCellBackColor(Rgb color)
{
    d->changeLook(d->target(), [=](CellFormat& look) { look.backColor = color; });
}

void FlexGrid::setCellFontName(const QString& name)
{
    d->changeLook(d->target(), [&](CellFormat& look) { look.fontName = name; });
}

void FlexGrid::setCellFontSize(double points)
{
    d->changeLook(d->target(), [=](CellFormat& look) { look.fontSize = points > 0 ? points : 0.0; });
}

void FlexGrid::setCellFontBold(bool on)
{
    d->changeLook(d->target(), [=](CellFormat& look) { look.bold = on; });
}

void FlexGrid::setCellFontItalic(bool on)
{
    d->changeLook(d->target(), [=](CellFormat& look) { look.italic = on; });
}

void FlexGrid::setCellFontUnderline(bool on)
{
    d->changeLook(d->target(), [=](CellFormat& look) { look.underline = on; });
}

void FlexGrid::setCellFontStrikeThrough(bool on)
{
    d->changeLook(d->target(), [=](CellFormat& look) { look.strikeThrough = on; });
}

QString FlexGrid::fontName() const
{
    return d->fontName;
}

double FlexGrid::fontSize() const
{
    return d->fontSize;
}

void FlexGrid::setFont(const QString& name, double points)
{
    if (name == d->fontName && points == d->fontSize)
        return;
    d->fontName = name;
    d->fontSize = points;
    d->layoutChanged();
    d->cellsChanged(0, 0, rows() - 1, cols() - 1);
}

const GridColors& FlexGrid::colors() const
{
    return d->colors;
}

void FlexGrid::setColors(const GridColors& colors)
{
    if (colors == d->colors)
        return;
    d->colors = colors;
    d->layoutChanged();
}

bool FlexGrid::gridLines() const
{
    return d->gridLines;
}

void FlexGrid::setGridLines(bool on)
{
    if (on == d->gridLines)
        return;
    d->gridLines = on;
    d->layoutChanged();
}

bool FlexGrid::hasCellFormats() const
{
    if (!d->mayHaveLooks)
        return false;
    for (const RowPtr& cells : std::as_const(d->body.rows))
        if (cells && std::any_of(cells->looks.begin(), cells->looks.end(), [](quint32 number) { return number; }))
            return true;
    d->mayHaveLooks = false;
    return false;
}

} // namespace kalvo
