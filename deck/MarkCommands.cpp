// SPDX-License-Identifier: GPL-3.0-or-later
#include "deck/MarkCommands.h"

#include "deck/CardMarks.h"
#include "deck/CommentText.h"
#include "platform/text.h"

namespace kalvo {

using namespace deck_layout;

namespace {

constexpr int kOutputColumn = 6; ///< field 5 of a KO card

} // namespace

MarkCommands::MarkCommands(const EditContext& context) : m_context(context), m_random(std::random_device{}())
{
    Commands& commands = context.commands;
    commands.add(QStringLiteral("Commententry"), [this] { Commententry(); });
    commands.add(QStringLiteral("hiliteKK"), [this] { hiliteKK(m_context.deck); });
    commands.add(QStringLiteral("mnu_identkkgroups"), [this] { identifyKKGroups(m_context.deck, m_random); });
    commands.add(QStringLiteral("recolorKKGroups"), [this] { recolorKKGroups(m_context.deck, m_random); });
    commands.add(QStringLiteral("mnu_newidcards"),
                 [this] { m_context.screens.show(m_context.screenName("NewIDCard")); });
    commands.add(QStringLiteral("mnu_addkocard"), [this] { mnu_addkocard(); });
}

// -- Comments --------------------------------------------------------------------------------------------------------

void MarkCommands::Commententry()
{
    Deck& deck = m_context.deck;
    deck.storeEditBox();
    const int row = m_context.grid().row();
    if (row >= 1 && isTextCard(deck.id(row)))
        m_context.screens.show(m_context.screenName("editcomms"));
}

void MarkCommands::saveComment(int row, const QString& text)
{
    Deck& deck = m_context.deck;
    if (row < 1 || row >= deck.Grid1.rows())
        return;
    m_context.undo.NewUndoAdd();
    const Deck::BulkWork work(deck);
    const QString id = deck.id(row);
    deck.Grid1.setRowTexts(row, firstTextColumn(id), commentCells(id, text));
}

void MarkCommands::collapseSelection()
{
    FlexGrid& grid = m_context.grid();
    grid.select(grid.row(), grid.col(), grid.row(), grid.col());
}

// -- The KO card -----------------------------------------------------------------------------------------------------

void MarkCommands::mnu_addkocard()
{
    if (!m_context.commands.run(QStringLiteral("newinsertrow")))
        return;
    Deck& deck = m_context.deck;
    const int row = deck.Grid1.row();
    {
        const Deck::BulkWork work(deck);
        deck.Grid1.setTextMatrix(row, kIdColumn, QStringLiteral("KO"));
        deck.Grid1.setTextMatrix(row, kOutputColumn, QStringLiteral("21"));
    }
    deck.noteChange();
    m_context.editing.showField();
    m_context.tell({stationOf(row)});
}

/// The card goes above the cursor row, so that on a KK card it ends up in the group before.
QString MarkCommands::stationOf(int row) const
{
    for (int above = row - 1; above >= 1; --above)
        if (m_context.deck.id(above) == u"KK")
            return QStringLiteral("KO card added to station ") + Trim(m_context.grid().textMatrix(above, 2));
    return QStringLiteral("The KO card stands ahead of the first KK card: it belongs to no station");
}

} // namespace kalvo
