// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/deck/EditSequence.h"

#include "tests/support/ScriptedServices.h"

#include <gtest/gtest.h>

#include <random>

namespace kalvo {
namespace {

struct AlwaysOk : Dialogs
{
    Button message(const MessageBox&) override { return Button::Ok; }
    std::optional<QString> input(const QString&, const QString&, const QString&) override { return {}; }
    std::optional<QString> openFile(const FileDialog&) override { return {}; }
    std::optional<QString> saveFile(const FileDialog&) override { return {}; }
    std::optional<Rgb> color(Rgb) override { return {}; }
    std::optional<CellFormat> font(const CellFormat&) override { return {}; }
};

/// A page of services that agree to everything, and the steps on it.
struct Steps
{
    ScriptedServices scripted;
    AlwaysOk dialogs;
    Services services{dialogs, scripted.clipboard, scripted.clock, scripted.process, scripted.folder, scripted.measure};
    EditSequence sequence{services};
};

class EditSequenceTest : public testing::TestWithParam<unsigned>
{
};

TEST_P(EditSequenceTest, KeepsTheGridsShapeAndUndoGivesBackTheTextOfBefore)
{
    Steps steps;
    EditSequence& sequence = steps.sequence;
    std::mt19937 random(GetParam());
    std::uniform_int_distribution<int> byte(0, 255);
    const auto next = [&] { return static_cast<std::uint8_t>(byte(random)); };
    for (int i = 0; i < 600; ++i) {
        const std::uint8_t what = next();
        const std::uint8_t a = next();
        const std::uint8_t b = next();
        ASSERT_EQ(sequence.step(what, a, b, next()), "") << "step number " << i;
    }
    EXPECT_EQ(sequence.takeAllBack(), "");
}

INSTANTIATE_TEST_SUITE_P(, EditSequenceTest, testing::Range(1U, 19U));

TEST(EditSequence, FindsACommandThatBreaksItsWord)
{
    struct Broken
    {
        const char* command;
        bool records;
        int row, col;
        const char* found;
    };
    for (const Broken& broken : {Broken{"newinsertrow", false, 3, 3, "the deck changed without a level"},
                                 Broken{"newinsertrow", true, 0, 3, "the header changed"},
                                 Broken{"newinsertrow", true, 5, 0, "line numbers are stale from row 5 on"},
                                 Broken{"newdefaultmnu", false, 3, 3, "undo does not give back the text of before"}}) {
        Steps steps;
        Workspace& page = steps.sequence.page();
        page.commands.add(QString::fromLatin1(broken.command), [&page, broken] {
            if (broken.records)
                page.undo.NewUndoAdd();
            page.deck.Grid1.setTextMatrix(broken.row, broken.col, "wrong");
        });
        EXPECT_NE(steps.sequence.step(0, 0, 0, 0).find(broken.found), std::string::npos) << broken.found;
    }
}

} // namespace
} // namespace kalvo
