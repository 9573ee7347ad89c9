// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/cards/CardReader.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace hec1 {

namespace {

constexpr std::size_t kColumns = 80;
constexpr double kLargestNumber = 1e12; // flows beyond it mean a slipped field, and sums of them stay finite
constexpr char kDosEndOfFile = '\x1a';

char upper(char c)
{
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}

std::string_view rightTrimmed(std::string_view text)
{
    while (!text.empty() && text.back() == ' ')
        text.remove_suffix(1);
    return text;
}

std::string_view columns(std::string_view line, std::size_t from, std::size_t to)
{
    return from >= line.size() ? std::string_view{} : line.substr(from, std::min(to, line.size()) - from);
}

// What a field letter promises, in words for a message.
void readNumber(Card& card, std::size_t i, char kind, Diagnostics& diagnostics)
{
    const std::string_view text = card.fields[i].word;
    const int field = static_cast<int>(i) + 1;
    const auto where = [&] {
        return "FIELD " + std::to_string(field) + " (" + std::string(fieldName(*card.def, field)) + "): \"" +
               std::string(text) + "\"";
    };
    const std::optional<double> value = cardNumber(text);
    if (!value) {
        diagnostics.error(ErrorNumber::NumberNotReadable, &card, where() + " IS NOT A NUMBER");
    } else if (!(std::fabs(*value) <= kLargestNumber)) {
        diagnostics.error(ErrorNumber::OutOfRange, &card, where() + " IS TOO LARGE");
    } else if (kind == 'i' && (*value != std::floor(*value) || std::fabs(*value) > 1e6)) {
        diagnostics.error(ErrorNumber::OutOfRange, &card, where() + " MUST BE A WHOLE NUMBER OF REASONABLE SIZE");
    } else {
        card.fields[i].value = *value;
    }
}

void readNumbers(Card& card, Diagnostics& diagnostics)
{
    const std::string_view kinds = card.def->kinds;
    for (std::size_t i = 0; i < static_cast<std::size_t>(card.count); ++i) {
        if (card.fields[i].word.empty())
            continue;
        if (i >= kinds.size()) {
            diagnostics.warn(&card, "FIELD " + std::to_string(i + 1) + " IS NOT USED");
            break;
        }
        if (kinds[i] == 'n' || kinds[i] == 'i')
            readNumber(card, i, kinds[i], diagnostics);
    }
}

} // namespace

std::string_view trimmed(std::string_view text)
{
    while (!text.empty() && text.front() == ' ')
        text.remove_prefix(1);
    return rightTrimmed(text);
}

bool sameWord(std::string_view a, std::string_view b)
{
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](char x, char y) { return upper(x) == upper(y); });
}

std::optional<double> cardNumber(std::string_view text)
{
    text = trimmed(text);
    if (!text.empty() && text.front() == '+')
        text.remove_prefix(1);
    std::array<char, 48> buffer{};
    if (text.empty() || text.size() > buffer.size())
        return std::nullopt;
    bool digits = false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = upper(text[i]);
        const bool exponent = (c == 'E' || c == 'D') && digits;
        const bool sign = (c == '-' || c == '+') && (i == 0 ? c == '-' : buffer[i - 1] == 'e');
        digits = digits || isDigit(c);
        if (!isDigit(c) && c != '.' && !exponent && !sign)
            return std::nullopt;
        buffer[i] = exponent ? 'e' : c;
    }
    // from_chars knows no plus sign in front of an exponent's digits in some libraries: drop it.
    std::size_t size = text.size();
    for (std::size_t i = 1; i < size; ++i)
        if (buffer[i] == '+') {
            std::copy(buffer.begin() + static_cast<std::ptrdiff_t>(i) + 1,
                      buffer.begin() + static_cast<std::ptrdiff_t>(size),
                      buffer.begin() + static_cast<std::ptrdiff_t>(i));
            --size;
        }
    double value = 0;
    const auto [end, fault] = std::from_chars(buffer.data(), buffer.data() + size, value);
    if (end != buffer.data() + size)
        return std::nullopt;
    if (fault == std::errc::result_out_of_range) // too small reads as zero, too large is told apart by the caller
        return text.find_first_of("-") != std::string_view::npos && text.find_first_of("eEdD") != std::string_view::npos
                   ? 0.0
                   : 1e300;
    return value;
}

std::string_view Card::text() const
{
    const std::size_t from = def != nullptr && def->layout == CardLayout::NameText ? 8 : 2;
    return rightTrimmed(columns(image, from, image.size()));
}

