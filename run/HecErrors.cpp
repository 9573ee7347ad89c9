// SPDX-License-Identifier: GPL-3.0-or-later
#include "run/HecErrors.h"

#include "platform/text.h"
#include "run/SummaryReport.h"

namespace kalvo {

HecErrorTexts::HecErrorTexts(const QByteArray& file)
{
    const QStringList items = listItemsOf(file);
    for (qsizetype i = 0; i + 2 < items.size(); i += 3)
        m_texts.insert(Trim(items[i]), items[i + 1] + QStringLiteral("\r\n") + items[i + 2]);
}

std::optional<QString> hecErrorNumber(const QString& line)
{
    // Both forms stand with one blank ahead, so that three characters from the place hold a number of two digits.
    if (line.contains(QLatin1String("*** HEC-1 ERROR")))
        return Trim(Mid(line, 17, 3));
    if (line.contains(QLatin1String("*** HEC1 ERROR")))
        return Trim(Mid(line, 16, 3));
    return std::nullopt;
}

QString findHecErrors(const QString& reportPath, const HecErrorTexts& texts)
{
    QString collected;
    forEachReportLine(reportPath, [&](std::string_view bytes) {
        if (bytes.find("*** HEC") == std::string_view::npos)
            return true;
        const QString line =
            QString::fromLatin1(bytes.data(), static_cast<qsizetype>(std::min<size_t>(bytes.size(), 512)));
        if (const auto number = hecErrorNumber(line))
            collected += QStringLiteral("\r\n") + texts.text(*number);
        return collected.size() < kNumerousErrorsLength;
    });
    return collected;
}

} // namespace kalvo
