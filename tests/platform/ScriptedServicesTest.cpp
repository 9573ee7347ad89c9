// SPDX-License-Identifier: GPL-3.0-or-later
// The scripted services judge everything else, so they are shown to fail where they must.
#include "tests/support/ScriptedServices.h"
#include "tests/support/GridText.h"

#include <QTimer>

#include <gtest/gtest-spi.h>
#include <gtest/gtest.h>

using namespace kalvo;

namespace {

TEST(ScriptedDialogs, AnswerInOrderAndRecordEveryWord)
{
    ScriptedServices services;
    services.dialogs.willAnswer(Button::No);
    services.dialogs.willAnswer("12");
    services.dialogs.willCancel();
    EXPECT_EQ(services.dialogs.message({.text = "Save it?", .buttons = Buttons::YesNo}), Button::No);
    EXPECT_EQ(services.dialogs.input("Acres", "Area", "1"), QStringLiteral("12"));
    EXPECT_FALSE(services.dialogs.openFile({.title = "Open"}));
    EXPECT_EQ(services.dialogs.texts(), (QStringList{"Save it?", "Acres", "Open"}));
    EXPECT_EQ(services.dialogs.shown()[0].title, "Kalvo");
    EXPECT_EQ(services.dialogs.shown()[1].preset, "1");
}

TEST(ScriptedDialogs, FailOnWhatNobodyScripted)
{
    EXPECT_NONFATAL_FAILURE(ScriptedDialogs().tell("Surprise"), "unscripted message box \"Surprise\"");
    EXPECT_NONFATAL_FAILURE(ScriptedDialogs().willAnswer(Button::Ok), "nothing asked for");
    EXPECT_NONFATAL_FAILURE(
        {
            ScriptedDialogs dialogs;
            dialogs.willAnswer("a text");
            dialogs.tell("A box");
        },
        "another kind");
    EXPECT_NONFATAL_FAILURE(
        {
            ScriptedDialogs dialogs;
            dialogs.willAnswer(Button::Yes);
            dialogs.tell("A box with OK alone");
        },
        "not on the message box");
}

TEST(ScriptedChildProcess, EndsInEveryBadWay)
{
    ScriptedServices services;
    ScriptedChildProcess& process = services.process;
    ProcessStart start;
    start.program = "hec1";
    start.workingFolder = services.folder.path();

    process.willWrite({{"checky.out", "*** ERROR"}});
    EXPECT_EQ(process.run(start).exitCode, 0);
    EXPECT_EQ(services.bytes("CHECKY.OUT"), "*** ERROR");

    process.willBeKilled({{"checky.out", "half"}});
    EXPECT_EQ(process.run(start).kind, ProcessEnd::Kind::Crashed);

    process.willHang([&] { process.stop(); });
    EXPECT_EQ(process.run(start).kind, ProcessEnd::Kind::Stopped);

    process.willHang();
    ProcessStart limited = start;
    limited.timeoutMs = 5;
    EXPECT_EQ(process.run(limited).kind, ProcessEnd::Kind::Stopped);
    EXPECT_EQ(process.stops(), 2);

    process.willWriteHuge("checky.out", 5LL << 30);
    process.run(start);
    EXPECT_EQ(QFileInfo(services.path("checky.out")).size(), 5LL << 30);

    process.willNotStart("no such program");
    EXPECT_EQ(process.run(start).message, "no such program");

    ProcessEnd second;
    process.willWriteAfter([&] { second = process.run(start); }, {});
    EXPECT_EQ(process.run(start).kind, ProcessEnd::Kind::Exited);
    EXPECT_EQ(second.kind, ProcessEnd::Kind::NotStarted);
    EXPECT_EQ(process.started().size(), 7U);
}

TEST(ScriptedChildProcess, FailsOnWhatNobodyScripted)
{
    EXPECT_NONFATAL_FAILURE(ScriptedChildProcess().run({}), "unscripted start");
    EXPECT_NONFATAL_FAILURE(ScriptedChildProcess().willEndAtOnce(), "nothing started");
}

TEST(ScriptedClipboard, GivesBareLineFeedsAsTheRealOneDoes)
{
    ScriptedClipboard clipboard;
    clipboard.setText("a\nb");
    EXPECT_EQ(clipboard.text(), "a\r\nb");
    EXPECT_TRUE(clipboard.hasText());
    clipboard.clear();
    EXPECT_FALSE(clipboard.hasText());
}

TEST(GridText, ReadsWhatItWrites)
{
    const auto grid = gridOf("KK|SUB1\nBA|1.5|x");
    EXPECT_EQ(gridText(grid), "KK|SUB1|\nBA|1.5|x");
    EXPECT_EQ(gridText(grid, 1, 1, 1, 2), "1.5|x");
}

} // namespace
