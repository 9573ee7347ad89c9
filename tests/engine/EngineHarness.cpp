// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/engine/EngineHarness.h"

#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <stdexcept>

namespace hec1::test {

namespace {

namespace fs = std::filesystem;

std::atomic<int> s_folders{0};

class InFolder
{
public:
    explicit InFolder(const fs::path& folder) : m_before(fs::current_path()) { fs::current_path(folder); }
    ~InFolder() { fs::current_path(m_before); }
    InFolder(const InFolder&) = delete;
    InFolder& operator=(const InFolder&) = delete;

private:
    fs::path m_before;
};

int fieldFromEnd(const std::string& line, std::size_t back, std::size_t width)
{
    return std::atoi(line.substr(line.size() - back - 1, width).c_str());
}

} // namespace

Folder::Folder()
{
    const auto unique = std::to_string(reinterpret_cast<std::uintptr_t>(this)) + "-" + std::to_string(++s_folders);
    m_path = fs::temp_directory_path() / ("hec1-test-" + unique + "-" + std::to_string(std::rand()));
    fs::create_directories(m_path);
}

Folder::~Folder()
{
    std::error_code ignored;
    fs::remove_all(m_path, ignored);
}

std::string fileText(const fs::path& path)
{
    std::ifstream in(path, std::ios::binary);
    std::stringstream text;
    text << in.rdbuf();
    return text.str();
}

std::vector<std::string> linesOf(const std::string& text)
{
    std::vector<std::string> lines;
    std::istringstream in(text);
    for (std::string line; std::getline(in, line);) {
        if (!line.empty() && line.back() == '\r')
            line.pop_back();
        lines.push_back(line);
    }
    return lines;
}

EngineOutcome runDeck(const std::string& deck)
{
    const Folder folder;
    const InFolder in(folder.path());
    std::ofstream("deck.dat", std::ios::binary) << deck;
    std::ostringstream talk;
    EngineOutcome outcome;
    outcome.end = computeDeck({"deck.dat", "report.out", "", "details.csv"}, talk);
    outcome.talk = talk.str();
    outcome.report = fileText("report.out");
    outcome.tape21 = fileText("TAPE21");
    outcome.tape23 = fileText("TAPE23");
    outcome.details = fileText("details.csv");
    outcome.pools = fileText("FLOW_AND_STAGE_STORAGE.TXT");
    outcome.conic = fileText("CONIC_DATA_VALUES.TXT");
    return outcome;
}

double SavedStation::peak(std::size_t record) const
{
    return *std::max_element(records.at(record).begin(), records.at(record).end());
}

std::vector<SavedStation> EngineOutcome::stations() const
{
    std::vector<SavedStation> stations;
    std::istringstream in(tape21);
    for (std::string header; std::getline(in, header);) {
        if (!header.empty() && header.back() == '\r')
            header.pop_back();
        if (header.size() < 35)
            throw std::runtime_error("header too short: \"" + header + "\"");
        SavedStation station;
        station.name = header.substr(0, 9);
        station.name.erase(station.name.find_last_not_of(' ') + 1);
        station.minutes = fieldFromEnd(header, 34, 3);
        station.storms = fieldFromEnd(header, 18, 1);
        station.plans = fieldFromEnd(header, 17, 2);
        station.ratios = fieldFromEnd(header, 15, 2);
        station.ordinates = fieldFromEnd(header, 13, 4);
        for (int i = 0; i < station.storms * station.plans * station.ratios; ++i) {
            std::vector<double> record(static_cast<std::size_t>(station.ordinates));
            for (double& flow : record)
                if (!(in >> flow))
                    throw std::runtime_error("too few numbers for " + station.name);
            station.records.push_back(std::move(record));
        }
        std::getline(in, header);
        stations.push_back(std::move(station));
    }
    return stations;
}

SavedStation EngineOutcome::station(std::string_view name) const
{
    for (SavedStation& station : stations())
        if (station.name == name)
            return station;
    throw std::runtime_error("no station " + std::string(name));
}

std::map<std::string, std::vector<double>> EngineOutcome::series() const
{
    std::map<std::string, std::vector<double>> all;
    for (const std::string& line : linesOf(details)) {
        std::vector<std::string> cells;
        std::istringstream in(line);
        for (std::string cell; std::getline(in, cell, ',');)
            cells.push_back(cell);
        if (cells.size() == 8 && cells[1] == "1" && cells[2] == "1" && cells[3] == "1")
            all[cells[0] + " " + cells[4]].push_back(std::strtod(cells[6].c_str(), nullptr));
    }
    return all;
}

std::vector<int> EngineOutcome::errorNumbers() const
{
    std::vector<int> numbers;
    for (const std::string& line : linesOf(report))
        if (line.find("*** HEC1 ERROR") != std::string::npos)
            numbers.push_back(std::atoi(line.substr(15, 3).c_str()));
    return numbers;
}

std::string deckText(const std::string& name)
{
    return fileText(fs::path(KALVO_SOURCE_DIR) / "tests/engine/decks" / (name + ".dat"));
}

std::vector<std::string> deckNames()
{
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(fs::path(KALVO_SOURCE_DIR) / "tests/engine/decks"))
        names.push_back(entry.path().stem().string());
    std::sort(names.begin(), names.end());
    return names;
}

std::string card(std::string_view id, const std::vector<std::string>& fields)
{
    std::string line(id);
    for (std::size_t i = 0; i < fields.size(); ++i) {
        const std::size_t width = i == 0 ? 6 : 8;
        line += std::string(fields[i].size() < width ? width - fields[i].size() : 0, ' ') + fields[i];
    }
    return line + "\n";
}

std::string subbasin(std::string_view name, bool saved)
{
    return card("KK", {std::string(name)}) + (saved ? card("KO", {"", "", "", "", "21"}) : "") + card("BA", {"1"}) +
           card("PB", {"3"}) + card("PI", {"1", "4", "1"}) + card("LS", {"", "80"}) + card("UD", {"1"});
}

std::string smallDeck(const std::string& jobCards, const std::string& stations)
{
    return "ID  TEST\n" + card("IT", {"15", "01JAN95", "0000", "96"}) + card("IO", {"5"}) + jobCards +
           card("IN", {"60"}) + stations + "ZZ\n";
}

} // namespace hec1::test
