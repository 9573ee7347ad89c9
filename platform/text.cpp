// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/text.h"

#include <array>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <stdexcept>
#include <string>
#include <system_error>

namespace kalvo {

namespace {

constexpr int kDigits = 15; ///< what a general text shows at most

// -- Reading -------------------------------------------------------------------------------------------------------

bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}

/// Where the parts of a number end within a text.
struct NumberExtent
{
    size_t end = 0;        ///< behind the last character that belongs to it; 0 when there is no number
    size_t exponentAt = 0; ///< of the letter; 0 without an exponent
};

/// Sign, digits with a point, and an exponent with digits behind it; at least one digit ahead of the exponent.
NumberExtent extentOf(std::string_view text)
{
    size_t at = 0;
    if (at < text.size() && (text[at] == '+' || text[at] == '-'))
        ++at;
    bool anyDigit = false;
    while (at < text.size() && isDigit(text[at])) {
        anyDigit = true;
        ++at;
    }
    if (at < text.size() && text[at] == '.') {
        ++at;
        while (at < text.size() && isDigit(text[at])) {
            anyDigit = true;
            ++at;
        }
    }
    if (!anyDigit)
        return {};
    NumberExtent extent{at, 0};
    if (at < text.size() && std::strchr("eEdD", text[at]) && text[at] != '\0') {
        size_t digits = at + 1;
        if (digits < text.size() && (text[digits] == '+' || text[digits] == '-'))
            ++digits;
        size_t end = digits;
        while (end < text.size() && isDigit(text[end]))
            ++end;
        if (end > digits)
            extent = {end, at};
    }
    return extent;
}

enum class Range
{
    Fits,
    TooSmall,
    TooLarge
};

/// The value of a number whose extent is known. Past the range `value` is 0.
Range valueOf(std::string_view number, size_t exponentAt, double& value)
{
    if (number.front() == '+')
        number.remove_prefix(1), exponentAt -= exponentAt > 0 ? 1 : 0;
    std::from_chars_result result{};
    if (exponentAt > 0 && (number[exponentAt] == 'd' || number[exponentAt] == 'D')) {
        std::string copy(number);
        copy[exponentAt] = 'e';
        result = std::from_chars(copy.data(), copy.data() + copy.size(), value);
    } else {
        result = std::from_chars(number.data(), number.data() + number.size(), value);
    }
    if (result.ec == std::errc())
        return Range::Fits;
    value = 0.0;
    if (exponentAt > 0)
        return number[exponentAt + 1] == '-' ? Range::TooSmall : Range::TooLarge;
    const size_t first = number.find_first_of("123456789");
    return first < number.find('.') ? Range::TooLarge : Range::TooSmall;
}

int leadingInteger(std::string_view text, double least, double most)
{
    const double rounded = std::nearbyint(leadingNumber(text));
    if (!(rounded >= least && rounded <= most))
        throw std::out_of_range("a number is outside the range of its integer");
    return static_cast<int>(rounded);
}

// -- Writing -------------------------------------------------------------------------------------------------------

/// A number of at most 15 digits: 0.d1d2d3... times ten to the `point`. Zero has no digits.
struct Decimal
{
    bool negative = false;
    int count = 0;
    int point = 0;
    std::array<char, 32> digits{}; ///< '0'..'9', the first and the last not '0'
};

/// Takes apart what to_chars wrote in scientific form.
Decimal decimalFromScientific(const char* at, const char* end)
{
    Decimal decimal;
    if (*at == '-') {
        decimal.negative = true;
        ++at;
    }
    for (; at != end && *at != 'e'; ++at)
        if (*at != '.')
            decimal.digits[static_cast<size_t>(decimal.count++)] = *at;
    int exponent = 0;
    if (at != end) {
        ++at;
        if (*at == '+')
            ++at;
        std::from_chars(at, end, exponent);
    }
    while (decimal.count > 0 && decimal.digits[static_cast<size_t>(decimal.count - 1)] == '0')
        --decimal.count;
    decimal.point = decimal.count == 0 ? 0 : exponent + 1;
    return decimal;
}

/// The 15-digit form of a finite number.
Decimal decimalOf(double value)
{
    // The shortest form that reads back is what 15 digits give, unless it needs 16 or 17: only then, and seldom, does
    // the slower rounding run.
    char text[40];
    auto end = std::to_chars(text, text + sizeof(text), value, std::chars_format::scientific).ptr;
    Decimal decimal = decimalFromScientific(text, end);
    if (decimal.count > kDigits) {
        end = std::to_chars(text, text + sizeof(text), value, std::chars_format::scientific, kDigits - 1).ptr;
        decimal = decimalFromScientific(text, end);
    }
    return decimal;
}

/// Drops the digits behind `places` decimals; the digit in front goes up by one when `up` says so.
void cutToPlaces(Decimal& decimal, int places, bool up)
{
    int keep = decimal.point + places; // digits that stay
    if (keep >= decimal.count)
        return;
    if (keep < 0) {
        decimal.count = 0;
        decimal.point = 0;
        return;
    }
    decimal.count = keep;
    if (up) {
        while (decimal.count > 0 && decimal.digits[static_cast<size_t>(decimal.count - 1)] == '9')
            --decimal.count;
        if (decimal.count == 0) {
            decimal.digits[0] = '1';
            decimal.count = 1;
            ++decimal.point;
        } else {
            ++decimal.digits[static_cast<size_t>(decimal.count - 1)];
        }
        return;
    }
    while (decimal.count > 0 && decimal.digits[static_cast<size_t>(decimal.count - 1)] == '0')
        --decimal.count;
    if (decimal.count == 0)
        decimal.point = 0;
}

/// The digit that decides a rounding to `places` decimals, as a character; '0' when nothing stands there.
char decidingDigit(const Decimal& decimal, int places)
{
    const int at = decimal.point + places;
    return at >= 0 && at < decimal.count ? decimal.digits[static_cast<size_t>(at)] : '0';
}

void roundHalfAway(Decimal& decimal, int places)
{
    cutToPlaces(decimal, places, decidingDigit(decimal, places) >= '5');
}

void roundHalfToEven(Decimal& decimal, int places)
{
    const char digit = decidingDigit(decimal, places);
    const int at = decimal.point + places;
    bool up = digit > '5';
    if (digit == '5') {
        const bool tie = at + 1 == decimal.count;
        const bool odd = at > 0 && (decimal.digits[static_cast<size_t>(at - 1)] - '0') % 2 == 1;
        up = !tie || odd;
    }
    cutToPlaces(decimal, places, up);
}

char* put(char* out, const char* from, int count)
{
    std::memcpy(out, from, static_cast<size_t>(count));
    return out + count;
}

char* putZeros(char* out, int count)
{
    std::memset(out, '0', static_cast<size_t>(count));
    return out + count;
}

char* putDecimal(char* out, const Decimal& decimal)
{
    const char* digits = decimal.digits.data();
    if (decimal.negative)
        *out++ = '-';
    if (decimal.point > kDigits || decimal.point < 1 - kDigits) {
        *out++ = digits[0];
        if (decimal.count > 1) {
            *out++ = '.';
            out = put(out, digits + 1, decimal.count - 1);
        }
        const int exponent = decimal.point - 1;
        *out++ = 'E';
        *out++ = exponent < 0 ? '-' : '+';
        const int size = std::abs(exponent);
        if (size < 10)
            *out++ = '0';
        return std::to_chars(out, out + 4, size).ptr;
    }
    if (decimal.point <= 0) {
        *out++ = '0';
        *out++ = '.';
        out = putZeros(out, -decimal.point);
        return put(out, digits, decimal.count);
    }
    if (decimal.point >= decimal.count) {
        out = put(out, digits, decimal.count);
        return putZeros(out, decimal.point - decimal.count);
    }
    out = put(out, digits, decimal.point);
    *out++ = '.';
    return put(out, digits + decimal.point, decimal.count - decimal.point);
}

/// Writes a number of at most six decimals below 1E9, which is what tables mostly hold, at a fifth of the usual cost;
/// null for any other. The quotient that gives back the very same double proves that its 15 digits are those of
/// `millionths`.
char* putMillionths(char* out, double value)
{
    if (!(std::fabs(value) < 1e9))
        return nullptr;
    const auto millionths = static_cast<long long>(std::nearbyint(value * 1e6));
    if (static_cast<double>(millionths) / 1e6 != value)
        return nullptr;
    if (value < 0)
        *out++ = '-';
    const auto size = static_cast<unsigned long long>(std::llabs(millionths));
    out = std::to_chars(out, out + 10, size / 1000000).ptr;
    auto rest = static_cast<unsigned>(size % 1000000);
    if (rest == 0)
        return out;
    *out = '.';
    for (int place = 6; place > 0; --place) {
        out[place] = static_cast<char>('0' + rest % 10);
        rest /= 10;
    }
    out += 6;
    while (*out == '0')
        --out;
    return out + 1;
}

/// What a picture asks for.
struct Picture
{
    int leastWhole = 0; ///< digits ahead of the point that always show
    bool point = false;
    int leastPlaces = 0; ///< decimals that always show
    int mostPlaces = 0;
    bool grouped = false;
};

Picture parsePicture(QStringView text)
{
    Picture picture;
    for (const QChar c : text) {
        if (c == QLatin1Char('.')) {
            picture.point = true;
        } else if (c == QLatin1Char(',')) {
            picture.grouped = true;
        } else if (c == QLatin1Char('0') || c == QLatin1Char('#')) {
            const bool always = c == QLatin1Char('0');
            if (picture.point) {
                ++picture.mostPlaces;
                if (always)
                    picture.leastPlaces = picture.mostPlaces;
            } else if (always || picture.leastWhole > 0) {
                ++picture.leastWhole; // a place behind the first '0' shows too
            }
        }
    }
    return picture;
}

bool isBlank(QChar c)
{
    return c == QLatin1Char(' ');
}

} // namespace

