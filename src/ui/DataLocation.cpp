#include "ui/DataLocation.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>
#include <QTemporaryFile>

namespace {

const QString DataDirName = QStringLiteral("data");

// Set by the build: 0 for the Debian package, 1 otherwise.
constexpr bool DataBesideProgram = TAVRINO_DATA_BESIDE_PROGRAM != 0;

QString userDataLocation()
{
    return QStandardPaths::writableLocation(QStandardPaths::AppDataLocation);
}

} // namespace

QString portableDataDir()
{
    return QDir(QCoreApplication::applicationDirPath()).filePath(DataDirName);
}

bool mayKeepDataBesideProgram()
{
    return DataBesideProgram;
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
    if (!mayKeepDataBesideProgram()) {
        QDir().mkpath(userDataLocation());
        return QDir(QDir(userDataLocation()).filePath(DataDirName)).filesystemPath();
    }
    const QString chosen =
        chooseDataDir(QCoreApplication::applicationDirPath(), userDataLocation());
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
    if (!mayKeepDataBesideProgram())
        return {};
    const QString folder = classFilesLeftBehind(QCoreApplication::applicationDirPath(),
                                                QString::fromStdString(chosenDataDir.string()));
    return folder.isEmpty() ? std::filesystem::path() : QDir(folder).filesystemPath();
}
