// SPDX-License-Identifier: GPL-3.0-or-later
#include "run/DetailedRoutings.h"

#include "platform/text.h"
#include "run/BatchTables.h"
#include "run/RunFolder.h"
#include "run/SummaryReport.h"

#include <QFile>

#include <vector>

namespace kalvo {

namespace {

constexpr qint64 kLargeFile = 2'400'000; ///< bytes; up to here no question is asked
constexpr int kGridColumns = 7;

/// Where `words` stand in the text, from 0. A hit closer than 25 characters behind the last one is passed over.
std::vector<size_t> positionsOf(std::string_view text, std::string_view words)
{
    constexpr size_t kStep = 25;
    std::vector<size_t> positions;
    for (size_t at = text.find(words); at != std::string_view::npos; at = text.find(words, at + kStep))
        positions.push_back(at);
    return positions;
}

bool startsWithALine(const QString& path)
{
    bool hasLine = false;
    const bool wasRead = forEachReportLine(path, [&hasLine](std::string_view line) {
        hasLine = !line.empty();
        return false;
    });
    return wasRead && hasLine;
}

} // namespace

bool mayShowDetailedRoutings(Services& services)
{
    const QString path = RunFolder(services.folder).stages();
    const auto tellNoData = [&services] {
        services.dialogs.tell(QStringLiteral("No Data was provided for Reservoir Routings.\r\n"
                                             "The ST Card is Required in the Routing to use this Routine"));
        return false;
    };
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return tellNoData();
    if (file.size() > kLargeFile) {
        MessageBox question;
        question.text = QStringLiteral("This is a large file and may take time to load and view.\r\n"
                                       "You may review the file FLOW_AND_STAGE_STORAGE.TXT in the Kalvo application "
                                       "directory using a word processor");
        question.buttons = Buttons::OkCancel;
        if (services.dialogs.message(question) == Button::Cancel)
            return false;
    }
    return startsWithALine(path) || tellNoData();
}

QStringList jumpEntries(std::string_view text)
{
    constexpr size_t kStationLength = 6;
    constexpr size_t kRatioLength = 12;
    const std::vector<size_t> areas = positionsOf(text, "LOW AREA=");
    const std::vector<size_t> ratios = positionsOf(text, "RATIO");
    // A label starts at a position that counts from 1: one character ahead of where the search found the words.
    const auto label = [text](size_t position, size_t length) {
        return QString::fromLatin1(text.substr(position - 1, length));
    };
    QStringList entries;
    for (size_t i = 0; i < areas.size() && i < ratios.size(); ++i) {
        if (areas[i] <= kStationLength || ratios[i] == 0)
            break;
        entries << label(areas[i] - kStationLength, kStationLength) + u' ' + label(ratios[i], kRatioLength) +
                       QStringLiteral("  //   ") + QString::number(areas[i]);
    }
    return entries;
}

std::optional<qsizetype> jumpPosition(const QString& entry)
{
    const qsizetype mark = entry.lastIndexOf(QLatin1String("//"));
    if (mark < 0)
        return std::nullopt;
    bool isNumber = false;
    const qlonglong position = Trim(QStringView(entry).mid(mark + 2)).toLongLong(&isNumber);
    return isNumber ? std::optional<qsizetype>(position) : std::nullopt;
}

QString columnsByTabs(QString text)
{
    const QString tab(u'\t');
    text.replace(QLatin1String(" ORDNT"), QLatin1String("  ORDNT"));
    for (int blanks = 6; blanks >= 2; --blanks)
        text.replace(QString(blanks, u' '), tab);
    for (int time = 1; time <= 3; ++time)
        text.replace(QLatin1String("\t\t"), QLatin1String("\t"));
    return text;
}

GridFill fillRoutingGrid(FlexGrid& grid, const QString& path, int mostLines)
{
    QStringList lines;
    bool isCut = false;
    const bool wasRead = forEachReportLine(path, [&](std::string_view line) {
        isCut = lines.size() >= mostLines;
        if (!isCut)
            lines << columnsByTabs(QString::fromLatin1(line));
        return !isCut;
    });
    const FlexGrid::Bulk bulk(grid);
    grid.clear();
    grid.setFixedRows(1);
    grid.setCols(kGridColumns);
    grid.setFixedCols(1);
    grid.setRows(static_cast<int>(lines.size()) + 1);
    grid.setRowTexts(0, 1,
                     {QStringLiteral("ORDNT"), QStringLiteral("HR MIN"), QStringLiteral("OUTFLOW"),
                      QStringLiteral("STORAGE"), QStringLiteral("STAGE"), QStringLiteral("QLOWL")});
    for (qsizetype i = 0; i < lines.size(); ++i)
        grid.setRowTexts(static_cast<int>(i) + 1, 0, lines[i].split(u'\t'));
    if (!wasRead)
        return GridFill::Missing;
    return isCut ? GridFill::Cut : GridFill::Whole;
}

UnitOfColumn routingUnits(const ProgramFolder& folder)
{
    const QByteArray deck = readFile(RunFolder(folder).file(RunFolder::kDeck)).value_or(QByteArray());
    const DeckUnits units = unitsOfDeck({deck.constData(), static_cast<size_t>(deck.size())});
    const QString flow = QString::fromLatin1(units.flow());
    const QStringList all{QString(),
                          QString(),
                          QString(),
                          flow,
                          QString::fromLatin1(units.volume()),
                          units.isMetric ? QStringLiteral("m") : QStringLiteral("ft"),
                          flow};
    return [all](int col) { return all.value(col); };
}

} // namespace kalvo
