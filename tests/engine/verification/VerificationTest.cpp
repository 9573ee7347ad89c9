// SPDX-License-Identifier: GPL-3.0-or-later
// Worked examples that others published, run through the built engine from the deck to its files. Each folder of cases/
// tells its source, inputs and tolerance in case.md.
#include "tests/engine/verification/CaseFiles.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <iomanip>
#include <iostream>
#include <numeric>

namespace hec1::verification {
namespace {

namespace fs = std::filesystem;

std::vector<std::string> caseNames()
{
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(VERIFICATION_CASES))
        if (entry.is_directory())
            names.push_back(entry.path().filename().string());
    std::sort(names.begin(), names.end());
    return names;
}

class Computed
{
public:
    explicit Computed(const RunFiles& files) : m_files(files) {}

    /// The engine's value for a check; fails the test where the engine does not offer it.
    double of(const Check& check) const
    {
        const std::string& quantity = check.quantity;
        if (quantity == "FLOW")
            return flows(check.station).at(check.x);
        if (quantity == "PEAK")
            return greatest(flows(check.station)).second;
        if (quantity == "TPEAK")
            return greatest(flows(check.station)).first;
        if (quantity == "RUNVOL")
            return volume(flows(check.station));
        if (quantity.rfind("PEAK_RATIO_", 0) == 0) {
            const std::string ratio = quantity.substr(11);
            return greatest(series(check.station, "FLOW", ratio == "1" ? "" : "/" + ratio)).second;
        }
        if (quantity == "STAGE" || quantity == "PEAKSTAGE")
            return pick(series(check.station, "STAGE"), check);
        if (quantity == "STOR" || quantity == "PEAKSTOR")
            return pick(series(check.station, "STORAGE"), check);
        if (quantity == "ELEVSTOR")
            return series(check.station, "RATING_STORAGE").at(check.x);
        if (quantity == "UHORD")
            return series(check.station, "UNITGRAPH").at(check.x);
        if (quantity == "EXCESS")
            return series(check.station, "EXCESS").at(check.x);
        if (quantity == "CUMEXCESS")
            return sumUntil(series(check.station, "EXCESS"), check.x);
        if (quantity == "MAXRAIN")
            return wettest(series(check.station, "RAIN"), check.x);
        ADD_FAILURE() << "unknown quantity " << quantity;
        return std::nan("");
    }

private:
    const Series& series(const std::string& station, const std::string& quantity, const std::string& ratio = "") const
    {
        static const Series none;
        const auto found = m_files.details.find(station + "/" + quantity + ratio);
        if (found != m_files.details.end())
            return found->second;
        ADD_FAILURE() << "no " << quantity << " of " << station << " in the details";
        return none;
    }

    /// The hydrograph of TAPE21, which must be that of the details; stations that are not saved have only the latter.
    Series flows(const std::string& station) const
    {
        const Series& details = series(station, "FLOW");
        const auto saved = m_files.tape21.find(station);
        if (saved == m_files.tape21.end())
            return details;
        Series tape{details.x, saved->second.records.at(0)};
        EXPECT_EQ(tape.values.size(), details.values.size());
        for (std::size_t i = 0; i < std::min(tape.values.size(), details.values.size()); ++i) {
            if (const int step = saved->second.intervalMinutes; step > 0) {
                EXPECT_EQ(details.x[i], static_cast<double>(i) * step);
            }
            EXPECT_NEAR(tape.values[i], details.values[i], 2e-7 * std::abs(tape.values[i]) + 1e-9);
        }
        return tape;
    }

    static std::pair<double, double> greatest(const Series& s)
    {
        const auto peak = std::max_element(s.values.begin(), s.values.end());
        return peak == s.values.end() ? std::pair{std::nan(""), std::nan("")}
                                      : std::pair{s.x[static_cast<std::size_t>(peak - s.values.begin())], *peak};
    }

    static double pick(const Series& s, const Check& check)
    {
        return check.quantity.rfind("PEAK", 0) == 0 ? greatest(s).second : s.at(check.x);
    }

    /// Acre-feet under a hydrograph in cfs.
    static double volume(const Series& s)
    {
        double cfsMinutes = 0;
        for (std::size_t i = 1; i < s.x.size(); ++i)
            cfsMinutes += (s.values[i] + s.values[i - 1]) / 2 * (s.x[i] - s.x[i - 1]);
        return cfsMinutes * 60 / 43560;
    }

    static double sumUntil(const Series& s, double minutes)
    {
        double sum = 0;
        for (std::size_t i = 0; i < s.x.size() && s.x[i] <= minutes + 1e-9; ++i)
            sum += s.values[i];
        return sum;
    }

    static double wettest(const Series& s, double minutes)
    {
        if (s.x.size() < 2)
            return std::nan("");
        const auto window = static_cast<std::size_t>(std::lround(minutes / (s.x[1] - s.x[0])));
        double best = 0;
        for (std::size_t i = 0; i + window <= s.values.size(); ++i) {
            const auto from = s.values.begin() + static_cast<std::ptrdiff_t>(i);
            best = std::max(best, std::accumulate(from, from + static_cast<std::ptrdiff_t>(window), 0.0));
        }
        return best;
    }

    const RunFiles& m_files;
};

class PublishedCase : public testing::TestWithParam<std::string>
{
};

TEST_P(PublishedCase, IsMetWithinItsTolerance)
{
    const ScratchFolder scratch;
    const fs::path folder = fs::path(VERIFICATION_CASES) / GetParam();
    const RunFiles files = runEngine(folder / "deck.dat", scratch.path() / "run");
    ASSERT_EQ(files.exitStatus, 0) << files.report;
    const auto checks = readChecks(folder / "expected.tsv");
    ASSERT_FALSE(checks.empty());

    const Computed computed(files);
    double worst = -1;
    std::string worstLine;
    for (const Check& check : checks) {
        const double value = computed.of(check);
        const double difference = std::abs(value - check.expected);
        EXPECT_LE(difference, check.tolerance) << check.station << " " << check.quantity << " at " << check.x
                                               << ": computed " << value << ", published " << check.expected;
        if (const double share = check.tolerance > 0 ? difference / check.tolerance : 0;
            share > worst || std::isnan(value)) {
            worst = share;
            std::ostringstream line;
            line << check.station << " " << check.quantity << " at " << check.x << "\t" << check.expected << "\t"
                 << value << "\t" << value - check.expected;
            worstLine = line.str();
        }
    }
    std::cout << "VERIFIED\t" << GetParam() << "\t" << checks.size() << " checks\tclosest to its limit ("
              << std::setprecision(3) << 100 * worst << "%)\t" << worstLine << "\n";
}

INSTANTIATE_TEST_SUITE_P(, PublishedCase, testing::ValuesIn(caseNames()), [](const auto& row) {
    std::string name = row.param;
    std::replace(name.begin(), name.end(), '-', '_');
    return name;
});

TEST(PublishedCases, AreAllThere)
{
    EXPECT_GE(caseNames().size(), 23u);
}

} // namespace
} // namespace hec1::verification
