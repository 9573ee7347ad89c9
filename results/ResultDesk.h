// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/Screens.h"
#include "platform/Services.h"
#include "run/ResultTables.h"

#include <QObject>
#include <QString>

#include <memory>
#include <optional>

namespace kalvo {

/// What all result screens stand on: the tables of the last run that was read, the services, and the events by which
/// they reach the pages below them and the graphs above them. One desk serves all pages.
class ResultDesk : public QObject
{
    Q_OBJECT

public:
    ResultDesk(Services& services, Screens& screens, std::shared_ptr<ResultTables> tables);

    Services& services() const { return m_services; }
    Screens& screens() const { return m_screens; }
    ResultTables& tables() const { return *m_tables; }
    std::shared_ptr<ResultTables> sharedTables() const { return m_tables; }
    /// True while the table of hydrographs holds a whole run.
    bool holdsHydrographs() const;
    /// What save dialogs offer: base name of the deck whose run was read, without folder and extension.
    QString offeredName() const { return m_tables->deckName; }
    /// What one flow of the run that was read is: "cfs", or "m3/s" when its deck asks for metric units.
    QString flowUnit() const;
    bool isMetric() const;

    /// A screen was closed or returned from: the pages set their commands by it.
    void tellClosed(const QString& screen) { Q_EMIT closed(screen); }
    /// The main screen comes forward.
    void tellReturned() { Q_EMIT returned(); }
    /// No run may begin while a screen that reads the tables at length stands open.
    void allowRuns(bool allowed) { Q_EMIT runsAllowed(allowed); }
    /// A chart of the selection of a table of hydrographs: row 0 labels, column 0 hours, column 1 minutes.
    void wantQuickGraph(const FlexGrid& table) { Q_EMIT quickGraphWanted(table); }
    /// Every quick graph is to go.
    void dropQuickGraphs() { Q_EMIT quickGraphsUnwanted(); }

Q_SIGNALS:
    void closed(const QString& screen);
    void returned();
    void runsAllowed(bool allowed);
    void quickGraphWanted(const kalvo::FlexGrid& table);
    void quickGraphsUnwanted();

private:
    Services& m_services;
    Screens& m_screens;
    const std::shared_ptr<ResultTables> m_tables;
    mutable std::optional<bool> m_isMetric; ///< of the run in the tables, once somebody has asked
};

} // namespace kalvo
