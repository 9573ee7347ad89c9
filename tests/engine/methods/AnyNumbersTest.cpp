// SPDX-License-Identifier: GPL-3.0-or-later
// Decks hold any numbers. Whatever they are, a method either refuses them in words or gives flows that are numbers.
#include "engine/methods/Averages.h"
#include "engine/methods/BaseFlow.h"
#include "engine/methods/ChannelLoss.h"
#include "engine/methods/DamBreach.h"
#include "engine/methods/Diversion.h"
#include "engine/methods/KinematicWave.h"
#include "engine/methods/LagRouting.h"
#include "engine/methods/Losses.h"
#include "engine/methods/Muskingum.h"
#include "engine/methods/MuskingumCunge.h"
#include "engine/methods/Storms.h"
#include "engine/methods/UnitGraphs.h"
#include "tests/engine/methods/Compare.h"

#include <functional>
#include <string>

namespace hec1::methods::test {
namespace {

/// Numbers as a deck may hold them: plausible ones, and every so often a silly one.
class Numbers
{
public:
    explicit Numbers(unsigned seed) : m_generator(seed) {}
    double operator()(double plausible)
    {
        static const Values silly{0, -1, 1e-30, 1e-9, 1e9, 1e30, -1e9, .5};
        if (m_uniform(m_generator) < .2)
            return silly[static_cast<std::size_t>(m_uniform(m_generator) * static_cast<double>(silly.size()))];
        return plausible * std::exp(3 * (m_uniform(m_generator) - .5));
    }
    int whole(int most) { return static_cast<int>(m_uniform(m_generator) * most); }
    Values rising(std::size_t count, double step)
    {
        Values values;
        double value = 0;
        for (std::size_t i = 0; i < count; ++i) {
            values.push_back(value);
            value += std::abs((*this)(step));
        }
        return values;
    }

private:
    std::mt19937 m_generator;
    std::uniform_real_distribution<double> m_uniform{0, 1};
};

struct AnyMethod
{
    std::string name;
    std::function<Values(Numbers&, const Values& flood)> run; ///< the flows, or what else came out
};

const UnitSystem& eitherUnits(Numbers& n)
{
    static constexpr UnitSystem both[]{english(), metric()};
    return both[n.whole(2)];
}

LossMethod anyLoss(Numbers& n)
{
    switch (n.whole(5)) {
    case 0:
        return InitialUniformLoss{n(.5), n(.2)};
    case 1:
        return CurveNumberLoss{n(.1), n(60)};
    case 2:
        return ExponentialLoss{n(.3), n(.5), n(2), n(.5)};
    case 3:
        return HoltanLoss{n(.1), n(.3), n(2), n(1.4)};
    default:
        return GreenAmptLoss{n(.1), n(.3), n(6), n(.2)};
    }
}

StandardChannel anyChannel(Numbers& n)
{
    return {n(3000), n(.01), n(.04), static_cast<ChannelShape>(n.whole(3)), n(10), n(2)};
}

PoolStart anyStart(Numbers& n)
{
    return {static_cast<StartKind>(n.whole(4)), n(20)};
}

Values anyPool(Numbers& n, const Values& flood)
{
    PoolStorage pool{n.rising(5, 10), n.rising(5, 100)};
    PoolOutlets outlets;
    if (n.whole(2))
        outlets.lowLevel = LowLevelOutlet{n(3), n(10), n(.6), n(.5)};
    if (n.whole(2))
        outlets.spillway = Weir{n(20), n(50), n(3), n(1.5)};
    if (n.whole(2))
        outlets.dam = DamCrest{n(35), n(300), n(2.7), n(1.5), n.whole(2) ? n.rising(4, 50) : Values{}, n.rising(4, 1)};
    std::optional<Breach> breach;
    if (n.whole(2))
        breach = Breach{n(5), n(50), n(1), n(1), n(15)};
    const std::vector<Pump> pumps{{n(10), n(5), n(20)}};
    Values out(flood.size()), storage(flood.size()), elevation(flood.size()), pumped(flood.size());
    const DamSummary summary = routeDam(pool, outlets, mergedRating(pool, outlets, eitherUnits(n)), breach, .25,
                                        eitherUnits(n), flood, anyStart(n), out, storage, elevation, pumps, pumped);
    for (const Values* more : {&storage, &elevation, &pumped})
        out.insert(out.end(), more->begin(), more->end());
    out.insert(out.end(), {summary.peakFlow, summary.peakFlowHours, summary.hoursOverTop, summary.failureHours});
    return out;
}

const std::vector<AnyMethod> kMethods{
    {"Losses",
     [](Numbers& n, const Values& flood) {
         Values out(flood.size());
         rainfallExcess(anyLoss(n), n(20), .25, eitherUnits(n), flood, out);
         return out;
     }},
    {"UnitGraphs",
     [](Numbers& n, const Values& flood) {
         Values out(flood.size()), graph;
         const Values curve = n.whole(2) ? n.rising(5, 20) : Values{};
         switch (n.whole(3)) {
         case 0:
             graph = scsUnitGraph(n(5), n(1), .25, eitherUnits(n), 500);
             break;
         case 1:
             graph = clarkUnitGraph(n(5), n(2), n(2), .25, eitherUnits(n), curve, 500);
             break;
         default:
             graph = snyderUnitGraph(n(5), n(2), n(.5), .25, eitherUnits(n), curve, 500).ordinates;
         }
         convolve(flood, graph, out);
         return out;
     }},
    {"BaseFlow",
     [](Numbers& n, const Values& flood) {
         Values out = flood;
         addBaseFlow({n(10), -n(.1), n(1.1)}, n(5), .25, out);
         return out;
     }},
    {"Muskingum",
     [](Numbers& n, const Values& flood) {
         Values out(flood.size());
         routeMuskingum(flood, out, n(2), n(.3), n.whole(20), .25);
         return out;
     }},
    {"StraddleStagger",
     [](Numbers& n, const Values& flood) {
         Values out(flood.size());
         routeStraddleStagger(flood, out, n.whole(5), n.whole(1'000'000'000), n.whole(2'000'000'000));
         return out;
     }},
    {"StorageOutflow",
     [](Numbers& n, const Values& flood) {
         Values out(flood.size()), storage(flood.size());
         routeReach({{}, n.rising(5, 20), n.rising(5, 500)}, n.whole(9), n.whole(2) ? n(.2) : 0, .25, eitherUnits(n),
                    flood, anyStart(n), out, storage, {});
         return out;
     }},
    {"PoolsAndDams", anyPool},
    {"NormalDepth",
     [](Numbers& n, const Values& flood) {
         EightPointSection section{n(.06), n(.03), n(.06), n(5000), n(.005), n(130), {}, {}};
         const Values x = n.rising(8, 40);
         std::copy(x.begin(), x.end(), section.x.begin());
         for (double& y : section.y)
             y = 100 + n(10);
         Values out(flood.size()), storage(flood.size()), elevation(flood.size());
         const auto table = normalDepthTable(section, eitherUnits(n));
         routeReach(reachRating(table, section.length, eitherUnits(n)), 3, 0, .25, eitherUnits(n), flood, anyStart(n),
                    out, storage, elevation);
         takePercolation(n(2), n(100), section.length, table, eitherUnits(n), out);
         const ChannelFlow channel(section, eitherUnits(n));
         routeMuskingumCunge(channel, section.length, section.slope, .25, out, {}, out);
         return out;
     }},
    {"MuskingumCunge",
     [](Numbers& n, const Values& flood) {
         const StandardChannel shape = anyChannel(n);
         Values out(flood.size());
         routeMuskingumCunge(ChannelFlow(shape, eitherUnits(n)), shape.length, shape.slope, .25, flood,
                             n.whole(2) ? flood : Values{}, out);
         return out;
     }},
    {"KinematicWave",
     [](Numbers& n, const Values& flood) {
         Values rain(flood.size()), out(flood.size());
         for (std::size_t i = 5; i < 15; ++i)
             rain[i] = n(.1);
         const std::vector<OverlandPlane> planes{{n(100), n(.01), n(.2), n(50), n.whole(20)}};
         const std::vector<SubbasinChannel> channels{{anyChannel(n), n(.1), n.whole(9), false},
                                                     {anyChannel(n), 0, n.whole(9), n.whole(2) == 1}};
         const std::vector<std::span<const double>> excess{rain};
         kinematicSubbasin(planes, excess, channels, n(1), .25, eitherUnits(n),
                           n.whole(2) ? std::span<const double>(flood) : std::span<const double>{}, out);
         return out;
     }},
    {"Storms",
     [](Numbers& n, const Values& flood) {
         Values out(flood.size());
         HypotheticalStorm storm{n(10), n(20), {}};
         double depth = 0;
         for (std::size_t i = 0; i < 8; ++i)
             storm.depths[i] = depth += std::abs(n(.5));
         ProbableMaximumStorm maximum{
             n(20), n(.8), n(100), n.whole(2) == 1, {n(80), n(300), n(1000), n(2000), n(3000), n(4000)}};
         switch (n.whole(4)) {
         case 0:
             hypotheticalStorm(storm, 5, eitherUnits(n), out);
             break;
         case 1:
             probableMaximumStorm(maximum, 15, eitherUnits(n), out);
             break;
         case 2:
             standardProjectStorm({n(10), n(.9), n(200), false}, 15, eitherUnits(n), out);
             break;
         default:
             rainFromMassCurve({n(60), n(15), flood}, 15, out);
         }
         return out;
     }},
    {"Diversions", [](Numbers& n, const Values& flood) {
         Values out(flood.size()), rest(flood.size());
         const Values in = n.rising(5, 200), away = n.rising(5, 100);
         divert({in, away, n(300), n(50)}, .25, eitherUnits(n), flood, out, rest);
         out.insert(out.end(), {greatestMean(rest, n(6), .25), depthAreaWeight(n(5), n(1), n(50))});
         return out;
     }}};

class AnyNumbers : public testing::TestWithParam<AnyMethod>
{
};

TEST_P(AnyNumbers, GiveNumbersOrARefusalInWords)
{
    int computed = 0;
    const Values calm = flood(120, 5, 900, 20);
    for (unsigned seed = 1; seed <= 400; ++seed) {
        Numbers numbers(seed);
        try {
            const Values out = GetParam().run(numbers, calm);
            ++computed;
            for (std::size_t i = 0; i < out.size(); ++i)
                ASSERT_TRUE(std::isfinite(out[i])) << "seed " << seed << ", element " << i << " of " << out.size();
        } catch (const std::invalid_argument& refusal) {
            EXPECT_GT(std::string(refusal.what()).size(), 15u) << refusal.what();
        }
    }
    EXPECT_GT(computed, 40); // the numbers are not so silly that nothing is ever computed
}

INSTANTIATE_TEST_SUITE_P(, AnyNumbers, testing::ValuesIn(kMethods), [](const auto& row) { return row.param.name; });

} // namespace
} // namespace hec1::methods::test
