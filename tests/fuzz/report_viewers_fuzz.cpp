// SPDX-License-Identifier: GPL-3.0-or-later
// What the viewers of a run make of any bytes: the text with its lines, shrink, outline, routings, stages of pools.
#include "platform/FlexGrid.h"
#include "run/DetailedRoutings.h"
#include "run/OutputShrink.h"
#include "run/ReportOutline.h"
#include "run/ReportRain.h"
#include "run/RoutingOutput.h"

#include <QFile>
#include <QTemporaryDir>

#include <cstdint>
#include <cstdlib>

using namespace kalvo;

namespace {

void require(bool holds)
{
    if (!holds)
        std::abort();
}

/// Every position lies in exactly one line, and the lines make up the text.
void requireWholeLines(const TextBuffer& text)
{
    qsizetype at = 0;
    for (qsizetype line = 0; line < text.lineCount(); ++line) {
        require(text.lineStart(line) == at || line == 0);
        require(text.lineFromChar(text.lineStart(line)) == line);
        at = line + 1 < text.lineCount() ? text.lineStart(line + 1) : text.length();
    }
    require(at == text.length());
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    TextBuffer text(bytes);
    requireWholeLines(text);
    runoffSummaryOf(text);
    ReportOutline outline(text);
    while (outline.scan(7)) {
    }
    for (const OutlineEntry& entry : outline.entries())
        outlineTitle(text, entry);
    for (const QString& entry : jumpEntries(std::string_view(text.whole().data(), size_t(text.whole().size()))))
        require(jumpPosition(entry).has_value());
    const qsizetype lines = text.lineCount();
    const ShrinkResult result = shrinkOutput(text);
    require(result.linesBefore == lines && result.linesAfter == text.lineCount());
    requireWholeLines(text);

    columnsByTabs(QString::fromLatin1(bytes));
    static const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("report"));
    QFile file(path);
    require(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
    file.close();
    getrouting(path);
    readReportRain(path);
    FlexGrid grid;
    fillRoutingGrid(grid, path, 500);
    return 0;
}
