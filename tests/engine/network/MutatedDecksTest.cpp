// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/engine/DeckMutator.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cmath>

namespace hec1::test {
namespace {

constexpr unsigned kDecks = 1500;

TEST(MutatedDecks, EndNormallyOrWithAnErrorAndNeverWithNonsense)
{
    const std::vector<std::string> names = deckNames();
    int normal = 0, refused = 0;
    for (unsigned seed = 0; seed < kDecks; ++seed) {
        DeckMutator mutator(seed);
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
