// SPDX-License-Identifier: GPL-3.0-or-later
#include "deck/AuditCommands.h"

#include <exception>

namespace kalvo {

AuditCommands::AuditCommands(const EditContext& context) : m_context(context)
{
    context.commands.add(QStringLiteral("auditdata"), [this] { auditdata(); });
}

void AuditCommands::auditdata()
{
    try {
        runAudit();
    } catch (const std::exception& failure) {
        m_context.services.dialogs.tell(QString::fromUtf8(failure.what()));
    }
}

void AuditCommands::runAudit()
{
    Deck& deck = m_context.deck;
    QStringList remarks;
    {
        const UndoCommands::Suppress noLevel(m_context.undo);
        const auto dropped =
            connect(&deck, &Deck::cardsDropped, this, [&] { remarks << m_context.panels.text(StatusPanels::kPanels); });
        deck.trimtozz();
        disconnect(dropped);
        if (!remarks.isEmpty())
            deck.noteChange(); // the file still holds the cards that went
        // Every finding names its card by the number in column 0.
        deck.newlines();
    }
    m_result = auditDeck(deck.Grid1);
    if (m_result.end != AuditResult::End::Complete) {
        // A list that still stands open must not show what an earlier audit found.
        m_context.screens.repaint(m_context.screenName("Form2"));
        if (m_result.end == AuditResult::End::TooManyRows)
            m_context.services.dialogs.tell(QStringLiteral("Too many Data Rows Missing Data to continue!"));
        return;
    }
    numKKCards = m_result.numKKCards;
    resetCursor();
    m_context.tell(remarks + auditRemarks(deck.Grid1));
    m_context.screens.repaint(m_context.screenName("Form2"));
    m_context.screens.show(m_context.screenName("Form2"));
}

void AuditCommands::resetCursor()
{
    {
        const Deck::BulkWork work(m_context.deck);
        m_context.grid().setCursor(1, 1);
        m_context.grid().setTopRow(1);
    }
    m_context.editing.showField(); // the cell was not entered, so nobody has told it
}

void AuditCommands::showFinding(int index)
{
    if (index < 0 || static_cast<size_t>(index) >= m_result.findings.size())
        return;
    const AuditFinding& finding = m_result.findings[static_cast<size_t>(index)];
    const int row = rowOfFinding(m_context.grid(), m_result, finding);
    if (row == 0) {
        if (finding.row > 0)
            m_context.tell({QStringLiteral("That row is no longer in the deck")});
        return;
    }
    m_context.deck.storeEditBox();
    m_context.grid().setCursor(row, finding.col);
    if (m_context.deck.isHiddenRow(row))
        m_context.tell({QStringLiteral("That row is hidden: Unhide All Rows (Ctrl+U) shows it")});
}

} // namespace kalvo
