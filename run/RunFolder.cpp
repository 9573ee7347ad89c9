// SPDX-License-Identifier: GPL-3.0-or-later
#include "run/RunFolder.h"

#include <QDir>

namespace kalvo {

std::unique_ptr<RunFolder> RunFolder::temporary(QString* why)
{
    auto directory = std::make_unique<QTemporaryDir>(QDir::temp().filePath(QStringLiteral("kalvo-run-XXXXXX")));
    if (!directory->isValid()) {
        if (why)
            *why = QStringLiteral("No temporary folder can be made in '%1': %2.")
                       .arg(QDir::tempPath(), directory->errorString());
        return nullptr;
    }
    auto folder = std::make_unique<RunFolder>(ProgramFolder(directory->path(), {}));
    folder->m_temporary = std::move(directory);
    return folder;
}

void RunFolder::keep()
{
    if (m_temporary)
        m_temporary->setAutoRemove(false);
}

QString RunFolder::clear() const
{
    for (const char* name : {kReport, kTape21, kStages}) {
        const QString file = QString::fromLatin1(name);
        if (!m_folder.remove(file))
            return QStringLiteral("The old '%1' cannot be removed from '%2'.").arg(file, path());
    }
    QString why;
    return writeFile(QDir(path()).filePath(QString::fromLatin1(kTape21)), {}, &why) ? QString() : why;
}

} // namespace kalvo
