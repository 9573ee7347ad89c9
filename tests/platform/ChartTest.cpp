// SPDX-License-Identifier: GPL-3.0-or-later
// The chart as its user has it: clicks at data points, wheel, drag, keys, the title edited in place, pictures.
#include "platform/Chart.h"

#include <QApplication>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QSignalSpy>
#include <QTest>
#include <QWheelEvent>

#include <cmath>
#include <limits>

#include <gtest/gtest.h>

using namespace kalvo;

namespace {

class ChartTest : public testing::Test
{
protected:
    void SetUp() override
    {
        chart.resize(900, 520);
        chart.setAxisTitles("Time", "hours", "Flow", "cfs");
        chart.setTitle("Storm");
        ChartSeries rising{"RISE", {}, {}}, falling{"FALL", {}, {}};
        for (int i = 0; i <= 20; ++i) {
            rising.x.append(i);
            rising.y.append(i == 10 ? std::numeric_limits<double>::quiet_NaN() : 10.0 * i);
            if (i <= 15) {
                falling.x.append(i);
                falling.y.append(205.0 - 10.0 * i);
            }
        }
        chart.setSeries({rising, falling});
        chart.show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&chart));
        chart.setFocus();
        chart.drawNow();
    }

    void click(QPoint at, Qt::KeyboardModifiers keys = {}) { QTest::mouseClick(&chart, Qt::LeftButton, keys, at); }
    void drag(QPoint from, QPoint to, Qt::KeyboardModifiers keys = {})
    {
        QTest::mousePress(&chart, Qt::LeftButton, keys, from);
        for (const QPoint& at : {from + (to - from) / 2, to}) {
            QMouseEvent move(QEvent::MouseMove, at, chart.mapToGlobal(at), Qt::NoButton, Qt::LeftButton, keys);
            QApplication::sendEvent(&chart, &move);
        }
        QTest::mouseRelease(&chart, Qt::LeftButton, keys, to);
    }
    void wheel(QPoint at, int delta, Qt::KeyboardModifiers keys = {})
    {
        QWheelEvent turn(at, chart.mapToGlobal(at), {}, {0, delta}, Qt::NoButton, keys, Qt::NoScrollPhase, false);
        QApplication::sendEvent(&chart, &turn);
    }
    void hover(QPoint at)
    {
        QMouseEvent move(QEvent::MouseMove, at, chart.mapToGlobal(at), Qt::NoButton, Qt::NoButton, {});
        QApplication::sendEvent(&chart, &move);
    }
    QString readOut() const { return chart.findChild<QLabel*>("ReadOut")->text(); }
    QPoint middle() const { return (chart.placeOf({0, 0}) + chart.placeOf({0, 20})) / 2 + QPoint(60, 90); }

    Chart chart;
};

TEST_F(ChartTest, AClickOnAPointTellsWhichAndShowsItsTipUntilThePointerLeaves)
{
    QSignalSpy clicked(&chart, &Chart::pointClicked), left(&chart, &Chart::pointLeft);
    click(chart.placeOf({1, 4}) + QPoint(2, -2));
    ASSERT_EQ(clicked.size(), 1);
    EXPECT_EQ(clicked[0][0].toInt(), 1);
    EXPECT_EQ(clicked[0][1].toInt(), 4);
    EXPECT_EQ(chart.selectedSeries(), 1);
    EXPECT_EQ(readOut(), "FALL:  165 cfs at 4 hours   (point 5 of 16)");
    chart.showPointTip({1, 4}, "tip");
    hover(chart.placeOf({1, 4}) + QPoint(1, 1));
    EXPECT_EQ(chart.toolTip(), "tip");
    hover(middle());
    EXPECT_EQ(chart.toolTip(), "");
    EXPECT_EQ(left.size(), 1);
    click(middle());
    EXPECT_EQ(clicked.size(), 1) << "no point there";
    EXPECT_EQ(chart.selectedSeries(), -1);
}

TEST_F(ChartTest, AnExcludedCurveIsNotHitNotMeasuredAndComesBack)
{
    QSignalSpy doubled(&chart, &Chart::seriesDoubleClicked);
    const QPoint onFalling = (chart.placeOf({1, 2}) + chart.placeOf({1, 3})) / 2;
    QTest::mouseDClick(&chart, Qt::LeftButton, {}, onFalling);
    ASSERT_EQ(doubled.size(), 1);
    EXPECT_EQ(doubled[0][0].toInt(), 1);
    const double before = chart.valueRange().upper;
    chart.setExcluded(1, true);
    EXPECT_EQ(chart.seriesAt(onFalling), -1);
    EXPECT_LT(chart.valueRange().upper, before);
    chart.bringAllBack();
    EXPECT_EQ(chart.valueRange().upper, before);
    EXPECT_EQ(chart.seriesAt(onFalling), 1);
    chart.setExcluded(7, true);
    EXPECT_EQ(chart.placeOf({1, 2}).x(), chart.placeOf({0, 2}).x());
}

