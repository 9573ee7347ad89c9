// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/OutputSink.h"
#include "run/BatchOptions.h"
#include "run/EngineLocator.h"
#include "run/RunOutcome.h"

#include <QByteArray>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

#include <atomic>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <vector>

namespace kalvo {

/// What one deck gave, ready to be written.
struct DeckResult
{
    QString deck; ///< as given
    RunOutcome outcome;
    int status = 0;   ///< see batch_status
    QStringList talk; ///< lines for standard error, without the deck's name
    bool hasHydrographs = false;
    QByteArray peaks, hydrographs, json, report, details; ///< of those that were asked for
};

/// Runs one deck in a folder of its own, which is gone afterwards unless it is to be kept: hands HEC-1 the deck's own
/// bytes, waits, judges, reads.
DeckResult runDeck(const QString& deck, const BatchOptions& options, const HecEngine& engine, ChildProcess& process);

/// The status of a judged outcome.
int statusOf(RunOutcome::Verdict verdict);

/// kalvo-run: decks side by side, results in the decks' order whatever the number of jobs.
class BatchRun : public QObject
{
    Q_OBJECT

public:
    using ProcessFactory = std::function<std::unique_ptr<ChildProcess>()>;
    /// What the program around it gives.
    struct Surroundings
    {
        HecEngine engine;
        ProcessFactory newProcess; ///< called in each worker's thread; stop() must be callable from any thread
        std::function<void(const QString&)> talk; ///< one line for standard error
        std::function<void(int done, int all)> progress = {};
        QString plotProgram; ///< full path of kalvo-plot, empty when it is not there
    };

    BatchRun(BatchOptions options, Surroundings surroundings);
    ~BatchRun() override;

    /// Runs to the end with events running. @return the exit status.
    int run();
    /// Stops what runs and starts no further deck. From the thread of `run`.
    void cancel();

private:
    void work();
    void workInThreads(int jobs);
    void stopAll();
    bool openSinks();
    void writeReady();
    void write(const DeckResult& result);
    void closeSinks();
    void plot();
    void raise(int status) { m_status = std::max(m_status, status); }
    bool isDone() const { return m_written == static_cast<int>(m_results.size()); }

    BatchOptions m_options;
    Surroundings m_surroundings;
    int m_status = 0;
    int m_written = 0;
    bool m_anyHydrographs = false;
    bool m_detailsHeaded = false;
    std::unique_ptr<OutputSink> m_peaks, m_hydrographs, m_json, m_report, m_details, m_plotTable;
    std::unique_ptr<QTemporaryDir> m_plotFolder;

    std::atomic_int m_next = 0; ///< the next deck that a worker takes
    std::atomic_bool m_cancelled = false;
    std::mutex m_mutex; ///< guards what follows
    std::vector<std::optional<DeckResult>> m_results;
    std::vector<ChildProcess*> m_running;

Q_SIGNALS:
    void deckDone();
};

} // namespace kalvo
