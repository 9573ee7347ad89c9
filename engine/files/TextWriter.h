// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdio>
#include <memory>
#include <span>
#include <string>
#include <string_view>

namespace hec1 {

/// Writes a text file through one large buffer, lines ended by CR LF. Numbers come in the form of FORTRAN F fields: no
/// zero ahead of the point, asterisks where the field is too narrow. Every write is checked; the first failure is kept
/// and told by close().
class TextWriter
{
public:
    TextWriter() = default;
    TextWriter(const TextWriter&) = delete;
    TextWriter& operator=(const TextWriter&) = delete;
    ~TextWriter();

    /// Makes the file empty, or goes on behind what is in it. @return false when it cannot be written.
    bool open(const std::string& path, bool append = false);
    bool isOpen() const { return m_file != nullptr; }
    /// Writes what is left. @return false when any write has failed.
    bool close();
    /// Throws away all that was written, so that the file is there and empty.
    bool discard();
    bool failed() const { return m_failed; }
    const std::string& path() const { return m_path; }

    TextWriter& text(std::string_view text)
    {
        m_buffer += text;
        return *this;
    }
    TextWriter& spaces(std::size_t count)
    {
        m_buffer.append(count, ' ');
        return *this;
    }
    TextWriter& left(std::string_view text, std::size_t width);
    TextWriter& right(std::string_view text, std::size_t width);
    /// In at least the width; longer text pushes what follows.
    TextWriter& centred(std::string_view text, std::size_t width);
    TextWriter& integer(long value, std::size_t width);
    TextWriter& fixed(double value, std::size_t width, int decimals);
    /// At least seven significant digits, as short as that allows; for files that programs read.
    TextWriter& precise(double value);
    /// Many such numbers, each behind a blank.
    TextWriter& preciseRows(std::span<const double> values, std::size_t perLine);
    /// Ends the line.
    TextWriter& line()
    {
        m_buffer += "\r\n";
        if (m_buffer.size() > kFlushAt)
            flush();
        return *this;
    }
    TextWriter& line(std::string_view wholeLine) { return text(wholeLine).line(); }
    /// Characters of the file so far.
    std::size_t size() const { return m_flushed + m_buffer.size(); }

private:
    // Small enough to stay in the processor's cache and to need few fresh pages, large enough for few system calls.
    static constexpr std::size_t kFlushAt = std::size_t{64} << 10;
    void flush();

    struct Close
    {
        void operator()(std::FILE* file) const { std::fclose(file); }
    };
    std::unique_ptr<std::FILE, Close> m_file;
    std::string m_path;
    std::string m_buffer;
    std::size_t m_flushed = 0;
    bool m_failed = false;
};

/// The text of a FORTRAN F field without blanks ahead: ".25", "579.", "-.10".
std::string fixedText(double value, int decimals);

} // namespace hec1
