// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/methods/KinematicWave.h"

#include "engine/methods/MuskingumCunge.h"
#include "engine/methods/Require.h"

#include <algorithm>
#include <cmath>

namespace hec1::methods {

namespace {

/// Solves dA/dt + dQ(A)/dx = q along a plane or channel in cells of equal length.
///
/// As a rule with an explicit scheme of second order (limited straight lines in each cell, two stages), in time steps
/// that keep the Courant number below one half. It balances volume to the last digit and, unlike the first-order
/// form, does not flatten the wave. Where the wave crosses the reach in a small part of the interval, so that this
/// would need very many steps, an implicit upwind step takes over, which is stable for every Courant number.
class KinematicReach
{
public:
    KinematicReach(const ChannelFlow& flow, double length, int minSteps)
        : m_flow(flow), m_cells(static_cast<std::size_t>(std::clamp(minSteps, kLeastCells, kMostCells))),
          m_dx(length / static_cast<double>(m_cells)), m_area(m_cells), m_stage(m_cells), m_change(m_cells)
    {
    }

    /// Steady flow under an inflow at the head and an even lateral inflow (per unit of length).
    void startSteady(double inflow, double lateral)
    {
        for (std::size_t i = 0; i < m_cells; ++i)
            m_area[i] = m_flow.area(inflow + lateral * m_dx * (static_cast<double>(i) + 0.5));
        m_dry = inflow <= 0 && lateral <= 0;
        m_out = std::max(inflow + lateral * m_dx * static_cast<double>(m_cells), 0.0);
    }

    double outflow() const { return m_out; }

    /// Goes on by `seconds`, inflow and lateral inflow changing in straight lines between their values at both ends.
    void advance(double seconds, double inflow1, double inflow2, double lateral1, double lateral2)
    {
        if (m_dry && inflow1 <= 0 && inflow2 <= 0 && lateral1 <= 0 && lateral2 <= 0)
            return;
        m_dry = false;
        const double mostSteps = kMostSteps * static_cast<double>(m_cells) / kLeastCells;
        double done = 0;
        while (done < seconds) {
            const double left = seconds - done;
            const double longest = courantStep(left, std::max(lateral1, lateral2), std::max(inflow1, inflow2));
            const double from = done / seconds;
            if (longest < left && longest * mostSteps < seconds) {
                implicitSteps(left, from, inflow1, inflow2, lateral1, lateral2);
                return;
            }
            // Equal steps to the end of the interval: a last sliver would cost as much as a whole step.
            const double count = std::ceil(left / longest - 1e-9);
            const double step = count > 1 ? left / count : left;
            explicitStep(step, from, (done + step) / seconds, inflow1, inflow2, lateral1, lateral2);
            done = count > 1 ? done + step : seconds;
        }
    }

private:
    static constexpr int kLeastCells = 24;
    static constexpr int kMostCells = 500;
    static constexpr double kMostSteps = 100;
    static constexpr int kImplicitSteps = 20;

    static double at(double share, double first, double second) { return first + share * (second - first); }

    /// Longest step that keeps the Courant number below one half, also for the area that lateral inflow will have made.
    double courantStep(double left, double lateral, double inflow) const
    {
        double largest = *std::max_element(m_area.begin(), m_area.end());
        largest = std::max(largest, m_flow.area(inflow));
        double step = left;
        for (int i = 0; i < 3; ++i) {
            const double celerity = m_flow.celerity(largest + std::max(lateral, 0.0) * step);
            if (!(celerity > 0) || step * celerity <= m_dx / 2)
                break;
            step = m_dx / (2 * celerity);
        }
        return step;
    }

    static double limitedSlope(double before, double after)
    {
        if (before * after <= 0)
            return 0;
        const double limit = 2 * std::min(std::abs(before), std::abs(after)); // monotonised central difference
        return std::copysign(std::min(limit, std::abs(before + after) / 2), before);
    }

