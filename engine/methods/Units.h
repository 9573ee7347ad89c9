// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace hec1::methods {

/// The constants in which English and metric decks differ (HEC-1 User's Manual, 1998, section 10 and input
/// description). English: square miles, inches, feet, cfs, acre-feet, acres. Metric: square kilometres, millimetres,
/// metres, m3/s, thousand cubic metres, thousand square metres. Hours are hours in both.
struct UnitSystem
{
    bool metric;
    double runoffFlow;        ///< flow of one unit of depth per hour from one unit of area
    double scsPeak;           ///< peak rate factor of the SCS unit graph: flow = factor x area / hours
    double storageFlowHours;  ///< flow x hours in one unit of storage
    double manning;           ///< factor of the Manning equation
    double twoG;              ///< twice the acceleration of gravity, as the orifice equation has it
    double lengthPerDepth;    ///< feet in an inch, metres in a millimetre
    double areaInLengths;     ///< square feet in a square mile, square metres in a square kilometre
    double volumeInLengths;   ///< cubic feet in an acre-foot, cubic metres in a thousand cubic metres
    double lossAreaInLengths; ///< square feet in an acre, square metres in a hectare (percolation rate)
    double squareMiles;       ///< square miles in one unit of area, for curves that are drawn on square miles
    double inches;            ///< inches in one unit of depth
    double breachWeir;        ///< coefficient of the level part of a breach
    double breachSides;       ///< coefficient of the sloping sides of a breach

    /// Depth of runoff (in or mm) over `area` that `volume` (acre-feet or thousand cubic metres) amounts to; 0 without
    /// area.
    constexpr double depthOver(double volume, double area) const
    {
        return area > 0 ? volume * volumeInLengths / (area * areaInLengths * lengthPerDepth) : 0;
    }
    /// Volume (acre-feet or thousand cubic metres) of `flow` kept up for `hours`.
    constexpr double volumeOf(double flow, double hours) const { return flow * hours / storageFlowHours; }
};

constexpr UnitSystem english()
{
    return {false,    5280.0 * 5280.0 / 12 / 3600,
            484,      43560.0 / 3600,
            1.486,    64.4,
            1.0 / 12, 5280.0 * 5280.0,
            43560,    43560,
            1,        1,
            3.1,      2.45};
}

constexpr UnitSystem metric()
{
    return {true, 1000.0 / 3600, 0.208, 1000.0 / 3600,      1,        19.62, 1.0 / 1000,
            1e6,  1000,          1e4,   1 / 2.589988110336, 1 / 25.4, 1.7,   1.35};
}

} // namespace hec1::methods
