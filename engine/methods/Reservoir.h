// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "engine/methods/Units.h"

#include <cstddef>
#include <optional>
#include <span>
#include <vector>

namespace hec1::methods {

/// Storage, outflow and elevation that belong together. Storage does not fall; `elevation` is empty for a reach
/// without.
struct RatingTable
{
    std::vector<double> elevation; ///< ft or m
    std::vector<double> storage;   ///< acre-feet or thousand cubic metres
    std::vector<double> flow;      ///< cfs or m3/s
    /// Points of the deck's own range. Those behind it only carry the formulas on above the top of the table.
    std::size_t given = 0;
};

/// SV or SA with SE: storage as straight lines between the given elevations, which rise.
struct PoolStorage
{
    std::vector<double> elevation;
    std::vector<double> storage;

    double storageAt(double elevationOfPool) const; ///< held below the first, carried on above the last
    double elevationAt(double storageOfPool) const;
};

/// SA: storage at each elevation by the conic formula V = h/3 (A1 + A2 + sqrt(A1 A2)), beginning with 0.
/// Areas in acres (thousand square metres) with feet (metres) give acre-feet (thousand cubic metres).
/// @throws std::invalid_argument for unequal counts, a negative area, or elevations that do not rise.
/// Source: HEC-1 User's Manual (1998) section 3 (reservoir routing, conic method).
std::vector<double> conicStorage(std::span<const double> areas, std::span<const double> elevations);

/// SL: Q = coefficient x area x sqrt(2g) x (E - centre)^exponent.
struct LowLevelOutlet
{
    double centre = 0;
    double area = 0;
    double coefficient = 0;
    double exponent = 0.5;
};

/// SS: Q = coefficient x length x (E - crest)^exponent.
struct Weir
{
    double crest = 0;
    double length = 0;
    double coefficient = 0;
    double exponent = 1.5;
};

/// ST: flow over the top of the dam; with SW and SE the crest is not level.
struct DamCrest
{
    double top = 0;
    double length = 0;
    double coefficient = 0;
    double exponent = 1.5;
    std::vector<double> lengths;    ///< SW: accumulated crest length up to each elevation; empty for a level crest
    std::vector<double> elevations; ///< SE behind SW, rising
};

double flowThrough(const LowLevelOutlet& outlet, double elevation, const UnitSystem& units);
double flowOver(const Weir& weir, double elevation);
/// @param breached crest length that a breach has taken away.
/// A crest that is not level is summed segment by segment with the mean head over each.
double flowOver(const DamCrest& crest, double elevation, double breached = 0);

/// Everything through which a pool empties, added up.
struct PoolOutlets
{
    std::optional<LowLevelOutlet> lowLevel;
    std::optional<Weir> spillway;       ///< length 0 marks the crest only
    std::vector<double> ratedElevation; ///< SQ on elevations (its own SE, or that of SV); empty without SQ
    std::vector<double> ratedFlow;
    std::optional<DamCrest> dam;
};

/// Outflow at a pool elevation; the rating carries on in its last slope above its last elevation and is held below its
/// first. @param breached as in flowOver.
double outflowAt(const PoolOutlets& outlets, double elevation, const UnitSystem& units, double breached = 0);

/// The storage-outflow relation of a pool, dense enough that straight lines between its points follow the formulas to
/// 3e-5 of the flow; given elevations, crests and rating points are all among them. It goes on above the given
/// range (twice its height) so that a high pool still follows the formulas.
/// @throws std::invalid_argument when the storage table is empty, not finite, or does not rise.
RatingTable mergedRating(const PoolStorage& pool, const PoolOutlets& outlets, const UnitSystem& units);

/// The relation for printing: given elevations, crests and rating points alone, plus enough points between to make
/// at least `points` (none are added when `points` is 0). Same values as mergedRating at these elevations.
RatingTable printedRating(const PoolStorage& pool, const PoolOutlets& outlets, const UnitSystem& units,
                          std::size_t points);

} // namespace hec1::methods
