// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QtGlobal>

#include <string_view>

namespace kalvo {

/// The computer's memory as the status bar tells it.
struct MemoryInfo
{
    quint64 totalBytes = 0;
    quint64 availableBytes = 0;
    int loadPercent = 0; ///< of the total in use, 0 to 100
    bool isKnown() const { return totalBytes > 0; }
};

/// What the system says now; all zero where it cannot be asked.
MemoryInfo memoryInfo();
/// The same from the text of /proc/meminfo; all zero when its lines are not there.
MemoryInfo memoryInfoFrom(std::string_view procMeminfo);

} // namespace kalvo
