// SPDX-License-Identifier: GPL-3.0-or-later
#include "run/Tape21Interval.h"

#include "run/SummaryReport.h"

#include <algorithm>

namespace kalvo {

bool completeIntervals(Tape21& tape, const QString& reportPath)
{
    const auto lacksInterval = [](const Tape21Station& station) { return !(station.header.intervalMinutes > 0.0); };
    if (std::none_of(tape.stations.begin(), tape.stations.end(), lacksInterval))
        return true;
    const auto minutes = findComputationInterval(reportPath);
    if (!minutes)
        return false;
    for (Tape21Station& station : tape.stations)
        if (lacksInterval(station))
            station.header.intervalMinutes = *minutes;
    return true;
}

} // namespace kalvo
