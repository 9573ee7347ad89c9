// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <optional>
#include <span>
#include <string>

namespace hec1 {

/// Files of one run.
struct EngineFiles
{
    std::string input;
    std::string output;
    std::string dss;     ///< taken so that callers need not leave it out; no such file is written
    std::string details; ///< empty: none
};

/// Reads `INPUT=deck OUTPUT=report DSS=name [DETAILS=file.csv]` (keys in any case and order) or `deck report`. Empty,
/// with the reason in `complaint`, when the arguments make no sense.
std::optional<EngineFiles> parseCommandLine(std::span<const std::string> arguments, std::string& complaint);

/// What is printed for a bad command line.
std::string usageText();

} // namespace hec1
