// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/methods/DamBreach.h"

#include "engine/methods/Require.h"

#include <algorithm>
#include <cmath>

namespace hec1::methods {

namespace {

/// The opening at some time after the breach began.
class GrowingBreach
{
public:
    GrowingBreach(const Breach& breach, const PoolOutlets& outlets, const UnitSystem& units)
        : m_breach(breach), m_outlets(outlets), m_units(units),
          m_top(outlets.dam ? outlets.dam->top : breach.failElevation)
    {
    }
    /// Outflow of pool and breach, `hours` after the breach began.
    double outflow(double elevation, double hours) const
    {
        const double grown = m_breach.hours > 0 ? std::clamp(hours / m_breach.hours, 0.0, 1.0) : 1;
        const double bottom = m_top - grown * std::max(m_top - m_breach.bottom, 0.0);
        const double width = grown * m_breach.width;
        const double depth = m_top - bottom;
        const double head = std::max(elevation - bottom, 0.0), headOverTop = std::max(head - depth, 0.0);
        // The sides end at the top of the dam; over that the opening grows no wider.
        const double sides = power25(head) - power25(headOverTop);
        return outflowAt(m_outlets, elevation, m_units, width + 2 * m_breach.sideSlope * depth) +
               m_units.breachWeir * width * head * std::sqrt(head) + m_units.breachSides * m_breach.sideSlope * sides;
    }

private:
    static double power25(double head) { return head * head * std::sqrt(head); }
    const Breach& m_breach;
    const PoolOutlets& m_outlets;
    const UnitSystem& m_units;
    double m_top;
};

struct PoolState
{
    double storage = 0;
    double elevation = 0;
    double outflow = 0;
};

/// One step of level-pool routing with an outflow that depends on elevation and time.
class PoolStepper
{
public:
    PoolStepper(const PoolStorage& pool, const UnitSystem& units) : m_pool(pool), m_units(units) {}

