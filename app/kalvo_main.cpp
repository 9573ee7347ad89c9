// SPDX-License-Identifier: GPL-3.0-or-later
// The program with the window: wires the real services to the screens, nothing else.
#include "app/Program.h"
#include "deck/Form1_MainScreen.h"
#include "platform/FlexGridView.h"
#include "platform/QtChildProcess.h"
#include "platform/QtClipboard.h"
#include "platform/QtClock.h"
#include "platform/QtDialogs.h"
#include "platform/QtTextMeasure.h"
#include "shell/Theme.h"
#include "shell/splash_StartScreen.h"

#include <QApplication>
#include <QCommandLineParser>

namespace {

using namespace kalvo;

struct Options
{
    QString deck;
    bool splash = true;
    bool untilFirstPaint = false;
};

Options optionsOf(const QApplication& app)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("Edits HEC-1 card decks, runs HEC-1 and shows what it wrote."));
    parser.addHelpOption();
    parser.addVersionOption();
    const QCommandLineOption noSplash(QStringLiteral("no-splash"),
                                      QStringLiteral("Start without the start screen (also KALVO_NO_SPLASH)."));
    parser.addOption(noSplash);
    QCommandLineOption untilPaint(QStringLiteral("until-first-paint"));
    untilPaint.setFlags(QCommandLineOption::HiddenFromHelp); // for measuring the start
    parser.addOption(untilPaint);
    parser.addPositionalArgument(QStringLiteral("deck"), QStringLiteral("The deck to open."), QStringLiteral("[DECK]"));
    parser.process(app);
    Options options;
    options.splash = !parser.isSet(noSplash) && !qEnvironmentVariableIsSet("KALVO_NO_SPLASH");
    options.untilFirstPaint = parser.isSet(untilPaint);
    if (!parser.positionalArguments().isEmpty())
        options.deck = parser.positionalArguments().front();
    return options;
}

/// Ends the program once the grid has been painted.
class EndAfterPaint : public QObject
{
public:
    bool eventFilter(QObject*, QEvent* event) override
    {
        if (event->type() == QEvent::Paint)
            QMetaObject::invokeMethod(qApp, &QCoreApplication::quit, Qt::QueuedConnection);
        return false;
    }
};

/// The columns of the deck are measured in the main screen's font at the grid's size: ten fields fit the standard
/// window.
QFont deckFont()
{
    QFont font = QApplication::font();
    font.setPointSizeF(8.25);
    return font;
}

} // namespace

int main(int argc, char* argv[])
{
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("kalvo"));
    QApplication::setApplicationDisplayName(QString());
    QApplication::setApplicationVersion(QStringLiteral(KALVO_VERSION));
    QApplication::setDesktopFileName(QStringLiteral("kalvo"));
    const Options options = optionsOf(app);
    applyTheme(qEnvironmentVariable("KALVO_THEME"));

    QtDialogs dialogs;
    QtClipboard clipboard;
    QtClock clock;
    QtChildProcess process;
    QtTextMeasure measure(deckFont());
    ProgramFolder folder = ProgramFolder::ofProgram(QCoreApplication::applicationDirPath());
    Services services{dialogs, clipboard, clock, process, folder, measure};

    Program program(services, QCoreApplication::applicationDirPath());
    const auto load = [&] { dialogs.setParentWidget(&program.load()); };
    EndAfterPaint endAfterPaint;
    const auto show = [&] {
        if (options.untilFirstPaint)
            program.form()->grid()->viewport()->installEventFilter(&endAfterPaint);
        program.form()->show();
    };
    if (options.splash) {
        splash().begin(load, show);
    } else {
        load();
        show();
    }
    program.page().files.opencommandline(options.deck);
    program.form()->offerLeftDecks();
    return QApplication::exec();
}
