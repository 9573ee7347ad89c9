// SPDX-License-Identifier: GPL-3.0-or-later
#include "deck/ScreenWindow.h"

#include <QAction>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QWidget>
#include <QWindow>

namespace kalvo {

void showAbove(QWidget& screen, const QWidget* window)
{
    screen.winId(); // makes the window that the line below needs
    if (window && window->windowHandle() && screen.windowHandle())
        screen.windowHandle()->setTransientParent(window->windowHandle());
    screen.show();
    screen.raise();
    screen.activateWindow();
}

QPushButton* namedButton(const char* name, const QString& caption, QWidget* parent)
{
    auto* made = new QPushButton(caption, parent);
    made->setObjectName(QString::fromLatin1(name));
    made->setAutoDefault(false);
    return made;
}

QAction* addMenuEntry(QMainWindow& screen, const QString& menu, const char* name, const QString& caption,
                      std::function<void()> body)
{
    auto* action = new QAction(caption, &screen);
    action->setObjectName(QString::fromLatin1(name));
    action->setMenuRole(QAction::NoRole);
    QObject::connect(action, &QAction::triggered, &screen, std::move(body));
    if (menu.isEmpty()) {
        screen.menuBar()->addAction(action);
        return action;
    }
    for (QAction* top : screen.menuBar()->actions())
        if (top->menu() && top->text() == menu) {
            top->menu()->addAction(action);
            return action;
        }
    screen.menuBar()->addMenu(menu)->addAction(action);
    return action;
}

} // namespace kalvo
