// SPDX-License-Identifier: GPL-3.0-or-later
#include "deck/EditCommands.h"

#include "tests/deck/EditPage.h"

namespace kalvo {
namespace {

using EditCommandsTest = EditPage;

// -- Copy, cut, clear ------------------------------------------------------------------------------------------------

TEST_F(EditCommandsTest, CopyGivesCrLfAndCutCrAlone)
{
    cards("KK|A|x\nBA|1|y\nZZ");
    drag(2, 3, 1, 2); // dragged upward
    page.edit.menuOpening(EditCommands::Menu::Edit);
    ASSERT_TRUE(run("editcopy"));
    EXPECT_EQ(services.clipboard.raw(), "A\tx\r\n1\ty");
    EXPECT_TRUE(deck.dataSaved);
    EXPECT_TRUE(enabled("editpaste"));
    EXPECT_TRUE(enabled("mnupopupareapaste"));
    ASSERT_TRUE(run("editcut"));
    EXPECT_EQ(services.clipboard.raw(), "A\tx\r1\ty");
    EXPECT_EQ(text(), "KK\nBA\nZZ");
    EXPECT_EQ(box.contents, "");
    EXPECT_EQ(deck.undoCount, 2);
    undoTo(1);
    EXPECT_EQ(text(), "KK|A|x\nBA|1|y\nZZ");
}

TEST_F(EditCommandsTest, ClearingLeavesTheClipboardAloneAndTheLinesAreCountedAgain)
{
    cards("*|note\nBA|1\nZZ");
    services.clipboard.setText("kept");
    drag(1, 1, 1, 2);
    hide({1});
    page.edit.menuOpening(EditCommands::Menu::Edit);
    run("editclear");
    EXPECT_EQ(text(), "\nBA|1\nZZ");
    EXPECT_EQ(lineNumbers(), "1,2,3");
    EXPECT_EQ(services.clipboard.raw(), "kept");
    EXPECT_EQ(panel7(), "1 hidden row emptied");
    EXPECT_FALSE(enabled("editpaste"));
    page.edit.menuOpening(EditCommands::Menu::Edit);
    EXPECT_TRUE(enabled("editpaste"));
    run("mnu_clearClipboard");
    EXPECT_FALSE(services.clipboard.hasText());
    EXPECT_FALSE(enabled("editpaste"));
}

TEST_F(EditCommandsTest, MenusOfferOnlyWhatHasAnEffect)
{
    const auto offered = [&] {
        std::string all;
        for (const char* name : {"editcopy", "editcut", "editclear", "editpaste", "pasteover", "mnu_clearClipboard"})
            all += enabled(name) ? '1' : '0';
        all += ' ';
        for (const char* name :
             {"mnupopupcopy", "mnupopupcut", "mnupopupclear", "mnupopuppasteinsert", "mnupopupareapaste"})
            all += enabled(name) ? '1' : '0';
        return all;
    };
    const auto opened = [&](EditCommands::Menu menu) {
        page.edit.menuOpening(menu);
        return offered();
    };
    cards("KK|A\n|\nZZ");
    page.edit.mnu_clearClipboard();
    page.commands.setEnabled("mnupopuppasteinsert", false);
    at(2, 2);
    EXPECT_EQ(opened(EditCommands::Menu::Edit), "000000 00000") << "an empty cell, an empty clipboard";
    at(1, 2);
    EXPECT_EQ(opened(EditCommands::Menu::Edit), "111000 10000") << "the clipboard judges the pop-up's Cut and Clear";
    EXPECT_EQ(opened(EditCommands::Menu::Popup), "111000 11100") << "until the pop-up itself opens";
    services.clipboard.setText("x");
    EXPECT_EQ(opened(EditCommands::Menu::Edit), "111111 11101");
    EXPECT_EQ(opened(EditCommands::Menu::Popup), "111111 11111");
    drag(2, 2, 2, 3);
    EXPECT_EQ(opened(EditCommands::Menu::Popup), "111111 11111") << "two empty cells are a block";
    at(2, 2);
    EXPECT_EQ(opened(EditCommands::Menu::Popup), "000111 00011");
}

TEST_F(EditCommandsTest, AToolButtonNeitherEmptiesTheClipboardNorPastesNothing)
{
    cards("KK|A\n|\nZZ");
    services.clipboard.setText("kept");
    at(2, 2);
    for (const char* name : {"editcopy", "editcut", "editclear", "editpaste", "pasteover"})
        page.commands.setEnabled(name, true);
    run("editcopy");
    run("editcut");
    run("editclear");
    EXPECT_EQ(services.clipboard.raw(), "kept");
    services.clipboard.clear();
    run("editpaste");
    run("pasteover");
    EXPECT_EQ(text(), "KK|A\n\nZZ");
    EXPECT_EQ(deck.undoCount, 1);
}

// -- Inserting paste -------------------------------------------------------------------------------------------------

struct Paste
{
    const char* name;
    const char* clipboard;
    FlexGrid::Area dragged;
    const char* becomes;
    const char* told = "";
};

void PrintTo(const Paste& paste, std::ostream* out)
{
    *out << paste.name;
}

struct EditCommandsInsert : EditPage, testing::WithParamInterface<Paste>
{
};

TEST_P(EditCommandsInsert, PutsTheRowsAboveTheCursor)
{
    const Paste& paste = GetParam();
    cards("A|1|2|3\nB|4|5|6\nZZ");
    page.panels.set(7, "");
    services.clipboard.setText(paste.clipboard);
    drag(paste.dragged.top, paste.dragged.left, paste.dragged.bottom, paste.dragged.right);
    page.edit.editpaste();
    EXPECT_EQ(text(), paste.becomes);
    EXPECT_EQ(panel7(), paste.told);
    EXPECT_EQ(grid.row(), paste.dragged.top);
    EXPECT_EQ(grid.colSel(), 11);
    EXPECT_EQ(deck.undoCount, 3);
    undoTo(1);
    EXPECT_EQ(text(), "A|1|2|3\nB|4|5|6\nZZ");
}

INSTANTIATE_TEST_SUITE_P(
    , EditCommandsInsert,
    testing::Values(Paste{"OneCell", "X", {2, 1, 2, 1}, "A|1|2|3\nX\nB|4|5|6\nZZ"},
                    Paste{"RowsByCrLf", "X\tx\r\nY\ty", {2, 1, 2, 1}, "A|1|2|3\nX|x\nY|y\nB|4|5|6\nZZ"},
                    Paste{"RowsByCr", "X\tx\rY\ty", {2, 1, 2, 1}, "A|1|2|3\nX|x\nY|y\nB|4|5|6\nZZ"},
                    Paste{"RowsByLfOfOtherPrograms", "X\nY\n", {2, 1, 2, 1}, "A|1|2|3\nX\nY\nB|4|5|6\nZZ"},
                    Paste{"EndOfTheLastLine", "X\r\nY\r\n", {1, 1, 1, 1}, "X\nY\nA|1|2|3\nB|4|5|6\nZZ"},
                    Paste{"CrAtTheEndIsOneMoreRow", "X\r", {1, 1, 1, 1}, "X\n\nA|1|2|3\nB|4|5|6\nZZ"},
                    Paste{"RaggedRows", "X\r\n\ta\tb\r\nY", {2, 1, 2, 1}, "A|1|2|3\nX\n|a|b\nY\nB|4|5|6\nZZ"},
                    Paste{"AtTheCursorOfASelectionDraggedUpward", "X\ty", {3, 3, 1, 1}, "A|1|2|3\nB|4|5|6\n||X|y\nZZ"},
                    Paste{"PastTheLastColumn",
                          "X\ty\tz\r\nX",
                          {2, 10, 2, 10},
                          "A|1|2|3\n|||||||||X|y\n|||||||||X\nB|4|5|6\nZZ",
                          "Paste: 1 cell did not fit"},
                    Paste{"CharactersNoFileTakes",
                          "caf\xc3\xa9",
                          {2, 1, 2, 1},
                          "A|1|2|3\ncaf\xc3\xa9\nB|4|5|6\nZZ",
                          "Paste: 1 character that a deck file cannot hold"},
                    Paste{"ALoneLineFeed", "\n", {2, 1, 2, 1}, "A|1|2|3\n\nB|4|5|6\nZZ"}),
    [](const auto& row) { return row.param.name; });

/// A clipboard that hands out its text as it is.
struct PlainClipboard : Clipboard
{
    QString contents;
    bool hasText() const override { return true; }
    QString text() const override { return contents; }
    void setText(const QString& text) override { contents = text; }
    void setPicture(const QByteArray&) override { contents.clear(); }
    void clear() override { contents.clear(); }
};

TEST(EditCommandsPlain, ABareLineFeedAtTheEndTakesACharacterAlong)
{
    ScriptedServices scripted;
    PlainClipboard clipboard;
    Services services{scripted.dialogs, clipboard, scripted.clock, scripted.process, scripted.folder, scripted.measure};
    Screens screens;
    Workspace page(services, screens);
    for (const auto& [given, taken] : {std::pair{"XYZ\n", "XY"}, {"\n", ""}, {"XYZ\r\n", "XYZ"}}) {
        clipboard.contents = QString::fromLatin1(given);
        page.edit.editpaste();
        EXPECT_EQ(page.deck.id(1), taken);
        page.edit.pasteover();
        EXPECT_EQ(page.deck.id(1), taken);
    }
}

TEST_F(EditCommandsTest, TheSecondLevelOfAPasteIsTheDeckWithTheEmptyRows)
{
    cards("A\nB\nZZ");
    services.clipboard.setText("X\r\nY");
    at(2, 1);
    run("editpaste");
    page.undo.NewUndo();
    EXPECT_EQ(text(), "A\n\n\nB\nZZ");
    EXPECT_EQ(lineNumbers(), "1,2,3,4,5");
    page.undo.NewUndo();
    EXPECT_EQ(text(), "A\nB\nZZ");
}

TEST_F(EditCommandsTest, PastedRowsAreSeenAndHiddenOnesStayHidden)
{
    cards("A\nB\nC\nD\nE\nZZ");
    hide({3, 4, 5});
    services.clipboard.setText("X\r\nY");
    for (const int row : {3, 5}) {
        cards("A\nB\nC\nD\nE\nZZ");
        deck.setrowheight();
        hide({3, 4, 5});
        at(row, 1);
        run("editpaste");
        EXPECT_EQ(visibility(), row == 3 ? "vvvvhhhv" : "vvhhvvhv");
    }
}

// -- Area paste ------------------------------------------------------------------------------------------------------

struct EditCommandsOver : EditPage, testing::WithParamInterface<Paste>
{
};

TEST_P(EditCommandsOver, LaysTheBlockOverTheCells)
{
    const Paste& paste = GetParam();
    cards("A|1|2|3\nB|4|5|6\nC|7|8|9\nZZ");
    page.panels.set(7, "");
    services.clipboard.setText(paste.clipboard);
    drag(paste.dragged.top, paste.dragged.left, paste.dragged.bottom, paste.dragged.right);
    page.edit.pasteover();
    EXPECT_EQ(text(), paste.becomes);
    EXPECT_EQ(panel7(), paste.told);
    EXPECT_EQ(grid.row(), paste.dragged.top);
    EXPECT_EQ(grid.rowSel(), paste.dragged.top + (grid.rows() - 5) - 1) << "the block stays selected";
    EXPECT_EQ(deck.undoCount, 2);
    undoTo(1);
    EXPECT_EQ(text(), "A|1|2|3\nB|4|5|6\nC|7|8|9\nZZ");
}

INSTANTIATE_TEST_SUITE_P(
    , EditCommandsOver,
    testing::Values(
        Paste{"GrowsByItsHeightWhereverItLands", "x\ry\rz", {1, 2, 1, 2}, "A|x|2|3\nB|y|5|6\nC|z|8|9\nZZ\n\n\n"},
        Paste{"OneCell", "x", {2, 3, 2, 3}, "A|1|2|3\nB|4|x|6\nC|7|8|9\nZZ\n"},
        Paste{"RunsOffTheEnd", "x\r\ny", {4, 2, 4, 2}, "A|1|2|3\nB|4|5|6\nC|7|8|9\nZZ|x\n|y\n"},
        Paste{"AtTheCursorOfASelectionDraggedUpward", "x\ty", {3, 3, 1, 1}, "A|1|2|3\nB|4|5|6\nC|7|x|y\nZZ\n"},
        // Two TABs in two rows: 2 wide. Three: 2.5 is 2. Five: 3.5 is 4.
        Paste{"RaggedAverage",
              "a\tb\tc\rd",
              {1, 2, 1, 2},
              "A|a|b|3\nB|d|5|6\nC|7|8|9\nZZ\n\n",
              "Paste: 1 cell did not fit"},
        Paste{"HalfGoesToEvenDown",
              "a\tb\tc\rd\te",
              {1, 2, 1, 2},
              "A|a|b|3\nB|d|e|6\nC|7|8|9\nZZ\n\n",
              "Paste: 1 cell did not fit"},
        Paste{"HalfGoesToEvenUp", "a\tb\tc\td\rd\te\tf", {1, 1, 1, 1}, "a|b|c|d\nd|e|f|6\nC|7|8|9\nZZ\n\n"},
        Paste{"ACardWithCrKeepsSixFields",
              "a\tb\tc\td\te\tf\tg\th\ti\tj\tk\r",
              {1, 1, 1, 1},
              "a|b|c|d|e|f\n|4|5|6\nC|7|8|9\nZZ\n\n",
              "Paste: 5 cells did not fit"},
        Paste{"WiderThanTheGrid",
              "a\tb\tc",
              {2, 11, 2, 11},
              "A|1|2|3\nB|4|5|6|||||||a\nC|7|8|9\nZZ\n",
              "Paste: 2 cells did not fit"}),
    [](const auto& row) { return row.param.name; });

TEST_F(EditCommandsTest, AnAreaPasteIntoHiddenRowsShowsThemAndSaysSo)
{
    cards("A\nB\nC\nZZ");
    hide({2, 3});
    services.clipboard.setText("x\ry\rz");
    run("pasteover");
    EXPECT_EQ(visibility(), "vvvvvvv");
    EXPECT_EQ(panel7(), "Paste: 2 hidden rows written and shown");
    hide({1});
    at(1, 2);
    run("pasteover");
    EXPECT_EQ(visibility().substr(0, 4), "hhhv");
    EXPECT_EQ(panel7(), "The paste began in a hidden row: 3 rows hidden");
}

TEST_F(EditCommandsTest, LargePastesAreAskedAboutFromTheirOwnSizesOn)
{
    struct Size
    {
        void (EditCommands::*paste)();
        int characters;
    };
    for (const Size& size : {Size{&EditCommands::editpaste, 50000}, Size{&EditCommands::pasteover, 2000}}) {
        cards("A\nZZ");
        deck.undoCount = 1;
        services.dialogs.forget();
        services.clipboard.setText(QString(size.characters, 'x'));
        (page.edit.*size.paste)();
        EXPECT_TRUE(services.dialogs.shown().empty());
        cards("A\nZZ");
        services.clipboard.setText(QString(size.characters + 1, 'x'));
        services.dialogs.willAnswer(Button::Cancel);
        const int before = deck.undoCount;
        (page.edit.*size.paste)();
        EXPECT_EQ(text(), "A\nZZ");
        EXPECT_EQ(deck.undoCount, before);
        const auto& asked = services.dialogs.last();
        EXPECT_EQ(asked.text, "You are Pasting a very large amount of Data! \r\rDo You Want to Continue?");
        EXPECT_EQ(asked.buttons, Buttons::OkCancel);
        EXPECT_EQ(asked.defaultButton, Button::Cancel);
        EXPECT_EQ(asked.icon, Icon::Warning);
        services.dialogs.willAnswer(Button::Ok);
        (page.edit.*size.paste)();
        EXPECT_EQ(deck.id(1).size(), size.characters + 1);
    }
}

// -- Find and Replace ------------------------------------------------------------------------------------------------

TEST_F(EditCommandsTest, ReplacesEveryPlaceOfTheSelectionAndNothingElse)
{
    cards("BA|aba|b\nba|a\tb|B\nBA|b|b");
    drag(2, 3, 1, 2);
    page.edit.findReplace.setFind("b");
    page.edit.findReplace.setReplacement("xyz");
    ASSERT_TRUE(run("FR_ReplaceAll"));
    EXPECT_EQ(text(), "BA|axyza|xyz\nba|a\txyz|B\nBA|b|b") << "a TAB within a cell parts nothing";
    EXPECT_EQ(panel7(), "3 places replaced");
    EXPECT_EQ(cursor(), "2,3:1,2");
    EXPECT_EQ(box.contents, "B");
    undoTo(1);
    EXPECT_EQ(text(), "BA|aba|b\nba|a\tb|B\nBA|b|b");
    page.edit.findReplace.setFind("B");
    EXPECT_EQ(page.edit.findReplace.replacement(), "") << "it was meant for the text of before";
}

TEST_F(EditCommandsTest, ReplacingAnIdCountsTheLinesAgainAndNamesHiddenRows)
{
    cards("*|n\nBA|1\nZZ");
    hide({1});
    drag(1, 1, 3, 1);
    page.edit.findReplace.setFind("*");
    page.edit.findReplace.setReplacement("KM");
    run("FR_ReplaceAll");
    EXPECT_EQ(lineNumbers(), "1,2,3");
    EXPECT_EQ(panel7(), "1 place replaced; 1 hidden row searched");
}

TEST_F(EditCommandsTest, AReplacementAcrossCellsIsAskedAbout)
{
    cards("A|1|2\nB|3|4");
    drag(1, 1, 2, 3);
    page.edit.findReplace.setFind("1\t2");
    page.edit.findReplace.setReplacement("9");
    services.dialogs.willAnswer(Button::Cancel);
    run("FR_ReplaceAll");
    EXPECT_EQ(text(), "A|1|2\nB|3|4");
    EXPECT_EQ(deck.undoCount, 1);
    services.dialogs.willAnswer(Button::Ok);
    run("FR_ReplaceAll");
    EXPECT_EQ(text(), "A|9|2\nB|3|4") << "a cell that the text does not reach keeps what it holds";
}

// -- Go To -----------------------------------------------------------------------------------------------------------

TEST_F(EditCommandsTest, GoToWalksFromHitToHitAndBeginsAnewOnlyAfterTheLast)
{
    cards("KK|SUB1\nBA|sub2|Sub\nQI||||||||||subs\nXX|sub\nYY\nUU\nVV\nZZ");
    GoTo& goTo = page.edit.goTo;
    at(1, 2);
    goTo.setText("SUB");
    EXPECT_EQ(goTo.startRow() + "," + goTo.startColumn(), "1,2");
    std::string walk;
    for (int i = 0; i < 7; ++i) {
        const bool hit = goTo.search();
        walk += (hit ? cursor() : std::string("none")) + " " + goTo.startRow().toStdString() + "," +
                goTo.startColumn().toStdString() + "\n";
    }
    EXPECT_EQ(walk, "1,2:1,2 1,3\n2,2:2,2 2,3\n2,3:2,3 2,4\n3,11:3,11 4,1\n4,2:4,2 4,3\nnone 1,1\n1,2:1,2 1,3\n");
    EXPECT_EQ(box.contents, "SUB1");
}

TEST_F(EditCommandsTest, GoToTakesWhatStandsInItsFieldsForWhatItCan)
{
    cards("A|x\nB|x\nC|x\nD\nE\nF\nZZ");
    GoTo& goTo = page.edit.goTo;
    EXPECT_FALSE(goTo.search()) << "nothing to look for";
    goTo.setText("x");
    struct Start
    {
        const char *row, *column;
        int found;
    };
    for (const Start& start : {Start{"2", "1", 2},
                               {"2", "3", 3},
                               {"0", "0", 1},
                               {"-5", "abc", 1},
                               {"", "", 1},
                               {"2e9", "1", 0},
                               {"1e300", "1e300", 0},
                               {"1", "99999999999", 2}}) {
        at(5, 1);
        goTo.setStart(start.row, start.column);
        EXPECT_EQ(goTo.search(), start.found > 0) << start.row << " " << start.column;
        EXPECT_EQ(grid.row(), start.found > 0 ? start.found : 5) << start.row << " " << start.column;
    }
    hide({3});
    goTo.setStart("3", "1");
    EXPECT_TRUE(goTo.search());
    EXPECT_EQ(panel7(), "\"x\" stands in a hidden row");
}

} // namespace
} // namespace kalvo