    /// Rate of change of each cell; returns the flow out of the last one.
    double rates(const std::vector<double>& area, double inflow, double lateral, std::vector<double>& change) const
    {
        double fluxIn = std::max(inflow, 0.0);
        const double head = m_flow.area(fluxIn);
        for (std::size_t i = 0; i < m_cells; ++i) {
            const double before = i > 0 ? area[i] - area[i - 1] : 2 * (area[i] - head);
            const double after = i + 1 < m_cells ? area[i + 1] - area[i] : before;
            const double fluxOut = m_flow.flow(std::max(area[i] + limitedSlope(before, after) / 2, 0.0));
            change[i] = (fluxIn - fluxOut) / m_dx + lateral;
            fluxIn = fluxOut;
        }
        return fluxIn;
    }

    void explicitStep(double step, double from, double to, double inflow1, double inflow2, double lateral1,
                      double lateral2)
    {
        rates(m_area, at(from, inflow1, inflow2), at(from, lateral1, lateral2), m_change);
        for (std::size_t i = 0; i < m_cells; ++i)
            m_stage[i] = std::max(m_area[i] + step * m_change[i], 0.0);
        const double endInflow = at(to, inflow1, inflow2), endLateral = at(to, lateral1, lateral2);
        rates(m_stage, endInflow, endLateral, m_change);
        for (std::size_t i = 0; i < m_cells; ++i)
            m_area[i] = std::max((m_area[i] + m_stage[i] + step * m_change[i]) / 2, 0.0);
        settle();
    }

    /// Flow out of the last cell, and an end to films of water that no flow can be told from.
    void settle()
    {
        const std::size_t n = m_cells - 1;
        const double before = m_area[n] - m_area[n - 1];
        m_out = m_flow.flow(std::max(m_area[n] + limitedSlope(before, before) / 2, 0.0));
    }

    void implicitSteps(double seconds, double from, double inflow1, double inflow2, double lateral1, double lateral2)
    {
        const double step = seconds / kImplicitSteps;
        const double ratio = step / m_dx;
        for (int k = 1; k <= kImplicitSteps; ++k) {
            const double share = from + (1 - from) * k / kImplicitSteps;
            double fluxIn = std::max(at(share, inflow1, inflow2), 0.0);
            const double lateral = at(share, lateral1, lateral2);
            for (double& area : m_area) {
                const double held = std::max(area + step * lateral + ratio * fluxIn, 0.0);
                area = implicitArea(held, ratio);
                fluxIn = std::max(held - area, 0.0) / ratio;
            }
            m_out = fluxIn;
        }
    }

    /// Solves A + ratio Q(A) = held. Both bounds lie above the root of a function that bends upwards, so Newton comes
    /// down to it.
    double implicitArea(double held, double ratio) const
    {
        if (!(held > 0))
            return 0;
        double area = std::min(held, m_flow.area(held / ratio));
        for (int i = 0; i < 40; ++i) {
            double flow = 0, celerity = 0;
            m_flow.flowAndCelerity(area, flow, celerity);
            const double move = (area + ratio * flow - held) / (1 + ratio * celerity);
            area = std::clamp(area - move, 0.0, held);
            if (!(std::abs(move) > 1e-13 * held))
                break;
        }
        return area;
    }

