// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/methods/ChannelFlow.h"

#include "engine/methods/Require.h"

#include <algorithm>
#include <cmath>

namespace hec1::methods {

namespace {

/// x^m for the exponents of the kinematic table without pow().
double powerOf(double x, double m)
{
    if (!(x > 0))
        return 0;
    if (m == 5.0 / 3)
        return x * std::cbrt(x * x);
    if (m == 4.0 / 3)
        return x * std::cbrt(x);
    return x * std::sqrt(std::sqrt(x)); // 5/4
}

double inversePowerOf(double y, double m)
{
    if (!(y > 0))
        return 0;
    if (m == 5.0 / 3)
        return std::pow(y, 0.6);
    if (m == 4.0 / 3)
        return std::sqrt(std::sqrt(y)) * std::sqrt(y);
    return std::pow(y, 0.8);
}

} // namespace

ChannelFlow::ChannelFlow(const StandardChannel& channel, const UnitSystem& units)
{
    require(isPositive(channel.length), "channel length is not positive");
    require(isPositive(channel.slope), "channel slope is not positive");
    require(isPositive(channel.roughness), "channel roughness is not positive");
    require(isNotNegative(channel.width), "channel width is negative");
    require(isNotNegative(channel.sideSlope), "side slope of the channel is negative");
    const double steepness = std::sqrt(channel.slope) / channel.roughness;
    m_width = channel.width;
    m_side = channel.sideSlope;
    // The published coefficients hold the English 1.486; the metric ones are those without it.
    const double system = units.manning / 1.486;
    switch (channel.shape) {
    case ChannelShape::Circular:
        require(channel.width > 0, "diameter of the circular channel is not positive");
        m_a = system * 0.804 * steepness * std::pow(channel.width, 1.0 / 6);
        m_m = 5.0 / 4;
        break;
    case ChannelShape::Deep:
        m_a = system * 0.72 * steepness;
        m_m = 4.0 / 3;
        m_side = 0;
        break;
    case ChannelShape::Trapezoid:
        require(channel.width > 0 || channel.sideSlope > 0, "the channel has neither width nor side slope");
        m_kind = Kind::Trapezoid;
        m_a = units.manning * steepness;
        break;
    }
}

ChannelFlow::ChannelFlow(const EightPointSection& section, const UnitSystem& units)
{
    m_kind = Kind::Table;
    for (const SectionFlow& level : normalDepthTable(section, units)) {
        // Where an overbank begins, the area can grow without the flow; the table keeps rising points only.
        if (level.area > 0 && level.flow > 0 && (m_flows.empty() || level.flow > m_flows.back())) {
            m_areas.push_back(level.area);
            m_flows.push_back(level.flow);
            m_widths.push_back(level.topWidth);
        }
    }
    require(!m_flows.empty(), "the cross section carries no flow");
}

ChannelFlow ChannelFlow::plane(double slope, double roughness, const UnitSystem& units)
{
    require(isPositive(slope), "slope of the overland-flow plane is not positive");
    require(isPositive(roughness), "roughness of the overland-flow plane is not positive");
    ChannelFlow flow;
    flow.m_a = units.manning * std::sqrt(slope) / roughness;
    flow.m_m = 5.0 / 3;
    flow.m_width = 1;
    return flow;
}

void ChannelFlow::flowAndCelerity(double area, double& flow, double& celerity) const
{
    if (!(area > 0)) {
        flow = celerity = 0;
        return;
    }
    if (m_kind == Kind::Power) {
        flow = m_a * powerOf(area, m_m);
        celerity = m_m * flow / area;
        return;
    }
    if (m_kind == Kind::Trapezoid) {
        const double top = std::sqrt(m_width * m_width + 4 * m_side * area);
        const double depth = 2 * area / (m_width + top);
        const double slant = 2 * std::sqrt(1 + m_side * m_side);
        const double perimeter = m_width + slant * depth;
        const double radius = area / perimeter;
        const double velocity = m_a * std::cbrt(radius * radius);
        flow = velocity * area;
        celerity = velocity / 3 * (5 - 2 * radius * slant / top);
        return;
    }
    // Between two depths of a section a power law: exact for every simple shape, and it starts from 0.
    std::size_t i = static_cast<std::size_t>(std::upper_bound(m_areas.begin(), m_areas.end(), area) - m_areas.begin());
    i = std::clamp<std::size_t>(i, 1, std::max<std::size_t>(m_areas.size() - 1, 1));
    if (m_areas.size() == 1 || area < m_areas[0]) {
        flow = m_flows[0] * powerOf(area / m_areas[0], 5.0 / 3);
        celerity = 5.0 / 3 * flow / area;
        return;
    }
    const double exponent = std::log(m_flows[i] / m_flows[i - 1]) / std::log(m_areas[i] / m_areas[i - 1]);
    flow = m_flows[i - 1] * std::pow(area / m_areas[i - 1], exponent);
    celerity = exponent * flow / area;
}

double ChannelFlow::flow(double area) const
{
    double q = 0, c = 0;
    flowAndCelerity(area, q, c);
    return q;
}

double ChannelFlow::celerity(double area) const
{
    double q = 0, c = 0;
    flowAndCelerity(area, q, c);
    return c;
}

double ChannelFlow::area(double flow) const
{
    if (!(flow > 0))
        return 0;
    if (m_kind == Kind::Power)
        return inversePowerOf(flow / m_a, m_m);
    if (m_kind == Kind::Table) {
        const auto above = std::upper_bound(m_flows.begin(), m_flows.end(), flow);
        std::size_t i = static_cast<std::size_t>(above - m_flows.begin());
        if (i == 0 || m_flows.size() == 1)
            return m_areas[0] * inversePowerOf(flow / m_flows[0], 5.0 / 3);
        i = std::min(i, m_flows.size() - 1);
        const double exponent = std::log(m_flows[i] / m_flows[i - 1]) / std::log(m_areas[i] / m_areas[i - 1]);
        return m_areas[i - 1] * std::pow(flow / m_flows[i - 1], 1 / exponent);
    }
    // In logarithms flow is a nearly straight line of area with a slope between 1 and 5/3, where Newton cannot stray.
    double area = m_width > 0 ? std::pow(flow / m_a, 0.6) * std::pow(m_width, 0.4) : std::pow(flow / m_a, 0.75);
    for (int i = 0; i < 30; ++i) {
        double q = 0, c = 0;
        flowAndCelerity(area, q, c);
        const double step = std::log(flow / q) * q / (c * area);
        area *= std::exp(step);
        if (!(std::abs(step) > 1e-12))
            break;
    }
    return area;
}

double ChannelFlow::topWidth(double area) const
{
    if (m_kind == Kind::Trapezoid)
        return std::sqrt(m_width * m_width + 4 * m_side * std::max(area, 0.0));
    if (m_kind == Kind::Table) {
        if (area <= m_areas[0])
            return m_widths[0];
        const auto above = std::upper_bound(m_areas.begin(), m_areas.end(), area);
        if (above == m_areas.end())
            return m_widths.back();
        const auto i = static_cast<std::size_t>(above - m_areas.begin());
        return m_widths[i - 1] +
               (area - m_areas[i - 1]) / (m_areas[i] - m_areas[i - 1]) * (m_widths[i] - m_widths[i - 1]);
    }
    return m_width > 0 ? m_width : std::sqrt(std::max(area, 0.0)); // a deep channel without width is a square
}

} // namespace hec1::methods
