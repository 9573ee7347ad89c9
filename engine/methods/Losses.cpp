// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/methods/Losses.h"

#include "engine/methods/Require.h"

#include <algorithm>
#include <cmath>

namespace hec1::methods {

namespace {

/// Takes what is still missing of the initial loss out of `rain` and returns the rest.
double afterInitialLoss(double rain, double initial, LossState& state)
{
    const double taken = std::clamp(initial - state.initialLost, 0.0, rain);
    state.initialLost += taken;
    return rain - taken;
}

// Each method has a function that turns the rain of one interval into pervious excess.

auto perviousExcess(const InitialUniformLoss& loss, double hours, const UnitSystem&)
{
    require(isNotNegative(loss.initial), "initial loss is negative");
    require(isNotNegative(loss.rate), "uniform loss rate is negative");
    return [initial = loss.initial, depth = loss.rate * hours](double rain, LossState& state) {
        return std::max(afterInitialLoss(rain, initial, state) - depth, 0.0);
    };
}

auto perviousExcess(const CurveNumberLoss& loss, double, const UnitSystem& units)
{
    require(loss.curveNumber > 0 && loss.curveNumber <= 100, "curve number is not above 0 and up to 100");
    require(isNotNegative(loss.initial), "initial abstraction is negative");
    const double retention = (1000 / loss.curveNumber - 10) / units.inches;
    const double initial = loss.initial > 0 ? loss.initial : 0.2 * retention;
    // The curve gives the excess of all rain so far; what an interval adds is the difference.
    return [retention, initial](double rain, LossState& state) {
        state.fallen += rain;
        const double over = state.fallen - initial;
        const double excess = over > 0 ? over * over / (over + retention) : 0;
        const double added = excess - state.excess;
        state.excess = excess;
        return added;
    };
}

auto perviousExcess(const ExponentialLoss& loss, double hours, const UnitSystem&)
{
    require(isNotNegative(loss.startRate), "starting loss rate is negative");
    require(isNotNegative(loss.wettingDepth), "wetting loss is negative");
    require(loss.decayRatio == 0 || (loss.decayRatio >= 1 && std::isfinite(loss.decayRatio)), "loss ratio is below 1");
    require(loss.rainExponent >= 0 && loss.rainExponent <= 1, "exponent of rain is not between 0 and 1");
    const double decay = loss.decayRatio > 1 ? -0.1 * std::log(loss.decayRatio) : 0;
    return [loss, hours, decay](double rain, LossState& state) {
        if (rain <= 0)
            return 0.0;
        const double rainRate = rain / hours;
        const double dry = loss.wettingDepth > 0 ? std::max(1 - state.lost / loss.wettingDepth, 0.0) : 0;
        const double coefficient = loss.startRate * std::exp(decay * state.lost) + 0.2 * loss.wettingDepth * dry * dry;
        const double lost = std::min(coefficient * std::pow(rainRate, loss.rainExponent) * hours, rain);
        state.lost += lost;
        return rain - lost;
    };
}

/// Loss of one interval by Holtan: the mean of the capacities at its start and end, at most the rain. As more loss
/// leaves less storage and so less capacity at the end, there is one solution; halving finds it always.
double holtanLoss(const HoltanLoss& soil, double hours, double rain, double storage)
{
    const auto capacity = [&soil](double available) {
        return (available > 0 ? soil.growthIndex * std::pow(available, soil.exponent) : 0) + soil.finalRate;
    };
    const double before = capacity(storage);
    const auto wanted = [&](double lost) {
        const double after = std::clamp(storage - lost + soil.finalRate * hours, 0.0, soil.availableStorage);
        return (before + capacity(after)) / 2 * hours;
    };
    if (wanted(rain) >= rain)
        return rain;
    double low = 0, high = rain;
    for (int i = 0; i < 60 && high - low > 1e-13 * rain; ++i) {
        const double middle = (low + high) / 2;
        (wanted(middle) > middle ? low : high) = middle;
    }
    return (low + high) / 2;
}

auto perviousExcess(const HoltanLoss& loss, double hours, const UnitSystem&)
{
    require(isNotNegative(loss.finalRate), "final infiltration rate is negative");
    require(isNotNegative(loss.growthIndex), "growth index is negative");
    require(isNotNegative(loss.availableStorage), "available soil storage is negative");
    require(isNotNegative(loss.exponent), "exponent of available storage is negative");
    HoltanLoss soil = loss;
    if (soil.exponent == 0)
        soil.exponent = HoltanLoss{}.exponent;
    return [soil, hours](double rain, LossState& state) {
        const double storage = std::clamp(soil.availableStorage - state.soilUsed, 0.0, soil.availableStorage);
        const double lost = rain > 0 ? holtanLoss(soil, hours, rain, storage) : 0;
        const double after = std::clamp(storage - lost + soil.finalRate * hours, 0.0, soil.availableStorage);
        state.soilUsed = soil.availableStorage - after;
        return rain - lost;
    };
}

/// Infiltration under ponding over `hours`, `before` being infiltrated already: x - s ln(1 + x / (before + s)) = k t.
/// The function is convex and the start lies above the root, so Newton's steps come down to it and never pass it.
double pondedInfiltration(double before, double suction, double conductivity, double hours)
{
    const double steady = conductivity * hours;
    if (suction <= 0)
        return steady;
    double x = steady + std::sqrt(2 * suction * steady);
    for (int i = 0; i < 50; ++i) {
        const double error = x - suction * std::log1p(x / (before + suction)) - steady;
        const double slope = (before + x) / (before + x + suction);
        if (!(slope > 0) || error <= 1e-14 * (x + steady))
            break;
        x = std::max(x - error / slope, steady);
    }
    return x;
}

auto perviousExcess(const GreenAmptLoss& loss, double hours, const UnitSystem&)
{
    require(isNotNegative(loss.initial), "initial loss is negative");
    require(loss.moistureDeficit >= 0 && loss.moistureDeficit <= 1, "moisture deficit is not between 0 and 1");
    require(isNotNegative(loss.suction), "wetting-front suction is negative");
    require(isNotNegative(loss.conductivity), "hydraulic conductivity is negative");
    const double suction = loss.suction * loss.moistureDeficit;
    return [initial = loss.initial, suction, k = loss.conductivity, hours](double rain, LossState& state) {
        const double left = afterInitialLoss(rain, initial, state);
        const double rate = left / hours;
        double infiltrated = left;
        if (rate > k) {
            const double atPonding = k * suction / (rate - k);
            if (state.lost + left > atPonding) {
                const double beforePonding = std::max(atPonding - state.lost, 0.0);
                const double ponded = std::max(hours - beforePonding / rate, 0.0);
                infiltrated = beforePonding + pondedInfiltration(state.lost + beforePonding, suction, k, ponded);
            }
        }
        infiltrated = std::min(infiltrated, left);
        state.lost += infiltrated;
        return left - infiltrated;
    };
}

} // namespace

void rainfallExcess(const LossMethod& method, double imperviousPercent, double intervalHours, const UnitSystem& units,
                    std::span<const double> rain, std::span<double> excess, LossState* state)
{
    require(isPositive(intervalHours), "computation interval is not positive");
    LossState own;
    LossState& memory = state ? *state : own;
    const double impervious = imperviousPercent > 0 ? std::min(imperviousPercent, 100.0) / 100 : 0;
    std::visit(
        [&](const auto& loss) {
            const auto step = perviousExcess(loss, intervalHours, units);
            for (std::size_t i = 0; i < rain.size(); ++i) {
                const double fallen = rain[i] > 0 ? rain[i] : 0;
                const double pervious = std::clamp(step(fallen, memory), 0.0, fallen);
                excess[i] = pervious * (1 - impervious) + fallen * impervious;
            }
        },
        method);
}

} // namespace hec1::methods
