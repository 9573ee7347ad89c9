// SPDX-License-Identifier: GPL-3.0-or-later
#include "run/RoutingCommands.h"

#include "run/DetailedRoutings.h"
#include "run/ReportText.h"

namespace kalvo {

RoutingCommands::RoutingCommands(Services& services, Commands& commands, Screens& screens, const RunEvents& events)
    : m_services(services), m_screens(screens)
{
    commands.add(
        QStringLiteral("mnu_routing"), [this] { mnu_routing(); }, logRun);
    commands.add(
        QStringLiteral("mnu_detailed_ReservoirRoutings"), [this] { mnu_detailed_ReservoirRoutings(); }, logRun);
    connect(&events, &RunEvents::finished, this, &RoutingCommands::readAgain);
}

RoutingCommands::~RoutingCommands() = default;

void RoutingCommands::mnu_routing()
{
    m_screens.show(QStringLiteral("frmRouting"));
}

void RoutingCommands::mnu_detailed_ReservoirRoutings()
{
    if (mayShowDetailedRoutings(m_services))
        m_screens.show(QStringLiteral("DetRes"));
}

void RoutingCommands::readAgain()
{
    for (const char* name : {"frmRouting", "DetRes", "detres2"})
        m_screens.repaint(QString::fromLatin1(name));
}

void saveRoutings(Services& services, QByteArrayView text)
{
    if (text.isEmpty()) {
        services.dialogs.tell(QStringLiteral("No Data to Save!"));
        return;
    }
    FileDialog dialog;
    dialog.title = QStringLiteral(" Kalvo Save Reservoir Routings");
    dialog.filter = QStringLiteral("(*.txt)|*.txt| Text Files (*.txr)|*.txr");
    dialog.defaultExtension = QStringLiteral("txt");
    dialog.overwritePrompt = true;
    saveViewerText(services, text, dialog);
}

} // namespace kalvo
