// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/engine/EngineHarness.h"

#include "engine/cards/ErrorTable.h"

#include <gtest/gtest.h>

namespace hec1::test {
namespace {

using enum ErrorNumber;

struct Fault
{
    const char* name;
    std::string deck;
    ErrorNumber number;
    std::string says; ///< part of the report
};

void PrintTo(const Fault& fault, std::ostream* out)
{
    *out << fault.name;
}

class DeckFaults : public testing::TestWithParam<Fault>
{
};

TEST_P(DeckFaults, AreToldWithNumberAndCard)
{
    const EngineOutcome outcome = runDeck(GetParam().deck);
    EXPECT_EQ(outcome.end, EngineEnd::DeckErrors);
    const std::vector<int> numbers = outcome.errorNumbers();
    EXPECT_NE(std::find(numbers.begin(), numbers.end(), static_cast<int>(GetParam().number)), numbers.end())
        << outcome.report;
    EXPECT_TRUE(outcome.reports(GetParam().says)) << outcome.report;
    EXPECT_FALSE(outcome.reports("NORMAL END OF HEC-1"));
    EXPECT_TRUE(outcome.tape21.empty());
    EXPECT_FALSE(outcome.talk.empty());
}

const std::string kPool = card("SV", {"0", "50", "100"}) + card("SE", {"10", "20", "30"});

INSTANTIATE_TEST_SUITE_P(
    , DeckFaults,
    testing::Values(
        Fault{"Empty", "", DeckEmpty, "NO CARDS"}, Fault{"NoStation", smallDeck("", ""), DeckEmpty, "NO KK CARD"},
        Fault{"NoZz", "ID x\n" + card("IT", {"15", "", "", "24"}) + subbasin(), EndOfJobMissing, "END-OF-JOB"},
        Fault{"NoIt", subbasin() + "ZZ\n", TimeCardMissing, "IT CARD"},
        Fault{"ZeroInterval", card("IT", {"0", "", "", "24"}) + subbasin() + "ZZ\n", TimeData, "NMIN"},
        Fault{"TooManyOrdinates", card("IT", {"1", "", "", "10000"}) + subbasin() + "ZZ\n", TooManyOrdinates, "10000"},
        Fault{"EndsBeforeItStarts", card("IT", {"15", "02JAN95", "0000", "", "01JAN95", "0000"}) + subbasin() + "ZZ\n",
              TimeData, "NOT LATER"},
        Fault{"NoSuchDate", card("IT", {"15", "31FEB95", "", "24"}) + subbasin() + "ZZ\n", DateNotReadable, "31FEB95"},
        Fault{"UnknownCard", smallDeck("", subbasin() + "QQ     1\n"), UnknownCard, "QQ     1"},
        Fault{"JobCardInStation", smallDeck("", subbasin() + card("JP", {"2"})), CardOutOfOrder,
              "AHEAD OF THE FIRST KK"},
        Fault{"StationCardInJob", smallDeck(card("BA", {"1"}), subbasin()), CardOutOfOrder, "INSIDE A KK GROUP"},
        Fault{"TenPlans", smallDeck(card("JP", {"10"}), subbasin()), TooManyPlansOrRatios, "9 PLANS"},
        Fault{"PlanNotOnJp", smallDeck("", subbasin() + card("KP", {"2"})), PlanNumber, "PLAN 2"},
        Fault{"BadNumber", smallDeck("", card("KK", {"A"}) + card("BA", {"1.2.3"})), NumberNotReadable, "1.2.3"},
        Fault{"HugeNumber", smallDeck("", card("KK", {"A"}) + card("BA", {"9e99"})), OutOfRange, "TOO LARGE"},
        Fault{"Tab", smallDeck("", "KK     A\nBA\t1\n"), TabInCard, "TAB"},
        Fault{"NoRain",
              smallDeck("", card("KK", {"A"}) + card("BA", {"1"}) + card("LS", {"", "80"}) + card("UD", {"1"})), NoRain,
              "KK     A"},
        Fault{"NoLoss",
              smallDeck("", card("KK", {"A"}) + card("BA", {"1"}) + card("PB", {"3"}) + card("PI", {"1"}) +
                                card("UD", {"1"})),
              NoLoss, ""},
        Fault{"NoUnitGraph",
              smallDeck("", card("KK", {"A"}) + card("BA", {"1"}) + card("PB", {"3"}) + card("PI", {"1"}) +
                                card("LS", {"", "80"})),
              NoUnitGraph, ""},
        Fault{"NoArea", smallDeck("", subbasin() + card("KK", {"B"}) + card("BA", {"0"})), AreaMissing, ""},
        Fault{"CurveNumberAbove100",
              smallDeck("", subbasin() + card("KK", {"B"}) + card("BA", {"1"}) + card("LS", {"", "180"})), MethodData,
              "CURVE NUMBER"},
        Fault{"FallingMassCurve",
              smallDeck("", card("KK", {"A"}) + card("BA", {"1"}) + card("PB", {"3"}) + card("PC", {"0", "2", "1"})),
              TableDoesNotRise, "VALUE 3"},
        Fault{"TooFewToCombine", smallDeck("", subbasin() + card("KK", {"C"}) + card("HC", {"2"})), TooFewToCombine,
              "1 WAITING"},
        Fault{"NothingToRoute", smallDeck("", card("KK", {"R"}) + card("RM", {"1", "1", ".2"})), NothingToRoute, ""},
        Fault{"UnknownDiversion", smallDeck("", subbasin() + card("KK", {"D"}) + card("DR", {"POND"})),
              DiversionNotFound, "POND"},
        Fault{"DiversionTablesDiffer",
              smallDeck("", subbasin() + card("KK", {"D"}) + card("DT", {"POND"}) + card("DI", {"0", "10", "20"}) +
                                card("DQ", {"0", "5"})),
              CountsDiffer, "DQ HAS 2"},
        Fault{"NoOutflow", smallDeck("", subbasin() + card("KK", {"P"}) + card("RS", {"1", "ELEV", "10"}) + kPool),
              ReservoirIncomplete, "NEITHER SQ"},
        Fault{"StartAbovePool",
              smallDeck("", subbasin() + card("KK", {"P"}) + card("RS", {"1", "ELEV", "31"}) + kPool +
                                card("SQ", {"0", "5", "9"})),
              StartOutsideTable, "31 IS NOT BETWEEN"},
        Fault{"UnknownStartWord",
              smallDeck("", subbasin() + card("KK", {"P"}) + card("RS", {"1", "DEPTH", "1"}) + kPool +
                                card("SQ", {"0", "5", "9"})),
              UnknownWord, "STOR, ELEV, FLOW"},
        Fault{"SectionWithoutPoints",
              smallDeck("", subbasin() + card("KK", {"P"}) + card("RS", {"1", "FLOW", "-1"}) +
                                card("RC", {".05", ".03", ".05", "5000", ".001"})),
              SectionMissing, ""},
        Fault{"UnknownGage",
              smallDeck("", card("KK", {"A"}) + card("BA", {"1"}) + card("PR", {"G1"}) + card("LS", {"", "80"}) +
                                card("UD", {"1"})),
              GageNotFound, "G1"},
        Fault{"TwoOperations",
              smallDeck("", subbasin() + card("KK", {"B"}) + card("RM", {"1", "1", ".2"}) + card("HC", {"2"})),
              TwoOperations, ""},
        Fault{"Refused", smallDeck("", subbasin() + card("MC", {"3"})), NotComputed, "SNOWMELT"},
        Fault{"NegativeParameterAsksForFitting",
              smallDeck("", card("KK", {"A"}) + card("BA", {"1"}) + card("UC", {"-1", "-1"})), NotComputed, "FITTING"},
        Fault{"SavedHydrographMissing", smallDeck("", card("KK", {"A"}) + card("BI", {"UP", "21"})), SavedNotFound,
              "STATION UP"},
        Fault{"MuskingumX", smallDeck("", subbasin() + card("KK", {"R"}) + card("RM", {"1", "1", ".9"})), MethodData,
              "MUSKINGUM"}),
    [](const auto& row) { return row.param.name; });

TEST(DeckErrors, AllAreFoundInOnePass)
{
    const std::string deck = smallDeck("", card("KK", {"A"}) + card("BA", {"x"}) + card("LS", {"", "180"}) +
                                               card("UD", {"0"}) + card("KK", {"C"}) + card("HC", {"3"}));
    const std::vector<int> numbers = runDeck(deck).errorNumbers();
    for (const ErrorNumber number : {NumberNotReadable, MethodData, AreaMissing, NoRain, TooFewToCombine})
        EXPECT_NE(std::find(numbers.begin(), numbers.end(), static_cast<int>(number)), numbers.end())
            << static_cast<int>(number);
}

TEST(DeckErrors, AFileThatIsNoDeckMakesAShortReport)
{
    std::string noise;
    for (int i = 0; i < 100000; ++i)
        noise += "lorem ipsum dolor sit amet\n";
    const EngineOutcome outcome = runDeck(noise);
    EXPECT_EQ(outcome.end, EngineEnd::DeckErrors);
    EXPECT_TRUE(outcome.reports("MORE ERRORS"));
    EXPECT_LT(outcome.errorNumbers().size(), 300u);
}

TEST(DeckErrors, WhatCannotChangeAHydrographIsPassedOverWithAWarning)
{
    const std::string plain = smallDeck("", subbasin());
    const std::string more = smallDeck("", subbasin() + card("VS", {"A"}) + card("VV", {"2.11"}) +
                                               "ZW A=X B=Y C=FLOW\n" + "EC\nCN     1  CROPS\n");
    const EngineOutcome outcome = runDeck(more);
    EXPECT_EQ(outcome.end, EngineEnd::Normal) << outcome.report;
    EXPECT_TRUE(outcome.reports("*** WARNING ***"));
    EXPECT_EQ(outcome.tape21, runDeck(plain).tape21);
}

} // namespace
} // namespace hec1::test
