// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtGlobal>

#include <string_view>
#include <vector>

QT_BEGIN_NAMESPACE
class QFile;
QT_END_NAMESPACE

namespace kalvo {

/// The bytes of a text or of a file, seen through a window that moves forward. HEC-1 may leave gigabytes; whoever reads
/// through a window holds a few hundred kilobytes of them, and a file that shrinks meanwhile ends early instead of
/// faulting as a mapped one would. Reading through a window is as fast as walking over the mapped file.
///
/// Bytes of code 26 at the very end (an old end-of-file mark) do not belong to the text.
class ByteWindow
{
public:
    /// A text in memory, not copied: it must outlive the window.
    explicit ByteWindow(std::string_view whole);
    /// A file that is open for reading, from its start. Not owned.
    explicit ByteWindow(QFile& file, qsizetype step = qsizetype(1) << 18);

    const char* begin() const { return m_begin; }
    const char* end() const { return m_end; }
    /// Brings more bytes behind those from `from` (within the window) on, which stay; what is ahead of `from` goes. All
    /// pointers into the window are void afterwards, but `from` moves along. False when there is no more.
    bool more(const char*& from);

    qint64 size() const { return m_size; } ///< of the whole text
    qint64 position(const char* at) const { return m_endPosition - (m_end - at); }
    qint64 remaining(const char* at) const { return m_size - position(at); }
    /// The file could not be read although it had not ended.
    bool hasFailed() const { return m_failed; }

private:
    const char* m_begin = nullptr;
    const char* m_end = nullptr;
    qint64 m_size = 0;
    qint64 m_endPosition = 0;
    QFile* m_file = nullptr;
    qsizetype m_step = 0;
    std::vector<char> m_buffer;
    bool m_failed = false;
};

/// Lines through a window: CR LF, LF and CR each end one, and no line stands behind the last end. A line longer than 64
/// KB comes in pieces of that length, so that a file without any line end costs no memory either.
class LineReader
{
public:
    explicit LineReader(ByteWindow& window) : m_window(window), m_at(window.begin()) {}
    /// The next line without its end, valid until the next call; false behind the last.
    bool next(std::string_view& line);

private:
    ByteWindow& m_window;
    const char* m_at;
};

} // namespace kalvo
