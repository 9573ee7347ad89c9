// SPDX-License-Identifier: GPL-3.0-or-later
#include "deck/ScreenWindow.h"

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

} // namespace kalvo
