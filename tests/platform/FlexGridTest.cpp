// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/FlexGrid.h"
#include "tests/support/GridText.h"

#include <gtest/gtest.h>

#include <array>
#include <functional>
#include <stdexcept>

using namespace kalvo;

namespace {

bool operator==(const FlexGrid::Area& area, const std::array<int, 4>& sides)
{
    return area == FlexGrid::Area{sides[0], sides[1], sides[2], sides[3]};
}

/// Notes the signals of a grid as short words, in order.
struct Listener
{
    explicit Listener(FlexGrid& grid)
    {
        const auto note = [this](const QString& word) { return [this, word] { heard.append(word); }; };
        QObject::connect(&grid, &FlexGrid::leavingCell, &grid, [this, &grid] {
            heard.append(QStringLiteral("leaving %1,%2").arg(grid.row()).arg(grid.col()));
        });
        QObject::connect(&grid, &FlexGrid::enteredCell, &grid, [this, &grid] {
            heard.append(QStringLiteral("entered %1,%2").arg(grid.row()).arg(grid.col()));
        });
        QObject::connect(&grid, &FlexGrid::selectionChanged, &grid, note("selection"));
        QObject::connect(&grid, &FlexGrid::layoutChanged, &grid, note("layout"));
        QObject::connect(&grid, &FlexGrid::bulkChanged, &grid, note("bulk"));
        QObject::connect(&grid, &FlexGrid::topRowChanged, &grid, note("top"));
        QObject::connect(&grid, &FlexGrid::cellsChanged, &grid, [this](int top, int left, int bottom, int right) {
            heard.append(QStringLiteral("cells %1,%2-%3,%4").arg(top).arg(left).arg(bottom).arg(right));
        });
    }
    std::string take()
    {
        const std::string all = heard.join(QStringLiteral("; ")).toStdString();
        heard.clear();
        return all;
    }
    QStringList heard;
};

} // namespace

// -- Selection and clip -------------------------------------------------------------------------------------------

struct Drag
{
    const char* name;
    int row, col, rowSel, colSel;
};

class FlexGridDrag : public testing::TestWithParam<Drag>
{
};

TEST_P(FlexGridDrag, GivesTheSameAreaAndClipWhateverItsDirection)
{
    auto grid = gridOf("a|b|c|d\ne|f|g|h\ni|j|k|l\nm|n|o|p");
    const Drag& drag = GetParam();
    grid.setRow(drag.row);
    grid.setCol(drag.col);
    grid.setRowSel(drag.rowSel);
    grid.setColSel(drag.colSel);
    EXPECT_TRUE(grid.selection() == (std::array{1, 1, 2, 3}));
    EXPECT_EQ(grid.clip(), "f\tg\th\rj\tk\tl");

    grid.setClip(u"1\t2\t3\r4\t5\t6");
    EXPECT_EQ(gridText(grid), "a|b|c|d\ne|1|2|3\ni|4|5|6\nm|n|o|p");

    grid.setFillStyle(FlexGrid::FillStyle::Repeat);
    grid.setText("x");
    EXPECT_EQ(gridText(grid), "a|b|c|d\ne|x|x|x\ni|x|x|x\nm|n|o|p");
    EXPECT_EQ(grid.row(), drag.row);
    EXPECT_EQ(grid.colSel(), drag.colSel);
}

INSTANTIATE_TEST_SUITE_P(, FlexGridDrag,
                         testing::Values(Drag{"DownRight", 1, 1, 2, 3}, Drag{"UpLeft", 2, 3, 1, 1},
                                         Drag{"DownLeft", 1, 3, 2, 1}, Drag{"UpRight", 2, 1, 1, 3}),
                         [](const auto& row) { return row.param.name; });

struct Paste
{
    const char* name;
    const char* text;
    const char* after;
};

class FlexGridPaste : public testing::TestWithParam<Paste>
{
};

