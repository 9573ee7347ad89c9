// SPDX-License-Identifier: GPL-3.0-or-later
#include "deck/TextSize.h"

#include "deck/EditorPlacement.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

namespace kalvo {

using namespace deck_layout;

namespace {

constexpr double kTwipsPerPoint = 27.0;
constexpr double kColumnRoom = 66.0;
constexpr double kColumnScale = 0.15;

int wholeTwips(double twips)
{
    return static_cast<int>(std::lrint(twips));
}

double sizeOf(const FlexGrid& grid, int row, int col)
{
    const double own = grid.cellFormat(row, col).fontSize;
    return own > 0.0 ? own : grid.fontSize();
}

/// An empty column would shrink to a few pixels that nobody could type into.
void keepTypable(Deck& deck, double points)
{
    FlexGrid& grid = deck.Grid1;
    std::vector<int> fitted;
    for (int col = 0; col < grid.cols(); ++col)
        fitted.push_back(grid.colWidth(col));
    deck.Setcolwidths();
    const double scale = points / grid.fontSize();
    for (int col = 0; col < grid.cols(); ++col)
        grid.setColWidth(col, std::max(fitted[static_cast<size_t>(col)], wholeTwips(grid.colWidth(col) * scale)));
}

void setSizeOfAll(Deck& deck, double points)
{
    const Deck::BulkWork work(deck);
    FlexGrid& grid = deck.Grid1;
    const int row = grid.row();
    const int col = grid.col();
    const int rowSel = grid.rowSel();
    const int colSel = grid.colSel();
    grid.select(0, 0, grid.rows() - 1, grid.cols() - 1);
    grid.setFillStyle(FlexGrid::FillStyle::Repeat);
    grid.setCellFontSize(points);
    grid.setFillStyle(FlexGrid::FillStyle::Single);
    getmaxrowh(deck);
    getmaxcolw(deck);
    keepTypable(deck, points);
    grid.select(row, col, rowSel, colSel);
}

} // namespace

void getmaxrowh(Deck& deck)
{
    const Deck::BulkWork work(deck);
    FlexGrid& grid = deck.Grid1;
    for (int row = 0; row < grid.rows(); ++row) {
        if (deck.isHiddenRow(row))
            continue;
        double largest = 0.0;
        for (int col = 0; col < grid.cols(); ++col)
            largest = std::max(largest, sizeOf(grid, row, col));
        grid.setRowHeight(row, wholeTwips(largest * kTwipsPerPoint));
    }
}

void getmaxcolw(Deck& deck)
{
    const Deck::BulkWork work(deck);
    FlexGrid& grid = deck.Grid1;
    const TextMeasure& measure = deck.services().measure;
    std::vector<double> widest(static_cast<size_t>(grid.cols()), 0.0);
    for (int row = 0; row < grid.rows(); ++row) {
        const QStringList texts = grid.rowTexts(row);
        for (int col = 0; col < grid.cols(); ++col) {
            const double width = sizeOf(grid, row, col) * (measure.textWidth(texts[col]) + kColumnRoom) * kColumnScale;
            widest[static_cast<size_t>(col)] = std::max(widest[static_cast<size_t>(col)], width);
        }
    }
    for (int col = 0; col < grid.cols(); ++col)
        grid.setColWidth(col, wholeTwips(widest[static_cast<size_t>(col)]));
}

void uptext(Deck& deck)
{
    setSizeOfAll(deck, largerText(deck.Grid1.cellFontSize()));
}

void DOWNTEXT(Deck& deck)
{
    setSizeOfAll(deck, smallerText(deck.Grid1.cellFontSize()));
}

} // namespace kalvo
