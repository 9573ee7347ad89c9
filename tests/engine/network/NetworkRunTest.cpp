// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/engine/EngineHarness.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numeric>
#include <random>

namespace hec1::test {
namespace {

// Peaks that another script computed from the same equations, in the order of the stations that save theirs.
struct Expected
{
    const char* deck;
    double share; ///< tolerance
    std::vector<std::pair<std::string, double>> peaks;
    std::size_t record = 0;
};

void PrintTo(const Expected& expected, std::ostream* out)
{
    *out << expected.deck;
}

class SampleDecks : public testing::TestWithParam<Expected>
{
};

TEST_P(SampleDecks, GiveThePeaksOfTheIndependentCalculation)
{
    const EngineOutcome outcome = runDeck(deckText(GetParam().deck));
    ASSERT_EQ(outcome.end, EngineEnd::Normal) << outcome.report;
    for (const auto& [name, peak] : GetParam().peaks)
        EXPECT_NEAR(outcome.station(name).peak(GetParam().record), peak, GetParam().share * peak) << name;
}

INSTANTIATE_TEST_SUITE_P(
    , SampleDecks,
    testing::Values(
        Expected{"scs1", .01, {{"MILL12", 579}}},
        Expected{"net4", .01, {{"SUB1", 1611}, {"JUN12", 3091}, {"JUN3", 4801}, {"SUB4", 1577}, {"OUT", 4445}}},
        Expected{"reserv", .01, {{"CEDAR", 3267}, {"LAKE", 1215}, {"LOCAL", 1172}, {"TOWN", 1288}}},
        Expected{"detent", .01, {{"SITE", 922}, {"PONDIN", 600}, {"BASIN", 121}, {"OUTLET", 351}}, 5},
        Expected{"plans2", .01, {{"UPPER", 3781}, {"DAM", 1529}, {"MILL", 2088}}, 5},
        Expected{"jdarea", .01, {{"W1", 6880}}, 1},
        Expected{"clark", .01, {{"ELK1", 6220}, {"ELK2", 3227}, {"BRIDGE", 6846}}},
        Expected{"snyder", .03, {{"WAL1", 16828}, {"WAL2", 8848}, {"CITY", 20166}}},
        Expected{"phstorm", .01, {{"P1", 5339}, {"P2", 6355}, {"PARK", 8133}, {"TOWN", 8487}}, 4},
        Expected{"metric", .01, {{"UP", 76.8}, {"RES", 37.1}, {"LOW", 42.4}, {"VILL", 48.8}}},
        Expected{"freefmt", .01, {{"A1", 1029}, {"A2", 865}, {"C1", 1483}, {"POOL", 1035}}},
        Expected{"gages", .03, {{"HILL", 2902}, {"PLAIN", 1969}, {"GAGE", 3656}}},
        Expected{"breach", .03, {{"BEAR", 15168}, {"BLDAM", 14976}, {"DOWN", 14899}}, 5},
        Expected{"channel", .03, {{"SD1", 3822}, {"ND", 3631}, {"MC1", 3624}, {"SDC", 4507}, {"MC2", 4389}}},
        Expected{"methods", .01, {{"M1", 737}, {"M2", 500}, {"M3", 478}, {"ALL", 1704}, {"POND", 718}}}),
    [](const auto& row) { return row.param.deck; });

TEST(NetworkRun, EverySampleDeckEndsNormallyWithFiniteFlows)
{
    for (const std::string& name : deckNames()) {
        const EngineOutcome outcome = runDeck(deckText(name));
        EXPECT_EQ(outcome.end, EngineEnd::Normal) << name;
        EXPECT_TRUE(outcome.reports("*** NORMAL END OF HEC-1 ***")) << name;
        for (const SavedStation& station : outcome.stations())
            for (const std::vector<double>& record : station.records)
                EXPECT_TRUE(std::all_of(record.begin(), record.end(), [](double q) { return std::isfinite(q); }))
                    << name << " " << station.name;
    }
}

TEST(NetworkRun, DepthAreaHydrographIsInterpolatedAtTheAreaOfTheStation)
{
    const EngineOutcome outcome = runDeck(deckText("jdarea"));
    const SavedStation w1 = outcome.station("W1");
    ASSERT_EQ(w1.storms, 5);
    const std::vector<double> indexPeaks{7062, 6880, 5250, 4252, 2845};
    for (std::size_t k = 0; k < 5; ++k)
        EXPECT_NEAR(w1.peak(k), indexPeaks[k], .01 * indexPeaks[k]) << "index storm " << k + 1;
    EXPECT_TRUE(outcome.reports("5831.     4.83")) << "interpolated peak of W1 in the summary";
}

std::string withRatios(const std::string& kind, const std::vector<std::string>& ratios)
{
    std::vector<std::string> fields{kind};
    fields.insert(fields.end(), ratios.begin(), ratios.end());
    return card("JR", fields);
}

const std::string kNetwork = subbasin("A") + card("KK", {"R"}) + card("KO", {"", "", "", "", "21"}) +
                             card("RM", {"2", "1", ".2"}) + subbasin("B") + card("BF", {"5", "-.1", "1.1"}) +
                             card("KK", {"C"}) + card("KO", {"", "", "", "", "21"}) + card("HC", {"2"}) +
                             card("KK", {"P"}) + card("KO", {"", "", "", "", "21"}) + card("RS", {"1", "STOR", "0"}) +
                             card("SV", {"0", "50", "150", "400"}) + card("SQ", {"0", "200", "600", "2000"}) +
                             card("SE", {"10", "12", "14", "18"});

TEST(NetworkRun, ARatioAloneGivesWhatItGivesAmongOthers)
{
    for (const std::string kind : {"PREC", "FLOW"}) {
        const EngineOutcome many = runDeck(smallDeck(withRatios(kind, {".5", "1.3", "1"}), kNetwork));
        const EngineOutcome one = runDeck(smallDeck(withRatios(kind, {"1.3"}), kNetwork));
        const EngineOutcome none = runDeck(smallDeck("", kNetwork));
        for (const SavedStation& station : many.stations()) {
            EXPECT_EQ(station.records.at(1), one.station(station.name).records.at(0)) << kind << station.name;
            EXPECT_EQ(station.records.at(2), none.station(station.name).records.at(0)) << kind << station.name;
        }
    }
}

TEST(NetworkRun, RecordsStandPlanByPlanAndRatioByRatio)
{
    const std::string stations = card("KK", {"A"}) + card("KO", {"", "", "", "", "21"}) + card("BA", {"1"}) +
                                 card("PB", {"3"}) + card("PI", {"1", "4", "1"}) + card("UD", {"1"}) +
                                 card("KP", {"1"}) + card("LS", {"", "70"}) + card("KP", {"2"}) +
                                 card("LS", {"", "90"});
    const SavedStation both =
        runDeck(smallDeck(card("JP", {"2"}) + withRatios("PREC", {"1", "2"}), stations)).station("A");
    ASSERT_EQ(both.plans, 2);
    ASSERT_EQ(both.ratios, 2);
    std::string alone = stations.substr(0, stations.find("KP")) + card("LS", {"", "90"});
    const SavedStation second = runDeck(smallDeck(withRatios("PREC", {"1", "2"}), alone)).station("A");
    EXPECT_EQ(both.records[2], second.records[0]);
    EXPECT_EQ(both.records[3], second.records[1]);
    EXPECT_GT(both.records[3], both.records[2]);
}

TEST(NetworkRun, FreeAndFixedFormGiveTheSameFile)
{
    const std::string free =
        "*FREE\nID TEST\nIT 15,01JAN95,0000,96\nIO 5\nIN 60\nKK A\nKO ,,,,21\nBA 1\nPB 3\nPI 1,4,1\n"
        "LS ,80\nUD 1\nZZ\n";
    EXPECT_EQ(runDeck(free).tape21, runDeck(smallDeck("", subbasin())).tape21);
}

TEST(NetworkRun, AShiftInTimeShiftsTheFlowsOnly)
{
    const std::string rain = subbasin().substr(0, subbasin().find("LS"));
    const std::string rest = card("LS", {"", "80"}) + card("UD", {"1"});
    const auto at = [&](const std::string& time) {
        return runDeck("ID x\n" + card("IT", {"15", "01JAN95", "0000", "96"}) + card("IN", {"60", "01JAN95", time}) +
                       rain + rest + "ZZ\n")
            .station("A")
            .records[0];
    };
    const std::vector<double> early = at("0000"), late = at("0200");
    for (std::size_t i = 8; i < late.size(); ++i)
        EXPECT_NEAR(late[i], early[i - 8], 1e-6 * (1 + early[i - 8])) << "ordinate " << i;
}

TEST(NetworkRun, HalvingTheIntervalConverges)
{
    const auto peakAt = [](int minutes) {
        return runDeck("ID x\n" + card("IT", {std::to_string(minutes), "", "", std::to_string(1440 / minutes)}) +
                       card("IN", {"60"}) + subbasin() + "ZZ\n")
            .station("A")
            .peak();
    };
    // The unit graph moves by half an interval, so the error is of first order: it halves with the interval.
    const double first = std::fabs(peakAt(12) - peakAt(6)), second = std::fabs(peakAt(6) - peakAt(3));
    EXPECT_LT(second, .65 * first);
    EXPECT_LT(second, .02 * peakAt(3));
}

TEST(NetworkRun, RunoffIsLinearInExcessRain)
{
    // Without losses twice the rain is twice the excess.
    const std::string bare = card("KK", {"A"}) + card("KO", {"", "", "", "", "21"}) + card("BA", {"1"}) +
                             card("PI", {".1", ".4", ".1"}) + card("LU", {"0", "0"}) + card("UC", {"1", ".8"});
    const SavedStation a = runDeck(smallDeck(withRatios("PREC", {"1", "2"}), bare)).station("A");
    for (std::size_t i = 0; i < a.records[0].size(); ++i)
        EXPECT_NEAR(a.records[1][i], 2 * a.records[0][i], 1e-6 * (1 + a.records[1][i]));
}

TEST(NetworkRun, VolumeIsKeptOverRandomNetworks)
{
    std::mt19937 random(12345);
    std::uniform_real_distribution<double> share(0, 1);
    const auto number = [&](double from, double to) {
        return std::to_string(from + (to - from) * share(random)).substr(0, 6);
    };
    for (int deck = 0; deck < 20; ++deck) {
        std::string stations;
        const int subbasins = 2 + deck % 4;
        for (int s = 0; s < subbasins; ++s) {
            const std::string name = std::to_string(s);
            stations += card("KK", {"S" + name}) + card("KO", {"3", "", "", "", "21"}) + card("BA", {number(.2, 5)}) +
                        card("PB", {number(1, 8)}) + card("PI", {"1", "3", "2", "1"}) +
                        card("LS", {"", number(60, 98)}) +
                        (s % 2 ? card("UD", {number(.6, 3)}) : card("UC", {number(.6, 3), number(.3, 2)}));
            if (s > 0)
                stations += card("KK", {"C" + name}) + card("KO", {"", "", "", "", "21"}) + card("HC", {"2"});
            stations += card("KK", {"R" + name}) + card("KO", {"3", "", "", "", "21"}) +
                        (s % 2 ? card("RM", {"1", number(.3, 1.5), ".2"})
                               : card("RS", {"1", "STOR", "0"}) + card("SV", {"0", "20", "60", "900"}) +
                                     card("SQ", {"0", number(80, 300), number(400, 900), "9000"}));
        }
        // Long enough for all water to leave.
        const EngineOutcome outcome = runDeck("ID x\n" + card("IT", {"15", "", "", "2000"}) + card("IO", {"3"}) +
                                              card("IN", {"60"}) + stations + "ZZ\n");
        ASSERT_EQ(outcome.end, EngineEnd::Normal) << outcome.report;
        EXPECT_FALSE(outcome.reports("WATER BALANCE IS OFF"));
        double generated = 0, last = 0;
        for (const SavedStation& station : outcome.stations()) {
            last = std::accumulate(station.records[0].begin(), station.records[0].end(), 0.0);
            if (station.name[0] == 'S')
                generated += last;
        }
        EXPECT_NEAR(last, generated, .001 * generated) << "deck " << deck;
    }
}

TEST(NetworkRun, DataAreCarriedToLaterSubbasinsUntilReplaced)
{
    const std::string second = card("KK", {"B"}) + card("KO", {"", "", "", "", "21"}) + card("BA", {"1"});
    const EngineOutcome carried = runDeck(smallDeck("", subbasin("A") + second));
    EXPECT_EQ(carried.station("B").records, carried.station("A").records);
    const EngineOutcome stronger = runDeck(smallDeck("", subbasin("A") + second + card("PB", {"6"})));
    EXPECT_GT(stronger.station("B").peak(), 1.5 * stronger.station("A").peak());
    // New time data serve the cards behind them only.
    const EngineOutcome stretched =
        runDeck(smallDeck("", subbasin("A") + second + card("IN", {"120"}) + card("PI", {"1", "4", "1"})));
    EXPECT_LT(stretched.station("B").peak(), stretched.station("A").peak());
}

TEST(NetworkRun, DivertedWaterComesBackWholeWhereItIsFetched)
{
    const std::string stations = subbasin("A") + card("KK", {"D"}) + card("KO", {"", "", "", "", "21"}) +
                                 card("DT", {"AWAY"}) + card("DI", {"0", "100", "500"}) +
                                 card("DQ", {"0", "0", "300"}) + card("KK", {"F"}) + card("DR", {"AWAY"}) +
                                 card("KK", {"C"}) + card("KO", {"", "", "", "", "21"}) + card("HC", {"2"});
    const EngineOutcome outcome = runDeck(smallDeck("", stations));
    const std::vector<double> before = outcome.station("A").records[0], after = outcome.station("C").records[0];
    for (std::size_t i = 0; i < before.size(); ++i)
        EXPECT_NEAR(after[i], before[i], 1e-5 * (1 + before[i]));
    EXPECT_LT(outcome.station("D").peak(), outcome.station("A").peak());
}

TEST(NetworkRun, APlanWithoutCardsWhereAnotherDivertsLetsTheFlowPass)
{
    const std::string saved = card("KO", {"", "", "", "", "21"});
    const std::string stations = subbasin("A") + card("KK", {"D"}) + saved + card("KP", {"2"}) + card("DT", {"AWAY"}) +
                                 card("DI", {"0", "100", "500"}) + card("DQ", {"0", "0", "300"}) + card("KK", {"F"}) +
                                 saved + card("DR", {"AWAY"}) + card("KK", {"C"}) + saved + card("HC", {"2"});
    const EngineOutcome outcome = runDeck(smallDeck(card("JP", {"2"}), stations));
    ASSERT_EQ(outcome.end, EngineEnd::Normal) << outcome.report;
    const SavedStation diverted = outcome.station("D");
    ASSERT_EQ(diverted.records.size(), 2u);
    EXPECT_EQ(diverted.records[0], outcome.station("A").records[0]);
    EXPECT_LT(diverted.peak(1), diverted.peak(0));
    EXPECT_EQ(outcome.station("F").peak(0), 0);
    EXPECT_GT(outcome.station("F").peak(1), 0);
}

TEST(NetworkRun, PumpedWaterLeavesThePoolAndComesBackWhereItIsFetched)
{
    const std::string stations = subbasin("A") + card("KK", {"P"}) + card("KO", {"3"}) +
                                 card("RS", {"1", "ELEV", "100"}) + card("SV", {"0", "30", "90", "300"}) +
                                 card("SE", {"100", "102", "104", "108"}) + card("SL", {"103", "10", ".6"}) +
                                 card("WP", {"101", "40", "100.5", "PMP"}) + card("KK", {"W"}) + card("WR", {"PMP"}) +
                                 card("KK", {"C"}) + card("HC", {"2"});
    const EngineOutcome outcome = runDeck(smallDeck("", stations));
    ASSERT_EQ(outcome.end, EngineEnd::Normal) << outcome.report;
    EXPECT_TRUE(outcome.reports("PUMP FLOW TO"));
    EXPECT_FALSE(outcome.reports("WATER BALANCE IS OFF"));
    const auto series = outcome.series();
    EXPECT_EQ(series.at("W FLOW"), series.at("P PUMPED"));
    EXPECT_EQ(*std::max_element(series.at("W FLOW").begin(), series.at("W FLOW").end()), 40);
}

TEST(NetworkRun, SavedHydrographIsFetchedByALaterJob)
{
    const Folder folder;
    const auto before = std::filesystem::current_path();
    const EngineOutcome first = runDeck(smallDeck("", subbasin("UP")));
    std::filesystem::current_path(folder.path());
    const auto write = [](const char* name, const std::string& text) {
        std::FILE* file = std::fopen(name, "wb");
        ASSERT_NE(file, nullptr);
        std::fwrite(text.data(), 1, text.size(), file);
        std::fclose(file);
    };
    write("TAPE22", first.tape21);
    write("deck.dat", smallDeck("", card("KK", {"IN"}) + card("KO", {"", "", "", "", "21"}) + card("BA", {"1"}) +
                                        card("BI", {"UP", "22"})));
    std::ostringstream talk;
    EXPECT_EQ(computeDeck({"deck.dat", "out", "", ""}, talk), EngineEnd::Normal) << talk.str();
    EngineOutcome second;
    second.tape21 = fileText("TAPE21");
    std::filesystem::current_path(before);
    EXPECT_EQ(second.station("IN").records, first.station("UP").records);
}

} // namespace
} // namespace hec1::test
