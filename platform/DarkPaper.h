// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QPalette>

namespace kalvo {

/// True where the desktop's colours put texts and curves on dark paper.
inline bool hasDarkPaper(const QPalette& palette)
{
    return palette.color(QPalette::Base).lightness() < 128;
}

} // namespace kalvo
