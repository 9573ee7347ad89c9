// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <span>

namespace hec1::methods {

/// RT: straddle-stagger (progressive average lag) and Tatum routing. Each step makes outflow n the mean of `averaged`
/// inflows centred on n - lag (an even number leans to the earlier side, so that 2 means n - lag and n - lag - 1); the
/// step is repeated `steps` times. Past the ends the end values hold. `outflow` may be the same memory as `inflow`.
/// @throws std::invalid_argument for steps or averaged below 1, lag negative.
/// Source: HEC-1 User's Manual (1998) section 3 (Tatum and straddle-stagger).
void routeStraddleStagger(std::span<const double> inflow, std::span<double> outflow, int steps, int averaged, int lag);

} // namespace hec1::methods
