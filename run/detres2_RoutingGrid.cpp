// SPDX-License-Identifier: GPL-3.0-or-later
#include "run/detres2_RoutingGrid.h"

#include "deck/ScreenWindow.h"
#include "platform/Hourglass.h"
#include "platform/ResultGrid.h"
#include "run/RunFolder.h"

#include <QAction>
#include <QFontMetrics>

namespace kalvo {

detres2::detres2(ViewerSurroundings around)
    : RoutingWindow("detres2", QStringLiteral("Detailed Reservoir Routings - Grid"), std::move(around))
{
    Grid1 = new ResultGrid(m_table, services(), this);
    Grid1->setObjectName(QStringLiteral("Grid1"));
    setCentralWidget(Grid1);
    buildMenus();
    resize(700, 560);
}

detres2::~detres2()
{
    delete takeCentralWidget(); // ahead of the grid that it shows
}

void detres2::buildMenus()
{
    RoutingMenu menu;
    menu.saveCsv = [this] { Grid1->saveCsv(); };
    menu.copy = [this] { Grid1->copy(); };
    menu.selectAll = [this] { Grid1->selectWhole(); };
    menu.goBack = [this] { close(); };
    buildRoutingMenu(*this, menu);
    Grid1->followToggle(addMenuEntry(*this, QStringLiteral("&Edit"), "mnu_ToggleRowsandColumns",
                                     QStringLiteral("Toggle &Titles"), [] {}));
    Grid1->addPopupEntry("pop_Copy", QStringLiteral("&Copy"), menu.copy);
    Grid1->addPopupEntry("pop_SelectAll", QStringLiteral("Select &All"), menu.selectAll);
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
    if (m_filled == GridFill::Missing)
        services().dialogs.tell(QStringLiteral("No Data was provided for Reservoir Routings."));
    else if (m_filled == GridFill::Cut)
        services().dialogs.warn(QStringLiteral("The grid holds the first %1 lines of the file %2 alone.")
                                    .arg(kMostGridLines)
                                    .arg(QString::fromLatin1(RunFolder::kStages)));
    bringForward(*Grid1);
}

void detres2::repaintScreen()
{
    const Hourglass hourglass;
    m_filled = fillRoutingGrid(m_table, RunFolder(services().folder).stages());
    setWidths();
    Grid1->setCsv([] { return QStringLiteral("routings.csv"); }, routingUnits(services().folder));
}

void detres2::goBack()
{
    const QString text = QStringLiteral("DetRes");
    if (!screens().isVisible(text))
        return RoutingWindow::goBack();
    // Only brought forward: shown anew it would begin at the top again.
    if (auto* window = screens().loadAs<QWidget>(text)) {
        window->raise();
        window->activateWindow();
    }
}

} // namespace kalvo
