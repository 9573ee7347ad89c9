// SPDX-License-Identifier: GPL-3.0-or-later
#include "deck/RecentFiles.h"

#include "platform/SameFile.h"

#include <QFileInfo>
#include <QLocale>
#include <QStringDecoder>

namespace kalvo {

namespace {

constexpr auto kListFile = "Checkyoldfiles.fls";

/// Paths may hold any letter, so the list is UTF-8; a list of an older program is taken byte by byte.
QStringList captionsOf(const QByteArray& bytes)
{
    QStringDecoder utf8(QStringDecoder::Utf8);
    QString text = utf8(bytes);
    if (utf8.hasError())
        text = QString::fromLatin1(bytes);
    text.replace(u'\r', u'\n');
    return text.split(u'\n', Qt::SkipEmptyParts);
}

} // namespace

RecentFiles::RecentFiles(Services& services, QObject* parent) : QObject(parent), m_services(services) {}

void RecentFiles::openoldfiles()
{
    const QString path = m_services.folder.file(QString::fromLatin1(kListFile));
    if (!QFileInfo(path).isFile())
        return;
    const auto bytes = readFile(path);
    if (!bytes)
        return;
    m_onDisk = *bytes;
    for (const QString& caption : captionsOf(*bytes)) {
        m_captions.insert(++m_lastIndex, caption);
        Q_EMIT entryAdded(m_lastIndex);
    }
}

bool RecentFiles::saveoldfiles(QString* why)
{
    return m_captions.isEmpty() || writeList(why);
}

bool RecentFiles::writeList(QString* why)
{
    QByteArray bytes;
    for (const QString& caption : std::as_const(m_captions))
        bytes += caption.toUtf8() + "\r\n";
    if (bytes == m_onDisk)
        return true;
    if (!writeFile(m_services.folder.file(QString::fromLatin1(kListFile)), bytes, why))
        return false;
    m_onDisk = bytes;
    return true;
}

QString RecentFiles::stamped(const QString& path) const
{
    const QDateTime now = m_services.clock.now();
    const QLocale locale = QLocale::system();
    return QStringLiteral("%1 [ %2--%3]")
        .arg(path, locale.toString(now.date(), QLocale::ShortFormat),
             locale.toString(now.time(), QLocale::ShortFormat));
}

void RecentFiles::UPDATEOLDFILES(const QString& path)
{
    if (m_captions.size() + 1 >= kMostElements) {
        m_services.dialogs.tell(QStringLiteral("Too Many Old Files in List -- Clear Old File List!"));
        return;
    }
    for (auto entry = m_captions.begin(); entry != m_captions.end(); ++entry) {
        if (!isSameFile(pathOf(entry.value()), path))
            continue;
        entry.value() = stamped(path);
        Q_EMIT entryChanged(entry.key());
        return;
    }
    m_captions.insert(++m_lastIndex, stamped(path));
    Q_EMIT entryAdded(m_lastIndex);
}

QString RecentFiles::pathOf(const QString& caption)
{
    // The last one: a folder's name may hold " [" too.
    const qsizetype mark = caption.lastIndexOf(QStringLiteral(" ["));
    return mark < 0 ? caption : caption.left(mark);
}

QString RecentFiles::menuText(const QString& caption)
{
    QString text = caption;
    return text.replace(u'&', QStringLiteral("&&"));
}

bool RecentFiles::remove(const QList<int>& indexes, QString* why)
{
    for (const int index : indexes)
        if (m_captions.remove(index) > 0)
            Q_EMIT entryRemoved(index);
    return writeList(why);
}

} // namespace kalvo
