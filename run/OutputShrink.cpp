// SPDX-License-Identifier: GPL-3.0-or-later
#include "run/OutputShrink.h"

#include <algorithm>

namespace kalvo {

namespace {

constexpr qsizetype kHeadingStart = 2502; ///< the first page's heading stands ahead of it
constexpr int kHeadingLines = 5;
constexpr qsizetype kStep = 119;

QByteArray pageHeading()
{
    return "1" + QByteArray(55, ' ') + "HEC-1 INPUT" + QByteArray(45, ' ') + "P";
}

/// Finds what `TextBuffer::find` finds, for starts that only grow while lines are taken out. Each search would walk
/// again over what the last ones have walked over, and a report of many pages would take minutes; so it is remembered
/// up to where no match begins. Taking out text voids that only where a match could reach across the cut.
class ForwardSearch
{
public:
    ForwardSearch(TextBuffer& text, QByteArrayView needle) : m_text(text), m_needle(needle) {}

    qsizetype find(qsizetype start)
    {
        const qsizetype at = m_text.find(m_needle, std::max(start, m_nothingAhead));
        m_nothingAhead = at < 0 ? m_text.length() : at;
        return at;
    }
    /// @return true when there was such a line; where the cut is then stands in `cut`.
    bool deleteOutputLine(qsizetype line, qsizetype& cut)
    {
        const qsizetype at = m_text.deleteOutputLine(line);
        if (at < 0)
            return false;
        m_nothingAhead = std::clamp<qsizetype>(at - m_needle.size() + 1, 0, m_nothingAhead);
        cut = at;
        return true;
    }

private:
    TextBuffer& m_text;
    TextNeedle m_needle;
    qsizetype m_nothingAhead = 0; ///< no match begins between the last start and here
};

void takeHeadings(TextBuffer& report, ShrinkResult& result)
{
    ForwardSearch search(report, pageHeading());
    qsizetype start = kHeadingStart;
    for (qsizetype at = 0; (at = search.find(start)) >= 0; start += kStep) {
        const qsizetype line = report.lineFromChar(at);
        for (int i = 0; i < kHeadingLines; ++i)
            search.deleteOutputLine(line, result.lastPosition);
        ++result.headings;
    }
}

/// Takes out the line behind the one in which each match begins. @return how many.
qsizetype takeLinesBehind(TextBuffer& report, QByteArrayView ends, qsizetype& lastPosition)
{
    ForwardSearch search(report, ends);
    qsizetype taken = 0;
    qsizetype start = 1;
    for (qsizetype at = 0; (at = search.find(start)) >= 0; start += kStep)
        if (search.deleteOutputLine(report.lineFromChar(at) + 1, lastPosition))
            ++taken;
    return taken;
}

} // namespace

ShrinkResult shrinkOutput(TextBuffer& report)
{
    ShrinkResult result;
    result.linesBefore = report.lineCount();
    takeHeadings(report, result);
    result.emptyLines = takeLinesBehind(report, "\n\r\n\r", result.lastPosition);
    result.blankLines = takeLinesBehind(report, "  \r\n \r\n", result.lastPosition);
    result.linesAfter = report.lineCount();
    return result;
}

QString shrinkSummary(const ShrinkResult& result)
{
    return QStringLiteral("%1 of %2 lines were taken out: %3 page heading(s) with the lines under them, %4 empty "
                          "line(s), %5 line(s) of blanks.\nThe file is as it was.")
        .arg(result.linesTaken())
        .arg(result.linesBefore)
        .arg(result.headings)
        .arg(result.emptyLines)
        .arg(result.blankLines);
}

} // namespace kalvo