TEST_F(ChartTest, TheLegendSelectsAndCanBeHidden)
{
    const QPoint byTheEdge(chart.width() - 60, 0);
    int named = -1;
    QPoint at;
    for (int y = 0; y < chart.height() && named < 0; ++y) {
        at = byTheEdge + QPoint(0, y);
        named = chart.seriesAt(at);
    }
    ASSERT_EQ(named, 0) << "the first row of the legend";
    click(at);
    EXPECT_EQ(chart.selectedSeries(), 0);
    const int right = chart.placeOf({0, 20}).x();
    chart.setLegendShown(false);
    EXPECT_GT(chart.placeOf({0, 20}).x(), right + 20) << "its room goes to the curves";
    chart.setLegendShown(true);
    EXPECT_EQ(chart.placeOf({0, 20}).x(), right);
}

TEST_F(ChartTest, WheelDragAndRectangleZoomAndADoubleClickOnPaperShowsAll)
{
    const ChartRange time = chart.timeRange(), value = chart.valueRange();
    wheel(middle(), 120);
    EXPECT_LT(chart.timeRange().size(), time.size());
    EXPECT_LT(chart.valueRange().size(), value.size());
    QTest::mouseDClick(&chart, Qt::LeftButton, {}, middle());
    EXPECT_EQ(chart.timeRange(), time);
    EXPECT_EQ(chart.valueRange(), value);
    wheel(middle(), 120, Qt::ControlModifier);
    EXPECT_EQ(chart.timeRange(), time) << "Ctrl: values alone";
    chart.showWhole();
    wheel({middle().x(), chart.placeOf({0, 0}).y() + 15}, 120);
    EXPECT_EQ(chart.valueRange(), value) << "over the time axis: times alone";
    EXPECT_LT(chart.timeRange().size(), time.size());
    chart.showWhole();

    const QPoint from = chart.placeOf({0, 4});
    drag(middle(), middle() + QPoint(60, -30));
    EXPECT_EQ(chart.placeOf({0, 4}), from + QPoint(60, -30)) << "the paper follows the pointer";
    EXPECT_EQ(chart.selectedSeries(), -1) << "a drag is no click";
    QTest::keyClick(&chart, Qt::Key_Home);
    EXPECT_EQ(chart.timeRange(), time);

    drag(chart.placeOf({0, 4}), chart.placeOf({0, 8}), Qt::ShiftModifier);
    EXPECT_NEAR(chart.timeRange().lower, 4.0, 0.05);
    EXPECT_NEAR(chart.timeRange().upper, 8.0, 0.05);
    EXPECT_NEAR(chart.valueRange().lower, 40.0, 1.0);
    for (int i = 0; i < 400; ++i) {
        wheel(middle(), 120);
        EXPECT_GT(chart.timeRange().size(), 0.0);
    }
    for (int i = 0; i < 800; ++i)
        wheel(middle(), -120);
    EXPECT_LT(chart.timeRange().size(), 1e5) << "no end of zooming either way";
}

TEST_F(ChartTest, KeysReadValuesFromCurveToCurve)
{
    QTest::keyClick(&chart, Qt::Key_Right);
    EXPECT_TRUE(readOut().startsWith("RISE:  0 cfs at 0 hours")) << readOut().toStdString();
    QTest::keyClick(&chart, Qt::Key_Right, Qt::ControlModifier);
    EXPECT_EQ(chart.cursorPoint(), (ChartPoint{0, 11})) << "ten points, the gap jumped";
    QTest::keyClick(&chart, Qt::Key_Down);
    EXPECT_EQ(chart.cursorPoint(), (ChartPoint{1, 11}));
    EXPECT_EQ(chart.selectedSeries(), 1);
    QTest::keyClick(&chart, Qt::Key_Left);
    EXPECT_EQ(readOut(), "FALL:  105 cfs at 10 hours   (point 11 of 16)");
    EXPECT_EQ(chart.accessibleDescription(), readOut());
    QTest::keyClick(&chart, Qt::Key_Escape);
    EXPECT_TRUE(chart.cursorPoint().isNone());
    EXPECT_TRUE(readOut().startsWith("Arrow keys"));
}

TEST_F(ChartTest, TheTitleIsEditedInItsPlace)
{
    QSignalSpy edited(&chart, &Chart::titleEdited);
    chart.setTitleEditorName("Text1");
    const auto open = [&] {
        QTest::mouseDClick(&chart, Qt::LeftButton, {}, chart.titleRect().center());
        return chart.findChild<QLineEdit*>("Text1");
    };
    QLineEdit* editor = open();
    ASSERT_TRUE(editor);
    EXPECT_TRUE(chart.titleRect().intersects(editor->geometry()));
    QTest::keyClicks(editor, "June flood");
    QTest::mouseDClick(editor, Qt::LeftButton);
    EXPECT_EQ(chart.title(), "June flood");
    EXPECT_FALSE(chart.findChild<QLineEdit*>("Text1"));
    editor = open();
    QTest::keyClicks(editor, "no");
    QTest::keyClick(editor, Qt::Key_Escape);
    EXPECT_EQ(chart.title(), "June flood");
    editor = open();
    QTest::keyClicks(editor, "July");
    QTest::keyClick(editor, Qt::Key_Return);
    EXPECT_EQ(chart.title(), "July");
    EXPECT_EQ(edited.size(), 2);
    chart.setTitle({});
    chart.editTitle();
    EXPECT_GT(chart.findChild<QLineEdit*>("Text1")->height(), 10) << "room for a title where there was none";
}

