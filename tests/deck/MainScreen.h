// SPDX-License-Identifier: GPL-3.0-or-later
// The main screen over scripted services, driven by real keys and clicks.
#pragma once

#include "deck/Form1_MainScreen.h"
#include "deck/StatusPanelBar.h"
#include "platform/FlexGridView.h"
#include "tests/support/GridText.h"
#include "tests/support/ScriptedServices.h"

#include <QAction>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QTest>

#include <gtest/gtest.h>

namespace kalvo {

struct MainScreen : testing::Test
{
    ScriptedServices services;
    Screens screens;
    Workspace page{services, screens};
    Form1 form{page};
    FlexGrid& grid = page.deck.Grid1;

    MainScreen()
    {
        services.measure.setTwipsPerCharacter(110);
        form.load();
        form.show();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&form));
    }

    template <class Control> Control* find(const char* name)
    {
        auto* control = form.findChild<Control*>(QString::fromLatin1(name));
        EXPECT_NE(control, nullptr) << name;
        return control;
    }
    QLineEdit& Text1() { return *find<QLineEdit>("Text1"); }
    FlexGridView& Grid1() { return *form.grid(); }
    QAction& entry(const char* name) { return *find<QAction>(name); }
    QString cell(int row, int col) { return grid.textMatrix(row, col); }
    QString panel(int number) { return page.panels.text(number); }
    QColor tint() { return Text1().palette().color(QPalette::Base); }

    /// Keys go to whoever has the focus, as from a keyboard.
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QTest::keyClick(form.focusWidget(), key, modifiers);
    }
    void type(const char* keys)
    {
        for (const char* key = keys; *key; ++key)
            QTest::keyClick(form.focusWidget(), *key);
    }
    void editAt(int row, int col)
    {
        grid.setCursor(row, col);
        Text1().setFocus();
    }
    QString put(const QByteArray& deck, const QString& name = QStringLiteral("deck.dat"))
    {
        return services.put(name, deck);
    }
    void open(const QByteArray& deck)
    {
        ASSERT_TRUE(page.files.opener(put(deck)));
        page.deck.currentFilePath = services.path("deck.dat");
    }
};

inline const QColor kAtRest(230, 240, 250);
inline const QColor kPressed(245, 200, 200);
inline const QColor kTooLong(247, 223, 45);
inline const QColor kFocusLost(184, 209, 230);

} // namespace kalvo
