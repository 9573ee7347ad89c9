// SPDX-License-Identifier: GPL-3.0-or-later
#include "results/HydFile.h"

#include "tests/support/GridText.h"
#include "tests/support/ScriptedServices.h"

#include <gtest/gtest.h>

namespace kalvo {
namespace {

std::string zones(std::initializer_list<const char*> items)
{
    QByteArray line;
    for (const char* item : items)
        addPrintZone(line, QString::fromLatin1(item));
    return line.toStdString();
}

TEST(PrintZones, ABlankAlwaysFollowsAnItem)
{
    EXPECT_EQ(zones({"1"}), "1             ");
    EXPECT_EQ(zones({"thirteen char", "2"}), "thirteen char 2             ");
    EXPECT_EQ(zones({"JUN12  1  1  1", "2"}), "JUN12  1  1  1              2             ") << "exactly one zone";
    EXPECT_EQ(zones({"STATION 12  1  1  1", "2"}), "STATION 12  1  1  1         2             ");
    EXPECT_EQ(zones({"", "2"}), "              2             ") << "an empty cell keeps its zone";
}

/// A table of hydrographs of which `area` is selected from its first corner to its second.
struct Selected
{
    Selected(int row, int col, int rowSel, int colSel) { table.select(row, col, rowSel, colSel); }
    std::string file()
    {
        const QString path = services.path("out.hyd");
        EXPECT_EQ(writeHydFile(table, path), "");
        return services.bytes("out.hyd").replace('\r', "/\n").toStdString();
    }

    ScriptedServices services;
    TextGrid table = gridOf("Time (hrs)|Time (min)|A  1  1  1|O'B, \"C\"  1  1  1\n"
                            ".0000|0|1.5|-2\n"
                            ".0833|5|20|\n"
                            ".1667|10|3|4");
};

TEST(HydFile, HoursStandAheadOfTheSelectedCells)
{
    EXPECT_EQ(Selected(1, 2, 2, 3).file(), "Time Hrs      A  1  1  1    O'B, \"C\"  1  1  1           /\n"
                                           ".0000         1.5           -2            /\n"
                                           ".0833         20                          /\n");
}

TEST(HydFile, ASelectionFromRowZeroOnGivesTheHeadingsTwice)
{
    EXPECT_EQ(Selected(0, 2, 1, 2).file(), "Time Hrs      A  1  1  1    /\n"
                                           "Time (hrs)    A  1  1  1    /\n"
                                           ".0000         1.5           /\n");
}

TEST(HydFile, WhatIsSelectedMustBeABlockDraggedDownAndRight)
{
    const auto told = [](int row, int col, int rowSel, int colSel) {
        const auto problem = whyNotSavable(Selected(row, col, rowSel, colSel).table);
        return problem ? (problem->icon == Icon::Warning ? "!" : "") + problem->text.toStdString() : std::string();
    };
    EXPECT_EQ(told(1, 2, 1, 2), "!Need a Selection!");
    EXPECT_EQ(told(2, 2, 1, 3), "Select from top left to bottom right please!");
    EXPECT_EQ(told(1, 3, 2, 2), "Select from top left to bottom right please!");
    EXPECT_EQ(told(1, 2, 1, 3), "");
    EXPECT_EQ(told(1, 2, 2, 2), "");
}

TEST(HydFile, ATableOfManyPiecesIsWhole)
{
    ScriptedServices services;
    FlexGrid table;
    table.setRows(1001);
    table.setCols(102);
    for (int col = 0; col < 102; ++col)
        table.setNumberColumn(col, 1, std::vector<double>(1000, col), [](double v) { return QString::number(v); });
    table.select(1, 2, 1000, 101);
    ASSERT_EQ(writeHydFile(table, services.path("big.hyd")), "");
    const QList<QByteArray> lines = services.bytes("big.hyd").split('\r');
    ASSERT_EQ(lines.size(), 1002) << "nothing behind the last CR";
    EXPECT_TRUE(lines.back().isEmpty());
    for (int row = 1; row <= 1000; ++row) {
        ASSERT_EQ(lines[row].size(), 101 * kPrintZone) << row;
        ASSERT_EQ(lines[row].mid(100 * kPrintZone), "101           ") << row;
    }
}

TEST(HydFile, AFileThatCannotBeWrittenIsToldAndHurtsNothing)
{
    Selected table(1, 2, 2, 3);
    EXPECT_NE(writeHydFile(table.table, table.services.path("no/such/folder.hyd")), "");
    EXPECT_NE(writeHydFile(table.table, table.services.directory.path()), "") << "a folder";
    EXPECT_FALSE(QFile::exists(table.services.path("no")));
    if (QFile::exists("/dev/full")) {
        EXPECT_NE(writeHydFile(table.table, "/dev/full"), "") << "a full disk";
    }
}

} // namespace
} // namespace kalvo
