// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "deck/EditContext.h"

#include <QObject>

#include <array>

namespace kalvo {

/// The items of the Color Edit screen, in the order in which it lists and applies them.
inline constexpr int kColorItems = 13;
enum class ColorItem
{
    GridBack,
    GridBehind,
    GridFixedBack,
    GridSelBack,
    CellFore, ///< of the current cell, as CellBack
    CellBack,
    FormBack,
    FormFore,
    GridFore,
    GridFixedFore,
    GridSelFore,
    EditText, ///< lasts until the editor is laid over a cell again, when it takes that cell's colour
    Grapher,
};
/// What the list calls an item.
const char* colorItemText(ColorItem item);

/// One colour for each item; `Rgb::None` is the palette's own.
using ItemColors = std::array<Rgb, kColorItems>;

/// Colours and fonts of one page. Adds `mnu_restore`, `newdefaultmnu`, `fontmnu`, `mnu_reset` and `Coloredit` (which
/// shows the screen `Form21`) to the commands. None of them changes a card, and none of the settings outlives the
/// program.
///
/// The default of every colour is the palette's own, so that a grid looks on a dark desktop as it did at the start. A
/// cell with default colours has none of its own: it follows those of the grid.
class LookCommands : public QObject
{
    Q_OBJECT

public:
    explicit LookCommands(const EditContext& context);

    /// Colours of the grid and of all cells, and no bold; fonts and sizes stay. Groups are no longer shown.
    void mnu_restore();
    /// The grid's font as at the start; rows, columns and alignments of a new deck, so that hidden rows come back.
    void newdefaultmnu();
    /// Asks for the font of the whole grid; rows and columns are fitted to it.
    void fontmnu();
    /// Default font, rows, columns and colours; deck and undo stay.
    void mnu_reset();

    /// What the items show now.
    ItemColors itemColors() const;
    /// Applies the items that differ from what is shown, in their order.
    void applyItems(const ItemColors& colors);
    /// Grapher's colour, for its next load.
    Rgb grapherColor() const { return m_grapher; }

Q_SIGNALS:
    /// Back and fore colour of the main screen itself.
    void formColorsChanged(Rgb back, Rgb fore);
    void editTextColorWanted(Rgb color);
    void grapherColorChanged(Rgb color);

private:
    void applyItem(ColorItem item, Rgb color);

    EditContext m_context;
    FlexGrid& m_grid;
    Rgb m_formBack = Rgb::None;
    Rgb m_formFore = Rgb::None;
    Rgb m_grapher = Rgb::None;
};

} // namespace kalvo
