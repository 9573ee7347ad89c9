// SPDX-License-Identifier: GPL-3.0-or-later
// The Grapher's controls and where they stand: lists on the left, the picture between its scroll bars in the middle,
// the legend on the right.
#include "graphics/GRAPHER_Grapher.h"

#include "deck/ScreenWindow.h"
#include "graphics/FloatingLabels.h"
#include "graphics/GraphCanvas.h"
#include "platform/FlexGridView.h"

#include <QAction>
#include <QCheckBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QMenu>
#include <QPushButton>
#include <QScrollBar>
#include <QShortcut>
#include <QSlider>
#include <QTimer>
#include <QVBoxLayout>

namespace kalvo {

namespace {

constexpr int kScrollSteps = 1000;
constexpr int kThickestPen = 30; ///< tenths of a percent of the picture's height
constexpr int kFirstPen = 3;     ///< about a pixel and a half
constexpr int kMostZoom = 400;   ///< percent
constexpr int kListsWidth = 200; ///< pixels
constexpr int kResizeRestMs = 150;
constexpr int kLegendWidth = 240; ///< pixels

QLabel* caption(const QString& text, QWidget* parent, QWidget* buddy = nullptr)
{
    auto* label = new QLabel(text, parent);
    label->setBuddy(buddy);
    return label;
}

QLineEdit* valueBox(const char* name, const QString& tip, QWidget* parent)
{
    auto* box = new QLineEdit(parent);
    box->setObjectName(QString::fromLatin1(name));
    box->setReadOnly(true);
    box->setAlignment(Qt::AlignRight);
    box->setToolTip(tip);
    box->setFixedWidth(box->fontMetrics().horizontalAdvance(QStringLiteral("0000000.00")) + 12);
    return box;
}

QSlider* slider(const char* name, int from, int to, int value, const QString& tip, QWidget* parent)
{
    auto* made = new QSlider(Qt::Horizontal, parent);
    made->setObjectName(QString::fromLatin1(name));
    made->setRange(from, to);
    made->setValue(value);
    made->setToolTip(tip);
    made->setMinimumWidth(60);
    return made;
}

} // namespace

void GRAPHER::buildControls()
{
    auto* middle = new QWidget(this);
    middle->setObjectName(QStringLiteral("Panel"));
    middle->setAutoFillBackground(true);
    setCentralWidget(middle);
    auto* row = new QHBoxLayout(middle);
    row->setContentsMargins(10, 10, 10, 8);
    row->setSpacing(10);
    row->addWidget(buildChoices());
    auto* centre = new QVBoxLayout;
    centre->setSpacing(6);
    centre->addWidget(buildPicture(), 1);
    centre->addWidget(buildTools());
    row->addLayout(centre, 1);
    row->addWidget(buildLegend());
    addActions();
}

QListWidget* GRAPHER::addList(QBoxLayout& column, const char* name, const QString& text, int stretch)
{
    auto* list = new QListWidget;
    list->setObjectName(QString::fromLatin1(name));
    list->setUniformItemSizes(true);
    list->setSelectionMode(QAbstractItemView::ExtendedSelection);
    list->setMinimumHeight(3 * list->fontMetrics().height());
    list->setToolTip(QStringLiteral("Ctrl or Shift and a click select several, Ctrl+A all; Enter draws"));
    list->setAccessibleName(text);
    column.addWidget(caption(text, this, list));
    column.addWidget(list, stretch);
    connect(list, &QListWidget::itemSelectionChanged, this, &GRAPHER::takeSelections);
    for (const int key : {Qt::Key_Return, Qt::Key_Enter}) {
        auto* draw = new QShortcut(QKeySequence(key), list);
        draw->setContext(Qt::WidgetShortcut);
        connect(draw, &QShortcut::activated, this, &GRAPHER::Command2_Click);
    }
    return list;
}

QWidget* GRAPHER::buildChoices()
{
    auto* panel = new QWidget(this);
    panel->setFixedWidth(kListsWidth);
    auto* column = new QVBoxLayout(panel);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(4);
    List1 = addList(*column, "List1", QStringLiteral("List of KK Stations"), 5);
    List2 = addList(*column, "List2", QStringLiteral("List of Ratios"), 3);
    List4 = addList(*column, "List4", QStringLiteral("List of Plans"), 2);
    List5 = addList(*column, "List5", QStringLiteral("List of JD Simulations"), 2);
    List3 = new QListWidget(panel); // the plans once more; one list of them is enough to choose from
    List3->setObjectName(QStringLiteral("List3"));
    List3->hide();
    Command2 = namedButton("Command2", QStringLiteral("Run Graph Routine"), panel);
    Command2->setToolTip(QStringLiteral("Adds the selected hydrographs to the picture (Ctrl+R)"));
    Command2->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_R));
    column->addSpacing(4);
    column->addWidget(Command2);
    connect(Command2, &QPushButton::clicked, this, &GRAPHER::Command2_Click);
    return panel;
}

