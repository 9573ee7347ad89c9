// SPDX-License-Identifier: GPL-3.0-or-later
#include "run/RunOutcome.h"

namespace kalvo {

RunOutcome judgeRun(const ProcessEnd& end, const ReportMarks& report)
{
    using Verdict = RunOutcome::Verdict;
    RunOutcome outcome;
    outcome.exitCode = end.exitCode;
    outcome.holdsNormalEnd = report.holdsNormalEnd;
    outcome.errorLines = report.errorLines;
    outcome.message = end.message;
    switch (end.kind) {
    case ProcessEnd::Kind::NotStarted:
        outcome.verdict = Verdict::NotStarted;
        return outcome;
    case ProcessEnd::Kind::Stopped:
        outcome.verdict = Verdict::Stopped;
        return outcome;
    // Whatever the report says: what a crash had not yet written to TAPE21 is lost.
    case ProcessEnd::Kind::Crashed:
        outcome.verdict = Verdict::Crashed;
        return outcome;
    case ProcessEnd::Kind::Exited:
        break;
    }
    if (!report.isThere || !report.hasText) {
        outcome.verdict = Verdict::WroteNothing;
    } else if (report.errorCount > 0) {
        outcome.verdict = Verdict::EndedWithErrors;
        if (report.holdsNormalEnd)
            outcome.message = QStringLiteral("The report holds the words of a normal end, and error lines.");
    } else if (report.endsNormally) {
        outcome.verdict = Verdict::NormalEnd;
    } else {
        outcome.verdict = Verdict::EndedWithErrors;
        outcome.message = report.holdsNormalEnd
                              ? QStringLiteral("The words of a normal end stand only in the listing of a card.")
                              : QStringLiteral("The report ends without the line of a normal end.");
    }
    return outcome;
}

QString RunOutcome::text() const
{
    const auto with = [this](const QString& words) {
        return message.isEmpty() ? words : words + QStringLiteral(" ") + message;
    };
    switch (verdict) {
    case Verdict::NormalEnd:
        return QStringLiteral("HEC-1 ended normally.");
    case Verdict::EndedWithErrors:
        return with(QStringLiteral("HEC-1 did not end normally."));
    case Verdict::WroteNothing:
        return QStringLiteral("HEC-1 wrote no report (exit status %1).").arg(exitCode);
    case Verdict::Crashed:
        return with(QStringLiteral("HEC-1 crashed."));
    case Verdict::Stopped:
        return timedOut ? QStringLiteral("HEC-1 was stopped: it ran longer than the time limit.")
                        : QStringLiteral("HEC-1 was stopped before its end.");
    case Verdict::NotStarted:
        break;
    }
    return with(QStringLiteral("HEC-1 was not started."));
}

} // namespace kalvo
