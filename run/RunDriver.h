// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/Services.h"
#include "run/EngineLocator.h"
#include "run/RunFolder.h"
#include "run/RunOutcome.h"

#include <QString>
#include <QStringList>

namespace kalvo {

/// In what ways HEC-1 is started.
struct RunRequest
{
    bool catchesConsole = false; ///< what HEC-1 writes to the console goes to kalvodebugoutput.txt
    bool inWindow = false;       ///< in a window that stays open; the run is not waited for
    int timeoutMs = 0;           ///< 0: no limit
    QString detailsFile;         ///< name in the run folder for HEC-1's intermediate values; empty: none
};

/// Starts HEC-1 on the deck that lies in a run folder, waits for the process itself and judges what it left. No screen,
/// no message: the same for the window, the loops and kalvo-run.
RunOutcome runHec1(const RunFolder& folder, const HecEngine& engine, ChildProcess& process,
                   const RunRequest& request = {});

/// The start alone, as it is handed to the process.
ProcessStart hec1Start(const RunFolder& folder, const HecEngine& engine, const RunRequest& request);

} // namespace kalvo
