// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/OwnedFile.h"

#include "platform/Services.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLockFile>
#include <QSaveFile>
#include <QSysInfo>

namespace kalvo {

namespace {

/// More pages than anybody opens, leftovers of many a crash included.
constexpr int kMostFiles = 200;

void explain(QString* why, const QString& reason)
{
    if (why)
        *why = reason;
}

} // namespace

OwnedFile::OwnedFile(const QString& path)
    : m_path(path), m_lock(std::make_unique<QLockFile>(path + QStringLiteral(".lock")))
{
    m_lock->setStaleLockTime(0); // a program that runs for weeks keeps what it owns
}

OwnedFile::~OwnedFile() = default;

/// In a sandbox every start of a program can have one and the same process number, so that a dead owner looks alive.
/// The system's own lock on the file tells the truth; another machine's it does not know.
bool OwnedFile::tookFromTheDead()
{
    qint64 process = 0;
    QString machine, program;
    if (!m_lock->getLockInfo(&process, &machine, &program) || machine != QSysInfo::machineHostName())
        return false;
    QLockFile oneAtATime(m_path + QStringLiteral(".claim"));
    return oneAtATime.tryLock(0) && m_lock->removeStaleLockFile() && m_lock->tryLock(0);
}

OwnedFile::Claim OwnedFile::claim(QString* why)
{
    if (m_lock->tryLock(0))
        return Claim::Mine;
    if (m_lock->error() == QLockFile::LockFailedError)
        return tookFromTheDead() ? Claim::Mine : Claim::Owned;
    const QString folder = QFileInfo(m_path).path();
    explain(why, m_lock->error() == QLockFile::PermissionError
                     ? QStringLiteral("nothing can be written in %1").arg(folder)
                     : QStringLiteral("no lock can be made in %1 (is the disk full?)").arg(folder));
    return Claim::Impossible;
}

std::unique_ptr<OwnedFile> OwnedFile::claimNew(const QString& folder, const QString& stem, QString* why)
{
    for (int number = 1; number <= kMostFiles; ++number) {
        std::unique_ptr<OwnedFile> file(
            new OwnedFile(QDir(folder).filePath(QStringLiteral("%1%2.dat").arg(stem).arg(number))));
        if (QFileInfo::exists(file->m_path))
            continue;
        switch (file->claim(why)) {
        case Claim::Mine:
            if (!QFileInfo::exists(file->m_path)) // its owner may have died between the two looks
                return file;
            break;
        case Claim::Owned:
            break;
        case Claim::Impossible:
            return nullptr;
        }
    }
    explain(why, QStringLiteral("%1 such files lie in %2 already").arg(kMostFiles).arg(folder));
    return nullptr;
}

std::vector<std::unique_ptr<OwnedFile>> OwnedFile::claimLeft(const QString& folder, const QString& stem)
{
    std::vector<std::unique_ptr<OwnedFile>> left;
    const QDir there(folder);
    const QStringList names = there.entryList({stem + QStringLiteral("*.dat")}, QDir::Files, QDir::Name);
    for (const QString& name : names) {
        std::unique_ptr<OwnedFile> file(new OwnedFile(there.filePath(name)));
        if (file->claim(nullptr) == Claim::Mine && QFileInfo::exists(file->m_path))
            left.push_back(std::move(file));
    }
    return left;
}

std::optional<QByteArray> OwnedFile::read(QString* why) const
{
    return readFile(m_path, why);
}

bool OwnedFile::write(const QByteArray& bytes, QString* why)
{
    QSaveFile file(m_path);
    if (file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.commit())
        return true;
    explain(why, file.errorString());
    return false;
}

bool OwnedFile::remove(QString* why)
{
    QFile file(m_path);
    if (!file.exists() || file.remove())
        return true;
    explain(why, file.errorString());
    return false;
}

} // namespace kalvo
