// SPDX-License-Identifier: GPL-3.0-or-later
#include "deck/LookCommands.h"

#include "deck/SelectionKeeper.h"
#include "deck/TextSize.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace kalvo {

namespace {

constexpr double kDefaultPoints = 8.25;

struct ItemRow
{
    const char* text;
    Rgb GridColors::*gridColor = nullptr; ///< null: not a colour of the grid itself
};

constexpr ItemRow kItems[kColorItems] = {
    {"Grid Background Color", &GridColors::backColor},
    {"Grid Background Color Behind the Grid", &GridColors::backColorBkg},
    {"Grid Background Color for Fixed Row And Column Cells", &GridColors::backColorFixed},
    {"Grid Backgound Color for Selections", &GridColors::backColorSel},
    {"Cell Foreground - Color of Font in Individual Cells"},
    {"Cell Background - Color of Background in Individual Cells"},
    {"Outer Form Background Color"},
    {"Outer Form Foreground Color"},
    {"Grid Foreground Font Color", &GridColors::foreColor},
    {"Grid Foreground Fixed Rows and Columns", &GridColors::foreColorFixed},
    {"Grid Foreground Selection Font Color", &GridColors::foreColorSel},
    {"Cell Edit Text Color"},
    {"Grapher Form Backgound and Panel Color"},
};

const ItemRow& rowOf(ColorItem item)
{
    return kItems[static_cast<size_t>(item)];
}

/// The font of a start: its given name where the system has that font, otherwise the program's own.
QString defaultFontName(const TextMeasure& measure)
{
    const QString given = QStringLiteral("MS Sans Serif");
    return measure.fontNames().contains(given) ? given : QString();
}

/// Gives the whole grid, headers too, the font of a look.
void setFontOfAll(FlexGrid& grid, const CellFormat& font)
{
    const SelectionKeeper keeper(grid);
    const RepeatFill repeat(grid);
    grid.select(0, 0, grid.rows() - 1, grid.cols() - 1);
    grid.setCellFontName(font.fontName);
    grid.setCellFontSize(font.fontSize);
    grid.setCellFontBold(font.bold);
    grid.setCellFontItalic(font.italic);
    grid.setCellFontUnderline(font.underline);
    grid.setCellFontStrikeThrough(font.strikeThrough);
}

/// Fitted columns, none narrower than that of a new deck in letters of this size: an empty column must stay wide enough
/// to type into.
void fitColumns(Deck& deck, double points)
{
    FlexGrid& grid = deck.Grid1;
    getmaxcolw(deck);
    std::vector<int> fitted;
    for (int col = 0; col < grid.cols(); ++col)
        fitted.push_back(grid.colWidth(col));
    deck.Setcolwidths();
    for (int col = 0; col < grid.cols(); ++col) {
        const auto least = static_cast<int>(std::lrint(grid.colWidth(col) * points / kDefaultPoints));
        grid.setColWidth(col, std::max(fitted[static_cast<size_t>(col)], least));
    }
}

} // namespace

const char* colorItemText(ColorItem item)
{
    return rowOf(item).text;
}

LookCommands::LookCommands(const EditContext& context) : m_context(context), m_grid(context.deck.Grid1)
{
    Commands& commands = context.commands;
    commands.add(QStringLiteral("mnu_restore"), [this] { mnu_restore(); });
    commands.add(QStringLiteral("newdefaultmnu"), [this] { newdefaultmnu(); });
    commands.add(QStringLiteral("fontmnu"), [this] { fontmnu(); });
    commands.add(QStringLiteral("mnu_reset"), [this] { mnu_reset(); });
    commands.add(QStringLiteral("Coloredit"), [this] { m_context.screens.show(m_context.screenName("Form21")); });
}

// -- Defaults --------------------------------------------------------------------------------------------------------

