// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "engine/cards/CardReader.h"
#include "engine/methods/BaseFlow.h"
#include "engine/methods/ChannelSections.h"
#include "engine/methods/DamBreach.h"
#include "engine/methods/KinematicWave.h"
#include "engine/methods/Losses.h"
#include "engine/methods/Reservoir.h"
#include "engine/methods/StorageRouting.h"
#include "engine/methods/Storms.h"
#include "engine/methods/Units.h"
#include "engine/network/SimTime.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace hec1 {

// What a deck asks for, card by card turned into quantities. Units are those of the deck: see methods::UnitSystem.

/// The computation interval and its ordinates. Ordinate 0 stands at the start.
struct RunTime
{
    int minutes = 0;
    std::size_t ordinates = 0;
    SimClock clock;
    int century = 19;

    double hours() const { return minutes / 60.0; }
};

/// IO, or KO with the values of IO where it is silent.
struct PrintControl
{
    int level = 0; ///< 1, 2 all; 3 without tables; 4 input and summary; 5 nothing
    int plot = 0;
    double plotScale = 0;
};

/// KO fields 4 to 8: what of a station is saved for other programs.
struct SaveControl
{
    int punch = 0;
    int unit = 0;          ///< 21 or 22; 0: not saved
    std::size_t first = 0; ///< ordinate, from 0
    std::size_t last = 0;
    double hours = 0; ///< spacing; 0: the interval of the run
};

/// Rain of a subbasin at ratio 1: `shape[i]` x `scale` fell in the interval that ends at ordinate i.
struct RainInput
{
    std::shared_ptr<const std::vector<double>> shape;
    double scale = 1;
    double total = 0;    ///< depth of the whole storm, also outside the run
    std::size_t wet = 0; ///< elements of the shape up to the last that is not zero

    RainInput() = default;
    RainInput(std::shared_ptr<const std::vector<double>> rain, double factor, double depth)
        : shape(std::move(rain)), scale(factor), total(depth), wet(shape->size())
    {
        while (wet > 0 && (*shape)[wet - 1] == 0)
            --wet;
    }
};

/// A loss card; the second set of fields serves the second overland plane.
struct LossInput
{
    methods::LossMethod method;
    double imperviousPercent = 0;
    std::optional<methods::LossMethod> secondMethod;
    double secondImperviousPercent = 0;
    const Card* card = nullptr;
};

enum class TransformKind
{
    Scs,
    Clark,
    Snyder,
    Given,
    Kinematic
};

/// How excess becomes runoff: a unit graph or overland planes with channels.
struct TransformInput
{
    TransformKind kind = TransformKind::Scs;
    double first = 0;  ///< TLAG, TC or TP in hours
    double second = 0; ///< R in hours, or CP
    std::vector<double> timeArea;
    std::vector<double> given; ///< UI
    std::vector<methods::OverlandPlane> planes;
    std::vector<methods::SubbasinChannel> channels;
    const Card* card = nullptr;
    const Card* areaCard = nullptr; ///< UA
};

/// A unit graph made for one subbasin.
struct UnitGraph
{
    std::vector<double> ordinates;
    double depth = 0;                                                ///< units of depth that it holds; 1 when exact
    double tcHours = 0, storageHours = 0, lagHours = 0, peaking = 0; ///< of a Snyder graph
};

struct RunoffInput
{
    double area = 0;
    double normalAnnual = 0;
    std::optional<RainInput> rain; ///< empty in a depth-area job
    std::shared_ptr<const LossInput> loss;
    std::shared_ptr<const TransformInput> transform;
    std::shared_ptr<const UnitGraph> unitGraph; ///< null for kinematic wave
    std::optional<methods::BaseFlowCard> baseFlow;
    bool takesUpstream = false;         ///< RK field 8: YES
    std::vector<const Card*> rainCards; ///< that the rain comes from, for the echo
    const Card* baseFlowCard = nullptr;
};

struct GivenFlow
{
    double area = 0;
    std::vector<double> flow; ///< at the ordinates
};

struct ScaledCopy
{
    double area = 0;
    double ratio = 1;
    std::string source;
};

struct ChannelLossInput
{
    double constant = 0, share = 0, percolation = 0, invert = 0;
};

