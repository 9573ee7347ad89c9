// SPDX-License-Identifier: GPL-3.0-or-later
#include "run/ReportOutline.h"

#include "tests/run/EngineReport.h"

#include <QRegularExpression>
#include <QStringList>

#include <gtest/gtest.h>

namespace kalvo {
namespace {

/// The outline as text: line (from 1), parts indented, words.
QString outlineOf(const TextBuffer& report, qsizetype linesAtOnce = 1'000'000)
{
    ReportOutline outline(report);
    while (outline.scan(linesAtOnce))
        ;
    QStringList lines;
    for (const OutlineEntry& entry : outline.entries())
        lines << QStringLiteral("%1%2 %3")
                     .arg(entry.isPart() ? "  " : "")
                     .arg(entry.line + 1)
                     .arg(outlineTitle(report, entry));
    return lines.join(u'\n');
}

QString words(QString outline)
{
    static const QRegularExpression kLine(QStringLiteral("(^|\n)( *)\\d+ "));
    return outline.replace(kLine, QStringLiteral("\\1\\2"));
}

TEST(ReportOutline, ListsStationsAndTablesOfAReservoirReport)
{
    const TextBuffer report = engineReport(QStringLiteral(KALVO_SOURCE_DIR "/examples/reservoir.dat"));
    EXPECT_EQ(words(outlineOf(report)).toStdString(), R"(Title page
Input listing
Diagram of the stream network
Job data
WARNING COMPUTATION INTERVAL 15 MINUTES IS LONGER THAN 0.29 TIMES THE LAG OF 0.75 HOURS: THE UNIT GRAPH IS POORLY DRAWN
CEDAR  INFLOW TO CEDAR LAKE
  UNIT HYDROGRAPH
  HYDROGRAPH AT STATION CEDAR
LAKE  ROUTE THROUGH CEDAR LAKE
  HYDROGRAPH AT STATION LAKE
TWN  ROUTE LAKE OUTFLOW TO TOWN
  HYDROGRAPH AT STATION TWN
LOCAL  LOCAL AREA BETWEEN THE DAM AND TOWN
  UNIT HYDROGRAPH
  HYDROGRAPH AT STATION LOCAL
TOWN  CEDAR CREEK AT TOWN
  HYDROGRAPH AT STATION TOWN
Runoff summary
  HYDROGRAPH AT CEDAR
  ROUTED TO LAKE
  ROUTED TO TWN
  HYDROGRAPH AT LOCAL
  2 COMBINED AT TOWN
Dam LAKE
NORMAL END OF HEC-1)");
    const QString atOnce = outlineOf(report);
    EXPECT_EQ(outlineOf(report, 7), atOnce) << "a piece at a time";
}

TEST(ReportOutline, SummariesListTheirStations)
{
    const TextBuffer plans = engineReport(QStringLiteral(KALVO_SOURCE_DIR "/examples/plans.dat"));
    EXPECT_TRUE(words(outlineOf(plans))
                    .endsWith("Job data\nPeaks of plans and ratios\n  HYDROGRAPH AT UPPER\n  ROUTED TO DAM\n"
                              "  ROUTED TO REACH\n  HYDROGRAPH AT LOWER\n  2 COMBINED AT MILL\nNORMAL END OF HEC-1"));
}

TEST(ReportOutline, TellsErrorsAndDoesNotTakeCardsOrNumbersForHeadings)
{
    const TextBuffer report(QByteArray("\r\n"
                                       "     12 KK  *  NAME\r\n"
                                       "     12      KK    SUB1 * IN THE LISTING\r\n"
                                       "+             1.\r\n"
                                       "             HYDROGRAPH AT\r\n"
                                       " *** HEC1 ERROR 14 *** NO SUCH CARD\r\n"
                                       " *** HEC-1 ERROR  3 ***\r\n"
                                       " ***** *** ***\r\n"
                                       "*****WARNING***** FLOW IS BELOW ZERO\r\n"
                                       "    2 ERRORS IN STREAM SYSTEM\r\n"
                                       "1\r\n"
                                       "   RUNOFF SUMMARY\r\n"
                                       "  ROUTED TO"));
    EXPECT_EQ(outlineOf(report).toStdString(), "2 NAME\n"
                                               "6 HEC1 ERROR 14 NO SUCH CARD\n"
                                               "7 HEC-1 ERROR 3\n"
                                               "9 WARNING FLOW IS BELOW ZERO\n"
                                               "10 2 ERRORS IN STREAM SYSTEM\n"
                                               "12 Runoff summary\n"
                                               "  13 ROUTED TO");
    EXPECT_EQ(outlineOf(TextBuffer()), "");
}

} // namespace
} // namespace kalvo
