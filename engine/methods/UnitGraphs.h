// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "engine/methods/Units.h"

#include <cstddef>
#include <span>
#include <vector>

namespace hec1::methods {

// A unit graph is the flow (cfs or m3/s) that one unit of excess depth (inch or millimetre) in one computation interval
// causes. Element 0 is the flow at the end of that interval.

/// UD: the SCS dimensionless unit graph, sampled at the interval and scaled so that it holds exactly one unit of depth.
/// The dimensionless table read at a few points holds up to 0.3 percent more or less; without the scaling that would be
/// a volume error in every hydrograph.
/// @param lagHours from the centre of the excess to the peak; above 0. @param maxOrdinates longer graphs are cut.
/// @throws std::invalid_argument for an area, lag or interval that is not positive.
/// Source: NEH Part 630 chapter 16, table 16-1 and equations 16-1, 16-4; HEC-1 User's Manual (1998) section 3.
std::vector<double> scsUnitGraph(double area, double lagHours, double intervalHours, const UnitSystem& units,
                                 std::size_t maxOrdinates);

/// Share of the flood volume that a Clark graph keeps before its exponential tail is cut.
/// HEC-1 cut at 0.995; half a percent of every flood would then be missing from the water balance.
inline constexpr double kClarkVolumeKept = 0.9999;

/// UC: Clark unit graph. The time-area curve is translated over `tcHours` and passed through a linear reservoir of
/// `storageHours`; ordinates are the mean of the instantaneous graph over the interval.
/// @param timeArea UA values: accumulated area at evenly spaced times from 0 to Tc, divided by the last; empty: the
///        built-in curve 1.414 T^1.5. @param volumeKept where the tail is cut.
/// @throws std::invalid_argument for an area, Tc or interval that is not positive, a negative R, a falling or all-zero
///         time-area curve.
/// Source: Clark (1945); HEC-1 User's Manual (1998) section 3; HEC-HMS Technical Reference Manual (2000) chapter 6.
std::vector<double> clarkUnitGraph(double area, double tcHours, double storageHours, double intervalHours,
                                   const UnitSystem& units, std::span<const double> timeArea, std::size_t maxOrdinates,
                                   double volumeKept = kClarkVolumeKept);

/// What the search for a Snyder graph found.
struct SnyderGraph
{
    double tcHours = 0;
    double storageHours = 0;
    double lagHours = 0;           ///< standard lag TP of the graph found
    double peakingCoefficient = 0; ///< CP of the graph found
    bool converged = false;        ///< TP and CP within 1 percent of what was asked
    std::vector<double> ordinates;
};

/// US: the Clark graph whose standard lag and peaking coefficient are those asked for.
/// CP = U (TPK - DT/2) / (C A), TP = 1.048 (TPK - 0.75 DT), with the peak U and its time TPK refined by a parabola
/// through the three highest ordinates. When no Clark graph has both (short lag against the interval, extreme CP) the
/// nearest one found comes back with `converged` false.
/// @throws std::invalid_argument for an area, lag, CP or interval that is not positive, or CP of 1 and more.
/// Source: Snyder (1938); HEC-1 User's Manual (1998) section 3; Chow, Maidment and Mays (1988) section 7.7.
SnyderGraph snyderUnitGraph(double area, double lagHours, double peakingCoefficient, double intervalHours,
                            const UnitSystem& units, std::span<const double> timeArea, std::size_t maxOrdinates);

/// Units of depth (1 when exact) that a unit graph of this area and interval holds; 0 without area.
double unitGraphDepth(std::span<const double> unitGraph, double area, double intervalHours, const UnitSystem& units);

/// Direct runoff: flow[i] = sum over k of excess[i-k] x unitGraph[k], for every i of `flow`. Element 0 of the excess
/// belongs to ordinate 0, so that excess[i] fell in the interval that ends at ordinate i. `flow` is overwritten and
/// must not overlap the inputs. Cost: one multiplication for each pair of excess that is not zero and ordinate inside
/// the run.
void convolve(std::span<const double> excess, std::span<const double> unitGraph, std::span<double> flow);

} // namespace hec1::methods
