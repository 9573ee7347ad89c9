// SPDX-License-Identifier: GPL-3.0-or-later
// The text with a gap reads, counts and finds as a plain string would that is edited in place.
#include "platform/TextBuffer.h"

#include "platform/Services.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <random>
#include <string>

namespace kalvo {
namespace {

TextBuffer bufferOf(const std::string& text)
{
    return TextBuffer(QByteArray::fromStdString(text));
}

std::string textOf(const TextBuffer& buffer)
{
    return buffer.mid(0, buffer.length()).toStdString();
}

/// The same operations on a plain string.
struct PlainText
{
    std::string text;

    std::vector<size_t> starts() const
    {
        std::vector<size_t> found{0};
        for (size_t i = 0; i < text.size(); ++i)
            if (text[i] == '\n')
                found.push_back(i + 1);
        return found;
    }
    qsizetype lineFromChar(qsizetype position) const
    {
        return std::count(text.begin(), text.begin() + std::min<qsizetype>(position, qsizetype(text.size())), '\n');
    }
    qsizetype find(const std::string& what, qsizetype start) const
    {
        const size_t at = text.find(what, static_cast<size_t>(start));
        return at == std::string::npos || what.empty() ? -1 : qsizetype(at);
    }
    void deleteOutputLine(size_t line)
    {
        const auto begins = starts();
        if (line >= begins.size())
            return;
        if (begins.size() == 1)
            text.clear();
        else if (line + 1 == begins.size())
            text.erase(begins[line] - 2);
        else
            text.erase(begins[line], begins[line + 1] - begins[line]);
    }
};

TEST(TextBuffer, LineEndsComeInAsTwoCharacters)
{
    struct Case
    {
        const char* in;
        const char* out;
        int lines;
    };
    for (const Case& each :
         {Case{"", "", 1}, Case{"a", "a", 1}, Case{"a\r\nb\r\n", "a\r\nb\r\n", 3}, Case{"a\n\nb", "a\r\n\r\nb", 3},
          Case{"a\rb\r", "a\r\nb\r\n", 3}, Case{"\n", "\r\n", 2}, Case{"a\r\r\nb\n\r", "a\r\n\r\nb\r\n\r\n", 5},
          Case{"a\r\nb\nc\r\n", "a\r\nb\r\nc\r\n", 4}}) {
        const TextBuffer buffer(QByteArray(each.in));
        EXPECT_EQ(textOf(buffer), each.out);
        EXPECT_EQ(buffer.lineCount(), each.lines) << each.in;
    }
}

TEST(TextBuffer, PositionsAndLinesCountFromZero)
{
    const TextBuffer buffer = bufferOf("ab\r\n\r\ncde");
    EXPECT_EQ(buffer.lineStart(1), 4);
    EXPECT_EQ(buffer.lineLength(1), 0);
    EXPECT_EQ(buffer.line(2), "cde");
    EXPECT_EQ(buffer.longestLine(), 3);
    EXPECT_EQ(buffer.lineFromChar(3), 0) << "the end belongs to its line";
    EXPECT_EQ(buffer.lineFromChar(4), 1);
    EXPECT_EQ(buffer.lineFromChar(99), 2);
    EXPECT_EQ(buffer.lineFromChar(-1), 0);
    EXPECT_EQ(buffer.find("\r\n\r\nc"), 2);
    EXPECT_EQ(buffer.find("a", 1), -1);
    EXPECT_EQ(buffer.find("", 0), -1);
    EXPECT_EQ(buffer.find("e", 99), -1);
    EXPECT_EQ(buffer.mid(7, 99), "de");
    EXPECT_EQ(buffer.mid(99, 1), "");
}

TEST(TextBuffer, DeletesTheLastLineWithTheEndAheadOfItAndTheOnlyLineWhole)
{
    TextBuffer buffer = bufferOf("a\r\nb");
    EXPECT_EQ(buffer.deleteOutputLine(2), -1);
    EXPECT_EQ(buffer.deleteOutputLine(-1), -1);
    EXPECT_EQ(buffer.deleteOutputLine(1), 1);
    EXPECT_EQ(textOf(buffer), "a");
    EXPECT_EQ(buffer.deleteOutputLine(0), 0);
    EXPECT_EQ(textOf(buffer), "");
    EXPECT_EQ(buffer.lineCount(), 1);
    EXPECT_EQ(buffer.deleteOutputLine(0), 0);
}

/// Short lines over a small alphabet give matches across line ends and across lines that a deletion joins.
TEST(TextBuffer, StaysLikeAPlainStringThroughDeletions)
{
    std::mt19937 random(20240607);
    const auto below = [&random](size_t limit) { return random() % limit; };
    const char* const needles[] = {"a", "ab", "\r\n\r\n", "\n\r\n\r", "b\r\na", "aa\r\n\r\nb", " \r\n"};
    for (int round = 0; round < 60; ++round) {
        PlainText plain;
        for (size_t line = below(40); line > 0; --line)
            plain.text += std::string(below(4), "ab "[below(3)]) + "\r\n";
        if (below(2) == 0)
            plain.text += "ab";
        TextBuffer buffer = bufferOf(plain.text);
        for (int step = 0; step < 30; ++step) {
            const size_t line = below(static_cast<size_t>(buffer.lineCount()) + 1);
            plain.deleteOutputLine(line);
            buffer.deleteOutputLine(static_cast<qsizetype>(line));
            ASSERT_EQ(textOf(buffer), plain.text);
            const auto starts = plain.starts();
            ASSERT_EQ(buffer.lineCount(), qsizetype(starts.size()));
            for (size_t i = 0; i < starts.size(); ++i)
                ASSERT_EQ(buffer.lineStart(qsizetype(i)), qsizetype(starts[i]));
            const auto at = qsizetype(below(plain.text.size() + 1));
            ASSERT_EQ(buffer.lineFromChar(at), plain.lineFromChar(at));
            for (const char* needle : needles) {
                ASSERT_EQ(buffer.find(needle, at), plain.find(needle, at)) << needle << " from " << at;
                const size_t last = at == 0 ? std::string::npos : plain.text.rfind(needle, size_t(at) - 1);
                ASSERT_EQ(buffer.findLast(TextNeedle(needle), at), last == std::string::npos ? -1 : qsizetype(last));
            }
        }
        const std::string whole(buffer.whole().data(), size_t(buffer.length()));
        EXPECT_EQ(whole, plain.text);
        EXPECT_EQ(textOf(buffer), plain.text);
    }
}

TEST(TextBuffer, FindsWithoutRegardToCaseAlsoBeyondAscii)
{
    const TextBuffer buffer = bufferOf("Peak FLOW of M\xDCHLE, peak flow of m\xFChle");
    const auto all = [&buffer](const char* text, Qt::CaseSensitivity match) {
        const TextNeedle needle(text, match);
        std::vector<qsizetype> found;
        for (qsizetype at = -1; (at = buffer.find(needle, at + 1)) >= 0;)
            found.push_back(at);
        return found;
    };
    EXPECT_EQ(all("peak flow", Qt::CaseInsensitive), (std::vector<qsizetype>{0, 20}));
    EXPECT_EQ(all("peak flow", Qt::CaseSensitive), (std::vector<qsizetype>{20}));
    EXPECT_EQ(all("M\xFCHLE", Qt::CaseInsensitive), (std::vector<qsizetype>{13, 33}));
    EXPECT_EQ(all("p", Qt::CaseInsensitive), (std::vector<qsizetype>{0, 20}));
}

TEST(TextBuffer, AFileThatCannotBeShownIsRefusedWithAReason)
{
    const QTemporaryDir directory;
    QString why;
    EXPECT_FALSE(TextBuffer::load(directory.filePath("none"), &why));
    EXPECT_FALSE(why.isEmpty());
    QFile huge(directory.filePath("huge"));
    ASSERT_TRUE(huge.open(QIODevice::WriteOnly) && huge.resize(TextBuffer::kMostBytes + 1));
    EXPECT_FALSE(TextBuffer::load(huge.fileName(), &why));
    EXPECT_EQ(why, "The file is too long to be shown (2048 MB).");
    ASSERT_TRUE(writeFile(directory.filePath("good"), "a\nb"));
    const auto good = TextBuffer::load(directory.filePath("good"));
    ASSERT_TRUE(good);
    EXPECT_EQ(textOf(*good), "a\r\nb");
}

} // namespace
} // namespace kalvo
