// SPDX-License-Identifier: GPL-3.0-or-later
// Texts of TAPE21 for tests, built by the places that its description gives.
#pragma once

#include <string>
#include <vector>

namespace kalvo {

/// Fields of a header line as they stand in it; a blank field is "".
struct TapeHeader
{
    std::string name = "SUB1";
    std::string minutes = "5";
    std::string jds = "1";
    std::string plans = "1";
    std::string ratios = "1";
    std::string ordinates = "3";
};

/// `text` at the right of a field.
inline std::string rightIn(size_t width, const std::string& text)
{
    return text.size() >= width ? text : std::string(width - text.size(), ' ') + text;
}

/// Name in nine columns, some words, then from the line's end: minutes 3, unused 13, JD 1, plans 2, ratios 2, ordinates
/// 4, unused 10.
inline std::string headerLine(const TapeHeader& header)
{
    std::string name = header.name;
    name.resize(9, ' ');
    return name + " SAVED FLOWS " + rightIn(3, header.minutes) + "(unused text)" + rightIn(1, header.jds) +
           rightIn(2, header.plans) + rightIn(2, header.ratios) + rightIn(4, header.ordinates) + "0123456789";
}

/// One station: header, then the flows in lines of ten.
inline std::string station(const TapeHeader& header, const std::vector<double>& flows)
{
    std::string text = headerLine(header) + "\r\n";
    char item[40];
    for (size_t i = 0; i < flows.size(); ++i) {
        std::snprintf(item, sizeof item, "%10.3f", flows[i]);
        text += item;
        if (i % 10 == 9 || i + 1 == flows.size())
            text += "\r\n";
    }
    return text;
}

/// A station whose flows are first, first + 1 ...
inline std::string risingStation(TapeHeader header, int ordinates, int records, int first = 1)
{
    header.ordinates = std::to_string(ordinates);
    std::vector<double> flows;
    for (int i = 0; i < ordinates * records; ++i)
        flows.push_back(first + i);
    return station(header, flows);
}

} // namespace kalvo
