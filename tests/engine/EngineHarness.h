// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "engine/Engine.h"

#include <filesystem>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace hec1::test {

/// One station block of a file of hydrographs, read as the front end reads it: fields from the header's end.
struct SavedStation
{
    std::string name;
    int minutes = 0, storms = 0, plans = 0, ratios = 0, ordinates = 0;
    std::vector<std::vector<double>> records;

    double peak(std::size_t record = 0) const;
};

/// What a run of the engine left.
struct EngineOutcome
{
    EngineEnd end = EngineEnd::Normal;
    std::string talk;
    std::string report, tape21, tape23, details, pools, conic;

    std::vector<SavedStation> stations() const;
    SavedStation station(std::string_view name) const;
    /// Series of the details file as "station quantity": minutes and values of plan 1, ratio 1.
    std::map<std::string, std::vector<double>> series() const;
    bool reports(std::string_view text) const { return report.find(text) != std::string::npos; }
    /// Numbers of the errors that the report tells, cut out by position as the front end does.
    std::vector<int> errorNumbers() const;
};

/// Computes a deck in a folder of its own.
EngineOutcome runDeck(const std::string& deck);

/// A deck file that lies beside the tests.
std::string deckText(const std::string& name);
std::vector<std::string> deckNames();

/// Lines without their ends.
std::vector<std::string> linesOf(const std::string& text);
std::string fileText(const std::filesystem::path& path);

/// A folder that goes away with the object.
class Folder
{
public:
    Folder();
    ~Folder();
    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;
    const std::filesystem::path& path() const { return m_path; }

private:
    std::filesystem::path m_path;
};

/// A card in fixed format: identifier, then fields right-justified in their columns.
std::string card(std::string_view id, const std::vector<std::string>& fields);

/// Time data, one subbasin with a three-hour storm, and whatever stands behind it.
std::string smallDeck(const std::string& jobCards, const std::string& stations);
/// The subbasin A of smallDeck: 1 square mile, 3 inches, curve number 80, lag 1 hour, saved.
std::string subbasin(std::string_view name = "A", bool saved = true);

} // namespace hec1::test
