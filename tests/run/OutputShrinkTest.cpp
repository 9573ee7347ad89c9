// SPDX-License-Identifier: GPL-3.0-or-later
// The shrink against the same steps done plainly on a string, over made and random reports.
#include "run/OutputShrink.h"

#include "tests/run/EngineReport.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

namespace kalvo {
namespace {

const std::string kHeading = "1" + std::string(55, ' ') + "HEC-1 INPUT" + std::string(45, ' ') + "PAGE";

std::string textOf(const TextBuffer& buffer)
{
    return buffer.mid(0, buffer.length()).toStdString();
}

std::string shrunk(const std::string& report, ShrinkResult* result = nullptr)
{
    TextBuffer buffer(QByteArray::fromStdString(report));
    const ShrinkResult did = shrinkOutput(buffer);
    if (result)
        *result = did;
    return textOf(buffer);
}

// -- The steps as they are told, each search from its start and each deletion in the whole text -----------------------

void deleteLine(std::string& text, size_t line)
{
    std::vector<size_t> starts{0};
    for (size_t i = 0; i < text.size(); ++i)
        if (text[i] == '\n')
            starts.push_back(i + 1);
    if (line >= starts.size())
        return;
    if (starts.size() == 1)
        text.clear();
    else if (line + 1 == starts.size())
        text.erase(starts[line] - 2);
    else
        text.erase(starts[line], starts[line + 1] - starts[line]);
}

void plainStep(std::string& text, const std::string& what, size_t start, size_t behind, int lines)
{
    for (size_t at = 0; (at = text.find(what, start)) != std::string::npos; start += 119) {
        const auto line = static_cast<size_t>(std::count(text.begin(), text.begin() + std::ptrdiff_t(at), '\n'));
        for (int i = 0; i < lines; ++i)
            deleteLine(text, line + behind);
    }
}

std::string plainlyShrunk(std::string text)
{
    const std::string heading = kHeading.substr(0, kHeading.size() - 3);
    if (text.find(heading) != std::string::npos)
        plainStep(text, heading, 2502, 0, 5);
    plainStep(text, "\n\r\n\r", 1, 1, 1);
    plainStep(text, "  \r\n \r\n", 1, 1, 1);
    return text;
}

// -- Reports ----------------------------------------------------------------------------------------------------------

std::string page(int number, int cards, bool emptyUnderRuler)
{
    std::string text = kHeading + "  " + std::to_string(number) + "\r\n\r\n   LINE      ID.......1.......2\r\n\r\n";
    if (emptyUnderRuler)
        text += "\r\n";
    for (int card = 0; card < cards; ++card)
        text += "     " + std::to_string(number) + "  KK  CARD " + std::to_string(card) + "\r\n";
    return text;
}

std::string randomReport(std::mt19937& random)
{
    const auto below = [&random](size_t limit) { return static_cast<int>(random() % limit); };
    const char* const lines[] = {"", "", "", " ", "  ", " text  ", "+ 1.", "   THE QUICK BROWN FOX     ", "\t"};
    std::string text(random() % 3 == 0 ? size_t(2500) : 0, 'x');
    for (int i = below(400); i > 0; --i) {
        const int kind = below(14);
        if (kind == 0) // now and then behind other text, so that the cut lies ahead of the match
            text += std::string(random() % 3 == 0 ? random() % 200 : 0, '.') + page(i, below(8), below(2) == 0);
        else if (kind == 1)
            text += std::string(random() % 300, '.') + "\r\n";
        else
            text += std::string(lines[random() % std::size(lines)]) + "\r\n";
    }
    if (below(2) == 0)
        text.erase(text.size() - std::min<size_t>(2, text.size()));
    return text;
}

TEST(OutputShrink, DoesWhatThePlainStepsDo)
{
    std::mt19937 random(77);
    for (int round = 0; round < 150; ++round) {
        const std::string report = randomReport(random);
        ASSERT_EQ(shrunk(report), plainlyShrunk(report)) << "round " << round;
    }
}

TEST(OutputShrink, ReportsOfTheEngineLoseHeadingsAndEmptyLinesButNoCard)
{
    for (const char* example : {"network", "plans", "reservoir", "watershed"}) {
        const TextBuffer report =
            longEngineReport(QStringLiteral(KALVO_SOURCE_DIR "/examples/%1.dat").arg(QLatin1String(example)), 220);
        const std::string before = textOf(report);
        ShrinkResult result;
        const std::string after = shrunk(before, &result);
        EXPECT_EQ(after, plainlyShrunk(before)) << example;
        EXPECT_GE(result.headings, 4) << example;
        EXPECT_GT(result.emptyLines, 0) << example;
        const auto visible = [](const std::string& text) {
            std::string kept;
            for (const QByteArray& line : QByteArray::fromStdString(text).split('\n'))
                if (!line.trimmed().isEmpty() && !line.contains("HEC-1 INPUT") && !line.contains(" LINE      ID...."))
                    kept += line.toStdString() + '\n';
            return kept;
        };
        EXPECT_EQ(visible(after), visible(before)) << example;
    }
}

TEST(OutputShrink, TheFirstHeadingStaysAndNoCardIsLost)
{
    const std::string front(1800, 'b');
    std::string report = front + "\r\n" + page(1, 50, false);
    for (int number = 2; number <= 4; ++number)
        report += page(number, 50, true);
    ShrinkResult result;
    const std::string text = shrunk(report, &result);
    EXPECT_EQ(result.headings, 3);
    EXPECT_EQ(result.linesTaken(), 15);
    EXPECT_EQ(text.find(kHeading), front.size() + 2);
    EXPECT_EQ(text.find(kHeading, front.size() + 3), std::string::npos);
    for (int number = 1; number <= 4; ++number)
        for (const char* card : {"  KK  CARD 0\r\n", "  KK  CARD 49\r\n"})
            EXPECT_NE(text.find(std::to_string(number) + card), std::string::npos) << number << card;
    EXPECT_EQ(shrunk(text), text) << "nothing is left to take out";
}

TEST(OutputShrink, PositionsDecideWhatStays)
{
    // Five lines go with a heading, whatever they are: without a second empty line the first card is among them.
    const std::string at2502 = std::string(2500, 'x') + "\r\n" + page(7, 2, false);
    EXPECT_EQ(shrunk(at2502), std::string(2500, 'x') + "\r\n     7  KK  CARD 1\r\n");
    const std::string at2501 = std::string(2499, 'x') + "\r\n" + page(7, 2, false);
    EXPECT_EQ(shrunk(at2501), at2501);
    // The next search starts at 120, behind the empty lines: one of five goes.
    EXPECT_EQ(shrunk("a\r\n\r\n\r\n\r\n\r\n\r\nb\r\n"), "a\r\n\r\n\r\n\r\n\r\nb\r\n");
    EXPECT_EQ(shrunk("a  \r\n \r\nb\r\n"), "a  \r\nb\r\n");
    EXPECT_EQ(shrunk("  \r\n \r\nb"), "  \r\n \r\nb") << "the search starts at 1";
    for (const char* same : {"", "\r\n", "x", "a\r\n\r\nb", "a  \r\n  \r\nb"})
        EXPECT_EQ(shrunk(same), same);
}

TEST(OutputShrink, TellsWhatItTook)
{
    ShrinkResult result;
    shrunk(std::string(200, 'x') + "\r\n\r\n\r\n\r\ny  \r\n \r\nz", &result);
    EXPECT_EQ(result.linesBefore, 7);
    EXPECT_EQ(result.emptyLines + result.blankLines, result.linesTaken());
    EXPECT_EQ(result.emptyLines, 2);
    EXPECT_EQ(result.blankLines, 1);
    EXPECT_TRUE(shrinkSummary(result).startsWith("3 of 7 lines were taken out:"))
        << shrinkSummary(result).toStdString();
}

} // namespace
} // namespace kalvo
