// SPDX-License-Identifier: GPL-3.0-or-later
#include "deck/EditCommands.h"

#include "deck/MainMenu.h"
#include "platform/text.h"

#include <algorithm>
#include <cmath>

namespace kalvo {

using namespace deck_layout;

namespace {

constexpr qsizetype kManyInserted = 50000;
constexpr qsizetype kManyLaidOver = 2000;

/// A pasted text with what becomes of it in a block of cells.
struct Block
{
    QString text; ///< without LF
    int rows = 1;
    int tabs = 0;

    explicit Block(QString clipboard) : text(std::move(clipboard))
    {
        // The end of the last line is no line of its own. Two characters go, as the end is CR LF.
        if (text.endsWith(u'\n'))
            text.chop(2);
        rows = numofrows(text);
        tabs = numofcols(text) - 1;
        removelfs(text);
    }

    /// Average width: cells joined by TAB over all rows, rounded half to even.
    int width() const
    {
        const double exact = static_cast<double>(tabs) / rows + 1.0;
        return static_cast<int>(std::lrint(std::min(exact, 32767.0))); // the default rounding mode is half to even
    }

    /// Cells with text that stand right of a block of `columns` columns.
    qint64 cellsBeyond(int columns) const
    {
        qint64 beyond = 0;
        int column = 0;
        bool isFilled = false;
        for (const QChar c : text) {
            if (c != u'\t' && c != u'\r') {
                isFilled = true;
                continue;
            }
            beyond += isFilled && column >= columns ? 1 : 0;
            isFilled = false;
            column = c == u'\t' ? column + 1 : 0;
        }
        return beyond + (isFilled && column >= columns ? 1 : 0);
    }

