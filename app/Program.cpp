// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/Program.h"

#include "deck/Form1_MainScreen.h"
#include "graphics/GraphScreens.h"
#include "graphics/QuickHydroGraphers.h"
#include "results/HydrodataCommands.h"
#include "results/HydrodataScreens.h"
#include "results/ResultCommands.h"
#include "results/ResultScreens.h"
#include "run/RoutingCommands.h"
#include "run/RoutingScreens.h"
#include "run/RunCommands.h"
#include "run/ViewerCommands.h"
#include "run/ViewerScreens.h"
#include "run/frmDebugOutput_DebugScreen.h"
#include "shell/ColorScreens.h"
#include "shell/Form3_About.h"

#include <QApplication>

namespace kalvo {

Program::Program(Services& services, const QString& executableFolder)
    : m_services(services), m_executableFolder(executableFolder),
      m_desk(std::make_shared<ResultDesk>(services, m_screens, std::make_shared<ResultTables>())),
      m_hydrodata(std::make_shared<HydrodataDesk>(m_desk)),
      m_quickGraphs(std::make_unique<QuickHydroGraphers>(services))
{
    registerBelowThePage();
    m_page = std::make_unique<Workspace>(m_services, m_screens);
    addGroups(*m_page);
    registerAboveThePage();
}

Program::~Program()
{
    m_screens.unloadAll();
}

Form1& Program::load()
{
    m_form = std::make_unique<Form1>(*m_page);
    m_lastUsed = m_form.get();
    QObject::connect(qApp, &QApplication::focusChanged, m_form.get(), [this](const QWidget*, const QWidget* now) {
        if (auto* page = now ? qobject_cast<Form1*>(now->window()) : nullptr)
            m_lastUsed = page;
    });
    m_form->setCloneMaker([this](Workspace& first) {
        auto page = std::make_unique<Workspace>(first.services, first.screens, &first);
        addGroups(*page);
        return page;
    });
    m_form->load();
    return *m_form;
}

Form1* Program::frontPage() const
{
    return m_lastUsed && m_lastUsed->isVisible() ? m_lastUsed.data() : m_form.get();
}

/// Screens that the pages' command groups must find: a command is there only where its screen is.
void Program::registerBelowThePage()
{
    const auto mainWindow = [this] { return m_form.get(); };
    registerResultScreens(m_screens, m_desk, mainWindow);
    registerHydrodataScreens(m_screens, m_hydrodata, mainWindow);
    registerGrapher(m_screens, m_desk, {[this] { return m_page->looks.grapherColor(); }, {}});
    QObject::connect(m_desk.get(), &ResultDesk::quickGraphWanted, m_quickGraphs.get(),
                     [this](const FlexGrid& table) { m_quickGraphs->open(table, m_desk->flowUnit()); });
    QObject::connect(m_desk.get(), &ResultDesk::quickGraphsUnwanted, m_quickGraphs.get(),
                     &QuickHydroGraphers::closeAll);
    frmDebugOutput::registerIn(m_screens, m_services);
}

void Program::registerAboveThePage()
{
    const auto returned = [this] {
        if (Form1* page = frontPage())
            Q_EMIT page->page().focusWanted();
    };
    QObject::connect(m_desk.get(), &ResultDesk::returned, m_page.get(), returned);
    registerOutputViewers({m_screens, m_services, returned, [this] { return m_page->deck.currentFileName; }});
    registerRoutingScreens(m_screens, m_services, returned);
    Form3::registerIn(m_screens, m_page->engineText);
}

std::shared_ptr<RunCommands> Program::addRun(Workspace& page) const
{
    const auto places = EnginePlaces::ofSystem(page.services.folder, m_executableFolder);
    auto run = std::make_shared<RunCommands>(page.deck, page.services, page.commands, page.panels, page.screens, places,
                                             m_desk->sharedTables());
    QObject::connect(&run->events, &RunEvents::focusWanted, &page, &Workspace::focusWanted);
    page.engineText = [places] { return QStringLiteral("HEC-1: ") + locateEngine(places).described(); };
    return run;
}

/// Command groups of the rooms above the deck, for the first page and each clone.
void Program::addGroups(Workspace& page) const
{
    const auto run = addRun(page);
    page.keep(run);
    page.keep(std::make_shared<ViewerCommands>(page.commands, page.screens, run->events));
    page.keep(std::make_shared<RoutingCommands>(page.services, page.commands, page.screens, run->events));
    const auto graph = [run = run.get()] { return run->graph(); };
    page.keep(std::make_shared<ResultCommands>(m_desk, page.commands, graph));
    page.keep(
        std::make_shared<HydrodataCommands>(m_hydrodata, page.commands, page.panels,
                                            HydrodataSource{graph, [run = run.get()] { return run->state.hecRanOK; }}));
    registerColorScreens(page.looks, page.editContext);
    page.commands.add(QStringLiteral("about"), [&screens = page.screens] { screens.show(QStringLiteral("Form3")); });
}

} // namespace kalvo