TEST_P(FlexGridPaste, StaysInTheSelectionAndKeepsWhatItDoesNotReach)
{
    auto grid = gridOf("a|b|c\nd|e|f\ng|h|i");
    grid.select(1, 1, 0, 0);
    grid.setClip(QString::fromUtf8(GetParam().text));
    EXPECT_EQ(gridText(grid), GetParam().after);
}

INSTANTIATE_TEST_SUITE_P(, FlexGridPaste,
                         testing::Values(Paste{"Whole", "1\t2\r3\t4", "1|2|c\n3|4|f\ng|h|i"},
                                         Paste{"Ragged", "1\t2\r3", "1|2|c\n3|e|f\ng|h|i"},
                                         Paste{"TooWide", "1\t2\t3\t4\r5", "1|2|c\n5|e|f\ng|h|i"},
                                         Paste{"TooLong", "1\r2\r3\r4", "1|b|c\n2|e|f\ng|h|i"},
                                         Paste{"EmptyCells", "\t2\r\t", "|2|c\n||f\ng|h|i"},
                                         Paste{"EmptyRowBetween", "\r5\t6", "|b|c\n5|6|f\ng|h|i"},
                                         Paste{"CrAtTheEnd", "1\t2\r", "1|2|c\n|e|f\ng|h|i"},
                                         Paste{"Empty", "", "|b|c\nd|e|f\ng|h|i"}),
                         [](const auto& row) { return row.param.name; });

TEST(FlexGrid, ClipOfTheWholeGridComesBackWithEveryEmptyCell)
{
    auto grid = gridOf("KK|SUB1|\n||\nBA||2.5\n|| ");
    grid.select(0, 0, 3, 2);
    const QString before = grid.clip();
    grid.setFillStyle(FlexGrid::FillStyle::Repeat);
    grid.setText("?");
    grid.setClip(before);
    EXPECT_EQ(gridText(grid), "KK|SUB1|\n||\nBA||2.5\n|| ");
}

TEST(FlexGrid, MovingCollapsesTheSelectionAndTellsOfLeavingAheadOfEntering)
{
    auto grid = gridOf("a|b|c\nd|e|f\ng|h|i");
    grid.select(0, 0, 1, 1);
    Listener listener(grid);

    grid.setRow(2);
    EXPECT_EQ(listener.take(), "leaving 0,0; selection; entered 2,0");
    EXPECT_TRUE(grid.selection() == (std::array{2, 0, 2, 0}));
    grid.setCursor(0, 2);
    EXPECT_EQ(listener.take(), "leaving 2,0; selection; entered 0,2");
    grid.setColSel(0);
    EXPECT_EQ(listener.take(), "selection");
    grid.setRow(0); // stays, but collapses
    EXPECT_EQ(listener.take(), "selection");
    EXPECT_EQ(grid.colSel(), 2);
    grid.setCol(2);
    EXPECT_EQ(listener.take(), "");
}

TEST(FlexGrid, WhatIsStoredOnLeavingGoesToTheOldCell)
{
    auto grid = gridOf("a|b\nc|d");
    QObject::connect(&grid, &FlexGrid::leavingCell, &grid, [&grid] { grid.setText("typed"); });
    grid.setCursor(1, 1);
    EXPECT_EQ(gridText(grid), "typed|b\nc|d");
}

TEST(FlexGrid, RowsTakenAwayOnLeavingAreNotEntered)
{
    auto grid = gridOf("a\nb\nc\nd");
    QObject::connect(&grid, &FlexGrid::leavingCell, &grid, [&grid] { grid.setRows(2); });
    EXPECT_THROW(grid.setRow(3), std::out_of_range);
    EXPECT_EQ(grid.row(), 0);
}

// -- Size ---------------------------------------------------------------------------------------------------------

TEST(FlexGrid, RowsThatComeBackAreEmptyPlainAndOfStandardHeight)
{
    auto grid = gridOf("a|b\nc|d\ne|f");
    grid.setDefaultRowHeight(320);
    grid.setRowHeight(2, 10);
    grid.setCellFormat(2, 1, CellFormat{.backColor = rgb(255, 255, 0)});
    grid.setNumberColumn(1, 1, {1.0, 2.0}, [](double v) { return QString::number(v); });
    grid.setRows(1);
    grid.setCols(1);
    grid.setRows(3);
    grid.setCols(2);
    EXPECT_EQ(gridText(grid), "a|\n|\n|");
    EXPECT_EQ(grid.rowHeight(2), 320);
    EXPECT_EQ(grid.colWidth(1), FlexGrid::kStandardColWidth);
    EXPECT_FALSE(grid.hasCellFormats());
}

