// SPDX-License-Identifier: GPL-3.0-or-later
// The size of the deck's text and what rows and columns need for it.
#pragma once

#include "deck/Deck.h"

namespace kalvo {

/// The height of every row that is not hidden becomes 27 twips for each point of its largest cell font.
void getmaxrowh(Deck& deck);
/// The width of every column becomes the largest over all its cells of points x (text width + 66) x 0.15 twips; the
/// text width is that of the main screen's own font.
void getmaxcolw(Deck& deck);

/// One point larger than the current cell's text, for the whole grid, headers too; 16 at most. Rows and columns follow.
void uptext(Deck& deck);
/// One point smaller; 7 at least.
void DOWNTEXT(Deck& deck);

} // namespace kalvo
