// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/cards/CardReader.h"

#include <gtest/gtest.h>

#include <string>

namespace hec1 {
namespace {

// The fields of all cards, one card a line, fields parted by bars.
std::string fieldsOf(const std::string& deck)
{
    DeckReader reader(deck);
    Diagnostics diagnostics;
    std::string text;
    while (const std::optional<JobCards> job = reader.next(diagnostics))
        for (const Card& card : job->cards) {
            if (card.kind != LineKind::Card)
                continue;
            text += std::string(card.id);
            for (int field = 1; field <= card.count; ++field)
                text += "|" + std::string(card.word(field));
            text += "\n";
        }
    return text;
}

struct Shape
{
    const char* name;
    std::string deck;
    std::string fields;
};

void PrintTo(const Shape& shape, std::ostream* out)
{
    *out << shape.name;
}

class CardShapes : public testing::TestWithParam<Shape>
{
};

TEST_P(CardShapes, AreCutIntoFields)
{
    EXPECT_EQ(fieldsOf(GetParam().deck), GetParam().fields);
}

INSTANTIATE_TEST_SUITE_P(
    , CardShapes,
    testing::Values(Shape{"FixedColumns", "BA  1.50    30.0\n", "BA|1.50|30.0\n"},
                    Shape{"LeftPlacedNumbers", "BA1.5   30\n", "BA|1.5|30\n"},
                    Shape{"FilledToTheEdge", "PC0.0000  0.0053\n", "PC|0.0000|0.0053\n"},
                    Shape{"BlankFieldBetween", "KO     0                            21\n", "KO|0||||21\n"},
                    Shape{"CrLfAndNoLastLineEnd", "BA     1\r\nZZ", "BA|1\nZZ\n"},
                    Shape{"SmallLetters", "ba     1\n", "BA|1\n"},
                    Shape{"BlankIdentifierRepeats", "PI     1       2\n       3\n", "PI|1|2\nPI|3\n"},
                    Shape{"ColumnsPast80AreNotCards", "UD     1" + std::string(72, ' ') + "99999\n", "UD|1\n"},
                    Shape{"DosEndOfFile", "ZZ\n\x1a\x1a\x1a", "ZZ\n"},
                    Shape{"BytesAbove127",
                          "KK  \xC5"
                          "A\n",
                          "KK|\xC5"
                          "A\n"},
                    Shape{"FreeCommasAndBlanks", "*FREE\nIT 10,01OCT99 , 0000 200\n", "IT|10|01OCT99|0000|200\n"},
                    Shape{"FreeSkippedFields", "*FREE\nKO 0,,,,21\n", "KO|0||||21\n"},
                    Shape{"FreeSkippedFirstField", "*FREE\nLS ,80\n", "LS||80\n"},
                    Shape{"FreeCommaBehindIdentifier", "*FREE\nLS,.5,80\n", "LS|.5|80\n"},
                    Shape{"FreeTabs", "*FREE\nLS\t.5\t80\n", "LS|.5|80\n"},
                    Shape{"FreeMoreThanTenValuesRunOn", "*FREE\nPI 1 2 3 4 5 6 7 8 9 10 11 12\n",
                          "PI|1|2|3|4|5|6|7|8|9|10\nPI|11|12\n"},
                    Shape{"FreeNameAndText", "*FREE\nKK SUB1 upper creek, left\n", "KK|SUB1\n"},
                    Shape{"BackToFixed", "*FREE\nUD .5\n*FIX\nUD     1\n", "UD|.5\nUD|1\n"},
                    Shape{"CommentsAndBlankLines", "* a comment\n\n   \nUD     1\n", "UD|1\n"}),
    [](const auto& row) { return row.param.name; });

struct NumberText
{
    const char* name;
    const char* text;
    std::optional<double> value;
};

void PrintTo(const NumberText& number, std::ostream* out)
{
    *out << number.name;
}

class CardNumbers : public testing::TestWithParam<NumberText>
{
};

TEST_P(CardNumbers, AreReadOrRefused)
{
    EXPECT_EQ(cardNumber(GetParam().text), GetParam().value);
}

INSTANTIATE_TEST_SUITE_P(, CardNumbers,
                         testing::Values(NumberText{"Whole", "12", 12}, NumberText{"EndsInPoint", "12.", 12},
                                         NumberText{"NoZero", "-.5", -.5}, NumberText{"PlusSign", "+3", 3},
                                         NumberText{"Exponent", "1.5E2", 150},
                                         NumberText{"FortranDouble", "1.5D+2", 150},
                                         NumberText{"SmallExponent", "2e-3", .002},
                                         NumberText{"Underflow", "1e-999", 0}, NumberText{"Letters", "1.5x", {}},
                                         NumberText{"TwoPoints", "1.2.3", {}}, NumberText{"InnerBlank", "1 2", {}},
                                         NumberText{"SignOnly", "-", {}}, NumberText{"PointOnly", ".", {}},
                                         NumberText{"Comma", "1,5", {}}, NumberText{"NotANumberWord", "nan", {}},
                                         NumberText{"InfinityWord", "inf", {}}, NumberText{"Hexadecimal", "0x10", {}},
                                         NumberText{"TwoSigns", "--1", {}}, NumberText{"ExponentAlone", "E5", {}}),
                         [](const auto& row) { return row.param.name; });

TEST(CardReader, CountsCardsAndLinesApart)
{
    DeckReader reader("ID one\n* comment\n\n*DIAGRAM\nKK     A\nZZ\n");
    Diagnostics diagnostics;
    const std::optional<JobCards> job = reader.next(diagnostics);
    ASSERT_TRUE(job);
    ASSERT_EQ(job->cards.size(), 5u);
    EXPECT_EQ(job->cards[3].number, 2);
    EXPECT_EQ(job->cards[3].line, 5);
    EXPECT_TRUE(job->diagram);
    EXPECT_TRUE(job->ended);
}

TEST(CardReader, NoListKeepsCardsOutOfTheListing)
{
    DeckReader reader("ID one\n*NOLIST\nKK     A\n*LIST\nZZ\n");
    Diagnostics diagnostics;
    const std::optional<JobCards> job = reader.next(diagnostics);
    ASSERT_TRUE(job);
    std::string listed;
    for (const Card& card : job->cards)
        listed += card.listed ? '1' : '0';
    EXPECT_EQ(listed, "11011");
}

TEST(CardReader, EveryIdentifierOfTheTableIsFoundAgain)
{
    for (const CardDef& def : cardTable()) {
        EXPECT_EQ(findCard(def.id), &def) << def.id;
        if (def.use != CardUse::Computed) {
            EXPECT_FALSE(def.note.empty()) << def.id << " is not computed and does not say what is missing";
        }
        for (const char kind : def.kinds)
            EXPECT_NE(std::string_view("niwdt").find(kind), std::string_view::npos) << def.id;
    }
    EXPECT_EQ(findCard("QQ"), nullptr);
    EXPECT_EQ(findCard("??"), nullptr);
}

} // namespace
} // namespace hec1
