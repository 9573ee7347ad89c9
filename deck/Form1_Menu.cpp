// SPDX-License-Identifier: GPL-3.0-or-later
#include "deck/EditorBox.h"
#include "deck/Form1_MainScreen.h"
#include "deck/Icons.h"
#include "deck/RecentFiles.h"

#include <QMenu>
#include <QMenuBar>
#include <QToolBar>
#include <QToolButton>

namespace kalvo {

namespace {

QString nameOf(const MenuRow& row)
{
    return QString::fromLatin1(row.name);
}

/// Words that head a pop-up menu: not to be chosen.
void addHeading(QMenu& menu, const QString& words)
{
    QAction* heading = menu.addAction(words);
    heading->setEnabled(false);
    QFont bold = heading->font();
    bold.setBold(true);
    heading->setFont(bold);
}

} // namespace

void Form1::buildMenus()
{
    m_popup = new QMenu(this);
    m_popup->setObjectName(QString::fromLatin1(kPopupMenu));
    m_menus.insert(QString::fromLatin1(kPopupMenu), m_popup);
    for (const MenuRow& row : mainMenuRows()) {
        QMenu* menu = m_menus.value(QString::fromLatin1(row.menu));
        if (row.separatorAhead && menu)
            menu->addSeparator();
        switch (row.kind) {
        case MenuRow::Kind::Menu: {
            QMenu* added = menuBar()->addMenu(QString::fromLatin1(row.caption));
            added->setObjectName(nameOf(row));
            m_menus.insert(nameOf(row), added);
            break;
        }
        case MenuRow::Kind::Entry:
            if (menu)
                menu->addAction(addEntry(row));
            else if (row.hidden)
                addEntry(row); // on the bar it would take its letter from the entry that is shown
            else
                menuBar()->addAction(addEntry(row));
            break;
        case MenuRow::Kind::Recent:
            buildRecentMenu(*menu, row);
            break;
        case MenuRow::Kind::Heading:
            addHeading(*menu, QString::fromLatin1(row.caption));
            break;
        }
    }
    connect(&m_page.commands, &Commands::stateChanged, this, &Form1::mirrorCommand);
    for (const MenuRow& row : mainMenuRows())
        mirrorCommand(nameOf(row));
}

QAction* Form1::addEntry(const MenuRow& row)
{
    const QString name = nameOf(row);
    auto* action = new QAction(QString::fromLatin1(row.caption), this);
    action->setObjectName(name);
    action->setCheckable(row.checkable);
    action->setMenuRole(QAction::NoRole);
    if (*row.key)
        action->setShortcut(QKeySequence::fromString(QString::fromLatin1(row.key)));
    connect(action, &QAction::triggered, this, [this, name] {
        m_page.commands.run(name);
        mirrorCommand(name); // a click ticks the entry by itself, whatever the command did
    });
    m_mirrors.insert(name, action);
    return action;
}

void Form1::mirrorCommand(const QString& name)
{
    const Commands& commands = m_page.commands;
    if (QMenu* menu = m_menus.value(name))
        menu->menuAction()->setEnabled(commands.isEnabledFlag(name));
    for (auto mirror = m_mirrors.constFind(name); mirror != m_mirrors.constEnd() && mirror.key() == name; ++mirror) {
        QAction& action = **mirror;
        action.setEnabled(commands.isEnabled(name));
        const bool isButton = m_iconNames.contains(action.objectName());
        if (!isButton)
            action.setVisible(commands.isShown(name));
        if (action.isCheckable())
            action.setChecked(commands.isChecked(name));
    }
}

// -- Recent files ----------------------------------------------------------------------------------------------------

void Form1::buildRecentMenu(QMenu& menu, const MenuRow& row)
{
    m_recent = menu.addMenu(QString::fromLatin1(row.caption));
    m_recent->setObjectName(nameOf(row));
    m_recent->setToolTipsVisible(true);
    const RecentFiles& recent = m_page.files.recentFiles();
    connect(&recent, &RecentFiles::entryAdded, this, &Form1::fillRecentMenu);
    connect(&recent, &RecentFiles::entryChanged, this, &Form1::fillRecentMenu);
    connect(&recent, &RecentFiles::entryRemoved, this, &Form1::fillRecentMenu);
    fillRecentMenu();
}

void Form1::fillRecentMenu()
{
    m_recent->clear();
    const RecentFiles& recent = m_page.files.recentFiles();
    for (const int index : recent.indexes()) {
        QAction* entry = m_recent->addAction(RecentFiles::menuText(recent.caption(index)));
        entry->setObjectName(QStringLiteral("oldfile%1").arg(index));
        entry->setCheckable(true);
        entry->setChecked(true);
        connect(entry, &QAction::triggered, this, [this, index, entry] {
            entry->setChecked(true);
            m_page.deck.storeEditBox();
            m_page.files.oldfile(index);
        });
    }
    m_recent->menuAction()->setEnabled(!m_recent->isEmpty());
}

// -- Toolbar ---------------------------------------------------------------------------------------------------------

void Form1::buildToolbar()
{
    m_toolbar = addToolBar(tr("Toolbar"));
    m_toolbar->setObjectName(QStringLiteral("Toolbar1"));
    m_toolbar->setMovable(false);
    m_toolbar->setIconSize({20, 20});
    m_toolbar->setContentsMargins(9, 1, 9, 1);
    for (const ToolButton& button : toolButtons()) {
        const QString key = QString::fromLatin1(button.key);
        if (button.separatorAhead)
            m_toolbar->addSeparator();
        auto* action = new QAction(QString::fromLatin1(button.tip), this);
        action->setObjectName(key);
        action->setToolTip(QString::fromLatin1(button.tip));
        connect(action, &QAction::triggered, this, [this, key] { toolButtonClicked(key); });
        if (*button.shortcuts) {
            action->setShortcuts(QKeySequence::listFromString(QString::fromLatin1(button.shortcuts)));
            addAction(action); // its keys work while the toolbar is hidden
        }
        m_toolbar->addAction(action);
        m_toolbar->widgetForAction(action)->setObjectName(key);
        action->setVisible(!button.twin);
        m_iconNames.insert(key, QString::fromLatin1(button.icon));
        const QString command = QString::fromLatin1(button.command);
        m_mirrors.insert(command, action);
        mirrorCommand(command);
    }
    drawIcons();
}

void Form1::drawIcons()
{
    const QList<QAction*> actions = m_toolbar->actions();
    for (QAction* action : actions)
        if (const auto icon = m_iconNames.constFind(action->objectName()); icon != m_iconNames.constEnd())
            action->setIcon(lineIcon(*icon, palette()));
}

void Form1::toolButtonClicked(const QString& key)
{
    const QString command = toolCommand(key);
    if (command.isEmpty())
        m_page.services.dialogs.tell(QStringLiteral("Add '%1' button code.").arg(key));
    else
        m_page.commands.run(command);
}

} // namespace kalvo
