// SPDX-License-Identifier: GPL-3.0-or-later
#include "results/TableNumbers.h"

#include "platform/text.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <string_view>

namespace kalvo {

namespace {

constexpr double kNoNumber = std::numeric_limits<double>::quiet_NaN();
constexpr size_t kGroup = 8; ///< the same in a block that has others among them

constexpr int kDigits = 15; ///< of a text, at most
constexpr std::array<double, kDigits + 1> kTens{1e0, 1e1, 1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                                1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};

/// 0 for a value of so many decimals and no more than 15 digits in all; anything else, NaN too, for another. Such a
/// value is the quotient of two whole numbers that a double holds, so it is the double nearest to a decimal text of 15
/// digits: making that text and reading it gives the same double back.
double strangeness(double value, int decimals)
{
    constexpr double kToWhole = 6755399441055744.0; // 1.5 x 2^52: adding it leaves no room for decimals
    const double ten = kTens[static_cast<size_t>(decimals)], limit = kTens[static_cast<size_t>(kDigits - decimals)];
    const double whole = (value * ten + kToWhole) - kToWhole;
    return std::fabs(whole / ten - value) + (std::fabs(value) < limit ? 0.0 : 1.0);
}

/// Four sums side by side and no branch: the processor divides several values at once.
bool areTheirOwnTexts(std::span<const double> values, int decimals)
{
    double a = 0.0, b = 0.0, c = 0.0, d = 0.0;
    size_t i = 0;
    for (; i + 4 <= values.size(); i += 4) {
        a += strangeness(values[i], decimals);
        b += strangeness(values[i + 1], decimals);
        c += strangeness(values[i + 2], decimals);
        d += strangeness(values[i + 3], decimals);
    }
    for (; i < values.size(); ++i)
        a += strangeness(values[i], decimals);
    return a + b + c + d == 0.0;
}

/// Decimals that the largest of the values has room for.
int roomForDecimals(std::span<const double> values)
{
    double largest = 0.0;
    for (const double value : values)
        largest = std::max(largest, std::fabs(value));
    const auto above = std::upper_bound(kTens.begin(), kTens.end(), largest);
    return kDigits - static_cast<int>(std::min<std::ptrdiff_t>(above - kTens.begin(), kDigits));
}

/// The number that the general text of `value` gives.
double throughGeneralText(double value)
{
    char text[40];
    const char* end = writeGeneralText(text, value);
    double number = 0.0;
    return parseWholeNumber(std::string_view(text, static_cast<size_t>(end - text)), number) ? number : kNoNumber;
}

bool showGeneralTexts(const FlexGrid::Numbers& numbers)
{
    const auto* function = numbers.format->target<QString (*)(double)>();
    return function && *function == &generalText;
}

} // namespace

double numberOfText(const QString& text)
{
    const QByteArray bytes = Trim(text).toLatin1();
    double value = 0.0;
    return parseWholeNumber(std::string_view(bytes.constData(), static_cast<size_t>(bytes.size())), value) ? value
                                                                                                           : kNoNumber;
}

std::optional<std::span<const double>> TableNumbers::generalNumbers(int col) const
{
    const std::optional<FlexGrid::Numbers> numbers = m_table.numbers(col);
    if (!numbers || numbers->firstRow != 1 || !showGeneralTexts(*numbers))
        return std::nullopt;
    return numbers->values.first(std::min(numbers->values.size(), rows()));
}

void TableNumbers::readTexts(int col)
{
    m_read.clear();
    for (int row = 1; row < m_table.rows(); ++row)
        m_read.push_back(numberOfText(m_table.textMatrix(row, col)));
}

std::vector<double> TableNumbers::emptyCells(size_t count)
{
    return std::vector<double>(count, kNoNumber);
}

bool TableNumbers::areTextsOf(std::span<const double> piece)
{
    if (areTheirOwnTexts(piece, m_decimals))
        return true;
    const int room = roomForDecimals(piece);
    if (room == m_decimals)
        return false;
    m_decimals = room;
    return areTheirOwnTexts(piece, m_decimals);
}

std::span<const double> TableNumbers::read(std::span<const double> piece)
{
    if (areTextsOf(piece))
        return piece;
    for (size_t at = 0; at < piece.size(); at += kGroup) {
        const std::span<const double> group = piece.subspan(at, std::min(kGroup, piece.size() - at));
        const bool areTexts = areTheirOwnTexts(group, m_decimals);
        for (size_t i = 0; i < group.size(); ++i) {
            const bool isText = areTexts || strangeness(group[i], m_decimals) == 0.0;
            m_piece[at + i] = isText ? group[i] : throughGeneralText(group[i]);
        }
    }
    return std::span<const double>(m_piece).first(piece.size());
}

std::span<const double> TableNumbers::column(int col)
{
    m_column.clear();
    forEachPiece(col, [this](std::span<const double> piece, size_t) {
        m_column.insert(m_column.end(), piece.begin(), piece.end());
    });
    return m_column;
}

std::vector<double> TableNumbers::copyOf(int col)
{
    column(col);
    return m_column;
}

} // namespace kalvo
