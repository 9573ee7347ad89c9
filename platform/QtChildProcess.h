// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/Services.h"

#include <atomic>
#include <mutex>

QT_BEGIN_NAMESPACE
class QProcess;
QT_END_NAMESPACE

namespace kalvo {

/// Child programs of the operating system. One instance runs one program at a time; for programs side by side use one
/// instance for each thread. A run adds about a millisecond to the program's own time: it waits on the process, never
/// on a clock.
///
/// The program gets no standard input, and dies with us: on Linux also when we are killed.
/// @code
///     QtChildProcess process;
///     const ProcessEnd end = process.run({.program = "/usr/bin/hec1", .arguments = {"INPUT=a.dat"}, .workingFolder =
///     dir}); if (end.kind == ProcessEnd::Kind::NotStarted)
///         dialogs.tell(end.message);
/// @endcode
class QtChildProcess : public ChildProcess
{
public:
    QtChildProcess();
    ~QtChildProcess() override;

    ProcessEnd run(const ProcessStart& start) override;
    bool isRunning() const override;
    /// Ends the program and everything it started. May be called from any thread.
    void stop() override;

private:
    ProcessEnd runToItsEnd(const ProcessStart& start, const QString& program);

    std::atomic_bool m_running = false;
    bool m_stopped = false; ///< guarded by m_mutex, like m_process
    mutable std::mutex m_mutex;
    QProcess* m_process = nullptr;
};

/// Why a program cannot be started from a folder, empty when nothing speaks against it. `program` is a path, or a bare
/// name that is looked for on the path.
QString whyNotRunnable(const QString& program, const QString& workingFolder);

} // namespace kalvo
