// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QGuiApplication>

namespace kalvo {

/// The hourglass over all windows as long as it lives, also when what it stands over throws.
class Hourglass
{
public:
    Hourglass() { QGuiApplication::setOverrideCursor(Qt::WaitCursor); }
    ~Hourglass() { QGuiApplication::restoreOverrideCursor(); }
    Hourglass(const Hourglass&) = delete;
    Hourglass& operator=(const Hourglass&) = delete;
};

} // namespace kalvo
