// SPDX-License-Identifier: GPL-3.0-or-later
// The printed report as the viewers hold it: when it is read again, and how it leaves them.
#pragma once

#include "platform/Services.h"
#include "platform/TextBuffer.h"

#include <QByteArray>
#include <QByteArrayView>
#include <QString>

namespace kalvo {

/// The run stamp of a report out of its seventh line: date and time of the run, joined. Empty when that line tells no
/// date and time, as with reports of other builds.
QString runStamp(const QByteArray& reportStart);

/// The report that a viewer shows. It stays as loaded, or as the viewer has changed it, until another run's report lies
/// there.
class ReportText
{
public:
    explicit ReportText(Services& services) : m_services(services) {}

    /// Looks whether the program's folder holds a report that is not the one loaded last. A report without a stamp is
    /// always another one, unless its file has not been written to since.
    /// @return true when `take` has something new: a report, or that there is none any more
    bool isStale();
    /// Reads the report that was last looked at; empty when it is missing or cannot be read, and `why` then tells.
    TextBuffer take();
    /// From here on any report is a new one: two runs within a second have the same stamp.
    void forget() { m_stamp.clear(); }
    /// Why there is no text, for the empty screen; empty when there is one.
    QString why() const { return m_why; }

private:
    QString stampOfFile() const;

    Services& m_services;
    QString m_stamp; ///< of what was taken; empty for nothing
    QString m_found; ///< of what was looked at
    QString m_why;
};

/// Asks for a name and writes a viewer's text as it now stands there; a write that fails is told.
void saveViewerText(Services& services, QByteArrayView text, const FileDialog& dialog);

/// More characters than the clipboard should hold: other programs stall on a paste, and a file is the better way.
inline constexpr qsizetype kMostCopied = qsizetype(64) << 20;

/// Whether so many characters can be copied; that they are more than `kMostCopied` is told.
bool mayCopy(Services& services, qsizetype count);

/// Puts a part of a report on the clipboard; nothing for an empty one. More than `kMostCopied` is told and not copied.
void copyReport(Services& services, const TextBuffer& report, qsizetype start, qsizetype count);

} // namespace kalvo