QScrollBar* GRAPHER::scrollBar(const char* name, Qt::Orientation orientation, const QString& tip)
{
    auto* bar = new QScrollBar(orientation, this);
    bar->setObjectName(QString::fromLatin1(name));
    bar->setFocusPolicy(Qt::StrongFocus);
    bar->setRange(0, kScrollSteps);
    bar->setSingleStep(kScrollSteps / 100);
    bar->setPageStep(kScrollSteps / 10);
    bar->setToolTip(tip);
    bar->setAccessibleName(tip);
    return bar;
}

QWidget* GRAPHER::buildPicture()
{
    auto* panel = new QWidget(this);
    m_window = new GraphWindow(panel);
    m_window->setObjectName(QStringLiteral("PictureWindow"));
    m_window->setFocusPolicy(Qt::NoFocus);
    m_window->setMinimumSize(260, 180);
    P1 = new GraphCanvas;
    P1->setObjectName(QStringLiteral("P1"));
    P1->setAccessibleName(QStringLiteral("Picture of the hydrographs"));
    P1->setImage(&m_picture.image());
    m_window->setWidget(P1);
    Text10 = new FloatingText(P1);
    Text10->setObjectName(QStringLiteral("Text10"));

    VScroll1 = scrollBar("VScroll1", Qt::Vertical, QStringLiteral("Expansion of the flow scale"));
    HScroll1 = scrollBar("HScroll1", Qt::Horizontal, QStringLiteral("Expansion of the time scale"));
    HScroll2 = scrollBar("HScroll2", Qt::Horizontal, QStringLiteral("Shift along the time axis"));
    HScroll1->setValue(HScroll1->maximum());
    HScroll2->setMaximum(0);
    HScroll2->setPageStep(50);
    m_verticalText = caption({}, panel);
    m_verticalText->setObjectName(QStringLiteral("VerticalExpansion"));
    m_verticalText->setAlignment(Qt::AlignCenter);
    m_verticalText->setFixedWidth(m_verticalText->fontMetrics().horizontalAdvance(QStringLiteral("0000.0")));
    Text13 = caption({}, panel);
    Text13->setObjectName(QStringLiteral("Text13"));
    Text13->setAlignment(Qt::AlignCenter);

    auto* grid = new QGridLayout(panel);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setSpacing(4);
    auto* beside = new QVBoxLayout;
    beside->addWidget(VScroll1, 1, Qt::AlignHCenter);
    beside->addWidget(m_verticalText);
    grid->addLayout(beside, 0, 0);
    grid->addWidget(m_window, 0, 1, 1, 2);
    grid->addWidget(caption(QStringLiteral("&Time scale"), panel, HScroll1), 1, 0);
    grid->addWidget(HScroll1, 1, 1);
    grid->addWidget(Text13, 1, 2);
    grid->addWidget(caption(QStringLiteral("S&hift"), panel, HScroll2), 2, 0);
    grid->addWidget(HScroll2, 2, 1, 1, 2);
    grid->setColumnStretch(1, 1);
    for (QScrollBar* bar : {VScroll1, HScroll1, HScroll2})
        connect(bar, &QScrollBar::valueChanged, this, &GRAPHER::redraw);
    for (QScrollBar* bar : {VScroll1, HScroll1})
        connect(bar, &QScrollBar::sliderReleased, this, [this] {
            if (currentScale().isNull())
                redraw();
        });
    m_renderLater = new QTimer(this);
    m_renderLater->setSingleShot(true);
    connect(m_renderLater, &QTimer::timeout, this, &GRAPHER::render);
    connect(m_window, &GraphWindow::resized, this, [this] {
        if (m_curves.size() <= kManyCurves)
            render();
        else
            m_renderLater->start(kResizeRestMs); // until then the picture is stretched
    });
    return panel;
}

