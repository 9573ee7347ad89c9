// SPDX-License-Identifier: GPL-3.0-or-later
#include "deck/FreeFormat.h"

#include "deck/Deck.h"
#include "platform/Services.h"
#include "platform/text.h"
#include "tests/support/GridText.h"
#include "tests/support/ScriptedServices.h"

#include <QDir>
#include <QRegularExpression>

#include <gtest/gtest.h>

namespace kalvo {
namespace {

std::string cellsOf(const QString& line)
{
    return fixedFromFree(line).rows.constFirst().join(u'|').toStdString();
}

// -- The text as a whole ---------------------------------------------------------------------------------------------

struct TextRow
{
    const char* name;
    const char* before;
    const char* after;
};
std::string nameOf(const testing::TestParamInfo<TextRow>& row)
{
    return row.param.name;
}

class ReadFreeLine : public testing::TestWithParam<TextRow>
{
};
TEST_P(ReadFreeLine, PartsTheIdFromAFieldWrittenAgainstIt)
{
    EXPECT_EQ(freeTextOf(GetParam().before), GetParam().after);
}
INSTANTIATE_TEST_SUITE_P(
    , ReadFreeLine,
    testing::Values(TextRow{"Digit", "BA1.65", "BA 1.65"}, TextRow{"Letter", "KKSUB1", "KK SUB1"},
                    TextRow{"Point", "UD.95", "UD .95"}, TextRow{"Slash", "KM/", "KM /"},
                    TextRow{"MinusStays", "BF-2.5", "BF-2.5"}, TextRow{"PlusStays", "BF+2.5", "BF+2.5"},
                    TextRow{"CommaStays", "KO,,21", "KO,,21"}, TextRow{"TabStays", "BA\t1", "BA\t1"},
                    TextRow{"TwoCharactersStay", "ZZ", "ZZ"}, TextRow{"TrimmedFirst", "ZZ        ", "ZZ"},
                    TextRow{"CommentGetsOneMore", "* A B", "*  A B"}, TextRow{"FreeCard", "*FREE", "*F REE"},
                    TextRow{"TabAtTheEndIsText", "BA 1\t", "BA 1\t"},
                    TextRow{"EveryLineEnd", "ID A\r\nKK B\nBA 1\rZZ\r\n", "ID A\nKK B\nBA 1\nZZ"},
                    TextRow{"Nothing", "", ""}, TextRow{"BlankLinesStay", "ID A\n\n \nZZ", "ID A\n\n\nZZ"}),
    nameOf);

TEST(FreeText, RunsCollapseAndBlankLinesGoByPairs)
{
    EXPECT_EQ(withoutBlankLines("a\n\nb\n\n\n\nc\nd"), "a\nb\n\nc\nd");
    EXPECT_EQ(withoutBlankLines("a\n\n\nb"), "a\n\nb") << "one pass, pair by pair";
    EXPECT_EQ(twospaces("  BA    1 2   \n   x"), " BA 1 2 \n x");
    EXPECT_EQ(twospaces("a\t\tb"), "a\t\tb");
    EXPECT_EQ(twotabs("a\t\t\tb  c\t"), "a\tb  c\t");
    EXPECT_EQ(withLf("a\r\nb\rc\n"), "a\nb\rc\n");
}

TEST(FreeText, WhatIsTooLargeIsToldInNumbers)
{
    EXPECT_EQ(whyNotFreeText(QString(kLongestFreeLine, u'x') + "\nZZ"), "");
    EXPECT_NE(whyNotFreeText("ID\n" + QString(kLongestFreeLine + 1, u',')).indexOf("line 2 has 32001"), -1);
    EXPECT_NE(whyNotFreeText(QString(kMostFreeLines, u'\n')).indexOf("200001 lines"), -1);
    EXPECT_NE(whyNotFreeText(QString(kLargestFreeText + 1, u'x')).indexOf("16777217"), -1);
}

// -- Free to fixed ---------------------------------------------------------------------------------------------------

class ConvertLine : public testing::TestWithParam<TextRow>
{
};
TEST_P(ConvertLine, IsCutOrParted)
{
    EXPECT_EQ(cellsOf(QString::fromUtf8(GetParam().before)), GetParam().after);
}
INSTANTIATE_TEST_SUITE_P(
    , ConvertLine,
    testing::Values(
        TextRow{"OneBlankOneField", "BA 1.65 2", "BA|1.65|2"}, TextRow{"TwoBlanksSkipOne", "BA  1.65", "BA||1.65"},
        TextRow{"DelimitersMixed", "KO 0,\t,21", "KO|0|||21"}, TextRow{"TrailingDelimiterCounts", "BA 1,", "BA|1|"},
        TextRow{"SmallId", "ba 1.x", "BA|1.x"}, TextRow{"GluedIdStaysWhole", "ba1.65 a", "BA1.65|a"},
        TextRow{"LeadingBlank", " BA 1", "|BA|1"}, TextRow{"OneLetter", "b", "B"}, TextRow{"Empty", "", ""},
        TextRow{"CrAtTheEnd", "BA 1\r", "BA|1"}, TextRow{"SmallIdOfOneLetter", "b,1", "B|1"},
        TextRow{"KkIsCutNotParted", "kk A,B,C WEST", "KK| A,B,C| WEST"},
        TextRow{"IdIsCut", "ID A STUDY OF, THE CREEK", "ID| A STU|DY OF, T|HE CREEK"},
        TextRow{"KmIsCut", "KM  a  b", "KM|  a  b"}, TextRow{"CommentIsCut", "* a, b", "* |a, b"},
        TextRow{"StarInSecondPlace", "X*1,2", "X*|1,2"}, TextRow{"ZzIsCut", "ZZ          ", "ZZ|      |    "},
        TextRow{"ZwIsParted", "ZW A=RIV B=GAGE", "ZW|A=RIV|B=GAGE"}, TextRow{"ZrIsParted", "ZR=QI A=B", "ZR=QI|A=B"},
        TextRow{"OtherLetters", "\xc3\x9f\xc3\xa9 1", "\xc3\x9f\xc3\x89|1"}),
    nameOf);

TEST(FreeToFixed, LinesBehindEachOtherKeepTheirPlaces)
{
    const FixedCards cards = fixedFromFree(u"ID X\r\n\nBA 1\n");
    ASSERT_EQ(cards.rows.size(), 4) << "the text's last LF opens one more line";
    EXPECT_EQ(cards.rows[1], QStringList(""));
    EXPECT_EQ(cards.rows[2], (QStringList{"BA", "1"}));
    EXPECT_EQ(cards.columns, 12);
    EXPECT_FALSE(cards.overflow);
}

TEST(FreeToFixed, FieldsBehindTheTenthOverflowAndWidenTheGrid)
{
    EXPECT_FALSE(fixedFromFree(u"PC 1 2 3 4 5 6 7 8 9 10").overflow);
    const FixedCards trailing = fixedFromFree(u"PC 1 2 3 4 5 6 7 8 9 10 ");
    EXPECT_TRUE(trailing.overflow) << "a delimiter behind the tenth field counts";
    EXPECT_EQ(trailing.columns, 13);
    const FixedCards thirteen = fixedFromFree(u"PC 1 2 3 4 5 6 7 8 9 10 11 12 13");
    EXPECT_TRUE(thirteen.overflow);
    EXPECT_EQ(thirteen.columns, 15);
    EXPECT_EQ(thirteen.rows.constFirst().last(), "13");
    const FixedCards cut = fixedFromFree(QString("KM" + QString(90, u'x')));
    EXPECT_FALSE(cut.overflow) << "a text card has no delimiters to check";
    EXPECT_EQ(cut.columns, 13);
    EXPECT_EQ(cut.cutRows, QList<int>{1});
}

TEST(FreeToFixed, AnEndlessLineStopsWideningTheGridAndLosesNothing)
{
    const QString line = "PC" + QString(5000, u',') + "x";
    const FixedCards cards = fixedFromFree(line);
    EXPECT_EQ(cards.columns, kLastFreeColumn + 1);
    EXPECT_EQ(cards.rows.constFirst().join(u','), line);
    EXPECT_EQ(cards.joinedRows, QList<int>{1});
    EXPECT_TRUE(fixedFromFree("PC" + QString(kLastFreeColumn - 1, u',')).joinedRows.isEmpty());
}

TEST(FreeToFixed, TellsWhatHec1WillReadOtherwise)
{
    const FixedCards cards = fixedFromFree(u"*F REE\nKK A1 WEST SLOPE\nKK  POOL\nBF-2.5 1\nZW A=RIV B=GAGE\n"
                                           u"ZW A=RIV\n*FIX\nBA 1\nZZ");
    ASSERT_EQ(cards.stations.size(), 2);
    EXPECT_EQ(cards.stations[0].given, "A1");
    EXPECT_EQ(cards.stations[0].read, "A1 WE");
    EXPECT_EQ(cards.stations[1].read, cards.stations[1].given);
    EXPECT_EQ(cards.longIdRows, QList<int>{4});
    EXPECT_EQ(cards.dssRows, QList<int>{5});
    EXPECT_EQ(cards.formatRows, (QList<int>{1, 7}));
    EXPECT_EQ(cards.fixRows, QList<int>{7});
    const QString remarks = remarksOn(cards).join(u'\n');
    EXPECT_TRUE(remarks.contains("A1 WE (row 2, not A1); POOL")) << remarks.toStdString();
    EXPECT_TRUE(remarksOn(fixedFromFree(u"ID X\nBA 1\nZZ")).isEmpty());
}

TEST(FreeToFixed, AFreeDeckGetsTheFieldsThatHec1WouldRead)
{
    const auto bytes = readFile(QStringLiteral(KALVO_SOURCE_DIR "/tests/decks/freefmt.dat"));
    ASSERT_TRUE(bytes);
    const QString text = freeTextOf(*bytes);
    EXPECT_TRUE(fixedFromFree(text).overflow) << "the fixed tail behind *FIX is parted at its blanks too";
    const FixedCards cards = fixedFromFree(text.left(text.indexOf(QStringLiteral("*F IX"))));
    EXPECT_FALSE(cards.overflow);
    EXPECT_EQ(cards.rows[4].join(u'|'), "IT|10|01OCT99|0000|200");
    EXPECT_EQ(cards.rows[11].join(u'|'), "BF|3|-0.10|1.04");
    EXPECT_EQ(cards.rows[17].join(u'|'), "PC|0.9519|0.9588|0.9653|0.9717|0.9777|0.9836|0.9892|0.9947|1.0000");
    EXPECT_EQ(cards.rows[28].join(u'|'), "KO|0||||21");
}

// -- Writing the translation -----------------------------------------------------------------------------------------

std::string written(const char* rows)
{
    auto grid = gridOf("");
    grid.setCols(15);
    grid.setRows(20);
    putCells(grid, 1, 1, rows);
    return writeFixedCards(grid).bytes.toStdString();
}
std::string padded(const char* card, size_t width = 80)
{
    std::string line(card);
    line.resize(width, ' ');
    return line + "\r\n";
}

TEST(WriteFixedCards, PadsDataCardsAndLeavesTextCardsAsTheyStand)
{
    EXPECT_EQ(written("BA|1.65"), padded("BA  1.65"));
    EXPECT_EQ(written("KK| A1| WEST"), padded("KK    A1    WEST"));
    EXPECT_EQ(written("ID| A STU|DY"), "ID A STUDY\r\n");
    EXPECT_EQ(written("* |a comm|ent"), "* a comment\r\n") << "every ID with a star, the plain comment too";
    EXPECT_EQ(written("ZW|A=RIV|B=GAGE"), "ZWA=RIVB=GAGE\r\n");
}

TEST(WriteFixedCards, AWideRowWidensNoOther)
{
    EXPECT_EQ(written("PC|1||||||||||11\nBA|2"),
              padded("PC     1", 80).substr(0, 80) + "      11\r\n" + padded("BA     2"));
}

TEST(WriteFixedCards, StopsAtTheFirstZzAndAtTheLastCard)
{
    EXPECT_EQ(written("BA|1\nZZ\nBA|2"), padded("BA     1") + padded("ZZ"));
    EXPECT_EQ(written("BA|1\n\nUD|2"), padded("BA     1") + padded("") + padded("UD     2"));
    EXPECT_EQ(written(""), "");
}

TEST(WriteFixedCards, ALongIdEndsTheTextAndIsNamed)
{
    auto grid = gridOf("\n|BA|1\n|BF-2.5|1\n|ZZ\n|BA1|behind the end");
    const DeckBytes deck = writeFixedCards(grid);
    EXPECT_EQ(deck.longIdRow, 2);
    grid.setTextMatrix(2, 1, "BF");
    EXPECT_EQ(writeFixedCards(grid).longIdRow, 0);
}

// -- Fixed to free ---------------------------------------------------------------------------------------------------

TEST(FixedToFree, JoinsTheTrimmedCellsByOneBlank)
{
    auto grid = gridOf("||1\n1|KK|  SUB1|  UPPER\n2|KO|     0||    21\n3|  \n4|ZZ");
    grid.setCols(12);
    EXPECT_EQ(delimitedText(grid), "KK SUB1 UPPER        \r\n"
                                   "KO 0  21       \r\n"
                                   "          \r\n"
                                   "ZZ          \r\n");
    grid.setTextMatrix(3, 1, "");
    EXPECT_EQ(delimitedText(grid), std::nullopt);
}

class DeckThereAndBack : public testing::TestWithParam<std::string>
{
};

/// Data fields come back as they were, text cards with the same letters in the same order.
TEST_P(DeckThereAndBack, KeepsEveryFieldAndEveryLetter)
{
    const auto bytes = readFile(QStringLiteral(KALVO_SOURCE_DIR "/tests/decks/") + QString::fromStdString(GetParam()));
    ASSERT_TRUE(bytes);
    ScriptedServices services;
    StatusPanels panels;
    Deck deck(services, panels);
    const QStringList lines = linesOf(*bytes);
    deck.setCards(lines);
    deck.Grid1.setRows(static_cast<int>(lines.size()) + 1);
    const auto text = delimitedText(deck.Grid1);
    ASSERT_TRUE(text);

    for (const QString& free : {withLf(*text), freeTextOf(text->toLatin1())}) {
        const FixedCards cards = fixedFromFree(free);
        ASSERT_GE(cards.rows.size(), lines.size());
        EXPECT_FALSE(cards.overflow);
        EXPECT_TRUE(cards.longIdRows.isEmpty());
        for (int row = 1; row < deck.Grid1.rows(); ++row) {
            QStringList was = deck.Grid1.rowTexts(row, 1);
            QStringList now = cards.rows[row - 1];
            if (isCutByColumns(deck.id(row))) {
                static const QRegularExpression blanks(QStringLiteral(" "));
                EXPECT_EQ(now.join(QString()).remove(blanks), was.join(QString()).remove(blanks)) << row;
                continue;
            }
            for (QString& cell : was)
                cell = Trim(cell);
            now.resize(was.size());
            EXPECT_EQ(now.join(u'|'), was.join(u'|')) << row;
        }
    }
}

std::vector<std::string> fixedDecks()
{
    std::vector<std::string> names;
    for (const QString& name : QDir(QStringLiteral(KALVO_SOURCE_DIR "/tests/decks")).entryList({"*.dat"}, QDir::Files))
        if (name != u"freefmt.dat") // its lines are no fixed cards
            names.push_back(name.toStdString());
    return names;
}
INSTANTIATE_TEST_SUITE_P(, DeckThereAndBack, testing::ValuesIn(fixedDecks()),
                         [](const testing::TestParamInfo<std::string>& row) {
                             return row.param.substr(0, row.param.find('.'));
                         });

} // namespace
} // namespace kalvo
