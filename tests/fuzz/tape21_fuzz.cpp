// SPDX-License-Identifier: GPL-3.0-or-later
// The readers of TAPE21 over any bytes: they end, keep their promises, and fill tables of a size that the bytes can pay
// for.
#include "run/IndexTable.h"
#include "run/Tape21Tables.h"

#include <cmath>
#include <cstdint>
#include <cstdlib>

using namespace kalvo;

namespace {

class Measure : public TextMeasure
{
public:
    int textWidth(const QString& text) const override { return static_cast<int>(text.size()); }
    QStringList fontNames() const override { return {}; }
};

void demand(bool held)
{
    if (!held)
        std::abort();
}

void check(const Tape21& tape, size_t bytes)
{
    size_t flows = 0;
    for (const HydrographRecord& record : tape.records) {
        const auto wanted = static_cast<size_t>(tape.stations[static_cast<size_t>(record.station)].header.ordinates);
        demand(record.isWhole ? record.flows.size() == wanted : tape.problem.has_value());
        demand(record.peak >= 0.0 && std::isfinite(record.peak));
        flows += record.flows.size();
    }
    demand(flows <= bytes);
    demand(tape.stations.size() <= static_cast<size_t>(tape.stationNames.size()));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    const Measure measure;
    ResultTables tables;
    Tape21 tape = readTape21(bytes);
    check(tape, size);
    fillTables(std::move(tape), tables, measure);

    FlexGrid hydrographs, peakRow, peakTable, index;
    ListModel list;
    RunCounts counts;
    Tape21 old = readOldTape21(bytes);
    check(old, size);
    fillOldForm(std::move(old), {hydrographs, peakRow, peakTable, list, counts});

    IndexLists lists;
    fillIndexTable(readTape21Index(bytes), index, &lists, counts);
    newGetGraphindex(index, 1, 1, 1, 1);
    return 0;
}
