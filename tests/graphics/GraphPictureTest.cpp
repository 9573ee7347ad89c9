// SPDX-License-Identifier: GPL-3.0-or-later
#include "graphics/GraphPicture.h"
#include "graphics/GraphTicks.h"

#include "platform/text.h"
#include "tests/support/GridText.h"

#include <gtest/gtest.h>

namespace kalvo {
namespace {

constexpr Rgb kRed = rgb(200, 0, 0);

/// Pixels of the picture that are not paper, within an area given in twips.
int inkIn(const GraphPicture& picture, double left, double top, double right, double bottom)
{
    const double scale = picture.image().devicePixelRatio();
    const QRect area = QRectF(picture.pixelAt({left, top}) * scale, picture.pixelAt({right, bottom}) * scale)
                           .toAlignedRect()
                           .intersected(picture.image().rect());
    int ink = 0;
    for (int y = area.top(); y <= area.bottom(); ++y)
        for (int x = area.left(); x <= area.right(); ++x)
            ink += (picture.image().pixel(x, y) & 0xFFFFFFu) != 0xFFFFFFu ? 1 : 0;
    return ink;
}

QRgb pixel(const GraphPicture& picture, double x, double y)
{
    const QPointF at = picture.pixelAt({x, y}) * picture.image().devicePixelRatio();
    return picture.image().pixel(static_cast<int>(at.x()), static_cast<int>(at.y())) & 0xFFFFFFu;
}

struct GraphPictureTest : testing::TestWithParam<double>
{
    GraphPicture picture;
    GraphScale scale;

