// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "engine/methods/DamBreach.h"
#include "engine/methods/MuskingumCunge.h"
#include "engine/network/JobModel.h"

#include <optional>
#include <span>
#include <string_view>

namespace hec1 {

enum class ResultRole
{
    Main,        ///< the hydrograph that the station leaves on the stack
    Diverted,    ///< what a DT takes away
    Pumped,      ///< what the pumps of a pool take away
    Interpolated ///< between index storms, at the area of the station
};

/// Water that went through a station, in acre-feet or thousand cubic metres.
struct WaterBalance
{
    double rain = 0, loss = 0, excess = 0; ///< runoff stations
    double baseFlow = 0;
    double inflow = 0; ///< all hydrographs taken from the stack
    double outflow = 0;
    double taken = 0;          ///< diverted, pumped or lost from the channel
    double storageChange = 0;  ///< end less start, where the method tells it
    bool storageKnown = false; ///< otherwise what is missing counts as storage
    /// Gain or loss that nothing explains, in percent of what came in.
    double errorPercent() const
    {
        const double in = excess + baseFlow + inflow;
        return in > 0 && storageKnown ? 100 * (in - outflow - taken - storageChange) / in : 0;
    }
};

/// One hydrograph of a station with all that was computed on the way. The spans are valid during the call only; element
/// i belongs to ordinate i, rain, loss and excess to the interval that ends there. Empty where a step has none.
struct Result
{
    ResultRole role = ResultRole::Main;
    std::string_view name; ///< of the station, diversion or pump
    const Step* step = nullptr;
    std::size_t plan = 0, ratio = 0, storm = 0; ///< from 0
    double area = 0;
    std::span<const double> flow;
    std::size_t drySince = 0; ///< where every flow from here on is zero; 0 when nobody knows
    std::span<const double> rain, loss, excess, baseFlow;
    std::span<const double> inflow, storage, stage, diverted, pumped;
    const UnitGraph* unitGraph = nullptr;

    double peakFlow = 0;
    std::size_t peakAt = 0;
    bool hasStage = false;
    double peakStage = 0;
    std::size_t stageAt = 0;

    WaterBalance balance;
    const methods::DamSummary* dam = nullptr;            ///< stations with ST or SB
    const methods::MuskingumCungeSteps* steps = nullptr; ///< RD
};

/// Takes the results as they are computed: station by station in the order of the deck; for each its hydrographs, plan
/// outermost, then ratio, then index storm. So a job of any size needs memory for the network's stack only.
class RunListener
{
public:
    virtual ~RunListener() = default;
    virtual void begin(const Station&) {}
    virtual void result(const Station&, const Result&) = 0;
    virtual void end(const Station&) {}
};

} // namespace hec1
