// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "engine/files/TextWriter.h"
#include "engine/network/RunResults.h"

namespace hec1 {

/// Prints the stations of a job according to their print levels: 0 to 2 everything, 3 without the hydrograph tables, 4
/// cards and averages, 5 nothing.
class StationReport
{
public:
    StationReport(const Job& job, TextWriter& out) : m_job(job), m_out(out) {}

    void begin(const Station& station);
    void result(const Station& station, const Result& result);

private:
    void box(const Station& station);
    void cards(const Station& station);
    void carriedCards(const Station& station);
    void unitGraph(const Station& station, const Result& result);
    void rating(const Station& station, const StorageRouting& storage);
    void heading(const Station& station, const Result& result);
    void runoffTable(const Result& result);
    void flowTable(const Result& result);
    void poolTable(const Result& result);
    void plotOf(const Station& station, const Result& result);
    void averages(const Result& result);
    void averagesBlock(std::string_view what, std::string_view unit, std::span<const double> values, double peak,
                       std::size_t peakAt, bool volumes, double area);
    void balance(const Result& result);
    void observed(const Station& station, const Result& result);
    void tableLine(std::size_t ordinate);

    const Job& m_job;
    TextWriter& m_out;
    const Step* m_ratedStep = nullptr; ///< whose unit graph or rating was printed last
};

} // namespace hec1
