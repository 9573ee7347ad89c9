// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/cards/Diagnostics.h"

#include "engine/cards/CardReader.h"

namespace hec1 {

namespace {

Issue issueAt(ErrorNumber number, const Card* card, std::string text)
{
    if (card == nullptr)
        return {number, std::move(text), 0, 0, {}};
    return {number, std::move(text), card->line, card->number, std::string(card->image)};
}

} // namespace

void Diagnostics::error(ErrorNumber number, const Card* card, std::string text)
{
    const int line = card != nullptr ? card->line : 0;
    for (const Issue& issue : m_errors) // every plan comes upon the same card
        if (issue.number == number && issue.line == line && issue.text == text)
            return;
    if (m_errors.size() < kMostErrors)
        m_errors.push_back(issueAt(number, card, std::move(text)));
    else
        ++m_errorsNotKept;
}

void Diagnostics::warn(const Card* card, std::string text)
{
    const int line = card != nullptr ? card->line : 0;
    for (std::size_t i = m_warnings.size(); i-- > 0 && m_warnings.size() - i < 10;)
        if (m_warnings[i].line == line && m_warnings[i].text == text)
            return;
    if (m_warnings.size() < kMostWarnings)
        m_warnings.push_back(issueAt(ErrorNumber{}, card, std::move(text)));
    else
        ++m_warningsNotKept;
}

} // namespace hec1
