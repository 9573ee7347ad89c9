// SPDX-License-Identifier: GPL-3.0-or-later
#include "deck/OldFileManager_RecentFiles.h"

#include "tests/support/GridText.h"
#include "tests/support/ScriptedServices.h"

#include <QAbstractButton>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>

#include <gtest/gtest.h>

namespace kalvo {
namespace {

struct OldFileManagerTest : testing::Test
{
    ScriptedServices services;
    RecentFiles recent{services};
    Screens screens;
    OldFileManager* screen = nullptr;

    void SetUp() override
    {
        services.put("Checkyoldfiles.fls", "/a & b.dat [ x--y]\r\n/b.dat\r\n/c.dat\r\n");
        services.put("b.dat", "KK\r\n");
        recent.openoldfiles();
        OldFileManager::registerIn(screens, recent, services);
        screens.show("OldFileManager");
        screen = screens.loadAs<OldFileManager>("OldFileManager");
        ASSERT_NE(screen, nullptr);
    }
    void click(const char* name) { screen->findChild<QPushButton*>(QString::fromLatin1(name))->click(); }
    QListWidget& list() { return *screen->findChild<QListWidget*>("List1"); }
    int checked()
    {
        int count = 0;
        for (int i = 0; i < list().count(); ++i)
            count += list().item(i)->checkState() == Qt::Checked ? 1 : 0;
        return count;
    }
};

TEST_F(OldFileManagerTest, ListsTheEntriesUntickedAndTicksThemAll)
{
    EXPECT_TRUE(screens.isVisible("OldFileManager"));
    EXPECT_EQ(screen->windowTitle(), "Recent File List Manager");
    EXPECT_EQ(list().count(), 3);
    EXPECT_EQ(list().item(0)->text(), "/a & b.dat [ x--y]");
    EXPECT_EQ(checked(), 0);
    click("Command1");
    EXPECT_EQ(checked(), 3);
    click("Command2");
    EXPECT_EQ(checked(), 0);
}

TEST_F(OldFileManagerTest, RemovesTheTickedEntriesAndTouchesNoFile)
{
    list().item(1)->setCheckState(Qt::Checked);
    click("Command3");
    EXPECT_EQ(recent.indexes(), (QList<int>{1, 3}));
    ASSERT_EQ(list().count(), 1);
    EXPECT_EQ(list().item(0)->text(), "***** Successfully Removed the Selected Files *****");
    for (const char* name : {"Command1", "Command2", "Command3"})
        EXPECT_FALSE(screen->findChild<QPushButton*>(QString::fromLatin1(name))->isEnabled()) << name;
    EXPECT_EQ(services.bytes("b.dat"), "KK\r\n");
    EXPECT_EQ(services.bytes("Checkyoldfiles.fls"), "/a & b.dat [ x--y]\r\n/c.dat\r\n");

    click("Command4");
    EXPECT_FALSE(screens.isVisible("OldFileManager"));
    screens.show("OldFileManager");
    EXPECT_EQ(list().count(), 2) << "shown again, it lists what is left";
}

TEST_F(OldFileManagerTest, NothingIsCutOff)
{
    for (const QAbstractButton* button : screen->findChildren<QAbstractButton*>())
        EXPECT_GE(button->width(), button->sizeHint().width()) << button->objectName().toStdString();
    EXPECT_GE(screen->findChild<QLabel*>("Label1")->height(),
              screen->findChild<QLabel*>("Label1")->heightForWidth(screen->findChild<QLabel*>("Label1")->width()));
}

} // namespace
} // namespace kalvo
