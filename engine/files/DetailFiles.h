// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "engine/files/TextWriter.h"
#include "engine/network/RunResults.h"

namespace hec1 {

/// DETAILS=file.csv: everything between rain and flow, one quantity, time and value a line:
/// station,plan,ratio,jd,quantity,x,value,unit. `x` is minutes from the start, or the elevation for RATING_ quantities.
/// jd is 0 for the hydrograph interpolated between index storms.
class DetailsFile
{
public:
    explicit DetailsFile(const Job& job) : m_job(job) {}
    bool open(const std::string& path, bool append);
    bool isOpen() const { return m_out.isOpen(); }
    void begin(const Station& station);
    void record(const Station& station, const Result& result);
    bool close() { return m_out.close(); }

private:
    void series(const std::string& prefix, std::string_view quantity, std::span<const double> values,
                std::string_view unit, std::size_t from = 0, long offset = 0);
    void rating(const Station& station, std::size_t plan);

    const Job& m_job;
    TextWriter m_out;
};

/// FLOW_AND_STAGE_STORAGE.TXT: the routing of every pool with an ST card, ordinate by ordinate.
class PoolFile
{
public:
    explicit PoolFile(const Job& job) : m_job(job) {}
    static constexpr const char* kName = "FLOW_AND_STAGE_STORAGE.TXT";
    /// The file is made when the first pool comes; one left by an earlier run is removed at the start.
    void record(const Station& station, const Result& result);
    bool close() { return m_out.close(); }

private:
    const Job& m_job;
    TextWriter m_out;
};

/// CONIC_DATA_VALUES.TXT: the storages computed from SA and SE. @return false when the file cannot be written; a job
/// without such tables writes none.
bool writeConicTables(const Job& job);
inline constexpr const char* kConicName = "CONIC_DATA_VALUES.TXT";

/// TAPE23: every card in fixed columns, identifier, then fields nine wide, so that at least one blank stands ahead of
/// each.
bool writeCardEcho(const std::vector<Card>& cards, TextWriter& out);

} // namespace hec1