DeckReader::DeckReader(std::string bytes) : m_bytes(std::move(bytes))
{
    if (m_bytes.compare(0, 3, "\xEF\xBB\xBF") == 0)
        m_bytes.erase(0, 3);
    if (const std::size_t end = m_bytes.find(kDosEndOfFile); end != std::string::npos)
        m_bytes.resize(end);
    // A control character would move the columns of whatever prints or shows the card.
    for (char& c : m_bytes)
        if ((static_cast<unsigned char>(c) < 0x20 && c != '\n' && c != '\r' && c != '\t') || c == '\x7f')
            c = '?';
}

std::string_view DeckReader::keep(std::string text)
{
    return m_kept.emplace_back(std::move(text));
}

std::string_view DeckReader::keepId(std::string_view id)
{
    if (id.size() == 2 && upper(id[0]) == id[0] && upper(id[1]) == id[1])
        return id;
    std::string capitals(id);
    for (char& c : capitals)
        c = upper(c);
    capitals.resize(2, ' ');
    return keep(std::move(capitals));
}

std::string_view DeckReader::takeLine()
{
    const std::size_t end = std::min(m_bytes.find('\n', m_at), m_bytes.size());
    std::string_view line(m_bytes.data() + m_at, end - m_at);
    m_at = end + 1;
    ++m_line;
    while (!line.empty() && (line.back() == '\r' || line.back() == ' ' || line.back() == '\t'))
        line.remove_suffix(1);
    return line;
}

std::optional<JobCards> DeckReader::next(Diagnostics& diagnostics)
{
    JobCards job;
    m_free = false;
    m_listing = true;
    m_economics = false;
    m_number = 0;
    m_lastId = {};
    const auto rest = m_bytes.begin() + static_cast<std::ptrdiff_t>(std::min(m_at, m_bytes.size()));
    job.cards.reserve(static_cast<std::size_t>(std::count(rest, m_bytes.end(), '\n')) + 1);
    while (m_at < m_bytes.size() && !job.ended) {
        const std::string_view line = takeLine();
        if (line.empty())
            continue;
        if (line.front() == '*')
            readDirective(line, job, diagnostics);
        else if (m_free)
            readFree(line, job, diagnostics);
        else
            readFixed(line, job, diagnostics);
    }
    if (job.cards.empty())
        return std::nullopt;
    return job;
}

void DeckReader::readDirective(std::string_view line, JobCards& job, Diagnostics& diagnostics)
{
    Card card;
    card.line = m_line;
    card.listed = m_listing;
    card.image = columns(line, 0, kColumns);
    const std::string_view word = line.substr(1, std::min(line.find_first_of(" \t", 1), line.size()) - 1);
    card.kind = word.empty() ? LineKind::Comment : LineKind::Directive;
    if (sameWord(word, "FREE"))
        m_free = true;
    else if (sameWord(word, "FIX"))
        m_free = false;
    else if (sameWord(word, "LIST"))
        m_listing = card.listed = true;
    else if (sameWord(word, "NOLIST"))
        m_listing = false;
    else if (sameWord(word, "DIAGRAM"))
        job.diagram = true;
    else
        card.kind = LineKind::Comment;
    job.cards.push_back(card);
    if (card.kind == LineKind::Comment && !word.empty() && upper(word.front()) >= 'A' && upper(word.front()) <= 'Z')
        diagnostics.warn(&job.cards.back(), "NOT A COMMAND: TAKEN AS A COMMENT");
}

void DeckReader::finish(JobCards& job, Diagnostics& diagnostics)
{
    Card& card = job.cards.back();
    card.def = findCard(card.id);
    card.line = m_line;
    card.number = ++m_number;
    card.listed = m_listing;
    card.freeForm = m_free;
    m_lastId = card.id;
    if (card.is("EC"))
        m_economics = true;
    if (card.def == nullptr) {
        diagnostics.error(ErrorNumber::UnknownCard, &card, "");
        return;
    }
    job.ended = job.ended || card.is("ZZ");
    // Damage cards share identifiers with others and are passed over whole.
    if (card.def->layout == CardLayout::Fields || card.def->layout == CardLayout::Values)
        if (!m_economics)
            readNumbers(card, diagnostics);
}

void DeckReader::keepFields(Card& card, const Words& words)
{
    constexpr std::size_t kTogether = 4096;
    std::size_t count = words.size();
    while (count > 0 && words[count - 1].empty())
        --count;
    if (m_fields.empty() || m_fields.back().size() + count > m_fields.back().capacity())
        m_fields.emplace_back().reserve(kTogether);
    std::vector<CardField>& fields = m_fields.back();
    card.fields = fields.data() + fields.size();
    card.count = static_cast<int>(count);
    for (std::size_t i = 0; i < count; ++i)
        fields.push_back({words[i], 0});
}

