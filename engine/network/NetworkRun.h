// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "engine/cards/Diagnostics.h"
#include "engine/network/RunResults.h"

#include <map>
#include <string>
#include <vector>

namespace hec1 {

/// Hydrographs of one stream-network branch, all ratios and index storms of one plan, one behind the other.
struct Branch
{
    double area = 0;
    std::vector<double> flows;
};

/// Computes a job station by station. Cost: proportional to stations x plans x ratios x index storms x ordinates.
class NetworkRun
{
public:
    NetworkRun(const Job& job, RunListener& listener, Diagnostics& diagnostics);

    /// @return false when a station could not be computed; the reason is then among the errors.
    bool run();

private:
    struct Scratch
    {
        std::vector<double> rain, loss, excess, secondExcess, baseFlow, inflow, storage, stage, diverted, pumped;
    };
    /// A runoff hydrograph before a ratio of flows is applied.
    struct Unscaled
    {
        std::vector<double> flow, baseFlow;
        WaterBalance balance;
        void keep(std::span<const double> total, std::span<const double> base, const WaterBalance& water);
    };
    void compute(const Station& station, std::size_t plan);
    void runoff(const Station& station, const RunoffInput& input, Result& result);
    void runoffHydrograph(const RunoffInput& input, const RainInput& rain, double ratio,
                          std::span<const double> upstream, std::span<double> flow, Result& result);
    void copyRunoff(double ratio, const Unscaled& unscaled, std::span<double> flow, WaterBalance& balance);
    void givenFlow(const Station& station, const GivenFlow& input, Result& result);
    void scaledCopy(const Station& station, const ScaledCopy& input, Result& result);
    void route(const Station& station, const Routing& routing, Result& result);
    void routeOne(const Routing& routing, std::span<const double> inflow, std::span<double> outflow, Result& result);
    void routeStorage(const StorageRouting& how, std::span<const double> inflow, std::span<double> outflow,
                      Result& result);
    void combine(const Station& station, const Combination& combination, Result& result);
    void divert(const Station& station, const Diversion& diversion, Result& result);
    void retrieve(const Station& station, const Retrieval& retrieval, Result& result);

    void tell(const Station& station, Result& result);
    void interpolate(const Station& station, Result& result, const Branch& branch);
    void keepIfNamed(const Station& station, std::size_t plan);
    void warnOnce(const Station& station, std::string text);
    double unexplainedPercent(const Result& result) const;
    double volume(std::span<const double> flow) const;
    double volumeOf(double sum, std::span<const double> flow) const;

    std::vector<Branch>& stack() { return m_stacks[m_plan]; }
    Branch take();
    Branch fresh(double area);
    void release(Branch&& branch);
    void push(Branch&& branch) { stack().push_back(std::move(branch)); }
    std::span<double> hydrograph(Branch& branch, std::size_t index) const
    {
        return {branch.flows.data() + index * m_n, m_n};
    }
    std::span<const double> hydrograph(const Branch& branch, std::size_t index) const
    {
        return {branch.flows.data() + index * m_n, m_n};
    }
    void place(Result& result, std::size_t index) const;

    const Job& m_job;
    RunListener& m_listener;
    Diagnostics& m_diagnostics;
    std::size_t m_n; ///< ordinates
    double m_hours;
    std::size_t m_plan = 0;
    std::vector<std::vector<Branch>> m_stacks; ///< one for each plan
    std::vector<std::map<std::string, Branch, std::less<>>> m_stored, m_pumped, m_named;
    std::map<std::string, bool, std::less<>> m_sources; ///< names that a later BA card copies
    std::vector<std::vector<double>> m_spare;
    std::vector<double> m_stagePerStorm;
    Scratch m_s;
    std::size_t m_wet = 0; ///< elements of m_s.rain that may not be zero
    methods::DamSummary m_dam;
    methods::MuskingumCungeSteps m_steps;
    const Station* m_warnedAt = nullptr;
    std::vector<std::string> m_warned;
};

} // namespace hec1
