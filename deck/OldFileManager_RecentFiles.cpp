// SPDX-License-Identifier: GPL-3.0-or-later
#include "deck/OldFileManager_RecentFiles.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

namespace kalvo {

namespace {

constexpr int kIndexRole = Qt::UserRole; ///< the entry's index in the recent-files list

QPushButton* button(const char* name, const QString& caption, QWidget* parent)
{
    auto* made = new QPushButton(caption, parent);
    made->setObjectName(QString::fromLatin1(name));
    made->setAutoDefault(false);
    return made;
}

} // namespace

OldFileManager::OldFileManager(RecentFiles& recent, Services& services, QWidget* parent)
    : QDialog(parent), m_recent(recent), m_services(services)
{
    setObjectName(QStringLiteral("OldFileManager"));
    setWindowTitle(QStringLiteral("Recent File List Manager"));
    buildControls();
    resize(680, 420);
    repaintScreen();
}

void OldFileManager::registerIn(Screens& screens, RecentFiles& recent, Services& services)
{
    screens.add(QStringLiteral("OldFileManager"),
                [&recent, &services] { return std::make_unique<OldFileManager>(recent, services); });
}

void OldFileManager::buildControls()
{
    auto* label =
        new QLabel(QStringLiteral("Select Files to Remove from Recent Files List - they will not be deleted"), this);
    label->setObjectName(QStringLiteral("Label1"));
    label->setWordWrap(true);

    List1 = new QListWidget(this);
    List1->setObjectName(QStringLiteral("List1"));
    List1->setAlternatingRowColors(true);
    List1->setSpacing(2);
    List1->setTextElideMode(Qt::ElideMiddle);
    List1->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    label->setBuddy(List1);

    Command1 = button("Command1", QStringLiteral("&Check All"), this);
    Command2 = button("Command2", QStringLiteral("Uncheck &All"), this);
    Command3 = button("Command3", QStringLiteral("Remove &Selected Files"), this);
    Command4 = button("Command4", QStringLiteral("C&lose"), this);
    connect(Command1, &QPushButton::clicked, this, [this] { setAllChecks(Qt::Checked); });
    connect(Command2, &QPushButton::clicked, this, [this] { setAllChecks(Qt::Unchecked); });
    connect(Command3, &QPushButton::clicked, this, &OldFileManager::removeSelected);
    connect(Command4, &QPushButton::clicked, this, &QDialog::close);

    auto* buttons = new QHBoxLayout;
    buttons->addWidget(Command1);
    buttons->addWidget(Command2);
    buttons->addStretch(1);
    buttons->addWidget(Command3);
    buttons->addWidget(Command4);

    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(16, 16, 16, 16);
    column->setSpacing(12);
    column->addWidget(label);
    column->addWidget(List1, 1);
    column->addLayout(buttons);
}

void OldFileManager::repaintScreen()
{
    List1->clear();
    for (const int index : m_recent.indexes()) {
        auto* item = new QListWidgetItem(m_recent.caption(index), List1);
        item->setData(kIndexRole, index);
        item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsUserCheckable);
        item->setCheckState(Qt::Unchecked);
        item->setToolTip(m_recent.caption(index));
    }
    for (QPushButton* each : {Command1, Command2, Command3})
        each->setEnabled(List1->count() > 0);
}

void OldFileManager::showScreen()
{
    if (!isVisible())
        repaintScreen();
    show();
    raise();
    activateWindow();
}

void OldFileManager::setAllChecks(Qt::CheckState state)
{
    for (int i = 0; i < List1->count(); ++i)
        List1->item(i)->setCheckState(state);
}

void OldFileManager::removeSelected()
{
    QList<int> ticked;
    for (int i = 0; i < List1->count(); ++i)
        if (List1->item(i)->checkState() == Qt::Checked)
            ticked.append(List1->item(i)->data(kIndexRole).toInt());
    QString why;
    const bool written = m_recent.remove(ticked, &why);
    List1->clear();
    auto* news = new QListWidgetItem(QStringLiteral("***** Successfully Removed the Selected Files *****"), List1);
    news->setFlags(Qt::ItemIsEnabled);
    for (QPushButton* each : {Command1, Command2, Command3})
        each->setEnabled(false);
    Command4->setFocus();
    if (!written)
        m_services.dialogs.warn(QStringLiteral("The list of recent files could not be written.\r\n%1").arg(why));
}

} // namespace kalvo
