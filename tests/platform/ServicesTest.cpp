// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/Services.h"
#include "platform/MemoryInfo.h"
#include "tests/support/GridText.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

#if defined(Q_OS_UNIX)
#include <csignal>
#include <sys/resource.h>
#endif

using namespace kalvo;

namespace {

class Folder
{
public:
    QString path(const QString& name) const { return m_directory.filePath(name); }
    void put(const QString& name, const QByteArray& bytes) const { ASSERT_TRUE(writeFile(path(name), bytes)); }
    QByteArray bytes(const QString& name) const { return readFile(path(name)).value_or("(missing)"); }
    QStringList names() const
    {
        return QDir(m_directory.path()).entryList(QDir::Files | QDir::Hidden | QDir::System, QDir::Name);
    }
    QString path() const { return m_directory.path(); }

private:
    QTemporaryDir m_directory;
};

#if defined(Q_OS_UNIX)
/// A disk with room for so many bytes in each file, while it lives.
class SmallDisk
{
public:
    explicit SmallDisk(rlim_t bytes)
    {
        getrlimit(RLIMIT_FSIZE, &m_before);
        m_signal = std::signal(SIGXFSZ, SIG_IGN);
        rlimit limit = m_before;
        limit.rlim_cur = bytes;
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~SmallDisk()
    {
        setrlimit(RLIMIT_FSIZE, &m_before);
        std::signal(SIGXFSZ, m_signal);
    }

private:
    rlimit m_before{};
    void (*m_signal)(int) = nullptr;
};
#endif

// -- Files -----------------------------------------------------------------------------------------------------------

TEST(Files, ComeBackAsTheyWereWritten)
{
    const Folder folder;
    QByteArray bytes("KK\xe9\0\r\n", 6);
    bytes += QByteArray(300000, 'x');
    const QString name = folder.path(QStringLiteral("de ck \u00e9\u0416 ") + QString(180, QLatin1Char('n')));
    QString why;
    ASSERT_TRUE(writeFile(name, bytes, &why)) << why.toStdString();
    EXPECT_EQ(readFile(name), bytes);
    ASSERT_TRUE(writeFile(name, "short"));
    EXPECT_EQ(readFile(name), QByteArray("short")) << "nothing of the longer text is left behind it";
}

TEST(Files, AFailureHasAReason)
{
    const Folder folder;
    QString why;
    EXPECT_FALSE(readFile(folder.path("missing"), &why));
    EXPECT_FALSE(why.isEmpty());
    why.clear();
    EXPECT_FALSE(readFile(folder.path(), &why)) << "a folder is no file";
    EXPECT_FALSE(why.isEmpty());
    why.clear();
    EXPECT_FALSE(writeFile(folder.path("no/such/folder"), "text", &why));
    EXPECT_FALSE(why.isEmpty());
}

TEST(Files, AFullDiskIsTold)
{
    if (!QFile::exists("/dev/full"))
        GTEST_SKIP() << "this system has no device that is always full";
    QString why;
    EXPECT_FALSE(writeFile("/dev/full", "text", &why));
    EXPECT_FALSE(why.isEmpty());
    EXPECT_FALSE(writeUserFile("/dev/full", "text", &why));
    EXPECT_TRUE(writeUserFile("/dev/null", "text", &why)) << why.toStdString();
}

TEST(UserFiles, KeepWhatWasThereBefore)
{
    const Folder folder;
    ASSERT_TRUE(writeUserFile(folder.path("a.dat"), "one"));
    EXPECT_EQ(folder.names(), QStringList{"a.dat"});
    ASSERT_TRUE(writeUserFile(folder.path("a.dat"), "two"));
    ASSERT_TRUE(writeUserFile(folder.path("a.dat"), "three"));
    EXPECT_EQ(folder.names(), (QStringList{"a.dat", "a.dat.bak"}));
    EXPECT_EQ(folder.bytes("a.dat"), "three");
    EXPECT_EQ(folder.bytes("a.dat.bak"), "two");
}

#if defined(Q_OS_UNIX)
TEST(UserFiles, AFullDiskLosesNothing)
{
    const Folder folder;
    ASSERT_TRUE(writeUserFile(folder.path("a.dat"), "the old text"));
    QString why;
    {
        const SmallDisk disk(100);
        EXPECT_FALSE(writeUserFile(folder.path("a.dat"), QByteArray(5000, 'n'), &why));
    }
    EXPECT_FALSE(why.isEmpty());
    EXPECT_EQ(folder.bytes("a.dat"), "the old text");
    EXPECT_EQ(folder.names(), QStringList{"a.dat"});
}

TEST(UserFiles, ALinkStaysALinkAndRightsStay)
{
    const Folder folder;
    folder.put("real.dat", "one");
    const auto rights = QFile::ReadOwner | QFile::WriteOwner | QFile::ReadUser | QFile::WriteUser;
    ASSERT_TRUE(QFile::setPermissions(folder.path("real.dat"), rights));
    ASSERT_TRUE(QFile::link(folder.path("real.dat"), folder.path("link.dat")));
    ASSERT_TRUE(writeUserFile(folder.path("link.dat"), "two"));
    EXPECT_TRUE(QFileInfo(folder.path("link.dat")).isSymLink());
    EXPECT_EQ(folder.bytes("real.dat"), "two");
    EXPECT_EQ(folder.bytes("real.dat.bak"), "one");
    EXPECT_EQ(QFile::permissions(folder.path("real.dat")), rights);
}

TEST(UserFiles, TheBackupThatCannotBeKeptStopsTheSave)
{
    const Folder folder;
    folder.put("a.dat", "the old text");
    ASSERT_TRUE(QDir(folder.path()).mkpath("a.dat.bak/occupied"));
    QString why;
    EXPECT_FALSE(writeUserFile(folder.path("a.dat"), "new", &why));
    EXPECT_TRUE(why.contains("a.dat.bak")) << why.toStdString();
    EXPECT_EQ(folder.bytes("a.dat"), "the old text");
}
#endif

// -- Program folder
// ----------------------------------------------------------------------------------------------------

TEST(ProgramFolders, FindAFileInAnySpelling)
{
    const Folder folder;
    const ProgramFolder program(folder.path(), {});
    EXPECT_EQ(program.file("checky.out"), folder.path("checky.out")) << "as given while none is there";
    folder.put("CHECKY.OUT", "report");
    EXPECT_EQ(program.file("checky.out"), QFileInfo(program.spellings("Checky.Out").value(0)).absoluteFilePath());
    EXPECT_EQ(readFile(program.file("checky.out")), QByteArray("report"));
    EXPECT_TRUE(program.spellings("checky.ou").isEmpty());
}

TEST(ProgramFolders, TakeTheNewestOfSeveralAndRemoveAll)
{
    const Folder folder;
    folder.put("checky.out", "old");
    folder.put("CHECKY.OUT", "new");
    const ProgramFolder program(folder.path(), {});
    if (program.spellings("checky.out").size() < 2)
        GTEST_SKIP() << "this file system does not tell the spellings apart";
    QFile old(folder.path("checky.out"));
    ASSERT_TRUE(old.open(QIODevice::ReadWrite));
    ASSERT_TRUE(old.setFileTime(QDateTime::currentDateTime().addSecs(-60), QFileDevice::FileModificationTime));
    old.close();
    EXPECT_EQ(program.file("checky.out"), folder.path("CHECKY.OUT"));
    EXPECT_TRUE(program.remove("Checky.out"));
    EXPECT_TRUE(folder.names().isEmpty());
    EXPECT_TRUE(program.remove("checky.out")) << "nothing there is as good as removed";
}

TEST(ProgramFolders, LetTheRunFolderWinOverTheDataFolders)
{
    const Folder run;
    const Folder first;
    const Folder second;
    const ProgramFolder program(run.path(), {first.path(), second.path()});
    EXPECT_TRUE(program.dataFile("HECErrorDEscriptions.txt").isEmpty());
    second.put("HECERRORDESCRIPTIONS.TXT", "shipped");
    EXPECT_EQ(program.dataFile("HECErrorDEscriptions.txt"), second.path("HECERRORDESCRIPTIONS.TXT"));
    run.put("hecerrordescriptions.txt", "own");
    EXPECT_EQ(program.dataFile("HECErrorDEscriptions.txt"), run.path("hecerrordescriptions.txt"));
}

TEST(ProgramFolders, SayWhyTheyCannotBeWritten)
{
    const Folder folder;
    EXPECT_EQ(ProgramFolder(folder.path(), {}).whyNotWritable(), "");
    EXPECT_TRUE(folder.names().isEmpty()) << "looking leaves nothing behind";
    EXPECT_TRUE(ProgramFolder(folder.path("none"), {}).whyNotWritable().contains("does not exist"));
    folder.put("file", "");
    EXPECT_TRUE(ProgramFolder(folder.path("file"), {}).whyNotWritable().contains("is not a folder"));
    if (QFileInfo(QStringLiteral("/proc/self")).isDir()) {
        EXPECT_TRUE(ProgramFolder("/proc/self", {}).whyNotWritable().contains("cannot be written"));
    }
}

TEST(ProgramFolders, AreFoundByTheProgram)
{
    const Folder home;
    const Folder portable;
    portable.put("TypeRainfallData.txt", "");

    EXPECT_EQ(ProgramFolder::ofProgram(portable.path()).path(), portable.path()) << "it holds the data files";

    ASSERT_TRUE(QDir(portable.path()).mkpath("usr/bin"));
    ASSERT_TRUE(QDir(portable.path()).mkpath("usr/share/kalvo"));
    portable.put("usr/share/kalvo/hec1datarecs.txt", "");
    const ProgramFolder installed = ProgramFolder::ofProgram(portable.path("usr/bin"));
    EXPECT_NE(installed.path(), portable.path("usr/bin"));
    EXPECT_EQ(installed.dataFile("HEC1DATARECS.TXT"), portable.path("usr/share/kalvo/hec1datarecs.txt"));

    qputenv("KALVO_HOME", QFile::encodeName(home.path("my \u00e9 runs")));
    EXPECT_EQ(ProgramFolder::ofProgram(portable.path()).path(), home.path("my \u00e9 runs"));
    EXPECT_TRUE(QFileInfo(home.path("my \u00e9 runs")).isDir()) << "it is made when it is missing";
    qunsetenv("KALVO_HOME");
}

// -- Memory
// ------------------------------------------------------------------------------------------------------------

TEST(Memory, IsReadFromTheSystemsText)
{
    const MemoryInfo info =
        memoryInfoFrom("MemTotal:       8000000 kB\nMemFree:  10 kB\nMemAvailable:    2000000 kB\n");
    EXPECT_EQ(info.totalBytes, 8000000ULL * 1024);
    EXPECT_EQ(info.loadPercent, 75);
    EXPECT_FALSE(memoryInfoFrom("").isKnown());
    EXPECT_FALSE(memoryInfoFrom("MemTotal: x").isKnown());
    EXPECT_EQ(memoryInfoFrom("MemTotal: 5 kB\nMemAvailable: 9 kB").loadPercent, 0);
#if defined(Q_OS_LINUX) || defined(Q_OS_WIN) || defined(Q_OS_MACOS)
    EXPECT_TRUE(memoryInfo().isKnown());
#endif
}

} // namespace
