// Keeps a second copy of Tavrino off a data folder: a lock file in the folder,
// taken at start-up and held for as long as the program runs.
#pragma once

#include <QLockFile>
#include <QString>

#include <filesystem>

class DataFolderLock {
public:
    // Tries once, without waiting. A lock left behind by a copy that ended
    // without releasing it on this computer is taken over; a lock of a copy on
    // another computer is respected however old it is.
    explicit DataFolderLock(const std::filesystem::path &dataDir);
    DataFolderLock(const DataFolderLock &) = delete;
    DataFolderLock &operator=(const DataFolderLock &) = delete;

    bool isHeld() const { return m_held; }
    // Why the lock could not be taken, for the user; names the folder.
    QString refusal() const;

private:
    std::filesystem::path m_dataDir;
    std::filesystem::path m_lockPath;
    QLockFile m_lock;
    bool m_held = false;
};
