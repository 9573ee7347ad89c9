// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/methods/ChannelSections.h"
#include "engine/methods/Muskingum.h"
#include "engine/network/StepParts.h"

#include <algorithm>
#include <cmath>
#include <stdexcept>

namespace hec1 {

namespace {

using enum ErrorNumber;

constexpr int kMostSteps = 1000; // of a reach; more is a slipped field

} // namespace

void StepBuilder::buildRouting(const StepParts& parts, Step& step)
{
    Routing routing;
    step.what = Routing{}; // what the network needs to know, should the rest be faulty
    if (parts.rl) {
        routing.channelLoss =
            ChannelLossInput{parts.rl->value(1), parts.rl->value(2), parts.rl->value(3), parts.rl->value(4)};
        if (parts.rl->value(1) < 0 || parts.rl->value(2) < 0 || parts.rl->value(2) > 1 || parts.rl->value(3) < 0)
            m_diagnostics.error(OutOfRange, parts.rl, "LOSSES MUST NOT BE BELOW ZERO, NOR CLOSS ABOVE 1");
    }
    const Card* card = parts.rm ? parts.rm : parts.rt ? parts.rt : parts.rs;
    if (card != nullptr && (card->value(1) < 0 || card->value(1) > kMostSteps)) {
        m_diagnostics.error(OutOfRange, card, "NSTPS (FIELD 1) MUST LIE BETWEEN 1 AND " + std::to_string(kMostSteps));
        return;
    }
    try {
        if (parts.rm) {
            const MuskingumRouting how{std::max(1, parts.rm->whole(1)), parts.rm->value(2), parts.rm->value(3)};
            methods::muskingumWeights(how.kHours / how.steps, how.x, m_job.time.hours());
            if (!methods::muskingumIsStable(how.kHours / how.steps, how.x, m_job.time.hours()))
                m_diagnostics.warn(parts.rm, "K OF ONE STEP (" + shortNumber(how.kHours / how.steps) +
                                                 " HOURS) IS OUT OF RANGE FOR THE INTERVAL AND X: OUTFLOW MAY TURN "
                                                 "NEGATIVE OR SWING");
            routing.how = how;
        } else if (parts.rt) {
            const LagRouting how{std::max(1, parts.rt->whole(1)), std::max(1, parts.rt->whole(2)), parts.rt->whole(3)};
            if (how.lag < 0) {
                m_diagnostics.error(OutOfRange, parts.rt, "LAG (FIELD 3) MUST NOT BE BELOW ZERO");
                return;
            }
            routing.how = how;
        } else if (parts.rs) {
            std::optional<StorageRouting> how = storageRouting(parts);
            if (!how)
                return;
            routing.how = std::make_shared<const StorageRouting>(std::move(*how));
        } else if (!parts.channels.empty()) {
            const Card& channel = *parts.channels.front();
            if (parts.channels.size() > 1)
                m_diagnostics.error(TwoOperations, parts.channels[1], "A ROUTING STATION HAS ONE CHANNEL");
            if (channel.is("RD") && !channel.has(1)) {
                methods::EightPointSection section;
                if (!readSection(parts, section))
                    return;
                routing.how = MuskingumCungeRouting{std::make_shared<methods::ChannelFlow>(section, m_job.units),
                                                    section.length, section.slope};
            } else if (const std::optional<methods::StandardChannel> shape = standardChannel(channel)) {
                auto flow = std::make_shared<methods::ChannelFlow>(*shape, m_job.units);
                if (channel.is("RD"))
                    routing.how = MuskingumCungeRouting{std::move(flow), shape->length, shape->slope};
                else
                    routing.how = KinematicRouting{std::move(flow), shape->length, kinematicSteps(channel, 2)};
            } else {
                return;
            }
        }
    } catch (const std::invalid_argument& fault) {
        const Card* at = card != nullptr ? card : parts.rc != nullptr ? parts.rc : parts.channels.front();
        m_diagnostics.error(MethodData, at, capitals(fault.what()));
        return;
    }
    step.what = std::move(routing);
}

bool StepBuilder::readSection(const StepParts& parts, methods::EightPointSection& section)
{
    const Card* card = parts.rc ? parts.rc : parts.rs ? parts.rs : parts.rx ? parts.rx : parts.channels.front();
    if (!parts.rc || !parts.rx || !parts.ry || !parts.rx->has(8) || !parts.ry->has(8)) {
        m_diagnostics.error(SectionMissing, card, "");
        return false;
    }
    section = {parts.rc->value(1),
               parts.rc->value(2),
               parts.rc->value(3),
               parts.rc->value(4),
               parts.rc->value(5),
               parts.rc->value(6),
               {},
               {}};
    for (int i = 0; i < 8; ++i) {
        section.x[static_cast<std::size_t>(i)] = parts.rx->value(i + 1);
        section.y[static_cast<std::size_t>(i)] = parts.ry->value(i + 1);
    }
    return true;
}

std::optional<StorageRouting> StepBuilder::storageRouting(const StepParts& parts)
{
    StorageRouting routing;
    routing.steps = std::max(1, parts.rs->whole(1));
    routing.x = parts.rs->value(4);
    if (routing.x < 0 || routing.x > 0.5) {
        m_diagnostics.error(OutOfRange, parts.rs, "X (FIELD 4) MUST LIE BETWEEN 0 AND 0.5");
        return std::nullopt;
    }
    if (parts.rc) {
        methods::EightPointSection section;
        if (!readSection(parts, section))
            return std::nullopt;
        routing.section = methods::normalDepthTable(section, m_job.units);
        routing.reachLength = section.length;
        routing.rating = methods::reachRating(routing.section, section.length, m_job.units);
    } else if (!buildPool(parts, routing) || !buildRating(parts, routing)) {
        return std::nullopt;
    }
    buildPumps(parts, routing);
    if (!buildStart(parts, routing))
        return std::nullopt;
    // Whatever the tables hide is found now and not in the middle of the run.
    const methods::StorageIndication check(routing.rating, m_job.time.hours(), m_job.units, routing.x, routing.steps);
    const bool reach = routing.steps > 1 || routing.x > 0;
    if (reach && (routing.breach || !routing.pumps.empty())) {
        m_diagnostics.error(OutOfRange, parts.rs, "A BREACH OR PUMPS NEED NSTPS OF 1 AND X OF 0");
        return std::nullopt;
    }
    if (!routing.formulas)
        for (const methods::FlowRange& range :
             methods::oscillationRanges(routing.rating, m_job.time.hours(), m_job.units)) {
            m_diagnostics.warn(parts.rs, "MODIFIED PULS MAY BE UNSTABLE FOR OUTFLOWS FROM " + shortNumber(range.from) +
                                             " TO " + shortNumber(range.to));
            break;
        }
    return routing;
}

bool StepBuilder::buildPool(const StepParts& parts, StorageRouting& routing)
{
    if (!parts.storages.given() && !(parts.areas.given() && parts.poolElevations.given())) {
        m_diagnostics.error(ReservoirIncomplete, parts.rs, "NEITHER SV, NOR SA WITH SE, NOR RC TELLS THE STORAGE");
        return false;
    }
    if (parts.storages.given() && parts.areas.given()) {
        m_diagnostics.error(TwoOperations, parts.areas.card, "SV AND SA EXCLUDE EACH OTHER");
        return false;
    }
    if (parts.areas.given()) {
        if (!checkRises(parts.poolElevations, true, m_diagnostics) ||
            !checkSameCount(parts.poolElevations, parts.areas, m_diagnostics))
            return false;
        routing.areas = parts.areas.values;
        routing.pool = methods::PoolStorage{parts.poolElevations.values,
                                            methods::conicStorage(parts.areas.values, parts.poolElevations.values)};
        return true;
    }
    if (!checkRises(parts.storages, false, m_diagnostics))
        return false;
    if (parts.poolElevations.given()) {
        if (!checkRises(parts.poolElevations, true, m_diagnostics) ||
            !checkSameCount(parts.poolElevations, parts.storages, m_diagnostics))
            return false;
        routing.pool = methods::PoolStorage{parts.poolElevations.values, parts.storages.values};
    }
    return true;
}

void StepBuilder::buildOutlets(const StepParts& parts, StorageRouting& routing)
{
    methods::PoolOutlets& outlets = routing.outlets;
    const auto orDefault = [](const Card& card, int field, double otherwise) {
        return card.value(field) > 0 ? card.value(field) : otherwise;
    };
    if (parts.sl) {
        outlets.lowLevel = methods::LowLevelOutlet{parts.sl->value(1), parts.sl->value(2), parts.sl->value(3),
                                                   orDefault(*parts.sl, 4, 0.5)};
        if (parts.sl->value(2) < 0 || parts.sl->value(3) < 0)
            m_diagnostics.error(OutOfRange, parts.sl, "CAREA AND COQL MUST NOT BE BELOW ZERO");
    }
    if (parts.ss) {
        outlets.spillway =
            methods::Weir{parts.ss->value(1), parts.ss->value(2), parts.ss->value(3), orDefault(*parts.ss, 4, 1.5)};
        if (parts.ss->value(2) < 0 || parts.ss->value(3) < 0)
            m_diagnostics.error(OutOfRange, parts.ss, "SPWID AND COQW MUST NOT BE BELOW ZERO");
        // A given rating tells the flow of the spillway; the card then only marks its crest.
        if (parts.flows.given())
            outlets.spillway->length = 0;
    }
    if (parts.st) {
        outlets.dam = methods::DamCrest{
            parts.st->value(1), parts.st->value(2), parts.st->value(3), orDefault(*parts.st, 4, 1.5), {}, {}};
        if (parts.st->value(2) < 0 || parts.st->value(3) < 0)
            m_diagnostics.error(OutOfRange, parts.st, "DAMWID AND COQD MUST NOT BE BELOW ZERO");
        if (parts.crestLengths.given()) {
            if (!parts.crestElevations.given())
                m_diagnostics.error(ValueMissing, parts.crestLengths.card, "SW NEEDS SE BEHIND IT");
            else if (checkSameCount(parts.crestElevations, parts.crestLengths, m_diagnostics) &&
                     checkRises(parts.crestLengths, false, m_diagnostics) &&
                     checkRises(parts.crestElevations, true, m_diagnostics)) {
                outlets.dam->lengths = parts.crestLengths.values;
                outlets.dam->elevations = parts.crestElevations.values;
            }
        }
    }
    if (parts.sb) {
        routing.breach = methods::Breach{parts.sb->value(1), parts.sb->value(2), parts.sb->value(3), parts.sb->value(4),
                                         parts.sb->value(5)};
        if (parts.sb->value(2) < 0 || parts.sb->value(3) < 0 || parts.sb->value(4) <= 0)
            m_diagnostics.error(OutOfRange, parts.sb, "BRWID AND Z MUST NOT BE BELOW ZERO, TFAIL MUST BE ABOVE ZERO");
    }
}

bool StepBuilder::buildRating(const StepParts& parts, StorageRouting& routing)
{
    buildOutlets(parts, routing);
    routing.formulas = (parts.sl || (parts.ss && !parts.flows.given()) || parts.st);
    if (!routing.formulas && !parts.flows.given()) {
        m_diagnostics.error(ReservoirIncomplete, parts.rs, "NEITHER SQ, SL NOR SS TELLS THE OUTFLOW");
        return false;
    }
    const bool needsElevations = parts.sl || parts.ss || parts.st || parts.sb || !parts.pumps.empty();
    if (needsElevations && !routing.pool) {
        m_diagnostics.error(ReservoirIncomplete, parts.storages.card,
                            "SL, SS, ST, SB AND WP NEED ELEVATIONS (SE) FOR THE STORAGES");
        return false;
    }
    if (parts.flows.given()) {
        if (!checkNotNegative(parts.flows, m_diagnostics) || !checkRises(parts.flows, false, m_diagnostics))
            return false;
        if (parts.flowElevations.given()) {
            if (!routing.pool) {
                m_diagnostics.error(ReservoirIncomplete, parts.flowElevations.card, "THE STORAGES HAVE NO ELEVATIONS");
                return false;
            }
            if (!checkRises(parts.flowElevations, true, m_diagnostics) ||
                !checkSameCount(parts.flowElevations, parts.flows, m_diagnostics))
                return false;
            routing.outlets.ratedElevation = parts.flowElevations.values;
        } else {
            if (!checkSameCount(parts.flows, parts.areas.given() ? parts.areas : parts.storages, m_diagnostics))
                return false;
            if (routing.pool)
                routing.outlets.ratedElevation = routing.pool->elevation;
        }
        routing.outlets.ratedFlow = parts.flows.values;
    }
    if (routing.pool) {
        routing.rating = methods::mergedRating(*routing.pool, routing.outlets, m_job.units);
    } else {
        routing.rating = {{}, parts.storages.values, parts.flows.values, parts.storages.values.size()};
    }
    return true;
}

bool StepBuilder::buildStart(const StepParts& parts, StorageRouting& routing)
{
    const std::string_view word = parts.rs->word(2);
    const double value = parts.rs->value(3);
    const methods::RatingTable& table = routing.rating;
    const std::size_t last = std::max<std::size_t>(1, std::min(table.given, table.storage.size())) - 1;
    const auto inside = [&](const std::vector<double>& values) {
        if (!values.empty() && value >= values.front() - 1e-9 && value <= values[last] + 1e-9)
            return true;
        m_diagnostics.error(StartOutsideTable, parts.rs,
                            values.empty() ? std::string("THERE ARE NO ELEVATIONS")
                                           : shortNumber(value) + " IS NOT BETWEEN " + shortNumber(values.front()) +
                                                 " AND " + shortNumber(values[last]));
        return false;
    };
    const bool firstInflow = value == -1;
    if (word.empty() || sameWord(word, "STOR")) {
        if (firstInflow)
            routing.start = {methods::StartKind::FirstInflow, 0};
        else
            routing.start = {methods::StartKind::Storage, value};
        // A blank start of a reach whose table begins above zero means its first point.
        if (!firstInflow && !parts.rs->has(3) && !table.storage.empty() && value < table.storage.front())
            routing.start.value = table.storage.front();
        else if (!firstInflow)
            return inside(table.storage);
    } else if (sameWord(word, "ELEV")) {
        routing.start = {methods::StartKind::Elevation, value};
        return inside(table.elevation);
    } else if (sameWord(word, "FLOW")) {
        if (firstInflow)
            routing.start = {methods::StartKind::FirstInflow, 0};
        else
            routing.start = {methods::StartKind::Outflow, value};
        if (!firstInflow)
            return inside(table.flow);
    } else {
        m_diagnostics.error(UnknownWord, parts.rs, capitals(word) + " IS NOT ONE OF STOR, ELEV, FLOW");
        return false;
    }
    return true;
}

void StepBuilder::buildPumps(const StepParts& parts, StorageRouting& routing)
{
    for (const Card* card : parts.pumps) {
        methods::Pump pump{card->value(1), card->value(3), card->value(2)};
        if (!card->has(3))
            pump.off = pump.on;
        if (pump.flow < 0 || pump.off > pump.on)
            m_diagnostics.error(OutOfRange, card, "PUMPQ MUST NOT BE BELOW ZERO, NOR PMPOFF ABOVE PMPON");
        if (!routing.pumps.empty() && card->word(4) != routing.pumpName)
            m_diagnostics.error(TwoOperations, card, "ALL PUMPS OF A STATION STORE THEIR FLOW UNDER ONE NAME");
        routing.pumps.push_back(pump);
        routing.pumpName = card->word(4);
    }
}

} // namespace hec1
