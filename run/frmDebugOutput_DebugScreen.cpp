// SPDX-License-Identifier: GPL-3.0-or-later
#include "run/frmDebugOutput_DebugScreen.h"

#include "run/RunFolder.h"

#include <QAction>
#include <QListWidget>
#include <QStatusBar>

namespace kalvo {

frmDebugOutput::frmDebugOutput(Screens& screens, Services& services)
    : ViewerWindow("frmDebugOutput", QStringLiteral(" Kalvo DEBUG HEC-1"), {screens, services, {}, {}}, OnClose::Keep)
{
    List1 = new QListWidget(this);
    List1->setObjectName(QStringLiteral("List1"));
    List1->setFont(courierFont());
    List1->setSelectionMode(QAbstractItemView::ExtendedSelection);
    List1->setUniformItemSizes(true);
    setCentralWidget(List1);
    statusBar()->setSizeGripEnabled(false);
    buildMenu();
    resize(760, 420);
    frmDebugOutput::repaintScreen();
}

void frmDebugOutput::registerIn(Screens& screens, Services& services)
{
    screens.add(QStringLiteral("frmDebugOutput"),
                [&screens, &services] { return std::make_unique<frmDebugOutput>(screens, services); });
}

void frmDebugOutput::buildMenu()
{
    const auto add = [this](const char* name, const QString& caption, const QKeySequence& key, auto body) {
        addViewerEntry(*this, {}, name, caption, body)->setShortcut(key);
    };
    add("mnu_copy", tr("&Copy"), QKeySequence::Copy, [this] { copySelection(); });
    add("mnu_help", tr("&Help"), QKeySequence::HelpContents, [this] {
        services().dialogs.tell(
            QStringLiteral("This is the raw output of the HEC-1 computer program as it has run in DOS"));
    });
    add("mnu_quit", tr("&Quit"), QKeySequence::Close, [this] { close(); });
}

void frmDebugOutput::copySelection()
{
    QStringList lines;
    for (int row = 0; row < List1->count(); ++row)
        if (List1->item(row)->isSelected())
            lines << List1->item(row)->text();
    if (lines.isEmpty())
        services().dialogs.tell(QStringLiteral("Nothing Selected"));
    else
        services().clipboard.setText(lines.join(QStringLiteral("\r\n")));
}

void frmDebugOutput::showScreen()
{
    repaintScreen();
    show();
    raise();
}

void frmDebugOutput::repaintScreen()
{
    // The file and not a page's own list, because a clone page's runs end up here too.
    m_output.read(RunFolder(services().folder).file(RunFolder::kConsole));
    List1->clear();
    List1->addItems(m_output.List1());
    statusBar()->showMessage(List1->count() == 0 ? tr("HEC-1 wrote nothing to the console.") : QString());
}

} // namespace kalvo
