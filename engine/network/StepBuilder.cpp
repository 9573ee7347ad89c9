// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/files/SavedHydrograph.h"
#include "engine/methods/UnitGraphs.h"
#include "engine/network/StepParts.h"

#include <algorithm>
#include <cmath>
#include <stdexcept>

namespace hec1 {

namespace {

using enum ErrorNumber;

// A unit graph longer than the run has no effect; a short run must still find the peak of a Snyder graph.
constexpr std::size_t kLeastUnitGraphRoom = 2000;

} // namespace

std::string StepBuilder::nameOf(const Card& card, int field)
{
    if (!card.has(field))
        m_diagnostics.error(NameMissing, &card, "");
    return std::string(card.word(field));
}

Step StepBuilder::build(const Card& kk, const StepParts& parts, Carried& carried)
{
    if (parts.loss)
        carried.loss = parts.loss;
    if (parts.transform)
        carried.transform = parts.transform;
    if (parts.bf)
        carried.baseFlow = parts.bf;
    takeKinematic(parts, carried);

    Step step;
    const int operations = (parts.ba || parts.qi.given() || parts.bi ? 1 : 0) + (parts.routes() ? 1 : 0) +
                           (parts.hc ? 1 : 0) + (parts.dt ? 1 : 0) + (parts.dr ? 1 : 0) + (parts.wr ? 1 : 0);
    if (operations > 1) {
        m_diagnostics.error(TwoOperations, &kk, "");
        step.card = nullptr;
        return step;
    }
    if (parts.qi.given())
        buildGiven(parts, step);
    else if (parts.bi)
        buildSaved(parts, step);
    else if (parts.ba && parts.ba->has(4))
        step.what = ScaledCopy{parts.ba->value(1), parts.ba->value(3), std::string(parts.ba->word(4))};
    else if (parts.ba)
        buildRunoff(kk, parts, carried, step);
    else if (parts.routes())
        buildRouting(parts, step);
    else if (parts.hc) {
        if (parts.hc->value(1) < 1)
            m_diagnostics.error(ValueMissing, parts.hc, "ICOMP (FIELD 1) MUST BE 1 OR MORE");
        step.what =
            Combination{parts.hc->whole(1), parts.hc->value(2) > 0 ? std::optional(parts.hc->value(2)) : std::nullopt};
    } else if (parts.dt)
        buildDiversion(parts, step);
    else if (parts.dr)
        step.what = Retrieval{nameOf(*parts.dr, 1), false};
    else if (parts.wr)
        step.what = Retrieval{nameOf(*parts.wr, 1), true};
    step.card = parts.ba   ? parts.ba
                : parts.hc ? parts.hc
                : parts.dt ? parts.dt
                : parts.dr ? parts.dr
                : parts.wr ? parts.wr
                           : &kk;
    readRating(parts, step);
    return step;
}

// A set of planes or channels replaces that of an earlier station; the other half of the old set stays in force.
void StepBuilder::takeKinematic(const StepParts& parts, Carried& carried)
{
    if (!parts.ba || (parts.planes.empty() && parts.channels.empty()))
        return;
    TransformInput transform;
    if (carried.transform && carried.transform->kind == TransformKind::Kinematic)
        transform = *carried.transform;
    transform.kind = TransformKind::Kinematic;
    if (!parts.planes.empty()) {
        transform.planes.clear();
        transform.card = parts.planes.front();
        double percents = 0;
        for (const Card* card : parts.planes) {
            const double share = card->has(4) || parts.planes.size() > 1 ? card->value(4) : 100;
            transform.planes.push_back(
                {card->value(1), card->value(2), card->value(3), share, card->value(5) >= 1 ? card->whole(5) : 5});
            percents += share;
            if (card->value(1) <= 0 || card->value(2) <= 0 || card->value(3) <= 0)
                m_diagnostics.error(ValueMissing, card, "L, S AND N (FIELDS 1 TO 3) MUST BE ABOVE ZERO");
            if (share < 0 || share > 100)
                m_diagnostics.error(OutOfRange, card, "A (FIELD 4) MUST LIE BETWEEN 0 AND 100 PERCENT");
        }
        if (parts.planes.size() > 2)
            m_diagnostics.error(TooManyValues, parts.planes[2], "A SUBBASIN HAS AT MOST TWO PLANES");
        else if (std::fabs(percents - 100) > 0.5)
            m_diagnostics.warn(parts.planes.front(),
                               "THE PLANES MAKE UP " + shortNumber(percents) + " PERCENT OF THE SUBBASIN, NOT 100");
    }
    if (!parts.channels.empty()) {
        transform.channels.clear();
        for (const Card* card : parts.channels) {
            const std::optional<methods::StandardChannel> channel = standardChannel(*card);
            const bool last = card == parts.channels.back();
            if (!last && card->value(4) <= 0)
                m_diagnostics.error(ValueMissing, card, "CA (FIELD 4) OF A COLLECTOR MUST BE ABOVE ZERO");
            if (channel)
                transform.channels.push_back({*channel, card->value(4), kinematicSteps(*card, 2), card->is("RD")});
        }
    }
    if (transform.card == nullptr) {
        m_diagnostics.error(CardOutOfOrder, parts.channels.front(), "A CHANNEL OF A SUBBASIN NEEDS UK CARDS");
        return;
    }
    carried.transform = std::make_shared<TransformInput>(std::move(transform));
}

// Fields 8 and 9 are found in either order in published decks.
int StepBuilder::kinematicSteps(const Card& card, int fallback) const
{
    for (const int field : {8, 9})
        if (const std::optional<double> value = cardNumber(card.word(field)))
            return std::max(fallback, static_cast<int>(std::clamp(*value, 0.0, 1000.0)));
    return fallback;
}

bool StepBuilder::takesUpstream(const Card& card)
{
    return sameWord(card.word(8), "YES") || sameWord(card.word(9), "YES");
}

std::optional<methods::StandardChannel> StepBuilder::standardChannel(const Card& card)
{
    methods::StandardChannel channel{card.value(1), card.value(2), card.value(3), methods::ChannelShape::Trapezoid,
                                     card.value(6), card.value(7)};
    for (const int field : {8, 9})
        if (card.has(field) && !sameWord(card.word(field), "YES") && !sameWord(card.word(field), "NO") &&
            !cardNumber(card.word(field)))
            m_diagnostics.error(UnknownWord, &card,
                                "FIELD " + std::to_string(field) + ": " + capitals(card.word(field)) +
                                    " IS NEITHER YES NOR NO");
    if (sameWord(card.word(5), "DEEP"))
        channel.shape = methods::ChannelShape::Deep;
    else if (sameWord(card.word(5), "CIRC"))
        channel.shape = methods::ChannelShape::Circular;
    else if (card.has(5) && !sameWord(card.word(5), "TRAP")) {
        m_diagnostics.error(UnknownWord, &card,
                            "FIELD 5: " + capitals(card.word(5)) + " IS NOT ONE OF TRAP, DEEP, CIRC");
        return std::nullopt;
    }
    try {
        const methods::ChannelFlow check(channel, m_job.units);
    } catch (const std::invalid_argument& fault) {
        m_diagnostics.error(MethodData, &card, capitals(fault.what()));
        return std::nullopt;
    }
    return channel;
}

void StepBuilder::buildRunoff(const Card& kk, const StepParts& parts, Carried& carried, Step& step)
{
    RunoffInput runoff;
    runoff.area = parts.ba->value(1);
    runoff.normalAnnual = parts.ba->value(2);
    if (runoff.area <= 0) {
        m_diagnostics.error(AreaMissing, parts.ba, "");
        runoff.area = 1; // the rest of the station is looked at all the same
    }
    if (m_job.storms.empty()) {
        runoff.rain =
            carried.rain.rainOf(kk, runoff.area, runoff.normalAnnual, m_gages, m_job.time, m_job.units, m_diagnostics);
        runoff.rainCards = carried.rain.cards();
    }
    runoff.loss = carried.loss;
    runoff.transform = carried.transform;
    if (carried.baseFlow) {
        runoff.baseFlowCard = carried.baseFlow;
        runoff.baseFlow =
            methods::BaseFlowCard{carried.baseFlow->value(1), carried.baseFlow->value(2), carried.baseFlow->value(3)};
    }
    if (!runoff.loss)
        m_diagnostics.error(NoLoss, &kk, "");
    if (!runoff.transform) {
        m_diagnostics.error(NoUnitGraph, &kk, "");
    } else if (runoff.transform->kind != TransformKind::Kinematic) {
        runoff.unitGraph = unitGraph(kk, *runoff.transform, runoff.area);
    } else {
        runoff.takesUpstream = !parts.channels.empty() && takesUpstream(*parts.channels.back());
        const bool twoPlanes = runoff.transform->planes.size() > 1;
        if (runoff.transform->channels.empty())
            m_diagnostics.error(ValueMissing, runoff.transform->card, "A SUBBASIN OF PLANES NEEDS AN RK OR RD CARD");
        if (runoff.loss && twoPlanes && !runoff.loss->secondMethod)
            m_diagnostics.warn(runoff.loss->card, "NO LOSS FOR THE SECOND PLANE: THAT OF THE FIRST IS USED");
    }
    step.what = std::move(runoff);
}

std::shared_ptr<const UnitGraph> StepBuilder::unitGraph(const Card& kk, const TransformInput& transform, double area)
{
    auto graph = std::make_shared<UnitGraph>();
    const double hours = m_job.time.hours();
    const std::size_t room = std::max(m_job.time.ordinates, kLeastUnitGraphRoom);
    try {
        switch (transform.kind) {
        case TransformKind::Scs:
            graph->ordinates = methods::scsUnitGraph(area, transform.first, hours, m_job.units, room);
            if (hours > 0.29 * transform.first)
                m_diagnostics.warn(&kk, "COMPUTATION INTERVAL " + shortNumber(m_job.time.minutes) +
                                            " MINUTES IS LONGER THAN 0.29 TIMES THE LAG OF " +
                                            shortNumber(transform.first) + " HOURS: THE UNIT GRAPH IS POORLY DRAWN");
            break;
        case TransformKind::Clark:
            graph->ordinates = methods::clarkUnitGraph(area, transform.first, transform.second, hours, m_job.units,
                                                       transform.timeArea, room);
            break;
        case TransformKind::Snyder: {
            methods::SnyderGraph snyder = methods::snyderUnitGraph(area, transform.first, transform.second, hours,
                                                                   m_job.units, transform.timeArea, room);
            if (!snyder.converged)
                m_diagnostics.warn(&kk, "NO CLARK UNIT GRAPH HAS THE GIVEN TP AND CP: THE NEAREST HAS TP " +
                                            shortNumber(snyder.lagHours) + " HOURS, CP " +
                                            shortNumber(snyder.peakingCoefficient));
            graph->ordinates = std::move(snyder.ordinates);
            graph->tcHours = snyder.tcHours;
            graph->storageHours = snyder.storageHours;
            graph->lagHours = snyder.lagHours;
            graph->peaking = snyder.peakingCoefficient;
            break;
        }
        case TransformKind::Given:
            graph->ordinates = transform.given;
            break;
        case TransformKind::Kinematic:
            break;
        }
    } catch (const std::invalid_argument& fault) {
        m_diagnostics.error(MethodData, transform.card, capitals(fault.what()));
        return graph;
    }
    graph->ordinates.shrink_to_fit();
    graph->depth = methods::unitGraphDepth(graph->ordinates, area, hours, m_job.units);
    if (std::fabs(graph->depth - 1) > 0.005)
        m_diagnostics.warn(&kk, "THE UNIT GRAPH HOLDS " + shortNumber(std::round(graph->depth * 1e4) / 1e4) +
                                    " UNITS OF EXCESS INSTEAD OF 1");
    return graph;
}

void StepBuilder::buildGiven(const StepParts& parts, Step& step)
{
    GivenFlow given;
    given.area = parts.ba ? parts.ba->value(1) : 0;
    given.flow.resize(m_job.time.ordinates);
    if (parts.qi.values.empty())
        m_diagnostics.error(ValueMissing, parts.qi.card, "NO FLOWS ARE GIVEN");
    else
        methods::sampleSeries(parts.qi.series(), m_job.time.minutes, given.flow);
    step.what = std::move(given);
}

void StepBuilder::buildSaved(const StepParts& parts, Step& step)
{
    step.what = GivenFlow{};
    const int unit = parts.bi->whole(2);
    const std::string name = nameOf(*parts.bi, 1);
    if (unit != 21 && unit != 22) {
        m_diagnostics.error(OutOfRange, parts.bi, "IQIN (FIELD 2) MUST BE 21 OR 22");
        return;
    }
    const std::optional<SavedHydrograph> saved = readSavedHydrograph(unit, name);
    if (!saved || saved->flows.empty()) {
        m_diagnostics.error(SavedNotFound, parts.bi, "STATION " + name + " IN TAPE" + std::to_string(unit));
        return;
    }
    GivenFlow given;
    given.area = parts.ba ? parts.ba->value(1) : 0;
    given.flow.resize(m_job.time.ordinates);
    methods::sampleSeries({0, static_cast<double>(saved->minutes), saved->flows}, m_job.time.minutes, given.flow);
    step.what = std::move(given);
}

void StepBuilder::buildDiversion(const StepParts& parts, Step& step)
{
    Diversion diversion;
    diversion.name = nameOf(*parts.dt, 1);
    diversion.maxVolume = parts.dt->value(2);
    diversion.maxFlow = parts.dt->value(3);
    if (diversion.maxVolume < 0 || diversion.maxFlow < 0)
        m_diagnostics.error(OutOfRange, parts.dt, "LIMITS MUST NOT BE BELOW ZERO");
    if (!parts.di.given() || !parts.dq.given()) {
        m_diagnostics.error(ValueMissing, parts.dt, "DI AND DQ CARDS ARE NEEDED");
        step.what = std::move(diversion);
        return;
    }
    checkRises(parts.di, false, m_diagnostics);
    checkNotNegative(parts.dq, m_diagnostics);
    checkSameCount(parts.dq, parts.di, m_diagnostics);
    diversion.inflow = parts.di.values;
    diversion.diverted = parts.dq.values;
    step.what = std::move(diversion);
}

void StepBuilder::readRating(const StepParts& parts, Step& step)
{
    if (!parts.hq.given() && !parts.he.given())
        return;
    if (!parts.hq.given() || !parts.he.given()) {
        m_diagnostics.error(ValueMissing, parts.hq.given() ? parts.hq.card : parts.he.card,
                            "HQ AND HE BELONG TOGETHER");
        return;
    }
    if (checkRises(parts.hq, false, m_diagnostics) && checkRises(parts.he, false, m_diagnostics) &&
        checkSameCount(parts.he, parts.hq, m_diagnostics)) {
        step.ratingFlow = parts.hq.values;
        step.ratingStage = parts.he.values;
    }
}

} // namespace hec1
