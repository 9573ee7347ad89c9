// SPDX-License-Identifier: GPL-3.0-or-later
#include "run/ByteWindow.h"

#include <QFile>

#include <cstring>

namespace kalvo {

namespace {

constexpr char kEndOfFileMark = 26;
constexpr qint64 kLongestMark = 4096; ///< old systems padded the last block with marks
constexpr qsizetype kLongestLine = 65536;

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
    const auto isEnd = [](char c) { return c == '\n' || c == '\r'; };
    qsizetype length = 0;
    for (;;) {
        const char* end = std::find_if(m_at + length, m_window.end(), isEnd);
        length = end - m_at;
        if (length >= kLongestLine) {
            line = {m_at, static_cast<size_t>(kLongestLine)};
            m_at += kLongestLine;
            return true;
        }
        // A CR as the last byte of the window may be half of an end.
        if (end == m_window.end() ? !m_window.more(m_at)
                                  : *end == '\n' || end + 1 != m_window.end() || !m_window.more(m_at))
            break;
    }
    line = {m_at, static_cast<size_t>(length)};
    m_at += length;
    if (m_at != m_window.end())
        m_at += *m_at == '\r' && m_at + 1 != m_window.end() && m_at[1] == '\n' ? 2 : 1;
    return true;
}

} // namespace kalvo
