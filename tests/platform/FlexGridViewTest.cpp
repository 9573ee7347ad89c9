// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/FlexGridView.h"
#include "tests/support/GridText.h"

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QHeaderView>
#include <QScrollBar>
#include <QSignalSpy>
#include <QtTest>

#include <algorithm>

using namespace kalvo;

namespace {

/// A grid such as the deck's, shown: 12 columns of 60 pixels, rows of 20 pixels, one fixed row of 16 and one fixed
/// column of 40.
class FlexGridViewTest : public testing::Test
{
protected:
    FlexGridViewTest()
    {
        const FlexGrid::Bulk bulk(grid);
        grid.setCols(12);
        grid.setRows(201);
        grid.setAllRowHeights(300);
        grid.setRowHeight(0, 240);
        for (int col = 0; col < 12; ++col)
            grid.setColWidth(col, col == 0 ? 600 : 900);
        for (int row = 1; row < 201; ++row)
            grid.setTextMatrix(row, 0, QString::number(row));
    }
    void SetUp() override { showView(); }
    void showView()
    {
        view.resize(500, 300);
        view.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&view));
    }
    QPoint centre(int row, int col) const { return view.cellRect(row, col).center() - view.viewport()->pos(); }
    void click(int row, int col, Qt::KeyboardModifiers with = Qt::NoModifier)
    {
        QTest::mouseClick(view.viewport(), Qt::LeftButton, with, centre(row, col));
    }
    void drag(QWidget* on, const QPoint& from, const QPoint& to)
    {
        QTest::mousePress(on, Qt::LeftButton, {}, from);
        QMouseEvent move(QEvent::MouseMove, to, on->mapToGlobal(to), Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(on, &move);
        QTest::mouseRelease(on, Qt::LeftButton, {}, to);
    }
    QColor pixel(int row, int col) { return view.grab().toImage().pixelColor(view.cellRect(row, col).center()); }

    FlexGrid grid;
    FlexGridView view{grid};
};

std::string areaOf(const FlexGrid& grid)
{
    return QStringLiteral("%1,%2 to %3,%4")
        .arg(grid.row())
        .arg(grid.col())
        .arg(grid.rowSel())
        .arg(grid.colSel())
        .toStdString();
}

} // namespace

TEST_F(FlexGridViewTest, ClickAndDragMoveTheGridsCursorAndSelection)
{
    QSignalSpy entered(&grid, &FlexGrid::enteredCell);
    click(3, 2);
    EXPECT_EQ(areaOf(grid), "3,2 to 3,2");
    EXPECT_EQ(entered.size(), 1);
    click(5, 4, Qt::ShiftModifier);
    EXPECT_EQ(areaOf(grid), "3,2 to 5,4");
    drag(view.viewport(), centre(6, 5), centre(2, 3));
    EXPECT_EQ(areaOf(grid), "6,5 to 2,3");
    QTest::mouseClick(view.viewport(), Qt::RightButton, {}, centre(1, 1));
    EXPECT_EQ(areaOf(grid), "6,5 to 2,3");
    EXPECT_EQ(entered.size(), 2);
}

TEST_F(FlexGridViewTest, TheGridsCursorAndSelectionShow)
{
    grid.select(4, 3, 6, 5);
    EXPECT_EQ(view.currentIndex(), view.model()->index(3, 2));
    EXPECT_EQ(view.selectionModel()->selectedIndexes().size(), 9);
    EXPECT_EQ(pixel(6, 5), view.palette().color(QPalette::Highlight));
    EXPECT_NE(pixel(4, 3), view.palette().color(QPalette::Highlight)); // the cursor's own cell stays readable
    EXPECT_NE(pixel(7, 5), view.palette().color(QPalette::Highlight));
    grid.setCursor(0, 0); // fixed cells may hold the cursor too
    EXPECT_FALSE(view.currentIndex().isValid());
    EXPECT_TRUE(view.selectionModel()->selectedIndexes().isEmpty());
}

TEST_F(FlexGridViewTest, HeadersSelectWholeRowsAndColumns)
{
    QWidget* lines = view.verticalHeader()->viewport();
    QWidget* columns = view.horizontalHeader()->viewport();
    QTest::mouseClick(lines, Qt::LeftButton, {}, QPoint(10, 2 * 20 + 10));
    EXPECT_EQ(areaOf(grid), "3,1 to 3,11");
    QTest::mouseClick(columns, Qt::LeftButton, {}, QPoint(60 + 10, 5));
    EXPECT_EQ(areaOf(grid), "1,2 to 200,2");
    drag(lines, QPoint(10, 10), QPoint(10, 70));
    EXPECT_EQ(areaOf(grid), "1,1 to 4,11");
    QTest::mouseClick(view.findChild<QAbstractButton*>(), Qt::LeftButton);
    EXPECT_EQ(areaOf(grid), "1,1 to 200,11");
}

