// SPDX-License-Identifier: GPL-3.0-or-later
#include "run/Tape21.h"

#include "TapeText.h"
#include "run/Tape21Cursor.h"
#include "tests/support/GridText.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <charconv>
#include <random>

namespace kalvo {
namespace {

using Kind = Tape21Problem::Kind;

// -- Headers ---------------------------------------------------------------------------------------------------------

TEST(Tape21Header, FieldsCountFromTheLinesEnd)
{
    Tape21Header header;
    const std::string line = headerLine({"MILL12", "120", "3", "12", "45", "9876"});
    ASSERT_FALSE(parseTape21Header(line, header));
    EXPECT_EQ(header.intervalMinutes, 120.0);
    EXPECT_EQ(header.jds, 3);
    EXPECT_EQ(header.plansWide, 12);
    EXPECT_EQ(header.plansShort, 2) << "the units digit alone";
    EXPECT_EQ(header.ratios, 45);
    EXPECT_EQ(header.ordinates, 9876);
    EXPECT_EQ(tape21StationName(line), "MILL12   ");

    Tape21Header moved;
    ASSERT_FALSE(parseTape21Header("MORE WORDS AHEAD " + line, moved));
    EXPECT_EQ(moved.ordinates, 9876);
    ASSERT_FALSE(parseTape21Header(line + " ", moved));
    EXPECT_NE(moved.ordinates, 9876) << "a blank at the end shifts every field";
}

TEST(Tape21Header, NeedsThirtyFiveCharacters)
{
    const std::string line = headerLine({});
    Tape21Header header;
    EXPECT_FALSE(parseTape21Header(line.substr(line.size() - 35), header));
    const auto problem = parseTape21Header(line.substr(line.size() - 34), header);
    ASSERT_TRUE(problem);
    EXPECT_EQ(problem->kind, Kind::ShortHeader);
}

// -- Records and their order -----------------------------------------------------------------------------------------

std::string orderOf(const Tape21& tape)
{
    std::string text;
    for (const HydrographRecord& r : tape.records)
        text += 'p' + std::to_string(r.plan) + 'r' + std::to_string(r.ratio) + 'j' + std::to_string(r.jd) + ' ';
    return text;
}

std::string orderOf(const Tape21Index& index)
{
    std::string text;
    for (const IndexedRecord& r : index.records)
        text += 'p' + std::to_string(r.plan) + 'r' + std::to_string(r.ratio) + 'j' + std::to_string(r.jd) + ' ';
    return text;
}

TEST(Tape21, EachReaderHasItsOwnOrderOfRecords)
{
    const std::string text = risingStation({"A", "5", "2", "2", "2"}, 2, 8);
    EXPECT_EQ(orderOf(readTape21(text)), "p1r1j1 p1r1j2 p1r2j1 p1r2j2 p2r1j1 p2r1j2 p2r2j1 p2r2j2 ");
    EXPECT_EQ(orderOf(readTape21Index(text)), "p1r1j1 p1r2j1 p2r1j1 p2r2j1 p1r1j2 p1r2j2 p2r1j2 p2r2j2 ");
    EXPECT_EQ(readTape21Index(text).records[1].peak, 4.0) << "the flows come in file order all the same";
    // The old form takes the ratio field for plans and has JD x plans records.
    EXPECT_EQ(orderOf(readOldTape21(risingStation({"A", "5", "2", "", "2"}, 2, 4))), "p1r1j1 p2r1j1 p3r1j1 p4r1j1 ");
}

struct CountRule
{
    const char* name;
    TapeHeader header;
    int records;          ///< that the text holds
    int full, index, old; ///< records that each reader finds
};

class CountRules : public testing::TestWithParam<CountRule>
{
};

TEST_P(CountRules, OfEachReader)
{
    const CountRule& rule = GetParam();
    const std::string text = risingStation(rule.header, 2, rule.records);
    EXPECT_EQ(readTape21(text).records.size(), static_cast<size_t>(rule.full));
    EXPECT_EQ(readTape21Index(text).records.size(), static_cast<size_t>(rule.index));
    EXPECT_EQ(readOldTape21(text).records.size(), static_cast<size_t>(rule.old));
}

INSTANTIATE_TEST_SUITE_P(, CountRules,
                         testing::Values(CountRule{"AllOnes", {"A", "5", "1", "1", "1"}, 1, 1, 1, 1},
                                         CountRule{"AllBlank", {"A", "5", "", "", ""}, 1, 1, 0, 0},
                                         CountRule{"ZeroIsOneButForShortPlans", {"A", "5", "0", "0", "0"}, 1, 1, 0, 0}),
                         [](const auto& row) { return row.param.name; });

TEST(Tape21, TenPlansAreAllThereInTheFullReaderAndVanishInTheIndex)
{
    const std::string text = risingStation({"A", "5", "1", "10", "1"}, 2, 10);
    EXPECT_EQ(readTape21(text).records.size(), 10u);
    EXPECT_EQ(readTape21Index(text).records.size(), 0u);
}

TEST(Tape21, PeakStartsAtZero)
{
    const Tape21 tape = readTape21(station({}, {-5.0, -1.0, -3.0}));
    ASSERT_EQ(tape.records.size(), 1u);
    EXPECT_EQ(tape.records[0].peak, 0.0);
    EXPECT_EQ(tape.records[0].flows, (std::vector<double>{-5.0, -1.0, -3.0}));
}

// -- Free-format items -----------------------------------------------------------------------------------------------

TEST(Tape21, ItemsArePartedByAnyRunOfBlanksTabsCommasAndLineEnds)
{
    const std::string text = headerLine({"A", "5", "1", "1", "1", "8"}) +
                             "\n 1.5,2,,3\t4\r\n\r\n5 \n,6 7E1   -.8D-1\r\n" +
                             headerLine({"B", "5", "1", "1", "1", "1"}) + "\r\n+9.";
    const Tape21 tape = readTape21(text);
    EXPECT_FALSE(tape.problem) << tape.problem->text().toStdString();
    ASSERT_EQ(tape.records.size(), 2u);
    EXPECT_EQ(tape.records[0].flows, (std::vector<double>{1.5, 2, 3, 4, 5, 6, 70, -0.08}));
    EXPECT_EQ(tape.records[1].flows, (std::vector<double>{9}));
}

TEST(Tape21, BlanksBehindTheLastNumberAndAnEndOfFileMarkAreNoStation)
{
    const std::string good = station({}, {1, 2, 3});
    const std::string unended = good.substr(0, good.size() - 2);
    for (const std::string& text : {good, unended, unended + "   ", unended + "  \t\r\n", unended + "\n", good + '\x1a',
                                    good + std::string(200, '\x1a')}) {
        const Tape21 tape = readTape21(text);
        EXPECT_FALSE(tape.problem) << text;
        EXPECT_EQ(tape.stations.size(), 1u);
        EXPECT_FALSE(readTape21Index(text).problem);
    }
}

TEST(Tape21, AnEmptyLastLineIsAHeader)
{
    const Tape21 tape = readTape21(station({}, {1, 2, 3}) + "\r\n");
    ASSERT_TRUE(tape.problem);
    EXPECT_EQ(tape.problem->kind, Kind::ShortHeader);
    EXPECT_EQ(tape.problem->line, 3);
    EXPECT_EQ(tape.stationNames, (QStringList{"SUB1     ", ""}))
        << "its empty name is listed and counted ahead of the failure";
    EXPECT_EQ(tape.records.size(), 1u) << "what was read stays";
}

TEST(Tape21, ABlankPlanDigitMakesTheIndexTakeFlowsForHeaders)
{
    TapeHeader header{"A", "5", "1", "", "1", "10"};
    const std::string text = station(header, {4, 5, 6, 7, 8, 9, 10, 11, 12, 13});
    const Tape21Index index = readTape21Index(text);
    ASSERT_EQ(index.stationNames.size(), 2);
    EXPECT_EQ(index.stationNames[1], "     4.00");
    EXPECT_TRUE(looksLikeFlows(index.stationNames[1]));
    EXPECT_FALSE(looksLikeFlows("101"));
    EXPECT_FALSE(looksLikeFlows("SUB1.2"));
}

// -- Damaged files ---------------------------------------------------------------------------------------------------

struct BadTape
{
    const char* name;
    std::string text;
    Kind kind;
    size_t records; ///< that are there in spite of it, the broken one included
};

class BadTapes : public testing::TestWithParam<BadTape>
{
};

TEST_P(BadTapes, GiveTheProblemAndWhatWasReadAheadOfIt)
{
    const Tape21 tape = readTape21(GetParam().text);
    ASSERT_TRUE(tape.problem);
    EXPECT_EQ(tape.problem->kind, GetParam().kind) << tape.problem->text().toStdString();
    EXPECT_FALSE(tape.problem->text().isEmpty());
    EXPECT_EQ(tape.records.size(), GetParam().records);
    readTape21Index(GetParam().text);
    readOldTape21(GetParam().text);
}

const std::string kTwo = risingStation({"A"}, 3, 1) + risingStation({"B"}, 3, 1);
const std::string kHead = headerLine({"A", "5", "1", "1", "1", "3"}) + "\r\n";

INSTANTIATE_TEST_SUITE_P(
    , BadTapes,
    testing::Values(
        BadTape{"Empty", "", Kind::Empty, 0}, BadTape{"OnlyTheEndMark", "\x1a\x1a", Kind::NoStation, 0},
        BadTape{"CutInTheFirstHeader", kTwo.substr(0, 20), Kind::ShortHeader, 0},
        BadTape{"CutBehindTheHeader", kHead, Kind::TooFewFlows, 1},
        BadTape{"CutInTheSecondRecord", kTwo.substr(0, kTwo.size() - 14), Kind::TooFewFlows, 2},
        BadTape{"WordAmongFlows", kHead + "1.0 dry 3.0\r\n", Kind::NotANumber, 1},
        BadTape{"AsterisksForAFlow", kHead + "1.0 ******** 3.0\r\n", Kind::NotANumber, 1},
        BadTape{"ExponentWithoutItsLetter", kHead + "1.0 1.5+103 3.0\r\n", Kind::NotANumber, 1},
        BadTape{"NotANumberInWords", kHead + "1.0 NaN 3.0\r\n", Kind::NotANumber, 1},
        BadTape{"Infinity", kHead + "1.0 INF 3.0\r\n", Kind::NotANumber, 1},
        BadTape{"BeyondADouble", kHead + "1.0 1E999 3.0\r\n", Kind::NotANumber, 1},
        BadTape{"BareSign", kHead + "1.0 - 3.0\r\n", Kind::NotANumber, 1},
        BadTape{"NegativeOrdinates", headerLine({"A", "5", "1", "1", "1", "-3"}) + "\n1\n", Kind::BadCount, 0},
        BadTape{"NegativeRatios", headerLine({"A", "5", "1", "1", "-2", "3"}) + "\n1\n", Kind::BadCount, 0},
        BadTape{"OrdinatesThatLie", headerLine({"A", "5", "1", "1", "1", "9E8"}) + "\n1 2 3\n", Kind::TooFewFlows, 1},
        BadTape{"OrdinatesBeyond32Bits", headerLine({"A", "5", "1", "1", "1", "9E99"}) + "\n1 2 3\n", Kind::BadCount,
                0},
        BadTape{"RecordsOfNothing",
                headerLine({"A", "5", "9", "99", "99", "0"}) + '\n' + headerLine({"B", "5", "9", "99", "99", "0"}),
                Kind::TooManyRecords, 100'000}),
    [](const auto& row) { return row.param.name; });

TEST(Tape21, CutAnywhereNeitherReaderFails)
{
    const std::string text =
        risingStation({"A", "5", "1", "2", "2"}, 4, 4) + risingStation({"B", "5", "1", "2", "2"}, 4, 4);
    // A header that was cut tells other counts, so that a record more may be asked for.
    for (size_t length = 0; length <= text.size(); ++length) {
        const std::string_view cut = std::string_view(text).substr(0, length);
        const Tape21 tape = readTape21(cut);
        EXPECT_LE(tape.records.size(), 9u);
        EXPECT_LE(readTape21Index(cut).records.size(), 9u);
        readOldTape21(cut);
    }
}

// -- Files -----------------------------------------------------------------------------------------------------------

TEST(Tape21, AFileGivesWhatItsBytesGiveAndTellsItsProgress)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath("TAPE21");
    std::string text;
    for (int s = 0; s < 400; ++s)
        text += risingStation({'S' + std::to_string(s), "5", "1", "1", "6"}, 50, 6, s);
    text += '\x1a';
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(text.data(), static_cast<qint64>(text.size()));
    file.close();
    ASSERT_GT(text.size(), size_t(1) << 20) << "larger than the window";

    std::vector<int> percents;
    const Tape21 ofFile = readTape21File(path, [&percents](int percent) { percents.push_back(percent); });
    const Tape21 ofBytes = readTape21(text);
    EXPECT_FALSE(ofFile.problem);
    ASSERT_EQ(ofFile.records.size(), ofBytes.records.size());
    for (size_t i = 0; i < ofFile.records.size(); ++i)
        ASSERT_EQ(ofFile.records[i].flows, ofBytes.records[i].flows);
    EXPECT_EQ(ofFile.stationNames, ofBytes.stationNames);
    ASSERT_FALSE(percents.empty());
    EXPECT_TRUE(std::is_sorted(percents.begin(), percents.end()));
    EXPECT_LE(percents.size(), 101u) << "told only where it changes";

    const auto missing = readTape21File(folder.filePath("none")).problem;
    ASSERT_TRUE(missing);
    EXPECT_EQ(missing->kind, Kind::CannotBeRead);
}

// A window of a few bytes puts its edge into every possible place of a header, an item and a line end.
TEST(Tape21Cursor, WindowEdgesMayStandAnywhere)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath("TAPE21");
    const std::string head = headerLine({});
    const std::string text = head + "\r\n  123.456 -7.25E+1,\t8\r\n \r\n0.5  \r\nNEXT\rLAST";
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadWrite));
    file.write(text.data(), static_cast<qint64>(text.size()));
    file.flush();
    for (qsizetype step = 1; step < 40; ++step) {
        SCOPED_TRACE(step);
        file.seek(0);
        ByteWindow window(file, step);
        Tape21Cursor cursor(window);
        std::string_view line;
        ASSERT_TRUE(cursor.headerLine(line));
        EXPECT_EQ(line, head);
        for (const double expected : {123.456, -72.5, 8.0, 0.5}) {
            double value = 0.0;
            ASSERT_EQ(cursor.number(value), Tape21Cursor::Got::Item);
            EXPECT_EQ(value, expected);
        }
        cursor.passLineEnd();
        EXPECT_EQ(cursor.line(), 5);
        ASSERT_TRUE(cursor.headerLine(line));
        EXPECT_EQ(line, "NEXT");
        ASSERT_TRUE(cursor.headerLine(line));
        EXPECT_EQ(line, "LAST");
        EXPECT_TRUE(cursor.atEnd());
    }
}

