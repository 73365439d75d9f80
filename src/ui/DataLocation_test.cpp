#include "ui/DataLocation.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

QStringList Entries(const QString &dir)
{
    return QDir(dir).entryList(QDir::AllEntries | QDir::Hidden | QDir::System |
                               QDir::NoDotAndDotDot);
}

} // namespace

TEST(DataLocation, PortableCopyKeepsDataBesideTheProgram)
{
    QTemporaryDir program;
    QTemporaryDir user;
    const QString userData = QDir(user.path()).filePath(QStringLiteral("Tavrino"));

    // No data directory yet: the program directory is probed and left as it was.
    EXPECT_EQ(ChooseDataDir(program.path(), userData), program.path() + QStringLiteral("/data"));
    EXPECT_EQ(Entries(program.path()), QStringList());
    EXPECT_FALSE(QFileInfo::exists(userData));

    // An existing data directory is used and keeps only what it held.
    ASSERT_TRUE(QDir(program.path()).mkdir(QStringLiteral("data")));
    const QString data = program.path() + QStringLiteral("/data");
    QFile students(QDir(data).filePath(QStringLiteral("Tavrino_Students.dat")));
    ASSERT_TRUE(students.open(QIODevice::WriteOnly));
    students.close();
    EXPECT_EQ(ChooseDataDir(program.path(), userData), data);
    EXPECT_EQ(Entries(data), QStringList{QStringLiteral("Tavrino_Students.dat")});
    EXPECT_TRUE(CanCreateFilesIn(data));
}

TEST(DataLocation, OtherwiseDataGoesToTheUsersOwnDirectory)
{
    // /proc refuses new files to everyone, the superuser too (whom permission bits
    // do not stop), as an installed program's directory refuses them to its users.
    const QString program = QStringLiteral("/proc");
    QTemporaryDir user;
    const QString userData = QDir(user.path()).filePath(QStringLiteral("share/Tavrino"));
    EXPECT_FALSE(CanCreateFilesIn(program));
    EXPECT_EQ(ChooseDataDir(program, userData), userData + QStringLiteral("/data"));
    // The directory above "data" is made, so creating "data" is one step; "data" is left
    // to the start-up, which creates it when missing.
    EXPECT_TRUE(QFileInfo(userData).isDir());
    EXPECT_FALSE(QFileInfo::exists(userData + QStringLiteral("/data")));

    // A file named "data" beside the program is not a data directory.
    QTemporaryDir portable;
    QFile notADirectory(QDir(portable.path()).filePath(QStringLiteral("data")));
    ASSERT_TRUE(notADirectory.open(QIODevice::WriteOnly));
    notADirectory.close();
    EXPECT_FALSE(CanCreateFilesIn(notADirectory.fileName()));
    EXPECT_EQ(ChooseDataDir(portable.path(), user.path()), user.path() + QStringLiteral("/data"));
}
