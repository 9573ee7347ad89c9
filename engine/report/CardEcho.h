// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "engine/cards/CardReader.h"
#include "engine/files/TextWriter.h"
#include "engine/network/JobModel.h"

namespace hec1 {

/// Prints a card as the report echoes it: number and identifier, a title, and one line for each variable with its value
/// and what it is. Cards that run on are printed ten values a line. @return how many cards were used, 0 for a card that
/// is not echoed.
/// @param metric units of the job, for a value that the card leaves to the program.
std::size_t echoCards(std::span<const Card* const> cards, std::size_t at, bool metric, TextWriter& out);

/// The rain of each computation interval before it is brought to the depth of a storm, ten values a line.
void writePattern(TextWriter& out, const RainInput& rain);

/// One line of an echo: name, value, description.
void echoLine(TextWriter& out, std::string_view name, std::string_view value, std::string_view description);

} // namespace hec1
