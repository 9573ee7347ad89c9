// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "engine/methods/Reservoir.h"
#include "engine/methods/Units.h"

#include <array>
#include <vector>

namespace hec1::methods {

/// RC, RX, RY: a section of eight points with its banks at points 3 and 6. Lengths in feet or metres.
struct EightPointSection
{
    double leftRoughness = 0;
    double channelRoughness = 0;
    double rightRoughness = 0;
    double length = 0; ///< of the reach
    double slope = 0;
    double maxElevation = 0; ///< 0: the highest point
    std::array<double, 8> x{};
    std::array<double, 8> y{};
};

/// What normal flow at one elevation of a section looks like.
struct SectionFlow
{
    double elevation = 0;
    double area = 0;
    double topWidth = 0;
    double wettedPerimeter = 0;
    double flow = 0;
};

/// Area and Manning flow at one water level: left overbank (points 1 to 3), channel (3 to 6) and right overbank (6 to
/// 8) are added; no friction on the lines that part them; the ends go up as vertical walls. Source: HEC-1 User's Manual
/// (1998) section 3 (normal-depth storage routing).
SectionFlow normalFlow(const EightPointSection& section, double elevation, const UnitSystem& units);

/// normalFlow at `points` elevations evenly spaced from the lowest point to the highest computed elevation.
/// @throws std::invalid_argument for a roughness, slope or length that is not positive, stations that fall back, a
///         section without depth, or a highest elevation not above the lowest point.
std::vector<SectionFlow> normalDepthTable(const EightPointSection& section, const UnitSystem& units, int points = 20);

/// Storage (area x reach length) against outflow from a normal-depth table, for routeReach.
RatingTable reachRating(const std::vector<SectionFlow>& table, double reachLength, const UnitSystem& units);

} // namespace hec1::methods
