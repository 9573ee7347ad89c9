// SPDX-License-Identifier: GPL-3.0-or-later
#include "deck/DeckSaving.h"

#include "deck/DeckFile.h"

#include <QDir>

namespace kalvo {

SaveOutcome savefile(Deck& deck, const QString& fileName)
{
    Services& services = deck.services();
    // The box first: a blank typed behind an ID must meet the trim, not the guard on long IDs.
    deck.storeEditBox();
    deck.TRIMMER();
    deck.trimtozz();

    const bool isRunFile = QDir::isRelativePath(fileName);
    SaveOutcome outcome;
    outcome.path = isRunFile ? services.folder.file(fileName) : fileName;
    const DeckBytes text = writeDeck(deck.Grid1);
    outcome.pushedRows = text.pushedRows;
    outcome.overlongRows = text.overlongRows;
    outcome.oddRows = text.oddRows;

    QString why;
    // What an earlier save cut off is not worth keeping; what NAME.bak holds is.
    const bool keepsFormer = !isRunFile && outcome.path != deck.cutOffFile;
    const bool written =
        keepsFormer ? writeUserFile(outcome.path, text.bytes, &why) : writeFile(outcome.path, text.bytes, &why);
    if (!written) {
        services.dialogs.message(
            {QStringLiteral("The File: %1 could not be written.\r\n%2\r\nThe deck is still in the grid%3")
                 .arg(outcome.path, why,
                      isRunFile ? QStringLiteral(".") : QStringLiteral(", and the file is as it was before.")),
             QString::fromLatin1(kApplicationTitle), Icon::Critical});
        return outcome;
    }
    outcome.status = SaveOutcome::Status::Saved;
    outcome.bytes = text.bytes;
    if (!isRunFile)
        deck.cutOffFile = text.longIdRow > 0 ? outcome.path : QString();
    if (text.longIdRow > 0) {
        outcome.status = SaveOutcome::Status::LongId;
        QString news =
            QStringLiteral("Error in Data at Savefile\r\nThe ID \"%1\" of line %2 has more than 2 characters.")
                .arg(deck.id(text.longIdRow), lineNumbers(deck.Grid1, {text.longIdRow}));
        if (!isRunFile)
            news += QStringLiteral(" The file ends ahead of that line; its former text, if any, is kept as %1.bak.")
                        .arg(outcome.path);
        services.dialogs.message({news, QString::fromLatin1(kApplicationTitle), Icon::Critical});
    }
    return outcome;
}

QString freeFormatNews(const Deck& deck)
{
    const FreeFormat found = freeFormatOf(deck.Grid1);
    if (found.freeRow == 0)
        return {};
    QString news = QStringLiteral("Can't Use *FREE Format Card-Convert to Column Format - Delete that Row!");
    if (!found.brokenRows.isEmpty())
        news += QStringLiteral("\r\nWritten from the grid, HEC-1 would read other fields in line(s) %1.")
                    .arg(lineNumbers(deck.Grid1, found.brokenRows));
    return news;
}

bool mayWriteFreeFormat(Deck& deck)
{
    deck.storeEditBox();
    const QString news = freeFormatNews(deck);
    if (news.isEmpty())
        return true;
    const MessageBox box{news + QStringLiteral("\r\nGo on with the deck as it stands in the grid?"),
                         QString::fromLatin1(kApplicationTitle), Icon::Warning, Buttons::OkCancel, Button::Cancel};
    return deck.services().dialogs.message(box) == Button::Ok;
}

} // namespace kalvo
