// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/TextBuffer.h"

#include <QFile>

#include <algorithm>
#include <cstring>
#include <exception>

namespace kalvo {

namespace {

constexpr qsizetype kLineEnd = 2;
/// Backward searches look at so many bytes at once.
constexpr qsizetype kBackwardStep = qsizetype(1) << 18;

unsigned char byteOf(char c)
{
    return static_cast<unsigned char>(c);
}

/// Small letters for capitals, in Latin-1.
unsigned char folded(int c)
{
    const bool isCapital = (c >= 'A' && c <= 'Z') || (c >= 0xC0 && c <= 0xDE && c != 0xD7);
    return static_cast<unsigned char>(isCapital ? c + 0x20 : c);
}

const char* next(const char* from, const char* end, char wanted)
{
    return static_cast<const char*>(std::memchr(from, wanted, static_cast<size_t>(end - from)));
}

/// Line ends that are one character and shall be two.
qsizetype bareEnds(const QByteArray& bytes)
{
    const char* const begin = bytes.constData();
    const char* const end = begin + bytes.size();
    qsizetype bare = 0;
    for (const char* at = begin; at < end;) {
        const char* lf = next(at, end, '\n');
        const char* lineEnd = lf ? lf : end;
        const bool hasCr = lf && lf > at && lf[-1] == '\r';
        if (lf && !hasCr)
            ++bare;
        for (const char* cr = at; (cr = next(cr, hasCr ? lineEnd - 1 : lineEnd, '\r')) != nullptr; ++cr)
            ++bare;
        at = lf ? lf + 1 : end;
    }
    return bare;
}

/// Makes every line end CR LF, from the back and in place: a second copy of a large text would be too much.
void completeEnds(QByteArray& bytes, qsizetype bare)
{
    qsizetype from = bytes.size();
    bytes.resize(from + bare);
    char* const data = bytes.data();
    qsizetype to = bytes.size();
    while (from > 0) {
        const char c = data[--from];
        if (c == '\n') {
            data[--to] = '\n';
            data[--to] = '\r';
            if (from > 0 && data[from - 1] == '\r')
                --from;
        } else if (c == '\r') {
            data[--to] = '\n';
            data[--to] = '\r';
        } else {
            data[--to] = c;
        }
    }
}

} // namespace

// -- Needle ----------------------------------------------------------------------------------------------------------

TextNeedle::TextNeedle(QByteArrayView text, Qt::CaseSensitivity match)
    : m_text(text.toByteArray()), m_isFolding(match == Qt::CaseInsensitive)
{
    for (int c = 0; c < 256; ++c)
        m_fold[static_cast<size_t>(c)] = m_isFolding ? folded(c) : static_cast<unsigned char>(c);
    if (m_isFolding)
        for (char& c : m_text)
            c = static_cast<char>(m_fold[byteOf(c)]);
    m_skip.fill(static_cast<quint32>(m_text.size()));
    for (qsizetype i = 0; i + 1 < m_text.size(); ++i)
        m_skip[byteOf(m_text[i])] = static_cast<quint32>(m_text.size() - 1 - i);
    if (m_isFolding)
        for (size_t c = 0; c < m_skip.size(); ++c)
            m_skip[c] = m_skip[m_fold[c]];
}

qsizetype TextNeedle::findIn(std::string_view piece) const
{
    const auto size = static_cast<size_t>(m_text.size());
    if (size == 0 || piece.size() < size)
        return -1;
    if (size == 1 && !m_isFolding) {
        const size_t at = piece.find(m_text[0]);
        return at == std::string_view::npos ? -1 : static_cast<qsizetype>(at);
    }
    const char* const needle = m_text.constData();
    const unsigned char last = byteOf(needle[size - 1]);
    const char* const end = piece.data() + piece.size();
    for (const char* tail = piece.data() + size - 1; tail < end;) {
        const unsigned char c = byteOf(*tail);
        if (m_fold[c] == last) {
            const char* const start = tail - (size - 1);
            const bool isMatch = m_isFolding
                                     ? std::equal(needle, needle + size, start,
                                                  [this](char n, char t) { return byteOf(n) == m_fold[byteOf(t)]; })
                                     : std::memcmp(needle, start, size) == 0;
            if (isMatch)
                return start - piece.data();
        }
        if (static_cast<size_t>(end - tail) <= m_skip[c])
            break;
        tail += m_skip[c];
    }
    return -1;
}

// -- Coming in -------------------------------------------------------------------------------------------------------

TextBuffer::TextBuffer(QByteArray bytes) : m_bytes(std::move(bytes))
{
    index(bareEnds(m_bytes));
}

std::optional<TextBuffer> TextBuffer::load(const QString& path, QString* why)
{
    const auto refuse = [why](const QString& reason) {
        if (why)
            *why = reason;
        return std::nullopt;
    };
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Unbuffered))
        return refuse(file.errorString());
    const QString tooLong = QStringLiteral("The file is too long to be shown (%1 MB).").arg(file.size() >> 20);
    if (file.size() > kMostBytes)
        return refuse(tooLong);
    try {
        QByteArray bytes = file.readAll();
        if (file.error() != QFileDevice::NoError)
            return refuse(file.errorString());
        const qsizetype bare = bareEnds(bytes);
        if (bytes.size() + bare > kMostBytes)
            return refuse(tooLong);
        TextBuffer text;
        text.m_bytes = std::move(bytes);
        text.index(bare);
        return text;
    } catch (const std::bad_alloc&) {
        return refuse(tooLong);
    }
}

