// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/FlexGrid.h"
#include "platform/Services.h"
#include "platform/StatusPanels.h"

#include <QObject>
#include <QString>
#include <QStringView>

#include <optional>

namespace kalvo {

/// The floating editor `Text1` as the deck's logic sees it. The main screen lays a text box over the current cell and
/// implements this; without a screen (loops, kalvo-run, most tests) a deck has none.
class EditBox
{
public:
    enum class Tint
    {
        AtRest,
        Pressed,
        TooLong,
        FocusLost
    };

    virtual ~EditBox() = default;
    virtual bool isShown() const = 0;
    virtual void setShown(bool on) = 0;
    virtual QString text() const = 0;
    /// Fills the box; tells nobody that its text changed.
    virtual void setText(const QString& text) = 0;
    virtual void setTint(Tint tint) = 0;
    /// Lays the box over the current cell and takes that cell's text and font (`setTextbox`).
    virtual void place() = 0;
};

/// The colours of Text1, which carry meaning.
constexpr Rgb tintColor(EditBox::Tint tint)
{
    switch (tint) {
    case EditBox::Tint::Pressed:
        return rgb(245, 200, 200);
    case EditBox::Tint::TooLong:
        return rgb(247, 223, 45);
    case EditBox::Tint::FocusLost:
        return rgb(184, 209, 230);
    case EditBox::Tint::AtRest:
        break;
    }
    return rgb(230, 240, 250);
}

namespace deck_layout {
inline constexpr int kColumns = 12;      ///< never changes
inline constexpr int kNewRows = 201;     ///< of a new deck, header included
inline constexpr int kLeastRows = 20;    ///< after a load
inline constexpr int kRowHeight = 320;   ///< twips, the standard
inline constexpr int kHiddenHeight = 10; ///< what hiding sets
inline constexpr int kIdColumn = 1;
inline constexpr int kLastColumn = 11;
/// Characters that a grid column holds on the card: 2, 6, then 8 (columns 1 to 11).
constexpr int fieldWidth(int column)
{
    return column == 1 ? 2 : column == 2 ? 6 : 8;
}
/// Every test for a row that the user can see.
constexpr bool isVisibleHeight(int twips)
{
    return twips > 15;
}
} // namespace deck_layout

/// The card deck: the grid `Grid1` (row 0 the header, column 0 the line number that HEC-1 prints, column 1 the card's
/// ID, columns 2 to 11 its fields), the state that goes with it, and the layout calls that close every bulk change. It
/// works without a screen. One instance for each main screen.
class Deck : public QObject
{
    Q_OBJECT

public:
    Deck(Services& services, StatusPanels& panels, QObject* parent = nullptr);
    ~Deck() override;

    FlexGrid Grid1;
    QString currentFileName; ///< without its folder
    QString currentFilePath; ///< full path, empty for a deck that has none
    /// The user's file that a recovered deck was once read from: what Save offers, and no more than that.
    QString offeredFilePath;
    /// The user's file that this deck belongs to, read or only offered; empty when it has neither.
    const QString& usersFilePath() const { return currentFilePath.isEmpty() ? offeredFilePath : currentFilePath; }
    bool dataSaved = true; ///< no change since start, new or open
    /// The user's file that a save had to leave cut off at a long ID. Its former text stays as NAME.bak until a save of
    /// it is whole.
    QString cutOffFile;
    int undoCount = 1; ///< next undo position, 1 when empty
    /// The groups of KK cards are coloured: a command that moves cards has to colour them again.
    bool kkGroupsShown = false;

    Services& services() const { return m_services; }
    StatusPanels& panels() const { return m_panels; }

    // -- The editor's lock: Text1's tag "1" (active) and "0" (suspended) ---------------------------------------------
    bool isEditorActive() const { return m_editorActive; }
    void setEditorActive(bool on) { m_editorActive = on; }
    void attachEditBox(EditBox* box) { m_editBox = box; } ///< not owned; null detaches
    EditBox* editBox() const { return m_editBox; }
    /// Stores the edit box into the current cell as leaving the cell would: only while it is shown and the lock is
    /// open, and `dataSaved` is cleared only where the text differs. Column 1 renumbers afterwards, because the ID
    /// decides.
    void storeEditBox();
    /// `setTextbox`: lays the editor over the current cell; nothing while suspended or without a screen.
    void setTextbox();

