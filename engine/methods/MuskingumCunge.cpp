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
    MuskingumCungeSteps result;
    if (inflow.empty())
        return result;

    const double intervalSeconds = intervalHours * 3600;
    const double lateralPeak = lateral.empty() ? 0 : std::max(*std::max_element(lateral.begin(), lateral.end()), 0.0);
    const double highest = std::max(*std::max_element(inflow.begin(), inflow.end()), 0.0) + lateralPeak;
    if (!(highest > 0)) {
        std::fill(outflow.begin(), outflow.end(), 0.0);
        result.seconds = intervalSeconds;
        result.distance = length;
        return result;
    }
    const FlowTable table(channel, highest);
    const Grid grid = chooseGrid(table.fastest(), length, intervalSeconds, inflow);
    const auto cells = static_cast<std::size_t>(grid.cells);
    const double dt = intervalSeconds / grid.stepsPerInterval, dx = length / grid.cells;
    result.seconds = dt;
    result.distance = dx;
    if (grid.passesThrough) {
        for (std::size_t i = 0; i < inflow.size(); ++i) {
            outflow[i] = inflow[i] + (lateral.empty() ? 0 : std::max(lateral[i], 0.0));
            if (i == 0 || outflow[i] > result.peakFlow) {
                result.peakFlow = outflow[i];
                result.peakMinutes = static_cast<double>(i) * intervalHours * 60;
            }
        }
        return result;
    }

    const auto lateralAt = [&](std::size_t i) { return lateral.empty() ? 0 : std::max(lateral[i], 0.0) / grid.cells; };
    std::vector<double> nodes(cells + 1); // flow at the cell ends, head of the reach first
    double head = inflow[0], side = lateralAt(0);
    for (std::size_t k = 0; k <= cells; ++k)
        nodes[k] = head + side * static_cast<double>(k);
    outflow[0] = nodes[cells];
    result.peakFlow = nodes[cells];

    for (std::size_t i = 1; i < inflow.size(); ++i) {
        const double headEnd = inflow[i], sideEnd = lateralAt(i);
        for (int s = 1; s <= grid.stepsPerInterval; ++s) {
            const double along = static_cast<double>(s) / grid.stepsPerInterval;
            const double half = 0.5 / grid.stepsPerInterval;
            const double cellSide =
                side + (along - half) * (sideEnd - side); // mean lateral inflow of a cell in the step
            double in1 = nodes[0];
            double in2 = nodes[0] = head + along * (headEnd - head);
            for (std::size_t k = 1; k <= cells; ++k) {
                const double out1 = nodes[k];
                double out2 = out1 + in2 - in1;
                for (int round = 0; round < 4; ++round) {
                    const double mean = (in1 + in2 + out1 + std::max(out2, 0.0)) / 4;
                    double celerity = 0, width = 0;
                    table.at(mean, celerity, width);
                    // Courant number and cell Reynolds number; weights after Ponce and Yevjevich (1978).
                    const double courant = celerity * dt / dx;
                    const double diffusion = std::max(mean, 0.0) / (width * slope * celerity * dx);
                    const double next = ((courant + 1 - diffusion) * in1 + (courant - 1 + diffusion) * in2 +
                                         (1 - courant + diffusion) * out1 + 2 * courant * cellSide) /
                                        (1 + courant + diffusion);
                    const bool settled = std::abs(next - out2) <= 1e-6 * highest;
                    out2 = next;
                    if (settled)
                        break;
                }
                nodes[k] = std::max(out2, 0.0);
                in1 = out1;
                in2 = nodes[k];
            }
            if (nodes[cells] > result.peakFlow) {
                result.peakFlow = nodes[cells];
                result.peakMinutes = (static_cast<double>(i - 1) + along) * intervalHours * 60;
            }
        }
        head = headEnd;
        side = sideEnd;
        outflow[i] = nodes[cells];
    }
    return result;
}

} // namespace hec1::methods