// The short way for common numbers must give the very doubles of std::from_chars.
TEST(Tape21Cursor, NumbersAreThoseOfFromChars)
{
    std::mt19937_64 random(20010203);
    std::string text;
    std::vector<double> expected;
    const auto add = [&](const std::string& item) {
        double value = 0.0;
        const auto result = std::from_chars(item.data(), item.data() + item.size(), value);
        ASSERT_EQ(result.ptr, item.data() + item.size()) << item;
        expected.push_back(value);
        text += item + (random() % 2 ? " " : "\r\n");
    };
    for (const char* item : {"0", "-0", "0.1", ".5", "5.", "9007199254740992", "9007199254740993", "9007199254740991.5",
                             "1234567890123456789", "12345678901234567890", "0.0000000000000000000001",
                             "0.00000000000000000000001", "1e22", "1e23", "1e-22", "123456789012345678901234567890.5",
                             "0.3", "2.2250738585072011e-308", "1.7976931348623157e308"})
        add(item);
    for (int i = 0; i < 200'000; ++i) {
        std::string item = random() % 4 == 0 ? "-" : "";
        const auto digits = static_cast<int>(random() % 19 + 1);
        const auto point = static_cast<int>(random() % 22);
        for (int d = 0; d < digits; ++d) {
            if (d == point)
                item += '.';
            item += static_cast<char>('0' + random() % 10);
        }
        if (random() % 8 == 0)
            item += "e" + std::to_string(static_cast<int>(random() % 60) - 30);
        add(item);
    }
    ByteWindow window{std::string_view(text)};
    Tape21Cursor cursor(window);
    for (const double value : expected) {
        double got = 0.0;
        ASSERT_EQ(cursor.number(got), Tape21Cursor::Got::Item);
        ASSERT_EQ(std::memcmp(&got, &value, sizeof value), 0) << got << " for " << value;
    }
}

} // namespace
} // namespace kalvo
