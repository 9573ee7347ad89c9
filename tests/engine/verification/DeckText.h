// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <vector>

namespace hec1::verification {

/// One card as identifier and fields; texts are right-justified in their fields when written in fixed format.
struct CardText
{
    std::string id;
    std::vector<std::string> fields;
};
using DeckCards = std::vector<CardText>;

std::string number(double value);

/// Fixed 80-column form, or free form between *FREE and the end of the deck.
std::string fixedForm(const DeckCards& cards);
std::string freeForm(const DeckCards& cards);

/// A card whose values run on over as many cards of the same identifier as they need.
void append(DeckCards& cards, const std::string& id, const std::vector<double>& values);

} // namespace hec1::verification
