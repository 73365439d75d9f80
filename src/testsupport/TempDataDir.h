// A fresh, empty data directory for one test, removed with everything in it
// when the test ends.
#pragma once

#include "core/DataPaths.h"

#include <filesystem>
#include <vector>

class TempDataDir {
public:
    TempDataDir();
    ~TempDataDir();
    TempDataDir(const TempDataDir &) = delete;
    TempDataDir &operator=(const TempDataDir &) = delete;

    const std::filesystem::path &path() const { return m_path; }
    DataPaths paths() const { return DataPaths::in(m_path); }

private:
    std::filesystem::path m_path;
};

// The whole content of a file, or an empty vector when it cannot be read.
std::vector<unsigned char> readFileBytes(const std::filesystem::path &path);
