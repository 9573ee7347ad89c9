// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <filesystem>
#include <map>
#include <string>
#include <vector>

namespace hec1::verification {

/// One line of a case's expected.tsv.
struct Check
{
    double x = 0; ///< minutes, or the elevation or duration that the quantity says; not used for scalars
    double expected = 0;
    double tolerance = 0;
    std::string quantity;
    std::string station;
};

/// @throws std::runtime_error with the line when it cannot be read.
std::vector<Check> readChecks(const std::filesystem::path& file);

struct Series
{
    std::vector<double> x;
    std::vector<double> values;

    double at(double place) const; ///< straight line between neighbours; NaN outside
};

/// What one run of the engine left behind: the hydrographs of TAPE21 and all series of the details file.
struct RunFiles
{
    struct Hydrograph
    {
        int intervalMinutes = 0;                  ///< 0 when it does not fit the header
        std::vector<std::vector<double>> records; ///< plan outermost, then ratio, then index storm
    };
    std::map<std::string, Hydrograph> tape21;
    std::map<std::string, Series> details; ///< "station/quantity", "station/quantity/ratio" for ratios above 1
    int exitStatus = -1;
    std::string report;
};

/// A folder of this process alone for the runs of one test; removed with all it holds when it goes out of scope.
class ScratchFolder
{
public:
    ScratchFolder();
    ~ScratchFolder();
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;
    const std::filesystem::path& path() const { return m_path; }

private:
    std::filesystem::path m_path;
};

/// Runs the built engine on a deck in an empty folder and reads what it wrote.
RunFiles runEngine(const std::filesystem::path& deck, const std::filesystem::path& folder);

} // namespace hec1::verification
