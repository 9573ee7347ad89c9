// SPDX-License-Identifier: GPL-3.0-or-later
// A program that is called like HEC-1 and ends as the first word of its deck says: in every bad way, or well.
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <string>
#include <thread>

namespace {

std::string argument(int argc, char* argv[], const std::string& name)
{
    for (int i = 1; i < argc; ++i)
        if (std::string(argv[i]).rfind(name + '=', 0) == 0)
            return std::string(argv[i]).substr(name.size() + 1);
    return {};
}

void writeTape()
{
    // Name in nine columns; from the end: interval 3, unused 13, JD 1, plans 2, ratios 2, ordinates 4, unused 10.
    std::ofstream("TAPE21", std::ios::binary) << "STA1                  5             1 1 1   3          \r\n"
                                              << " 1.25000 1234567.5 0.125\r\n";
}

} // namespace

int main(int argc, char* argv[])
{
    std::string word;
    std::ifstream(argument(argc, argv, "INPUT")) >> word;
    const std::string report = argument(argc, argv, "OUTPUT");
    std::cout << "talk on the console" << std::endl;
    if (word == "nothing")
        return 0;
    std::ofstream out(report, std::ios::binary);
    out << "1***\r\n REPORT\r\n" << std::flush;
    if (word == "crash")
        std::abort();
    if (word == "hang") {
        if (const char* sign = std::getenv("KALVO_TEST_SIGN"))
            std::ofstream(sign) << std::filesystem::current_path().string();
        std::this_thread::sleep_for(std::chrono::minutes(5));
    }
    if (word == "errors") {
        out << " *** HEC1 ERROR 12 *** CARD OUT OF ORDER\r\n";
        return 0;
    }
    if (word == "huge")
        for (int i = 0; i < 3'000'000; ++i)
            out << "                                             NO LINE OF INTEREST\r\n";
    writeTape();
    if (word == "torn")
        std::ofstream("TAPE21", std::ios::binary | std::ios::app) << "\r\n";
    out << "\r\n *** NORMAL END OF HEC-1 ***\r\n";
    return 0;
}
