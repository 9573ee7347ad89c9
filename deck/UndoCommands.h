// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "deck/Deck.h"
#include "deck/FileCommands.h"
#include "deck/UndoStore.h"
#include "platform/Commands.h"
#include "platform/Screens.h"
#include "platform/Services.h"
#include "platform/StatusPanels.h"

#include <QObject>

namespace kalvo {

/// Undo and redo of one page. Adds `mnu_undo`, `mnu_redo` (with their pop-up twins `mnupopupundo`, `mnu_popupredo`),
/// `mnu_restorelastrun`, `mnu_resetundo` and `mnu_undooff` to the commands.
///
/// A command that changes the deck calls `NewUndoAdd` once, just before its change and before it suspends the editor.
/// Taking a step back shows all rows and default colours and fonts again, by the commands `unhide`, `mnu_restore` and
/// `newdefaultmnu` of that page, as far as somebody has added them.
class UndoCommands : public QObject
{
    Q_OBJECT

public:
    UndoCommands(Deck& deck, Services& services, Commands& commands, StatusPanels& panels, Screens& screens,
                 FileCommands& files);

    /// Records one level and tells the deck that it changes. Touches neither grid nor editor: no visibility, focus,
    /// caret or marking, so that it can run on every key. While undo is off it records nothing, but the redo level
    /// goes, because redo would pour an old state over the edit.
    void NewUndoAdd();
    void undo_add() { NewUndoAdd(); }
    void NewUndo();
    void NewRedo();
    void mnu_restorelastrun();
    void mnu_resetundo();
    void mnu_undooff();

    bool undoOff() const { return m_undoOff; }
    bool undoSuppressed() const { return m_suppressed > 0; }
    bool redoEmpty() const { return m_store.redoEmpty(); }
    const UndoStore& store() const { return m_store; }

    /// Nothing is recorded while it lives (`undoSuppressed`): for changes of the deck that are no edits.
    class Suppress
    {
    public:
        explicit Suppress(UndoCommands& undo) : m_undo(undo) { ++undo.m_suppressed; }
        ~Suppress() { --m_undo.m_suppressed; }
        Suppress(const Suppress&) = delete;
        Suppress& operator=(const Suppress&) = delete;

    private:
        UndoCommands& m_undo;
    };

Q_SIGNALS:
    /// The deck and its cursor are those of another level now. The cell was not entered, so nobody has told it.
    void stepped();

private:
    void enableUndo(bool on);
    void enableRedo(bool on);
    void reset();
    void afterLoad();
    void showCount();
    void showPlain(const QString& text);
    void runIfThere(const char* command);

    Deck& m_deck;
    Services& m_services;
    Commands& m_commands;
    StatusPanels& m_panels;
    Screens& m_screens;
    FileCommands& m_files;
    UndoStore m_store;
    bool m_undoOff = false;
    int m_suppressed = 0;
};

/// How panel 2 shows a number of levels: in red, centred, in a panel of its own width once there are more than 99.
PanelLook undoPanelLook(int undoCount);

} // namespace kalvo
