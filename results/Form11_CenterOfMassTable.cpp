// SPDX-License-Identifier: GPL-3.0-or-later
#include "results/Form11_CenterOfMassTable.h"

#include "platform/ResultGrid.h"
#include "results/CenterOfMass.h"
#include "results/ColumnFit.h"

#include <QAction>
#include <QLabel>
#include <QMenu>
#include <QVBoxLayout>

namespace kalvo {

Form11::Form11(std::shared_ptr<HydrodataDesk> logic, MainWindow mainWindow)
    : ResultWindow("Form11", QStringLiteral(" Center of Mass"), logic->sharedDesk(), std::move(mainWindow)),
      m_logic(std::move(logic))
{
    auto* Label1 = new QLabel(QStringLiteral("Center of Mass by KK Station Name / Ratio / Plan / JD Simulation"));
    Label1->setObjectName(QStringLiteral("Label1"));
    Label1->setAlignment(Qt::AlignCenter);
    Grid1 = new ResultGrid(m_logic->Form11Grid, services(), centralWidget());
    Grid1->setObjectName(QStringLiteral("Grid1"));
    auto* column = new QVBoxLayout(centralWidget());
    column->addWidget(Label1);
    column->addWidget(Grid1, 1);
    buildMenus();
    setFirstFocus(Grid1);
    resize(760, 200);
}

Form11::~Form11()
{
    dropControls();
}

void Form11::buildMenus()
{
    QMenu* file = addMenu("mnu_file", QStringLiteral("&File"));
    Grid1->setCsv([this] { return desk().offeredName(); }, {});
    addCsvEntry(file, Grid1);
    addEntry(file, "mnu_return", QStringLiteral("&Return"), [this] { m_logic->leaveCenters(objectName()); });
    QMenu* edit = addMenu("mnu_edit", QStringLiteral("&Edit"));
    addEntry(edit, "mnu_copy", QStringLiteral("&Copy"), [this] { Grid1->copy(); });
    Grid1->addPopupEntry("pop_copy", QStringLiteral("Copy"), [this] { Grid1->copy(); });
    QMenu* help = addMenu("mnu_help", QStringLiteral("&Help"));
    addEntry(help, "mnu_assistance", QStringLiteral("&Assistance"),
             [this] { services().dialogs.tell(centerOfMassHelp()); });
}

void Form11::activated()
{
    FlexGrid& table = m_logic->Form11Grid;
    const FlexGrid::Bulk bulk(table);
    for (int col = 2; col < table.cols(); ++col) {
        table.setColAlignment(col, FlexGrid::RightTop);
        widenToTexts(table, col, 1, services().measure);
    }
}

} // namespace kalvo
