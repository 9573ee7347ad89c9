// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QString>
#include <QVector>

namespace kalvo {

/// One hydrograph of the long table that `kalvo-run --hydrographs` writes.
struct HydrographSeries
{
    QString deck;
    QString station;
    int plan = 1; ///< from 1, as ratio and JD
    int ratio = 1;
    int jd = 1;
    QString unit; ///< "cfs" or "m3/s"
    QVector<double> minutes;
    QVector<double> flows;
};

/// Reads `deck,station,plan,ratio,jd,minutes,flow,unit` (RFC 4180, heading line first) in one pass. Rows of one
/// hydrograph must follow each other, as they are written.
/// @param problem says what is wrong and in which line; the series read so far are given all the same.
QVector<HydrographSeries> readHydrographCsv(const QByteArray& bytes, QString& problem);

} // namespace kalvo
