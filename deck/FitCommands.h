// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "deck/EditContext.h"

#include <QObject>

namespace kalvo {

/// How the deck looks: sizes of rows and columns, letters and colours of the selection, lines between the cells. None
/// of it changes a card or is recorded for undo. Adds `mnufitrows`, `mnufitcolumns`, `mnu_fitboth`, `mnu_Bold`,
/// `highlight`, `mnu_hifont`, `mnu_gridlines`, `mnu_adjustgrids` and `mnu_cleanup` to the commands.
class FitCommands : public QObject
{
    Q_OBJECT

public:
    explicit FitCommands(const EditContext& context);

    void mnufitrows();
    void mnufitcolumns();
    void mnu_fitboth();
    /// Bold on or off for the selection, the opposite of the cursor's cell.
    void mnu_Bold();
    /// Asks for the selection's text colour.
    void highlight();
    /// Asks for the selection's font, size, colour and effects; rows are fitted to it.
    void mnu_hifont();
    void mnu_gridlines();
    /// Ticked while the user may drag the edges of rows and columns; whoever shows the grid follows the tick.
    void mnu_adjustgrids();
    /// Default rows and font, fitted; KK cards and groups are marked; the window becomes as wide as the columns. Shows
    /// a grid that a broken load has left hidden.
    void mnu_cleanup();

Q_SIGNALS:
    void formWidthWanted(int twips);

private:
    EditContext m_context;
    FlexGrid& m_grid;
};

} // namespace kalvo
