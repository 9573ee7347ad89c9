// SPDX-License-Identifier: GPL-3.0-or-later
#include "deck/RowCommands.h"

#include "platform/text.h"

#include <algorithm>
#include <exception>

namespace kalvo {

using namespace deck_layout;

namespace {

bool hasText(const FlexGrid& grid, int row)
{
    const QStringList texts = grid.rowTexts(row, kIdColumn);
    return std::any_of(texts.begin(), texts.end(), [](const QString& text) { return !Trim(text).isEmpty(); });
}

} // namespace

RowCommands::RowCommands(const EditContext& context)
    : m_context(context), m_deck(context.deck), m_grid(context.deck.Grid1)
{
    Commands& commands = m_context.commands;
    for (const char* name : {"newinsertrow", "insertrow", "mnupopupinsertline"})
        commands.add(QString::fromLatin1(name), [this] { newinsertrow(); });
    commands.add(QStringLiteral("deleterow"), [this] { mnu_newDeleteRow(); });
    for (const char* name : {"mnu_deletelines", "mnupopupdeletelines"})
        commands.add(QString::fromLatin1(name), [this] { mnu_deletelines(); });
    commands.add(QStringLiteral("mnu_hiderows"), [this] { mnu_hiderows(); });
    commands.add(QStringLiteral("unhide"), [this] { unhide(); });
    commands.add(QStringLiteral("trimtozz"), [this] { trimtozz(); });
}

int RowCommands::cursorRow() const
{
    return std::max(m_grid.row(), 1);
}

// -- Heights ---------------------------------------------------------------------------------------------------------

void RowCommands::GETRowHS()
{
    m_heights.resize(static_cast<size_t>(m_grid.rows()));
    for (int row = 0; row < m_grid.rows(); ++row)
        m_heights[static_cast<size_t>(row)] = m_grid.rowHeight(row);
}

int RowCommands::savedHeight(int row) const
{
    const auto place = static_cast<size_t>(row);
    return row >= 0 && place < m_heights.size() ? m_heights[place] : kRowHeight;
}

void RowCommands::setHeight(int row, int twips)
{
    if (m_grid.rowHeight(row) != twips)
        m_grid.setRowHeight(row, twips);
}

void RowCommands::SETRowHS(int row, int count)
{
    const FlexGrid::Bulk bulk(m_grid);
    const int rows = m_grid.rows();
    for (int above = 1; above < std::min(row, rows); ++above)
        setHeight(above, savedHeight(above));
    for (int below = std::max(row, 1) + count; below < rows; ++below)
        setHeight(below, savedHeight(below - count));
}

void RowCommands::SetDelRowHS(int row, int count)
{
    const FlexGrid::Bulk bulk(m_grid);
    for (int at = 1; at < m_grid.rows(); ++at)
        setHeight(at, savedHeight(at < row ? at : at + count));
}

// -- Inserting -------------------------------------------------------------------------------------------------------

void RowCommands::newinsertrow()
{
    m_context.undo.undo_add();
    const Deck::BulkWork work(m_deck);
    GETRowHS();
    const int row = cursorRow();
    const int col = m_grid.col();
    m_grid.insertRow(row);
    SETRowHS(row, 1);
    // A row that nobody sees is not what was asked for, though the one that stood here may have been hidden.
    setHeight(row, isVisibleHeight(savedHeight(row)) ? savedHeight(row) : kRowHeight);
    m_grid.setCursor(row, col);
    m_deck.newlines();
    if (m_deck.kkGroupsShown) {
        m_context.followKKGroups();
        m_context.runIfThere("hiliteKK");
    }
    m_context.editing.showField();
}

/// Each new row takes the height of the row `count` above it, but it is never hidden: cards that were pasted unseen
/// would go to HEC-1 unread.
void RowCommands::insertEmptyRows(int row, int count)
{
    GETRowHS();
    m_grid.insertRow(row, count);
    SETRowHS(row, count);
    for (int at = row; at < row + count; ++at) {
        const int stood = savedHeight(at);
        const int height = at > count && isVisibleHeight(stood) ? savedHeight(at - count) : stood;
        setHeight(at, isVisibleHeight(height) ? height : kRowHeight);
    }
}

bool RowCommands::MULTI_INSERT(int count)
{
    try {
        const Deck::BulkWork work(m_deck);
        const int row = cursorRow();
        const int col = m_grid.col();
        insertEmptyRows(row, count);
        m_grid.setCursor(row, col);
        m_deck.newlines();
        m_context.undo.NewUndoAdd();
        return true;
    } catch (const std::exception& failure) {
        m_context.services.dialogs.tell(QString::fromUtf8(failure.what()) +
                                        QStringLiteral(" - Probably Can't Do this Operation:"));
        return false;
    }
}

void RowCommands::newMulti_Insert(int count)
{
    m_context.undo.NewUndoAdd();
    const Deck::BulkWork work(m_deck);
    const int row = cursorRow();
    const int col = m_grid.col();
    const int rows = m_grid.rows();
    const int inserted = std::clamp(count, 0, rows - row);
    int lost = 0;
    for (int at = rows - inserted; at < rows; ++at)
        lost += hasText(m_grid, at) ? 1 : 0;
    GETRowHS();
    m_grid.insertRow(row, inserted);
    m_grid.setRows(rows);
    SETRowHS(rows, 0);
    m_grid.setCursor(row, col);
    m_deck.newlines();
    QStringList told;
    if (lost > 0)
        told << QStringLiteral("%1 at the end of the grid had no room any more").arg(counted(lost, "card"));
    if (const int hidden = m_context.hiddenRows(row, row + inserted - 1))
        told << QStringLiteral("%1 of the new rows are hidden").arg(hidden);
    m_context.tell(told);
}

// -- Deleting --------------------------------------------------------------------------------------------------------

void RowCommands::mnu_newDeleteRow()
{
    const int rows = m_grid.rows();
    if (rows - 1 < 2)
        return;
    m_context.undo.NewUndoAdd();
    {
        const Deck::BulkWork work(m_deck);
        const int row = cursorRow();
        const int col = m_grid.col();
        const bool isLast = row == rows - 1;
        GETRowHS();
        m_grid.removeRow(row);
        SetDelRowHS(row, 1);
        m_grid.setCursor(isLast ? row - 1 : row, col);
        m_deck.newlines();
        m_context.followKKGroups();
        m_context.editing.showField();
    }
    Q_EMIT gridFocusWanted();
}

void RowCommands::mnu_deletelines()
{
    const auto area = m_context.selectedCards();
    if (!area)
        return;
    m_context.undo.undo_add();
    const int hidden = m_context.hiddenRows(area->top, area->bottom);
    const int count = area->bottom - area->top + 1;
    {
        const Deck::BulkWork work(m_deck);
        if (count == m_grid.rows() - 1) {
            deleteAllCards();
        } else {
            const bool toTheEnd = area->bottom == m_grid.rows() - 1;
            const int col = toTheEnd ? std::max(m_grid.col(), kIdColumn) : kIdColumn;
            GETRowHS();
            m_grid.removeRow(area->top, count);
            SetDelRowHS(area->top, count);
            const int row = std::min(area->top, m_grid.rows() - 1);
            m_grid.select(row, col, row, kIdColumn);
        }
        m_deck.newlines();
        m_context.followKKGroups();
        m_context.editing.showField();
    }
    m_context.showPasteStates();
    if (hidden > 0)
        m_context.tell({QStringLiteral("%1 deleted, %2 of them hidden").arg(counted(count, "row")).arg(hidden)});
}

void RowCommands::deleteAllCards()
{
    const int rows = m_grid.rows();
    m_grid.setRows(1);
    m_grid.setRows(rows);
    for (int row = 1; row < rows; ++row)
        setHeight(row, kRowHeight);
    m_grid.setCursor(1, 1);
    m_grid.setTopRow(1);
}

// -- Hiding ----------------------------------------------------------------------------------------------------------

void RowCommands::mnu_hiderows()
{
    const auto area = m_context.selectedCards();
    if (!area)
        return;
    try {
        hide(*area);
    } catch (const std::exception& failure) {
        m_context.services.dialogs.tell(QString::fromUtf8(failure.what()) +
                                        QStringLiteral(" - Pick with Mouse to Restart "));
    }
    m_deck.setTextbox();
}

void RowCommands::hide(const FlexGrid::Area& area)
{
    const bool downward = m_grid.rowSel() >= m_grid.row();
    const int last = m_grid.rows() - 1;
    {
        const FlexGrid::Bulk bulk(m_grid);
        for (int row = area.top; row <= area.bottom; ++row)
            m_grid.setRowHeight(row, kHiddenHeight);
    }
    int next = cursorRow();
    if (downward && area.bottom < last)
        next = area.bottom + 1;
    else if (!downward && next > 1)
        --next;
    while (next < last && m_deck.isHiddenRow(next))
        ++next;
    // The cell is left and entered as by a key: the status bar tells the new one, and the deck may grow.
    m_grid.setRow(next);
}

void RowCommands::unhide()
{
    const Deck::BulkWork work(m_deck);
    int model = kRowHeight;
    for (int row = 1; row < m_grid.rows(); ++row) {
        if (!m_deck.isHiddenRow(row)) {
            model = m_grid.rowHeight(row);
            break;
        }
    }
    for (int row = 0; row < m_grid.rows(); ++row)
        if (m_deck.isHiddenRow(row))
            m_grid.setRowHeight(row, model);
}

void RowCommands::trimtozz()
{
    bool lostCards = false;
    const auto listening = connect(&m_deck, &Deck::cardsDropped, this, [&lostCards] { lostCards = true; });
    const int dropped = m_deck.trimtozz();
    disconnect(listening);
    if (lostCards)
        m_deck.noteChange();
    if (dropped >= 0)
        m_context.editing.showField();
}

} // namespace kalvo
