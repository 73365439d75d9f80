// Where the data files live: a directory named "data" holding the two files,
// the blank help page and the folder of their backups.
#pragma once

#include <filesystem>

struct DataPaths {
    std::filesystem::path dataDir;
    std::filesystem::path testsPath;
    std::filesystem::path studentsPath;
    std::filesystem::path blankPagePath;
    std::filesystem::path backupsDir;

    // The paths inside the given data directory.
    static DataPaths in(const std::filesystem::path &dataDir);
};
