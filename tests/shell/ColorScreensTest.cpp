// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/ColorScreens.h"

#include "deck/Workspace.h"
#include "platform/FlexGridView.h"
#include "shell/Form21_ColorChanges.h"
#include "shell/Form4_ColorEdit.h"
#include "tests/support/GridText.h"
#include "tests/support/ScriptedServices.h"

#include <QListWidget>
#include <QPushButton>
#include <QTabBar>
#include <QTest>

#include <gtest/gtest.h>

namespace kalvo {
namespace {

struct ColorScreensTest : testing::Test
{
    ScriptedServices services;
    Screens screens;
    Workspace page{services, screens};
    FlexGrid& grid = page.deck.Grid1;

    void SetUp() override { registerColorScreens(page.looks, page.editContext); }
    template <class Control> Control& in(QWidget* window, const char* name)
    {
        auto* control = window->findChild<Control*>(QString::fromLatin1(name));
        EXPECT_NE(control, nullptr) << name;
        return *control;
    }
    void expectNothingCutOff(QWidget* window)
    {
        QApplication::processEvents();
        for (const QPushButton* button : window->findChildren<QPushButton*>())
            EXPECT_GE(button->width(), button->sizeHint().width()) << button->objectName().toStdString();
    }
};

TEST_F(ColorScreensTest, FourColoursAreTriedOnASample)
{
    GridColors mine;
    mine.backColor = rgb(1, 1, 1);
    mine.gridColor = rgb(2, 2, 2);
    grid.setColors(mine);
    page.commands.run("Coloredit");
    auto* form = screens.loadAs<Form21>("Form21");
    ASSERT_NE(form, nullptr);
    EXPECT_EQ(form->windowTitle(), "Color Changes for Main Screen");
    auto& tabs = in<QTabBar>(form, "TabStrip1");
    QStringList names;
    for (int i = 0; i < tabs.count(); ++i)
        names << tabs.tabText(i);
    EXPECT_EQ(names.join('|'), "Background|Text|Selection|Selection Background");
    const FlexGrid& sample = in<FlexGridView>(form, "Grid1").grid();
    EXPECT_EQ(sample.colors().backColor, rgb(1, 1, 1)) << "starts from the deck's";
    expectNothingCutOff(form);

    for (int i = 0; i < tabs.count(); ++i) {
        services.dialogs.willAnswer(rgb(100 + i, 0, 0));
        tabs.setCurrentIndex(i);
        QTest::keyClick(&tabs, Qt::Key_Return);
    }
    EXPECT_EQ(sample.colors().backColorSel, rgb(103, 0, 0));
    EXPECT_EQ(grid.colors(), mine) << "nothing before it is applied";
    services.dialogs.willCancel();
    QTest::mouseClick(&tabs, Qt::LeftButton, {}, tabs.tabRect(1).center());
    QApplication::processEvents();
    EXPECT_EQ(services.dialogs.last().color, rgb(101, 0, 0));

    in<QPushButton>(form, "Command1").click();
    mine.backColor = rgb(100, 0, 0);
    mine.foreColor = rgb(101, 0, 0);
    mine.foreColorSel = rgb(102, 0, 0);
    mine.backColorSel = rgb(103, 0, 0);
    EXPECT_EQ(grid.colors(), mine);

    grid.setColors({});
    in<QPushButton>(form, "Command2").click();
    EXPECT_EQ(sample.colors(), GridColors());
    in<QPushButton>(form, "Command4").click();
    EXPECT_TRUE(screens.isVisible("Form4"));
    in<QPushButton>(form, "Command3").click();
    EXPECT_FALSE(screens.isLoaded("Form21"));
}

TEST_F(ColorScreensTest, ThirteenItemsWaitUntilTheyAreApplied)
{
    screens.show("Form4");
    auto* form = screens.loadAs<Form4>("Form4");
    ASSERT_NE(form, nullptr);
    EXPECT_EQ(form->windowTitle(), "Color Edit");
    auto& list = in<QListWidget>(form, "List1");
    ASSERT_EQ(list.count(), 13);
    EXPECT_EQ(list.item(3)->text(), "Grid Backgound Color for Selections");
    EXPECT_EQ(list.item(12)->text(), "Grapher Form Backgound and Panel Color");
    expectNothingCutOff(form);

    services.dialogs.willAnswer(rgb(7, 8, 9));
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, list.visualItemRect(list.item(0)).center());
    EXPECT_EQ(services.dialogs.last().color, rgbOf(form->palette().color(QPalette::Base))) << "what is shown now";
    services.dialogs.willAnswer(rgb(1, 2, 3));
    list.setCurrentRow(12);
    QTest::keyClick(&list, Qt::Key_Return);
    services.dialogs.willCancel();
    list.setCurrentRow(5);
    QTest::keyClick(&list, Qt::Key_Space);
    EXPECT_EQ(services.dialogs.last().color, rgb(7, 8, 9)) << "a cell follows the grid";
    EXPECT_EQ(grid.colors(), GridColors());

    in<QPushButton>(form, "Command2").click();
    EXPECT_FALSE(screens.isLoaded("Form4"));
    GridColors picked;
    picked.backColor = rgb(7, 8, 9);
    EXPECT_EQ(grid.colors(), picked) << "items that nobody picked stay the palette's own";
    EXPECT_FALSE(grid.hasCellFormats());
    EXPECT_EQ(page.looks.grapherColor(), rgb(1, 2, 3));
}

TEST_F(ColorScreensTest, CancelAppliesNothing)
{
    screens.show("Form4");
    auto* form = screens.loadAs<Form4>("Form4");
    services.dialogs.willAnswer(rgb(7, 8, 9));
    QTest::keyClick(&in<QListWidget>(form, "List1"), Qt::Key_Return);
    in<QPushButton>(form, "Command1").click();
    EXPECT_FALSE(screens.isLoaded("Form4"));
    EXPECT_EQ(grid.colors(), GridColors());
}

} // namespace
} // namespace kalvo