TEST_F(FlexGridViewTest, CellsStandWhereHeightsAndWidthsPutThem)
{
    const QPoint origin = view.cellRect(0, 0).topLeft();
    EXPECT_EQ(view.cellRect(0, 0).size(), QSize(40, 16));
    EXPECT_EQ(view.cellRect(1, 1), QRect(origin + QPoint(40, 16), QSize(60, 20)));
    grid.setCursor(3, 2);
    EXPECT_EQ(view.CellTop(), (origin.y() + 16 + 40) * 15);
    EXPECT_EQ(view.CellLeft(), (origin.x() + 40 + 60) * 15);
    EXPECT_EQ(view.CellWidth(), 900);
    EXPECT_EQ(view.CellHeight(), 300);
    grid.setRowHeight(1, 10); // hidden
    grid.setRowHeight(2, 600);
    EXPECT_EQ(view.cellRect(1, 1).height(), 0);
    EXPECT_EQ(view.CellTop(), (origin.y() + 16 + 40) * 15);
    EXPECT_EQ(view.rowPos(3), view.CellTop());
    EXPECT_THROW(view.cellRect(201, 0), std::out_of_range);

    EXPECT_EQ(view.rowAtPoint(view.cellRect(2, 1).center()), 2);
    EXPECT_EQ(view.rowAtPoint(view.cellRect(0, 1).center()), 0);
    EXPECT_EQ(view.colAtPoint(view.cellRect(4, 0).center()), 0);
    EXPECT_EQ(view.colAtPoint(view.cellRect(4, 3).center()), 3);
    EXPECT_EQ(view.rowAtPoint(QPoint(-5, 10)), -1);
}

TEST_F(FlexGridViewTest, MeasuresAreRightWithinABulkToo)
{
    const FlexGrid::Bulk bulk(grid);
    const int before = view.cellRect(3, 1).top();
    grid.setRowHeight(1, 600);
    EXPECT_EQ(view.cellRect(3, 1).top(), before + 20);
    grid.setRows(401);
    grid.setRowHeight(400, 450);
    EXPECT_EQ(view.cellRect(400, 1).height(), 30);
}

TEST_F(FlexGridViewTest, ScrollingGoesBothWays)
{
    grid.setTopRow(50);
    EXPECT_EQ(view.verticalScrollBar()->value(), 49);
    EXPECT_TRUE(view.rowIsVisible(50));
    EXPECT_FALSE(view.rowIsVisible(49));
    EXPECT_FALSE(view.rowIsVisible(90));
    EXPECT_TRUE(view.rowIsVisible(0));
    EXPECT_LT(view.rowPos(49), view.rowPos(50));
    view.verticalScrollBar()->setValue(10);
    EXPECT_EQ(grid.topRow(), 11);
    view.horizontalScrollBar()->setValue(2);
    EXPECT_EQ(grid.leftCol(), 3);
    EXPECT_FALSE(view.colIsVisible(2));

    grid.setTopRow(200); // farther than the view can scroll: the grid learns how far it got
    EXPECT_EQ(grid.topRow(), view.verticalScrollBar()->maximum() + 1);
    EXPECT_TRUE(view.rowIsVisible(200));
    grid.setRows(20);
    EXPECT_EQ(grid.topRow(), view.verticalScrollBar()->value() + 1);
}

TEST_F(FlexGridViewTest, FollowsTheCursorAndTellsThatCellsMoved)
{
    int movedBeforeEntered = -1;
    QSignalSpy moved(&view, &FlexGridView::viewMoved);
    QObject::connect(&grid, &FlexGrid::enteredCell, &view,
                     [&] { movedBeforeEntered = static_cast<int>(moved.size()); });
    grid.setRow(120);
    EXPECT_TRUE(view.rowIsVisible(120));
    EXPECT_EQ(movedBeforeEntered, 1);
    {
        const FlexGrid::Bulk bulk(grid); // a loop over the deck that puts the cursor back scrolls nothing
        for (int row = 1; row < 201; ++row)
            grid.setRow(row);
        grid.setRow(120);
    }
    EXPECT_EQ(moved.size(), 1);
    {
        const FlexGrid::Bulk bulk(grid); // a topRow of its own goes ahead of the cursor
        grid.setRow(5);
        grid.setTopRow(100);
    }
    EXPECT_EQ(grid.topRow(), 100);
    view.setFollowsCursor(false);
    grid.setRow(8);
    EXPECT_EQ(grid.topRow(), 100);
}

