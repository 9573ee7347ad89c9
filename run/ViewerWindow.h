// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/Screens.h"
#include "platform/Services.h"

#include <QFont>
#include <QMainWindow>

#include <functional>

class QAction;

namespace kalvo {

/// What a viewer of a run's files is made with.
struct ViewerSurroundings
{
    Screens& screens;
    Services& services;
    std::function<void()> toMainScreen; ///< gives the keyboard back to the deck
    std::function<QString()> deckName;  ///< file name of the deck, offered for a save; may be empty
};

/// The window of a viewer of what HEC-1 wrote: known by its name, and giving the keyboard back when it is closed, by
/// Return or by its frame.
class ViewerWindow : public QMainWindow, public Screen
{
    Q_OBJECT

public:
    void hideScreen() override { hide(); }
    bool isScreenVisible() const override { return isVisible(); }

protected:
    enum class OnClose
    {
        Keep,  ///< the window is hidden and keeps what it shows
        Forget ///< the screen is unloaded
    };
    ViewerWindow(const char* name, const QString& caption, ViewerSurroundings around, OnClose onClose);

    Services& services() const { return m_around.services; }
    Screens& screens() const { return m_around.screens; }
    QString deckName() const { return m_around.deckName ? m_around.deckName() : QString(); }

    /// Runs a command inside the guard.
    void run(const char* command, const std::function<void()>& body);
    /// Shows the window ahead of the others, with the keyboard on a control. What is to be told is told ahead of it: a
    /// box over a window that is only just coming up stands over the main screen and takes that one forward.
    void bringForward(QWidget& focus);
    /// The window is closed: the keyboard goes to the deck, or to the screen that this one was opened from.
    virtual void goBack();
    void closeEvent(QCloseEvent* event) override;

private:
    const ViewerSurroundings m_around;
    const OnClose m_onClose;
};

/// "Courier New", or what stands for it: the columns of a report line up in a font of fixed pitch alone.
QFont courierFont();

/// An entry of a viewer's menu, or with none of its menu bar, under its given name; its body runs guarded.
QAction* addViewerEntry(QMainWindow& viewer, const QString& menu, const char* name, const QString& caption,
                        std::function<void()> body);

} // namespace kalvo
