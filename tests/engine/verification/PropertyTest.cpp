// SPDX-License-Identifier: GPL-3.0-or-later
// What must hold for every deck, whatever its numbers: water is neither made nor lost, unit graphs are linear, the
// clock and the card format do not matter, a ratio or plan does not see its neighbours, and finer steps converge.
#include "tests/engine/verification/CaseFiles.h"
#include "tests/engine/verification/DeckText.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <fstream>
#include <numeric>
#include <random>
#include <sstream>

namespace hec1::verification {
namespace {

namespace fs = std::filesystem;

struct Run
{
    RunFiles files;
    std::string tape21;
};

Run runDeck(const std::string& deck)
{
    const ScratchFolder scratch;
    const fs::path file = scratch.path() / "deck.dat";
    std::ofstream(file, std::ios::binary) << deck;
    Run run{runEngine(file, scratch.path() / "run"), {}};
    EXPECT_EQ(run.files.exitStatus, 0) << deck << run.files.report;
    std::ifstream tape(scratch.path() / "run" / "TAPE21", std::ios::binary);
    run.tape21.assign(std::istreambuf_iterator<char>(tape), {});
    return run;
}

RunFiles runText(const std::string& deck)
{
    return runDeck(deck).files;
}

/// What a deck of these tests is made of; every test changes one thing.
struct Basin
{
    int minutes = 10;
    int ordinates = 300;
    std::string date = "15JUN90", time = "0000";
    double storm = 4;
    int rainStartsAt = 0;                                      ///< minutes
    std::vector<double> rain{.1, .3, .9, 1.6, .7, .2, .1, .1}; ///< pattern in half hours
    CardText loss{"LU", {".5", ".1"}};
    DeckCards transform{{"UD", {"1.2"}}};
    std::vector<std::string> ratios; ///< JR PREC
    DeckCards below;                 ///< stations behind the basin
};

DeckCards cardsOf(const Basin& basin)
{
    DeckCards cards{{"ID", {"TEST"}},
                    {"IT", {std::to_string(basin.minutes), basin.date, basin.time, std::to_string(basin.ordinates)}},
                    {"IO", {"5"}}};
    if (!basin.ratios.empty()) {
        cards.push_back({"JR", {"PREC"}});
        cards.back().fields.insert(cards.back().fields.end(), basin.ratios.begin(), basin.ratios.end());
    }
    cards.push_back({"KK", {"TOP"}});
    cards.push_back({"KO", {"0", "0", "0", "0", "21"}});
    cards.push_back({"BA", {"7.3"}});
    cards.push_back({"IN", {"30", basin.date, basin.time}});
    cards.push_back({"PB", {number(basin.storm)}});
    std::vector<double> pattern(static_cast<std::size_t>(basin.rainStartsAt / 30), 0.0);
    pattern.insert(pattern.end(), basin.rain.begin(), basin.rain.end());
    append(cards, "PI", pattern);
    cards.push_back(basin.loss);
    cards.insert(cards.end(), basin.transform.begin(), basin.transform.end());
    cards.insert(cards.end(), basin.below.begin(), basin.below.end());
    cards.push_back({"ZZ", {}});
    return cards;
}

std::vector<double> flowsOf(const Basin& basin, const std::string& station = "TOP")
{
    return runText(fixedForm(cardsOf(basin))).details[station + "/FLOW"].values;
}

double sum(const std::vector<double>& values)
{
    return std::accumulate(values.begin(), values.end(), 0.0);
}

double peak(const std::vector<double>& values)
{
    return values.empty() ? 0 : *std::max_element(values.begin(), values.end());
}

struct Method
{
    std::string name;
    DeckCards cards;
};

const std::vector<Method> kTransforms{
    {"Scs", {{"UD", {"1.2"}}}},
    {"Clark", {{"UC", {"2.1", "1.4"}}}},
    {"ClarkWithCurve", {{"UC", {"2.1", "1.4"}}, {"UA", {"0", "10", "35", "80", "100"}}}},
    {"Snyder", {{"US", {"2.4", ".62"}}}},
    {"GivenGraph", {{"UI", {"50", "900", "4000", "9000", "7000", "4500", "2000", "817"}}}}};

class Transforms : public testing::TestWithParam<Method>
{
};

TEST_P(Transforms, AreLinearInExcess)
{
    Basin basin;
    basin.transform = GetParam().cards;
    basin.loss = {"LU", {"0", "0"}};
    Basin doubled = basin, early = basin, late = basin;
    doubled.storm = 8;
    early.rain = {1, 2, 0, 0, 0};
    late.rain = {0, 0, 0, 3, 2};
    early.storm = 3;
    late.storm = 5;
    Basin both = basin;
    both.rain = {1, 2, 0, 3, 2};
    both.storm = 8;
    const auto one = flowsOf(basin), two = flowsOf(doubled), first = flowsOf(early), second = flowsOf(late),
               together = flowsOf(both);
    ASSERT_EQ(one.size(), 300u);
    for (std::size_t i = 0; i < one.size(); ++i) {
        ASSERT_NEAR(two[i], 2 * one[i], 1e-6 * peak(two)) << i;
        ASSERT_NEAR(together[i], first[i] + second[i], 1e-6 * peak(together)) << i;
    }
}

TEST_P(Transforms, DelayWithTheRainAndForgetTheClock)
{
    Basin basin, later, elsewhen;
    basin.transform = later.transform = elsewhen.transform = GetParam().cards;
    later.rainStartsAt = 120;
    elsewhen.date = "30DEC99";
    elsewhen.time = "2345";
    const auto flows = flowsOf(basin), delayed = flowsOf(later), other = flowsOf(elsewhen);
    for (std::size_t i = 0; i < flows.size(); ++i) {
        ASSERT_EQ(flows[i], other[i]) << i;
        if (i >= 12) {
            ASSERT_NEAR(delayed[i], flows[i - 12], 1e-6 * peak(flows)) << i;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(, Transforms, testing::ValuesIn(kTransforms), [](const auto& row) { return row.param.name; });

class Losses : public testing::TestWithParam<Method>
{
};

TEST_P(Losses, RainIsLossAndExcessAndExcessRunsOff)
{
    for (const Method& transform : kTransforms) {
        if (transform.name == "GivenGraph")
            continue; // its volume is what the deck says
        Basin basin;
        basin.loss = GetParam().cards[0];
        basin.transform = transform.cards;
        RunFiles files = runText(fixedForm(cardsOf(basin)));
        const double rain = sum(files.details["TOP/RAIN"].values), lost = sum(files.details["TOP/LOSS"].values);
        const double excess = sum(files.details["TOP/EXCESS"].values);
        EXPECT_NEAR(rain, 4, 1e-5);
        EXPECT_NEAR(rain, lost + excess, 1e-5);
        ASSERT_GT(excess, .1);
        const double inches = sum(files.details["TOP/FLOW"].values) * 10 / 60 / (7.3 * 5280 * 5280 / 12 / 3600);
        EXPECT_NEAR(inches, excess, .0005 * excess) << transform.name;
    }
}

INSTANTIATE_TEST_SUITE_P(, Losses,
                         testing::Values(Method{"InitialUniform", {{"LU", {".4", ".2", "15"}}}},
                                         Method{"CurveNumber", {{"LS", {"0", "78", "5"}}}},
                                         Method{"Exponential", {{"LE", {".3", ".5", "2", ".5"}}}},
                                         Method{"Holtan", {{"LH", {".1", ".3", "2", "1.4"}}}},
                                         Method{"GreenAmpt", {{"LG", {".1", ".3", "6", ".2"}}}}),
                         [](const auto& row) { return row.param.name; });

struct Reach
{
    std::string name;
    DeckCards cards;
    double tolerance; ///< share of the volume; Muskingum-Cunge with parameters that follow the flow is not exact
};

const std::vector<Reach> kReaches{
    {"Muskingum", {{"RM", {"3", "1.5", ".2"}}}, 1e-4},
    {"StraddleStagger", {{"RT", {"2", "3", "4"}}}, 1e-4},
    {"StorageOutflow", {{"RS", {"2", "FLOW", "-1"}}, {"SV", {"0", "60", "400"}}, {"SQ", {"0", "600", "9000"}}}, 1e-4},
    {"NormalDepth",
     {{"RS", {"3", "FLOW", "-1"}},
      {"RC", {".06", ".035", ".06", "6000", ".004", "120"}},
      {"RX", {"0", "80", "150", "160", "190", "200", "280", "360"}},
      {"RY", {"120", "106", "105", "100", "100", "105", "106", "120"}}},
     1e-4},
    {"MuskingumCunge", {{"RD", {"6000", ".004", ".035", "", "TRAP", "30", "3"}}}, .01},
    {"KinematicWave", {{"RK", {"6000", ".004", ".035", "", "TRAP", "30", "3"}}}, .002},
    {"Reservoir",
     {{"RS", {"1", "ELEV", "100"}},
      {"SA", {"5", "20", "40"}},
      {"SE", {"100", "120", "140"}},
      {"SL", {"101", "30", ".6", ".5"}},
      {"SS", {"120", "80", "3.1", "1.5"}},
      {"ST", {"135", "300", "2.7", "1.5"}}},
     1e-4}};

Basin basinAbove(const Reach& reach)
{
    Basin basin;
    basin.ordinates = 600;
    basin.below = {{"KK", {"DOWN"}}};
    basin.below.insert(basin.below.end(), reach.cards.begin(), reach.cards.end());
    return basin;
}

class Reaches : public testing::TestWithParam<Reach>
{
};

TEST_P(Reaches, PassOnWhatTheyDoNotStore)
{
    RunFiles files = runText(fixedForm(cardsOf(basinAbove(GetParam()))));
    const double in = sum(files.details["TOP/FLOW"].values) * 10 / 60 / 12.1;
    const auto& out = files.details["DOWN/FLOW"].values;
    const auto& storage = files.details["DOWN/STORAGE"].values;
    const double left = storage.empty() ? 0 : storage.back() - storage.front();
    EXPECT_NEAR(sum(out) * 10 / 60 / 12.1 + left, in, GetParam().tolerance * in);
    EXPECT_LE(peak(out), 1.001 * peak(files.details["TOP/FLOW"].values));
}

class ReachesInTime : public testing::TestWithParam<Reach>
{
};

TEST_P(ReachesInTime, ConvergeWhenTheStepIsHalved)
{
    std::vector<double> peaks;
    for (const int minutes : {12, 6, 3}) {
        Basin basin = basinAbove(GetParam());
        basin.loss = {"LS", {"0", "80"}}; // a loss without a step of its own
        basin.minutes = minutes;
        basin.ordinates = 6000 / minutes;
        peaks.push_back(peak(flowsOf(basin, "DOWN")));
    }
    EXPECT_NEAR(peaks[1], peaks[2], .02 * peaks[2]);
    EXPECT_LE(std::abs(peaks[1] - peaks[2]), std::max(std::abs(peaks[0] - peaks[1]), .002 * peaks[2]));
}

TEST_P(Reaches, RatiosAreTheSameAloneAndTogether)
{
    Basin all = basinAbove(GetParam());
    all.ratios = {".4", "1", "2.5"};
    RunFiles together = runText(fixedForm(cardsOf(all)));
    for (std::size_t k = 0; k < all.ratios.size(); ++k) {
        Basin alone = basinAbove(GetParam());
        alone.ratios = {all.ratios[k]};
        RunFiles one = runText(fixedForm(cardsOf(alone)));
        const std::string key = "DOWN/FLOW" + (k == 0 ? "" : "/" + std::to_string(k + 1));
        EXPECT_EQ(together.details[key].values, one.details["DOWN/FLOW"].values) << all.ratios[k];
        EXPECT_EQ(one.details["DOWN/FLOW"].values.size(), 600u);
        EXPECT_EQ(together.tape21["TOP"].records.at(k), one.tape21["TOP"].records.at(0)) << all.ratios[k];
    }
}

TEST_P(Reaches, FixedAndFreeFormAreOneDeck)
{
    const DeckCards cards = cardsOf(basinAbove(GetParam()));
    const std::string fixed = runDeck(fixedForm(cards)).tape21;
    EXPECT_EQ(runDeck(freeForm(cards)).tape21, fixed);
    EXPECT_GT(fixed.size(), 1000u);
}

INSTANTIATE_TEST_SUITE_P(, Reaches, testing::ValuesIn(kReaches), [](const auto& row) { return row.param.name; });

// Not the straddle-stagger reach: its parameters count intervals, so that another step is another reach.
INSTANTIATE_TEST_SUITE_P(, ReachesInTime,
                         testing::Values(kReaches[0], kReaches[2], kReaches[3], kReaches[4], kReaches[5], kReaches[6]),
                         [](const auto& row) { return row.param.name; });

TEST(Plans, AreTheSameAloneAndTogether)
{
    const DeckCards reach{{"RM", {"1", "1", ".2"}}}, pond = kReaches.back().cards;
    Basin both;
    both.below = {{"KK", {"DOWN"}}, {"KP", {"1"}}};
    both.below.insert(both.below.end(), reach.begin(), reach.end());
    both.below.push_back({"KP", {"2"}});
    both.below.insert(both.below.end(), pond.begin(), pond.end());
    both.below.push_back({"KK", {"OUT"}});
    both.below.push_back({"KO", {"0", "0", "0", "0", "21"}});
    both.below.push_back({"RM", {"1", ".5", ".3"}});
    DeckCards cards = cardsOf(both);
    cards.insert(cards.begin() + 3, {"JP", {"2"}});
    const RunFiles together = runText(fixedForm(cards));

    const auto alone = [&](const DeckCards& step) {
        Basin one;
        one.below = {{"KK", {"DOWN"}}};
        one.below.insert(one.below.end(), step.begin(), step.end());
        one.below.insert(one.below.end(),
                         {{"KK", {"OUT"}}, {"KO", {"0", "0", "0", "0", "21"}}, {"RM", {"1", ".5", ".3"}}});
        return runText(fixedForm(cardsOf(one))).tape21.at("OUT").records.at(0);
    };
    EXPECT_EQ(together.tape21.at("OUT").records.at(0), alone(reach));
    EXPECT_EQ(together.tape21.at("OUT").records.at(1), alone(pond));
}

/// A random tree of basins, reaches and junctions, with every water-keeping kind of step.
class RandomNetworks : public testing::TestWithParam<unsigned>
{
};

TEST_P(RandomNetworks, BalanceRainLossStorageAndOutflow)
{
    std::mt19937 generator(GetParam());
    const auto pick = [&](std::size_t count) {
        return std::uniform_int_distribution<std::size_t>(0, count - 1)(generator);
    };
    const auto real = [&](double low, double high) {
        return std::uniform_real_distribution<double>(low, high)(generator);
    };
    DeckCards cards{{"ID", {"NETWORK"}}, {"IT", {"15", "01JAN00", "0000", "700"}}, {"IO", {"5"}}};
    std::vector<double> areas;
    std::vector<std::string> reaches;
    int waiting = 0;
    const std::size_t stations = 6 + pick(12);
    for (std::size_t s = 0; s < stations || waiting > 1; ++s) {
        const bool mustBegin = waiting == 0, mustEnd = s >= stations;
        const std::size_t kind = mustBegin ? 0 : mustEnd ? 2 : pick(3);
        if (kind == 0) {
            areas.push_back(std::stod(number(real(.5, 20))));
            cards.push_back({"KK", {"B" + std::to_string(areas.size())}});
            cards.push_back({"BA", {number(areas.back())}});
            if (areas.size() == 1) {
                cards.push_back({"PB", {"5"}});
                append(cards, "PI", {1, 2, 5, 9, 4, 2, 1, 1});
            }
            cards.push_back(pick(2) == 0 ? CardText{"LS", {"0", number(real(55, 95))}}
                                         : CardText{"LU", {number(real(0, 1)), number(real(0, .5))}});
            const Method& transform = kTransforms[pick(4)];
            cards.insert(cards.end(), transform.cards.begin(), transform.cards.end());
            ++waiting;
        } else if (kind == 1 || waiting < 2) {
            const std::size_t choice = pick(5);
            const Reach& reach = kReaches[choice == 4 ? 6 : choice];
            reaches.push_back("R" + std::to_string(reaches.size() + 1));
            cards.push_back({"KK", {reaches.back()}});
            cards.insert(cards.end(), reach.cards.begin(), reach.cards.end());
        } else {
            cards.push_back({"KK", {"J" + std::to_string(s)}});
            cards.push_back({"HC", {"2"}});
            --waiting;
        }
    }
    cards.push_back({"KK", {"OUT"}});
    cards.push_back({"KO", {"0", "0", "0", "0", "21"}});
    cards.push_back({"RM", {"1", ".5", ".2"}});
    cards.push_back({"ZZ", {}});

    RunFiles files = runText(fixedForm(cards));
    double excess = 0, stored = 0;
    for (std::size_t b = 0; b < areas.size(); ++b)
        excess += sum(files.details["B" + std::to_string(b + 1) + "/EXCESS"].values) * areas[b] * 640 / 12;
    for (const std::string& reach : reaches) {
        const auto& storage = files.details[reach + "/STORAGE"].values;
        stored += storage.empty() ? 0 : storage.back() - storage.front();
    }
    const double out = sum(files.details["OUT/FLOW"].values) * .25 / 12.1;
    ASSERT_GT(excess, 0);
    EXPECT_NEAR(out + stored, excess, .001 * excess) << fixedForm(cards);
}

INSTANTIATE_TEST_SUITE_P(, RandomNetworks, testing::Range(1u, 13u));

} // namespace
} // namespace hec1::verification
