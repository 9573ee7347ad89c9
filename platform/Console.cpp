// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/Console.h"

#include <QCoreApplication>
#include <QObject>
#include <QSocketNotifier>

#include <atomic>
#include <csignal>
#include <cstdio>
#include <memory>

#if defined(Q_OS_WIN)
#include <io.h>
#include <windows.h>
#else
#include <fcntl.h>
#include <unistd.h>
#endif

namespace kalvo {

#if defined(Q_OS_WIN)

bool isStandardErrorATerminal()
{
    return _isatty(_fileno(stderr)) != 0;
}

bool isStandardOutputATerminal()
{
    return _isatty(_fileno(stdout)) != 0;
}

namespace {

struct Interrupt
{
    QObject context; ///< lives in the thread whose event loop runs `stop`
    std::function<void()> stop;
    std::atomic_bool asked = false;
};
std::unique_ptr<Interrupt> g_interrupt;

BOOL WINAPI onConsoleEvent(DWORD)
{
    Interrupt* interrupt = g_interrupt.get();
    if (!interrupt || interrupt->asked.exchange(true))
        return FALSE;
    QMetaObject::invokeMethod(
        &interrupt->context, [interrupt] { interrupt->stop(); }, Qt::QueuedConnection);
    return TRUE;
}

} // namespace

void onInterrupt(std::function<void()> stop)
{
    SetConsoleCtrlHandler(onConsoleEvent, FALSE);
    g_interrupt.reset();
    if (!stop)
        return;
    g_interrupt = std::make_unique<Interrupt>();
    g_interrupt->stop = std::move(stop);
    SetConsoleCtrlHandler(onConsoleEvent, TRUE);
}

#else

bool isStandardErrorATerminal()
{
    return isatty(STDERR_FILENO) != 0;
}

bool isStandardOutputATerminal()
{
    return isatty(STDOUT_FILENO) != 0;
}

namespace {

// A signal handler may do next to nothing, so it writes one byte into a pipe that the event loop listens to.
std::atomic_int g_pipeEnd = -1;

constexpr int kSignals[] = {SIGINT, SIGTERM, SIGHUP};

void onSignal(int signal)
{
    std::signal(signal, SIG_DFL); // a second request does not wait for us
    const char byte = 0;
    [[maybe_unused]] const auto written = write(g_pipeEnd, &byte, 1);
}

struct Interrupt
{
    int pipeEnds[2] = {-1, -1};
    std::unique_ptr<QSocketNotifier> notifier;

    ~Interrupt()
    {
        for (const int signal : kSignals)
            std::signal(signal, SIG_DFL);
        g_pipeEnd = -1;
        notifier.reset();
        for (const int end : pipeEnds)
            if (end >= 0)
                close(end);
    }
};
std::unique_ptr<Interrupt> g_interrupt;

} // namespace

void onInterrupt(std::function<void()> stop)
{
    g_interrupt.reset();
    if (!stop)
        return;
    auto interrupt = std::make_unique<Interrupt>();
    if (pipe(interrupt->pipeEnds) != 0)
        return; // the system's own way of ending stays
    for (const int end : interrupt->pipeEnds) {
        fcntl(end, F_SETFD, FD_CLOEXEC);
        fcntl(end, F_SETFL, O_NONBLOCK);
    }
    const int readEnd = interrupt->pipeEnds[0];
    interrupt->notifier = std::make_unique<QSocketNotifier>(readEnd, QSocketNotifier::Read);
    QObject::connect(interrupt->notifier.get(), &QSocketNotifier::activated, [readEnd, stop = std::move(stop)] {
        char bytes[16];
        while (read(readEnd, bytes, sizeof(bytes)) > 0) {
        }
        const auto copy = stop; // which may replace itself
        copy();
    });
    g_pipeEnd = interrupt->pipeEnds[1];
    for (const int signal : kSignals)
        std::signal(signal, onSignal);
    g_interrupt = std::move(interrupt);
}

#endif

} // namespace kalvo
