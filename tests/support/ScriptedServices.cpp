// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/support/ScriptedServices.h"

#include "platform/text.h"
#include "tests/support/GridText.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QTimer>

#include <gtest/gtest.h>

namespace kalvo {

namespace {

/// A test that forgets to stop a hanging program shall fail, not hang.
constexpr int kLongestHangMs = 20000;

const char* nameOf(ScriptedDialogs::Kind kind)
{
    switch (kind) {
    case ScriptedDialogs::Kind::Message:
        return "message box";
    case ScriptedDialogs::Kind::Input:
        return "input box";
    case ScriptedDialogs::Kind::OpenFile:
        return "open dialog";
    case ScriptedDialogs::Kind::SaveFile:
        return "save dialog";
    case ScriptedDialogs::Kind::Color:
        return "colour dialog";
    case ScriptedDialogs::Kind::Font:
        return "font dialog";
    }
    return "question";
}

std::string described(const ScriptedDialogs::Shown& question)
{
    return std::string(nameOf(question.kind)) + " \"" + question.text.toStdString() + "\" titled \"" +
           question.title.toStdString() + '"';
}

Button firstOf(Buttons buttons)
{
    return buttons == Buttons::YesNo || buttons == Buttons::YesNoCancel ? Button::Yes : Button::Ok;
}

bool has(Buttons buttons, Button button)
{
    switch (buttons) {
    case Buttons::Ok:
        return button == Button::Ok;
    case Buttons::OkCancel:
        return button == Button::Ok || button == Button::Cancel;
    case Buttons::YesNo:
        return button == Button::Yes || button == Button::No;
    case Buttons::YesNoCancel:
        return button != Button::Ok;
    }
    return false;
}

bool writeAll(const ProcessStart& start, const ScriptedChildProcess::Files& files)
{
    for (const auto& [name, bytes] : files) {
        QString why;
        if (!writeFile(QDir(start.workingFolder).filePath(name), bytes, &why)) {
            ADD_FAILURE() << "the scripted program could not write " << name.toStdString() << ": " << why.toStdString();
            return false;
        }
    }
    return true;
}

ProcessEnd exited(int code)
{
    return {ProcessEnd::Kind::Exited, code, {}};
}

} // namespace

// -- Dialogs -------------------------------------------------------------------------------------------------------

ScriptedDialogs::~ScriptedDialogs()
{
    if (!m_answers.empty())
        ADD_FAILURE() << m_answers.size() << " scripted answer(s) that nothing asked for; last shown: "
                      << (m_shown.empty() ? "nothing" : described(m_shown.back()));
}

template <class Wanted> std::optional<Wanted> ScriptedDialogs::answerTo(Shown question)
{
    const std::string what = described(question);
    m_shown.push_back(std::move(question));
    if (m_answers.empty()) {
        ADD_FAILURE() << "unscripted " << what;
        return std::nullopt;
    }
    auto [answer, meanwhile] = std::move(m_answers.front());
    m_answers.pop_front();
    if (meanwhile)
        meanwhile();
    if (auto* wanted = std::get_if<Wanted>(&answer))
        return std::move(*wanted);
    if (!std::holds_alternative<Cancel>(answer) || std::is_same_v<Wanted, Button>)
        ADD_FAILURE() << "the answer scripted is of another kind than " << what;
    return std::nullopt;
}

Button ScriptedDialogs::message(const MessageBox& box)
{
    Shown question{Kind::Message, box.text, box.title, box.icon, box.buttons, box.defaultButton, {}, {}, {}, {}};
    if (m_alwaysOk && m_answers.empty() && box.buttons == Buttons::Ok) {
        m_shown.push_back(std::move(question));
        return Button::Ok;
    }
    const std::string what = described(question);
    const std::optional<Button> answer = answerTo<Button>(std::move(question));
    if (!answer)
        return box.defaultButton.value_or(firstOf(box.buttons));
    if (!has(box.buttons, *answer))
        ADD_FAILURE() << "the scripted button is not on the " << what;
    return *answer;
}

std::optional<QString> ScriptedDialogs::input(const QString& prompt, const QString& title, const QString& preset)
{
    Shown question;
    question.kind = Kind::Input;
    question.text = prompt;
    question.title = title;
    question.preset = preset;
    return answerTo<QString>(std::move(question));
}

std::optional<QString> ScriptedDialogs::openFile(const FileDialog& dialog)
{
    Shown question;
    question.kind = Kind::OpenFile;
    question.title = dialog.title;
    question.file = dialog;
    const auto path = answerTo<QString>(std::move(question));
    return path ? std::optional(QFileInfo(*path).absoluteFilePath()) : std::nullopt;
}

std::optional<QString> ScriptedDialogs::saveFile(const FileDialog& dialog)
{
    Shown question;
    question.kind = Kind::SaveFile;
    question.title = dialog.title;
    question.file = dialog;
    const auto path = answerTo<QString>(std::move(question));
    return path ? std::optional(QFileInfo(*path).absoluteFilePath()) : std::nullopt;
}

std::optional<Rgb> ScriptedDialogs::color(Rgb preset)
{
    Shown question;
    question.kind = Kind::Color;
    question.color = preset;
    return answerTo<Rgb>(std::move(question));
}

std::optional<CellFormat> ScriptedDialogs::font(const CellFormat& preset)
{
    Shown question;
    question.kind = Kind::Font;
    question.font = preset;
    return answerTo<CellFormat>(std::move(question));
}

QStringList ScriptedDialogs::texts() const
{
    QStringList all;
    for (const Shown& question : m_shown)
        all << (question.kind == Kind::OpenFile || question.kind == Kind::SaveFile ? question.title : question.text);
    return all;
}

void ScriptedDialogs::forget()
{
    m_shown.clear();
}

// -- Clipboard and clock -------------------------------------------------------------------------------------------

QString ScriptedClipboard::text() const
{
    return withCrLf(m_text);
}

void ScriptedClipboard::setText(const QString& text)
{
    m_text = text;
    m_hasText = true;
    m_picture.clear();
}

void ScriptedClipboard::setPicture(const QByteArray& png)
{
    if (!png.startsWith("\x89PNG"))
        ADD_FAILURE() << "a picture that is no PNG";
    clear();
    m_picture = png;
}

void ScriptedClipboard::clear()
{
    m_text.clear();
    m_picture.clear();
    m_hasText = false;
}

void ScriptedClock::wait(int milliseconds)
{
    m_waits.push_back(milliseconds);
    m_now = m_now.addMSecs(milliseconds);
    QCoreApplication::processEvents();
}

// -- Child process -------------------------------------------------------------------------------------------------

ScriptedChildProcess::~ScriptedChildProcess()
{
    if (!m_behaviours.empty())
        ADD_FAILURE() << m_behaviours.size() << " scripted program(s) that nothing started";
}

ScriptedChildProcess::Behaviour ScriptedChildProcess::writes(Files files, int exitCode)
{
    return [files = std::move(files), exitCode](const ProcessStart& start) {
        writeAll(start, files);
        return exited(exitCode);
    };
}

void ScriptedChildProcess::willBeKilled(const Files& files)
{
    will([files](const ProcessStart& start) {
        writeAll(start, files);
        return ProcessEnd{ProcessEnd::Kind::Crashed, 9, {}};
    });
}

void ScriptedChildProcess::willHang(std::function<void()> meanwhile, const Files& files)
{
    will([this, meanwhile = std::move(meanwhile), files](const ProcessStart& start) {
        writeAll(start, files);
        return hang(start, meanwhile);
    });
}

ProcessEnd ScriptedChildProcess::hang(const ProcessStart& start, const std::function<void()>& meanwhile)
{
    QEventLoop loop;
    m_onStop = [&loop] { loop.quit(); };
    if (meanwhile)
        QTimer::singleShot(0, &loop, meanwhile);
    if (start.timeoutMs > 0)
        QTimer::singleShot(start.timeoutMs, &loop, [this] { stop(); });
    QTimer::singleShot(kLongestHangMs, &loop, [&loop] {
        ADD_FAILURE() << "the scripted program hangs and nobody stops it";
        loop.quit();
    });
    loop.exec();
    m_onStop = {};
    return {ProcessEnd::Kind::Stopped, -1, {}};
}

void ScriptedChildProcess::willWriteAfter(std::function<void()> meanwhile, const Files& files)
{
    will([this, meanwhile = std::move(meanwhile), files](const ProcessStart& start) {
        QEventLoop loop;
        bool stopped = false;
        m_onStop = [&] { stopped = true; };
        QTimer::singleShot(0, &loop, [&] {
            meanwhile();
            loop.quit();
        });
        loop.exec();
        m_onStop = {};
        if (stopped)
            return ProcessEnd{ProcessEnd::Kind::Stopped, -1, {}};
        writeAll(start, files);
        return exited(0);
    });
}

void ScriptedChildProcess::willWriteHuge(const QString& name, qint64 bytes, const Files& files)
{
    will([name, bytes, files](const ProcessStart& start) {
        writeAll(start, files);
        QFile file(QDir(start.workingFolder).filePath(name));
        if (!file.open(QIODevice::ReadWrite) || !file.resize(bytes))
            ADD_FAILURE() << "the scripted program could not grow " << name.toStdString();
        return exited(0);
    });
}

void ScriptedChildProcess::willNotStart(const QString& message)
{
    will([message](const ProcessStart&) { return ProcessEnd{ProcessEnd::Kind::NotStarted, -1, message}; });
}

ProcessEnd ScriptedChildProcess::run(const ProcessStart& start)
{
    if (m_running)
        return {ProcessEnd::Kind::NotStarted, -1, QStringLiteral("Another program is still running.")};
    m_started.push_back(start);
    Behaviour behaviour = m_always;
    if (!m_behaviours.empty()) {
        behaviour = std::move(m_behaviours.front());
        m_behaviours.pop_front();
    }
    if (!behaviour) {
        ADD_FAILURE() << "unscripted start of " << start.program.toStdString();
        return {ProcessEnd::Kind::NotStarted, -1, QStringLiteral("nothing was scripted")};
    }
    m_running = true;
    const ProcessEnd end = behaviour(start);
    m_running = false;
    return end;
}

void ScriptedChildProcess::stop()
{
    if (!m_running)
        return;
    ++m_stops;
    if (m_onStop)
        m_onStop();
}

// -- All together --------------------------------------------------------------------------------------------------

ScriptedServices::ScriptedServices()
    : folder(directory.path(), {QStringLiteral(KALVO_SOURCE_DIR "/data")}), services{dialogs, clipboard, clock,
                                                                                     process, folder,    measure}
{
    if (!directory.isValid())
        ADD_FAILURE() << "no temporary folder: " << directory.errorString().toStdString();
}

QString ScriptedServices::put(const QString& name, const QByteArray& bytes)
{
    QString why;
    if (!writeFile(path(name), bytes, &why))
        ADD_FAILURE() << why.toStdString();
    return path(name);
}

QByteArray ScriptedServices::bytes(const QString& name) const
{
    return readFile(folder.file(name)).value_or(QByteArray());
}

} // namespace kalvo
