// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "deck/RecentFiles.h"
#include "platform/Screens.h"
#include "platform/Services.h"

#include <QDialog>

class QListWidget;
class QPushButton;

namespace kalvo {

/// "Recent File List Manager": takes entries off the recent-files list. The files themselves are never touched.
class OldFileManager : public QDialog, public Screen
{
    Q_OBJECT

public:
    OldFileManager(RecentFiles& recent, Services& services, QWidget* parent = nullptr);

    /// Makes the screen known as "OldFileManager".
    static void registerIn(Screens& screens, RecentFiles& recent, Services& services);

    void showScreen() override;
    void hideScreen() override { hide(); }
    bool isScreenVisible() const override { return isVisible(); }
    /// Lists the entries as they are now.
    void repaintScreen() override;

private:
    void buildControls();
    void setAllChecks(Qt::CheckState state);
    void removeSelected();

    RecentFiles& m_recent;
    Services& m_services;
    QListWidget* List1 = nullptr;
    QPushButton* Command1 = nullptr;
    QPushButton* Command2 = nullptr;
    QPushButton* Command3 = nullptr;
    QPushButton* Command4 = nullptr;
};

} // namespace kalvo
