// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "engine/files/TextWriter.h"
#include "engine/network/RunResults.h"

namespace hec1 {

/// TAPE21 and TAPE22: the hydrographs of the stations that save theirs (KO field 5). A station is one header line and
/// then its records, plan outermost, then ratio, then index storm; numbers have at least seven significant digits. The
/// header's fields are found from its end: with L its length, time step L-34 (3 wide), index storms L-18 (1), plans
/// L-17 (2), ratios L-15 (2), ordinates L-13 (4), then the starting date in ten characters. The file never ends in an
/// empty line.
class HydrographFile
{
public:
    HydrographFile(const Job& job, int unit) : m_job(job), m_unit(unit) {}

    /// @param append the jobs of one deck save into one file.
    bool open(bool append) { return m_out.open("TAPE" + std::to_string(m_unit), append); }
    bool isOpen() const { return m_out.isOpen(); }
    void begin(const Station& station);
    void record(const Station& station, const Result& result);
    bool close();
    /// After an error: no hydrograph is better than a part of them.
    bool discard() { return m_out.discard(); }

private:
    const Job& m_job;
    int m_unit;
    TextWriter m_out;
    std::vector<double> m_resampled;
    bool m_open = false; ///< the header of the present station is written
};

} // namespace hec1