QWidget* GRAPHER::buildTools()
{
    auto* panel = new QWidget(this);
    Slider1 = slider("Slider1", 0, kThickestPen, kFirstPen,
                     QStringLiteral("Width of the lines, in tenths of a percent of the picture"), panel);
    Slider2 = slider("Slider2", 100, kMostZoom, 100, QStringLiteral("Zoom in percent"), panel);
    Slider2->setSingleStep(10);
    Slider2->setPageStep(50);
    Check1 = new QCheckBox(QStringLiteral("Erase &Mode"), panel);
    Check1->setObjectName(QStringLiteral("Check1"));
    Check1->setToolTip(QStringLiteral("Cursor Eraser"));
    Text8 = valueBox("Text8", QStringLiteral("Time under the pointer, in hours"), panel);
    Text9 = valueBox("Text9", QStringLiteral("Flow under the pointer"), panel);
    auto* row = new QHBoxLayout(panel);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(6);
    row->addWidget(caption(QStringLiteral("&Pen"), panel, Slider1));
    row->addWidget(Slider1, 1);
    row->addWidget(caption(QStringLiteral("&Zoom"), panel, Slider2));
    row->addWidget(Slider2, 1);
    row->addSpacing(6);
    row->addWidget(Check1);
    row->addStretch(1);
    row->addWidget(caption(QStringLiteral("Hours"), panel, Text8));
    row->addWidget(Text8);
    row->addWidget(caption(QStringLiteral("Flow"), panel, Text9));
    row->addWidget(Text9);
    connect(Slider1, &QSlider::valueChanged, this, &GRAPHER::redraw);
    connect(Slider2, &QSlider::valueChanged, this, &GRAPHER::render);
    return panel;
}

QWidget* GRAPHER::buildLegend()
{
    auto* panel = new QWidget(this);
    panel->setFixedWidth(kLegendWidth);
    fg = new FlexGridView(m_legend, panel);
    fg->setObjectName(QStringLiteral("fg"));
    fg->setAccessibleName(QStringLiteral("Legend"));
    fg->setTipText([this](int row, int) { return m_legend.textMatrix(row, 0); });
    auto* text = caption(QStringLiteral("Left Click/Right Drag to Screen /Dbl Clk to Stick"), panel, fg);
    text->setObjectName(QStringLiteral("fgCaption"));
    text->setWordWrap(true);
    text->setToolTip(QStringLiteral("Enter brings the row of the cursor to the picture; there arrows move it, Enter "
                                    "sticks it, Esc takes it away"));
    m_news = caption({}, panel);
    m_news->setObjectName(QStringLiteral("News"));
    m_news->setWordWrap(true);
    auto* column = new QVBoxLayout(panel);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(4);
    column->addWidget(text);
    column->addWidget(fg, 1);
    column->addWidget(m_news);
    return panel;
}

void GRAPHER::addActions()
{
    m_popup = new QMenu(this);
    m_popup->setObjectName(QStringLiteral("Popup"));
    const auto add = [this](const char* name, const QString& text, const QKeySequence& keys, void (GRAPHER::*body)()) {
        auto* action = new QAction(text, this);
        action->setObjectName(QString::fromLatin1(name));
        action->setShortcut(keys);
        connect(action, &QAction::triggered, this, body);
        addAction(action);
        m_popup->addAction(action);
    };
    add("pop_Copy", QStringLiteral("&Copy Picture"), QKeySequence::Copy, &GRAPHER::copyPicture);
    add("pop_Save", QStringLiteral("&Save Picture As..."), QKeySequence::Save, &GRAPHER::savePicture);
    add("pop_Clear", QStringLiteral("C&lear Picture"), QKeySequence(Qt::CTRL | Qt::Key_Delete), &GRAPHER::clearPicture);
    connect(P1, &GraphCanvas::menuAsked, m_popup, [this](const QPoint& point) { m_popup->popup(point); });
}

/// The form and its panels; lists, text boxes and the paper keep their own colours.
void GRAPHER::takeBackground()
{
    const Rgb chosen = m_sources.background ? m_sources.background() : Rgb::None;
    if (chosen == Rgb::None)
        return;
    QPalette colors = palette();
    colors.setColor(QPalette::Window, QColor(static_cast<QRgb>(chosen)));
    colors.setColor(QPalette::WindowText, QColor(static_cast<QRgb>(readableOn(chosen))));
    setPalette(colors);
}

} // namespace kalvo
