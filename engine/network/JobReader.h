// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "engine/network/RainReader.h"
#include "engine/network/StepParts.h"

#include <map>
#include <optional>
#include <string>
#include <vector>

namespace hec1 {

/// Turns the cards of a job into what is to be computed. All that is wrong with them is reported in one pass; the job
/// may be computed only when no error was reported.
class JobReader
{
public:
    JobReader(const JobCards& cards, Diagnostics& diagnostics) : m_cards(cards), m_diagnostics(diagnostics) {}
    Job read();

private:
    std::size_t readJobCards();
    void readJobCard(std::span<const Card* const> cards, std::size_t& at);
    void readTime();
    void readOrdinates(const Card& card);
    void readRatios(const Card& card);
    void readIndexStorm(const Card& card);
    void readInterval(const Card& card);
    void readGage(const Card& card);
    /// PI or PC of the gage or index storm that was named last. @return false when there is none.
    bool readLoosePattern(std::span<const Card* const> cards, std::size_t& at);
    ValueList timedValues(std::span<const Card* const> cards, std::size_t& at) const;
    void finishStorms();

    void readStations(std::size_t from);
    void readStation(std::span<const Card* const> cards);
    void completePlans(Station& station);
    void readStationCard(std::span<const Card* const> cards, std::size_t& at, StepParts& parts,
                         std::vector<Carried*>& plans, Station& station);
    bool readRainCard(std::span<const Card* const> cards, std::size_t& at, StepParts& parts,
                      std::vector<Carried*>& plans);
    bool readTableCard(std::span<const Card* const> cards, std::size_t& at, StepParts& parts, Station& station);
    bool readRoutingCard(const Card& card, StepParts& parts);
    void readLoss(const Card& card, StepParts& parts);
    void readTransform(std::span<const Card* const> cards, std::size_t& at, StepParts& parts);
    void readElevations(ValueList values, StepParts& parts);
    void readControl(const Card& card, Station& station);
    std::vector<std::string> namesOn(std::span<const Card* const> cards, std::size_t& at);
    void once(const Card*& slot, const Card& card);
    void once(ValueList& slot, ValueList values);
    bool structureKnown() const;
    void warnOfSharedNames();

    const JobCards& m_cards;
    Diagnostics& m_diagnostics;
    Job m_job;
    std::vector<const Card*> m_plain; ///< the cards without comments and directives
    bool m_timeKnown = false;
    double m_seriesInterval = 0, m_seriesStart = 0; ///< IN, in minutes
    std::map<std::string, Gage> m_gages;
    Gage* m_gage = nullptr; ///< to which PI and PC now belong
    std::optional<RainPattern> m_stormPattern;
    std::vector<std::optional<RainPattern>> m_stormPatterns;
    std::vector<Carried> m_carried; ///< one for each plan
};

} // namespace hec1
