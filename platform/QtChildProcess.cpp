// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/QtChildProcess.h"

#include <QCoreApplication>
#include <QDir>
#include <QEventLoop>
#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>
#include <QTimer>

#if defined(Q_OS_UNIX)
#include <csignal>
#include <unistd.h>
#endif
#if defined(Q_OS_LINUX)
#include <sys/prctl.h>
#endif

namespace kalvo {

namespace {

ProcessEnd notStarted(const QString& why)
{
    return {ProcessEnd::Kind::NotStarted, -1, why};
}

/// The full path of a program, or empty when there is none of that name.
QString programPath(const QString& program)
{
    if (program.contains(QLatin1Char('/')) || QDir::isAbsolutePath(program))
        return QFileInfo::exists(program) ? program : QString();
    return QStandardPaths::findExecutable(program);
}

/// Makes the program the head of a group of its own, so that all it starts can be ended with it.
void prepareGroup(QProcess& process)
{
#if defined(Q_OS_UNIX)
    process.setChildProcessModifier([] {
        ::setpgid(0, 0);
#if defined(Q_OS_LINUX)
        ::prctl(PR_SET_PDEATHSIG, SIGKILL);
#endif
    });
#else
    Q_UNUSED(process)
#endif
}

void killTree(QProcess& process)
{
    const qint64 id = process.processId();
    if (id <= 0)
        return;
#if defined(Q_OS_UNIX)
    ::kill(static_cast<pid_t>(-id), SIGKILL);
#elif defined(Q_OS_WIN)
    QProcess::execute(QStringLiteral("taskkill"),
                      {QStringLiteral("/T"), QStringLiteral("/F"), QStringLiteral("/PID"), QString::number(id)});
#endif
    process.kill();
}

ProcessEnd endOf(const QProcess& process)
{
    if (process.exitStatus() == QProcess::CrashExit)
        return {ProcessEnd::Kind::Crashed, process.exitCode(), process.errorString()};
    return {ProcessEnd::Kind::Exited, process.exitCode(), {}};
}

#if !defined(Q_OS_WIN)
struct Terminal
{
    const char* program;
    QStringList before; ///< arguments between the terminal's name and the command
};

/// The first terminal window program of this computer, with how it takes a command.
std::optional<Terminal> findTerminal()
{
    const QString dashE = QStringLiteral("-e");
    for (const Terminal& terminal :
         {Terminal{"x-terminal-emulator", {dashE}}, Terminal{"gnome-terminal", {QStringLiteral("--")}},
          Terminal{"konsole", {dashE}}, Terminal{"xfce4-terminal", {QStringLiteral("-x")}}, Terminal{"xterm", {dashE}}})
        if (!QStandardPaths::findExecutable(QString::fromLatin1(terminal.program)).isEmpty())
            return terminal;
    return std::nullopt;
}
#endif

/// Starts the program in a console window that stays open when the program has ended.
ProcessEnd runInWindow(const ProcessStart& start, const QString& program)
{
    QProcess window;
    window.setWorkingDirectory(start.workingFolder);
#if defined(Q_OS_WIN)
    window.setProgram(QStringLiteral("cmd.exe"));
    window.setArguments(QStringList{QStringLiteral("/k"), QDir::toNativeSeparators(program)} + start.arguments);
#else
    const auto terminal = findTerminal();
    if (!terminal)
        return notStarted(QStringLiteral("There is no terminal program on this computer to run '%1' in.").arg(program));
    // The program's name and arguments are handed over as they are: the shell never reads them.
    const QString stayOpen = QStringLiteral("\"$@\"; printf '\\nEnded with status %s. Press Enter to close.' \"$?\"; "
                                            "read -r line");
    window.setProgram(QString::fromLatin1(terminal->program));
    window.setArguments(
        terminal->before +
        QStringList{QStringLiteral("sh"), QStringLiteral("-c"), stayOpen, QStringLiteral("sh"), program} +
        start.arguments);
#endif
    if (!window.startDetached())
        return notStarted(QStringLiteral("'%1' could not be started: %2.").arg(window.program(), window.errorString()));
    return {ProcessEnd::Kind::Exited, 0, {}};
}

} // namespace

QString whyNotRunnable(const QString& program, const QString& workingFolder)
{
    if (program.isEmpty())
        return QStringLiteral("No program was named.");
    const QString path = programPath(program);
    if (path.isEmpty())
        return QStringLiteral("'%1' does not exist.").arg(program);
    const QFileInfo info(path);
    if (!info.isFile() || !info.isExecutable())
        return QStringLiteral("'%1' is not a program that may be started.").arg(path);
    if (!workingFolder.isEmpty() && !QFileInfo(workingFolder).isDir())
        return QStringLiteral("The folder '%1' does not exist.").arg(workingFolder);
    return {};
}

QtChildProcess::QtChildProcess() = default;

QtChildProcess::~QtChildProcess()
{
    stop();
}

bool QtChildProcess::isRunning() const
{
    return m_running;
}

void QtChildProcess::stop()
{
    const std::scoped_lock lock(m_mutex);
    if (!m_process || m_stopped)
        return;
    m_stopped = true;
    // QProcess belongs to the thread that runs it; the call is direct there and waits for its event loop elsewhere.
    QProcess* process = m_process;
    QMetaObject::invokeMethod(process, [process] { killTree(*process); });
}

ProcessEnd QtChildProcess::run(const ProcessStart& start)
{
    if (m_running.exchange(true))
        return notStarted(QStringLiteral("Another program is still running."));
    struct Release
    {
        std::atomic_bool& running;
        ~Release() { running = false; }
    } const release{m_running};

    const QString why = whyNotRunnable(start.program, start.workingFolder);
    if (!why.isEmpty())
        return notStarted(why);
    const QString program = programPath(start.program);
    return start.inWindow ? runInWindow(start, program) : runToItsEnd(start, program);
}

ProcessEnd QtChildProcess::runToItsEnd(const ProcessStart& start, const QString& program)
{
    QProcess process;
    process.setProgram(program);
    process.setArguments(start.arguments);
    process.setWorkingDirectory(start.workingFolder);
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.setStandardInputFile(QProcess::nullDevice());
    // To a file, never through us: a program that writes gigabytes costs no memory here.
    process.setStandardOutputFile(start.outputFile.isEmpty() ? QProcess::nullDevice()
                                                             : QDir(start.workingFolder).filePath(start.outputFile));
    prepareGroup(process);

    QEventLoop loop;
    bool failedToStart = false;
    QObject::connect(&process, &QProcess::finished, &loop, [&loop] { loop.quit(); });
    QObject::connect(&process, &QProcess::errorOccurred, &loop, [&](QProcess::ProcessError error) {
        if (error == QProcess::FailedToStart) {
            failedToStart = true;
            loop.quit();
        }
    });
    if (start.timeoutMs > 0)
        QTimer::singleShot(start.timeoutMs, Qt::PreciseTimer, &loop, [this] { stop(); });
    {
        const std::scoped_lock lock(m_mutex);
        m_process = &process;
        m_stopped = false;
    }
    process.start();
    if (process.state() != QProcess::NotRunning)
        loop.exec();
    if (process.state() != QProcess::NotRunning) {
        // The loop was ended from outside, because the application quits: the program goes with it.
        stop();
        process.waitForFinished(-1);
    }
    bool stopped = false;
    {
        const std::scoped_lock lock(m_mutex);
        m_process = nullptr;
        stopped = m_stopped;
    }
    if (failedToStart)
        return notStarted(QStringLiteral("'%1' could not be started: %2.").arg(program, process.errorString()));
    if (stopped)
        return {ProcessEnd::Kind::Stopped, process.exitCode(), {}};
    return endOf(process);
}

} // namespace kalvo
