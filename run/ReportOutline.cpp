// SPDX-License-Identifier: GPL-3.0-or-later
#include "run/ReportOutline.h"

#include <algorithm>

namespace kalvo {

namespace {

using Kind = OutlineEntry::Kind;

/// Headings stand within the width of a page; what is longer is no heading.
constexpr qsizetype kWidestHeading = 240;

constexpr bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}

std::string_view trimmed(std::string_view text)
{
    const size_t first = text.find_first_not_of(' ');
    if (first == std::string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(' ') + 1 - first);
}

bool holds(std::string_view text, std::string_view words)
{
    return text.find(words) != std::string_view::npos;
}

/// Words that open an entry of a summary; the station stands in the line below.
bool isOperation(std::string_view words)
{
    return words == "HYDROGRAPH AT" || words == "ROUTED TO" || words == "DIVERSION TO" || words == "PUMP FLOW TO" ||
           words.ends_with(" COMBINED AT");
}

/// What stands behind the line number, "KK" and the star of a station's box; empty when this is no such line. The cards
/// in the input listing have no star.
std::string_view stationBox(std::string_view words)
{
    size_t at = 0;
    while (at < words.size() && isDigit(words[at]))
        ++at;
    if (!words.substr(at).starts_with(" KK "))
        return {};
    const std::string_view rest = trimmed(words.substr(at + 4));
    return rest.starts_with('*') ? rest.substr(1) : std::string_view();
}

QString stationTitle(std::string_view words)
{
    const std::string_view box = stationBox(words);
    const size_t star = box.find('*');
    const QString name = QString::fromLatin1(trimmed(box.substr(0, star)));
    const QString text =
        star == std::string_view::npos ? QString() : QString::fromLatin1(trimmed(box.substr(star + 1)));
    return text.isEmpty() ? name : name + QStringLiteral("  ") + text;
}

/// "ROUTED TO LAKE": the station is the first word of the "+" line that follows.
QString rowTitle(const TextBuffer& report, const OutlineEntry& entry, std::string_view words)
{
    const QByteArray below = report.line(static_cast<qsizetype>(entry.line) + 1);
    const QString title = QString::fromLatin1(words);
    if (!below.startsWith('+'))
        return title;
    const std::string_view row =
        trimmed(std::string_view(below.constData(), static_cast<size_t>(below.size())).substr(1));
    return title + u' ' + QString::fromLatin1(row.substr(0, row.find(' ')));
}

} // namespace

QString outlineTitle(const TextBuffer& report, const OutlineEntry& entry)
{
    const QByteArray line =
        report.mid(report.lineStart(entry.line), std::min<qsizetype>(report.lineLength(entry.line), kWidestHeading));
    const std::string_view words = trimmed({line.constData(), static_cast<size_t>(line.size())});
    switch (entry.kind) {
    case Kind::Title:
        return QStringLiteral("Title page");
    case Kind::InputListing:
        return QStringLiteral("Input listing");
    case Kind::InputPage:
        return QStringLiteral("Page") +
               QString::fromLatin1(words.substr(std::min(words.size(), words.rfind("PAGE") + 4)));
    case Kind::Diagram:
        return QStringLiteral("Diagram of the stream network");
    case Kind::JobData:
        return QStringLiteral("Job data");
    case Kind::Station:
        return stationTitle(words);
    case Kind::StationTable:
        return QString::fromLatin1(words.starts_with("1 ") ? trimmed(words.substr(1)) : words);
    case Kind::RunoffSummary:
        return QStringLiteral("Runoff summary");
    case Kind::PlanSummary:
        return QStringLiteral("Peaks of plans and ratios");
    case Kind::SummaryRow:
        return rowTitle(report, entry, words);
    case Kind::DamSummary:
        return QStringLiteral("Dam ") +
               QString::fromLatin1(trimmed(words.substr(std::min(words.size(), words.rfind("STATION") + 7))));
    case Kind::Warning:
    case Kind::Error:
    case Kind::NormalEnd:
        break;
    }
    return QString::fromLatin1(words).remove(u'*').simplified();
}

