// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/Services.h"

#include <QList>
#include <QMap>
#include <QObject>
#include <QString>
#include <QStringList>

namespace kalvo {

/// The entries `oldfile(1)`, `oldfile(2)` ... under "Open Recent Files Saved As:". An entry is a caption: the deck's
/// full path, then " [date--time]" of its last save. An index that was removed is never used again. A menu mirrors this
/// by the three signals; element 0, the menu's placeholder, is not kept here.
class RecentFiles : public QObject
{
    Q_OBJECT

public:
    /// With its placeholder the menu takes this many elements.
    static constexpr int kMostElements = 33;

    explicit RecentFiles(Services& services, QObject* parent = nullptr);

    /// Reads the list file of the program's folder; a missing file is no error.
    void openoldfiles();
    /// Rewrites the list file; nothing while the highest index is 0, so that a list that was never read is not wiped
    /// out.
    /// @return false when it could not be written, with the reason in `why`.
    bool saveoldfiles(QString* why = nullptr);
    /// Adds the path with today's date and time, or refreshes its entry. A full list is told in a box and stays as it
    /// is.
    void UPDATEOLDFILES(const QString& path);

    int oldFileCount() const { return m_lastIndex; }         ///< the last index that was ever used
    QList<int> indexes() const { return m_captions.keys(); } ///< ascending
    /// Empty for an index without an entry.
    QString caption(int index) const { return m_captions.value(index); }
    /// The path in a caption: what stands ahead of the last " [", or all of it.
    static QString pathOf(const QString& caption);
    /// A caption as a menu must be given it, so that "&" in a path is no mnemonic.
    static QString menuText(const QString& caption);

    /// Takes entries out and writes the list at once, an empty one too: else all would be back at the next start.
    /// @return false when it could not be written, with the reason in `why`.
    bool remove(const QList<int>& indexes, QString* why = nullptr);

Q_SIGNALS:
    void entryAdded(int index);
    void entryChanged(int index);
    void entryRemoved(int index);

private:
    QString stamped(const QString& path) const;
    bool writeList(QString* why);

    Services& m_services;
    QMap<int, QString> m_captions;
    QByteArray m_onDisk;
    int m_lastIndex = 0;
};

} // namespace kalvo
