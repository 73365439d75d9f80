// Reading a data file whole, telling a missing file apart from one that
// exists but cannot be read.
#pragma once

#include "core/FileError.h"

#include <filesystem>
#include <optional>
#include <string>

struct FileContents {
    bool missing = false;
    std::string bytes;
    std::optional<FileError> error; // set when the file exists but could not be read
};

FileContents ReadWholeFile(const std::filesystem::path &path);
