// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/network/StackCheck.h"

#include "engine/network/CardTables.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <set>

namespace hec1 {

namespace {

using enum ErrorNumber;

// Systems promise memory that they do not have, and end whoever uses it: a job that would need more is told so first.
constexpr double kMostBytes = 4e9;

// The name under which a step stores a flow; empty when it stores none.
std::string storedName(const Step& step)
{
    if (const auto* diversion = std::get_if<Diversion>(&step.what))
        return diversion->name;
    const StorageRouting* storage = step.storage();
    return storage != nullptr ? storage->pumpName : std::string();
}

// Which station is the first to store a flow under a name, under any plan: another plan may fetch it and finds no flow.
std::map<std::string, const Station*> firstStored(const std::vector<Station>& stations)
{
    std::map<std::string, const Station*> first;
    for (const Station& station : stations)
        for (const auto& step : station.plans)
            if (const std::string name = storedName(*step); !name.empty())
                first.try_emplace(name, &station);
    return first;
}

class PlanStack
{
public:
    PlanStack(Diagnostics& diagnostics, const std::map<std::string, const Station*>& stored)
        : m_diagnostics(diagnostics), m_storedFirst(stored)
    {
    }

    void follow(const Station& station, const Step& step)
    {
        if (const auto* runoff = std::get_if<RunoffInput>(&step.what))
            take(station, step, runoff->takesUpstream ? 1 : 0, NothingToRoute);
        else if (std::holds_alternative<GivenFlow>(step.what))
            ++m_waiting;
        else if (const auto* copy = std::get_if<ScaledCopy>(&step.what)) {
            if (!m_seen.contains(copy->source))
                m_diagnostics.error(StationNotFound, step.card, copy->source);
            ++m_waiting;
        } else if (std::holds_alternative<Routing>(step.what) || std::holds_alternative<Diversion>(step.what))
            take(station, step, 1, NothingToRoute);
        else if (const auto* combination = std::get_if<Combination>(&step.what))
            take(station, step, combination->count, TooFewToCombine);
        else if (const auto* retrieval = std::get_if<Retrieval>(&step.what)) {
            const auto from = m_storedFirst.find(retrieval->name);
            if (from == m_storedFirst.end() || from->second >= &station)
                m_diagnostics.error(DiversionNotFound, step.card, retrieval->name);
            ++m_waiting;
        }
        if (std::string name = storedName(step); !name.empty())
            m_stored.insert(std::move(name));
        m_seen.insert(station.name);
        m_deepest = std::max(m_deepest, m_waiting + static_cast<int>(m_stored.size()));
    }
    int waiting() const { return m_waiting; }
    int deepest() const { return m_deepest; }

private:
    void take(const Station& station, const Step& step, int count, ErrorNumber number)
    {
        if (m_waiting < count)
            m_diagnostics.error(number, step.card,
                                "STATION " + station.name + " NEEDS " + std::to_string(count) + ", " +
                                    std::to_string(m_waiting) + " WAITING");
        m_waiting = std::max(m_waiting - count, 0) + 1;
    }

    Diagnostics& m_diagnostics;
    const std::map<std::string, const Station*>& m_storedFirst;
    std::set<std::string, std::less<>> m_stored, m_seen;
    int m_waiting = 0, m_deepest = 0;
};

} // namespace

void checkStack(const Job& job, Diagnostics& diagnostics)
{
    const std::size_t errorsBefore = diagnostics.errors().size();
    const std::map<std::string, const Station*> stored = firstStored(job.stations);
    double most = 0; // hydrographs kept at one time, of all plans
    for (std::size_t plan = 0; plan < static_cast<std::size_t>(job.planCount); ++plan) {
        PlanStack stack(diagnostics, stored);
        for (const Station& station : job.stations)
            stack.follow(station, *station.plans[plan]);
        most += stack.deepest();
        if (stack.waiting() > 1)
            diagnostics.warn(nullptr,
                             std::to_string(stack.waiting()) +
                                 " HYDROGRAPHS ARE LEFT AT THE END OF THE STREAM NETWORK: ONE OR MORE WERE NOT "
                                 "COMBINED");
        if (diagnostics.errors().size() > errorsBefore) // other plans would repeat them
            return;
    }
    const double bytes = most * static_cast<double>(job.hydrographsPerPlan() * job.time.ordinates) * sizeof(double);
    if (bytes > kMostBytes)
        diagnostics.error(JobTooLarge, nullptr, shortNumber(std::floor(bytes / 1e6)) + " MEGABYTES");
}

} // namespace hec1
