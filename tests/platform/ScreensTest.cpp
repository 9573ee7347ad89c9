// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/Screens.h"
#include "tests/support/GridText.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QTimer>

#include <gtest/gtest.h>

using namespace kalvo;

namespace {

struct Life
{
    int made = 0;
    int gone = 0;
    int repaints = 0;
};

class FakeScreen : public Screen
{
public:
    explicit FakeScreen(Life& life) : m_life(life) { ++m_life.made; }
    ~FakeScreen() override { ++m_life.gone; }
    void showScreen() override { m_shown = true; }
    void hideScreen() override { m_shown = false; }
    bool isScreenVisible() const override { return m_shown; }
    void repaintScreen() override { ++m_life.repaints; }

    int data = 0;

private:
    Life& m_life;
    bool m_shown = false;
};

struct Registry
{
    Life life;
    Screens screens;
    Registry()
    {
        for (const char* name : {"GRAPHER", "Form10"})
            screens.add(QLatin1String(name), [this] { return std::make_unique<FakeScreen>(life); });
    }
};

/// Runs `work` from within an event loop, as every click of a user does.
void inTheEventLoop(const std::function<void()>& work)
{
    QEventLoop loop;
    QTimer::singleShot(0, &loop, [&] {
        work();
        loop.quit();
    });
    loop.exec();
}

TEST(Screens, AreMadeOnFirstUseAndFoundByName)
{
    Registry r;
    EXPECT_EQ(r.screens.names(), (QStringList{"Form10", "GRAPHER"}));
    EXPECT_FALSE(r.screens.isLoaded("Form10"));
    EXPECT_EQ(r.life.made, 0);
    r.screens.show("Form10");
    EXPECT_TRUE(r.screens.isVisible("Form10"));
    EXPECT_EQ(r.screens.load("Form10"), r.screens.loadAs<FakeScreen>("Form10"));
    EXPECT_EQ(r.life.made, 1);
    r.screens.load("GRAPHER");
    EXPECT_FALSE(r.screens.isVisible("GRAPHER"));
    EXPECT_EQ(r.screens.loaded(), (QStringList{"Form10", "GRAPHER"}));
    r.screens.repaint("Form10");
    EXPECT_EQ(r.life.repaints, 1);
}

TEST(Screens, AnUnknownNameIsJustNotThere)
{
    Registry r;
    EXPECT_EQ(r.screens.load("Form99"), nullptr);
    EXPECT_FALSE(r.screens.isKnown("Form99"));
    EXPECT_FALSE(r.screens.isVisible("Form99"));
    r.screens.show("Form99");
    r.screens.repaint("Form99");
    r.screens.unload("Form99");
    EXPECT_TRUE(r.screens.loaded().isEmpty());
}

TEST(Screens, UnloadingForgetsTheData)
{
    Registry r;
    r.screens.loadAs<FakeScreen>("Form10")->data = 7;
    r.screens.unload("Form10");
    EXPECT_FALSE(r.screens.isLoaded("Form10"));
    EXPECT_EQ(r.screens.loadAs<FakeScreen>("Form10")->data, 0);
}

TEST(Screens, UnloadingFromAnOwnSlotWaitsUntilTheSlotIsLeft)
{
    Registry r;
    auto* screen = r.screens.loadAs<FakeScreen>("GRAPHER");
    screen->showScreen();
    inTheEventLoop([&] {
        r.screens.unload("GRAPHER");
        EXPECT_FALSE(screen->isScreenVisible()) << "its window goes at once";
        // A wait for HEC-1 in the same slot turns the event loop; the screen whose slot this is must live on.
        QEventLoop wait;
        QTimer::singleShot(5, &wait, &QEventLoop::quit);
        wait.exec();
        EXPECT_EQ(r.life.gone, 0);
        screen->data = 1;
    });
    inTheEventLoop([] {});
    EXPECT_EQ(r.life.gone, 1);
}

TEST(Screens, ARegistryTakesItsScreensAlong)
{
    Life life;
    {
        Screens screens;
        screens.add("A", [&] { return std::make_unique<FakeScreen>(life); });
        screens.add("B", [&] { return std::make_unique<FakeScreen>(life); });
        screens.load("A");
        screens.load("B");
        screens.unload("B");
    }
    EXPECT_EQ(life.gone, 2) << "the one that was still on its way out too";
}

TEST(Screens, UnloadAllGoesBackwards)
{
    Registry r;
    r.screens.load("GRAPHER");
    r.screens.load("Form10");
    QStringList gone;
    QObject::connect(&r.screens, &Screens::screenUnloaded, [&](const QString& name) { gone << name; });
    r.screens.unloadAll();
    EXPECT_EQ(gone, (QStringList{"Form10", "GRAPHER"}));
}

} // namespace
