// SPDX-License-Identifier: GPL-3.0-or-later
// What the logic asks of the world outside, each as a small abstract class. The Qt forms stand in platform/Qt*.cpp, the
// scripted forms for tests in tests/support/ScriptedServices.h. Only the Qt forms know QMessageBox, QFileDialog,
// QProcess.
#pragma once

#include "platform/FlexGrid.h"

#include <QByteArray>
#include <QDateTime>
#include <QFlags>
#include <QString>
#include <QStringList>

#include <functional>
#include <memory>
#include <optional>

namespace kalvo {

/// The program's name as message boxes show it in their title.
inline constexpr auto kApplicationTitle = "Kalvo";

enum class Icon
{
    None,
    Information,
    Warning,
    Critical,
    Question
};
enum class Button
{
    Ok = 1,
    Cancel = 2,
    Yes = 6,
    No = 7
};
enum class Buttons
{
    Ok,
    OkCancel,
    YesNo,
    YesNoCancel
};

struct MessageBox
{
    QString text = {};
    QString title = QString::fromLatin1(kApplicationTitle);
    Icon icon = Icon::None;
    Buttons buttons = Buttons::Ok;
    std::optional<Button> defaultButton = {}; ///< none: the first
};

/// A file dialog as the screens state it: filters joined by '|' in pairs of caption and patterns, index from 1.
struct FileDialog
{
    QString title = {};
    QString filter = {};
    int filterIndex = 1;
    QString initialName = {}; ///< full path or bare name offered, empty for none
    QString defaultExtension = {};
    bool overwritePrompt = false;
    bool fileMustExist = false;
};

/// Every question to the user. The scripted form answers from a queue, records every word, and fails the test on a
/// question that nobody scripted or an answer left over.
class Dialogs
{
public:
    virtual ~Dialogs() = default;
    virtual Button message(const MessageBox& box) = 0;
    /// None when cancelled.
    virtual std::optional<QString> input(const QString& prompt, const QString& title, const QString& preset) = 0;
    /// Absolute path, none when cancelled.
    virtual std::optional<QString> openFile(const FileDialog& dialog) = 0;
    virtual std::optional<QString> saveFile(const FileDialog& dialog) = 0;
    virtual std::optional<Rgb> color(Rgb preset) = 0;
    virtual std::optional<CellFormat> font(const CellFormat& preset) = 0;

    /// A box with the application's title, no icon and OK alone.
    void tell(const QString& text) { message({text}); }
    void warn(const QString& text) { message({text, QString::fromLatin1(kApplicationTitle), Icon::Warning}); }
};

/// The clipboard. A bare LF in what other programs left is given as CR LF, so that no command ever glues lines
/// together. Text and picture replace each other.
class Clipboard
{
public:
    virtual ~Clipboard() = default;
    virtual bool hasText() const = 0;
    virtual QString text() const = 0;
    virtual void setText(const QString& text) = 0;
    /// A picture as the bytes of a PNG file, so that logic needs no image class. Bytes that are no PNG leave the
    /// clipboard as it was.
    virtual void setPicture(const QByteArray& png) = 0;
    virtual void clear() = 0;
};

class Clock
{
public:
    virtual ~Clock() = default;
    virtual QDateTime now() const = 0;
    /// Waits with events running.
    virtual void wait(int milliseconds) = 0;
};

/// How a child process ended.
struct ProcessEnd
{
    enum class Kind
    {
        NotStarted, ///< no such program, or it may not be started; `message` says why
        Exited,     ///< by itself, with `exitCode`
        Crashed,    ///< by a signal or a fault
        Stopped,    ///< ended by us, because the user or a time limit asked for it
    };
    Kind kind = Kind::NotStarted;
    int exitCode = -1;
    QString message = {};
};

/// One start of a child program.
struct ProcessStart
{
    QString program = {}; ///< full path
    QStringList arguments = {};
    QString workingFolder = {};
    QString outputFile = {}; ///< where standard output and error go, relative to the folder; empty: thrown away
    bool inWindow = false;   ///< in a console window of its own that stays open; not waited for
    int timeoutMs = 0;       ///< 0: no limit
};

/// Starts programs and waits for the process itself, never for a clock. While `run` waits, events run, so the user may
/// type, paint and cancel.
class ChildProcess
{
public:
    virtual ~ChildProcess() = default;
    /// Runs to the end (or, with inWindow, to the start). Only one run at a time: a second call while one is going
    /// gives NotStarted.
    virtual ProcessEnd run(const ProcessStart& start) = 0;
    virtual bool isRunning() const = 0;
    /// Ends the running process; `run` then returns Stopped. Nothing when none runs.
    virtual void stop() = 0;
};

/// Where the run files lie and where the read-only data files are found. File names are compared without regard to
/// case: `checky.out` and `CHECKY.OUT` are one file.
class ProgramFolder
{
public:
    /// The folder of the executable when it holds the data files and can be written, otherwise the user's data folder;
    /// KALVO_HOME overrides both. `dataFolders` are searched in order for read-only files.
    ProgramFolder(QString folder, QStringList dataFolders);
    /// As the running program finds it. `executableFolder` is where the program lies.
    static ProgramFolder ofProgram(const QString& executableFolder);

    QString path() const { return m_folder; }
    /// Full path of a run file: the spelling that lies there (the newest of several), else `name` as given.
    QString file(const QString& name) const;
    /// Every spelling of `name` that lies in the folder, full paths.
    QStringList spellings(const QString& name) const;
    /// Removes every spelling; false when one could not be removed.
    bool remove(const QString& name) const;
    /// A read-only data file beside the program or under the install prefix; the run folder wins. Empty when missing.
    QString dataFile(const QString& name) const;
    QStringList dataFolders() const { return m_dataFolders; }
    /// Why nothing can be written here, empty when it can.
    QString whyNotWritable() const;

private:
    QString m_folder;
    QStringList m_dataFolders;
};

/// Width of texts in the main screen's own font, in twips. The deck's column rules ask for it.
class TextMeasure
{
public:
    virtual ~TextMeasure() = default;
    virtual int textWidth(const QString& text) const = 0;
    /// Names of installed fonts.
    virtual QStringList fontNames() const = 0;
};

/// All services in one hand. Held by reference everywhere; the app owns the Qt forms, a test the scripted ones.
struct Services
{
    Dialogs& dialogs;
    Clipboard& clipboard;
    Clock& clock;
    ChildProcess& process;
    ProgramFolder& folder;
    TextMeasure& measure;
};

/// Reads a whole file; none when it cannot be read (`why` then says the reason).
std::optional<QByteArray> readFile(const QString& path, QString* why = nullptr);
/// Writes a whole file and checks every step to the close; false with the reason in `why`. Not atomic: HEC-1 and the
/// engine must find the file under its own name in any case.
bool writeFile(const QString& path, const QByteArray& bytes, QString* why = nullptr);
/// The same for a file the user owns: what was there before is kept as NAME.bak until the new text is safely on disk
/// and stays there afterwards; on failure the old text is put back under its name.
bool writeUserFile(const QString& path, const QByteArray& bytes, QString* why = nullptr);

} // namespace kalvo
