// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <vector>

namespace kalvo {

/// Rain on a subbasin as HEC-1 printed it beside the hydrograph, one depth for each ordinate: what fell in the time
/// step that ends there.
struct ReportRain
{
    QString station;
    int plan = 1; ///< from 1, as ratio and JD
    int ratio = 1;
    int jd = 1;
    std::vector<double> depths; ///< in `unit`
    QString unit;               ///< "in" or "mm"; empty when the report does not tell
};

/// All rain tables of a report, in its order. HEC-1 prints them only where IO or KO ask for the tables of hydrographs;
/// empty when it printed none or the report cannot be read.
std::vector<ReportRain> readReportRain(const QString& path);

} // namespace kalvo
