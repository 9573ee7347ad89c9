// SPDX-License-Identifier: GPL-3.0-or-later
// A program for tests of child processes: it ends, crashes, hangs and talks as its arguments say.
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <string>
#include <thread>

namespace {

void beat(const std::string& file)
{
    // Shows that the process lives: the file grows for as long as it does.
    for (;;) {
        std::ofstream(file, std::ios::app) << '.';
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
}

} // namespace

int main(int argc, char* argv[])
{
    const std::string what = argc > 1 ? argv[1] : "";
    const std::string value = argc > 2 ? argv[2] : "";
    if (what == "exit")
        return std::atoi(value.c_str());
    if (what == "crash")
        std::abort();
    if (what == "hang")
        beat(value);
    if (what == "parent") // starts itself and waits for it: stopping must reach the grandchild
        return std::system(('"' + std::string(argv[0]) + "\" hang \"" + value + '"').c_str());
    if (what == "print") {
        std::cout << value << std::endl;
        std::cerr << "and on the other stream" << std::endl;
        return 0;
    }
    if (what == "where") {
        std::ofstream("where.txt") << std::filesystem::current_path().filename().string();
        return 0;
    }
    if (what == "input") // 0 when there is nothing to read
        return std::cin.get() == EOF ? 0 : 1;
    std::cerr << "unknown: " << what << std::endl;
    return 99;
}