void DeckReader::readFixed(std::string_view line, JobCards& job, Diagnostics& diagnostics)
{
    std::string_view image = rightTrimmed(columns(line, 0, kColumns));
    if (trimmed(image).empty())
        return;
    const bool tab = image.find('\t') != std::string_view::npos;
    if (tab) {
        std::string spaced(image);
        std::replace(spaced.begin(), spaced.end(), '\t', ' ');
        image = keep(std::move(spaced));
    }
    Card& card = job.cards.emplace_back();
    card.image = image;
    const std::string_view id = columns(image, 0, 2);
    // A blank identifier goes on with the card before it.
    card.id = trimmed(id).empty() && !m_lastId.empty() ? m_lastId : keepId(id);
    Words words;
    for (std::size_t i = 0; i < words.size() && (i == 0 || 8 * i < image.size()); ++i)
        words[i] = trimmed(columns(image, i == 0 ? 2 : 8 * i, 8 * i + 8));
    keepFields(card, words);
    finish(job, diagnostics);
    if (tab && card.def != nullptr && card.def->layout != CardLayout::Text)
        diagnostics.error(ErrorNumber::TabInCard, &card, "");
}

void DeckReader::readFree(std::string_view line, JobCards& job, Diagnostics& diagnostics)
{
    std::string spaced(line);
    std::replace(spaced.begin(), spaced.end(), '\t', ' ');
    std::string_view rest = trimmed(spaced);
    if (rest.empty())
        return;
    std::string_view id = rest.substr(0, std::min<std::size_t>(2, rest.size()));
    const bool repeats = line.front() == ' ' && !m_lastId.empty() &&
                         (findCard(keepId(id)) == nullptr || (rest.size() > 2 && rest[2] != ' ' && rest[2] != ','));
    const std::string_view cardId = repeats ? m_lastId : keepId(keep(std::string(id)));
    if (!repeats)
        rest.remove_prefix(id.size());
    const CardDef* def = findCard(cardId);
    const CardLayout layout = def != nullptr ? def->layout : CardLayout::Text;

    if (layout == CardLayout::Text || layout == CardLayout::NameText) {
        Card& card = job.cards.emplace_back();
        card.id = cardId;
        std::string image(cardId);
        if (layout == CardLayout::NameText) {
            rest = trimmed(rest);
            if (!rest.empty() && rest.front() == ',')
                rest = trimmed(rest.substr(1));
            const std::string_view name = rest.substr(0, std::min(rest.find_first_of(" ,"), rest.size()));
            rest.remove_prefix(name.size());
            image += std::string(name.size() < 6 ? 6 - name.size() : 0, ' ') + std::string(name.substr(0, 6));
            if (name.size() > 6)
                diagnostics.warn(nullptr, "LINE " + std::to_string(m_line) + ": NAME \"" + std::string(name) +
                                              "\" IS CUT TO SIX CHARACTERS");
        }
        image += rest;
        card.image = keep(std::move(image));
        if (layout == CardLayout::NameText)
            keepFields(card, {trimmed(columns(card.image, 2, 8))});
        finish(job, diagnostics);
        return;
    }

    std::vector<std::string_view> words;
    // A comma right behind the identifier parts it from field 1; behind a blank it says that field 1 is skipped.
    if (!rest.empty() && rest.front() == ',')
        rest.remove_prefix(1);
    for (rest = trimmed(rest); !rest.empty(); rest = trimmed(rest)) {
        const std::size_t end = std::min(rest.find_first_of(" ,"), rest.size());
        words.push_back(rest.substr(0, end));
        rest = trimmed(rest.substr(end));
        if (!rest.empty() && rest.front() == ',')
            rest.remove_prefix(1);
    }
    std::size_t done = 0;
    do {
        Card& card = job.cards.emplace_back();
        card.id = cardId;
        const std::size_t n = std::min<std::size_t>(10, words.size() - done);
        std::string image(cardId);
        std::array<std::size_t, 10> begins{}, sizes{};
        for (std::size_t i = 0; i < n; ++i) {
            const std::string_view word = words[done + i];
            const std::size_t width = i == 0 ? 6 : 8;
            image.append(word.size() < width ? width - word.size() : 0, ' ');
            begins[i] = image.size();
            sizes[i] = word.size();
            image += word;
        }
        const std::string_view kept = keep(std::move(image));
        Words fields;
        for (std::size_t i = 0; i < n; ++i)
            fields[i] = kept.substr(begins[i], sizes[i]);
        keepFields(card, fields);
        card.image = rightTrimmed(kept);
        done += n;
        finish(job, diagnostics);
        if (done < words.size() && layout == CardLayout::Fields) {
            diagnostics.error(ErrorNumber::TooManyValues, &job.cards.back(), "MORE THAN TEN FIELDS");
            break;
        }
    } while (done < words.size());
}

} // namespace hec1
