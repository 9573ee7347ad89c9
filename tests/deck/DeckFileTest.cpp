// SPDX-License-Identifier: GPL-3.0-or-later
#include "deck/DeckFile.h"

#include "deck/Deck.h"
#include "platform/text.h"
#include "tests/support/GridText.h"
#include "tests/support/ScriptedServices.h"

#include <QDir>

#include <gtest/gtest.h>

namespace kalvo {
namespace {

/// A deck in a grid, without a screen.
struct Loaded
{
    ScriptedServices services;
    StatusPanels panels;
    Deck deck{services, panels};

    explicit Loaded(const QStringList& lines)
    {
        deck.setCards(lines);
        deck.newlines();
        deck.Grid1.setRows(static_cast<int>(lines.size()) + 1);
    }
    std::string written() { return writeDeck(deck.Grid1).bytes.toStdString(); }
};

std::string padded(const char* card)
{
    std::string line(card);
    line.resize(80, ' ');
    return line + "\r\n";
}

// -- Reading ---------------------------------------------------------------------------------------------------------

struct BadFile
{
    const char* name;
    QByteArray bytes;
    std::optional<DeckRefusal> refusal;
    int line;
};

class Files : public testing::TestWithParam<BadFile>
{
};

TEST_P(Files, AreTakenOrRefusedAtTheRightLine)
{
    const DeckLines deck = readDeck(GetParam().bytes);
    EXPECT_EQ(deck.refusal, GetParam().refusal);
    EXPECT_EQ(deck.refusedLine, GetParam().line);
    EXPECT_TRUE(!deck.refusal || deck.lines.isEmpty());
}

INSTANTIATE_TEST_SUITE_P(
    , Files,
    testing::Values(BadFile{"Empty", "", {}, 0}, BadFile{"EightyTwo", QByteArray(82, 'x'), {}, 0},
                    BadFile{"EightyThree", QByteArray(83, 'x'), DeckRefusal::LineTooLong, 1},
                    BadFile{"BlanksCount", "ID\n" + QByteArray(83, ' '), DeckRefusal::LineTooLong, 2},
                    BadFile{"LongBehindALoneReturn", "ID\r" + QByteArray(90, 'x'), DeckRefusal::LineTooLong, 2},
                    BadFile{"AccentInLineOne", "ID caf\xe9\n", DeckRefusal::NotText, 1},
                    BadFile{"AccentInLineTwo", "ID\nID \x80\n", DeckRefusal::NotText, 2},
                    BadFile{"AccentInLineThree", "ID\nID\nID \xe9\n", {}, 0},
                    BadFile{"LengthIsTestedFirst", QByteArray(83, '\xe9'), DeckRefusal::LineTooLong, 1},
                    BadFile{"NulBytes", QByteArray("ID\0\0\nKK", 7), {}, 0}),
    [](const auto& row) { return row.param.name; });

TEST(Reading, TakesAHundredThousandLines)
{
    QByteArray bytes;
    for (int i = 0; i < 100000; ++i)
        bytes += "PC 0.000   0.008   0.016\r\n";
    EXPECT_EQ(readDeck(bytes).lines.size(), 100000);
}

TEST(TextTest, AllowsCodes9To127)
{
    EXPECT_TRUE(isTextFile(""));
    EXPECT_TRUE(isTextFile(QByteArray("\t\r\n ~\x7f", 6)));
    EXPECT_FALSE(isTextFile(QByteArray("ID\x08", 3)));
    EXPECT_FALSE(isTextFile(QByteArray("ID\0", 3)));
    EXPECT_FALSE(isTextFile(QByteArray("ID\x80", 3)));
}

// -- Writing ---------------------------------------------------------------------------------------------------------

struct Card
{
    const char* name;
    const char* cells; ///< from the ID on, as gridOf reads them
    std::string line;
};

class Cards : public testing::TestWithParam<Card>
{
};

TEST_P(Cards, AreWritten)
{
    Loaded loaded({QString()});
    putCells(loaded.deck.Grid1, 1, 1, GetParam().cells);
    EXPECT_EQ(loaded.written(), GetParam().line);
}

INSTANTIATE_TEST_SUITE_P(
    , Cards,
    testing::Values(Card{"Empty", "", padded("")},
                    Card{"NumbersToTheRight", "BA|1.5|2", padded("").replace(0, 16, "BA   1.5       2")},
                    Card{"StationToo", "KK|SUB1|THE OUT", padded("").replace(0, 16, "KK  SUB1 THE OUT")},
                    Card{"OneLetterId", "K|1", padded("").replace(0, 8, " K     1")},
                    Card{"EndCard", "ZZ", padded("ZZ")},
                    Card{"LongNumberPushes", "BA|1|123456789|2", padded("BA     1123456789       2").insert(80, " ")},
                    Card{"LongFirstField", "BA|1234567|2", padded("BA1234567       2").insert(80, " ")},
                    Card{"CommentCardCloses", "KM| a||b", "KM ab\r\n"}, Card{"Identification", "ID|x", "IDx\r\n"},
                    Card{"DssRecord", "ZW| A=1|B", "ZW A=1B\r\n"}, Card{"DssRead", "ZR|=QO", "ZR=QO\r\n"},
                    Card{"Diagram", "*D|IAGRAM", "*DIAGRAM\r\n"}, Card{"StarInTheBack", "x*|1", "x*1\r\n"},
                    Card{"StarAlonePads", "*|note", padded(" *  note")},
                    Card{"StarBlankPads", "* |  full|  short", padded("*   full   short")},
                    Card{"LowerCaseIsNoTextCard", "km|a", padded("km     a")},
                    Card{"LongStarIdIsWritten", "*text in the id|1", "*text in the id1\r\n"},
                    Card{"LineEndInACell", "KM|a\rb", "KMa b\r\n"}),
    [](const auto& row) { return row.param.name; });

TEST(Writing, StopsAheadOfALongId)
{
    Loaded loaded({"KK  A", "BA", "ZZ"});
    loaded.deck.Grid1.setTextMatrix(2, 1, "BAX");
    const DeckBytes deck = writeDeck(loaded.deck.Grid1);
    EXPECT_EQ(deck.longIdRow, 2);
    EXPECT_EQ(deck.bytes.toStdString(), padded("KK     A"));
}

TEST(Writing, TellsTheRowsThatNeedCare)
{
    Loaded loaded({"KK", "BA", "KM", "KM"});
    FlexGrid& grid = loaded.deck.Grid1;
    grid.setTextMatrix(2, 3, "123456789");
    grid.setTextMatrix(3, 2, QString(90, u'x'));
    grid.setTextMatrix(4, 2, QStringLiteral("90\u00b0 \u0394"));
    const DeckBytes deck = writeDeck(grid);
    EXPECT_EQ(deck.pushedRows, QList<int>{2});
    EXPECT_EQ(deck.overlongRows, QList<int>{3});
    EXPECT_EQ(deck.oddRows, QList<int>{4});
    EXPECT_TRUE(deck.bytes.endsWith("KM90\xb0 ?\r\n")) << "a degree sign is a byte, a Greek letter is none";
}

// -- Round trips -----------------------------------------------------------------------------------------------------

QByteArray savedOnce(const QByteArray& bytes)
{
    Loaded loaded(readDeck(bytes).lines);
    loaded.deck.TRIMMER();
    return writeDeck(loaded.deck.Grid1).bytes;
}

class SampleDecks : public testing::TestWithParam<std::string>
{
protected:
    static QByteArray bytes()
    {
        const auto read =
            readFile(QStringLiteral(KALVO_SOURCE_DIR "/tests/decks/") + QString::fromStdString(GetParam()));
        EXPECT_TRUE(read && !read->isEmpty());
        return read.value_or(QByteArray());
    }
};

std::vector<std::string> sampleDecks()
{
    std::vector<std::string> names;
    for (const QString& name : QDir(QStringLiteral(KALVO_SOURCE_DIR "/tests/decks")).entryList({"*.dat"}, QDir::Files))
        names.push_back(name.toStdString());
    return names;
}

std::string deckName(const testing::TestParamInfo<std::string>& row)
{
    return row.param.substr(0, row.param.find('.'));
}

TEST_P(SampleDecks, SavingASavedDeckChangesNothing)
{
    const QByteArray once = savedOnce(bytes());
    EXPECT_EQ(savedOnce(once), once);
}

TEST_P(SampleDecks, FieldsComeBackAsTheyWereRead)
{
    const DeckLines before = readDeck(bytes());
    ASSERT_FALSE(before.refusal);
    const DeckLines after = readDeck(savedOnce(bytes()));
    ASSERT_EQ(after.lines.size(), before.lines.size());
    for (int i = 0; i < before.lines.size(); ++i) {
        for (int column = 1; column <= 11; ++column) {
            const QString was = Deck::getrecnums(before.lines[i], column);
            const QString is = Deck::getrecnums(after.lines[i], column);
            EXPECT_EQ(Trim(is), Trim(was)) << "line " << i + 1 << ", column " << column;
            EXPECT_TRUE(was.size() < (column == 2 ? 6 : column == 1 ? 2 : 8) || is == was) << "a full slice stays";
        }
    }
}

TEST_P(SampleDecks, EffectOfSavingIsWhatASaveDoes)
{
    const DeckLines before = readDeck(bytes());
    Loaded loaded(before.lines);
    const SaveEffect effect = effectOfSaving(before.lines, loaded.deck.Grid1);
    const DeckLines after = readDeck(savedOnce(bytes()));
    int changed = 0;
    for (int i = 0; i < before.lines.size(); ++i)
        changed += RTrim(before.lines[i]) != RTrim(after.lines.value(i)) ? 1 : 0;
    EXPECT_EQ(effect.changedLines, changed);
    EXPECT_EQ(effect.droppedLines, 0);
}

INSTANTIATE_TEST_SUITE_P(, SampleDecks, testing::ValuesIn(sampleDecks()), deckName);

TEST(SampleDeckList, IsNotEmpty)
{
    EXPECT_GE(sampleDecks().size(), 17u);
}

TEST(EffectOfSaving, CountsWhatTheUserWouldFindChanged)
{
    const QStringList lines{
        "*", "KK  STA  A DESCRIPTION", "BA   1.5", "ID" + QString(78, u'x') + "ab", "BA   1.5   ", "ZZ", "KK parked",
        "  "};
    Loaded loaded(lines);
    const SaveEffect effect = effectOfSaving(lines, loaded.deck.Grid1);
    EXPECT_EQ(effect.changedLines, 3) << "the bare star, the description's last slice, the columns past 80";
    EXPECT_EQ(effect.droppedLines, 1);
}

TEST(CanonicalDeck, OfAGridIsThatOfItsLines)
{
    const QStringList lines{" K  A", "BA   1.5", "", "ZZ", "", ""};
    Loaded loaded(lines);
    EXPECT_EQ(canonicalDeck(loaded.deck.Grid1), canonicalDeck(lines));
    EXPECT_TRUE(canonicalDeck(lines).endsWith("\r\n"));
    EXPECT_EQ(canonicalDeck(lines).count('\n'), 4);
    EXPECT_TRUE(canonicalDeck(QStringList{"", "  "}).isEmpty());
}

// -- Free format -----------------------------------------------------------------------------------------------------

TEST(FreeFormatRows, AreThoseWhoseNumbersTheWriterWouldSplit)
{
    const QStringList lines{"ID x",
                            "*FREE",
                            "IT 10,01OCT99,0000,200",
                            "BA 1.65",
                            "RM 1 0.45 0.2",
                            "KK A1 WEST S",
                            "KM RM 1 0.45 0.2",
                            "*FIX",
                            "RM 1 0.45 0.2",
                            "ZZ"};
    Loaded loaded(lines);
    const FreeFormat found = freeFormatOf(loaded.deck.Grid1);
    EXPECT_EQ(found.freeRow, 2);
    EXPECT_EQ(found.brokenRows, (QList<int>{3, 5}));
    EXPECT_EQ(lineNumbers(loaded.deck.Grid1, found.brokenRows), "2, 4") << "the numbers that HEC-1 prints";
}

TEST(FreeFormatRows, AreNoneInAFixedDeck)
{
    Loaded loaded({"ID x", "*FIX", "RM 1 0.45 0.2", "ZZ", "*FREE"});
    EXPECT_EQ(freeFormatOf(loaded.deck.Grid1).freeRow, 0);
}

TEST(LineNumbers, NameCommentRowsByTheLineAboveAndStopAfterTwelve)
{
    Loaded loaded(QStringList{"* x", "KK", "* y"} + QStringList(20, QStringLiteral("BA")));
    EXPECT_EQ(lineNumbers(loaded.deck.Grid1, {1, 2, 3}), "after 0, 1, after 1");
    QList<int> many;
    for (int row = 4; row < 19; ++row)
        many.append(row);
    EXPECT_EQ(lineNumbers(loaded.deck.Grid1, many), "2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13 and 3 more");
}

} // namespace
} // namespace kalvo
