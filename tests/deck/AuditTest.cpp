// SPDX-License-Identifier: GPL-3.0-or-later
#include "deck/Audit.h"

#include "tests/support/GridText.h"

#include <gtest/gtest.h>

namespace kalvo {
namespace {

/// A deck's grid: header row, line numbers as HEC-1 prints them, twelve columns.
struct DeckGrid : FlexGrid
{
    explicit DeckGrid(const char* cards)
    {
        setCols(12);
        setRows(1);
        putCells(*this, 1, 1, cards);
        for (int col = 2; col < 12; ++col)
            setTextMatrix(0, col, QString::number(col - 1));
        int number = 0;
        for (int row = 1; row < rows(); ++row)
            if (!textMatrix(row, 1).contains(u'*'))
                setTextMatrix(row, 0, QString::number(++number));
    }
};

std::string linesOf(const AuditResult& result)
{
    std::string text;
    for (const AuditFinding& finding : result.findings)
        text += finding.text.toStdString() + "\n";
    return text;
}

constexpr auto kNoOutput =
    "None of the KK stations are identified with a 21 in Column 5 in the KO card - Graph Data will not be provided.\n";

struct AuditCase
{
    const char* name;
    const char* cards; ///< between good KK and KO cards and the ZZ card
    const char* lines;
};

class AuditLines : public testing::TestWithParam<AuditCase>
{
};

TEST_P(AuditLines, AreTold)
{
    const DeckGrid grid((std::string("KK|SUB1\nKO|||||21\n") + GetParam().cards + "\nZZ").c_str());
    const AuditResult result = auditDeck(grid);
    EXPECT_EQ(result.end, AuditResult::End::Complete);
    EXPECT_EQ(linesOf(result), GetParam().lines);
}

constexpr AuditCase kCases[] = {
    {"GoodCards", "BA|1.5", "   Primary Input Check is O.K.\n"},
    {"EmptyIdIsToldTwice", "|x", "Data Missing Row 3 Col 1\nNot enough Character(s)  in row 3\n"},
    {"OneLetter", "B", "Not enough Character(s) B in row 3\n"},
    {"LongId", " BAX",
     "Wrong Number of Card ID Letters - Line 3\nLower Case or Incorrect Character(s)  BAX in row 3\n"},
    {"LongIdKeepsToItsFirstTwoCharacters", "BAx1", "Wrong Number of Card ID Letters - Line 3\n"},
    {"LoneStar", "*|a",
     "Incorrect Syntax for Comment Card - use Space after star Col 1 and Un-labeled Row\nNot enough Character(s) * in "
     "row \n"},
    {"BlankAndStar", " *|a",
     "Incorrect Syntax for Comment Card - use Space after star Col 1 and Un-labeled Row\n"
     "Lower Case or Incorrect Character(s)  * in row \n"},
    {"StarAndBlank", "* |a", "   Primary Input Check is O.K.\n"},
    {"LowerCaseGivesALineForEachLetter", "ba",
     "Lower Case or Incorrect Character(s) ba in row 3\nLower Case or Incorrect Character(s) ba in row 3\n"},
    {"Digit", "B1", "Incorrect Character(s) B1 in row 3\n"},
    {"BothTextsForOneId", "1a",
     "Lower Case or Incorrect Character(s) 1a in row 3\nIncorrect Character(s) 1a in row 3\n"},
    {"CodesThatPass", ")*\n@[\n*)\nA ", "   Primary Input Check is O.K.\n"},
    {"CodesBesideThem", "(A\n\\A\n+A\n?A",
     "Lower Case or Incorrect Character(s) (A in row 3\nLower Case or Incorrect Character(s) \\A in row 4\n"
     "Incorrect Character(s) +A in row 5\nIncorrect Character(s) ?A in row 6\n"},
    {"FieldOneIsTrimmedOnTheLeft", "BA| 123456\nBA|1234567", "Too Many Characters Row 4 Col 1\n"},
    {"FieldOneOfAComment", "BA|1\n**|1234567", "Too Many Characters in Un-labeled Row after 3 Col 1\n"},
    {"FieldOneBelowAnotherComment", "**|1\n**|1234567", "Too Many Characters in Un-labeled Row after  Col 1\n"},
    {"OtherFieldsByColumn", "BA|1|2|123456789\nBA|1| 12345678\n**|a|123456789",
     "Too Many Characters Row 4 Col 2\nToo Many Characters Row  Col 2\nToo Many Characters Row 3 Col 3\n"},
    {"LastField", "BA||||||||||123456789", "Too Many Characters Row 3 Col 10\n"},
    {"FreeFormat", "*F| REE ", "Can't Use *FREE Format Card-Convert to Column Format - Delete that Row!\n"},
    {"OtherFormatComment", "*F|IX", "   Primary Input Check is O.K.\n"},
    {"KOWithoutOutput", "KO|||||2 1", "Line 3 Has no 21 in col 5 and will not provide a hydrograph to plot\n"},
    {"KOThatContainsIt", "KO|||||121", "   Primary Input Check is O.K.\n"},
    {"ThreeEmptyIds", "\n\n",
     "Data Missing Row 3 Col 1\nData Missing Row 4 Col 1\nData Missing Row 5 Col 1\nNot enough Character(s)  in row 3\n"
     "Not enough Character(s)  in row 4\nNot enough Character(s)  in row 5\n"},
    {"BlankIdIsABadCharacter", "  ", "Lower Case or Incorrect Character(s)    in row 3\n"},
};
INSTANTIATE_TEST_SUITE_P(, AuditLines, testing::ValuesIn(kCases),
                         [](const auto& test) { return std::string(test.param.name); });

TEST(Audit, EndsWithoutZZ)
{
    const AuditResult result = auditDeck(DeckGrid("KK|SUB1\nZZ \n"));
    EXPECT_EQ(result.end, AuditResult::End::NoZZ);
    EXPECT_EQ(linesOf(result), "ZZ Card is Missing\n");
}

TEST(Audit, TheFourthEmptyIdEndsItWithoutALineOfItsOwn)
{
    const AuditResult result = auditDeck(DeckGrid("KK\n|a\n|b\nbad\n|c\n|d\nZZ"));
    EXPECT_EQ(result.end, AuditResult::End::TooManyRows);
    EXPECT_EQ(linesOf(result), "Data Missing Row 2 Col 1\nData Missing Row 3 Col 1\n"
                               "Wrong Number of Card ID Letters - Line 4\nData Missing Row 5 Col 1\n");
}

TEST(Audit, CountsStationsAndTellsWhenThereAreNone)
{
    EXPECT_EQ(auditDeck(DeckGrid("KK\nKO|||||21\nKK\nkk\nZZ")).numKKCards, 2);
    EXPECT_EQ(linesOf(auditDeck(DeckGrid("BA|1\nZZ"))), std::string("There are no KK cards!\n") + kNoOutput);
    EXPECT_EQ(linesOf(auditDeck(DeckGrid("KK|A\nZZ"))), kNoOutput);
}

TEST(Audit, EachLineKnowsItsCell)
{
    const AuditResult result = auditDeck(DeckGrid("KK|SUB1\nb|1234567|||||123456789\nKO\nZZ"));
    std::vector<std::pair<int, int>> cells;
    for (const AuditFinding& finding : result.findings)
        cells.emplace_back(finding.row, finding.col);
    EXPECT_EQ(cells, (std::vector<std::pair<int, int>>{{2, 2}, {2, 1}, {2, 7}, {3, 6}, {0, 0}})) << linesOf(result);
}

TEST(Audit, ALineFindsItsCardWhereItStandsNow)
{
    DeckGrid grid("KK|SUB1\nKO|||||21\nba|1.5\nUD|1\nZZ");
    const AuditResult result = auditDeck(grid);
    const AuditFinding& finding = result.findings.front();
    EXPECT_EQ(rowOfFinding(grid, result, finding), 3);
    grid.insertRow(1, 2);
    EXPECT_EQ(rowOfFinding(grid, result, finding), 5) << "moved down by an insertion";
    grid.removeRow(1, 4);
    EXPECT_EQ(rowOfFinding(grid, result, finding), 1) << "moved up by a deletion";
    grid.setTextMatrix(1, 1, "BA");
    EXPECT_EQ(rowOfFinding(grid, result, finding), 3) << "mended: the row of its number is all that is left";
    grid.setRows(2);
    EXPECT_EQ(rowOfFinding(grid, result, finding), 0);
    EXPECT_EQ(rowOfFinding(grid, result, {"about the deck", 0, 0}), 0);
}

TEST(Audit, RemarksTellWhatTheListDoesNot)
{
    EXPECT_EQ(auditRemarks(DeckGrid("KK|SUB1\nBA|1\nZZ")), QStringList());
    DeckGrid grid("KK|SUB1\nKM|a\nKM\nZZ");
    grid.setTextMatrix(2, 11, QString(90, u'x'));
    grid.setTextMatrix(3, 2, "a\tb");
    grid.setTextMatrix(3, 3, QString(QChar(0xE9)));
    EXPECT_EQ(auditRemarks(grid), (QStringList{"Longer than the card's 80 columns: line 2", "TAB in a field: line 3",
                                               "Characters that HEC-1 may not read: line 3"}));
}

} // namespace
} // namespace kalvo
