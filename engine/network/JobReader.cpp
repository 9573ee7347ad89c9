// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/network/JobReader.h"

#include "engine/network/StackCheck.h"

#include <algorithm>
#include <cmath>

namespace hec1 {

namespace {

using enum ErrorNumber;

// What the header of the file of hydrographs has room for.
constexpr int kMostPlans = 9;
constexpr std::size_t kMostRatios = 99;
constexpr std::size_t kMostStorms = 9;
constexpr long kMostOrdinates = 9999;
constexpr double kLongestInterval = 30 * 24 * 60; // minutes
constexpr int kOrdinatesByDefault = 100;

} // namespace

Job JobReader::read()
{
    m_plain.reserve(m_cards.cards.size());
    bool economics = false;
    for (const Card& card : m_cards.cards) {
        if (card.kind != LineKind::Card || card.def == nullptr)
            continue;
        if (card.is("EC") && !economics) {
            economics = true;
            m_diagnostics.warn(&card, "ECONOMIC DATA ARE PASSED OVER: DAMAGES ARE NOT COMPUTED");
        }
        if (economics && !card.is("ZZ"))
            continue;
        if (card.def->use == CardUse::Refused)
            m_diagnostics.error(NotComputed, &card, "THIS ENGINE DOES NOT HAVE: " + std::string(card.def->note));
        else if (card.def->room == CardRoom::Economics)
            m_diagnostics.error(CardOutOfOrder, &card, "DAMAGE DATA STAND BEHIND AN EC CARD");
        else if (card.def->use == CardUse::Warned)
            m_diagnostics.warn(&card, "CARD PASSED OVER. THIS ENGINE DOES NOT HAVE: " + std::string(card.def->note));
        else
            m_plain.push_back(&card);
    }
    const std::size_t firstStation = readJobCards();
    finishStorms();
    readStations(firstStation);
    if (!m_cards.ended)
        m_diagnostics.error(EndOfJobMissing, nullptr, "");
    if (m_job.stations.empty())
        m_diagnostics.error(DeckEmpty, nullptr, "THERE IS NO KK CARD");
    if (structureKnown())
        checkStack(m_job, m_diagnostics);
    warnOfSharedNames();
    return std::move(m_job);
}

// A card that is not known may have been one that makes a hydrograph, and of two operations in one station either may
// be the one that was meant: what follows from them would be errors that are none.
bool JobReader::structureKnown() const
{
    for (const Card& card : m_cards.cards)
        if (card.kind == LineKind::Card && card.def == nullptr)
            return false;
    for (const Station& station : m_job.stations)
        for (const auto& step : station.plans)
            if (step->card == nullptr)
                return false;
    return true;
}

void JobReader::once(const Card*& slot, const Card& card)
{
    if (slot != nullptr && slot->line != card.line)
        m_diagnostics.warn(&card, "REPLACES THE CARD OF LINE " + std::to_string(slot->line));
    slot = &card;
}

void JobReader::once(ValueList& slot, ValueList values)
{
    if (slot.given() && slot.card != values.card)
        m_diagnostics.warn(values.card, "REPLACES THE VALUES OF LINE " + std::to_string(slot.card->line));
    slot = std::move(values);
}

std::size_t JobReader::readJobCards()
{
    std::size_t end = 0;
    while (end < m_plain.size() && !m_plain[end]->is("KK"))
        ++end;
    const std::span<const Card* const> cards(m_plain.data(), end);
    for (const Card* card : cards) {
        if (card->is("IT") && m_job.timeCard == nullptr)
            m_job.timeCard = card;
        else if (card->is("IM"))
            m_job.units = methods::metric();
    }
    readTime();
    for (std::size_t at = 0; at < cards.size(); ++at)
        readJobCard(cards, at);
    return end;
}

void JobReader::readJobCard(std::span<const Card* const> cards, std::size_t& at)
{
    const Card& card = *cards[at];
    if (card.is("ZZ") || card.is("IM") || (card.is("IT") && &card == m_job.timeCard))
        return;
    if (card.is("ID")) {
        m_job.titles.emplace_back(card.text());
    } else if (card.is("IO")) {
        once(m_job.printCard, card);
        m_job.print = {std::clamp(card.whole(1), 0, 5), card.whole(2), card.value(3)};
    } else if (card.is("JP")) {
        once(m_job.planCard, card);
        m_job.planCount = std::max(1, card.whole(1));
        if (card.whole(1) > kMostPlans) {
            m_diagnostics.error(TooManyPlansOrRatios, &card, "AT MOST " + std::to_string(kMostPlans) + " PLANS");
            m_job.planCount = kMostPlans;
        }
    } else if (card.is("JR")) {
        readRatios(card);
    } else if (card.is("JD")) {
        readIndexStorm(card);
    } else if (card.is("IN")) {
        readInterval(card);
    } else if (card.is("PG")) {
        readGage(card);
    } else if (card.is("PI") || card.is("PC")) {
        if (!readLoosePattern(cards, at))
            m_diagnostics.error(CardOutOfOrder, cards[at], "AHEAD OF THE STATIONS IT BELONGS BEHIND A PG OR JD CARD");
    } else if (!card.is("KM")) {
        m_diagnostics.error(CardOutOfOrder, &card,
                            card.is("IT") ? "THERE IS A SECOND IT CARD" : "IT BELONGS INSIDE A KK GROUP");
    }
}

void JobReader::readTime()
{
    RunTime& time = m_job.time;
    time.minutes = 60;
    time.ordinates = 2;
    m_seriesInterval = time.minutes;
    if (m_job.timeCard == nullptr) {
        m_diagnostics.error(TimeCardMissing, nullptr, "");
        return;
    }
    const Card& card = *m_job.timeCard;
    const std::size_t errorsBefore = m_diagnostics.errors().size();
    const double minutes = card.value(1);
    if (minutes < 1 || minutes != std::floor(minutes) || minutes > kLongestInterval)
        m_diagnostics.error(TimeData, &card, "NMIN (FIELD 1) MUST BE A WHOLE NUMBER OF MINUTES, 1 OR MORE");
    else
        time.minutes = static_cast<int>(minutes);
    if (card.has(7)) {
        time.century = card.whole(7) >= 1000 ? card.whole(7) / 100 : card.whole(7);
        if (time.century < 1 || time.century > 99) {
            m_diagnostics.error(TimeData, &card, "ICENT (FIELD 7) MUST BE THE FIRST TWO DIGITS OF THE YEAR");
            time.century = 19;
        }
    }
    const auto dateOf = [&](int field) {
        std::optional<long> day;
        if (card.has(field) && card.word(field) != "0") {
            day = parseDate(card.word(field), time.century);
            if (!day)
                m_diagnostics.error(DateNotReadable, &card,
                                    "FIELD " + std::to_string(field) + ": " + capitals(card.word(field)));
        }
        return day;
    };
    const std::optional<int> minute = card.has(3) ? parseTimeOfDay(card.word(3)) : 0;
    if (!minute)
        m_diagnostics.error(DateNotReadable, &card, "FIELD 3: " + capitals(card.word(3)));
    time.clock = SimClock(dateOf(2), minute.value_or(0));
    dateOf(5);
    readOrdinates(card);
    m_timeKnown = m_diagnostics.errors().size() == errorsBefore;
    m_seriesInterval = time.minutes;
}

void JobReader::readOrdinates(const Card& card)
{
    RunTime& time = m_job.time;
    long ordinates = card.whole(4);
    if (ordinates < 0) {
        m_diagnostics.error(TimeData, &card, "NQ (FIELD 4) MUST NOT BE BELOW ZERO");
        return;
    }
    const bool ends = (card.has(5) && card.word(5) != "0") || (card.has(6) && time.clock.dated());
    if (ordinates == 0 && ends) {
        const long endDay = card.has(5) && card.word(5) != "0"
                                ? parseDate(card.word(5), time.century).value_or(time.clock.startDay())
                                : time.clock.startDay();
        const std::optional<int> endMinute = card.has(6) ? parseTimeOfDay(card.word(6)) : 0;
        if (!endMinute)
            m_diagnostics.error(DateNotReadable, &card, "FIELD 6: " + capitals(card.word(6)));
        if (!time.clock.dated()) {
            m_diagnostics.error(TimeData, &card, "AN ENDING DATE NEEDS A STARTING DATE");
            return;
        }
        const long minutes =
            (endDay - time.clock.startDay()) * 24 * 60 + endMinute.value_or(0) - time.clock.startMinute();
        if (minutes <= 0) {
            m_diagnostics.error(TimeData, &card, "THE ENDING TIME IS NOT LATER THAN THE STARTING TIME");
            return;
        }
        ordinates = minutes / time.minutes + 1;
    } else if (ordinates == 0) {
        ordinates = kOrdinatesByDefault;
    }
    if (ordinates > kMostOrdinates)
        m_diagnostics.error(TooManyOrdinates, &card, std::to_string(ordinates) + " ORDINATES");
    else if (ordinates < 2)
        m_diagnostics.error(TimeData, &card, "NQ (FIELD 4) MUST BE 2 OR MORE");
    else
        time.ordinates = static_cast<std::size_t>(ordinates);
}

void JobReader::readRatios(const Card& card)
{
    const bool first = m_job.ratioCard == nullptr;
    const bool rain = sameWord(card.word(1), "PREC");
    if (card.has(1) && !rain && !sameWord(card.word(1), "FLOW"))
        m_diagnostics.error(UnknownWord, &card, capitals(card.word(1)) + " IS NEITHER PREC NOR FLOW");
    if (first) {
        m_job.ratioCard = &card;
        m_job.ratiosOnRain = rain;
        m_job.ratios.clear();
    } else if (card.has(1) && rain != m_job.ratiosOnRain) {
        m_diagnostics.error(CardOutOfOrder, &card, "ALL RATIOS OF A JOB APPLY TO THE SAME");
    }
    for (int field = 2; field <= 10 && card.has(field); ++field) {
        const double ratio = card.value(field);
        if (ratio < 0)
            m_diagnostics.error(OutOfRange, &card, "RATIO " + shortNumber(ratio) + " IS BELOW ZERO");
        m_job.ratios.push_back(ratio);
    }
    if (m_job.ratios.size() > kMostRatios) {
        m_diagnostics.error(TooManyPlansOrRatios, &card, "AT MOST " + std::to_string(kMostRatios) + " RATIOS");
        m_job.ratios.resize(kMostRatios);
    }
    m_job.ratiosGiven = !m_job.ratios.empty();
    if (!m_job.ratiosGiven) {
        m_diagnostics.warn(&card, "NO RATIOS ARE GIVEN");
        m_job.ratios.assign(1, 1.0);
    }
}

void JobReader::readIndexStorm(const Card& card)
{
    IndexStorm storm;
    storm.depth = card.value(1);
    storm.area = card.value(2);
    storm.card = &card;
    if (storm.depth < 0)
        m_diagnostics.error(OutOfRange, &card, "STRM (FIELD 1) MUST NOT BE BELOW ZERO");
    if (!m_job.storms.empty() && storm.area <= m_job.storms.back().area)
        m_diagnostics.error(TableDoesNotRise, &card, "TRDA (FIELD 2) MUST RISE FROM CARD TO CARD");
    if (m_job.storms.size() == kMostStorms) {
        m_diagnostics.error(TooManyPlansOrRatios, &card, "AT MOST " + std::to_string(kMostStorms) + " INDEX STORMS");
        return;
    }
    m_gage = nullptr;
    m_job.storms.push_back(std::move(storm));
    m_stormPatterns.push_back(m_stormPattern);
}

void JobReader::readInterval(const Card& card)
{
    const RunTime& time = m_job.time;
    m_seriesInterval = card.value(1) > 0 ? card.value(1) : time.minutes;
    if (card.value(1) < 0)
        m_diagnostics.error(OutOfRange, &card, "JXMIN (FIELD 1) MUST BE ABOVE ZERO");
    long day = time.clock.startDay();
    int minute = time.clock.startMinute();
    if (card.has(2) && card.word(2) != "0") {
        const std::optional<long> given = parseDate(card.word(2), time.century);
        if (!given)
            m_diagnostics.error(DateNotReadable, &card, "FIELD 2: " + capitals(card.word(2)));
        else if (!time.clock.dated())
            m_diagnostics.error(TimeData, &card, "A DATE HERE NEEDS A STARTING DATE ON IT");
        else
            day = *given;
    }
    if (card.has(3)) {
        const std::optional<int> given = parseTimeOfDay(card.word(3));
        if (!given)
            m_diagnostics.error(DateNotReadable, &card, "FIELD 3: " + capitals(card.word(3)));
        minute = given.value_or(minute);
    }
    m_seriesStart = static_cast<double>((day - time.clock.startDay()) * 24 * 60 + minute - time.clock.startMinute());
}

void JobReader::readGage(const Card& card)
{
    m_gage = nullptr;
    if (!card.has(1)) {
        m_diagnostics.error(NameMissing, &card, "");
        return;
    }
    const std::string name(card.word(1));
    if (m_gages.contains(name))
        m_diagnostics.warn(&card, "REPLACES THE GAGE OF THE SAME NAME");
    Gage& gage = m_gages[name];
    gage = {name, card.value(2), card.value(3), std::nullopt, &card};
    if (gage.total < 0 || gage.normalAnnual < 0)
        m_diagnostics.error(OutOfRange, &card, "DEPTHS MUST NOT BE BELOW ZERO");
    m_gage = &gage;
}

ValueList JobReader::timedValues(std::span<const Card* const> cards, std::size_t& at) const
{
    ValueList values = gatherValues(cards, at);
    values.intervalMinutes = m_seriesInterval;
    values.startMinutes = m_seriesStart;
    return values;
}

bool JobReader::readLoosePattern(std::span<const Card* const> cards, std::size_t& at)
{
    const bool cumulative = cards[at]->is("PC");
    const ValueList values = timedValues(cards, at);
    if (m_gage == nullptr && m_job.storms.empty())
        return false;
    std::optional<RainPattern> pattern = samplePattern(values, cumulative, m_job.time, m_diagnostics);
    if (!pattern)
        return true;
    if (m_gage != nullptr) {
        m_gage->pattern = std::move(pattern);
    } else {
        m_stormPattern = std::move(pattern);
        m_stormPatterns.back() = m_stormPattern;
    }
    return true;
}

void JobReader::finishStorms()
{
    for (std::size_t k = 0; k < m_job.storms.size(); ++k) {
        IndexStorm& storm = m_job.storms[k];
        const std::optional<RainPattern>& pattern = m_stormPatterns[k];
        if (!pattern) {
            m_diagnostics.error(NoRain, storm.card, "THE INDEX STORM HAS NO PI OR PC PATTERN");
        } else if (pattern->total <= 0 && storm.depth > 0) {
            m_diagnostics.error(NoRain, storm.card, "THE PATTERN OF THE INDEX STORM HOLDS NO RAIN");
        } else {
            const double scale = pattern->total > 0 ? storm.depth / pattern->total : 0;
            storm.rain = RainInput(pattern->shape, scale, storm.depth);
        }
    }
}

} // namespace hec1
