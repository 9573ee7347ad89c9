// SPDX-License-Identifier: GPL-3.0-or-later
#include "run/ViewerWindow.h"

#include "deck/ScreenWindow.h"
#include "platform/CommandGuard.h"

#include <QAction>
#include <QFontDatabase>

namespace kalvo {

ViewerWindow::ViewerWindow(const char* name, const QString& caption, ViewerSurroundings around, OnClose onClose)
    : m_around(std::move(around)), m_onClose(onClose)
{
    setObjectName(QString::fromLatin1(name));
    setWindowTitle(caption);
}

void ViewerWindow::run(const char* command, const std::function<void()>& body)
{
    guarded(logRun(), command, body);
}

void ViewerWindow::bringForward(QWidget& focus)
{
    show();
    raise();
    activateWindow();
    focus.setFocus();
}

void ViewerWindow::closeEvent(QCloseEvent* event)
{
    QMainWindow::closeEvent(event);
    if (m_onClose == OnClose::Forget)
        m_around.screens.unload(objectName());
    goBack();
}

void ViewerWindow::goBack()
{
    if (m_around.toMainScreen)
        m_around.toMainScreen();
}

QFont courierFont()
{
    QFont font(QStringLiteral("Courier New"));
    font.setStyleHint(QFont::Monospace);
    font.setFixedPitch(true);
    font.setPointSizeF(QFontDatabase::systemFont(QFontDatabase::FixedFont).pointSizeF());
    return font;
}

QAction* addViewerEntry(QMainWindow& viewer, const QString& menu, const char* name, const QString& caption,
                        std::function<void()> body)
{
    return addMenuEntry(viewer, menu, name, caption, [name, body = std::move(body)] { guarded(logRun(), name, body); });
}

} // namespace kalvo
