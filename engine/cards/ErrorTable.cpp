// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/cards/ErrorTable.h"

#include <array>

namespace hec1 {

namespace {

using enum ErrorNumber;

constexpr std::array kErrors{
    ErrorText{
        UnknownCard, "UNKNOWN CARD IDENTIFIER",
        "Columns 1 and 2 hold letters that are not a card, often because a field has slipped into column 2 or text "
        "stands without the sign of a comment.",
        "Correct the identifier or move the text to its columns; a comment begins with an asterisk and a blank."},
    ErrorText{
        CardOutOfOrder, "CARD OUT OF ORDER",
        "The card is known but cannot stand here, for example a BA card ahead of the first KK or a JR card behind "
        "it.",
        "Put job cards ahead of the first KK, computation cards inside a KK group and each table card behind the "
        "card that it belongs to."},
    ErrorText{TooManyOrdinates, "TOO MANY HYDROGRAPH ORDINATES",
              "NQ of the IT card, or the time between its two dates, comes to more than 9999 ordinates.",
              "Lower NQ or use a longer interval."},
    ErrorText{TimeData, "TIME DATA MISSING OR WRONG",
              "NMIN is zero, negative or not whole, or the ending time is not later than the starting time while NQ is "
              "blank.",
              "Give NMIN and NQ, or correct the dates."},
    ErrorText{TooManyPlansOrRatios, "TOO MANY PLANS, RATIOS OR INDEX STORMS",
              "More than 9 plans (JP), 99 ratios (JR) or 9 index storms (JD) are asked for.",
              "Cut their number or split the job."},
    ErrorText{TooManyValues, "TOO MANY VALUES",
              "A card has more fields than it can hold, or a table more values than its kind allows.",
              "Thin out the table, or look for a blank that parts one number into two in free format."},
    ErrorText{GageNotFound, "RAIN GAGE NOT FOUND", "A name on a PR or PT card is that of no PG card before it.",
              "Correct the name; a PR card needs a gage that has PI or PC cards."},
    ErrorText{
        NoRain, "NO RAIN FOR THE SUBBASIN",
        "A runoff station has no PB, PI, PC, PH, PM, PS or gage cards, or a storm without a pattern, and none can "
        "be taken over from an earlier station.",
        "Give rain cards at the first runoff station."},
    ErrorText{NoLoss, "NO LOSS DATA", "A runoff station has no LU, LS, LE, LH or LG card and none was given before it.",
              "Add a loss card."},
    ErrorText{NoUnitGraph, "NO UNIT GRAPH DATA",
              "A runoff station has no UD, UC, US, UI or UK card and none was given before it.",
              "Add a unit-graph card."},
    ErrorText{AreaMissing, "SUBBASIN AREA MISSING",
              "TAREA of the BA card is blank, zero or negative at a station where runoff is to be computed.",
              "Give the area; a station with a given hydrograph has QI cards."},
    ErrorText{TooFewToCombine, "TOO FEW HYDROGRAPHS TO COMBINE",
              "The HC card asks for more hydrographs than are waiting to be combined.",
              "Check ICOMP and the order of the stations; *DIAGRAM draws the network."},
    ErrorText{NothingToRoute, "NO HYDROGRAPH TO ROUTE",
              "A routing, reservoir or diversion stands where no hydrograph is waiting.",
              "Put a runoff or input station ahead of it."},
    ErrorText{JobTooLarge, "JOB TOO LARGE FOR MEMORY",
              "The ordinates, plans, ratios and waiting hydrographs of the job need more memory than there is.",
              "Combine earlier, use fewer ratios or a longer interval, or split the job."},
    ErrorText{DiversionNotFound, "DIVERSION NAME NOT FOUND",
              "A DR or WR card asks for a name that no DT or WP card before it has stored.",
              "Correct the name, or move the station below the diversion."},
    ErrorText{SavedNotFound, "SAVED HYDROGRAPH NOT FOUND",
              "A BI card asks for a station that the file of that unit does not hold.",
              "Save the station with field 5 of its KO card in the earlier job; check the name and the unit."},
    ErrorText{
        ReservoirIncomplete, "STORAGE ROUTING DATA NOT COMPLETE",
        "An RS card is followed by neither SV, nor SA with SE, nor RC, or nothing (SQ, SL, SS) tells the outflow.",
        "Add the missing table or outlet."},
    ErrorText{
        TableDoesNotRise, "TABLE VALUES DO NOT RISE",
        "Storages, elevations, inflows, flows or section stations fall, or stay where they must rise, from one value "
        "to the next.",
        "Put the values in rising order and take out equal neighbours."},
    ErrorText{StartOutsideTable, "STARTING CONDITION OUTSIDE THE TABLE",
              "RSVRIC of the RS card lies below the first or above the last value of its table.",
              "Lengthen the table or change RSVRIC; check the word in field 2."},
    ErrorText{SectionMissing, "CROSS SECTION MISSING",
              "RC, or an RD card with blank fields, is not followed by RX and RY with eight values each.",
              "Add the RC, RX and RY cards."},
    ErrorText{
        NumberNotReadable, "NUMBER NOT READABLE",
        "A field for a number holds letters, two points or an inner blank; usually a value has slipped over the edge "
        "of its field.",
        "Line the value up in its field, or use *FREE."},
    ErrorText{PlanNumber, "PLAN NUMBER TOO LARGE", "A KP card names a plan that the JP card does not have.",
              "Correct the KP or the JP card."},
    ErrorText{EndOfJobMissing, "END-OF-JOB CARD MISSING", "The file ends without a ZZ card.",
              "Put a ZZ card at the end of the job."},
    ErrorText{NotComputed, "CARD NOT COMPUTED",
              "The card belongs to a part of HEC-1 that this engine does not have, and leaving it out would change the "
              "hydrographs.",
              "Take the card out, or put one in its place that gives the same effect."},
    ErrorText{OutOfRange, "VALUE OUT OF RANGE",
              "A value lies outside what the card allows or the method can work with.",
              "Correct the value; the report names its field and its limits."},
    ErrorText{ValueMissing, "VALUE MISSING", "A field that must be given is blank or zero.", "Give the value."},
    ErrorText{
        CountsDiffer, "TABLES OF DIFFERENT LENGTH",
        "Two tables that belong together (SV and SE, SA and SE, DI and DQ, HQ and HE, PR or PT and PW) do not have as "
        "many values as each other.",
        "Give one value for each value of the partner card."},
    ErrorText{UnknownWord, "CODE WORD UNKNOWN", "A field holds a word that the card does not know.",
              "Use one of the words that the report names."},
    ErrorText{DateNotReadable, "DATE OR TIME NOT READABLE",
              "A date is not of the form 15JUN90, or a time of day not of the form 0730.", "Correct the date or time."},
    ErrorText{NameMissing, "NAME MISSING", "A card that names a station, gage or diversion is blank.",
              "Give a name in field 1."},
    ErrorText{DeckEmpty, "NO CARDS IN THE DECK", "The input file holds no cards, or no station.",
              "Give a deck with an IT card, at least one KK station and a ZZ card."},
    ErrorText{TimeCardMissing, "IT CARD MISSING", "There is no IT card ahead of the first station.",
              "Give an IT card with the interval and the number of ordinates."},
    ErrorText{MethodData, "DATA DO NOT FIT THE METHOD",
              "The values of a station cannot be computed with; the report says what is wrong with them.",
              "Correct the cards of the station."},
    ErrorText{NotFinite, "RESULT IS NOT A NUMBER",
              "The values of a station lead to flows that are too large for the machine, or to none at all.",
              "Look for a value that is far too large or too small."},
    ErrorText{TwoOperations, "TWO OPERATIONS IN ONE STATION",
              "The cards of one KK group ask for two computations, for example a routing and a combination.",
              "Give each computation a KK card of its own."},
    ErrorText{StationNotFound, "STATION NOT FOUND",
              "Field 4 of a BA card names a station that does not stand before it.", "Correct the name."},
    ErrorText{TabInCard, "TAB CHARACTER IN CARD",
              "A card in fixed format holds a tab character, so that its columns cannot be told.",
              "Replace the tab by blanks, or use *FREE."},
};

} // namespace

std::span<const ErrorText> errorTable()
{
    return kErrors;
}

std::string_view errorTitle(ErrorNumber number)
{
    for (const ErrorText& text : kErrors)
        if (text.number == number)
            return text.title;
    return "ERROR";
}

} // namespace hec1
