// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace kalvo {

/// The operating system's family as the start of the program tells it in status panel 2.
struct SystemFamily
{
    QString name;           ///< "Windows XP"; "Failed" for a system that the table does not know
    QString message;        ///< of panel 2
    bool isNTFamily = true; ///< HEC-1 is started through the command interpreter; every system is taken so
};

/// @param platform 1 for the family of Windows 95, 2 for that of Windows NT; any other number is unknown.
SystemFamily systemFamily(int platform, int major, int minor);
/// Of the system that the program runs on.
SystemFamily systemFamily();

} // namespace kalvo
