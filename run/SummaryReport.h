// SPDX-License-Identifier: GPL-3.0-or-later
// What the program takes out of HEC-1's printed report (checky.out). A report may be gigabytes: every scan holds one
// line, or the lines from the summary's heading on.
#pragma once

#include <QDateTime>
#include <QList>
#include <QString>
#include <QStringList>

#include <functional>
#include <optional>
#include <string_view>

namespace kalvo {

/// Calls `take` for each line of a report until it gives false. @return false when the file cannot be read.
bool forEachReportLine(const QString& path, const std::function<bool(std::string_view line)>& take);

/// The marks that tell how HEC-1 ended.
struct ReportMarks
{
    bool isThere = false;        ///< the report could be opened
    bool hasText = false;        ///< and holds more than blanks
    bool holdsNormalEnd = false; ///< the words of the normal end stand somewhere, be it in a comment card's listing
    bool endsNormally = false;   ///< a line of its own tells the normal end, as only HEC-1 writes it
    QStringList errorLines;      ///< HEC-1's own error lines, trimmed; no more than `kMostErrorLines`
    qint64 errorCount = 0;
    static constexpr int kMostErrorLines = 200;
};
ReportMarks reportMarks(const QString& path);
ReportMarks reportMarksOfText(QStringView report); ///< of a text, for tests and tools

/// The number of ordinates as the report's job data print it ("NQ  300  NUMBER OF HYDROGRAPH ORDINATES").
struct OrdinateCount
{
    QString text;         ///< empty when "NQ" stands behind the words
    bool isThere = false; ///< false: no such line to the end of the report
    bool canBeRead = false;
};
OrdinateCount findOrdinateCount(const QString& path);

/// Minutes of the time step as the report's job data print it ("NMIN  1440  MINUTES IN COMPUTATION INTERVAL"); none
/// when no such line is there or it tells no number above 0.
std::optional<double> findComputationInterval(const QString& path);

/// Heading of the summary of several plans or ratios, and of the one that HEC-1 prints in its place for a single plan
/// and ratio.
inline constexpr std::string_view kPlanSummaryHeading = "PEAK FLOW AND STAGE (END-OF-PERIOD)";
inline constexpr std::string_view kRunoffSummaryHeading = "           RUNOFF SUMMARY";
/// Headings that repeat list everything behind them again; a damaged report shall not fill the memory by it.
inline constexpr qsizetype kMostSummaryLines = 1'000'000;

/// One routing or pump of the summary: the line that names it and those that belong to it.
struct SummaryBlock
{
    enum class Kind
    {
        RoutedTo,
        PumpFlowTo
    };
    Kind kind = Kind::RoutedTo;
    QStringList lines; ///< 7 or 11 with the naming line; fewer at the end of the report
};

/// The blocks behind each heading "PEAK FLOW AND STAGE (END-OF-PERIOD)", from the heading's line to the end of the
/// report. A second heading lists those behind it once more. They end with the block that reaches `kMostSummaryLines`.
QList<SummaryBlock> summaryBlocks(const QString& path);
QList<SummaryBlock> summaryBlocks(const QStringList& lines);

/// Stages of ratios 1 to 6 of the first routing that has any.
struct BasinStages
{
    QStringList items;  ///< six texts, taken at fixed places of a split at single blanks; empty where there is none
    QStringList parsed; ///< the same read word by word from the line; as many as it holds
    /// The fixed places and the words tell different stages: elevations of 1000 and more shift them.
    bool differ() const;
};
BasinStages basinStages(const QList<SummaryBlock>& blocks);

/// The summary as the storage screens read it.
struct StorageSummary
{
    enum class Kind
    {
        None,
        Standard,
        Type1
    };
    Kind kind = Kind::None;
    QStringList lines; ///< behind the heading, to the line ahead of the normal end
};
StorageSummary storageSummary(const QString& path);
StorageSummary storageSummary(const QStringList& lines);

/// Time of the run out of the seventh line of the report: 12 characters from position 29 of the line that holds "RUN
/// DATE". None when there is no such line.
std::optional<QString> reportRunTime(const QStringList& firstLines);

/// `chkytime`, a stricter check kept beside the normal end and never part of a run: a report that is more than four
/// seconds old is told of and passes, a fresh one fails.
struct ReportAge
{
    bool isOld = false; ///< tell "Hec-1 Output is Somewhat Old - Please Check HEC-1 Input Data"
    bool hecRanOK = false;
};
ReportAge chkytime(const QStringList& firstLines, const QTime& now);

} // namespace kalvo
