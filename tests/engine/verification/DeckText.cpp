// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/engine/verification/DeckText.h"

#include <algorithm>
#include <cstdio>

namespace hec1::verification {

std::string number(double value)
{
    for (int digits = 6; digits > 0; --digits) {
        char text[32];
        std::snprintf(text, sizeof text, "%.*g", digits, value);
        if (std::string(text).size() <= 6) // field 1 is the narrowest
            return text;
    }
    return "0";
}

std::string fixedForm(const DeckCards& cards)
{
    std::string deck;
    for (const CardText& card : cards) {
        deck += card.id;
        for (std::size_t i = 0; i < card.fields.size(); ++i) {
            const std::size_t width = i == 0 ? 6 : 8;
            deck += std::string(width - std::min(width, card.fields[i].size()), ' ') + card.fields[i];
        }
        deck += "\r\n";
    }
    return deck;
}

std::string freeForm(const DeckCards& cards)
{
    std::string deck = "*FREE\r\n";
    for (const CardText& card : cards) {
        deck += card.id;
        for (std::size_t i = 0; i < card.fields.size(); ++i)
            deck += (i == 0 ? " " : ",") + card.fields[i];
        deck += "\r\n";
    }
    return deck;
}

void append(DeckCards& cards, const std::string& id, const std::vector<double>& values)
{
    for (std::size_t i = 0; i < values.size(); ++i) {
        if (i % 10 == 0)
            cards.push_back({id, {}});
        cards.back().fields.push_back(number(values[i]));
    }
}

} // namespace hec1::verification
