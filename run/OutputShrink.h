// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/TextBuffer.h"

#include <QString>

namespace kalvo {

/// What a shrink took out of a report, for the user to check.
struct ShrinkResult
{
    qsizetype linesBefore = 0;
    qsizetype linesAfter = 0;
    qsizetype headings = 0;     ///< page headings taken out, each with the lines under it
    qsizetype emptyLines = 0;   ///< lines taken out of pairs of empty ones
    qsizetype blankLines = 0;   ///< lines of one blank taken out behind a line that ends in two
    qsizetype lastPosition = 0; ///< where the last line was taken out; 0 when none was

    qsizetype linesTaken() const { return linesBefore - linesAfter; }
};

/// Takes the repeated page headings of the input listing and the empty lines that follow one another out of a report:
///
/// 1. Each heading from position 2502 on, with the four lines that follow it. The first page's heading stands ahead of
///    that and stays.
/// 2. The line behind each line end that two more follow.
/// 3. The line of one blank behind each line that ends in two blanks.
///
/// Each step searches from a start that moves on by 119 characters, whatever was found, and ends with the first search
/// that finds nothing. So one of several empty lines at the top of a report remains, and on short pages every second.
ShrinkResult shrinkOutput(TextBuffer& report);

/// "1,204 lines of 5,310 were taken out: ..." for a tip.
QString shrinkSummary(const ShrinkResult& result);

} // namespace kalvo