void TextBuffer::index(qsizetype bare)
{
    if (bare > 0)
        completeEnds(m_bytes, bare);
    const char* const begin = m_bytes.constData();
    const char* const end = begin + m_bytes.size();
    m_starts.clear();
    m_starts.reserve(static_cast<size_t>(m_bytes.size() / 48 + 1));
    m_starts.push_back(0);
    const char* start = begin;
    while (const char* lf = start < end ? next(start, end, '\n') : nullptr) {
        m_longest = std::max<qsizetype>(m_longest, lf + 1 - start - kLineEnd);
        start = lf + 1;
        m_starts.push_back(static_cast<quint32>(start - begin));
    }
    m_longest = std::max<qsizetype>(m_longest, end - start);
    m_gapStart = m_gapEnd = m_bytes.size();
    m_lineGapStart = m_lineGapEnd = static_cast<qsizetype>(m_starts.size());
}

// -- Reading ---------------------------------------------------------------------------------------------------------

qsizetype TextBuffer::lineStart(qsizetype line) const
{
    line = std::clamp<qsizetype>(line, 0, lineCount() - 1);
    if (line < m_lineGapStart)
        return m_starts[static_cast<size_t>(line)];
    return static_cast<qsizetype>(m_starts[static_cast<size_t>(line + lineGap())]) - gap();
}

qsizetype TextBuffer::lineLength(qsizetype line) const
{
    line = std::clamp<qsizetype>(line, 0, lineCount() - 1);
    const qsizetype end = line + 1 < lineCount() ? lineStart(line + 1) - kLineEnd : length();
    return end - lineStart(line);
}

qsizetype TextBuffer::lineFromChar(qsizetype position) const
{
    qsizetype low = 0;
    qsizetype high = lineCount();
    while (high - low > 1) {
        const qsizetype middle = low + (high - low) / 2;
        (lineStart(middle) <= position ? low : high) = middle;
    }
    return low;
}

std::string_view TextBuffer::view(qsizetype physical, qsizetype count) const
{
    return {m_bytes.constData() + physical, static_cast<size_t>(std::max<qsizetype>(count, 0))};
}

std::string_view TextBuffer::piece(qsizetype start) const
{
    start = std::clamp<qsizetype>(start, 0, length());
    return start < m_gapStart ? view(start, m_gapStart - start) : view(start + gap(), length() - start);
}

