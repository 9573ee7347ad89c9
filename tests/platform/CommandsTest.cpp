// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/Commands.h"
#include "platform/CommandGuard.h"
#include "tests/support/GridText.h"

#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>

using namespace kalvo;

namespace {

/// Gathers what is logged while it lives.
class LogCatcher
{
public:
    LogCatcher()
    {
        lines().clear();
        m_before = qInstallMessageHandler([](QtMsgType, const QMessageLogContext& context, const QString& text) {
            lines() << QString::fromLatin1(context.category) + QLatin1String(": ") + text;
        });
    }
    ~LogCatcher() { qInstallMessageHandler(m_before); }
    static QStringList& lines()
    {
        static QStringList all;
        return all;
    }

private:
    QtMessageHandler m_before;
};

TEST(Commands, AnEntryWithoutACommandIsNeverEnabled)
{
    Commands commands;
    commands.setEnabled("mnu_undo", true);
    EXPECT_FALSE(commands.isEnabled("mnu_undo"));
    EXPECT_TRUE(commands.isEnabledFlag("mnu_undo"));
    EXPECT_FALSE(commands.run("mnu_undo"));
    EXPECT_FALSE(commands.isEnabled("never heard of"));

    commands.add("mnu_empty", {});
    EXPECT_FALSE(commands.isEnabled("mnu_empty")) << "an empty function is no command";
    EXPECT_TRUE(commands.names().isEmpty());
}

TEST(Commands, WhatWasSetAheadOfTheCommandHolds)
{
    Commands commands;
    commands.setEnabled("viewhec1", false);
    int runs = 0;
    commands.add("viewhec1", [&] { ++runs; });
    EXPECT_FALSE(commands.run("viewhec1"));
    commands.setEnabled("viewhec1", true);
    EXPECT_TRUE(commands.run("viewhec1"));
    EXPECT_EQ(runs, 1);
}

TEST(Commands, TellOnlyOfStatesThatChange)
{
    Commands commands;
    commands.add("mnu_pageMode", [] {});
    QStringList told;
    QObject::connect(&commands, &Commands::stateChanged, [&](const QString& name) { told << name; });
    commands.setEnabled("mnu_pageMode", true);
    commands.setChecked("mnu_pageMode", false);
    commands.setShown("mnu_pageMode", true);
    EXPECT_TRUE(told.isEmpty());
    commands.setChecked("mnu_pageMode", true);
    commands.setShown("mnu_pageMode", false);
    EXPECT_EQ(told.size(), 2);
    EXPECT_TRUE(commands.isChecked("mnu_pageMode"));
    EXPECT_FALSE(commands.isShown("mnu_pageMode"));
}

TEST(Commands, TheGateComesFirstAndReopenOnlyAfterAFailure)
{
    Commands commands;
    QStringList steps;
    commands.setGate([&] { steps << "gate"; });
    commands.setReopen([&] { steps << "reopen"; });
    commands.add("good", [&] { steps << "good"; });
    commands.add(
        "bad", [&]() -> void { throw std::runtime_error("no such card"); }, logRun);
    commands.add("cancelled", []() -> void { throw CommandEnded(); });

    const LogCatcher log;
    EXPECT_TRUE(commands.run("good"));
    EXPECT_FALSE(commands.run("bad"));
    EXPECT_FALSE(commands.run("cancelled"));
    EXPECT_EQ(steps, (QStringList{"gate", "good", "gate", "reopen", "gate", "reopen"}));
    EXPECT_EQ(LogCatcher::lines(), (QStringList{"kalvo.run: bad ended early: no such card"}));
}

TEST(Commands, ACommandMayAddOthersAndMayEndItsOwner)
{
    auto commands = std::make_unique<Commands>();
    commands->setReopen([] { FAIL() << "nothing is left to reopen"; });
    commands->add("grow", [&] {
        for (int i = 0; i < 500; ++i)
            commands->add(QString::number(i), [] {});
    });
    EXPECT_TRUE(commands->run("grow"));
    EXPECT_EQ(commands->names().size(), 501);
    commands->add("close", [&]() -> void {
        commands.reset();
        throw CommandEnded();
    });
    EXPECT_FALSE(commands->run("close"));
}

TEST(CommandGuard, NothingGetsThrough)
{
    const LogCatcher log;
    bool reopened = false;
    EXPECT_FALSE(guarded(
        logDeck(), "odd", []() -> void { throw 42; }, [&] { reopened = true; }));
    EXPECT_TRUE(reopened);
    EXPECT_FALSE(guarded(
        logDeck(), "twice", []() -> void { throw std::out_of_range("row 7"); },
        []() -> void { throw std::runtime_error("not shown"); }));
    EXPECT_TRUE(guarded(logDeck(), "fine", [] {}));
    EXPECT_EQ(LogCatcher::lines().size(), 3);
}

} // namespace
