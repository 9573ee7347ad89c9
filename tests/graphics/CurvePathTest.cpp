// SPDX-License-Identifier: GPL-3.0-or-later
#include "graphics/CurvePath.h"

#include "platform/text.h"
#include "tests/support/GridText.h"

#include <gtest/gtest.h>

#include <cmath>

namespace kalvo {
namespace {

/// A minute is a pixel, and so is a unit of flow; flow 0 stands at y 100.
const CurveMap kPlain{{0.0, 100.0}, 1.0, 1.0, {-10.0, -10.0, 1000.0, 200.0}, 0.0};

std::string shown(const CurvePath& path)
{
    std::string text;
    for (const auto& line : path.lines) {
        text += text.empty() ? "" : " | ";
        for (const QPointF& point : line)
            text += "(" + generalText(point.x()).toStdString() + "," + generalText(point.y()).toStdString() + ")";
    }
    return text;
}

TEST(CurvePath, EndsAtTheFirstBlankCellAndLeavesWordsOut)
{
    auto table = gridOf("Time (hrs)|Time (min)|A|B|C\n|0|0|1|5\n|5|10|x|\n|10|20|3|7\n|15|-5|4|8\n|20||5|9");
    EXPECT_EQ(shown(curvePath(table, 2, kPlain)), "(0,100)(5,90)(10,80)(15,105)") << "negative flow below the axis";
    EXPECT_EQ(shown(curvePath(table, 3, kPlain)), "(10,97)(15,96)(20,95)") << "one point alone makes no line";
    EXPECT_EQ(shown(curvePath(table, 4, kPlain)), "") << "what follows the blank does not count";
    EXPECT_EQ(curvePath(table, 4, kPlain).start, QPointF(0, 95));
    for (const int outside : {-1, 0, 1, 5})
        EXPECT_FALSE(curvePath(table, outside, kPlain).start) << outside;
}

TEST(CurvePath, IsCutToTheWindow)
{
    auto table = gridOf("h|m|A\n|0|50\n|10|1e300\n|20|50\n|2000|50\n|2010|50");
    const CurvePath path = curvePath(table, 2, kPlain);
    ASSERT_GE(path.lines.size(), 2);
    for (const auto& line : path.lines)
        for (const QPointF& point : line) {
            EXPECT_GE(point.y(), -10.0 - 1e-6);
            EXPECT_LE(point.x(), 990.0 + 1e-6);
        }
    EXPECT_EQ(path.lines.front().front(), QPointF(0, 50));
    EXPECT_EQ(path.lines.back().last(), QPointF(990, 50));
}

TEST(CurvePath, MergingKeepsTheHighestAndLowestOfAPixel)
{
    FlexGrid table;
    table.setRows(2001);
    table.setCols(3);
    std::vector<double> minutes, flows;
    for (int i = 0; i < 2000; ++i) {
        minutes.push_back(i * 0.05);
        flows.push_back(i % 97 == 13 ? 90.0 : i % 89 == 7 ? 5.0 : 40.0);
    }
    table.setNumberColumn(1, 1, minutes, generalText);
    table.setNumberColumn(2, 1, flows, generalText);
    CurveMap map = kPlain;
    map.pixel = 1.0;
    const CurvePath merged = curvePath(table, 2, map), whole = curvePath(table, 2, kPlain);
    ASSERT_EQ(merged.lines.size(), 1);
    EXPECT_LE(merged.lines[0].size(), 4 * 100 + 4);
    EXPECT_GT(whole.lines[0].size(), 1900);
    const auto reaches = [](const CurvePath& path, double y) {
        int count = 0;
        for (const QPointF& point : path.lines[0])
            count += point.y() == y ? 1 : 0;
        return count;
    };
    EXPECT_EQ(reaches(merged, 10.0), reaches(whole, 10.0)) << "every spike is still there";
    EXPECT_EQ(reaches(merged, 95.0), reaches(whole, 95.0));
}

TEST(CurvePath, PointsOnAStraightLineAreLeftOutAndNoneStandsOffByMoreThanATenthOfAPixel)
{
    FlexGrid table;
    table.setRows(901);
    table.setCols(3);
    std::vector<double> minutes, flows;
    for (int i = 0; i < 900; ++i) {
        minutes.push_back(i);
        flows.push_back(i < 300 ? 20.0 : 20.0 + 60.0 * std::exp(-std::pow((i - 550) / 80.0, 2)));
    }
    table.setNumberColumn(1, 1, minutes, generalText);
    table.setNumberColumn(2, 1, flows, generalText);
    CurveMap map = kPlain;
    map.pixel = 1.0;
    const CurvePath path = curvePath(table, 2, map);
    ASSERT_EQ(path.lines.size(), 1);
    const auto& line = path.lines[0];
    EXPECT_LT(line.size(), 120);
    EXPECT_EQ(line.front(), QPointF(0, 80));
    EXPECT_EQ(line.last().x(), 899.0);
    double worst = 0.0;
    for (qsizetype i = 1; i < line.size(); ++i)
        for (double x = line[i - 1].x(); x <= line[i].x(); ++x) {
            const double t = (x - line[i - 1].x()) / (line[i].x() - line[i - 1].x());
            const double y = line[i - 1].y() + t * (line[i].y() - line[i - 1].y());
            worst = std::max(worst, std::abs(y - (100.0 - flows[static_cast<size_t>(x)])));
        }
    EXPECT_LE(worst, 0.1 + 1e-9);
}

} // namespace
} // namespace kalvo
