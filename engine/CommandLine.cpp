// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/CommandLine.h"

#include "engine/cards/CardReader.h"

namespace hec1 {

std::optional<EngineFiles> parseCommandLine(std::span<const std::string> arguments, std::string& complaint)
{
    EngineFiles files;
    int plain = 0;
    for (const std::string& argument : arguments) {
        const std::size_t equals = argument.find('=');
        const std::string_view key = std::string_view(argument).substr(0, equals);
        const std::string value = equals == std::string::npos ? argument : argument.substr(equals + 1);
        if (equals == std::string::npos) {
            (plain == 0 ? files.input : plain == 1 ? files.output : files.dss) = value;
            if (++plain > 3) {
                complaint = "too many files: " + argument;
                return std::nullopt;
            }
        } else if (sameWord(key, "INPUT")) {
            files.input = value;
        } else if (sameWord(key, "OUTPUT")) {
            files.output = value;
        } else if (sameWord(key, "DSS")) {
            files.dss = value;
        } else if (sameWord(key, "DETAILS")) {
            files.details = value;
        } else {
            complaint = "unknown argument: " + argument;
            return std::nullopt;
        }
    }
    if (files.input.empty() || files.output.empty()) {
        complaint = files.input.empty() ? "no input file is given" : "no output file is given";
        return std::nullopt;
    }
    return files;
}

std::string usageText()
{
    return "usage: hec1 INPUT=deck OUTPUT=report [DSS=name] [DETAILS=file.csv]\n"
           "       hec1 deck report\n"
           "Computes a HEC-1 deck. Writes the report and, into the current folder, TAPE21, TAPE23,\n"
           "FLOW_AND_STAGE_STORAGE.TXT and CONIC_DATA_VALUES.TXT.\n"
           "Exit status: 0 normal end, 1 errors in the deck (told in the report), 2 bad command line,\n"
           "3 a file that cannot be read or written.\n";
}

} // namespace hec1
