// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "deck/Deck.h"
#include "platform/Commands.h"
#include "platform/Screens.h"
#include "platform/Services.h"
#include "platform/StatusPanels.h"
#include "run/EngineLocator.h"
#include "run/GraphCommand.h"
#include "run/ResultTables.h"
#include "run/RunDriver.h"
#include "run/RunState.h"

#include <QObject>

#include <memory>

namespace kalvo {

/// The run commands of one main screen: writes the deck, starts HEC-1, waits with events running, judges and tells how
/// it ended, and sets the commands that hang on it. Adds `runhec` with its twin `mnupopuprun`, `mnu_rundebug`,
/// `mnu_winhec`, and `graph` where the screen GRAPHER is known.
///
/// All run files lie in the program's folder, so there is one run at a time: a second one is ignored while one is
/// going. (Opening, New and closing ask the same process and refuse with a message.)
///
/// All pages are given the same tables; without any a page has its own.
///
/// @code
///     auto run = std::make_shared<RunCommands>(page.deck, services, page.commands, page.panels, screens,
///                                              EnginePlaces::ofSystem(services.folder, executableFolder));
///     page.keep(run);
/// @endcode
class RunCommands : public QObject
{
    Q_OBJECT

public:
    RunCommands(Deck& deck, Services& services, Commands& commands, StatusPanels& panels, Screens& screens,
                EnginePlaces places, std::shared_ptr<ResultTables> shared = nullptr);
    ~RunCommands() override;

    RunState state;
    RunEvents events;

private:
    const std::shared_ptr<ResultTables> m_shared;

public:
    ResultTables& tables; ///< of the last run that `graph` read on any page

    void runhec_Click();
    void mnu_rundebug();
    void mnu_winhec();
    /// @return true when the tables hold the whole run.
    bool graph();
    /// Looks for the normal end in the last report, shows it in panel 7 and sets `hecRanOK`; tells HEC-1's errors
    /// otherwise.
    void chknormalend();
    void CheckNormalEndLite() { kalvo::CheckNormalEndLite(m_services.folder, state); }
    /// `chkoutisopen`, a reserve check: a report that can be opened sets `hecRanOK`.
    void chkoutisopen();
    /// `findHecError`: a box with the texts of HEC-1's error lines, or that they are too many; nothing without any.
    void findHecError();
    QString HecErrorText(const QString& number);
    /// `getnumords`: the number of ordinates out of the last report; empty, and told, when it is not there.
    QString getnumords();

    bool isRunning() const { return m_isBusy; }
    /// Ends a HEC-1 that hangs; the run command then says so. Nothing when none runs.
    void cancelRun() { m_services.process.stop(); }
    /// The HEC-1 that a run would start now.
    HecEngine engine() const { return locateEngine(m_places); }

private:
    struct Busy;
    bool prepare(const QString& noZzText);
    void forgetResults();
    bool writeDeck();
    void keepNotes();
    void readCards();
    RunOutcome start(const RunRequest& request);
    /// Panel 7, `hecRanOK` and the box of error texts.
    void showEnd(const RunOutcome& outcome);
    void tellFailure(const QString& lastLine);
    bool tellIfNotRun(const RunOutcome& outcome);
    void showMonitor();
    void finish();

    Deck& m_deck;
    Services& m_services;
    Commands& m_commands;
    StatusPanels& m_panels;
    Screens& m_screens;
    EnginePlaces m_places;
    GraphCommand m_graph;
    QList<int> m_pushedRows; ///< of the deck that was written last, see DeckBytes
    bool m_isBusy = false;
};

} // namespace kalvo
