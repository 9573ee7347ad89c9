// SPDX-License-Identifier: GPL-3.0-or-later
#include "run/frmDebugOutput_DebugScreen.h"
#include "shell/Form3_About.h"
#include "shell/splash_StartScreen.h"

#include "tests/support/GridText.h"
#include "tests/support/ScriptedServices.h"

#include <QElapsedTimer>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

namespace kalvo {
namespace {

QStringList words(const QWidget& screen)
{
    QStringList texts;
    for (const QLabel* label : screen.findChildren<QLabel*>())
        texts << label->text();
    return texts;
}

TEST(Splash, TellsTheVersionByItsParts)
{
    EXPECT_EQ(versionLine("1.0.0"), "Version:1 -0 -0");
    EXPECT_EQ(versionLine("12.3.45"), "Version:12 -3 -45");
}

TEST(Splash, AClickEndsTheWaitAndTheMainScreenIsLoaded)
{
    QCoreApplication::setApplicationVersion("1.2.3");
    splash start;
    EXPECT_TRUE(words(start).contains("HEC-1 Interactive"));
    EXPECT_TRUE(words(start).contains("Graphical Interface"));
    EXPECT_TRUE(words(start).contains("Version:1 -2 -3"));
    QString toldWhileLoading;
    QTimer::singleShot(20, &start, [&] { QTest::mouseClick(&start, Qt::LeftButton); });
    QElapsedTimer clock;
    clock.start();
    bool stoodToTheEnd = false;
    start.begin([&] { toldWhileLoading = start.findChild<QLabel*>("Label3")->text(); },
                [&] { stoodToTheEnd = start.isVisible(); });
    EXPECT_TRUE(stoodToTheEnd) << "the main screen comes up before the start screen goes";
    EXPECT_LT(clock.elapsed(), splash::kStandsMs / 2);
    EXPECT_EQ(toldWhileLoading, "Loading ...");
    EXPECT_EQ(start.findChild<QLabel*>("Label3")->text(), "Loaded    ");
    EXPECT_FALSE(start.isVisible());
}

TEST(About, SaysVersionLicenceAndWhichHec1IsUsedNow)
{
    QCoreApplication::setApplicationVersion("1.2.3");
    Screens screens;
    QString engine = "HEC-1: /opt/hec1";
    Form3::registerIn(screens, [&] { return engine; });
    screens.show("Form3");
    auto* about = screens.loadAs<Form3>("Form3");
    ASSERT_NE(about, nullptr);
    EXPECT_TRUE(words(*about).contains("Version 1.2.3"));
    EXPECT_TRUE(words(*about).contains("HEC-1: /opt/hec1"));
    EXPECT_TRUE(words(*about).join(' ').contains("General Public License"));
    engine = "HEC-1: none found";
    screens.show("Form3");
    EXPECT_TRUE(words(*about).contains("HEC-1: none found"));
    QTest::mouseClick(about->findChild<QPushButton*>("cmdOK"), Qt::LeftButton);
    EXPECT_FALSE(screens.isVisible("Form3"));
}

struct DebugScreen : testing::Test
{
    ScriptedServices services;
    Screens screens;
    frmDebugOutput* screen = nullptr;

    void show()
    {
        frmDebugOutput::registerIn(screens, services);
        screens.show("frmDebugOutput");
        screen = screens.loadAs<frmDebugOutput>("frmDebugOutput");
        ASSERT_NE(screen, nullptr);
    }
    QListWidget& List1() { return *screen->findChild<QListWidget*>("List1"); }
    void trigger(const char* name) { screen->findChild<QAction*>(QString::fromLatin1(name))->trigger(); }
};

TEST_F(DebugScreen, ListsTheItemsBehindThreeBlanksAndReadsAgainWhenShown)
{
    services.put("KALVODEBUGOUTPUT.TXT", "HEC-1 STARTS, READS\r\nENDS\r\n");
    show();
    EXPECT_EQ(screen->windowTitle(), " Kalvo DEBUG HEC-1");
    ASSERT_EQ(List1().count(), 3);
    EXPECT_EQ(List1().item(0)->text(), "   HEC-1 STARTS");
    EXPECT_EQ(List1().item(2)->text(), "   ENDS");
    services.put("KALVODEBUGOUTPUT.TXT", "AGAIN\r\n");
    screens.show("frmDebugOutput");
    EXPECT_EQ(List1().count(), 1);
}

TEST_F(DebugScreen, CopiesTheSelectionOrSaysThatThereIsNone)
{
    services.put("kalvodebugoutput.txt", "A\r\nB\r\nC\r\n");
    show();
    services.dialogs.willAnswer(Button::Ok);
    trigger("mnu_copy");
    EXPECT_EQ(services.dialogs.last().text, "Nothing Selected");
    List1().item(0)->setSelected(true);
    List1().item(2)->setSelected(true);
    trigger("mnu_copy");
    EXPECT_EQ(services.clipboard.raw(), "   A\r\n   C");
    services.dialogs.willAnswer(Button::Ok);
    trigger("mnu_help");
    EXPECT_EQ(services.dialogs.last().text,
              "This is the raw output of the HEC-1 computer program as it has run in DOS");
    trigger("mnu_quit");
    EXPECT_FALSE(screens.isVisible("frmDebugOutput"));
}

TEST_F(DebugScreen, WithoutAFileTheListIsEmpty)
{
    show();
    EXPECT_EQ(List1().count(), 0);
}

} // namespace
} // namespace kalvo