bool ReportOutline::scan(qsizetype lines)
{
    const qsizetype end = std::min(m_report.lineCount(), m_line + lines);
    for (; m_line < end; ++m_line) {
        const auto length = static_cast<size_t>(std::min(m_report.lineLength(m_line), kWidestHeading));
        std::string_view line = m_report.piece(m_report.lineStart(m_line)).substr(0, length);
        if (line.size() < length) { // two pieces
            m_scratch = m_report.mid(m_report.lineStart(m_line), static_cast<qsizetype>(length)).toStdString();
            line = m_scratch;
        }
        take(line);
    }
    return m_line < m_report.lineCount();
}

void ReportOutline::add(Kind kind)
{
    m_entries.push_back({static_cast<quint32>(m_line), kind});
}

/// The first character tells for nearly all lines that they are no heading: most are rows of numbers.
void ReportOutline::take(std::string_view line)
{
    if (line.empty())
        return;
    if (line[0] == '1') {
        takePage(trimmed(line));
        return;
    }
    const size_t first = line.find_first_not_of(' ');
    if (first == std::string_view::npos || line[0] == '+')
        return;
    const char c = line[first];
    if (c == '*')
        takeStarred(trimmed(line));
    else if (c >= 'A' && c <= 'Z')
        takeHeading(trimmed(line));
    else if (isDigit(c)) {
        const std::string_view words = trimmed(line);
        if (!stationBox(words).empty())
            add(Kind::Station);
        else if (m_isInSummary && isOperation(words))
            add(Kind::SummaryRow);
        else if (words.ends_with("ERRORS IN STREAM SYSTEM"))
            add(Kind::Error);
    }
}

void ReportOutline::takePage(std::string_view words)
{
    if (words == "1") {
        m_isInSummary = false;
    } else if (words.starts_with("1*****")) {
        add(m_line == 0 ? Kind::Title : Kind::JobData);
        m_isInSummary = false;
    } else if (words.starts_with("1 ") && holds(words, " HEC-1 INPUT ")) {
        add(m_hasListing ? Kind::InputPage : Kind::InputListing);
        m_hasListing = true;
    } else if (trimmed(words.substr(1)).starts_with("STATION ")) {
        add(Kind::StationTable);
    } else if (!stationBox(words).empty()) {
        add(Kind::Station); // a line number that fills its field
    }
}

void ReportOutline::takeStarred(std::string_view words)
{
    if (words.starts_with("*** HEC1 ERROR") || words.starts_with("*** HEC-1 ERROR"))
        add(Kind::Error);
    else if (words.starts_with("*** WARNING") || words.starts_with("*****WARNING"))
        add(Kind::Warning);
    else if (words.starts_with("*** NORMAL END OF HEC-1"))
        add(Kind::NormalEnd);
}

void ReportOutline::takeHeading(std::string_view words)
{
    if (m_isInSummary && isOperation(words)) {
        add(Kind::SummaryRow);
    } else if (words.starts_with("HYDROGRAPH AT STATION") || words.starts_with("INTERPOLATED HYDROGRAPH AT") ||
               words == "UNIT HYDROGRAPH") {
        add(Kind::StationTable);
    } else if (words == "RUNOFF SUMMARY") {
        add(Kind::RunoffSummary);
        m_isInSummary = true;
    } else if (words.starts_with("PEAK FLOW AND STAGE (END-OF-PERIOD)")) {
        add(Kind::PlanSummary);
        m_isInSummary = true;
    } else if (words.starts_with("SUMMARY OF DAM OVERTOPPING")) {
        add(Kind::DamSummary);
        m_isInSummary = false;
    } else if (words.starts_with("SCHEMATIC DIAGRAM OF STREAM")) {
        add(Kind::Diagram);
    } else if (words.starts_with("JOB STOPPED:")) {
        add(Kind::Error);
    }
}

} // namespace kalvo
