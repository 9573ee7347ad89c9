// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/methods/MuskingumCunge.h"

#include "engine/methods/Require.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace hec1::methods {

namespace {

/// Celerity and top width against flow, tabulated once so that the inner loop looks up instead of solving for depth.
/// Points are even in the square root of flow, where both are nearly straight.
class FlowTable
{
public:
    FlowTable(const ChannelFlow& channel, double maxFlow) : m_scale(kPoints / std::sqrt(maxFlow))
    {
        m_celerity.reserve(kPoints + 2);
        m_width.reserve(kPoints + 2);
        for (int i = 0; i <= kPoints + 1; ++i) {
            const double root = std::max(i, kLeastPoint) / m_scale; // a dry bed has no celerity to go by
            const double area = channel.area(root * root);
            m_celerity.push_back(channel.celerity(area));
            m_width.push_back(channel.topWidth(area));
        }
    }
    void at(double flow, double& celerity, double& width) const
    {
        const double place = std::min(std::sqrt(std::max(flow, 0.0)) * m_scale, static_cast<double>(kPoints));
        const auto i = static_cast<std::size_t>(place);
        const double part = place - static_cast<double>(i);
        celerity = m_celerity[i] + part * (m_celerity[i + 1] - m_celerity[i]);
        width = m_width[i] + part * (m_width[i + 1] - m_width[i]);
    }

    /// Greatest celerity at any flow up to the highest.
    double fastest() const { return *std::max_element(m_celerity.begin(), m_celerity.end() - 1); }

private:
    static constexpr int kPoints = 400;
    static constexpr int kLeastPoint = 100; ///< flows under a sixteenth of the highest travel as fast as that
    double m_scale;
    std::vector<double> m_celerity, m_width;
};

struct Grid
{
    int stepsPerInterval = 1;
    int cells = 1;
    bool passesThrough = false; ///< the wave is through the reach in a fraction of any step worth taking
};

/// Internal steps: at least two cells, the step at most the interval and 1/20 of the rise, and no wave crosses more
/// than a cell in a step. Finer cells under the same step would send oscillations ahead of a steep front; with these
/// the peak stays within 0.01 percent of what ever finer steps give.
Grid chooseGrid(double fastest, double length, double intervalSeconds, std::span<const double> inflow)
{
    constexpr double kMostSteps = 120, kMostCells = 100;
    Grid grid;
    const auto peak = std::max_element(inflow.begin(), inflow.end());
    const double rise = static_cast<double>(peak - inflow.begin()) * intervalSeconds;
    const double travel = length / fastest;
    double step = std::min(intervalSeconds, travel / 2);
    if (rise > 0)
        step = std::min(step, rise / 20);
    grid.stepsPerInterval = static_cast<int>(std::clamp(std::ceil(intervalSeconds / step - 1e-9), 1.0, kMostSteps));
    step = intervalSeconds / grid.stepsPerInterval;
    grid.passesThrough = travel < step;
    grid.cells = static_cast<int>(std::clamp(std::floor(travel / step + 1e-9), 1.0, kMostCells));
    return grid;
}

/// The flows at the cell ends of a reach, moved on by one internal step after the other.
class CungeReach
{
public:
    CungeReach(const FlowTable& table, double slope, std::size_t cells, double dx, double dt, double highest)
        : m_table(table), m_slope(slope), m_dx(dx), m_dt(dt), m_settled(1e-6 * highest), m_nodes(cells + 1)
    {
    }
    /// @param side lateral inflow of each cell.
    void startSteady(double head, double side)
    {
        for (std::size_t k = 0; k < m_nodes.size(); ++k)
            m_nodes[k] = head + side * static_cast<double>(k);
    }
    void step(double headAtEnd, double meanSide)
    {
        double in1 = m_nodes[0];
        double in2 = m_nodes[0] = headAtEnd;
        for (std::size_t k = 1; k < m_nodes.size(); ++k) {
            const double out1 = m_nodes[k];
            m_nodes[k] = std::max(cellOutflow(in1, in2, out1, meanSide), 0.0);
            in1 = out1;
            in2 = m_nodes[k];
        }
    }
    double outflow() const { return m_nodes.back(); }

private:
    /// Outflow of a cell at the end of the step; celerity and width are those of the mean of its four flows.
    double cellOutflow(double in1, double in2, double out1, double side) const
    {
        double out2 = out1 + in2 - in1;
        for (int round = 0; round < 4; ++round) {
            const double mean = std::max((in1 + in2 + out1 + std::max(out2, 0.0)) / 4, 0.0);
            double celerity = 0, width = 0;
            m_table.at(mean, celerity, width);
            // Courant number and cell Reynolds number; weights after Ponce and Yevjevich (1978).
            const double courant = celerity * m_dt / m_dx;
            const double diffusion = mean / (width * m_slope * celerity * m_dx);
            const double next = ((courant + 1 - diffusion) * in1 + (courant - 1 + diffusion) * in2 +
                                 (1 - courant + diffusion) * out1 + 2 * courant * side) /
                                (1 + courant + diffusion);
            const bool settled = std::abs(next - out2) <= m_settled;
            out2 = next;
            if (settled)
                break;
        }
        return out2;
    }
    const FlowTable& m_table;
    double m_slope, m_dx, m_dt, m_settled;
    std::vector<double> m_nodes;
};

} // namespace

