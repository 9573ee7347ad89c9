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

const QString kName = QStringLiteral("frmRouting");
const QString kNoRoutings = QStringLiteral("There are no Routings in the HEC-1 input data.");
const QString kNoReport = QStringLiteral("The HEC-1 output 'checky.out' cannot be read. Run HEC-1 first.");
const QString kElsewhere =
    QStringLiteral("With one plan and one ratio HEC-1 lists the routings in its RUNOFF SUMMARY.");
const QString kCut = QStringLiteral("The list ends here: the output lists more routings than can be shown.");

constexpr int kEmptyLines = 2; ///< ahead of the first routing

} // namespace

frmRouting::frmRouting(RoutingSurroundings around, QWidget* parent) : QMainWindow(parent), m_around(std::move(around))
{
    setObjectName(kName);
    setWindowTitle(QStringLiteral("Reservoir Routing Output"));
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
    connect(Command1, &QPushButton::clicked, this, &frmRouting::showRunoffSummary);
    List2 = new QListView(middle);
    List2->setObjectName(QStringLiteral("List2"));
    List2->setFont(routingFont());
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
        saveRoutings(m_around.services, m_output.hasRoutings() ? (lines.join(end) + end).toLatin1() : QByteArray());
    };
    menu.copy = [this] { copySelection(); };
    menu.selectAll = [this] { List2->selectAll(); };
    menu.find = [this] { find(false); };
    menu.findAgain = [this] { find(true); };
    menu.goBack = [this] {
        close();
        m_around.toMainScreen();
    };
    List2->addActions(buildRoutingMenu(*this, menu));
    List2->setContextMenuPolicy(Qt::ActionsContextMenu);
}

void frmRouting::showScreen()
{
    repaintScreen();
    show();
    raise();
    activateWindow();
    Command1->isVisible() ? Command1->setFocus() : List2->setFocus();
    if (!m_output.canBeRead)
        m_around.services.dialogs.warn(kNoReport);
    else if (!m_output.hasRoutings())
        m_around.services.dialogs.tell(kNoRoutings);
}

void frmRouting::repaintScreen()
{
    m_output = getrouting(RunFolder(m_around.services.folder).report());
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
    Command1->setVisible(isElsewhere && m_around.screens.isKnown(QStringLiteral("Form12")));
}

void frmRouting::closeEvent(QCloseEvent* event)
{
    QMainWindow::closeEvent(event);
    m_around.screens.unload(kName);
}

// -- Copy and find ---------------------------------------------------------------------------------------------------

void frmRouting::copySelection()
{
    QModelIndexList chosen = List2->selectionModel()->selectedRows();
    if (chosen.isEmpty()) {
        m_around.services.dialogs.tell(QStringLiteral("Nothing Selected"));
        return;
    }
    std::sort(chosen.begin(), chosen.end());
    QStringList lines;
    for (const QModelIndex& index : chosen)
        lines << index.data().toString();
    m_around.services.clipboard.setText(lines.join(QStringLiteral("\r\n")));
}

void frmRouting::find(bool again)
{
    if (!again || m_sought.isEmpty()) {
        const auto answer =
            m_around.services.dialogs.input(QStringLiteral("Find in Routings"), windowTitle(), m_sought);
        if (!answer || answer->isEmpty())
            return;
        m_sought = *answer;
    }
    const QStringList lines = m_lines->stringList();
    const int count = static_cast<int>(lines.size());
    const int first = List2->currentIndex().row() + (again ? 1 : 0);
    for (int i = 0; i < count; ++i) {
        const int row = (std::max(first, 0) + i) % count;
        if (lines[row].contains(m_sought, Qt::CaseInsensitive)) {
            List2->setCurrentIndex(m_lines->index(row));
            return;
        }
    }
    m_around.services.dialogs.tell(QStringLiteral("\"%1\" was not found.").arg(m_sought));
}

// -- The other summary -----------------------------------------------------------------------------------------------

void frmRouting::showRunoffSummary()
{
    const QString viewer = QStringLiteral("Form12");
    m_around.screens.show(viewer);
    auto* window = m_around.screens.loadAs<QWidget>(viewer);
    auto* text = window ? window->findChild<LargeTextView*>(QStringLiteral("rb1")) : nullptr;
    // Searched there, because lines may have been taken out of what the viewer shows.
    const qsizetype place = text ? runoffSummaryOf(text->text()) : -1;
    if (place < 0)
        return;
    text->setSelStart(place);
    text->setTopLine(text->text().lineFromChar(place));
}

} // namespace kalvo
