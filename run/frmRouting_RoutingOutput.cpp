// SPDX-License-Identifier: GPL-3.0-or-later
#include "run/frmRouting_RoutingOutput.h"

#include "deck/ImportScreens.h"
#include "deck/ScreenWindow.h"
#include "platform/LargeTextView.h"
#include "run/RoutingCommands.h"
#include "run/RunFolder.h"

#include <QAction>
#include <QLabel>
#include <QListView>
#include <QMenu>
#include <QPushButton>
#include <QStringListModel>
#include <QVBoxLayout>

#include <algorithm>

namespace kalvo {

namespace {

const QString kNoRoutings = QStringLiteral("There are no Routings in the HEC-1 input data.");
const QString kNoReport = QStringLiteral("The HEC-1 output 'checky.out' cannot be read. Run HEC-1 first.");
const QString kElsewhere =
    QStringLiteral("With one plan and one ratio HEC-1 lists the routings in its RUNOFF SUMMARY.");
const QString kCut = QStringLiteral("The list ends here: the output lists more routings than can be shown.");

constexpr int kEmptyLines = 2; ///< ahead of the first routing

} // namespace

frmRouting::frmRouting(ViewerSurroundings around)
    : RoutingWindow("frmRouting", QStringLiteral("Reservoir Routing Output"), std::move(around))
{
    buildControls();
    buildMenus();
    resize(980, 420);
}

void frmRouting::buildControls()
{
    auto* middle = new QWidget(this);
    Label1 = adviceLabel("Label1", middle);
    Command1 = namedButton("Command1", QStringLiteral("Show the &RUNOFF SUMMARY"), middle);
    Command1->hide();
    connect(Command1, &QPushButton::clicked, this, [this] { run("Command1", [this] { showRunoffSummary(); }); });
    List2 = new QListView(middle);
    List2->setObjectName(QStringLiteral("List2"));
    List2->setFont(courierFont());
    List2->setSelectionMode(QAbstractItemView::ExtendedSelection);
    List2->setEditTriggers(QAbstractItemView::NoEditTriggers);
    List2->setUniformItemSizes(true);
    m_lines = new QStringListModel(this);
    List2->setModel(m_lines);
    auto* advice = new QHBoxLayout;
    advice->addWidget(Label1, 1);
    advice->addWidget(Command1);
    auto* layout = new QVBoxLayout(middle);
    layout->setContentsMargins(8, 4, 8, 8);
    layout->addLayout(advice);
    layout->addWidget(List2, 1);
    setCentralWidget(middle);
}

void frmRouting::buildMenus()
{
    RoutingMenu menu;
    menu.save = [this] {
        const QStringList lines = m_lines->stringList();
        const QString end = QStringLiteral("\r\n");
        saveRoutings(services(), m_output.hasRoutings() ? (lines.join(end) + end).toLatin1() : QByteArray());
    };
    menu.copy = [this] { copySelection(); };
    menu.selectAll = [this] { List2->selectAll(); };
    menu.find = [this] { find(false); };
    menu.findAgain = [this] { find(true); };
    menu.goBack = [this] { close(); };
    List2->addActions(buildRoutingMenu(*this, menu));
    List2->setContextMenuPolicy(Qt::ActionsContextMenu);
}

void frmRouting::showScreen()
{
    repaintScreen();
    if (!m_output.canBeRead)
        services().dialogs.warn(kNoReport);
    else if (!m_output.hasRoutings())
        services().dialogs.tell(kNoRoutings);
    bringForward(Command1->isHidden() ? static_cast<QWidget&>(*List2) : *Command1);
}

void frmRouting::repaintScreen()
{
    m_output = getrouting(RunFolder(services().folder).report());
    m_lines->setStringList(m_output.List2);
    List2->selectionModel()->setCurrentIndex(m_lines->index(kEmptyLines), QItemSelectionModel::NoUpdate);
    const bool isElsewhere = !m_output.hasRoutings() && m_output.isInRunoffSummary;
    QString words;
    if (!m_output.canBeRead)
        words = kNoReport;
    else if (!m_output.hasRoutings())
        words = isElsewhere ? kNoRoutings + QStringLiteral("\n") + kElsewhere : kNoRoutings;
    else if (m_output.isCut)
        words = kCut;
    setAdvice(*Label1, words);
    Command1->setVisible(isElsewhere && screens().isKnown(QStringLiteral("Form12")));
}

// -- Copy and find ---------------------------------------------------------------------------------------------------

void frmRouting::copySelection()
{
    QModelIndexList chosen = List2->selectionModel()->selectedRows();
    if (chosen.isEmpty()) {
        tellNothingSelected();
        return;
    }
    std::sort(chosen.begin(), chosen.end());
    QStringList lines;
    for (const QModelIndex& index : chosen)
        lines << index.data().toString();
    services().clipboard.setText(lines.join(QStringLiteral("\r\n")));
}

void frmRouting::find(bool again)
{
    const std::optional<QString> sought = soughtText(again);
    if (!sought)
        return;
    const QStringList lines = m_lines->stringList();
    const int count = static_cast<int>(lines.size());
    const int first = List2->currentIndex().row() + (again ? 1 : 0);
    for (int i = 0; i < count; ++i) {
        const int row = (std::max(first, 0) + i) % count;
        if (lines[row].contains(*sought, Qt::CaseInsensitive)) {
            List2->setCurrentIndex(m_lines->index(row));
            return;
        }
    }
    tellNotFound();
}

// -- The other summary -----------------------------------------------------------------------------------------------

void frmRouting::showRunoffSummary()
{
    const QString viewer = QStringLiteral("Form12");
    screens().show(viewer);
    auto* window = screens().loadAs<QWidget>(viewer);
    auto* text = window ? window->findChild<LargeTextView*>(QStringLiteral("rb1")) : nullptr;
    // Searched there, because lines may have been taken out of what the viewer shows.
    const qsizetype place = text ? runoffSummaryOf(text->text()) : -1;
    if (place < 0)
        return;
    text->setSelStart(place);
    text->setTopLine(text->text().lineFromChar(place));
}

} // namespace kalvo
