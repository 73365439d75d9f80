// Only one copy of Tavrino at a time works on a data folder; a lock a crashed
// copy left on this computer is taken over, one of another computer is not.
#include "ui/DataFolderLock.h"

#include "testsupport/EndedProcess.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <filesystem>

namespace fs = std::filesystem;

namespace {

QByteArray readAll(const fs::path &path)
{
    QFile file(QString::fromStdString(path.string()));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// The lines of a lock file as a copy of Tavrino on this computer writes them:
// process number, program, computer name and the computer's identifiers.
QList<QByteArray> lockLinesOfThisComputer()
{
    QTemporaryDir other;
    const DataFolderLock lock(fs::path(other.path().toStdString()));
    EXPECT_TRUE(lock.isHeld());
    return readAll(fs::path(other.path().toStdString()) / "Tavrino.lock").split('\n');
}

void writeLock(const fs::path &path, const QList<QByteArray> &lines, qint64 ageSeconds)
{
    QFile file(QString::fromStdString(path.string()));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(lines.join('\n'));
    // Written out first: a write still buffered would touch the time again on close.
    ASSERT_TRUE(file.flush());
    ASSERT_TRUE(file.setFileTime(QDateTime::currentDateTimeUtc().addSecs(-ageSeconds),
                                 QFileDevice::FileModificationTime));
}

} // namespace

TEST(DataFolderLock, ASecondCopyIsKeptOffTheFolderUntilTheFirstEnds)
{
    QTemporaryDir data;
    const fs::path dir = data.path().toStdString();
    {
        const DataFolderLock first(dir);
        ASSERT_TRUE(first.isHeld());
        EXPECT_TRUE(first.refusal().isEmpty());
        const DataFolderLock second(dir);
        EXPECT_FALSE(second.isHeld());
        const QString message = second.refusal();
        EXPECT_TRUE(message.contains("already open on the data folder \"" + data.path() + "\""))
            << message.toStdString();
        EXPECT_FALSE(message.contains("computer")) << message.toStdString();
    }
    EXPECT_TRUE(DataFolderLock(dir).isHeld()) << "released when the first copy ends";
    EXPECT_FALSE(fs::exists(dir / "Tavrino.lock"));
}

TEST(DataFolderLock, ACrashedCopysLockIsTakenOverAnotherComputersIsRespected)
{
    QTemporaryDir data;
    const fs::path dir = data.path().toStdString();
    const fs::path lockPath = dir / "Tavrino.lock";
    QList<QByteArray> lines = lockLinesOfThisComputer();
    ASSERT_GE(lines.size(), 3);
    lines[0] = QByteArray::number(endedProcessId());

    // Left by a copy on this computer that crashed a second ago.
    writeLock(lockPath, lines, 1);
    {
        const DataFolderLock lock(dir);
        EXPECT_TRUE(lock.isHeld()) << lock.refusal().toStdString();
        EXPECT_EQ(readAll(lockPath).split('\n').value(0),
                  QByteArray::number(QCoreApplication::applicationPid()));
    }

    // A copy on another computer of a shared folder: its process number means
    // nothing here, and its lock is respected however long it has been held.
    lines[2] = "classroom-7";
    for (int line = 3; line < lines.size(); ++line)
        if (!lines[line].isEmpty())
            lines[line] = QByteArray(lines[line].size(), 'f');
    writeLock(lockPath, lines, 6 * 3600);
    const QByteArray before = readAll(lockPath);
    const DataFolderLock lock(dir);
    EXPECT_FALSE(lock.isHeld());
    const QString message = lock.refusal();
    for (const QString &part : {data.path(), QStringLiteral("\"classroom-7\""),
                                QString::fromStdString(lockPath.string())})
        EXPECT_TRUE(message.contains(part)) << message.toStdString();
    EXPECT_EQ(readAll(lockPath), before);
}
