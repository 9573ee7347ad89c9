// SPDX-License-Identifier: GPL-3.0-or-later
#include "deck/Deck.h"

#include "FakeEditBox.h"
#include "tests/support/GridText.h"
#include "tests/support/ScriptedServices.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace kalvo {
namespace {

struct DeckTest : testing::Test
{
    ScriptedServices services;
    StatusPanels panels;
    Deck deck{services, panels};

    void load(const QStringList& lines)
    {
        deck.setCards(lines);
        deck.newlines();
    }
    std::string cells(int bottom) const { return gridText(deck.Grid1, 1, 0, bottom, 3); }
};

TEST_F(DeckTest, NewDeckHasTheStandardLayout)
{
    EXPECT_EQ(deck.Grid1.rows(), 201);
    EXPECT_EQ(deck.Grid1.cols(), 12);
    EXPECT_EQ(gridText(deck.Grid1, 0, 0, 1, 11), "||1|2|3|4|5|6|7|8|9|10\n1|||||||||||");
    EXPECT_EQ(deck.Grid1.textMatrix(200, 0), "200");
    EXPECT_EQ(deck.Grid1.rowHeight(200), 320);
    EXPECT_EQ(deck.Grid1.colWidth(0), 4 * 120);
    EXPECT_EQ(deck.Grid1.colWidth(1), 3 * 120);
    EXPECT_EQ(deck.Grid1.colWidth(2), 7 * 120);
    EXPECT_EQ(deck.Grid1.colWidth(11), 8 * 120);
    EXPECT_EQ(deck.Grid1.colAlignment(0), 0);
    EXPECT_EQ(deck.Grid1.colAlignment(11), 6);
    deck.Grid1.setRows(203);
    EXPECT_EQ(deck.Grid1.rowHeight(202), 320) << "rows that grow by themselves look like the others";
}

struct Slice
{
    const char* name;
    const char* line;
    int column;
    const char* cell;
};

class Slices : public testing::TestWithParam<Slice>
{
};

TEST_P(Slices, KeepTheirBlanks)
{
    EXPECT_EQ(Deck::getrecnums(QString::fromLatin1(GetParam().line), GetParam().column), GetParam().cell);
}

constexpr auto kRuler = "KKffffff22222222333333334444444455555555666666667777777788888888999999990000000081";

INSTANTIATE_TEST_SUITE_P(, Slices,
                         testing::Values(Slice{"Id", kRuler, 1, "KK"}, Slice{"FieldOne", kRuler, 2, "ffffff"},
                                         Slice{"FieldTwo", kRuler, 3, "22222222"},
                                         Slice{"FieldTenStopsAt80", kRuler, 11, "00000000"},
                                         Slice{"ShortId", "Z", 1, "Z"}, Slice{"Partial", "KK  SUB", 2, "  SUB"},
                                         Slice{"PastTheEnd", "KK  SUB", 3, ""}, Slice{"EmptyLine", "", 1, ""}),
                         [](const auto& row) { return row.param.name; });

TEST_F(DeckTest, LoadHasAtLeastTwentyRows)
{
    for (const auto& [lines, rows] : {std::pair{0, 20}, {18, 20}, {19, 20}, {20, 21}}) {
        load(QStringList(lines, QStringLiteral("KK  A")));
        EXPECT_EQ(deck.Grid1.rows(), rows) << lines << " lines";
    }
}

TEST_F(DeckTest, ALoadLeavesNothingOfTheCardsBefore)
{
    load(QStringList(30, QStringLiteral("PC 0.000   0.008   0.016")));
    load({"KK  A", "ZZ"});
    EXPECT_EQ(cells(3), "1|KK|  A|\n2|ZZ||\n3|||");
}

TEST_F(DeckTest, CommentRowsHaveNoLineNumber)
{
    load({"ID", "* note", "KK", "x*", "BA"});
    EXPECT_EQ(gridText(deck.Grid1, 1, 0, 5, 1), "1|ID\n|* \n2|KK\n|x*\n3|BA");
}

TEST_F(DeckTest, TrimmerTouchesOnlyTheIdsAndNotAllOfThem)
{
    load({" KK  A", "* x", "ZW", "  ", " *", "km x"});
    deck.TRIMMER();
    EXPECT_EQ(gridText(deck.Grid1, 1, 1, 6, 2), "K|K  A\n* |x\nZW|\n|\n*|\nkm| x");
}

TEST_F(DeckTest, EndCardIsFoundOnlyWhenExact)
{
    load({"KK", "zz", " Z"});
    EXPECT_EQ(deck.ISZZ(), 0);
    deck.Grid1.setTextMatrix(5, 1, "ZZ");
    EXPECT_EQ(deck.ISZZ(), 1);
}

// -- trimtozz --------------------------------------------------------------------------------------------------------

TEST_F(DeckTest, TrimDropsTheRowsBehindTheEndCardAndTellsWhatTheyHeld)
{
    load({"KK", "ZZ", "BA  1.50", "", "KM parked"});
    QStringList gone;
    QObject::connect(&deck, &Deck::cardsDropped, &deck, [&](const QStringList& cards) { gone = cards; });
    deck.Grid1.setCursor(5, 3);
    EXPECT_EQ(deck.trimtozz(), 17);
    EXPECT_EQ(deck.Grid1.rows(), 3);
    EXPECT_EQ(deck.Grid1.row(), 2);
    EXPECT_EQ(gone, (QStringList{"BA  1.50", "KM parked"}));
    EXPECT_EQ(panels.text(7), "2 card(s) behind the ZZ card were taken out of the grid");
    EXPECT_TRUE(deck.dataSaved);
}

TEST_F(DeckTest, TrimWithoutEndCardTellsItAndKeepsTheDeck)
{
    load({"KK", "BA"});
    services.dialogs.willAnswer(Button::Ok);
    EXPECT_EQ(deck.trimtozz(), -1);
    EXPECT_EQ(services.dialogs.texts(),
              QStringList{"No \"ZZ\" Card Found - Input Data Requires a ZZ (End) Card in the last line."});
    EXPECT_EQ(deck.Grid1.rows(), 20);
}

TEST_F(DeckTest, TrimTakesTheTextOfTheEditBoxFirst)
{
    load({"KK", "BA", "KM"});
    FakeEditBox box(deck);
    deck.Grid1.setCursor(2, 1);
    box.place();
    box.contents = "ZZ";
    deck.trimtozz();
    EXPECT_EQ(cells(2), "1|KK||\n2|ZZ||");
    EXPECT_TRUE(box.shown);
    EXPECT_EQ(box.contents, "ZZ");
}

// -- The editor ------------------------------------------------------------------------------------------------------

TEST_F(DeckTest, StoringTheBoxMarksTheDeckOnlyWhereTheTextDiffers)
{
    load({"KK  A", "BA     1"});
    FakeEditBox box(deck);
    int changes = 0;
    QObject::connect(&deck, &Deck::changed, &deck, [&] { ++changes; });
    deck.Grid1.setCursor(2, 2);
    box.place();
    EXPECT_EQ(box.contents, "1");
    deck.storeEditBox();
    EXPECT_EQ(deck.Grid1.textMatrix(2, 2), "     1") << "a visit is no edit";
    EXPECT_TRUE(deck.dataSaved);
    box.contents = "2";
    deck.storeEditBox();
    EXPECT_EQ(deck.Grid1.textMatrix(2, 2), "2");
    EXPECT_FALSE(deck.dataSaved);
    EXPECT_EQ(changes, 1);
}

TEST_F(DeckTest, StoringAnIdRenumbersAfterTheStore)
{
    load({"KK", "BA", "UD"});
    FakeEditBox box(deck);
    deck.Grid1.setCursor(2, 1);
    box.contents = "*";
    deck.storeEditBox();
    EXPECT_EQ(gridText(deck.Grid1, 1, 0, 3, 1), "1|KK\n|*\n2|UD");
}

TEST_F(DeckTest, NothingIsStoredWhileTheBoxIsHiddenOrLocked)
{
    load({"KK"});
    FakeEditBox box(deck);
    box.contents = "XX";
    box.shown = false;
    deck.storeEditBox();
    box.shown = true;
    deck.setEditorActive(false);
    deck.storeEditBox();
    EXPECT_EQ(deck.Grid1.textMatrix(1, 1), "KK");
}

TEST_F(DeckTest, TextCardsKeepTheirLeadingBlanksInTheEditor)
{
    load({"KM  note", "ID  name", "*D  x", "KK  STA", "ZW  A=1"});
    EXPECT_EQ(deck.editText(1, 2), "  note");
    EXPECT_EQ(deck.editText(2, 2), "  name");
    EXPECT_EQ(deck.editText(3, 2), "  x");
    EXPECT_EQ(deck.editText(4, 2), "STA");
    EXPECT_EQ(deck.editText(5, 2), "A=1");
}

TEST_F(DeckTest, BulkWorkGivesBackLockAndBoxAlsoWhenTheWorkThrows)
{
    FakeEditBox box(deck);
    const int before = box.placed;
    const auto work = [&] {
        const Deck::BulkWork outer(deck);
        const Deck::BulkWork inner(deck);
        EXPECT_FALSE(deck.isEditorActive());
        EXPECT_FALSE(box.shown);
        throw std::runtime_error("half way");
    };
    EXPECT_THROW(work(), std::runtime_error);
    EXPECT_TRUE(deck.isEditorActive());
    EXPECT_TRUE(box.shown);
    EXPECT_EQ(box.placed, before + 1);
}

// -- Heights, widths, places -----------------------------------------------------------------------------------------

TEST_F(DeckTest, RowsGetTheHeightOfTheirLargestFontButHiddenOnesStayHidden)
{
    load({"KK", "BA", "UD"});
    deck.Grid1.setRowHeight(2, 10);
    deck.Grid1.setCursor(3, 4);
    deck.Grid1.setCellFontSize(16);
    deck.default_Row();
    EXPECT_EQ(deck.Grid1.rowHeight(1), 322); // 8.25 x 39 = 321.75
    EXPECT_EQ(deck.Grid1.rowHeight(2), 10);
    EXPECT_EQ(deck.Grid1.rowHeight(3), 624);
}

TEST_F(DeckTest, ColumnsGetTheWidthOfTheirWidestTextButNeverLessThanTheStandard)
{
    load({"KK", "PC 0.000       1"});
    deck.Grid1.setTextMatrix(2, 3, "123456789012"); // 12 x 120 = 1440 twips
    deck.Grid1.setColWidth(0, 777);
    deck.default_Col();
    EXPECT_EQ(deck.Grid1.colWidth(0), 777) << "line numbers are no text of the deck";
    EXPECT_EQ(deck.Grid1.colWidth(3), 2087); // 8.25 x (1440 + 66) x 0.15 x 1.12 = 2087.3
    EXPECT_EQ(deck.Grid1.colWidth(4), 8 * 120);
}

TEST_F(DeckTest, TheRowUnderAPointCountsFromTheTopRowAndPassesHiddenRows)
{
    load(QStringList(30, QStringLiteral("KK")));
    deck.setrowheight();
    EXPECT_EQ(deck.whichRow(0), 1);
    EXPECT_EQ(deck.whichRow(319), 1);
    EXPECT_EQ(deck.whichRow(320), 2);
    EXPECT_EQ(deck.whichRow(1000000), 30);
    deck.Grid1.setRowHeight(2, 10);
    EXPECT_EQ(deck.whichRow(340), 3);
    deck.Grid1.setTopRow(10);
    EXPECT_EQ(deck.whichRow(321), 11);
}

// -- Stations --------------------------------------------------------------------------------------------------------

struct StationCase
{
    const char* name;
    QString asked;
    int expected;
};

class Stations : public testing::TestWithParam<StationCase>
{
};

TEST_P(Stations, AreFoundByTheirFirstEightCharacters)
{
    ScriptedDialogs dialogs;
    EXPECT_EQ(iskk(GetParam().asked, {"  SUB1  ", "OUT"}, dialogs), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(, Stations,
                         testing::Values(StationCase{"Trimmed", " SUB1", 1}, StationCase{"Unknown", "SUB2", 0},
                                         StationCase{"OtherCase", "sub1", 0},
                                         StationCase{"EightMustMatch", "12345678", 0},
                                         StationCase{"NineAlwaysPass", "123456789", 1},
                                         StationCase{"LongIsCutAtItsBlank", "SUB1 with a long description", 1},
                                         StationCase{"CutAndUnknown", "SUB9 with a long description", 0},
                                         StationCase{"LongWithoutBlank", "ABCDEFGHIJKLMNOPQRSTUVWXYZ", 1},
                                         StationCase{"CutToNothing", " SUB1 with a long description", 0}),
                         [](const auto& row) { return row.param.name; });

TEST(Station, WithAnEmptyNameIsToldAlsoWithoutStations)
{
    ScriptedDialogs dialogs;
    dialogs.willAnswer(Button::Ok);
    EXPECT_EQ(iskk(QString(), {}, dialogs), 0);
    EXPECT_EQ(dialogs.texts(), QStringList{"Unknown Error in iskk - Restart Application!"});
    EXPECT_EQ(iskk("A LONG NAME", {}, dialogs), 0);
}

} // namespace
} // namespace kalvo
