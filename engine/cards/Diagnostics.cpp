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
    if (m_errors.size() < kMostErrors)
        m_errors.push_back(issueAt(number, card, std::move(text)));
    else
        ++m_errorsNotKept;
}

void Diagnostics::warn(const Card* card, std::string text)
{
    if (m_warnings.size() < kMostWarnings)
        m_warnings.push_back(issueAt(ErrorNumber{}, card, std::move(text)));
    else
        ++m_warningsNotKept;
}

} // namespace hec1
