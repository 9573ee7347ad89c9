// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/files/DetailFiles.h"

#include "engine/methods/Reservoir.h"

#include <algorithm>
#include <set>

namespace hec1 {

namespace {

// RFC 4180: a field with a comma or quote stands in quotes.
std::string csvField(std::string_view text)
{
    if (text.find_first_of(",\"\r\n") == std::string_view::npos)
        return std::string(text);
    std::string quoted = "\"";
    for (const char c : text)
        quoted += c == '"' ? std::string("\"\"") : std::string(1, c);
    return quoted + "\"";
}

} // namespace

bool DetailsFile::open(const std::string& path, bool append)
{
    if (!m_out.open(path, append))
        return false;
    if (!append)
        m_out.line("station,plan,ratio,jd,quantity,x,value,unit");
    return true;
}

void DetailsFile::series(const std::string& prefix, std::string_view quantity, std::span<const double> values,
                         std::string_view unit, std::size_t from, long offset)
{
    for (std::size_t i = from; i < values.size(); ++i) {
        m_out.text(prefix).text(quantity).text(",");
        m_out.integer((static_cast<long>(i) + offset) * m_job.time.minutes, 0).text(",").precise(values[i]);
        m_out.text(",").text(unit).line();
    }
}

void DetailsFile::begin(const Station& station)
{
    if (!isOpen())
        return;
    for (std::size_t plan = 0; plan < station.plans.size(); ++plan)
        rating(station, plan);
}

void DetailsFile::rating(const Station& station, std::size_t plan)
{
    const StorageRouting* storage = station.plans[plan]->storage();
    if (storage == nullptr || !storage->pool)
        return;
    const methods::RatingTable table = methods::printedRating(*storage->pool, storage->outlets, m_job.units, 0);
    const bool metric = m_job.units.metric;
    for (const bool flows : {false, true})
        for (std::size_t i = 0; i < table.elevation.size(); ++i) {
            m_out.text(csvField(station.name)).text(",").integer(static_cast<long>(plan) + 1, 0).text(",1,1,");
            m_out.text(flows ? "RATING_FLOW," : "RATING_STORAGE,").precise(table.elevation[i]).text(",");
            m_out.precise(flows ? table.flow[i] : table.storage[i]).text(",");
            m_out.text(flows ? (metric ? "m3/s" : "cfs") : (metric ? "1000 m3" : "ac-ft")).line();
        }
}

void DetailsFile::record(const Station& station, const Result& result)
{
    if (!isOpen() || result.role == ResultRole::Diverted)
        return;
    const bool metric = m_job.units.metric;
    const std::string_view depth = metric ? "mm" : "in", flow = metric ? "m3/s" : "cfs";
    const bool pumped = result.role == ResultRole::Pumped;
    std::string prefix = csvField(station.name);
    for (const std::size_t number :
         {result.plan + 1, result.ratio + 1, result.role == ResultRole::Interpolated ? 0 : result.storm + 1})
        prefix += "," + std::to_string(number);
    prefix += ",";
    if (pumped) {
        series(prefix, "PUMPED", result.flow, flow);
        return;
    }
    series(prefix, "RAIN", result.rain, depth);
    series(prefix, "LOSS", result.loss, depth);
    series(prefix, "EXCESS", result.excess, depth);
    if (result.unitGraph != nullptr && result.role == ResultRole::Main)
        series(prefix, "UNITGRAPH", result.unitGraph->ordinates, metric ? "m3/s per mm" : "cfs per in", 0, 1);
    series(prefix, "BASEFLOW", result.baseFlow, flow);
    series(prefix, "INFLOW", result.inflow, flow);
    series(prefix, "FLOW", result.flow, flow);
    series(prefix, "STORAGE", result.storage, metric ? "1000 m3" : "ac-ft");
    series(prefix, "STAGE", result.stage, metric ? "m" : "ft");
    series(prefix, "DIVERTED", result.diverted, flow);
}

void PoolFile::record(const Station& station, const Result& result)
{
    const StorageRouting* storage = result.step->storage();
    if (storage == nullptr || !storage->outlets.dam || result.stage.empty() || result.role != ResultRole::Main)
        return;
    if (!m_out.isOpen() && (m_out.failed() || !m_out.open(kName, true)))
        return;
    // Readers cut the station from the seven characters ahead of "LOW AREA=" and the number behind the word RATIO.
    m_out.text(" STATION ").left(station.name.substr(0, 6), 6).text(" LOW AREA=");
    m_out.fixed(storage->outlets.lowLevel ? storage->outlets.lowLevel->area : 0, 10, 3);
    m_out.text("  PLAN").integer(static_cast<long>(result.plan) + 1, 3);
    if (!m_job.storms.empty())
        m_out.text("  STORM").integer(static_cast<long>(result.storm) + 1, 3);
    m_out.text("  RATIO").integer(static_cast<long>(result.ratio) + 1, 3).spaces(4);
    m_out.text("=").fixed(m_job.ratios[result.ratio], 9, 3).line();
    m_out.line(" ORDNT   HR MIN      OUTFLOW      STORAGE       STAGE        QLOWL");
    for (std::size_t i = 0; i < result.flow.size(); ++i) {
        const long minutes = static_cast<long>(i) * m_job.time.minutes;
        m_out.integer(static_cast<long>(i) + 1, 6).integer(minutes / 60, 6).text(minutes % 60 < 10 ? " 0" : " ");
        m_out.integer(minutes % 60, 0).spaces(2).fixed(result.flow[i], 11, 2).spaces(2);
        m_out.fixed(result.storage[i], 11, 3).spaces(2).fixed(result.stage[i], 10, 3).spaces(2);
        const double low = storage->outlets.lowLevel
                               ? methods::flowThrough(*storage->outlets.lowLevel, result.stage[i], m_job.units)
                               : 0;
        m_out.fixed(low, 11, 2).line();
    }
    m_out.line();
}

bool writeConicTables(const Job& job)
{
    TextWriter out;
    for (const Station& station : job.stations) {
        std::set<const Step*> done;
        for (std::size_t plan = 0; plan < station.plans.size(); ++plan) {
            const Step& step = *station.plans[plan];
            const StorageRouting* storage = step.storage();
            if (storage == nullptr || storage->areas.empty() || !done.insert(&step).second)
                continue;
            if (!out.isOpen() && !out.open(kConicName, true))
                return false;
            out.text(" STATION ").left(station.name, 8).text("PLAN").integer(static_cast<long>(plan) + 1, 3);
            out.line("  STORAGE COMPUTED FROM SURFACE AREAS BY THE CONIC METHOD").line();
            out.line(job.units.metric ? "     ELEVATION          AREA       STORAGE     INCREMENT"
                                      : "     ELEVATION          AREA       STORAGE     INCREMENT");
            out.line(job.units.metric ? "           (M)     (1000 M2)     (1000 M3)     (1000 M3)"
                                      : "          (FT)       (ACRES)       (AC-FT)       (AC-FT)");
            for (std::size_t i = 0; i < storage->areas.size(); ++i) {
                const double volume = storage->pool->storage[i];
                out.fixed(storage->pool->elevation[i], 14, 2).fixed(storage->areas[i], 14, 3).fixed(volume, 14, 3);
                out.fixed(i == 0 ? 0 : volume - storage->pool->storage[i - 1], 14, 3).line();
            }
            out.line();
        }
    }
    return out.close();
}

bool writeCardEcho(const std::vector<Card>& cards, TextWriter& out)
{
    for (const Card& card : cards) {
        if (card.kind != LineKind::Card) {
            out.line(card.image);
            continue;
        }
        out.text(card.id).text(" ");
        const CardLayout layout = card.def != nullptr ? card.def->layout : CardLayout::Text;
        if (layout == CardLayout::Text) {
            out.text(card.text());
        } else if (layout == CardLayout::NameText) {
            out.left(card.word(1), 8).text(card.text());
        } else {
            for (int field = 1; field <= card.count; ++field)
                out.text(field == 1 ? "" : " ").right(card.word(field), 8);
        }
        out.line();
    }
    return !out.failed();
}

} // namespace hec1
