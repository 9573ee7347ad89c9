// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "deck/Deck.h"
#include "deck/DeckSaving.h"
#include "deck/DiskWatch.h"
#include "deck/RecentFiles.h"
#include "deck/Recovery.h"
#include "deck/RecoveryCopy.h"
#include "platform/Commands.h"
#include "platform/Screens.h"
#include "platform/Services.h"
#include "platform/StatusPanels.h"

#include <QObject>
#include <QString>

#include <memory>
#include <optional>

namespace kalvo {

/// The deck file commands of one main screen: open, save, new, the command line, a dropped file, recent files. Adds
/// `openhec`, `savehec`, `saveashec1`, `newhec1` and `clearrecentfiles` to the commands; the rest is called by name.
///
/// A file that cannot be loaded leaves no path behind, so that the next save cannot be aimed at it by mistake. No deck
/// is replaced while HEC-1 runs.
class FileCommands : public QObject
{
    Q_OBJECT

public:
    /// @param shared the recent files of the first page, for a clone page; null: a list of its own.
    FileCommands(Deck& deck, Services& services, Commands& commands, StatusPanels& panels, Screens& screens,
                 RecentFiles* shared = nullptr);
    ~FileCommands() override;

    RecentFiles& recentFiles() { return *m_recent; }
    Recovery& recovery() { return m_recovery; }
    RecoveryCopy& recoveryCopy() { return m_copy; }

    /// Replaces the grid with a file's cards (a bare name is one of the program's folder). Does not set
    /// `currentFilePath`: its callers know whether the file is the user's.
    /// @return true when the file's cards now stand in the grid.
    bool opener(const QString& fileName);
    /// See kalvo::savefile.
    SaveOutcome savefile(const QString& fileName) { return kalvo::savefile(m_deck, fileName); }
    bool isTextFile(const QString& fileName) const;

    void openhec();
    /// Both give true when a file was written whole; false after a cancelled dialog or a failure.
    bool savehec();
    bool saveashec1();
    void newhec1();
    /// @param argument of the command line, as the system hands it over (without quotes); empty: nothing happens.
    void opencommandline(const QString& argument);
    void dropped(const QString& fileName);
    void oldfile(int index);
    void clearrecentfiles();

    void openoldfiles() { m_recent->openoldfiles(); }
    void saveoldfiles();
    void UPDATEOLDFILES(const QString& path) { m_recent->UPDATEOLDFILES(path); }

    /// The window was activated: another program may have had the deck's file in between.
    void lookAtFile();
    /// True when nothing would be lost or hidden by opening this deck here: the page is empty, or shows the same file.
    bool mayTake(const KeptDeck& deck) const;
    /// Opens a deck that a program left behind as an unsaved one; its copy stays until it is saved.
    void takeLeftDeck(LeftDeck left);

    /// The question ahead of the end of the program ("Save Data before Closing?") with all that belongs to it: the
    /// recent files, the save, the recovery copy. @return true when the program may end.
    bool mayClose();
    /// The program does end: the copy for the case of a crash goes, unless nothing else holds the deck.
    void ended();

Q_SIGNALS:
    /// After New and the command line: the main screen goes back to its standard size unless it is maximised.
    void standardSizeWanted();

private:
    bool isHecRunning();
    bool loadable(const QString& path, QByteArray& bytes);
    void clearGrid();
    void resetUndo();
    void showName(const QString& name);
    void forgetPath();
    void finishLoad(const QString& path, const QStringList& lines);
    void loaded(const QString& name);
    void tellEffectOfSaving(const QStringList& lines);
    bool openUserDeck(const QString& path);
    std::optional<QString> nameToSave(const FileDialog& dialog);
    bool saveAs(const FileDialog& dialog);
    void tellAfterSave(const SaveOutcome& outcome, const QString& toldBySave);

    Deck& m_deck;
    Services& m_services;
    Commands& m_commands;
    StatusPanels& m_panels;
    Screens& m_screens;
    std::unique_ptr<RecentFiles> m_ownRecent;
    RecentFiles* m_recent;
    Recovery m_recovery;
    RecoveryCopy m_copy;
    DiskWatch m_watch;
    bool m_isSaving = false;        ///< what is on disk is ours, though the watch does not know it yet
    bool m_isKeptElsewhere = false; ///< mayClose has seen to it that the deck is in its file or in the recovery copy
};

} // namespace kalvo
