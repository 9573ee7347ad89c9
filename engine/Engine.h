// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "engine/CommandLine.h"

#include <iosfwd>

namespace hec1 {

/// How a run ended; the values are the exit status of the program.
enum class EngineEnd : int
{
    Normal = 0,
    DeckErrors = 1,
    BadCommandLine = 2,
    FileTrouble = 3
};

/// Computes the deck and writes report and files, all but the report into the current folder.
/// @param talk is told what could not be read or written and that errors are in the report.
EngineEnd computeDeck(const EngineFiles& files, std::ostream& talk);

} // namespace hec1
