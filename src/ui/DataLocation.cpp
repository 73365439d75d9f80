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

QString classFilesLeftBehind(const QString &programDir, const QString &chosenDataDir)
{
    const QString portable = QDir(programDir).filePath(DataDirName);
    if (QFileInfo(portable) == QFileInfo(chosenDataDir))
        return {};
    const QDir dir(portable);
    for (const char *name : {"Tavrino_Tests.dat", "Tavrino_Students.dat"})
        if (QFileInfo::exists(dir.filePath(QLatin1String(name))))
            return portable;
    return {};
}

std::filesystem::path classFilesLeftBehind(const std::filesystem::path &chosenDataDir)
{
    const QString folder = classFilesLeftBehind(QCoreApplication::applicationDirPath(),
                                                QString::fromStdString(chosenDataDir.string()));
    return folder.isEmpty() ? std::filesystem::path() : QDir(folder).filesystemPath();
}
