// SPDX-License-Identifier: GPL-3.0-or-later
// The field layout of a card as a ruler over the grid shows it: what each column of the current row is called.
#pragma once

#include <QList>
#include <QString>

namespace kalvo {

class Catalogue;
class Deck;

struct CardRuler
{
    /// One word over one or more neighbouring columns of the grid (1 the ID, 2 to 11 the fields).
    struct Span
    {
        int left = 1;
        int right = 1;
        QString text = {};   ///< empty: the card has nothing in this field
        bool isNote = false; ///< says what the row is, instead of naming a field
        bool operator==(const Span&) const = default;
    };

    QString id = {};
    QList<Span> spans = {}; ///< from left to right over columns 1 to 11, without a gap

    const Span& spanAt(int column) const;
};

/// @param cardsAhead cards of the same ID just above: a series that goes on over several cards counts its values on.
CardRuler cardRuler(const Catalogue& catalogue, const QString& id, int cardsAhead);

/// How many cards of this ID stand directly above a row, comments between them left out. Counts no further than a
/// series can be long.
int cardsAhead(const Deck& deck, int row, const QString& id);

/// What a column means, with its unit: the card itself for the ID and for columns without a variable of their own.
QString rulerTip(const Catalogue& catalogue, const CardRuler& ruler, int column);

} // namespace kalvo
