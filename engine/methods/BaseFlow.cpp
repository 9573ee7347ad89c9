// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/methods/BaseFlow.h"

#include "engine/methods/Averages.h"

#include <algorithm>
#include <cmath>

namespace hec1::methods {

void addBaseFlow(const BaseFlowCard& card, double area, double intervalHours, std::span<double> flow,
                 std::span<double> baseFlow)
{
    if (flow.empty())
        return;
    const std::size_t n = flow.size();
    const double start = card.startFlow < 0 ? -card.startFlow * area : card.startFlow;
    const double hourlyRatio = std::max(card.hourlyRatio, 1.0);
    const double stepRatio = std::pow(hourlyRatio, -intervalHours);
    if (!baseFlow.empty())
        std::copy(flow.begin(), flow.end(), baseFlow.begin());

    double receding = start;
    for (double& q : flow) {
        q += receding;
        receding *= stepRatio;
    }

    const std::size_t peak = peakIndex(flow);
    const double threshold = card.recessionFlow < 0 ? -card.recessionFlow * flow[peak] : card.recessionFlow;
    if (threshold > 0) {
        double recession = 0; // value of the recession curve at the ordinate; 0 before there is one
        double totalBefore = flow[peak];
        for (std::size_t i = peak + 1; i < n; ++i) {
            const double total = flow[i];
            recession *= stepRatio;
            if (totalBefore >= threshold && total < threshold) {
                const double sinceCrossing = (threshold - total) / (totalBefore - total) * intervalHours;
                recession = threshold * std::pow(hourlyRatio, -sinceCrossing);
            }
            totalBefore = total;
            flow[i] = std::max(total, recession);
        }
    }
    if (!baseFlow.empty())
        for (std::size_t i = 0; i < n; ++i)
            baseFlow[i] = flow[i] - baseFlow[i];
}

} // namespace hec1::methods
