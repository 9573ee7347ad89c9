// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/files/TextWriter.h"

#include "tests/engine/EngineHarness.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <random>

namespace hec1 {
namespace {

std::string written(const test::Folder& folder, const std::function<void(TextWriter&)>& write)
{
    const std::string path = (folder.path() / "out.txt").string();
    TextWriter out;
    EXPECT_TRUE(out.open(path));
    write(out);
    EXPECT_TRUE(out.close());
    return test::fileText(path);
}

struct Fixed
{
    const char* name;
    double value;
    std::size_t width;
    int decimals;
    const char* text;
};

void PrintTo(const Fixed& fixed, std::ostream* out)
{
    *out << fixed.name;
}

class FixedNumbers : public testing::TestWithParam<Fixed>
{
};

TEST_P(FixedNumbers, LookLikeFortranFields)
{
    const Fixed& row = GetParam();
    const test::Folder folder;
    EXPECT_EQ(written(folder, [&](TextWriter& out) { out.fixed(row.value, row.width, row.decimals); }), row.text);
}

INSTANTIATE_TEST_SUITE_P(
    , FixedNumbers,
    testing::Values(Fixed{"NoLeadingZero", .25, 6, 2, "   .25"}, Fixed{"WholeEndsInPoint", 579.4, 6, 0, "  579."},
                    Fixed{"Negative", -.1, 6, 2, "  -.10"}, Fixed{"ZeroWhole", 0, 4, 0, "  0."},
                    Fixed{"ZeroDecimals", 0, 5, 2, "  .00"}, Fixed{"NegativeZeroHasNoSign", -.001, 6, 2, "   .00"},
                    Fixed{"RoundsUpADigit", 9.996, 6, 2, " 10.00"}, Fixed{"TooWide", 123456.78, 6, 2, "******"},
                    Fixed{"FarTooWide", 1e200, 6, 2, "******"}),
    [](const auto& row) { return row.param.name; });

TEST(TextWriter, PreciseNumbersComeBackWithinSevenDigits)
{
    std::mt19937_64 random(7);
    std::uniform_real_distribution<double> mantissa(1, 10), decade(-8.9, 12);
    std::vector<double> values{0,     1,          -1,         10,         99999999, 100000000,
                               0.001, 9.99999996, 99999999.6, 12345678.9, 0.1,      -2.5e-7};
    for (int i = 0; i < 20000; ++i)
        values.push_back((i % 3 == 0 ? -1 : 1) * mantissa(random) * std::pow(10, std::floor(decade(random))));
    const test::Folder folder;
    const std::string text = written(folder, [&](TextWriter& out) { out.preciseRows(values, 8); });
    const char* at = text.c_str();
    for (const double value : values) {
        char* end = nullptr;
        const double read = std::strtod(at, &end);
        ASSERT_NE(at, end);
        EXPECT_NEAR(read, value, 5e-8 * std::fabs(value)) << value;
        at = end;
    }
}

TEST(TextWriter, AFullDiskIsTold)
{
    if (!std::filesystem::exists("/dev/full"))
        GTEST_SKIP() << "no device that is always full";
    TextWriter out;
    ASSERT_TRUE(out.open("/dev/full"));
    out.line("some text");
    EXPECT_FALSE(out.close());
}

TEST(TextWriter, AFolderCannotBeOpened)
{
    const test::Folder folder;
    TextWriter out;
    EXPECT_FALSE(out.open(folder.path().string()));
    EXPECT_FALSE(out.close());
}

} // namespace
} // namespace hec1
