// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "engine/cards/Diagnostics.h"
#include "engine/files/TextWriter.h"

namespace hec1 {

/// The last line of a report whose job was computed to its end.
inline constexpr std::string_view kNormalEnd = " *** NORMAL END OF HEC-1 ***";

/// Prints the errors, one line ` *** HEC1 ERROR nn *** TITLE` each with the number right-justified in two (readers take
/// it from positions 16 to 18), below it the card with its line number and what is wrong with it.
void writeErrors(TextWriter& out, const Diagnostics& diagnostics);

/// Prints the warnings from the given one on.
void writeWarnings(TextWriter& out, const Diagnostics& diagnostics, std::size_t from);

} // namespace hec1
