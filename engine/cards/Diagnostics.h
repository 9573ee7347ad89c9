// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "engine/cards/ErrorTable.h"

#include <string>
#include <vector>

namespace hec1 {

struct Card;

/// Something that was found wrong, with the card that it was found at.
struct Issue
{
    ErrorNumber number{}; ///< of an error; not used for a warning
    std::string text;
    int line = 0;       ///< in the file; 0 when it belongs to the deck as a whole
    int cardNumber = 0; ///< as the listing counts
    std::string image;  ///< of the card
};

/// Collects errors and warnings in the order in which they were found. Errors beyond a limit are only counted, so that
/// a file that is no deck at all does not make a report of gigabytes.
class Diagnostics
{
public:
    static constexpr std::size_t kMostErrors = 200;
    static constexpr std::size_t kMostWarnings = 1000;

    void error(ErrorNumber number, const Card* card, std::string text);
    void warn(const Card* card, std::string text);

    bool hasErrors() const { return !m_errors.empty(); }
    const std::vector<Issue>& errors() const { return m_errors; }
    const std::vector<Issue>& warnings() const { return m_warnings; }
    std::size_t errorsNotKept() const { return m_errorsNotKept; }
    std::size_t warningsNotKept() const { return m_warningsNotKept; }

private:
    std::vector<Issue> m_errors, m_warnings;
    std::size_t m_errorsNotKept = 0, m_warningsNotKept = 0;
};

} // namespace hec1
