// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "deck/AuditCommands.h"
#include "deck/Catalogue.h"
#include "deck/CellEditing.h"
#include "deck/Deck.h"
#include "deck/EditCommands.h"
#include "deck/FileCommands.h"
#include "deck/FitCommands.h"
#include "deck/ImportCommands.h"
#include "deck/LookCommands.h"
#include "deck/MarkCommands.h"
#include "deck/RowCommands.h"
#include "deck/UndoCommands.h"
#include "platform/Commands.h"
#include "platform/Screens.h"
#include "platform/Services.h"
#include "platform/StatusPanels.h"

#include <QObject>
#include <QString>

#include <functional>
#include <memory>
#include <vector>

namespace kalvo {

/// Everything behind one main screen: its deck, commands, panels and command groups. The first page and its clone each
/// have one of their own, so that a page's commands always act on the deck that it shows.
///
/// Rooms above this one hang their groups in with `keep`; what they need of a page is public here.
class Workspace : public QObject
{
    Q_OBJECT

    std::unique_ptr<Catalogue> m_ownCatalogue; ///< null on a clone; ahead of all that asks it

public:
    /// @param first the page that this one is a clone of; null for the first page. Clones share its recent files.
    Workspace(Services& services, Screens& screens, Workspace* first = nullptr);
    ~Workspace() override;

    Services& services;
    Screens& screens;
    StatusPanels panels;
    Deck deck;
    Commands commands;
    CellEditing editing;
    FileCommands files;
    UndoCommands undo;
    const EditContext editContext;
    RowCommands rows;
    EditCommands edit;
    FitCommands fit;
    AuditCommands audit;
    MarkCommands marks;
    LookCommands looks;
    ImportCommands imports;
    Catalogue& catalogue; ///< the first page's: its files are read once for all pages
    /// The HEC-1 that a run starts, for a tool tip and the about screen; empty while nobody says.
    std::function<QString()> engineText;

    /// The start of the main screen, once it shows this deck: an empty deck under an open editor, first texts of the
    /// panels, recent files.
    void start();

    /// Takes a command group of a higher room into this page; it lives as long as the page.
    void keep(std::shared_ptr<void> group) { m_groups.push_back(std::move(group)); }

    bool isClone() const { return m_first != nullptr; }

Q_SIGNALS:
    /// A screen that came up by itself gives the keyboard back to the deck.
    void focusWanted();

private:
    void addTextSize();
    void followDeck();

    CatalogueHelp m_fieldHelp;
    Workspace* m_first;
    std::vector<std::shared_ptr<void>> m_groups; ///< last, so that the groups go first
};

} // namespace kalvo
