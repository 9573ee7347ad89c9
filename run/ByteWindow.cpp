// SPDX-License-Identifier: GPL-3.0-or-later
#include "run/ByteWindow.h"

#include <QFile>

#include <cstring>

namespace kalvo {

namespace {

constexpr char kEndOfFileMark = 26;
constexpr qint64 kLongestMark = 4096; ///< old systems padded the last block with marks
constexpr qsizetype kLongestLine = 65536;

/// The first CR or LF of [from, to), else `to`. Two searches for one byte are faster than one for either.
const char* lineEnd(const char* from, const char* to)
{
    const auto find = [from](char what, const char* end) {
        const void* found = from == end ? nullptr : std::memchr(from, what, static_cast<size_t>(end - from));
        return found ? static_cast<const char*>(found) : end;
    };
    return find('\r', find('\n', std::min(to, from + kLongestLine)));
}

/// Size of a file without the marks at its end.
qint64 sizeWithoutMark(QFile& file)
{
    qint64 size = file.size();
    const qint64 tail = std::min(size, kLongestMark);
    if (tail <= 0 || !file.seek(size - tail))
        return std::max<qint64>(size, 0);
    const QByteArray last = file.read(tail);
    for (qsizetype i = last.size(); i > 0 && last[i - 1] == kEndOfFileMark; --i)
        --size;
    file.seek(0);
    return size;
}

} // namespace

ByteWindow::ByteWindow(std::string_view whole)
{
    while (!whole.empty() && whole.back() == kEndOfFileMark)
        whole.remove_suffix(1);
    m_begin = whole.data();
    m_end = m_begin + whole.size();
    m_size = m_endPosition = static_cast<qint64>(whole.size());
}

ByteWindow::ByteWindow(QFile& file, qsizetype step) : m_size(sizeWithoutMark(file)), m_file(&file), m_step(step)
{
    const qint64 first = std::min<qint64>(m_step, m_size);
    m_buffer.resize(static_cast<size_t>(first));
    m_begin = m_end = m_buffer.data();
    const char* from = m_begin;
    more(from);
}

bool ByteWindow::more(const char*& from)
{
    if (m_file == nullptr || m_endPosition >= m_size || m_failed)
        return false;
    const auto kept = static_cast<size_t>(m_end - from);
    const auto wanted = static_cast<size_t>(std::min<qint64>(m_step, m_size - m_endPosition));
    if (kept + wanted > m_buffer.size()) {
        std::vector<char> larger(kept + std::max(wanted, kept));
        std::memcpy(larger.data(), from, kept);
        m_buffer = std::move(larger);
    } else if (kept > 0) {
        std::memmove(m_buffer.data(), from, kept);
    }
    const qint64 got = m_file->read(m_buffer.data() + kept, static_cast<qint64>(wanted));
    m_begin = from = m_buffer.data();
    m_end = m_begin + kept + std::max<qint64>(got, 0);
    m_endPosition += std::max<qint64>(got, 0);
    m_failed = got <= 0;
    return got > 0;
}

bool LineReader::next(std::string_view& line)
{
    if (m_at == m_window.end() && !m_window.more(m_at))
        return false;
    qsizetype length = 0;
    for (;;) {
        const char* end = lineEnd(m_at + length, m_window.end());
        length = end - m_at;
        if (length == kLongestLine) {
            line = {m_at, static_cast<size_t>(kLongestLine)};
            m_at += kLongestLine;
            return true;
        }
        // A CR as the last byte of the window may be half of an end.
        const bool isSure = end != m_window.end() && (*end == '\n' || end + 1 != m_window.end());
        if (isSure || !m_window.more(m_at))
            break;
    }
    line = {m_at, static_cast<size_t>(length)};
    m_at += length;
    if (m_at != m_window.end())
        m_at += *m_at == '\r' && m_at + 1 != m_window.end() && m_at[1] == '\n' ? 2 : 1;
    return true;
}

} // namespace kalvo
