// SPDX-License-Identifier: GPL-3.0-or-later
// Marks in the deck, so that a long one can be read: KK cards, groups of cards, cards of one kind. Marks are looks:
// they change no card and are no edits.
#pragma once

#include "deck/Deck.h"

#include <QString>
#include <QStringList>

#include <random>
#include <vector>

namespace kalvo {

/// Rows of a KK card and of all that belongs to it, up to the row ahead of the next KK or ZZ card; both included.
struct CardGroup
{
    int first, last;
    bool operator==(const CardGroup&) const = default;
};

/// The groups from row 1 to the ZZ card; without one the last group ends with the grid.
std::vector<CardGroup> kkGroups(const FlexGrid& grid);

/// A pale colour: each part at random from 205 to 254.
Rgb groupColor(std::mt19937& random);
/// True for the colours that `groupColor` gives.
bool isGroupColor(Rgb color);

/// Red and bold: ID and station name of every KK card ahead of the ZZ card.
void hiliteKK(Deck& deck);
/// Gives every group a pale back colour of its own, other ones each time, and notes that groups are shown.
void identifyKKGroups(Deck& deck, std::mt19937& random);
/// The same after cards have moved: groups that still wear a colour keep it, new ones get one, rows that belong to no
/// group any more lose it. Text colours and fonts stay.
void recolorKKGroups(Deck& deck, std::mt19937& random);
/// Blue and bold: every card with this very ID, also behind the ZZ card.
void identifyCards(Deck& deck, const QString& id);

/// The distinct IDs of the deck, sorted by character codes; rows without one do not count.
QStringList cardIds(const FlexGrid& grid);
/// What becomes of a text typed as an ID: capitals, the first two characters.
QString cardIdAsTyped(const QString& text);

} // namespace kalvo
