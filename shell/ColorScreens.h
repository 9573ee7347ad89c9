// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "deck/LookCommands.h"

#include <QColor>
#include <QPalette>

namespace kalvo {

/// Makes the colour screens of a page known: `Form21` ("Color Changes for Main Screen") and `Form4` ("Color Edit").
void registerColorScreens(LookCommands& looks, const EditContext& context);

/// What an item looks like on the screen: its own colour, else the one that it follows.
QColor shownColor(ColorItem item, const ItemColors& colors, const QPalette& palette);

Rgb rgbOf(const QColor& color);

} // namespace kalvo
