// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringList>

namespace kalvo {

/// Exit statuses of kalvo-run. The highest of all decks is the program's.
namespace batch_status {
inline constexpr int kNormalEnd = 0;
inline constexpr int kHecErrors = 1;
inline constexpr int kUsage = 2;
inline constexpr int kFileTrouble = 3;
inline constexpr int kStopped = 5; ///< timed out or cancelled
inline constexpr int kNoRun = 6;   ///< HEC-1 crashed, wrote nothing or could not be started
} // namespace batch_status

/// What the command line of kalvo-run asks for. An output is a file, "-" for standard output, or empty for none.
struct BatchOptions
{
    QStringList decks; ///< as given
    QString peaks;
    QString hydrographs;
    QString json;
    QString report;
    QString details;
    QString plot;
    int jobs = 0;      ///< decks at once; 0: as many as there are processors
    int timeoutMs = 0; ///< for each deck; 0: no limit
    bool keep = false; ///< leave the run folders behind
    bool wantsHelp = false;
    bool wantsVersion = false;
    QString usageError; ///< empty: go ahead

    /// Something is made of the hydrographs themselves.
    bool wantsHydrographs() const { return !hydrographs.isEmpty() || !json.isEmpty() || !plot.isEmpty(); }
    /// Every output that was asked for.
    QStringList outputs() const;
};

/// `arguments` with the program's name ahead. Without any output the peaks go to standard output.
BatchOptions batchOptions(const QStringList& arguments);
QString batchHelp();

} // namespace kalvo
