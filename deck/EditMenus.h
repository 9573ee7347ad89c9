// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>

namespace kalvo {

class Form1;
class Workspace;

/// What the editing commands need of the main screen that shows their deck: menus that are brought up to date as they
/// open, and ahead of a shortcut; the hourglass; the focus on the grid; edges to drag; the window's width; their own
/// screens.
class EditMenus : public QObject
{
    Q_OBJECT

public:
    /// Belongs to `form`, which must have its menus and its grid.
    EditMenus(Form1& form, Workspace& page);
    ~EditMenus() override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void followMenus();
    void followCommands();
    void showBusy(bool on);

    Form1& m_form;
    Workspace& m_page;
    int m_busy = 0;
};

} // namespace kalvo
