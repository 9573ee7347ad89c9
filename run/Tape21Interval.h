// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "run/Tape21.h"

#include <QString>

namespace kalvo {

/// The header has three columns for the time step: above 999 minutes asterisks stand there, and the number itself is
/// told by the report's job data alone. Takes it from there for every station without a time step.
/// @return false when some station is left without one, so that none of its times is known.
bool completeIntervals(Tape21& tape, const QString& reportPath);

} // namespace kalvo
