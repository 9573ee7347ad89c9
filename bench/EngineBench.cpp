// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/Engine.h"
#include "engine/methods/Muskingum.h"
#include "engine/methods/Reservoir.h"
#include "engine/methods/StorageRouting.h"
#include "engine/methods/UnitGraphs.h"

#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

// The whole engine on a large network (chains of ten subbasins with SCS losses and unit graphs, Muskingum reaches
// between them and reservoirs at the end of some chains), beside the bare convolution and routing loops over the same
// numbers.

namespace {

struct Network
{
    int subbasins;
    int reservoirs;
    int ratios;
    int ordinates;
    int savedEvery; ///< every how many stations one saves its hydrographs; 0: none
};

constexpr int kChain = 10;
constexpr int kWetOrdinates = 289;

std::string padded(const std::string& text, std::size_t width)
{
    return std::string(text.size() < width ? width - text.size() : 0, ' ') + text;
}

std::string number(double value)
{
    char text[20];
    std::snprintf(text, sizeof text, "%.2f", value);
    return text;
}

class DeckWriter
{
public:
    explicit DeckWriter(const Network& network) : m_network(network) {}

    std::string deck()
    {
        m_text = "ID  A LARGE NETWORK\nIT     5 01JAN95    0000" + padded(std::to_string(m_network.ordinates), 8) +
                 "\nIO     5       0\n";
        if (m_network.ratios > 1) {
            m_text += "JR  PREC";
            for (int i = 0; i < m_network.ratios; ++i)
                m_text += padded(number(.4 + .12 * i), 8);
            m_text += "\n";
        }
        m_text += "IN    30 01JAN95    0000\n";
        for (int i = 0; i < m_network.subbasins; ++i)
            subbasin(i);
        return m_text + "ZZ\n";
    }

private:
    void station(const std::string& name)
    {
        m_text += "KK" + padded(name, 6) + "\n";
        if (m_network.savedEvery > 0 && m_stations++ % m_network.savedEvery == 0)
            m_text += "KO     0       0       0       0      21\n";
    }
    void subbasin(int i)
    {
        const std::string name = std::to_string(i);
        station("S" + name);
        m_text += "BA" + padded(number(.5 + i % 7 * .3), 6) + "\n";
        if (i == 0)
            m_text += "PB     6\nPC     0   0.011   0.022   0.035   0.048   0.063   0.080   0.098   0.120   0.147\n"
                      "PC 0.181   0.235   0.663   0.772   0.820   0.854   0.880   0.902   0.921   0.937\n"
                      "PC 0.952   0.965   0.978   0.989   1.000\n";
        m_text += "LS     0" + padded(std::to_string(70 + i % 20), 8) + padded(std::to_string(i % 9), 8) + "\nUD" +
                  padded(number(.5 + i % 11 * .2), 6) + "\n";
        if (i % kChain != 0) {
            station("C" + name);
            m_text += "HC     2\n";
        }
        if (i % kChain != kChain - 1) {
            station("R" + name);
            m_text += "RM     1" + padded(number(.3 + i % 5 * .1), 8) + "     0.2\n";
            return;
        }
        if (i / kChain < m_network.reservoirs) {
            station("D" + name);
            m_text +=
                "RS     1    STOR       0\nSV     0     100     300     700    1500    4000\n"
                "SQ     0     150     500    2000    7000   30000\nSE   100     104     108     112     116     120\n";
        }
        if (i >= kChain) {
            station("J" + name);
            m_text += "HC     2\n";
        }
    }

