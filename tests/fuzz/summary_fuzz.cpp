// SPDX-License-Identifier: GPL-3.0-or-later
// The scans of HEC-1's printed report and of the error texts over any bytes.
#include "platform/text.h"
#include "run/HecErrors.h"
#include "run/SummaryReport.h"

#include <cstdint>
#include <cstdlib>

using namespace kalvo;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    const QString text = QString::fromLatin1(bytes);
    const QStringList lines = linesOf(bytes);

    const ReportMarks marks = reportMarksOfText(text);
    if (marks.endsNormally && !marks.holdsNormalEnd)
        std::abort();
    for (const SummaryBlock& block : summaryBlocks(lines))
        if (block.lines.isEmpty() || block.lines.size() > 11)
            std::abort();
    const BasinStages stages = basinStages(summaryBlocks(lines));
    if (stages.items.size() != 6 || stages.parsed.size() > 6)
        std::abort();
    stages.differ();
    storageSummary(lines);
    reportRunTime(lines);
    chkytime(lines, QTime(1, 2, 3));
    const HecErrorTexts texts(bytes);
    for (const QString& line : lines)
        if (const auto number = hecErrorNumber(line))
            texts.text(*number);
    return 0;
}
