// SPDX-License-Identifier: GPL-3.0-or-later
// Quick HydroGraphers through their own menus, clicks at data points and the list that keeps them.
#include "graphics/HydroGrapher_QuickHydroGrapher.h"

#include "graphics/QuickHydroGraphers.h"
#include "platform/Chart.h"
#include "tests/support/GridText.h"
#include "tests/support/ScriptedServices.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QDialog>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QScreen>
#include <QTest>

#include <gtest/gtest.h>

namespace kalvo {
namespace {

struct QuickGraph : testing::Test
{
    QuickGraph() : table(gridOf("h|m|SITE  1  1  1|SITE  2  1  1\n0|0|1|40\n1|60|5|30\n2|120|20|20\n3|180|10|12.5"))
    {
        table.select(4, 3, 1, 2);
    }
    HydroGrapher& open()
    {
        quick.open(table, "cfs");
        HydroGrapher& window = *quick.hydroGraphers().back();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
        return window;
    }
    static Chart& chartOf(HydroGrapher& window) { return *window.findChild<Chart*>("MSChart1"); }
    static void trigger(HydroGrapher& window, const char* name)
    {
        auto* action = window.findChild<QAction*>(QString::fromLatin1(name));
        ASSERT_TRUE(action) << name;
        action->trigger();
    }

