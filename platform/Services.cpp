// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/Services.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>
#include <QTemporaryFile>

#include <filesystem>
#include <system_error>

namespace kalvo {

namespace {

// The read-only files that stand beside the program; any one of them shows that a folder is the program's own.
constexpr const char* kDataFiles[] = {"hec1datarecs.txt", "hec1variabledescription.txt", "Carddescriptiontext.txt",
                                      "HECErrorDEscriptions.txt", "TypeRainfallData.txt"};

/// Every file of a folder whose name is `leaf` but for case. The exact spelling comes first.
QFileInfoList filesNamed(const QString& folder, const QString& leaf)
{
    QFileInfoList found;
    QDirIterator files(folder, QDir::Files | QDir::Hidden | QDir::System);
    while (files.hasNext()) {
        files.next();
        const QString name = files.fileName();
        if (name.compare(leaf, Qt::CaseInsensitive) != 0)
            continue;
        if (name == leaf)
            found.prepend(files.fileInfo());
        else
            found.append(files.fileInfo());
    }
    return found;
}

struct FolderAndLeaf
{
    QString folder;
    QString leaf;
};

FolderAndLeaf parted(const QString& folder, const QString& name)
{
    const QFileInfo info(QDir(folder).filePath(name));
    return {info.path(), info.fileName()};
}

bool holdsDataFiles(const QString& folder)
{
    for (const char* name : kDataFiles)
        if (!filesNamed(folder, QString::fromLatin1(name)).isEmpty())
            return true;
    return false;
}

void explain(QString* why, const QString& reason)
{
    if (why)
        *why = reason;
}

QString whyNotWritableFolder(const QString& folder)
{
    const QFileInfo info(folder);
    if (!info.exists())
        return QStringLiteral("The folder '%1' does not exist.").arg(folder);
    if (!info.isDir())
        return QStringLiteral("'%1' is not a folder.").arg(folder);
    // Only a file that was written shows it: rights, a read-only medium and a full disk all look alike beforehand.
    QTemporaryFile probe(QDir(folder).filePath(QStringLiteral(".kalvoXXXXXX")));
    if (!probe.open() || probe.write("x") != 1 || !probe.flush())
        return QStringLiteral("The folder '%1' cannot be written: %2.").arg(folder, probe.errorString());
    return {};
}

} // namespace

ProgramFolder::ProgramFolder(QString folder, QStringList dataFolders)
    : m_folder(QDir(folder).absolutePath()), m_dataFolders(std::move(dataFolders))
{
}

ProgramFolder ProgramFolder::ofProgram(const QString& executableFolder)
{
    const QDir beside(executableFolder);
    QStringList dataFolders;
    // Beside the program, under the install prefix, in an application bundle, in the source tree of a build folder.
    for (const char* place : {".", "data", "../share/kalvo", "../Resources", "../data", "../../data"}) {
        const QString folder = QDir::cleanPath(beside.absoluteFilePath(QString::fromLatin1(place)));
        if (QFileInfo(folder).isDir() && holdsDataFiles(folder))
            dataFolders << folder;
    }

    QString folder = qEnvironmentVariable("KALVO_HOME");
    if (folder.isEmpty()) {
        const QString own = beside.absolutePath();
        if (holdsDataFiles(own) && whyNotWritableFolder(own).isEmpty())
            return ProgramFolder(own, dataFolders);
        folder = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + QStringLiteral("/kalvo");
    }
    // Where this fails, whyNotWritable tells it to whoever wants to write.
    QDir().mkpath(folder);
    return ProgramFolder(folder, dataFolders);
}

QString ProgramFolder::file(const QString& name) const
{
    const FolderAndLeaf at = parted(m_folder, name);
    QFileInfo newest;
    QDateTime newestTime;
    for (const QFileInfo& info : filesNamed(at.folder, at.leaf)) {
        const QDateTime time = info.lastModified();
        if (newest.filePath().isEmpty() || time > newestTime) {
            newest = info;
            newestTime = time;
        }
    }
    return newest.filePath().isEmpty() ? QDir(at.folder).filePath(at.leaf) : newest.absoluteFilePath();
}

QStringList ProgramFolder::spellings(const QString& name) const
{
    const FolderAndLeaf at = parted(m_folder, name);
    QStringList paths;
    for (const QFileInfo& info : filesNamed(at.folder, at.leaf))
        paths << info.absoluteFilePath();
    return paths;
}

bool ProgramFolder::remove(const QString& name) const
{
    bool all = true;
    for (const QString& path : spellings(name))
        all = QFile::remove(path) && all;
    return all;
}

QString ProgramFolder::dataFile(const QString& name) const
{
    for (const QString& folder : QStringList(m_folder) + m_dataFolders) {
        const FolderAndLeaf at = parted(folder, name);
        const QFileInfoList found = filesNamed(at.folder, at.leaf);
        if (!found.isEmpty())
            return found.front().absoluteFilePath();
    }
    return {};
}

QString ProgramFolder::whyNotWritable() const
{
    return whyNotWritableFolder(m_folder);
}

std::optional<QByteArray> readFile(const QString& path, QString* why)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        explain(why, file.errorString());
        return std::nullopt;
    }
    QByteArray bytes = file.readAll();
    if (file.error() != QFileDevice::NoError) {
        explain(why, file.errorString());
        return std::nullopt;
    }
    return bytes;
}

bool writeFile(const QString& path, const QByteArray& bytes, QString* why)
{
    // Unbuffered: the bytes lie together already, and the device's own word comes with the write.
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate | QIODevice::Unbuffered)) {
        explain(why, file.errorString());
        return false;
    }
    for (qint64 done = 0; done < bytes.size();) {
        const qint64 step = file.write(bytes.constData() + done, bytes.size() - done);
        if (step <= 0) {
            explain(why, file.errorString());
            return false;
        }
        done += step;
    }
    file.close(); // file systems over a network tell of a full disk as late as here
    if (file.error() != QFileDevice::NoError) {
        explain(why, file.errorString());
        return false;
    }
    return true;
}

bool writeUserFile(const QString& path, const QByteArray& bytes, QString* why)
{
    namespace fs = std::filesystem;
    const QFileInfo asked(path);
    if (!asked.exists())
        return writeFile(path, bytes, why);
    // A link stays a link: what it points to is what is kept and written.
    const QFileInfo target(asked.canonicalFilePath());
    if (!target.isFile()) // a device holds no text that could be lost
        return writeFile(path, bytes, why);
    if (!target.isWritable()) {
        explain(why, QStringLiteral("the file is write-protected"));
        return false;
    }
    const fs::path name = target.filesystemFilePath();
    fs::path backup = name;
    backup += ".bak";
    std::error_code error;
    fs::rename(name, backup, error);
    if (error) {
        explain(why, QStringLiteral("the old text cannot be kept as '%1.bak': %2")
                         .arg(target.fileName(), QString::fromStdString(error.message())));
        return false;
    }
    QString reason;
    if (writeFile(target.filePath(), bytes, &reason)) {
        fs::permissions(name, fs::status(backup, error).permissions(), error);
        return true;
    }
    fs::rename(backup, name, error); // takes the place of what was written by half
    if (error)
        reason += QStringLiteral(" (the text that was there before is kept as '%1.bak')").arg(target.fileName());
    explain(why, reason);
    return false;
}

} // namespace kalvo
