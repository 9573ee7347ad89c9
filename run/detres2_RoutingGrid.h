// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/FlexGrid.h"
#include "run/DetailedRoutings.h"
#include "run/RoutingScreens.h"

#include <QMainWindow>

namespace kalvo {

class ResultGrid;

/// The detailed routings of `DetRes` as a grid, a row for each line of the file. Closing forgets them.
class detres2 : public QMainWindow, public Screen
{
    Q_OBJECT

public:
    explicit detres2(RoutingSurroundings around, QWidget* parent = nullptr);
    ~detres2() override;

    /// Reads the file, shows it, and tells when it is missing or too long.
    void showScreen() override;
    void hideScreen() override { hide(); }
    bool isScreenVisible() const override { return isVisible(); }
    /// Reads again.
    void repaintScreen() override;

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void buildMenus();
    void setWidths();

    const RoutingSurroundings m_around;
    FlexGrid m_table;
    GridFill m_filled = GridFill::Missing;
    ResultGrid* Grid1 = nullptr;
};

} // namespace kalvo
