// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/network/CardTables.h"

#include <cstdio>

namespace hec1 {

ValueList gatherValues(std::span<const Card* const> cards, std::size_t& at)
{
    ValueList list;
    list.card = cards[at];
    const std::string_view id = cards[at]->id;
    for (;;) {
        const Card& card = *cards[at];
        const bool goesOn = at + 1 < cards.size() && cards[at + 1]->id == id;
        const int count = goesOn && !card.freeForm ? 10 : card.count;
        for (int i = 1; i <= count; ++i)
            list.values.push_back(card.value(i));
        if (!goesOn)
            return list;
        ++at;
    }
}

bool checkRises(const ValueList& list, bool strictly, Diagnostics& diagnostics)
{
    for (std::size_t i = 1; i < list.values.size(); ++i) {
        const double before = list.values[i - 1], value = list.values[i];
        if (value < before || (strictly && value == before)) {
            diagnostics.error(ErrorNumber::TableDoesNotRise, list.card,
                              "VALUE " + std::to_string(i + 1) + " IS " + shortNumber(value) + " AFTER " +
                                  shortNumber(before));
            return false;
        }
    }
    return true;
}

bool checkSameCount(const ValueList& list, const ValueList& partner, Diagnostics& diagnostics)
{
    if (list.values.size() == partner.values.size())
        return true;
    diagnostics.error(ErrorNumber::CountsDiffer, list.card,
                      std::string(list.card->id) + " HAS " + std::to_string(list.values.size()) + " VALUES, " +
                          std::string(partner.card->id) + " HAS " + std::to_string(partner.values.size()));
    return false;
}

bool checkNotNegative(const ValueList& list, Diagnostics& diagnostics)
{
    for (const double value : list.values)
        if (value < 0) {
            diagnostics.error(ErrorNumber::OutOfRange, list.card,
                              std::string(list.card->id) + ": " + shortNumber(value) + " IS BELOW ZERO");
            return false;
        }
    return true;
}

std::string shortNumber(double value)
{
    char text[40];
    std::snprintf(text, sizeof text, "%.7G", value);
    return text;
}

std::string capitals(std::string_view text)
{
    std::string result(text);
    for (char& c : result)
        if (c >= 'a' && c <= 'z')
            c = static_cast<char>(c - 'a' + 'A');
    return result;
}

} // namespace hec1
