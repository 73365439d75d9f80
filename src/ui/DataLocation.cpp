#include "ui/DataLocation.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>
#include <QTemporaryFile>

namespace {

const QString DataDirName = QStringLiteral("data");

} // namespace

QString portableDataDir()
{
    return QDir(QCoreApplication::applicationDirPath()).filePath(DataDirName);
}

bool canCreateFilesIn(const QString &dir)
{
    if (!QFileInfo(dir).isDir())
        return false;
    // The temporary file is created exclusively under a unique name and removed
    // when it goes out of scope, so nothing of the user's is touched.
    QTemporaryFile probe(QDir(dir).filePath(QStringLiteral(".tavrino-write-probe-XXXXXX")));
    return probe.open();
}

QString chooseDataDir(const QString &programDir, const QString &userDataDir)
{
    const QString portable = QDir(programDir).filePath(DataDirName);
    const bool portableUsable =
        QFileInfo::exists(portable) ? canCreateFilesIn(portable) : canCreateFilesIn(programDir);
    if (portableUsable)
        return portable;

    QDir().mkpath(userDataDir);
    return QDir(userDataDir).filePath(DataDirName);
}

std::filesystem::path dataDirForThisProgram()
{
    const QString chosen =
        chooseDataDir(QCoreApplication::applicationDirPath(),
                      QStandardPaths::writableLocation(QStandardPaths::AppDataLocation));
    return QDir(chosen).filesystemPath();
}
