// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/Commands.h"
#include "platform/Screens.h"
#include "platform/Services.h"
#include "platform/StatusPanels.h"
#include "run/ResultTables.h"
#include "run/RunState.h"

namespace kalvo {

/// `CheckNormalEndLite`: looks for the words of the normal end in the last report once more and sets `hecRanOK` by
/// them, without any effect on the screen. Result screens ask it before they read.
void CheckNormalEndLite(const ProgramFolder& folder, RunState& state);

/// `graph`: reads the last run's TAPE21 into the result tables and shows the graph. As a command it exists only where
/// the screen GRAPHER does.
class GraphCommand
{
public:
    GraphCommand(Services& services, Commands& commands, StatusPanels& panels, Screens& screens, ResultTables& tables,
                 RunState& state);

    /// Every message is shown. @return true when the tables hold the whole run.
    bool graph();

private:
    bool readTables();
    void failed(const QString& why);

    Services& m_services;
    Commands& m_commands;
    StatusPanels& m_panels;
    Screens& m_screens;
    ResultTables& m_tables;
    RunState& m_state;
};

} // namespace kalvo
