// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/FlexGrid.h"
#include "platform/Services.h"

#include <QString>

#include <optional>

namespace kalvo {

/// How a screen's block of cells reaches the clipboard. Other programs have come to expect each screen's own form.
enum class CopyRule
{
    AsIs,          ///< as the grid gives it: rows parted by CR
    CrLf,          ///< every CR becomes CR LF
    CrOnly,        ///< every CR becomes CR LF, then every LF goes: rows parted by CR, also where a cell held a LF
    CrLfCollapsed, ///< CR LF; runs of up to 256 TABs become one, and up to two TABs ahead of a line end go
};

/// The whole text of a clip under a rule.
QString byCopyRule(const QString& clip, CopyRule rule);

/// More cells than this are copied only after a question, more characters not at all: a clipboard holds all of its text
/// in memory, and whoever takes it holds it once more.
inline constexpr qint64 kCellsToAskAbout = 1'000'000;
inline constexpr qsizetype kMostCharacters = 250'000'000;

/// The selection's text under a rule; the same as `byCopyRule(grid.clip(), rule)`, made row by row so that the text is
/// held once. None when it would be longer than `most` characters.
std::optional<QString> selectionText(const FlexGrid& grid, CopyRule rule, qsizetype most = kMostCharacters);

/// Asks whether a very large selection is to be copied. @return false when the user does not want to.
bool confirmLargeCopy(const FlexGrid& grid, Dialogs& dialogs);

/// Empties the clipboard and puts the selection there.
/// @return why it cannot be done, empty when it is done; the clipboard then is as it was.
QString copySelection(const FlexGrid& grid, CopyRule rule, Clipboard& clipboard, qsizetype most = kMostCharacters);

} // namespace kalvo
