// SPDX-License-Identifier: GPL-3.0-or-later
#include "run/RoutingWindow.h"

namespace kalvo {

RoutingWindow::RoutingWindow(const char* name, const QString& caption, ViewerSurroundings around)
    : ViewerWindow(name, caption, std::move(around), OnClose::Forget)
{
}

std::optional<QString> RoutingWindow::soughtText(bool again)
{
    if (again && !m_sought.isEmpty())
        return m_sought;
    const auto answer = services().dialogs.input(QStringLiteral("Find in Routings"), windowTitle(), m_sought);
    if (!answer || answer->isEmpty())
        return std::nullopt;
    m_sought = *answer;
    return m_sought;
}

void RoutingWindow::tellNotFound()
{
    services().dialogs.tell(QStringLiteral("\"%1\" was not found.").arg(m_sought));
}

void RoutingWindow::tellNothingSelected()
{
    services().dialogs.tell(QStringLiteral("Nothing Selected"));
}

} // namespace kalvo
