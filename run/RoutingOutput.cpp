// SPDX-License-Identifier: GPL-3.0-or-later
#include "run/RoutingOutput.h"

#include "run/SummaryReport.h"

namespace kalvo {

namespace {

bool holds(std::string_view line, std::string_view words)
{
    return line.find(words) != std::string_view::npos;
}

/// Finds the first RUNOFF SUMMARY with a routing behind it.
struct RunoffSummaryFinder
{
    int heading = -1;
    int found = -1;

    void take(std::string_view line, int number)
    {
        if (found >= 0)
            return;
        if (holds(line, kRunoffSummaryHeading))
            heading = number;
        else if (heading >= 0 && holds(line, "ROUTED TO"))
            found = heading;
    }
};

} // namespace

RoutingOutput getrouting(const QString& report)
{
    RoutingOutput output;
    QStringList List1; // from the first heading on: nothing ahead of it is ever listed
    RunoffSummaryFinder runoff;
    int number = 0;
    output.canBeRead = forEachReportLine(report, [&](std::string_view line) {
        runoff.take(line, number++);
        if (!List1.isEmpty() || holds(line, kPlanSummaryHeading))
            List1.append(QString::fromLatin1(line.data(), static_cast<qsizetype>(line.size())));
        output.isCut = List1.size() >= kMostSummaryLines;
        return !output.isCut;
    });
    output.runoffSummary = runoff.found;
    output.List2 = QStringList{QString(), QString()};
    qsizetype taken = 0;
    for (const SummaryBlock& block : summaryBlocks(List1)) {
        output.List2 << block.lines << QString();
        taken += block.lines.size();
    }
    output.isCut = output.isCut || taken > kMostSummaryLines;
    return output;
}

} // namespace kalvo
