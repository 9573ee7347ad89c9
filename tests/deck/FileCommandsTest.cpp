// SPDX-License-Identifier: GPL-3.0-or-later
#include "deck/FileCommands.h"

#include "FakeEditBox.h"
#include "platform/text.h"
#include "tests/support/GridText.h"
#include "tests/support/ScriptedServices.h"

#include <QDir>
#include <QFileInfo>

#include <gtest/gtest.h>

namespace kalvo {
namespace {

/// A screen that only counts how often it was made and forgotten.
struct CountingScreen : Screen
{
    void showScreen() override {}
    void hideScreen() override {}
    bool isScreenVisible() const override { return true; }
};

constexpr auto kGood = "ID a deck\r\nKK  OUT\r\nZZ\r\n";

struct FileCommandsTest : testing::Test
{
    ScriptedServices services;
    StatusPanels panels;
    Commands commands;
    Screens screens;
    Deck deck{services, panels};
    FakeEditBox box{deck};
    FileCommands files{deck, services, commands, panels, screens};
    int replaced = 0;

    FileCommandsTest()
    {
        for (const char* name : {"viewhec1", "graphdata", "graph", "auditdata", "runhec", "mnu_undo", "mnu_redo",
                                 "mnupopupundo", "mnu_popupredo"})
            commands.add(QString::fromLatin1(name), [] {});
        QObject::connect(&deck, &Deck::replaced, &deck, [this] { ++replaced; });
    }
    void load(const char* name)
    {
        screens.add(QString::fromLatin1(name), [] { return std::make_unique<CountingScreen>(); });
        screens.load(QString::fromLatin1(name));
    }
    std::string ids(int bottom) const { return gridText(deck.Grid1, 1, 1, bottom, 1); }
    void type(int row, int column, const char* text)
    {
        deck.Grid1.setTextMatrix(row, column, QString::fromLatin1(text));
        deck.noteChange();
        deck.setTextbox();
    }
    QStringList told() const { return services.dialogs.texts(); }
};

// -- opener ----------------------------------------------------------------------------------------------------------

TEST_F(FileCommandsTest, OpenerReplacesTheDeckAndResetsWhatBelongedToTheOldOne)
{
    const QString path = services.put("good.dat", kGood);
    load("Form12");
    deck.undoCount = 7;
    commands.setChecked("mnu_undooff", true);
    deck.Grid1.setCursor(50, 4);
    box.contents = "";
    EXPECT_TRUE(files.opener(path));
    EXPECT_EQ(gridText(deck.Grid1, 1, 0, 3, 3), "1|ID| a dec|k\n2|KK|  OUT|\n3|ZZ||");
    EXPECT_EQ(deck.Grid1.rows(), 20);
    EXPECT_EQ(deck.Grid1.row(), 1);
    EXPECT_EQ(deck.Grid1.col(), 1);
    EXPECT_EQ(box.contents, "ID");
    EXPECT_EQ(box.tint, EditBox::Tint::AtRest);
    EXPECT_TRUE(box.shown);
    EXPECT_EQ(deck.currentFileName, "good.dat");
    EXPECT_TRUE(deck.currentFilePath.isEmpty()) << "its callers set that";
    EXPECT_TRUE(deck.dataSaved);
    EXPECT_EQ(deck.undoCount, 1);
    EXPECT_EQ(panels.text(1), " " + path + " ");
    EXPECT_EQ(panels.text(2), "Undo 1 ");
    EXPECT_FALSE(commands.isChecked("mnu_undooff"));
    EXPECT_FALSE(screens.isLoaded("Form12"));
    for (const char* off : {"viewhec1", "graphdata", "mnu_undo", "mnu_redo", "mnupopupundo", "mnu_popupredo"})
        EXPECT_FALSE(commands.isEnabled(QString::fromLatin1(off))) << off;
    EXPECT_TRUE(commands.isEnabled("auditdata"));
    EXPECT_TRUE(commands.isEnabled("runhec"));
    EXPECT_EQ(replaced, 1);
}

TEST_F(FileCommandsTest, AnUnsavedDeckIsReplacedOnlyOnOk)
{
    const QString path = services.put("good.dat", kGood);
    type(1, 1, "KM");
    services.dialogs.willAnswer(Button::Cancel);
    EXPECT_FALSE(files.opener(path));
    EXPECT_EQ(ids(1), "KM");
    EXPECT_FALSE(deck.dataSaved);
    services.dialogs.willAnswer(Button::Ok);
    EXPECT_TRUE(files.opener(path));
    EXPECT_EQ(told(), QStringList(2, "Add the New Data?"));
    EXPECT_EQ(services.dialogs.last().buttons, Buttons::OkCancel);
    EXPECT_EQ(ids(1), "ID");
}

TEST_F(FileCommandsTest, TextStillInTheEditBoxCountsAsUnsaved)
{
    const QString path = services.put("good.dat", kGood);
    box.contents = "KM";
    services.dialogs.willAnswer(Button::Cancel);
    EXPECT_FALSE(files.opener(path));
    EXPECT_EQ(ids(1), "KM");
}

TEST_F(FileCommandsTest, AFileThatIsGoneOrNoFileLeavesTheDeck)
{
    files.opener(services.put("good.dat", kGood));
    for (const QString& name : {services.path("gone.dat"), services.directory.path()}) {
        services.dialogs.willAnswer(Button::Ok);
        EXPECT_FALSE(files.opener(name));
        EXPECT_EQ(ids(3), "ID\nKK\nZZ");
        EXPECT_TRUE(deck.dataSaved);
    }
    EXPECT_FALSE(files.opener(QString()));
}

TEST_F(FileCommandsTest, ABareNameIsARunFile)
{
    services.put("CHECKY.DAT", kGood);
    EXPECT_TRUE(files.opener("checky.dat"));
    EXPECT_EQ(ids(2), "ID\nKK");
}

TEST_F(FileCommandsTest, ALongLineEmptiesTheGridAndLeavesNoPathBehind)
{
    files.dropped(services.put("good.dat", kGood));
    const QString path = services.put("long.dat", QByteArray("KK\r\n") + QByteArray(83, 'x'));
    services.dialogs.willAnswer(Button::Ok, [&] { EXPECT_TRUE(deck.isGridShown()); });
    files.dropped(path);
    EXPECT_EQ(told(), QStringList{"This File Is Corrupted or is not a Fixed Format HEC-1 Input File\r\n"
                                  "Try [Use FREE Format] on File Menu!"});
    EXPECT_EQ(ids(3), "\n\n");
    EXPECT_EQ(deck.Grid1.rows(), 201);
    EXPECT_TRUE(deck.currentFilePath.isEmpty());
    EXPECT_EQ(panels.text(1), "");
    EXPECT_FALSE(deck.dataSaved);
    EXPECT_TRUE(deck.isEditorActive());
    EXPECT_EQ(replaced, 1) << "only the good deck";
}

TEST_F(FileCommandsTest, AWeirdLineHidesTheGridUntilTheNextLoad)
{
    services.dialogs.willAnswer(Button::Ok);
    EXPECT_FALSE(files.opener(services.put("weird.dat", "ID caf\xe9\r\nZZ\r\n")));
    EXPECT_EQ(told(), QStringList{"Improper File Type or Bad Data"});
    EXPECT_FALSE(deck.isGridShown());
    deck.dataSaved = true;
    files.opener(services.put("good.dat", kGood));
    EXPECT_TRUE(deck.isGridShown());
}

TEST_F(FileCommandsTest, AFreeFormatDeckIsToldWithTheLinesThatWouldBreak)
{
    services.dialogs.willAnswer(Button::Ok);
    EXPECT_TRUE(files.opener(services.put("free.dat", "*FREE\r\nKK A1\r\nRM 1 0.45 0.2\r\nZZ\r\n")));
    EXPECT_EQ(told(), QStringList{"Can't Use *FREE Format Card-Convert to Column Format - Delete that Row!\r\n"
                                  "Written from the grid, HEC-1 would read other fields in line(s) 2."});
    services.dialogs.willAnswer(Button::Cancel);
    EXPECT_FALSE(files.savehec()) << "no dialog is even opened";
    EXPECT_EQ(services.dialogs.last().defaultButton, Button::Cancel);
}

TEST_F(FileCommandsTest, WhatASaveWillChangeIsToldAfterTheLoad)
{
    files.opener(services.put("stars.dat", "*\r\n* note\r\nKK  A\r\nBA   1.5\r\nZZ\r\nKM parked\r\n"));
    EXPECT_EQ(panels.text(7), "3 lines will change when saved, 1 line behind ZZ will be dropped when saved");
    deck.dataSaved = true;
    panels.set(7, "before");
    files.opener(services.put("plain.dat", "ID x\r\nBA   1.5\r\nZZ\r\n"));
    EXPECT_EQ(panels.text(7), "before");
}

TEST_F(FileCommandsTest, NoDeckIsReplacedWhileHecRuns)
{
    const QString path = services.put("good.dat", kGood);
    services.dialogs.willAlwaysSayOk();
    services.process.willHang([&] {
        EXPECT_FALSE(files.opener(path));
        files.newhec1();
        EXPECT_FALSE(files.mayClose());
        services.process.stop();
    });
    services.process.run({});
    EXPECT_EQ(told().size(), 3);
    EXPECT_TRUE(told().first().startsWith("HEC-1 is still running."));
    EXPECT_EQ(replaced, 0);
}

// -- openhec, drop, recent, command line -----------------------------------------------------------------------------

TEST_F(FileCommandsTest, OpenAsksWithItsFiltersAndForgetsTheOldDecksScreens)
{
    const QString path = services.put("good.dat", kGood);
    const QStringList names{"frmMulti", "frmCompare", "frmRouting", "GRAPHER", "Iterater", "SVols", "IRep"};
    for (const QString& name : names)
        load(name.toLatin1().constData());
    load("Form6");
    services.dialogs.willAnswer(path);
    EXPECT_TRUE(commands.run("openhec"));
    const FileDialog& asked = services.dialogs.last().file;
    EXPECT_EQ(asked.title, "OPEN HEC-1 DATA FILES");
    EXPECT_EQ(asked.filter,
              "All Files (*.*)|*.*|HEC-1 Input Files (*.dat;*.ih1)|*.dat;*.ih1|DAT Files(*.dat)|*.dat|Text "
              "Files (*.txt)|*.txt");
    EXPECT_EQ(asked.filterIndex, 2);
    EXPECT_EQ(deck.currentFilePath, path);
    EXPECT_EQ(screens.loaded(), QStringList{"Form6"});
}

TEST_F(FileCommandsTest, ACancelledOpenChangesNothing)
{
    files.dropped(services.put("good.dat", kGood));
    const QString folder = QDir::currentPath();
    services.dialogs.willCancel();
    files.openhec();
    type(2, 2, "X");
    services.dialogs.willAnswer(services.put("other.dat", "KM\r\n"));
    services.dialogs.willAnswer(Button::Cancel);
    load("GRAPHER");
    files.openhec();
    EXPECT_EQ(ids(3), "ID\nKK\nZZ");
    EXPECT_EQ(deck.currentFilePath, services.path("good.dat"));
    EXPECT_TRUE(screens.isLoaded("GRAPHER"));
    EXPECT_EQ(QDir::currentPath(), folder);
}

TEST_F(FileCommandsTest, AFileThatIsNoTextIsRefusedInTheWordsOfItsDoor)
{
    files.dropped(services.put("good.dat", kGood));
    const QString binary = services.put("binary.dat", QByteArray("KK\0", 3));
    services.dialogs.willAnswer(binary);
    services.dialogs.willAnswer(Button::Ok);
    files.openhec();
    EXPECT_EQ(services.dialogs.last().text, "This file is Incompatible with Kalvo!\r");
    EXPECT_EQ(services.dialogs.last().icon, Icon::Critical);
    EXPECT_EQ(services.dialogs.last().buttons, Buttons::OkCancel);
    services.dialogs.willAnswer(Button::Ok);
    files.dropped(binary);
    EXPECT_EQ(services.dialogs.last().text, "The File " + binary + " is Incompatible with HEC-1! ");
    EXPECT_EQ(services.dialogs.last().icon, Icon::Warning);
    services.dialogs.willAnswer(services.path("gone.dat"));
    services.dialogs.willAnswer(Button::Ok);
    files.openhec();
    EXPECT_EQ(services.dialogs.last().text, "The File: " + services.path("gone.dat") + " does not Exist!");
    services.dialogs.willAnswer(Button::Ok);
    files.dropped(services.directory.path());
    EXPECT_EQ(services.dialogs.last().text,
              "The File: " + services.directory.path() + " could not be read.\r\nIt is not a file.")
        << "what cannot be read is not called binary";
    EXPECT_EQ(ids(3), "ID\nKK\nZZ");
    EXPECT_EQ(deck.currentFilePath, services.path("good.dat"));
}

TEST_F(FileCommandsTest, RecentEntriesOpenByIndexOrSayThatTheyAreGone)
{
    const QString path = services.put("good.dat", kGood);
    services.put("Checkyoldfiles.fls", (path + " [ 1/2/2003--4:05 PM]\r\n/gone/x.dat [ a--b]\r\n").toUtf8());
    files.openoldfiles();
    files.oldfile(1);
    EXPECT_EQ(deck.currentFilePath, path);
    EXPECT_EQ(panels.text(1), " " + path + " ");
    services.dialogs.willAnswer(Button::Ok);
    files.oldfile(2);
    EXPECT_EQ(told(), QStringList{"The File Name /gone/x.dat  does Not Exist!"});
    EXPECT_EQ(ids(3), "ID\nKK\nZZ");
}

TEST_F(FileCommandsTest, TheCommandLineTakesLongLinesAndTwoThousandOfThem)
{
    const QByteArray line = "PC" + QByteArray(90, '1') + "\r\n";
    int sizes = 0;
    QObject::connect(&files, &FileCommands::standardSizeWanted, &files, [&] { ++sizes; });
    files.opencommandline(QString());
    EXPECT_EQ(replaced, 0);
    files.opencommandline(QDir::current().relativeFilePath(services.put("c.dat", line.repeated(2000))));
    EXPECT_EQ(deck.Grid1.rows(), 2001);
    EXPECT_EQ(deck.Grid1.rowHeight(1), 320);
    EXPECT_EQ(QFileInfo(deck.currentFilePath), QFileInfo(services.path("c.dat")));
    EXPECT_TRUE(QDir::isAbsolutePath(deck.currentFilePath)) << "made absolute when it arrives";
    EXPECT_EQ(deck.currentFileName, "c.dat");
    EXPECT_EQ(sizes, 1);
    EXPECT_TRUE(commands.isEnabled("runhec"));

    for (const QString& bad : {services.put("d.dat", line.repeated(2001)), services.path("gone.dat")}) {
        services.dialogs.willAnswer(Button::Ok);
        files.opencommandline(bad);
        EXPECT_EQ(services.dialogs.last().text, "Command Line File Error");
        EXPECT_TRUE(deck.currentFilePath.isEmpty());
        EXPECT_EQ(ids(2), "\n");
    }
}

// -- New -------------------------------------------------------------------------------------------------------------

TEST_F(FileCommandsTest, NewEmptiesTheDeckAndForgetsItsName)
{
    files.dropped(services.put("good.dat", kGood));
    load("GRAPHER");
    load("Iterater");
    services.dialogs.willAnswer(Button::Ok);
    EXPECT_TRUE(commands.run("newhec1"));
    EXPECT_EQ(told(), QStringList{"Warning! This will ERASE current Input Data"});
    EXPECT_EQ(ids(3), "\n\n");
    EXPECT_EQ(deck.Grid1.rows(), 201);
    EXPECT_TRUE(deck.currentFilePath.isEmpty());
    EXPECT_EQ(panels.text(1), "");
    EXPECT_EQ(panels.text(2), "Undo 1 ");
    EXPECT_EQ(screens.loaded(), QStringList{"Iterater"});
    for (const char* off : {"graph", "graphdata", "viewhec1", "runhec"})
        EXPECT_FALSE(commands.isEnabled(QString::fromLatin1(off))) << off;
}

TEST_F(FileCommandsTest, ACancelledNewKeepsTheDeckAndARecoveryCopyAtTheEnd)
{
    files.dropped(services.put("good.dat", kGood));
    type(2, 2, "OTHER");
    services.dialogs.willAnswer(Button::Cancel);
    files.newhec1();
    EXPECT_EQ(ids(3), "ID\nKK\nZZ");
    EXPECT_TRUE(deck.dataSaved);
    EXPECT_TRUE(files.mayClose()) << "no question, but nothing is lost";
    EXPECT_TRUE(services.bytes("checkyrecovered.dat").contains("KK OTHER"));
    EXPECT_TRUE(files.recovery().notice().contains("checkyrecovered.dat"));
}

// -- Saving ----------------------------------------------------------------------------------------------------------

TEST_F(FileCommandsTest, SaveAsksForTheNameKeepsTheFormerTextAndLeavesTheFlag)
{
    const QString path = services.put("good.dat", kGood);
    files.dropped(path);
    type(2, 2, "NEW");
    services.dialogs.willAnswer(path);
    EXPECT_TRUE(commands.run("savehec"));
    const FileDialog& asked = services.dialogs.last().file;
    EXPECT_EQ(asked.title, "Save HEC-1 Input Data");
    EXPECT_EQ(asked.filter, "All Files (*.*)|*.*|DAT Files(*.dat)|*.dat|Text Files (*.txt)|*.txt");
    EXPECT_EQ(asked.defaultExtension, "dat");
    EXPECT_TRUE(asked.overwritePrompt);
    EXPECT_EQ(asked.initialName, path);
    EXPECT_TRUE(services.bytes("good.dat").contains("KK   NEW"));
    EXPECT_EQ(services.bytes("good.dat.bak"), kGood);
    EXPECT_FALSE(deck.dataSaved);
}

TEST_F(FileCommandsTest, SaveAsEntersTheRecentFiles)
{
    files.dropped(services.put("good.dat", kGood));
    const QString path = services.path("b.dat");
    services.dialogs.willAnswer(path);
    EXPECT_TRUE(files.saveashec1());
    EXPECT_EQ(services.dialogs.last().file.title, "Save As HEC-1 Input Data");
    EXPECT_EQ(services.dialogs.last().file.filter, "Data Files(*.dat)|*.dat|Text Files (*.txt)|*.txt");
    EXPECT_EQ(services.dialogs.last().file.filterIndex, 1);
    EXPECT_EQ(RecentFiles::pathOf(files.recentFiles().caption(1)), path);
    EXPECT_EQ(panels.text(1), " " + path + " ");
    services.dialogs.willCancel();
    EXPECT_FALSE(files.saveashec1());
    EXPECT_EQ(files.recentFiles().indexes().size(), 1);
}

TEST_F(FileCommandsTest, ALongIdCutsTheFileButItsFormerTextStaysThroughEveryTry)
{
    const QString path = services.put("good.dat", kGood);
    files.dropped(path);
    type(2, 1, "KKX");
    for (int attempt = 0; attempt < 2; ++attempt) {
        services.dialogs.willAnswer(path);
        services.dialogs.willAnswer(Button::Ok);
        EXPECT_FALSE(files.savehec());
        EXPECT_TRUE(services.dialogs.last().text.startsWith("Error in Data at Savefile\r\nThe ID \"KKX\" of line 2 "));
        EXPECT_EQ(services.bytes("good.dat"), "ID a deck\r\n");
        EXPECT_EQ(services.bytes("good.dat.bak"), kGood);
    }
    type(2, 1, "KK");
    services.dialogs.willAnswer(path);
    EXPECT_TRUE(files.savehec());
    EXPECT_EQ(services.bytes("good.dat.bak"), kGood);
}

TEST_F(FileCommandsTest, ATrailingBlankTypedBehindAnIdIsTrimmedAndNotALongId)
{
    files.dropped(services.put("good.dat", kGood));
    deck.Grid1.setCursor(2, 1);
    box.contents = "KK ";
    EXPECT_TRUE(files.savefile("checky.dat").isSaved());
    EXPECT_TRUE(services.bytes("checky.dat").contains("\r\nKK   OUT"));
}

TEST_F(FileCommandsTest, ARunFileIsWrittenWithoutACopyAndUnderItsOwnSpelling)
{
    files.dropped(services.put("good.dat", kGood));
    services.put("CHECKY.DAT", "old");
    EXPECT_TRUE(files.savefile("checky.dat").isSaved());
    EXPECT_TRUE(services.bytes("CHECKY.DAT").startsWith("ID a deck\r\n"));
    EXPECT_EQ(QDir(services.directory.path()).entryList({"*.bak", "checky.dat"}, QDir::Files),
              QStringList{"CHECKY.DAT"});
}

TEST_F(FileCommandsTest, ADeckWithoutEndCardIsSavedWholeAfterTheMessage)
{
    files.dropped(services.put("noend.dat", "KK  A\r\n"));
    services.dialogs.willAnswer(Button::Ok);
    EXPECT_TRUE(files.savefile("checky.dat").isSaved());
    EXPECT_EQ(services.bytes("checky.dat").size(), 19 * 82);
    EXPECT_EQ(deck.Grid1.rows(), 20);
}

TEST_F(FileCommandsTest, AFailedWriteIsToldAndLeavesFileAndGrid)
{
    if (!QFileInfo::exists("/dev/full"))
        GTEST_SKIP() << "no full device on this system";
    files.dropped(services.put("good.dat", kGood));
    services.dialogs.willAnswer("/dev/full");
    services.dialogs.willAnswer(Button::Ok);
    EXPECT_FALSE(files.savehec());
    EXPECT_TRUE(services.dialogs.last().text.startsWith("The File: /dev/full could not be written.\r\n"));
    EXPECT_EQ(deck.currentFilePath, services.path("good.dat"));
    EXPECT_EQ(ids(3), "ID\nKK\nZZ");
}

TEST_F(FileCommandsTest, LinesThatOpenWillRefuseAreToldAfterTheSave)
{
    files.dropped(services.put("good.dat", kGood));
    type(1, 2, QByteArray(90, 'x').constData());
    deck.Grid1.setTextMatrix(2, 3, QStringLiteral("caf\u00e9"));
    services.dialogs.willAnswer(services.path("b.dat"));
    services.dialogs.willAnswer(Button::Ok);
    EXPECT_TRUE(files.savehec());
    EXPECT_EQ(services.dialogs.last().text,
              "The deck is saved, but some of its lines need care.\r\n"
              "Longer than 82 characters, so Open will ask for [Use FREE Format]: line(s) 1.\r\n"
              "With characters that Open refuses: line(s) 2.");
}

TEST_F(FileCommandsTest, ASaveTellsPushedFieldsBesideTheDroppedCards)
{
    files.dropped(services.put("good.dat", "KK  A\r\nBA\r\nZZ\r\nKM parked here\r\n"));
    type(2, 2, "1234567");
    services.dialogs.willAnswer(services.path("b.dat"));
    EXPECT_TRUE(files.savehec());
    EXPECT_TRUE(panels.text(7).startsWith("Fields longer than their columns")) << panels.text(7).toStdString();
    EXPECT_TRUE(panels.text(7).contains("1 card(s) behind the ZZ card"));
}

TEST_F(FileCommandsTest, CardsBehindTheEndCardAreKeptInTheProgramsFolder)
{
    files.dropped(services.put("good.dat", "KK  A\r\nZZ\r\nKM parked here\r\n"));
    files.savefile("checky.dat");
    EXPECT_TRUE(services.bytes("checkydropped.dat").contains("\r\nKM parked here\r\n"));
    EXPECT_TRUE(panels.text(7).contains("checkydropped.dat"));
    deck.Grid1.setRows(5);
    type(4, 1, "BA");
    files.savefile("checky.dat");
    EXPECT_TRUE(services.bytes("checkydropped.dat").contains("parked")) << "the collection grows";
    EXPECT_TRUE(services.bytes("checkydropped.dat").endsWith("\r\nBA\r\n"));
}

// -- The end ---------------------------------------------------------------------------------------------------------

TEST_F(FileCommandsTest, ClosingAnUnsavedDeckAsks)
{
    const QString path = services.put("good.dat", kGood);
    files.dropped(path);
    EXPECT_TRUE(files.mayClose()) << "nothing to ask";
    EXPECT_FALSE(QFileInfo::exists(files.recovery().deckCopy()));

    box.contents = "KM";
    services.dialogs.willAnswer(Button::Cancel);
    EXPECT_FALSE(files.mayClose());
    EXPECT_EQ(services.dialogs.last().text, "Save Data before Closing?");
    EXPECT_EQ(services.dialogs.last().title, "Save Dialog");
    EXPECT_EQ(services.dialogs.last().buttons, Buttons::YesNoCancel);

    services.dialogs.willAnswer(Button::Yes);
    services.dialogs.willCancel();
    EXPECT_FALSE(files.mayClose()) << "the save was cancelled";

    services.dialogs.willAnswer(Button::Yes);
    services.dialogs.willAnswer(path);
    EXPECT_TRUE(files.mayClose());
    EXPECT_FALSE(QFileInfo::exists(files.recovery().deckCopy())) << "saved";

    type(2, 2, "LATER");
    services.dialogs.willAnswer(Button::No);
    EXPECT_TRUE(files.mayClose());
    EXPECT_TRUE(services.bytes("checkyrecovered.dat").contains("KK LATER"));
}

TEST_F(FileCommandsTest, AnEmptyDeckLeavesNoRecoveryCopy)
{
    EXPECT_TRUE(files.mayClose());
    EXPECT_TRUE(files.recovery().notice().isEmpty());
    type(1, 1, "KK");
    services.dialogs.willAnswer(Button::No);
    EXPECT_TRUE(files.mayClose());
    EXPECT_EQ(services.bytes("checkyrecovered.dat").trimmed(), "KK");
}

} // namespace
} // namespace kalvo
