// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/methods/KinematicWave.h"

#include "engine/methods/Averages.h"
#include "tests/engine/methods/Compare.h"

namespace hec1::methods::test {
namespace {

constexpr UnitSystem kEnglish = english();

Values offPlane(const OverlandPlane& plane, double hours, const Values& excess)
{
    Values runoff(excess.size());
    overlandFlow(plane, hours, kEnglish, excess, runoff);
    return runoff;
}

// Steady excess i on a dry plane: q = a (i t)^(5/3) until the wave from the top arrives, then q = i L.
TEST(OverlandFlow, RisesAsTheClosedFormUntilEquilibrium)
{
    const OverlandPlane plane{300, .01, .2, 100, 5};
    const double minutes = 2, rate = 2.0 / 12 / 3600; // 2 in/h
    const double a = 1.486 * .1 / .2;
    const Values runoff = offPlane(plane, minutes / 60, Values(120, 2.0 * minutes / 60));
    const double equilibrium = std::pow(300 / (a * std::pow(rate, 2. / 3)), .6);
    EXPECT_EQ(runoff[0], 0);
    for (std::size_t i = 1; i < runoff.size(); ++i) {
        const double t = static_cast<double>(i) * minutes * 60;
        const double exact = t < equilibrium ? a * std::pow(rate * t, 5. / 3) : rate * 300;
        EXPECT_NEAR(runoff[i], exact, .01 * rate * 300) << "minute " << t / 60;
    }
    EXPECT_NEAR(runoff.back(), rate * 300, 1e-6 * rate * 300);
}

TEST(OverlandFlow, AllExcessRunsOff)
{
    Values excess(1500, 0.0);
    for (std::size_t i = 1; i < 120; ++i) // smooth: the volume is taken from ordinates
        excess[i] = .01 * std::pow(std::sin(static_cast<double>(i) * 3.14159 / 120), 2);
    const double depth = sum(excess) / 12; // ft
    for (const OverlandPlane& plane : {OverlandPlane{90, .015, .15, 100, 5}, OverlandPlane{210, .02, .3, 100, 5},
                                       OverlandPlane{1, .5, .02, 100, 5}, OverlandPlane{60, .03, .1, 100, 80}}) {
        const Values runoff = offPlane(plane, 2. / 60, excess);
        EXPECT_NEAR(trapezoidalMean(runoff) * 1499 * 120, depth * plane.length, .002 * depth * plane.length)
            << plane.length;
    }
}

TEST(KinematicChannel, WaveTravelsWithItsCelerityAndKeepsItsVolume)
{
    const StandardChannel shape{8000, .005, .03, ChannelShape::Trapezoid, 40, 2};
    const ChannelFlow channel(shape, kEnglish);
    const Values inflow = flood(400, 50, 900, 60);
    Values outflow(inflow.size());
    routeKinematicWave(channel, shape.length, 2, 5. / 60, inflow, {}, outflow);
    EXPECT_NEAR(trapezoidalMean(outflow), trapezoidalMean(inflow), .001 * trapezoidalMean(inflow));
    EXPECT_NEAR(outflow[peakIndex(outflow)], 900, 4); // a kinematic wave does not flatten
    const double minutes = 8000 / channel.celerity(channel.area(900)) / 60;
    EXPECT_NEAR(static_cast<double>(peakIndex(outflow) - 60) * 5, minutes, 5);
}

TEST(KinematicChannel, FinerStepsComeToTheSameFlood)
{
    const StandardChannel shape{3400, .007, .025, ChannelShape::Trapezoid, 6, 2};
    const ChannelFlow channel(shape, kEnglish);
    const Values inflow = flood(200, 5, 300, 30), lateral = flood(200, 0, 120, 25);
    Values coarse(200), fine(200);
    routeKinematicWave(channel, shape.length, 2, 5. / 60, inflow, lateral, coarse);
    routeKinematicWave(channel, shape.length, 200, 5. / 60, inflow, lateral, fine);
    EXPECT_LE(worstDeviation(coarse, fine).absolute, .01 * 420) << worstDeviation(coarse, fine).index;
    EXPECT_NEAR(trapezoidalMean(coarse), trapezoidalMean(inflow) + trapezoidalMean(lateral), .05);
}

TEST(KinematicChannel, SillyReachesGiveFiniteFlows)
{
    const Values inflow{0, 0, 1e6, 0, 0, 5, 1e-9, 0, 300, 0, 0, 0};
    for (const double length : {1e-3, 1.0, 1e4, 1e7})
        for (const double slope : {1e-7, .01, 3.0})
            for (const ChannelShape shape : {ChannelShape::Trapezoid, ChannelShape::Deep, ChannelShape::Circular}) {
                Values outflow(inflow.size());
                routeKinematicWave(ChannelFlow({length, slope, .03, shape, 5, 1}, kEnglish), length, 2, .5, inflow, {},
                                   outflow);
                for (const double q : outflow)
                    ASSERT_TRUE(q >= 0 && q <= 1.05e6) << length << " " << slope << " " << q;
            }
}

SubbasinChannel collector(double length, double area)
{
    return {{length, .012, .015, ChannelShape::Circular, 2.5, 0}, area, 2, false};
}

TEST(KinematicSubbasin, PlanesCollectorsAndMainChannelKeepTheVolume)
{
    const std::vector<OverlandPlane> planes{{90, .015, .15, 35, 5}, {210, .02, .3, 65, 5}};
    Values paved(500, 0.0), lawn(500, 0.0);
    for (std::size_t i = 5; i < 40; ++i) {
        paved[i] = .05;
        lawn[i] = i > 15 ? .02 : 0;
    }
    const std::vector<std::span<const double>> excess{paved, lawn};
    std::vector<SubbasinChannel> channels{collector(900, .06),
                                          {{3400, .007, .025, ChannelShape::Trapezoid, 6, 2}, 0, 2, false}};
    const double inches = .35 * sum(paved) + .65 * sum(lawn);
    const double cfsHours = inches * .55 * kEnglish.runoffFlow;
    const Values upstream = flood(500, 0, 100, 50);
    for (const bool cunge : {false, true}) {
        channels[1].muskingumCunge = cunge;
        Values flow(500);
        kinematicSubbasin(planes, excess, channels, .55, 5. / 60, kEnglish, {}, flow);
        EXPECT_NEAR(trapezoidalMean(flow) * 499 / 12, cfsHours, (cunge ? .02 : .003) * cfsHours) << cunge;
        Values with(500);
        kinematicSubbasin(planes, excess, channels, .55, 5. / 60, kEnglish, upstream, with);
        const double both = cfsHours + trapezoidalMean(upstream) * 499 / 12;
        EXPECT_NEAR(trapezoidalMean(with) * 499 / 12, both, (cunge ? .02 : .003) * both) << cunge;
    }
    Values flow(500);
    kinematicSubbasin(planes, excess, {}, .55, 5. / 60, kEnglish, {}, flow);
    EXPECT_NEAR(trapezoidalMean(flow) * 499 / 12, cfsHours, .003 * cfsHours);
    channels[0].contributingArea = 0;
    EXPECT_THROW(kinematicSubbasin(planes, excess, channels, .55, 5. / 60, kEnglish, {}, flow), std::invalid_argument);
}

} // namespace
} // namespace hec1::methods::test