TEST(FlexGrid, CursorOutsideMovesToTheLastRowWithItsSignals)
{
    auto grid = gridOf("a|b\nc|d\ne|f\ng|h");
    grid.select(3, 1, 1, 0);
    grid.setTopRow(3);
    Listener listener(grid);
    grid.setRows(3);
    EXPECT_EQ(listener.take(), "leaving 3,1; layout; top; selection; entered 2,1");
    EXPECT_TRUE(grid.selection() == (std::array{1, 0, 2, 1}));
    grid.setCursor(1, 1);
    listener.take();
    grid.setRowSel(2);
    grid.removeRow(2);
    EXPECT_EQ(grid.rowSel(), 1);
    EXPECT_EQ(listener.take(), "selection; layout; top; selection");
    grid.setRows(0);
    EXPECT_EQ(grid.row(), 0);
    EXPECT_THROW(grid.text(), std::out_of_range);
    grid.setRows(2);
    EXPECT_EQ(grid.text(), "");
}

TEST(FlexGrid, InsertedAndRemovedRowsTakeHeightsLooksAndNumbersAlong)
{
    auto grid = gridOf("h|n\na|\nb|\nc|");
    grid.setNumberColumn(1, 1, {1, 2, 3}, [](double v) { return QString::number(v); });
    grid.setRowHeight(2, 500);
    grid.setCellFormat(2, 0, CellFormat{.bold = true});

    grid.insertRow(2);
    EXPECT_EQ(gridText(grid), "h|n\na|1\n|\nb|2\nc|3");
    EXPECT_EQ(grid.rowHeight(3), 500);
    EXPECT_TRUE(grid.cellFormat(3, 0).bold);
    EXPECT_FALSE(grid.cellFormat(2, 0).bold);
    grid.insertRow(0, 2);
    EXPECT_EQ(gridText(grid), "|\n|\nh|n\na|1\n|\nb|2\nc|3");
    grid.removeRow(1, 3);
    EXPECT_EQ(gridText(grid), "|\n|\nb|2\nc|3");
    grid.insertRow(4);
    grid.setTextMatrix(0, 1, "above");
    EXPECT_TRUE(grid.isNumberColumn(1));
    EXPECT_EQ(gridText(grid), "|above\n|\nb|2\nc|3\n|");
    EXPECT_EQ(grid.number(3, 1), 3.0);
    EXPECT_EQ(grid.rowHeight(2), 500);
}

TEST(FlexGrid, RowTextsGoInAndOutWholeAndAreCutAtTheLastColumn)
{
    auto grid = gridOf("1|2|3|4\na|b|c|d");
    grid.setRowTexts(1, 1, {"x", "", "z", "lost"});
    EXPECT_EQ(gridText(grid), "1|2|3|4\na|x||z");
    EXPECT_EQ(grid.rowTexts(1, 2), (QStringList{"", "z"}));
    EXPECT_EQ(grid.rowTexts(1, 4), QStringList());
    grid.setRows(3);
    grid.setRowTexts(2, 2, {"new", ""});
    grid.setTextMatrix(2, 3, "end");
    EXPECT_EQ(gridText(grid), "1|2|3|4\na|x||z\n||new|end");
}

// -- Looks --------------------------------------------------------------------------------------------------------

