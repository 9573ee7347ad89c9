// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <span>
#include <string_view>

namespace hec1 {

/// Numbers of the errors that stop a job. All have two digits, as the report prints them
/// and readers look them up in the shipped list of error descriptions; a number never changes its meaning.
enum class ErrorNumber : int
{
    UnknownCard = 11,
    CardOutOfOrder = 12,
    TooManyOrdinates = 13,
    TimeData = 14,
    TooManyPlansOrRatios = 15,
    TooManyValues = 16,
    GageNotFound = 17,
    NoRain = 18,
    NoLoss = 19,
    NoUnitGraph = 20,
    AreaMissing = 21,
    TooFewToCombine = 22,
    NothingToRoute = 23,
    JobTooLarge = 25,
    DiversionNotFound = 26,
    SavedNotFound = 27,
    ReservoirIncomplete = 28,
    TableDoesNotRise = 29,
    StartOutsideTable = 30,
    SectionMissing = 31,
    NumberNotReadable = 32,
    PlanNumber = 33,
    EndOfJobMissing = 34,
    NotComputed = 35,
    OutOfRange = 36,
    ValueMissing = 37,
    CountsDiffer = 38,
    UnknownWord = 39,
    DateNotReadable = 40,
    NameMissing = 41,
    DeckEmpty = 42,
    TimeCardMissing = 43,
    MethodData = 44,
    NotFinite = 45,
    TwoOperations = 46,
    StationNotFound = 47,
    TabInCard = 48,
};

/// One line of the list of errors: the words of the report and what the user is told about cause and remedy.
struct ErrorText
{
    ErrorNumber number;
    std::string_view title;
    std::string_view cause;
    std::string_view remedy;
};

/// All errors in rising order of their numbers.
std::span<const ErrorText> errorTable();

/// Title of an error; every number of the enumeration has one.
std::string_view errorTitle(ErrorNumber number);

} // namespace hec1
