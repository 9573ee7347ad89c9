// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/methods/ChannelLoss.h"
#include "engine/methods/DamBreach.h"
#include "engine/methods/KinematicWave.h"
#include "engine/methods/LagRouting.h"
#include "engine/methods/Muskingum.h"
#include "engine/methods/MuskingumCunge.h"
#include "engine/methods/StorageRouting.h"
#include "engine/network/CardTables.h"
#include "engine/network/NetworkRun.h"

#include <algorithm>

namespace hec1 {

void NetworkRun::route(const Station& station, const Routing& routing, Result& result)
{
    Branch in = take();
    if (std::holds_alternative<NoRouting>(routing.how) && !routing.channelLoss) {
        result.area = in.area;
        for (std::size_t index = 0; index < m_job.hydrographsPerPlan(); ++index) {
            place(result, index);
            result.flow = hydrograph(in, index);
            tell(station, result);
            interpolate(station, result, in);
        }
        push(std::move(in));
        return;
    }
    Branch out = fresh(in.area);
    const StorageRouting* storage = routing.storage();
    const bool stores = storage != nullptr && !storage->pumpName.empty();
    Branch pumped = stores ? fresh(0) : Branch{};
    result.area = out.area;
    if (!m_job.storms.empty())
        m_stagePerStorm.resize(m_job.storms.size() * m_n);
    const auto* muskingum = routing.channelLoss ? nullptr : std::get_if<MuskingumRouting>(&routing.how);
    if (muskingum != nullptr)
        methods::routeMuskingumTogether(in.flows, out.flows, m_n, muskingum->kHours, muskingum->x, muskingum->steps,
                                        m_hours);
    for (std::size_t index = 0; index < m_job.hydrographsPerPlan(); ++index) {
        place(result, index);
        result.balance = {};
        const std::span<double> inflow = hydrograph(in, index), outflow = hydrograph(out, index);
        result.balance.inflow = volume(inflow);
        if (routing.channelLoss) {
            methods::takeChannelLoss(routing.channelLoss->constant, routing.channelLoss->share, inflow);
            if (routing.channelLoss->percolation > 0 && storage != nullptr && !storage->section.empty())
                methods::takePercolation(routing.channelLoss->percolation, routing.channelLoss->invert,
                                         storage->reachLength, storage->section, m_job.units, inflow);
            result.balance.taken = result.balance.inflow - volume(inflow);
        }
        result.inflow = inflow;
        result.flow = outflow;
        if (muskingum == nullptr)
            routeOne(routing, inflow, outflow, result);
        else
            result.steps = nullptr;
        if (storage != nullptr && !storage->pumps.empty()) {
            Result off = result;
            off.role = ResultRole::Pumped;
            off.name = stores ? std::string_view(storage->pumpName) : result.name;
            off.area = 0;
            off.flow = m_s.pumped;
            off.stage = off.storage = {};
            tell(station, off);
            if (stores)
                std::copy(m_s.pumped.begin(), m_s.pumped.end(), hydrograph(pumped, index).begin());
        }
        if (!m_job.storms.empty() && !result.stage.empty())
            std::copy(result.stage.begin(), result.stage.end(),
                      m_stagePerStorm.begin() + static_cast<std::ptrdiff_t>(result.storm * m_n));
        tell(station, result);
        if (storage != nullptr && result.dam == nullptr && m_dam.notes.aboveTable)
            warnOnce(station, "POOL OR REACH ROSE ABOVE ITS TABLE: THE LAST PART OF THE TABLE IS CARRIED ON");
        else if (storage != nullptr && m_dam.notes.aboveTable)
            warnOnce(station, "POOL ROSE ABOVE ITS TABLE: STORAGES AND OUTFLOWS ARE CARRIED ON");
        interpolate(station, result, out);
    }
    if (stores) {
        const auto [kept, isNew] = m_pumped[m_plan].try_emplace(storage->pumpName);
        if (!isNew)
            release(std::move(kept->second));
        kept->second = std::move(pumped);
    }
    release(std::move(in));
    push(std::move(out));
}

void NetworkRun::routeOne(const Routing& routing, std::span<const double> inflow, std::span<double> outflow,
                          Result& result)
{
    result.steps = nullptr;
    if (const auto* muskingum = std::get_if<MuskingumRouting>(&routing.how)) {
        methods::routeMuskingum(inflow, outflow, muskingum->kHours, muskingum->x, muskingum->steps, m_hours);
    } else if (const auto* lag = std::get_if<LagRouting>(&routing.how)) {
        methods::routeStraddleStagger(inflow, outflow, lag->steps, lag->averaged, lag->lag);
    } else if (const StorageRouting* storage = routing.storage()) {
        routeStorage(*storage, inflow, outflow, result);
    } else if (const auto* cunge = std::get_if<MuskingumCungeRouting>(&routing.how)) {
        m_steps =
            methods::routeMuskingumCunge(*cunge->channel, cunge->length, cunge->slope, m_hours, inflow, {}, outflow);
        result.steps = &m_steps;
    } else if (const auto* wave = std::get_if<KinematicRouting>(&routing.how)) {
        methods::routeKinematicWave(*wave->channel, wave->length, wave->minSteps, m_hours, inflow, {}, outflow);
    } else {
        std::copy(inflow.begin(), inflow.end(), outflow.begin());
    }
}

void NetworkRun::routeStorage(const StorageRouting& how, std::span<const double> inflow, std::span<double> outflow,
                              Result& result)
{
    const bool dam = how.breach || how.outlets.dam;
    const std::span<double> stage = how.pool ? std::span<double>(m_s.stage) : std::span<double>{};
    result.dam = nullptr;
    m_dam = {};
    if (dam && how.steps == 1 && how.x == 0) {
        m_dam = methods::routeDam(*how.pool, how.outlets, how.rating, how.breach, m_hours, m_job.units, inflow,
                                  how.start, outflow, m_s.storage, stage, how.pumps, m_s.pumped);
        result.dam = &m_dam;
    } else if (how.steps == 1) {
        const methods::StorageIndication relation(how.rating, m_hours, m_job.units, how.x, 1);
        m_dam.notes =
            methods::routePool(relation, inflow, how.start, outflow, m_s.storage, stage, how.pumps, m_s.pumped);
    } else {
        m_dam.notes = methods::routeReach(how.rating, how.steps, how.x, m_hours, m_job.units, inflow, how.start,
                                          outflow, m_s.storage, stage);
    }
    result.storage = m_s.storage;
    result.stage = stage;
    if (!how.pumps.empty()) {
        result.pumped = m_s.pumped;
        double pumped = 0; // constant within an interval, so not a trapezoid
        for (const double flow : m_s.pumped)
            pumped += flow;
        result.balance.taken += m_job.units.volumeOf(pumped, m_hours);
    }
    result.balance.storageChange = m_s.storage.back() - m_s.storage.front();
    // With a breach the short steps know the outflow between ordinates better than the ordinates do.
    result.balance.storageKnown = !(how.breach && m_dam.failed);
}

} // namespace hec1