    GraphPictureTest()
    {
        picture.reset({800.0, 500.0}, GetParam());
        scale = graphScale({1000.0, 600.0}, {0, 100, 0}, {0, 100, 100}, picture.width(), picture.height(), 0);
    }
    GraphPicture::Axes axes() const
    {
        return {{0.0, scale.originY()}, scale.xScale, scale.yScale, scale.timeRange, scale.flowRange, scale.shift};
    }
};

TEST_P(GraphPictureTest, CurveGoesThroughItsPoints)
{
    auto table = gridOf("h|m|A\n|0|0\n|300|1000\n|600|0\n");
    picture.drawCurve(table, 2, scale, kRed, 60.0);
    const auto at = [this](double minutes, double flow) {
        return pixel(picture, minutes * scale.xScale, scale.originY() - flow * scale.yScale);
    };
    for (const auto& [minutes, flow] : {std::pair{60.0, 200.0}, {150.0, 500.0}, {450.0, 500.0}})
        EXPECT_EQ(at(minutes, flow), static_cast<QRgb>(kRed)) << minutes;
    EXPECT_EQ(at(300.0, 500.0), 0xFFFFFFu);
    EXPECT_EQ(at(30.0, 500.0), 0xFFFFFFu);
}

TEST_P(GraphPictureTest, ACurveWithoutAnyOrderFillsWhatItCrosses)
{
    FlexGrid table;
    table.setRows(4001);
    table.setCols(3);
    std::vector<double> minutes, flows;
    for (int i = 0; i < 4000; ++i) {
        minutes.push_back(i * 0.075); // to the middle of the picture
        flows.push_back(i % 2 == 0 ? 200.0 : 800.0);
    }
    table.setNumberColumn(1, 1, minutes, generalText);
    table.setNumberColumn(2, 1, flows, generalText);
    picture.drawCurve(table, 2, scale, kRed, 0.0);
    const auto at = [this](double time, double flow) {
        return pixel(picture, time * scale.xScale, scale.originY() - flow * scale.yScale);
    };
    for (double time = 2.0; time < 298.0; time += 0.5)
        for (const double flow : {210.0, 500.0, 790.0})
            ASSERT_EQ(at(time, flow), static_cast<QRgb>(kRed)) << time << " " << flow;
    for (const double flow : {180.0, 820.0})
        EXPECT_EQ(at(150.0, flow), 0xFFFFFFu);
    EXPECT_EQ(at(305.0, 500.0), 0xFFFFFFu);
}

TEST_P(GraphPictureTest, NothingIsDrawnOverTheBorderBesideTheAxis)
{
    auto table = gridOf("h|m|A\n|0|0\n|300|90000\n|600|-90000\n");
    scale.shift = 2000.0;
    picture.drawCurve(table, 2, scale, kRed, 600.0);
    EXPECT_GT(inkIn(picture, 0.0, 0.0, picture.width(), picture.height()), 100);
    EXPECT_EQ(inkIn(picture, -900.0, 0.0, -15.0, picture.height()), 0);
}

TEST_P(GraphPictureTest, AxesTicksAndLabelsStandWhereTheyBelong)
{
    picture.drawAxes(axes());
    const double tick = scale.originY() - 500.0 * scale.yScale;
    EXPECT_NE(pixel(picture, 0.0, tick - 200.0), 0xFFFFFFu) << "flow axis";
    EXPECT_NE(pixel(picture, 3000.0, scale.originY()), 0xFFFFFFu) << "time axis";
    EXPECT_GT(inkIn(picture, 90.0, tick - 15.0, 140.0, tick + 15.0), 0) << "a long tick at 500";
    EXPECT_EQ(inkIn(picture, 165.0, tick - 15.0, 400.0, tick + 15.0), 0);
    EXPECT_GT(inkIn(picture, -500.0, tick - 70.0, -40.0, tick + 70.0), 5) << "its label";
    const double hour6 = 360.0 * scale.xScale, foot = scale.originY();
    EXPECT_EQ(pixel(picture, hour6, foot - 80.0), 0u) << "a mark 100 high at hour 6";
    EXPECT_EQ(inkIn(picture, hour6 - 300.0, foot - 95.0, hour6 - 45.0, foot - 65.0), 0);
    EXPECT_GT(inkIn(picture, hour6 - 60.0, foot + 45.0, hour6 + 60.0, foot + 240.0), 3) << "its label";
    EXPECT_GT(inkIn(picture, 60.0 * scale.xScale - 15.0, foot - 45.0, 60.0 * scale.xScale + 15.0, foot - 20.0), 0)
        << "a mark every hour";
}

TEST_P(GraphPictureTest, LabelsBlankWhatStandsThereAndTheSameAxesAreDrawnOnce)
{
    const double at = scale.originY() - 500.0 * scale.yScale;
    const auto redIn = [this](double top, double bottom) {
        int red = 0;
        for (double y = top; y <= bottom; y += 7.5)
            for (double x = -125.0; x <= -60.0; x += 7.5)
                red += pixel(picture, x, y) == static_cast<QRgb>(kRed) ? 1 : 0;
        return red;
    };
    for (const double y : {at - 80.0, at, at + 80.0})
        picture.fillBox({-90.0, y}, kRed);
    picture.drawAxes(axes());
    EXPECT_EQ(redIn(at - 60.0, at + 60.0), 0) << "the patch of 100 by 150 around the label";
    EXPECT_GT(redIn(at - 150.0, at - 90.0), 30) << "and not beyond it";

    const QImage before = picture.image();
    picture.drawAxes(axes());
    EXPECT_EQ(picture.image(), before) << "letters do not grow bold";
    picture.fillBox({0.0, at}, rgb(255, 255, 255));
    EXPECT_NE(picture.image(), before);
    picture.drawAxes(axes());
    EXPECT_NE(pixel(picture, 0.0, at), 0xFFFFFFu) << "what was wiped comes back with the next curve";
}

TEST_P(GraphPictureTest, IsSavedWithAllItsPixels)
{
    picture.writeText({3000.0, 3000.0}, "Outflow", kRed);
    EXPECT_GT(inkIn(picture, 3000.0, 3000.0, 3700.0, 3250.0), 20);
    for (const char* format : {"PNG", "BMP"}) {
        const QImage read = QImage::fromData(picture.encoded(format), format);
        EXPECT_EQ(read.size(), QSize(800, 500) * GetParam()) << format;
        EXPECT_EQ(read.convertToFormat(QImage::Format_RGB32), [this] {
            QImage plain = picture.image();
            plain.setDevicePixelRatio(1.0);
            return plain;
        }()) << format;
    }
    EXPECT_EQ(picture.encoded("BMP").size(), 54 + 800 * 500 * 3 * GetParam() * GetParam()) << "24 bits a pixel";
}

INSTANTIATE_TEST_SUITE_P(, GraphPictureTest, testing::Values(1.0, 2.0),
                         [](const auto& row) { return row.param == 1.0 ? "Plain" : "Fine"; });

} // namespace
} // namespace kalvo
