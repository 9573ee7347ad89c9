// SPDX-License-Identifier: GPL-3.0-or-later
#include "deck/EditorPlacement.h"

#include <algorithm>
#include <cmath>

namespace kalvo {

namespace {

constexpr int kScrollBarRoom = 280;
constexpr int kLeastRoomUnderLastRow = 75;
constexpr double kEdgeByPoint = 26.0; ///< of the font: a cell nearer to the edge than this is past it
constexpr int kEdgeByScrollBar = 180;
constexpr int kFrame = 45;
constexpr int kFrameByScrollBar = 10;
constexpr int kBottomRoom = 520;

constexpr int kFitRoomRight = 100;
constexpr int kFitRoomByScrollBar = 350;
constexpr int kFitRoomBelow = 200;
constexpr int kFitFrame = 25;
constexpr int kPointerPastHeaders = 25;

constexpr double kLargestText = 16.0;
constexpr double kSmallestText = 7.0;

bool isPastTheEdge(const EditorSurroundings& around)
{
    const double edge = kEdgeByPoint * around.fontSize;
    const double right = around.gridWidth - edge - (hasScrollBar(around) ? kEdgeByScrollBar : 0);
    return around.cellLeft > right || around.cellTop > around.gridHeight - edge;
}

int placedWidth(const EditorSurroundings& around)
{
    const bool scrollBar = hasScrollBar(around);
    const int scrollRoom = scrollBar ? kScrollBarRoom : 0;
    if (around.cellLeft + around.cellWidth <= around.gridWidth - scrollRoom)
        return around.cellWidth;
    return around.gridWidth - around.cellLeft - scrollRoom - (scrollBar ? kFrameByScrollBar : kFrame);
}

bool isUnderHeader(const EditorSurroundings& around)
{
    return around.cellTop < around.headerHeight || around.cellLeft < around.headerWidth;
}

EditorPlace placeOf(const EditorSurroundings& around, int width, int height)
{
    return {true, around.gridLeft + around.cellLeft, around.gridTop + around.cellTop, width, height};
}

bool passesTheBottom(const EditorSurroundings& around)
{
    return around.cellTop + around.cellHeight > around.gridHeight;
}

int cutHeight(const EditorSurroundings& around)
{
    return std::max(around.gridHeight + around.gridTop - around.cellTop - kBottomRoom, around.lineHeight);
}

} // namespace

bool hasScrollBar(const EditorSurroundings& around)
{
    return !around.isFirstRowVisible || around.roomUnderLastRow < kLeastRoomUnderLastRow;
}

EditorPlace placeEditor(const EditorSurroundings& around)
{
    if (around.isHiddenRow || isUnderHeader(around) || isPastTheEdge(around))
        return {};
    return placeOf(around, placedWidth(around), passesTheBottom(around) ? cutHeight(around) : around.cellHeight);
}

EditorPlace FitTextBox(const EditorSurroundings& around)
{
    const bool scrollBar = !around.isLastRowVisible;
    const int room = scrollBar ? kFitRoomByScrollBar : kFitRoomRight;
    if (around.isHiddenRow || isUnderHeader(around) || around.cellLeft > around.gridWidth - room ||
        around.cellTop > around.gridHeight - kFitRoomBelow)
        return {};
    const int cutWidth =
        around.gridWidth - around.cellLeft - (scrollBar ? kScrollBarRoom + kFrameByScrollBar : kFitFrame);
    const bool passesTheRight = around.cellLeft + around.cellWidth > around.gridWidth;
    return placeOf(around, passesTheRight ? cutWidth : around.cellWidth,
                   scrollBar && passesTheBottom(around) ? cutHeight(around) : around.cellHeight);
}

int noFitAfterMove(int noFitAfterDrag, const EditorSurroundings& around, int x, int y)
{
    const bool inCells =
        x >= around.headerWidth + kPointerPastHeaders && y >= around.headerHeight + kPointerPastHeaders;
    if (!inCells || !around.isCellVisible)
        return noFitAfterDrag;
    return hasScrollBar(around) ? 1 : 0;
}

double largerText(double points)
{
    return std::min(points + 1.0, kLargestText);
}

double smallerText(double points)
{
    return std::max(points - 1.0, kSmallestText);
}

} // namespace kalvo
