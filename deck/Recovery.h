// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "deck/Deck.h"

#include <QObject>
#include <QString>
#include <QStringList>

namespace kalvo {

/// Keeps what would be lost without a word: the deck that differs from its file when the program ends without a save,
/// and the cards that trimtozz takes from behind the ZZ card. Both go into the program's folder as plain deck text.
class Recovery : public QObject
{
    Q_OBJECT

public:
    explicit Recovery(Deck& deck, QObject* parent = nullptr);

    QString deckCopy() const;     ///< full path of the copy of an unsaved deck
    QString droppedCards() const; ///< full path of the collection of dropped cards

    /// True when a save would write other cards than the deck's file now holds; for a deck without a file, when any
    /// cell holds text. Judged by content, for `dataSaved` does not know of a save or of a New that was cancelled.
    bool differsFromFile() const;
    /// Called when the program ends: writes the copy if the deck differs from its file. A copy that is already there is
    /// kept as NAME.bak. Does not ask and does not tell.
    /// @return false when it could not be written, with the reason in `why`.
    bool keepIfUnsaved(QString* why = nullptr) const;
    /// Writes cards as that copy, which is then kept as above.
    bool keep(const QByteArray& cards, QString* why = nullptr) const;
    /// One line for the start of the program: where the last unsaved deck is kept and since when; empty when there is
    /// none.
    QString notice() const;

private:
    void keepDropped(const QStringList& cards);

    Deck& m_deck;
};

} // namespace kalvo
