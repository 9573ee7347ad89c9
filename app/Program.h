// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "deck/Workspace.h"
#include "platform/Screens.h"
#include "platform/Services.h"
#include "results/ResultDesk.h"

#include <QPointer>
#include <QString>

#include <memory>

namespace kalvo {

class Form1;
class HydrodataDesk;
class QuickHydroGraphers;
class RunCommands;

/// Everything of the desktop program over its services: the registry with all screens, the first page with its command
/// groups, and the main screen. `main` starts it with the real services, a test with scripted ones.
class Program
{
public:
    /// @param executableFolder where HEC-1 is looked for beside the program
    Program(Services& services, const QString& executableFolder);
    ~Program();
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;

    /// Builds the main screen, not shown yet.
    Form1& load();
    Form1* form() const { return m_form.get(); }

    Screens& screens() { return m_screens; }
    Workspace& page() { return *m_page; }
    ResultTables& tables() { return m_desk->tables(); }

private:
    /// The main screen that the user was on last, and that is still there: the first one or its clone.
    Form1* frontPage() const;
    void registerBelowThePage();
    void registerAboveThePage();
    std::shared_ptr<RunCommands> addRun(Workspace& page) const;
    void addGroups(Workspace& page) const;

    Services& m_services;
    const QString m_executableFolder;
    Screens m_screens;
    const std::shared_ptr<ResultDesk> m_desk;
    const std::shared_ptr<HydrodataDesk> m_hydrodata;
    const std::unique_ptr<QuickHydroGraphers> m_quickGraphs;
    std::unique_ptr<Workspace> m_page;
    std::unique_ptr<Form1> m_form;
    QPointer<Form1> m_lastUsed;
};

} // namespace kalvo