TEST_F(ChartTest, RainHangsAboveTheFlowOnItsTimes)
{
    const QImage before = chart.grab().toImage();
    const int top = chart.placeOf({0, 20}).y();
    chart.setRain({0, 1, 2, 30}, {0, 0.5, 1.0, 0.1}, "in");
    chart.drawNow();
    EXPECT_GT(chart.placeOf({0, 20}).y(), top + 40);
    EXPECT_EQ(chart.timeRange().upper, 30.0) << "both panels show one time axis";
    const QImage with = chart.grab().toImage();
    // The deepest bar reaches down between 1 and 2 hours; an hour later nothing hangs there.
    const auto blueAt = [&](double hours) {
        ChartScale scale{{0.0, 20.0}, double(chart.placeOf({0, 0}).x()), double(chart.placeOf({0, 20}).x()), false};
        int blue = 0;
        for (int y = 0; y < chart.placeOf({0, 20}).y() - 20; ++y) {
            const QColor color = with.pixelColor(qRound(scale.pixel(hours)), y);
            blue += color.blue() > color.red() + 60;
        }
        return blue;
    };
    EXPECT_GT(blueAt(1.5), 1.5 * blueAt(0.5));
    EXPECT_GT(blueAt(0.5), 10);
    EXPECT_LT(blueAt(5.5), blueAt(0.5));
    chart.setRain({}, {}, {});
    chart.drawNow();
    EXPECT_EQ(chart.placeOf({0, 20}).y(), top);
}

TEST_F(ChartTest, PicturesAreWhiteWholeAndOfTheKindAsked)
{
    QPalette dark;
    dark.setColor(QPalette::Base, QColor(30, 31, 34));
    chart.setPalette(dark);
    chart.drawNow();
    EXPECT_LT(qGray(chart.grab().toImage().pixel(3, 60)), 64) << "dark on the screen";
    QString why;
    const QImage png = QImage::fromData(chart.picture(PictureKind::Png, why, 2.0, {800, 500}), "PNG");
    EXPECT_EQ(png.size(), QSize(1600, 1000)) << why.toStdString();
    EXPECT_EQ(png.pixel(5, 120), 0xFFFFFFFF);
    const QImage bmp = QImage::fromData(chart.picture(PictureKind::Bmp, why, 1.0), "BMP");
    EXPECT_EQ(bmp.width(), 900);
    EXPECT_GT(chart.picture(PictureKind::Svg, why).count("<polyline"), 1);
    EXPECT_TRUE(chart.picture(PictureKind::Pdf, why).startsWith("%PDF-"));
    EXPECT_EQ(why, "");
    EXPECT_LT(qGray(chart.grab().toImage().pixel(3, 60)), 64) << "and dark again afterwards";
    for (const char* name : {"a.png", "b.SVG", "c.d.pdf", "e.bmp"})
        EXPECT_TRUE(pictureKindOf(name)) << name;
    EXPECT_FALSE(pictureKindOf("a.gif"));
    EXPECT_FALSE(pictureKindOf("png"));
}

TEST_F(ChartTest, OddSeriesAreDrawnWithoutHarm)
{
    const double nan = std::numeric_limits<double>::quiet_NaN(), inf = std::numeric_limits<double>::infinity();
    QVector<ChartSeries> odd{{"", {}, {}},
                             {"one", {3}, {4}},
                             {"all gaps", {1, 2}, {nan, nan}},
                             {"no times", {nan, nan}, {1, 2}},
                             {"zeros", {0, 1}, {0, 0}},
                             {"negative", {0, 1, 2}, {-5, inf, -1}},
                             {"ragged", {0, 1, 2, 3}, {1}},
                             {"back", {3, 2, 1}, {1, 2, 3}}};
    for (int i = 0; i < 70; ++i)
        odd.append(
            {QStringLiteral("a very long label, of station number %1, that fits nowhere").arg(i), {0, 1}, {1, 2}});
    for (const bool log : {false, true}) {
        chart.setOptions({true, true, log, 2.0});
        chart.setSeries(odd);
        chart.drawNow();
        QTest::keyClick(&chart, Qt::Key_Right);
        EXPECT_EQ(chart.cursorPoint().series, 1);
        EXPECT_GT(chart.placeOf({4, 1}).x() - chart.placeOf({4, 0}).x(), 20) << "a long legend leaves the curves room";
    }
    chart.setSeries({});
    QTest::keyClick(&chart, Qt::Key_Right);
    click(middle());
    EXPECT_TRUE(chart.cursorPoint().isNone());
}

} // namespace
