// SPDX-License-Identifier: GPL-3.0-or-later
#include "graphics/HydrographCsv.h"

#include "platform/text.h"

#include <array>

namespace kalvo {
namespace {

constexpr int kFields = 8;
using CsvRecord = std::array<QByteArray, kFields>;

/// Takes one RFC 4180 record off the front of `rest`; the number of fields it had.
int takeRecord(std::string_view& rest, CsvRecord& record)
{
    int field = 0;
    for (QByteArray& text : record)
        text.clear();
    bool quoted = false;
    size_t at = 0;
    for (; at < rest.size(); ++at) {
        const char c = rest[at];
        if (quoted && c == '"' && at + 1 < rest.size() && rest[at + 1] == '"')
            record[static_cast<size_t>(std::min(field, kFields - 1))].append(rest[at++]);
        else if (c == '"')
            quoted = !quoted;
        else if (!quoted && c == ',')
            ++field;
        else if (!quoted && c == '\n')
            break;
        else if (quoted || c != '\r')
            record[static_cast<size_t>(std::min(field, kFields - 1))].append(c);
    }
    rest.remove_prefix(std::min(at + 1, rest.size()));
    return field + 1;
}

bool isSameHydrograph(const HydrographSeries& a, const HydrographSeries& b)
{
    return a.plan == b.plan && a.ratio == b.ratio && a.jd == b.jd && a.station == b.station && a.deck == b.deck;
}

} // namespace

QVector<HydrographSeries> readHydrographCsv(const QByteArray& bytes, QString& problem)
{
    problem.clear();
    QVector<HydrographSeries> all;
    std::string_view rest(bytes.constData(), static_cast<size_t>(bytes.size()));
    CsvRecord record;
    takeRecord(rest, record);
    if (record[0] != "deck" || record[6] != "flow") {
        problem = QStringLiteral("The first line is not the heading of a hydrograph table.");
        return all;
    }
    for (int line = 2; !rest.empty(); ++line) {
        const int fields = takeRecord(rest, record);
        if (fields == 1 && record[0].isEmpty())
            continue;
        double number[5] = {};
        bool good = fields == kFields;
        for (size_t k = 0; k < 5 && good; ++k)
            good =
                parseWholeNumber(std::string_view(record[k + 2].constData(), size_t(record[k + 2].size())), number[k]);
        if (!good) {
            problem = QStringLiteral("Line %1 is not a row of a hydrograph table.").arg(line);
            return all;
        }
        HydrographSeries row;
        row.deck = QString::fromUtf8(record[0]);
        row.station = QString::fromUtf8(record[1]);
        row.plan = static_cast<int>(number[0]);
        row.ratio = static_cast<int>(number[1]);
        row.jd = static_cast<int>(number[2]);
        row.unit = QString::fromUtf8(record[7]);
        if (all.isEmpty() || !isSameHydrograph(all.last(), row))
            all.append(row);
        all.last().minutes.append(number[3]);
        all.last().flows.append(number[4]);
    }
    return all;
}

} // namespace kalvo
