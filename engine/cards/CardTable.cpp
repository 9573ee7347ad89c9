// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/cards/CardTable.h"

#include <algorithm>
#include <array>
#include <cstdint>

namespace hec1 {

namespace {

using enum CardRoom;
using enum CardUse;
using enum CardLayout;

constexpr std::string_view kValues = "nnnnnnnnnn";
constexpr std::string_view kWords = "wwwwwwwwww";
constexpr std::string_view kSnow = "SNOWMELT";
constexpr std::string_view kFit = "FITTING OF PARAMETERS TO AN OBSERVED HYDROGRAPH";
constexpr std::string_view kSizing = "OPTIMIZATION OF FLOOD-CONTROL COMPONENTS";
constexpr std::string_view kDamage = "ECONOMIC DAMAGE";
constexpr std::string_view kCosts = "COSTS OF COMPONENTS";
constexpr std::string_view kDss = "DATA STORAGE SYSTEM";

// clang-format off
constexpr std::array kCards{
    CardDef{"ID", Series,  Computed, Text,     "", "ITLS", ""},
    CardDef{"IT", Job,     Computed, Fields,   "ndtidti", "NMIN IDATE ITIME NQ NDDATE NDTIME ICENT", ""},
    CardDef{"IN", Series,  Computed, Fields,   "ndt", "JXMIN JXDATE JXTIME", ""},
    CardDef{"IO", Job,     Computed, Fields,   "iin", "IPRT IPLT QSCAL", ""},
    CardDef{"IM", Job,     Computed, Text,     "", "", ""},
    CardDef{"JP", Job,     Computed, Fields,   "i", "NPLAN", ""},
    CardDef{"JR", Job,     Computed, Fields,   "wnnnnnnnnn", "IRTIO RTIO RTIO RTIO RTIO RTIO RTIO RTIO RTIO RTIO", ""},
    CardDef{"JD", Job,     Computed, Fields,   "nn", "STRM TRDA", ""},
    CardDef{"OU", Series,  Refused,  Fields,   "ii", "IFORD ILORD", kFit},
    CardDef{"OR", Series,  Refused,  Fields,   "ii", "IFORD ILORD", kFit},
    CardDef{"OS", Series,  Refused,  Text,     "", "", kSizing},
    CardDef{"OO", Series,  Refused,  Text,     "", "", kSizing},
    CardDef{"VS", Series,  Warned,   Words,    kWords, "ISTA", "USER-DEFINED OUTPUT TABLE"},
    CardDef{"VV", Series,  Warned,   Words,    kWords, "LSUM", "USER-DEFINED OUTPUT TABLE"},
    CardDef{"KK", Series,  Computed, NameText, "w", "ISTAQ", ""},
    CardDef{"KM", Series,  Computed, Text,     "", "ITLS", ""},
    CardDef{"KO", Station, Computed, Fields,   "iiniiiin", "JPRT JPLT QSCAL IPNCH IOUT ISAV1 ISAV2 TIMINT", ""},
    CardDef{"KF", Series,  Warned,   Text,     "", "", "FORMAT OF PUNCHED HYDROGRAPHS"},
    CardDef{"KP", Station, Computed, Fields,   "i", "IPLN", ""},
    CardDef{"BA", Station, Computed, Fields,   "nnnw", "TAREA SNAP RATIO ISTAR", ""},
    CardDef{"BF", Station, Computed, Fields,   "nnn", "STRTQ QRCSN RTIOR", ""},
    CardDef{"BI", Station, Computed, Fields,   "wi", "ISTA IQIN", ""},
    CardDef{"QI", Station, Computed, Values,   kValues, "QI", ""},
    CardDef{"QO", Station, Computed, Values,   kValues, "QO", ""},
    CardDef{"QP", Station, Refused,  Text,     "", "", "LOCAL INFLOW FROM A PATTERN HYDROGRAPH"},
    CardDef{"QS", Station, Warned,   Values,   kValues, "QS", "OBSERVED STAGES"},
    CardDef{"PB", Station, Computed, Fields,   "n", "STORM", ""},
    CardDef{"PI", Series,  Computed, Values,   kValues, "PRCPR", ""},
    CardDef{"PC", Series,  Computed, Values,   kValues, "PRCPR", ""},
    CardDef{"PG", Series,  Computed, Fields,   "wnn", "ISTAN PRCPN ANAPN", ""},
    CardDef{"PH", Station, Computed, Fields,   kValues, "PFREQ TRSDA PNHR PNHR PNHR PNHR PNHR PNHR PNHR PNHR", ""},
    CardDef{"PM", Station, Computed, Fields,   "nnninnnnnn", "PMS TRSPC TRSDA SWD R6 R12 R24 R48 R72 R96", ""},
    CardDef{"PS", Station, Computed, Fields,   "nnni", "SPFE TRSPC TRSDA SWD", ""},
    CardDef{"PR", Station, Computed, Words,    kWords, "ISTAR", ""},
    CardDef{"PT", Station, Computed, Words,    kWords, "ISTAN", ""},
    CardDef{"PW", Station, Computed, Values,   kValues, "WTR", ""},
    CardDef{"HB", Station, Refused,  Text,     "", "", "BALANCING OF A HYDROGRAPH TO GIVEN VOLUMES"},
    CardDef{"HC", Station, Computed, Fields,   "in", "ICOMP TAREA", ""},
    CardDef{"HL", Station, Refused,  Text,     "", "", "LOCAL INFLOW FROM KNOWN FLOWS UP- AND DOWNSTREAM"},
    CardDef{"HQ", Station, Computed, Values,   kValues, "QRAT", ""},
    CardDef{"HE", Station, Computed, Values,   kValues, "ERAT", ""},
    CardDef{"HS", Station, Refused,  Text,     "", "", "STORAGE FROM KNOWN INFLOW AND OUTFLOW"},
    CardDef{"LU", Station, Computed, Fields,   "nnnnnn", "STRTL CNSTL RTIMP STRTL CNSTL RTIMP", ""},
    CardDef{"LS", Station, Computed, Fields,   "nnnnnn", "STRTL CRVNBR RTIMP STRTL CRVNBR RTIMP", ""},
    CardDef{"LE", Station, Computed, Fields,   kValues, "STRKR DLTKR RTIOL ERAIN RTIMP STRKR DLTKR RTIOL ERAIN RTIMP", ""},
    CardDef{"LM", Station, Refused,  Text,     "", "", kSnow},
    CardDef{"LH", Station, Computed, Fields,   kValues, "FC GIA SAI BEXP RTIMP FC GIA SAI BEXP RTIMP", ""},
    CardDef{"LG", Station, Computed, Fields,   kValues, "IA DTHETA PSIF XKSAT RTIMP IA DTHETA PSIF XKSAT RTIMP", ""},
    CardDef{"MA", Station, Refused,  Text,     "", "", kSnow},
    CardDef{"MC", Station, Refused,  Text,     "", "", kSnow},
    CardDef{"MD", Station, Refused,  Text,     "", "", kSnow},
    CardDef{"MS", Station, Refused,  Text,     "", "", kSnow},
    CardDef{"MT", Station, Refused,  Text,     "", "", kSnow},
    CardDef{"MW", Station, Refused,  Text,     "", "", kSnow},
    CardDef{"UI", Station, Computed, Values,   kValues, "QUNGR", ""},
    CardDef{"UC", Station, Computed, Fields,   "nn", "TC R", ""},
    CardDef{"UA", Station, Computed, Values,   kValues, "QCLK", ""},
    CardDef{"UD", Station, Computed, Fields,   "n", "TLAG", ""},
    CardDef{"US", Station, Computed, Fields,   "nn", "TP CP", ""},
    CardDef{"UK", Station, Computed, Fields,   "nnnni", "L S N A DXMIN", ""},
    CardDef{"RN", Station, Computed, Text,     "", "", ""},
    CardDef{"RL", Station, Computed, Fields,   "nnnn", "QLOSS CLOSS PERCRT ELVINV", ""},
    CardDef{"RD", Station, Computed, Fields,   "nnnnwnnw", "L S N CA SHAPE WD Z RUPSTQ", ""},
    CardDef{"RK", Station, Computed, Fields,   "nnnnwnnww", "L S N CA SHAPE WD Z RUPSTQ NDXMIN", ""},
    CardDef{"RM", Station, Computed, Fields,   "inn", "NSTPS AMSKK X", ""},
    CardDef{"RT", Station, Computed, Fields,   "iii", "NSTPS NSTDL LAG", ""},
    CardDef{"RS", Station, Computed, Fields,   "iwnn", "NSTPS ITYP RSVRIC X", ""},
    CardDef{"RC", Station, Computed, Fields,   "nnnnnn", "ANL ANCH ANR RLNTH SEL ELMAX", ""},
    CardDef{"RX", Station, Computed, Fields,   "nnnnnnnn", "X X X X X X X X", ""},
    CardDef{"RY", Station, Computed, Fields,   "nnnnnnnn", "Y Y Y Y Y Y Y Y", ""},
    CardDef{"SV", Station, Computed, Values,   kValues, "RCAP", ""},
    CardDef{"SA", Station, Computed, Values,   kValues, "RAREA", ""},
    CardDef{"SE", Station, Computed, Values,   kValues, "ELEV", ""},
    CardDef{"SQ", Station, Computed, Values,   kValues, "DISQ", ""},
    CardDef{"SL", Station, Computed, Fields,   "nnnn", "ELEVL CAREA COQL EXPL", ""},
    CardDef{"SS", Station, Computed, Fields,   "nnnn", "CREL SPWID COQW EXPW", ""},
    CardDef{"SG", Station, Refused,  Text,     "", "", "SPILLWAY RATING FROM TRAPEZOIDAL OR OGEE SHAPE"},
    CardDef{"SO", Station, Refused,  Text,     "", "", kSizing},
    CardDef{"ST", Station, Computed, Fields,   "nnnn", "TOPEL DAMWID COQD EXPD", ""},
    CardDef{"SW", Station, Computed, Values,   kValues, "WIDTH", ""},
    CardDef{"SB", Station, Computed, Fields,   "nnnnn", "ELBM BRWID Z TFAIL FAILEL", ""},
    CardDef{"SI", Station, Refused,  Text,     "", "", "THE MEANING OF THIS CARD"},
    CardDef{"SD", Series,  Warned,   Text,     "", "", kCosts},
    CardDef{"DR", Station, Computed, Fields,   "w", "ISTAD", ""},
    CardDef{"DT", Station, Computed, Fields,   "wnn", "ISTAD DSTRMX DVRSMX", ""},
    CardDef{"DI", Station, Computed, Values,   kValues, "DINFLO", ""},
    CardDef{"DQ", Station, Computed, Values,   kValues, "DIVFLO", ""},
    CardDef{"DO", Station, Refused,  Text,     "", "", kSizing},
    CardDef{"DC", Station, Warned,   Text,     "", "", kCosts},
    CardDef{"DD", Station, Warned,   Text,     "", "", kCosts},
    CardDef{"WP", Station, Computed, Fields,   "nnnw", "PMPON PUMPQ PMPOFF ISTAD", ""},
    CardDef{"WR", Station, Computed, Fields,   "w", "ISTAD", ""},
    CardDef{"WO", Station, Refused,  Text,     "", "", kSizing},
    CardDef{"WC", Station, Warned,   Text,     "", "", kCosts},
    CardDef{"WD", Station, Warned,   Text,     "", "", kCosts},
    CardDef{"EC", Economics, Warned, Text,     "", "", kDamage},
    CardDef{"CN", Economics, Warned, Text,     "", "", kDamage},
    CardDef{"PN", Economics, Warned, Text,     "", "", kDamage},
    CardDef{"WN", Economics, Warned, Text,     "", "", kDamage},
    CardDef{"TN", Economics, Warned, Text,     "", "", kDamage},
    CardDef{"WT", Economics, Warned, Text,     "", "", kDamage},
    CardDef{"FR", Economics, Warned, Text,     "", "", kDamage},
    CardDef{"QF", Economics, Warned, Text,     "", "", kDamage},
    CardDef{"SF", Economics, Warned, Text,     "", "", kDamage},
    CardDef{"QD", Economics, Warned, Text,     "", "", kDamage},
    CardDef{"DG", Economics, Warned, Text,     "", "", kDamage},
    CardDef{"EP", Economics, Warned, Text,     "", "", kDamage},
    CardDef{"LO", Series,  Refused,  Text,     "", "", kSizing},
    CardDef{"LC", Series,  Warned,   Text,     "", "", kCosts},
    CardDef{"LD", Series,  Warned,   Text,     "", "", kCosts},
    CardDef{"DU", Series,  Warned,   Text,     "", "", kDamage},
    CardDef{"DL", Series,  Warned,   Text,     "", "", kDamage},
    CardDef{"CP", Series,  Refused,  Text,     "", "", "THE MEANING OF THIS CARD"},
    CardDef{"TR", Series,  Refused,  Text,     "", "", "THE MEANING OF THIS CARD"},
    CardDef{"ZR", Series,  Refused,  Text,     "", "", kDss},
    CardDef{"ZW", Series,  Warned,   Text,     "", "", kDss},
    CardDef{"ZZ", End,     Computed, Text,     "", "", ""},
};
// clang-format on

constexpr std::size_t slotOf(char a, char b)
{
    return static_cast<std::size_t>(a - 'A') * 26 + static_cast<std::size_t>(b - 'A');
}

// Position of each pair of letters in the table, plus one; 0 where there is no card.
constexpr auto kSlots = [] {
    std::array<std::uint8_t, 26 * 26> slots{};
    for (std::size_t i = 0; i < kCards.size(); ++i)
        slots[slotOf(kCards[i].id[0], kCards[i].id[1])] = static_cast<std::uint8_t>(i + 1);
    return slots;
}();
static_assert(kCards.size() < 255);

} // namespace

std::span<const CardDef> cardTable()
{
    return kCards;
}

const CardDef* findCard(std::string_view id)
{
    if (id.size() != 2 || id[0] < 'A' || id[0] > 'Z' || id[1] < 'A' || id[1] > 'Z')
        return nullptr;
    const std::uint8_t slot = kSlots[slotOf(id[0], id[1])];
    return slot == 0 ? nullptr : &kCards[slot - 1u];
}

std::string_view fieldName(const CardDef& def, int field)
{
    std::string_view rest = def.names;
    for (int i = 1; !rest.empty(); ++i) {
        const std::size_t end = std::min(rest.find(' '), rest.size());
        if (i == field || (def.layout == CardLayout::Values && end == rest.size()))
            return rest.substr(0, end);
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
    return "FIELD";
}

} // namespace hec1
