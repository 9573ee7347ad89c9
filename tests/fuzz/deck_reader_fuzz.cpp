// SPDX-License-Identifier: GPL-3.0-or-later
// Any bytes as a deck file: the reader must take or refuse them, and what it takes must come back the same from the
// second save on.
#include "deck/Deck.h"
#include "deck/DeckFile.h"
#include "platform/StatusPanels.h"
#include "platform/text.h"

#include <QByteArray>

#include <cstdint>
#include <cstdlib>

using namespace kalvo;

namespace {

class NoDialogs : public Dialogs
{
public:
    Button message(const MessageBox&) override { return Button::Ok; }
    std::optional<QString> input(const QString&, const QString&, const QString&) override { return {}; }
    std::optional<QString> openFile(const FileDialog&) override { return {}; }
    std::optional<QString> saveFile(const FileDialog&) override { return {}; }
    std::optional<Rgb> color(Rgb) override { return {}; }
    std::optional<CellFormat> font(const CellFormat&) override { return {}; }
};
class NoClipboard : public Clipboard
{
public:
    bool hasText() const override { return false; }
    QString text() const override { return {}; }
    void setText(const QString&) override {}
    void setPicture(const QByteArray&) override {}
    void clear() override {}
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

struct World
{
    NoDialogs dialogs;
    NoClipboard clipboard;
    NoClock clock;
    NoProcess process;
    ProgramFolder folder{QString(), {}};
    EvenWidths measure;
    Services services{dialogs, clipboard, clock, process, folder, measure};
    StatusPanels panels;
};

/// What Save writes of these lines, with the deck's own steps ahead of it.
DeckBytes saved(World& world, const QStringList& lines)
{
    Deck deck(world.services, world.panels);
    deck.setCards(lines);
    deck.newlines();
    const SaveEffect effect = effectOfSaving(lines, deck.Grid1);
    if (effect.changedLines + effect.droppedLines > lines.size())
        std::abort();
    const FreeFormat free = freeFormatOf(deck.Grid1);
    lineNumbers(deck.Grid1, free.brokenRows);
    deck.TRIMMER();
    deck.trimtozz();
    return writeDeck(deck.Grid1);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    static World world;
    const QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    isTextFile(bytes);
    const DeckLines first = readDeck(bytes);
    if (first.refusal) {
        if (first.refusedLine < 1 || !first.lines.isEmpty())
            std::abort();
        return 0;
    }
    const DeckBytes once = saved(world, first.lines);
    if (once.longIdRow != 0) // slices of a line are never wider than their columns
        std::abort();
    const DeckLines second = readDeck(once.bytes);
    if (second.refusal) // nothing that loaded may be refused after a save
        std::abort();
    const DeckBytes twice = saved(world, second.lines);
    if (canonicalDeck(linesOf(twice.bytes)) != canonicalDeck(second.lines) || twice.bytes != once.bytes)
        std::abort();
    return 0;
}
