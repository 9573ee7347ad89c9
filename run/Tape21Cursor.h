// SPDX-License-Identifier: GPL-3.0-or-later
// The one way of walking over a TAPE21: header lines read as lines, numbers read as free-format items. In a header of
// its own because the loop over millions of items must be compiled into each reader.
#pragma once

#include "platform/text.h"
#include "run/ByteWindow.h"

#include <QtGlobal>

#include <array>
#include <cmath>
#include <cstdint>
#include <string_view>

namespace kalvo {

class Tape21Cursor
{
public:
    enum class Got
    {
        Item,
        NotANumber,
        EndOfFile
    };

    explicit Tape21Cursor(ByteWindow& window) : m_window(window), m_at(window.begin()), m_end(window.end()) {}

    bool atEnd() { return m_at == m_end && !more(m_at); }
    qint64 position() const { return m_window.position(m_at); }
    qint64 remaining() const { return m_window.remaining(m_at); }
    /// Number of the line that the cursor stands in, from 1.
    qint64 line() const { return m_line; }
    /// The item that was no number.
    std::string_view badItem() const { return m_badItem; }

    /// The next line without its end, blanks at its end kept because the fields count from there. Valid until the next
    /// call. False when it is longer than any header can be.
    bool headerLine(std::string_view& text);
    /// The next number. Blanks, tabs, commas and line ends part items; any run of them counts as one.
    Got number(double& value);
    /// Goes behind the line end that follows the last number of a block: blanks and one line end, so that an empty line
    /// behind it is a line of its own.
    void passLineEnd();

private:
    static constexpr qint64 kLongestHeader = 1 << 20;
    static constexpr int kExactDigits = 19;     ///< so many decimal digits always fit 64 bits
    static constexpr int kExactPowerOfTen = 22; ///< 10^22 is the last power of ten that a double holds exactly

    static bool isSeparator(char c) { return c == ' ' || c == '\n' || c == '\r' || c == ',' || c == '\t'; }
    static bool isDigit(char c) { return static_cast<unsigned char>(c - '0') <= 9; }
    static double powerOfTen(int exponent)
    {
        static constexpr std::array<double, kExactPowerOfTen + 1> kPowers = {
            1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,  1e8,  1e9,  1e10, 1e11,
            1e12, 1e13, 1e14, 1e15, 1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};
        return kPowers[static_cast<size_t>(exponent)];
    }

    bool more(const char*& from)
    {
        const bool got = m_window.more(from);
        m_end = m_window.end();
        return got;
    }
    Got itemByItsWhole(double& value);

    ByteWindow& m_window;
    const char* m_at;
    const char* m_end;
    qint64 m_line = 1;
    std::string_view m_badItem;
};

inline Tape21Cursor::Got Tape21Cursor::number(double& value)
{
    for (;;) {
        while (m_at != m_end && isSeparator(*m_at))
            m_line += *m_at++ == '\n';
        if (m_at != m_end)
            break;
        if (!more(m_at))
            return Got::EndOfFile;
    }
    // The common form, digits with a point, is read here: a whole number below 2^53 times or divided by an exact power
    // of ten is the correctly rounded double, the same that std::from_chars gives, at a third of its time.
    const char* s = m_at;
    const bool negative = *s == '-';
    s += negative || *s == '+';
    const char* const first = s;
    std::uint64_t digits = 0;
    while (s != m_end && isDigit(*s))
        digits = digits * 10 + static_cast<std::uint64_t>(*s++ - '0');
    std::ptrdiff_t count = s - first;
    std::ptrdiff_t decimals = 0;
    if (s != m_end && *s == '.') {
        const char* const point = s++;
        while (s != m_end && isDigit(*s))
            digits = digits * 10 + static_cast<std::uint64_t>(*s++ - '0');
        decimals = s - point - 1;
        count += decimals;
    }
    if (s == m_end || !isSeparator(*s) || count == 0 || count > kExactDigits || digits >> 53 != 0 ||
        decimals > kExactPowerOfTen)
        return itemByItsWhole(value);
    const double magnitude = static_cast<double>(digits) / powerOfTen(static_cast<int>(decimals));
    value = negative ? -magnitude : magnitude;
    m_at = s;
    return Got::Item;
}

inline Tape21Cursor::Got Tape21Cursor::itemByItsWhole(double& value)
{
    const char* s = m_at;
    for (;;) {
        while (s != m_end && !isSeparator(*s))
            ++s;
        const std::ptrdiff_t length = s - m_at;
        if (s != m_end || length > kLongestHeader || !more(m_at))
            break;
        s = m_at + length;
    }
    const std::string_view item(m_at, static_cast<size_t>(s - m_at));
    if (!parseWholeNumber(item, value) || !std::isfinite(value)) {
        m_badItem = item;
        return Got::NotANumber;
    }
    m_at = s;
    return Got::Item;
}

inline void Tape21Cursor::passLineEnd()
{
    while (!atEnd() && (*m_at == ' ' || *m_at == '\t'))
        ++m_at;
    if (atEnd())
        return;
    if (*m_at == '\r') {
        ++m_at;
        if (atEnd() || *m_at != '\n')
            return;
    }
    if (*m_at == '\n') {
        ++m_at;
        ++m_line;
    }
}

inline bool Tape21Cursor::headerLine(std::string_view& text)
{
    const char* s = m_at;
    for (;;) {
        while (s != m_end && *s != '\n' && *s != '\r')
            ++s;
        const std::ptrdiff_t length = s - m_at;
        if (length > kLongestHeader)
            return false;
        // The byte behind a CR decides whether the end is one byte or two, so it must be in the window.
        if (s != m_end && (*s == '\n' || s + 1 != m_end))
            break;
        if (!more(m_at)) {
            s = m_at + length;
            break;
        }
        s = m_at + length;
    }
    text = {m_at, static_cast<size_t>(s - m_at)};
    m_at = s;
    if (m_at != m_end && *m_at == '\r')
        ++m_at;
    if (m_at != m_end && *m_at == '\n')
        ++m_at;
    if (m_at != s)
        ++m_line;
    return true;
}

} // namespace kalvo
