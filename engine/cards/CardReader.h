// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "engine/cards/CardTable.h"
#include "engine/cards/Diagnostics.h"

#include <array>
#include <deque>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace hec1 {

enum class LineKind
{
    Card,
    Comment,
    Directive
};

/// One field of a card.
struct CardField
{
    std::string_view word; ///< trimmed
    double value = 0;      ///< of a number field; 0 where blank
};

/// One line of the deck. Texts and fields point into the reader that it was read by; most cards use one field or three,
/// so a large deck would be mostly empty fields if each card held its ten.
struct Card
{
    LineKind kind = LineKind::Card;
    const CardDef* def = nullptr; ///< null for comments, directives and unknown identifiers
    std::string_view id;          ///< two letters
    int line = 0;                 ///< in the file, from 1
    int number = 0;               ///< as the listing counts: cards only, from 1
    bool freeForm = false;        ///< read under *FREE
    bool listed = true;           ///< false between *NOLIST and *LIST
    std::string_view image;       ///< columns 1 to 80 in fixed form, without blanks at the end
    CardField* fields = nullptr;  ///< element 0 is field 1
    int count = 0;                ///< up to the last field that is not blank

    bool is(std::string_view which) const { return kind == LineKind::Card && id == which; }
    /// Fields are counted from 1, as on the card.
    std::string_view word(int field) const { return field <= count ? fields[field - 1].word : std::string_view{}; }
    bool has(int field) const { return !word(field).empty(); }
    double value(int field) const { return field <= count ? fields[field - 1].value : 0; }
    int whole(int field) const { return static_cast<int>(value(field)); }
    /// The text of a text card (columns 3 to 80) or the text behind the name (columns 9 to 80).
    std::string_view text() const;
};

/// The cards of one job, up to its ZZ card.
struct JobCards
{
    std::vector<Card> cards;
    bool ended = false;   ///< the ZZ card is there
    bool diagram = false; ///< *DIAGRAM was asked for
};

/// Reads a deck of one job after the other. Fixed form: identifier in columns 1 and 2, field 1 in columns 3 to 8,
/// fields 2 to 10 eight columns each. *FREE: fields parted by blanks or one comma. Source: HEC-1 User's Manual (1998),
/// appendix A. Cost: one pass over the bytes.
class DeckReader
{
public:
    /// @param bytes the whole file, Latin-1 or UTF-8; kept, since the cards point into it.
    explicit DeckReader(std::string bytes);
    DeckReader(const DeckReader&) = delete;
    DeckReader& operator=(const DeckReader&) = delete;

    /// The next job; empty when nothing but blank lines is left.
    std::optional<JobCards> next(Diagnostics& diagnostics);

private:
    std::string_view takeLine();
    void readFixed(std::string_view line, JobCards& job, Diagnostics& diagnostics);
    void readFree(std::string_view line, JobCards& job, Diagnostics& diagnostics);
    void readDirective(std::string_view line, JobCards& job, Diagnostics& diagnostics);
    /// Makes a card of the last one, whose identifier, image and fields are set.
    void finish(JobCards& job, Diagnostics& diagnostics);
    using Words = std::array<std::string_view, 10>;
    void keepFields(Card& card, const Words& words);
    std::string_view keep(std::string text);
    std::string_view keepId(std::string_view id);

    std::string m_bytes;
    std::deque<std::string> m_kept;
    std::vector<std::vector<CardField>> m_fields; ///< filled up to their capacity, never beyond it
    std::size_t m_at = 0;
    int m_line = 0;
    int m_number = 0;
    bool m_free = false;
    bool m_listing = true;
    bool m_economics = false;
    std::string_view m_lastId;
};

/// A number as a card may hold it: digits with at most one point, a sign, an exponent with E or D. Empty when the text
/// is anything else, blanks around it apart.
std::optional<double> cardNumber(std::string_view text);

std::string_view trimmed(std::string_view text);
bool sameWord(std::string_view a, std::string_view b); ///< without regard to case

} // namespace hec1
