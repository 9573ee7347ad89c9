// SPDX-License-Identifier: GPL-3.0-or-later
#include "run/BatchRun.h"

#include "run/BatchTables.h"
#include "run/RunDriver.h"
#include "run/Tape21Interval.h"

#include <QDir>
#include <QEventLoop>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QThread>
#include <QTimer>

namespace kalvo {

namespace {

using namespace batch_status;

const QString kDetails = QStringLiteral("details.csv");
/// A worker may be on its way from one deck to its process when the user cancels: stopping is repeated until all are
/// out.
constexpr int kStopAgainMs = 50;

/// Why a deck cannot be read, empty when it can; `bytes` holds it.
QString readDeckFile(const QString& path, QByteArray& bytes)
{
    const QFileInfo file(path);
    if (!file.exists())
        return QStringLiteral("the deck does not exist");
    if (!file.isFile())
        return QStringLiteral("this is not a file");
    QString why;
    const auto read = readFile(path, &why);
    if (!read)
        return why;
    bytes = *read;
    return bytes.isEmpty() ? QStringLiteral("the deck is empty") : QString();
}

DeckResult trouble(DeckResult result, int status, const QString& words)
{
    result.status = std::max(result.status, status);
    result.talk << words;
    return result;
}

/// Reads what HEC-1 left after a normal end.
void readHydrographs(const RunFolder& folder, const BatchOptions& options, DeckUnits units, Tape21& tape,
                     DeckResult& result)
{
    tape = readTape21File(folder.tape21());
    if (tape.problem) {
        const bool isEmpty = tape.problem->kind == Tape21Problem::Kind::Empty;
        if (isEmpty)
            result.talk << QStringLiteral("HEC-1 saved no hydrographs: no KO card has 21 in field 5");
        else
            result = trouble(std::move(result), kFileTrouble, tape.problem->text());
        tape = {}; // half a result is none
        return;
    }
    if (!completeIntervals(tape, folder.report())) {
        result = trouble(std::move(result), kFileTrouble,
                         QStringLiteral("neither TAPE21 nor the report tells the time step (NMIN) of the flows"));
        tape = {};
        return;
    }
    result.hasHydrographs = !tape.records.empty();
    if (!options.peaks.isEmpty())
        result.peaks = peaksCsv(result.deck, tape, units);
    if (!options.hydrographs.isEmpty() || !options.plot.isEmpty())
        result.hydrographs = hydrographsCsv(result.deck, tape, units);
}

void readOtherFiles(const RunFolder& folder, const BatchOptions& options, DeckResult& result)
{
    if (!options.report.isEmpty() && QFile::exists(folder.report())) {
        QString why;
        const auto report = readFile(folder.report(), &why);
        if (report)
            result.report = *report;
        else
            result = trouble(std::move(result), kFileTrouble, why);
    }
    if (!options.details.isEmpty() && result.outcome.isNormalEnd()) {
        const auto details = readFile(QDir(folder.path()).filePath(kDetails));
        if (details)
            result.details = *details;
        else
            result = trouble(std::move(result), kFileTrouble, QStringLiteral("this HEC-1 writes no details"));
    }
}

} // namespace

int statusOf(RunOutcome::Verdict verdict)
{
    switch (verdict) {
    case RunOutcome::Verdict::NormalEnd:
        return kNormalEnd;
    case RunOutcome::Verdict::EndedWithErrors:
        return kHecErrors;
    case RunOutcome::Verdict::Stopped:
        return kStopped;
    case RunOutcome::Verdict::WroteNothing:
    case RunOutcome::Verdict::Crashed:
    case RunOutcome::Verdict::NotStarted:
        break;
    }
    return kNoRun;
}

DeckResult runDeck(const QString& deck, const BatchOptions& options, const HecEngine& engine, ChildProcess& process)
{
    DeckResult result;
    result.deck = deck;
    QByteArray bytes;
    if (const QString why = readDeckFile(deck, bytes); !why.isEmpty())
        return trouble(std::move(result), kFileTrouble, why);
    QString why;
    const auto folder = RunFolder::temporary(&why);
    if (!folder || !writeFile(QDir(folder->path()).filePath(QString::fromLatin1(RunFolder::kDeck)), bytes, &why))
        return trouble(std::move(result), kFileTrouble, why);
    if (const QString notCleared = folder->clear(); !notCleared.isEmpty())
        return trouble(std::move(result), kFileTrouble, notCleared);
    if (options.keep)
        folder->keep();
    RunRequest request;
    request.timeoutMs = options.timeoutMs;
    request.detailsFile = options.details.isEmpty() ? QString() : kDetails;
    result.outcome = runHec1(*folder, engine, process, request);
    result.status = statusOf(result.outcome.verdict);
    const DeckUnits units = unitsOfDeck({bytes.constData(), static_cast<size_t>(bytes.size())});
    Tape21 tape;
    if (result.outcome.isNormalEnd())
        readHydrographs(*folder, options, units, tape, result);
    else
        result.talk << result.outcome.text() << result.outcome.errorLines;
    readOtherFiles(*folder, options, result);
    if (!options.json.isEmpty())
        result.json = deckJson(deck, result.outcome, result.status, result.talk, tape, units);
    if (options.keep) // last, because no two runs have the same
        result.talk << QStringLiteral("run folder: ") + folder->path();
    return result;
}

BatchRun::BatchRun(BatchOptions options, Surroundings surroundings)
    : m_options(std::move(options)), m_surroundings(std::move(surroundings)),
      m_results(static_cast<size_t>(m_options.decks.size()))
{
}

BatchRun::~BatchRun() = default;

int BatchRun::run()
{
    if (!openSinks())
        return m_status;
    const int wanted = m_options.jobs > 0 ? m_options.jobs : QThread::idealThreadCount();
    const int jobs = std::clamp(wanted, 1, static_cast<int>(m_options.decks.size()));
    if (jobs == 1) {
        // In this thread: a lone deck shall not wait for another thread to get its turn.
        connect(this, &BatchRun::deckDone, this, &BatchRun::writeReady);
        work();
    } else {
        workInThreads(jobs);
    }
    closeSinks();
    plot();
    return m_status;
}

void BatchRun::workInThreads(int jobs)
{
    QEventLoop loop;
    connect(this, &BatchRun::deckDone, &loop, [this, &loop] {
        writeReady();
        if (isDone())
            loop.quit();
    });
    std::vector<std::unique_ptr<QThread>> workers;
    for (int i = 0; i < jobs; ++i)
        workers.emplace_back(QThread::create([this] { work(); }))->start();
    loop.exec();
    for (const auto& worker : workers)
        worker->wait();
}

void BatchRun::cancel()
{
    m_cancelled = true;
    stopAll();
}

void BatchRun::stopAll()
{
    if (isDone())
        return;
    {
        const std::scoped_lock lock(m_mutex);
        for (ChildProcess* process : m_running)
            process->stop();
    }
    QTimer::singleShot(kStopAgainMs, this, &BatchRun::stopAll);
}

void BatchRun::work()
{
    const std::unique_ptr<ChildProcess> process = m_surroundings.newProcess();
    {
        const std::scoped_lock lock(m_mutex);
        m_running.push_back(process.get());
    }
    const int count = static_cast<int>(m_options.decks.size());
    for (int i = m_next++; i < count; i = m_next++) {
        DeckResult result;
        result.deck = m_options.decks[i];
        if (m_cancelled) {
            result.outcome.verdict = RunOutcome::Verdict::Stopped;
            result = trouble(std::move(result), kStopped, QStringLiteral("cancelled ahead of its start"));
        } else {
            result = runDeck(m_options.decks[i], m_options, m_surroundings.engine, *process);
        }
        {
            const std::scoped_lock lock(m_mutex);
            m_results[static_cast<size_t>(i)] = std::move(result);
        }
        Q_EMIT deckDone();
    }
    const std::scoped_lock lock(m_mutex);
    std::erase(m_running, process.get());
}

// -- Outputs ---------------------------------------------------------------------------------------------------------

bool BatchRun::openSinks()
{
    const auto open = [this](std::unique_ptr<OutputSink>& sink, const QString& path, const char* heading) {
        if (path.isEmpty())
            return;
        sink = std::make_unique<OutputSink>(path);
        if (const QString why = sink->open(); !why.isEmpty()) {
            m_surroundings.talk(why);
            raise(kFileTrouble);
        }
        sink->write(heading);
    };
    open(m_peaks, m_options.peaks, kPeaksHeading);
    open(m_hydrographs, m_options.hydrographs, kHydrographsHeading);
    open(m_json, m_options.json, "[");
    open(m_report, m_options.report, "");
    open(m_details, m_options.details, "");
    if (!m_options.plot.isEmpty()) {
        m_plotFolder = std::make_unique<QTemporaryDir>(QDir::temp().filePath(QStringLiteral("kalvo-plot-XXXXXX")));
        open(m_plotTable, m_plotFolder->filePath(QStringLiteral("hydrographs.csv")), kHydrographsHeading);
    }
    // Told before anything runs: a night of runs must not end in a file that cannot be written.
    return m_status == 0;
}

void BatchRun::writeReady()
{
    for (;;) {
        DeckResult result;
        {
            const std::scoped_lock lock(m_mutex);
            if (isDone() || !m_results[static_cast<size_t>(m_written)])
                return;
            result = std::move(*m_results[static_cast<size_t>(m_written)]);
            m_results[static_cast<size_t>(m_written)] = DeckResult{};
        }
        write(result);
        ++m_written;
        if (m_surroundings.progress)
            m_surroundings.progress(m_written, static_cast<int>(m_results.size()));
    }
}

void BatchRun::write(const DeckResult& result)
{
    for (const QString& line : result.talk)
        m_surroundings.talk(result.deck + QStringLiteral(": ") + line);
    raise(result.status);
    m_anyHydrographs = m_anyHydrographs || result.hasHydrographs;
    if (m_peaks)
        m_peaks->write(result.peaks);
    if (m_hydrographs)
        m_hydrographs->write(result.hydrographs);
    if (m_plotTable)
        m_plotTable->write(result.hydrographs);
    if (m_report)
        m_report->write(result.report);
    if (m_json) {
        const QByteArray json = result.json.isEmpty()
                                    ? deckJson(result.deck, result.outcome, result.status, result.talk, {}, {})
                                    : result.json;
        m_json->write((m_written > 0 ? QByteArray(",\n") : QByteArray("\n")) + json);
    }
    if (m_details && !result.details.isEmpty()) {
        const bool isAlone = m_results.size() == 1;
        m_details->write(isAlone ? result.details : withDeckColumn(result.deck, result.details, !m_detailsHeaded));
        m_detailsHeaded = true;
    }
}

void BatchRun::closeSinks()
{
    if (m_json)
        m_json->write("\n]\n");
    for (OutputSink* sink :
         {m_peaks.get(), m_hydrographs.get(), m_json.get(), m_report.get(), m_details.get(), m_plotTable.get()}) {
        const QString why = sink ? sink->close() : QString();
        if (why.isEmpty())
            continue;
        m_surroundings.talk(why);
        raise(kFileTrouble);
    }
}

void BatchRun::plot()
{
    if (m_options.plot.isEmpty() || m_cancelled)
        return;
    const auto failed = [this](const QString& why) {
        m_surroundings.talk(QStringLiteral("no picture was drawn: ") + why);
        raise(kFileTrouble);
    };
    if (!m_anyHydrographs)
        return failed(QStringLiteral("there are no hydrographs"));
    if (m_surroundings.plotProgram.isEmpty())
        return failed(QStringLiteral("kalvo-plot does not lie beside this program"));
    const bool isAlone = m_options.decks.size() == 1;
    ProcessStart start;
    start.program = m_surroundings.plotProgram;
    start.arguments = {QStringLiteral("--hydrographs"),
                       m_plotTable->path(),
                       QStringLiteral("--out"),
                       QFileInfo(m_options.plot).absoluteFilePath(),
                       QStringLiteral("--title"),
                       isAlone ? QFileInfo(m_options.decks.first()).fileName()
                               : QStringLiteral("%1 decks").arg(m_options.decks.size())};
    start.workingFolder = m_plotFolder->path();
    start.outputFile = QStringLiteral("talk.txt");
    // Without one a program with windows makes a folder for its sockets in the place for temporary files, and leaves
    // it.
    if (!qEnvironmentVariableIsSet("XDG_RUNTIME_DIR"))
        qputenv("XDG_RUNTIME_DIR", m_plotFolder->path().toLocal8Bit());
    const std::unique_ptr<ChildProcess> process = m_surroundings.newProcess();
    const ProcessEnd end = process->run(start);
    if (end.kind == ProcessEnd::Kind::Exited && end.exitCode == 0)
        return;
    const QByteArray words = readFile(m_plotFolder->filePath(start.outputFile)).value_or(QByteArray()).trimmed();
    failed(words.isEmpty() ? QStringLiteral("kalvo-plot ended early. ") + end.message : QString::fromUtf8(words));
}

} // namespace kalvo