    const ChannelFlow& m_flow;
    std::size_t m_cells;
    double m_dx;
    std::vector<double> m_area, m_stage, m_change;
    double m_out = 0;
    bool m_dry = true;
};

} // namespace

void overlandFlow(const OverlandPlane& plane, double intervalHours, const UnitSystem& units,
                  std::span<const double> excess, std::span<double> runoff)
{
    require(isPositive(plane.length), "length of the overland-flow plane is not positive");
    require(isPositive(intervalHours), "computation interval is not positive");
    const ChannelFlow flow = ChannelFlow::plane(plane.slope, plane.roughness, units);
    const double seconds = intervalHours * 3600;
    KinematicReach reach(flow, plane.length, plane.minSteps);
    for (std::size_t i = 0; i < excess.size(); ++i) {
        const double rate = std::max(excess[i], 0.0) * units.lengthPerDepth / seconds;
        if (i > 0)
            reach.advance(seconds, 0, 0, rate, rate);
        runoff[i] = reach.outflow();
    }
}

void routeKinematicWave(const ChannelFlow& channel, double length, int minSteps, double intervalHours,
                        std::span<const double> inflow, std::span<const double> lateral, std::span<double> outflow)
{
    require(isPositive(length), "channel length is not positive");
    require(isPositive(intervalHours), "computation interval is not positive");
    require(!inflow.empty() || !lateral.empty() || outflow.empty(), "kinematic-wave routing has no inflow");
    require(inflow.empty() || inflow.size() == outflow.size(), "inflow and outflow are not equally long");
    require(lateral.empty() || lateral.size() == outflow.size(), "lateral inflow and outflow are not equally long");
    if (outflow.empty())
        return;
    const auto headAt = [&](std::size_t i) { return inflow.empty() ? 0 : std::max(inflow[i], 0.0); };
    const auto sideAt = [&](std::size_t i) { return lateral.empty() ? 0 : std::max(lateral[i], 0.0) / length; };
    KinematicReach reach(channel, length, minSteps);
    double head = headAt(0), side = sideAt(0);
    reach.startSteady(head, side);
    outflow[0] = reach.outflow();
    for (std::size_t i = 1; i < outflow.size(); ++i) {
        const double nextHead = headAt(i), nextSide = sideAt(i);
        reach.advance(intervalHours * 3600, head, nextHead, side, nextSide);
        head = nextHead;
        side = nextSide;
        outflow[i] = reach.outflow();
    }
}

void kinematicSubbasin(std::span<const OverlandPlane> planes, std::span<const std::span<const double>> excess,
                       std::span<const SubbasinChannel> channels, double area, double intervalHours,
                       const UnitSystem& units, std::span<const double> upstream, std::span<double> flow)
{
    require(isPositive(area), "area of the subbasin is not positive");
    require(!planes.empty() && planes.size() == excess.size(),
            "a kinematic-wave subbasin needs one loss for each plane");
    const auto servedBy = [&](std::size_t channel) {
        if (channel + 1 >= channels.size())
            return area;
        require(isPositive(channels[channel].contributingArea),
                "contributing area of a collector channel is not positive");
        return channels[channel].contributingArea;
    };

    // Off the planes of what the first channel serves.
    double served = servedBy(0);
    std::vector<double> side(flow.size(), 0.0), runoff(flow.size());
    double percents = 0;
    for (std::size_t p = 0; p < planes.size(); ++p) {
        require(isNotNegative(planes[p].percent), "share of an overland-flow plane is negative");
        percents += planes[p].percent;
        overlandFlow(planes[p], intervalHours, units, excess[p], runoff);
        const double widthOfPlane = planes[p].percent / 100 * served * units.areaInLengths / planes[p].length;
        for (std::size_t i = 0; i < side.size(); ++i)
            side[i] += runoff[i] * widthOfPlane;
    }
    require(percents > 0, "the overland-flow planes have no share of the subbasin");

    for (std::size_t c = 0; c < channels.size(); ++c) {
        const double serves = servedBy(c);
        const double copies = serves / served; // typical collectors that empty into this channel
        for (double& q : side)
            q *= copies;
        served = serves;
        const StandardChannel& shape = channels[c].channel;
        const ChannelFlow section(shape, units);
        const bool last = c + 1 == channels.size();
        const std::span<const double> head = last ? upstream : std::span<const double>{};
        if (channels[c].muskingumCunge) {
            const std::vector<double> none(flow.size(), 0.0);
            routeMuskingumCunge(section, shape.length, shape.slope, intervalHours,
                                head.empty() ? std::span<const double>(none) : head, side, runoff);
        } else {
            routeKinematicWave(section, shape.length, channels[c].minSteps, intervalHours, head, side, runoff);
        }
        side.swap(runoff);
    }
    const bool joinsHere = channels.empty() && !upstream.empty();
    for (std::size_t i = 0; i < flow.size(); ++i)
        flow[i] = side[i] + (joinsHere ? upstream[i] : 0);
}

} // namespace hec1::methods
