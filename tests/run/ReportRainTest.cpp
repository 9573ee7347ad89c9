// SPDX-License-Identifier: GPL-3.0-or-later
#include "run/ReportRain.h"

#include "platform/text.h"
#include "tests/support/GridText.h"
#include "tests/support/ScriptedServices.h"

#include <QProcess>

#include <gtest/gtest.h>

namespace kalvo {
namespace {

constexpr auto kHead =
    "    DA MON HRMN  ORD    RAIN    LOSS    EXCESS      COMP Q        *    DA MON HRMN  ORD    RAIN    "
    "LOSS    EXCESS      COMP Q\r\n";
constexpr auto kRow =
    "     1 JAN 0000    1     .00     .00       .00          0.        *     1 JAN 0010    3     .04     "
    ".01       .03        242.\r\n";
constexpr auto kRowWithoutDate = "     1     0005    2    1.20     .00       .00          0.        *\r\n";
constexpr auto kEnd = "                                                                  *\r\n ******\r\n";

TEST(ReportRain, NamesEachTableByStationPlanRatioAndStorm)
{
    ScriptedServices services;
    QByteArray report;
    for (const char* heading : {"PLAN 1, RATIO =   .50", "PLAN 1, RATIO =   .50", "PLAN 2, RATIO =   .50"})
        report += QByteArray("      HYDROGRAPH AT STATION  UP 1\r\n      ") + heading + "\r\n\r\n *****\r\n" + kHead +
                  kRow + kRowWithoutDate + kEnd + "        (MM)   12.\r\n";
    report += QByteArray("      DIVERSION HYDROGRAPH POND\r\n *****\r\n") + kHead + kRow + kEnd;
    report += QByteArray("      HYDROGRAPH AT STATION LOW\r\n      TRANSPOSITION AREA      10.0 SQ MI\r\n") + kHead +
              kRow + "     1 JAN 0005    x   words\r\n" + kEnd;
    report += QByteArray("      HYDROGRAPH AT STATION LOW\r\n      TRANSPOSITION AREA      50.0 SQ MI\r\n") + kHead;
    std::string found;
    for (const ReportRain& rain : readReportRain(services.put("checky.out", report))) {
        found += rain.station.toStdString() + ' ' + std::to_string(rain.ratio) + std::to_string(rain.plan) +
                 std::to_string(rain.jd) + ' ' + rain.unit.toStdString();
        for (const double depth : rain.depths)
            found += ' ' + QString::number(depth).toStdString();
        found += '\n';
    }
    EXPECT_EQ(found,
              "UP 1 111 mm 0 1.2 0.04\nUP 1 211 mm 0 1.2 0.04\nUP 1 121 mm 0 1.2 0.04\nLOW 111  0 0 0.04\nLOW 112 \n")
        << "equal ratios are two; an ordinate that no line tells is dry; a table that is cut has what stands there";
}

TEST(ReportRain, OfARealRunIsTheRainThatWasComputed)
{
    ScriptedServices services;
    QByteArray deck = readFile(QStringLiteral(KALVO_SOURCE_DIR "/examples/detention.dat")).value_or(QByteArray());
    deck.replace("IO     5", "IO     0"); // asks for the tables
    services.put("d.dat", deck);
    QProcess hec1;
    hec1.setWorkingDirectory(services.directory.path());
    hec1.start(QStringLiteral(KALVO_BIN_DIR "/hec1"), {"INPUT=d.dat", "OUTPUT=out.txt", "DETAILS=details.csv"});
    ASSERT_TRUE(hec1.waitForFinished());
    const auto all = readReportRain(services.path("out.txt"));
    ASSERT_EQ(all.size(), 6u) << "six ratios at the one subbasin";
    EXPECT_EQ(all[5].unit, "in");
    int compared = 0;
    for (const QString& line : linesOf(services.bytes("details.csv"))) {
        const QStringList item = line.split(u','); // station, plan, ratio, jd, quantity, minutes, value, unit
        if (item.value(4) != u"RAIN")
            continue;
        const ReportRain& rain = all.at(static_cast<size_t>(item[2].toInt()) - 1);
        const auto at = static_cast<size_t>(item[5].toDouble() / 5.0);
        ASSERT_LT(at, rain.depths.size());
        EXPECT_NEAR(rain.depths[at], item[6].toDouble(), 0.005 + 1e-9)
            << line.toStdString() << ": printed to hundredths";
        ++compared;
    }
    EXPECT_EQ(compared, 6 * 300);
}

} // namespace
} // namespace kalvo
