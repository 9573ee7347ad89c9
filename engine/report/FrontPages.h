// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "engine/cards/CardReader.h"
#include "engine/files/TextWriter.h"
#include "engine/network/JobModel.h"

#include <string>

namespace hec1 {

/// Version of the engine as the banner shows it.
inline constexpr std::string_view kEngineVersion = "1.0";

/// Date and time of the run as the banner prints them: "15JUN98" and "10:21:38".
struct RunStamp
{
    std::string date;
    std::string time;
};
RunStamp runStampNow();

/// The title page. Readers rely on its seventh line: RUN DATE, and from its position 29 on the time.
void writeBanner(TextWriter& out, const RunStamp& stamp, bool titlePage);

/// The numbered listing of the cards, in pages. From page 2 on one more empty line stands under the ruler: readers that
/// take page headings out of a report delete five lines from each.
void writeInputListing(TextWriter& out, const std::vector<Card>& cards);

/// *DIAGRAM: the stream network as the stack of hydrographs shows it.
void writeDiagram(TextWriter& out, const Job& job);

/// The page with titles, output control, time data and units.
void writeJobData(TextWriter& out, const Job& job, const RunStamp& stamp);

} // namespace hec1
