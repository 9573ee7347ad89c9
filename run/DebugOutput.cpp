// SPDX-License-Identifier: GPL-3.0-or-later
#include "run/DebugOutput.h"

#include "platform/text.h"

#include <QFile>

namespace kalvo {

namespace {

constexpr qint64 kMostBytes = 4 << 20;

} // namespace

bool DebugOutput::read(const QString& path)
{
    m_items.clear();
    QFile file(path);
    const bool isOpen = file.open(QIODevice::ReadOnly);
    if (isOpen) {
        const QString blanks = QStringLiteral("   ");
        for (const QString& item : listItemsOf(file.read(kMostBytes)))
            m_items.append(blanks + item);
        if (!file.atEnd())
            m_items.append(blanks + QStringLiteral("... HEC-1 wrote %1 bytes in all").arg(file.size()));
    }
    Q_EMIT changed();
    return isOpen;
}

} // namespace kalvo
