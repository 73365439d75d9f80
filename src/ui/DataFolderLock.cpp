#include "ui/DataFolderLock.h"

#include <QSysInfo>

namespace {

QString quoted(const std::filesystem::path &path)
{
    return QLatin1Char('"') + QString::fromStdString(path.string()) + QLatin1Char('"');
}

} // namespace

DataFolderLock::DataFolderLock(const std::filesystem::path &dataDir)
    : m_dataDir(dataDir), m_lockPath(dataDir / "Tavrino.lock"),
      m_lock(QString::fromStdString(m_lockPath.string()))
{
    // By age alone QLockFile would take over any lock older than 30 seconds,
    // the one of a copy running on another computer of a shared folder too.
    // Without it, a lock is stale only when its process has gone from this computer.
    m_lock.setStaleLockTime(0);
    m_held = m_lock.tryLock(0);
}

QString DataFolderLock::refusal() const
{
    if (m_held)
        return {};
    const QString folder = quoted(m_dataDir);
    if (m_lock.error() != QLockFile::LockFailedError)
        return QStringLiteral("Tavrino could not make its lock file %1 in the data folder %2, "
                              "which keeps other copies of Tavrino from changing the class's "
                              "files while this one runs.\rTavrino will now end.")
            .arg(quoted(m_lockPath), folder);

    qint64 pid = 0;
    QString host;
    QString program;
    const bool known = m_lock.getLockInfo(&pid, &host, &program);
    if (known && !host.isEmpty() && host != QSysInfo::machineHostName())
        return QStringLiteral("Tavrino is already open on the data folder %1, on the computer "
                              "\"%2\". Only one copy at a time may use a class's files, so this "
                              "copy will now end.\rIf Tavrino is no longer open on \"%2\", "
                              "delete the file %3 and start Tavrino again.")
            .arg(folder, host, quoted(m_lockPath));
    return QStringLiteral("Tavrino is already open on the data folder %1. Only one copy at a "
                          "time may use a class's files, so this copy will now end.")
        .arg(folder);
}
