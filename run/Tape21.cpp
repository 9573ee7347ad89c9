// SPDX-License-Identifier: GPL-3.0-or-later
#include "run/Tape21.h"

#include "platform/text.h"
#include "run/Tape21Cursor.h"

#include <QFile>

#include <stdexcept>

namespace kalvo {

namespace {

using Kind = Tape21Problem::Kind;

/// A record takes a column of a table even when a lying header says that it has no flows.
constexpr size_t kMostRecords = 1'000'000;
constexpr size_t kMostEmptyRecords = 100'000;

int atLeastOne(int count)
{
    return count == 0 ? 1 : count;
}

/// Position from 1, counted from the line's end as the header's description does: L-34 is `back` 34.
std::string_view field(std::string_view line, size_t back, size_t width)
{
    return line.substr(line.size() - back - 1, width);
}

class ProgressOf
{
public:
    ProgressOf(const ByteWindow& window, const Progress& progress) : m_size(window.size()), m_progress(progress) {}
    void at(qint64 position)
    {
        if (!m_progress || m_size <= 0)
            return;
        const int percent = static_cast<int>(position * 100 / m_size);
        if (percent != m_last)
            m_progress(m_last = percent);
    }

private:
    qint64 m_size;
    const Progress& m_progress;
    int m_last = -1;
};

Tape21Problem problemAt(const Tape21Cursor& cursor, Tape21Cursor::Got got)
{
    if (got == Tape21Cursor::Got::EndOfFile)
        return {Kind::TooFewFlows, cursor.line(), {}};
    const std::string_view item = cursor.badItem().substr(0, 40);
    return {Kind::NotANumber, cursor.line(), QString::fromLatin1(item.data(), static_cast<qsizetype>(item.size()))};
}

/// The next header: name first, so that a station is listed also when its counts cannot be read.
std::optional<Tape21Problem> nextHeader(Tape21Cursor& cursor, QStringList& names, Tape21Header& header)
{
    const qint64 at = cursor.line();
    std::string_view line;
    if (!cursor.headerLine(line))
        return Tape21Problem{Kind::BadCount, at, {}};
    names.append(tape21StationName(line));
    auto problem = parseTape21Header(line, header);
    if (problem)
        problem->line = at;
    return problem;
}

/// Reads the flows of one record into it.
std::optional<Tape21Problem> readFlows(Tape21Cursor& cursor, int ordinates, HydrographRecord& record)
{
    // A header that lies must not cost memory: each flow but the last takes two bytes at least.
    const qint64 possible = cursor.remaining() / 2 + 1;
    record.flows.reserve(static_cast<size_t>(std::min<qint64>(ordinates, possible)));
    double peak = 0.0;
    for (int i = 0; i < ordinates; ++i) {
        double flow = 0.0;
        const auto got = cursor.number(flow);
        if (got != Tape21Cursor::Got::Item)
            return problemAt(cursor, got);
        record.flows.push_back(flow);
        if (flow > peak)
            peak = flow;
    }
    record.peak = peak;
    record.isWhole = true;
    return std::nullopt;
}

bool tooMany(size_t records, int ordinates)
{
    return records >= (ordinates == 0 ? kMostEmptyRecords : kMostRecords);
}

/// Reads the records of one station in the order in which `place` numbers them.
template <class Place>
std::optional<Tape21Problem> readRecords(Tape21Cursor& cursor, ProgressOf& progress, Tape21& tape, int ordinates,
                                         int count, const Place& place)
{
    const int station = static_cast<int>(tape.stations.size()) - 1;
    for (int k = 0; k < count; ++k) {
        if (tooMany(tape.records.size(), ordinates))
            return Tape21Problem{Kind::TooManyRecords, cursor.line(), {}};
        HydrographRecord& record = tape.records.emplace_back();
        record.station = station;
        place(k, record);
        if (auto problem = readFlows(cursor, ordinates, record))
            return problem;
        progress.at(cursor.position());
    }
    if (count > 0 && ordinates > 0)
        cursor.passLineEnd();
    return std::nullopt;
}

std::optional<Tape21Problem> readFull(Tape21Cursor& cursor, ProgressOf& progress, Tape21& tape)
{
    while (!cursor.atEnd()) {
        const qint64 at = cursor.line();
        Tape21Header header;
        if (auto problem = nextHeader(cursor, tape.stationNames, header))
            return problem;
        header.jds = atLeastOne(header.jds);
        header.plansWide = atLeastOne(header.plansWide);
        header.ratios = atLeastOne(header.ratios);
        const int jds = header.jds;
        const int ratios = header.ratios;
        if (jds < 0 || header.plansWide < 0 || ratios < 0 || header.ordinates < 0)
            return Tape21Problem{Kind::BadCount, at, {}};
        tape.stations.push_back({tape.stationNames.last(), header, static_cast<int>(tape.records.size())});
        const auto place = [jds, ratios](int k, HydrographRecord& record) {
            record.jd = k % jds + 1;
            record.ratio = k / jds % ratios + 1;
            record.plan = k / jds / ratios + 1;
        };
        if (auto problem =
                readRecords(cursor, progress, tape, header.ordinates, header.plansWide * ratios * jds, place))
            return problem;
    }
    return std::nullopt;
}

std::optional<Tape21Problem> readOld(Tape21Cursor& cursor, ProgressOf& progress, Tape21& tape)
{
    while (!cursor.atEnd()) {
        const qint64 at = cursor.line();
        Tape21Header header;
        if (auto problem = nextHeader(cursor, tape.stationNames, header))
            return problem;
        header.jds = atLeastOne(header.jds);
        header.plansWide = header.ratios;
        if (header.jds < 0 || header.plansWide < 0 || header.ordinates < 0)
            return Tape21Problem{Kind::BadCount, at, {}};
        tape.stations.push_back({tape.stationNames.last(), header, static_cast<int>(tape.records.size())});
        const auto place = [](int k, HydrographRecord& record) { record.plan = k + 1; };
        if (auto problem = readRecords(cursor, progress, tape, header.ordinates, header.jds * header.plansWide, place))
            return problem;
    }
    return std::nullopt;
}

/// The largest of `ordinates` flows; nothing else of them is kept.
std::optional<Tape21Problem> readPeak(Tape21Cursor& cursor, int ordinates, double& largest)
{
    double peak = 0.0;
    for (int i = 0; i < ordinates; ++i) {
        double flow = 0.0;
        const auto got = cursor.number(flow);
        if (got != Tape21Cursor::Got::Item)
            return problemAt(cursor, got);
        if (flow > peak)
            peak = flow;
    }
    largest = peak;
    return std::nullopt;
}

std::optional<Tape21Problem> readIndex(Tape21Cursor& cursor, ProgressOf& progress, Tape21Index& index)
{
    while (!cursor.atEnd()) {
        Tape21Header header;
        if (auto problem = nextHeader(cursor, index.stationNames, header))
            return problem;
        index.jds = atLeastOne(header.jds);
        index.ratios = atLeastOne(header.ratios);
        index.plans = header.plansShort;
        const int station = static_cast<int>(index.stationNames.size());
        bool anyFlow = false;
        for (int jd = 1; jd <= index.jds; ++jd)
            for (int plan = 1; plan <= index.plans; ++plan)
                for (int ratio = 1; ratio <= index.ratios; ++ratio) {
                    if (tooMany(index.records.size(), std::max(header.ordinates, 0)))
                        return Tape21Problem{Kind::TooManyRecords, cursor.line(), {}};
                    IndexedRecord& record = index.records.emplace_back(IndexedRecord{station, ratio, plan, jd});
                    if (auto problem = readPeak(cursor, header.ordinates, record.peak))
                        return problem;
                    record.isWhole = true;
                    anyFlow = anyFlow || header.ordinates > 0;
                    progress.at(cursor.position());
                }
        if (anyFlow)
            cursor.passLineEnd();
    }
    return std::nullopt;
}

template <class Result>
using Reader = std::optional<Tape21Problem> (*)(Tape21Cursor& cursor, ProgressOf& progress, Result& result);

template <class Result> Result readThrough(ByteWindow& window, const Progress& progress, Reader<Result> reader)
{
    Result result;
    ProgressOf told(window, progress);
    Tape21Cursor cursor(window);
    result.problem = reader(cursor, told, result);
    if (window.hasFailed())
        result.problem = Tape21Problem{Kind::CannotBeRead, cursor.line(), QStringLiteral("the disk gave no more")};
    else if (!result.problem && result.stationNames.isEmpty())
        result.problem = Tape21Problem{Kind::NoStation, 0, {}};
    return result;
}

template <class Result> Result readBytes(std::string_view bytes, Reader<Result> reader)
{
    Result result;
    if (bytes.empty()) {
        result.problem = Tape21Problem{Kind::Empty, 0, {}};
        return result;
    }
    ByteWindow window(bytes);
    return readThrough(window, {}, reader);
}

template <class Result> Result readFileBy(const QString& path, const Progress& progress, Reader<Result> reader)
{
    Result result;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Unbuffered)) {
        result.problem = Tape21Problem{Kind::CannotBeRead, 0, file.errorString()};
        return result;
    }
    if (file.size() == 0) {
        result.problem = Tape21Problem{Kind::Empty, 0, {}};
        return result;
    }
    ByteWindow window(file);
    return readThrough(window, progress, reader);
}

} // namespace

