// SPDX-License-Identifier: GPL-3.0-or-later
#include "deck/Recovery.h"

#include "deck/DeckFile.h"
#include "platform/text.h"

#include <QFileInfo>

namespace kalvo {

namespace {

/// Past this the collection of dropped cards starts anew; the full one stays beside it as NAME.bak.
constexpr qint64 kLargestCollection = 1 << 20;

} // namespace

Recovery::Recovery(Deck& deck, QObject* parent) : QObject(parent), m_deck(deck)
{
    connect(&deck, &Deck::cardsDropped, this, &Recovery::keepDropped);
}

QString Recovery::deckCopy() const
{
    return m_deck.services().folder.file(QStringLiteral("checkyrecovered.dat"));
}

QString Recovery::droppedCards() const
{
    return m_deck.services().folder.file(QStringLiteral("checkydropped.dat"));
}

bool Recovery::differsFromFile() const
{
    const QByteArray inGrid = canonicalDeck(m_deck.Grid1);
    if (m_deck.currentFilePath.isEmpty())
        return !inGrid.isEmpty();
    const auto onDisk = readFile(m_deck.currentFilePath);
    return !onDisk || canonicalDeck(linesOf(*onDisk)) != inGrid;
}

bool Recovery::keepIfUnsaved(QString* why) const
{
    return !differsFromFile() || keep(canonicalDeck(m_deck.Grid1), why);
}

bool Recovery::keep(const QByteArray& cards, QString* why) const
{
    if (cards.isEmpty())
        return true;
    if (const auto kept = readFile(deckCopy()); kept && *kept == cards)
        return true;
    return writeUserFile(deckCopy(), cards, why);
}

QString Recovery::notice() const
{
    const QFileInfo copy(deckCopy());
    if (!copy.isFile())
        return {};
    return QStringLiteral("A deck that was not saved on %1 is kept as %2")
        .arg(copy.lastModified().toString(QStringLiteral("yyyy-MM-dd HH:mm")), copy.filePath());
}

void Recovery::keepDropped(const QStringList& cards)
{
    const QString path = droppedCards();
    const QString name = m_deck.currentFilePath.isEmpty() ? QStringLiteral("a new deck") : m_deck.currentFilePath;
    QString text = QStringLiteral("* From behind the ZZ card of %1, %2\r\n")
                       .arg(name, m_deck.services().clock.now().toString(Qt::ISODate));
    for (const QString& card : cards)
        text += RTrim(card) + QStringLiteral("\r\n");

    const QFileInfo collection(path);
    QString why;
    bool kept = false;
    if (collection.isFile() && collection.size() < kLargestCollection) {
        const auto former = readFile(path);
        kept = former && writeFile(path, *former + text.toLatin1(), &why);
    } else {
        kept = writeUserFile(path, text.toLatin1(), &why);
    }
    const QString news = QStringLiteral("%1 card(s) behind the ZZ card were taken out of the grid; ").arg(cards.size());
    m_deck.panels().set(7, kept ? news + QStringLiteral("they are kept in %1").arg(path)
                                : news + QStringLiteral("they could not be kept: %1").arg(why));
}

} // namespace kalvo
