// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/Engine.h"

#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>

// Whole decks: whatever the bytes, the engine ends normally or says in its report what is wrong. Start it with the
// sample decks as corpus: deck_fuzz -max_len=8192 -timeout=5 corpus tests/engine/decks
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    // The engine writes into the current folder; the fuzzer reads its corpus from where it was started.
    const auto home = std::filesystem::current_path();
    const auto folder = std::filesystem::temp_directory_path() / "hec1-fuzz";
    std::filesystem::create_directories(folder);
    std::filesystem::current_path(folder);
    std::ofstream("deck.dat", std::ios::binary)
        .write(reinterpret_cast<const char*>(data), static_cast<std::streamsize>(size));
    std::ostringstream talk;
    const hec1::EngineEnd end = hec1::computeDeck({"deck.dat", "report.out", "", "details.csv"}, talk);
    std::ifstream in("report.out", std::ios::binary);
    std::stringstream report;
    report << in.rdbuf();
    std::filesystem::current_path(home);
    const bool normal = report.str().find("*** NORMAL END OF HEC-1 ***") != std::string::npos;
    const bool errors = report.str().find("*** HEC1 ERROR") != std::string::npos;
    if ((end == hec1::EngineEnd::Normal && !normal) || (end == hec1::EngineEnd::DeckErrors && !errors))
        std::abort();
    return 0;
}
