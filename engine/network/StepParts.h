// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "engine/network/CardTables.h"
#include "engine/network/JobModel.h"
#include "engine/network/RainReader.h"

#include <memory>
#include <vector>

namespace hec1 {

/// The cards of a station that bear on what it computes under one plan, sorted by kind but not yet made into a step.
struct StepParts
{
    // runoff
    const Card *ba = nullptr, *bf = nullptr, *bi = nullptr;
    ValueList qi;
    bool rainHere = false; ///< rain, loss or transform cards stand in this station
    std::shared_ptr<const LossInput> loss;
    std::shared_ptr<const TransformInput> transform;
    std::vector<const Card*> planes;   ///< UK
    std::vector<const Card*> channels; ///< RK and RD, in the order of the deck
    // routing
    const Card *rn = nullptr, *rm = nullptr, *rt = nullptr, *rs = nullptr, *rl = nullptr;
    const Card *rc = nullptr, *rx = nullptr, *ry = nullptr;
    ValueList storages, areas, poolElevations, flows, flowElevations, crestLengths, crestElevations;
    const Card *sl = nullptr, *ss = nullptr, *st = nullptr, *sb = nullptr;
    std::vector<const Card*> pumps; ///< WP
    enum class LastTable
    {
        None,
        Storage,
        Flow,
        Crest
    } lastTable = LastTable::None; ///< to which a following SE belongs
    // the rest
    const Card *hc = nullptr, *dt = nullptr, *dr = nullptr, *wr = nullptr;
    ValueList di, dq, hq, he;

    bool routes() const { return rn || rm || rt || rs || (!ba && !channels.empty()); }
    /// True when no card tells what is to be computed.
    bool empty() const { return !ba && !bi && !qi.given() && !routes() && !hc && !dt && !dr && !wr; }
};

/// What a runoff station takes over from the stations before it, for one plan.
struct Carried
{
    RainState rain;
    std::shared_ptr<const LossInput> loss;
    std::shared_ptr<const TransformInput> transform;
    const Card* baseFlow = nullptr;
};

/// Makes the step of one station and plan out of its cards. Everything that can be wrong with them is reported here,
/// so that a job that starts computing can end.
class StepBuilder
{
public:
    StepBuilder(const Job& job, const std::map<std::string, Gage>& gages, Diagnostics& diagnostics)
        : m_job(job), m_gages(gages), m_diagnostics(diagnostics)
    {
    }

    /// @param carried is told what this station leaves to later ones. @return a step; NoStep after an error.
    Step build(const Card& kk, const StepParts& parts, Carried& carried);

private:
    void buildRunoff(const Card& kk, const StepParts& parts, Carried& carried, Step& step);
    void takeKinematic(const StepParts& parts, Carried& carried);
    std::shared_ptr<const UnitGraph> unitGraph(const Card& kk, const TransformInput& transform, double area);
    void buildGiven(const StepParts& parts, Step& step);
    void buildSaved(const StepParts& parts, Step& step);
    void buildRouting(const StepParts& parts, Step& step);
    std::optional<StorageRouting> storageRouting(const StepParts& parts);
    bool readSection(const StepParts& parts, methods::EightPointSection& section);
    bool buildPool(const StepParts& parts, StorageRouting& routing);
    void buildOutlets(const StepParts& parts, StorageRouting& routing);
    bool buildRating(const StepParts& parts, StorageRouting& routing);
    bool buildStart(const StepParts& parts, StorageRouting& routing);
    void buildPumps(const StepParts& parts, StorageRouting& routing);
    void buildDiversion(const StepParts& parts, Step& step);
    void readRating(const StepParts& parts, Step& step);
    std::optional<methods::StandardChannel> standardChannel(const Card& card);
    std::string nameOf(const Card& card, int field);
    int kinematicSteps(const Card& card, int fallback) const;
    static bool takesUpstream(const Card& card);

    const Job& m_job;
    const std::map<std::string, Gage>& m_gages;
    Diagnostics& m_diagnostics;
};

} // namespace hec1
