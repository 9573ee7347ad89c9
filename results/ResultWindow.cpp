// SPDX-License-Identifier: GPL-3.0-or-later
#include "results/ResultWindow.h"

#include "deck/ScreenWindow.h"
#include "platform/CommandGuard.h"
#include "platform/ResultGrid.h"

#include <QAction>
#include <QCloseEvent>
#include <QMenu>
#include <QMenuBar>

namespace kalvo {

ResultWindow::ResultWindow(const char* name, const QString& caption, std::shared_ptr<ResultDesk> desk,
                           MainWindow mainWindow)
    : m_desk(std::move(desk)), m_mainWindow(std::move(mainWindow))
{
    setObjectName(QString::fromLatin1(name));
    setWindowTitle(caption);
    auto* middle = new QWidget(this);
    setCentralWidget(middle);
    middle->installEventFilter(this);
}

ResultWindow::~ResultWindow()
{
    dropControls();
}

void ResultWindow::dropControls()
{
    delete takeCentralWidget();
    m_firstFocus = nullptr;
}

void ResultWindow::showScreen()
{
    showAbove(*this, m_mainWindow ? m_mainWindow() : nullptr);
    if (m_firstFocus)
        m_firstFocus->setFocus();
}

QMenu* ResultWindow::addMenu(const char* name, const QString& caption)
{
    QMenu* menu = menuBar()->addMenu(caption);
    menu->setObjectName(QString::fromLatin1(name));
    return menu;
}

QAction* ResultWindow::addEntry(QMenu* menu, const char* name, const QString& caption, std::function<void()> body)
{
    return addMenuEntry(*this, menu ? menu->title() : QString(), name, caption,
                        [this, name, body = std::move(body)] { run(name, body); });
}

QAction* ResultWindow::addCsvEntry(QMenu* menu, ResultGrid* grid)
{
    return addEntry(menu, "mnu_saveCsv", QStringLiteral("Save as CS&V"), [grid] { grid->saveCsv(); });
}

void ResultWindow::run(const char* command, const std::function<void()>& body)
{
    if (body)
        guarded(logResults(), command, body);
}

void ResultWindow::returnToMain()
{
    hide();
    m_desk->tellReturned();
}

void ResultWindow::closedByUser()
{
    m_desk->tellClosed(objectName());
    returnToMain();
}

bool ResultWindow::event(QEvent* event)
{
    if (event->type() == QEvent::WindowActivate)
        run("activation", [this] { activated(); });
    return QMainWindow::event(event);
}

void ResultWindow::closeEvent(QCloseEvent* event)
{
    event->ignore(); // what closing means is the screen's own matter; the window is the registry's
    run("closing", [this] { closedByUser(); });
}

bool ResultWindow::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == centralWidget() && event->type() == QEvent::Resize)
        layOut(centralWidget()->size());
    return QMainWindow::eventFilter(watched, event);
}

} // namespace kalvo
