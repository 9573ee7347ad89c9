// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/methods/BaseFlow.h"
#include "engine/methods/KinematicWave.h"
#include "engine/methods/Losses.h"
#include "engine/methods/UnitGraphs.h"
#include "engine/network/NetworkRun.h"

#include <algorithm>
#include <array>

namespace hec1 {

namespace {

double depthOf(std::span<const double> depths)
{
    double sum = 0;
    for (const double depth : depths)
        sum += depth;
    return sum;
}

} // namespace

void NetworkRun::runoff(const Station& station, const RunoffInput& input, Result& result)
{
    std::optional<Branch> upstream;
    if (input.takesUpstream)
        upstream = take();
    Branch out = fresh(input.area + (upstream ? upstream->area : 0));
    result.area = out.area;
    result.unitGraph = input.unitGraph.get();
    Unscaled unscaled;
    for (std::size_t index = 0; index < m_job.hydrographsPerPlan(); ++index) {
        place(result, index);
        const RainInput& rain = m_job.storms.empty() ? *input.rain : m_job.storms[result.storm].rain;
        const double ratio = m_job.ratios[result.ratio];
        const std::span<double> flow = hydrograph(out, index);
        const std::span<const double> from = upstream ? hydrograph(*upstream, index) : std::span<const double>{};
        const bool onFlow = !m_job.ratiosOnRain && ratio != 1;
        if (!m_job.ratiosOnRain && !input.takesUpstream && index > 0 && m_job.storms.empty()) {
            // The flows of another ratio are there: no need to work the storm again.
            copyRunoff(ratio, unscaled, flow, result.balance);
            result.flow = flow;
            tell(station, result);
            continue;
        }
        runoffHydrograph(input, rain, m_job.ratiosOnRain ? ratio : 1, from, flow, result);
        if (onFlow && input.takesUpstream)
            warnOnce(station, "FLOW RATIOS DO NOT APPLY TO A SUBBASIN THAT ROUTES ITS UPSTREAM FLOW");
        else if (!m_job.ratiosOnRain) {
            unscaled.keep(flow, m_s.baseFlow, result.balance);
            copyRunoff(ratio, unscaled, flow, result.balance);
        }
        result.flow = flow;
        tell(station, result);
        interpolate(station, result, out);
    }
    if (upstream)
        release(std::move(*upstream));
    push(std::move(out));
}

void NetworkRun::Unscaled::keep(std::span<const double> total, std::span<const double> base, const WaterBalance& water)
{
    flow.assign(total.begin(), total.end());
    baseFlow.assign(base.begin(), base.end());
    balance = water;
}

// A ratio of flows multiplies the hydrograph, base flow and all; rain and losses stay those of the storm.
void NetworkRun::copyRunoff(double ratio, const Unscaled& unscaled, std::span<double> flow, WaterBalance& balance)
{
    for (std::size_t i = 0; i < m_n; ++i)
        flow[i] = ratio * unscaled.flow[i];
    for (std::size_t i = 0; i < m_n; ++i)
        m_s.baseFlow[i] = ratio * unscaled.baseFlow[i];
    balance = unscaled.balance;
    for (double* part : {&balance.excess, &balance.baseFlow, &balance.storageChange})
        *part *= ratio;
}

void NetworkRun::runoffHydrograph(const RunoffInput& input, const RainInput& rain, double ratio,
                                  std::span<const double> upstream, std::span<double> flow, Result& result)
{
    const methods::UnitSystem& units = m_job.units;
    const std::size_t wet = rain.wet;
    const double scale = rain.scale * ratio;
    if (m_wet > wet) {
        std::fill(m_s.rain.begin() + static_cast<std::ptrdiff_t>(wet), m_s.rain.end(), 0.0);
        std::fill(m_s.excess.begin() + static_cast<std::ptrdiff_t>(wet), m_s.excess.end(), 0.0);
        std::fill(m_s.loss.begin() + static_cast<std::ptrdiff_t>(wet), m_s.loss.end(), 0.0);
    }
    m_wet = wet;
    for (std::size_t i = 0; i < wet; ++i)
        m_s.rain[i] = scale * (*rain.shape)[i];
    const std::span<double> wetRain(m_s.rain.data(), wet), wetExcess(m_s.excess.data(), wet);
    const LossInput& loss = *input.loss;
    methods::rainfallExcess(loss.method, loss.imperviousPercent, m_hours, units, wetRain, wetExcess);

    result.drySince = 0;
    double held = 0; // depth that the unit graph has not let go at the end of the run
    if (input.unitGraph) {
        const std::vector<double>& graph = input.unitGraph->ordinates;
        methods::convolve(wetExcess, graph, flow);
        if (!input.baseFlow && m_job.ratiosOnRain) // a long run after a short storm is mostly zeros
            result.drySince = wet + graph.size();
        if (wet + graph.size() > m_n && wet > 0) {
            double graphTail = 0, whole = 0;
            std::vector<double> behind(graph.size() + 1, 0.0);
            for (std::size_t k = graph.size(); k-- > 0;)
                behind[k] = (whole += graph[k]);
            for (std::size_t j = 0; j < wet; ++j)
                if (m_n - j < graph.size())
                    graphTail += m_s.excess[j] * behind[m_n - j];
            held = whole > 0 ? graphTail / whole : 0;
        }
    } else {
        std::vector<std::span<const double>> excess{std::span<const double>(m_s.excess)};
        if (input.transform->planes.size() > 1) {
            std::fill(m_s.secondExcess.begin(), m_s.secondExcess.end(), 0.0);
            methods::rainfallExcess(loss.secondMethod.value_or(loss.method),
                                    loss.secondMethod ? loss.secondImperviousPercent : loss.imperviousPercent, m_hours,
                                    units, wetRain, std::span<double>(m_s.secondExcess.data(), wet));
            excess.emplace_back(m_s.secondExcess);
        }
        methods::kinematicSubbasin(input.transform->planes, excess, input.transform->channels, input.area, m_hours,
                                   units, upstream, flow);
        if (excess.size() > 1) { // what is reported is the mean over the subbasin
            const double a = input.transform->planes[0].percent, b = input.transform->planes[1].percent;
            for (std::size_t i = 0; i < wet; ++i)
                m_s.excess[i] = (a * m_s.excess[i] + b * m_s.secondExcess[i]) / (a + b);
        }
    }
    for (std::size_t i = 0; i < wet; ++i)
        m_s.loss[i] = m_s.rain[i] - m_s.excess[i];
    WaterBalance& balance = result.balance;
    balance = {};
    const double perDepth = units.volumeOf(units.runoffFlow * input.area, 1); // of one unit of depth per hour, an hour
    balance.rain = perDepth * depthOf(wetRain);
    balance.excess = perDepth * depthOf(wetExcess);
    balance.loss = balance.rain - balance.excess;
    balance.inflow = upstream.empty() ? 0 : volume(upstream);
    // The volume under the last ordinate reaches half an interval further than the run; it counts as not yet gone.
    const double direct = perDepth * (depthOf(wetExcess) - held) * (input.unitGraph ? input.unitGraph->depth : 1);
    balance.storageKnown = input.unitGraph != nullptr;
    balance.storageChange = balance.excess - direct + units.volumeOf((flow.front() + flow.back()) / 2, m_hours);
    result.rain = m_s.rain;
    result.loss = m_s.loss;
    result.excess = m_s.excess;
    result.baseFlow = {};
    if (input.baseFlow) {
        methods::addBaseFlow(*input.baseFlow, input.area, m_hours, flow, m_s.baseFlow);
        result.baseFlow = m_s.baseFlow;
        balance.baseFlow = volume(m_s.baseFlow);
    }
}

} // namespace hec1
