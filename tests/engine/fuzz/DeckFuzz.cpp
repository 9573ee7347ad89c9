// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/engine/DeckMutator.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <exception>

// Whole decks: whatever the bytes, the engine ends normally or says in its report what is wrong, and no file it leaves
// holds a number that is none. Start it with the sample decks as corpus:
//   deck_fuzz -max_len=8192 -timeout=5 corpus tests/engine/decks

using namespace hec1;

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t maxSize);

namespace {

[[noreturn]] void fail(const char* what)
{
    std::fprintf(stderr, "deck_fuzz: %s\n", what);
    std::abort();
}

void look(const test::EngineOutcome& outcome)
{
    if (outcome.end == EngineEnd::Normal && !outcome.reports("*** NORMAL END OF HEC-1 ***"))
        fail("a normal end that the report does not tell");
    if (outcome.end == EngineEnd::DeckErrors && outcome.errorNumbers().empty())
        fail("a stop without a numbered error");
    if (outcome.end != EngineEnd::Normal && outcome.end != EngineEnd::DeckErrors)
        fail("file trouble where there is none");
    for (const char* word : {",nan", ",inf", ",-nan", ",-inf"})
        if (outcome.details.find(word) != std::string::npos)
            fail("details that are no numbers");
    for (const std::string* text : {&outcome.pools, &outcome.conic})
        for (const char* word : {" nan", " inf", " -nan", " -inf"})
            if (text->find(word) != std::string::npos)
                fail("a table of storage that holds no numbers");
    if (!outcome.tape21.empty() && (outcome.tape21.ends_with("\n\r\n") || outcome.tape21.ends_with("\n\n")))
        fail("saved hydrographs that end in an empty line");
    if (outcome.end == EngineEnd::Normal && !outcome.tape21.empty())
        try {
            for (const test::SavedStation& station : outcome.stations())
                for (const std::vector<double>& record : station.records)
                    for (const double flow : record)
                        if (!std::isfinite(flow))
                            fail("a flow that is no number");
        } catch (const std::exception& unreadable) {
            fail(unreadable.what());
        }
}

std::size_t give(const std::string& deck, std::uint8_t* data, std::size_t maxSize)
{
    const std::size_t size = std::min(deck.size(), maxSize);
    std::memcpy(data, deck.data(), size);
    return size;
}

std::string asText(const std::uint8_t* data, std::size_t size)
{
    return {reinterpret_cast<const char*>(data), size};
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    look(test::runDeck(asText(data, size)));
    return 0;
}

// Most random bytes never get past the reader; cards damaged in their fields reach what computes.
extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size, std::size_t maxSize,
                                               unsigned int seed)
{
    if (size == 0 || seed % 4 == 0)
        return LLVMFuzzerMutate(data, size, maxSize);
    const std::string deck = asText(data, size);
    return give(test::DeckMutator(seed).damage(deck, deck), data, maxSize);
}

extern "C" std::size_t LLVMFuzzerCustomCrossOver(const std::uint8_t* first, std::size_t firstSize,
                                                 const std::uint8_t* second, std::size_t secondSize, std::uint8_t* out,
                                                 std::size_t maxSize, unsigned int seed)
{
    if (firstSize == 0 || secondSize == 0)
        return 0;
    return give(test::DeckMutator(seed).damage(asText(first, firstSize), asText(second, secondSize)), out, maxSize);
}
