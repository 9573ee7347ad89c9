// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/Commands.h"
#include "results/ResultDesk.h"

#include <QObject>
#include <QString>

#include <functional>
#include <memory>

namespace kalvo {

/// The commands of one main screen that open result screens: `mnu_peakflows`, `mnu_tabular`, `mnu_runoffvolumes`.
class ResultCommands : public QObject
{
    Q_OBJECT

public:
    /// @param graph reads the last run into the tables; true when they hold all of it.
    ResultCommands(std::shared_ptr<ResultDesk> desk, Commands& commands, std::function<bool()> graph);

private:
    void addScreen(const char* command, const char* screen);
    /// Reads the hydrographs again when their closed screen has taken them along: the volumes of an empty table would
    /// look like a run without water.
    void mnu_runoffvolumes();
    void takeClosed(const QString& screen);

    const std::shared_ptr<ResultDesk> m_desk;
    Commands& m_commands;
    const std::function<bool()> m_graph;
};

} // namespace kalvo
