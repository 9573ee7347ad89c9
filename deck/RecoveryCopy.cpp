// SPDX-License-Identifier: GPL-3.0-or-later
#include "deck/RecoveryCopy.h"

#include "deck/DeckFile.h"
#include "platform/CommandGuard.h"
#include "platform/text.h"

#include <QFile>

namespace kalvo {

namespace {

const QString& stem()
{
    static const QString name = QStringLiteral("checkycopy");
    return name;
}

bool isSameAsFile(const KeptDeck& deck)
{
    const QByteArray cards = canonicalDeck(deck.cards);
    if (cards.isEmpty())
        return true; // nothing to lose
    if (deck.path.isEmpty())
        return false;
    const auto onDisk = readFile(deck.path);
    return onDisk && canonicalDeck(linesOf(*onDisk)) == cards;
}

} // namespace

RecoveryCopy::RecoveryCopy(Deck& deck, std::function<bool()> differsFromFile, QObject* parent)
    : QObject(parent), m_deck(deck), m_differsFromFile(std::move(differsFromFile))
{
    m_timer.setSingleShot(true);
    m_timer.setInterval(kDelayMs);
    connect(&m_timer, &QTimer::timeout, this, &RecoveryCopy::tick);
    connect(&deck, &Deck::changed, this, &RecoveryCopy::touch);
    connect(&deck, &Deck::replaced, this, &RecoveryCopy::drop);
}

void RecoveryCopy::touch()
{
    if (!m_timer.isActive())
        m_timer.start();
}

void RecoveryCopy::tick()
{
    m_timer.stop();
    if (!isHalfTyped(m_deck) && !m_differsFromFile()) {
        drop();
        return;
    }
    const KeptDeck now{m_deck.usersFilePath(), m_deck.services().clock.now(), cardsOf(m_deck)};
    if (!m_file || now.cards != m_written.cards || now.path != m_written.path)
        write(now);
}

void RecoveryCopy::write(const KeptDeck& deck)
{
    QString why;
    if (!m_file)
        m_file = OwnedFile::claimNew(m_deck.services().folder.path(), stem(), &why);
    if (!m_file || !m_file->write(bytesOf(deck), &why)) {
        tellOnce(why);
        return;
    }
    m_failureTold = false;
    m_written = deck;
}

/// It must not keep anybody from working, and once is enough.
void RecoveryCopy::tellOnce(const QString& why)
{
    if (m_failureTold)
        return;
    m_failureTold = true;
    m_deck.panels().set(StatusPanels::kPanels,
                        QStringLiteral("No recovery copy of this deck could be kept, so save it soon: %1").arg(why));
    m_deck.panels().setToolTip(StatusPanels::kPanels, m_deck.services().folder.path());
}

void RecoveryCopy::drop()
{
    m_timer.stop();
    m_written = {};
    if (!m_file)
        return;
    QString why;
    if (!m_file->remove(&why))
        qCWarning(logDeck) << "the recovery copy" << m_file->path() << "could not be removed:" << why;
    m_file.reset();
}

void RecoveryCopy::adopt(std::unique_ptr<OwnedFile> file)
{
    drop();
    m_file = std::move(file);
}

std::vector<LeftDeck> leftDecks(Services& services)
{
    std::vector<LeftDeck> found;
    for (std::unique_ptr<OwnedFile>& file : OwnedFile::claimLeft(services.folder.path(), stem())) {
        const auto bytes = file->read();
        if (!bytes)
            continue;
        auto deck = keptDeckOf(*bytes);
        if (!deck) {
            // Somebody else's text, or a disk that failed: not to be asked about, not to be thrown away either.
            qCWarning(logDeck) << "not a whole recovery copy:" << file->path();
            QFile::remove(file->path() + QStringLiteral(".bad"));
            QFile::rename(file->path(), file->path() + QStringLiteral(".bad"));
            continue;
        }
        if (isSameAsFile(*deck))
            file->remove();
        else
            found.push_back({std::move(file), std::move(*deck)});
    }
    return found;
}

} // namespace kalvo
