// SPDX-License-Identifier: GPL-3.0-or-later
#include "results/TableNumbers.h"

#include "platform/text.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <string_view>

namespace kalvo {

namespace {

constexpr double kNoNumber = std::numeric_limits<double>::quiet_NaN();
constexpr size_t kBlock = 256; ///< values that are judged at once

/// 0 for a value that has at most six decimals and is below 1E9, which is what HEC-1 writes; anything else, NaN too,
/// for another. Such a value is the quotient of two whole numbers that a double holds, so it is the double nearest to
/// its decimal text of at most 15 digits: making that text and reading it gives the same double back.
double strangeness(double value)
{
    constexpr double kToWhole = 6755399441055744.0; // 1.5 x 2^52: adding it leaves no room for decimals
    const double millionths = (value * 1e6 + kToWhole) - kToWhole;
    return std::fabs(millionths / 1e6 - value) + (std::fabs(value) < 1e9 ? 0.0 : 1.0);
}

/// Four sums side by side and no branch: the processor divides several values at once.
bool areTheirOwnTexts(std::span<const double> values)
{
    double a = 0.0, b = 0.0, c = 0.0, d = 0.0;
    size_t i = 0;
    for (; i + 4 <= values.size(); i += 4) {
        a += strangeness(values[i]);
        b += strangeness(values[i + 1]);
        c += strangeness(values[i + 2]);
        d += strangeness(values[i + 3]);
    }
    for (; i < values.size(); ++i)
        a += strangeness(values[i]);
    return a + b + c + d == 0.0;
}

double numberOf(const QString& text)
{
    const QByteArray bytes = Trim(text).toLatin1();
    double value = 0.0;
    return parseWholeNumber(std::string_view(bytes.constData(), static_cast<size_t>(bytes.size())), value) ? value
                                                                                                           : kNoNumber;
}

bool showGeneralTexts(const FlexGrid::Numbers& numbers)
{
    const auto* function = numbers.format->target<QString (*)(double)>();
    return function && *function == &generalText;
}

} // namespace

double throughGeneralText(double value)
{
    char text[40];
    const char* end = writeGeneralText(text, value);
    double number = 0.0;
    return parseWholeNumber(std::string_view(text, static_cast<size_t>(end - text)), number) ? number : kNoNumber;
}

std::span<const double> TableNumbers::column(int col)
{
    const size_t rows = static_cast<size_t>(std::max(m_table.rows() - 1, 0));
    const std::optional<FlexGrid::Numbers> numbers = m_table.numbers(col);
    if (!numbers || numbers->firstRow != 1 || !showGeneralTexts(*numbers)) {
        readTexts(col);
        return m_read;
    }
    const std::span<const double> values = numbers->values.first(std::min(numbers->values.size(), rows));
    bool areAsTheyStand = values.size() == rows;
    for (size_t at = 0; areAsTheyStand && at < values.size(); at += kBlock)
        areAsTheyStand = areTheirOwnTexts(values.subspan(at, std::min(kBlock, values.size() - at)));
    if (areAsTheyStand)
        return values;
    m_read.assign(rows, kNoNumber);
    std::transform(values.begin(), values.end(), m_read.begin(),
                   [](double value) { return strangeness(value) == 0.0 ? value : throughGeneralText(value); });
    return m_read;
}

std::vector<double> TableNumbers::copyOf(int col)
{
    const std::span<const double> numbers = column(col);
    return {numbers.begin(), numbers.end()};
}

void TableNumbers::readTexts(int col)
{
    m_read.clear();
    for (int row = 1; row < m_table.rows(); ++row)
        m_read.push_back(numberOf(m_table.textMatrix(row, col)));
}

} // namespace kalvo