TEST_F(FlexGridViewTest, KeysMoveUnlessTheScreenTakesThem)
{
    grid.setCursor(1, 1);
    grid.setRowHeight(3, 10);
    const auto press = [this](Qt::Key key, Qt::KeyboardModifiers with = Qt::NoModifier) {
        QTest::keyClick(&view, key, with);
        return areaOf(grid);
    };
    EXPECT_EQ(press(Qt::Key_Down), "2,1 to 2,1");
    EXPECT_EQ(press(Qt::Key_Down), "4,1 to 4,1"); // over the hidden row
    EXPECT_EQ(press(Qt::Key_Right), "4,2 to 4,2");
    EXPECT_EQ(press(Qt::Key_End), "4,11 to 4,11");
    EXPECT_EQ(press(Qt::Key_Right), "4,11 to 4,11");
    EXPECT_EQ(press(Qt::Key_Up, Qt::ShiftModifier), "4,11 to 2,11");
    EXPECT_EQ(press(Qt::Key_Left, Qt::ShiftModifier), "4,11 to 2,10");
    EXPECT_EQ(press(Qt::Key_End, Qt::ControlModifier), "200,11 to 200,11");
    EXPECT_EQ(press(Qt::Key_Home, Qt::ControlModifier), "1,1 to 1,1");
    EXPECT_EQ(press(Qt::Key_Up), "1,1 to 1,1");
    EXPECT_EQ(press(Qt::Key_Down, Qt::ControlModifier), "1,1 to 1,1");
    press(Qt::Key_PageDown);
    EXPECT_EQ(grid.row(), 2 + view.rowsPerPage()); // one of them is hidden

    QObject::connect(&view, &FlexGridView::keyOnGrid, &view, [](QKeyEvent* key) { key->accept(); });
    const std::string before = areaOf(grid);
    EXPECT_EQ(press(Qt::Key_Up), before);
}

