// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/FlexGrid.h"

#include <QString>

#include <algorithm>
#include <array>
#include <optional>
#include <span>
#include <vector>

namespace kalvo {

/// The numbers of a table as its cells' texts give them: what a user who copies the cells and computes by hand gets.
/// A text has at most 15 digits and hours have four decimals, so these are not always the doubles behind the cells. No
/// text is made where the double can be seen to be the very number that its text gives, which costs a division.
///
/// @code
///     TableNumbers numbers(tables.hydrographTable);
///     const std::vector<double> hours = numbers.copyOf(0);
///     numbers.forEachPiece(2, [&](std::span<const double> flows, size_t first) {
///         for (size_t i = 0; i < flows.size(); ++i)
///             moment += hours[first + i] * flows[i];
///     });
/// @endcode
class TableNumbers
{
public:
    /// The table must neither change nor go while this is used.
    explicit TableNumbers(const FlexGrid& table) : m_table(table) {}

    /// The numbers of rows 1 to rows() - 1; NaN where a cell is empty or its text is no number. Good until the next
    /// call.
    std::span<const double> column(int col);
    std::vector<double> copyOf(int col);

    /// The same in pieces: `take(numbers, first)` gets some of them, the first of which stands in row first + 1, one
    /// piece after the other. Quickest for sums: the processor judges the next piece while it adds up the last one.
    template <class Take> void forEachPiece(int col, Take take)
    {
        const std::optional<std::span<const double>> values = generalNumbers(col);
        if (!values) {
            readTexts(col);
            take(std::span<const double>(m_read), size_t(0));
            return;
        }
        for (size_t at = 0; at < values->size(); at += kPiece)
            take(read(values->subspan(at, std::min(kPiece, values->size() - at))), at);
        if (values->size() < rows())
            take(std::span<const double>(m_read = emptyCells(rows() - values->size())), values->size());
    }

private:
    static constexpr size_t kPiece = 32; ///< values that are judged at once

    size_t rows() const { return static_cast<size_t>(std::max(m_table.rows() - 1, 0)); }
    /// Numbers of row 1 and below that are shown as general texts; none for any other column.
    std::optional<std::span<const double>> generalNumbers(int col) const;
    void readTexts(int col);
    static std::vector<double> emptyCells(size_t count);
    /// The numbers of the values' texts: the values themselves where that can be seen of all.
    std::span<const double> read(std::span<const double> piece);
    bool areTextsOf(std::span<const double> piece);

    const FlexGrid& m_table;
    int m_decimals = 11; ///< of the last piece: flows of one run are of one size, mostly
    std::array<double, kPiece> m_piece{};
    std::vector<double> m_read, m_column;
};

/// The number that a cell's text gives, blanks around it left out; NaN when it is none.
double numberOfText(const QString& text);

} // namespace kalvo
