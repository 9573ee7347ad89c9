// SPDX-License-Identifier: GPL-3.0-or-later
#include "run/RunCommands.h"

#include "deck/DeckFile.h"
#include "deck/DeckSaving.h"
#include "platform/CommandGuard.h"
#include "platform/text.h"
#include "run/HecErrors.h"
#include "run/SummaryReport.h"

#include <QFile>
#include <QFileInfo>

namespace kalvo {

namespace {

constexpr int kHelpPanel = 7;
/// HEC-1 in a window is not waited for: the run command looks at what it has written after so long.
constexpr int kWindowWaitMs = 3000;

const QString kRunning = QStringLiteral("Running Hec-1");

const QStringList& resultCommands()
{
    static const QStringList names{QStringLiteral("mnu_hydrodata"), QStringLiteral("mnu_runoffvolumes"),
                                   QStringLiteral("mnu_peakflows"), QStringLiteral("mnu_tabular")};
    return names;
}

void enable(Commands& commands, const QStringList& names, bool on)
{
    for (const QString& name : names)
        commands.setEnabled(name, on);
}

} // namespace

/// One run at a time, also by way of a nested event loop; the pointer comes back whatever happens.
struct RunCommands::Busy
{
    explicit Busy(RunCommands& run) : m_run(run) { m_run.m_isBusy = true; }
    ~Busy()
    {
        m_run.m_panels.setWaiting(false);
        m_run.m_isBusy = false;
    }
    RunCommands& m_run;
};

RunCommands::RunCommands(Deck& deck, Services& services, Commands& commands, StatusPanels& panels, Screens& screens,
                         EnginePlaces places, std::shared_ptr<ResultTables> shared)
    : m_shared(shared ? std::move(shared) : std::make_shared<ResultTables>()), tables(*m_shared), m_deck(deck),
      m_services(services), m_commands(commands), m_panels(panels), m_screens(screens), m_places(std::move(places)),
      m_graph(services, commands, panels, screens, tables, state)
{
    tables.follow(screens);
    connect(&tables, &ResultTables::filled, this, [this] {
        enable(m_commands, resultCommands(), true);
        enable(m_commands, {QStringLiteral("mnu_saveAll")}, true);
    });
    connect(&tables, &ResultTables::stale, this, [this] { enable(m_commands, resultCommands(), false); });
    connect(&deck, &Deck::replaced, this, [this] { m_panels.setToolTip(kHelpPanel, QString()); });
    const auto add = [this](const char* name, void (RunCommands::*body)()) {
        m_commands.add(
            QString::fromLatin1(name), [this, body] { (this->*body)(); }, logRun);
    };
    add("runhec", &RunCommands::runhec_Click);
    add("mnupopuprun", &RunCommands::runhec_Click);
    add("mnu_rundebug", &RunCommands::mnu_rundebug);
    add("mnu_winhec", &RunCommands::mnu_winhec);
    if (screens.isKnown(QStringLiteral("GRAPHER")))
        m_commands.add(
            QStringLiteral("graph"), [this] { graph(); }, logRun);
}

RunCommands::~RunCommands() = default;

bool RunCommands::graph()
{
    tables.deckName = QFileInfo(m_deck.currentFileName).completeBaseName();
    return m_graph.graph();
}

void RunCommands::runhec_Click()
{
    if (m_isBusy || m_services.process.isRunning())
        return;
    const Busy busy(*this);
    if (!prepare(QStringLiteral("You Need a ZZ Card to End the Data! Enter Data Now:")))
        return;
    RunRequest request;
    request.inWindow = m_commands.isChecked(QStringLiteral("mnu_winhec"));
    const RunOutcome outcome = start(request);
    if (!tellIfNotRun(outcome)) {
        showEnd(outcome);
        if (!state.hecRanOK)
            tellFailure(
                QStringLiteral("Note any Errors in the Hec-1 Output or try running in Debug Screen mode (Tools Menu)"));
        enable(m_commands, {QStringLiteral("graph"), QStringLiteral("viewhec1"), QStringLiteral("graphdata")}, true);
        showMonitor();
    }
    finish();
}

void RunCommands::mnu_rundebug()
{
    if (m_isBusy || m_services.process.isRunning())
        return;
    const Busy busy(*this);
    if (!prepare(QStringLiteral("Enter Data Now:")))
        return;
    RunRequest request;
    request.catchesConsole = true;
    m_services.folder.remove(QString::fromLatin1(RunFolder::kConsole));
    const RunOutcome outcome = start(request);
    const bool wasRun = !tellIfNotRun(outcome);
    if (wasRun)
        enable(m_commands, {QStringLiteral("graph"), QStringLiteral("viewhec1"), QStringLiteral("graphdata")}, true);
    enable(m_commands, {QStringLiteral("runhec")}, true);
    enable(m_commands, resultCommands(), false);
    const QString screen = QStringLiteral("frmDebugOutput");
    if (outcome.verdict != RunOutcome::Verdict::NotStarted && m_screens.isKnown(screen))
        m_screens.show(screen);
    if (wasRun) {
        showEnd(outcome);
        if (!state.hecRanOK)
            tellFailure(QStringLiteral("Note any Errors in the Hec-1 Output as well as the DeBug screen"));
    }
    finish();
}

void RunCommands::mnu_winhec()
{
    const QString name = QStringLiteral("mnu_winhec");
    m_commands.setChecked(name, !m_commands.isChecked(name));
}

// -- Ahead of the start ----------------------------------------------------------------------------------------------

void RunCommands::forgetResults()
{
    // The four whose data are stale, and what hangs on the table of hydrographs. Comparison screens keep past runs on
    // purpose.
    for (const char* name : {"Form11", "GRAPHER", "Form10", "hydrodata", "FrmRunoffVolumes", "Form15", "Form20"}) {
        const QString screen = QString::fromLatin1(name);
        m_screens.unload(screen);
        tables.forget(screen);
    }
    tables.tellStale();
}

bool RunCommands::prepare(const QString& noZzText)
{
    Q_EMIT events.aboutToRun();
    forgetResults();
    m_deck.storeEditBox();
    enable(m_commands, {QStringLiteral("viewhec1"), QStringLiteral("graphdata")}, false);
    enable(m_commands, resultCommands(), false);
    if (m_deck.ISZZ() == 0) {
        m_panels.set(kHelpPanel, QStringLiteral("Run with Insufficient Data Attempted"));
        m_services.dialogs.tell(noZzText);
        return false;
    }
    m_panels.set(kHelpPanel, kRunning);
    const bool isWritten = writeDeck();
    keepNotes();
    if (!isWritten) {
        m_panels.set(kHelpPanel, QStringLiteral("HEC-1 was not started."));
        return false;
    }
    readCards();
    return true;
}

/// What the writing of the deck told in the panel that is the run's own stays with the panel as its tool tip.
void RunCommands::keepNotes()
{
    QStringList notes;
    if (const QString told = m_panels.text(kHelpPanel); told != kRunning)
        notes << told;
    if (!m_pushedRows.isEmpty())
        notes << QStringLiteral("Fields longer than their columns push the rest of their line: line(s) %1")
                     .arg(lineNumbers(m_deck.Grid1, m_pushedRows));
    m_panels.setToolTip(kHelpPanel, notes.join(QStringLiteral("\n")));
    m_panels.set(kHelpPanel, kRunning);
}

bool RunCommands::writeDeck()
{
    m_pushedRows.clear();
    if (!mayWriteFreeFormat(m_deck))
        return false;
    if (const QString why = RunFolder(m_services.folder).clear(); !why.isEmpty()) {
        m_services.dialogs.warn(QStringLiteral("HEC-1 cannot be run.\r\n") + why);
        return false;
    }
    // Half a deck would run too, and give other hydrographs than the deck on the screen.
    const SaveOutcome outcome = savefile(m_deck, QString::fromLatin1(RunFolder::kDeck));
    m_pushedRows = outcome.pushedRows;
    return outcome.isSaved();
}

void RunCommands::readCards()
{
    state.Text2.clear();
    state.ZWpresent = false;
    for (int row = 1; row < m_deck.Grid1.rows(); ++row) {
        const QString id = m_deck.id(row);
        if (id == QLatin1String("IT"))
            state.Text2 = m_deck.Grid1.textMatrix(row, 2);
        else if (id == QLatin1String("ZW"))
            state.ZWpresent = true;
    }
}

// -- The run and its end ---------------------------------------------------------------------------------------------

RunOutcome RunCommands::start(const RunRequest& request)
{
    m_panels.setWaiting(true);
    const RunFolder folder(m_services.folder);
    RunOutcome outcome = runHec1(folder, engine(), m_services.process, request);
    if (request.inWindow && outcome.verdict != RunOutcome::Verdict::NotStarted) {
        m_services.clock.wait(kWindowWaitMs);
        outcome = judgeRun({ProcessEnd::Kind::Exited, 0, {}}, reportMarks(folder.report()));
    }
    m_panels.setWaiting(false);
    state.outcome = outcome;
    state.runResult = outcome.verdict == RunOutcome::Verdict::NotStarted ? -1 : 1;
    if (!outcome.isNormalEnd())
        qCWarning(logRun).noquote() << outcome.text() << outcome.errorLines.join(QStringLiteral(" | "));
    return outcome;
}

/// True when there is nothing to judge: HEC-1 was not started, or the user stopped it. Both are told.
bool RunCommands::tellIfNotRun(const RunOutcome& outcome)
{
    if (outcome.verdict == RunOutcome::Verdict::NotStarted) {
        m_panels.set(kHelpPanel, outcome.text());
        m_services.dialogs.tell(QStringLiteral("Error Running HEC1E.EXE Try Again:"));
        return true;
    }
    if (outcome.verdict != RunOutcome::Verdict::Stopped)
        return false;
    state.hecRanOK = false;
    m_panels.set(kHelpPanel, outcome.text());
    // How far it came may show why it hung.
    enable(m_commands, {QStringLiteral("viewhec1")}, QFile::exists(RunFolder(m_services.folder).report()));
    return true;
}

void RunCommands::showEnd(const RunOutcome& outcome)
{
    const bool crashed = outcome.verdict == RunOutcome::Verdict::Crashed;
    if (outcome.holdsNormalEnd && !crashed) {
        const QTime now = m_services.clock.now().time();
        m_panels.set(kHelpPanel, QStringLiteral("HEC-1 Ran O.K. at ") + now.toString(QStringLiteral("h:mm:ss AP")));
        state.hecRanOK = true;
        return;
    }
    m_panels.set(kHelpPanel, QStringLiteral("HEC-1 Failed!"));
    findHecError();
    state.hecRanOK = false;
}

void RunCommands::tellFailure(const QString& lastLine)
{
    m_services.dialogs.tell(QStringLiteral("HEC-1 did not Run properly\r\n"
                                           "Check HEC-1 Input Data!\r\n"
                                           "This type of error is often generated by incorrect or\r\n"
                                           "incomplete data in the Input File\r\n"
                                           "\r\n") +
                            lastLine);
    state.hecRanOK = true;
}

void RunCommands::showMonitor()
{
    if (!m_commands.isChecked(QStringLiteral("mnu_peakflowMonitor")))
        return;
    const QString monitor = QStringLiteral("Form6");
    if (m_screens.isVisible(monitor))
        m_screens.repaint(monitor);
    else if (m_screens.isKnown(monitor))
        m_screens.show(monitor);
    Q_EMIT events.focusWanted();
}

void RunCommands::finish()
{
    for (const char* name : {"SVols", "SVols3", "frmCompare", "frmMulti"})
        m_screens.repaint(QString::fromLatin1(name));
    Q_EMIT events.finished(state.outcome);
}

// -- The report ------------------------------------------------------------------------------------------------------

void RunCommands::chknormalend()
{
    const ReportMarks marks = reportMarks(RunFolder(m_services.folder).report());
    if (marks.isThere)
        showEnd(judgeRun({ProcessEnd::Kind::Exited, 0, {}}, marks));
    else
        qCWarning(logRun) << "there is no report to look for the normal end in";
}

void RunCommands::chkoutisopen()
{
    if (QFile(RunFolder(m_services.folder).report()).open(QIODevice::ReadOnly))
        state.hecRanOK = true;
}

void RunCommands::findHecError()
{
    const QByteArray file =
        readFile(m_services.folder.dataFile(QStringLiteral("HECErrorDEscriptions.txt"))).value_or(QByteArray());
    const QString collected = findHecErrors(RunFolder(m_services.folder).report(), HecErrorTexts(file));
    if (collected.size() >= kNumerousErrorsLength)
        m_services.dialogs.tell(QStringLiteral("Errors are Numerous  -Check Output"));
    else if (!collected.isEmpty())
        m_services.dialogs.message(
            {collected, QString::fromLatin1(kApplicationTitle) + QStringLiteral(" Error in HEC-1"), Icon::Warning});
}

QString RunCommands::HecErrorText(const QString& number)
{
    return HecErrorTexts(
               readFile(m_services.folder.dataFile(QStringLiteral("HECErrorDEscriptions.txt"))).value_or(QByteArray()))
        .text(number);
}

QString RunCommands::getnumords()
{
    const OrdinateCount count = findOrdinateCount(RunFolder(m_services.folder).report());
    if (count.canBeRead && !count.isThere)
        m_services.dialogs.tell(QStringLiteral("Check IT Card"));
    return count.text;
}

} // namespace kalvo
