// SPDX-License-Identifier: GPL-3.0-or-later
// A long text in memory, such as a printed report of 100 MB: found in, counted in lines, and shortened line by line.
#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>

#include <array>
#include <optional>
#include <string_view>
#include <vector>

namespace kalvo {

/// A text that is searched for, made ready once for many searches. The search skips ahead by the needle's length where
/// it can, so that long headings are found faster than a walk over the text.
class TextNeedle
{
public:
    explicit TextNeedle(QByteArrayView text, Qt::CaseSensitivity match = Qt::CaseSensitive);

    qsizetype size() const { return m_text.size(); }
    bool isEmpty() const { return m_text.isEmpty(); }
    /// Offset of the first match in a piece of text, -1 for none. An empty needle is found nowhere.
    qsizetype findIn(std::string_view piece) const;

private:
    QByteArray m_text; ///< folded when the case does not matter
    std::array<quint32, 256> m_skip;
    std::array<unsigned char, 256> m_fold;
    bool m_isFolding;
};

/// A text as bytes (Latin-1) with an index of its lines. Positions and lines count from 0. Every line ends with CR LF:
/// a bare LF or CR is brought to that when the text comes in, so that a line end is always two characters. Behind the
/// last line end stands one more line, be it empty; an empty text has one line.
///
/// The text is held once, with a gap where lines were taken out last: taking lines out one after the other costs the
/// distance between them and not the text behind them. Positions are always those of the text as it now reads.
class TextBuffer
{
public:
    /// Longer texts are refused: offsets have 32 bits.
    static constexpr qint64 kMostBytes = 0x7fffffff;

    TextBuffer() : TextBuffer(QByteArray()) {}
    explicit TextBuffer(QByteArray bytes);
    TextBuffer(const TextBuffer&) = delete; // a copy would double what may be 100 MB
    TextBuffer& operator=(const TextBuffer&) = delete;
    TextBuffer(TextBuffer&&) = default;
    TextBuffer& operator=(TextBuffer&&) = default;
    /// The text of a file; none when it cannot be read or is longer than `kMostBytes` (`why` then says the reason).
    static std::optional<TextBuffer> load(const QString& path, QString* why = nullptr);

    qsizetype length() const { return m_bytes.size() - gap(); }
    bool isEmpty() const { return length() == 0; }
    qsizetype lineCount() const { return static_cast<qsizetype>(m_starts.size()) - lineGap(); }
    /// Position of a line's first character; a line outside gives the nearest one.
    qsizetype lineStart(qsizetype line) const;
    /// Characters of a line without its end.
    qsizetype lineLength(qsizetype line) const;
    /// The line that holds a position; its end belongs to it. A position outside gives the first or the last line.
    qsizetype lineFromChar(qsizetype position) const;
    /// Characters of the longest line that the text had when it came in.
    qsizetype longestLine() const { return m_longest; }

    /// Up to `count` characters from a position on; what lies outside is left out.
    QByteArray mid(qsizetype start, qsizetype count) const;
    QByteArray line(qsizetype line) const { return mid(lineStart(line), lineLength(line)); }
    char at(qsizetype position) const { return m_bytes.at(position < m_gapStart ? position : position + gap()); }
    /// The longest piece from a position on that lies in one stretch; empty at the end. Void after any change.
    std::string_view piece(qsizetype start) const;

    /// Position of the first match at or behind `start`, -1 for none.
    qsizetype find(const TextNeedle& needle, qsizetype start = 0) const;
    qsizetype find(QByteArrayView text, qsizetype start = 0) const { return find(TextNeedle(text), start); }
    /// Position of the last match that begins ahead of `before`, -1 for none.
    qsizetype findLast(const TextNeedle& needle, qsizetype before) const;

    /// Takes a line out with its end; of the last line the line end ahead of it goes instead, of the only line the
    /// whole text. A line outside changes nothing.
    /// @return where the text was cut, -1 when nothing was.
    qsizetype deleteOutputLine(qsizetype line);

    /// The whole text in one stretch, not copied: valid until the next change. Brings the pieces together first.
    QByteArrayView whole();

private:
    qsizetype gap() const { return m_gapEnd - m_gapStart; }
    qsizetype lineGap() const { return m_lineGapEnd - m_lineGapStart; }
    std::string_view view(qsizetype physical, qsizetype count) const;
    /// Brings `bare` line ends to two characters and finds the lines.
    void index(qsizetype bare);
    void moveGap(qsizetype position, qsizetype linesAhead);

    QByteArray m_bytes;
    qsizetype m_gapStart = 0;
    qsizetype m_gapEnd = 0;
    /// Where lines start: ahead of the gap as positions, behind it as offsets into the bytes. A gap of its own is kept
    /// in step with that of the text.
    std::vector<quint32> m_starts;
    qsizetype m_lineGapStart = 0;
    qsizetype m_lineGapEnd = 0;
    qsizetype m_longest = 0;
};

} // namespace kalvo
