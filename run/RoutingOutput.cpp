// SPDX-License-Identifier: GPL-3.0-or-later
#include "run/RoutingOutput.h"

#include "run/SummaryReport.h"

namespace kalvo {

namespace {

constexpr std::string_view kRoutedTo = "ROUTED TO";

bool holds(std::string_view line, std::string_view words)
{
    return line.find(words) != std::string_view::npos;
}

} // namespace

RoutingOutput getrouting(const QString& report)
{
    RoutingOutput output;
    QStringList List1; // from the first heading on: nothing ahead of it is ever listed
    bool inRunoffSummary = false;
    output.canBeRead = forEachReportLine(report, [&](std::string_view line) {
        inRunoffSummary = inRunoffSummary || holds(line, kRunoffSummaryHeading);
        output.isInRunoffSummary = output.isInRunoffSummary || (inRunoffSummary && holds(line, kRoutedTo));
        if (!List1.isEmpty() || holds(line, kPlanSummaryHeading))
            List1.append(QString::fromLatin1(line));
        output.isCut = List1.size() >= kMostSummaryLines;
        return !output.isCut;
    });
    output.List2 = QStringList{QString(), QString()};
    qsizetype taken = 0;
    for (const SummaryBlock& block : summaryBlocks(List1)) {
        output.List2 << block.lines << QString();
        taken += block.lines.size();
    }
    output.isCut = output.isCut || taken > kMostSummaryLines;
    return output;
}

qsizetype runoffSummaryOf(const TextBuffer& report)
{
    const TextNeedle heading(kRunoffSummaryHeading);
    const qsizetype first = report.find(heading);
    const qsizetype routing = first < 0 ? -1 : report.find(TextNeedle(kRoutedTo), first);
    return routing < 0 ? -1 : report.findLast(heading, routing);
}

} // namespace kalvo
