// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/Console.h"

#include <QEventLoop>
#include <QTimer>

#include <gtest/gtest.h>

#include <csignal>

using namespace kalvo;

namespace {

#if !defined(Q_OS_WIN)
TEST(Console, AnInterruptArrivesInTheEventLoop)
{
    for (const int signal : {SIGINT, SIGTERM}) { // one after the other: each leaves the next as good as new
        int calls = 0;
        bool inHandler = true;
        QEventLoop loop;
        onInterrupt([&] {
            ++calls;
            EXPECT_FALSE(inHandler) << "a signal handler may not run our code";
            loop.quit();
        });
        std::raise(signal);
        inHandler = false;
        EXPECT_EQ(calls, 0);
        QTimer::singleShot(5000, &loop, &QEventLoop::quit);
        loop.exec();
        EXPECT_EQ(calls, 1);
        onInterrupt({});
    }
}

TEST(Console, ASecondInterruptEndsTheProgram)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(
        {
            onInterrupt([] {});
            std::raise(SIGINT);
            std::raise(SIGINT);
        },
        testing::KilledBySignal(SIGINT), "");
}
#endif

} // namespace
