// SPDX-License-Identifier: GPL-3.0-or-later
#include "run/detres2_RoutingGrid.h"

#include "platform/FlexGridView.h"
#include "run/DetailedRoutings.h"
#include "run/RunFolder.h"

#include <QFontMetrics>
#include <QMenu>

namespace kalvo {

namespace {

const QString kName = QStringLiteral("detres2");

} // namespace

detres2::detres2(RoutingSurroundings around, QWidget* parent) : QMainWindow(parent), m_around(std::move(around))
{
    setObjectName(kName);
    setWindowTitle(QStringLiteral("Detailed Reservoir Routings - Grid"));
    Grid1 = new FlexGridView(m_table, this);
    Grid1->setObjectName(QStringLiteral("Grid1"));
    Grid1->setUserResizing(true);
    setCentralWidget(Grid1);
    buildMenus();
    resize(760, 560);
}

detres2::~detres2()
{
    delete takeCentralWidget(); // ahead of the grid that it shows
}

void detres2::buildMenus()
{
    RoutingMenu menu;
    menu.copy = [this] { m_around.services.clipboard.setText(m_table.clip()); };
    menu.selectAll = [this] { Grid1->selectAll(); };
    menu.goBack = [this] {
        close();
        m_around.toMainScreen();
    };
    auto* popup = new QMenu(this);
    popup->setObjectName(QStringLiteral("Popup"));
    popup->addActions(buildRoutingMenu(*this, menu));
    connect(Grid1, &FlexGridView::contextMenuAsked, popup, [popup](const QPoint& point) { popup->popup(point); });
}

void detres2::setWidths()
{
    const FlexGrid::Bulk bulk(m_table);
    const int character = QFontMetrics(Grid1->font()).horizontalAdvance(u'0') * kTwipsPerPixel;
    m_table.setColWidth(0, 18 * character);
    for (int column = 1; column < m_table.cols(); ++column) {
        m_table.setColWidth(column, 13 * character);
        m_table.setColAlignment(column, FlexGrid::RightCenter);
    }
}

void detres2::showScreen()
{
    repaintScreen();
    show();
    raise();
    activateWindow();
    Grid1->setFocus();
}

void detres2::repaintScreen()
{
    fillRoutingGrid(m_table, RunFolder(m_around.services.folder).stages());
    setWidths();
}

void detres2::closeEvent(QCloseEvent* event)
{
    QMainWindow::closeEvent(event);
    m_around.screens.unload(kName);
}

} // namespace kalvo
