// SPDX-License-Identifier: GPL-3.0-or-later
// The free text of a card (comment, title, description behind a KK name) as one line, and back into its cells.
#pragma once

#include "platform/FlexGrid.h"

#include <QString>
#include <QStringList>

namespace kalvo {

/// First grid column of a card's text: 3 on a KK card, whose column 2 is the station's name, else 2.
int firstTextColumn(const QString& id);
/// Card column (from 1) of the text's first character: 9 on a KK card, else 3.
int firstCardColumn(const QString& id);
/// Characters that fit on the card behind that: 72 on a KK card, else 78.
int longestCommentText(const QString& id);

/// The cells of a row from its first text column on, joined as they stand.
QString commentText(const FlexGrid& grid, int row);
/// The text cut into the cells from the first text column to the last one: plain cuts of 6 (column 2) and 8 characters,
/// blanks and all; cells behind the text are empty, and what is longer than the card is left out.
QStringList commentCells(const QString& id, const QString& text);

} // namespace kalvo
