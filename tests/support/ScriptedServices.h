// SPDX-License-Identifier: GPL-3.0-or-later
// The services as a test scripts them: every answer and every end of a child program is laid down beforehand, and what
// the code under test asked is recorded word for word. A question that nobody scripted fails the test, and so does an
// answer or a program's end that nobody fetched.
//
// @code
//     ScriptedServices services;
//     services.dialogs.willAnswer(Button::Yes);
//     services.process.willWrite({{"checky.out", report}, {"TAPE21", tape}});
//     RunCommands commands(deck, services, ...);
//     commands.runhec_Click();
//     EXPECT_EQ(services.dialogs.texts(), QStringList{"Run O.K."});
// @endcode
#pragma once

#include "platform/Services.h"

#include <QTemporaryDir>

#include <deque>
#include <functional>
#include <utility>
#include <variant>
#include <vector>

namespace kalvo {

class ScriptedDialogs : public Dialogs
{
public:
    enum class Kind
    {
        Message,
        Input,
        OpenFile,
        SaveFile,
        Color,
        Font
    };

    /// One question as it was asked. What a kind does not have is left as it starts.
    struct Shown
    {
        Kind kind = Kind::Message;
        QString text; ///< of a message, prompt of an input box
        QString title;
        Icon icon = Icon::None;
        Buttons buttons = Buttons::Ok;
        std::optional<Button> defaultButton;
        QString preset; ///< of an input box
        FileDialog file;
        Rgb color = Rgb::None;
        CellFormat font;
    };
    struct Cancel
    {
    };
    using Answer = std::variant<Cancel, Button, QString, Rgb, CellFormat>;
    using Meanwhile = std::function<void()>;

    ~ScriptedDialogs() override;

    /// Answers in the order of the questions: a button for a message box, a text for an input box or a file dialog
    /// (there the path; a relative one is taken from the current folder), a colour, a font. `meanwhile` runs while the
    /// box stands open, to look at the state behind it.
    void willAnswer(Button button, Meanwhile meanwhile = {}) { queue(button, std::move(meanwhile)); }
    void willAnswer(const QString& text, Meanwhile meanwhile = {}) { queue(text, std::move(meanwhile)); }
    void willAnswer(const char* utf8, Meanwhile meanwhile = {})
    {
        queue(QString::fromUtf8(utf8), std::move(meanwhile));
    }
    void willAnswer(Rgb color, Meanwhile meanwhile = {}) { queue(color, std::move(meanwhile)); }
    void willAnswer(const CellFormat& font, Meanwhile meanwhile = {}) { queue(font, std::move(meanwhile)); }
    /// Cancels an input box, a file, colour or font dialog. (Of a message box Cancel is a button.)
    void willCancel(Meanwhile meanwhile = {}) { queue(Cancel{}, std::move(meanwhile)); }
    /// From now on each message box with OK alone is answered by itself; for loops that tell something every time.
    void willAlwaysSayOk() { m_alwaysOk = true; }

    const std::vector<Shown>& shown() const { return m_shown; }
    /// The texts of all that was shown: messages and prompts, titles of file dialogs.
    QStringList texts() const;
    const Shown& last() const { return m_shown.at(m_shown.size() - 1); }
    int pending() const { return static_cast<int>(m_answers.size()); }
    /// Forgets what was shown and asked for so far.
    void forget();

    Button message(const MessageBox& box) override;
    std::optional<QString> input(const QString& prompt, const QString& title, const QString& preset) override;
    std::optional<QString> openFile(const FileDialog& dialog) override;
    std::optional<QString> saveFile(const FileDialog& dialog) override;
    std::optional<Rgb> color(Rgb preset) override;
    std::optional<CellFormat> font(const CellFormat& preset) override;

private:
    void queue(Answer answer, Meanwhile meanwhile) { m_answers.push_back({std::move(answer), std::move(meanwhile)}); }
    template <class Wanted> std::optional<Wanted> answerTo(Shown question);

