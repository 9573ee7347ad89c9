// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "deck/Deck.h"
#include "deck/KeptDeck.h"
#include "platform/OwnedFile.h"

#include <QObject>
#include <QTimer>

#include <functional>
#include <memory>
#include <vector>

namespace kalvo {

/// The copy of one page's deck that a crash or a power cut leaves behind: at most a minute after a change it lies in
/// the program's folder, with what stands half typed in the edit box. It goes when nothing would be lost without it.
/// The user's own file is only read.
class RecoveryCopy : public QObject
{
    Q_OBJECT

public:
    /// From the first change to the copy; well under the minute that may be lost.
    static constexpr int kDelayMs = 30'000;

    /// @param differsFromFile says whether a save of the deck would write what its file does not hold.
    RecoveryCopy(Deck& deck, std::function<bool()> differsFromFile, QObject* parent = nullptr);

    /// A change was made, and its copy is to come.
    bool isArmed() const { return m_timer.isActive(); }
    /// Brings the copy up to the deck as it stands, or takes it away. The timer calls it.
    void tick();
    /// The deck is saved, replaced or given up: takes the copy away.
    void drop();
    /// The page's deck is now the one of this copy, which stays until the deck is saved.
    void adopt(std::unique_ptr<OwnedFile> file);
    /// Full path of the copy, empty while there is none.
    QString path() const { return m_file ? m_file->path() : QString(); }

private:
    void touch();
    void write(const KeptDeck& deck);
    void tellOnce(const QString& why);

    Deck& m_deck;
    std::function<bool()> m_differsFromFile;
    QTimer m_timer;
    std::unique_ptr<OwnedFile> m_file;
    KeptDeck m_written; ///< what the copy holds
    bool m_failureTold = false;
};

/// A copy whose program has died. It belongs to whoever holds this.
struct LeftDeck
{
    std::unique_ptr<OwnedFile> file;
    KeptDeck deck;
};

/// The copies in the program's folder that nobody owns and that hold something that would be lost: what is the same as
/// its file is removed, what is not whole is put aside as NAME.bad.
std::vector<LeftDeck> leftDecks(Services& services);

} // namespace kalvo
