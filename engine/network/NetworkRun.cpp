// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/network/NetworkRun.h"

#include "engine/methods/Averages.h"
#include "engine/methods/Diversion.h"
#include "engine/methods/Interpolate.h"
#include "engine/network/CardTables.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <new>
#include <stdexcept>

namespace hec1 {

namespace {

constexpr double kBalancePercent = 0.1; // beyond it a station is warned of

// Four sums side by side: a single one would wait for each addition in turn.
double sumOf(std::span<const double> values)
{
    std::array<double, 4> sums{};
    std::size_t i = 0;
    for (; i + 4 <= values.size(); i += 4)
        for (std::size_t k = 0; k < 4; ++k)
            sums[k] += values[i + k];
    for (; i < values.size(); ++i)
        sums[0] += values[i];
    return (sums[0] + sums[1]) + (sums[2] + sums[3]);
}

struct SeriesMarks
{
    double sum;
    double peak;
};

// One pass for both, in four lanes so that no addition or comparison waits for the one before it. The two inner loops
// stand apart because the compiler keeps each in vector registers then; more lanes would spill.
SeriesMarks marksOf(std::span<const double> values)
{
    constexpr std::size_t kLanes = 4;
    std::array<double, kLanes> sums{}, best;
    best.fill(values[0]);
    const double* v = values.data();
    std::size_t i = 0;
    for (; i + kLanes <= values.size(); i += kLanes) {
        for (std::size_t k = 0; k < kLanes; ++k)
            sums[k] += v[i + k];
        for (std::size_t k = 0; k < kLanes; ++k)
            best[k] = best[k] < v[i + k] ? v[i + k] : best[k];
    }
    for (; i < values.size(); ++i) {
        sums[0] += values[i];
        best[0] = std::max(best[0], values[i]);
    }
    SeriesMarks marks{0, best[0]};
    for (std::size_t k = 0; k < kLanes; ++k) {
        marks.sum += sums[k];
        marks.peak = std::max(marks.peak, best[k]);
    }
    return marks;
}

std::size_t indexOf(std::span<const double> values, double peak)
{
    return static_cast<std::size_t>(std::find(values.begin(), values.end(), peak) - values.begin());
}

} // namespace

NetworkRun::NetworkRun(const Job& job, RunListener& listener, Diagnostics& diagnostics)
    : m_job(job), m_listener(listener), m_diagnostics(diagnostics), m_n(job.time.ordinates), m_hours(job.time.hours())
{
    const auto plans = static_cast<std::size_t>(job.planCount);
    m_stacks.resize(plans);
    m_stored.resize(plans);
    m_pumped.resize(plans);
    m_named.resize(plans);
    for (std::vector<double>* series : {&m_s.rain, &m_s.loss, &m_s.excess, &m_s.secondExcess, &m_s.baseFlow,
                                        &m_s.inflow, &m_s.storage, &m_s.stage, &m_s.diverted, &m_s.pumped})
        series->assign(m_n, 0.0);
    for (const Station& station : job.stations)
        for (const auto& step : station.plans)
            if (const auto* copy = std::get_if<ScaledCopy>(&step->what))
                m_sources[copy->source] = true;
}

bool NetworkRun::run()
{
    for (const Station& station : m_job.stations) {
        const Card* card = station.kk;
        try {
            m_listener.begin(station);
            for (std::size_t plan = 0; plan < m_stacks.size(); ++plan) {
                card = station.plans[plan]->card;
                m_plan = plan;
                compute(station, plan);
                keepIfNamed(station, plan);
            }
            m_listener.end(station);
        } catch (const std::invalid_argument& fault) {
            m_diagnostics.error(ErrorNumber::MethodData, card,
                                "STATION " + station.name + ": " + capitals(fault.what()));
            return false;
        } catch (const std::range_error& fault) {
            m_diagnostics.error(ErrorNumber::NotFinite, card, "STATION " + station.name);
            return false;
        } catch (const std::bad_alloc&) {
            m_diagnostics.error(ErrorNumber::JobTooLarge, card, "STATION " + station.name);
            return false;
        }
    }
    return true;
}

void NetworkRun::compute(const Station& station, std::size_t plan)
{
    const Step& step = *station.plans[plan];
    Result result;
    result.name = station.name;
    result.step = &step;
    result.plan = plan;
    if (const auto* runoffInput = std::get_if<RunoffInput>(&step.what))
        runoff(station, *runoffInput, result);
    else if (const auto* given = std::get_if<GivenFlow>(&step.what))
        givenFlow(station, *given, result);
    else if (const auto* copy = std::get_if<ScaledCopy>(&step.what))
        scaledCopy(station, *copy, result);
    else if (const auto* routing = std::get_if<Routing>(&step.what))
        route(station, *routing, result);
    else if (const auto* combination = std::get_if<Combination>(&step.what))
        combine(station, *combination, result);
    else if (const auto* diversion = std::get_if<Diversion>(&step.what))
        divert(station, *diversion, result);
    else if (const auto* retrieval = std::get_if<Retrieval>(&step.what))
        retrieve(station, *retrieval, result);
}

Branch NetworkRun::take()
{
    if (stack().empty())
        throw std::invalid_argument("no hydrograph is waiting");
    Branch branch = std::move(stack().back());
    stack().pop_back();
    return branch;
}

Branch NetworkRun::fresh(double area)
{
    Branch branch;
    branch.area = area;
    if (m_spare.empty()) {
        branch.flows.resize(m_job.hydrographsPerPlan() * m_n);
    } else {
        branch.flows = std::move(m_spare.back());
        m_spare.pop_back();
    }
    return branch;
}

void NetworkRun::release(Branch&& branch)
{
    m_spare.push_back(std::move(branch.flows));
}

void NetworkRun::place(Result& result, std::size_t index) const
{
    result.ratio = index / m_job.stormCount();
    result.storm = index % m_job.stormCount();
}

double NetworkRun::volumeOf(double sum, std::span<const double> flow) const
{
    return m_job.units.volumeOf(sum - (flow.front() + flow.back()) / 2, m_hours);
}

double NetworkRun::volume(std::span<const double> flow) const
{
    return flow.empty() ? 0 : volumeOf(sumOf(flow), flow);
}

// Where a method does not tell what it stores, a flood that begins and ends dry must still come out whole; one that
// only begins dry must not come out greater than it went in.
double NetworkRun::unexplainedPercent(const Result& result) const
{
    constexpr double kDry = 1e-4; // of the peak
    const WaterBalance& water = result.balance;
    const double in = water.excess + water.baseFlow + water.inflow - water.taken;
    if (water.storageKnown || in <= 0)
        return water.errorPercent();
    const double dry = kDry * result.peakFlow;
    const auto dryAt = [&](double flow, double inflow) { return std::fabs(flow) <= dry && std::fabs(inflow) <= dry; };
    const bool begins = dryAt(result.flow.front(), result.inflow.empty() ? 0 : result.inflow.front());
    const bool ends = dryAt(result.flow.back(), result.inflow.empty() ? 0 : result.inflow.back());
    const double missing = 100 * (in - water.outflow) / in;
    return begins && (ends || missing < 0) ? missing : 0;
}

// The same remark for every ratio would bury the others.
void NetworkRun::warnOnce(const Station& station, std::string text)
{
    if (m_warnedAt != &station) {
        m_warnedAt = &station;
        m_warned.clear();
    }
    const std::string key = text.substr(0, text.find(':'));
    if (std::find(m_warned.begin(), m_warned.end(), key) != m_warned.end())
        return;
    m_warned.push_back(key);
    m_diagnostics.warn(station.kk, "STATION " + station.name + " " + std::move(text));
}

void NetworkRun::tell(const Station& station, Result& result)
{
    const bool endsDry = result.drySince > 0 && result.drySince < result.flow.size();
    const SeriesMarks marks = marksOf(endsDry ? result.flow.first(result.drySince) : result.flow);
    if (!std::isfinite(marks.sum))
        throw std::range_error("not finite");
    result.peakFlow = marks.peak;
    result.peakAt = indexOf(result.flow, marks.peak);
    result.balance.outflow = volumeOf(marks.sum, result.flow);
    result.hasStage = false;
    if (!result.stage.empty()) {
        result.hasStage = true;
        const SeriesMarks stages = marksOf(result.stage);
        if (!std::isfinite(stages.sum))
            throw std::range_error("not finite");
        result.peakStage = stages.peak;
        result.stageAt = indexOf(result.stage, stages.peak);
    } else if (!result.step->ratingFlow.empty() && result.role != ResultRole::Diverted) {
        result.hasStage = true;
        result.stageAt = result.peakAt;
        result.peakStage =
            methods::interpolateOnwards(result.step->ratingFlow, result.step->ratingStage, result.peakFlow);
    }
    const double off = unexplainedPercent(result);
    if (std::fabs(off) > kBalancePercent && result.role == ResultRole::Main)
        warnOnce(station, "WATER BALANCE IS OFF: " + shortNumber(std::round(off * 100) / 100) +
                              " PERCENT OF THE INFLOW IS NOT ACCOUNTED FOR");
    m_listener.result(station, result);
}

void NetworkRun::interpolate(const Station& station, Result& result, const Branch& branch)
{
    const std::vector<IndexStorm>& storms = m_job.storms;
    if (storms.empty() || result.storm + 1 != storms.size())
        return;
    std::size_t upper = 1;
    while (upper + 1 < storms.size() && branch.area > storms[upper].area)
        ++upper;
    const std::size_t lower = upper - 1;
    upper = std::min(upper, storms.size() - 1);
    const double w = methods::depthAreaWeight(branch.area, storms[lower].area, storms[upper].area);
    const std::span<const double> a = hydrograph(branch, result.ratio * storms.size() + lower);
    const std::span<const double> b = hydrograph(branch, result.ratio * storms.size() + upper);
    for (std::size_t i = 0; i < m_n; ++i)
        m_s.inflow[i] = a[i] + w * (b[i] - a[i]);
    Result between;
    between.role = ResultRole::Interpolated;
    between.name = result.name;
    between.step = result.step;
    between.plan = result.plan;
    between.ratio = result.ratio;
    between.area = branch.area;
    between.flow = m_s.inflow;
    if (!result.stage.empty()) {
        for (std::size_t i = 0; i < m_n; ++i) {
            const double from = m_stagePerStorm[lower * m_n + i];
            m_s.stage[i] = from + w * (m_stagePerStorm[upper * m_n + i] - from);
        }
        between.stage = m_s.stage;
    }
    tell(station, between);
}

void NetworkRun::keepIfNamed(const Station& station, std::size_t plan)
{
    if (m_sources.contains(station.name) && !m_stacks[plan].empty())
        m_named[plan].insert_or_assign(station.name, m_stacks[plan].back());
}

void NetworkRun::givenFlow(const Station& station, const GivenFlow& input, Result& result)
{
    Branch out = fresh(input.area);
    result.area = out.area;
    for (std::size_t index = 0; index < m_job.hydrographsPerPlan(); ++index) {
        place(result, index);
        const double ratio = m_job.ratiosOnRain ? 1 : m_job.ratios[result.ratio];
        const std::span<double> flow = hydrograph(out, index);
        for (std::size_t i = 0; i < m_n; ++i)
            flow[i] = ratio * input.flow[i];
        result.flow = flow;
        tell(station, result);
        interpolate(station, result, out);
    }
    push(std::move(out));
}

void NetworkRun::scaledCopy(const Station& station, const ScaledCopy& input, Result& result)
{
    const auto source = m_named[m_plan].find(input.source);
    if (source == m_named[m_plan].end())
        throw std::invalid_argument("the hydrograph of station " + input.source + " is not there");
    Branch out = fresh(input.area);
    result.area = out.area;
    for (std::size_t index = 0; index < m_job.hydrographsPerPlan(); ++index) {
        place(result, index);
        const std::span<const double> from = hydrograph(source->second, index);
        const std::span<double> flow = hydrograph(out, index);
        for (std::size_t i = 0; i < m_n; ++i)
            flow[i] = input.ratio * from[i];
        result.flow = flow;
        tell(station, result);
        interpolate(station, result, out);
    }
    push(std::move(out));
}

void NetworkRun::combine(const Station& station, const Combination& combination, Result& result)
{
    Branch sum = take();
    for (int i = 1; i < combination.count; ++i) {
        Branch next = take();
        sum.area += next.area;
        for (std::size_t k = 0; k < sum.flows.size(); ++k)
            sum.flows[k] += next.flows[k];
        release(std::move(next));
    }
    sum.area = combination.area.value_or(sum.area);
    result.area = sum.area;
    for (std::size_t index = 0; index < m_job.hydrographsPerPlan(); ++index) {
        place(result, index);
        result.flow = hydrograph(sum, index);
        tell(station, result);
        interpolate(station, result, sum);
    }
    push(std::move(sum));
}

void NetworkRun::divert(const Station& station, const Diversion& diversion, Result& result)
{
    Branch in = take();
    Branch out = fresh(in.area), away = fresh(0);
    const methods::DiversionRule rule{diversion.inflow, diversion.diverted, diversion.maxFlow, diversion.maxVolume};
    for (std::size_t index = 0; index < m_job.hydrographsPerPlan(); ++index) {
        place(result, index);
        const std::span<double> diverted = hydrograph(away, index), remainder = hydrograph(out, index);
        methods::divert(rule, m_hours, m_job.units, hydrograph(in, index), diverted, remainder);
        Result off = result;
        off.role = ResultRole::Diverted;
        off.name = diversion.name;
        off.area = in.area;
        off.flow = diverted;
        tell(station, off);
        result.area = out.area;
        result.flow = remainder;
        result.inflow = hydrograph(in, index);
        result.diverted = diverted;
        result.balance = {};
        result.balance.inflow = volume(result.inflow);
        result.balance.taken = volume(diverted);
        result.balance.storageKnown = true;
        tell(station, result);
        interpolate(station, result, out);
    }
    release(std::move(in));
    const auto [kept, isNew] = m_stored[m_plan].try_emplace(diversion.name);
    if (!isNew)
        release(std::move(kept->second));
    kept->second = std::move(away);
    push(std::move(out));
}

void NetworkRun::retrieve(const Station& station, const Retrieval& retrieval, Result& result)
{
    // One name space for both cards: a pumped flow may be fetched by DR as well. A plan that does not store the flow
    // has none to fetch.
    const auto& first = retrieval.pumped ? m_pumped[m_plan] : m_stored[m_plan];
    const auto& second = retrieval.pumped ? m_stored[m_plan] : m_pumped[m_plan];
    Branch out = fresh(0);
    if (const auto from = first.find(retrieval.name); from != first.end())
        out.flows = from->second.flows;
    else if (const auto other = second.find(retrieval.name); other != second.end())
        out.flows = other->second.flows;
    else
        std::fill(out.flows.begin(), out.flows.end(), 0.0);
    result.area = 0;
    for (std::size_t index = 0; index < m_job.hydrographsPerPlan(); ++index) {
        place(result, index);
        result.flow = hydrograph(out, index);
        tell(station, result);
        interpolate(station, result, out);
    }
    push(std::move(out));
}

} // namespace hec1
