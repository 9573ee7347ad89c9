// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/report/StationReport.h"

#include "engine/methods/Reservoir.h"
#include "engine/report/Averages.h"
#include "engine/report/CardEcho.h"

#include <algorithm>
#include <array>
#include <set>

namespace hec1 {

namespace {

constexpr int kTables = 2;  // print levels up to this one print hydrograph tables
constexpr int kDetails = 3; // unit graphs, ratings and water balances
constexpr int kEcho = 4;    // cards and averages

bool prints(const Station& station, int level)
{
    return station.print.level <= level;
}

void valueRows(TextWriter& out, std::string_view title, std::span<const double> values, int decimals)
{
    for (std::size_t i = 0; i < values.size(); ++i) {
        if (i % 10 == 0)
            out.right(i == 0 ? title : std::string_view{}, 26);
        out.fixed(values[i], 10, decimals);
        if (i % 10 == 9 || i + 1 == values.size())
            out.line();
    }
}

} // namespace

void StationReport::begin(const Station& station)
{
    m_ratedStep = nullptr;
    if (!prints(station, kEcho))
        return;
    m_out.line();
    for (int i = 0; i < 33; ++i)
        m_out.text(" ***");
    m_out.line().line();
    box(station);
    cards(station);
    carriedCards(station);
}

void StationReport::box(const Station& station)
{
    m_out.line("                   **************");
    m_out.line("                   *            *");
    m_out.integer(station.kk->number, 5).text(" KK           *").right(station.name, 10).text("  *");
    if (!station.text.empty())
        m_out.text("      ").text(station.text);
    m_out.line();
    m_out.line("                   *            *");
    m_out.line("                   **************");
    for (const Card* card : station.cards)
        if (card->is("KM"))
            m_out.spaces(20).text(trimmed(card->text())).line();
    m_out.line();
}

void StationReport::cards(const Station& station)
{
    if (std::any_of(station.cards.begin(), station.cards.end(), [](const Card* card) { return card->is("KO"); })) {
        const auto ko =
            std::find_if(station.cards.begin(), station.cards.end(), [](const Card* card) { return card->is("KO"); });
        m_out.integer((*ko)->number, 5).line(" KO          OUTPUT CONTROL VARIABLES");
        echoLine(m_out, "IPRNT", std::to_string(station.print.level), "PRINT CONTROL");
        echoLine(m_out, "IPLOT", std::to_string(station.print.plot), "PLOT CONTROL");
        echoLine(m_out, "QSCAL", fixedText(station.print.plotScale, 0), "HYDROGRAPH PLOT SCALE");
        echoLine(m_out, "IPNCH", std::to_string(station.save.punch), "PUNCH COMPUTED HYDROGRAPH");
        echoLine(m_out, "IOUT", std::to_string(station.save.unit), "SAVE HYDROGRAPH ON THIS UNIT");
        echoLine(m_out, "ISAV1", std::to_string(station.save.first + 1), "FIRST ORDINATE PUNCHED OR SAVED");
        echoLine(m_out, "ISAV2", std::to_string(station.save.last + 1), "LAST ORDINATE PUNCHED OR SAVED");
        echoLine(m_out, "TIMINT", fixedText(station.save.hours > 0 ? station.save.hours : m_job.time.hours(), 3),
                 "TIME INTERVAL IN HOURS");
        m_out.line();
    }
    std::string_view room;
    for (std::size_t at = 0; at < station.cards.size();) {
        const Card& card = *station.cards[at];
        if (card.is("KP")) {
            m_out.line()
                .text("     PLAN")
                .integer(card.whole(1), 3)
                .text(" INPUT DATA FOR STATION ")
                .line(station.name);
            m_out.line();
        }
        const std::string_view next = card.is("BA")                                           ? "SUBBASIN RUNOFF DATA"
                                      : card.id[0] == 'P' && (room.empty() || room[0] == 'S') ? "PRECIPITATION DATA"
                                      : card.id[0] == 'R' && std::none_of(station.cards.begin(), station.cards.end(),
                                                                          [](const Card* c) { return c->is("BA"); })
                                          ? "HYDROGRAPH ROUTING DATA"
                                          : room;
        if (next != room) {
            room = next;
            m_out.line().spaces(15).text(room).line().line();
        }
        const RunoffInput* runoff = std::get_if<RunoffInput>(&station.plans.front()->what);
        std::size_t used = 0;
        if ((card.is("PI") || card.is("PC")) && station.plans.size() == 1 && runoff != nullptr && runoff->rain) {
            m_out.integer(card.number, 5).text(" ").text(card.id).line("        INCREMENTAL PRECIPITATION PATTERN");
            writePattern(m_out, *runoff->rain);
            while (at + used < station.cards.size() && station.cards[at + used]->id == card.id)
                ++used;
        } else {
            used = echoCards(station.cards, at, m_job.units.metric, m_out);
        }
        if (used > 0)
            m_out.line();
        at += std::max<std::size_t>(1, used);
    }
}

// What a subbasin takes over from stations before it is echoed too, under its own card number.
void StationReport::carriedCards(const Station& station)
{
    std::set<const Card*> shown(station.cards.begin(), station.cards.end());
    for (const auto& step : station.plans) {
        const auto* runoff = std::get_if<RunoffInput>(&step->what);
        if (runoff == nullptr)
            continue;
        std::vector<const Card*> cards = runoff->rainCards;
        cards.push_back(runoff->loss->card);
        cards.push_back(runoff->transform->card);
        cards.push_back(runoff->baseFlowCard);
        for (const Card* card : cards)
            if (card != nullptr && shown.insert(card).second && !card->is("PI") && !card->is("PC")) {
                echoCards(std::span<const Card* const>(&card, 1), 0, m_job.units.metric, m_out);
                m_out.line();
            }
    }
}

void StationReport::unitGraph(const Station& station, const Result& result)
{
    if (result.unitGraph == nullptr || !prints(station, kDetails))
        return;
    const UnitGraph& graph = *result.unitGraph;
    if (graph.tcHours > 0) {
        m_out.line("                                        SYNTHETIC UNIT HYDROGRAPH PARAMETERS");
        m_out.spaces(40)
            .text("CLARK   TC=")
            .fixed(graph.tcHours, 7, 2)
            .text(" HR,     R=")
            .fixed(graph.storageHours, 7, 2);
        m_out.line(" HR");
        m_out.spaces(40).text("SNYDER  TP=").fixed(graph.lagHours, 7, 2).text(" HR,    CP=").fixed(graph.peaking, 7, 2);
        m_out.line().line();
    }
    if (const auto* runoff = std::get_if<RunoffInput>(&result.step->what)) {
        const TransformInput& transform = *runoff->transform;
        if (transform.timeArea.empty() &&
            (transform.kind == TransformKind::Clark || transform.kind == TransformKind::Snyder))
            m_out.spaces(40).line("SYNTHETIC ACCUMULATED-AREA VS. TIME CURVE WILL BE USED").line();
    }
    const std::size_t shown = std::min(graph.ordinates.size(), m_job.time.ordinates);
    m_out.spaces(59).line("***").line();
    m_out.spaces(59).line("UNIT HYDROGRAPH");
    m_out.spaces(48).integer(static_cast<long>(graph.ordinates.size()), 6).text(" END-OF-PERIOD ORDINATES, VOLUME =");
    m_out.fixed(graph.depth, 6, 3).line();
    for (std::size_t i = 0; i < shown; ++i) {
        if (i % 10 == 0)
            m_out.spaces(11);
        m_out.fixed(graph.ordinates[i], 10, graph.ordinates[i] < 10 ? 2 : 0);
        if (i % 10 == 9 || i + 1 == shown)
            m_out.line();
    }
    m_out.line();
}

void StationReport::rating(const Station& station, const StorageRouting& storage)
{
    if (!prints(station, kDetails))
        return;
    if (!storage.section.empty()) {
        std::vector<double> area, flow, elevation, volume = storage.rating.storage;
        for (const methods::SectionFlow& point : storage.section) {
            flow.push_back(point.flow);
            elevation.push_back(point.elevation);
        }
        m_out.spaces(40).line("COMPUTED STORAGE-OUTFLOW-ELEVATION DATA").line();
        valueRows(m_out, "STORAGE", volume, 2);
        valueRows(m_out, "OUTFLOW", flow, 2);
        valueRows(m_out, "ELEVATION", elevation, 2);
        m_out.line();
        return;
    }
    if (!storage.pool)
        return;
    if (!storage.areas.empty()) {
        m_out.spaces(40).line("COMPUTED STORAGE-ELEVATION DATA").line();
        valueRows(m_out, "STORAGE", storage.pool->storage, 2);
        valueRows(m_out, "ELEVATION", storage.pool->elevation, 2);
        m_out.line();
    }
    if (!storage.formulas)
        return;
    methods::PoolOutlets outlets = storage.outlets;
    if (outlets.dam) {
        outlets.dam.reset();
        const methods::RatingTable table = methods::printedRating(*storage.pool, outlets, m_job.units, 20);
        m_out.spaces(40).line("COMPUTED OUTFLOW-ELEVATION DATA").line();
        m_out.spaces(40).line("(EXCLUDING FLOW OVER DAM)").line();
        valueRows(m_out, "OUTFLOW", table.flow, 2);
        valueRows(m_out, "ELEVATION", table.elevation, 2);
        m_out.line();
    }
    const methods::RatingTable table = methods::printedRating(*storage.pool, storage.outlets, m_job.units, 20);
    m_out.spaces(40).line("COMPUTED STORAGE-OUTFLOW-ELEVATION DATA").line();
    if (outlets.lowLevel || storage.outlets.dam)
        m_out.spaces(40).line("(INCLUDING FLOW OVER DAM)").line();
    valueRows(m_out, "STORAGE", table.storage, 2);
    valueRows(m_out, "OUTFLOW", table.flow, 2);
    valueRows(m_out, "ELEVATION", table.elevation, 2);
    m_out.line();
}

void StationReport::heading(const Station& station, const Result& result)
{
    const std::string stars(131, '*');
    m_out.text(" ").line(stars).line();
    m_out.spaces(44);
    if (result.role == ResultRole::Interpolated)
        m_out.text("INTERPOLATED HYDROGRAPH AT ").text(station.name);
    else if (result.role == ResultRole::Diverted)
        m_out.text("DIVERSION HYDROGRAPH ").text(result.name);
    else if (result.role == ResultRole::Pumped)
        m_out.text("PUMPED HYDROGRAPH ").text(result.name);
    else
        m_out.text("HYDROGRAPH AT STATION ").text(station.name);
    m_out.line();
    if (m_job.planCount > 1 || m_job.ratiosGiven) {
        m_out.spaces(44).text("PLAN").integer(static_cast<long>(result.plan) + 1, 2);
        m_out.text(", RATIO =").fixed(m_job.ratios[result.ratio], 6, 2).line();
    }
    if (!m_job.storms.empty() && result.role != ResultRole::Interpolated)
        m_out.spaces(44)
            .text("TRANSPOSITION AREA")
            .fixed(m_job.storms[result.storm].area, 10, 1)
            .line(m_job.units.metric ? " SQ KM" : " SQ MI");
    m_out.line().text(" ").line(stars);
}

void StationReport::tableLine(std::size_t ordinate)
{
    m_out.spaces(3).text(m_job.time.clock.dayAndTime(static_cast<long>(ordinate) * m_job.time.minutes));
    m_out.integer(static_cast<long>(ordinate) + 1, 5);
}

void StationReport::runoffTable(const Result& result)
{
    const std::size_t n = result.flow.size(), half = (n + 1) / 2;
    constexpr std::string_view kHead = "    DA MON HRMN  ORD    RAIN    LOSS    EXCESS      COMP Q        ";
    m_out.spaces(66).line("*");
    m_out.text(kHead).text("*").line(kHead.substr(0, 58));
    m_out.spaces(66).line("*");
    const int decimals = flowDecimals(result.peakFlow);
    const auto group = [&](std::size_t i) {
        tableLine(i);
        m_out.fixed(result.rain[i], 8, 2).fixed(result.loss[i], 8, 2).fixed(result.excess[i], 10, 2);
        m_out.fixed(result.flow[i], 12, decimals);
    };
    for (std::size_t i = 0; i < half; ++i) {
        group(i);
        m_out.spaces(8).text("*");
        if (half + i < n)
            group(half + i);
        m_out.line();
    }
    m_out.spaces(66).line("*").text(" ").line(std::string(131, '*')).line();
    const auto sum = [](std::span<const double> values) {
        double total = 0;
        for (const double value : values)
            total += value;
        return total;
    };
    m_out.spaces(15).text("TOTAL RAINFALL =").fixed(sum(result.rain), 7, 2).text(", TOTAL LOSS =");
    m_out.fixed(sum(result.loss), 7, 2).text(", TOTAL EXCESS =").fixed(sum(result.excess), 7, 2).line().line();
}

void StationReport::flowTable(const Result& result)
{
    constexpr std::size_t kGroups = 4;
    const std::size_t n = result.flow.size(), rows = (n + kGroups - 1) / kGroups;
    const int decimals = flowDecimals(result.peakFlow);
    for (std::size_t g = 0; g < kGroups; ++g)
        m_out.text("    DA MON HRMN  ORD      FLOW").text(g + 1 < kGroups ? "  *" : "");
    m_out.line().line();
    for (std::size_t row = 0; row < rows; ++row) {
        for (std::size_t g = 0; g < kGroups && g * rows + row < n; ++g) {
            if (g > 0)
                m_out.text("  *");
            const std::size_t i = g * rows + row;
            tableLine(i);
            m_out.fixed(result.flow[i], 10, decimals);
        }
        m_out.line();
    }
    m_out.text(" ").line(std::string(131, '*')).line();
}

void StationReport::poolTable(const Result& result)
{
    constexpr std::size_t kGroups = 2;
    const std::size_t n = result.flow.size(), rows = (n + kGroups - 1) / kGroups;
    const int decimals = flowDecimals(result.peakFlow);
    for (std::size_t g = 0; g < kGroups; ++g)
        m_out.text("    DA MON HRMN  ORD   OUTFLOW   STORAGE     STAGE").text(g + 1 < kGroups ? "    *  " : "");
    m_out.line().line();
    for (std::size_t row = 0; row < rows; ++row) {
        for (std::size_t g = 0; g < kGroups && g * rows + row < n; ++g) {
            if (g > 0)
                m_out.text("    *  ");
            const std::size_t i = g * rows + row;
            tableLine(i);
            m_out.fixed(result.flow[i], 10, decimals).fixed(result.storage[i], 10, 1);
            if (!result.stage.empty())
                m_out.fixed(result.stage[i], 10, 2);
            else
                m_out.spaces(10);
        }
        m_out.line();
    }
    m_out.text(" ").line(std::string(131, '*')).line();
}

void StationReport::result(const Station& station, const Result& result)
{
    if (!prints(station, kEcho))
        return;
    if (m_ratedStep != result.step) {
        m_ratedStep = result.step;
        unitGraph(station, result);
        if (const StorageRouting* storage = result.step->storage())
            rating(station, *storage);
    }
    heading(station, result);
    if (prints(station, kTables)) {
        if (!result.rain.empty())
            runoffTable(result);
        else if (!result.storage.empty())
            poolTable(result);
        else
            flowTable(result);
    }
    if (result.steps != nullptr && prints(station, kDetails)) {
        m_out.spaces(15).text("COMPUTED MUSKINGUM-CUNGE PARAMETERS:  DT =").fixed(result.steps->seconds / 60, 8, 2);
        m_out.text(" MIN,  DX =").fixed(result.steps->distance, 10, 2).text(m_job.units.metric ? " M" : " FT");
        m_out.text(",  PEAK =").fixed(result.steps->peakFlow, 10, 2).text(" AT").fixed(result.steps->peakMinutes, 9, 2);
        m_out.line(" MIN").line();
    }
    averages(result);
    if (prints(station, kDetails)) {
        balance(result);
        observed(station, result);
    }
    plotOf(station, result);
}

} // namespace hec1
