// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "deck/CellEditing.h"
#include "deck/Deck.h"
#include "deck/UndoCommands.h"
#include "platform/Commands.h"
#include "platform/Screens.h"
#include "platform/Services.h"
#include "platform/StatusPanels.h"

#include <QString>
#include <QStringList>

#include <optional>

namespace kalvo {

/// What the editing commands of one page work on, and the few steps that they share.
struct EditContext
{
    Deck& deck;
    Services& services;
    Commands& commands;
    StatusPanels& panels;
    Screens& screens;
    UndoCommands& undo;
    CellEditing& editing;
    /// Sets this page's screens apart from those of the other page in the registry; empty on the first one.
    QString pageSuffix = {};

    FlexGrid& grid() const { return deck.Grid1; }
    QString screenName(const char* name) const { return QString::fromLatin1(name) + pageSuffix; }

    /// The selection as far as it lies on cards: without header row and line numbers. None when nothing is left of it.
    std::optional<FlexGrid::Area> selectedCards() const;
    int hiddenRows(int top, int bottom) const;
    /// Panel 7: the pieces joined by "; ". Nothing when there are none, so that the field's help stays.
    void tell(const QStringList& pieces) const;

    void runIfThere(const char* command) const;
    /// Colours the groups of KK cards again where they were coloured: the cards stand elsewhere now. It is the back
    /// colour alone (`recolorKKGroups`): the user's own colours and fonts are his work.
    void followKKGroups() const;
    /// Enables the commands that paste by whether the clipboard holds text.
    void showPasteStates() const;
    bool hasClipboardText() const;
};

/// "1 row", "2 rows": a count with its noun.
QString counted(qint64 count, const char* noun);

/// While it lives a cell property set on the cursor goes to the whole selection.
class RepeatFill
{
public:
    explicit RepeatFill(FlexGrid& grid) : m_grid(grid) { m_grid.setFillStyle(FlexGrid::FillStyle::Repeat); }
    ~RepeatFill() { m_grid.setFillStyle(FlexGrid::FillStyle::Single); }
    RepeatFill(const RepeatFill&) = delete;
    RepeatFill& operator=(const RepeatFill&) = delete;

private:
    FlexGrid& m_grid;
};

} // namespace kalvo
