// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/FlexGrid.h"

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
///     for (int col = 2; col < table.cols(); ++col)
///         for (double flow : numbers.column(col))
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

private:
    void readTexts(int col);

    const FlexGrid& m_table;
    std::vector<double> m_read;
};

/// The number that the general text of `value` gives.
double throughGeneralText(double value);

} // namespace kalvo
