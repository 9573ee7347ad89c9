// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cmath>
#include <stdexcept>

namespace hec1::methods {

/// Refuses an argument with words that the report can show as they are.
inline void require(bool holds, const char* message)
{
    if (!holds)
        throw std::invalid_argument(message);
}

/// False for NaN and infinity as well.
inline bool isPositive(double value)
{
    return value > 0 && std::isfinite(value);
}
inline bool isNotNegative(double value)
{
    return value >= 0 && std::isfinite(value);
}

} // namespace hec1::methods
