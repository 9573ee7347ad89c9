// SPDX-License-Identifier: GPL-3.0-or-later
#include "deck/EditContext.h"

#include "deck/MainMenu.h"

#include <algorithm>

namespace kalvo {

using namespace deck_layout;

std::optional<FlexGrid::Area> EditContext::selectedCards() const
{
    FlexGrid::Area area = grid().selection();
    area.top = std::max(area.top, 1);
    area.left = std::max(area.left, kIdColumn);
    if (area.bottom < area.top || area.right < area.left)
        return std::nullopt;
    return area;
}

int EditContext::hiddenRows(int top, int bottom) const
{
    int hidden = 0;
    for (int row = top; row <= bottom; ++row)
        hidden += deck.isHiddenRow(row) ? 1 : 0;
    return hidden;
}

void EditContext::tell(const QStringList& pieces) const
{
    if (!pieces.isEmpty())
        panels.set(StatusPanels::kPanels, pieces.join(QStringLiteral("; ")));
}

void EditContext::runIfThere(const char* command) const
{
    const QString name = QString::fromLatin1(command);
    if (commands.has(name))
        commands.run(name);
}

void EditContext::followKKGroups() const
{
    if (deck.kkGroupsShown)
        runIfThere("recolorKKGroups");
}

bool EditContext::hasClipboardText() const
{
    return services.clipboard.hasText() && !services.clipboard.text().isEmpty();
}

void EditContext::showPasteStates() const
{
    const bool on = hasClipboardText();
    for (const QString& name : pasteCommands())
        commands.setEnabled(name, on);
}

QString counted(qint64 count, const char* noun)
{
    return QStringLiteral("%1 %2%3").arg(count).arg(QLatin1String(noun), count == 1 ? QString() : QStringLiteral("s"));
}

} // namespace kalvo