struct MuskingumRouting
{
    int steps = 1;
    double kHours = 0, x = 0;
};

struct LagRouting
{
    int steps = 1, averaged = 1, lag = 0;
};

/// RS: a pool or a reach by storage indication.
struct StorageRouting
{
    int steps = 1;
    double x = 0;
    methods::PoolStart start;
    methods::RatingTable rating;               ///< as routed
    std::vector<methods::SectionFlow> section; ///< of RC, RX, RY; else empty
    double reachLength = 0;
    std::optional<methods::PoolStorage> pool; ///< empty when no elevations are known
    methods::PoolOutlets outlets;
    std::optional<methods::Breach> breach;
    std::vector<methods::Pump> pumps;
    std::string pumpName;      ///< under which the sum of the pumps is stored; empty: not stored
    std::vector<double> areas; ///< SA, for the table of volumes
    bool formulas = false;     ///< SL, SS or ST: the outflow table is computed
};

struct MuskingumCungeRouting
{
    std::shared_ptr<const methods::ChannelFlow> channel;
    double length = 0, slope = 0;
};

struct KinematicRouting
{
    std::shared_ptr<const methods::ChannelFlow> channel;
    double length = 0;
    int minSteps = 2;
};

struct NoRouting
{
};

struct Routing
{
    std::optional<ChannelLossInput> channelLoss;
    /// A pool is many times larger than the other kinds, of which a network has more.
    using Storage = std::shared_ptr<const StorageRouting>;
    std::variant<NoRouting, MuskingumRouting, LagRouting, Storage, MuskingumCungeRouting, KinematicRouting> how;

    /// Null when this is another kind of routing.
    const StorageRouting* storage() const
    {
        const Storage* pool = std::get_if<Storage>(&how);
        return pool != nullptr ? pool->get() : nullptr;
    }
};

struct Combination
{
    int count = 0;
    std::optional<double> area; ///< HC field 2
};

struct Diversion
{
    std::string name;
    double maxVolume = 0, maxFlow = 0;
    std::vector<double> inflow, diverted;
};

/// DR or WR.
struct Retrieval
{
    std::string name;
    bool pumped = false;
};

struct NoStep
{
};

/// What a station computes under one plan.
struct Step
{
    std::variant<NoStep, RunoffInput, GivenFlow, ScaledCopy, Routing, Combination, Diversion, Retrieval> what;
    std::vector<double> ratingFlow, ratingStage; ///< HQ, HE
    const Card* card = nullptr;                  ///< that decides what is computed

    /// Null when the step does not route through storage.
    const StorageRouting* storage() const
    {
        const auto* routing = std::get_if<Routing>(&what);
        return routing != nullptr ? routing->storage() : nullptr;
    }
};

/// One KK group.
struct Station
{
    std::string name;
    std::string text;
    const Card* kk = nullptr;
    std::vector<const Card*> cards; ///< of the group, comments left out
    PrintControl print;
    SaveControl save;
    std::vector<std::shared_ptr<const Step>> plans; ///< one for each plan; plans may share one
    std::vector<double> observed;                   ///< QO at the ordinates
};

/// JD: one index storm.
struct IndexStorm
{
    double depth = 0;
    double area = 0;
    RainInput rain;
    const Card* card = nullptr;
};

/// A whole job, ready to be computed.
struct Job
{
    methods::UnitSystem units = methods::english();
    RunTime time;
    PrintControl print;
    std::vector<std::string> titles;
    int planCount = 1;
    bool ratiosGiven = false;
    bool ratiosOnRain = false; ///< JR PREC
    std::vector<double> ratios{1.0};
    std::vector<IndexStorm> storms; ///< JD; empty in the common case
    std::vector<Station> stations;
    const Card *timeCard = nullptr, *printCard = nullptr, *planCard = nullptr, *ratioCard = nullptr;

    std::size_t stormCount() const { return storms.empty() ? 1 : storms.size(); }
    /// Hydrographs of a station under one plan.
    std::size_t hydrographsPerPlan() const { return ratios.size() * stormCount(); }
    bool manyHydrographs() const { return planCount > 1 || ratiosGiven; }
};

} // namespace hec1
