// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "tests/engine/EngineHarness.h"

#include <algorithm>
#include <random>

namespace hec1::test {

/// Damages a deck as typing and copying do: fields overwritten, cards lost, doubled, moved, taken from other decks.
class DeckMutator
{
public:
    explicit DeckMutator(unsigned seed) : m_random(seed) {}

    /// @param other lends cards; may be the same deck. Neither may be empty.
    std::string damage(const std::string& deck, const std::string& other)
    {
        std::vector<std::string> lines = linesOf(deck);
        const std::vector<std::string> foreign = linesOf(other);
        for (std::size_t n = 1 + pick(5); n > 0; --n) {
            const std::size_t at = pick(lines.size());
            switch (pick(7)) {
            case 0:
                lines.erase(lines.begin() + static_cast<std::ptrdiff_t>(at));
                break;
            case 1:
                lines.insert(lines.begin() + static_cast<std::ptrdiff_t>(at), lines[pick(lines.size())]);
                break;
            case 2:
                lines.insert(lines.begin() + static_cast<std::ptrdiff_t>(at), foreign[pick(foreign.size())]);
                break;
            case 3:
                std::swap(lines[at], lines[pick(lines.size())]);
                break;
            case 4:
                if (!lines[at].empty())
                    lines[at][pick(lines[at].size())] = static_cast<char>(pick(256));
                break;
            default:
                overwriteField(lines[at]);
            }
            if (lines.empty())
                lines.emplace_back("ZZ");
        }
        std::string text;
        for (const std::string& line : lines)
            text += line + "\r\n";
        return text;
    }

private:
    std::size_t pick(std::size_t below) { return m_random() % below; }

    void overwriteField(std::string& line)
    {
        static const std::vector<std::string> kTexts{
            "0",     "-1", "1e9", "1e-9", ".",      "99999", "-0.5",  "1e12", "0.001", "100", "YES",   "x",
            "1e300", "3",  "20",  "",     "100000", "7e6",   "-1e-5", "0.3",  "21",    "1.5", "100.5", "12"};
        const std::size_t field = pick(10), from = field == 0 ? 2 : 8 * field, width = field == 0 ? 6 : 8;
        std::string text = kTexts[pick(kTexts.size())];
        text.resize(std::min(text.size(), width));
        line.resize(std::max(line.size(), from + width), ' ');
        line.replace(from, width, std::string(width - text.size(), ' ') + text);
    }

    std::mt19937 m_random;
};

} // namespace hec1::test
