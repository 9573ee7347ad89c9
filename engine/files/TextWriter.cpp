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

bool TextWriter::open(const std::string& path)
{
    m_path = path;
    m_failed = false;
    m_flushed = 0;
    m_buffer.clear();
    m_file.reset(std::fopen(path.c_str(), "wb"));
    m_failed = m_file == nullptr;
    if (m_file)
        std::setvbuf(m_file.get(), nullptr, _IONBF, 0);
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

void TextWriter::dropLineEnd()
{
    if (m_buffer.size() >= 2 && m_buffer.compare(m_buffer.size() - 2, 2, "\r\n") == 0)
        m_buffer.resize(m_buffer.size() - 2);
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

// Eight significant digits are one integer, which two-digit steps turn into text; a general conversion would take
// several times as long, and files of hydrographs hold millions of numbers.
TextWriter& TextWriter::precise(double value)
{
    char text[32];
    char* at = text;
    double size = std::fabs(value);
    if (!(size >= 1e-30)) {
        m_buffer += '0';
        return *this;
    }
    if (value < 0)
        *at++ = '-';
    int decimals = 7; // behind the first digit
    int exponent = 0;
    if (size >= 1e8 || size < 1e-3) {
        exponent = static_cast<int>(std::floor(std::log10(size)));
        size *= std::pow(10.0, -exponent);
    } else {
        while (decimals > 0 && size >= kPowers[static_cast<std::size_t>(8 - decimals)])
            --decimals;
        while (decimals < 10 && size < kPowers[7] / kPowers[static_cast<std::size_t>(decimals)])
            ++decimals;
    }
    auto digits = static_cast<std::uint32_t>(size * kPowers[static_cast<std::size_t>(decimals)] + 0.5);
    if (digits >= 100000000) { // rounding up has made a ninth digit
        digits = 10000000;
        decimals -= 1;
        if (exponent != 0 || decimals < 0) {
            exponent = exponent != 0 ? exponent + 1 : 8;
            decimals = 7;
        }
    }
    char eight[8];
    writeEight(eight, digits);
    int last = 8;
    while (last > std::max(1, 8 - decimals) && eight[last - 1] == '0')
        --last;
    const int before = 8 - decimals; // digits ahead of the point
    if (before <= 0) {
        *at++ = '0';
        *at++ = '.';
        for (int i = before; i < 0; ++i)
            *at++ = '0';
        std::memcpy(at, eight, static_cast<std::size_t>(last));
        at += last;
    } else {
        std::memcpy(at, eight, static_cast<std::size_t>(before));
        at += before;
        if (last > before) {
            *at++ = '.';
            std::memcpy(at, eight + before, static_cast<std::size_t>(last - before));
            at += last - before;
        }
    }
    if (exponent != 0) {
        *at++ = 'E';
        at = std::to_chars(at, text + sizeof text, exponent).ptr;
    }
    m_buffer.append(text, static_cast<std::size_t>(at - text));
    return *this;
}

} // namespace hec1
