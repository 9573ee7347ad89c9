// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/methods/ChannelSections.h"

#include "engine/methods/Require.h"

#include <algorithm>
#include <cmath>

namespace hec1::methods {

namespace {

struct WettedPart
{
    double area = 0;
    double perimeter = 0;
    double width = 0;
};

/// Adds what lies under water between two neighbouring points.
void addSegment(double x1, double y1, double x2, double y2, double level, WettedPart& part)
{
    if (y1 > y2) {
        std::swap(x1, x2);
        std::swap(y1, y2);
    }
    const double run = std::abs(x2 - x1);
    if (level <= y1)
        return;
    if (level >= y2) {
        part.area += run * (level - (y1 + y2) / 2);
        part.width += run;
        part.perimeter += std::hypot(run, y2 - y1);
        return;
    }
    const double wet = (level - y1) / (y2 - y1);
    part.area += run * wet * (level - y1) / 2;
    part.width += run * wet;
    part.perimeter += std::hypot(run, y2 - y1) * wet;
}

} // namespace

SectionFlow normalFlow(const EightPointSection& section, double elevation, const UnitSystem& units)
{
    struct Subsection
    {
        std::size_t first, last;
        double roughness;
    };
    const std::array<Subsection, 3> subsections{
        {{0, 2, section.leftRoughness}, {2, 5, section.channelRoughness}, {5, 7, section.rightRoughness}}};
    SectionFlow sum;
    sum.elevation = elevation;
    for (const Subsection& sub : subsections) {
        WettedPart part;
        for (std::size_t i = sub.first; i < sub.last; ++i)
            addSegment(section.x[i], section.y[i], section.x[i + 1], section.y[i + 1], elevation, part);
        if (sub.first == 0)
            part.perimeter += std::max(elevation - section.y[0], 0.0);
        if (sub.last == 7)
            part.perimeter += std::max(elevation - section.y[7], 0.0);
        if (!(part.area > 0))
            continue;
        const double radius = part.area / part.perimeter;
        sum.flow += units.manning / sub.roughness * part.area * std::cbrt(radius * radius) * std::sqrt(section.slope);
        sum.area += part.area;
        sum.topWidth += part.width;
        sum.wettedPerimeter += part.perimeter;
    }
    return sum;
}

std::vector<SectionFlow> normalDepthTable(const EightPointSection& section, const UnitSystem& units, int points)
{
    require(isPositive(section.leftRoughness) && isPositive(section.channelRoughness) &&
                isPositive(section.rightRoughness),
            "a roughness of the cross section is not positive");
    require(isPositive(section.slope), "slope of the reach is not positive");
    require(isPositive(section.length), "length of the reach is not positive");
    require(std::is_sorted(section.x.begin(), section.x.end()), "the stations of the cross section fall back");
    for (std::size_t i = 0; i < 8; ++i)
        require(std::isfinite(section.x[i]) && std::isfinite(section.y[i]),
                "a point of the cross section is not finite");
    const auto [lowest, highest] = std::minmax_element(section.y.begin(), section.y.end());
    const double top = section.maxElevation != 0 ? section.maxElevation : *highest;
    require(top > *lowest, "the cross section has no depth below its highest elevation");
    require(points >= 2, "a normal-depth table needs at least two elevations");

    std::vector<SectionFlow> table;
    for (int i = 0; i < points; ++i) {
        const double elevation = i + 1 == points ? top : *lowest + (top - *lowest) * i / (points - 1);
        table.push_back(normalFlow(section, elevation, units));
    }
    require(table.back().area > 0, "the cross section has no area below its highest elevation");
    return table;
}

RatingTable reachRating(const std::vector<SectionFlow>& table, double reachLength, const UnitSystem& units)
{
    RatingTable rating;
    for (const SectionFlow& level : table) {
        rating.elevation.push_back(level.elevation);
        rating.storage.push_back(level.area * reachLength / units.volumeInLengths);
        rating.flow.push_back(level.flow);
    }
    rating.given = table.size();
    return rating;
}

} // namespace hec1::methods
