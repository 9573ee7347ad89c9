// SPDX-License-Identifier: GPL-3.0-or-later
// Import and free format over scripted services, without a screen.
#include "deck/ImportCommands.h"

#include "FakeEditBox.h"
#include "deck/MainMenu.h"
#include "tests/support/GridText.h"
#include "tests/support/ScriptedServices.h"

#include <gtest/gtest.h>

#include <map>

namespace kalvo {
namespace {

struct NamedScreen : Screen
{
    void showScreen() override { shown = true; }
    void hideScreen() override { shown = false; }
    bool isScreenVisible() const override { return shown; }
    bool shown = false;
};

struct ImportTest : testing::Test
{
    ScriptedServices services;
    StatusPanels panels;
    Commands commands;
    Screens screens;
    Deck deck{services, panels};
    FakeEditBox box{deck};
    RecentFiles recent{services};
    ImportCommands imports{deck, services, commands, screens, recent};
    ImportDeck& viewer = *imports.importDeck();
    FreeFormatDesk& desk = *imports.freeFormat();

    ImportTest()
    {
        for (const char* name : {"Form5", "Form7", "Form8", "Free"})
            screens.add(QString::fromLatin1(name), [] { return std::make_unique<NamedScreen>(); });
        for (const QString& name : pasteCommands()) {
            commands.add(name, [] {});
            commands.setEnabled(name, false);
        }
    }
    QStringList told() const { return services.dialogs.texts(); }
    bool pasteEnabled() const
    {
        const QStringList names = pasteCommands();
        return std::all_of(names.begin(), names.end(),
                           [this](const QString& name) { return commands.isEnabled(name); });
    }
    void import(const QByteArray& bytes)
    {
        services.dialogs.willAnswer(services.put("other.dat", bytes));
        imports.mnu_import();
    }
};

// -- Import ----------------------------------------------------------------------------------------------------------

TEST_F(ImportTest, FillsTheViewerWithAnotherDeck)
{
    services.dialogs.willAnswer(services.put("other.dat", "ID a\r\nKK  OUT1\r\nBA  1.65     2.5\r\nZZ\r\n"),
                                [this] { EXPECT_TRUE(imports.importing()); });
    EXPECT_TRUE(commands.run("mnu_import"));
    EXPECT_FALSE(imports.importing());
    EXPECT_EQ(gridText(viewer.Grid1, 0, 0, 4, 3), "0|1|2|3\n1|ID| a|\n2|KK|  OUT1|\n3|BA|  1.65|     2.5\n4|ZZ||");
    EXPECT_EQ(viewer.Grid1.rows(), 20);
    EXPECT_EQ(viewer.Grid1.cols(), 12);
    EXPECT_TRUE(screens.isVisible("Form5"));
    EXPECT_EQ(viewer.title(), "Import HEC-1 Data from " + services.path("other.dat"));
    const FileDialog& dialog = services.dialogs.shown().front().file;
    EXPECT_EQ(services.dialogs.shown().front().title, "IMPORT / OPEN HEC-1 DATA FILES");
    EXPECT_EQ(dialog.filter, "All Files (*.*)|*.*|DAT Files(*.dat)|*.dat|Text Files (*.txt)|*.txt");
    EXPECT_EQ(deck.id(1), "") << "the deck itself is not touched";
}

TEST_F(ImportTest, ManyLinesAllGetARow)
{
    QByteArray many;
    for (int i = 0; i < 24; ++i)
        many += "KM line\r\n";
    import(many + "ZZ\r\n");
    EXPECT_EQ(viewer.Grid1.rows(), 26);
    EXPECT_EQ(viewer.Grid1.textMatrix(25, 1), "ZZ");
    import("ZZ\r\n");
    EXPECT_EQ(gridText(viewer.Grid1, 1, 0, 2, 1), "1|ZZ\n2|") << "nothing of the larger file stays";
}

TEST_F(ImportTest, ColoursEveryStationUpToTheNextOrTheEnd)
{
    double draw = 0.0;
    ImportDeck coloured(services, [&draw] {
        const double now = draw;
        draw = now < 0.5 ? 0.5 : 0.9999;
        return now;
    });
    services.dialogs.willAnswer(services.put("k.dat", "ID\r\nKK  A\r\nBA\r\nKK  B\r\nZZ\r\nKM behind\r\n"));
    ASSERT_TRUE(coloured.import());
    const auto back = [&](int row, int col) { return coloured.Grid1.cellFormat(row, col).backColor; };
    EXPECT_EQ(back(1, 1), Rgb::None);
    EXPECT_EQ(back(2, 1), rgb(205, 230, 254));
    EXPECT_EQ(back(3, 11), rgb(205, 230, 254));
    EXPECT_EQ(back(4, 2), rgb(254, 254, 254));
    EXPECT_EQ(back(5, 1), Rgb::None);
    EXPECT_EQ(back(6, 1), Rgb::None) << "behind ZZ";
    EXPECT_EQ(coloured.Grid1.cellFormat(2, 11).foreColor, rgb(252, 22, 22));
    EXPECT_TRUE(coloured.Grid1.cellFormat(4, 1).bold);
    EXPECT_FALSE(coloured.Grid1.cellFormat(3, 1).bold);
    EXPECT_EQ(back(2, 0), Rgb::None);
}

TEST_F(ImportTest, ADeckWithoutZzIsColouredToItsEnd)
{
    import("KK\r\nBA\r\n");
    EXPECT_NE(viewer.Grid1.cellFormat(19, 11).backColor, Rgb::None);
}

TEST_F(ImportTest, CancelAndWrongFilesLeaveTheViewer)
{
    import("ID one\r\nZZ\r\n");
    services.dialogs.forget();
    services.dialogs.willCancel();
    imports.mnu_import();
    EXPECT_EQ(told().size(), 1);
    services.dialogs.willAnswer(services.path("gone.dat"));
    services.dialogs.willAnswer(Button::Ok);
    imports.mnu_import();
    EXPECT_EQ(told().last(), "The File: " + services.path("gone.dat") + " does not Exist!");
    services.dialogs.willAnswer(services.put("bad.dat", "ID\xc4\r\n"));
    services.dialogs.willAnswer(Button::Ok);
    imports.mnu_import();
    EXPECT_EQ(told().last(), "This file is Not Compatible with Kalvo!\r");
    EXPECT_EQ(services.dialogs.last().icon, Icon::Critical);
    EXPECT_EQ(services.dialogs.last().buttons, Buttons::Ok);
    EXPECT_EQ(viewer.Grid1.textMatrix(1, 1), "ID");
    EXPECT_FALSE(imports.importing());
}

TEST_F(ImportTest, LongLinesAreCutAndTold)
{
    import("KM" + QByteArray(90, 'x') + "\r\nZZ\r\n");
    EXPECT_EQ(viewer.Grid1.textMatrix(1, 11), "xxxxxxxx");
    EXPECT_TRUE(viewer.remark().startsWith("1 line(s) are longer than a card"));
    import("ZZ" + QByteArray(90, ' ') + "\r\n");
    EXPECT_EQ(viewer.remark(), "") << "blanks at the end are no text";
}

TEST_F(ImportTest, CopiesForTheMainScreenOfEveryPage)
{
    import("KK  A\r\nBA  1.65\r\nZZ\r\n");
    Commands cloneCommands;
    for (const QString& name : pasteCommands()) {
        cloneCommands.add(name, [] {});
        cloneCommands.setEnabled(name, false);
    }
    ImportCommands clone(deck, services, cloneCommands, screens, recent, &imports);
    viewer.Grid1.select(2, 2, 1, 1);
    viewer.editcopy();
    EXPECT_EQ(services.clipboard.raw(), "KK\t  A\r\nBA\t  1.65");
    EXPECT_TRUE(pasteEnabled());
    EXPECT_TRUE(cloneCommands.isEnabled("editpaste"));
}

TEST_F(ImportTest, AScreenThatGoesForgetsItsDeck)
{
    import("KK  A\r\nZZ\r\n");
    screens.unload("Form5");
    EXPECT_EQ(viewer.Grid1.textMatrix(1, 1), "");
    EXPECT_EQ(viewer.title(), " Import HEC-1 DATA");
}

TEST_F(ImportTest, HiddenEntriesDoNothing)
{
    for (const char* name : {"mnu_parser", "mnu_openfreeformat"}) {
        EXPECT_FALSE(commands.isShown(QString::fromLatin1(name)));
        EXPECT_TRUE(commands.run(QString::fromLatin1(name)));
    }
    EXPECT_TRUE(told().isEmpty());
    EXPECT_TRUE(screens.loaded().isEmpty());
}

// -- Free to fixed ---------------------------------------------------------------------------------------------------

TEST_F(ImportTest, OpensAFreeFileForTheEditor)
{
    services.dialogs.willAnswer(services.put("free.dat", "BA1.65  \r\nZZ\r\n"));
    EXPECT_EQ(desk.openFree(), "BA 1.65\nZZ");
    EXPECT_EQ(told().last(), "OPEN HEC-1 FREE FORM DATA FILES");
    services.dialogs.willAnswer(services.put("long.dat", QByteArray(40000, 'x')));
    services.dialogs.willAnswer(Button::Ok);
    EXPECT_EQ(desk.openFree(), std::nullopt);
    EXPECT_TRUE(told().last().contains("Its line 1 has 4000")) << told().last().toStdString();
}

TEST_F(ImportTest, PastesTheClipboardUnlessItHoldsNoText)
{
    services.clipboard.setText("BA1\r\nZZ\r\n");
    EXPECT_EQ(desk.pasteOverAll(), "BA1\nZZ\n");
    services.clipboard.clear();
    services.dialogs.willAnswer(Button::Ok);
    EXPECT_EQ(desk.pasteOverAll(), std::nullopt);
}

TEST_F(ImportTest, ConvertsIntoAStripedGridWithNumbersAround)
{
    desk.convert("ID x\nBA 1.65\nZZ");
    EXPECT_EQ(gridText(desk.Grid1, 0, 0, 3, 3), "0|1|2|3\n1|ID| x|\n2|BA|1.65|\n3|ZZ||");
    EXPECT_EQ(desk.Grid1.rows(), 20);
    EXPECT_EQ(desk.Grid1.cols(), 12);
    for (int column = 0; column < 12; ++column)
        EXPECT_EQ(desk.Grid1.cellFormat(19, column).backColor, column % 2 == 0 ? rgb(224, 248, 250) : Rgb::None);
    EXPECT_TRUE(screens.isVisible("Form7"));
    EXPECT_TRUE(told().isEmpty());
    desk.convert("BA 2");
    EXPECT_EQ(gridText(desk.Grid1, 1, 0, 2, 2), "1|BA|2\n2||");
    desk.convert("");
    EXPECT_EQ(desk.Grid1.textMatrix(1, 1), "BA") << "an empty text does nothing";
}

TEST_F(ImportTest, TellsOfFieldsBeyondTheColumnsAndOfLongIds)
{
    services.dialogs.willAnswer(Button::Ok, [this] { EXPECT_TRUE(screens.isVisible("Form7")); });
    services.dialogs.willAnswer(Button::Ok);
    desk.convert("BF-2.5 1 2 3 4 5 6 7 8 9 10 11");
    EXPECT_EQ(told().first(), "Some of the Data has been translated beyond the allowable columns!\r\r"
                              "Check the Number of Delimiters.");
    EXPECT_TRUE(told().last().startsWith("IDs of more than 2 characters, marked in the grid: 1, in row(s) 1."));
    EXPECT_EQ(desk.Grid1.cellFormat(1, 1).backColor, tintColor(EditBox::Tint::TooLong));
    EXPECT_EQ(desk.Grid1.cols(), 13);
}

struct CopyRow
{
    const char* name;
    int row, col, rowSel, colSel;
    const char* clip;
    bool trimmed;
};
class CopyTranslation : public ImportTest, public testing::WithParamInterface<CopyRow>
{
};
TEST_P(CopyTranslation, RunsForwardsAndEndsAtTheTenthField)
{
    services.dialogs.willAnswer(Button::Ok);
    desk.convert("PA 1 2 3 4 5 6 7 8 9 10 11\nPB 1 2");
    services.dialogs.forget();
    const CopyRow& drag = GetParam();
    if (drag.trimmed)
        services.dialogs.willAnswer(Button::Ok);
    desk.Grid1.select(drag.row, drag.col, drag.rowSel, drag.colSel);
    desk.copySelection();
    EXPECT_EQ(services.clipboard.raw(), drag.clip);
    EXPECT_TRUE(pasteEnabled());
    EXPECT_EQ(told(), drag.trimmed ? QStringList("The number of Columns in the selection has been trimmed to fit!\r")
                                   : QStringList());
}
INSTANTIATE_TEST_SUITE_P(, CopyTranslation,
                         testing::Values(CopyRow{"Forwards", 1, 1, 2, 2, "PA\t1\rPB\t1", false},
                                         CopyRow{"BothBackwards", 2, 2, 1, 1, "PA\t1\rPB\t1", false},
                                         CopyRow{"ColumnsBackwards", 1, 2, 2, 1, "PA\t1\rPB\t1", false},
                                         CopyRow{"TooWide", 1, 10, 1, 12, "9\t10", true},
                                         CopyRow{"TooWideBackwards", 2, 12, 1, 10, "9\t10\r\t", true},
                                         CopyRow{"BeyondAltogether", 1, 12, 1, 12, "10", true}),
                         [](const auto& row) { return row.param.name; });

TEST_F(ImportTest, SavesTheTranslationAndRemembersItsName)
{
    desk.convert("BA 1.65\nZZ\n");
    services.dialogs.willAnswer(services.path("fixed.dat"));
    desk.saveFixed();
    EXPECT_EQ(services.bytes("fixed.dat"), "BA  1.65" + QByteArray(72, ' ') + "\r\nZZ" + QByteArray(78, ' ') + "\r\n");
    EXPECT_TRUE(recent.caption(1).startsWith(services.path("fixed.dat")));
    const auto& asked = services.dialogs.last();
    EXPECT_EQ(asked.title, "Save As HEC-1 Input Data");
    EXPECT_EQ(asked.file.filter, "Data Files(*.dat)|*.dat|Text Files (*.txt)|*.txt");
    EXPECT_EQ(asked.file.defaultExtension, ".dat");
    EXPECT_TRUE(asked.file.overwritePrompt);
}

TEST_F(ImportTest, ASaveThatCannotBeWholeWritesNothing)
{
    services.dialogs.willAnswer(Button::Ok);
    desk.convert("BA 1\nBF-2.5\nZZ");
    services.put("mine.dat", "KK mine");
    services.dialogs.willAnswer(services.path("mine.dat"));
    services.dialogs.willAnswer(Button::Ok);
    desk.saveFixed();
    EXPECT_TRUE(told().last().startsWith("Unknown Error in Form7.savefile!")) << told().last().toStdString();
    EXPECT_EQ(services.bytes("mine.dat"), "KK mine");
    EXPECT_TRUE(recent.indexes().isEmpty());

    services.dialogs.willCancel();
    services.dialogs.willAnswer(Button::Ok);
    desk.saveFixed();
    EXPECT_EQ(told().last(), "Save As Cancelled:");

    desk.convert("BA 1\nZZ");
    services.dialogs.willAnswer(services.path("no such folder/x.dat"));
    services.dialogs.willAnswer(Button::Ok);
    desk.saveFixed();
    EXPECT_TRUE(told().last().contains("could not be written")) << told().last().toStdString();
    EXPECT_TRUE(recent.indexes().isEmpty());
}

TEST_F(ImportTest, SavesTheFreeTextWithCrLf)
{
    services.dialogs.willAnswer(services.path("f.dat"));
    desk.saveFree("BA 1\nZZ");
    EXPECT_EQ(services.bytes("f.dat"), "BA 1\r\nZZ");
    services.dialogs.willAnswer(services.path("g.dat"));
    services.dialogs.willAnswer(Button::Ok);
    desk.saveFree(QStringLiteral("KM \u4e2d"));
    EXPECT_EQ(services.bytes("g.dat"), "KM ?");
    EXPECT_TRUE(told().last().contains("1 character(s)")) << told().last().toStdString();
    services.dialogs.willAnswer(Button::Ok);
    desk.saveFree("");
    EXPECT_EQ(told().last(), "No Data to Save!");
}

// -- Fixed to free ---------------------------------------------------------------------------------------------------

TEST_F(ImportTest, ShowsTheDeckAsDelimitedText)
{
    deck.setCards({"KK  SUB1", "BA  1.65", "ZZ"});
    deck.Grid1.setCursor(2, 2);
    deck.setTextbox();
    EXPECT_TRUE(commands.run("mnu_SaveAsTextFile"));
    EXPECT_EQ(desk.delimited(), "KK SUB1         \r\nBA 1.65         \r\nZZ          \r\n");
    EXPECT_TRUE(screens.isVisible("Free"));
    EXPECT_EQ(deck.Grid1.row(), 2);
    EXPECT_EQ(deck.Grid1.col(), 2);
    EXPECT_EQ(box.contents, "1.65") << "an empty box would store its nothing over the cell";
    EXPECT_TRUE(deck.isEditorActive());
    EXPECT_EQ(deck.Grid1.rows(), 4);
    EXPECT_FALSE(deck.dataSaved) << "blank rows behind ZZ went";
    deck.dataSaved = true;
    commands.run("mnu_SaveAsTextFile");
    EXPECT_TRUE(deck.dataSaved);
}

TEST_F(ImportTest, CardsBehindZzGoAndCountAsAChange)
{
    deck.setCards({"ZZ", "BA  1.65"});
    int changes = 0;
    QObject::connect(&deck, &Deck::changed, &deck, [&] { ++changes; });
    imports.mnu_SaveAsTextFile();
    EXPECT_EQ(changes, 1);
    EXPECT_FALSE(deck.dataSaved);
}

TEST_F(ImportTest, ABlankRowShowsNothing)
{
    deck.setCards({"KK  SUB1", "", "ZZ"});
    services.dialogs.willAnswer(Button::Ok);
    imports.mnu_SaveAsTextFile();
    EXPECT_EQ(told(), QStringList("No Data or Bad Data - This will not work properly!"));
    EXPECT_FALSE(screens.isLoaded("Free"));
    EXPECT_EQ(desk.delimited(), "");

    services.dialogs.forget();
    deck.setCards({"KK  SUB1"});
    services.dialogs.willAnswer(Button::Ok);
    services.dialogs.willAnswer(Button::Ok);
    imports.mnu_SaveAsTextFile();
    EXPECT_EQ(told().size(), 2) << "no ZZ card, then the blank rows";
}

TEST_F(ImportTest, SavesTheDelimitedText)
{
    services.dialogs.willAnswer(Button::Ok);
    desk.saveDelimited("");
    EXPECT_EQ(told().last(), "No Data to Save!");
    services.dialogs.willAnswer("");
    services.dialogs.willAnswer(Button::Ok);
    desk.saveDelimited("ZZ\n");
    EXPECT_EQ(told().last(), "Need a File Name!");
    services.dialogs.willCancel();
    desk.saveDelimited("ZZ\n");
    EXPECT_EQ(told().last(), " Save as Text File") << "a cancelled dialog says no more";
    services.dialogs.willAnswer(services.path("t.txt"));
    desk.saveDelimited("ZZ   \n");
    EXPECT_EQ(services.bytes("t.txt"), "ZZ   \r\n");
    EXPECT_EQ(services.dialogs.last().file.filterIndex, 3);
    EXPECT_EQ(services.dialogs.last().file.defaultExtension, "txt");
}

} // namespace
} // namespace kalvo
