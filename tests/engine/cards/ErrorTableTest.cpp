// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/cards/ErrorTable.h"

#include "tests/engine/EngineHarness.h"

#include <gtest/gtest.h>

#include <set>

namespace hec1 {
namespace {

TEST(ErrorTable, NumbersHaveTwoDigitsAndAreUsedOnce)
{
    std::set<int> numbers;
    for (const ErrorText& text : errorTable()) {
        const int number = static_cast<int>(text.number);
        EXPECT_GE(number, 10);
        EXPECT_LE(number, 99);
        EXPECT_TRUE(numbers.insert(number).second) << number;
        EXPECT_EQ(errorTitle(text.number), text.title);
    }
}

// A comma outside quotes, or a record of another length, would shift every later record for its reader.
TEST(ErrorTable, ShippedDescriptionsAreInStep)
{
    std::string expected;
    for (const ErrorText& text : errorTable()) {
        for (const std::string_view part : {text.title, text.cause, text.remedy})
            EXPECT_EQ(part.find_first_of("\"\r\n"), std::string_view::npos) << part;
        expected += "\"" + std::to_string(static_cast<int>(text.number)) + "\",\"" + std::string(text.title) + "\",\"" +
                    std::string(text.cause) + " " + std::string(text.remedy) + "\"\r\n";
    }
    const std::string shipped =
        test::fileText(std::filesystem::path(KALVO_SOURCE_DIR) / "data/HECErrorDEscriptions.txt");
    EXPECT_EQ(shipped, expected);
}

} // namespace
} // namespace hec1
