// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "engine/methods/ChannelSections.h"
#include "engine/methods/Units.h"

#include <vector>

namespace hec1::methods {

enum class ChannelShape
{
    Trapezoid,
    Deep,
    Circular
};

/// RD or RK: a channel of standard shape. Lengths in feet or metres.
struct StandardChannel
{
    double length = 0;
    double slope = 0;
    double roughness = 0;
    ChannelShape shape = ChannelShape::Trapezoid;
    double width = 0;     ///< bottom width (0: triangle) or diameter
    double sideSlope = 0; ///< horizontal for one of rise
};

/// Uniform flow in a channel as a function of its area and back: what the kinematic-wave and Muskingum-Cunge methods
/// need. Trapezoids (with rectangles and triangles) follow the Manning equation exactly; DEEP and CIRC are Q = a A^m
/// with the published a and m, which have no upper end, so that a full pipe takes what comes; eight-point sections are
/// a table. Source: HEC-1 User's Manual (1998) section 3, table of kinematic parameters; Chow et al. (1988)
/// section 9.3.
class ChannelFlow
{
public:
    /// @throws std::invalid_argument for a length, slope or roughness that is not positive, or a shape without size.
    ChannelFlow(const StandardChannel& channel, const UnitSystem& units);
    /// @throws std::invalid_argument as normalDepthTable.
    ChannelFlow(const EightPointSection& section, const UnitSystem& units);
    /// Overland flow on a unit width of plane: q = a y^(5/3); area is then depth.
    static ChannelFlow plane(double slope, double roughness, const UnitSystem& units);

    double flow(double area) const;     ///< cfs or m3/s
    double celerity(double area) const; ///< dQ/dA, ft/s or m/s
    double area(double flow) const;     ///< inverse of flow()
    double topWidth(double area) const;
    /// flow and celerity at once, for inner loops.
    void flowAndCelerity(double area, double& flow, double& celerity) const;

private:
    enum class Kind
    {
        Power,
        Trapezoid,
        Table
    };
    ChannelFlow() = default;
    Kind m_kind = Kind::Power;
    double m_a = 0, m_m = 5.0 / 3;  ///< Q = a A^m
    double m_width = 0, m_side = 0; ///< trapezoid; of a pipe the diameter
    std::vector<double> m_areas, m_flows, m_widths;
};

} // namespace hec1::methods