TEST_F(FlexGridViewTest, WheelIsToldInWholeStepsAndScrollsAloneWhereNobodyListens)
{
    const auto turn = [this](int delta) {
        const QPoint at(50, 50);
        QWheelEvent event(at, view.viewport()->mapToGlobal(at), {}, {0, delta}, Qt::NoButton, Qt::NoModifier,
                          Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(view.viewport(), &event);
    };
    turn(-120);
    const int alone = grid.topRow();
    EXPECT_GT(alone, 1);
    QList<int> told;
    QObject::connect(&view, &FlexGridView::wheelTurned, &view, [&](int delta) { told.append(delta); });
    for (const int delta : {-120, 240, -50, -50, -50, 100})
        turn(delta);
    EXPECT_EQ(told, (QList<int>{-120, 120, 120, -120}));
    EXPECT_EQ(grid.topRow(), alone);
}

TEST_F(FlexGridViewTest, UserResizingWritesTwipsAndTellsWhenItIsOver)
{
    QWidget* columns = view.horizontalHeader()->viewport();
    QSignalSpy resized(&view, &FlexGridView::resizedByUser);
    const auto dragEdge = [&] {
        drag(columns, QPoint(59, 5), QPoint(89, 5));
        QCoreApplication::processEvents();
    };
    dragEdge();
    EXPECT_EQ(grid.colWidth(1), 900);
    view.setUserResizing(true);
    dragEdge();
    EXPECT_EQ(grid.colWidth(1), 1350);
    EXPECT_EQ(resized.size(), 1);
    EXPECT_EQ(view.cellRect(1, 1).width(), 90);
    grid.setColWidth(1, 900);
    EXPECT_EQ(view.cellRect(1, 1).width(), 60);
    EXPECT_EQ(resized.size(), 1);
}

TEST_F(FlexGridViewTest, ColoursAreTheCellsOwnOrThePalettes)
{
    grid.setCellFormat(4, 4, CellFormat{.backColor = rgb(255, 240, 0)});
    EXPECT_EQ(pixel(4, 4), QColor(255, 240, 0));
    EXPECT_EQ(pixel(5, 5), view.palette().color(QPalette::Base));
    QPalette dark = view.palette();
    dark.setColor(QPalette::Base, QColor(30, 30, 30));
    dark.setColor(QPalette::Text, QColor(230, 230, 230));
    view.setPalette(dark);
    EXPECT_EQ(pixel(5, 5), QColor(30, 30, 30));
    EXPECT_EQ(pixel(4, 4), QColor(255, 240, 0));
    grid.setTextMatrix(4, 4, "888888");
    int darkest = 255;
    const QImage marked = view.grab(view.cellRect(4, 4).adjusted(0, 0, -2, -2)).toImage();
    for (int x = 0; x < marked.width(); ++x)
        darkest = std::min(darkest, qGray(marked.pixel(x, marked.height() / 2)));
    EXPECT_LT(darkest, 80) << "light text of the dark palette on a yellow mark";
    GridColors colors;
    colors.backColor = rgb(10, 20, 90);
    grid.setColors(colors);
    EXPECT_EQ(pixel(5, 5), QColor(10, 20, 90));
    const QPoint corner = view.cellRect(5, 5).bottomRight();
    EXPECT_NE(view.grab().toImage().pixelColor(corner), QColor(10, 20, 90));
    grid.setGridLines(false);
    EXPECT_EQ(view.grab().toImage().pixelColor(corner), QColor(10, 20, 90));
}

TEST_F(FlexGridViewTest, HiddenRowsLeaveNoTrace)
{
    const QImage before = view.grab(view.cellRect(2, 1)).toImage();
    for (int row = 3; row < 60; ++row) {
        grid.setTextMatrix(row, 1, "hidden");
        grid.setRowHeight(row, 10);
    }
    EXPECT_EQ(view.cellRect(60, 1).top(), view.cellRect(2, 1).bottom() + 1);
    EXPECT_EQ(view.grab(view.cellRect(2, 1)).toImage(), before);
    EXPECT_EQ(view.rowAtPoint(view.cellRect(60, 1).center()), 60);
}

TEST_F(FlexGridViewTest, TipsAndPointerTellOfTheCellBelow)
{
    QList<QPoint> pointers;
    QObject::connect(&view, &FlexGridView::pointerMoved, &view, [&](int x, int y) { pointers.append({x, y}); });
    QWidget* lines = view.verticalHeader()->viewport();
    QMouseEvent move(QEvent::MouseMove, QPointF(5, 30), lines->mapToGlobal(QPointF(5, 30)), Qt::NoButton, Qt::NoButton,
                     Qt::NoModifier);
    QCoreApplication::sendEvent(lines, &move);
    const QPoint inView = lines->mapTo(&view, QPoint(5, 30));
    EXPECT_EQ(pointers, QList<QPoint>{inView * 15});

    QList<QPoint> asked;
    view.setTipText([&](int row, int col) {
        asked.append({row, col});
        return QString();
    });
    QHelpEvent tip(QEvent::ToolTip, QPoint(5, 30), lines->mapToGlobal(QPoint(5, 30)));
    QCoreApplication::sendEvent(lines, &tip);
    EXPECT_EQ(asked, (QList<QPoint>{{2, 0}}));
}

TEST_F(FlexGridViewTest, MenuAndDoubleClickAreTold)
{
    QSignalSpy menu(&view, &FlexGridView::contextMenuAsked);
    QSignalSpy twice(&view, &FlexGridView::gridDoubleClicked);
    const QPoint at = centre(2, 2);
    QContextMenuEvent event(QContextMenuEvent::Mouse, at, view.viewport()->mapToGlobal(at));
    QCoreApplication::sendEvent(view.viewport(), &event);
    ASSERT_EQ(menu.size(), 1);
    EXPECT_EQ(menu.at(0).at(0).toPoint(), view.viewport()->mapToGlobal(at));
    QTest::mouseDClick(view.viewport(), Qt::LeftButton, {}, at);
    ASSERT_EQ(twice.size(), 1);
    EXPECT_EQ(twice.at(0), (QVariantList{2, 2}));
}

TEST_F(FlexGridViewTest, NothingBreaksWithoutRowsColumnsOrFixedOnes)
{
    for (const auto& [rows, cols] : {std::pair{0, 0}, {1, 1}, {0, 5}, {5, 0}, {3, 3}}) {
        grid.setRows(rows);
        grid.setCols(cols);
        view.grab();
        view.selectAll();
        for (const Qt::Key key : {Qt::Key_Down, Qt::Key_End, Qt::Key_PageUp})
            QTest::keyClick(&view, key, Qt::ShiftModifier);
        QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, QPoint(5, 5));
        QCoreApplication::processEvents();
        EXPECT_EQ(view.rowAtPoint(QPoint(490, 290)), -1);
    }
    grid.setFixedRows(0);
    grid.setFixedCols(0);
    view.grab();
    click(0, 0);
    EXPECT_EQ(areaOf(grid), "0,0 to 0,0");
}
