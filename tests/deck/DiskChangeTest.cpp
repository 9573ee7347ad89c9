// SPDX-License-Identifier: GPL-3.0-or-later
// The deck's file in the hands of another program.
#include "tests/deck/MainScreen.h"

#include <QFile>

namespace kalvo {
namespace {

constexpr auto kDeck = "KKSUB1  \r\nBA   1.5\r\nZZ\r\n";
constexpr auto kOther = "KKSUB1  \r\nBA   9.9\r\nZZ\r\n";

struct DiskChange : MainScreen
{
    QString path;

    DiskChange()
    {
        path = put(kDeck);
        page.files.opencommandline(path);
        page.panels.set(7, "as before");
    }
    /// The user comes back from another window.
    void comeBack()
    {
        QWidget other;
        other.show();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&other));
        form.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&form));
    }
    /// Writes a text of the same length and gives the file its former time.
    void changeUnseen(const QByteArray& text)
    {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::ReadWrite));
        const QDateTime before = file.fileTime(QFileDevice::FileModificationTime);
        ASSERT_EQ(file.write(text), file.size());
        ASSERT_TRUE(file.flush() && file.setFileTime(before, QFileDevice::FileModificationTime));
    }
    bool isMarked() { return page.panels.look(1).foreColor != Rgb::None && !page.panels.toolTip(1).isEmpty(); }
    bool save(std::initializer_list<Button> answers)
    {
        services.dialogs.willAnswer(path);
        for (const Button answer : answers)
            services.dialogs.willAnswer(answer);
        return page.files.savehec();
    }
};

TEST_F(DiskChange, IsToldOnComingBackAndDoesNotInterruptTyping)
{
    editAt(2, 2);
    type("7");
    comeBack();
    EXPECT_FALSE(isMarked());
    changeUnseen(kOther);
    comeBack();
    EXPECT_EQ(panel(7), "deck.dat was changed by another program since it was opened");
    EXPECT_TRUE(page.panels.toolTip(1).startsWith(path));
    EXPECT_TRUE(isMarked());
    EXPECT_EQ(form.focusWidget(), &Text1());
    EXPECT_EQ(Text1().text(), "71.5");
    page.panels.set(7, "read");
    comeBack();
    EXPECT_EQ(panel(7), "read") << "told once";
    changeUnseen(kDeck);
    comeBack();
    EXPECT_FALSE(isMarked()) << "as it was again";
}

TEST_F(DiskChange, OwnSavesAndANewDeckAreNoNews)
{
    editAt(2, 2);
    type("7");
    EXPECT_TRUE(save({}));
    comeBack();
    EXPECT_TRUE(save({}));
    EXPECT_FALSE(isMarked());
    put(kOther);
    services.dialogs.willAnswer(Button::Ok);
    page.files.newhec1();
    comeBack();
    EXPECT_FALSE(isMarked());
}

TEST_F(DiskChange, ASaveOverItAsks)
{
    changeUnseen(kOther);
    EXPECT_FALSE(save({Button::Cancel}));
    EXPECT_TRUE(services.dialogs.last().text.startsWith(
        path + " was changed by another program since it was opened. Save over it?"));
    EXPECT_EQ(services.dialogs.last().defaultButton, Button::No);
    EXPECT_EQ(services.bytes("deck.dat"), kOther);

    const QString other = services.path("other.dat");
    services.dialogs.willAnswer(path);
    services.dialogs.willAnswer(Button::No);
    services.dialogs.willAnswer(other);
    EXPECT_TRUE(page.files.savehec());
    EXPECT_EQ(services.bytes("deck.dat"), kOther);
    EXPECT_EQ(page.deck.currentFilePath, other);

    page.files.opencommandline(path);
    changeUnseen(kDeck);
    EXPECT_TRUE(save({Button::Yes}));
    EXPECT_TRUE(services.bytes("deck.dat").contains("9.9"));
    EXPECT_EQ(services.bytes("deck.dat.bak"), kDeck);
    comeBack();
    EXPECT_FALSE(isMarked());
}

TEST_F(DiskChange, AFileThatIsGoneLeavesTheDeckUnsaved)
{
    ASSERT_TRUE(QFile::remove(path));
    EXPECT_FALSE(page.files.mayTake({services.path("also gone.dat"), {}, {}})) << "gone alike is not the same file";
    comeBack();
    EXPECT_TRUE(panel(7).contains("is no longer there"));
    EXPECT_FALSE(page.deck.dataSaved);
    EXPECT_TRUE(save({}));
    EXPECT_FALSE(isMarked());
    EXPECT_TRUE(QFile::exists(path));
}

TEST_F(DiskChange, ARunFileIsNotTheUsersFile)
{
    put(kOther, "checky.dat");
    page.commands.run("mnu_restorelastrun");
    put(kDeck, "checky.dat");
    comeBack();
    EXPECT_FALSE(isMarked());
    changeUnseen(kOther);
    comeBack();
    EXPECT_TRUE(isMarked()) << "a save would still go there";
}

} // namespace
} // namespace kalvo
