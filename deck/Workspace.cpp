// SPDX-License-Identifier: GPL-3.0-or-later
#include "deck/Workspace.h"

#include "deck/MainMenu.h"
#include "deck/SystemFamily.h"
#include "deck/TextSize.h"

namespace kalvo {

Workspace::Workspace(Services& pageServices, Screens& pageScreens, Workspace* first)
    : m_ownCatalogue(first ? nullptr : std::make_unique<Catalogue>(pageServices)), services(pageServices),
      screens(pageScreens), deck(services, panels), editing(deck),
      files(deck, services, commands, panels, screens, first ? &first->files.recentFiles() : nullptr),
      undo(deck, services, commands, panels, screens, files),
      editContext{deck,    services, commands, panels,
                  screens, undo,     editing,  first ? QStringLiteral(" (Clone)") : QString()},
      rows(editContext), edit(editContext, rows), fit(editContext), audit(editContext), marks(editContext),
      looks(editContext),
      imports(deck, services, commands, screens, files.recentFiles(), first ? &first->imports : nullptr),
      catalogue(first ? first->catalogue : *m_ownCatalogue), m_fieldHelp(catalogue, deck, panels), m_first(first)
{
    editing.setFieldHelp(&m_fieldHelp);
    editing.setRecorder([this] { undo.NewUndoAdd(); });
    setStartStates(commands);
    commands.setGate([this] { deck.storeEditBox(); });
    commands.setReopen([this] {
        deck.setEditorActive(true);
        deck.setGridShown(true);
        panels.setWaiting(false);
        panels.setProgress(-1);
        deck.setTextbox();
    });
    addTextSize();
    followDeck();
}

Workspace::~Workspace() = default;

void Workspace::addTextSize()
{
    commands.add(QStringLiteral("uptext"), [this] { uptext(deck); });
    commands.add(QStringLiteral("downtext"), [this] { DOWNTEXT(deck); });
}

void Workspace::followDeck()
{
    // The output on disk is that of another deck from the first change on.
    connect(&deck, &Deck::changed, this, [this] {
        commands.setEnabled(QStringLiteral("viewhec1"), false);
        commands.setEnabled(QStringLiteral("graphdata"), false);
    });
    connect(&deck, &Deck::replaced, this, [this] { editing.showField(); });
    connect(&undo, &UndoCommands::stepped, this, [this] { editing.showField(); });
    connect(&deck.Grid1, &FlexGrid::selectionChanged, this, [this] {
        const FlexGrid::Area area = deck.Grid1.selection();
        if (!deck.isEditorActive() || (area.top == area.bottom && area.left == area.right))
            return;
        for (const char* name : {"editcopy", "editcut", "mnupopupcopy", "mnupopupcut"})
            commands.setEnabled(QString::fromLatin1(name), true);
    });
}

void Workspace::start()
{
    deck.setEditorActive(false);
    panels.set(2, systemFamily().message);
    panels.set(7, QStringLiteral("Help and System Information"));
    panels.setProgress(-1);
    deck.dataSaved = true;
    deck.undoCount = 1;
    for (const QString& name : pasteCommands())
        commands.setEnabled(name, services.clipboard.hasText());
    deck.setEditorActive(true);
    deck.setEmptyLayout();
    editing.showField();
    deck.setTextbox();
    if (isClone())
        return;
    panels.setToolTip(7, files.recovery().notice());
    catalogue.load();
    files.openoldfiles();
}

} // namespace kalvo
