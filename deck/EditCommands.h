// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "deck/EditContext.h"
#include "deck/FindReplace.h"
#include "deck/GoTo.h"
#include "deck/RowCommands.h"

#include <QObject>
#include <QString>

namespace kalvo {

/// Copy, cut, paste and clear of one page's deck, and the ways into Find and Replace and Go To. Adds `editcopy`,
/// `editcut`, `editpaste`, `pasteover`, `editclear` with their pop-up twins, `mnu_clearClipboard`, `mnu_FindandReplace`
/// and `mnu_goto` to the commands.
///
/// Blocks go through the clipboard as plain text: cells parted by TAB, rows by CR or CR LF.
class EditCommands : public QObject
{
    Q_OBJECT

public:
    EditCommands(const EditContext& context, RowCommands& rows);

    enum class Menu
    {
        Edit,
        Popup
    };
    /// Sets which entries can be chosen, by what is selected and by the clipboard. For a menu that is about to open,
    /// and ahead of a key that may be one of its shortcuts: the platform tests shortcuts without opening the menu.
    void menuOpening(Menu menu);

    void editcopy();
    void editcut();
    void editclear();
    /// Inserts as many rows above the cursor as the clipboard's text has and puts it there, from the cursor's column
    /// on. Two levels: the deck of before, and the deck with the empty rows. Asks above 50,000 characters.
    void editpaste();
    /// Lays the clipboard's text over the cells from the cursor on. The grid grows by the height of the block. The
    /// width is the average of the block's rows; panel 7 tells what did not fit. Asks above 2,000 characters.
    void pasteover();
    void mnu_clearClipboard();
    void mnu_FindandReplace();
    void mnu_goto();

    FindReplace findReplace;
    GoTo goTo;

Q_SIGNALS:
    /// The hourglass: on while a paste works.
    void busy(bool on);

private:
    class Hourglass;

    void addTwins(const char* name, const char* twin, std::function<void()> body);
    bool isSelectionEmpty() const;
    bool mayPaste(qsizetype threshold);
    void clearArea(const FlexGrid::Area& area);

    EditContext m_context;
    RowCommands& m_rows;
    Deck& m_deck;
    FlexGrid& m_grid;
};

} // namespace kalvo
