// SPDX-License-Identifier: GPL-3.0-or-later
// What a grid's cells cost: rows shared with snapshots, columns of numbers.
#include "platform/FlexGrid.h"
#include "tests/support/GridText.h"

#include <QFile>

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <limits>
#include <stdexcept>

using namespace kalvo;

namespace {

const FlexGrid::NumberFormatter kTwoPlaces = [](double value) { return QString::number(value, 'f', 2); };
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

int rowsSharedWith(const FlexGrid& grid, const FlexGrid::Snapshot& snapshot)
{
    int shared = 0;
    for (int row = 0; row < grid.rows(); ++row)
        shared += grid.sharesRow(snapshot, row);
    return shared;
}

/// Bytes of this process that lie in memory; 0 where the system does not tell.
qint64 residentBytes()
{
    QFile file(QStringLiteral("/proc/self/statm"));
    if (!file.open(QIODevice::ReadOnly))
        return 0;
    constexpr qint64 kPage = 4096;
    return file.readAll().split(' ').value(1).toLongLong() * kPage;
}

} // namespace

// -- Snapshots ----------------------------------------------------------------------------------------------------

TEST(FlexGridSnapshot, SharesAllRowsUntilOneIsWritten)
{
    auto grid = gridOf("a|b\nc|d\ne|f\ng|h");
    const FlexGrid::Snapshot before = grid.snapshot();
    EXPECT_EQ(rowsSharedWith(grid, before), 4);
    grid.setTextMatrix(1, 0, "c"); // what stands there already is no write
    EXPECT_EQ(rowsSharedWith(grid, before), 4);
    grid.setTextMatrix(1, 0, "x");
    EXPECT_EQ(rowsSharedWith(grid, before), 3);
    grid.setCellFormat(3, 0, CellFormat{.italic = true});
    EXPECT_EQ(rowsSharedWith(grid, before), 2);
    EXPECT_FALSE(grid.sharesRow(before, 1));
    EXPECT_FALSE(grid.sharesRow(before, 3));
    grid.insertRow(0);
    EXPECT_EQ(before.textMatrix(1, 0), "c");
    EXPECT_EQ(before.rows(), 4);
}

TEST(FlexGridSnapshot, BringsBackTextsHeightsLooksCursorAndTopRow)
{
    auto grid = gridOf("a|b\nc|d\ne|f");
    grid.setRowHeight(1, 10);
    grid.setCellFormat(2, 1, CellFormat{.backColor = rgb(9, 8, 7)});
    grid.setNumberColumn(0, 1, {1.5, 2.5}, kTwoPlaces);
    grid.select(2, 1, 1, 0);
    grid.setTopRow(1);
    const FlexGrid::Snapshot before = grid.snapshot();

    grid.clear();
    grid.setRows(9);
    grid.setCols(1);
    grid.setCursor(8, 0);
    grid.setTopRow(7);
    int told = 0;
    QObject::connect(&grid, &FlexGrid::bulkChanged, &grid, [&told] { ++told; });
    grid.restore(before);
    EXPECT_EQ(told, 1);
    EXPECT_EQ(gridText(grid), "a|b\n1.50|d\n2.50|f");
    EXPECT_EQ(grid.rowHeight(1), 10);
    EXPECT_EQ(grid.cellFormat(2, 1).backColor, rgb(9, 8, 7));
    EXPECT_TRUE(grid.hasCellFormats());
    EXPECT_EQ(grid.selection(), (FlexGrid::Area{1, 0, 2, 1}));
    EXPECT_EQ(grid.row(), 2);
    EXPECT_EQ(grid.topRow(), 1);
    EXPECT_EQ(rowsSharedWith(grid, before), 3);
    grid.restore(FlexGrid::Snapshot());
    EXPECT_EQ(grid.rows(), 3);
}

TEST(FlexGridSnapshot, KeepsItsNumbersWhenTheGridsGo)
{
    auto grid = gridOf("q|t\n|a\n|b");
    grid.setNumberColumn(0, 1, {1, 2}, kTwoPlaces);
    const FlexGrid::Snapshot before = grid.snapshot();
    grid.removeRow(1);
    EXPECT_EQ(gridText(grid), "q|t\n2.00|b");
    grid.setTextMatrix(1, 0, "text");
    EXPECT_EQ(before.textMatrix(1, 0), "1.00");
    EXPECT_EQ(before.textMatrix(2, 0), "2.00");
    EXPECT_THROW(before.textMatrix(3, 0), std::out_of_range);
    EXPECT_THROW(FlexGrid::Snapshot().textMatrix(0, 0), std::out_of_range);
}

