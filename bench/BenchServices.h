// SPDX-License-Identifier: GPL-3.0-or-later
// The services of a benchmark: the program's own, over a program folder that goes with it.
#pragma once

#include "platform/QtChildProcess.h"
#include "platform/QtClipboard.h"
#include "platform/QtClock.h"
#include "platform/QtDialogs.h"
#include "platform/QtTextMeasure.h"

#include <QApplication>
#include <QTemporaryDir>

namespace kalvo {

/// To be derived from, ahead of all that is handed the services.
template <class DialogService = QtDialogs, class ClipboardService = QtClipboard> struct BenchServices
{
    QTemporaryDir directory;
    DialogService dialogs;
    ClipboardService clipboard;
    QtClock clock;
    QtChildProcess process;
    ProgramFolder folder;
    QtTextMeasure measure{QApplication::font()};
    Services services{dialogs, clipboard, clock, process, folder, measure};

    /// @param path of the program's folder; empty: the one that goes with the benchmark
    explicit BenchServices(const QString& path = {}, const QStringList& dataFolders = {})
        : folder(path.isEmpty() ? directory.path() : path, dataFolders)
    {
    }
};

} // namespace kalvo
