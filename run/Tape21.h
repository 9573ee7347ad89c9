// SPDX-License-Identifier: GPL-3.0-or-later
// TAPE21 is the file in which HEC-1 leaves every hydrograph it computed: for each station one header line, whose fields
// count from the line's end, then the flows as free-format items. The readers here take bytes and give the data with
// the problem that ended them, if any; they show nothing and decide nothing.
#pragma once

#include <QString>
#include <QStringList>

#include <functional>
#include <optional>
#include <string_view>
#include <vector>

namespace kalvo {

/// What ended a reader before the end of the file, and where.
struct Tape21Problem
{
    enum class Kind
    {
        CannotBeRead, ///< missing, locked, or the disk failed
        Empty,
        ShortHeader, ///< the fields reach 35 characters from the line's end
        BadCount,    ///< a count that no table can have
        NotANumber,
        TooFewFlows,
        OutsideTable, ///< counts smaller than those of an earlier station leave no column for the record
        TooManyRecords,
        NoStation,
    };
    Kind kind = Kind::CannotBeRead;
    qint64 line = 0; ///< from 1; 0 when it is not a matter of a line
    QString detail;  ///< the item, the system's own words, or empty

    /// One sentence for a message box, without a point at its end.
    QString text() const;
};

/// The counts of a header line as they stand, before any rule of a reader.
struct Tape21Header
{
    double intervalMinutes = 0.0;   ///< NMIN; 0 when it did not fit into its columns
    bool isIntervalTooWide = false; ///< asterisks stand in its columns
    int jds = 0;
    int plansWide = 0;  ///< two digits, for the full readers
    int plansShort = 0; ///< the units digit alone, for the index readers
    int ratios = 0;
    int ordinates = 0; ///< NQ

    static constexpr int kLeastLength = 35;
    static constexpr int kNameLength = 9;
};

/// The fields of a header line, without its line end but with all its blanks. Problem::line is left 0.
std::optional<Tape21Problem> parseTape21Header(std::string_view line, Tape21Header& header);
/// The station's name as it stands in a header line, nine characters with their blanks.
QString tape21StationName(std::string_view line);
/// True for a name of digits and points alone: most likely a line of flows that was taken for a header.
bool looksLikeFlows(const QString& stationName);

struct HydrographRecord
{
    int station = 0;                 ///< index from 0
    int ratio = 1, plan = 1, jd = 1; ///< from 1
    double peak = 0.0;               ///< largest flow, not below 0
    bool isWhole = false;            ///< false for the record in which the reading ended
    std::vector<double> flows;       ///< cfs, or m3/s for a metric deck; the first at the start time
};

struct Tape21Station
{
    QString name;        ///< nine characters, untrimmed
    Tape21Header header; ///< counts of 0 already taken as 1
    int firstRecord = 0;
};

/// A whole TAPE21 in full order: plan outermost, then ratio, JD innermost.
struct Tape21
{
    std::vector<Tape21Station> stations; ///< those whose header could be read
    QStringList stationNames;            ///< one a header, also of a header that could not be read
    std::vector<HydrographRecord> records;
    std::optional<Tape21Problem> problem; ///< what was read ahead of it is here
};

/// Percent of the file read, told when it changes.
using Progress = std::function<void(int percent)>;

/// Reads everything, 8 bytes a flow. Text that ends early, lies in its counts or holds words gives a problem, never
/// more memory than some times the text's own size.
Tape21 readTape21(std::string_view bytes);
Tape21 readTape21File(const QString& path, const Progress& progress = {});

/// The old form of the file, which knows no plans: the ratio field is taken as the number of plans, and a station holds
/// JDs x plans records. Each record's `plan` is its number within the station, from 1; header.plansWide is that field,
/// where 0 stays 0.
Tape21 readOldTape21(std::string_view bytes);
Tape21 readOldTape21File(const QString& path, const Progress& progress = {});

/// What an index reader keeps of a record.
struct IndexedRecord
{
    int station = 0; ///< from 1
    int ratio = 1, plan = 1, jd = 1;
    double peak = 0.0;    ///< largest flow, not below 0
    bool isWhole = false; ///< false for the record in which the reading ended
};

/// A TAPE21 in index order: JD outermost, then plan, ratio innermost. Plans come from the short field, where a blank
/// means none: such a station has no record, and the lines of its flows are taken for headers.
struct Tape21Index
{
    QStringList stationNames; ///< one a header, untrimmed
    std::vector<IndexedRecord> records;
    int jds = 0, plans = 0, ratios = 0; ///< of the last header
    std::optional<Tape21Problem> problem;
};

Tape21Index readTape21Index(std::string_view bytes);
Tape21Index readTape21IndexFile(const QString& path, const Progress& progress = {});

} // namespace kalvo
