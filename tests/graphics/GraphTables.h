// SPDX-License-Identifier: GPL-3.0-or-later
// Result tables for tests of the graphs, filled by the reader itself.
#pragma once

#include "run/Tape21Tables.h"
#include "tests/run/TapeText.h"
#include "tests/support/ScriptedServices.h"

#include <string>

namespace kalvo {

/// Reads the text of a TAPE21 into tables; whatever the reader made of it.
inline void fillFrom(ResultTables& tables, const std::string& tape)
{
    const ScriptedTextMeasure measure;
    fillTables(readTape21(tape), tables, measure);
}

} // namespace kalvo
