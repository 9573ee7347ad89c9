// SPDX-License-Identifier: GPL-3.0-or-later
#include "run/ReportRain.h"

#include "platform/text.h"
#include "run/SummaryReport.h"

#include <algorithm>
#include <array>
#include <map>
#include <string>
#include <string_view>
#include <tuple>

namespace kalvo {
namespace {

std::string_view trimmed(std::string_view text)
{
    const size_t from = text.find_first_not_of(" \r\n\t");
    const size_t to = text.find_last_not_of(" \r\n\t");
    return from == std::string_view::npos ? std::string_view() : text.substr(from, to - from + 1);
}

/// The number of a value among those seen so far, from 1.
int orderOf(std::vector<double>& seen, double value)
{
    const auto at = std::find(seen.begin(), seen.end(), value);
    if (at != seen.end())
        return static_cast<int>(at - seen.begin()) + 1;
    seen.push_back(value);
    return static_cast<int>(seen.size());
}

/// Walks the lines of a report: a heading names the station, plan, ratio and storm of the table below it.
class RainReader
{
public:
    void take(std::string_view line);
    std::vector<ReportRain> tables() { return std::move(m_tables); }

private:
    void takeHeading(std::string_view line);
    void takeGroup(std::string_view group);
    void begin();

    std::vector<ReportRain> m_tables;
    ReportRain m_next;
    bool m_hasHeading = false, m_inTable = false;
    double m_area = 0.0;
    std::map<QString, std::vector<double>> m_areas;         ///< of each station
    std::map<std::tuple<QString, int, int>, int> m_printed; ///< tables of each station, plan and JD so far
};

void RainReader::takeHeading(std::string_view line)
{
    constexpr std::string_view kAtStation = "HYDROGRAPH AT STATION";
    if (line.starts_with(kAtStation)) {
        m_next = {};
        m_next.station = QString::fromLatin1(trimmed(line.substr(kAtStation.size())));
        m_hasHeading = true;
        m_area = 0.0;
    } else if (line.find("HYDROGRAPH ") != std::string_view::npos) {
        m_hasHeading = false; // diverted, pumped, interpolated, combined by other words: no rain falls there
    } else if (line.starts_with("PLAN") && line.find("RATIO =") != std::string_view::npos) {
        m_next.plan = std::max(1, static_cast<int>(leadingNumber(line.substr(4))));
    } else if (line.starts_with("TRANSPOSITION AREA")) {
        m_area = leadingNumber(line.substr(18));
    }
}

void RainReader::begin()
{
    m_inTable = true;
    m_next.jd = orderOf(m_areas[m_next.station], m_area);
    // By their order, not by the ratio that is printed: two ratios may be equal.
    m_next.ratio = ++m_printed[{m_next.station, m_next.plan, m_next.jd}];
    m_tables.push_back(m_next);
}

/// One half of a line: day, month and time (which may be missing), ordinate, rain, loss, excess, flow.
void RainReader::takeGroup(std::string_view group)
{
    std::array<std::string_view, 10> items;
    size_t count = 0;
    for (std::string_view rest = trimmed(group); !rest.empty() && count < items.size(); rest = trimmed(rest)) {
        const size_t end = std::min(rest.find(' '), rest.size());
        items[count++] = rest.substr(0, end);
        rest.remove_prefix(end);
    }
    double ordinate = 0.0, rain = 0.0;
    if (count < 5 || !parseWholeNumber(items[count - 5], ordinate) || !parseWholeNumber(items[count - 4], rain))
        return;
    constexpr double kMostOrdinates = 1e6;
    if (ordinate < 1.0 || ordinate > kMostOrdinates)
        return;
    std::vector<double>& depths = m_tables.back().depths;
    const auto at = static_cast<size_t>(ordinate) - 1;
    if (at >= depths.size())
        depths.resize(at + 1, 0.0);
    depths[at] = rain;
}

void RainReader::take(std::string_view line)
{
    const std::string_view text = trimmed(line);
    if (m_inTable && text.starts_with("**")) {
        m_inTable = false;
        m_hasHeading = false;
    } else if (m_inTable) {
        const size_t middle = line.find('*');
        takeGroup(line.substr(0, middle));
        if (middle != std::string_view::npos)
            takeGroup(line.substr(middle + 1));
    } else if (m_hasHeading && text.find("RAIN") != std::string_view::npos &&
               text.find("EXCESS") != std::string_view::npos && text.starts_with("DA")) {
        begin();
    } else if (!m_tables.empty() && m_tables.back().unit.isEmpty() && text.starts_with("(INCHES)")) {
        m_tables.back().unit = QStringLiteral("in");
    } else if (!m_tables.empty() && m_tables.back().unit.isEmpty() && text.starts_with("(MM)")) {
        m_tables.back().unit = QStringLiteral("mm");
    } else {
        takeHeading(text);
    }
}

} // namespace

std::vector<ReportRain> readReportRain(const QString& path)
{
    RainReader reader;
    forEachReportLine(path, [&reader](std::string_view line) {
        reader.take(line);
        return true;
    });
    return reader.tables();
}

} // namespace kalvo
