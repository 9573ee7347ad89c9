// SPDX-License-Identifier: GPL-3.0-or-later
// The tables of peaks without their screens: the file that a comparison links to, and the layout beside it.
#include "results/PeakFile.h"
#include "results/PeakLayout.h"

#include "run/IndexTable.h"
#include "run/Tape21Tables.h"
#include "tests/run/TapeText.h"
#include "tests/support/GridText.h"
#include "tests/support/ScriptedServices.h"

#include <gtest/gtest.h>

namespace kalvo {
namespace {

struct Peaks : testing::Test
{
    ScriptedServices services;
    Screens screens;
    ResultDesk desk{services, screens, std::make_shared<ResultTables>()};

    void read(const std::string& tape)
    {
        EXPECT_FALSE(fillTables(readTape21(tape), desk.tables(), services.measure));
        desk.tables().deckName = "storm";
        desk.tables().tellFilled();
    }
    FlexGrid& table() { return desk.tables().peakTable; }
};

TEST_F(Peaks, AreSavedWithTheCountsOfTheRunThatFilledTheTable)
{
    read(risingStation({"UP", "5", "1", "1", "2"}, 3, 2) + risingStation({"LOW END", "5", "1", "1", "2"}, 3, 2, 7));
    desk.tables().counts = {9, 9, 9, 9, 9}; // another reader's
    desk.tables().GRAPHER = {};             // and that screen is gone
    services.dialogs.willAnswer(services.path("before.pek"));
    newSavePeaks(desk);
    EXPECT_EQ(services.bytes("before.pek"), "Peak Flow File - Ratios /Plans/JD Simulations\r\n"
                                            " 2 \r\n 2 \r\n 1 \r\n 1 \r\n"
                                            "UP\t3\t6\t\r\nLOW END\t9\t12\t\r\n");
    const FileDialog& asked = services.dialogs.last().file;
    EXPECT_EQ(asked.title, "Save HEC-1 Peak Flow Data");
    EXPECT_EQ(asked.filter, "All Files (*.*)|*.*|PEAK Files(*.pek)|*.pek|Text Files (*.txt)|*.txt");
    EXPECT_EQ(asked.filterIndex, 2);
    EXPECT_EQ(asked.defaultExtension, ".pek");
    EXPECT_EQ(asked.initialName, "storm");
    EXPECT_TRUE(asked.overwritePrompt && !asked.fileMustExist);
}

TEST_F(Peaks, TheFirstEmptyCellEndsALine)
{
    // Two plans and two ratios share three of four columns: the last column is empty and simply absent.
    read(risingStation({"A", "5", "1", "2", "2"}, 1, 4));
    EXPECT_EQ(gridText(table(), 1, 0, 1, 4), "A|1|3|4|");
    EXPECT_TRUE(peakFileText(table(), desk.tables().tableCounts).endsWith("\r\nA\t1\t3\t4\t\r\n"));
    EXPECT_EQ(peakFileLosses(table()), QStringList());

    table().setTextMatrix(1, 2, "");
    EXPECT_TRUE(peakFileText(table(), desk.tables().tableCounts).endsWith("\r\nA\t1\t\r\n"));
    table().setTextMatrix(1, 0, "");
    EXPECT_TRUE(peakFileText(table(), desk.tables().tableCounts).endsWith("\r\n 1 \r\n\r\n"));
    EXPECT_TRUE(peakFileLosses(table()).last().contains("holds no peaks")) << "as after a reading that failed";
}

TEST_F(Peaks, WhatTheFileCannotKeepIsTold)
{
    read(station({"A,B"}, {1, 2, 3}) + station({"GAP"}, {1, 2, 3}) + station({"GOOD"}, {1, 2, 3}));
    table().setCols(3);
    table().setTextMatrix(2, 1, "");
    table().setTextMatrix(2, 2, "5");
    services.dialogs.willAnswer(services.path("a.pek"));
    services.dialogs.willAnswer(Button::Ok);
    newSavePeaks(desk);
    EXPECT_EQ(services.dialogs.last().text,
              "The file is saved, but a comparison that reads it will not find everything:\r\n"
              "Row 1 (A,B): the name is read as more than one item\r\n"
              "Row 2 (GAP): the peaks behind an empty cell are left out");
}

TEST_F(Peaks, CancellingDoesNothingAndAFailureIsTold)
{
    read(station({"A"}, {1, 2, 3}));
    services.dialogs.willCancel();
    newSavePeaks(desk);
    services.dialogs.willAnswer("");
    newSavePeaks(desk);
    EXPECT_EQ(services.dialogs.shown().size(), 2u);
    services.dialogs.willAnswer(services.path("no/such/folder.pek"));
    services.dialogs.willAnswer(Button::Ok);
    newSavePeaks(desk);
    EXPECT_TRUE(services.dialogs.last().text.startsWith("The peak flows could not be saved as "));
    services.put("old.pek", "earlier state");
    services.dialogs.willAnswer(services.path("old.pek"));
    newSavePeaks(desk);
    EXPECT_EQ(services.bytes("old.pek.bak"), "earlier state");
}

TEST_F(Peaks, TheOtherLayoutShowsTheNextRecordAndRunsPastTheEnd)
{
    struct Row
    {
        const char* name;
        std::string tape;
        std::string expected;
    };
    const Row rows[] = {
        {"more ratios than plans",
         risingStation({"A", "5", "1", "1", "2"}, 1, 2) + risingStation({"B", "5", "1", "1", "2"}, 1, 2, 3),
         "KK Station|Ratio  1|Ratio  2\nA Plan  1|2|3\nB Plan  1|4|"},
        {"no more ratios than plans",
         risingStation({"A", "5", "1", "2", "1"}, 1, 2) + risingStation({"B", "5", "1", "2", "1"}, 1, 2, 3),
         "KK Station|Plan  1|Plan  2\nA Ratio  1|2|3\nB Ratio  1|4|"},
        {"through single precision", station({"A", "5", "1", "1", "2", "1"}, {1.5, 12345.6789}),
         "KK Station|Ratio  1|Ratio  2\nA Plan  1|12345.68|"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        read(row.tape);
        const QString path = services.put("TAPE21", QByteArray::fromStdString(row.tape));
        FlexGrid index, target;
        RunCounts counts;
        ASSERT_FALSE(newGetHydrodata(path, index, nullptr, counts));
        EXPECT_THROW(getpeaks(desk.tables().GRAPHER.List1.items, counts, index, desk.tables().peakRow, target),
                     std::out_of_range);
        EXPECT_EQ(gridText(target), row.expected);
    }
}

} // namespace
} // namespace kalvo
