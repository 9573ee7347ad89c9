// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/Services.h"

#include <QString>
#include <QTemporaryDir>

#include <memory>

namespace kalvo {

/// The folder in which one run of HEC-1 lays its files. The program's own folder holds the run that the screens show;
/// runs side by side have temporary folders of their own, which go with the object.
class RunFolder
{
public:
    static constexpr auto kDeck = "checky.dat";
    static constexpr auto kReport = "checky.out";
    static constexpr auto kDss = "checky.dss";
    static constexpr auto kTape21 = "TAPE21";
    static constexpr auto kStages = "FLOW_AND_STAGE_STORAGE.TXT"; ///< written only for routings with an ST card
    static constexpr auto kConsole = "kalvodebugoutput.txt";

    explicit RunFolder(const ProgramFolder& folder) : m_folder(folder) {}
    /// A new folder in the system's place for temporary files; none with the reason in `why` when it cannot be made.
    static std::unique_ptr<RunFolder> temporary(QString* why);

    QString path() const { return m_folder.path(); }
    /// Full path of a run file in the spelling that lies there, else as given.
    QString file(const char* name) const { return m_folder.file(QString::fromLatin1(name)); }
    QString report() const { return file(kReport); }
    QString tape21() const { return file(kTape21); }
    QString stages() const { return file(kStages); }
    /// Leaves a temporary folder behind when the object goes.
    void keep();

    /// Makes the folder ready for a run: TAPE21 is empty, the last report and the last stages are gone in every
    /// spelling, so that a run that writes nothing is never judged, and a deck without pools never shown, by the one
    /// before it.
    /// @return why it cannot be done, empty when it is done.
    QString clear() const;

private:
    ProgramFolder m_folder;
    std::unique_ptr<QTemporaryDir> m_temporary;
};

} // namespace kalvo
