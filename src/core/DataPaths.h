// Where the data files live: a directory named "data" holding the two files
// and the blank help page.
#pragma once

#include <filesystem>

struct DataPaths {
    std::filesystem::path dataDir;
    std::filesystem::path testsPath;
    std::filesystem::path studentsPath;
    std::filesystem::path blankPagePath;

    // The paths inside the given data directory.
    static DataPaths in(const std::filesystem::path &dataDir);
};
