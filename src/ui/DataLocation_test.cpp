// Where the data goes: "data" beside the program when that directory accepts new
// files, otherwise "data" in the user's own directory.
#include "ui/DataLocation.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

QStringList entries(const QString &dir)
{
    return QDir(dir).entryList(QDir::AllEntries | QDir::Hidden | QDir::System |
                               QDir::NoDotAndDotDot);
}

} // namespace

TEST(DataLocation, PortableCopyKeepsDataBesideTheProgram)
{
    QTemporaryDir program;
    QTemporaryDir user;
    const QString userData = user.path() + "/Tavrino";
    const QString data = program.path() + "/data";

    // No data directory yet: the program directory is probed and left as it was.
    EXPECT_EQ(chooseDataDir(program.path(), userData), data);
    EXPECT_EQ(entries(program.path()), QStringList());
    EXPECT_FALSE(QFileInfo::exists(userData));

    // An existing data directory is used and keeps only what it held.
    ASSERT_TRUE(QDir(program.path()).mkdir("data"));
    ASSERT_TRUE(QFile(data + "/Tavrino_Students.dat").open(QIODevice::WriteOnly));
    EXPECT_EQ(chooseDataDir(program.path(), userData), data);
    EXPECT_EQ(entries(data), QStringList{"Tavrino_Students.dat"});
}

TEST(DataLocation, OtherwiseDataGoesToTheUsersOwnDirectory)
{
    // /proc refuses new files to everyone, the superuser too (whom permission bits
    // do not stop), as an installed program's directory refuses them to its users.
    QTemporaryDir user;
    const QString userData = user.path() + "/share/Tavrino";
    EXPECT_FALSE(canCreateFilesIn("/proc"));
    EXPECT_EQ(chooseDataDir("/proc", userData), userData + "/data");
    // The directory above "data" is made, so creating "data" is one step; "data" is
    // left to the start-up, which creates it when missing.
    EXPECT_TRUE(QFileInfo(userData).isDir());
    EXPECT_FALSE(QFileInfo::exists(userData + "/data"));

    // A file named "data" beside the program is not a data directory.
    QTemporaryDir portable;
    ASSERT_TRUE(QFile(portable.path() + "/data").open(QIODevice::WriteOnly));
    EXPECT_EQ(chooseDataDir(portable.path(), user.path()), user.path() + "/data");
}

TEST(DataLocation, AClassesFilesLeftBesideTheProgramAreNamed)
{
    QTemporaryDir program;
    QTemporaryDir user;
    const QString beside = program.path() + "/data";
    const QString used = user.path() + "/data";
    EXPECT_EQ(classFilesLeftBehind(program.path(), used), QString());
    // A data directory with no class's files in it leaves nothing behind.
    ASSERT_TRUE(QDir(program.path()).mkdir("data"));
    ASSERT_TRUE(QFile(beside + "/blank.html").open(QIODevice::WriteOnly));
    EXPECT_EQ(classFilesLeftBehind(program.path(), used), QString());
    // Either file is the class's: the Tests file alone, or the Students file.
    for (const char *name : {"Tavrino_Tests.dat", "Tavrino_Students.dat"}) {
        QFile file(beside + "/" + name);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        EXPECT_EQ(classFilesLeftBehind(program.path(), used), beside) << name;
        EXPECT_EQ(classFilesLeftBehind(program.path(), beside), QString()) << "in use: not left";
        file.remove();
    }
}
