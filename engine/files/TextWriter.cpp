// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/files/TextWriter.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstring>

namespace hec1 {

namespace {

constexpr std::array<double, 16> kPowers{1e0, 1e1, 1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                         1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};

constexpr auto kPairs = [] {
    std::array<char, 200> pairs{};
    for (std::size_t i = 0; i < 100; ++i) {
        pairs[2 * i] = static_cast<char>('0' + i / 10);
        pairs[2 * i + 1] = static_cast<char>('0' + i % 10);
    }
    return pairs;
}();

void writePair(char* to, std::uint32_t value)
{
    std::memcpy(to, kPairs.data() + std::size_t{2} * value, 2);
}

void writeEight(char* to, std::uint32_t value)
{
    const std::uint32_t high = value / 10000, low = value % 10000;
    writePair(to, high / 100);
    writePair(to + 2, high % 100);
    writePair(to + 4, low / 100);
    writePair(to + 6, low % 100);
}

// Formats into the end of `buffer` and returns where the text begins.
char* fixedInto(double value, int decimals, char* end)
{
    const double scaled = std::fabs(value) * kPowers[static_cast<std::size_t>(decimals)];
    char* at = end;
    if (!(scaled < 9e17)) { // past what an integer holds; such numbers fit no field either
        char text[400];
        const auto done = std::to_chars(text, text + sizeof text, value, std::chars_format::scientific, 5);
        const auto size = static_cast<std::size_t>(done.ptr - text);
        std::memcpy(end - size, text, size);
        return end - size;
    }
    auto whole = static_cast<std::uint64_t>(scaled + 0.5);
    const bool negative = value < 0 && whole > 0;
    bool any = false;
    for (int i = 0; i < decimals; ++i) {
        *--at = static_cast<char>('0' + whole % 10);
        whole /= 10;
    }
    *--at = '.';
    while (whole > 0) {
        *--at = static_cast<char>('0' + whole % 10);
        whole /= 10;
        any = true;
    }
    if (!any && decimals == 0)
        *--at = '0';
    if (negative)
        *--at = '-';
    return at;
}

} // namespace

std::string fixedText(double value, int decimals)
{
    char buffer[440];
    char* const end = buffer + sizeof buffer;
    return {fixedInto(value, decimals, end), end};
}

TextWriter::~TextWriter()
{
    if (m_file)
        close();
}

bool TextWriter::open(const std::string& path, bool append)
{
    m_path = path;
    m_failed = false;
    m_flushed = 0;
    m_buffer.clear();
    m_file.reset(std::fopen(path.c_str(), append ? "ab" : "wb"));
    m_failed = m_file == nullptr;
    if (m_file) {
        std::setvbuf(m_file.get(), nullptr, _IONBF, 0);
        m_buffer.reserve(kFlushAt + kFlushAt / 4);
    }
    return !m_failed;
}

void TextWriter::flush()
{
    if (m_file && !m_failed && !m_buffer.empty())
        m_failed = std::fwrite(m_buffer.data(), 1, m_buffer.size(), m_file.get()) != m_buffer.size();
    m_flushed += m_buffer.size();
    m_buffer.clear();
}

bool TextWriter::close()
{
    if (!m_file)
        return !m_failed;
    flush();
    if (std::fflush(m_file.get()) != 0)
        m_failed = true;
    if (std::fclose(m_file.release()) != 0)
        m_failed = true;
    return !m_failed;
}

bool TextWriter::discard()
{
    m_buffer.clear();
    m_file.reset();
    return open(m_path) && close();
}

TextWriter& TextWriter::left(std::string_view text, std::size_t width)
{
    m_buffer += text;
    m_buffer.append(text.size() < width ? width - text.size() : 0, ' ');
    return *this;
}

TextWriter& TextWriter::right(std::string_view text, std::size_t width)
{
    m_buffer.append(text.size() < width ? width - text.size() : 0, ' ');
    m_buffer += text;
    return *this;
}

TextWriter& TextWriter::centred(std::string_view text, std::size_t width)
{
    const std::size_t room = text.size() < width ? width - text.size() : 0;
    return spaces(room / 2).text(text).spaces(room - room / 2);
}

TextWriter& TextWriter::integer(long value, std::size_t width)
{
    char buffer[24];
    const auto done = std::to_chars(buffer, buffer + sizeof buffer, value);
    return right({buffer, static_cast<std::size_t>(done.ptr - buffer)}, width);
}

TextWriter& TextWriter::fixed(double value, std::size_t width, int decimals)
{
    char buffer[440];
    char* const end = buffer + sizeof buffer;
    const char* const at = fixedInto(value, decimals, end);
    const auto size = static_cast<std::size_t>(end - at);
    if (size > width)
        m_buffer.append(width, '*');
    else
        right({at, size}, width);
    return *this;
}

namespace {

// Flows below this have no meaning in any unit, and the long tails of routed floods are full of them.
constexpr double kSmallest = 1e-9;

// The eight digits of a value between 1e-9 and 1e8 and how many of them stand ahead of the point (0 or less for values
// below 1).
struct EightDigits
{
    std::uint32_t digits;
    int before;
};

EightDigits eightDigits(double size)
{
    // size x 10^shift has eight digits ahead of the point; powers up to 10^22 are exact.
    static constexpr std::array<double, 17> kShifts{1e0, 1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7, 1e8,
                                                    1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15, 1e16};
    static constexpr std::array<double, 17> kLimits{1e8,  1e7,  1e6,  1e5,  1e4,  1e3,  1e2,  1e1, 1e0,
                                                    1e-1, 1e-2, 1e-3, 1e-4, 1e-5, 1e-6, 1e-7, 1e-8};
    std::size_t shift = size >= 1 ? 7 : 16;
    const std::size_t least = size >= 1 ? 0 : 8;
    while (shift > least && size >= kLimits[shift])
        --shift;
    auto digits = static_cast<std::uint32_t>(size * kShifts[shift] + 0.5);
    if (digits >= 100000000) { // rounding up has made a ninth digit
        digits = 10000000;
        return {digits, 9 - static_cast<int>(shift)};
    }
    return {digits, 8 - static_cast<int>(shift)};
}

char* preciseInto(double value, char* at)
{
    double size = std::fabs(value);
    if (!(size >= kSmallest)) {
        *at++ = '0';
        return at;
    }
    if (value < 0)
        *at++ = '-';
    if (size >= 99999999)
        return std::to_chars(at, at + 24, size, std::chars_format::scientific, 7).ptr;
    const auto [digits, before] = eightDigits(size);
    char eight[8];
    writeEight(eight, digits);
    int last = 8;
    while (last > std::max(1, before) && eight[last - 1] == '0')
        --last;
    if (before <= 0) {
        *at++ = '0';
        *at++ = '.';
        for (int i = before; i < 0; ++i)
            *at++ = '0';
        std::memcpy(at, eight, 8);
        return at + last;
    }
    std::memcpy(at, eight, 8);
    if (last <= before)
        return at + before;
    at[before] = '.';
    std::memcpy(at + before + 1, eight + before, static_cast<std::size_t>(8 - before));
    return at + last + 1;
}

constexpr std::size_t kPreciseRoom = 40;

} // namespace

// Eight significant digits are one integer, which two-digit steps turn into text; a general conversion would take
// several times as long, and files of hydrographs hold millions of numbers.
TextWriter& TextWriter::precise(double value)
{
    char text[kPreciseRoom];
    m_buffer.append(text, static_cast<std::size_t>(preciseInto(value, text) - text));
    return *this;
}

TextWriter& TextWriter::preciseRows(std::span<const double> values, std::size_t perLine)
{
    while (!values.empty()) {
        const std::size_t count = std::min(values.size(), perLine * 64);
        const std::size_t begin = m_buffer.size();
        m_buffer.resize(begin + count * kPreciseRoom + 2 * 64 + 2);
        char* at = m_buffer.data() + begin;
        for (std::size_t i = 0; i < count; ++i) {
            *at++ = ' ';
            at = preciseInto(values[i], at);
            if ((i + 1) % perLine == 0 || i + 1 == count) {
                *at++ = '\r';
                *at++ = '\n';
            }
        }
        m_buffer.resize(static_cast<std::size_t>(at - m_buffer.data()));
        values = values.subspan(count);
        if (m_buffer.size() > kFlushAt)
            flush();
    }
    return *this;
}

} // namespace hec1