QString Tape21Problem::text() const
{
    const QString where = line > 0 ? QStringLiteral("Line %1 of TAPE21: ").arg(line) : QString();
    switch (kind) {
    case Kind::CannotBeRead:
        return where + QStringLiteral("TAPE21 cannot be read: ") + detail;
    case Kind::Empty:
        return QStringLiteral("TAPE21 is empty");
    case Kind::ShortHeader:
        return where + QStringLiteral("a station header has 35 characters at least");
    case Kind::BadCount:
        return where + QStringLiteral("the counts of this station header cannot be right");
    case Kind::NotANumber:
        return where + QStringLiteral("\"%1\" is not a number").arg(detail);
    case Kind::TooFewFlows:
        return where + QStringLiteral("the file ends before the last flow");
    case Kind::OutsideTable:
        return where + QStringLiteral("a station has fewer plans, ratios or JD simulations than one ahead of it");
    case Kind::TooManyRecords:
        return where + QStringLiteral("there are more hydrographs than can be kept");
    case Kind::NoStation:
        break;
    }
    return QStringLiteral("TAPE21 holds no station");
}

std::optional<Tape21Problem> parseTape21Header(std::string_view line, Tape21Header& header)
{
    if (line.size() < Tape21Header::kLeastLength)
        return Tape21Problem{Kind::ShortHeader, 0, {}};
    try {
        header.intervalMinutes = leadingNumber(field(line, 34, 3));
        header.isIntervalTooWide = field(line, 34, 3) == "***";
        header.jds = leadingInt16(field(line, 18, 1));
        header.plansWide = leadingInt16(field(line, 17, 2));
        header.plansShort = leadingInt16(field(line, 16, 1));
        header.ratios = leadingInt16(field(line, 15, 2));
        header.ordinates = leadingInt32(field(line, 13, 4));
    } catch (const std::out_of_range&) {
        return Tape21Problem{Kind::BadCount, 0, {}};
    }
    return std::nullopt;
}

