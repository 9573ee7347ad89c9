// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/files/SavedHydrograph.h"

#include "engine/cards/CardReader.h"

#include <charconv>
#include <fstream>
#include <sstream>

namespace hec1 {

namespace {

constexpr std::size_t kLeastHeader = 35;

// Whole number in `width` characters from `back` characters ahead of the last one.
std::size_t fieldFromEnd(std::string_view line, std::size_t back, std::size_t width)
{
    const std::optional<double> value = cardNumber(line.substr(line.size() - back - 1, width));
    return value && *value > 0 ? static_cast<std::size_t>(*value) : 0;
}

} // namespace

std::optional<SavedHydrograph> readSavedHydrograph(int unit, const std::string& station)
{
    std::ifstream in("TAPE" + std::to_string(unit), std::ios::binary);
    std::stringstream whole;
    whole << in.rdbuf();
    const std::string bytes = whole.str();
    std::size_t at = 0;
    while (at < bytes.size()) {
        const std::size_t end = std::min(bytes.find('\n', at), bytes.size());
        std::string_view header(bytes.data() + at, end - at);
        if (!header.empty() && header.back() == '\r')
            header.remove_suffix(1);
        if (header.size() < kLeastHeader)
            return std::nullopt;
        SavedHydrograph saved;
        saved.minutes = static_cast<int>(fieldFromEnd(header, 34, 3));
        const std::size_t count = fieldFromEnd(header, 13, 4);
        const std::size_t records =
            fieldFromEnd(header, 18, 1) * fieldFromEnd(header, 17, 2) * fieldFromEnd(header, 15, 2);
        const bool wanted = trimmed(header.substr(0, 9)) == station;
        at = end + 1;
        for (std::size_t i = 0; i < count * records; ++i) {
            while (at < bytes.size() && (bytes[at] == ' ' || bytes[at] == '\r' || bytes[at] == '\n'))
                ++at;
            double value = 0;
            const auto [stop, fault] = std::from_chars(bytes.data() + at, bytes.data() + bytes.size(), value);
            if (fault != std::errc{})
                return std::nullopt;
            at = static_cast<std::size_t>(stop - bytes.data());
            if (wanted && i < count)
                saved.flows.push_back(value);
        }
        if (wanted && saved.minutes > 0)
            return saved;
        at = std::min(bytes.find('\n', at), bytes.size() - 1) + 1;
    }
    return std::nullopt;
}

} // namespace hec1
