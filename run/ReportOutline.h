// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/TextBuffer.h"

#include <QString>

#include <string>
#include <vector>

namespace kalvo {

/// One place of a report to jump to. Kept small, because a report of 100 MB may have a million of them; its words are
/// taken out of the report when they are shown.
struct OutlineEntry
{
    enum class Kind : quint8
    {
        Title,
        InputListing,
        InputPage, ///< a further page of the listing
        Diagram,
        JobData,
        Station,
        StationTable, ///< a table, plot or unit hydrograph of the station above
        RunoffSummary,
        PlanSummary, ///< peaks of plans and ratios
        SummaryRow,  ///< one station of a summary
        DamSummary,
        Warning,
        Error,
        NormalEnd
    };
    quint32 line = 0; ///< from 0
    Kind kind = Kind::Title;

    /// Belongs to the nearest entry above that is no part.
    bool isPart() const { return kind == Kind::InputPage || kind == Kind::StationTable || kind == Kind::SummaryRow; }
    bool operator==(const OutlineEntry&) const = default;
};

/// The words of an entry, such as "SUB1  UPPER BRUSH FORK" for a station.
QString outlineTitle(const TextBuffer& report, const OutlineEntry& entry);

/// Looks for the entries of a report a piece at a time, so that a screen stays live over a report of any length. The
/// report must not change meanwhile.
class ReportOutline
{
public:
    /// The report is not copied and must outlive the search.
    explicit ReportOutline(const TextBuffer& report) : m_report(report) {}

    /// Goes on by so many lines. @return false when the end of the report is reached.
    bool scan(qsizetype lines);
    /// What was found so far, in the order of the report.
    const std::vector<OutlineEntry>& entries() const { return m_entries; }

private:
    void take(std::string_view line);
    void takePage(std::string_view words);
    void takeStarred(std::string_view words);
    void takeHeading(std::string_view words);
    void add(OutlineEntry::Kind kind);

    const TextBuffer& m_report;
    std::vector<OutlineEntry> m_entries;
    qsizetype m_line = 0;
    bool m_hasListing = false;
    bool m_isInSummary = false;
    std::string m_scratch;
};

} // namespace kalvo
