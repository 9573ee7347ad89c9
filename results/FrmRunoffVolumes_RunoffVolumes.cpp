// SPDX-License-Identifier: GPL-3.0-or-later
#include "results/FrmRunoffVolumes_RunoffVolumes.h"

#include "platform/ResultGrid.h"
#include "results/ColumnFit.h"

#include <QAction>
#include <QLabel>
#include <QMenu>
#include <QVBoxLayout>

namespace kalvo {

FrmRunoffVolumes::FrmRunoffVolumes(std::shared_ptr<ResultDesk> desk, MainWindow mainWindow)
    : ResultWindow("FrmRunoffVolumes", QStringLiteral(" Runoff Volumes"), std::move(desk), std::move(mainWindow))
{
    buildControls();
    buildMenu();
    setFirstFocus(Grid1);
    connect(&tables(), &ResultTables::filled, this, &FrmRunoffVolumes::repaintScreen);
    resize(760, 460);
    FrmRunoffVolumes::repaintScreen();
}

FrmRunoffVolumes::~FrmRunoffVolumes()
{
    dropControls();
}

void FrmRunoffVolumes::buildControls()
{
    auto* label = new QLabel(
        QStringLiteral("Hydrograph Runoff Volumes by KK Station Name / Ratio / Plan / JD Simulation"), centralWidget());
    label->setObjectName(QStringLiteral("Label1"));
    label->setAlignment(Qt::AlignCenter);
    label->setWordWrap(true);
    Grid1 = new ResultGrid(m_table, services(), centralWidget());
    Grid1->setObjectName(QStringLiteral("Grid1"));
    Grid1->setCopyRule(CopyRule::CrLfCollapsed);
    Grid1->setCsv([shared = sharedDesk()] { return shared->offeredName(); },
                  [this](int col) { return col == 1 ? unit() : QString(); });
    Grid1->setTipText([this](int row, int) { return tipOf(row); });
    auto* layout = new QVBoxLayout(centralWidget());
    layout->addWidget(label);
    layout->addWidget(Grid1, 1);
}

void FrmRunoffVolumes::buildMenu()
{
    QMenu* file = addMenu("mnu_file", QStringLiteral("&File"));
    addEntry(file, "mnu_saveCsv", QStringLiteral("Save as CS&V"), [this] { saveList(); });
    file->addSeparator();
    addEntry(file, "mnu_return", QStringLiteral("&Return"), [this] { leave(); })->setShortcut(QKeySequence::Close);

    QMenu* edit = addMenu("mnu_edit", QStringLiteral("&Edit"));
    Grid1->followToggle(
        addEntry(edit, "mnu_ToggleRowsandColumns", QStringLiteral("&Toggle Copy with Rows and Columns"), {}));
    addEntry(edit, "mnu_copy", QStringLiteral("&Copy"), [this] { Grid1->copy(); })->setShortcut(QKeySequence::Copy);
    // The copy above closes gaps, so that a mark or a volume may land below another ratio.
    addEntry(edit, "mnu_copyWithEmptyCells", QStringLiteral("Copy with &Empty Cells"), [this] {
        Grid1->copyAs(CopyRule::CrLf);
    })->setShortcut(QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_C));
    addEntry(edit, "mnu_selectall", QStringLiteral("Select &All"), [this] {
        Grid1->selectWhole();
    })->setShortcut(QKeySequence::SelectAll);
    Grid1->addPopupEntry("pop_Copy", QStringLiteral("Copy"), [this] { Grid1->copy(); });
    Grid1->addPopupEntry("pop_copyWithEmptyCells", QStringLiteral("Copy with Empty Cells"),
                         [this] { Grid1->copyAs(CopyRule::CrLf); });
}

void FrmRunoffVolumes::showScreen()
{
    desk().allowRuns(false);
    ResultWindow::showScreen();
}

void FrmRunoffVolumes::hideScreen()
{
    // Also by way of a screen that takes this one along: the run command must not stay closed behind it.
    if (isVisible())
        desk().allowRuns(true);
    ResultWindow::hideScreen();
}

void FrmRunoffVolumes::leave()
{
    hideScreen();
    desk().tellReturned();
}

void FrmRunoffVolumes::closedByUser()
{
    leave();
    desk().tellClosed(objectName());
    desk().screens().unload(objectName());
}

void FrmRunoffVolumes::repaintScreen()
{
    run("mnu_runoffvolumes", [this] {
        if (tables().counts.numPlans == 0)
            tables().counts.numPlans = 1; // every reader's own, also for those that come later
        m_volumes.clear();
        fillVolumes(m_table, m_volumes, tables().tableCounts, services().measure);
        m_volumes = runoffVolumes(tables().hydrographTable);
        fillVolumes(m_table, m_volumes, tables().tableCounts, services().measure);
        widenToTexts(m_table, 0, 2, services().measure);
    });
}

void FrmRunoffVolumes::saveList()
{
    FlexGrid list;
    listVolumes(list, m_volumes);
    Grid1->saveCsvOf(list);
}

QString FrmRunoffVolumes::unit() const
{
    return desk().isMetric() ? QStringLiteral("m3") : QStringLiteral("cf");
}

QString FrmRunoffVolumes::tipOf(int row) const
{
    if (!m_table.textMatrix(row, 0).startsWith(QLatin1String("Volume")))
        return {};
    return desk().isMetric() ? QStringLiteral("m3: the deck of this run has metric units")
                             : QStringLiteral("cubic feet");
}

} // namespace kalvo
