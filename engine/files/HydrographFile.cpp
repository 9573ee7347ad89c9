// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/files/HydrographFile.h"

#include "engine/methods/Storms.h"

#include <algorithm>
#include <cmath>

namespace hec1 {

namespace {

constexpr std::size_t kNumbersPerLine = 8;
constexpr std::size_t kNameWidth = 9;
constexpr std::size_t kBetweenNameAndStep = 13;
constexpr double kLongestStep = 999;

// How many ordinates of which spacing a station saves.
struct SavedShape
{
    std::size_t first, count;
    double minutes;
};

SavedShape savedShape(const SaveControl& save, const RunTime& time)
{
    SavedShape shape{save.first, save.last - save.first + 1, static_cast<double>(time.minutes)};
    if (save.hours > 0) {
        shape.minutes = std::max(1.0, std::round(save.hours * 60));
        const double length = static_cast<double>(save.last - save.first) * time.minutes;
        shape.count = static_cast<std::size_t>(length / shape.minutes + 1e-9) + 1;
    }
    return shape;
}

} // namespace

void HydrographFile::begin(const Station& station)
{
    if (station.save.unit != m_unit)
        return;
    m_open = false;
}

void HydrographFile::record(const Station& station, const Result& result)
{
    if (station.save.unit != m_unit || result.role != ResultRole::Main)
        return;
    const SavedShape shape = savedShape(station.save, m_job.time);
    if (!m_open) {
        m_open = true;
        const long start = static_cast<long>(shape.first) * m_job.time.minutes;
        std::string date = m_job.time.clock.dated() ? m_job.time.clock.date(start) : "DAY";
        date = date + std::string(date.size() < 10 ? 10 - date.size() : 0, '.');
        m_out.left(station.name.substr(0, kNameWidth), kNameWidth).spaces(kBetweenNameAndStep);
        if (shape.minutes <= kLongestStep)
            m_out.integer(static_cast<long>(shape.minutes), 3);
        else
            m_out.text("***"); // as FORTRAN marks what does not fit
        m_out.spaces(13);
        m_out.integer(static_cast<long>(m_job.stormCount()), 1).integer(m_job.planCount, 2);
        m_out.integer(static_cast<long>(m_job.ratios.size()), 2).integer(static_cast<long>(shape.count), 4);
        m_out.text(date).line();
    }
    std::span<const double> flows = result.flow.subspan(shape.first, station.save.last - shape.first + 1);
    if (station.save.hours > 0) {
        m_resampled.resize(shape.count);
        methods::sampleSeries({0, static_cast<double>(m_job.time.minutes), {flows.begin(), flows.end()}}, shape.minutes,
                              m_resampled);
        flows = m_resampled;
    }
    m_out.preciseRows(flows, kNumbersPerLine);
}

bool HydrographFile::close()
{
    return m_out.close();
}

} // namespace hec1
