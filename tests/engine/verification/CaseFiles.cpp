// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/engine/verification/CaseFiles.h"

#include <cmath>
#include <cstdlib>
#include <fstream>
#include <limits>
#include <random>
#include <sstream>
#include <stdexcept>

namespace hec1::verification {

namespace {

std::vector<std::string> split(const std::string& line, char separator)
{
    std::vector<std::string> fields;
    std::istringstream in(line);
    for (std::string field; std::getline(in, field, separator);)
        fields.push_back(field);
    return fields;
}

bool nextLine(std::istream& in, std::string& line)
{
    if (!std::getline(in, line))
        return false;
    if (!line.empty() && line.back() == '\r')
        line.pop_back();
    return true;
}

std::string trimmed(const std::string& text)
{
    const auto first = text.find_first_not_of(' ');
    return first == std::string::npos ? std::string{} : text.substr(first, text.find_last_not_of(' ') - first + 1);
}

/// The header's fields stand at fixed places: the name at its start, the counts counted from its end.
std::map<std::string, RunFiles::Hydrograph> readTape21(const std::filesystem::path& file)
{
    std::map<std::string, RunFiles::Hydrograph> all;
    std::ifstream in(file, std::ios::binary);
    for (std::string header; nextLine(in, header);) {
        const std::size_t length = header.size();
        if (length < 35)
            throw std::runtime_error("TAPE21: short header: " + header);
        const auto number = [&](std::size_t fromEnd, std::size_t width) {
            return std::stoi(trimmed(header.substr(length - fromEnd - 1, width)));
        };
        RunFiles::Hydrograph hydrograph;
        // Three characters hold no step above 999 minutes; stars stand there then, and the details tell the times.
        const std::string step = trimmed(header.substr(length - 35, 3));
        hydrograph.intervalMinutes = step == "***" ? 0 : std::stoi(step);
        const int records = number(18, 1) * number(17, 2) * number(15, 2);
        const int ordinates = number(13, 4);
        for (int r = 0; r < records; ++r) {
            std::vector<double> flows;
            for (double flow = 0; static_cast<int>(flows.size()) < ordinates && in >> flow;)
                flows.push_back(flow);
            if (static_cast<int>(flows.size()) != ordinates)
                throw std::runtime_error("TAPE21: a record of " + header + " ends early");
            hydrograph.records.push_back(std::move(flows));
        }
        std::string rest;
        nextLine(in, rest);
        all[trimmed(header.substr(0, 9))] = std::move(hydrograph);
    }
    return all;
}

std::map<std::string, Series> readDetails(const std::filesystem::path& file)
{
    std::map<std::string, Series> all;
    std::ifstream in(file, std::ios::binary);
    std::string line;
    nextLine(in, line); // the names of the columns
    while (nextLine(in, line)) {
        const auto fields = split(line, ',');
        if (fields.size() != 8)
            throw std::runtime_error("details: " + line);
        const std::string& ratio = fields[2];
        Series& series = all[fields[0] + "/" + fields[4] + (ratio == "1" ? "" : "/" + ratio)];
        series.x.push_back(std::stod(fields[5]));
        series.values.push_back(std::stod(fields[6]));
    }
    return all;
}

} // namespace

std::vector<Check> readChecks(const std::filesystem::path& file)
{
    std::ifstream in(file);
    std::string line;
    nextLine(in, line);
    std::vector<Check> checks;
    while (nextLine(in, line)) {
        const auto fields = split(line, '\t');
        if (fields.size() != 5)
            throw std::runtime_error(file.string() + ": " + line);
        checks.push_back({fields[0] == "-" ? 0 : std::stod(fields[0]), std::stod(fields[1]), std::stod(fields[2]),
                          fields[3], fields[4]});
    }
    return checks;
}

double Series::at(double place) const
{
    for (std::size_t i = 0; i < x.size(); ++i) {
        if (std::abs(x[i] - place) < 1e-9)
            return values[i];
        if (i > 0 && x[i - 1] < place && place < x[i])
            return values[i - 1] + (place - x[i - 1]) / (x[i] - x[i - 1]) * (values[i] - values[i - 1]);
    }
    return std::numeric_limits<double>::quiet_NaN();
}

ScratchFolder::ScratchFolder()
    : m_path(std::filesystem::temp_directory_path() /
             ("hec1-test-" + std::to_string(std::random_device{}()) + "-" + std::to_string(std::random_device{}())))
{
    std::filesystem::create_directories(m_path);
}

ScratchFolder::~ScratchFolder()
{
    std::error_code ignored;
    std::filesystem::remove_all(m_path, ignored);
}

RunFiles runEngine(const std::filesystem::path& deck, const std::filesystem::path& folder)
{
    std::filesystem::remove_all(folder);
    std::filesystem::create_directories(folder);
    const auto before = std::filesystem::current_path();
    std::filesystem::current_path(folder);
    const std::string command =
        std::string("\"") + HEC1_PROGRAM + "\" \"INPUT=" + deck.string() + "\" OUTPUT=report.out DETAILS=details.csv";
    RunFiles files;
    files.exitStatus = std::system(command.c_str());
    std::filesystem::current_path(before);
    std::ifstream report(folder / "report.out", std::ios::binary);
    files.report.assign(std::istreambuf_iterator<char>(report), {});
    files.tape21 = readTape21(folder / "TAPE21");
    files.details = readDetails(folder / "details.csv");
    return files;
}

} // namespace hec1::verification
