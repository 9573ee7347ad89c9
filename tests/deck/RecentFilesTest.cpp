// SPDX-License-Identifier: GPL-3.0-or-later
#include "deck/RecentFiles.h"

#include "tests/support/GridText.h"
#include "tests/support/ScriptedServices.h"

#include <QLocale>

#include <gtest/gtest.h>

namespace kalvo {
namespace {

struct RecentFilesTest : testing::Test
{
    ScriptedServices services;
    RecentFiles recent{services};

    QString stamp() const
    {
        const QDateTime now = services.clock.now();
        const QLocale locale = QLocale::system();
        return " [ " + locale.toString(now.date(), QLocale::ShortFormat) + "--" +
               locale.toString(now.time(), QLocale::ShortFormat) + "]";
    }
    QStringList captions() const
    {
        QStringList all;
        for (const int index : recent.indexes())
            all.append(recent.caption(index));
        return all;
    }
};

TEST_F(RecentFilesTest, ComeBackAfterARestartWithAnyLettersInTheirPaths)
{
    recent.UPDATEOLDFILES("/decks/R&D [old]/a.dat");
    recent.UPDATEOLDFILES(QStringLiteral("/decks/\u0421\u0442\u043e\u043a/\u00e9.dat"));
    EXPECT_EQ(captions().first(), "/decks/R&D [old]/a.dat" + stamp());
    EXPECT_TRUE(recent.saveoldfiles());

    RecentFiles again(services);
    again.openoldfiles();
    EXPECT_EQ(again.oldFileCount(), 2);
    EXPECT_EQ(RecentFiles::pathOf(again.caption(1)), "/decks/R&D [old]/a.dat");
    EXPECT_EQ(RecentFiles::pathOf(again.caption(2)), QStringLiteral("/decks/\u0421\u0442\u043e\u043a/\u00e9.dat"));
    EXPECT_EQ(RecentFiles::menuText(again.caption(1)), "/decks/R&&D [old]/a.dat" + stamp());
}

TEST_F(RecentFilesTest, ReadAListInAnySpellingOfItsNameAndKeepThatOne)
{
    services.put("checkyoldfiles.FLS", "C:\\decks\\a.dat [ 1/2/2003--4:05 PM]\r\nC:\\decks\\b.dat\r\nC:\\caf\xe9.dat");
    recent.openoldfiles();
    ASSERT_EQ(captions().size(), 3);
    EXPECT_EQ(RecentFiles::pathOf(recent.caption(1)), "C:\\decks\\a.dat");
    EXPECT_EQ(RecentFiles::pathOf(recent.caption(2)), "C:\\decks\\b.dat");
    EXPECT_EQ(recent.caption(3), QStringLiteral("C:\\caf\u00e9.dat"));
    recent.UPDATEOLDFILES("/new.dat");
    EXPECT_TRUE(recent.saveoldfiles());
    EXPECT_TRUE(services.bytes("checkyoldfiles.FLS").contains("/new.dat"));
    EXPECT_EQ(services.folder.spellings("checkyoldfiles.fls").size(), 1);
}

TEST_F(RecentFilesTest, ASecondSaveRefreshesItsEntry)
{
    recent.UPDATEOLDFILES("/decks/a.dat");
    recent.UPDATEOLDFILES("/decks/b.dat");
    services.clock.setNow(services.clock.now().addDays(3));
    recent.UPDATEOLDFILES("/decks/a.dat");
    EXPECT_EQ(recent.indexes(), (QList<int>{1, 2}));
    EXPECT_EQ(recent.caption(1), "/decks/a.dat" + stamp());
}

TEST_F(RecentFilesTest, AFullListTakesNothingAndRefreshesNothing)
{
    for (int i = 1; i <= 32; ++i)
        recent.UPDATEOLDFILES(QStringLiteral("/decks/%1.dat").arg(i));
    EXPECT_EQ(recent.indexes().size(), 32);
    services.clock.setNow(services.clock.now().addDays(3));
    services.dialogs.willAnswer(Button::Ok);
    services.dialogs.willAnswer(Button::Ok);
    recent.UPDATEOLDFILES("/decks/33.dat");
    recent.UPDATEOLDFILES("/decks/1.dat");
    EXPECT_EQ(services.dialogs.texts(), QStringList(2, "Too Many Old Files in List -- Clear Old File List!"));
    EXPECT_EQ(recent.indexes().size(), 32);
    EXPECT_NE(recent.caption(1), "/decks/1.dat" + stamp());
}

TEST_F(RecentFilesTest, ARemovedIndexIsNeverUsedAgain)
{
    recent.UPDATEOLDFILES("/a.dat");
    recent.UPDATEOLDFILES("/b.dat");
    EXPECT_TRUE(recent.remove({2, 99}));
    recent.UPDATEOLDFILES("/c.dat");
    EXPECT_EQ(recent.indexes(), (QList<int>{1, 3}));
    EXPECT_EQ(services.bytes("Checkyoldfiles.fls").count('\n'), 1) << "the list was written when the entry went";
}

TEST_F(RecentFilesTest, RemovingAllEntriesEmptiesTheListOnDisk)
{
    services.put("Checkyoldfiles.fls", "/a.dat\r\n/b.dat\r\n");
    recent.openoldfiles();
    EXPECT_TRUE(recent.remove({1, 2}));
    EXPECT_TRUE(recent.saveoldfiles());
    RecentFiles again(services);
    again.openoldfiles();
    EXPECT_TRUE(again.indexes().isEmpty());
}

TEST_F(RecentFilesTest, AnEmptyMenuLeavesTheFileAsItWas)
{
    services.put("Checkyoldfiles.fls", "/a.dat\r\n");
    EXPECT_TRUE(recent.saveoldfiles()) << "never read, so nothing is known that could replace it";
    EXPECT_EQ(services.bytes("Checkyoldfiles.fls"), "/a.dat\r\n");
}

TEST_F(RecentFilesTest, AListThatCannotBeWrittenIsReported)
{
    QDir(services.directory.path()).mkdir("Checkyoldfiles.fls");
    recent.UPDATEOLDFILES("/a.dat");
    QString why;
    EXPECT_FALSE(recent.saveoldfiles(&why));
    EXPECT_FALSE(why.isEmpty());
}

} // namespace
} // namespace kalvo
