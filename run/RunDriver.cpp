// SPDX-License-Identifier: GPL-3.0-or-later
#include "run/RunDriver.h"

#include <QElapsedTimer>
#include <QFileInfo>

namespace kalvo {

ProcessStart hec1Start(const RunFolder& folder, const HecEngine& engine, const RunRequest& request)
{
    const auto nameOf = [&folder](const char* name) { return QFileInfo(folder.file(name)).fileName(); };
    ProcessStart start;
    start.program = engine.program;
    start.arguments = engine.ahead;
    if (request.inWindow && !start.arguments.isEmpty() && start.arguments.first() == QLatin1String("/c"))
        start.arguments.first() = QStringLiteral("/k"); // the interpreter's window stays open for the user
    // Names without a folder, because HEC-1 takes no blanks in them; its current folder is the run folder.
    start.arguments << QStringLiteral("INPUT=") + nameOf(RunFolder::kDeck)
                    << QStringLiteral("OUTPUT=") + QString::fromLatin1(RunFolder::kReport)
                    << QStringLiteral("DSS=") + QString::fromLatin1(RunFolder::kDss);
    if (!request.detailsFile.isEmpty())
        start.arguments << QStringLiteral("DETAILS=") + request.detailsFile;
    start.workingFolder = folder.path();
    if (request.catchesConsole)
        start.outputFile = nameOf(RunFolder::kConsole);
    start.inWindow = request.inWindow;
    start.timeoutMs = request.timeoutMs;
    return start;
}

RunOutcome runHec1(const RunFolder& folder, const HecEngine& engine, ChildProcess& process, const RunRequest& request)
{
    if (!engine.isFound())
        return judgeRun({ProcessEnd::Kind::NotStarted, -1, engine.whyNot}, {});
    QElapsedTimer timer;
    timer.start();
    const ProcessEnd end = process.run(hec1Start(folder, engine, request));
    const bool ranToItsLimit = request.timeoutMs > 0 && timer.elapsed() >= request.timeoutMs;
    const bool mayBeJudged = end.kind == ProcessEnd::Kind::Exited || end.kind == ProcessEnd::Kind::Crashed;
    RunOutcome outcome = judgeRun(end, mayBeJudged ? reportMarks(folder.report()) : ReportMarks{});
    outcome.timedOut = outcome.verdict == RunOutcome::Verdict::Stopped && ranToItsLimit;
    return outcome;
}

} // namespace kalvo
