// Reading a data file, in pieces or whole, telling a missing file apart from
// one that exists but cannot be read.
#pragma once

#include "core/FileError.h"
#include "core/FileSystem.h"

#include <cstddef>
#include <filesystem>
#include <optional>
#include <stdexcept>
#include <string_view>

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
    NativeFile m_file;
    bool m_missing = false;
    std::optional<FileError> m_error;
    std::size_t m_size = 0;
};

// The rest of a file, read whole into memory of its own. Large files get memory
// the system may back with huge pages, so that a new process fills 100 MB with
// a few dozen page faults rather than tens of thousands.
class FileBytes {
public:
    // Reads up to the size the file had when it was opened; throws FileReadFailed,
    // also when there is no memory for it.
    explicit FileBytes(FileReader &file);
    ~FileBytes();
    FileBytes(const FileBytes &) = delete;
    FileBytes &operator=(const FileBytes &) = delete;

    // Shorter than the file's size when the file shrank while it was read.
    std::string_view view() const { return {static_cast<const char *>(m_memory), m_size}; }

private:
    void *m_memory = nullptr;
    std::size_t m_capacity = 0;
    std::size_t m_size = 0;
};
