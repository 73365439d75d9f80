// Reading a data file in pieces, for loaders that decode as they read, telling
// a missing file apart from one that exists but cannot be read.
#pragma once

#include "core/FileError.h"
#include "core/UniqueFd.h"

#include <filesystem>
#include <optional>
#include <stdexcept>

// A read that failed part-way through a file read in pieces.
class FileReadFailed : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

// A file opened to be read in pieces, for a loader that decodes as it reads.
class FileReader {
public:
    explicit FileReader(const std::filesystem::path &path);

    bool missing() const { return m_missing; }
    const std::optional<FileError> &error() const { return m_error; }
    // The size when the file was opened.
    std::size_t size() const { return m_size; }
    // Up to capacity bytes, 0 at the end; throws FileReadFailed.
    std::size_t read(char *into, std::size_t capacity);

private:
    UniqueFd m_fd;
    bool m_missing = false;
    std::optional<FileError> m_error;
    std::size_t m_size = 0;
};