void LookCommands::mnu_restore()
{
    if (EditBox* box = m_context.deck.editBox())
        box->setTint(EditBox::Tint::AtRest);
    const Deck::BulkWork work(m_context.deck);
    m_grid.setColors(GridColors{});
    m_context.deck.kkGroupsShown = false;
    if (!m_grid.hasCellFormats())
        return;
    const SelectionKeeper keeper(m_grid);
    const RepeatFill repeat(m_grid);
    m_grid.select(0, 0, m_grid.rows() - 1, m_grid.cols() - 1);
    m_grid.setCellForeColor(Rgb::None);
    m_grid.setCellBackColor(Rgb::None);
    m_grid.setCellFontBold(false);
}

void LookCommands::newdefaultmnu()
{
    Deck& deck = m_context.deck;
    const Deck::BulkWork work(deck);
    if (m_grid.hasCellFormats())
        setFontOfAll(m_grid, CellFormat{});
    m_grid.setFont(defaultFontName(m_context.services.measure), kDefaultPoints);
    deck.setrowheight();
    deck.Setcolwidths();
    deck.setcolaligns();
}

void LookCommands::mnu_reset()
{
    const Deck::BulkWork work(m_context.deck);
    newdefaultmnu();
    mnu_restore();
}

void LookCommands::fontmnu()
{
    CellFormat preset = m_grid.cellFormat(m_grid.row(), m_grid.col());
    preset.fontName = m_grid.cellFontName();
    preset.fontSize = m_grid.cellFontSize();
    // Asked before anything is hidden, so that Cancel leaves the screen as it is.
    const auto font = m_context.services.dialogs.font(preset);
    if (!font)
        return;
    const double points = font->fontSize > 0.0 ? font->fontSize : m_grid.fontSize();
    const Deck::BulkWork work(m_context.deck);
    setFontOfAll(m_grid, *font);
    m_grid.setFont(font->fontName, points);
    getmaxrowh(m_context.deck);
    fitColumns(m_context.deck, points);
}

// -- Colour items ----------------------------------------------------------------------------------------------------

ItemColors LookCommands::itemColors() const
{
    ItemColors colors;
    for (size_t i = 0; i < colors.size(); ++i)
        colors[i] = kItems[i].gridColor ? m_grid.colors().*kItems[i].gridColor : Rgb::None;
    const auto set = [&colors](ColorItem item, Rgb color) { colors[static_cast<size_t>(item)] = color; };
    set(ColorItem::CellFore, m_grid.cellForeColor());
    set(ColorItem::CellBack, m_grid.cellBackColor());
    set(ColorItem::FormBack, m_formBack);
    set(ColorItem::FormFore, m_formFore);
    set(ColorItem::EditText, m_grid.cellForeColor());
    set(ColorItem::Grapher, m_grapher);
    return colors;
}

void LookCommands::applyItems(const ItemColors& colors)
{
    m_context.deck.storeEditBox(); // the editor is filled anew with its cell's colour
    const ItemColors shown = itemColors();
    for (size_t i = 0; i < colors.size(); ++i)
        if (colors[i] != shown[i])
            applyItem(static_cast<ColorItem>(i), colors[i]);
}

void LookCommands::applyItem(ColorItem item, Rgb color)
{
    if (Rgb GridColors::*const gridColor = rowOf(item).gridColor) {
        GridColors colors = m_grid.colors();
        colors.*gridColor = color;
        m_grid.setColors(colors);
        return;
    }
    switch (item) {
    case ColorItem::CellFore:
        m_grid.setCellForeColor(color);
        m_context.deck.setTextbox();
        break;
    case ColorItem::CellBack:
        m_grid.setCellBackColor(color);
        break;
    case ColorItem::FormBack:
        m_formBack = color;
        Q_EMIT formColorsChanged(m_formBack, m_formFore);
        break;
    case ColorItem::FormFore:
        m_formFore = color;
        Q_EMIT formColorsChanged(m_formBack, m_formFore);
        break;
    case ColorItem::EditText:
        Q_EMIT editTextColorWanted(color);
        break;
    case ColorItem::Grapher:
        m_grapher = color;
        Q_EMIT grapherColorChanged(color);
        break;
    default:
        break;
    }
}

} // namespace kalvo
