// SPDX-License-Identifier: GPL-3.0-or-later
#include "results/HydrodataDesk.h"

#include "platform/CommandGuard.h"
#include "results/CenterOfMass.h"
#include "results/HydFile.h"

namespace kalvo {

namespace {

void forget(FlexGrid& grid)
{
    const FlexGrid::Bulk bulk(grid);
    grid.clear();
    grid.setRows(2);
    grid.setCols(2);
}

} // namespace

HydrodataDesk::HydrodataDesk(std::shared_ptr<ResultDesk> desk) : m_desk(std::move(desk))
{
    connect(&m_desk->screens(), &Screens::screenUnloaded, this, &HydrodataDesk::follow);
}

void HydrodataDesk::follow(const QString& unloaded)
{
    if (unloaded == QLatin1String("Form11"))
        forget(Form11Grid);
    else if (unloaded == QLatin1String("Form20"))
        forget(Form20Grid);
    if (unloaded != QLatin1String("hydrodata"))
        return;
    for (const char* name : {"FrmRunoffVolumes", "Form10", "Form11", "Form15"})
        m_desk->screens().unload(QString::fromLatin1(name));
    m_desk->dropQuickGraphs();
}

bool HydrodataDesk::center_of_mass()
{
    Screens& screens = m_desk->screens();
    screens.load(QStringLiteral("Form11"));
    if (const auto problem = fillCenters(table(), Form11Grid)) {
        qCWarning(logResults).noquote() << "center_of_mass:" << problem->text();
        return false;
    }
    screens.load(QStringLiteral("Form20"));
    listCenters(Form11Grid, Form20Grid, m_desk->services().measure);
    screens.show(QStringLiteral("Form20"));
    return true;
}

void HydrodataDesk::mnu_saveselect()
{
    Dialogs& dialogs = m_desk->services().dialogs;
    if (const auto problem = whyNotSavable(table())) {
        dialogs.message(*problem);
        return;
    }
    FileDialog dialog;
    dialog.title = QStringLiteral("Save Selected Hydrodata");
    dialog.defaultExtension = QStringLiteral(".txt");
    dialog.filter = QStringLiteral("Data Files(*.hyd)|*.hyd|Text Files (*.txt)|*.txt");
    dialog.filterIndex = 2;
    dialog.overwritePrompt = true;
    dialog.initialName = m_desk->offeredName();
    if (const auto path = dialogs.saveFile(dialog); path && !path->isEmpty())
        tellNotSaved(writeHydFile(table(), *path));
}

void HydrodataDesk::mnu_save()
{
    FileDialog dialog;
    dialog.title = QStringLiteral("Save Center of Mass Data");
    dialog.defaultExtension = QStringLiteral(".wcm");
    dialog.filter = QStringLiteral("All Files (*.*)|*.*|Center of Mass Files(*.wcm)|*.wcm|Text Files (*.txt)|*.txt");
    dialog.overwritePrompt = true;
    dialog.initialName = m_desk->offeredName();
    const auto path = m_desk->services().dialogs.saveFile(dialog);
    if (!path || path->isEmpty())
        return;
    QString why;
    if (!writeUserFile(*path, wcmFile(Form20Grid, m_desk->offeredName()), &why))
        tellNotSaved(QStringLiteral("'%1' cannot be written: %2").arg(*path, why));
}

void HydrodataDesk::tellNotSaved(const QString& why)
{
    if (!why.isEmpty())
        m_desk->services().dialogs.warn(why);
}

void HydrodataDesk::Endhydrodata()
{
    hide(QStringLiteral("hydrodata"));
    m_desk->tellReturned();
    m_desk->dropQuickGraphs();
}

void HydrodataDesk::leaveCenters(const QString& screen)
{
    hide(screen);
    if (const QString table = QStringLiteral("hydrodata"); m_desk->screens().isVisible(table))
        m_desk->screens().show(table);
    else
        m_desk->tellReturned();
}

void HydrodataDesk::hide(const QString& screen)
{
    if (m_desk->screens().isVisible(screen))
        m_desk->screens().load(screen)->hideScreen();
}

} // namespace kalvo
