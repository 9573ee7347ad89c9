// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/network/JobReader.h"

#include <algorithm>
#include <set>

namespace hec1 {

namespace {

using enum ErrorNumber;

} // namespace

void JobReader::readStations(std::size_t from)
{
    m_carried.resize(static_cast<std::size_t>(m_job.planCount));
    m_job.stations.reserve(static_cast<std::size_t>(
        std::count_if(m_plain.begin(), m_plain.end(), [](const Card* card) { return card->is("KK"); })));
    while (from < m_plain.size() && m_plain[from]->is("KK")) {
        std::size_t end = from + 1;
        while (end < m_plain.size() && !m_plain[end]->is("KK") && !m_plain[end]->is("ZZ"))
            ++end;
        readStation({m_plain.data() + from, end - from});
        from = end;
    }
}

void JobReader::readStation(std::span<const Card* const> cards)
{
    Station station;
    station.kk = cards.front();
    station.name = std::string(cards.front()->word(1));
    station.text = std::string(trimmed(cards.front()->text()));
    station.print = m_job.print;
    station.cards.assign(cards.begin(), cards.end());
    if (station.name.empty())
        m_diagnostics.error(NameMissing, station.kk, "");
    m_gage = nullptr;

    const auto plans = static_cast<std::size_t>(m_job.planCount);
    std::vector<Carried*> all, target;
    for (Carried& carried : m_carried) {
        carried.rain.beginStation();
        all.push_back(&carried);
    }
    StepParts common;
    std::vector<std::optional<StepParts>> own(plans);
    StepParts* parts = &common;
    target = all;
    for (std::size_t at = 1; at < cards.size(); ++at) {
        if (!cards[at]->is("KP")) {
            readStationCard(cards, at, *parts, target, station);
            continue;
        }
        const int plan = cards[at]->whole(1);
        if (plan < 1 || plan > m_job.planCount) {
            m_diagnostics.error(PlanNumber, cards[at],
                                "PLAN " + std::to_string(plan) + ", JP HAS " + std::to_string(m_job.planCount));
            continue;
        }
        std::optional<StepParts>& mine = own[static_cast<std::size_t>(plan) - 1];
        if (!mine)
            mine = common;
        parts = &*mine;
        target = {all[static_cast<std::size_t>(plan) - 1]};
    }

    StepBuilder builder(m_job, m_gages, m_diagnostics);
    const StepParts first = own[0].value_or(common);
    for (std::size_t plan = 0; plan < plans; ++plan) {
        StepParts mine = own[plan].value_or(common);
        // A plan without cards of a kind has those of plan 1.
        if (plan > 0 && mine.empty())
            mine = first;
        if (plan > 0 && own[0]) {
            if (!mine.loss)
                mine.loss = first.loss;
            if (!mine.transform && mine.planes.empty())
                mine.transform = first.transform;
            if (!mine.bf)
                mine.bf = first.bf;
        }
        const bool shared = plan > 0 && plans > 1 && !own[plan] && !own[plan - 1] && station.plans.back() &&
                            !std::holds_alternative<RunoffInput>(station.plans.back()->what);
        if (shared)
            station.plans.push_back(station.plans.back());
        else
            station.plans.push_back(std::make_shared<const Step>(builder.build(*station.kk, mine, m_carried[plan])));
    }
    completePlans(station);
    const bool computes = std::any_of(station.plans.begin(), station.plans.end(),
                                      [](const auto& step) { return !std::holds_alternative<NoStep>(step->what); });
    if (!computes && !m_diagnostics.hasErrors())
        m_diagnostics.warn(station.kk, "NO CARD OF THE STATION TELLS WHAT TO COMPUTE");
    m_job.stations.push_back(std::move(station));
}

// A plan that does nothing where another routes or diverts lets the flow pass; so every plan has its hydrograph.
void JobReader::completePlans(Station& station)
{
    const auto idle = [](const std::shared_ptr<const Step>& step) {
        return std::holds_alternative<NoStep>(step->what) && step->card != nullptr;
    };
    const auto busy = std::find_if(station.plans.begin(), station.plans.end(),
                                   [&](const std::shared_ptr<const Step>& step) { return !idle(step); });
    if (busy == station.plans.end())
        return;
    const bool passes =
        std::holds_alternative<Routing>((*busy)->what) || std::holds_alternative<Diversion>((*busy)->what);
    for (std::size_t plan = 0; plan < station.plans.size(); ++plan) {
        if (!idle(station.plans[plan]))
            continue;
        const std::string which = "PLAN " + std::to_string(plan + 1) + " HAS NO CARDS AT STATION " + station.name;
        if (!passes) {
            m_diagnostics.error(ValueMissing, station.kk, which);
            continue;
        }
        m_diagnostics.warn(station.kk, which + ": THE HYDROGRAPH PASSES UNCHANGED");
        Step step;
        step.what = Routing{};
        step.card = station.kk;
        station.plans[plan] = std::make_shared<const Step>(std::move(step));
    }
}

void JobReader::readStationCard(std::span<const Card* const> cards, std::size_t& at, StepParts& parts,
                                std::vector<Carried*>& plans, Station& station)
{
    const Card& card = *cards[at];
    if (card.is("KM") || card.is("ID"))
        return;
    if (card.def->room == CardRoom::Job) {
        m_diagnostics.error(CardOutOfOrder, &card, "IT BELONGS AHEAD OF THE FIRST KK CARD");
        return;
    }
    if (card.is("KO"))
        readControl(card, station);
    else if (card.is("IN"))
        readInterval(card);
    else if (card.is("PG"))
        readGage(card);
    else if (readRainCard(cards, at, parts, plans) || readTableCard(cards, at, parts, station) ||
             readRoutingCard(card, parts))
        return;
    else if (card.id[0] == 'L')
        readLoss(card, parts);
    else if (card.id[0] == 'U')
        readTransform(cards, at, parts);
    else if (card.is("BA"))
        once(parts.ba, card);
    else if (card.is("BF"))
        once(parts.bf, card);
    else if (card.is("BI"))
        once(parts.bi, card);
    else if (card.is("HC"))
        once(parts.hc, card);
    else if (card.is("DT"))
        once(parts.dt, card);
    else if (card.is("DR"))
        once(parts.dr, card);
    else if (card.is("WR"))
        once(parts.wr, card);
    else
        m_diagnostics.error(CardOutOfOrder, &card, "");
}

bool JobReader::readRainCard(std::span<const Card* const> cards, std::size_t& at, StepParts& parts,
                             std::vector<Carried*>& plans)
{
    const Card& card = *cards[at];
    if (card.id[0] != 'P')
        return false;
    if ((card.is("PI") || card.is("PC")) && m_gage != nullptr)
        return readLoosePattern(cards, at);
    m_gage = nullptr;
    parts.rainHere = true;
    if (card.is("PB")) {
        if (card.value(1) < 0)
            m_diagnostics.error(OutOfRange, &card, "STORM (FIELD 1) MUST NOT BE BELOW ZERO");
        for (Carried* plan : plans)
            plan->rain.setStorm(card);
    } else if (card.is("PI") || card.is("PC")) {
        const ValueList values = timedValues(cards, at);
        const std::optional<RainPattern> pattern = samplePattern(values, card.is("PC"), m_job.time, m_diagnostics);
        for (Carried* plan : plans)
            if (pattern)
                plan->rain.setPattern(*pattern);
    } else if (card.is("PR") || card.is("PT")) {
        const std::vector<std::string> names = namesOn(cards, at);
        for (Carried* plan : plans)
            card.is("PR") ? plan->rain.setPatternGages(card, names) : plan->rain.setTotalGages(card, names);
    } else if (card.is("PW")) {
        const ValueList values = gatherValues(cards, at);
        for (Carried* plan : plans)
            plan->rain.setWeights(values, m_diagnostics);
    } else if (card.is("PH")) {
        const Card* longer = nullptr;
        if (at + 1 < cards.size() && cards[at + 1]->is("PH"))
            longer = cards[++at];
        for (Carried* plan : plans)
            plan->rain.setHypothetical(card, longer);
    } else if (card.is("PM")) {
        for (Carried* plan : plans)
            plan->rain.setProbableMaximum(card);
    } else if (card.is("PS")) {
        for (Carried* plan : plans)
            plan->rain.setStandardProject(card);
    } else {
        return false;
    }
    return true;
}

std::vector<std::string> JobReader::namesOn(std::span<const Card* const> cards, std::size_t& at)
{
    const Card& first = *cards[at];
    std::vector<std::string> names;
    for (;;) {
        for (int field = 1; field <= cards[at]->count; ++field)
            if (cards[at]->has(field))
                names.emplace_back(cards[at]->word(field));
        if (at + 1 >= cards.size() || cards[at + 1]->id != first.id)
            break;
        ++at;
    }
    if (names.empty())
        m_diagnostics.error(NameMissing, &first, "");
    return names;
}

bool JobReader::readTableCard(std::span<const Card* const> cards, std::size_t& at, StepParts& parts, Station& station)
{
    const Card& card = *cards[at];
    if (card.is("QI")) {
        once(parts.qi, timedValues(cards, at));
    } else if (card.is("QO")) {
        const ValueList observed = timedValues(cards, at);
        station.observed.resize(m_job.time.ordinates);
        if (!observed.values.empty())
            methods::sampleSeries(observed.series(), m_job.time.minutes, station.observed);
    } else if (card.is("SV")) {
        once(parts.storages, gatherValues(cards, at));
        parts.lastTable = StepParts::LastTable::Storage;
    } else if (card.is("SA")) {
        once(parts.areas, gatherValues(cards, at));
        parts.lastTable = StepParts::LastTable::Storage;
    } else if (card.is("SQ")) {
        once(parts.flows, gatherValues(cards, at));
        parts.lastTable = StepParts::LastTable::Flow;
    } else if (card.is("SW")) {
        once(parts.crestLengths, gatherValues(cards, at));
        parts.lastTable = StepParts::LastTable::Crest;
    } else if (card.is("SE")) {
        readElevations(gatherValues(cards, at), parts);
    } else if (card.is("DI")) {
        once(parts.di, gatherValues(cards, at));
    } else if (card.is("DQ")) {
        once(parts.dq, gatherValues(cards, at));
    } else if (card.is("HQ")) {
        once(parts.hq, gatherValues(cards, at));
    } else if (card.is("HE")) {
        once(parts.he, gatherValues(cards, at));
    } else {
        return false;
    }
    return true;
}

void JobReader::readElevations(ValueList values, StepParts& parts)
{
    switch (parts.lastTable) {
    case StepParts::LastTable::None:
        m_diagnostics.error(CardOutOfOrder, values.card, "SE BELONGS BEHIND AN SV, SA, SQ OR SW CARD");
        return;
    case StepParts::LastTable::Crest:
        once(parts.crestElevations, std::move(values));
        return;
    case StepParts::LastTable::Storage:
        once(parts.poolElevations, std::move(values));
        return;
    case StepParts::LastTable::Flow:
        // One list of elevations behind both tables serves both.
        if (parts.poolElevations.given())
            once(parts.flowElevations, std::move(values));
        else
            parts.poolElevations = std::move(values);
        return;
    }
}

bool JobReader::readRoutingCard(const Card& card, StepParts& parts)
{
    if (card.is("RN") || card.is("RM") || card.is("RT") || card.is("RS")) {
        // A plan that routes in another way than all plans do replaces that way.
        const Card* before = parts.rn ? parts.rn : parts.rm ? parts.rm : parts.rt ? parts.rt : parts.rs;
        if (before != nullptr && before->id != card.id)
            parts.rn = parts.rm = parts.rt = parts.rs = nullptr;
        (card.is("RN") ? parts.rn : card.is("RM") ? parts.rm : card.is("RT") ? parts.rt : parts.rs) = &card;
    } else if (card.is("RL")) {
        once(parts.rl, card);
    } else if (card.is("RD") || card.is("RK")) {
        parts.channels.push_back(&card);
    } else if (card.is("RC")) {
        once(parts.rc, card);
    } else if (card.is("RX")) {
        once(parts.rx, card);
    } else if (card.is("RY")) {
        once(parts.ry, card);
    } else if (card.is("SL")) {
        once(parts.sl, card);
    } else if (card.is("SS")) {
        once(parts.ss, card);
    } else if (card.is("ST")) {
        once(parts.st, card);
    } else if (card.is("SB")) {
        once(parts.sb, card);
    } else if (card.is("WP")) {
        parts.pumps.push_back(&card);
    } else {
        return false;
    }
    return true;
}

void JobReader::readLoss(const Card& card, StepParts& parts)
{
    auto loss = std::make_shared<LossInput>();
    loss->card = &card;
    const auto method = [&](int from) -> methods::LossMethod {
        const auto value = [&](int i) { return card.value(from + i); };
        if (card.is("LU"))
            return methods::InitialUniformLoss{value(0), value(1)};
        if (card.is("LS"))
            return methods::CurveNumberLoss{value(0), value(1)};
        if (card.is("LE"))
            return methods::ExponentialLoss{value(0), value(1), card.has(from + 2) ? value(2) : 1, value(3)};
        if (card.is("LH"))
            return methods::HoltanLoss{value(0), value(1), value(2), card.has(from + 3) ? value(3) : 1.4};
        return methods::GreenAmptLoss{value(0), value(1), value(2), value(3)};
    };
    const int fields = card.is("LU") || card.is("LS") ? 3 : 5;
    const auto checked = [&](int from, double impervious) {
        if (impervious < 0 || impervious > 100)
            m_diagnostics.error(OutOfRange, &card,
                                "RTIMP (FIELD " + std::to_string(from + fields - 1) + ") MUST LIE BETWEEN 0 AND 100");
        const methods::LossMethod chosen = method(from);
        try {
            std::array<double, 1> none{};
            methods::rainfallExcess(chosen, 0, 1, m_job.units, none, none);
        } catch (const std::invalid_argument& fault) {
            m_diagnostics.error(MethodData, &card, capitals(fault.what()));
        }
        return chosen;
    };
    loss->imperviousPercent = card.value(fields);
    loss->method = checked(1, loss->imperviousPercent);
    bool second = false;
    for (int field = fields + 1; field <= 2 * fields; ++field)
        second = second || card.has(field);
    if (second) {
        loss->secondImperviousPercent = card.value(2 * fields);
        loss->secondMethod = checked(fields + 1, loss->secondImperviousPercent);
    }
    parts.loss = std::move(loss);
}

void JobReader::readTransform(std::span<const Card* const> cards, std::size_t& at, StepParts& parts)
{
    const Card& card = *cards[at];
    if (card.is("UK")) {
        parts.planes.push_back(&card);
        return;
    }
    auto transform = std::make_shared<TransformInput>();
    if (card.is("UA")) {
        if (!parts.transform ||
            (parts.transform->kind != TransformKind::Clark && parts.transform->kind != TransformKind::Snyder)) {
            m_diagnostics.error(CardOutOfOrder, &card, "UA BELONGS BEHIND A UC OR US CARD");
            return;
        }
        const ValueList values = gatherValues(cards, at);
        *transform = *parts.transform;
        checkRises(values, false, m_diagnostics);
        transform->timeArea = values.values;
        transform->areaCard = values.card;
    } else if (card.is("UI")) {
        const ValueList values = gatherValues(cards, at);
        transform->kind = TransformKind::Given;
        transform->given = values.values;
        transform->card = values.card;
        if (values.values.empty())
            m_diagnostics.error(ValueMissing, &card, "NO ORDINATES ARE GIVEN");
    } else {
        transform->kind = card.is("UD")   ? TransformKind::Scs
                          : card.is("UC") ? TransformKind::Clark
                                          : TransformKind::Snyder;
        transform->first = card.value(1);
        transform->second = card.value(2);
        transform->card = &card;
        if (card.value(1) < 0 || card.value(2) < 0)
            m_diagnostics.error(NotComputed, &card,
                                "A NEGATIVE VALUE ASKS FOR FITTING, WHICH THIS ENGINE DOES NOT HAVE");
    }
    parts.transform = std::move(transform);
}

void JobReader::readControl(const Card& card, Station& station)
{
    if (card.whole(1) != 0)
        station.print.level = std::clamp(card.whole(1), 1, 5);
    if (card.whole(2) != 0)
        station.print.plot = card.whole(2);
    if (card.value(3) > 0)
        station.print.plotScale = card.value(3);
    SaveControl& save = station.save;
    const auto ordinates = static_cast<int>(m_job.time.ordinates);
    save.punch = card.whole(4);
    save.unit = card.whole(5);
    const int first = card.whole(6) > 0 ? card.whole(6) : 1;
    const int last = card.whole(7) > 0 ? card.whole(7) : ordinates;
    save.hours = card.value(8);
    if (m_timeKnown && (first > last || last > ordinates))
        m_diagnostics.error(OutOfRange, &card,
                            "ISAV1 AND ISAV2 (FIELDS 6 AND 7) MUST LIE BETWEEN 1 AND " + std::to_string(ordinates));
    const double minutes = save.hours > 0 ? save.hours * 60 : m_job.time.minutes;
    if (save.hours < 0 || minutes < 0.5)
        m_diagnostics.error(OutOfRange, &card, "TIMINT (FIELD 8) IS THE INTERVAL IN HOURS, AT LEAST ONE MINUTE");
    if (save.unit != 0 && minutes > 999)
        m_diagnostics.warn(&card, "AN INTERVAL ABOVE 999 MINUTES DOES NOT FIT INTO THE FILE OF HYDROGRAPHS");
    if (save.unit != 0 && save.unit != 21 && save.unit != 22)
        m_diagnostics.warn(&card, "ONLY UNITS 21 AND 22 (FIELD 5) ARE WRITTEN");
    if (save.punch != 0)
        m_diagnostics.warn(&card, "HYDROGRAPHS ARE NOT PUNCHED (FIELD 4)");
    save.first = static_cast<std::size_t>(first) - 1;
    save.last = static_cast<std::size_t>(last) - 1;
}

// Follows the stack of hydrographs through the network without computing, so that all faults of it show at once.
void JobReader::warnOfSharedNames()
{
    std::set<std::string, std::less<>> names;
    for (const Station& station : m_job.stations)
        if (!station.name.empty() && !names.insert(station.name).second)
            m_diagnostics.warn(station.kk, "STATION NAME " + station.name + " IS USED MORE THAN ONCE");
}

} // namespace hec1
