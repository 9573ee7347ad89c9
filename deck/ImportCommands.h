// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "deck/Deck.h"
#include "deck/FreeFormatDesk.h"
#include "deck/ImportDeck.h"
#include "deck/RecentFiles.h"
#include "platform/Commands.h"
#include "platform/Screens.h"
#include "platform/Services.h"

#include <QObject>

#include <memory>

namespace kalvo {

/// The ways in and out of the deck besides Open and Save: import from another deck, free format to fixed and back. Adds
/// `mnu_import`, `mnu_freeformat` and `mnu_SaveAsTextFile` to the commands, and the two hidden entries of the menu that
/// never had a function.
///
/// Viewer, editor and translation grid are one for all pages; what is copied there can be pasted on every page.
class ImportCommands : public QObject
{
    Q_OBJECT

public:
    /// @param first the group of the first page, for a clone page; null: viewer and desk of its own.
    ImportCommands(Deck& deck, Services& services, Commands& commands, Screens& screens, RecentFiles& recent,
                   ImportCommands* first = nullptr);
    ~ImportCommands() override;

    /// Shared with the screens, which may go after the page.
    const std::shared_ptr<ImportDeck>& importDeck() const { return m_importDeck; }
    const std::shared_ptr<FreeFormatDesk>& freeFormat() const { return m_freeFormat; }
    /// True while mnu_import works.
    bool importing() const { return m_importDeck->importing(); }

    /// Opens a file into the import viewer `Form5` and shows it.
    void mnu_import();
    void mnu_freeformat();
    /// Cuts the deck behind its ZZ card, then shows it as delimited text in `Free`, or tells that a row has no ID.
    void mnu_SaveAsTextFile();

private:
    void enablePaste();

    Deck& m_deck;
    Services& m_services;
    Commands& m_commands;
    Screens& m_screens;
    std::shared_ptr<ImportDeck> m_importDeck;
    std::shared_ptr<FreeFormatDesk> m_freeFormat;
};

} // namespace kalvo
