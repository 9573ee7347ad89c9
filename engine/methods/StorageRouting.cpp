// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/methods/StorageRouting.h"

#include "engine/methods/Interpolate.h"
#include "engine/methods/Require.h"

#include <algorithm>
#include <cmath>

namespace hec1::methods {

namespace {

/// Point of a table at a value of one of its columns; of several points with that value the lowest. Held below the
/// table, carried on above it.
PoolPoint pointAt(const std::vector<double>& column, double value, const std::vector<double>& storage,
                  const std::vector<double>& flow, const std::vector<double>& elevation)
{
    const auto along = [&](const std::vector<double>& wanted) {
        if (wanted.empty())
            return 0.0;
        const auto found = std::find_if(column.begin(), column.end(), [value](double v) { return v >= value; });
        if (found == column.begin())
            return wanted.front();
        if (found == column.end())
            return interpolateOnwards(column, wanted, value);
        const auto i = static_cast<std::size_t>(found - column.begin());
        return wanted[i - 1] + (value - column[i - 1]) / (column[i] - column[i - 1]) * (wanted[i] - wanted[i - 1]);
    };
    return {along(storage), along(flow), along(elevation)};
}

} // namespace

double PumpSet::flowAt(double elevation)
{
    double flow = 0;
    for (std::size_t i = 0; i < m_pumps.size(); ++i) {
        if (elevation > m_pumps[i].on)
            m_running[i] = true;
        else if (elevation < m_pumps[i].off || m_pumps[i].off >= m_pumps[i].on)
            m_running[i] = false;
        if (m_running[i])
            flow += std::max(m_pumps[i].flow, 0.0);
    }
    return flow;
}

StorageIndication::StorageIndication(const RatingTable& table, double intervalHours, const UnitSystem& units, double x,
                                     int steps)
    : m_hours(intervalHours), m_x(x), m_storageToFlow(units.storageFlowHours / intervalHours), m_flow(table.flow),
      m_storage(table.storage), m_elevation(table.elevation)
{
    require(isPositive(intervalHours), "computation interval is not positive");
    require(x >= 0 && x < 1, "weighting of wedge storage is not between 0 and 1");
    require(steps >= 1, "number of routing steps is below 1");
    require(!m_storage.empty(), "the storage-outflow relation is empty");
    require(m_storage.size() == m_flow.size(),
            "the storage-outflow relation has unequal numbers of storages and outflows");
    require(m_elevation.empty() || m_elevation.size() == m_storage.size(),
            "the storage-outflow relation has unequal numbers of storages and elevations");
    m_indication.reserve(m_storage.size());
    for (std::size_t i = 0; i < m_storage.size(); ++i) {
        m_storage[i] /= steps;
        require(std::isfinite(m_storage[i]) && std::isfinite(m_flow[i]) &&
                    (m_elevation.empty() || std::isfinite(m_elevation[i])),
                "the storage-outflow relation holds a value that is not finite");
        require(i == 0 || m_storage[i] >= m_storage[i - 1], "the storages of the storage-outflow relation fall");
        m_indication.push_back(m_storage[i] * m_storageToFlow + m_flow[i] / (2 * (1 - x)));
        require(i == 0 || m_indication[i] >= m_indication[i - 1],
                "the outflow falls faster than the storage rises over one computation interval");
    }
    for (std::size_t i = 1; i < m_indication.size(); ++i) {
        const double width = m_indication[i] - m_indication[i - 1];
        m_perIndication.push_back(width > 0 ? 1 / width : 0);
    }
    const std::size_t given = table.given > 0 ? std::min(table.given, m_storage.size()) : m_storage.size();
    m_lastGiven = m_indication[given - 1];
}

PoolPoint StorageIndication::start(const PoolStart& start, double firstInflow) const
{
    switch (start.kind) {
    case StartKind::Storage:
        return pointAt(m_storage, start.value, m_storage, m_flow, m_elevation);
    case StartKind::Elevation:
        require(!m_elevation.empty(), "a starting elevation needs elevations in the storage-outflow relation");
        return pointAt(m_elevation, start.value, m_storage, m_flow, m_elevation);
    case StartKind::Outflow:
        return pointAt(m_flow, start.value, m_storage, m_flow, m_elevation);
    case StartKind::FirstInflow:
        break;
    }
    return pointAt(m_flow, firstInflow, m_storage, m_flow, m_elevation);
}

PoolPoint StorageIndication::at(double indication, std::size_t& hint) const
{
    const std::size_t n = m_indication.size();
    if (n == 1 || !(indication > m_indication[0]))
        return {m_storage[0], m_flow[0], m_elevation.empty() ? 0 : m_elevation[0]};
    // The pool moves little between ordinates: walk a few segments from the last one, else search.
    std::size_t i = std::min(hint, n - 2);
    int walks = 8;
    while (walks > 0 && i + 2 < n && m_indication[i + 1] <= indication) {
        ++i;
        --walks;
    }
    while (walks > 0 && i > 0 && m_indication[i] > indication) {
        --i;
        --walks;
    }
    if (walks == 0) {
        const auto above = std::upper_bound(m_indication.begin(), m_indication.end(), indication);
        i = std::min(static_cast<std::size_t>(above - m_indication.begin()) - 1, n - 2);
    }
    while (i > 0 && !(m_indication[i + 1] > m_indication[i])) // over the top: the last segment that rises
        --i;
    hint = i;
    const double t = (indication - m_indication[i]) * m_perIndication[i];
    const auto along = [&](const std::vector<double>& column) { return column[i] + t * (column[i + 1] - column[i]); };
    return {along(m_storage), along(m_flow), m_elevation.empty() ? 0 : along(m_elevation)};
}

StorageRoutingNotes routePool(const StorageIndication& relation, std::span<const double> inflow, const PoolStart& start,
                              std::span<double> outflow, std::span<double> storage, std::span<double> elevation,
                              std::span<const Pump> pumps, std::span<double> pumped)
{
    StorageRoutingNotes notes;
    if (inflow.empty())
        return notes;
    const double x = relation.x();
    const double wedge = x / (2 * (1 - x));
    const double lowest = relation.firstIndication();
    const double highest = relation.lastGivenIndication();
    const double slack = 1e-9 * (std::abs(highest) + std::abs(lowest));
    PumpSet pumpSet(pumps);
    std::size_t hint = 0;

    PoolPoint point = relation.start(start, inflow[0]);
    double out = point.flow, before = inflow[0];
    const auto keep = [&](std::size_t i) {
        outflow[i] = out;
        if (!storage.empty())
            storage[i] = point.storage;
        if (!elevation.empty())
            elevation[i] = point.elevation;
    };
    keep(0);
    if (!pumped.empty())
        pumped[0] = 0;
    for (std::size_t i = 1; i < inflow.size(); ++i) {
        const double now = inflow[i];
        double indication = relation.storageFlow(point.storage) - out / 2 + (before + now) / 2 + wedge * now;
        if (!pumps.empty()) {
            double pumping = pumpSet.flowAt(point.elevation);
            pumping = std::clamp(indication - lowest, 0.0, pumping);
            indication -= pumping;
            if (!pumped.empty())
                pumped[i] = pumping;
        }
        notes.aboveTable |= indication > highest + slack;
        notes.belowTable |= indication < lowest - slack;
        point = relation.at(indication, hint);
        out = (point.flow - x * now) / (1 - x);
        before = now;
        keep(i);
    }
    return notes;
}

StorageRoutingNotes routeReach(const RatingTable& table, int steps, double x, double intervalHours,
                               const UnitSystem& units, std::span<const double> inflow, const PoolStart& start,
                               std::span<double> outflow, std::span<double> storage, std::span<double> elevation)
{
    const StorageIndication relation(table, intervalHours, units, x, steps);
    PoolStart stepStart = start;
    if (start.kind == StartKind::Storage)
        stepStart.value /= steps;
    if (start.kind == StartKind::FirstInflow && !inflow.empty())
        stepStart = {StartKind::Outflow, inflow[0]};

    StorageRoutingNotes notes;
    std::vector<double> stepStorage(storage.size());
    std::vector<double> sum(storage.size(), 0.0);
    std::span<const double> in = inflow;
    for (int step = 0; step < steps; ++step) {
        const StorageRoutingNotes one = routePool(relation, in, stepStart, outflow, stepStorage, elevation);
        notes.aboveTable |= one.aboveTable;
        notes.belowTable |= one.belowTable;
        for (std::size_t i = 0; i < sum.size(); ++i)
            sum[i] += stepStorage[i];
        in = outflow;
    }
    std::copy(sum.begin(), sum.end(), storage.begin());
    return notes;
}

std::vector<FlowRange> oscillationRanges(const RatingTable& table, double intervalHours, const UnitSystem& units,
                                         int steps)
{
    std::vector<FlowRange> ranges;
    std::size_t n = std::min(table.storage.size(), table.flow.size());
    if (table.given > 0)
        n = std::min(n, table.given);
    for (std::size_t i = 1; i < n; ++i) {
        const double rise = table.flow[i] - table.flow[i - 1];
        const double storage =
            (table.storage[i] - table.storage[i - 1]) / steps * units.storageFlowHours / intervalHours;
        if (!(rise > 0) || 2 * storage >= rise)
            continue;
        if (!ranges.empty() && ranges.back().to == table.flow[i - 1])
            ranges.back().to = table.flow[i];
        else
            ranges.push_back({table.flow[i - 1], table.flow[i]});
    }
    return ranges;
}

void storageFromFlows(std::span<const double> inflow, std::span<const double> outflow, double startStorage,
                      double intervalHours, const UnitSystem& units, std::span<double> storage)
{
    double now = startStorage;
    for (std::size_t i = 0; i < storage.size(); ++i) {
        if (i > 0)
            now += units.volumeOf((inflow[i - 1] + inflow[i] - outflow[i - 1] - outflow[i]) / 2, intervalHours);
        storage[i] = now;
    }
}

} // namespace hec1::methods
