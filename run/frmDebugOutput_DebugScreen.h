// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/Screens.h"
#include "platform/Services.h"
#include "run/DebugOutput.h"

#include <QMainWindow>

class QListWidget;

namespace kalvo {

/// " Kalvo DEBUG HEC-1": what HEC-1 wrote to the console during a debug run, as list items of `kalvodebugoutput.txt`,
/// each behind three blanks.
class frmDebugOutput : public QMainWindow, public Screen
{
    Q_OBJECT

public:
    explicit frmDebugOutput(Services& services, QWidget* parent = nullptr);

    /// Makes the screen known as "frmDebugOutput".
    static void registerIn(Screens& screens, Services& services);

    /// Reads the file and shows it.
    void showScreen() override;
    void hideScreen() override { hide(); }
    bool isScreenVisible() const override { return isVisible(); }
    /// Reads the file again.
    void repaintScreen() override;

private:
    void buildMenu();
    void copySelection();

    Services& m_services;
    DebugOutput m_output;
    QListWidget* List1 = nullptr;
};

} // namespace kalvo
