// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "run/RoutingScreens.h"
#include "run/ViewerWindow.h"

#include <optional>

namespace kalvo {

/// The window of a viewer of routings: closing forgets what it shows.
class RoutingWindow : public ViewerWindow
{
    Q_OBJECT

protected:
    RoutingWindow(const char* name, const QString& caption, ViewerSurroundings around);

    /// Text to look for: asked for, or with `again` the last one where there is one. None when the user gives none.
    std::optional<QString> soughtText(bool again);
    void tellNotFound();
    void tellNothingSelected();

private:
    QString m_sought;
};

} // namespace kalvo
