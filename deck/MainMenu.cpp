// SPDX-License-Identifier: GPL-3.0-or-later
#include "deck/MainMenu.h"

#include "platform/Commands.h"

#include <algorithm>
#include <array>

namespace kalvo {

namespace {

constexpr MenuRow menu(const char* name, const char* caption, bool disabled = false)
{
    return {.kind = MenuRow::Kind::Menu, .menu = "", .name = name, .caption = caption, .disabled = disabled};
}

constexpr MenuRow onBar(const char* name, const char* caption, bool disabled = false, bool hidden = false)
{
    return {.kind = MenuRow::Kind::Entry,
            .menu = "",
            .name = name,
            .caption = caption,
            .hidden = hidden,
            .disabled = disabled};
}

constexpr MenuRow entry(const char* menu, const char* name, const char* caption, const char* key = "")
{
    return {.kind = MenuRow::Kind::Entry, .menu = menu, .name = name, .caption = caption, .key = key};
}

constexpr MenuRow hidden(MenuRow row)
{
    row.hidden = true;
    return row;
}

constexpr MenuRow disabled(MenuRow row)
{
    row.disabled = true;
    return row;
}

constexpr MenuRow checkable(MenuRow row)
{
    row.checkable = true;
    return row;
}

/// A separating line ahead of the row.
constexpr MenuRow parted(MenuRow row)
{
    row.separatorAhead = true;
    return row;
}

constexpr MenuRow special(MenuRow::Kind kind, const char* menu, const char* name, const char* caption)
{
    return {.kind = kind, .menu = menu, .name = name, .caption = caption};
}

constexpr MenuRow kRows[] = {
    menu("File", "&File"),
    entry("File", "newhec1", "&New HEC-1 Input Data", "Ctrl+N"),
    hidden(entry("File", "mnu_clone", "Clone")),
    hidden(entry("File", "mnu_closeclone", "Close Clone")),
    entry("File", "openhec", "&Open HEC-1 Input Data", "Ctrl+O"),
    parted(entry("File", "mnu_import", "&Import Input Data")),
    entry("File", "mnu_freeformat", "Use &FREE or RAW Format"),
    hidden(entry("File", "mnu_openfreeformat", "Open FREE Format")),
    entry("File", "mnu_SaveAsTextFile", "Convert to Text File (FREE)"),
    hidden(entry("File", "mnu_parser", "Parse Paste from &Clipboard")),
    parted(entry("File", "savehec", "&Save HEC-1 Input Data", "Ctrl+S")),
    entry("File", "saveashec1", "Save &As HEC-1 Input Data"),
    parted(entry("File", "mnu_printsetup", "Print Set&up")),
    entry("File", "mnu_leftmargin", "Printer &Left Margin"),
    entry("File", "printhec1", "&Print HEC-1 Input Data"),
    parted(entry("File", "quit", "&Quit Program")),
    parted(special(MenuRow::Kind::Recent, "File", "oldfile", "Open Recent Files Saved As:")),

    menu("edit", "&Edit"),
    disabled(entry("edit", "editcopy", "&Copy", "Ctrl+C")),
    disabled(entry("edit", "editcut", "Cu&t", "Ctrl+X")),
    entry("edit", "editpaste", "&Paste Above Line / Insert Lines", "Ctrl+P"),
    entry("edit", "pasteover", "&Area Paste Over", "Ctrl+V"),
    disabled(entry("edit", "editclear", "C&lear Contents", "Ctrl+L")),
    parted(entry("edit", "mnu_FindandReplace", "&Find and Replace", "Ctrl+R")),
    entry("edit", "mnu_clearClipboard", "Clear Clipboard"),
    parted(disabled(entry("edit", "mnu_undo", "&Undo Edit", "Ctrl+Z"))),
    entry("edit", "mnu_restorelastrun", "Undo to Last Ru&n File", "Ctrl+W"),
    disabled(entry("edit", "mnu_redo", "&Redo Edit", "Ctrl+A")),
    parted(entry("edit", "mnu_deletelines", "&Delete Lines", "Ctrl+D")),

    onBar("insertrow", "&Insert Row", false, true),
    onBar("newinsertrow", "&Insert Row"),
    onBar("deleterow", "&Delete Row"),
    onBar("Commententry", "&Comment Entry"),
    onBar("auditdata", "&Audit Data"),
    onBar("runhec", "&Run", true),
    onBar("viewhec1", "&View HEC Output", true),

    menu("graphdata", "&Graph Data", true),
    entry("graphdata", "graph", "&Graph"),
    disabled(entry("graphdata", "mnu_hydrodata", "...&Hydrodata (All)")),
    disabled(entry("graphdata", "mnu_saveAll", "...Save All Hydrographs")),
    hidden(disabled(entry("graphdata", "mnu_peakflows", "...&Peak Flows (Linear Format)"))),
    disabled(entry("graphdata", "mnu_runoffvolumes", "...Runoff &Volumes")),
    disabled(entry("graphdata", "mnu_tabular", "...&Tabular Peak Flows (Table)")),
    hidden(disabled(entry("graphdata", "mnu_monitorhydrOgraph", "&Monitor Hydrograph"))),
    entry("graphdata", "mnu_CopyHydrographs", "Copy All Hydrograph Data to Clipboard"),
    parted(entry("graphdata", "mnu_detailed_ReservoirRoutings", "&Detailed Reservoir Routings", "F9")),
    entry("graphdata", "mnu_routing", "&Reservoir Routing Output", "F12"),
    entry("graphdata", "mnu_Storage_Volumes", "Reservoir Storage Conic Volumes", "Ctrl+F1"),
    entry("graphdata", "mnu_resAveEnd", "Reservoir Storage End Areas"),
    parted(entry("graphdata", "mnu_compare", "Auto Com&pare KK Plans", "Ctrl+F2")),
    entry("graphdata", "mnu_multi", "&Multi-KK Compare", "Ctrl+F3"),
    checkable(entry("graphdata", "mnu_peakflowMonitor", "Peak Flow Monitor", "Ctrl+F4")),
    hidden(disabled(entry("graphdata", "mnu_extentionBasin", "Extention Basin Iterator", "Ctrl+F5"))),

    menu("settings", "&Settings"),
    checkable(entry("settings", "mnu_usefullscreen", "Use &Full Screen")),
    parted(entry("settings", "mnu_resetundo", "Reset Undo")),
    checkable(entry("settings", "mnu_undooff", "Undo Off")),
    parted(entry("settings", "Coloredit", "&Color Changes")),
    entry("settings", "fontmnu", "&Grid Font"),
    entry("settings", "mnu_restore", "&Restore Default Colors", "F1"),
    checkable(entry("settings", "mnu_gridlines", "Toggle Gridli&nes")),
    entry("settings", "mnu_reset", "Res&et"),
    checkable(entry("settings", "mnu_adjustgrids", "&Adjustable Grids", "Ctrl+M")),
    entry("settings", "newdefaultmnu", "&Default Row/Font", "F2"),
    entry("settings", "mnu_printerfont", "Set Monospace Printer Fon&t"),
    entry("settings", "mnu_cleanup", "Clean Up Screen", "F3"),
    parted(entry("settings", "mnu_Bold", "Bold", "Ctrl+B")),
    entry("settings", "highlight", "&Highlight Current Text"),
    entry("settings", "mnu_hifont", "Highlight F&ont"),
    parted(entry("settings", "mnu_hiderows", "Hid&e Selected Rows", "Ctrl+H")),
    entry("settings", "unhide", "&Unhide All Rows", "Ctrl+U"),
    parted(checkable(entry("settings", "mnu_ruler", "Show Card Ru&ler"))),

    menu("mnu_tools", "&Tools"),
    entry("mnu_tools", "hiliteKK", "&Identify KK Cards", "Ctrl+K"),
    entry("mnu_tools", "mnu_newidcards", "Identify  &Cards", "Ctrl+Q"),
    entry("mnu_tools", "mnu_identkkgroups", "Identify KK Groups", "Ctrl+I"),
    parted(entry("mnu_tools", "mnu_goto", "Go To ...", "Ctrl+G")),
    entry("mnu_tools", "trimtozz", "Trim Grid to ZZ Card", "Ctrl+T"),
    entry("mnu_tools", "mnu_addkocard", "&Add KO Print Card", "Ctrl+J"),
    parted(entry("mnu_tools", "mnu_createSCS", "Create SCS Watershed", "Shift+F3")),
    entry("mnu_tools", "mnu_crReservoir", "Create Reservoir Storage", "Shift+F4"),
    parted(checkable(entry("mnu_tools", "mnu_winhec", "Display Hec-1 as Window"))),
    entry("mnu_tools", "mnu_rundebug", "Run with Debug Screen", "Ctrl+Y"),
    parted(entry("mnu_tools", "mnufitrows", "&Fit Rows")),
    entry("mnu_tools", "mnufitcolumns", "Fi&t Columns"),
    entry("mnu_tools", "mnu_fitboth", "F&it Rows and Columns", "Ctrl+F"),
    parted(checkable(entry("mnu_tools", "mnu_fieldtips", "Help Ti&ps"))),
    checkable(entry("mnu_tools", "mnu_toggletoolbar", "Toggle Toolbar")),
    entry("mnu_tools", "clearrecentfiles", "Se&lect Recent Files to Clear"),
    parted(entry("mnu_tools", "mnu_iterater", "Iterater", "Ctrl+E")),
    entry("mnu_tools", "mnu_RainfallaData", "Rainfall Data Type Library", "Shift+F1"),
    entry("mnu_tools", "mnu_Rainfall_Values", "Rainfall Values"),
    entry("mnu_tools", "mnu_inputDataReport", "Input Data Report", "Shift+F2"),

    menu("mnu_help", "&Help"),
    hidden(entry("mnu_help", "help", "Windows Style Help")),
    entry("mnu_help", "mnu_HECPDF", "HEC-1 Manual (pdf)"),
    entry("mnu_help", "mnu_HECDOC", "HEC-1 Manual (doc)"),
    entry("mnu_help", "mnu_operationManual", "Kalvo Manual"),
    parted(entry("mnu_help", "mnu_brw", "Browse Help Files")),
    entry("mnu_help", "mnu_kalvohechelp", "Search Help Files"),
    parted(entry("mnu_help", "mnu_statustext", "Show Status &Text", "F6")),
    entry("mnu_help", "mnu_memory", "Show &Memory in Use", "Shift+F6"),
    parted(entry("mnu_help", "about", "&About Kalvo")),

    special(MenuRow::Kind::Heading, kPopupMenu, "", "Input Screen Menu"),
    parted(disabled(entry(kPopupMenu, "mnupopupcopy", "Copy"))),
    disabled(entry(kPopupMenu, "mnupopupcut", "Cut")),
    entry(kPopupMenu, "mnupopuppasteinsert", "Paste Above / Insert Lines"),
    entry(kPopupMenu, "mnupopupareapaste", "Area Paste Over"),
    disabled(entry(kPopupMenu, "mnupopupclear", "Clear Contents")),
    parted(entry(kPopupMenu, "mnupopupinsertline", "Insert a Line")),
    entry(kPopupMenu, "mnupopupdeletelines", "Delete Lines"),
    parted(entry(kPopupMenu, "mnupopuprun", "Run")),
    parted(disabled(entry(kPopupMenu, "mnupopupundo", "Undo"))),
    disabled(entry(kPopupMenu, "mnu_popupredo", "Redo")),
};

constexpr ToolButton kButtons[] = {
    {"New", "newhec1", "new", "New deck"},
    {"Open", "openhec", "open", "Open a deck"},
    {"Save", "savehec", "save", "Save the deck"},
    {"Print", "printhec1", "print", "Print the deck", true},
    {"Cut", "editcut", "cut", "Cut", true},
    {"Copy", "editcopy", "copy", "Copy"},
    {"Paste", "editpaste", "paste", "Paste by Inserting Lines"},
    {"Delete", "mnu_deletelines", "deletelines", "Delete the selected lines", false, true},
    {"Undo", "mnu_undo", "undo", "Undo the last edit", true},
    {"Redo", "mnu_redo", "redo", "Redo the edit taken back (one step is held)"},
    {"uptext", "uptext", "uptext", "Increase Text", true, false, "Ctrl++; Ctrl+="},
    {"downtext", "downtext", "downtext", "Reduce Text", false, false, "Ctrl+-"},
    {"KK", "hiliteKK", "kk", "Identify KK cards", true},
    {"KKStation", "hiliteKK", "kk", "Identify KK cards", false, true},
    {"IDKKGROUPS", "mnu_identkkgroups", "kkgroups", "Identify KK groups"},
    {"RESTORECOLORS", "mnu_restore", "restorecolors", "Restore default colors"},
    {"Deletelines", "mnu_deletelines", "deletelines", "Delete the selected lines", true},
};

} // namespace

std::span<const MenuRow> mainMenuRows()
{
    return kRows;
}

std::span<const ToolButton> toolButtons()
{
    return kButtons;
}

QString toolCommand(const QString& key)
{
    const auto button = std::find_if(std::begin(kButtons), std::end(kButtons),
                                     [&](const ToolButton& b) { return key == QLatin1String(b.key); });
    return button == std::end(kButtons) ? QString() : QString::fromLatin1(button->command);
}

void setStartStates(Commands& commands)
{
    for (const MenuRow& row : kRows) {
        const QString name = QString::fromLatin1(row.name);
        if (name.isEmpty())
            continue;
        commands.setEnabled(name, !row.disabled);
        commands.setShown(name, !row.hidden);
    }
}

QStringList pasteCommands()
{
    return {QStringLiteral("editpaste"), QStringLiteral("pasteover"), QStringLiteral("mnupopuppasteinsert"),
            QStringLiteral("mnupopupareapaste")};
}

} // namespace kalvo
