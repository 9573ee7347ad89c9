// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/methods/Averages.h"

#include "engine/report/Averages.h"
#include "engine/report/StationReport.h"

#include <algorithm>
#include <cmath>

namespace hec1 {

namespace {

// Greatest mean over a whole number of intervals from the running integral of the series.
double greatestOver(std::span<const double> integral, std::size_t intervals)
{
    std::array<double, 4> best;
    best.fill(integral[intervals] - integral[0]);
    const std::size_t count = integral.size() - intervals;
    std::size_t i = 0;
    for (; i + 4 <= count; i += 4)
        for (std::size_t k = 0; k < 4; ++k)
            best[k] = std::max(best[k], integral[i + k + intervals] - integral[i + k]);
    for (; i < count; ++i)
        best[0] = std::max(best[0], integral[i + intervals] - integral[i]);
    return *std::max_element(best.begin(), best.end()) / static_cast<double>(intervals);
}

} // namespace

std::array<double, 4> greatestMeans(std::span<const double> values, double intervalHours)
{
    std::array<double, 4> means{};
    std::vector<double> integral(values.size());
    for (std::size_t i = 1; i < values.size(); ++i)
        integral[i] = integral[i - 1] + (values[i - 1] + values[i]) / 2;
    const auto whole = static_cast<double>(values.size() - 1);
    means[3] = values.size() > 1 ? integral.back() / whole : values[0];
    for (std::size_t k = 0; k < kAverageHours.size(); ++k) {
        const double intervals = std::round(kAverageHours[k] / intervalHours);
        if (kAverageHours[k] / intervalHours >= whole)
            means[k] = means[3];
        else if (std::fabs(intervals * intervalHours - kAverageHours[k]) < 1e-9 && intervals >= 1)
            means[k] = greatestOver(integral, static_cast<std::size_t>(intervals));
        else
            means[k] = methods::greatestMean(values, kAverageHours[k], intervalHours);
    }
    return means;
}

int flowDecimals(double greatest)
{
    return greatest < 10 ? 2 : greatest < 100 ? 1 : 0;
}

void StationReport::averagesBlock(std::string_view what, std::string_view unit, std::span<const double> values,
                                  double peak, std::size_t peakAt, bool volumes, double area)
{
    const RunTime& time = m_job.time;
    const double length = static_cast<double>(time.ordinates - 1) * time.hours();
    const std::array<double, 4> means = greatestMeans(values, time.hours());
    const bool metric = m_job.units.metric;
    const bool isFlow = volumes;
    const int decimals = isFlow ? flowDecimals(peak) : 2;
    m_out.text("    ").left(what, 14).text("TIME").spaces(29).text("MAXIMUM AVERAGE ").text(isFlow ? "FLOW" : "VALUE");
    m_out.line();
    m_out.spaces(40).text("6-HR       24-HR       72-HR").right(fixedText(length, 2) + "-HR", 12).line();
    m_out.text("+").right("(" + std::string(unit) + ")", 11).right("(HR)", 10).line();
    m_out.spaces(25).text("(").text(unit).text(")").line();
    m_out.text("+").fixed(peak, 10, decimals).fixed(static_cast<double>(peakAt) * time.hours(), 12, 2).spaces(9);
    for (const double mean : means)
        m_out.fixed(mean, 12, decimals);
    m_out.line();
    if (!volumes) {
        m_out.line();
        return;
    }
    std::array<double, 4> amounts{};
    for (std::size_t k = 0; k < 4; ++k)
        amounts[k] = m_job.units.volumeOf(means[k], k < 3 ? std::min(kAverageHours[k], length) : length);
    m_out.spaces(21).left(metric ? "(MM)" : " (INCHES)", 11);
    for (const double amount : amounts)
        m_out.fixed(m_job.units.depthOver(amount, area), 12, 3);
    m_out.line().spaces(21).left(metric ? "(1000 CU M)" : " (AC-FT)", 11);
    for (const double amount : amounts)
        m_out.fixed(amount, 12, amount < 10 ? 2 : 0);
    m_out.line().line();
}

void StationReport::averages(const Result& result)
{
    const bool metric = m_job.units.metric;
    averagesBlock("PEAK FLOW", metric ? "CU M/S" : "CFS", result.flow, result.peakFlow, result.peakAt, true,
                  result.area);
    if (!result.storage.empty()) {
        const auto peak = std::max_element(result.storage.begin(), result.storage.end());
        averagesBlock("PEAK STORAGE", metric ? "1000 CU M" : "AC-FT", result.storage, *peak,
                      static_cast<std::size_t>(peak - result.storage.begin()), false, 0);
    }
    if (!result.stage.empty())
        averagesBlock("PEAK STAGE", metric ? "METERS" : "FEET", result.stage, result.peakStage, result.stageAt, false,
                      0);
    else if (result.hasStage)
        m_out.spaces(15).text("PEAK STAGE =").fixed(result.peakStage, 10, 2).line().line();
    m_out.spaces(25).text("CUMULATIVE AREA =").fixed(result.area, 9, 2).line(metric ? " SQ KM" : " SQ MI").line();
}

void StationReport::balance(const Result& result)
{
    if (result.role != ResultRole::Main)
        return;
    const WaterBalance& water = result.balance;
    if (water.rain == 0 && water.excess == 0 && water.inflow == 0)
        return;
    m_out.text(m_job.units.metric ? "     CONTINUITY (1000 CU M):" : "     CONTINUITY (AC-FT):");
    const auto part = [&](std::string_view name, double value) {
        m_out.text(" ").text(name).text("=").text(fixedText(value, std::fabs(value) < 100 ? 3 : 1));
    };
    if (!result.rain.empty()) {
        part("RAIN", water.rain);
        part("LOSS", water.loss);
        part("EXCESS", water.excess);
        if (water.baseFlow != 0)
            part("BASEFLOW", water.baseFlow);
    }
    if (water.inflow != 0 || result.rain.empty())
        part("INFLOW", water.inflow);
    if (water.taken != 0)
        part("TAKEN", water.taken);
    part("OUTFLOW", water.outflow);
    part("STORAGE", water.storageKnown ? water.storageChange
                                       : water.excess + water.baseFlow + water.inflow - water.outflow - water.taken);
    if (water.storageKnown)
        part("PERCENT ERROR", water.errorPercent());
    else
        m_out.text(" (BY DIFFERENCE)");
    m_out.line();
    if (!result.rain.empty() && m_job.ratiosGiven && !m_job.ratiosOnRain)
        m_out.spaces(15).line("RAIN AND LOSS ARE THOSE OF THE STORM, THE REST IS TIMES THE RATIO");
    m_out.line();
}

void StationReport::observed(const Station& station, const Result& result)
{
    if (station.observed.empty() || result.role == ResultRole::Diverted || result.role == ResultRole::Pumped)
        return;
    double sum = 0, squares = 0, given = 0;
    for (std::size_t i = 0; i < result.flow.size(); ++i) {
        const double off = result.flow[i] - station.observed[i];
        sum += off;
        squares += off * off;
        given += station.observed[i];
    }
    const auto n = static_cast<double>(result.flow.size());
    const auto peak = std::max_element(station.observed.begin(), station.observed.end());
    m_out.line("     COMPARISON OF COMPUTED AND OBSERVED HYDROGRAPHS");
    m_out.text("          OBSERVED PEAK").fixed(*peak, 12, 1).text("  AT");
    m_out.fixed(static_cast<double>(peak - station.observed.begin()) * m_job.time.hours(), 9, 2).text(" HR,  MEAN");
    m_out.fixed(given / n, 12, 1).line();
    m_out.text("          COMPUTED LESS OBSERVED: MEAN").fixed(sum / n, 12, 1).text(",  STANDARD ERROR");
    m_out.fixed(std::sqrt(squares / n), 12, 1).line().line();
}

// KO or IO ask for a printer plot: time down the page, flow across it, one sign for each curve.
void StationReport::plotOf(const Station& station, const Result& result)
{
    if (station.print.plot != 2 || station.print.level > 4)
        return;
    constexpr std::size_t kColumns = 100;
    double top = result.peakFlow;
    for (const double flow : result.inflow)
        top = std::max(top, flow);
    for (const double flow : station.observed)
        top = std::max(top, flow);
    double perTen = station.print.plotScale;
    if (perTen <= 0) {
        const double rough = std::max(top, 1e-6) / (static_cast<double>(kColumns) / 10);
        const double decade = std::pow(10, std::floor(std::log10(rough)));
        perTen = rough <= decade       ? decade
                 : rough <= 2 * decade ? 2 * decade
                 : rough <= 5 * decade ? 5 * decade
                                       : 10 * decade;
    }
    m_out.text("1").spaces(40).text("STATION").right(station.name, 10).line().line();
    m_out.spaces(40).line(result.inflow.empty() ? "(O) COMPUTED FLOW, (*) OBSERVED FLOW"
                                                : "(I) INFLOW, (O) OUTFLOW, (*) OBSERVED FLOW");
    m_out.spaces(14);
    for (std::size_t k = 0; k <= kColumns / 10; ++k)
        m_out.fixed(perTen * static_cast<double>(k), 10, perTen < 1 ? 2 : 0);
    m_out.line();
    for (std::size_t i = 0; i < result.flow.size(); ++i) {
        std::string row(kColumns + 1, ' ');
        for (std::size_t k = 0; k <= kColumns; k += 10)
            row[k] = '.';
        const auto put = [&](double flow, char sign) {
            const double column = std::round(flow / perTen * 10);
            if (column >= 0 && column <= static_cast<double>(kColumns))
                row[static_cast<std::size_t>(column)] = sign;
        };
        if (!station.observed.empty())
            put(station.observed[i], '*');
        if (!result.inflow.empty())
            put(result.inflow[i], 'I');
        put(result.flow[i], 'O');
        tableLine(i);
        m_out.text(" ").line(row);
    }
    m_out.line();
}

} // namespace hec1
