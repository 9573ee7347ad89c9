// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/report/CardEcho.h"

#include <array>
#include <cmath>
#include <string>

namespace hec1 {

namespace {

// Title of a card and what its variables are; decimals with which a variable is printed stand behind a slash.
struct EchoDef
{
    std::string_view id;
    std::string_view title;
    std::string_view variables; ///< "NAME/decimals description;" for each field; w instead of decimals: a word
};

constexpr std::array kEchoes{
    EchoDef{"IN", "TIME DATA FOR INPUT TIME SERIES",
            "JXMIN/0 TIME INTERVAL IN MINUTES;JXDATE/w STARTING DATE;JXTIME/w STARTING TIME;"},
    EchoDef{"BA", "SUBBASIN CHARACTERISTICS",
            "TAREA/2 SUBBASIN AREA;SNAP/2 NORMAL ANNUAL PRECIPITATION;RATIO/3 RATIO TO ANOTHER HYDROGRAPH;ISTAR/w "
            "STATION OF THAT HYDROGRAPH;"},
    EchoDef{"BF", "BASE FLOW CHARACTERISTICS",
            "STRTQ/2 INITIAL FLOW;QRCSN/2 BEGIN BASE FLOW RECESSION;RTIOR/5 RECESSION CONSTANT;"},
    EchoDef{"BI", "HYDROGRAPH FROM AN EARLIER JOB", "ISTA/w STATION;IQIN/0 UNIT;"},
    EchoDef{"PB", "", "STORM/2 BASIN TOTAL PRECIPITATION;"},
    EchoDef{"PG", "PRECIPITATION GAGE",
            "ISTAN/w STATION;PRCPN/2 TOTAL STORM PRECIPITATION;ANAPN/2 NORMAL ANNUAL PRECIPITATION;"},
    EchoDef{"PM", "PROBABLE MAXIMUM STORM",
            "PMS/2 INDEX PRECIPITATION;TRSPC/3 TRANSPOSITION COEFFICIENT;TRSDA/2 TRANSPOSITION AREA;SWD/0 DISTRIBUTION "
            "SWITCH;R6/1 LARGEST 6 HOURS IN PERCENT;R12/1 LARGEST 12 HOURS;R24/1 LARGEST 24 HOURS;R48/1 LARGEST 48 "
            "HOURS;R72/1 LARGEST 72 HOURS;R96/1 LARGEST 96 HOURS;"},
    EchoDef{
        "PS", "STANDARD PROJECT STORM",
        "SPFE/2 INDEX PRECIPITATION;TRSPC/3 TRANSPOSITION COEFFICIENT;TRSDA/2 TRANSPOSITION AREA;SWD/0 DISTRIBUTION "
        "SWITCH;"},
    EchoDef{
        "LU", "UNIFORM LOSS RATE",
        "STRTL/2 INITIAL LOSS;CNSTL/2 UNIFORM LOSS RATE;RTIMP/2 PERCENT IMPERVIOUS AREA;STRTL/2 SECOND PLANE, INITIAL "
        "LOSS;CNSTL/2 UNIFORM LOSS RATE;RTIMP/2 PERCENT IMPERVIOUS AREA;"},
    EchoDef{"LS", "SCS LOSS RATE",
            "STRTL/2 INITIAL ABSTRACTION;CRVNBR/2 CURVE NUMBER;RTIMP/2 PERCENT IMPERVIOUS AREA;STRTL/2 SECOND PLANE, "
            "INITIAL "
            "ABSTRACTION;CRVNBR/2 CURVE NUMBER;RTIMP/2 PERCENT IMPERVIOUS AREA;"},
    EchoDef{"LE", "EXPONENTIAL LOSS RATE",
            "STRKR/2 INITIAL VALUE OF LOSS COEFFICIENT;DLTKR/2 INITIAL LOSS;RTIOL/2 LOSS COEFFICIENT RECESSION "
            "CONSTANT;ERAIN/2 EXPONENT OF PRECIPITATION;RTIMP/2 PERCENT IMPERVIOUS AREA;STRKR/2 SECOND "
            "PLANE;DLTKR/2 INITIAL LOSS;RTIOL/2 RECESSION CONSTANT;ERAIN/2 EXPONENT;RTIMP/2 PERCENT IMPERVIOUS AREA;"},
    EchoDef{"LH", "HOLTAN LOSS RATE",
            "FC/2 INFILTRATION RATE;GIA/2 INFILTRATION COEFFICIENT;SAI/2 INITIAL STORAGE;BEXP/2 EXPONENT OF "
            "STORAGE;RTIMP/2 PERCENT IMPERVIOUS AREA;FC/2 SECOND PLANE;GIA/2 INFILTRATION COEFFICIENT;SAI/2 INITIAL "
            "STORAGE;BEXP/2 EXPONENT;RTIMP/2 PERCENT IMPERVIOUS AREA;"},
    EchoDef{"LG", "GREEN AND AMPT LOSS RATE",
            "STRTL/2 STARTING LOSS;DTH/2 MOISTURE DEFICIT;PSIF/2 WETTING FRONT SUCTION;XKSAT/2 HYDRAULIC "
            "CONDUCTIVITY;RTIMP/2 PERCENT IMPERVIOUS AREA;STRTL/2 SECOND PLANE, STARTING LOSS;DTH/2 MOISTURE "
            "DEFICIT;PSIF/2 WETTING FRONT SUCTION;XKSAT/2 HYDRAULIC CONDUCTIVITY;RTIMP/2 PERCENT IMPERVIOUS AREA;"},
    EchoDef{"UD", "SCS DIMENSIONLESS UNITGRAPH", "TLAG/2 LAG;"},
    EchoDef{"UC", "CLARK UNITGRAPH", "TC/2 TIME OF CONCENTRATION;R/2 STORAGE COEFFICIENT;"},
    EchoDef{"US", "SNYDER UNITGRAPH", "TP/2 LAG;CP/2 PEAKING COEFFICIENT;"},
    EchoDef{"UI", "INPUT UNITGRAPH", ""},
    EchoDef{"UA", "ACCUMULATED-AREA VS. TIME", ""},
    EchoDef{
        "UK", "KINEMATIC WAVE OVERLAND-FLOW ELEMENT",
        "L/0 OVERLAND FLOW LENGTH;S/4 SLOPE;N/3 ROUGHNESS COEFFICIENT;PA/1 PERCENT OF SUBBASIN;DXMIN/0 MINIMUM NUMBER "
        "OF DX INTERVALS;"},
    EchoDef{"RK", "KINEMATIC WAVE CHANNEL",
            "L/0 CHANNEL LENGTH;S/4 SLOPE;N/3 CHANNEL ROUGHNESS COEFFICIENT;CA/2 CONTRIBUTING AREA;SHAPE/w CHANNEL "
            "SHAPE;WD/2 BOTTOM WIDTH OR DIAMETER;Z/2 SIDE SLOPE;RUPSTQ/w ROUTE UPSTREAM HYDROGRAPH;NDXMIN/w MINIMUM "
            "NUMBER OF DX INTERVALS;"},
    EchoDef{"RD", "MUSKINGUM-CUNGE CHANNEL ROUTING",
            "L/0 CHANNEL LENGTH;S/4 SLOPE;N/3 CHANNEL ROUGHNESS COEFFICIENT;CA/2 CONTRIBUTING AREA;SHAPE/w CHANNEL "
            "SHAPE;WD/2 BOTTOM WIDTH OR DIAMETER;Z/2 SIDE SLOPE;RUPSTQ/w ROUTE UPSTREAM HYDROGRAPH;"},
    EchoDef{"RN", "NO ROUTING", ""},
    EchoDef{"RL", "CHANNEL LOSSES",
            "QLOSS/2 CONSTANT LOSS;CLOSS/3 RATIO OF REMAINING FLOW LOST;PERCRT/4 PERCOLATION RATE;ELVINV/2 AVERAGE "
            "INVERT ELEVATION;"},
    EchoDef{"RM", "MUSKINGUM ROUTING", "NSTPS/0 NUMBER OF SUBREACHES;AMSKK/2 MUSKINGUM K;X/2 MUSKINGUM X;"},
    EchoDef{"RT", "STRADDLE-STAGGER ROUTING",
            "NSTPS/0 NUMBER OF STEPS;NSTDL/0 NUMBER OF ORDINATES AVERAGED;LAG/0 LAG IN INTERVALS;"},
    EchoDef{
        "RS", "STORAGE ROUTING",
        "NSTPS/0 NUMBER OF SUBREACHES;ITYP/w TYPE OF INITIAL CONDITION;RSVRIC/2 INITIAL CONDITION;X/2 WORKING R AND D "
        "COEFFICIENT;"},
    EchoDef{"RC", "NORMAL DEPTH CHANNEL",
            "ANL/3 LEFT OVERBANK N-VALUE;ANCH/3 MAIN CHANNEL N-VALUE;ANR/3 RIGHT OVERBANK N-VALUE;RLNTH/0 REACH "
            "LENGTH;SEL/4 ENERGY SLOPE;ELMAX/2 MAX. ELEV. FOR STORAGE/OUTFLOW CALCULATION;"},
    EchoDef{"RX", "DISTANCE", ""},
    EchoDef{"RY", "ELEVATION", ""},
    EchoDef{"SV", "STORAGE", ""},
    EchoDef{"SA", "AREA", ""},
    EchoDef{"SE", "ELEVATION", ""},
    EchoDef{"SQ", "DISCHARGE", ""},
    EchoDef{"SW", "CREST LENGTH", ""},
    EchoDef{"SL", "LOW-LEVEL OUTLET",
            "ELEVL/2 ELEVATION AT CENTER OF OUTLET;CAREA/2 CROSS-SECTIONAL AREA;COQL/2 COEFFICIENT;EXPL/2 EXPONENT OF "
            "HEAD;"},
    EchoDef{"SS", "SPILLWAY",
            "CREL/2 SPILLWAY CREST ELEVATION;SPWID/2 SPILLWAY WIDTH;COQW/2 WEIR COEFFICIENT;EXPW/2 EXPONENT OF HEAD;"},
    EchoDef{"ST", "TOP OF DAM",
            "TOPEL/2 ELEVATION AT TOP OF DAM;DAMWID/2 DAM WIDTH;COQD/2 WEIR COEFFICIENT;EXPD/2 EXPONENT OF HEAD;"},
    EchoDef{
        "SB", "DAM-BREACH DATA",
        "ELBM/2 ELEVATION AT BOTTOM OF BREACH;BRWID/2 WIDTH OF BREACH BOTTOM;Z/2 BREACH SIDE SLOPE;TFAIL/2 TIME FOR "
        "BREACH TO DEVELOP;FAILEL/2 W.S. ELEVATION TO TRIGGER FAILURE;"},
    EchoDef{"WP", "PUMP",
            "PMPON/2 ELEVATION AT WHICH PUMP IS TURNED ON;PUMPQ/2 PUMP DISCHARGE;PMPOFF/2 ELEVATION AT WHICH PUMP IS "
            "TURNED OFF;ISTAD/w PUMPED HYDROGRAPH IDENTIFICATION;"},
    EchoDef{"WR", "RETRIEVE PUMPED HYDROGRAPH", "ISTAD/w PUMPED HYDROGRAPH IDENTIFICATION;"},
    EchoDef{"HC", "HYDROGRAPH COMBINATION",
            "ICOMP/0 NUMBER OF HYDROGRAPHS TO COMBINE;TAREA/2 AREA OF THE COMBINED HYDROGRAPH;"},
    EchoDef{"HQ", "RATING, FLOW", ""},
    EchoDef{"HE", "RATING, STAGE", ""},
    EchoDef{
        "DT", "DIVERSION",
        "ISTAD/w DIVERSION HYDROGRAPH IDENTIFICATION;DSTRMX/2 MAXIMUM VOLUME TO BE DIVERTED;DVRSMX/2 MAXIMUM RATE OF "
        "DIVERSION;"},
    EchoDef{"DI", "INFLOW", ""},
    EchoDef{"DQ", "DIVERTED FLOW", ""},
    EchoDef{"DR", "RETRIEVE DIVERSION HYDROGRAPH", "ISTAD/w DIVERSION HYDROGRAPH IDENTIFICATION;"},
    EchoDef{"QI", "GIVEN HYDROGRAPH", ""},
    EchoDef{"QO", "OBSERVED HYDROGRAPH", ""},
    EchoDef{"PI", "INCREMENTAL PRECIPITATION PATTERN", ""},
    EchoDef{"PC", "CUMULATIVE PRECIPITATION PATTERN", ""},
    EchoDef{"PW", "WEIGHTS OF THE GAGES", ""},
    EchoDef{"PR", "RECORDING STATIONS", ""},
    EchoDef{"PT", "TOTAL STORM STATIONS", ""},
};

const EchoDef* findEcho(std::string_view id)
{
    for (const EchoDef& echo : kEchoes)
        if (echo.id == id)
            return &echo;
    return nullptr;
}

constexpr std::array<std::string_view, 12> kDurations{"5-MIN", "15-MIN", "60-MIN", "2-HR",  "3-HR",  "6-HR",
                                                      "12-HR", "24-HR",  "2-DAY",  "4-DAY", "7-DAY", "10-DAY"};

// What LS takes when its field is blank: a fifth of the retention (NEH-630, chapter 10).
double initialAbstraction(double curveNumber, bool metric)
{
    return curveNumber > 0 ? .2 * ((metric ? 25400 : 1000) / curveNumber - (metric ? 254 : 10)) : 0;
}

// Counts are written without a point; a length that is no whole number keeps its decimals.
std::string wholeText(double value)
{
    constexpr double kLongest = 1e15;
    if (value != std::floor(value) || std::fabs(value) > kLongest)
        return fixedText(value, 2);
    return std::to_string(static_cast<long long>(value));
}

void echoHypothetical(std::span<const Card* const> cards, TextWriter& out)
{
    const Card& first = *cards.front();
    out.integer(first.number, 5).text(" PH          DEPTHS FOR ").text(fixedText(first.value(1), 0));
    out.line("-PERCENT HYPOTHETICAL STORM");
    out.spaces(16);
    for (const std::string_view duration : kDurations)
        out.right(duration, 8);
    out.line().spaces(16);
    for (int field = 3; field <= 10; ++field)
        out.fixed(first.value(field), 8, 2);
    for (int field = 1; field <= 4; ++field)
        out.fixed(cards.size() > 1 ? cards[1]->value(field) : 0, 8, 2);
    out.line().line().spaces(20).text("STORM AREA =").fixed(first.value(2), 10, 2).line();
}

void echoTable(std::span<const Card* const> cards, std::string_view title, bool words, TextWriter& out)
{
    constexpr std::size_t kPerLine = 10, kTitleWidth = 18;
    std::size_t written = 0;
    for (const Card* card : cards)
        for (int field = 1; field <= card->count; ++field) {
            if (written % kPerLine == 0) {
                if (written == 0 && title.size() > kTitleWidth)
                    out.integer(card->number, 5).text(" ").text(card->id).spaces(8).line(title).spaces(31);
                else if (written == 0)
                    out.integer(card->number, 5).text(" ").text(card->id).spaces(5).right(title, kTitleWidth);
                else
                    out.line().spaces(31);
            }
            if (words)
                out.right(card->word(field), 10);
            else
                out.fixed(card->value(field), 10, 2);
            ++written;
        }
    if (written > 0)
        out.line();
}

} // namespace

void echoLine(TextWriter& out, std::string_view name, std::string_view value, std::string_view description)
{
    out.spaces(12).right(name, 13).right(value, 12).text("  ").text(description).line();
}

void writePattern(TextWriter& out, const RainInput& rain)
{
    for (std::size_t i = 0; i < rain.wet; ++i) {
        if (i % 10 == 0)
            out.spaces(13);
        out.fixed((*rain.shape)[i], 8, 3);
        if (i % 10 == 9 || i + 1 == rain.wet)
            out.line();
    }
}

std::size_t echoCards(std::span<const Card* const> cards, std::size_t at, bool metric, TextWriter& out)
{
    const Card& card = *cards[at];
    std::size_t end = at + 1;
    const bool runsOn =
        card.def->layout == CardLayout::Values || card.def->layout == CardLayout::Words || card.is("PH");
    while (runsOn && end < cards.size() && cards[end]->id == card.id)
        ++end;
    if (card.is("PH")) {
        echoHypothetical(cards.subspan(at, end - at), out);
        return end - at;
    }
    const EchoDef* echo = findEcho(card.id);
    if (echo == nullptr)
        return 0;
    if (runsOn || card.is("RX") || card.is("RY")) {
        echoTable(cards.subspan(at, end - at), echo->title, card.def->layout == CardLayout::Words, out);
        return end - at;
    }
    out.integer(card.number, 5).text(" ").text(card.id).spaces(8).text(echo->title);
    if (!echo->title.empty())
        out.line();
    bool first = echo->title.empty();
    std::string_view rest = echo->variables;
    for (int field = 1; !rest.empty(); ++field) {
        const std::size_t slash = rest.find('/'), semicolon = rest.find(';');
        const std::string_view name = rest.substr(0, slash), text = rest.substr(slash + 3, semicolon - slash - 3);
        const char form = rest[slash + 1];
        rest.remove_prefix(semicolon + 1);
        if (field > card.count)
            break;
        const bool abstraction = card.is("LS") && name == "STRTL" && card.value(field) == 0;
        const std::string value = abstraction   ? fixedText(initialAbstraction(card.value(field + 1), metric), 2)
                                  : form == 'w' ? std::string(card.word(field))
                                  : form == '0' ? wholeText(card.value(field))
                                                : fixedText(card.value(field), form - '0');
        if (first)
            out.right(name, 9).right(value, 12).text("  ").text(text).line();
        else
            echoLine(out, name, value, text);
        first = false;
    }
    if (first)
        out.line();
    return 1;
}

} // namespace hec1
