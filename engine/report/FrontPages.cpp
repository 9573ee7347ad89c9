// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/report/FrontPages.h"

#include "engine/report/CardEcho.h"

#include <array>
#include <ctime>

namespace hec1 {

namespace {

constexpr std::size_t kCardsPerPage = 50;
constexpr std::size_t kBoxGap = 51;

std::string twoDigits(int value)
{
    return (value < 10 ? "0" : "") + std::to_string(value);
}

void writePageHeading(TextWriter& out, long page)
{
    out.text("1").spaces(55).text("HEC-1 INPUT").spaces(45).text("PAGE").integer(page, 3).line().line();
    out.line("   LINE      ID.......1.......2.......3.......4.......5.......6.......7.......8.......9......10");
    if (page > 1)
        out.line();
    out.line();
}

// Identifier, two blanks, then columns 3 to 80, so that each field ends below its digit in the ruler.
void writeImage(TextWriter& out, const Card& card)
{
    out.text(card.image.substr(0, 2));
    if (card.image.size() > 2)
        out.text(card.kind == LineKind::Card ? "  " : "").text(card.image.substr(2));
    out.line();
}

} // namespace

RunStamp runStampNow()
{
    constexpr std::array<const char*, 12> kMonths{"JAN", "FEB", "MAR", "APR", "MAY", "JUN",
                                                  "JUL", "AUG", "SEP", "OCT", "NOV", "DEC"};
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    if (const std::tm* broken = std::localtime(&now))
        local = *broken;
    return {twoDigits(local.tm_mday) + kMonths[static_cast<std::size_t>(local.tm_mon)] + twoDigits(local.tm_year % 100),
            twoDigits(local.tm_hour) + ":" + twoDigits(local.tm_min) + ":" + twoDigits(local.tm_sec)};
}

void writeBanner(TextWriter& out, const RunStamp& stamp, bool titlePage)
{
    const std::string stars(41, '*'), rightStars(39, '*');
    const auto row = [&](std::string_view left, std::string_view right) {
        out.text(" *").left(left, 39).text("*").spaces(kBoxGap).text("*").left(right, 37).text("*").line();
    };
    out.text("1").text(stars).spaces(kBoxGap).text(rightStars).line();
    row("", "");
    row("   FLOOD HYDROGRAPH PACKAGE  (HEC-1)", "   FLOOD HYDROGRAPH ENGINE hec1");
    row("             COMPATIBLE", "   AN INDEPENDENT PROGRAM THAT READS");
    row("            VERSION " + std::string(kEngineVersion), "   HEC-1 DECKS AND WRITES THE FILES");
    row("", "   THAT HEC-1 LEAVES");
    row(" RUN DATE  " + stamp.date + "  TIME  " + stamp.time, "   FREE SOFTWARE, GPL-3.0-OR-LATER");
    row("", "");
    out.text(" ").text(stars).spaces(kBoxGap).text(rightStars).line().line();
    if (!titlePage)
        return;
    constexpr std::array<std::string_view, 7> kLetters{
        "X     X  XXXXXXX   XXXXX            X  ", "X     X  X        X     X          XX  ",
        "X     X  X        X               X X  ", "XXXXXXX  XXXXX    X       XXXXX     X  ",
        "X     X  X        X                 X  ", "X     X  X        X     X           X  ",
        "X     X  XXXXXXX   XXXXX          XXXXX"};
    for (const std::string_view letters : kLetters)
        out.spaces(47).text(letters).line();
    out.line().line();
}

void writeInputListing(TextWriter& out, const std::vector<Card>& cards)
{
    std::size_t onPage = 0;
    long page = 1;
    writePageHeading(out, page);
    for (const Card& card : cards) {
        if (!card.listed)
            continue;
        if (onPage == kCardsPerPage) {
            writePageHeading(out, ++page);
            onPage = 0;
        }
        if (card.is("KK") && onPage > 0)
            out.line();
        if (card.kind == LineKind::Card)
            out.integer(card.number, 7).spaces(6);
        else
            out.spaces(13);
        writeImage(out, card);
        ++onPage;
    }
}

void writeDiagram(TextWriter& out, const Job& job)
{
    constexpr std::size_t kSlot = 12, kFirst = 6;
    out.line("1");
    out.line("               SCHEMATIC DIAGRAM OF STREAM NETWORK");
    out.line(" INPUT");
    out.line("  LINE     (V) ROUTING         (--->) DIVERSION OR PUMP FLOW").line();
    out.line("   NO.     (.) CONNECTOR       (<---) RETURN OF DIVERTED OR PUMPED FLOW").line().line();
    std::size_t waiting = 0;
    const auto connectors = [&](std::size_t count, char last) {
        std::string line(kFirst, ' ');
        for (std::size_t i = 0; i < count; ++i)
            line += std::string(7, ' ') + (i + 1 == count ? last : '.') + std::string(kSlot - 8, ' ');
        out.line(line.substr(0, line.find_last_not_of(' ') + 1));
    };
    const auto row = [&](long number, std::size_t slot, std::string_view name) {
        out.integer(number, 6);
        for (std::size_t i = 0; i < slot; ++i)
            out.text("       .    ");
        const std::size_t lead = name.size() < 8 ? (8 - name.size()) / 2 : 0;
        out.spaces(4 + lead).text(name);
    };
    for (const Station& station : job.stations) {
        const Step& step = *station.plans.front();
        const long number = station.kk->number;
        if (const auto* runoff = std::get_if<RunoffInput>(&step.what); runoff && runoff->takesUpstream) {
            connectors(waiting, 'V');
            connectors(waiting, 'V');
            row(number, waiting - 1, station.name);
            out.line(" ***");
        } else if (const auto* retrieval = std::get_if<Retrieval>(&step.what)) {
            ++waiting;
            row(number, waiting - 1, station.name);
            out.text(" <------- ").text(retrieval->name).line();
        } else if (std::holds_alternative<RunoffInput>(step.what) || std::holds_alternative<GivenFlow>(step.what) ||
                   std::holds_alternative<ScaledCopy>(step.what)) {
            if (waiting > 0)
                connectors(waiting, '.');
            row(number, waiting, station.name);
            out.line();
            ++waiting;
        } else if (std::holds_alternative<Routing>(step.what) && waiting > 0) {
            connectors(waiting, 'V');
            connectors(waiting, 'V');
            row(number, waiting - 1, station.name);
            out.line();
        } else if (const auto* diversion = std::get_if<Diversion>(&step.what); diversion && waiting > 0) {
            connectors(waiting, '.');
            out.integer(step.card->number, 6);
            for (std::size_t i = 0; i + 1 < waiting; ++i)
                out.text("       .    ");
            out.text("       .------->   ").text(diversion->name).line();
            row(number, waiting - 1, station.name);
            out.line();
        } else if (const auto* combination = std::get_if<Combination>(&step.what);
                   combination && waiting >= static_cast<std::size_t>(combination->count)) {
            connectors(waiting, '.');
            connectors(waiting, '.');
            waiting -= static_cast<std::size_t>(combination->count) - 1;
            row(number, waiting - 1, station.name);
            const std::size_t rest = (8 - std::min<std::size_t>(8, station.name.size()) + 1) / 2;
            out.text(std::string((static_cast<std::size_t>(combination->count) - 1) * kSlot - 4 + rest, '.')).line();
        }
    }
    out.line().line("(***) RUNOFF ALSO COMPUTED AT THIS LOCATION").line();
    if (waiting > 1)
        out.integer(static_cast<long>(waiting) - 1, 5).line(" ERRORS IN STREAM SYSTEM").line();
}

namespace {

void writeTimeData(TextWriter& out, const Job& job)
{
    const RunTime& time = job.time;
    const long end = static_cast<long>(time.ordinates - 1) * time.minutes;
    out.integer(job.timeCard->number, 5).line(" IT          HYDROGRAPH TIME DATA");
    echoLine(out, "NMIN", std::to_string(time.minutes), "MINUTES IN COMPUTATION INTERVAL");
    echoLine(out, "IDATE", time.clock.date(0), "STARTING DATE");
    echoLine(out, "ITIME", time.clock.timeOfDay(0), "STARTING TIME");
    echoLine(out, "NQ", std::to_string(time.ordinates), "NUMBER OF HYDROGRAPH ORDINATES");
    echoLine(out, "NDDATE", time.clock.date(end), "ENDING DATE");
    echoLine(out, "NDTIME", time.clock.timeOfDay(end), "ENDING TIME");
    echoLine(out, "ICENT", std::to_string(time.century), "CENTURY MARK");
    out.line();
    out.spaces(17).text("COMPUTATION INTERVAL").fixed(time.hours(), 7, 2).line(" HOURS");
    out.spaces(17).text("     TOTAL TIME BASE").fixed(static_cast<double>(end) / 60, 7, 2).line(" HOURS").line();
}

void writeUnits(TextWriter& out, bool metric)
{
    constexpr std::array<std::string_view, 7> kWhat{"DRAINAGE AREA", "PRECIPITATION DEPTH", "LENGTH, ELEVATION",
                                                    "FLOW",          "STORAGE VOLUME",      "SURFACE AREA",
                                                    "TEMPERATURE"};
    constexpr std::array<std::string_view, 7> kEnglish{
        "SQUARE MILES", "INCHES", "FEET", "CUBIC FEET PER SECOND", "ACRE-FEET", "ACRES", "DEGREES FAHRENHEIT"};
    constexpr std::array<std::string_view, 7> kMetric{
        "SQUARE KILOMETERS", "MILLIMETERS",        "METERS",         "CUBIC METERS PER SECOND",
        "1000 CUBIC METERS", "1000 SQUARE METERS", "DEGREES CELSIUS"};
    out.line(metric ? "          METRIC UNITS" : "          ENGLISH UNITS");
    for (std::size_t i = 0; i < kWhat.size(); ++i)
        out.spaces(15).left(kWhat[i], 22).line(metric ? kMetric[i] : kEnglish[i]);
    out.line();
}

void writeStorms(TextWriter& out, const Job& job)
{
    for (std::size_t k = 0; k < job.storms.size(); ++k) {
        const IndexStorm& storm = job.storms[k];
        out.integer(storm.card->number, 5).text(" JD          INDEX STORM NO.").integer(static_cast<long>(k) + 1, 3);
        out.line();
        echoLine(out, "STRM", fixedText(storm.depth, 2), "PRECIPITATION DEPTH");
        echoLine(out, "TRDA", fixedText(storm.area, 2), "TRANSPOSITION DRAINAGE AREA");
        out.line();
        if (k > 0 && storm.rain.shape == job.storms[k - 1].rain.shape)
            continue;
        out.line("              PRECIPITATION PATTERN");
        writePattern(out, storm.rain);
        out.line();
    }
}

} // namespace

void writeJobData(TextWriter& out, const Job& job, const RunStamp& stamp)
{
    writeBanner(out, stamp, false);
    for (const std::string& title : job.titles)
        out.spaces(15).text(trimmed(title)).line();
    out.line();
    if (job.printCard != nullptr)
        out.integer(job.printCard->number, 5).line(" IO          OUTPUT CONTROL VARIABLES");
    else
        out.line("     IO          OUTPUT CONTROL VARIABLES");
    echoLine(out, "IPRNT", std::to_string(job.print.level), "PRINT CONTROL");
    echoLine(out, "IPLOT", std::to_string(job.print.plot), "PLOT CONTROL");
    echoLine(out, "QSCAL", fixedText(job.print.plotScale, 0), "HYDROGRAPH PLOT SCALE");
    out.line();
    writeTimeData(out, job);
    writeUnits(out, job.units.metric);
    if (job.planCard != nullptr) {
        out.integer(job.planCard->number, 5).line(" JP          MULTI-PLAN OPTION");
        echoLine(out, "NPLAN", std::to_string(job.planCount), "NUMBER OF PLANS");
        out.line();
    }
    if (job.ratioCard != nullptr) {
        out.integer(job.ratioCard->number, 5).line(" JR          MULTI-RATIO OPTION");
        out.line(job.ratiosOnRain ? "                    RATIOS OF PRECIPITATION"
                                  : "                    RATIOS OF RUNOFF");
        for (std::size_t i = 0; i < job.ratios.size(); ++i) {
            if (i % 10 == 0)
                out.spaces(12);
            out.fixed(job.ratios[i], 8, 2);
            if (i % 10 == 9 || i + 1 == job.ratios.size())
                out.line();
        }
        out.line();
    }
    writeStorms(out, job);
}

} // namespace hec1
