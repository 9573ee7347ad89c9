// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QLoggingCategory>
#include <QString>

#include <functional>

namespace kalvo {

// The log categories of the rooms ("kalvo.deck" ...). Set QT_LOGGING_RULES to hear more or less of one.
Q_DECLARE_LOGGING_CATEGORY(logPlatform)
Q_DECLARE_LOGGING_CATEGORY(logDeck)
Q_DECLARE_LOGGING_CATEGORY(logRun)
Q_DECLARE_LOGGING_CATEGORY(logResults)
Q_DECLARE_LOGGING_CATEGORY(logIterate)
Q_DECLARE_LOGGING_CATEGORY(logTools)
Q_DECLARE_LOGGING_CATEGORY(logGraphics)
Q_DECLARE_LOGGING_CATEGORY(logShell)

/// Runs a command so that nothing it throws takes the program down: what was done stays done, `reopen` puts back what
/// the command had closed (grid shown, editor lock released, pointer back, progress bar hidden), and one line goes to
/// the log category of the command's room. `reopen` runs only after a failure, CommandEnded included; what it throws is
/// logged and goes no further.
/// @return true when the command came to its end.
bool guarded(const QLoggingCategory& log, const char* command, const std::function<void()>& body,
             const std::function<void()>& reopen = {});

/// Thrown by a command to end itself without a word, as a cancelled dialog does.
struct CommandEnded
{
};

} // namespace kalvo
