// SPDX-License-Identifier: GPL-3.0-or-later
#include "deck/Form5_ImportViewer.h"

#include "deck/ImportDeck.h"
#include "deck/ImportScreens.h"
#include "deck/ScreenWindow.h"
#include "platform/FlexGridView.h"

#include <QAction>
#include <QLabel>
#include <QMenu>
#include <QVBoxLayout>

namespace kalvo {

Form5::Form5(std::shared_ptr<ImportDeck> deck, Screens& screens, Services& services, QWidget* parent)
    : QMainWindow(parent), m_deck(std::move(deck)), m_screens(screens), m_services(services)
{
    setObjectName(QStringLiteral("Form5"));
    auto* middle = new QWidget(this);
    Grid1 = new FlexGridView(m_deck->Grid1, middle);
    Grid1->setObjectName(QStringLiteral("Grid1"));
    m_advice = adviceLabel("Label1", middle);
    auto* layout = new QVBoxLayout(middle);
    layout->setContentsMargins(8, 4, 8, 8);
    layout->addWidget(Grid1, 1);
    layout->addWidget(m_advice);
    setCentralWidget(middle);
    buildMenu();
    connect(m_deck.get(), &ImportDeck::imported, this, &Form5::repaintScreen);
    resize(830, 560);
    Form5::repaintScreen();
}

Form5::~Form5()
{
    delete takeCentralWidget(); // ahead of the grid that it shows, which may go with this screen
}

void Form5::buildMenu()
{
    const QString file = QStringLiteral("&File");
    const QString help = QStringLiteral("&Help");
    addMenuEntry(*this, file, "mnu_open", QStringLiteral("&Open/Import Data File"), [this] {
        m_deck->import();
    })->setShortcut(QKeySequence::Open);
    addMenuEntry(*this, file, "quit", QStringLiteral("&Return/Quit"), [this] {
        m_screens.unload(QStringLiteral("Form5"));
    })->setShortcut(QKeySequence::Close);
    addMenuEntry(*this, QString(), "editcopy", QStringLiteral("&Copy"), [this] {
        m_deck->editcopy();
    })->setShortcut(QKeySequence::Copy);
    addMenuEntry(*this, help, "mnu_assistance", QStringLiteral("&Assistance"), [this] {
        m_services.dialogs.tell(QStringLiteral(
            "Open a File - Select Rows - then COPY - you can use Paste in Main Screen to transfer the rows!"));
    });
    addMenuEntry(*this, help, "mnu_about", QStringLiteral("A&bout"),
                 [this] { m_services.dialogs.tell(QStringLiteral("Open other files to review and import data.")); });

    m_popup = new QMenu(this);
    m_popup->setObjectName(QStringLiteral("Popup"));
    QAction* copy = m_popup->addAction(QStringLiteral("&Copy"));
    copy->setObjectName(QStringLiteral("pop_Copy"));
    connect(copy, &QAction::triggered, this, [this] { m_deck->editcopy(); });
    connect(Grid1, &FlexGridView::contextMenuAsked, m_popup, [this](const QPoint& point) { m_popup->popup(point); });
}

void Form5::showScreen()
{
    show();
    raise();
    activateWindow();
    Grid1->setFocus();
}

void Form5::repaintScreen()
{
    setCardWidths(m_deck->Grid1);
    setWindowTitle(m_deck->title());
    setAdvice(*m_advice, m_deck->remark());
}

} // namespace kalvo
