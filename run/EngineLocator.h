// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/Services.h"

#include <QString>
#include <QStringList>

namespace kalvo {

/// The HEC-1 that a run starts.
struct HecEngine
{
    QString path;      ///< of HEC-1 itself, empty when none was found
    QString program;   ///< what is started: HEC-1, or what starts it
    QStringList ahead; ///< arguments ahead of HEC-1's own
    QString whyNot;    ///< why nothing can be started; empty: go ahead
    bool isFound() const { return whyNot.isEmpty() && !program.isEmpty(); }
    /// For the about screen and the status bar: the path, and with what it is started.
    QString described() const;
};

/// Where to look for HEC-1. The defaults are those of the running system; tests give their own.
struct EnginePlaces
{
    QString programFolder;    ///< where the run files lie
    QString executableFolder; ///< where this program lies
    QString overridden;       ///< KALVO_HEC1
    QStringList path;         ///< folders of the search path
    bool isWindows = false;

    static EnginePlaces ofSystem(const ProgramFolder& folder, const QString& executableFolder);
};

/// Finds HEC-1: KALVO_HEC1; hec1 in the program's folder; hec1.exe there (on Windows through the command interpreter,
/// elsewhere through wine when that is on the path); hec1 beside this program; hec1 on the path. A file of the name
/// that is no program is told and not passed over: another engine than the one the user put there would give other
/// numbers without a word.
HecEngine locateEngine(const EnginePlaces& places);

} // namespace kalvo
