// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "engine/files/TextWriter.h"
#include "engine/network/RunResults.h"

#include <array>
#include <string>
#include <vector>

namespace hec1 {

/// Keeps the peaks of all hydrographs and prints the summaries at the end of the report: RUNOFF SUMMARY for one plan
/// and ratio, else the plan-ratio table; then a table for each dam.
class Summary
{
public:
    explicit Summary(const Job& job) : m_job(job) {}
    void add(const Station& station, const Result& result);
    void write(TextWriter& out) const;

private:
    struct Peak
    {
        double flow = 0, hours = 0, stage = 0, stageHours = 0;
    };
    /// One entry: a label line with what belongs to it.
    struct Entry
    {
        const Station* station;
        const Step* step; ///< of plan 1
        ResultRole role;
        std::string name;
        double area = 0;
        bool hasStage = false;
        std::array<double, 4> means{};
        std::vector<Peak> peaks; ///< plan outermost, then ratio
    };
    struct Dam
    {
        const Station* station;
        const StorageRouting* routing;
        std::size_t plan;
        std::vector<methods::DamSummary> ratios;
    };
    Entry& entryOf(const Station& station, const Result& result);
    static std::string label(const Entry& entry);
    void writeSingle(TextWriter& out) const;
    void writePlansAndRatios(TextWriter& out) const;
    void writeEntry(TextWriter& out, const Entry& entry) const;
    void writeDams(TextWriter& out) const;
    void writeDamPlan(TextWriter& out, const Dam& dam) const;

    const Job& m_job;
    std::vector<Entry> m_entries;
    std::vector<Dam> m_dams;
};

} // namespace hec1