    /// What the editor shows for a cell: its text without leading blanks, so that a right-aligned number does not start
    /// with them while it is edited; with them on the text cards `*D *F KM ID *N *L`. The cell itself keeps its blanks
    /// until the user changes the text.
    QString editText(int row, int column) const;

    /// False while a load hides the grid; a file that looked wrong leaves it so until the next load, New or Clean Up
    /// Screen.
    bool isGridShown() const { return m_gridShown; }
    void setGridShown(bool on);

    /// Closes the lock and hides the box while it lives, opens both and places the box again, also when the work
    /// throws.
    class BulkWork
    {
    public:
        explicit BulkWork(Deck& deck);
        ~BulkWork();
        BulkWork(const BulkWork&) = delete;
        BulkWork& operator=(const BulkWork&) = delete;

    private:
        Deck& m_deck;
        std::optional<FlexGrid::Bulk>
            m_bulk; // let go first, so that the box is placed over a grid that has its new layout
        bool m_wasActive;
        bool m_wasShown;
    };

    /// Tells that the user or a command changed the deck: clears `dataSaved` and signals `changed`, on which the output
    /// commands are disabled. Every recorded change calls it; a mere move of the cursor does not.
    void noteChange();

    // -- Layout ------------------------------------------------------------------------------------------------
    void setEmptyLayout(); ///< 201 rows, 12 columns, heights, widths, numbers, alignments, cursor at (1, 1)
    void setrowheight();
    void Setcolwidths();
    void setcolnums();
    void setcolaligns();
    void newlines();
    void default_Row();
    void default_Col();
    /// The row under a point `yTwips` below the header's lower edge; the last row for a point below all.
    int whichRow(int yTwips) const;

    // -- Cards ---------------------------------------------------------------------------------------------------
    /// The one slicing rule of a card line: column 1 is card columns 1-2, column 2 is 3-8, column n is 8 wide from
    /// (n-2)*8+1. Slices keep their blanks; a slice past the end is empty.
    static QString getrecnums(QStringView line, int column);
    QString id(int row) const { return Grid1.textMatrix(row, deck_layout::kIdColumn); }
    bool isCommentRow(int row) const; ///< the ID holds a '*'
    bool isHiddenRow(int row) const;
    /// 1 when a row's ID is exactly "ZZ", else 0.
    int ISZZ() const;
    /// Trims the ID cell of every row except rows whose ID is "ZW" or "* ".
    void TRIMMER();
    /// Stores the edit box, then drops the rows behind the first ZZ card, or says that there is none and leaves the
    /// deck whole. Rows with text in them are told in panel 7 and by `cardsDropped`: nobody can take this back.
    /// @return rows dropped; -1 without a ZZ card.
    int trimtozz();

    // -- Which deck is open ----------------------------------------------------------------------------------------
    /// Replaces cells 1..11 of every row by the cards of `lines` (rows = lines + 1, at least 20).
    void setCards(const QStringList& lines);

Q_SIGNALS:
    /// The deck's content changed by an edit (not by a load).
    void changed();
    /// A load or New replaced the deck: undo store, output and screens of the old one have no more meaning.
    void replaced();
    /// trimtozz took these cards (cells joined as on the card line) from behind the ZZ card.
    void cardsDropped(const QStringList& cards);
    void gridShownChanged(bool on);

private:
    Services& m_services;
    StatusPanels& m_panels;
    EditBox* m_editBox = nullptr;
    bool m_editorActive = false;
    bool m_gridShown = true;
};

/// True for the IDs whose rows are free text on the card: written cell by cell without padding. `id` is exact.
bool isFreeTextId(const QString& id);

/// The ID as TRIMMER leaves it: without blanks around it, but for "ZW" and "* ", which stay.
QString trimmedId(const QString& id);

/// 1 when `name` is a station of the last run (`stations`, as listed untrimmed), 0 when not. An empty name is told in a
/// box, also when the list is empty. A name over 24 characters is cut before its first blank; with a list that has an
/// item, a name of more than 8 characters passes without a match: only 8 fit a station's name, so the rest is a
/// description.
int iskk(const QString& name, const QStringList& stations, Dialogs& dialogs);

} // namespace kalvo
