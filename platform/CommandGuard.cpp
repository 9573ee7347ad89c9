// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/CommandGuard.h"

#include <exception>

namespace kalvo {

Q_LOGGING_CATEGORY(logPlatform, "kalvo.platform")
Q_LOGGING_CATEGORY(logDeck, "kalvo.deck")
Q_LOGGING_CATEGORY(logRun, "kalvo.run")
Q_LOGGING_CATEGORY(logResults, "kalvo.results")
Q_LOGGING_CATEGORY(logIterate, "kalvo.iterate")
Q_LOGGING_CATEGORY(logTools, "kalvo.tools")
Q_LOGGING_CATEGORY(logGraphics, "kalvo.graphics")
Q_LOGGING_CATEGORY(logShell, "kalvo.shell")

namespace {

/// True when `work` came to its end; what it throws becomes one line of the log.
bool cameToItsEnd(const QLoggingCategory& log, const char* command, const std::function<void()>& work)
{
    try {
        work();
        return true;
    } catch (const CommandEnded&) {
    } catch (const std::exception& e) {
        qCWarning(log).noquote() << command << "ended early:" << e.what();
    } catch (...) {
        qCWarning(log).noquote() << command << "ended early for a reason that does not tell its name";
    }
    return false;
}

} // namespace

bool guarded(const QLoggingCategory& log, const char* command, const std::function<void()>& body,
             const std::function<void()>& reopen)
{
    if (cameToItsEnd(log, command, body))
        return true;
    if (reopen)
        cameToItsEnd(log, command, reopen);
    return false;
}

} // namespace kalvo