    /// @param net mean inflow less pumped flow over the step; `outflowAtEnd(elevation)` is the outflow at its end.
    template <typename Outflow>
    PoolState step(const PoolState& from, double net, double hours, Outflow outflowAtEnd) const
    {
        const double toFlow = m_units.storageFlowHours / hours;
        const double lowest = m_pool.storage.front();
        const double wanted = from.storage * toFlow - from.outflow / 2 + net;
        const auto error = [&](double storage) {
            return storage * toFlow + outflowAtEnd(m_pool.elevationAt(storage)) / 2 - wanted;
        };
        if (!(error(lowest) < 0)) // the pool runs dry: what was there and came in is all that can leave
            return {lowest, m_pool.elevation.front(), std::max(2 * (wanted - lowest * toFlow), 0.0)};
        const double storage = root(error, lowest, wanted / toFlow);
        const double elevation = m_pool.elevationAt(storage);
        return {storage, elevation, outflowAtEnd(elevation)};
    }

private:
    /// Zero of a rising function between `low` (below zero) and `high` (not below zero) by false position with
    /// halved weights (Illinois), which keeps the bracket and converges faster than halving.
    template <typename Function> static double root(const Function& f, double low, double high)
    {
        double atLow = f(low), atHigh = f(high);
        int side = 0;
        for (int i = 0; i < 100 && high - low > 1e-13 * (std::abs(low) + std::abs(high)); ++i) {
            if (!(atHigh > 0))
                return high;
            const double middle = (low * atHigh - high * atLow) / (atHigh - atLow);
            const double at = f(middle);
            if (at < 0) {
                low = middle;
                atLow = at;
                if (side == -1)
                    atHigh /= 2;
                side = -1;
            } else if (at > 0) {
                high = middle;
                atHigh = at;
                if (side == 1)
                    atLow /= 2;
                side = 1;
            } else {
                return middle;
            }
        }
        return (low + high) / 2;
    }
    const PoolStorage& m_pool;
    const UnitSystem& m_units;
};

/// Gathers the line of the dam table while the pool moves on.
class SummaryKeeper
{
public:
    SummaryKeeper(DamSummary& summary, const PoolOutlets& outlets) : m_summary(summary)
    {
        m_hasTop = outlets.dam.has_value();
        m_top = m_hasTop ? outlets.dam->top : 0;
    }
    void start(const PoolState& state, double hours)
    {
        m_summary.peakElevation = m_before = state.elevation;
        m_summary.peakStorage = state.storage;
        m_summary.peakFlow = state.outflow;
        m_summary.peakFlowHours = hours;
        m_hours = hours;
    }
    void next(const PoolState& state, double hours)
    {
        m_summary.peakElevation = std::max(m_summary.peakElevation, state.elevation);
        m_summary.peakStorage = std::max(m_summary.peakStorage, state.storage);
        if (state.outflow > m_summary.peakFlow) {
            m_summary.peakFlow = state.outflow;
            m_summary.peakFlowHours = hours;
        }
        if (m_hasTop)
            m_summary.hoursOverTop += (hours - m_hours) * shareOverTop(m_before, state.elevation);
        m_before = state.elevation;
        m_hours = hours;
    }
    void finish()
    {
        if (m_hasTop)
            m_summary.depthOverDam = std::max(m_summary.peakElevation - m_top, 0.0);
    }

private:
    double shareOverTop(double from, double to) const
    {
        const double high = std::max(from, to), low = std::min(from, to);
        if (high <= m_top)
            return 0;
        return low >= m_top ? 1 : (high - m_top) / (high - low);
    }
    DamSummary& m_summary;
    bool m_hasTop = false;
    double m_top = 0, m_before = 0, m_hours = 0;
};

/// First ordinate at which the pool has reached `elevation`; the count when it never does.
std::size_t firstReached(std::span<const double> elevations, double elevation)
{
    return static_cast<std::size_t>(
        std::find_if(elevations.begin(), elevations.end(), [elevation](double e) { return e >= elevation; }) -
        elevations.begin());
}

/// The run of a pool from the ordinate before its dam fails.
class BreachRun
{
public:
    BreachRun(const PoolStorage& pool, const PoolOutlets& outlets, const Breach& breach, const UnitSystem& units,
              double intervalHours, std::span<const double> inflow, SummaryKeeper& keeper)
        : m_opening(breach, outlets, units), m_stepper(pool, units), m_breachHours(breach.hours),
          m_intervalHours(intervalHours), m_inflow(inflow), m_keeper(keeper)
    {
    }
    void start(const PoolState& state, double hours, double failureHours)
    {
        m_state = state;
        m_now = hours;
        m_failure = failureHours;
    }
    /// On to ordinate `i`: to the failure in one step, through the growth in fiftieths of it, then in twentieths of an
    /// interval, each of these or shorter.
    const PoolState& advance(std::size_t i, double pumping)
    {
        const double end = static_cast<double>(i) * m_intervalHours;
        const double growing = m_breachHours / 50;
        const double grown = std::min(m_intervalHours, std::max(growing, m_intervalHours / 20));
        moveTo(std::min(m_failure, end), m_intervalHours, i, pumping);
        moveTo(std::min(m_failure + m_breachHours, end), std::clamp(growing, m_intervalHours * 1e-6, m_intervalHours),
               i, pumping);
        moveTo(end, grown, i, pumping);
        m_now = end;
        return m_state;
    }

private:
    double inflowAt(double hours, std::size_t i) const // within the interval that ends at ordinate i
    {
        const double along = hours / m_intervalHours - static_cast<double>(i - 1);
        return m_inflow[i - 1] + along * (m_inflow[i] - m_inflow[i - 1]);
    }
    void moveTo(double until, double longest, std::size_t i, double pumping)
    {
        const double span = until - m_now, begin = m_now;
        if (!(span > 1e-9 * m_intervalHours))
            return;
        const double steps = std::max(std::ceil(span / longest - 1e-9), 1.0);
        for (double k = 1; k <= steps; ++k) {
            const double end = k == steps ? until : begin + span * k / steps;
            const double net = (inflowAt(m_now, i) + inflowAt(end, i)) / 2 - pumping;
            m_state = m_stepper.step(m_state, net, end - m_now,
                                     [&](double e) { return m_opening.outflow(e, end - m_failure); });
            m_now = end;
            m_keeper.next(m_state, m_now);
        }
    }
    GrowingBreach m_opening;
    PoolStepper m_stepper;
    double m_breachHours, m_intervalHours;
    std::span<const double> m_inflow;
    SummaryKeeper& m_keeper;
    PoolState m_state;
    double m_now = 0, m_failure = 0;
};

} // namespace

DamSummary routeDam(const PoolStorage& pool, const PoolOutlets& outlets, const RatingTable& rating,
                    const std::optional<Breach>& breach, double intervalHours, const UnitSystem& units,
                    std::span<const double> inflow, const PoolStart& start, std::span<double> outflow,
                    std::span<double> storage, std::span<double> elevation, std::span<const Pump> pumps,
                    std::span<double> pumped)
{
    DamSummary summary;
    const std::size_t n = inflow.size();
    if (n == 0)
        return summary;
    if (breach)
        require(isNotNegative(breach->width) && isNotNegative(breach->sideSlope) && isNotNegative(breach->hours) &&
                    std::isfinite(breach->bottom) && std::isfinite(breach->failElevation),
                "the breach has a negative width, side slope or duration");
    const std::vector<double> in(inflow.begin(), inflow.end()); // the outflow may take the place of the inflow
    summary.notes = routePool(StorageIndication(rating, intervalHours, units), in, start, outflow, storage, elevation,
                              pumps, pumped);

    SummaryKeeper keeper(summary, outlets);
    const auto stateAt = [&](std::size_t i) { return PoolState{storage[i], elevation[i], outflow[i]}; };
    const auto hoursAt = [&](std::size_t i) { return static_cast<double>(i) * intervalHours; };
    const std::size_t reached = breach ? firstReached(elevation, breach->failElevation) : n;
    keeper.start(stateAt(0), 0);
    for (std::size_t i = 1; i < reached; ++i)
        keeper.next(stateAt(i), hoursAt(i));
    if (reached == n) {
        keeper.finish();
        return summary;
    }

    // Up to the breach as routed; then on from the moment at which the straight line reaches the fail elevation.
    PumpSet pumpSet(pumps);
    for (std::size_t i = 0; i + 1 < reached; ++i)
        pumpSet.flowAt(elevation[i]);
    const std::size_t last = reached > 0 ? reached - 1 : 0;
    summary.failed = true;
    summary.failureHours = hoursAt(last);
    if (reached > 0) {
        const double rise = elevation[reached] - elevation[last];
        summary.failureHours += intervalHours * (rise > 0 ? (breach->failElevation - elevation[last]) / rise : 1);
    }
    BreachRun run(pool, outlets, *breach, units, intervalHours, in, keeper);
    run.start(stateAt(last), hoursAt(last), summary.failureHours);
    for (std::size_t i = last + 1; i < n; ++i) {
        const double pumping = pumpSet.flowAt(elevation[i - 1]);
        const PoolState& state = run.advance(i, pumping);
        outflow[i] = state.outflow;
        storage[i] = state.storage;
        elevation[i] = state.elevation;
        if (!pumped.empty())
            pumped[i] = pumping;
    }
    keeper.finish();
    return summary;
}

} // namespace hec1::methods