QString tape21StationName(std::string_view line)
{
    line = line.substr(0, Tape21Header::kNameLength);
    return QString::fromLatin1(line.data(), static_cast<qsizetype>(line.size()));
}

bool looksLikeFlows(const QString& stationName)
{
    const QString name = stationName.trimmed();
    const auto belongsToNumbers = [](QChar c) {
        return (c >= u'0' && c <= u'9') || c == u'.' || c == u' ' || c == u'-';
    };
    return name.contains(u'.') && std::all_of(name.begin(), name.end(), belongsToNumbers);
}

Tape21 readTape21(std::string_view bytes)
{
    return readBytes<Tape21>(bytes, readFull);
}

Tape21 readTape21File(const QString& path, const Progress& progress)
{
    return readFileBy<Tape21>(path, progress, readFull);
}

Tape21 readOldTape21(std::string_view bytes)
{
    return readBytes<Tape21>(bytes, readOld);
}

Tape21 readOldTape21File(const QString& path, const Progress& progress)
{
    return readFileBy<Tape21>(path, progress, readOld);
}

Tape21Index readTape21Index(std::string_view bytes)
{
    return readBytes<Tape21Index>(bytes, readIndex);
}

Tape21Index readTape21IndexFile(const QString& path, const Progress& progress)
{
    return readFileBy<Tape21Index>(path, progress, readIndex);
}

} // namespace kalvo
