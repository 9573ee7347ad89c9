// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/CommandLine.h"

#include "tests/engine/EngineHarness.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <sstream>

namespace hec1::test {
namespace {

TEST(CommandLine, TakesKeysInAnyCaseAndOrder)
{
    std::string complaint;
    const std::vector<std::string> arguments{"output=b", "Input=a", "DSS=c", "DETAILS=d"};
    const auto files = parseCommandLine(arguments, complaint);
    ASSERT_TRUE(files);
    EXPECT_EQ(files->input + files->output + files->dss + files->details, "abcd");
    const std::vector<std::string> plain{"deck", "report"};
    const auto two = parseCommandLine(plain, complaint);
    ASSERT_TRUE(two);
    EXPECT_EQ(two->input + "," + two->output, "deck,report");
}

TEST(CommandLine, SaysWhatIsWrong)
{
    for (const std::vector<std::string>& arguments : std::vector<std::vector<std::string>>{
             {}, {"INPUT=a"}, {"OUTPUT=b"}, {"INPUT=a", "OUTPUT=b", "WHAT=c"}, {"a", "b", "c", "d"}}) {
        std::string complaint;
        EXPECT_FALSE(parseCommandLine(arguments, complaint));
        EXPECT_FALSE(complaint.empty());
    }
}

// The built program, as the front end starts it.
int statusOf(const Folder& folder, const std::string& arguments)
{
    const std::string program = std::string(KALVO_BIN_DIR) + "/hec1";
    const std::string command =
        "cd \"" + folder.path().string() + "\" && \"" + program + "\" " + arguments + " 2> talk.txt";
    const int status = std::system(command.c_str());
    return status < 256 ? status : status / 256;
}

TEST(Program, ExitStatusTellsHowItEnded)
{
    const Folder folder;
    std::ofstream(folder.path() / "good.dat", std::ios::binary) << deckText("scs1");
    std::ofstream(folder.path() / "bad.dat", std::ios::binary) << "ID x\nQQ 1\nZZ\n";
    EXPECT_EQ(statusOf(folder, "INPUT=good.dat OUTPUT=good.out DSS=good.dss"), 0);
    EXPECT_TRUE(fileText(folder.path() / "talk.txt").empty());
    EXPECT_EQ(statusOf(folder, "INPUT=bad.dat OUTPUT=bad.out DSS=x"), 1);
    EXPECT_EQ(statusOf(folder, "INPUT=good.dat"), 2);
    EXPECT_NE(fileText(folder.path() / "talk.txt").find("usage"), std::string::npos);
    EXPECT_EQ(statusOf(folder, "INPUT=none.dat OUTPUT=x.out"), 3);
    EXPECT_EQ(statusOf(folder, "INPUT=good.dat OUTPUT=no/such/folder/x.out"), 3);
    EXPECT_EQ(statusOf(folder, "INPUT=good.dat OUTPUT=good.dat"), 3);
    EXPECT_EQ(fileText(folder.path() / "good.dat"), deckText("scs1"));
    EXPECT_NE(fileText(folder.path() / "talk.txt").find("good.dat"), std::string::npos);
}

TEST(Program, AFileThatCannotBeWrittenIsTold)
{
    const Folder folder;
    std::ofstream(folder.path() / "good.dat", std::ios::binary) << deckText("scs1");
    std::filesystem::create_directory(folder.path() / "TAPE21");
    EXPECT_EQ(statusOf(folder, "INPUT=good.dat OUTPUT=good.out"), 3);
    EXPECT_NE(fileText(folder.path() / "talk.txt").find("TAPE21"), std::string::npos);
    EXPECT_EQ(fileText(folder.path() / "good.out").find("NORMAL END"), std::string::npos);
}

} // namespace
} // namespace hec1::test
