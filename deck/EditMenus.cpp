// SPDX-License-Identifier: GPL-3.0-or-later
#include "deck/EditMenus.h"

#include "deck/FR_FindAndReplace.h"
#include "deck/Form1_MainScreen.h"
#include "deck/frmGOTO_GoTo.h"
#include "platform/FlexGridView.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMenu>

namespace kalvo {

EditMenus::EditMenus(Form1& form, Workspace& page) : QObject(&form), m_form(form), m_page(page)
{
    followMenus();
    followCommands();
    FR::registerIn(page.edit.findReplace, page.editContext, &form);
    frmGOTO::registerIn(page.edit.goTo, page.editContext, &form);
}

// They speak to a page that may go next.
EditMenus::~EditMenus()
{
    while (m_busy > 0)
        showBusy(false);
    m_page.screens.unload(m_page.editContext.screenName("FR"));
    m_page.screens.unload(m_page.editContext.screenName("frmGOTO"));
}

void EditMenus::followMenus()
{
    struct Opening
    {
        const char* menu;
        EditCommands::Menu rule;
    };
    for (const Opening& opening :
         {Opening{"edit", EditCommands::Menu::Edit}, Opening{kPopupMenu, EditCommands::Menu::Popup}})
        if (const auto* menu = m_form.findChild<QMenu*>(QString::fromLatin1(opening.menu)))
            connect(menu, &QMenu::aboutToShow, this, [this, rule = opening.rule] { m_page.edit.menuOpening(rule); });
    m_form.installEventFilter(this);
}

/// The keyboard's own way into the Edit menu: its entries must be as they would be in the open menu before the toolkit
/// looks whose shortcut a key is.
bool EditMenus::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::ShortcutOverride &&
        static_cast<QKeyEvent*>(event)->modifiers().testFlag(Qt::ControlModifier))
        m_page.edit.menuOpening(EditCommands::Menu::Edit);
    return QObject::eventFilter(watched, event);
}

void EditMenus::followCommands()
{
    FlexGridView* grid = m_form.grid();
    connect(&m_page.edit, &EditCommands::busy, this, &EditMenus::showBusy);
    connect(&m_page.rows, &RowCommands::gridFocusWanted, grid, [grid] { grid->setFocus(); });
    connect(&m_page.commands, &Commands::stateChanged, grid, [this, grid](const QString& name) {
        if (name == QLatin1String("mnu_adjustgrids"))
            grid->setUserResizing(m_page.commands.isChecked(name));
    });
    connect(&m_page.fit, &FitCommands::formWidthWanted, &m_form, [this](int twips) {
        if (!m_form.isMaximized() && !m_form.isFullScreen())
            m_form.resize(twips / kTwipsPerPixel, m_form.height());
    });
}

void EditMenus::showBusy(bool on)
{
    m_busy += on ? 1 : -1;
    if (on)
        QApplication::setOverrideCursor(Qt::WaitCursor);
    else
        QApplication::restoreOverrideCursor();
}

} // namespace kalvo