MuskingumCungeSteps routeMuskingumCunge(const ChannelFlow& channel, double length, double slope, double intervalHours,
                                        std::span<const double> inflow, std::span<const double> lateral,
                                        std::span<double> outflow)
{
    require(isPositive(length), "channel length is not positive");
    require(isPositive(slope), "channel slope is not positive");
    require(isPositive(intervalHours), "computation interval is not positive");
    require(inflow.size() == outflow.size(), "inflow and outflow are not equally long");
    require(lateral.empty() || lateral.size() == outflow.size(), "lateral inflow and outflow are not equally long");
    const double intervalSeconds = intervalHours * 3600;
    MuskingumCungeSteps result{intervalSeconds, length, 0, 0};
    if (inflow.empty())
        return result;
    const auto noteFlow = [&](double flow, double intervals) {
        if (intervals == 0 || flow > result.peakFlow) {
            result.peakFlow = flow;
            result.peakMinutes = intervals * intervalHours * 60;
        }
    };
    const auto sideAt = [&](std::size_t i) { return lateral.empty() ? 0 : std::max(lateral[i], 0.0); };

    const double lateralPeak = lateral.empty() ? 0 : std::max(*std::max_element(lateral.begin(), lateral.end()), 0.0);
    const double highest = std::max(*std::max_element(inflow.begin(), inflow.end()), 0.0) + lateralPeak;
    if (!(highest > 0)) {
        std::fill(outflow.begin(), outflow.end(), 0.0);
        return result;
    }
    const FlowTable table(channel, highest);
    const Grid grid = chooseGrid(table.fastest(), length, intervalSeconds, inflow);
    if (grid.passesThrough) {
        for (std::size_t i = 0; i < inflow.size(); ++i) {
            outflow[i] = inflow[i] + sideAt(i);
            noteFlow(outflow[i], static_cast<double>(i));
        }
        return result;
    }

    result.seconds = intervalSeconds / grid.stepsPerInterval;
    result.distance = length / grid.cells;
    CungeReach reach(table, slope, static_cast<std::size_t>(grid.cells), result.distance, result.seconds, highest);
    double head = inflow[0], side = sideAt(0) / grid.cells;
    reach.startSteady(head, side);
    outflow[0] = reach.outflow();
    noteFlow(outflow[0], 0);
    for (std::size_t i = 1; i < inflow.size(); ++i) {
        const double headEnd = inflow[i], sideEnd = sideAt(i) / grid.cells;
        for (int s = 1; s <= grid.stepsPerInterval; ++s) {
            const double along = static_cast<double>(s) / grid.stepsPerInterval;
            const double middle = along - 0.5 / grid.stepsPerInterval;
            reach.step(head + along * (headEnd - head), side + middle * (sideEnd - side));
            noteFlow(reach.outflow(), static_cast<double>(i - 1) + along);
        }
        head = headEnd;
        side = sideEnd;
        outflow[i] = reach.outflow();
    }
    return result;
}

} // namespace hec1::methods
