// SPDX-License-Identifier: GPL-3.0-or-later
// The Grapher through its own controls: lists, bars, pointer, keys.
#include "graphics/GraphScreens.h"

#include "graphics/FloatingLabels.h"
#include "graphics/GraphCanvas.h"
#include "platform/FlexGridView.h"
#include "tests/graphics/GraphTables.h"
#include "tests/support/GridText.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QLabel>
#include <QListWidget>
#include <QScrollBar>
#include <QSlider>
#include <QTest>

#include <gtest/gtest.h>

#include <set>

namespace kalvo {
namespace {

constexpr QRgb kWhite = 0xFFFFFFu;

struct GrapherTest : testing::Test
{
    ScriptedServices services;
    Screens screens;
    std::shared_ptr<ResultTables> tables = std::make_shared<ResultTables>();
    std::shared_ptr<ResultDesk> desk = std::make_shared<ResultDesk>(services, screens, tables);
    Rgb background = Rgb::None;
    GRAPHER* screen = nullptr;

    GrapherTest()
    {
        tables->follow(screens);
        tables->deckName = "detent";
        registerGrapher(screens, desk, {[this] { return background; }, {}});
    }
    /// Stations SUB1, SUB2 ... with ratios; 25 ordinates, 15 minutes apart, rising from 1.
    static std::string tapeOf(int stations, int ratios)
    {
        std::string tape;
        for (int s = 1; s <= stations; ++s)
            tape += risingStation(
                {.name = "SUB" + std::to_string(s), .minutes = "15", .ratios = std::to_string(ratios)}, 25, ratios);
        return tape;
    }
    GRAPHER& shown(const std::string& tape)
    {
        screens.load("GRAPHER"); // ahead of the tables, as the Graph command does
        fillFrom(*tables, tape);
        tables->tellChanged();
        tables->tellFilled();
        screens.show("GRAPHER");
        screen = screens.loadAs<GRAPHER>("GRAPHER");
        EXPECT_TRUE(QTest::qWaitForWindowActive(screen));
        return *screen;
    }
    template <class Control> Control& in(const char* name)
    {
        auto* control = screen->findChild<Control*>(QString::fromLatin1(name));
        if (!control)
            throw std::runtime_error(name);
        return *control;
    }
    GraphCanvas& P1() { return in<GraphCanvas>("P1"); }
    FlexGrid& legend() { return in<FlexGridView>("fg").grid(); }
    QString text(const char* name) { return in<QLineEdit>(name).text(); }
    void select(const char* list, std::initializer_list<int> rows)
    {
        auto& widget = in<QListWidget>(list);
        widget.clearSelection();
        for (const int row : rows)
            widget.item(row)->setSelected(true);
    }
    void run() { QTest::mouseClick(&in<QPushButton>("Command2"), Qt::LeftButton); }
    /// The place of a time and a flow, in pixels of the canvas.
    QPoint at(double minutes, double flow)
    {
        const GraphScale& s = screen->scale();
        return (screen->picture().pixelAt({minutes * s.xScale - s.shift, s.originY() - flow * s.yScale}) * P1().zoom())
            .toPoint();
    }
    QRgb pixel(const QPoint& onCanvas) const
    {
        const QImage& image = screen->picture().image();
        return image.pixel((QPointF(onCanvas) * image.devicePixelRatio()).toPoint()) & 0xFFFFFFu;
    }
    /// True when a line of the colour goes through the place or beside it: fine lines blend with the paper.
    bool isDrawn(const QPoint& onCanvas, QRgb color) const
    {
        const QColor wanted(color);
        for (const QPoint& beside : {QPoint(0, 0), QPoint(0, -1), QPoint(0, 1), QPoint(-1, 0), QPoint(1, 0)}) {
            const QColor is(pixel(onCanvas + beside));
            if (std::abs(is.red() - wanted.red()) + std::abs(is.green() - wanted.green()) +
                    std::abs(is.blue() - wanted.blue()) <
                120)
                return true;
        }
        return false;
    }
    /// How many pixels of an image have a colour.
    static int count(const QImage& image, QRgb color)
    {
        int found = 0;
        for (int y = 0; y < image.height(); ++y)
            for (int x = 0; x < image.width(); ++x)
                found += (image.pixel(x, y) & 0xFFFFFFu) == color ? 1 : 0;
        return found;
    }
    QRgb rowColor(int row) { return static_cast<QRgb>(legend().cellFormat(row, 0).backColor); }
    void wheelOf(Qt::Key key, QWidget& to, int times = 1)
    {
        for (int i = 0; i < times; ++i)
            QTest::keyClick(&to, key);
    }
};

TEST_F(GrapherTest, OneHydrographIsDrawnAtOnce)
{
    shown(tapeOf(1, 1));
    EXPECT_EQ(gridText(legend()), "SUB1      Rt 1 Pln 1 JD 1 Q=25");
    EXPECT_GT(count(screen->picture().image(), rowColor(0)), 50);
    EXPECT_EQ(P1().hint(), "");
    EXPECT_EQ(in<QLabel>("fgCaption").text(), "Left Click/Right Drag to Screen /Dbl Clk to Stick");
    EXPECT_EQ(in<QCheckBox>("Check1").text(), "Erase &Mode");
    EXPECT_EQ(in<QPushButton>("Command2").text(), "Run Graph Routine");
    EXPECT_EQ(in<QLabel>("Text13").text(), "201.0");
    EXPECT_EQ(in<QLabel>("VerticalExpansion").text(), "1.0");
    EXPECT_FALSE(in<QListWidget>("List3").isVisible());
    EXPECT_GE(legend().colWidth(0), in<FlexGridView>("fg").fontMetrics().horizontalAdvance("WWWWWWWWWWWWWWWWWW") * 15);
}

TEST_F(GrapherTest, EveryChosenCombinationIsAddedAndSaysWhatItIs)
{
    shown(tapeOf(3, 2));
    EXPECT_TRUE(P1().hint().contains("stations, ratios")) << P1().hint().toStdString();
    EXPECT_EQ(gridText(legend()), "");
    select("List1", {0, 2});
    EXPECT_TRUE(P1().hint().contains("ratios"));
    select("List2", {0, 1});
    EXPECT_EQ(tables->GRAPHER.List1.selected, (QList<int>{0, 2})) << "the shared lists know the choice";
    run();
    EXPECT_EQ(gridText(legend()), "SUB1      Rt 1 Pln 1 JD 1 Q=25\nSUB1      Rt 2 Pln 1 JD 1 Q=50\n"
                                  "SUB3      Rt 1 Pln 1 JD 1 Q=25\nSUB3      Rt 2 Pln 1 JD 1 Q=50");
    EXPECT_EQ(in<QLabel>("News").text(), "4 curves");

    select("List1", {1});
    select("List2", {0});
    run();
    run();
    EXPECT_EQ(legend().rows(), 6) << "the button adds, also the same curve once more";
    EXPECT_NE(rowColor(4), rowColor(5));
    std::set<QRgb> colors;
    for (int row = 0; row < 6; ++row)
        colors.insert(rowColor(row));
    EXPECT_EQ(colors.size(), 6u);
}

TEST_F(GrapherTest, TheKeyboardAloneDraws)
{
    shown(tapeOf(3, 2));
    auto& list = in<QListWidget>("List1");
    EXPECT_TRUE(list.hasFocus());
    QTest::keyClick(&list, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(&list, Qt::Key_Tab);
    ASSERT_EQ(screen->focusWidget(), &in<QListWidget>("List2"));
    QTest::keyClick(screen->focusWidget(), Qt::Key_Space);
    QTest::keyClick(screen->focusWidget(), Qt::Key_Return);
    EXPECT_EQ(legend().rows(), 3);
    std::set<QString> reached;
    for (int i = 0; i < 40; ++i) {
        reached.insert(screen->focusWidget()->objectName());
        QTest::keyClick(screen->focusWidget(), Qt::Key_Tab);
    }
    for (const char* name : {"List1", "List2", "List4", "List5", "Command2", "VScroll1", "HScroll1", "HScroll2", "P1",
                             "Slider1", "Slider2", "Check1", "fg"})
        EXPECT_TRUE(reached.count(name)) << name;
}

TEST_F(GrapherTest, ABarDrawsTheChoiceAnewAndKeepsItsColours)
{
    shown(tapeOf(2, 1));
    select("List1", {0});
    run();
    select("List1", {1});
    run();
    ASSERT_EQ(legend().rows(), 2);
    const QRgb second = rowColor(1);
    wheelOf(Qt::Key_PageDown, in<QScrollBar>("VScroll1"), 5);
    EXPECT_EQ(in<QLabel>("VerticalExpansion").text(), "101.0");
    EXPECT_EQ(gridText(legend()), "SUB2      Rt 1 Pln 1 JD 1 Q=25") << "picture and legend begin anew";
    EXPECT_EQ(rowColor(0), second);
    EXPECT_NEAR(screen->scale().flowRange, 1.1 * 25 / 2, 1e-9);
    EXPECT_TRUE(isDrawn(at(120, 9), second)) << "ordinate 9 is a flow of 9";

    EXPECT_EQ(in<QScrollBar>("HScroll2").maximum(), 0);
    wheelOf(Qt::Key_PageUp, in<QScrollBar>("HScroll1"), 5);
    EXPECT_EQ(in<QLabel>("Text13").text(), "101.0");
    EXPECT_GT(in<QScrollBar>("HScroll2").maximum(), 80);
    in<QScrollBar>("HScroll2").setValue(50);
    EXPECT_GT(screen->scale().shift, 0.0);
    EXPECT_TRUE(isDrawn(at(120, 9), second));
    const QString pen = in<QSlider>("Slider1").toolTip();
    in<QSlider>("Slider1").setValue(20);
    EXPECT_EQ(legend().rows(), 1) << pen.toStdString();
    EXPECT_TRUE(isDrawn(at(120, 9) + QPoint(0, 3), second)) << "a thicker line";
}

TEST_F(GrapherTest, ANullRangeIsToldAndWhatStandsThereStays)
{
    shown(tapeOf(1, 1));
    const QImage before = screen->picture().image();
    services.dialogs.willAnswer(Button::Ok);
    in<QScrollBar>("VScroll1").setValue(in<QScrollBar>("VScroll1").maximum());
    services.dialogs.willAnswer(Button::Ok);
    in<QScrollBar>("HScroll1").setValue(0);
    services.dialogs.willAnswer(Button::Ok);
    run();
    EXPECT_EQ(services.dialogs.texts(), QStringList(3, "Can't Display a Null Graph!"));
    EXPECT_EQ(legend().rows(), 1);
    EXPECT_EQ(screen->picture().image(), before);
}

TEST_F(GrapherTest, NoBoxComesInTheMidstOfADrag)
{
    shown(tapeOf(1, 1));
    auto& bar = in<QScrollBar>("VScroll1");
    bar.setSliderDown(true);
    bar.setSliderPosition(bar.maximum());
    EXPECT_TRUE(services.dialogs.texts().isEmpty());
    services.dialogs.willAnswer(Button::Ok);
    bar.setSliderDown(false);
    EXPECT_EQ(services.dialogs.texts().size(), 1);
}

TEST_F(GrapherTest, OneBoxForEachNullCurveButNotForThousands)
{
    std::string tape;
    for (int s = 0; s < 12; ++s)
        tape += station({.name = "Z" + std::to_string(s)}, {0, 0, 0});
    shown(tape);
    EXPECT_EQ(services.dialogs.texts().size(), 0) << "nothing is told that nobody asked for";
    services.dialogs.willAlwaysSayOk();
    select("List1", {0, 1});
    run();
    EXPECT_EQ(services.dialogs.texts(), QStringList(2, "Can't Display a Null Graph!"));
    in<QListWidget>("List1").selectAll();
    run();
    EXPECT_EQ(services.dialogs.texts().size(), 12);
}

TEST_F(GrapherTest, DamagedTablesDrawWhatTheyHold)
{
    shown(tapeOf(2, 1));
    FlexGrid& table = tables->hydrographTable;
    table.setTextMatrix(5, 2, "lost");
    table.setTextMatrix(9, 3, "");
    tables->peakRow.setTextMatrix(1, 2, "lost too");
    select("List1", {0, 1});
    run();
    EXPECT_EQ(gridText(legend()), "SUB1      Rt 1 Pln 1 JD 1 Q=25\nSUB2      Rt 1 Pln 1 JD 1 Q=lost too");
    EXPECT_TRUE(isDrawn(at(15 * 10, 11), rowColor(0))) << "behind the word";
    EXPECT_FALSE(isDrawn(at(15 * 10, 11), rowColor(1))) << "the blank cell ends the curve";

    const QImage before = screen->picture().image();
    screens.load("Form10");
    tables->forget("Form10");
    EXPECT_EQ(screen->picture().image(), before);
    tables->forget("hydrodata");
    screen->resize(screen->size() + QSize(20, 20));
    EXPECT_EQ(screen->picture().image(), before) << "tables that are gone leave the picture";
    services.dialogs.willAlwaysSayOk();
    run();
    EXPECT_TRUE(services.dialogs.texts().contains("Can't Display a Null Graph!"));
}

TEST_F(GrapherTest, TimeAndFlowStandUnderThePointer)
{
    shown(tapeOf(1, 1));
    QTest::mouseMove(&P1(), at(180, 20));
    EXPECT_NEAR(text("Text8").toDouble(), 3.0, 0.02);
    EXPECT_NEAR(text("Text9").toDouble(), 20.0, 0.1);
    QTest::mouseMove(&P1(), at(180, -1));
    EXPECT_EQ(text("Text9"), "0");
    in<QScrollBar>("HScroll1").setValue(500);
    in<QScrollBar>("HScroll2").setValue(40);
    QTest::mouseMove(&P1(), at(240, 20) - QPoint(1, 1));
    QTest::mouseMove(&P1(), at(240, 20));
    EXPECT_NEAR(text("Text8").toDouble(), 4.0, 0.02) << "with the shift";
    in<QSlider>("Slider2").setValue(200);
    EXPECT_GT(P1().width(), in<QWidget>("PictureWindow").width());
    QTest::mouseMove(&P1(), {400, 200});
    const QPointF place = screen->picture().twipsAt({200, 100});
    EXPECT_NEAR(text("Text8").toDouble(), screen->scale().hoursAt(place.x()), 0.01) << "and in the zoom";
    EXPECT_NEAR(text("Text9").toDouble(), screen->scale().flowAt(place.y()), 0.01);
    P1().setFocus();
    const QString hours = text("Text8");
    QTest::keyClick(&P1(), Qt::Key_Right);
    EXPECT_NE(text("Text8"), hours) << "the keyboard points too";
}

TEST_F(GrapherTest, TheEraserShowsItselfAndWipes)
{
    shown(tapeOf(1, 1));
    const QRgb curve = rowColor(0), preview = 0x2D177Bu;
    QTest::mouseMove(&P1(), at(100, 10));
    const QString hours = text("Text8");
    in<QCheckBox>("Check1").setChecked(true);
    const QPoint from = at(180, 13), to = at(270, 19);
    QTest::mousePress(&P1(), Qt::LeftButton, {}, from);
    EXPECT_EQ(pixel(from + QPoint(3, 3)), preview);
    QTest::mouseMove(&P1(), to);
    EXPECT_EQ(pixel(from), kWhite) << "what it left is wiped";
    EXPECT_EQ(pixel(at(225, 16)), kWhite) << "without a gap";
    EXPECT_EQ(pixel(to + QPoint(3, 3)), preview);
    QTest::mouseRelease(&P1(), Qt::LeftButton, {}, to);
    EXPECT_EQ(count(screen->picture().image(), preview), 0);
    EXPECT_EQ(pixel(to), kWhite);
    EXPECT_TRUE(isDrawn(at(90, 7), curve)) << "the rest stays";
    EXPECT_EQ(text("Text8"), hours) << "no values while erasing";
    EXPECT_FALSE(screen->hasFloatingLabels());
    screen->resize(screen->size() - QSize(100, 80));
    EXPECT_EQ(pixel(at(225, 16)), kWhite) << "a window of another size keeps what was wiped";
    EXPECT_TRUE(isDrawn(at(90, 7), curve));
}

TEST_F(GrapherTest, ATypedLabelIsWrittenOnADoubleClick)
{
    shown(tapeOf(1, 1));
    auto& box = in<QLineEdit>("Text10");
    const QPoint place(200, 80);
    QTest::mouseClick(&P1(), Qt::LeftButton, {}, place);
    ASSERT_TRUE(box.isVisible());
    EXPECT_TRUE(screen->hasFloatingLabels());
    EXPECT_EQ(box.pos(), place);
    EXPECT_EQ(box.toolTip(), "Dbl Click to Close");
    QTest::keyClicks(&box, "Outlet");
    QTest::mouseClick(&P1(), Qt::LeftButton, {}, place + QPoint(0, 60));
    EXPECT_EQ(box.text(), "Outlet") << "another click moves it";
    const QImage before = screen->picture().image();
    QTest::mouseDClick(&box, Qt::LeftButton, {}, QPoint(5, 5));
    EXPECT_FALSE(box.isVisible());
    EXPECT_FALSE(screen->hasFloatingLabels());
    EXPECT_GT(count(screen->picture().image(), 0u), count(before, 0u));
    const QRect label(place + QPoint(0, 60), box.size());
    EXPECT_NE(screen->picture().image().copy(label), before.copy(label));

    const QImage written = screen->picture().image();
    P1().setFocus();
    QTest::keyClick(&P1(), Qt::Key_Space);
    ASSERT_TRUE(box.isVisible()) << "by the keyboard too";
    EXPECT_EQ(box.text(), "");
    QTest::keyClicks(&box, "x");
    QTest::keyClick(&box, Qt::Key_Escape);
    EXPECT_FALSE(box.isVisible());
    EXPECT_EQ(screen->picture().image(), written);
}

TEST_F(GrapherTest, ALegendRowIsDraggedToThePictureAndSticks)
{
    shown(tapeOf(1, 1));
    QWidget* rows = in<FlexGridView>("fg").viewport();
    const auto over = [&](const QPoint& onCanvas) { return rows->mapFromGlobal(P1().mapToGlobal(onCanvas)); };
    const auto drag = [&](const QPoint& to, const QPoint& from = QPoint(10, 8)) {
        QTest::mousePress(rows, Qt::RightButton, {}, from);
        QMouseEvent move(QEvent::MouseMove, to, rows->mapToGlobal(to), Qt::NoButton, Qt::RightButton, {});
        QApplication::sendEvent(rows, &move);
        QTest::mouseRelease(rows, Qt::RightButton, {}, to);
        QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    };
    drag(QPoint(12, 60));
    EXPECT_EQ(P1().findChildren<FloatingRow*>().size(), 0) << "let go beside the picture";
    drag(over({300, 120}));
    ASSERT_EQ(P1().findChildren<FloatingRow*>().size(), 1);
    FloatingRow& row = *P1().findChild<FloatingRow*>();
    EXPECT_EQ(row.text(), "SUB1      Rt 1 Pln 1 JD 1 Q=25");
    EXPECT_TRUE(row.geometry().contains(300, 120));
    EXPECT_TRUE(screen->hasFloatingLabels());
    const QRect place = row.geometry();
    const QImage before = screen->picture().image();
    QTest::mouseDClick(&row, Qt::LeftButton);
    QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_FALSE(screen->hasFloatingLabels());
    EXPECT_GT(count(screen->picture().image().copy(place), rowColor(0)), count(before.copy(place), rowColor(0)) + 3);
    EXPECT_FALSE(in<QLineEdit>("Text10").isVisible()) << "the click was not the picture's";

    in<FlexGridView>("fg").setFocus();
    QTest::keyClick(&in<FlexGridView>("fg"), Qt::Key_Return);
    auto* second = P1().findChild<FloatingRow*>();
    ASSERT_NE(second, nullptr);
    EXPECT_TRUE(second->hasFocus());
    const QPoint was = second->pos();
    drag(over({300, 120}), QPoint(10, rows->height() - 4));
    EXPECT_EQ(second->pos(), was) << "a drag below the rows takes no label along";
    QTest::keyClick(second, Qt::Key_Left);
    EXPECT_LT(second->x(), was.x());
    QTest::keyClick(second, Qt::Key_Return);
    EXPECT_FALSE(screen->hasFloatingLabels());
}

TEST_F(GrapherTest, ThePictureGoesToTheClipboardAndToFiles)
{
    shown(tapeOf(1, 1));
    QTest::keyClick(&in<QListWidget>("List4"), Qt::Key_C, Qt::ControlModifier);
    in<QAction>("pop_Copy").trigger();
    const QImage copied = QImage::fromData(services.clipboard.picture(), "PNG");
    EXPECT_EQ(copied.convertToFormat(QImage::Format_RGB32), screen->picture().image());
    services.dialogs.willAnswer(services.path("graph.bmp"));
    in<QAction>("pop_Save").trigger();
    EXPECT_TRUE(services.bytes("graph.bmp").startsWith("BM"));
    services.dialogs.willAnswer(services.path("no/such/folder/graph.png"));
    services.dialogs.willAnswer(Button::Ok);
    in<QAction>("pop_Save").trigger();
    EXPECT_TRUE(services.dialogs.last().text.contains("no/such/folder"));
    services.dialogs.willAnswer(services.path("graph.gif"));
    services.dialogs.willAnswer(Button::Ok);
    in<QAction>("pop_Save").trigger();
    EXPECT_TRUE(services.bytes("graph.gif").isEmpty()) << "no PNG under a name that says otherwise";
    in<QAction>("pop_Clear").trigger();
    EXPECT_EQ(gridText(legend()), "");
    EXPECT_FALSE(P1().hint().isEmpty());
}

TEST_F(GrapherTest, TheChosenColourIsTheFormsAndTextStaysReadable)
{
    background = rgb(20, 30, 60);
    shown(tapeOf(1, 1));
    EXPECT_EQ(screen->palette().color(QPalette::Window), QColor(20, 30, 60));
    EXPECT_EQ(in<QLabel>("fgCaption").palette().color(QPalette::WindowText), QColor(Qt::white));
    EXPECT_EQ(screen->grab().toImage().pixelColor(3, 3), QColor(20, 30, 60));
    EXPECT_EQ(pixel(QPoint(P1().width() - 5, 5)), kWhite) << "the paper stays white";
}

TEST_F(GrapherTest, ClosingForgetsEverything)
{
    shown(tapeOf(1, 1));
    QStringList closed;
    QObject::connect(desk.get(), &ResultDesk::closed, [&](const QString& name) { closed << name; });
    screen->close();
    EXPECT_FALSE(screens.isLoaded("GRAPHER"));
    EXPECT_EQ(closed, QStringList("GRAPHER"));
    EXPECT_EQ(tables->GRAPHER.List1.count(), 0);
}

TEST_F(GrapherTest, NothingIsCutOffInASmallWindow)
{
    shown(tapeOf(3, 6));
    screen->resize(1060, 560);
    QApplication::processEvents();
    EXPECT_EQ(screen->size(), QSize(1060, 560));
    for (const QAbstractButton* button : screen->findChildren<QAbstractButton*>())
        EXPECT_GE(button->width(), button->sizeHint().width()) << button->objectName().toStdString();
    for (const QLabel* label : screen->findChildren<QLabel*>())
        EXPECT_TRUE(label->wordWrap() || label->width() >= label->sizeHint().width()) << label->text().toStdString();
    EXPECT_GE(P1().width(), 400);
}

} // namespace
} // namespace kalvo