QByteArray TextBuffer::mid(qsizetype start, qsizetype count) const
{
    start = std::clamp<qsizetype>(start, 0, length());
    count = std::clamp<qsizetype>(count, 0, length() - start);
    const std::string_view first = piece(start).substr(0, static_cast<size_t>(count));
    QByteArray text(first.data(), static_cast<qsizetype>(first.size()));
    if (const qsizetype rest = count - text.size(); rest > 0)
        text.append(m_bytes.constData() + m_gapEnd, rest);
    return text;
}

// -- Searching -------------------------------------------------------------------------------------------------------

qsizetype TextBuffer::find(const TextNeedle& needle, qsizetype start) const
{
    start = std::max<qsizetype>(start, 0);
    if (start < m_gapStart) {
        if (const qsizetype at = needle.findIn(view(start, m_gapStart - start)); at >= 0)
            return start + at;
        // A match may lie across the gap.
        const qsizetype from = std::max(start, m_gapStart - needle.size() + 1);
        const QByteArray seam = mid(from, m_gapStart - from + needle.size() - 1);
        if (const qsizetype at = needle.findIn({seam.constData(), static_cast<size_t>(seam.size())}); at >= 0)
            return from + at;
        start = m_gapStart;
    }
    if (start >= length())
        return -1;
    const qsizetype at = needle.findIn(view(start + gap(), length() - start));
    return at < 0 ? -1 : start + at;
}

qsizetype TextBuffer::findLast(const TextNeedle& needle, qsizetype before) const
{
    if (needle.isEmpty())
        return -1;
    for (qsizetype end = std::min(before, length()); end > 0;) {
        const qsizetype start = std::max<qsizetype>(end - kBackwardStep, 0);
        const QByteArray step = mid(start, end - start + needle.size() - 1);
        std::string_view rest(step.constData(), static_cast<size_t>(step.size()));
        qsizetype last = -1;
        for (qsizetype at = 0; (at = needle.findIn(rest)) >= 0; rest.remove_prefix(static_cast<size_t>(at + 1)))
            last = step.size() - static_cast<qsizetype>(rest.size()) + at;
        if (last >= 0)
            return start + last;
        end = start;
    }
    return -1;
}

// -- Shortening ------------------------------------------------------------------------------------------------------

void TextBuffer::moveGap(qsizetype position, qsizetype linesAhead)
{
    const auto moved = static_cast<quint32>(gap());
    while (m_lineGapStart < linesAhead)
        m_starts[static_cast<size_t>(m_lineGapStart++)] = m_starts[static_cast<size_t>(m_lineGapEnd++)] - moved;
    while (m_lineGapStart > linesAhead)
        m_starts[static_cast<size_t>(--m_lineGapEnd)] = m_starts[static_cast<size_t>(--m_lineGapStart)] + moved;
    char* const data = m_bytes.data();
    if (position > m_gapStart)
        std::memmove(data + m_gapStart, data + m_gapEnd, static_cast<size_t>(position - m_gapStart));
    else
        std::memmove(data + position + gap(), data + position, static_cast<size_t>(m_gapStart - position));
    m_gapEnd = position + gap();
    m_gapStart = position;
}

qsizetype TextBuffer::deleteOutputLine(qsizetype line)
{
    const qsizetype lines = lineCount();
    if (line < 0 || line >= lines)
        return -1;
    const bool isLast = line + 1 == lines;
    if (lines == 1) {
        moveGap(0, 1);
        m_gapEnd = m_bytes.size();
        return 0;
    }
    if (!isLast) {
        const qsizetype start = lineStart(line);
        const qsizetype count = lineStart(line + 1) - start;
        moveGap(start, line + 1);
        m_gapEnd += count;
        ++m_lineGapEnd; // the next line now starts where this one did
        return start;
    }
    const qsizetype start = lineStart(line) - kLineEnd;
    moveGap(start, line);
    m_gapEnd = m_bytes.size();
    ++m_lineGapEnd;
    return start;
}

QByteArrayView TextBuffer::whole()
{
    if (gap() > 0)
        moveGap(length(), lineCount());
    return {m_bytes.constData(), length()};
}

} // namespace kalvo
