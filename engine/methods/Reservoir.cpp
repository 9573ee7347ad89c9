// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/methods/Reservoir.h"

#include "engine/methods/Interpolate.h"
#include "engine/methods/Require.h"

#include <algorithm>
#include <cmath>

namespace hec1::methods {

namespace {

/// head^exponent; the two exponents of nearly every deck do not need pow().
double headPower(double head, double exponent)
{
    if (head <= 0)
        return 0;
    if (exponent == 0.5)
        return std::sqrt(head);
    if (exponent == 1.5)
        return head * std::sqrt(head);
    return std::pow(head, exponent);
}

void checkPool(const PoolStorage& pool)
{
    require(pool.elevation.size() >= 2, "the storage table has fewer than two points");
    require(pool.elevation.size() == pool.storage.size(),
            "the storage table has unequal numbers of storages and elevations");
    for (std::size_t i = 0; i < pool.elevation.size(); ++i) {
        require(std::isfinite(pool.elevation[i]) && std::isfinite(pool.storage[i]),
                "the storage table holds a value that is not finite");
        require(i == 0 || pool.elevation[i] > pool.elevation[i - 1], "the elevations of the storage table do not rise");
        require(i == 0 || pool.storage[i] >= pool.storage[i - 1], "the storages of the storage table fall");
    }
    require(pool.storage.back() > pool.storage.front(), "the storage table holds no storage");
}

/// Elevations at which storage or outflow bend, from the bottom of the table to `top`.
std::vector<double> bends(const PoolStorage& pool, const PoolOutlets& outlets, double top)
{
    std::vector<double> all = pool.elevation;
    all.insert(all.end(), outlets.ratedElevation.begin(), outlets.ratedElevation.end());
    if (outlets.lowLevel)
        all.push_back(outlets.lowLevel->centre);
    if (outlets.spillway)
        all.push_back(outlets.spillway->crest);
    if (outlets.dam) {
        all.push_back(outlets.dam->top);
        all.insert(all.end(), outlets.dam->elevations.begin(), outlets.dam->elevations.end());
    }
    all.push_back(top);
    std::erase_if(all, [&](double e) { return !(e >= pool.elevation.front() && e <= top); });
    std::sort(all.begin(), all.end());
    all.erase(std::unique(all.begin(), all.end()), all.end());
    return all;
}

/// Adds elevations between two bends until straight lines follow the outflow.
class Refiner
{
public:
    Refiner(const PoolOutlets& outlets, const UnitSystem& units, double leastFlow)
        : m_outlets(outlets), m_units(units), m_leastFlow(leastFlow)
    {
    }
    void refine(double low, double lowFlow, double high, double highFlow, int depth,
                std::vector<double>& elevations) const
    {
        const double middle = (low + high) / 2;
        const double flow = outflowAt(m_outlets, middle, m_units);
        const double error = std::abs(flow - (lowFlow + highFlow) / 2);
        if (depth <= 0 || !(error > kTolerance * std::max(std::abs(flow), m_leastFlow)))
            return;
        refine(low, lowFlow, middle, flow, depth - 1, elevations);
        elevations.push_back(middle);
        refine(middle, flow, high, highFlow, depth - 1, elevations);
    }

private:
    static constexpr double kTolerance = 3e-5;
    const PoolOutlets& m_outlets;
    const UnitSystem& m_units;
    double m_leastFlow;
};

RatingTable tableAt(std::vector<double> elevations, const PoolStorage& pool, const PoolOutlets& outlets,
                    const UnitSystem& units)
{
    RatingTable table;
    table.storage.reserve(elevations.size());
    table.flow.reserve(elevations.size());
    for (const double e : elevations) {
        table.storage.push_back(pool.storageAt(e));
        table.flow.push_back(outflowAt(outlets, e, units));
        table.given += e <= pool.elevation.back() ? 1 : 0;
    }
    table.elevation = std::move(elevations);
    return table;
}

} // namespace

double PoolStorage::storageAt(double elevationOfPool) const
{
    return interpolateOnwards(elevation, storage, elevationOfPool);
}

double PoolStorage::elevationAt(double storageOfPool) const
{
    return interpolateOnwards(storage, elevation, storageOfPool);
}

std::vector<double> conicStorage(std::span<const double> areas, std::span<const double> elevations)
{
    require(areas.size() == elevations.size(), "the area table has unequal numbers of areas and elevations");
    std::vector<double> storage(areas.size(), 0.0);
    for (std::size_t i = 0; i < areas.size(); ++i) {
        require(isNotNegative(areas[i]), "a surface area is negative");
        if (i == 0)
            continue;
        const double height = elevations[i] - elevations[i - 1];
        require(isPositive(height), "the elevations of the area table do not rise");
        storage[i] = storage[i - 1] + height / 3 * (areas[i - 1] + areas[i] + std::sqrt(areas[i - 1] * areas[i]));
    }
    return storage;
}

double flowThrough(const LowLevelOutlet& outlet, double elevation, const UnitSystem& units)
{
    const double exponent = outlet.exponent > 0 ? outlet.exponent : 0.5;
    return outlet.coefficient * outlet.area * std::sqrt(units.twoG) * headPower(elevation - outlet.centre, exponent);
}

double flowOver(const Weir& weir, double elevation)
{
    return weir.coefficient * weir.length * headPower(elevation - weir.crest, weir.exponent > 0 ? weir.exponent : 1.5);
}

double flowOver(const DamCrest& crest, double elevation, double breached)
{
    const double exponent = crest.exponent > 0 ? crest.exponent : 1.5;
    const std::size_t n = std::min(crest.lengths.size(), crest.elevations.size());
    if (n == 0)
        return crest.coefficient * std::max(crest.length - breached, 0.0) * headPower(elevation - crest.top, exponent);

    double sum = crest.lengths[0] * headPower(elevation - crest.elevations[0], exponent);
    for (std::size_t i = 1; i < n && elevation > crest.elevations[i - 1]; ++i) {
        const double low = crest.elevations[i - 1], high = crest.elevations[i];
        const double length = crest.lengths[i] - crest.lengths[i - 1];
        const double wetTo = std::min(elevation, high);
        const double wetShare = high > low ? (wetTo - low) / (high - low) : 1;
        sum += length * wetShare * headPower(elevation - (low + wetTo) / 2, exponent);
    }
    const double whole = crest.lengths[n - 1];
    const double left = whole > 0 ? std::clamp(1 - breached / whole, 0.0, 1.0) : 1;
    return crest.coefficient * sum * left;
}

double outflowAt(const PoolOutlets& outlets, double elevation, const UnitSystem& units, double breached)
{
    double flow = 0;
    if (!outlets.ratedElevation.empty())
        flow += interpolateOnwards(outlets.ratedElevation, outlets.ratedFlow, elevation);
    if (outlets.lowLevel)
        flow += flowThrough(*outlets.lowLevel, elevation, units);
    if (outlets.spillway)
        flow += flowOver(*outlets.spillway, elevation);
    if (outlets.dam)
        flow += flowOver(*outlets.dam, elevation, breached);
    return flow;
}

RatingTable mergedRating(const PoolStorage& pool, const PoolOutlets& outlets, const UnitSystem& units)
{
    checkPool(pool);
    const double bottom = pool.elevation.front(), top = pool.elevation.back();
    const std::vector<double> corners = bends(pool, outlets, top + (top - bottom));
    const double leastShare = 1e-4; // flows below this share of the greatest are followed no closer than at it
    const Refiner refiner(outlets, units, leastShare * std::abs(outflowAt(outlets, top, units)));
    const int maxHalvings = 18;

    std::vector<double> elevations{corners.front()};
    double flowBefore = outflowAt(outlets, corners.front(), units);
    for (std::size_t i = 1; i < corners.size(); ++i) {
        const double flow = outflowAt(outlets, corners[i], units);
        refiner.refine(corners[i - 1], flowBefore, corners[i], flow, maxHalvings, elevations);
        elevations.push_back(corners[i]);
        flowBefore = flow;
    }
    return tableAt(std::move(elevations), pool, outlets, units);
}

RatingTable printedRating(const PoolStorage& pool, const PoolOutlets& outlets, const UnitSystem& units,
                          std::size_t points)
{
    checkPool(pool);
    std::vector<double> elevations = bends(pool, outlets, pool.elevation.back());
    while (elevations.size() < points) {
        std::size_t widest = 1;
        for (std::size_t i = 2; i < elevations.size(); ++i)
            if (elevations[i] - elevations[i - 1] > (elevations[widest] - elevations[widest - 1]) * (1 + 1e-9))
                widest = i;
        const double middle = (elevations[widest - 1] + elevations[widest]) / 2;
        elevations.insert(elevations.begin() + static_cast<std::ptrdiff_t>(widest), middle);
    }
    return tableAt(std::move(elevations), pool, outlets, units);
}

} // namespace hec1::methods
