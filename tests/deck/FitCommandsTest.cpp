// SPDX-License-Identifier: GPL-3.0-or-later
#include "deck/FitCommands.h"

#include "tests/deck/EditPage.h"

namespace kalvo {
namespace {

using FitCommandsTest = EditPage;

TEST_F(FitCommandsTest, RowsAndColumnsFitTheirLargestText)
{
    cards("KK|SUB1\nBA|123456\nZZ");
    hide({3});
    CellFormat large;
    large.fontSize = 12.0;
    grid.setCellFormat(2, 3, large);
    run("mnu_fitboth");
    EXPECT_EQ(grid.rowHeight(0), 223) << "8.25 points x 27";
    EXPECT_EQ(grid.rowHeight(1), 223);
    EXPECT_EQ(grid.rowHeight(2), 324);
    EXPECT_EQ(grid.rowHeight(3), deck_layout::kHiddenHeight);
    EXPECT_EQ(grid.colWidth(2), 973) << "8.25 x (6 x 120 + 66) x 0.15";
    EXPECT_EQ(grid.colWidth(0), 230);
}

TEST_F(FitCommandsTest, LooksGoToTheWholeSelectionAndRecordNothing)
{
    cards("KK|A\nBA|1\nZZ");
    drag(1, 1, 2, 2);
    run("mnu_Bold");
    EXPECT_TRUE(grid.cellFormat(2, 2).bold);
    EXPECT_FALSE(grid.cellFormat(3, 1).bold);
    run("mnu_Bold");
    EXPECT_FALSE(grid.cellFormat(2, 2).bold);

    services.dialogs.willCancel();
    run("highlight");
    EXPECT_EQ(grid.cellFormat(1, 1).foreColor, Rgb::None);
    services.dialogs.willAnswer(rgb(9, 8, 7));
    run("highlight");
    EXPECT_EQ(grid.cellFormat(2, 1).foreColor, rgb(9, 8, 7));

    CellFormat chosen;
    chosen.fontName = "Courier";
    chosen.fontSize = 14.0;
    chosen.foreColor = rgb(1, 1, 1);
    chosen.italic = chosen.underline = chosen.strikeThrough = true;
    services.dialogs.willAnswer(chosen);
    run("mnu_hifont");
    EXPECT_EQ(grid.cellFormat(2, 2), chosen);
    EXPECT_EQ(grid.rowHeight(2), 378);
    EXPECT_EQ(services.dialogs.last().font.foreColor, rgb(9, 8, 7)) << "the dialog starts with the cell's own look";
    EXPECT_EQ(grid.fillStyle(), FlexGrid::FillStyle::Single);
    EXPECT_EQ(cursor(), "1,1:2,2");
    EXPECT_EQ(deck.undoCount, 1);
    EXPECT_TRUE(deck.dataSaved);
}

TEST_F(FitCommandsTest, TicksTellWhatIsOff)
{
    run("mnu_gridlines");
    EXPECT_FALSE(grid.gridLines());
    EXPECT_TRUE(page.commands.isChecked("mnu_gridlines"));
    run("mnu_gridlines");
    EXPECT_TRUE(grid.gridLines());
    EXPECT_FALSE(page.commands.isChecked("mnu_gridlines"));
    run("mnu_adjustgrids");
    EXPECT_TRUE(page.commands.isChecked("mnu_adjustgrids"));
    run("mnu_adjustgrids");
    EXPECT_FALSE(page.commands.isChecked("mnu_adjustgrids"));
}

TEST_F(FitCommandsTest, CleaningUpShowsTheGridAndAsksForTheWindowsWidth)
{
    cards("KK|A\nZZ");
    QStringList ran;
    for (const char* name : {"newdefaultmnu", "hiliteKK", "mnu_identkkgroups"})
        page.commands.add(name, [&ran, name] { ran << name; });
    int width = 0;
    QObject::connect(&page.fit, &FitCommands::formWidthWanted, &page.fit, [&width](int twips) { width = twips; });
    deck.setGridShown(false);
    run("mnu_cleanup");
    EXPECT_TRUE(deck.isGridShown());
    EXPECT_EQ(ran, QStringList({"newdefaultmnu", "hiliteKK", "mnu_identkkgroups"}));
    int sum = 0;
    for (int col = 0; col < grid.cols(); ++col)
        sum += grid.colWidth(col);
    EXPECT_EQ(width, sum + 725);

    width = 0;
    grid.setTextMatrix(1, 5, QString(300, 'x'));
    run("mnu_cleanup");
    EXPECT_EQ(width, 0) << "no window is as wide as these columns";
}

} // namespace
} // namespace kalvo
