// SPDX-License-Identifier: GPL-3.0-or-later
#include "results/Form9_StationPeakFlows.h"

#include "deck/ScreenWindow.h"
#include "platform/GridActions.h"
#include "platform/ResultGrid.h"

#include <QAction>
#include <QMenu>
#include <QPushButton>

namespace kalvo {

namespace {

// Twips.
constexpr int kBesideGrid = 500;
constexpr int kBesideButton = 400;
constexpr int kBelowGrid = 300;
constexpr int kGridHeight = 900; ///< headings, peaks and a scroll bar

constexpr int kTop = 10; ///< pixels above the grid

} // namespace

Form9::Form9(std::shared_ptr<ResultDesk> desk, MainWindow mainWindow)
    : ResultWindow("Form9", QStringLiteral(" Kalvo Station Peak Flows"), std::move(desk), std::move(mainWindow))
{
    PKS = new ResultGrid(tables().peakRow, services(), centralWidget());
    PKS->setObjectName(QStringLiteral("PKS"));
    PKS->setCopyRule(CopyRule::AsIs);
    const auto unit = [shared = sharedDesk()](int col) { return col > 0 ? shared->flowUnit() : QString(); };
    PKS->setCsv([shared = sharedDesk()] { return shared->offeredName(); }, unit);
    PKS->setTipText([unit](int row, int col) { return row > 0 ? unit(col) : QString(); });
    PKS->addPopupEntry("pop_Copy", QStringLiteral("Copy"), [this] { PKS->copy(); });
    Command1 = namedButton("Command1", QStringLiteral("Return"), centralWidget());
    connect(Command1, &QPushButton::clicked, this, [this] { run("Command1", [this] { returnToMain(); }); });
    buildMenu();
    setFirstFocus(PKS);
    connect(&tables(), &ResultTables::changed, this, &Form9::repaintScreen);
    resize(720, 150);
    repaintScreen();
}

void Form9::buildMenu()
{
    addEntry(nullptr, "mnu_copy", QStringLiteral("&Copy"), [this] { PKS->copy(); })->setShortcut(QKeySequence::Copy);
    addCsvEntry(nullptr, PKS);
    addEntry(nullptr, "mnu_return", QStringLiteral("&Return"), [this] {
        returnToMain();
    })->setShortcut(QKeySequence::Close);
    QMenu* help = addMenu("mnu_help", QStringLiteral("&Help"));
    addEntry(help, "mnu_assistance", QStringLiteral("&Assistance"), [this] {
        services().dialogs.tell(
            QStringLiteral("Peak Flows versus KK Station - Use Copy to transfer data to another Application"));
    });
}

void Form9::repaintScreen()
{
    FlexGrid& row = tables().peakRow;
    const FlexGrid::Bulk bulk(row);
    row.setColWidth(0, services().measure.textWidth(QStringLiteral("W")));
    fitToHeadings(row, 1, services().measure);
}

void Form9::layOut(const QSize& central)
{
    const int width = this->width() - fromTwips(kBesideGrid);
    PKS->setGeometry((central.width() - width) / 2, kTop, width, fromTwips(kGridHeight));
    Command1->resize(Command1->sizeHint());
    Command1->move((this->width() - Command1->width() - fromTwips(kBesideButton)) / 2,
                   PKS->height() + fromTwips(kBelowGrid));
}

} // namespace kalvo
