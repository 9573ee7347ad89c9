// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/SameFile.h"

#include <QFileInfo>

namespace kalvo {

bool isSameFile(const QString& one, const QString& other)
{
    if (one == other)
        return true;
    const QFileInfo first(one);
    const QFileInfo second(other);
    return first.exists() && second.exists() && first == second;
}

} // namespace kalvo
