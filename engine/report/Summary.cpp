// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/report/Summary.h"

#include "engine/methods/Reservoir.h"
#include "engine/report/Averages.h"

#include <algorithm>

namespace hec1 {

namespace {

// Readers split the line of stages at single blanks and count: the first stage stands in a field of 12 behind the word,
// the others in fields of 9, and each is six characters long, or the blanks in front stay as many.
void writeStages(TextWriter& out, const std::vector<double>& stages)
{
    constexpr std::size_t kDigits = 6;
    for (std::size_t i = 0; i < stages.size(); ++i) {
        std::string text = fixedText(stages[i], 2);
        for (int decimals = 3; text.size() < kDigits && decimals < 6; ++decimals)
            text = fixedText(stages[i], decimals);
        out.spaces(i == 0 ? 6 : 3).text(text);
    }
}

} // namespace

Summary::Entry& Summary::entryOf(const Station& station, const Result& result)
{
    // Results of one station come together, so the entry is among the last few.
    const bool interpolated = result.role == ResultRole::Interpolated;
    const ResultRole role = interpolated ? ResultRole::Main : result.role;
    for (std::size_t i = m_entries.size(); i-- > 0 && m_entries[i].station == &station;)
        if (m_entries[i].role == role)
            return m_entries[i];
    if (m_entries.empty())
        m_entries.reserve(m_job.stations.size());
    Entry entry;
    entry.station = &station;
    entry.step = result.step;
    entry.role = role;
    entry.name = std::string(result.name);
    entry.peaks.resize(static_cast<std::size_t>(m_job.planCount) * m_job.ratios.size());
    // Flows that leave stand ahead of what remains.
    const auto at = role != ResultRole::Main && !m_entries.empty() && m_entries.back().station == &station
                        ? m_entries.end() - 1
                        : m_entries.end();
    return *m_entries.insert(at, std::move(entry));
}

void Summary::add(const Station& station, const Result& result)
{
    const bool main = result.role == ResultRole::Main;
    if (main && result.dam != nullptr) {
        if (m_dams.empty() || m_dams.back().station != &station || m_dams.back().plan != result.plan) {
            m_dams.push_back({&station, result.step->storage(), result.plan, {}});
        }
        m_dams.back().ratios.push_back(*result.dam);
    }
    // In a depth-area job the interpolated hydrograph is the result; the index storms are on the way to it.
    if (!m_job.storms.empty() && (main || result.storm + 1 != m_job.storms.size()) &&
        result.role != ResultRole::Interpolated)
        return;
    Entry& entry = entryOf(station, result);
    Peak& peak = entry.peaks[result.plan * m_job.ratios.size() + result.ratio];
    const double hours = m_job.time.hours();
    peak = {result.peakFlow, static_cast<double>(result.peakAt) * hours, result.peakStage,
            static_cast<double>(result.stageAt) * hours};
    entry.area = std::max(entry.area, result.area);
    entry.hasStage = entry.hasStage || result.hasStage;
    if (!m_job.manyHydrographs())
        entry.means = greatestMeans(result.flow, hours);
}

std::string Summary::label(const Entry& entry)
{
    if (entry.role == ResultRole::Diverted)
        return "DIVERSION TO";
    if (entry.role == ResultRole::Pumped)
        return "PUMP FLOW TO";
    if (const auto* combination = std::get_if<Combination>(&entry.step->what))
        return std::to_string(combination->count) + " COMBINED AT";
    return std::holds_alternative<Routing>(entry.step->what) ? "ROUTED TO" : "HYDROGRAPH AT";
}

void Summary::write(TextWriter& out) const
{
    if (m_job.manyHydrographs())
        writePlansAndRatios(out);
    else
        writeSingle(out);
    writeDams(out);
}

void Summary::writeSingle(TextWriter& out) const
{
    const bool metric = m_job.units.metric;
    out.line("1").spaces(59).line("RUNOFF SUMMARY");
    out.spaces(52).text("FLOW IN ").line(metric ? "CUBIC METERS PER SECOND" : "CUBIC FEET PER SECOND");
    out.spaces(47).text("TIME IN HOURS,  AREA IN ").line(metric ? "SQUARE KILOMETERS" : "SQUARE MILES").line();
    out.line(
        "                                            PEAK   TIME OF    AVERAGE FLOW FOR MAXIMUM PERIOD        BASIN   "
        "MAXIMUM    TIME OF");
    out.line(
        "              OPERATION        STATION      FLOW     PEAK                                             AREA   "
        "  STAGE  MAX STAGE");
    out.line("+                                                              6-HOUR     24-HOUR     72-HOUR");
    for (const Entry& entry : m_entries) {
        const Peak& peak = entry.peaks.front();
        const int decimals = flowDecimals(peak.flow);
        out.line().spaces(14).line(label(entry));
        out.text("+").right(entry.name, 37).fixed(peak.flow, 10, decimals).fixed(peak.hours, 9, 2);
        out.fixed(entry.means[0], 12, decimals).fixed(entry.means[1], 12, decimals).fixed(entry.means[2], 12, decimals);
        out.fixed(entry.area, 12, 2).line();
        if (entry.hasStage)
            out.text("+").spaces(101).fixed(peak.stage, 10, 2).fixed(peak.stageHours, 11, 2).line();
    }
    out.line();
}

void Summary::writePlansAndRatios(TextWriter& out) const
{
    const bool metric = m_job.units.metric;
    const std::size_t ratios = m_job.ratios.size();
    out.line("1");
    out.line(
        "                 PEAK FLOW AND STAGE (END-OF-PERIOD) SUMMARY FOR MULTIPLE PLAN-RATIO ECONOMIC COMPUTATIONS");
    out.spaces(32).text("FLOWS IN ").text(metric ? "CUBIC METERS PER SECOND" : "CUBIC FEET PER SECOND");
    out.text(",  AREA IN ").line(metric ? "SQUARE KILOMETERS" : "SQUARE MILES");
    out.spaces(48).line("TIME TO PEAK IN HOURS").line();
    out.spaces(60).line(m_job.ratiosOnRain ? "RATIOS APPLIED TO PRECIPITATION" : "RATIOS APPLIED TO FLOWS");
    out.left(" OPERATION       STATION      AREA   PLAN", 48);
    for (std::size_t r = 0; r < ratios; ++r)
        out.right("RATIO " + std::to_string(r + 1), r == 0 ? 12 : 9);
    out.line().spaces(48);
    for (std::size_t r = 0; r < ratios; ++r)
        out.fixed(m_job.ratios[r], r == 0 ? 12 : 9, 2);
    out.line();
    for (const Entry& entry : m_entries)
        writeEntry(out, entry);
    out.line();
}

void Summary::writeEntry(TextWriter& out, const Entry& entry) const
{
    const std::size_t ratios = m_job.ratios.size();
    double greatest = 0;
    for (const Peak& peak : entry.peaks)
        greatest = std::max(greatest, peak.flow);
    const int decimals = flowDecimals(greatest);
    out.line().text(" ").line(label(entry));
    for (std::size_t plan = 0; plan < static_cast<std::size_t>(m_job.planCount); ++plan) {
        const Peak* peaks = entry.peaks.data() + plan * ratios;
        if (plan == 0)
            out.text("+").right(entry.name, 22).fixed(entry.area, 10, 2);
        else
            out.spaces(33);
        out.integer(static_cast<long>(plan) + 1, 7).text("    FLOW");
        for (std::size_t r = 0; r < ratios; ++r)
            out.fixed(peaks[r].flow, r == 0 ? 12 : 9, decimals);
        out.line().spaces(44).text("TIME");
        for (std::size_t r = 0; r < ratios; ++r)
            out.fixed(peaks[r].hours, r == 0 ? 12 : 9, 2);
        out.line();
    }
    const bool routed = entry.role == ResultRole::Main && std::holds_alternative<Routing>(entry.step->what);
    if (!entry.hasStage) {
        // Readers take six lines behind ROUTED TO as its block, with or without stages.
        for (int i = 0; routed && m_job.planCount == 1 && i < 4; ++i)
            out.line();
        return;
    }
    out.line().spaces(39).text("** PEAK STAGES IN ").text(m_job.units.metric ? "METERS" : "FEET").line(" **");
    for (std::size_t plan = 0; plan < static_cast<std::size_t>(m_job.planCount); ++plan) {
        const Peak* peaks = entry.peaks.data() + plan * ratios;
        out.integer(static_cast<long>(plan) + 1, 40).text("   STAGE");
        std::vector<double> stages;
        for (std::size_t r = 0; r < ratios; ++r)
            stages.push_back(peaks[r].stage);
        writeStages(out, stages);
        out.line().spaces(44).text("TIME");
        for (std::size_t r = 0; r < ratios; ++r)
            out.fixed(peaks[r].stageHours, r == 0 ? 12 : 9, 2);
        out.line();
    }
}

void Summary::writeDams(TextWriter& out) const
{
    const Station* last = nullptr;
    for (const Dam& dam : m_dams) {
        if (dam.station != last) {
            out.line("1").spaces(27).text("SUMMARY OF DAM OVERTOPPING/BREACH ANALYSIS FOR STATION");
            out.right(dam.station->name, 9).line();
            out.line("                      (PEAKS SHOWN ARE FOR INTERNAL TIME STEP USED DURING BREACH FORMATION)")
                .line();
        }
        last = dam.station;
        writeDamPlan(out, dam);
    }
}

void Summary::writeDamPlan(TextWriter& out, const Dam& dam) const
{
    const StorageRouting& routing = *dam.routing;
    const methods::UnitSystem& units = m_job.units;
    const methods::StorageIndication relation(routing.rating, m_job.time.hours(), units);
    const methods::PoolPoint start = relation.start(routing.start, 0);
    const double top = routing.outlets.dam ? routing.outlets.dam->top : 0;
    const double crest = routing.outlets.spillway ? routing.outlets.spillway->crest : top;
    const auto values = [&](double elevation) {
        return std::array{elevation, routing.pool->storageAt(elevation),
                          methods::outflowAt(routing.outlets, elevation, units)};
    };
    const std::array<std::array<double, 3>, 3> columns{std::array{start.elevation, start.storage, start.flow},
                                                       values(crest), values(top)};
    out.text("  PLAN").integer(static_cast<long>(dam.plan) + 1, 3);
    out.line(" ...............                   INITIAL VALUE       SPILLWAY CREST        TOP OF DAM");
    constexpr std::array<std::string_view, 3> kNames{"ELEVATION", "STORAGE", "OUTFLOW"};
    for (std::size_t row = 0; row < 3; ++row) {
        out.spaces(30).left(kNames[row], 9);
        for (const auto& column : columns)
            out.fixed(column[row], 20, row == 0 ? 2 : 0);
        out.line();
    }
    out.line();
    out.line(
        "                 RATIO      MAXIMUM      MAXIMUM      MAXIMUM      MAXIMUM     DURATION        TIME OF        "
        "TIME OF");
    out.line(
        "                    OF    RESERVOIR        DEPTH      STORAGE      OUTFLOW     OVER TOP    MAX OUTFLOW        "
        "FAILURE");
    out.line(units.metric ? "                   PMF     W.S.ELEV     OVER DAM    1000 CU M       CU M/S        HOURS   "
                            "       HOURS   "
                            "       HOURS"
                          : "                   PMF     W.S.ELEV     OVER DAM        AC-FT          CFS        HOURS   "
                            "       HOURS   "
                            "       HOURS");
    out.line();
    for (std::size_t i = 0; i < dam.ratios.size(); ++i) {
        const methods::DamSummary& peak = dam.ratios[i];
        out.fixed(m_job.ratios[i / m_job.stormCount()], 22, 2).fixed(peak.peakElevation, 13, 2);
        out.fixed(peak.depthOverDam, 13, 2).fixed(peak.peakStorage, 13, 0);
        out.fixed(peak.peakFlow, 13, 0).fixed(peak.hoursOverTop, 13, 2).fixed(peak.peakFlowHours, 15, 2);
        out.fixed(peak.failureHours, 15, 2).line();
    }
    out.line();
}

} // namespace hec1
