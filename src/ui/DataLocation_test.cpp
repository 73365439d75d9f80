#include "ui/DataLocation.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

// A directory nobody may create files in. Permission bits do not stop the
// superuser, so when they do not hold, /proc (which refuses new files to
// everyone) stands in for an installed program's directory.
class UnwritableDir {
public:
    UnwritableDir()
    {
        QFile::setPermissions(m_dir.path(), QFile::ReadOwner | QFile::ExeOwner);
        QFile probe(QDir(m_dir.path()).filePath(QStringLiteral("probe")));
        if (probe.open(QIODevice::WriteOnly)) {
            probe.remove();
            m_path = QStringLiteral("/proc");
        } else {
            m_path = m_dir.path();
        }
    }
    ~UnwritableDir()
    {
        QFile::setPermissions(m_dir.path(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    }
    UnwritableDir(const UnwritableDir &) = delete;
    UnwritableDir &operator=(const UnwritableDir &) = delete;

    const QString &path() const { return m_path; }

private:
    QTemporaryDir m_dir;
    QString m_path;
};

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

TEST(DataLocation, InstalledCopyKeepsDataInTheUsersOwnDirectory)
{
    const UnwritableDir program;
    QTemporaryDir user;
    const QString userData = QDir(user.path()).filePath(QStringLiteral("share/Tavrino"));

    EXPECT_FALSE(CanCreateFilesIn(program.path()));
    EXPECT_EQ(ChooseDataDir(program.path(), userData), userData + QStringLiteral("/data"));
    // The directory above "data" is made, so creating "data" is one step; "data" is left
    // to the start-up, which creates it when missing.
    EXPECT_TRUE(QFileInfo(userData).isDir());
    EXPECT_FALSE(QFileInfo::exists(userData + QStringLiteral("/data")));
}

TEST(DataLocation, DataThatIsNotADirectoryIsNotUsed)
{
    QTemporaryDir program;
    QTemporaryDir user;
    QFile notADirectory(QDir(program.path()).filePath(QStringLiteral("data")));
    ASSERT_TRUE(notADirectory.open(QIODevice::WriteOnly));
    notADirectory.close();

    EXPECT_FALSE(CanCreateFilesIn(notADirectory.fileName()));
    EXPECT_EQ(ChooseDataDir(program.path(), user.path()), user.path() + QStringLiteral("/data"));
}
