// SPDX-License-Identifier: GPL-3.0-or-later
// A deck as a recovery copy holds it. Unlike a deck file it keeps every cell as it is, also those that do not fit their
// card columns, and knows whose deck it is.
#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QList>
#include <QString>
#include <QStringList>

#include <optional>

namespace kalvo {

class Deck;

struct KeptDeck
{
    QString path;             ///< the user's file, empty for a deck that has none
    QDateTime kept;           ///< by the clock of the program that kept it
    QList<QStringList> cards; ///< cells 1 to 11 of each row, as far as there is text
};

/// True while the edit box holds a text that the cell under it does not.
bool isHalfTyped(const Deck& deck);
/// The deck with what stands half typed in the edit box. Rows without text at the end are left out.
QList<QStringList> cardsOf(const Deck& deck);

/// UTF-8 lines with a checksum at their end.
QByteArray bytesOf(const KeptDeck& deck);
/// None for bytes that are not whole.
std::optional<KeptDeck> keptDeckOf(const QByteArray& bytes);

} // namespace kalvo
