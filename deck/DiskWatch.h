// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "deck/Deck.h"

#include <QByteArray>
#include <QString>

namespace kalvo {

/// Notices that the deck's file is no longer what this page last read from it or wrote to it. The whole file is read
/// each time: its time and size say nothing certain, and a large deck costs milliseconds.
class DiskWatch
{
public:
    explicit DiskWatch(Deck& deck) : m_deck(deck) {}

    /// The page has just read this from the file, or written it there.
    void remember(const QString& path, const QByteArray& bytes);
    void forget();

    /// Looks at the file of the deck and tells, once, when somebody else changed it or took it away: in panel 7, where
    /// it does not interrupt anybody, and for as long as it is so by the tip and the colour of the deck's name in panel
    /// 1. A deck whose file is gone counts as unsaved.
    void look();

    enum class Answer
    {
        Write,
        OtherName, ///< the user wants to choose another name
        Cancel
    };
    /// Asks ahead of a save into a file that somebody else has changed since; any other file may be written.
    Answer mayWriteOver(const QString& path);

private:
    enum class State
    {
        Unknown, ///< not a file that this page read or wrote, or one that cannot be read
        Same,
        Changed,
        Gone
    };
    struct Found
    {
        State state = State::Unknown;
        QByteArray digest = {}; ///< of a file that was read

        bool operator==(const Found&) const = default;
    };
    Found find() const;
    void show(const QString& news);

    Deck& m_deck;
    QString m_path; ///< whose contents are known
    QByteArray m_digest;
    Found m_told;
};

} // namespace kalvo