// -- Numbers out of texts --------------------------------------------------------------------------------------------

double leadingNumber(std::string_view text)
{
    const size_t start = text.find_first_not_of(' ');
    if (start == std::string_view::npos)
        return 0.0;
    text.remove_prefix(start);
    const NumberExtent extent = extentOf(text);
    double value = 0.0;
    if (extent.end > 0)
        valueOf(text.substr(0, extent.end), extent.exponentAt, value);
    return value;
}

double leadingNumber(QStringView text)
{
    // Only the characters that a number can have are taken over; cells are short, so this seldom leaves the stack.
    qsizetype start = 0;
    while (start < text.size() && isBlank(text[start]))
        ++start;
    const auto belongs = [](char16_t c) {
        return (c >= u'0' && c <= u'9') || c == u'.' || c == u'+' || c == u'-' || c == u'e' || c == u'E' || c == u'd' ||
               c == u'D';
    };
    std::string number;
    for (qsizetype i = start; i < text.size() && belongs(text[i].unicode()); ++i)
        number.push_back(static_cast<char>(text[i].unicode()));
    return leadingNumber(std::string_view(number));
}

int leadingInt16(std::string_view text)
{
    return leadingInteger(text, -32768.0, 32767.0);
}

int leadingInt32(std::string_view text)
{
    return leadingInteger(text, -2147483648.0, 2147483647.0);
}

