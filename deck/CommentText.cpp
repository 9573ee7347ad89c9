// SPDX-License-Identifier: GPL-3.0-or-later
#include "deck/CommentText.h"

#include "deck/Deck.h"
#include "platform/text.h"

namespace kalvo {

using namespace deck_layout;

namespace {

bool hasStationName(const QString& id)
{
    return id == u"KK";
}

} // namespace

int firstTextColumn(const QString& id)
{
    return hasStationName(id) ? 3 : 2;
}

int firstCardColumn(const QString& id)
{
    return hasStationName(id) ? 9 : 3;
}

int longestCommentText(const QString& id)
{
    constexpr int kCardLength = 80;
    return kCardLength + 1 - firstCardColumn(id);
}

QString commentText(const FlexGrid& grid, int row)
{
    return grid.rowTexts(row, firstTextColumn(grid.textMatrix(row, kIdColumn))).join(QString());
}

QStringList commentCells(const QString& id, const QString& text)
{
    QStringList cells;
    qsizetype position = 1;
    for (int column = firstTextColumn(id); column <= kLastColumn; ++column) {
        cells << Mid(text, position, fieldWidth(column));
        position += fieldWidth(column);
    }
    return cells;
}

} // namespace kalvo
