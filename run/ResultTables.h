// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/FlexGrid.h"
#include "platform/Screens.h"

#include <QList>
#include <QObject>
#include <QString>
#include <QStringList>

namespace kalvo {

/// A list box without its widget: what the readers fill and the screens show. Items count from 0.
struct ListModel
{
    QStringList items;
    QList<int> selected; ///< indexes, rising
    bool enabled = true;

    void add(const QString& item) { items.append(item); }
    /// Adds the texts of 1 to `count`; nothing for a count below 1.
    void addNumbers(int count);
    void clear();
    void select(int index);
    bool isSelected(int index) const { return selected.contains(index); }
    int count() const { return static_cast<int>(items.size()); }
};

/// Counts of the last TAPE21 that was read, shared by all screens. Each reader sets those that it reads; where headers
/// differ the last one wins.
struct RunCounts
{
    int numStations = 0; ///< counted up, one a header
    int numPlans = 0;    ///< of the index readers and the old form
    int numRatios = 0;
    int numJD = 0;
    int graphPlans = 0; ///< of the full readers
};

/// Lists of the GRAPHER screen, which live as long as that screen is loaded.
struct GrapherLists
{
    ListModel List1; ///< stations, untrimmed, in deck order
    ListModel List2; ///< ratios
    ListModel List3; ///< plans; grows with every read until the screen is unloaded
    ListModel List4; ///< plans
    ListModel List5; ///< JD simulations
};

/// What the full reader found in the last run, as grids and lists that the result screens show. One instance for all
/// pages, for they share the run files and the screens. A table is forgotten when its screen is unloaded, so that none
/// is ever older than the last run.
class ResultTables : public QObject
{
    Q_OBJECT

public:
    static constexpr int kFirstRecord = 2; ///< column of `hydrographTable`; hours and minutes stand ahead of it

    explicit ResultTables(QObject* parent = nullptr);

    /// `hydrodata`'s grid: row 0 labels; column 0 hours, column 1 minutes, column c the record c-1 (from 1) as numbers,
    /// 8 bytes a flow.
    FlexGrid hydrographTable;
    /// `Form9`'s PKS: (0, c) label, (1, c) peak of record c, from 1.
    FlexGrid peakRow;
    /// `Form10`'s Grid1: a row for each station, a column for each of several plans, ratios and JD simulations.
    FlexGrid peakTable;
    GrapherLists GRAPHER;
    RunCounts counts;
    /// What the full reader counted when it filled the tables above; index readers leave these alone.
    RunCounts tableCounts;
    QString deckName;                 ///< of the deck whose run was read: base name without folder or extension
    int lastOrdinates = 0;            ///< NQ of the last header
    double lastIntervalMinutes = 0.0; ///< NMIN of the last header

    /// Forgets what belongs to a screen by its given name; nothing for a name without data here.
    void forget(const QString& screen);
    /// Forgets it whenever the registry unloads such a screen.
    void follow(Screens& screens);
    /// Tells the screens that a reader is done.
    void tellChanged() { Q_EMIT changed(); }
    /// The full reader has filled the tables: their screens can be opened, from every page.
    void tellFilled() { Q_EMIT filled(); }
    /// A run has begun: what the tables held is gone for every page.
    void tellStale() { Q_EMIT stale(); }

Q_SIGNALS:
    void changed();
    void filled();
    void stale();
};

} // namespace kalvo
