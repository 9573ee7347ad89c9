// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <span>
#include <string_view>

namespace hec1 {

/// Numbers of the errors that stop a job. They are printed in two digits and looked up in the shipped list of error
/// descriptions, so a number never changes its meaning.
enum class ErrorNumber : int
{
    UnknownCard = 1,
    CardOutOfOrder = 2,
    TooManyOrdinates = 3,
    TimeData = 4,
    TooManyPlansOrRatios = 5,
    TooManyValues = 6,
    GageNotFound = 7,
    NoRain = 8,
    NoLoss = 9,
    NoUnitGraph = 10,
    AreaMissing = 11,
    TooFewToCombine = 12,
    NothingToRoute = 13,
    JobTooLarge = 15,
    DiversionNotFound = 16,
    SavedNotFound = 17,
    ReservoirIncomplete = 18,
    TableDoesNotRise = 19,
    StartOutsideTable = 20,
    SectionMissing = 21,
    NumberNotReadable = 22,
    PlanNumber = 23,
    EndOfJobMissing = 24,
    NotComputed = 25,
    OutOfRange = 26,
    ValueMissing = 27,
    CountsDiffer = 28,
    UnknownWord = 29,
    DateNotReadable = 30,
    NameMissing = 31,
    DeckEmpty = 32,
    TimeCardMissing = 33,
    MethodData = 34,
    NotFinite = 35,
    TwoOperations = 36,
    StationNotFound = 37,
    TabInCard = 38,
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
