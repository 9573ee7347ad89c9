// SPDX-License-Identifier: GPL-3.0-or-later
#include "graphics/StationRain.h"

#include "run/ReportRain.h"
#include "run/SummaryReport.h"
#include "run/Tape21Tables.h"

namespace kalvo {

ChartRain stationRain(const QString& reportPath, const QString& label)
{
    const auto minutes = findComputationInterval(reportPath);
    if (!minutes)
        return {};
    for (const ReportRain& table : readReportRain(reportPath)) {
        if (recordLabel(table.station, table.ratio, table.plan, table.jd) != label)
            continue;
        ChartRain rain{label, {}, {}, table.unit};
        for (size_t i = 0; i < table.depths.size(); ++i) {
            rain.times.append(static_cast<double>(i) * *minutes / 60.0);
            rain.depths.append(table.depths[i]);
        }
        return rain;
    }
    return {};
}

} // namespace kalvo
