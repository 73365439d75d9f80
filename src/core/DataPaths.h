// Where the data files live: a directory named "data" holding the two files
// and the blank help page.
#pragma once

#include <filesystem>

struct DataPaths {
    std::filesystem::path DataDir;
    std::filesystem::path TestsPath;
    std::filesystem::path StudentsPath;
    std::filesystem::path BlankPagePath;

    // The paths inside the given data directory.
    static DataPaths In(const std::filesystem::path &dataDir);
};
