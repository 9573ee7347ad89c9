// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace hec1 {

/// Days since 1 January 1970 in the Gregorian calendar. Source: Hinnant, chrono-compatible low-level date algorithms.
long dayNumber(int year, int month, int day);

/// A date of the form 15JUN90 (blanks do not matter, letters of any case) in the given century (19 for 1990).
/// Empty when it is not a date of the calendar.
std::optional<long> parseDate(std::string_view text, int century);

/// A time of day of the form hhmm, also 730 for 0730 and 2400; minutes from midnight. Empty when it is not a time.
std::optional<int> parseTimeOfDay(std::string_view text);

/// Start and interval of the run; turns minutes from the start into what the report prints.
class SimClock
{
public:
    SimClock() = default;
    /// @param day dayNumber of the start, or empty when the deck gives no date: days are then counted from 1.
    SimClock(std::optional<long> day, int minuteOfDay) : m_day(day), m_minute(minuteOfDay) {}

    bool dated() const { return m_day.has_value(); }
    long startDay() const { return m_day.value_or(1); }
    int startMinute() const { return m_minute; }

    /// " 15 JUN 0730", or "  1     0730" without a date.
    std::string dayAndTime(long minutes) const;
    /// "15JUN90", or the number of the day.
    std::string date(long minutes) const;
    /// "0730".
    std::string timeOfDay(long minutes) const;

private:
    std::optional<long> m_day;
    int m_minute = 0;
};

} // namespace hec1
