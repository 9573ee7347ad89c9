// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "engine/cards/CardReader.h"
#include "engine/methods/Storms.h"

#include <span>
#include <string>
#include <vector>

namespace hec1 {

/// Values that run on over cards of one identifier.
struct ValueList
{
    const Card* card = nullptr; ///< the first of them; null when the list was not given
    std::vector<double> values;
    double startMinutes = 0; ///< of the first value, from the start of the run
    double intervalMinutes = 0;

    bool given() const { return card != nullptr; }
    methods::TimeSeries series() const { return {startMinutes, intervalMinutes, values}; }
};

/// Gathers the values of cards[at] and of the cards of the same identifier behind it; `at` is moved to the last of
/// them. Blanks between values count as zero. Under *FREE a card ends with its last field; in fixed form a card that is
/// gone on with has ten values. Comments between the cards are passed over.
ValueList gatherValues(std::span<const Card* const> cards, std::size_t& at);

/// Reports a list that falls, or with `strictly` one that does not rise. @return true when all is well.
bool checkRises(const ValueList& list, bool strictly, Diagnostics& diagnostics);

/// Reports two lists that do not have as many values as each other.
bool checkSameCount(const ValueList& list, const ValueList& partner, Diagnostics& diagnostics);

/// Reports a value that is below zero.
bool checkNotNegative(const ValueList& list, Diagnostics& diagnostics);

/// A number for a message, in at most seven digits.
std::string shortNumber(double value);

/// A message of a method in capitals, as the report has them.
std::string capitals(std::string_view text);

} // namespace hec1
