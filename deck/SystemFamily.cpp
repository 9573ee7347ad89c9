// SPDX-License-Identifier: GPL-3.0-or-later
#include "deck/SystemFamily.h"

#include <QOperatingSystemVersion>
#include <QStringList>

#include <algorithm>

namespace kalvo {

namespace {

QString nameOf(int platform, int major, int minor)
{
    if (platform == 1) {
        switch (minor) {
        case 0:
            return QStringLiteral("Windows 95");
        case 10:
            return QStringLiteral("Windows 98");
        case 90:
            return QStringLiteral("Windows Mellinnium");
        default:
            break;
        }
    }
    if (platform == 2) {
        switch (major) {
        case 3:
            return QStringLiteral("Windows NT 3.51");
        case 4:
            return QStringLiteral("Windows NT 4.0");
        case 5:
            return minor != 0 ? QStringLiteral("Windows XP") : QStringLiteral("Windows 2000");
        case 6:
            return QStringLiteral("Windows Vista");
        default:
            break;
        }
    }
    return QStringLiteral("Failed");
}

bool isKnownNT(const QString& name)
{
    static const QStringList kParts = {QStringLiteral("Vista"), QStringLiteral("Windows NT"),
                                       QStringLiteral("Windows 7")};
    return name == QLatin1String("Windows XP") || name == QLatin1String("Windows 2000") ||
           std::any_of(kParts.begin(), kParts.end(), [&](const QString& part) { return name.contains(part); });
}

} // namespace

SystemFamily systemFamily(int platform, int major, int minor)
{
    const QString name = nameOf(platform, major, minor);
    return {name,
            isKnownNT(name) ? QStringLiteral(" Windows XP, NT, 2000, Vista or W7 in use ")
                            : QStringLiteral(" Windows Operating System - defaulted to XP compatibility "),
            true};
}

SystemFamily systemFamily()
{
    const QOperatingSystemVersion system = QOperatingSystemVersion::current();
    const bool isWindows = QOperatingSystemVersion::currentType() == QOperatingSystemVersion::Windows;
    return systemFamily(isWindows ? 2 : 0, system.majorVersion(), system.minorVersion());
}

} // namespace kalvo
