// SPDX-License-Identifier: GPL-3.0-or-later
#include "run/BatchTables.h"

#include "platform/GridCsv.h"
#include "platform/text.h"

#include <algorithm>

namespace kalvo {

namespace {

constexpr double kCubicFeetInAcreFoot = 43560.0;
constexpr double kSecondsInMinute = 60.0;
constexpr double kMinutesInHour = 60.0;
constexpr int kDecimals = 6; ///< of computed numbers: enough for any use, and no noise of the last digits

void append(QByteArray& out, double value)
{
    char text[40];
    out.append(text, writeGeneralText(text, value) - text);
}

void append(QByteArray& out, int value)
{
    out.append(QByteArray::number(value));
}

/// deck,station,plan,ratio,jd, of a record.
QByteArray keyOf(const QByteArray& deck, const Tape21& tape, const HydrographRecord& record)
{
    QByteArray key = deck + ',' + csvField(Trim(tape.stations[static_cast<size_t>(record.station)].name)) + ',';
    for (const int number : {record.plan, record.ratio, record.jd}) {
        append(key, number);
        key += ',';
    }
    return key;
}

double intervalOf(const Tape21& tape, const HydrographRecord& record)
{
    return tape.stations[static_cast<size_t>(record.station)].header.intervalMinutes;
}

QByteArray jsonText(const QString& text)
{
    QByteArray out = "\"";
    for (const char c : text.toUtf8()) {
        if (c == '"' || c == '\\')
            out += '\\';
        if (static_cast<unsigned char>(c) >= ' ')
            out += c;
        else
            out += "\\u00" + QByteArray::number(static_cast<unsigned char>(c), 16).rightJustified(2, '0');
    }
    return out + '"';
}

const char* verdictName(RunOutcome::Verdict verdict)
{
    switch (verdict) {
    case RunOutcome::Verdict::NormalEnd:
        return "normal end";
    case RunOutcome::Verdict::EndedWithErrors:
        return "ended with errors";
    case RunOutcome::Verdict::WroteNothing:
        return "wrote nothing";
    case RunOutcome::Verdict::Crashed:
        return "crashed";
    case RunOutcome::Verdict::Stopped:
        return "stopped";
    case RunOutcome::Verdict::NotStarted:
        break;
    }
    return "not started";
}

QByteArray recordJson(const Tape21& tape, const HydrographRecord& record, DeckUnits units)
{
    const double interval = intervalOf(tape, record);
    QByteArray out = "{\"station\": ";
    out += jsonText(Trim(tape.stations[static_cast<size_t>(record.station)].name));
    const auto number = [&out](const char* name, auto value) {
        out += ", \"" + QByteArray(name) + "\": ";
        append(out, value);
    };
    number("plan", record.plan);
    number("ratio", record.ratio);
    number("jd", record.jd);
    number("interval_min", interval);
    number("peak", record.peak);
    number("time_to_peak_h", roundHalfEven(hoursToPeak(record.flows, interval), kDecimals));
    number("volume", roundHalfEven(hydrographVolume(record.flows, interval, units), kDecimals));
    out += ", \"flows\": [";
    for (size_t i = 0; i < record.flows.size(); ++i) {
        if (i > 0)
            out += ", ";
        append(out, record.flows[i]);
    }
    return out + "]}";
}

} // namespace

DeckUnits unitsOfDeck(std::string_view deck)
{
    size_t at = 0;
    while (at < deck.size()) {
        const std::string_view line = deck.substr(at, deck.find_first_of("\r\n", at) - at);
        // The card stands ahead of the first station.
        if (line.starts_with("KK"))
            break;
        if (line.starts_with("IM") && (line.size() == 2 || line[2] == ' ' || line[2] == ',' || line[2] == '\t'))
            return {true};
        at += line.size() + 1;
    }
    return {};
}

double hydrographVolume(const std::vector<double>& flows, double intervalMinutes, DeckUnits units)
{
    double sum = 0.0;
    for (size_t i = 1; i < flows.size(); ++i)
        sum += (flows[i - 1] + flows[i]) / 2.0;
    return sum * intervalMinutes * kSecondsInMinute / (units.isMetric ? 1000.0 : kCubicFeetInAcreFoot);
}

double hoursToPeak(const std::vector<double>& flows, double intervalMinutes)
{
    const auto largest = std::max_element(flows.begin(), flows.end());
    if (largest == flows.end() || *largest <= 0.0)
        return 0.0;
    return static_cast<double>(largest - flows.begin()) * intervalMinutes / kMinutesInHour;
}

QByteArray peaksCsv(const QString& deck, const Tape21& tape, DeckUnits units)
{
    const QByteArray deckField = csvField(deck);
    QByteArray out;
    for (const HydrographRecord& record : tape.records) {
        const double interval = intervalOf(tape, record);
        out += keyOf(deckField, tape, record);
        append(out, record.peak);
        out += ',';
        append(out, roundHalfEven(hoursToPeak(record.flows, interval), kDecimals));
        out += ',';
        append(out, roundHalfEven(hydrographVolume(record.flows, interval, units), kDecimals));
        out += ',';
        out += units.flow();
        out += "\r\n";
    }
    return out;
}

QByteArray hydrographsCsv(const QString& deck, const Tape21& tape, DeckUnits units)
{
    const QByteArray deckField = csvField(deck);
    const QByteArray end = QByteArray(",") + units.flow() + "\r\n";
    QByteArray out;
    for (const HydrographRecord& record : tape.records) {
        const QByteArray key = keyOf(deckField, tape, record);
        const double interval = intervalOf(tape, record);
        out.reserve(out.size() + static_cast<qsizetype>(record.flows.size()) * (key.size() + end.size() + 14));
        for (size_t i = 0; i < record.flows.size(); ++i) {
            out += key;
            append(out, static_cast<double>(i) * interval);
            out += ',';
            append(out, record.flows[i]);
            out += end;
        }
    }
    return out;
}

QByteArray deckJson(const QString& deck, const RunOutcome& outcome, int status, const QStringList& messages,
                    const Tape21& tape, DeckUnits units)
{
    QByteArray out = "{\"deck\": " + jsonText(deck) + ", \"verdict\": \"" + verdictName(outcome.verdict) +
                     "\", \"status\": " + QByteArray::number(status) + ", \"flow_unit\": \"" + units.flow() +
                     "\", \"volume_unit\": \"" + units.volume() + "\", \"messages\": [";
    for (qsizetype i = 0; i < messages.size(); ++i)
        out += (i > 0 ? ", " : "") + jsonText(messages[i]);
    out += "], \"hydrographs\": [";
    for (size_t i = 0; i < tape.records.size(); ++i)
        out += (i > 0 ? ",\n " : "\n ") + recordJson(tape, tape.records[i], units);
    return out + "]}";
}

QByteArray withDeckColumn(const QString& deck, const QByteArray& csv, bool withHeading)
{
    const QByteArray field = csvField(deck) + ',';
    QByteArray out;
    qsizetype at = 0;
    for (bool isHeading = true; at < csv.size(); isHeading = false) {
        const qsizetype end = csv.indexOf('\n', at);
        const qsizetype next = end < 0 ? csv.size() : end + 1;
        if (!isHeading || withHeading)
            out += (isHeading ? QByteArray("deck,") : field) + csv.mid(at, next - at);
        at = next;
    }
    return out;
}

} // namespace kalvo