TEST(FlexGrid, LooksGoToTheCursorOrToTheSelectionAndKeepTheirOtherParts)
{
    auto grid = gridOf("a|b|c\nd|e|f\ng|h|i");
    grid.setCursor(1, 1);
    grid.setCellFontBold(true);
    grid.select(2, 2, 1, 1);
    grid.setFillStyle(FlexGrid::FillStyle::Repeat);
    grid.setCellForeColor(rgb(252, 22, 22));
    grid.setCellFontSize(12);
    EXPECT_EQ(grid.cellFormat(1, 1), (CellFormat{.foreColor = rgb(252, 22, 22), .fontSize = 12, .bold = true}));
    EXPECT_EQ(grid.cellFormat(2, 1), (CellFormat{.foreColor = rgb(252, 22, 22), .fontSize = 12}));
    EXPECT_EQ(grid.cellFormat(0, 2), CellFormat());
    grid.setCursor(0, 0);
    EXPECT_EQ(grid.cellFontSize(), 8.25);
    grid.setFont("Sans", 10);
    EXPECT_EQ(grid.cellFontSize(), 10);
    EXPECT_EQ(grid.cellFontName(), "Sans");

    EXPECT_TRUE(grid.hasCellFormats());
    grid.select(0, 0, 2, 2);
    grid.setCellForeColor(Rgb::None);
    grid.setCellFontSize(0);
    grid.setCellFontBold(false);
    EXPECT_FALSE(grid.hasCellFormats());
}

TEST(FlexGrid, ClearKeepsSizeAndWidthsAlone)
{
    auto grid = gridOf("a|b\nc|d");
    grid.setRowHeight(1, 400);
    grid.setColWidth(1, 1234);
    grid.setCellFontItalic(true);
    grid.setNumberColumn(1, 0, {1.0}, [](double) { return QStringLiteral("n"); });
    grid.clear();
    EXPECT_EQ(gridText(grid), "|\n|");
    EXPECT_FALSE(grid.hasCellFormats());
    EXPECT_FALSE(grid.isNumberColumn(1));
    EXPECT_EQ(grid.rowHeight(1), 400);
    EXPECT_EQ(grid.colWidth(1), 1234);
}

// -- Bounds -------------------------------------------------------------------------------------------------------

struct Outside
{
    const char* name;
    std::function<void(FlexGrid&)> call;
};

class FlexGridOutside : public testing::TestWithParam<Outside>
{
};

TEST_P(FlexGridOutside, ThrowsAndChangesNothing)
{
    auto grid = gridOf("a|b\nc|d");
    grid.setCursor(1, 1);
    EXPECT_THROW(GetParam().call(grid), std::out_of_range);
    EXPECT_EQ(gridText(grid), "a|b\nc|d");
    EXPECT_TRUE(grid.selection() == (std::array{1, 1, 1, 1}));
}

INSTANTIATE_TEST_SUITE_P(
    , FlexGridOutside,
    testing::Values(
        Outside{"ReadBelow", [](FlexGrid& g) { g.textMatrix(2, 0); }},
        Outside{"ReadRight", [](FlexGrid& g) { g.textMatrix(0, 2); }},
        Outside{"ReadNegative", [](FlexGrid& g) { g.textMatrix(-1, 0); }},
        Outside{"Write", [](FlexGrid& g) { g.setTextMatrix(0, -1, "x"); }},
        Outside{"RowTexts", [](FlexGrid& g) { g.rowTexts(2); }},
        Outside{"RowTextsColumn", [](FlexGrid& g) { g.rowTexts(0, 3); }},
        Outside{"SetRowTexts", [](FlexGrid& g) { g.setRowTexts(2, 0, {"x"}); }},
        Outside{"Row", [](FlexGrid& g) { g.setRow(2); }}, Outside{"Col", [](FlexGrid& g) { g.setCol(-1); }},
        Outside{"RowSel", [](FlexGrid& g) { g.setRowSel(2); }}, Outside{"ColSel", [](FlexGrid& g) { g.setColSel(2); }},
        Outside{"Select", [](FlexGrid& g) { g.select(0, 0, 0, 2); }},
        Outside{"TopRow", [](FlexGrid& g) { g.setTopRow(2); }},
        Outside{"LeftCol", [](FlexGrid& g) { g.setLeftCol(2); }},
        Outside{"Height", [](FlexGrid& g) { g.rowHeight(2); }},
        Outside{"SetHeight", [](FlexGrid& g) { g.setRowHeight(-1, 1); }},
        Outside{"Width", [](FlexGrid& g) { g.setColWidth(2, 1); }},
        Outside{"Alignment", [](FlexGrid& g) { g.setColAlignment(2, 1); }},
        Outside{"Look", [](FlexGrid& g) { g.cellFormat(0, 2); }},
        Outside{"SetLook", [](FlexGrid& g) { g.setCellFormat(2, 0, {}); }},
        Outside{"Rows", [](FlexGrid& g) { g.setRows(-1); }}, Outside{"Cols", [](FlexGrid& g) { g.setCols(-1); }},
        Outside{"FixedRows", [](FlexGrid& g) { g.setFixedRows(3); }},
        Outside{"FixedCols", [](FlexGrid& g) { g.setFixedCols(-1); }},
        Outside{"Insert", [](FlexGrid& g) { g.insertRow(3); }}, Outside{"Remove", [](FlexGrid& g) { g.removeRow(2); }},
        Outside{"RemoveMore", [](FlexGrid& g) { g.removeRow(1, 2); }},
        Outside{"NumbersColumn", [](FlexGrid& g) { g.setNumberColumn(2, 0, {}, [](double) { return QString(); }); }},
        Outside{"NumbersTooMany",
                [](FlexGrid& g) {
                    g.setNumberColumn(0, 1, {1, 2}, [](double) { return QString(); });
                }},
        Outside{"Number", [](FlexGrid& g) { g.number(2, 0); }}),
    [](const auto& row) { return row.param.name; });

