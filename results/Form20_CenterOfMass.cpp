// SPDX-License-Identifier: GPL-3.0-or-later
#include "results/Form20_CenterOfMass.h"

#include "platform/ResultGrid.h"
#include "results/CenterOfMass.h"
#include "results/ColumnFit.h"

#include <QAction>
#include <QLabel>
#include <QMenu>
#include <QVBoxLayout>

namespace kalvo {

Form20::Form20(std::shared_ptr<HydrodataDesk> logic, MainWindow mainWindow)
    : ResultWindow("Form20", QStringLiteral(" Hydrograph Center of Mass"), logic->sharedDesk(), std::move(mainWindow)),
      m_logic(std::move(logic))
{
    Grid1 = new ResultGrid(m_logic->Form20Grid, services(), centralWidget());
    Grid1->setObjectName(QStringLiteral("Grid1"));
    Grid1->setTipText([this](int row, int) { return m_logic->Form20Grid.textMatrix(row, 0); });
    auto* Label1 =
        new QLabel(QStringLiteral("Use CTRL F10 from Main Screen to get here by bypasssing other processes."));
    Label1->setObjectName(QStringLiteral("Label1"));
    Label1->setWordWrap(true);
    auto* column = new QVBoxLayout(centralWidget());
    column->addWidget(Grid1, 1);
    column->addWidget(Label1);
    buildMenus();
    setFirstFocus(Grid1);
    resize(360, 480);
}

Form20::~Form20()
{
    dropControls();
}

void Form20::buildMenus()
{
    QMenu* file = addMenu("mnu_file", QStringLiteral("&File"));
    addEntry(file, "mnu_save", QStringLiteral("&Save"), [this] { m_logic->mnu_save(); });
    Grid1->setCsv([this] { return desk().offeredName(); }, {});
    addCsvEntry(file, Grid1);
    addEntry(file, "mnu_return", QStringLiteral("&Return"), [this] { m_logic->leaveCenters(objectName()); });
    QMenu* edit = addMenu("mnu_edit", QStringLiteral("&Edit"));
    addEntry(edit, "mnu_copy", QStringLiteral("&Copy"), [this] { Grid1->copy(); });
    addEntry(edit, "mnu_copyAll", QStringLiteral("Copy &All"), [this] { copyAll(); });
    Grid1->addPopupEntry("pop_copy", QStringLiteral("Copy"), [this] { Grid1->copy(); });
    Grid1->addPopupEntry("pop_copyAll", QStringLiteral("Copy All"), [this] { copyAll(); });
    QMenu* help = addMenu("mnu_help", QStringLiteral("&Help"));
    addEntry(help, "mnu_assistance", QStringLiteral("&Assistance"),
             [this] { services().dialogs.tell(centerOfMassHelp()); });
}

void Form20::copyAll()
{
    FlexGrid& table = m_logic->Form20Grid;
    table.select(0, 0, table.rows() - 1, table.cols() - 1);
    Grid1->copy();
}

void Form20::activated()
{
    const FlexGrid::Bulk bulk(m_logic->Form20Grid);
    widenToTexts(m_logic->Form20Grid, 0, 0, services().measure);
}

} // namespace kalvo