    ScriptedServices services;
    TextGrid table;
    QuickHydroGraphers quick{services};
};

TEST_F(QuickGraph, ShowsTheBlockAndTellsThePointThatIsClicked)
{
    HydroGrapher& window = open();
    EXPECT_EQ(window.windowTitle(), " Quick HydroGrapher for Kalvo");
    Chart& chart = chartOf(window);
    EXPECT_EQ(chart.title(), "Hydrographs");
    EXPECT_EQ(chart.timeTitle(), "Time");
    EXPECT_EQ(chart.valueTitle(), "Flow");
    ASSERT_EQ(chart.series().size(), 2);
    QTest::mouseClick(&chart, Qt::LeftButton, {}, chart.placeOf({1, 3}));
    EXPECT_EQ(chart.toolTip(), "2,4,12.5");
    EXPECT_TRUE(window.findChild<QLabel*>("ReadOut")->text().contains(":  12.5 cfs at ")) << "read with its unit";
    QTest::mouseMove(&chart, chart.placeOf({1, 3}) + QPoint(-60, -50));
    EXPECT_EQ(chart.toolTip(), "");
    QTest::mouseDClick(&chart, Qt::LeftButton, {}, (chart.placeOf({1, 1}) + chart.placeOf({1, 0})) / 2);
    EXPECT_TRUE(chart.series()[1].excluded) << "a double click on a curve";
    EXPECT_FALSE(chart.series()[0].excluded);
}

TEST_F(QuickGraph, ASingleCellIsToldOfAndLeavesTheScreenEmpty)
{
    table.select(2, 2, 2, 2);
    services.dialogs.willAnswer(Button::Ok);
    HydroGrapher& window = open();
    EXPECT_EQ(services.dialogs.texts(), QStringList{"First select A Column or Block of Data!"});
    EXPECT_TRUE(chartOf(window).series().isEmpty());
    for (const char* name : {"mnu_Exclude", "mnu_ToggleLegend", "mnu_rain"})
        trigger(window, name);
}

TEST_F(QuickGraph, SwitchesSelectedCurvesOffAndBringsThemBack)
{
    HydroGrapher& window = open();
    Chart& chart = chartOf(window);
    trigger(window, "mnu_Exclude");
    EXPECT_FALSE(chart.series()[0].excluded || chart.series()[1].excluded) << "none is selected";
    QTest::mouseClick(&chart, Qt::LeftButton, {}, chart.placeOf({0, 2}) + QPoint(0, 1));
    trigger(window, "mnu_DeleteSelectedHydrograph");
    QTest::keyClick(&chart, Qt::Key_Down);
    trigger(window, "mnu_Exclude");
    EXPECT_TRUE(chart.series()[0].excluded && chart.series()[1].excluded);
    auto* menu = window.findChild<QMenu*>("mnu_bringBack");
    ASSERT_EQ(menu->actions().size(), 4) << "two curves, a line, all";
    EXPECT_EQ(menu->actions()[1]->text(), "SITE  2  1  1");
    menu->actions()[1]->trigger();
    QApplication::processEvents();
    EXPECT_FALSE(chart.series()[1].excluded);
    trigger(window, "mnu_bringAllBack");
    QApplication::processEvents();
    EXPECT_FALSE(chart.series()[0].excluded);
    EXPECT_FALSE(menu->isEnabled());
}

TEST_F(QuickGraph, TitleLegendOptionsAndHelp)
{
    HydroGrapher& window = open();
    Chart& chart = chartOf(window);
    trigger(window, "mnu_EditTitle");
    auto* Text1 = window.findChild<QLineEdit*>("Text1");
    ASSERT_TRUE(Text1);
    EXPECT_EQ(Text1->text(), "Hydrographs");
    QTest::keyClicks(Text1, "Peaks");
    QTest::mouseDClick(Text1, Qt::LeftButton);
    EXPECT_EQ(chart.title(), "Peaks");
    trigger(window, "mnu_ToggleLegend");
    EXPECT_FALSE(chart.isLegendShown());
    trigger(window, "mnu_ToggleLegend");
    EXPECT_TRUE(chart.isLegendShown());
    trigger(window, "mnu_options");
    auto* options = window.findChild<QDialog*>("ChartOptions");
    ASSERT_TRUE(options);
    options->findChild<QCheckBox*>("LogValues")->click();
    options->findChild<QCheckBox*>("GridLines")->click();
    EXPECT_TRUE(chart.options().logValues);
    EXPECT_FALSE(chart.options().gridLines);
    options->close();
    services.dialogs.willAnswer(Button::Ok);
    trigger(window, "mnu_help");
    EXPECT_EQ(services.dialogs.texts(),
              QStringList{"Quick HydroGrapher for Hydrodata - Select Groups of Cells in Hydrodata to Graph.\r\n"
                          "Select a Graph then a Data point and the Value can be noted at the Cursor.\r\n"
                          "Double Click a graph to Delete it."});
}

TEST_F(QuickGraph, CopiesAndSavesPictures)
{
    HydroGrapher& window = open();
    trigger(window, "mnu_Copypicture");
    const QImage small = QImage::fromData(services.clipboard.picture(), "PNG");
    trigger(window, "mnu_copyMetaFile");
    const QImage large = QImage::fromData(services.clipboard.picture(), "PNG");
    EXPECT_EQ(large.width(), 3 * small.width());

    services.clipboard.clear();
    services.dialogs.willAnswer(services.path("site.bmp"));
    trigger(window, "mnu_export");
    const FileDialog& asked = services.dialogs.last().file;
    EXPECT_EQ(asked.title, "Kalvo Export Hydrograph");
    EXPECT_EQ(asked.filter, "BMP Files(*.bmp)|*.bmp|");
    EXPECT_EQ(asked.defaultExtension, "bmp");
    const QImage saved = QImage::fromData(services.bytes("site.bmp"), "BMP");
    EXPECT_EQ(saved, QImage::fromData(services.clipboard.picture(), "PNG").convertToFormat(saved.format()))
        << "what is saved went by the clipboard";
    services.dialogs.willCancel();
    trigger(window, "mnu_export");
    EXPECT_TRUE(services.bytes("testSave.bmp").startsWith("BM")) << "the name when none is given";

    const std::pair<const char*, const char*> kinds[] = {{"a.png", "\x89PNG"}, {"a.svg", "<?xml"}, {"a.pdf", "%PDF-"}};
    for (const auto& [name, start] : kinds) {
        services.dialogs.willAnswer(services.path(QString::fromLatin1(name)));
        trigger(window, "mnu_exportAs");
        EXPECT_TRUE(services.bytes(name).startsWith(start)) << name;
    }
    services.dialogs.willAnswer("/no/such/folder/a.png");
    services.dialogs.willAnswer(Button::Ok);
    trigger(window, "mnu_exportAs");
    EXPECT_TRUE(services.dialogs.last().text.contains("/no/such/folder/a.png"))
        << services.dialogs.last().text.toStdString();
    services.dialogs.willAnswer(services.path("a.gif"));
    services.dialogs.willAnswer(Button::Ok);
    trigger(window, "mnu_exportAs");
    EXPECT_TRUE(services.dialogs.last().text.contains(".svg"));
    EXPECT_FALSE(QFile::exists(services.path("a.gif")));
}

TEST_F(QuickGraph, HangsTheRainOfTheReportAboveTheFlow)
{
    services.put("CHECKY.OUT", "   NMIN          60  MINUTES IN COMPUTATION INTERVAL\r\n"
                               "      HYDROGRAPH AT STATION  SITE\r\n"
                               "    DA MON HRMN  ORD    RAIN    LOSS    EXCESS      COMP Q        *\r\n"
                               "     1 JAN 0100    2     .25     .05       .20          3.        *\r\n ****\r\n");
    HydroGrapher& window = open();
    Chart& chart = chartOf(window);
    trigger(window, "mnu_rain");
    EXPECT_EQ(chart.rain().depths, (QVector<double>{0.0, 0.25}));
    trigger(window, "mnu_rain");
    EXPECT_TRUE(chart.rain().times.isEmpty()) << "and away again";
    chart.selectSeries(1);
    services.dialogs.willAnswer(Button::Ok);
    trigger(window, "mnu_rain");
    EXPECT_TRUE(services.dialogs.last().text.contains("no rain for SITE  2  1  1"));
}

TEST_F(QuickGraph, SeveralStandOpenAndGoTogether)
{
    HydroGrapher& first = open();
    table.setTextMatrix(1, 2, "999");
    table.select(1, 2, 4, 2);
    HydroGrapher& second = open();
    EXPECT_EQ(chartOf(first).series().size(), 2);
    EXPECT_EQ(chartOf(first).series()[0].y[0], 1.0) << "it keeps what it was given";
    EXPECT_EQ(chartOf(second).series()[0].y[0], 999.0);
    EXPECT_NE(second.pos(), first.pos());
    EXPECT_TRUE(second.screen()->availableGeometry().contains(second.geometry())) << "as small as the display is";
    trigger(first, "mnu_quit");
    EXPECT_EQ(quick.hydroGraphers(), std::vector<HydroGrapher*>{&second});
    open();
    quick.closeAll();
    EXPECT_TRUE(quick.hydroGraphers().empty());
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    for (const QWidget* window : QApplication::topLevelWidgets())
        EXPECT_NE(window->objectName(), "HydroGrapher");
}

} // namespace
} // namespace kalvo
