// SPDX-License-Identifier: GPL-3.0-or-later
// Audit, comments, marks and looks as commands of a page, without a screen.
#include "FakeEditBox.h"
#include "deck/CardMarks.h"
#include "deck/CommentText.h"
#include "deck/Workspace.h"
#include "tests/support/GridText.h"
#include "tests/support/ScriptedServices.h"

#include <gtest/gtest.h>

#include <set>

namespace kalvo {
namespace {

/// A page whose deck holds cards from row 1 on.
struct Page : testing::Test
{
    ScriptedServices services;
    Screens screens;
    Workspace page{services, screens};
    FlexGrid& grid = page.deck.Grid1;
    std::mt19937 random{7};

    void fill(const char* cards)
    {
        grid.setRows(1);
        putCells(grid, 1, 1, cards);
        page.deck.newlines();
        page.deck.setEditorActive(true);
    }
    bool run(const char* name) { return page.commands.run(QString::fromLatin1(name)); }
    QString panel7() { return page.panels.text(7); }
    Rgb fore(int row, int col) { return grid.cellFormat(row, col).foreColor; }
    Rgb back(int row, int col) { return grid.cellFormat(row, col).backColor; }
    /// Column 1 of each row: which colour it has, told by a letter in order of appearance, '.' for none.
    std::string backs()
    {
        std::string text;
        std::vector<Rgb> met;
        for (int row = 1; row < grid.rows(); ++row) {
            const Rgb color = back(row, 1);
            if (std::ranges::find(met, color) == met.end() && color != Rgb::None)
                met.push_back(color);
            text += color == Rgb::None ? '.' : static_cast<char>('a' + (std::ranges::find(met, color) - met.begin()));
        }
        return text;
    }
};

constexpr auto kDeck = "ID|x\nKK|A\nBA|1\nKK|B\nBA|2\nUD|1\nZZ\nKK|C";

// -- Audit -----------------------------------------------------------------------------------------------------------

struct Audited : Page
{
    void expect(const char* lines)
    {
        std::string text;
        for (const AuditFinding& finding : page.audit.result().findings)
            text += finding.text.toStdString() + "\n";
        EXPECT_EQ(text, lines);
    }
};

TEST_F(Audited, TrimsToZZStoresTheBoxAndNumbersBeforeItLooks)
{
    fill("KK|A\nBA|1\n**|a\nKO|||||21\nZZ\nBA|parked");
    grid.setTextMatrix(4, 0, "99");
    grid.setCursor(2, 1);
    FakeEditBox box(page.deck);
    box.contents = "bad";
    const int levels = page.undo.store().undoCount();
    ASSERT_TRUE(run("auditdata"));
    expect("Wrong Number of Card ID Letters - Line 2\n"
           "Lower Case or Incorrect Character(s) bad in row 2\nLower Case or Incorrect Character(s) bad in row 2\n");
    EXPECT_EQ(grid.textMatrix(4, 0), "3");
    EXPECT_EQ(grid.rows(), 6);
    EXPECT_EQ(page.undo.store().undoCount(), levels) << "an audit is no edit";
    EXPECT_TRUE(panel7().startsWith("1 card(s) behind the ZZ card were taken out of the grid"))
        << panel7().toStdString();
    EXPECT_EQ(page.audit.numKKCards, 1);
    EXPECT_EQ(grid.row(), 1);
    EXPECT_EQ(grid.col(), 1);
    EXPECT_EQ(box.contents, "KK");
    EXPECT_EQ(page.panels.text(3), "KK Card ") << "the panels tell the cell that the cursor was put on";
}

TEST_F(Audited, EndsEarlyWithTheCursorWhereItWas)
{
    fill("KK\n|a\n|b\n|c\n|d\nZZ");
    grid.setCursor(3, 2);
    services.dialogs.willAnswer(Button::Ok);
    run("auditdata");
    EXPECT_EQ(services.dialogs.texts(), QStringList("Too many Data Rows Missing Data to continue!"));
    EXPECT_EQ(grid.row(), 3);
    EXPECT_EQ(page.audit.result().findings.size(), 3u);

    fill("KK\nBA");
    grid.setCursor(2, 2);
    services.dialogs.forget();
    services.dialogs.willAnswer(Button::Ok);
    run("auditdata");
    EXPECT_EQ(services.dialogs.texts(),
              QStringList("No \"ZZ\" Card Found - Input Data Requires a ZZ (End) Card in the last line."));
    expect("ZZ Card is Missing\n");
    EXPECT_EQ(grid.row(), 2);
}

TEST_F(Audited, ChangesTheDeckOnlyWhereItCutsCards)
{
    fill("KK|A\nZZ\n|");
    page.deck.dataSaved = true;
    run("auditdata");
    EXPECT_TRUE(page.deck.dataSaved);
    page.deck.setEditorActive(false); // or the deck would grow under the cursor
    fill("KK|A\nZZ\nBA|parked");
    run("auditdata");
    EXPECT_FALSE(page.deck.dataSaved) << "the file still holds the card that went";
}

TEST_F(Audited, GoesToTheCellOfALine)
{
    fill("KK|A\nKO|||||21\nBA|1234567\nZZ");
    run("auditdata");
    page.audit.showFinding(0);
    EXPECT_EQ(grid.row(), 3);
    EXPECT_EQ(grid.col(), 2);
    grid.setRowHeight(3, 10);
    page.audit.showFinding(0);
    EXPECT_EQ(panel7(), "That row is hidden: Unhide All Rows (Ctrl+U) shows it");
    page.deck.setEditorActive(false); // or the deck would grow under the cursor
    grid.setRows(2);
    page.audit.showFinding(0);
    EXPECT_EQ(panel7(), "That row is no longer in the deck");
    page.audit.showFinding(-1);
    page.audit.showFinding(7);
    EXPECT_EQ(grid.row(), 1);
}

// -- Comments --------------------------------------------------------------------------------------------------------

using Comments = Page;

TEST_F(Comments, TextsOfCardsAndBack)
{
    fill("KM|START|  WITH\nKK|NAME|A|B");
    EXPECT_EQ(commentText(grid, 1), "START  WITH") << "joined as they stand";
    EXPECT_EQ(commentText(grid, 2), "AB") << "without the station's name";
    EXPECT_EQ(longestCommentText("KM"), 78);
    EXPECT_EQ(longestCommentText("KK"), 72);
    const QString digits = QString("0123456789").repeated(9);
    EXPECT_EQ(commentCells("KM", digits).join('|'),
              "012345|67890123|45678901|23456789|01234567|89012345|67890123|45678901|23456789|01234567");
    EXPECT_EQ(commentCells("KK", digits.left(20)).join('|'), "01234567|89012345|6789||||||");
}

TEST_F(Comments, SavingIsOneLevelAndClearsTheCellsBehindTheText)
{
    fill("KK|SUB1|old|text|here\nZZ");
    grid.setCursor(1, 3);
    FakeEditBox box(page.deck);
    page.deck.dataSaved = true;
    page.marks.saveComment(1, "NEW TEXT OF");
    EXPECT_EQ(gridText(grid, 1, 1, 1, 5), "KK|SUB1|NEW TEXT| OF|");
    EXPECT_FALSE(page.deck.dataSaved);
    EXPECT_EQ(box.contents, "NEW TEXT");
    run("mnu_undo");
    EXPECT_EQ(gridText(grid, 1, 1, 1, 5), "KK|SUB1|old|text|here");
    page.marks.saveComment(99, "x");
    page.marks.saveComment(0, "x");
    EXPECT_EQ(grid.textMatrix(0, 2), "1");
}

// -- Marks -----------------------------------------------------------------------------------------------------------

using Marks = Page;

TEST_F(Marks, HiliteKKStopsAtZZAndMarksIdAndName)
{
    fill(kDeck);
    grid.select(3, 2, 5, 4);
    run("hiliteKK");
    for (const int row : {2, 4}) {
        EXPECT_EQ(fore(row, 1), rgb(252, 22, 22));
        EXPECT_EQ(fore(row, 2), rgb(252, 22, 22));
        EXPECT_TRUE(grid.cellFormat(row, 2).bold);
        EXPECT_EQ(fore(row, 3), Rgb::None);
    }
    EXPECT_EQ(fore(3, 1), Rgb::None);
    EXPECT_EQ(fore(8, 1), Rgb::None);
    EXPECT_EQ(grid.selection(), (FlexGrid::Area{3, 2, 5, 4}));
}

TEST_F(Marks, GroupsReachToTheNextKKOrZZ)
{
    fill(kDeck);
    EXPECT_EQ(kkGroups(grid), (std::vector<CardGroup>{{2, 3}, {4, 6}}));
    fill("KK|A\nBA\nKK|B\nBA");
    EXPECT_EQ(kkGroups(grid), (std::vector<CardGroup>{{1, 2}, {3, 4}})) << "without ZZ the last one ends with the grid";
}

TEST_F(Marks, EachGroupGetsAPaleColourOfItsOwnAndAnotherOneNextTime)
{
    fill(kDeck);
    grid.setCursor(3, 4);
    run("mnu_identkkgroups");
    EXPECT_TRUE(page.deck.kkGroupsShown);
    EXPECT_EQ(backs(), ".aabbb..");
    EXPECT_EQ(back(3, 11), back(2, 1));
    EXPECT_EQ(grid.row(), 3);
    EXPECT_EQ(grid.col(), 4);
    const Rgb first = back(2, 1);
    run("mnu_identkkgroups");
    EXPECT_NE(back(2, 1), first);
    run("mnu_restore");
    EXPECT_FALSE(page.deck.kkGroupsShown);
    EXPECT_EQ(backs(), "........");
}

TEST_F(Marks, GroupColoursAreInTheirRange)
{
    std::set<int> met;
    for (int i = 0; i < 5000; ++i) {
        const Rgb color = groupColor(random);
        ASSERT_TRUE(isGroupColor(color));
        for (const int shift : {16, 8, 0})
            met.insert(static_cast<int>((static_cast<quint32>(color) >> shift) & 255));
    }
    EXPECT_EQ(*met.begin(), 205);
    EXPECT_EQ(*met.rbegin(), 254);
    EXPECT_FALSE(isGroupColor(rgb(255, 255, 255)));
    EXPECT_FALSE(isGroupColor(rgb(204, 230, 230)));
    EXPECT_FALSE(isGroupColor(Rgb::None));
}

TEST_F(Marks, MovedCardsKeepTheirColoursAndHighlights)
{
    fill(kDeck);
    run("mnu_identkkgroups");
    CellFormat own = grid.cellFormat(3, 2);
    own.foreColor = rgb(1, 2, 3);
    grid.setCellFormat(3, 2, own);
    const Rgb groupA = back(2, 1), groupB = back(4, 1);

    grid.insertRow(4);
    grid.setTextMatrix(4, 1, "LS");
    grid.setTextMatrix(8, 1, "UD"); // the deck goes on behind the former ZZ card
    run("recolorKKGroups");
    EXPECT_EQ(backs(), ".aaabbbbc");
    EXPECT_EQ(back(2, 1), groupA);
    EXPECT_EQ(back(5, 1), groupB);
    EXPECT_EQ(fore(3, 2), rgb(1, 2, 3));

    grid.setTextMatrix(2, 1, "KM");
    run("recolorKKGroups");
    EXPECT_EQ(backs(), "....aaaab") << "rows of no group lose the colour";
    EXPECT_EQ(fore(3, 2), rgb(1, 2, 3));
}

TEST_F(Marks, CardsOfOneKindAreMarkedBehindZZToo)
{
    fill(kDeck);
    identifyCards(page.deck, "KK");
    std::string marked;
    for (int row = 1; row < grid.rows(); ++row)
        marked += fore(row, 1) == rgb(22, 22, 242) && fore(row, 11) == fore(row, 1) ? 'x' : '.';
    EXPECT_EQ(marked, ".x.x...x");
    EXPECT_TRUE(grid.cellFormat(8, 11).bold);
    identifyCards(page.deck, "");
    EXPECT_EQ(fore(1, 1), Rgb::None);
}

TEST_F(Marks, ListsEachIdOnceByItsCodes)
{
    fill("UD\nba\nBA\n  \n\nBA\n*D");
    EXPECT_EQ(cardIds(grid).join('|'), "  |*D|BA|UD|ba");
    EXPECT_EQ(cardIdAsTyped("b"), "B");
    EXPECT_EQ(cardIdAsTyped("bax"), "BA");
}

TEST_F(Marks, TheKOCardGoesInAboveTheCursorAndTellsItsStation)
{
    fill("KK| SUB1\nBA|1\nKK|SUB2\nZZ\n|");
    FakeEditBox box(page.deck);
    grid.setCursor(2, 6);
    const int levels = page.undo.store().undoCount();
    ASSERT_TRUE(run("mnu_addkocard"));
    EXPECT_EQ(gridText(grid, 1, 1, 3, 6), "KK| SUB1||||\nKO|||||21\nBA|1||||");
    EXPECT_EQ(page.undo.store().undoCount(), levels + 1);
    EXPECT_EQ(box.contents, "21") << "what the box shows is stored again when its cell is left";
    EXPECT_EQ(panel7(), "KO card added to station SUB1");
    EXPECT_EQ(page.panels.text(3), "KO Card ");
    grid.setCursor(4, 1);
    run("mnu_addkocard");
    EXPECT_EQ(panel7(), "KO card added to station SUB1") << "above a KK card it belongs to the station before";
    EXPECT_EQ(grid.textMatrix(5, 1), "KK");
    grid.setCursor(1, 1);
    run("mnu_addkocard");
    EXPECT_EQ(panel7(), "The KO card stands ahead of the first KK card: it belongs to no station");
    EXPECT_FALSE(page.deck.dataSaved);
}

// -- Looks -----------------------------------------------------------------------------------------------------------

using Looks = Page;

TEST_F(Looks, RestoreTakesColoursAndBoldAndLeavesFontsAndTexts)
{
    fill(kDeck);
    grid.select(2, 2, 3, 5);
    CellFormat own{.foreColor = rgb(1, 2, 3), .backColor = rgb(4, 5, 6), .fontName = "Courier", .fontSize = 12};
    own.bold = own.italic = true;
    grid.setCellFormat(0, 3, own);
    grid.setCellFormat(5, 11, own);
    GridColors colors;
    colors.backColor = rgb(9, 9, 9);
    grid.setColors(colors);
    const std::string before = gridText(grid);
    page.deck.dataSaved = true;
    run("mnu_restore");
    const CellFormat plain{.fontName = "Courier", .fontSize = 12, .italic = true};
    EXPECT_EQ(grid.cellFormat(0, 3), plain);
    EXPECT_EQ(grid.cellFormat(5, 11), plain);
    EXPECT_EQ(grid.colors(), GridColors());
    EXPECT_EQ(grid.selection(), (FlexGrid::Area{2, 2, 3, 5}));
    EXPECT_EQ(grid.fillStyle(), FlexGrid::FillStyle::Single);
    EXPECT_EQ(gridText(grid), before);
    EXPECT_TRUE(page.deck.dataSaved) << "a look is no edit";
}

TEST_F(Looks, TheGridFontGoesToEveryCellAndRowsAndColumnsFollow)
{
    fill("KK|SUB1|A VERY LONG TEXT FOR ONE FIELD\nBA|1\nZZ");
    grid.setRowHeight(2, 10);
    grid.setCursor(1, 2);
    CellFormat chosen{.fontName = "Courier", .fontSize = 20};
    chosen.bold = chosen.underline = true;
    services.dialogs.willAnswer(chosen, [&] {
        EXPECT_TRUE(page.deck.isEditorActive()) << "nothing is suspended while the dialog stands open";
    });
    run("fontmnu");
    EXPECT_EQ(services.dialogs.last().font.fontSize, 8.25);
    EXPECT_EQ(grid.cellFormat(0, 0), chosen);
    EXPECT_EQ(grid.cellFormat(3, 11), chosen);
    EXPECT_EQ(grid.fontName(), "Courier");
    EXPECT_EQ(grid.fontSize(), 20);
    EXPECT_EQ(grid.rowHeight(1), 540) << "27 twips a point";
    EXPECT_EQ(grid.rowHeight(2), 10) << "hidden rows stay hidden";
    EXPECT_EQ(grid.colWidth(3), 10998) << "20 x (30 x 120 + 66) x 0.15";
    EXPECT_GE(grid.colWidth(11), 8 * 120) << "an empty column stays wide enough to type into";
    EXPECT_EQ(grid.row(), 1);

    run("newdefaultmnu");
    EXPECT_EQ(grid.cellFormat(3, 11), CellFormat());
    EXPECT_EQ(grid.fontSize(), 8.25);
    EXPECT_EQ(grid.rowHeight(2), 320) << "hidden rows come back";
    EXPECT_EQ(grid.colWidth(3), 8 * 120);
    EXPECT_EQ(grid.colAlignment(5), FlexGrid::RightTop);

    services.dialogs.willCancel();
    run("fontmnu");
    EXPECT_EQ(grid.cellFormat(3, 11), CellFormat());
    EXPECT_TRUE(page.deck.isEditorActive());
}

TEST_F(Looks, ResetTakesLooksAndLeavesDeckAndUndo)
{
    fill(kDeck);
    page.undo.NewUndoAdd();
    run("mnu_identkkgroups");
    grid.setFont("Courier", 14);
    run("mnu_reset");
    EXPECT_FALSE(grid.hasCellFormats());
    EXPECT_EQ(grid.fontSize(), 8.25);
    EXPECT_EQ(page.undo.store().undoCount(), 2);
    EXPECT_EQ(grid.textMatrix(8, 2), "C");
}

TEST_F(Looks, OnlyColoursThatWerePickedAreApplied)
{
    fill(kDeck);
    grid.setCursor(2, 2);
    std::vector<std::string> told;
    QObject::connect(&page.looks, &LookCommands::formColorsChanged, [&](Rgb, Rgb) { told.push_back("form"); });
    QObject::connect(&page.looks, &LookCommands::editTextColorWanted, [&](Rgb) { told.push_back("edit"); });
    QObject::connect(&page.looks, &LookCommands::grapherColorChanged, [&](Rgb) { told.push_back("grapher"); });
    ItemColors colors = page.looks.itemColors();
    for (const Rgb color : colors)
        EXPECT_EQ(color, Rgb::None);
    page.looks.applyItems(colors);
    EXPECT_FALSE(grid.hasCellFormats());
    EXPECT_TRUE(told.empty());

    for (int i = 0; i < kColorItems; ++i)
        colors[static_cast<size_t>(i)] = rgb(10 + i, 0, 0);
    FakeEditBox box(page.deck);
    box.contents = "typed";
    page.looks.applyItems(colors);
    EXPECT_EQ(grid.textMatrix(2, 2), "typed") << "beside the open screen, and not yet stored";
    EXPECT_EQ(told, (std::vector<std::string>{"form", "form", "edit", "grapher"}));
    EXPECT_EQ(grid.colors().backColor, rgb(10, 0, 0));
    EXPECT_EQ(grid.colors().backColorBkg, rgb(11, 0, 0));
    EXPECT_EQ(grid.colors().backColorFixed, rgb(12, 0, 0));
    EXPECT_EQ(grid.colors().backColorSel, rgb(13, 0, 0));
    EXPECT_EQ(fore(2, 2), rgb(14, 0, 0));
    EXPECT_EQ(back(2, 2), rgb(15, 0, 0));
    EXPECT_EQ(back(2, 3), Rgb::None) << "of the current cell alone";
    EXPECT_EQ(grid.colors().foreColor, rgb(18, 0, 0));
    EXPECT_EQ(grid.colors().foreColorFixed, rgb(19, 0, 0));
    EXPECT_EQ(grid.colors().foreColorSel, rgb(20, 0, 0));
    EXPECT_EQ(page.looks.grapherColor(), rgb(22, 0, 0));
    ItemColors shown = page.looks.itemColors();
    shown[static_cast<size_t>(ColorItem::EditText)] = rgb(21, 0, 0); // follows its cell
    EXPECT_EQ(shown, colors);
}

} // namespace
} // namespace kalvo
