// SPDX-License-Identifier: GPL-3.0-or-later
// Any bytes as a row of editing commands: after each the grid's shape must hold, and undo must give back the text of
// before.
#include "tests/deck/EditSequence.h"

#include <QString>

#include <cstdint>
#include <cstdio>
#include <cstdlib>

using namespace kalvo;

namespace {

class AlwaysOk : public Dialogs
{
public:
    Button message(const MessageBox&) override { return Button::Ok; }
    std::optional<QString> input(const QString&, const QString&, const QString&) override { return {}; }
    std::optional<QString> openFile(const FileDialog&) override { return {}; }
    std::optional<QString> saveFile(const FileDialog&) override { return {}; }
    std::optional<Rgb> color(Rgb) override { return {}; }
    std::optional<CellFormat> font(const CellFormat&) override { return {}; }
};
class TextClipboard : public Clipboard
{
public:
    bool hasText() const override { return !m_text.isEmpty(); }
    QString text() const override { return m_text; }
    void setText(const QString& text) override { m_text = text; }
    void setPicture(const QByteArray&) override { m_text.clear(); }
    void clear() override { m_text.clear(); }

private:
    QString m_text;
};
class NoClock : public Clock
{
public:
    QDateTime now() const override { return {}; }
    void wait(int) override {}
};
class NoProcess : public ChildProcess
{
public:
    ProcessEnd run(const ProcessStart&) override { return {}; }
    bool isRunning() const override { return false; }
    void stop() override {}
};
class EvenWidths : public TextMeasure
{
public:
    int textWidth(const QString& text) const override { return 120 * static_cast<int>(text.size()); }
    QStringList fontNames() const override { return {}; }
};

void endOn(const std::string& wrong)
{
    if (wrong.empty())
        return;
    std::fprintf(stderr, "%s\n", wrong.c_str());
    std::abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    AlwaysOk dialogs;
    TextClipboard clipboard;
    NoClock clock;
    NoProcess process;
    ProgramFolder folder{QStringLiteral("/nonexistent"), {}};
    EvenWidths measure;
    Services services{dialogs, clipboard, clock, process, folder, measure};
    EditSequence sequence(services);
    for (size_t at = 0; at + 4 <= size; at += 4)
        endOn(sequence.step(data[at], data[at + 1], data[at + 2], data[at + 3]));
    endOn(sequence.takeAllBack());
    return 0;
}
