// SPDX-License-Identifier: GPL-3.0-or-later
#include "run/SummaryReport.h"

#include "platform/text.h"
#include "run/ByteWindow.h"

#include <QFile>

#include <algorithm>

namespace kalvo {

namespace {

constexpr std::string_view kNormalEnd = "*** NORMAL END OF HEC-1 ***";
constexpr std::string_view kErrorMarks[] = {"*** HEC1 ERROR", "*** HEC-1 ERROR"};

bool holds(std::string_view line, std::string_view words)
{
    return line.find(words) != std::string_view::npos;
}

bool holds(const QString& line, std::string_view words)
{
    return line.contains(QLatin1String(words.data(), static_cast<qsizetype>(words.size())));
}

std::string_view withoutLeadingBlanks(std::string_view line)
{
    const size_t first = line.find_first_not_of(' ');
    return first == std::string_view::npos ? std::string_view() : line.substr(first);
}

bool isVisible(char c)
{
    return static_cast<unsigned char>(c) > ' ';
}

void takeMarks(std::string_view line, ReportMarks& marks)
{
    if (!marks.hasText)
        marks.hasText = std::any_of(line.begin(), line.end(), isVisible);
    if (!holds(line, "***"))
        return;
    const std::string_view words = withoutLeadingBlanks(line);
    if (holds(line, kNormalEnd)) {
        marks.holdsNormalEnd = true;
        if (words.starts_with(kNormalEnd))
            marks.endsNormally = true;
    }
    for (const std::string_view mark : kErrorMarks)
        if (words.starts_with(mark) && ++marks.errorCount <= ReportMarks::kMostErrorLines)
            marks.errorLines.append(Trim(QString::fromLatin1(words.substr(0, 512))));
}

/// Lines from the first one that holds a heading on; nothing when none does.
QStringList linesFrom(const QString& path, const std::function<bool(std::string_view)>& isHeading)
{
    QStringList lines;
    forEachReportLine(path, [&](std::string_view line) {
        if (!lines.isEmpty() || isHeading(line))
            lines.append(QString::fromLatin1(line));
        return lines.size() < kMostSummaryLines;
    });
    return lines;
}

bool isNumber(const QString& word)
{
    double value = 0.0;
    return parseWholeNumber(word.toLatin1().toStdString(), value);
}

} // namespace

bool forEachReportLine(const QString& path, const std::function<bool(std::string_view line)>& take)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Unbuffered))
        return false;
    ByteWindow window(file);
    LineReader reader(window);
    std::string_view line;
    while (reader.next(line))
        if (!take(line))
            return true;
    return !window.hasFailed();
}

ReportMarks reportMarks(const QString& path)
{
    ReportMarks marks;
    marks.isThere = QFile::exists(path);
    const bool wasRead = forEachReportLine(path, [&marks](std::string_view line) {
        takeMarks(line, marks);
        return true;
    });
    marks.isThere = marks.isThere && (wasRead || marks.hasText);
    return marks;
}

ReportMarks reportMarksOfText(QStringView report)
{
    ReportMarks marks;
    marks.isThere = true;
    const QByteArray bytes = report.toLatin1();
    ByteWindow window(std::string_view(bytes.constData(), static_cast<size_t>(bytes.size())));
    LineReader reader(window);
    std::string_view line;
    while (reader.next(line))
        takeMarks(line, marks);
    return marks;
}

OrdinateCount findOrdinateCount(const QString& path)
{
    constexpr std::string_view kWords = "NUMBER OF HYDROGRAPH ORDINATES";
    OrdinateCount count;
    count.canBeRead = forEachReportLine(path, [&](std::string_view line) {
        const size_t words = line.find(kWords);
        const size_t nq = line.find("NQ");
        if (words == std::string_view::npos || nq == std::string_view::npos)
            return true;
        count.isThere = true;
        if (nq + 2 <= words)
            count.text = Trim(QString::fromLatin1(line.substr(nq + 2, words - nq - 2)));
        return false;
    });
    return count;
}

std::optional<double> findComputationInterval(const QString& path)
{
    constexpr std::string_view kName = "NMIN";
    std::optional<double> minutes;
    forEachReportLine(path, [&](std::string_view line) {
        // The listing of a card holds its line number first, so that a comment cannot be taken for the job data.
        const std::string_view words = withoutLeadingBlanks(line);
        if (!words.starts_with(kName) || !holds(words, "MINUTES IN COMPUTATION INTERVAL"))
            return true;
        if (const double value = leadingNumber(words.substr(kName.size())); value > 0.0)
            minutes = value;
        return false;
    });
    return minutes;
}

