// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/Services.h"
#include "run/SummaryReport.h"

#include <QString>
#include <QStringList>

namespace kalvo {

/// How a run of HEC-1 ended: one value, judged from what was written and not from an exit code. The window, the status
/// of kalvo-run and the tests all use this one.
struct RunOutcome
{
    enum class Verdict
    {
        NormalEnd,
        EndedWithErrors, ///< it told errors, or stopped before its normal end
        WroteNothing,
        Crashed,
        Stopped, ///< by the user or by the time limit
        NotStarted,
    };
    Verdict verdict = Verdict::NotStarted;
    int exitCode = 0;      ///< for the log alone
    bool timedOut = false; ///< a Stopped by the time limit
    /// The words of the normal end stand somewhere in the report. A comment card may hold them, so that this can be
    /// true of a failed run.
    bool holdsNormalEnd = false;
    QStringList errorLines; ///< HEC-1's error lines, trimmed
    QString message;        ///< why it was not started; why a verdict is not what the report's words say

    bool isNormalEnd() const { return verdict == Verdict::NormalEnd; }
    /// One sentence for a person.
    QString text() const;
};

/// Judges a run from how the process ended and what it left. Pure, so that every bad end can be laid before it.
RunOutcome judgeRun(const ProcessEnd& end, const ReportMarks& report);

} // namespace kalvo
