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

class EditSequenceTest : public testing::TestWithParam<unsigned>
{
};

TEST_P(EditSequenceTest, KeepsTheGridsShapeAndUndoGivesBackTheTextOfBefore)
{
    ScriptedServices scripted;
    AlwaysOk dialogs;
    Services services{dialogs, scripted.clipboard, scripted.clock, scripted.process, scripted.folder, scripted.measure};
    EditSequence sequence(services);
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

INSTANTIATE_TEST_SUITE_P(, EditSequenceTest, testing::Range(1U, 13U));

} // namespace
} // namespace kalvo
