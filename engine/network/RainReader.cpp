// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/network/RainReader.h"

#include "engine/methods/Storms.h"

#include <cmath>
#include <numeric>
#include <stdexcept>

namespace hec1 {

void RainState::setStorm(const Card& pb)
{
    m_kind = Kind::Pattern;
    m_storm = pb.value(1);
    m_stormCard = &pb;
}

void RainState::setPattern(RainPattern pattern)
{
    m_kind = Kind::Pattern;
    m_pattern = std::move(pattern);
}

void RainState::setPatternGages(const Card& pr, std::vector<std::string> names)
{
    m_kind = Kind::Gages;
    m_pr = {&pr, std::move(names), {}};
    if (!m_ptHere)
        m_pt = {};
    m_lastWasPt = false;
    m_prHere = true;
}

void RainState::setTotalGages(const Card& pt, std::vector<std::string> names)
{
    m_kind = Kind::Gages;
    m_pt = {&pt, std::move(names), {}};
    m_lastWasPt = true;
    m_ptHere = true;
}

void RainState::setWeights(ValueList pw, Diagnostics& diagnostics)
{
    GageChoice& choice = m_lastWasPt ? m_pt : m_pr;
    if (choice.card == nullptr || choice.weights.given()) {
        diagnostics.error(ErrorNumber::CardOutOfOrder, pw.card, "PW BELONGS BEHIND A PR OR PT CARD");
        return;
    }
    pw.values.resize(std::max(pw.values.size(), choice.names.size())); // a blank last weight is a weight of zero
    double sum = 0;
    for (const double weight : pw.values)
        sum += weight;
    if (pw.values.size() != choice.names.size())
        diagnostics.error(ErrorNumber::CountsDiffer, pw.card,
                          std::to_string(pw.values.size()) + " WEIGHTS FOR " + std::to_string(choice.names.size()) +
                              " GAGES");
    else if (checkNotNegative(pw, diagnostics) && sum <= 0)
        diagnostics.error(ErrorNumber::OutOfRange, pw.card, "THE WEIGHTS ADD UP TO ZERO");
    choice.weights = std::move(pw);
}

void RainState::setHypothetical(const Card& ph, const Card* longer)
{
    m_kind = Kind::Hypothetical;
    m_special = &ph;
    m_cached.reset();
    m_hypothetical = {};
    m_hypothetical.frequencyPercent = ph.value(1);
    m_hypothetical.area = ph.value(2);
    for (int i = 0; i < 8; ++i)
        m_hypothetical.depths[static_cast<std::size_t>(i)] = ph.value(i + 3);
    for (int i = 0; i < 4 && longer != nullptr; ++i)
        m_hypothetical.depths[static_cast<std::size_t>(i) + 8] = longer->value(i + 1);
}

void RainState::setProbableMaximum(const Card& pm)
{
    m_kind = Kind::ProbableMaximum;
    m_special = &pm;
    m_cached.reset();
    m_maximum = {};
    m_maximum.indexDepth = pm.value(1);
    m_maximum.transposition = pm.value(2);
    m_maximum.area = pm.value(3);
    m_maximum.southwestern = pm.value(4) != 0;
    for (int i = 0; i < 6; ++i)
        m_maximum.percents[static_cast<std::size_t>(i)] = pm.value(i + 5);
}

void RainState::setStandardProject(const Card& ps)
{
    m_kind = Kind::StandardProject;
    m_special = &ps;
    m_cached.reset();
    m_project = {ps.value(1), ps.value(2), ps.value(3), ps.value(4) != 0};
}

std::vector<const Card*> RainState::cards() const
{
    std::vector<const Card*> cards;
    const auto add = [&](const Card* card) {
        if (card != nullptr)
            cards.push_back(card);
    };
    if (m_kind == Kind::Pattern) {
        add(m_stormCard);
        add(m_pattern ? m_pattern->card : nullptr);
    } else if (m_kind == Kind::Gages) {
        add(m_pr.card);
        add(m_pr.weights.card);
        add(m_pt.card);
        add(m_pt.weights.card);
    } else {
        add(m_special);
    }
    return cards;
}

std::vector<const Gage*> RainState::find(const GageChoice& choice, const std::map<std::string, Gage>& gages,
                                         Diagnostics& diagnostics)
{
    std::vector<const Gage*> found;
    for (const std::string& name : choice.names) {
        const auto it = gages.find(name);
        if (it == gages.end())
            diagnostics.error(ErrorNumber::GageNotFound, choice.card, "GAGE " + name);
        else
            found.push_back(&it->second);
    }
    return found;
}

std::optional<RainInput> RainState::weighted(double normalAnnual, const std::map<std::string, Gage>& gages,
                                             const RunTime& time, Diagnostics& diagnostics) const
{
    const auto weightOf = [](const GageChoice& choice, std::size_t i) {
        return choice.weights.given() ? choice.weights.values[i] : 1.0; // one gage needs no PW
    };
    const std::vector<const Gage*> recording = find(m_pr, gages, diagnostics);
    const std::vector<const Gage*> totals = find(m_pt, gages, diagnostics);
    if (recording.size() != m_pr.names.size() || totals.size() != m_pt.names.size())
        return std::nullopt;
    if (recording.empty()) {
        diagnostics.error(ErrorNumber::NoRain, m_pt.card, "NO RECORDING GAGE (PR) FOR THE PATTERN");
        return std::nullopt;
    }
    std::vector<std::span<const double>> patterns;
    std::vector<double> weights;
    double weightSum = 0, total = 0;
    for (std::size_t i = 0; i < recording.size(); ++i) {
        if (!recording[i]->pattern) {
            diagnostics.error(ErrorNumber::GageNotFound, m_pr.card,
                              "GAGE " + recording[i]->name + " HAS NO PI OR PC CARDS");
            return std::nullopt;
        }
        patterns.emplace_back(*recording[i]->pattern->shape);
        weights.push_back(weightOf(m_pr, i));
        weightSum += weights.back();
        total += recording[i]->pattern->total * weights.back();
    }
    auto shape = std::make_shared<std::vector<double>>(time.ordinates);
    methods::weightedPattern(patterns, weights, *shape);
    const double patternTotal = total / weightSum;
    RainInput rain(std::move(shape), 1, patternTotal);
    if (totals.empty())
        return rain;
    std::vector<methods::GageTotal> parts;
    for (std::size_t i = 0; i < totals.size(); ++i)
        parts.push_back({totals[i]->pattern && totals[i]->total <= 0 ? totals[i]->pattern->total : totals[i]->total,
                         totals[i]->normalAnnual, weightOf(m_pt, i)});
    rain.total = methods::weightedStormTotal(parts, normalAnnual);
    if (patternTotal <= 0 && rain.total > 0)
        throw std::invalid_argument("the pattern of the recording gages holds no rain");
    rain.scale = patternTotal > 0 ? rain.total / patternTotal : 1;
    return rain;
}

std::optional<RainInput> RainState::synthetic(double area, const RunTime& time, const methods::UnitSystem& units) const
{
    auto rain = std::make_shared<std::vector<double>>(time.ordinates);
    double total = 0;
    if (m_kind == Kind::Hypothetical) {
        methods::HypotheticalStorm storm = m_hypothetical;
        if (storm.area <= 0)
            storm.area = area;
        total = methods::hypotheticalStorm(storm, time.minutes, units, *rain);
    } else if (m_kind == Kind::ProbableMaximum) {
        methods::ProbableMaximumStorm storm = m_maximum;
        if (storm.area <= 0)
            storm.area = area;
        total = methods::probableMaximumStorm(storm, time.minutes, units, *rain);
    } else {
        methods::StandardProjectStorm storm = m_project;
        if (storm.area <= 0)
            storm.area = area;
        total = methods::standardProjectStorm(storm, time.minutes, units, *rain);
    }
    return RainInput{std::move(rain), 1, total};
}

std::optional<RainInput> RainState::rainOf(const Card& station, double area, double normalAnnual,
                                           const std::map<std::string, Gage>& gages, const RunTime& time,
                                           const methods::UnitSystem& units, Diagnostics& diagnostics)
{
    try {
        switch (m_kind) {
        case Kind::None:
            diagnostics.error(ErrorNumber::NoRain, &station, "");
            return std::nullopt;
        case Kind::Pattern:
            if (!m_pattern) {
                diagnostics.error(ErrorNumber::NoRain, m_stormCard, "THE STORM HAS NO PI OR PC PATTERN");
                return std::nullopt;
            }
            if (m_storm <= 0)
                return RainInput{m_pattern->shape, 1, m_pattern->total};
            if (m_pattern->total <= 0)
                throw std::invalid_argument("the pattern holds no rain to give to the storm");
            return RainInput{m_pattern->shape, m_storm / m_pattern->total, m_storm};
        case Kind::Gages:
            return weighted(normalAnnual, gages, time, diagnostics);
        case Kind::Hypothetical:
        case Kind::ProbableMaximum:
        case Kind::StandardProject:
            if (!m_cached || m_cachedArea != area) {
                m_cached = synthetic(area, time, units);
                m_cachedArea = area;
            }
            return m_cached;
        }
    } catch (const std::invalid_argument& fault) {
        const std::vector<const Card*> from = cards();
        diagnostics.error(ErrorNumber::MethodData, from.empty() ? &station : from.front(), capitals(fault.what()));
    }
    return std::nullopt;
}

std::optional<RainPattern> samplePattern(const ValueList& values, bool cumulative, const RunTime& time,
                                         Diagnostics& diagnostics)
{
    if (cumulative ? !checkRises(values, false, diagnostics) : !checkNotNegative(values, diagnostics))
        return std::nullopt;
    methods::TimeSeries mass = values.series();
    if (!cumulative)
        mass = methods::massCurve(mass);
    auto shape = std::make_shared<std::vector<double>>(time.ordinates);
    methods::rainFromMassCurve(mass, time.minutes, *shape);
    const double total = methods::massCurveTotal(mass);
    const double inside = std::accumulate(shape->begin(), shape->end(), 0.0);
    if (total <= 0)
        diagnostics.warn(values.card, "THE PATTERN HOLDS NO RAIN");
    else if (inside < total * 0.9995)
        diagnostics.warn(values.card, "PART OF THE RAIN LIES OUTSIDE THE TIME OF THE RUN: " +
                                          shortNumber(std::round(1000 * (1 - inside / total)) / 10) +
                                          " PERCENT IS LOST");
    return RainPattern{std::move(shape), total, values.card};
}

} // namespace hec1
