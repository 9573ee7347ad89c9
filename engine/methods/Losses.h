// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "engine/methods/Units.h"

#include <span>
#include <variant>

namespace hec1::methods {

// Depths are inches or millimetres, rates are depths per hour; each method is told what the deck's card carries.

/// LU: all rain is lost until `initial` has fallen, then at most `rate`.
struct InitialUniformLoss
{
    double initial = 0;
    double rate = 0;
};

/// LS: `initial` abstraction (0: 0.2 S) and curve number, above 0 and up to 100.
struct CurveNumberLoss
{
    double initial = 0;
    double curveNumber = 0;
};

/// LE: exponential loss rate with STRKR, DLTKR, RTIOL and ERAIN.
struct ExponentialLoss
{
    double startRate = 0;
    double wettingDepth = 0;
    double decayRatio = 1;
    double rainExponent = 0;
};

/// LH: Holtan loss with FC, GIA, SAI and BEXP.
struct HoltanLoss
{
    double finalRate = 0;
    double growthIndex = 0;
    double availableStorage = 0;
    double exponent = 1.4;
};

/// LG: Green and Ampt infiltration with IA, DTHETA, PSIF and XKSAT.
struct GreenAmptLoss
{
    double initial = 0;
    double moistureDeficit = 0;
    double suction = 0;
    double conductivity = 0;
};

using LossMethod = std::variant<InitialUniformLoss, CurveNumberLoss, ExponentialLoss, HoltanLoss, GreenAmptLoss>;

/// What a loss method remembers of the rain that has fallen, so that a storm can be worked in pieces.
struct LossState
{
    double fallen = 0;      ///< rain so far
    double initialLost = 0; ///< part of the initial loss already met
    double lost = 0;        ///< loss so far on the pervious part (exponential), infiltrated depth (Green and Ampt)
    double soilUsed = 0;    ///< soil storage that is taken up (Holtan)
    double excess = 0;      ///< pervious excess so far (curve number)
};

/// Rainfall excess of each interval: `excess[i] = pervious excess x (1 - impervious) + rain x impervious`, never more
/// than the rain and never negative. The loss of an interval is `rain[i] - excess[i]`.
/// @param imperviousPercent RTIMP; held between 0 and 100.
/// @param rain depth of each interval; values below zero count as no rain.
/// @param excess as long as `rain`; may be the same memory.
/// @param state carried on from an earlier piece of the same storm when given.
/// @throws std::invalid_argument when a parameter is out of its range (curve number outside 0..100, negative rates,
///         DLTKR or storage negative, RTIOL below 1) or when the interval is not positive.
/// Sources: HEC-1 User's Manual (1998) section 3; NEH Part 630 chapter 10 (equation 10-11); Holtan (1961) as in the
/// same manual; Green-Ampt with ponding after Chow, Maidment and Mays, Applied Hydrology (1988), sections 4.3, 4.4
/// and 5.4.
void rainfallExcess(const LossMethod& method, double imperviousPercent, double intervalHours, const UnitSystem& units,
                    std::span<const double> rain, std::span<double> excess, LossState* state = nullptr);

} // namespace hec1::methods
