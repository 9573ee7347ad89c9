// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "graphics/HydrographCsv.h"

#include <QString>

namespace kalvo {

/// Draws hydrographs and writes the picture as PNG, SVG or PDF, told by the ending of `path`. Where every station has
/// one hydrograph they share one pair of axes; where stations have several (ratios, plans, index storms) each station
/// gets a panel of its own. What does not fit is named in the picture, never silently left out. Needs a QApplication
/// (offscreen will do).
/// @return an empty text, or why the picture was not written.
QString writeHydrographPicture(const QVector<HydrographSeries>& series, const QString& title, const QString& path);

} // namespace kalvo
