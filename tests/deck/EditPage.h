// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "deck/Workspace.h"
#include "tests/deck/FakeEditBox.h"
#include "tests/support/GridText.h"
#include "tests/support/ScriptedServices.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace kalvo {

/// A page with all its commands and an editor, but no window.
struct EditPage : testing::Test
{
    ScriptedServices services;
    Screens screens;
    Workspace page{services, screens};
    Deck& deck = page.deck;
    FlexGrid& grid = page.deck.Grid1;
    FakeEditBox box{page.deck};

    /// Cards as "KK|SUB1\nBA|1.5", with exactly as many rows.
    void cards(const char* text)
    {
        deck.setEditorActive(false);
        grid.setRows(1);
        putCells(grid, 1, 1, text);
        deck.newlines();
        at(1, 1);
        deck.dataSaved = true;
    }
    /// Puts the cursor there without entering the cell: near its end the deck would grow under it.
    void at(int row, int col) { drag(row, col, row, col); }
    void drag(int row, int col, int rowSel, int colSel)
    {
        deck.setEditorActive(false);
        grid.select(row, col, rowSel, colSel);
        deck.setEditorActive(true);
        deck.setTextbox();
    }
    /// Columns 1 to 11 of all rows, each without the empty cells at its end.
    std::string text() const
    {
        std::string all;
        for (int row = 1; row < grid.rows(); ++row) {
            std::string line = gridText(grid, row, 1, row, grid.cols() - 1);
            line.erase(line.find_last_not_of('|') + 1);
            all += (row > 1 ? "\n" : "") + line;
        }
        return all;
    }
    std::string lineNumbers() const
    {
        std::string all;
        for (int row = 1; row < grid.rows(); ++row)
            all += (row > 1 ? "," : "") + grid.textMatrix(row, 0).toStdString();
        return all;
    }
    /// One letter a row: 'v' to be seen, 'h' hidden.
    std::string visibility() const
    {
        std::string all;
        for (int row = 1; row < grid.rows(); ++row)
            all += deck.isHiddenRow(row) ? 'h' : 'v';
        return all;
    }
    void hide(std::initializer_list<int> rows)
    {
        for (const int row : rows)
            grid.setRowHeight(row, deck_layout::kHiddenHeight);
    }
    std::string cursor() const
    {
        return std::to_string(grid.row()) + "," + std::to_string(grid.col()) + ":" + std::to_string(grid.rowSel()) +
               "," + std::to_string(grid.colSel());
    }
    std::string panel7() const { return page.panels.text(7).toStdString(); }
    bool run(const char* name) { return page.commands.run(QString::fromLatin1(name)); }
    bool enabled(const char* name) const { return page.commands.isEnabled(QString::fromLatin1(name)); }
    void undoTo(int count)
    {
        while (deck.undoCount > count)
            page.undo.NewUndo();
    }
};

} // namespace kalvo
