// SPDX-License-Identifier: GPL-3.0-or-later
// The text of a large TAPE21, the same in every program that measures with one.
#pragma once

#include <QByteArray>

#include <cstdio>

namespace kalvo {

/// Flows without any order, which cost a reader as much as any and a picture more than any: 500 stations of 6 ratios
/// and 2,000 ordinates give 60 MB.
inline QByteArray largeTape(int stations, int ratios, int ordinates)
{
    QByteArray text;
    text.reserve(qsizetype(stations) * ratios * ordinates * 11);
    char line[120];
    quint32 random = 12345;
    for (int s = 0; s < stations; ++s) {
        // Name in columns 1-9; from the end: interval 3, 13 unused, JD 1, plans 2, ratios 2, ordinates 4, 10 unused.
        std::snprintf(line, sizeof line, "S%-8d%20s%3d%13s%1d%2d%2d%4d%10s\r\n", s, "", 5, "", 1, 1, ratios, ordinates,
                      "");
        text += line;
        for (int i = 0; i < ratios * ordinates; ++i) {
            random = random * 1664525u + 1013904223u;
            const double flow = (random >> 8) % 10'000'000 / 1000.0;
            std::snprintf(line, sizeof line, "%10.3f%s", flow, i % 8 == 7 || i == ratios * ordinates - 1 ? "\r\n" : "");
            text += line;
        }
    }
    return text;
}

} // namespace kalvo
