// SPDX-License-Identifier: GPL-3.0-or-later
#include "results/PeakLayout.h"

#include "platform/text.h"
#include "run/IndexTable.h"

#include <algorithm>

namespace kalvo {

namespace {

constexpr int kSingleDigits = 7; ///< that a single-precision number shows

QString throughSingle(const QString& text)
{
    const auto single = static_cast<float>(leadingNumber(text));
    return generalText(leadingNumber(QString::number(static_cast<double>(single), 'g', kSingleDigits)));
}

} // namespace

void getpeaks(const QStringList& stationNames, const RunCounts& counts, const FlexGrid& indexTable,
              const FlexGrid& peakRow, FlexGrid& target)
{
    const FlexGrid::Bulk bulk(target);
    const bool ratiosAcross = counts.numRatios > counts.numPlans;
    const int across = ratiosAcross ? counts.numRatios : counts.numPlans;
    const int down = ratiosAcross ? counts.numPlans : counts.numRatios;
    const QString ratio = QStringLiteral("Ratio "), plan = QStringLiteral("Plan ");
    target.setCols(std::max(target.cols(), across + 1));
    target.setTextMatrix(0, 0, QStringLiteral("KK Station"));
    int row = 0;
    for (int jd = 1; jd <= counts.numJD; ++jd) {
        for (int station = 1; station <= stationNames.size(); ++station) {
            for (int d = 1; d <= down; ++d) {
                target.setRows(std::max(target.rows(), ++row + 1));
                target.setTextMatrix(row, 0,
                                     Trim(stationNames.at(station - 1)) + QLatin1Char(' ') +
                                         (ratiosAcross ? plan : ratio) + signedText(d));
                for (int a = 1; a <= across; ++a) {
                    target.setTextMatrix(0, a, (ratiosAcross ? ratio : plan) + signedText(a));
                    const int found =
                        newGetGraphindex(indexTable, station, jd, ratiosAcross ? a : d, ratiosAcross ? d : a);
                    target.setTextMatrix(row, a, throughSingle(peakRow.textMatrix(1, found)));
                }
            }
        }
    }
}

} // namespace kalvo
