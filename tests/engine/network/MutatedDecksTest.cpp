// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/engine/EngineHarness.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cmath>
#include <random>

namespace hec1::test {
namespace {

// Damages a deck as typing and copying do: fields overwritten, cards lost, doubled, moved, taken from other decks.
class Mutator
{
public:
    explicit Mutator(unsigned seed) : m_random(seed) {}

    std::string damage(const std::string& deck, const std::string& other)
    {
        std::vector<std::string> lines = linesOf(deck);
        const std::vector<std::string> foreign = linesOf(other);
        for (std::size_t n = 1 + pick(5); n > 0; --n) {
            const std::size_t at = pick(lines.size());
            switch (pick(7)) {
            case 0:
                lines.erase(lines.begin() + static_cast<std::ptrdiff_t>(at));
                break;
            case 1:
                lines.insert(lines.begin() + static_cast<std::ptrdiff_t>(at), lines[pick(lines.size())]);
                break;
            case 2:
                lines.insert(lines.begin() + static_cast<std::ptrdiff_t>(at), foreign[pick(foreign.size())]);
                break;
            case 3:
                std::swap(lines[at], lines[pick(lines.size())]);
                break;
            case 4:
                if (!lines[at].empty())
                    lines[at][pick(lines[at].size())] = static_cast<char>(pick(256));
                break;
            default:
                overwriteField(lines[at]);
            }
            if (lines.empty())
                lines.emplace_back("ZZ");
        }
        std::string text;
        for (const std::string& line : lines)
            text += line + "\r\n";
        return text;
    }

private:
    std::size_t pick(std::size_t below) { return m_random() % below; }

    void overwriteField(std::string& line)
    {
        static const std::vector<std::string> kTexts{"0",     "-1",  "1e9", "1e-9", ".",     "99999", "-0.5", "1e12",
                                                     "0.001", "100", "YES", "x",    "1e300", "3",     "20",   ""};
        const std::size_t field = pick(10), from = field == 0 ? 2 : 8 * field, width = field == 0 ? 6 : 8;
        const std::string text = kTexts[pick(kTexts.size())];
        line.resize(std::max(line.size(), from + width), ' ');
        line.replace(from, width, std::string(width - text.size(), ' ') + text);
    }

    std::mt19937 m_random;
};

TEST(MutatedDecks, EndNormallyOrWithAnErrorAndNeverWithNonsense)
{
    const std::vector<std::string> names = deckNames();
    int normal = 0, refused = 0;
    for (unsigned seed = 0; seed < 400; ++seed) {
        Mutator mutator(seed);
        const std::string deck =
            mutator.damage(deckText(names[seed % names.size()]), deckText(names[(seed * 7 + 3) % names.size()]));
        const auto start = std::chrono::steady_clock::now();
        const EngineOutcome outcome = runDeck(deck);
        const std::chrono::duration<double> took = std::chrono::steady_clock::now() - start;
        EXPECT_LT(took.count(), 10) << "seed " << seed;
        if (outcome.end == EngineEnd::Normal) {
            ++normal;
            EXPECT_TRUE(outcome.reports("*** NORMAL END OF HEC-1 ***")) << "seed " << seed;
            for (const SavedStation& station : outcome.stations())
                for (const std::vector<double>& record : station.records)
                    for (const double flow : record)
                        ASSERT_TRUE(std::isfinite(flow)) << "seed " << seed << " station " << station.name;
        } else {
            ++refused;
            ASSERT_EQ(outcome.end, EngineEnd::DeckErrors) << "seed " << seed;
            EXPECT_FALSE(outcome.errorNumbers().empty()) << "seed " << seed;
        }
        for (const char* word : {",nan", ",inf", ",-nan", ",-inf"})
            EXPECT_EQ(outcome.details.find(word), std::string::npos) << "seed " << seed;
    }
    // The damage must be of both kinds, or the test would look at one end only.
    EXPECT_GT(normal, 40);
    EXPECT_GT(refused, 40);
}

} // namespace
} // namespace hec1::test
