// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/ChartSeries.h"

namespace kalvo {

/// The rain that a report prints for the hydrograph of this label ("SUB1  1  1  1": station, ratio, plan, JD), over
/// hours from the start of the run. Without times when it prints none, or not the time step.
ChartRain stationRain(const QString& reportPath, const QString& label);

} // namespace kalvo
