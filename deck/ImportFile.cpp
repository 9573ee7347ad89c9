// SPDX-License-Identifier: GPL-3.0-or-later
#include "deck/ImportFile.h"

#include "deck/DeckFile.h"

#include <QFileInfo>

namespace kalvo {

namespace {

constexpr qint64 kLargestFile = qint64{64} << 20; ///< 800,000 cards

QString applicationTitle()
{
    return QString::fromLatin1(kApplicationTitle);
}

} // namespace

std::optional<ChosenFile> chooseTextFile(Services& services, const QString& title)
{
    FileDialog dialog;
    dialog.title = title;
    dialog.filter = QString::fromLatin1(kTextFileFilter);
    const auto chosen = services.dialogs.openFile(dialog);
    if (!chosen || chosen->isEmpty())
        return std::nullopt;
    const QFileInfo file(*chosen);
    const QString path = file.absoluteFilePath();
    if (!file.exists()) {
        services.dialogs.tell(QStringLiteral("The File: %1 does not Exist!").arg(path));
        return std::nullopt;
    }
    QString why;
    std::optional<QByteArray> bytes;
    if (!file.isFile())
        why = QStringLiteral("It is not a file.");
    else if (file.size() > kLargestFile)
        why = QStringLiteral("It is too large for a HEC-1 input deck.");
    else
        bytes = readFile(path, &why);
    if (!bytes) {
        services.dialogs.warn(QStringLiteral("The File: %1 could not be read.\r\n%2").arg(path, why));
        return std::nullopt;
    }
    if (!isTextFile(*bytes)) {
        services.dialogs.message(
            {QStringLiteral("This file is Not Compatible with Kalvo!\r"), applicationTitle(), Icon::Critical});
        return std::nullopt;
    }
    return ChosenFile{path, *bytes};
}

bool writeChosenFile(Services& services, const QString& path, const QByteArray& bytes, const QString& stillWhere)
{
    QString why;
    if (writeUserFile(path, bytes, &why))
        return true;
    services.dialogs.message(
        {QStringLiteral("The File: %1 could not be written.\r\n%2\r\nThe text is still %3.").arg(path, why, stillWhere),
         applicationTitle(), Icon::Critical});
    return false;
}

QByteArray textFileBytes(const QString& text, int* lost)
{
    QByteArray bytes;
    bytes.reserve(text.size() + text.size() / 16);
    char16_t last = 0;
    for (const QChar c : text) {
        const char16_t code = c.unicode();
        if (code == u'\n' && last != u'\r')
            bytes.append('\r');
        last = code;
        if (code < 256) {
            bytes.append(static_cast<char>(code));
        } else {
            bytes.append('?');
            ++*lost;
        }
    }
    return bytes;
}

} // namespace kalvo
