// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "engine/methods/Reservoir.h"
#include "engine/methods/Units.h"

#include <cstddef>
#include <span>
#include <vector>

namespace hec1::methods {

/// How a pool or reach starts: RS fields 2 and 3.
enum class StartKind
{
    Storage,
    Elevation,
    Outflow,
    FirstInflow
};
struct PoolStart
{
    StartKind kind = StartKind::Storage;
    double value = 0; ///< storage, elevation or flow; not used for FirstInflow
};

/// WP: on when the pool stands above `on` at the start of an interval, off when it stands below `off`.
struct Pump
{
    double on = 0;
    double off = 0;
    double flow = 0;
};

/// Which pumps run. They change only between intervals.
class PumpSet
{
public:
    explicit PumpSet(std::span<const Pump> pumps) : m_pumps(pumps), m_running(pumps.size(), false) {}
    /// Flow of all pumps through the interval that begins with the pool at `elevation`.
    double flowAt(double elevation);

private:
    std::span<const Pump> m_pumps;
    std::vector<bool> m_running;
};

/// What to warn of after a routing.
struct StorageRoutingNotes
{
    bool aboveTable = false; ///< the pool rose over the last given point: the last segment was carried on
    bool belowTable = false; ///< the pool fell under the first given point: that point was held
};

/// A point of the storage-outflow relation.
struct PoolPoint
{
    double storage = 0;
    double flow = 0;
    double elevation = 0; ///< 0 when the relation has no elevations
};

/// A storage-outflow relation made ready for one interval: outflow, storage and elevation as straight lines of the
/// storage indication S/h + O/2 (or S/h + D/(2(1-X)) for the Working R and D method). Make it once and route many
/// hydrographs.
class StorageIndication
{
public:
    /// @param x weighting of wedge storage, 0 <= x < 1; 0 is modified Puls. @param steps storages are divided by it.
    /// @throws std::invalid_argument when the relation has no points, unequal counts, values that are not finite,
    /// storage
    ///         that falls, or outflow that falls so steeply that the indication does not rise; or x or steps out of
    ///         range.
    StorageIndication(const RatingTable& table, double intervalHours, const UnitSystem& units, double x = 0,
                      int steps = 1);

    /// The point where the pool stands at the start. FirstInflow: outflow = `firstInflow`.
    PoolPoint start(const PoolStart& start, double firstInflow) const;

    /// The point that belongs to a storage indication. `hint` is the segment of the last look-up; begin with 0.
    PoolPoint at(double indication, std::size_t& hint) const;

    double intervalHours() const { return m_hours; }
    double x() const { return m_x; }
    /// Storage as flow over one interval.
    double storageFlow(double storage) const { return storage * m_storageToFlow; }
    double firstIndication() const { return m_indication.front(); }
    double lastGivenIndication() const { return m_lastGiven; }
    bool hasElevations() const { return !m_elevation.empty(); }

private:
    double m_hours;
    double m_x;
    double m_storageToFlow; ///< units of storage to flow over one interval
    double m_lastGiven;     ///< indication of the last point that the deck gave
    std::vector<double> m_indication, m_flow, m_storage, m_elevation;
    std::vector<double> m_perIndication; ///< of each segment 1 / its width, 0 of one without: no division in the step
};

/// Routes one pool or subreach by storage indication: S2/h + O2/2 = S1/h - O1/2 + (I1 + I2)/2 - pumped.
/// @param outflow as long as `inflow`, may be the same memory; `storage` and `elevation` likewise or empty.
/// @param pumps each runs at its flow through an interval or not at all, but never pumps the pool below its lowest
/// point.
/// @param pumped flow of all pumps in the interval that ends at the ordinate (0 at ordinate 0); or empty.
/// Source: Chow, Maidment and Mays (1988) section 8.2; NEH Part 630 chapter 17; HEC-1 User's Manual (1998) section 3.
StorageRoutingNotes routePool(const StorageIndication& relation, std::span<const double> inflow, const PoolStart& start,
                              std::span<double> outflow, std::span<double> storage, std::span<double> elevation,
                              std::span<const Pump> pumps = {}, std::span<double> pumped = {});

/// RS of a channel: `steps` equal subreaches one after the other, the storages of `table` being those of the whole
/// reach. `storage` becomes the sum over the subreaches, `elevation` that of the last. A starting storage is shared
/// equally; FirstInflow starts every subreach with the first inflow of the whole reach.
StorageRoutingNotes routeReach(const RatingTable& table, int steps, double x, double intervalHours,
                               const UnitSystem& units, std::span<const double> inflow, const PoolStart& start,
                               std::span<double> outflow, std::span<double> storage, std::span<double> elevation);

/// A stretch of outflow in which the storage indication method may oscillate: 2 dS / (h dO) < 1.
struct FlowRange
{
    double from = 0;
    double to = 0;
};
std::vector<FlowRange> oscillationRanges(const RatingTable& table, double intervalHours, const UnitSystem& units,
                                         int steps = 1);

/// HS: storage from known inflow and outflow: storage[0] = start, then plus the mean of inflow less outflow of each
/// interval.
void storageFromFlows(std::span<const double> inflow, std::span<const double> outflow, double startStorage,
                      double intervalHours, const UnitSystem& units, std::span<double> storage);

} // namespace hec1::methods
