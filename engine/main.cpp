// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/Engine.h"

#include <iostream>
#include <vector>

int main(int argc, char* argv[])
{
    const std::vector<std::string> arguments(argv + (argc > 0 ? 1 : 0), argv + argc);
    std::string complaint;
    const std::optional<hec1::EngineFiles> files = hec1::parseCommandLine(arguments, complaint);
    if (!files) {
        std::cerr << "hec1: " << complaint << '\n' << hec1::usageText();
        return static_cast<int>(hec1::EngineEnd::BadCommandLine);
    }
    return static_cast<int>(hec1::computeDeck(*files, std::cerr));
}
