// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/network/SimTime.h"

#include <array>
#include <cstdlib>

namespace hec1 {

namespace {

constexpr std::array<std::string_view, 12> kMonths{"JAN", "FEB", "MAR", "APR", "MAY", "JUN",
                                                   "JUL", "AUG", "SEP", "OCT", "NOV", "DEC"};
constexpr long kMinutesOfDay = 24 * 60;

struct CivilDate
{
    int year, month, day;
};

CivilDate civilDate(long days)
{
    days += 719468;
    const long era = (days >= 0 ? days : days - 146096) / 146097;
    const auto doe = static_cast<unsigned>(days - era * 146097);
    const unsigned yoe = (doe - doe / 1460 + doe / 36524 - doe / 146096) / 365;
    const unsigned doy = doe - (365 * yoe + yoe / 4 - yoe / 100);
    const unsigned mp = (5 * doy + 2) / 153;
    const int month = static_cast<int>(mp < 10 ? mp + 3 : mp - 9);
    const int year = static_cast<int>(static_cast<long>(yoe) + era * 400) + (month <= 2 ? 1 : 0);
    return {year, month, static_cast<int>(doy - (153 * mp + 2) / 5 + 1)};
}

std::string digits(long value, std::size_t width, char fill)
{
    std::string text = std::to_string(value);
    return std::string(text.size() < width ? width - text.size() : 0, fill) + text;
}

} // namespace

long dayNumber(int year, int month, int day)
{
    const long y = year - (month <= 2 ? 1 : 0);
    const long era = (y >= 0 ? y : y - 399) / 400;
    const auto yoe = static_cast<unsigned>(y - era * 400);
    const unsigned doy =
        (153 * static_cast<unsigned>(month + (month > 2 ? -3 : 9)) + 2) / 5 + static_cast<unsigned>(day) - 1;
    const unsigned doe = yoe * 365 + yoe / 4 - yoe / 100 + doy;
    return era * 146097 + static_cast<long>(doe) - 719468;
}

std::optional<long> parseDate(std::string_view text, int century)
{
    int day = 0, year = 0;
    std::size_t dayDigits = 0, yearDigits = 0;
    std::string letters;
    for (const char c : text) {
        if (c == ' ')
            continue;
        const bool digit = c >= '0' && c <= '9';
        if (digit && letters.empty()) {
            day = day * 10 + (c - '0');
            if (++dayDigits > 2)
                return std::nullopt;
        } else if (digit) {
            year = year * 10 + (c - '0');
            if (++yearDigits > 2)
                return std::nullopt;
        } else if (yearDigits == 0 && letters.size() < 3) {
            letters += c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
        } else {
            return std::nullopt;
        }
    }
    int month = 0;
    for (std::size_t m = 0; m < kMonths.size(); ++m)
        if (letters == kMonths[m])
            month = static_cast<int>(m) + 1;
    if (month == 0 || dayDigits == 0 || yearDigits == 0 || day < 1)
        return std::nullopt;
    const long days = dayNumber(century * 100 + year, month, day);
    const CivilDate back = civilDate(days);
    if (back.day != day || back.month != month)
        return std::nullopt;
    return days;
}

std::optional<int> parseTimeOfDay(std::string_view text)
{
    int value = 0;
    std::size_t count = 0;
    for (const char c : text) {
        if (c < '0' || c > '9' || ++count > 4)
            return std::nullopt;
        value = value * 10 + (c - '0');
    }
    const int hours = value / 100, minutes = value % 100;
    if (minutes > 59 || hours > 24 || (hours == 24 && minutes > 0))
        return std::nullopt;
    return hours * 60 + minutes;
}

std::string SimClock::dayAndTime(long minutes) const
{
    const long total = m_minute + minutes;
    const long day = startDay() + total / kMinutesOfDay;
    if (!dated())
        return digits(day, 3, ' ') + "     " + timeOfDay(minutes);
    const CivilDate date = civilDate(day);
    return digits(date.day, 3, ' ') + " " + std::string(kMonths[static_cast<std::size_t>(date.month - 1)]) + " " +
           timeOfDay(minutes);
}

std::string SimClock::date(long minutes) const
{
    const long day = startDay() + (m_minute + minutes) / kMinutesOfDay;
    if (!dated())
        return std::to_string(day);
    const CivilDate date = civilDate(day);
    return std::to_string(date.day) + std::string(kMonths[static_cast<std::size_t>(date.month - 1)]) +
           digits(date.year % 100, 2, '0');
}

std::string SimClock::timeOfDay(long minutes) const
{
    const long inDay = (m_minute + minutes) % kMinutesOfDay;
    return digits(inDay / 60 * 100 + inDay % 60, 4, '0');
}

} // namespace hec1
