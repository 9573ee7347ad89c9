// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/ColorScreens.h"

#include "shell/Form21_ColorChanges.h"
#include "shell/Form4_ColorEdit.h"

namespace kalvo {

namespace {

struct Follows
{
    ColorItem item;
    QPalette::ColorRole role; ///< where nothing else gives a colour
    ColorItem gridItem;       ///< a cell follows the grid; the item itself: follows nothing
};

constexpr Follows kFollows[kColorItems] = {
    {ColorItem::GridBack, QPalette::Base, ColorItem::GridBack},
    {ColorItem::GridBehind, QPalette::Window, ColorItem::GridBehind},
    {ColorItem::GridFixedBack, QPalette::Button, ColorItem::GridFixedBack},
    {ColorItem::GridSelBack, QPalette::Highlight, ColorItem::GridSelBack},
    {ColorItem::CellFore, QPalette::Text, ColorItem::GridFore},
    {ColorItem::CellBack, QPalette::Base, ColorItem::GridBack},
    {ColorItem::FormBack, QPalette::Window, ColorItem::FormBack},
    {ColorItem::FormFore, QPalette::WindowText, ColorItem::FormFore},
    {ColorItem::GridFore, QPalette::Text, ColorItem::GridFore},
    {ColorItem::GridFixedFore, QPalette::WindowText, ColorItem::GridFixedFore},
    {ColorItem::GridSelFore, QPalette::HighlightedText, ColorItem::GridSelFore},
    {ColorItem::EditText, QPalette::Text, ColorItem::CellFore},
    {ColorItem::Grapher, QPalette::Window, ColorItem::Grapher},
};

} // namespace

void registerColorScreens(LookCommands& looks, const EditContext& context)
{
    Form21::registerIn(context);
    Form4::registerIn(looks, context);
}

QColor shownColor(ColorItem item, const ItemColors& colors, const QPalette& palette)
{
    const auto index = static_cast<size_t>(item);
    if (colors[index] != Rgb::None)
        return QColor(static_cast<QRgb>(colors[index]));
    const Follows& follows = kFollows[index];
    if (follows.gridItem != item)
        return shownColor(follows.gridItem, colors, palette);
    return palette.color(follows.role);
}

Rgb rgbOf(const QColor& color)
{
    return rgb(color.red(), color.green(), color.blue());
}

} // namespace kalvo
