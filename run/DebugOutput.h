// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <QString>
#include <QStringList>

namespace kalvo {

/// What HEC-1 wrote to the console in a debug run, as the screen `frmDebugOutput` lists it.
class DebugOutput : public QObject
{
    Q_OBJECT

public:
    explicit DebugOutput(QObject* parent = nullptr) : QObject(parent) {}

    /// Items of the list, three blanks ahead of each.
    const QStringList& List1() const { return m_items; }
    /// Reads a console file as list items, parted by commas or line ends. Of a huge file the start is read and the last
    /// item says so.
    /// @return false when it cannot be read; the list is empty then.
    bool read(const QString& path);

Q_SIGNALS:
    void changed();

private:
    QStringList m_items;
};

} // namespace kalvo
