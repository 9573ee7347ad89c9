// SPDX-License-Identifier: GPL-3.0-or-later
// kalvo-run: decks without a window. The work is in run/BatchRun; here are the terminal and the real processes.
#include "platform/Console.h"
#include "platform/QtChildProcess.h"
#include "run/BatchRun.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

#include <cstdio>

using namespace kalvo;

namespace {

/// Lines for people. A progress line on a terminal is wiped before anything else is written there.
class Talk
{
public:
    void line(const QString& words)
    {
        wipe();
        std::fprintf(stderr, "kalvo-run: %s\n", qUtf8Printable(words));
    }
    void progress(int done, int all)
    {
        if (!m_isTerminal || all < 2)
            return;
        std::fprintf(stderr, "\r%d of %d decks ", done, all);
        std::fflush(stderr);
        m_hasProgress = true;
    }
    void wipe()
    {
        if (m_hasProgress)
            std::fputs("\r                              \r", stderr);
        m_hasProgress = false;
    }

private:
    bool m_isTerminal = isStandardErrorATerminal();
    bool m_hasProgress = false;
};

QString plotProgram()
{
    for (const char* name : {"kalvo-plot", "kalvo-plot.exe"}) {
        const QString path = QDir(QCoreApplication::applicationDirPath()).filePath(QString::fromLatin1(name));
        if (QFileInfo(path).isExecutable())
            return path;
    }
    return {};
}

} // namespace

int main(int argc, char* argv[])
{
    // File names are bytes to the system and UTF-8 here; no other habit of a locale may reach the output.
    qputenv("LC_ALL", "C.UTF-8");
    QCoreApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("kalvo-run"));
    const BatchOptions options = batchOptions(QCoreApplication::arguments());
    if (options.wantsHelp || options.wantsVersion) {
        std::fputs(options.wantsHelp ? qUtf8Printable(batchHelp()) : "kalvo-run " KALVO_VERSION "\n", stdout);
        return std::fflush(stdout) == 0 ? batch_status::kNormalEnd : batch_status::kFileTrouble;
    }
    Talk talk;
    if (!options.usageError.isEmpty()) {
        talk.line(options.usageError + QStringLiteral(" (see kalvo-run --help)"));
        return batch_status::kUsage;
    }
    const QString beside = QCoreApplication::applicationDirPath();
    BatchRun batch(options, {.engine = locateEngine(EnginePlaces::ofSystem(ProgramFolder::ofProgram(beside), beside)),
                             .newProcess = [] { return std::make_unique<QtChildProcess>(); },
                             .talk = [&talk](const QString& words) { talk.line(words); },
                             .progress = [&talk](int done, int all) { talk.progress(done, all); },
                             .plotProgram = plotProgram()});
    onInterrupt([&batch] { batch.cancel(); });
    const int status = batch.run();
    talk.wipe();
    return status;
}
