// SPDX-License-Identifier: GPL-3.0-or-later
#include "deck/FindReplace.h"

#include <algorithm>

namespace kalvo {

using namespace deck_layout;

namespace {

bool hasCellMark(const QString& text)
{
    return text.contains(u'\t') || text.contains(u'\r') || text.contains(u'\n');
}

} // namespace

FindReplace::FindReplace(const EditContext& context) : m_context(context)
{
    m_context.commands.add(QStringLiteral("FR_ReplaceAll"), [this] { replaceAll(); });
}

void FindReplace::setFind(const QString& text)
{
    if (text == m_find)
        return;
    m_find = text;
    m_replacement.clear();
}

void FindReplace::reset()
{
    m_find.clear();
    m_replacement.clear();
}

bool FindReplace::crossesCells() const
{
    return hasCellMark(m_find) || hasCellMark(m_replacement);
}

bool FindReplace::mayCrossCells() const
{
    const MessageBox box{QStringLiteral("The text to find or to replace by holds a TAB or a line end. These part the "
                                        "cells and rows of the selection, so that its texts may move to other "
                                        "cells.\r\n\r\nDo You Want to Continue?"),
                         QString::fromLatin1(kApplicationTitle), Icon::Warning, Buttons::OkCancel, Button::Cancel};
    return m_context.services.dialogs.message(box) == Button::Ok;
}

void FindReplace::replaceAll()
{
    const auto area = m_context.selectedCards();
    if (!area)
        return;
    if (m_find.isEmpty()) {
        m_context.tell({QStringLiteral("No text to find was given")});
        return;
    }
    if (crossesCells() && !mayCrossCells())
        return;
    m_context.undo.NewUndoAdd();
    qint64 places = 0;
    {
        const Deck::BulkWork work(m_context.deck);
        places = crossesCells() ? replaceInClip(*area) : replaceInCells(*area);
        m_context.deck.newlines();
        m_context.editing.showField();
    }
    QStringList told{counted(places, "place") + QStringLiteral(" replaced")};
    if (const int hidden = m_context.hiddenRows(area->top, area->bottom))
        told << counted(hidden, "hidden row") + QStringLiteral(" searched");
    m_context.tell(told);
}

qint64 FindReplace::replaceInCells(const FlexGrid::Area& area)
{
    FlexGrid& grid = m_context.grid();
    qint64 places = 0;
    for (int row = area.top; row <= area.bottom; ++row) {
        for (int col = area.left; col <= area.right; ++col) {
            QString text = grid.textMatrix(row, col);
            const qsizetype found = text.count(m_find);
            if (found == 0)
                continue;
            places += found;
            grid.setTextMatrix(row, col, text.replace(m_find, m_replacement));
        }
    }
    return places;
}

qint64 FindReplace::replaceInClip(const FlexGrid::Area& area)
{
    FlexGrid& grid = m_context.grid();
    const int row = grid.row();
    const int col = grid.col();
    const int rowSel = grid.rowSel();
    const int colSel = grid.colSel();
    grid.select(area.top, area.left, area.bottom, area.right);
    QString text = grid.clip();
    const qsizetype found = text.count(m_find);
    grid.setClip(text.replace(m_find, m_replacement));
    grid.select(row, col, rowSel, colSel);
    return found;
}

} // namespace kalvo
