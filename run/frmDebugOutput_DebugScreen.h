// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "run/DebugOutput.h"
#include "run/ViewerWindow.h"

class QListWidget;

namespace kalvo {

/// " Kalvo DEBUG HEC-1": what HEC-1 wrote to the console during a debug run, as list items of `kalvodebugoutput.txt`,
/// each behind three blanks.
class frmDebugOutput : public ViewerWindow
{
    Q_OBJECT

public:
    frmDebugOutput(Screens& screens, Services& services);

    /// Makes the screen known as "frmDebugOutput".
    static void registerIn(Screens& screens, Services& services);

    /// Reads the file and shows it.
    void showScreen() override;
    /// Reads the file again.
    void repaintScreen() override;

private:
    void buildMenu();
    void copySelection();

    DebugOutput m_output;
    QListWidget* List1 = nullptr;
};

} // namespace kalvo
