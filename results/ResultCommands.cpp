// SPDX-License-Identifier: GPL-3.0-or-later
#include "results/ResultCommands.h"

#include "platform/CommandGuard.h"

namespace kalvo {

namespace {

const QString kVolumes = QStringLiteral("FrmRunoffVolumes");

} // namespace

ResultCommands::ResultCommands(std::shared_ptr<ResultDesk> desk, Commands& commands, std::function<bool()> graph)
    : m_desk(std::move(desk)), m_commands(commands), m_graph(std::move(graph))
{
    addScreen("mnu_peakflows", "Form9");
    addScreen("mnu_tabular", "Form10");
    if (m_desk->screens().isKnown(kVolumes))
        m_commands.add(
            QStringLiteral("mnu_runoffvolumes"), [this] { mnu_runoffvolumes(); }, logResults);
    connect(m_desk.get(), &ResultDesk::closed, this, &ResultCommands::takeClosed);
    // A screen that goes with another one is closed as well: its table is gone.
    connect(&m_desk->screens(), &Screens::screenUnloaded, this, &ResultCommands::takeClosed);
    connect(m_desk.get(), &ResultDesk::runsAllowed, this,
            [this](bool allowed) { m_commands.setEnabled(QStringLiteral("runhec"), allowed); });
}

void ResultCommands::addScreen(const char* command, const char* screen)
{
    const QString name = QString::fromLatin1(screen);
    if (m_desk->screens().isKnown(name))
        m_commands.add(
            QString::fromLatin1(command), [this, name] { m_desk->screens().show(name); }, logResults);
}

void ResultCommands::mnu_runoffvolumes()
{
    if (m_desk->holdsHydrographs() || m_graph())
        m_desk->screens().show(kVolumes);
}

void ResultCommands::takeClosed(const QString& screen)
{
    if (screen == QLatin1String("Form10"))
        m_commands.setEnabled(QStringLiteral("mnu_tabular"), false);
    else if (screen == QLatin1String("Form9"))
        m_commands.setEnabled(QStringLiteral("mnu_peakflows"), false);
}

} // namespace kalvo
