// SPDX-License-Identifier: GPL-3.0-or-later
// Writing the deck, for the Save commands and for every run of HEC-1.
#pragma once

#include "deck/Deck.h"

#include <QList>
#include <QString>

namespace kalvo {

/// How a save ended. Whatever it was, the user has been told.
struct SaveOutcome
{
    enum class Status
    {
        Saved,
        LongId,     ///< "Error in Data at Savefile": the file ends ahead of that row
        NotWritten, ///< no room, no permission ...: the former file is as it was
    };
    Status status = Status::NotWritten;
    QString path;            ///< full path of the file
    QByteArray bytes;        ///< what stands in it now, unless nothing was written
    QList<int> pushedRows;   ///< see DeckBytes
    QList<int> overlongRows; ///< see DeckBytes
    QList<int> oddRows;      ///< see DeckBytes

    bool isSaved() const { return status == Status::Saved; }
};

/// `savefile`: stores the edit box, TRIMMER, trimtozz (which may tell that there is no ZZ card; the save goes on), then
/// writes the grid. A bare name is a run file and lands in the program's folder; a full path is a user's deck, whose
/// former text is kept beside it as NAME.bak.
SaveOutcome savefile(Deck& deck, const QString& fileName);

/// Ahead of a save or a run that the user started: when the deck holds a `*FREE` card, tells it and the lines that the
/// grid would write with other fields than were read, and asks whether to go on. True without such a card.
bool mayWriteFreeFormat(Deck& deck);

/// The same news after a deck was opened; empty without a `*FREE` card.
QString freeFormatNews(const Deck& deck);

} // namespace kalvo
