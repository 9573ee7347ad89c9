// SPDX-License-Identifier: GPL-3.0-or-later
#include "run/ReportText.h"

#include "deck/ImportFile.h"
#include "platform/text.h"
#include "run/RunFolder.h"

#include <QDateTime>
#include <QFileInfo>

namespace kalvo {

namespace {

constexpr int kStampLine = 6; ///< the seventh, from 0
constexpr qsizetype kStampBytes = 16 * 1024;
constexpr qsizetype kTimeLength = 11;

} // namespace

QString runStamp(const QByteArray& reportStart)
{
    const QString line = linesOf(reportStart).value(kStampLine);
    const qsizetype date = InStr(line, u"DATE");
    const qsizetype time = date > 0 ? InStr(line, u"TIME", date + 4) : 0;
    if (time == 0)
        return {};
    return Trim(Mid(line, date + 4, time - date - 4)) + Trim(Mid(line, time + 4, kTimeLength));
}

QString ReportText::stampOfFile() const
{
    QFile file(RunFolder(m_services.folder).report());
    if (!file.open(QIODevice::ReadOnly))
        return QStringLiteral("none");
    const QString stamp = runStamp(file.read(kStampBytes));
    if (!stamp.isEmpty())
        return stamp;
    const QFileInfo now(file);
    return QStringLiteral("%1 bytes of %2").arg(now.size()).arg(now.lastModified().toMSecsSinceEpoch());
}

bool ReportText::isStale()
{
    m_found = stampOfFile();
    return m_found != m_stamp;
}

TextBuffer ReportText::take()
{
    m_stamp = m_found;
    m_why.clear();
    const QString path = RunFolder(m_services.folder).report();
    if (!QFileInfo::exists(path)) {
        m_why = QStringLiteral("There is no HEC-1 output.\nHEC-1 has not been run, or its last run wrote none.");
        return {};
    }
    QString reason;
    auto text = TextBuffer::load(path, &reason);
    if (!text)
        m_why = QStringLiteral("The HEC-1 output cannot be read.\n%1\n%2").arg(path, reason);
    else if (text->isEmpty())
        m_why = QStringLiteral("The HEC-1 output is empty.");
    return text ? std::move(*text) : TextBuffer();
}

void saveViewerText(Services& services, QByteArrayView text, const FileDialog& dialog)
{
    const auto chosen = services.dialogs.saveFile(dialog);
    if (!chosen || chosen->isEmpty())
        return;
    writeChosenFile(services, QFileInfo(*chosen).absoluteFilePath(), QByteArray::fromRawData(text.data(), text.size()),
                    QStringLiteral("in the window"));
}

bool mayCopy(Services& services, qsizetype count)
{
    if (count <= kMostCopied)
        return true;
    services.dialogs.tell(
        QStringLiteral("%1 MB are too much for the clipboard.\r\nSave the output instead.").arg(count >> 20));
    return false;
}

void copyReport(Services& services, const TextBuffer& report, qsizetype start, qsizetype count)
{
    if (count > 0 && mayCopy(services, count))
        services.clipboard.setText(QString::fromLatin1(report.mid(start, count)));
}

} // namespace kalvo
