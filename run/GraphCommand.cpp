// SPDX-License-Identifier: GPL-3.0-or-later
#include "run/GraphCommand.h"

#include "platform/CommandGuard.h"
#include "platform/text.h"
#include "run/RunFolder.h"
#include "run/SummaryReport.h"
#include "run/Tape21Interval.h"
#include "run/Tape21Tables.h"

#include <algorithm>
#include <exception>

namespace kalvo {

namespace {

const QString kGrapher = QStringLiteral("GRAPHER");

/// The first station whose header cuts the rows of the tables, and with them the ends of longer hydrographs; empty when
/// none does, as in every run of HEC-1 itself.
QString shorterStation(const Tape21& tape)
{
    const auto& all = tape.stations;
    const auto shorter = std::adjacent_find(all.begin(), all.end(), [](const Tape21Station& a, const Tape21Station& b) {
        return b.header.ordinates < a.header.ordinates;
    });
    return shorter == all.end() ? QString() : Trim((shorter + 1)->name);
}

} // namespace

void CheckNormalEndLite(const ProgramFolder& folder, RunState& state)
{
    state.hecRanOK = reportMarks(RunFolder(folder).report()).holdsNormalEnd;
}

GraphCommand::GraphCommand(Services& services, Commands& commands, StatusPanels& panels, Screens& screens,
                           ResultTables& tables, RunState& state)
    : m_services(services), m_commands(commands), m_panels(panels), m_screens(screens), m_tables(tables), m_state(state)
{
}

bool GraphCommand::graph()
{
    try {
        if (m_screens.isVisible(kGrapher)) {
            m_screens.unload(kGrapher);
            m_tables.forget(kGrapher);
        }
        CheckNormalEndLite(m_services.folder, m_state);
        if (!m_state.hecRanOK) {
            m_services.dialogs.tell(QStringLiteral("Hec-1 Problem with Input Data!"));
            return false;
        }
        m_screens.load(kGrapher);
    } catch (const std::exception& e) {
        m_services.dialogs.tell(QString::fromUtf8(e.what()) + QStringLiteral(" Error in Graph Routine"));
        return false;
    }
    try {
        return readTables();
    } catch (const std::exception& e) {
        failed(QString::fromUtf8(e.what()));
        return false;
    }
}

bool GraphCommand::readTables()
{
    m_panels.setProgress(0);
    Tape21 tape =
        readTape21File(RunFolder(m_services.folder).tape21(), [this](int percent) { m_panels.setProgress(percent); });
    if (tape.problem && tape.problem->kind == Tape21Problem::Kind::Empty) {
        m_panels.setProgress(-1);
        m_services.dialogs.tell(QStringLiteral("There is no Graphing Data for this HEC-1 Run!"));
        m_screens.unload(kGrapher);
        m_tables.forget(kGrapher);
        return false;
    }
    const bool hasWideInterval = std::any_of(tape.stations.begin(), tape.stations.end(),
                                             [](const Tape21Station& s) { return s.header.isIntervalTooWide; });
    if (hasWideInterval && !completeIntervals(tape, RunFolder(m_services.folder).report()))
        m_panels.set(7, QStringLiteral("The time step does not fit into TAPE21 and the report does not tell it: "
                                       "all times of the tables are 0"));
    const QString shorter = shorterStation(tape);
    const auto problem = fillTables(std::move(tape), m_tables, m_services.measure);
    m_tables.tellChanged();
    if (problem) {
        failed(problem->text());
        return false;
    }
    if (!shorter.isEmpty()) {
        const QString news =
            QStringLiteral("Longer hydrographs are cut in all tables: station %1 has fewer ordinates").arg(shorter);
        qCWarning(logRun).noquote() << "graph:" << news;
        m_panels.set(7, news);
    }
    if (m_tables.lastIntervalMinutes == 0.0) {
        const QString news = QStringLiteral("The time step of this run is 0: times, centers of mass and volumes are 0");
        qCWarning(logRun).noquote() << "graph:" << news;
        if (!hasWideInterval)
            m_panels.set(7, news);
    }
    m_tables.tellFilled();
    if (m_screens.isKnown(kGrapher))
        m_screens.show(kGrapher);
    m_panels.setProgress(-1);
    return true;
}

void GraphCommand::failed(const QString& why)
{
    qCWarning(logRun).noquote() << "graph:" << why;
    m_services.dialogs.tell(why +
                            QStringLiteral(" Error opening Tape21 from HEC-1 - Possible Remedy is to Remove any *FREE "
                                           "Lines or there is no Graph Data in the Tape21 for this Run "));
    m_commands.setEnabled(QStringLiteral("runhec"), true);
    m_panels.setProgress(-1);
}

} // namespace kalvo
