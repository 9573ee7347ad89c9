// SPDX-License-Identifier: GPL-3.0-or-later
#include "deck/RecoveryOffer.h"

#include "deck/DeckFile.h"

namespace kalvo {

namespace {

bool wants(Services& services, const KeptDeck& deck, const QString& otherwise)
{
    const QString when =
        deck.kept.isValid() ? deck.kept.toString(QStringLiteral("yyyy-MM-dd HH:mm")) : QStringLiteral("an unknown day");
    const MessageBox box{
        QStringLiteral("The program ended before this deck was saved:\r\n%1\r\nIt was kept on %2. Open it?\r\n\r\n"
                       "Yes opens it as an unsaved deck; its file stays as it is. No keeps it as %3.")
            .arg(deck.path.isEmpty() ? QStringLiteral("a new deck without a name") : deck.path, when, otherwise),
        QStringLiteral("Recovered Deck"), Icon::Question, Buttons::YesNo, Button::Yes};
    return services.dialogs.message(box) == Button::Yes;
}

void putAside(Services& services, LeftDeck& left, const Recovery& recovery)
{
    QString why;
    if (recovery.keep(canonicalDeck(left.deck.cards), &why) && left.file->remove(&why))
        return;
    services.dialogs.warn(QStringLiteral("The deck could not be put aside: %1\r\nIt stays in %2 and will be offered "
                                         "again at the next start.")
                              .arg(why, left.file->path()));
}

} // namespace

void offerLeftDecks(Services& services, const RecoveryPages& pages)
{
    std::vector<LeftDeck> decks = leftDecks(services);
    bool isSecondTaken = !pages.second;
    size_t asked = 0;
    for (; asked < decks.size(); ++asked) {
        LeftDeck& left = decks[asked];
        const bool toFirst = pages.first.mayTake(left.deck);
        if (!toFirst && isSecondTaken)
            break;
        if (!wants(services, left.deck, pages.first.recovery().deckCopy())) {
            putAside(services, left, pages.first.recovery());
            continue;
        }
        FileCommands* page = toFirst ? &pages.first : pages.second();
        isSecondTaken = isSecondTaken || !toFirst;
        page->takeLeftDeck(std::move(left));
    }
    if (const size_t rest = decks.size() - asked; rest > 0)
        services.dialogs.tell(
            QStringLiteral("%1 more deck(s) from before will be offered at the next start.").arg(rest));
}

} // namespace kalvo