bool parseWholeNumber(std::string_view item, double& value)
{
    const NumberExtent extent = extentOf(item);
    if (extent.end == 0 || extent.end != item.size())
        return false;
    double read = 0.0;
    if (valueOf(item, extent.exponentAt, read) == Range::TooLarge)
        return false;
    value = read;
    return true;
}

// -- Texts out of numbers --------------------------------------------------------------------------------------------

char* writeGeneralText(char* out, double value)
{
    if (std::fabs(value) < 1e15 && value == std::trunc(value)) // the most frequent case, and the quickest
        return std::to_chars(out, out + 17, static_cast<long long>(value)).ptr;
    if (std::isnan(value))
        return put(out, "NaN", 3);
    if (std::isinf(value))
        return value < 0 ? put(out, "-INF", 4) : put(out, "INF", 3);
    if (char* end = putMillionths(out, value))
        return end;
    return putDecimal(out, decimalOf(value));
}

QString generalText(double value)
{
    char text[40];
    return QString::fromLatin1(text, writeGeneralText(text, value) - text);
}

QString signedText(double value)
{
    char text[40];
    text[0] = ' ';
    const char* end = writeGeneralText(text + 1, value);
    const char* begin = text[1] == '-' ? text + 1 : text;
    return QString::fromLatin1(begin, end - begin);
}

QString pictureText(double value, QStringView pictureOf)
{
    if (!std::isfinite(value))
        return generalText(value);
    const Picture picture = parsePicture(pictureOf);
    Decimal decimal = decimalOf(value);
    roundHalfAway(decimal, picture.mostPlaces);

    const int whole = std::max(decimal.point, 0);
    const auto digitAt = [&decimal](int place) { // place 0 is the first behind the point, -1 the last ahead of it
        const int at = decimal.point + place;
        return at >= 0 && at < decimal.count ? QLatin1Char(decimal.digits[static_cast<size_t>(at)]) : QLatin1Char('0');
    };
    QString text;
    text.reserve(whole + whole / 3 + picture.leastWhole * 2 + picture.mostPlaces + 2);
    if (decimal.negative && decimal.count > 0)
        text += QLatin1Char('-');
    for (int left = std::max(whole, picture.leastWhole); left > 0; --left) {
        text += digitAt(-left);
        if (picture.grouped && left > 1 && left % 3 == 1)
            text += QLatin1Char(',');
    }
    if (!picture.point)
        return text;
    text += QLatin1Char('.');
    const int places = std::max(picture.leastPlaces, std::min(picture.mostPlaces, decimal.count - decimal.point));
    for (int place = 0; place < places; ++place)
        text += digitAt(place);
    return text;
}

