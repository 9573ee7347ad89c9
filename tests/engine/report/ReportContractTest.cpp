// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/engine/EngineHarness.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <regex>
#include <sstream>

// What readers take from the files by position. Each of these promises is relied upon outside the engine.

namespace hec1::test {
namespace {

std::string longDeck()
{
    std::string stations = subbasin("A");
    for (int i = 0; i < 120; ++i)
        stations += "KM  A CARD TO FILL THE PAGES " + std::to_string(i) + "\n";
    return smallDeck("", stations);
}

std::string somePool()
{
    return subbasin() + card("KK", {"P"}) + card("RS", {"1", "STOR", "0"}) + card("SV", {"0", "50", "900"}) +
           card("SQ", {"0", "20", "900"}) + card("SE", {"100", "103", "106"});
}

TEST(ReportContract, RunStampStandsInTheSeventhLine)
{
    const std::vector<std::string> lines = linesOf(runDeck(deckText("scs1")).report);
    ASSERT_GT(lines.size(), 7u);
    EXPECT_NE(lines[6].find("RUN DATE"), std::string::npos);
    EXPECT_TRUE(std::regex_match(lines[6].substr(28, 12), std::regex("[0-9]{2}:[0-9]{2}:[0-9]{2} {4}"))) << lines[6];
}

TEST(ReportContract, FiveLinesTakenFromAPageHeadingLeaveEveryCard)
{
    const std::string report = runDeck(longDeck()).report;
    const std::string heading = "1" + std::string(55, ' ') + "HEC-1 INPUT" + std::string(45, ' ') + "P";
    EXPECT_LT(report.find(heading), 2502u);
    std::vector<std::string> lines = linesOf(report);
    int pages = 0;
    for (std::size_t i = 0; i < lines.size(); ++i)
        if (lines[i].rfind(heading, 0) == 0 && ++pages > 1) {
            for (std::size_t k = i; k < i + 5; ++k)
                EXPECT_EQ(lines[k].find(" KM "), std::string::npos) << lines[k];
        }
    EXPECT_EQ(pages, 3);
    for (int i = 0; i < 120; ++i)
        EXPECT_NE(report.find("FILL THE PAGES " + std::to_string(i) + "\r\n"), std::string::npos) << i;
}

TEST(ReportContract, ErrorNumberStandsInPositions16To18)
{
    const EngineOutcome outcome = runDeck(smallDeck("", subbasin() + "QQ     1\n"));
    bool found = false;
    for (const std::string& line : linesOf(outcome.report))
        if (line.find("*** HEC1 ERROR") != std::string::npos) {
            found = true;
            EXPECT_EQ(line.rfind(" *** HEC1 ERROR ", 0), 0u) << line;
            EXPECT_TRUE(std::regex_match(line.substr(15, 3), std::regex(" [0-9]{2}"))) << line;
            EXPECT_EQ(line.substr(18, 4), " ***");
        }
    EXPECT_TRUE(found);
}

TEST(ReportContract, NumberOfOrdinatesStandsBetweenItsNameAndItsWords)
{
    for (const std::string& line : linesOf(runDeck(smallDeck("", subbasin())).report)) {
        const std::size_t name = line.find("NQ"), words = line.find("NUMBER OF HYDROGRAPH ORDINATES");
        if (name != std::string::npos && words != std::string::npos) {
            EXPECT_EQ(std::atoi(line.substr(name + 2, words - name - 2).c_str()), 96);
            return;
        }
    }
    FAIL() << "the line is not there";
}

TEST(ReportContract, LastLineTellsTheNormalEnd)
{
    std::vector<std::string> lines = linesOf(runDeck(deckText("net4")).report);
    while (!lines.empty() && lines.back().empty())
        lines.pop_back();
    ASSERT_FALSE(lines.empty());
    EXPECT_EQ(lines.back(), " *** NORMAL END OF HEC-1 ***");
}

TEST(ReportContract, StagesAreEveryThirdItemBehindTheWord)
{
    const std::vector<std::string> lines = linesOf(runDeck(deckText("detent")).report);
    const auto routed = std::find(lines.begin(), lines.end(), " ROUTED TO");
    ASSERT_NE(routed, lines.end());
    std::string block;
    for (int i = 0; i < 7; ++i)
        block += routed[i] + "\r\n";
    std::istringstream words(routed[1]);
    std::string plus, station;
    words >> plus >> station;
    EXPECT_EQ(station, "BASIN");
    const std::string behind = block.substr(block.find("STAGE "));
    std::vector<std::string> items;
    std::istringstream in(behind);
    for (std::string item; std::getline(in, item, ' ');)
        items.push_back(item);
    const std::vector<double> stages{102.01, 104.04, 105.41, 106.82, 107.71, 108.20};
    for (std::size_t r = 0; r < stages.size(); ++r)
        EXPECT_NEAR(std::atof(items.at(6 + 3 * r).c_str()), stages[r], .03) << behind;
    EXPECT_EQ(behind.substr(5, 12), "      102.00");
}

TEST(ReportContract, StagesOfOtherMagnitudesKeepTheirItems)
{
    for (const double datum : {3.0, 42.0, 4042.0}) {
        const auto at = [&](double height) { return std::to_string(datum + height).substr(0, 6); };
        const std::string pool = card("KK", {"P"}) + card("RS", {"1", "STOR", "0"}) + card("SV", {"0", "50", "300"}) +
                                 card("SQ", {"0", "200", "900"}) + card("SE", {at(0), at(3), at(6)});
        const std::string report = runDeck(smallDeck(card("JR", {"PREC", ".5", "1"}), subbasin() + pool)).report;
        const std::size_t word = report.rfind("STAGE ");
        ASSERT_NE(word, std::string::npos);
        std::vector<std::string> items;
        std::istringstream in(report.substr(word, report.find("\r\n", word) - word));
        for (std::string item; std::getline(in, item, ' ');)
            items.push_back(item);
        EXPECT_GT(std::atof(items.at(6).c_str()), datum);
        EXPECT_GT(std::atof(items.at(9).c_str()), std::atof(items.at(6).c_str()));
    }
}

TEST(ReportContract, SummariesAreFoundByTheirWords)
{
    EXPECT_TRUE(runDeck(deckText("scs1")).reports("           RUNOFF SUMMARY"));
    EXPECT_TRUE(runDeck(deckText("detent")).reports("PEAK FLOW AND STAGE (END-OF-PERIOD)"));
    const EngineOutcome metric = runDeck(smallDeck("IM\n" + card("JR", {"FLOW", "1", "2"}), somePool()));
    EXPECT_TRUE(metric.reports("** PEAK STAGES IN METERS **")) << metric.report;
}

TEST(ReportContract, HydrographFileHasItsHeaderFieldsAndNoEmptyLine)
{
    const EngineOutcome outcome = runDeck(deckText("detent"));
    EXPECT_NE(outcome.tape21.substr(outcome.tape21.size() - 3, 1), "\n");
    for (const std::string& line : linesOf(outcome.tape21)) {
        ASSERT_FALSE(line.empty());
        EXPECT_NE(line.back(), ' ');
    }
    const std::vector<SavedStation> stations = outcome.stations();
    ASSERT_EQ(stations.size(), 5u);
    EXPECT_EQ(stations[3].name, "BASIN");
    EXPECT_EQ(stations[3].minutes, 5);
    EXPECT_EQ(stations[3].storms, 1);
    EXPECT_EQ(stations[3].plans, 1);
    EXPECT_EQ(stations[3].ratios, 6);
    EXPECT_EQ(stations[3].ordinates, 300);
}

TEST(ReportContract, TheLongestAndWidestHydrographsFit)
{
    std::string ratios;
    for (int line = 0; line < 11; ++line) {
        std::vector<std::string> fields{"FLOW"};
        for (int i = 0; i < 9; ++i)
            fields.push_back("1." + std::to_string(line * 9 + i));
        ratios += card("JR", fields);
    }
    const EngineOutcome outcome =
        runDeck("ID x\n" + card("IT", {"1", "", "", "9999"}) + ratios + card("IN", {"60"}) + subbasin() + "ZZ\n");
    ASSERT_EQ(outcome.end, EngineEnd::Normal) << outcome.report.substr(0, 4000);
    const SavedStation a = outcome.station("A");
    EXPECT_EQ(a.ratios, 99);
    EXPECT_EQ(a.ordinates, 9999);
}

TEST(ReportContract, CardEchoKeepsFieldsApart)
{
    std::vector<std::string> areas;
    for (const std::string& line : linesOf(runDeck(deckText("detent")).tape23)) {
        std::istringstream in(line);
        std::string id;
        in >> id;
        if (id == "SA")
            for (std::string item; in >> item;)
                areas.push_back(item);
    }
    EXPECT_EQ(areas, (std::vector<std::string>{"3.10", "3.40", "3.70", "4.00", "4.30", "4.60", "4.95", "5.30", "5.65",
                                               "6.00"}));
    // Fields filled to their edges touch each other on the card.
    EXPECT_NE(runDeck(smallDeck("", subbasin() + "* x\nKK     B\nBA2.5678\nPB3.1\nPI0.12340.1234560.123456\n"))
                  .tape23.find("PI   0.1234 0.123456 0.123456"),
              std::string::npos);
}

TEST(ReportContract, PoolFileIsCutAtItsHeadings)
{
    const std::string pools = runDeck(deckText("detent")).pools;
    EXPECT_FALSE(linesOf(pools).front().empty());
    int headings = 0;
    for (std::size_t at = pools.find("LOW AREA="); at != std::string::npos; at = pools.find("LOW AREA=", at + 25)) {
        EXPECT_EQ(pools.substr(at - 7, 6), "BASIN ");
        ++headings;
    }
    std::vector<std::string> ratios;
    for (std::size_t at = pools.find("RATIO"); at != std::string::npos; at = pools.find("RATIO", at + 5))
        ratios.push_back(pools.substr(at - 1, 12));
    EXPECT_EQ(headings, 6);
    ASSERT_EQ(ratios.size(), 6u);
    EXPECT_EQ(ratios[5], " RATIO  6   ");
    EXPECT_NE(pools.find(" ORDNT"), std::string::npos);
}

TEST(ReportContract, ARunWithNothingToWriteThereLeavesNoOldFile)
{
    EXPECT_FALSE(runDeck(deckText("reserv")).pools.empty());
    EXPECT_FALSE(runDeck(deckText("reserv")).conic.empty());
    const Folder folder;
    const auto before = std::filesystem::current_path();
    std::filesystem::current_path(folder.path());
    for (const char* deck : {"reserv", "scs1"}) {
        std::ostringstream talk;
        const std::string path = std::string(KALVO_SOURCE_DIR) + "/tests/engine/decks/" + deck + ".dat";
        EXPECT_EQ(computeDeck({path, "out", "", ""}, talk), EngineEnd::Normal);
    }
    EXPECT_FALSE(std::filesystem::exists("FLOW_AND_STAGE_STORAGE.TXT"));
    EXPECT_FALSE(std::filesystem::exists("CONIC_DATA_VALUES.TXT"));
    std::filesystem::current_path(before);
}

TEST(ReportContract, NoLineIsWiderThanThePrinter)
{
    for (const std::string& name : deckNames()) {
        std::string deck = deckText(name);
        const std::size_t io = deck.find("IO     5");
        if (io != std::string::npos)
            deck[io + 7] = '1';
        for (const std::string& line : linesOf(runDeck(deck).report))
            EXPECT_LE(line.size(), 133u) << name << ": " << line;
    }
}

TEST(ReportContract, DetailsAddUp)
{
    const auto series = runDeck(smallDeck("", subbasin())).series();
    const std::vector<double>&rain = series.at("A RAIN"), &loss = series.at("A LOSS"), &excess = series.at("A EXCESS");
    double total = 0;
    for (std::size_t i = 0; i < rain.size(); ++i) {
        EXPECT_NEAR(rain[i], loss[i] + excess[i], 1e-6);
        total += rain[i];
    }
    EXPECT_NEAR(total, 3, 1e-6);
    EXPECT_EQ(series.at("A FLOW").size(), 96u);
    EXPECT_GT(series.at("A UNITGRAPH").size(), 10u);
}

} // namespace
} // namespace hec1::test
