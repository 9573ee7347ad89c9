// SPDX-License-Identifier: GPL-3.0-or-later
#include "graphics/HydrographPicture.h"
#include "platform/Services.h"

#include <QImage>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace kalvo;

namespace {

const QByteArray kHeading = "deck,station,plan,ratio,jd,minutes,flow,unit\r\n";

/// Two stations, `ratios` hydrographs each, a triangle of 41 ordinates.
QByteArray tableOf(int ratios)
{
    QByteArray csv = kHeading;
    for (const char* station : {"SITE", "\"A,\"\"B\"\"\""})
        for (int ratio = 1; ratio <= ratios; ++ratio)
            for (int i = 0; i <= 40; ++i)
                csv += QByteArray("d.dat,") + station + ",1," + QByteArray::number(ratio) + ",1," +
                       QByteArray::number(15 * i) + "," + QByteArray::number(ratio * (20 - std::abs(20 - i))) +
                       ",cfs\r\n";
    return csv;
}

/// Share of pixels of the picture that are not white.
double inkOf(const QImage& image)
{
    qsizetype ink = 0;
    for (int y = 0; y < image.height(); y += 2)
        for (int x = 0; x < image.width(); x += 2)
            ink += image.pixel(x, y) != 0xFFFFFFFF;
    return 4.0 * static_cast<double>(ink) / (static_cast<double>(image.width()) * image.height());
}

} // namespace

TEST(HydrographCsv, ReadsQuotedNamesAndPartsHydrographs)
{
    QString problem;
    const auto series = readHydrographCsv(tableOf(3), problem);
    ASSERT_TRUE(problem.isEmpty()) << problem.toStdString();
    ASSERT_EQ(series.size(), 6);
    EXPECT_EQ(series[3].station, QStringLiteral("A,\"B\""));
    EXPECT_EQ(series[4].ratio, 2);
    EXPECT_EQ(series[4].minutes.size(), 41);
    EXPECT_EQ(series[4].flows[20], 40.0);
}

struct BadTable
{
    const char* name;
    QByteArray csv;
    const char* says;
};

class BadTables : public testing::TestWithParam<BadTable>
{
};

TEST_P(BadTables, AreNamedWithTheirLine)
{
    QString problem;
    readHydrographCsv(GetParam().csv, problem);
    EXPECT_TRUE(problem.contains(QLatin1String(GetParam().says))) << problem.toStdString();
}

INSTANTIATE_TEST_SUITE_P(, BadTables,
                         testing::Values(BadTable{"Empty", "", "heading"},
                                         BadTable{"Peaks", "deck,station\r\n", "heading"},
                                         BadTable{"WordForFlow", kHeading + "d,A,1,1,1,0,x,cfs\r\n", "Line 2"},
                                         BadTable{"CutRow", kHeading + "d,A,1,1,1,0,5,cfs\r\nd,A,1,1", "Line 3"},
                                         BadTable{"OpenQuote", kHeading + "d,\"A,1,1,1,0,5,cfs\r\n", "Line 2"}),
                         [](const auto& row) { return row.param.name; });

TEST(HydrographPicture, WritesEveryKindAndShowsTheCurves)
{
    QTemporaryDir folder;
    QString problem;
    for (const int ratios : {1, 6}) {
        const auto series = readHydrographCsv(tableOf(ratios), problem);
        for (const char* kind : {"png", "svg", "pdf"}) {
            const QString path = folder.filePath(QStringLiteral("h%1.%2").arg(ratios).arg(QLatin1String(kind)));
            EXPECT_EQ(writeHydrographPicture(series, QStringLiteral("TITLE"), path), QString());
            const auto bytes = readFile(path);
            ASSERT_TRUE(bytes) << kind;
            if (kind == QByteArray("png"))
                EXPECT_GT(inkOf(QImage::fromData(*bytes)), 0.005);
            else if (kind == QByteArray("svg"))
                EXPECT_GT(bytes->count("<polyline") + bytes->count("<path"), 4);
            else
                EXPECT_TRUE(bytes->startsWith("%PDF-"));
        }
    }
}

TEST(HydrographPicture, SaysWhyNothingWasWritten)
{
    QString problem;
    const auto series = readHydrographCsv(tableOf(1), problem);
    EXPECT_TRUE(writeHydrographPicture(series, {}, QStringLiteral("x.gif")).contains(QLatin1String(".svg")));
    EXPECT_TRUE(writeHydrographPicture({}, {}, QStringLiteral("x.png")).contains(QLatin1String("no hydrograph")));
    EXPECT_TRUE(
        writeHydrographPicture(series, {}, QStringLiteral("/nowhere/at/all.png")).contains(QLatin1String("/nowhere")));
}