    /// Characters that no deck file may hold.
    qint64 foreignCharacters() const
    {
        return std::count_if(text.cbegin(), text.cend(),
                             [](QChar c) { return c != u'\t' && c != u'\r' && (c < u' ' || c > u'~'); });
    }
};

QStringList troublesOf(const Block& block, int columns)
{
    QStringList troubles;
    if (const qint64 beyond = block.cellsBeyond(columns))
        troubles << QStringLiteral("Paste: %1 did not fit").arg(counted(beyond, "cell"));
    if (const qint64 foreign = block.foreignCharacters())
        troubles << QStringLiteral("Paste: %1 that a deck file cannot hold").arg(counted(foreign, "character"));
    return troubles;
}

} // namespace

/// On while it lives, whatever way it goes.
class EditCommands::Hourglass
{
public:
    explicit Hourglass(EditCommands& owner) : m_owner(owner) { Q_EMIT m_owner.busy(true); }
    ~Hourglass() { Q_EMIT m_owner.busy(false); }
    Hourglass(const Hourglass&) = delete;
    Hourglass& operator=(const Hourglass&) = delete;

private:
    EditCommands& m_owner;
};

EditCommands::EditCommands(const EditContext& context, RowCommands& rows)
    : findReplace(context), goTo(context), m_context(context), m_rows(rows), m_deck(context.deck),
      m_grid(context.deck.Grid1)
{
    // A tool button does not ask the menu: an empty cell must not empty the clipboard, nor an empty clipboard the cell.
    const auto withCells = [this](void (EditCommands::*command)()) {
        return [this, command] {
            if (!isSelectionEmpty())
                (this->*command)();
        };
    };
    const auto withClipboard = [this](void (EditCommands::*command)()) {
        return [this, command] {
            if (m_context.hasClipboardText())
                (this->*command)();
        };
    };
    addTwins("editcopy", "mnupopupcopy", withCells(&EditCommands::editcopy));
    addTwins("editcut", "mnupopupcut", withCells(&EditCommands::editcut));
    addTwins("editclear", "mnupopupclear", withCells(&EditCommands::editclear));
    addTwins("editpaste", "mnupopuppasteinsert", withClipboard(&EditCommands::editpaste));
    addTwins("pasteover", "mnupopupareapaste", withClipboard(&EditCommands::pasteover));
    Commands& commands = m_context.commands;
    commands.add(QStringLiteral("mnu_clearClipboard"), [this] { mnu_clearClipboard(); });
    commands.add(QStringLiteral("mnu_FindandReplace"), [this] { mnu_FindandReplace(); });
    commands.add(QStringLiteral("mnu_goto"), [this] { mnu_goto(); });
}

void EditCommands::addTwins(const char* name, const char* twin, std::function<void()> body)
{
    m_context.commands.add(QString::fromLatin1(name), body);
    m_context.commands.add(QString::fromLatin1(twin), std::move(body));
}

// -- What can be chosen ----------------------------------------------------------------------------------------------

/// True when the selection's `Clip` would be empty. What stands in the editor counts for its cell.
bool EditCommands::isSelectionEmpty() const
{
    const FlexGrid::Area area = m_grid.selection();
    if (area.top != area.bottom || area.left != area.right)
        return false;
    const EditBox* box = m_deck.editBox();
    const bool isEdited = m_deck.isEditorActive() && box && box->isShown();
    return m_grid.text().isEmpty() && (!isEdited || box->text().isEmpty());
}

void EditCommands::menuOpening(Menu menu)
{
    Commands& commands = m_context.commands;
    const auto enable = [&commands](std::initializer_list<const char*> names, bool on) {
        for (const char* name : names)
            commands.setEnabled(QString::fromLatin1(name), on);
    };
    const bool hasCells = !isSelectionEmpty();
    const bool hasText = m_context.hasClipboardText();
    if (menu == Menu::Popup) {
        enable({"mnupopupcopy", "mnupopupclear", "mnupopupcut", "editcopy", "editcut", "editclear"}, hasCells);
        enable({"mnupopupareapaste", "mnupopuppasteinsert", "mnu_clearClipboard"}, hasText);
        return;
    }
    // The Edit menu judges the pop-up's Cut and Clear by the clipboard; the pop-up sets that right when it opens.
    enable({"mnupopupcopy", "editcopy", "editcut", "editclear"}, hasCells);
    enable({"editpaste", "pasteover", "mnupopupareapaste", "mnupopupclear", "mnupopupcut", "mnu_clearClipboard"},
           hasText);
}

// -- Copy, cut, clear ------------------------------------------------------------------------------------------------

void EditCommands::editcopy()
{
    QString text = m_grid.clip();
    text.replace(QStringLiteral("\r"), QStringLiteral("\r\n"));
    m_context.services.clipboard.clear();
    if (!text.isEmpty())
        m_context.services.clipboard.setText(text);
    m_context.showPasteStates();
}

void EditCommands::clearArea(const FlexGrid::Area& area)
{
    for (int row = area.top; row <= area.bottom; ++row)
        for (int col = area.left; col <= area.right; ++col)
            m_grid.setTextMatrix(row, col, QString());
    m_deck.newlines();
    m_context.followKKGroups();
    m_context.editing.showField();
    if (const int hidden = m_context.hiddenRows(area.top, area.bottom))
        m_context.tell({QStringLiteral("%1 emptied").arg(counted(hidden, "hidden row"))});
}

void EditCommands::editcut()
{
    const auto area = m_context.selectedCards();
    if (!area)
        return;
    m_context.undo.undo_add();
    m_context.services.clipboard.setText(m_grid.clip());
    {
        const Deck::BulkWork work(m_deck);
        clearArea(*area);
    }
    m_context.showPasteStates();
}

void EditCommands::editclear()
{
    const auto area = m_context.selectedCards();
    if (!area)
        return;
    m_context.undo.NewUndoAdd();
    const Deck::BulkWork work(m_deck);
    clearArea(*area);
    for (const QString& name : pasteCommands())
        m_context.commands.setEnabled(name, false);
}

void EditCommands::mnu_clearClipboard()
{
    m_context.services.clipboard.clear();
    m_context.commands.setEnabled(QStringLiteral("editpaste"), false);
}

// -- Pastes ----------------------------------------------------------------------------------------------------------

bool EditCommands::mayPaste(qsizetype threshold)
{
    if (m_context.services.clipboard.text().size() <= threshold)
        return true;
    const MessageBox box{QStringLiteral("You are Pasting a very large amount of Data! \r\rDo You Want to Continue?"),
                         QString::fromLatin1(kApplicationTitle), Icon::Warning, Buttons::OkCancel, Button::Cancel};
    return m_context.services.dialogs.message(box) == Button::Ok;
}

void EditCommands::editpaste()
{
    if (!mayPaste(kManyInserted))
        return;
    const Hourglass waiting(*this);
    m_context.undo.undo_add();
    m_context.commands.setEnabled(QStringLiteral("runhec"), true);
    const Block block(m_context.services.clipboard.text());
    const Deck::BulkWork work(m_deck);
    const int row = std::max(m_grid.row(), 1);
    const int col = std::max(m_grid.col(), kIdColumn);
    if (!m_rows.MULTI_INSERT(block.rows))
        return;
    m_grid.select(row, col, row + block.rows - 1, m_grid.cols() - 1);
    m_grid.setClip(block.text);
    m_deck.setcolaligns();
    m_deck.newlines();
    m_context.followKKGroups();
    m_context.editing.showField();
    m_context.tell(troublesOf(block, m_grid.cols() - col));
}

void EditCommands::pasteover()
{
    if (!mayPaste(kManyLaidOver))
        return;
    const Hourglass waiting(*this);
    m_context.undo.undo_add();
    m_context.commands.setEnabled(QStringLiteral("runhec"), true);
    const Block block(m_context.services.clipboard.text());
    const Deck::BulkWork work(m_deck);
    const int row = std::max(m_grid.row(), 1);
    const int col = std::max(m_grid.col(), kIdColumn);
    const int right = std::min(col + block.width() - 1, m_grid.cols() - 1);
    const int bottom = row + block.rows - 1;
    m_grid.setRows(m_grid.rows() + block.rows);
    const int hidden = m_context.hiddenRows(row, bottom);
    m_grid.select(row, col, bottom, right);
    m_grid.setClip(block.text);
    // Rows that were hidden would swallow what was pasted; all are as high as the cursor's row.
    for (int below = row + 1; below <= bottom; ++below)
        if (m_grid.rowHeight(below) != m_grid.rowHeight(row))
            m_grid.setRowHeight(below, m_grid.rowHeight(row));
    m_deck.setcolaligns();
    m_deck.newlines();
    m_context.followKKGroups();
    m_context.editing.showField();
    QStringList told = troublesOf(block, right - col + 1);
    if (m_deck.isHiddenRow(row))
        told << QStringLiteral("The paste began in a hidden row: %1 hidden").arg(counted(block.rows, "row"));
    else if (hidden > 0)
        told << QStringLiteral("Paste: %1 written and shown").arg(counted(hidden, "hidden row"));
    m_context.tell(told);
}

// -- Screens ---------------------------------------------------------------------------------------------------------

void EditCommands::mnu_FindandReplace()
{
    if (m_grid.row() == m_grid.rowSel() && m_grid.col() == m_grid.colSel()) {
        m_context.services.dialogs.tell(QStringLiteral("Select an area to search"));
        return;
    }
    m_context.screens.show(m_context.screenName("FR"));
}

void EditCommands::mnu_goto()
{
    m_context.screens.show(m_context.screenName("frmGOTO"));
}

} // namespace kalvo
