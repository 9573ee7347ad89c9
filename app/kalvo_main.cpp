// SPDX-License-Identifier: GPL-3.0-or-later
// The program with the window: wires the real services to the screens, nothing else.
#include "deck/Form1_MainScreen.h"
#include "deck/Workspace.h"
#include "graphics/GraphScreens.h"
#include "platform/FlexGridView.h"
#include "platform/QtChildProcess.h"
#include "platform/QtClipboard.h"
#include "platform/QtClock.h"
#include "platform/QtDialogs.h"
#include "platform/QtTextMeasure.h"
#include "results/HydrodataCommands.h"
#include "results/HydrodataScreens.h"
#include "results/ResultCommands.h"
#include "results/ResultDesk.h"
#include "results/ResultScreens.h"
#include "run/RoutingCommands.h"
#include "run/RoutingScreens.h"
#include "run/RunCommands.h"
#include "run/ViewerCommands.h"
#include "run/ViewerScreens.h"
#include "run/frmDebugOutput_DebugScreen.h"
#include "shell/ColorScreens.h"
#include "shell/Form3_About.h"
#include "shell/Theme.h"
#include "shell/splash_StartScreen.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QIcon>
#include <QPointer>

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

/// Command groups of the rooms above the deck, for the first page and each clone.
void addGroups(Workspace& page, const std::shared_ptr<ResultDesk>& desk,
               const std::shared_ptr<HydrodataDesk>& hydrodata)
{
    const auto places = EnginePlaces::ofSystem(page.services.folder, QCoreApplication::applicationDirPath());
    auto run = std::make_shared<RunCommands>(page.deck, page.services, page.commands, page.panels, page.screens, places,
                                             desk->sharedTables());
    QObject::connect(&run->events, &RunEvents::focusWanted, &page, &Workspace::focusWanted);
    page.engineText = [places] { return QStringLiteral("HEC-1: ") + locateEngine(places).described(); };
    page.keep(std::make_shared<ViewerCommands>(page.commands, page.screens, run->events));
    page.keep(std::make_shared<RoutingCommands>(page.services, page.commands, page.screens, run->events));
    page.keep(
        std::make_shared<HydrodataCommands>(hydrodata, page.commands, page.panels,
                                            HydrodataSource{[reader = run.get()] { return reader->graph(); },
                                                            [reader = run.get()] { return reader->state.hecRanOK; }}));
    page.keep(std::move(run));
    page.keep(std::make_shared<ResultCommands>(desk, page.commands));
    registerColorScreens(page.looks, page.editContext);
    page.commands.add(QStringLiteral("about"), [&screens = page.screens] { screens.show(QStringLiteral("Form3")); });
}

std::unique_ptr<Workspace> clonePage(Workspace& first, const std::shared_ptr<ResultDesk>& desk,
                                     const std::shared_ptr<HydrodataDesk>& hydrodata)
{
    auto page = std::make_unique<Workspace>(first.services, first.screens, &first);
    addGroups(*page, desk, hydrodata);
    return page;
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

    Screens screens;
    const auto desk = std::make_shared<ResultDesk>(services, screens, std::make_shared<ResultTables>());
    QPointer<QWidget> mainWindow;
    registerResultScreens(screens, desk, [&mainWindow] { return mainWindow.data(); });
    const auto hydrodata = std::make_shared<HydrodataDesk>(desk);
    registerHydrodataScreens(screens, hydrodata, [&mainWindow] { return mainWindow.data(); });
    Workspace page(services, screens);
    registerGrapher(screens, desk, {[&page] { return page.looks.grapherColor(); }, {}});
    addGroups(page, desk, hydrodata);
    frmDebugOutput::registerIn(screens, services);
    registerOutputViewers(
        {screens, services, [&page] { Q_EMIT page.focusWanted(); }, [&page] { return page.deck.currentFileName; }});
    registerRoutingScreens(screens, services, [&page] { Q_EMIT page.focusWanted(); });
    Form3::registerIn(screens, page.engineText);

    std::unique_ptr<Form1> form;
    const auto load = [&] {
        form = std::make_unique<Form1>(page);
        mainWindow = form.get();
        form->setCloneMaker([desk, hydrodata](Workspace& first) { return clonePage(first, desk, hydrodata); });
        dialogs.setParentWidget(form.get());
        form->load();
    };
    EndAfterPaint endAfterPaint;
    const auto show = [&] {
        if (options.untilFirstPaint)
            form->grid()->viewport()->installEventFilter(&endAfterPaint);
        form->show();
    };
    if (options.splash) {
        splash().begin(load, show);
    } else {
        load();
        show();
    }
    page.files.opencommandline(options.deck);
    form->offerLeftDecks();
    const int status = QApplication::exec();
    screens.unloadAll();
    return status;
}
