// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/Services.h"

namespace kalvo {

/// The computer's own clock.
class QtClock : public Clock
{
public:
    QDateTime now() const override;
    /// Events run while it waits; it returns early when the application is told to quit.
    void wait(int milliseconds) override;
};

} // namespace kalvo
