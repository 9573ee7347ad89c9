// SPDX-License-Identifier: GPL-3.0-or-later
#include "run/EngineLocator.h"

#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

namespace kalvo {

namespace {

/// The file of a name in a folder whatever its case, empty when there is none.
QString fileIn(const QString& folder, const QString& name)
{
    if (folder.isEmpty())
        return {};
    const QString path = ProgramFolder(folder, {}).file(name);
    return QFileInfo(path).isFile() ? path : QString();
}

HecEngine direct(const QString& path)
{
    HecEngine engine{path, path, {}, {}};
    const QFileInfo file(path);
    if (!file.exists())
        engine.whyNot = QStringLiteral("'%1' does not exist.").arg(path);
    else if (!file.isFile() || !file.isExecutable())
        engine.whyNot = QStringLiteral("'%1' is not a program that can be started.").arg(path);
    return engine;
}

QString onPath(const QString& name, const QStringList& path)
{
    return path.isEmpty() ? QString() : QStandardPaths::findExecutable(name, path);
}

/// A program of the other system, or one that the command interpreter starts; empty when this system cannot.
HecEngine withHelper(const QString& path, const EnginePlaces& places)
{
    if (places.isWindows)
        return {path, QStringLiteral("cmd.exe"), {QStringLiteral("/c"), QDir::toNativeSeparators(path)}, {}};
    const QString wine = onPath(QStringLiteral("wine"), places.path);
    return wine.isEmpty() ? HecEngine{} : HecEngine{path, wine, {path}, {}};
}

HecEngine startable(const QString& path, const EnginePlaces& places)
{
    if (!path.endsWith(QLatin1String(".exe"), Qt::CaseInsensitive))
        return direct(path);
    HecEngine engine = withHelper(path, places);
    if (!engine.isFound())
        engine = {path, {}, {}, QStringLiteral("'%1' needs wine, which is not installed.").arg(path)};
    return engine;
}

} // namespace

QString HecEngine::described() const
{
    if (!whyNot.isEmpty())
        return whyNot;
    return program == path ? path : QStringLiteral("%1 (through %2)").arg(path, QFileInfo(program).fileName());
}

EnginePlaces EnginePlaces::ofSystem(const ProgramFolder& folder, const QString& executableFolder)
{
    EnginePlaces places;
    places.programFolder = folder.path();
    places.executableFolder = executableFolder;
    places.overridden = qEnvironmentVariable("KALVO_HEC1");
    places.path = qEnvironmentVariable("PATH").split(QDir::listSeparator(), Qt::SkipEmptyParts);
#ifdef Q_OS_WIN
    places.isWindows = true;
#endif
    return places;
}

HecEngine locateEngine(const EnginePlaces& places)
{
    if (!places.overridden.isEmpty())
        return startable(QFileInfo(places.overridden).absoluteFilePath(), places);

    const QString plain = QStringLiteral("hec1");
    const QString exe = QStringLiteral("hec1.exe");
    if (const QString own = fileIn(places.programFolder, plain); !own.isEmpty() && !places.isWindows)
        return direct(own);
    if (const QString own = fileIn(places.programFolder, exe); !own.isEmpty())
        if (HecEngine engine = withHelper(own, places); engine.isFound())
            return engine;
    if (const QString beside = fileIn(places.executableFolder, places.isWindows ? exe : plain); !beside.isEmpty())
        return places.isWindows ? withHelper(beside, places) : direct(beside);
    if (const QString found = onPath(plain, places.path); !found.isEmpty())
        return direct(found);
    HecEngine none;
    none.whyNot = QStringLiteral("There is no HEC-1: neither hec1 in '%1' nor beside the program nor on the path.")
                      .arg(QDir::toNativeSeparators(places.programFolder));
    return none;
}

} // namespace kalvo
