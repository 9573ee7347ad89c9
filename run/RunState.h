// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "run/RunOutcome.h"

#include <QObject>
#include <QString>

namespace kalvo {

/// What is known of the last run, under the names that all screens use.
struct RunState
{
    /// The report holds the words of the normal end; also true once the user was told of a failure and goes on, so that
    /// the output can be viewed.
    bool hecRanOK = false;
    bool isNTFamily = true; ///< the system has the program that a run is started with; true in practice
    bool ZWpresent = false; ///< the deck of the last run has a ZW card
    int runResult = 0;      ///< above 0: the run was started
    QString Text2;          ///< field 1 of the last IT card
    RunOutcome outcome;     ///< of the last run
};

/// Tells higher rooms of runs, which they follow without being named here.
class RunEvents : public QObject
{
    Q_OBJECT

public:
    explicit RunEvents(QObject* parent = nullptr) : QObject(parent) {}

Q_SIGNALS:
    /// Results on the screens are stale from here on.
    void aboutToRun();
    /// After every start, however it ended; files and states are final. The main screen paints itself again.
    void finished(const kalvo::RunOutcome& outcome);
    /// A screen that came up with the results has given the focus back to the deck.
    void focusWanted();
};

} // namespace kalvo
