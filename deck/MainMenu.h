// SPDX-License-Identifier: GPL-3.0-or-later
// The main screen's menu bar, its pop-up menu and its tool buttons as tables. What an entry does stands in the commands
// of the same name; an entry whose command nobody has added is shown disabled.
#pragma once

#include <QString>
#include <QStringList>

#include <span>

namespace kalvo {

class Commands;

/// One row of the menus, in the order in which it is shown.
struct MenuRow
{
    enum class Kind
    {
        Menu,    ///< a menu of the bar; the rows that follow with its name as `menu` are its entries
        Entry,   ///< a command; with `menu` empty it stands on the bar itself
        Recent,  ///< the place of the recent files
        Heading, ///< words only
    };
    Kind kind;
    const char* menu;    ///< name of the menu that holds it, empty for the bar
    const char* name;    ///< of the command and of the action
    const char* caption; ///< '&' marks the letter for the Alt key
    const char* key = "";
    bool hidden = false;   ///< at start
    bool disabled = false; ///< at start
    bool checkable = false;
    bool separatorAhead = false;
};

/// Name of the pop-up menu of the grid among the rows.
inline constexpr auto kPopupMenu = "Popup";

/// All rows: the bar from left to right, then the pop-up menu.
std::span<const MenuRow> mainMenuRows();

/// One button of the toolbar, told by its key.
struct ToolButton
{
    const char* key;
    const char* command; ///< the menu command of the same meaning
    const char* icon;    ///< name of the picture
    const char* tip;
    bool separatorAhead = false;
    bool twin = false;          ///< does what another button does: kept for its key, not shown
    const char* shortcuts = ""; ///< of a command that no menu holds
};

std::span<const ToolButton> toolButtons();
/// The command behind a key, empty for a key that no button has.
QString toolCommand(const QString& key);

/// Gives the commands the states that the menu starts with.
void setStartStates(Commands& commands);

/// The commands that need a text in the clipboard.
QStringList pasteCommands();

} // namespace kalvo
