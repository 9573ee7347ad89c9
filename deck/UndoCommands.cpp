// SPDX-License-Identifier: GPL-3.0-or-later
#include "deck/UndoCommands.h"

#include <QFileInfo>

namespace kalvo {

namespace {

constexpr int kUndoPanel = 2;
constexpr int kManyLevels = 99;
constexpr auto kLastRunFile = "checky.dat";

} // namespace

PanelLook undoPanelLook(int undoCount)
{
    if (undoCount <= kManyLevels)
        return {};
    return {.foreColor = rgb(255, 0, 0), .centred = true, .minimumWidth = 500, .fontSize = 8.0};
}

UndoCommands::UndoCommands(Deck& deck, Services& services, Commands& commands, StatusPanels& panels, Screens& screens,
                           FileCommands& files)
    : m_deck(deck), m_services(services), m_commands(commands), m_panels(panels), m_screens(screens), m_files(files)
{
    for (const char* name : {"mnu_undo", "mnupopupundo"})
        commands.add(QString::fromLatin1(name), [this] { NewUndo(); });
    for (const char* name : {"mnu_redo", "mnu_popupredo"})
        commands.add(QString::fromLatin1(name), [this] { NewRedo(); });
    commands.add(QStringLiteral("mnu_restorelastrun"), [this] { mnu_restorelastrun(); });
    commands.add(QStringLiteral("mnu_resetundo"), [this] { mnu_resetundo(); });
    commands.add(QStringLiteral("mnu_undooff"), [this] { mnu_undooff(); });
    enableUndo(false);
    enableRedo(false);
    connect(&deck, &Deck::replaced, this, &UndoCommands::afterLoad);
}

// -- Recording -------------------------------------------------------------------------------------------------------

void UndoCommands::NewUndoAdd()
{
    if (m_suppressed > 0)
        return;
    if (m_undoOff) {
        m_store.dropRedo();
        enableRedo(false);
        m_deck.noteChange();
        return;
    }
    // By the count ahead of the new level, as it always was: from the first level on this enables.
    enableUndo(m_store.undoCount() >= 1);
    // A level that finds no memory must not keep the user from editing.
    guarded(logDeck(), "NewUndoAdd", [this] { m_store.record(m_deck.Grid1); });
    m_deck.undoCount = m_store.undoCount();
    enableRedo(false);
    showCount();
    m_deck.noteChange();
}

// -- Steps back and forth --------------------------------------------------------------------------------------------

void UndoCommands::NewUndo()
{
    if (!m_store.canUndo() || m_undoOff)
        return;
    // A deck that goes backwards no longer matches what the viewer shows.
    m_screens.unload(QStringLiteral("Form12"));
    m_commands.setEnabled(QStringLiteral("viewhec1"), false);
    {
        const Deck::BulkWork work(m_deck);
        m_store.undo(m_deck.Grid1);
        m_deck.undoCount = m_store.undoCount();
        m_deck.newlines();
        runIfThere("unhide");
        runIfThere("mnu_restore");
        runIfThere("newdefaultmnu");
    }
    enableRedo(true);
    enableUndo(m_store.undoCount() != 1);
    showCount();
    m_deck.noteChange();
    Q_EMIT stepped();
}

void UndoCommands::NewRedo()
{
    if (m_store.redoEmpty()) {
        enableUndo(true);
        enableRedo(false);
        return;
    }
    if (m_undoOff)
        return;
    {
        const Deck::BulkWork work(m_deck);
        m_store.redo(m_deck.Grid1);
        m_deck.undoCount = m_store.undoCount();
        m_deck.newlines();
    }
    enableRedo(false);
    enableUndo(true);
    showCount();
    m_deck.noteChange();
    Q_EMIT stepped();
}

void UndoCommands::runIfThere(const char* command)
{
    const QString name = QString::fromLatin1(command);
    if (m_commands.has(name))
        m_commands.run(name);
}

void UndoCommands::mnu_restorelastrun()
{
    const QString name = QString::fromLatin1(kLastRunFile);
    if (!QFileInfo(m_services.folder.file(name)).isFile()) {
        m_services.dialogs.tell(
            QStringLiteral("There is no last run file: HEC-1 has not yet been run in this folder.\r\n%1")
                .arg(m_services.folder.file(name)));
        return;
    }
    // Loading forgets all levels, so this copy is all that will be left of the deck as it stands.
    QString why;
    if (!m_files.recovery().keepIfUnsaved(&why)) {
        const MessageBox box{
            QStringLiteral("The present deck differs from its file, and no copy of it could be kept:\r\n%1\r\nUse the "
                           "last run file all the same?")
                .arg(why),
            QString::fromLatin1(kApplicationTitle), Icon::Warning, Buttons::OkCancel, Button::Cancel};
        if (m_services.dialogs.message(box) != Button::Ok)
            return;
    }
    // Nothing has changed yet: the load asks about a deck that was not saved, and must not ask about one that was.
    const bool saved = m_deck.dataSaved;
    undo_add();
    m_deck.dataSaved = saved;
    m_files.opener(name);
    m_panels.set(1, QStringLiteral("Using Last Run File"));
    m_commands.setEnabled(QStringLiteral("mnu_redo"), false);
}

// -- Settings --------------------------------------------------------------------------------------------------------

void UndoCommands::mnu_resetundo()
{
    const MessageBox box{QStringLiteral("There are about %1 bytes in Use by Undo\r\n"
                                        "Press YES to reset the Undo System - Warning! You will not be able to Undo "
                                        "recent Edits ")
                             .arg(m_store.estimatedBytes()),
                         QString::fromLatin1(kApplicationTitle), Icon::Warning, Buttons::YesNoCancel, Button::No};
    if (m_services.dialogs.message(box) != Button::Yes)
        return;
    reset();
    showCount();
}

void UndoCommands::mnu_undooff()
{
    const QString name = QStringLiteral("mnu_undooff");
    m_undoOff = !m_commands.isChecked(name);
    m_commands.setChecked(name, m_undoOff);
    showPlain(m_undoOff ? QStringLiteral("Undo Off ") : QStringLiteral("Undo On "));
}

void UndoCommands::reset()
{
    m_store.reset();
    m_deck.undoCount = m_store.undoCount();
    enableUndo(false);
    enableRedo(false);
}

/// A load takes the tick off the menu but leaves recording as it is; somebody has to say so.
void UndoCommands::afterLoad()
{
    reset();
    if (m_undoOff)
        showPlain(QStringLiteral("Undo Off "));
    else
        showCount();
}

// -- What the screen shows -------------------------------------------------------------------------------------------

void UndoCommands::enableUndo(bool on)
{
    m_commands.setEnabled(QStringLiteral("mnu_undo"), on);
    m_commands.setEnabled(QStringLiteral("mnupopupundo"), on);
}

void UndoCommands::enableRedo(bool on)
{
    m_commands.setEnabled(QStringLiteral("mnu_redo"), on);
    m_commands.setEnabled(QStringLiteral("mnu_popupredo"), on);
}

void UndoCommands::showCount()
{
    m_panels.setLook(kUndoPanel, undoPanelLook(m_store.undoCount()));
    m_panels.setToolTip(kUndoPanel, QStringLiteral("Levels of undo, counted from 1. Redo holds one step."));
    m_panels.set(kUndoPanel, QStringLiteral("Undo %1 ").arg(m_store.undoCount()));
}

void UndoCommands::showPlain(const QString& text)
{
    m_panels.setLook(kUndoPanel, {});
    m_panels.setToolTip(kUndoPanel, m_undoOff ? QStringLiteral("Undo Off: edits are not recorded and cannot be taken "
                                                               "back. Settings, Undo Off turns it on again.")
                                              : QString());
    m_panels.set(kUndoPanel, text);
}

} // namespace kalvo
