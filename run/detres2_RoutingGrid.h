// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/FlexGrid.h"
#include "run/DetailedRoutings.h"
#include "run/RoutingWindow.h"

namespace kalvo {

class ResultGrid;

/// The detailed routings of `DetRes` as a grid, a row for each line of the file. Closing forgets them.
class detres2 : public RoutingWindow
{
    Q_OBJECT

public:
    explicit detres2(ViewerSurroundings around);
    ~detres2() override;

    /// Reads the file, shows it, and tells when it is missing or too long.
    void showScreen() override;
    /// Reads again.
    void repaintScreen() override;

private:
    void buildMenus();
    void setWidths();
    void goBack() override;

    FlexGrid m_table;
    GridFill m_filled = GridFill::Missing;
    ResultGrid* Grid1 = nullptr;
};

} // namespace kalvo
