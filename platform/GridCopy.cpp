// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/GridCopy.h"

#include "platform/GridActions.h"

#include <new>

namespace kalvo {

namespace {

constexpr int kTabPasses = 8;
constexpr int kTabsAheadOfLineEnd = 2;

const QString kCrLf = QStringLiteral("\r\n");

/// The rule for one row; `isLast` for the one with no line end behind it.
void applyRule(QString& line, CopyRule rule, bool isLast)
{
    switch (rule) {
    case CopyRule::AsIs:
        if (!isLast)
            line += QLatin1Char('\r');
        return;
    case CopyRule::CrOnly:
        line.remove(QLatin1Char('\n'));
        if (!isLast)
            line += QLatin1Char('\r');
        return;
    case CopyRule::CrLf:
    case CopyRule::CrLfCollapsed:
        line.replace(QLatin1Char('\r'), kCrLf);
        if (!isLast)
            line += kCrLf;
        break;
    }
    if (rule == CopyRule::CrLf)
        return;
    for (int pass = 0; pass < kTabPasses; ++pass)
        line.replace(QStringLiteral("\t\t"), QStringLiteral("\t"));
    for (int pass = 0; pass < kTabsAheadOfLineEnd; ++pass)
        line.replace(QStringLiteral("\t\r\n"), kCrLf);
}

} // namespace

QString byCopyRule(const QString& clip, CopyRule rule)
{
    QString text = clip;
    applyRule(text, rule, true);
    return text;
}

std::optional<QString> selectionText(const FlexGrid& grid, CopyRule rule, qsizetype most)
{
    if (grid.rows() == 0 || grid.cols() == 0)
        return QString();
    const FlexGrid::Area area = grid.selection();
    QString text, line;
    for (int row = area.top; row <= area.bottom; ++row) {
        line.resize(0); // keeps its room
        for (int col = area.left; col <= area.right; ++col) {
            if (col > area.left)
                line += QLatin1Char('\t');
            line += grid.textMatrix(row, col);
        }
        applyRule(line, rule, row == area.bottom);
        if (text.size() + line.size() > most)
            return std::nullopt;
        text += line;
    }
    return text;
}

bool confirmLargeCopy(const FlexGrid& grid, Dialogs& dialogs)
{
    const qint64 cells = selectedCells(grid);
    if (cells <= kCellsToAskAbout)
        return true;
    MessageBox box;
    box.text =
        QStringLiteral("The selection has %1 cells. The clipboard holds all of their text in memory, and so does "
                       "the program that it is pasted into.\r\n\r\nDo you want to copy it?")
            .arg(cells);
    box.icon = Icon::Question;
    box.buttons = Buttons::YesNo;
    return dialogs.message(box) == Button::Yes;
}

QString copySelection(const FlexGrid& grid, CopyRule rule, Clipboard& clipboard, qsizetype most)
{
    const QString tooLarge =
        QStringLiteral("The selection is too large for the clipboard. Select less, or save it as a file.");
    try {
        const std::optional<QString> text = selectionText(grid, rule, most);
        if (!text)
            return tooLarge;
        clipboard.clear();
        clipboard.setText(*text);
    } catch (const std::bad_alloc&) {
        return tooLarge;
    }
    return {};
}

} // namespace kalvo
