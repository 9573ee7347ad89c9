// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/report/Messages.h"

namespace hec1 {

namespace {

void writePlace(TextWriter& out, const Issue& issue)
{
    if (issue.line == 0)
        return;
    out.text("     CARD").integer(issue.cardNumber, 6).text(", LINE").integer(issue.line, 6).text(" OF THE FILE:  ");
    out.line(issue.image);
}

} // namespace

void writeErrors(TextWriter& out, const Diagnostics& diagnostics)
{
    out.line();
    for (const Issue& issue : diagnostics.errors()) {
        out.line().text(" *** HEC1 ERROR").integer(static_cast<long>(issue.number), 3).text(" *** ");
        out.line(errorTitle(issue.number));
        writePlace(out, issue);
        if (!issue.text.empty())
            out.text("     ").line(issue.text);
    }
    out.line();
    const auto count = diagnostics.errors().size() + diagnostics.errorsNotKept();
    if (diagnostics.errorsNotKept() > 0)
        out.text("     AND ").integer(static_cast<long>(diagnostics.errorsNotKept()), 0).line(" MORE ERRORS").line();
    out.text(" JOB STOPPED:").integer(static_cast<long>(count), 6).line(count == 1 ? " ERROR" : " ERRORS").line();
}

void writeWarnings(TextWriter& out, const Diagnostics& diagnostics, std::size_t from)
{
    for (std::size_t i = from; i < diagnostics.warnings().size(); ++i) {
        const Issue& issue = diagnostics.warnings()[i];
        out.line().text(" *** WARNING *** ").line(issue.text);
        writePlace(out, issue);
    }
    if (diagnostics.warningsNotKept() > 0 && from > 0)
        out.line()
            .text(" *** WARNING *** ")
            .integer(static_cast<long>(diagnostics.warningsNotKept()), 0)
            .line(" MORE WARNINGS ARE NOT SHOWN");
    out.line();
}

} // namespace hec1