// -- Signals and bulks --------------------------------------------------------------------------------------------

TEST(FlexGrid, TellsOnceForACallAndNotAtAllWhereNothingChanges)
{
    auto grid = gridOf("a|b\nc|d");
    Listener listener(grid);
    grid.setTextMatrix(1, 0, "x");
    EXPECT_EQ(listener.take(), "cells 1,0-1,0");
    grid.setTextMatrix(1, 0, "x");
    grid.setRowTexts(1, 0, {"x", "d"});
    grid.setRowHeight(1, grid.rowHeight(1));
    grid.setCellFontBold(false);
    EXPECT_EQ(listener.take(), "");
    grid.select(0, 0, 1, 1);
    listener.take();
    grid.setFillStyle(FlexGrid::FillStyle::Repeat);
    grid.setCellBackColor(rgb(1, 2, 3));
    EXPECT_EQ(listener.take(), "cells 0,0-1,1");
}

TEST(FlexGridBulk, TellsOnceAtTheEndOfANestAlsoWhenTheWorkThrows)
{
    auto grid = gridOf("a|b\nc|d");
    Listener listener(grid);
    const auto work = [&grid] {
        const FlexGrid::Bulk outer(grid);
        grid.setTextMatrix(0, 0, "1");
        {
            const FlexGrid::Bulk inner(grid);
            grid.setRows(5);
            grid.setRowHeight(3, 10);
        }
        grid.setTopRow(2);
        grid.setTextMatrix(7, 0, "nowhere");
    };
    EXPECT_THROW(work(), std::out_of_range);
    EXPECT_EQ(listener.take(), "bulk");
    EXPECT_EQ(grid.rows(), 5);
    grid.setTextMatrix(0, 0, "2"); // the guard is gone
    EXPECT_EQ(listener.take(), "cells 0,0-0,0");
}

TEST(FlexGridBulk, SaysNothingWhenNothingChangedButLetsCellsBeLeftAndEntered)
{
    auto grid = gridOf("a|b\nc|d");
    Listener listener(grid);
    {
        const FlexGrid::Bulk bulk(grid);
        grid.setTextMatrix(0, 0, "a");
    }
    EXPECT_EQ(listener.take(), "");
    const quint64 before = grid.revision();
    {
        const FlexGrid::Bulk bulk(grid);
        grid.setRow(1);
        EXPECT_GT(grid.revision(), before);
    }
    EXPECT_EQ(listener.take(), "leaving 0,0; entered 1,0; bulk");
}
