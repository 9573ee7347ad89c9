// SPDX-License-Identifier: GPL-3.0-or-later
#include "results/PeakFile.h"

#include <algorithm>

namespace kalvo {

namespace {

constexpr auto kCrLf = "\r\n";
constexpr qsizetype kMostLossesTold = 10;

QByteArray countLine(int count)
{
    return ' ' + QByteArray::number(count) + ' ' + kCrLf;
}

bool hasGap(const QStringList& cells)
{
    const qsizetype firstEmpty = cells.indexOf(QString());
    for (qsizetype i = std::max<qsizetype>(firstEmpty, 0); firstEmpty >= 0 && i < cells.size(); ++i)
        if (!cells.at(i).isEmpty())
            return true;
    return false;
}

void tellLosses(Services& services, const QStringList& losses)
{
    if (losses.isEmpty())
        return;
    QStringList lines = losses.mid(0, kMostLossesTold);
    if (losses.size() > lines.size())
        lines += QStringLiteral("and %1 more").arg(losses.size() - lines.size());
    services.dialogs.warn(
        QStringLiteral("The file is saved, but a comparison that reads it will not find everything:\r\n%1")
            .arg(lines.join(QStringLiteral("\r\n"))));
}

} // namespace

QByteArray peakFileText(const FlexGrid& peakTable, const RunCounts& counts)
{
    QByteArray text = "Peak Flow File - Ratios /Plans/JD Simulations";
    text += kCrLf;
    for (const int count : {counts.numStations, counts.numRatios, counts.graphPlans, counts.numJD})
        text += countLine(count);
    for (int row = 1; row < peakTable.rows(); ++row) {
        for (const QString& cell : peakTable.rowTexts(row)) {
            if (cell.isEmpty())
                break;
            text += cell.toLatin1() + '\t';
        }
        text += kCrLf;
    }
    return text;
}

QStringList peakFileLosses(const FlexGrid& peakTable)
{
    QStringList losses;
    bool hasStation = false;
    for (int row = 1; row < peakTable.rows(); ++row) {
        const QStringList cells = peakTable.rowTexts(row);
        const QString name = cells.value(0);
        hasStation = hasStation || !name.isEmpty();
        const QString where = QStringLiteral("Row %1 (%2): ").arg(row).arg(name);
        if (hasGap(cells))
            losses += where + QStringLiteral("the peaks behind an empty cell are left out");
        if (name.contains(QLatin1Char(',')) || name.contains(QLatin1Char('"')) || name.contains(QLatin1Char('\t')))
            losses += where + QStringLiteral("the name is read as more than one item");
    }
    if (!hasStation)
        losses += QStringLiteral("The table holds no peaks: the run was not read to its end");
    return losses;
}

void newSavePeaks(ResultDesk& desk)
{
    FileDialog dialog;
    dialog.title = QStringLiteral("Save HEC-1 Peak Flow Data");
    dialog.defaultExtension = QStringLiteral(".pek");
    dialog.filter = QStringLiteral("All Files (*.*)|*.*|PEAK Files(*.pek)|*.pek|Text Files (*.txt)|*.txt");
    dialog.filterIndex = 2;
    dialog.initialName = desk.offeredName();
    dialog.overwritePrompt = true;
    const auto chosen = desk.services().dialogs.saveFile(dialog);
    if (!chosen || chosen->isEmpty())
        return;
    const FlexGrid& table = desk.tables().peakTable;
    QString why;
    if (!writeUserFile(*chosen, peakFileText(table, desk.tables().tableCounts), &why)) {
        desk.services().dialogs.warn(
            QStringLiteral("The peak flows could not be saved as '%1'.\r\n%2\r\nThey are still in the table.")
                .arg(*chosen, why));
        return;
    }
    tellLosses(desk.services(), peakFileLosses(table));
}

} // namespace kalvo