    const Network& m_network;
    std::string m_text;
    int m_stations = 0;
};

// The deck lies in a folder of its own, which is the current one as long as the object lives.
class BenchFolder
{
public:
    explicit BenchFolder(const Network& network)
        : m_before(std::filesystem::current_path()), m_folder(std::filesystem::temp_directory_path() / "hec1-bench")
    {
        std::filesystem::create_directories(m_folder);
        std::filesystem::current_path(m_folder);
        std::ofstream("deck.dat", std::ios::binary) << DeckWriter(network).deck();
    }
    ~BenchFolder()
    {
        std::error_code ignored;
        std::filesystem::current_path(m_before, ignored);
        std::filesystem::remove_all(m_folder, ignored);
    }
    BenchFolder(const BenchFolder&) = delete;
    BenchFolder& operator=(const BenchFolder&) = delete;

private:
    std::filesystem::path m_before, m_folder;
};

// The whole work of a run, from the deck's bytes to the last byte of report and TAPE21, inside this process: processor
// time tells it apart from whatever else the machine does.
void runEngine(benchmark::State& state, const Network& network)
{
    const BenchFolder folder(network);
    std::ostringstream talk;
    for (auto _ : state)
        if (hec1::computeDeck({"deck.dat", "deck.out", "", ""}, talk) != hec1::EngineEnd::Normal)
            state.SkipWithError("the engine did not end normally");
    const int links = network.subbasins - network.subbasins / kChain; // combinations and reaches inside the chains
    const int ends = network.reservoirs + network.subbasins / kChain - 1;
    state.counters["hydrographs"] = static_cast<double>((network.subbasins + 2 * links + ends) * network.ratios);
}

// Start of the program and all; the shell gives its place to the engine. Takes off what a program costs that does
// nothing: see startOnly.
void runProcess(benchmark::State& state, const Network& network)
{
    const BenchFolder folder(network);
    const std::string command = "exec \"" + std::string(KALVO_BIN_DIR) + "/hec1\" INPUT=deck.dat OUTPUT=deck.out";
    for (auto _ : state)
        if (std::system(command.c_str()) != 0)
            state.SkipWithError("the engine did not end normally");
}

void startOnly(benchmark::State& state)
{
    const std::string command = "exec \"" + std::string(KALVO_BIN_DIR) + "/hec1\" 2>/dev/null";
    for (auto _ : state)
        if (std::system(command.c_str()) == 0) // it has no deck and says so
            state.SkipWithError("a bad command line was taken");
}

void runArithmetic(benchmark::State& state, const Network& network)
{
    using namespace hec1::methods;
    const auto n = static_cast<std::size_t>(network.ordinates);
    const double hours = 5.0 / 60;
    std::vector<double> excess(kWetOrdinates, .01), flow(n), sum(n), storage(n);
    std::vector<std::vector<double>> graphs;
    for (int i = 0; i < network.subbasins; ++i)
        graphs.push_back(scsUnitGraph(.5 + i % 7 * .3, .5 + i % 11 * .2, hours, english(), n));
    const RatingTable rating{{}, {0, 100, 300, 700, 1500, 4000}, {0, 150, 500, 2000, 7000, 30000}, 6};
    const StorageIndication relation(rating, hours, english());
    for (auto _ : state)
        for (int ratio = 0; ratio < network.ratios; ++ratio)
            for (int i = 0; i < network.subbasins; ++i) {
                convolve(excess, graphs[static_cast<std::size_t>(i)], flow);
                for (std::size_t k = 0; k < n; ++k)
                    sum[k] = i % kChain == 0 ? flow[k] : sum[k] + flow[k];
                if (i % kChain != kChain - 1)
                    routeMuskingum(sum, sum, .3 + i % 5 * .1, .2, 1, hours);
                else if (i / kChain < network.reservoirs)
                    routePool(relation, sum, {}, sum, storage, {});
                benchmark::DoNotOptimize(sum.data());
            }
}

constexpr Network kLarge{1000, 20, 6, 2000, 50};
constexpr Network kLargeAllSaved{1000, 20, 6, 2000, 1};
constexpr Network kOneStorm{1000, 0, 1, 2000, 50};
constexpr Network kSmall{10, 0, 6, 300, 1};

} // namespace

// Ratios are to be taken between the processor times of one run: engine to bare, and a half to the whole.
BENCHMARK_CAPTURE(runArithmetic, large_bare, kLarge)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(runEngine, large, kLarge)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(runProcess, large, kLarge)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK_CAPTURE(runEngine, large_every_station_saved, kLargeAllSaved)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(runArithmetic, one_storm_bare, kOneStorm)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(runEngine, one_storm, kOneStorm)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(runProcess, one_storm, kOneStorm)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK_CAPTURE(runEngine, small, kSmall)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(runProcess, small, kSmall)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(startOnly)->Unit(benchmark::kMillisecond)->UseRealTime();
// Cost grows in a straight line with stations, ratios and ordinates.
BENCHMARK_CAPTURE(runEngine, half_the_subbasins, Network{500, 20, 6, 2000, 50})->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(runEngine, twice_the_subbasins, Network{2000, 20, 6, 2000, 50})->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(runEngine, half_the_ratios, Network{1000, 20, 3, 2000, 50})->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(runEngine, twice_the_ratios, Network{1000, 20, 12, 2000, 50})->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(runEngine, half_the_ordinates, Network{1000, 20, 6, 1000, 50})->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(runEngine, twice_the_ordinates, Network{1000, 20, 6, 4000, 50})->Unit(benchmark::kMillisecond);

BENCHMARK_MAIN();
