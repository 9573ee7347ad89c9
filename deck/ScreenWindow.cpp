// SPDX-License-Identifier: GPL-3.0-or-later
#include "deck/ScreenWindow.h"

#include <QAction>
#include <QKeyEvent>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QScreen>
#include <QWidget>
#include <QWindow>

#include <algorithm>

namespace kalvo {

namespace {

constexpr QSize kFrame(8, 36); ///< what the desktop lays around a window, about

/// Presses the button that has the keyboard. Qt does so only where Enter elsewhere presses a button too.
class EnterPresses : public QObject
{
public:
    explicit EnterPresses(QPushButton* button) : QObject(button), m_button(*button)
    {
        button->installEventFilter(this);
    }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() != QEvent::KeyPress)
            return QObject::eventFilter(watched, event);
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key != Qt::Key_Return && key != Qt::Key_Enter)
            return QObject::eventFilter(watched, event);
        m_button.click();
        return true;
    }

private:
    QPushButton& m_button;
};

} // namespace

void fitToDisplay(QWidget& window)
{
    const QSize fitting = window.size().boundedTo(window.screen()->availableSize() - kFrame);
    if (fitting != window.size()) // else a window that takes its size from its contents would be held to this one
        window.resize(fitting);
}

void placeOnDisplay(QWidget& window, QPoint place)
{
    fitToDisplay(window);
    const QRect display = window.screen()->availableGeometry();
    const QSize spare = display.size() - kFrame - window.size();
    window.move(display.topLeft() + QPoint(std::clamp(place.x(), 0, std::max(0, spare.width())),
                                           std::clamp(place.y(), 0, std::max(0, spare.height()))));
}

void showAbove(QWidget& screen, const QWidget* window)
{
    if (!screen.isVisible())
        fitToDisplay(screen);
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
    new EnterPresses(made);
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