// A deck of 5,000 cards with 200 levels of undo, a cell changed between two of them: what is kept is the changed rows
// and a pointer for each other row (8 bytes x 5,000 x 200 = 8 MB), not 200 decks (300 MB).
TEST(FlexGridSnapshot, TwoHundredLevelsOfALargeDeckCostPointersAlone)
{
    FlexGrid grid;
    grid.setCols(12);
    grid.setRows(5001);
    for (int row = 1; row <= 5000; ++row)
        grid.setRowTexts(row, 1, {"QI", "100.5", "101.5", "102.5", "103", "104", "105", "106", "107", "108", "109"});
    std::vector<FlexGrid::Snapshot> levels;
    for (int level = 0; level < 200; ++level) {
        levels.push_back(grid.snapshot());
        grid.setTextMatrix(1 + level, 2, QString::number(level));
    }
    int copied = 0;
    for (int row = 0; row <= 5000; ++row)
        copied += !grid.sharesRow(levels.front(), row);
    EXPECT_EQ(copied, 200);
    for (int level = 1; level < 200; ++level) {
        EXPECT_EQ(levels[static_cast<size_t>(level)].textMatrix(level, 2), QString::number(level - 1));
        EXPECT_EQ(levels[static_cast<size_t>(level)].textMatrix(1 + level, 2), "100.5");
    }
}

// -- Columns of numbers -------------------------------------------------------------------------------------------

TEST(FlexGridNumbers, ShowFormattedTextMadeOnDemand)
{
    auto grid = gridOf("Flow|Note\n|a\nold|b\nold|c\nold|d");
    int made = 0;
    grid.setNumberColumn(0, 2, {0.5, kNaN}, [&made](double value) {
        ++made;
        return kTwoPlaces(value);
    });
    EXPECT_EQ(made, 0);
    EXPECT_EQ(gridText(grid), "Flow|Note\n|a\n0.50|b\n|c\n|d");
    EXPECT_EQ(made, 1);
    EXPECT_EQ(grid.number(2, 0), 0.5);
    EXPECT_TRUE(std::isnan(grid.number(1, 0)));
    EXPECT_TRUE(std::isnan(grid.number(4, 0)));
    EXPECT_TRUE(std::isnan(grid.number(2, 1)));
    grid.select(0, 0, 2, 0);
    EXPECT_EQ(grid.clip(), "Flow\r\r0.50");
}

struct TextWrite
{
    const char* name;
    std::function<void(FlexGrid&)> write;
    const char* after;
    bool staysNumbers;
};

class FlexGridNumbersWrite : public testing::TestWithParam<TextWrite>
{
};

TEST_P(FlexGridNumbersWrite, TurnsTheColumnIntoTextAtOrBelowItsFirstRow)
{
    auto grid = gridOf("h|h\na|b\na|b\na|b");
    grid.setNumberColumn(1, 1, {1, 2}, kTwoPlaces);
    GetParam().write(grid);
    EXPECT_EQ(gridText(grid), GetParam().after);
    EXPECT_EQ(grid.isNumberColumn(1), GetParam().staysNumbers);
}

INSTANTIATE_TEST_SUITE_P(
    , FlexGridNumbersWrite,
    testing::Values(
        TextWrite{"Header", [](FlexGrid& g) { g.setTextMatrix(0, 1, "q"); }, "h|q\na|1.00\na|2.00\na|", true},
        TextWrite{"OnANumber", [](FlexGrid& g) { g.setTextMatrix(1, 1, "q"); }, "h|h\na|q\na|2.00\na|", false},
        TextWrite{"BelowTheLast", [](FlexGrid& g) { g.setTextMatrix(3, 1, "q"); }, "h|h\na|1.00\na|2.00\na|q", false},
        TextWrite{"NextColumn", [](FlexGrid& g) { g.setTextMatrix(1, 0, "q"); }, "h|h\nq|1.00\na|2.00\na|", true},
        TextWrite{"RowTexts",
                  [](FlexGrid& g) {
                      g.setRowTexts(2, 0, {"x", "y"});
                  },
                  "h|h\na|1.00\nx|y\na|", false},
        TextWrite{"Clip",
                  [](FlexGrid& g) {
                      g.select(1, 0, 2, 1);
                      g.setClip(u"x\ty\rz");
                  },
                  "h|h\nx|y\nz|2.00\na|", false},
        TextWrite{"NewNumbersLowerDown", [](FlexGrid& g) { g.setNumberColumn(1, 2, {7}, kTwoPlaces); },
                  "h|h\na|\na|7.00\na|", true}),
    [](const auto& row) { return row.param.name; });

TEST(FlexGridNumbers, SixMillionOrdinatesCostEightBytesEach)
{
    constexpr int kCols = 3002, kRows = 2001;
    FlexGrid grid;
    grid.setCols(kCols);
    grid.setRows(kRows);
    const qint64 before = residentBytes();
    {
        const FlexGrid::Bulk bulk(grid);
        for (int col = 1; col < kCols; ++col) {
            grid.setTextMatrix(0, col, QStringLiteral("SUB"));
            grid.setNumberColumn(col, 1, std::vector<double>(kRows - 1, col), kTwoPlaces);
        }
        for (int row = 1; row < kRows; ++row)
            grid.setTextMatrix(row, 0, QStringLiteral("0:05"));
    }
    const FlexGrid::Snapshot snapshot = grid.snapshot();
    EXPECT_EQ(grid.textMatrix(kRows - 1, kCols - 1), "3001.00");
    EXPECT_EQ(snapshot.textMatrix(5, 7), "7.00");
    // Headings, labels and allocation come on top of the eight; an empty text for each cell alone would be 24.
    const double values = static_cast<double>(kCols - 1) * (kRows - 1);
    EXPECT_LT(static_cast<double>(residentBytes() - before) / values, 10.0);
}
