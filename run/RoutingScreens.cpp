// SPDX-License-Identifier: GPL-3.0-or-later
#include "run/RoutingScreens.h"

#include "run/DetRes_DetailedRoutings.h"
#include "run/ViewerWindow.h"
#include "run/detres2_RoutingGrid.h"
#include "run/frmRouting_RoutingOutput.h"

#include <QAction>
#include <QMainWindow>

namespace kalvo {

void registerRoutingScreens(Screens& screens, Services& services, std::function<void()> toMainScreen)
{
    const ViewerSurroundings around{screens, services, std::move(toMainScreen), {}};
    screens.add(QStringLiteral("frmRouting"), [around] { return std::make_unique<frmRouting>(around); });
    screens.add(QStringLiteral("DetRes"), [around] { return std::make_unique<DetRes>(around); });
    screens.add(QStringLiteral("detres2"), [around] { return std::make_unique<detres2>(around); });
}

QList<QAction*> buildRoutingMenu(QMainWindow& viewer, const RoutingMenu& menu)
{
    const QString file = QStringLiteral("&File");
    const QString edit = QStringLiteral("&Edit");
    QList<QAction*> popup;
    const auto add = [&viewer](const QString& top, const char* name, const QString& caption,
                               const std::function<void()>& body, const QKeySequence& key) -> QAction* {
        if (!body)
            return nullptr;
        QAction* action = addViewerEntry(viewer, top, name, caption, body);
        action->setShortcut(key);
        return action;
    };
    add(file, "mnu_Save", QStringLiteral("&Save As..."), menu.save, QKeySequence::Save);
    add(file, "mnu_saveCsv", QStringLiteral("Save as CS&V..."), menu.saveCsv, QKeySequence::Save);
    for (const auto& [name, caption] : {std::pair("mnu_printersetup", QStringLiteral("Printer S&etup...")),
                                        std::pair("mnu_print", QStringLiteral("&Print..."))})
        addViewerEntry(viewer, file, name, caption, [] {})->setEnabled(false); // there is no printing yet
    add(file, "mnu_Return", QStringLiteral("&Return"), menu.goBack, QKeySequence::Close);
    popup << add(edit, "mnu_Copy", QStringLiteral("&Copy"), menu.copy, QKeySequence::Copy)
          << add(edit, "mnu_copyasData", QStringLiteral("Copy as &Data (by TABs)"), menu.copyAsData,
                 QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_C))
          << add(edit, "mnu_SelectAll", QStringLiteral("Select &All"), menu.selectAll, QKeySequence::SelectAll);
    add(edit, "mnu_Find", QStringLiteral("&Find..."), menu.find, QKeySequence::Find);
    add(edit, "mnu_FindNext", QStringLiteral("Find &Next"), menu.findAgain, QKeySequence(Qt::Key_F3));
    add(QStringLiteral("&View"), "mnu_Grid", QStringLiteral("As a &Grid"), menu.grid, QKeySequence(Qt::Key_F4));
    popup.removeAll(nullptr);
    return popup;
}

} // namespace kalvo
