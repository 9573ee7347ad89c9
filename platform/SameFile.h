// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

class QString;

namespace kalvo {

/// True when two paths are the same text or lead to one file. Files that are there are compared as the system does,
/// where letters' case and links are concerned; two that are gone are not the same for that.
bool isSameFile(const QString& one, const QString& other);

} // namespace kalvo
