// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/TextBuffer.h"

#include <QString>
#include <QStringList>

namespace kalvo {

/// The routings of a report's summary as `frmRouting` lists them.
struct RoutingOutput
{
    QStringList List2; ///< two empty lines, then each block of a routing or pump with an empty line behind it
    bool canBeRead = false;
    bool isCut = false; ///< the report is damaged and lists more blocks than are kept
    /// A RUNOFF SUMMARY lists routings. HEC-1 prints it for one plan and one ratio, where the summary that is cut up
    /// here is not printed at all.
    bool isInRunoffSummary = false;

    bool hasRoutings() const { return List2.size() > 2; }
};

/// `getrouting`: the 7 lines of each "ROUTED TO" and the 11 of each "PUMP FLOW TO" behind the heading "PEAK FLOW AND
/// STAGE (END-OF-PERIOD)", those behind a second heading once more. A block at the end of a cut report holds the lines
/// that are there.
/// @param report full path of HEC-1's printed report
RoutingOutput getrouting(const QString& report);

/// Position of the heading of the RUNOFF SUMMARY that lists routings, -1 without one.
qsizetype runoffSummaryOf(const TextBuffer& report);

} // namespace kalvo