QList<SummaryBlock> summaryBlocks(const QString& path)
{
    return summaryBlocks(linesFrom(path, [](std::string_view line) { return holds(line, kPlanSummaryHeading); }));
}

QList<SummaryBlock> summaryBlocks(const QStringList& lines)
{
    constexpr int kRoutingLines = 7;
    constexpr int kPumpLines = 11;
    // The lines are searched once: with thousands of headings in a report each of them costs its own blocks alone.
    QList<qsizetype> headings;
    QList<SummaryBlock> inOrder;
    QList<qsizetype> starts; // of those blocks
    const auto take = [&](SummaryBlock::Kind kind, qsizetype at, int count) {
        inOrder.append({kind, lines.mid(at, count)});
        starts.append(at);
    };
    for (qsizetype i = 0; i < lines.size(); ++i) {
        if (holds(lines[i], kPlanSummaryHeading))
            headings.append(i);
        if (headings.isEmpty())
            continue;
        if (holds(lines[i], "ROUTED TO"))
            take(SummaryBlock::Kind::RoutedTo, i, kRoutingLines);
        if (holds(lines[i], "PUMP FLOW TO"))
            take(SummaryBlock::Kind::PumpFlowTo, i, kPumpLines);
    }
    QList<SummaryBlock> blocks;
    qsizetype taken = 0;
    for (const qsizetype heading : headings)
        for (qsizetype i = std::lower_bound(starts.begin(), starts.end(), heading) - starts.begin(); i < starts.size();
             ++i) {
            blocks.append(inOrder[i]);
            taken += inOrder[i].lines.size();
            if (taken > kMostSummaryLines)
                return blocks;
        }
    return blocks;
}

bool BasinStages::differ() const
{
    for (qsizetype i = 0; i < items.size(); ++i)
        if (items[i] != (i < parsed.size() ? parsed[i] : QString()))
            return true;
    return false;
}

BasinStages basinStages(const QList<SummaryBlock>& blocks)
{
    constexpr int kPlaces[] = {6, 9, 12, 15, 18, 21};
    const QString kStage = QStringLiteral("STAGE ");
    BasinStages stages;
    QString routedText;
    QString stageLine;
    for (const SummaryBlock& block : blocks) {
        if (block.kind != SummaryBlock::Kind::RoutedTo)
            continue;
        for (const QString& line : block.lines) {
            routedText += line;
            if (stageLine.isEmpty() && line.contains(kStage))
                stageLine = line;
        }
    }
    const qsizetype start = routedText.indexOf(kStage);
    const QStringList items = start < 0 ? QStringList() : routedText.mid(start).split(QChar(u' '));
    for (const int place : kPlaces)
        stages.items.append(items.value(place));

    const QString tail = stageLine.mid(stageLine.indexOf(kStage) + kStage.size());
    for (const QString& word : tail.split(QChar(u' '), Qt::SkipEmptyParts)) {
        if (!isNumber(word) || stages.parsed.size() == static_cast<qsizetype>(std::size(kPlaces)))
            break;
        stages.parsed.append(word);
    }
    return stages;
}

StorageSummary storageSummary(const QString& path)
{
    return storageSummary(linesFrom(path, [](std::string_view line) {
        return holds(line, kPlanSummaryHeading) || holds(line, kRunoffSummaryHeading);
    }));
}

StorageSummary storageSummary(const QStringList& lines)
{
    StorageSummary summary;
    for (const QString& line : lines) {
        if (summary.kind != StorageSummary::Kind::None) {
            if (holds(line, "NORMAL END OF HEC-1"))
                break;
            summary.lines.append(line);
        } else if (holds(line, kPlanSummaryHeading)) {
            summary.kind = StorageSummary::Kind::Standard;
        } else if (holds(line, kRunoffSummaryHeading)) {
            summary.kind = StorageSummary::Kind::Type1;
        }
    }
    return summary;
}

std::optional<QString> reportRunTime(const QStringList& firstLines)
{
    constexpr int kSeventh = 6;
    QString line = firstLines.value(kSeventh);
    if (line.contains(QLatin1String("Brevanholt")))
        line = firstLines.value(kSeventh + 1);
    if (!line.contains(QLatin1String("RUN DATE")))
        return std::nullopt;
    return Mid(line, 29, 12);
}

ReportAge chkytime(const QStringList& firstLines, const QTime& now)
{
    constexpr int kFreshSeconds = 4;
    const auto text = reportRunTime(firstLines);
    if (!text)
        return {};
    const QTime ran = QTime::fromString(Trim(*text).left(8), QStringLiteral("hh:mm:ss"));
    if (!ran.isValid())
        return {};
    const bool isOld = std::abs(ran.secsTo(now)) > kFreshSeconds;
    return {isOld, isOld};
}

} // namespace kalvo
