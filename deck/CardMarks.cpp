// SPDX-License-Identifier: GPL-3.0-or-later
#include "deck/CardMarks.h"

#include "deck/EditContext.h"
#include "deck/SelectionKeeper.h"
#include "platform/text.h"

#include <QSet>

#include <algorithm>
#include <cstdlib>
#include <set>

namespace kalvo {

using namespace deck_layout;

namespace {

constexpr Rgb kKKColor = rgb(252, 22, 22);
constexpr Rgb kCardColor = rgb(22, 22, 242);
constexpr int kPalest = 254;
constexpr int kLeastPale = 205;
/// Neighbours whose colours differ by less than this, all parts together, look the same.
constexpr int kTellApart = 36;

int part(Rgb color, int shift)
{
    return static_cast<int>((static_cast<quint32>(color) >> shift) & 0xFF);
}

int difference(Rgb a, Rgb b)
{
    int sum = 0;
    for (const int shift : {16, 8, 0})
        sum += std::abs(part(a, shift) - part(b, shift));
    return sum;
}

/// A group's colour that can be told from that of the group above it.
Rgb colorBelow(Rgb above, std::mt19937& random)
{
    constexpr int kTries = 16;
    Rgb color = groupColor(random);
    for (int i = 0; i < kTries && above != Rgb::None && difference(color, above) < kTellApart; ++i)
        color = groupColor(random);
    return color;
}

void markCell(FlexGrid& grid, int row, int col, Rgb color)
{
    CellFormat look = grid.cellFormat(row, col);
    look.foreColor = color;
    look.bold = true;
    grid.setCellFormat(row, col, look);
}

void paintGroup(FlexGrid& grid, const CardGroup& group, Rgb color)
{
    grid.select(group.first, kIdColumn, group.last, grid.cols() - 1);
    grid.setCellBackColor(color);
}

/// Takes group colours off rows `first` to `last`; colours that the user has chosen stay.
void unpaint(FlexGrid& grid, int first, int last)
{
    for (int row = first; row <= last; ++row) {
        for (int col = kIdColumn; col < grid.cols(); ++col) {
            CellFormat look = grid.cellFormat(row, col);
            if (!isGroupColor(look.backColor))
                continue;
            look.backColor = Rgb::None;
            grid.setCellFormat(row, col, look);
        }
    }
}

} // namespace

std::vector<CardGroup> kkGroups(const FlexGrid& grid)
{
    std::vector<CardGroup> groups;
    bool open = false;
    const auto close = [&](int last) {
        if (open)
            groups.back().last = last;
        open = false;
    };
    for (int row = 1; row < grid.rows(); ++row) {
        const QString id = grid.textMatrix(row, kIdColumn);
        if (id != u"KK" && id != u"ZZ")
            continue;
        close(row - 1);
        if (id == u"ZZ")
            return groups;
        groups.push_back({row, row});
        open = true;
    }
    close(grid.rows() - 1);
    return groups;
}

Rgb groupColor(std::mt19937& random)
{
    std::uniform_int_distribution<int> pale(kLeastPale, kPalest);
    const int red = pale(random);
    const int green = pale(random);
    return rgb(red, green, pale(random));
}

bool isGroupColor(Rgb color)
{
    if (color == Rgb::None)
        return false;
    return std::ranges::all_of(std::initializer_list<int>{16, 8, 0}, [color](int shift) {
        return part(color, shift) >= kLeastPale && part(color, shift) <= kPalest;
    });
}

void hiliteKK(Deck& deck)
{
    const Deck::BulkWork work(deck);
    FlexGrid& grid = deck.Grid1;
    for (int row = 1; row < grid.rows(); ++row) {
        const QString id = deck.id(row);
        if (id == u"ZZ")
            break;
        if (id != u"KK")
            continue;
        markCell(grid, row, kIdColumn, kKKColor);
        markCell(grid, row, kIdColumn + 1, kKKColor);
    }
}

void identifyKKGroups(Deck& deck, std::mt19937& random)
{
    const Deck::BulkWork work(deck);
    FlexGrid& grid = deck.Grid1;
    const SelectionKeeper keeper(grid);
    const RepeatFill repeat(grid);
    const std::vector<CardGroup> groups = kkGroups(grid);
    unpaint(grid, 1, groups.empty() ? grid.rows() - 1 : groups.front().first - 1);
    Rgb above = Rgb::None;
    for (const CardGroup& group : groups)
        paintGroup(grid, group, above = colorBelow(above, random));
    if (!groups.empty())
        unpaint(grid, groups.back().last + 1, grid.rows() - 1);
    deck.kkGroupsShown = true;
}

void recolorKKGroups(Deck& deck, std::mt19937& random)
{
    const Deck::BulkWork work(deck);
    FlexGrid& grid = deck.Grid1;
    const SelectionKeeper keeper(grid);
    const RepeatFill repeat(grid);
    QSet<quint32> worn;
    int next = 1;
    Rgb above = Rgb::None;
    for (const CardGroup& group : kkGroups(grid)) {
        unpaint(grid, next, group.first - 1);
        Rgb color = grid.cellFormat(group.first, kIdColumn).backColor;
        if (!isGroupColor(color) || worn.contains(static_cast<quint32>(color)))
            color = colorBelow(above, random);
        worn.insert(static_cast<quint32>(color));
        paintGroup(grid, group, above = color);
        next = group.last + 1;
    }
    unpaint(grid, next, grid.rows() - 1);
}

void identifyCards(Deck& deck, const QString& id)
{
    if (id.isEmpty())
        return;
    const Deck::BulkWork work(deck);
    FlexGrid& grid = deck.Grid1;
    for (int row = 1; row < grid.rows(); ++row)
        if (deck.id(row) == id)
            for (int col = kIdColumn; col < grid.cols(); ++col)
                markCell(grid, row, col, kCardColor);
}

QStringList cardIds(const FlexGrid& grid)
{
    std::set<QString> ids; // QString's own order is by code
    for (int row = 1; row < grid.rows(); ++row)
        if (const QString id = grid.textMatrix(row, kIdColumn); !id.isEmpty())
            ids.insert(id);
    return {ids.begin(), ids.end()};
}

QString cardIdAsTyped(const QString& text)
{
    return Left(text, fieldWidth(kIdColumn)).toUpper();
}

} // namespace kalvo
