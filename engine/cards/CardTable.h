// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <span>
#include <string_view>

namespace hec1 {

/// Where a card may stand.
enum class CardRoom
{
    Job,       ///< ahead of the first station
    Series,    ///< anywhere ahead of ZZ
    Station,   ///< inside a KK group
    Economics, ///< behind EC
    End
};

/// What the engine does with a card.
enum class CardUse
{
    Computed,
    Warned, ///< passed over: it cannot change a hydrograph
    Refused ///< stops the job: leaving it out would change a hydrograph
};

/// How the text behind the identifier is cut.
enum class CardLayout
{
    Text,     ///< one text
    NameText, ///< a name in field 1, then one text
    Fields,   ///< ten fields
    Values,   ///< ten numbers a card, going on over cards of the same identifier
    Words     ///< ten names a card
};

/// A card as data. `kinds` has one letter for each field: n number, i whole number, w word or name, d date, t time of
/// day; fields behind the last letter are not used. `names` are the variables, parted by blanks.
struct CardDef
{
    std::string_view id;
    CardRoom room;
    CardUse use;
    CardLayout layout;
    std::string_view kinds;
    std::string_view names;
    std::string_view note; ///< of a card that is not computed: what is missing
};

std::span<const CardDef> cardTable();

/// The definition of an identifier in capitals; null when there is no such card.
const CardDef* findCard(std::string_view id);

/// Name of the variable in a field (1 to 10), "FIELD" when it has none.
std::string_view fieldName(const CardDef& def, int field);

} // namespace hec1