double roundHalfEven(double value, int decimals)
{
    if (!std::isfinite(value))
        return value;
    Decimal decimal = decimalOf(value);
    roundHalfToEven(decimal, decimals);
    if (decimal.count == 0)
        return 0.0;
    char text[40];
    const char* end = putDecimal(text, decimal);
    double rounded = 0.0;
    std::from_chars(text, end, rounded);
    return rounded;
}

// -- Pieces of texts -------------------------------------------------------------------------------------------------

QString Mid(QStringView text, qsizetype start, qsizetype length)
{
    const qsizetype from = std::max<qsizetype>(start, 1) - 1;
    if (from >= text.size())
        return {};
    const qsizetype rest = text.size() - from;
    return text.sliced(from, length < 0 ? rest : std::min(length, rest)).toString();
}

QString Left(QStringView text, qsizetype length)
{
    return text.first(std::clamp<qsizetype>(length, 0, text.size())).toString();
}

QString Right(QStringView text, qsizetype length)
{
    return text.last(std::clamp<qsizetype>(length, 0, text.size())).toString();
}

qsizetype InStr(QStringView text, QStringView what, qsizetype start)
{
    const qsizetype from = std::max<qsizetype>(start, 1) - 1;
    if (from >= text.size())
        return 0;
    return text.indexOf(what, from) + 1;
}

QString LTrim(QStringView text)
{
    while (!text.isEmpty() && isBlank(text.front()))
        text = text.sliced(1);
    return text.toString();
}

QString RTrim(QStringView text)
{
    while (!text.isEmpty() && isBlank(text.back()))
        text.chop(1);
    return text.toString();
}

QString Trim(QStringView text)
{
    while (!text.isEmpty() && isBlank(text.front()))
        text = text.sliced(1);
    return RTrim(text);
}

// -- Pasted blocks ---------------------------------------------------------------------------------------------------

int numofrows(QStringView text)
{
    const int rows = (text.isEmpty() ? 0 : 1) + static_cast<int>(text.count(QLatin1Char('\r')));
    return rows == 0 ? 1 : rows;
}

int numofcols(QStringView text)
{
    return 1 + static_cast<int>(text.count(QLatin1Char('\t')));
}

QString removelfs(QString& text)
{
    text.remove(QLatin1Char('\n'));
    return text;
}

QString withCrLf(const QString& text)
{
    QString given;
    given.reserve(text.size() + text.size() / 16);
    QChar before;
    for (const QChar c : text) {
        if (c == QLatin1Char('\n') && before != QLatin1Char('\r'))
            given += QLatin1Char('\r');
        given += c;
        before = c;
    }
    return given;
}

// -- Files as text ---------------------------------------------------------------------------------------------------

QStringList linesOf(const QByteArray& bytes)
{
    QStringList lines;
    lines.reserve(bytes.size() / 40);
    const char* at = bytes.constData();
    const char* const end = at + bytes.size();
    while (at < end) {
        const char* stop = at;
        while (stop < end && *stop != '\r' && *stop != '\n')
            ++stop;
        lines << QString::fromLatin1(at, stop - at);
        if (stop < end)
            stop += *stop == '\r' && stop + 1 < end && stop[1] == '\n' ? 2 : 1;
        at = stop;
    }
    if (!lines.isEmpty() && lines.back() == QLatin1String("\x1a"))
        lines.removeLast();
    return lines;
}

QStringList listItemsOf(const QByteArray& bytes)
{
    QStringList items;
    for (const QString& line : linesOf(bytes)) {
        qsizetype at = 0;
        do {
            while (at < line.size() && isBlank(line[at]))
                ++at;
            qsizetype comma = 0;
            if (at < line.size() && line[at] == QLatin1Char('"')) {
                qsizetype close = line.indexOf(QLatin1Char('"'), at + 1);
                if (close < 0)
                    close = line.size(); // a quote that nobody closed ends with its line, not with the file
                items << line.sliced(at + 1, close - at - 1);
                comma = line.indexOf(QLatin1Char(','), std::min(close + 1, line.size()));
            } else {
                comma = line.indexOf(QLatin1Char(','), at);
                items << RTrim(QStringView(line).sliced(at, (comma < 0 ? line.size() : comma) - at));
            }
            at = comma < 0 ? line.size() + 1 : comma + 1;
        } while (at <= line.size());
    }
    return items;
}

} // namespace kalvo