    std::deque<std::pair<Answer, Meanwhile>> m_answers;
    std::vector<Shown> m_shown;
    bool m_alwaysOk = false;
};

class ScriptedClipboard : public Clipboard
{
public:
    bool hasText() const override { return m_hasText; }
    QString text() const override;
    void setText(const QString& text) override;
    void setPicture(const QByteArray& png) override;
    void clear() override;
    /// The PNG bytes put there last; empty once a text was put there.
    QByteArray picture() const { return m_picture; }
    /// What was put there, without the care that `text` takes of bare line feeds.
    QString raw() const { return m_text; }

private:
    QString m_text;
    QByteArray m_picture;
    bool m_hasText = false;
};

/// A clock that stands still until somebody waits; a wait takes no time but lets events run.
class ScriptedClock : public Clock
{
public:
    QDateTime now() const override { return m_now; }
    void wait(int milliseconds) override;
    void setNow(const QDateTime& now) { m_now = now; }
    const std::vector<int>& waits() const { return m_waits; } ///< milliseconds

private:
    QDateTime m_now{QDate(2001, 2, 3), QTime(4, 5, 6), Qt::UTC};
    std::vector<int> m_waits;
};

/// A child program that does what the test says. Files are written into the start's working folder.
class ScriptedChildProcess : public ChildProcess
{
public:
    using Behaviour = std::function<ProcessEnd(const ProcessStart&)>;
    using Files = std::vector<std::pair<QString, QByteArray>>; ///< names in the working folder, contents

    ~ScriptedChildProcess() override;

    void will(Behaviour behaviour) { m_behaviours.push_back(std::move(behaviour)); }
    /// What every start does once the queue is empty; for loops that run many times.
    void willAlways(Behaviour behaviour) { m_always = std::move(behaviour); }

    void willWrite(const Files& files, int exitCode = 0) { will(writes(files, exitCode)); }
    /// Ends at once without having written anything.
    void willEndAtOnce(int exitCode = 0) { will(writes({}, exitCode)); }
    /// Is killed after it wrote `files`.
    void willBeKilled(const Files& files = {});
    /// Goes on until `stop` or the start's own time limit; `meanwhile` runs from the event loop while it goes on.
    void willHang(std::function<void()> meanwhile = {}, const Files& files = {});
    /// Runs `meanwhile` from the event loop while it goes on, then writes `files` and ends with status 0.
    void willWriteAfter(std::function<void()> meanwhile, const Files& files);
    /// Writes `files`, then lets the file `name` grow to `bytes` (a sparse file: it costs no disk).
    void willWriteHuge(const QString& name, qint64 bytes, const Files& files = {});
    /// What the starting program is told when there is no such program.
    void willNotStart(const QString& message);

    static Behaviour writes(Files files, int exitCode = 0);

    const std::vector<ProcessStart>& started() const { return m_started; }
    int stops() const { return m_stops; } ///< calls of stop() while a program ran

    ProcessEnd run(const ProcessStart& start) override;
    bool isRunning() const override { return m_running; }
    void stop() override;

private:
    ProcessEnd hang(const ProcessStart& start, const std::function<void()>& meanwhile);

    std::deque<Behaviour> m_behaviours;
    Behaviour m_always;
    std::vector<ProcessStart> m_started;
    bool m_running = false;
    int m_stops = 0;
    std::function<void()> m_onStop;
};

/// Every character is 120 twips wide, so that widths in tests can be worked out by head.
class ScriptedTextMeasure : public TextMeasure
{
public:
    int textWidth(const QString& text) const override { return static_cast<int>(text.size()) * m_twipsPerCharacter; }
    QStringList fontNames() const override { return m_fonts; }
    void setTwipsPerCharacter(int twips) { m_twipsPerCharacter = twips; }
    void setFontNames(const QStringList& names) { m_fonts = names; }

private:
    int m_twipsPerCharacter = 120;
    QStringList m_fonts{QStringLiteral("Courier"), QStringLiteral("Helvetica")};
};

/// All services of one test, with a program folder of its own that goes with the test. Give it where `Services&` is
/// asked.
struct ScriptedServices
{
    ScriptedServices();
    ScriptedServices(const ScriptedServices&) = delete;
    ScriptedServices& operator=(const ScriptedServices&) = delete;

    operator Services&() { return services; }

    /// Full path of a name in the program folder, whether or not such a file lies there.
    QString path(const QString& name) const { return directory.filePath(name); }
    /// Writes a file into the program folder; the test fails when that fails. Gives the full path.
    QString put(const QString& name, const QByteArray& bytes);
    /// What a file of the program folder holds; empty when it is not there.
    QByteArray bytes(const QString& name) const;

    QTemporaryDir directory;
    ScriptedDialogs dialogs;
    ScriptedClipboard clipboard;
    ScriptedClock clock;
    ScriptedChildProcess process;
    ScriptedTextMeasure measure;
    /// The temporary folder; read-only data files are those of the source tree.
    ProgramFolder folder;
    Services services;
};

} // namespace kalvo
