// SPDX-License-Identifier: GPL-3.0-or-later
#include "results/hydrodata_HydrodataViewer.h"

#include "platform/GridActions.h"
#include "platform/ResultGrid.h"
#include "results/ColumnFit.h"

#include <QAction>
#include <QLabel>
#include <QMenu>

#include <algorithm>

namespace kalvo {

namespace {

// What the form leaves around the grid, in twips.
constexpr int kBesideGrid = 600;
constexpr int kAboveAndBelowGrid = 1150;

} // namespace

hydrodata::hydrodata(std::shared_ptr<HydrodataDesk> logic, MainWindow mainWindow)
    : ResultWindow("hydrodata", QStringLiteral(" Hydrodata Viewer"), logic->sharedDesk(), std::move(mainWindow)),
      m_logic(std::move(logic))
{
    Label1 = new QLabel(QStringLiteral("Flows by KK Station Name / Ratio / Plan / JD Simulation"), centralWidget());
    Label1->setObjectName(QStringLiteral("Label1"));
    FlexGrid& table = m_logic->table();
    Grid1 = new ResultGrid(table, services(), centralWidget());
    Grid1->setObjectName(QStringLiteral("Grid1"));
    Grid1->setCopyRule(CopyRule::CrOnly);
    Grid1->setTipText([this](int row, int col) { return tip(row, col); });
    Grid1->setCsv([this] { return desk().offeredName(); },
                  [this](int col) { return col < ResultTables::kFirstRecord ? QString() : desk().flowUnit(); });
    {
        const FlexGrid::Bulk bulk(table);
        const int width = services().measure.textWidth(QStringLiteral("WWWWW"));
        for (int col = 0; col < std::min(ResultTables::kFirstRecord, table.cols()); ++col) {
            table.setColWidth(col, width);
            table.setColAlignment(col, FlexGrid::RightTop);
        }
    }
    buildMenus();
    setFirstFocus(Grid1);
    resize(900, 600);
}

void hydrodata::buildMenus()
{
    QMenu* file = addMenu("mnu_file", QStringLiteral("&File"));
    addEntry(file, "mnu_saveselect", QStringLiteral("Save Selection"), [this] { m_logic->mnu_saveselect(); });
    addCsvEntry(file, Grid1);
    addEntry(file, "Endhydrodata", QStringLiteral("&Return"), [this] { m_logic->Endhydrodata(); });

    QMenu* edit = addMenu("mnu_edit", QStringLiteral("&Edit"));
    Grid1->followToggle(
        addEntry(edit, "mnu_ToggleRowsandColumns", QStringLiteral("Toggle &Titles of Rows and Columns"), {}));
    addEntry(edit, "copyhydrodata", QStringLiteral("&Copy"), [this] { Grid1->copy(); });
    addEntry(edit, "mnu_centerofMass", QStringLiteral("Hydrograph Center of &Mass"),
             [this] { m_logic->center_of_mass(); });
    addEntry(edit, "mnu_HydroGraph", QStringLiteral("Quick Hydro&Graph"),
             [this] { desk().wantQuickGraph(m_logic->table()); });
    Grid1->addPopupEntry("pop_Copy", QStringLiteral("Copy"), [this] { Grid1->copy(); });
}

QString hydrodata::tip(int row, int col) const
{
    const FlexGrid& table = m_logic->table();
    const QString heading = table.textMatrix(0, col), cell = table.textMatrix(row, col);
    if (col < ResultTables::kFirstRecord || heading.isEmpty())
        return heading;
    if (row == 0 || cell.isEmpty())
        return QStringLiteral("%1, flow in %2").arg(heading, desk().flowUnit());
    return QStringLiteral("%1: %2 %3").arg(heading, cell, desk().flowUnit());
}

void hydrodata::closedByUser()
{
    desk().screens().unload(objectName());
    desk().tellClosed(objectName());
    desk().tellReturned();
}

void hydrodata::activated()
{
    FlexGrid& table = m_logic->table();
    const TextMeasure& measure = services().measure;
    const FlexGrid::Bulk bulk(table);
    for (int col = 0; col < std::min(ResultTables::kFirstRecord, table.cols()); ++col)
        widenToText(table, col, table.textMatrix(0, col), measure);
    for (int col = ResultTables::kFirstRecord; col < table.cols(); ++col)
        widenToText(table, col, QStringLiteral("0.123456789"), measure); // what HEC-1 writes in full
    fitToHeadings(table, ResultTables::kFirstRecord, measure);
}

void hydrodata::layOut(const QSize& central)
{
    const QSize grid(width() - fromTwips(kBesideGrid), height() - fromTwips(kAboveAndBelowGrid));
    const int left = (central.width() - grid.width()) / 2;
    const int top = central.height() - grid.height() - left;
    Grid1->setGeometry(QRect(QPoint(left, top), grid));
    const QSize words = Label1->sizeHint();
    Label1->setGeometry((central.width() - words.width()) / 2, (top - words.height()) / 2, words.width(),
                        words.height());
}

} // namespace kalvo
