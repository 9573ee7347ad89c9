// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/Form21_ColorChanges.h"

#include "deck/ScreenWindow.h"
#include "platform/FlexGridView.h"
#include "shell/ColorScreens.h"

#include <QApplication>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QPushButton>
#include <QTabBar>
#include <QVBoxLayout>

#include <utility>

namespace kalvo {

namespace {

struct Tab
{
    const char* text;
    Rgb GridColors::*color;
    ColorItem item; ///< of the same colour
};

constexpr Tab kTabs[] = {
    {"Background", &GridColors::backColor, ColorItem::GridBack},
    {"Text", &GridColors::foreColor, ColorItem::GridFore},
    {"Selection", &GridColors::foreColorSel, ColorItem::GridSelFore},
    {"Selection Background", &GridColors::backColorSel, ColorItem::GridSelBack},
};

constexpr const char* kSampleCards[] = {"ID,SAMPLE,DECK", "KK,SUB1,WEST", "BA,0.42", "LS,0,76", "UD,0.95", "ZZ"};

} // namespace

Form21::Form21(const EditContext& context, QString name) : m_context(context), m_name(std::move(name))
{
    setObjectName(QStringLiteral("Form21"));
    setWindowTitle(QStringLiteral("Color Changes for Main Screen"));
    buildSample();
    buildControls();
    repaintScreen();
    resize(560, 290);
}

void Form21::registerIn(const EditContext& context)
{
    const QString name = context.screenName("Form21");
    context.screens.add(name, [context, name] { return std::make_unique<Form21>(context, name); });
}

void Form21::buildSample()
{
    constexpr int kColumns = 6;
    m_sample.setCols(kColumns);
    m_sample.setDefaultRowHeight(deck_layout::kRowHeight);
    m_sample.setRows(static_cast<int>(std::size(kSampleCards)) + 1);
    m_sample.setAllRowHeights(deck_layout::kRowHeight);
    for (int col = 2; col < kColumns; ++col)
        m_sample.setTextMatrix(0, col, QString::number(col - 1));
    for (int row = 1; row < m_sample.rows(); ++row) {
        m_sample.setTextMatrix(row, 0, QString::number(row));
        m_sample.setRowTexts(row, 1, QString::fromLatin1(kSampleCards[row - 1]).split(u','));
    }
    const FlexGrid& deck = m_context.grid();
    for (int col = 0; col < kColumns; ++col) {
        m_sample.setColWidth(col, deck.colWidth(col));
        m_sample.setColAlignment(col, deck.colAlignment(col));
    }
    m_sample.select(2, 1, 4, 3);
}

void Form21::buildControls()
{
    TabStrip1 = new QTabBar(this);
    TabStrip1->setObjectName(QStringLiteral("TabStrip1"));
    TabStrip1->setExpanding(false);
    for (const Tab& tab : kTabs)
        TabStrip1->addTab(QString::fromLatin1(tab.text));
    TabStrip1->installEventFilter(this);
    // Asked once the press is over: a dialog opened within it would swallow the release.
    connect(TabStrip1, &QTabBar::tabBarClicked, this, &Form21::askForColor, Qt::QueuedConnection);
    Grid1 = new FlexGridView(m_sample, this);
    Grid1->setObjectName(QStringLiteral("Grid1"));
    Grid1->setFocusPolicy(Qt::NoFocus);

    Command1 = namedButton("Command1", QStringLiteral("&Apply to Main Screen"), this);
    Command2 = namedButton("Command2", QStringLiteral("&Read from Main Screen"), this);
    Command3 = namedButton("Command3", QStringLiteral("&Close"), this);
    Command4 = namedButton("Command4", QStringLiteral("&More Colors ..."), this);
    connect(Command1, &QPushButton::clicked, this,
            [this] { m_context.grid().setColors(withFourOf(m_sample.colors(), m_context.grid().colors())); });
    connect(Command2, &QPushButton::clicked, this, &Form21::repaintScreen);
    connect(Command3, &QPushButton::clicked, this, &Form21::reject);
    connect(Command4, &QPushButton::clicked, this, [this] { m_context.screens.show(m_context.screenName("Form4")); });

    auto* buttons = new QHBoxLayout;
    for (QPushButton* button : {Command1, Command2, Command4})
        buttons->addWidget(button);
    buttons->addStretch(1);
    buttons->addWidget(Command3);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(16, 16, 16, 16);
    column->setSpacing(12);
    column->addWidget(TabStrip1);
    column->addWidget(Grid1, 1);
    column->addLayout(buttons);
}

GridColors Form21::withFourOf(const GridColors& from, GridColors to)
{
    for (const Tab& tab : kTabs)
        to.*tab.color = from.*tab.color;
    return to;
}

void Form21::repaintScreen()
{
    m_sample.setColors(withFourOf(m_context.grid().colors(), m_sample.colors()));
}

void Form21::askForColor(int tab)
{
    if (tab < 0 || tab >= static_cast<int>(std::size(kTabs)))
        return;
    ItemColors shown{};
    shown.fill(Rgb::None);
    shown[static_cast<size_t>(kTabs[tab].item)] = m_sample.colors().*kTabs[tab].color;
    const auto picked = m_context.services.dialogs.color(rgbOf(shownColor(kTabs[tab].item, shown, palette())));
    if (!picked)
        return;
    GridColors colors = m_sample.colors();
    colors.*kTabs[tab].color = *picked;
    m_sample.setColors(colors);
}

bool Form21::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == TabStrip1 && event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_Space) {
            askForColor(TabStrip1->currentIndex());
            return true;
        }
    }
    return QDialog::eventFilter(watched, event);
}

void Form21::showScreen()
{
    showAbove(*this, QApplication::activeWindow());
    TabStrip1->setFocus();
}

void Form21::reject()
{
    m_context.screens.unload(m_name);
}

} // namespace kalvo
