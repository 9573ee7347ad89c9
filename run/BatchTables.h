// SPDX-License-Identifier: GPL-3.0-or-later
// The results of a run without a window, as bytes: CSV by RFC 4180 (CR LF, quotes where a field needs them) and JSON,
// in UTF-8, always with a dot in numbers.
#pragma once

#include "run/RunOutcome.h"
#include "run/Tape21.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <string_view>

namespace kalvo {

/// Units of a deck: English, or metric with an IM card.
struct DeckUnits
{
    bool isMetric = false;
    const char* flow() const { return isMetric ? "m3/s" : "cfs"; }
    const char* volume() const { return isMetric ? "1000 m3" : "ac-ft"; }
};
DeckUnits unitsOfDeck(std::string_view deck);

/// Volume under a hydrograph by the trapezoidal rule, in acre-feet (43,560 cubic feet) or thousands of cubic metres.
double hydrographVolume(const std::vector<double>& flows, double intervalMinutes, DeckUnits units);
/// Hours from the start to the first of the largest flows; 0 for a hydrograph without a positive flow.
double hoursToPeak(const std::vector<double>& flows, double intervalMinutes);

inline constexpr auto kPeaksHeading = "deck,station,plan,ratio,jd,peak,time_to_peak_h,volume,unit\r\n";
inline constexpr auto kHydrographsHeading = "deck,station,plan,ratio,jd,minutes,flow,unit\r\n";
/// Rows of a deck without the heading, in full order. `unit` is that of the flow.
QByteArray peaksCsv(const QString& deck, const Tape21& tape, DeckUnits units);
QByteArray hydrographsCsv(const QString& deck, const Tape21& tape, DeckUnits units);
/// One object; `messages` is what was told of the deck.
QByteArray deckJson(const QString& deck, const RunOutcome& outcome, int status, const QStringList& messages,
                    const Tape21& tape, DeckUnits units);
/// Puts the deck ahead of each row of HEC-1's own table; `withHeading` keeps its first row.
QByteArray withDeckColumn(const QString& deck, const QByteArray& csv, bool withHeading);

} // namespace kalvo
