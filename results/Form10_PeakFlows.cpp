// SPDX-License-Identifier: GPL-3.0-or-later
#include "results/Form10_PeakFlows.h"

#include "platform/ResultGrid.h"
#include "results/PeakFile.h"

#include <QAction>
#include <QLabel>
#include <QMenu>

namespace kalvo {

namespace {

constexpr int kBesideGrid = 550;  ///< twips of the form's width
constexpr int kAroundGrid = 1200; ///< twips of the form's height, menu bar included
constexpr int kTop = 8;           ///< pixels above the grid

} // namespace

Form10::Form10(std::shared_ptr<ResultDesk> desk, MainWindow mainWindow)
    : ResultWindow("Form10", QStringLiteral(" Peak Flows"), std::move(desk), std::move(mainWindow))
{
    Grid1 = new ResultGrid(tables().peakTable, services(), centralWidget());
    Grid1->setObjectName(QStringLiteral("Grid1"));
    Grid1->setCopyRule(CopyRule::CrLf);
    const auto unit = [shared = sharedDesk()](int col) { return col > 0 ? shared->flowUnit() : QString(); };
    Grid1->setCsv([shared = sharedDesk()] { return shared->offeredName(); }, unit);
    Grid1->setTipText([unit](int row, int col) { return row > 0 ? unit(col) : QString(); });
    m_unit = new QLabel(centralWidget());
    m_unit->setObjectName(QStringLiteral("Label1"));
    buildMenu();
    setFirstFocus(Grid1);
    connect(&tables(), &ResultTables::changed, this, &Form10::repaintScreen);
    resize(760, 420);
    repaintScreen();
}

void Form10::buildMenu()
{
    QMenu* file = addMenu("mnu_file", QStringLiteral("&File"));
    addEntry(file, "mnu_savepeaks", QStringLiteral("&Save Peak Flows"), [this] {
        newSavePeaks(desk());
    })->setShortcut(QKeySequence::Save);
    addCsvEntry(file, Grid1);
    file->addSeparator();
    addEntry(file, "mnu_return", QStringLiteral("&Return"), [this] {
        returnToMain();
    })->setShortcut(QKeySequence::Close);

    QMenu* edit = addMenu("mnu_edit", QStringLiteral("&Edit"));
    Grid1->followToggle(
        addEntry(edit, "mnu_ToggleRowsandColumns", QStringLiteral("Toggle &Title Rows and Columns"), {}));
    QAction* copy = addEntry(edit, "mnu_copy", QStringLiteral("&Copy"), [this] { Grid1->copy(); });
    copy->setShortcut(QKeySequence::Copy);
    addEntry(edit, "mnu_SelectAll", QStringLiteral("Select A&ll"), [this] {
        Grid1->selectWhole();
    })->setShortcut(QKeySequence::SelectAll);
    Grid1->followEditMenu(edit, copy);
    Grid1->addPopupEntry("pop_Copy", QStringLiteral("Copy"), [this] { Grid1->copy(); });
}

void Form10::repaintScreen()
{
    FlexGrid& table = tables().peakTable;
    const FlexGrid::Bulk bulk(table);
    table.setTextMatrix(0, 0, QStringLiteral("KK Name"));
    table.setColWidth(0, services().measure.textWidth(QStringLiteral("WWWWWW")));
    m_unit->setText(QStringLiteral("Flows in %1").arg(desk().flowUnit()));
}

void Form10::layOut(const QSize& central)
{
    const int width = this->width() - fromTwips(kBesideGrid);
    const int height = this->height() - fromTwips(kAroundGrid);
    Grid1->setGeometry((central.width() - width) / 2, kTop, width, height);
    const int below = Grid1->geometry().bottom() + 1;
    m_unit->setGeometry(Grid1->x(), below, width, central.height() - below);
}

} // namespace kalvo
