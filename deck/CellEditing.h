// SPDX-License-Identifier: GPL-3.0-or-later
// What happens when the cursor leaves a cell and enters another one, and what the keys of the floating editor do.
#pragma once

#include "deck/Deck.h"

#include <QObject>
#include <QString>

#include <functional>
#include <optional>

namespace kalvo {

/// What the status bar says about the field under the cursor. The card catalogue answers; without one all texts are
/// empty.
class FieldHelp
{
public:
    virtual ~FieldHelp() = default;
    /// Name of the variable in a field, or the kind of a comment (`GETHECINFO`): panel 6. `field` is the column's
    /// header.
    virtual QString variableName(const QString& id, const QString& field) const;
    /// What that variable means (`gethecvariabledesc`): panel 7.
    virtual QString variableDescription(const QString& id, const QString& variable) const;
    /// What the card is for (`getcarddescription`): panel 7 in column 1.
    virtual QString cardDescription(const QString& id) const;
};

/// Where the editor stands when a key arrives.
struct EditorState
{
    int row = 1;
    int col = 1;
    int rows = deck_layout::kNewRows;
    int cols = deck_layout::kColumns;
    int caret = 0; ///< characters ahead of it
    int textLength = 0;
};

/// What a key of the editor does.
struct EditorMove
{
    enum class Kind
    {
        None,    ///< nothing of ours: the text box has the key
        Cell,    ///< the cursor goes to (row, col)
        Reenter, ///< Enter in the last column: the cell is left and entered again, and stays current
        Grid,    ///< the focus goes to the grid, so that combinations with Ctrl go there
    };
    Kind kind = Kind::None;
    int row = 0;
    int col = 0;
    bool caretAtEnd = false; ///< of the cell entered; otherwise ahead of its first character

    bool operator==(const EditorMove&) const = default;
};

/// The editor's keys. A move that would end where it starts is none, so that Home in column 1 still moves the caret.
/// Ctrl together with Alt is no Ctrl: AltGr arrives so on many keyboards, and '@' or '[' could not be typed.
EditorMove editorMove(Qt::Key key, Qt::KeyboardModifiers modifiers, const EditorState& state);

/// Text of an area in acres as a BA card takes it: square miles (640 acres each) rounded half to even to 6 decimals and
/// cut so that it fits field 1, 6 characters; 100 gives "0.1562".
struct SquareMiles
{
    QString text;    ///< empty: nothing to store
    QString message; ///< what was taken, or why nothing was
};
SquareMiles squareMilesOf(const QString& acres);

/// Colour of the editor after a key, and over a cell just entered.
EditBox::Tint tintAfterTyping(int column, qsizetype length);
EditBox::Tint tintOnEntering(int column, qsizetype length, bool hasFocus);

/// True for the cards whose fields are one text (those that comment entry opens on): a blank there belongs to the text.
bool isTextCard(const QString& id);

/// The row's cells 1 to 11 joined by ",": the tip over its line number.
QString rowTip(const Deck& deck, int row);

/// Follows the cursor of a deck's grid: on leaving a cell the editor's text is stored, on entering one the panels tell
/// its card and field, the deck grows, and the editor is laid over it. Nothing of it while the deck's editor is
/// suspended.
///
/// Leading blanks go from the cell itself where the card is written right-justified anyway. On a text card they go from
/// the editor alone, because the card's text would move in the file.
class CellEditing : public QObject
{
    Q_OBJECT

public:
    explicit CellEditing(Deck& deck, QObject* parent = nullptr);

    /// Not owned; null takes the help away.
    void setFieldHelp(const FieldHelp* help);
    /// Called ahead of every change of the deck that comes from the editor.
    void setRecorder(std::function<void()> recordUndo);

    void leaveCell();
    void enterCell();
    /// Panels 3 to 6 for the current cell, and panel 7 unless a command has just told something there.
    void showField();
    /// The user changed the editor's text: records it and gives the editor its colour.
    void typed();
    /// F5: asks for acres and stores square miles. Does nothing but on field 1 of a BA card.
    /// @return true when the key was for us.
    bool convertArea();

private:
    void growIfNearEnd(int row);
    enum class Help
    {
        Show,
        Leave
    };
    void tellField(int row, int col, const QString& lineNumber, Help help);

    Deck& m_deck;
    FieldHelp m_noHelp;
    const FieldHelp* m_help = &m_noHelp;
    QString m_toldHelp; ///< what panel 7 was last given for a cell
    std::function<void()> m_recordUndo;
};

} // namespace kalvo
