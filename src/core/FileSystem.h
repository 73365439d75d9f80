// The operating system's side of the data files: opening, reading, writing,
// flushing and replacing a file, and the few other calls saving needs. One
// source file per system implements it (FileSystemPosix.cpp,
// FileSystemWindows.cpp); the build picks the one that fits.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>
#include <system_error>

// Errors are errno values (ENOENT, EACCES, ENOSPC…) on every system, so that
// callers and the messages they make are the same everywhere; EBUSY stands for
// a file another program holds locked. A negative value is a system error code
// with no errno counterpart, which systemErrorText() still words.

// An open file, closed when it goes out of scope.
class NativeFile {
public:
    NativeFile() = default;
    ~NativeFile();
    NativeFile(const NativeFile &) = delete;
    NativeFile &operator=(const NativeFile &) = delete;

    // Each returns 0 or the error. A pipe opens for reading without waiting
    // for a writer; isOrdinaryFile() tells it from a file. A folder may open,
    // or fail with EISDIR.
    int openForReading(const std::filesystem::path &path);
    // Fails with EEXIST when path exists already.
    int createNew(const std::filesystem::path &path);
    int size(std::uint64_t &bytes) const;
    // Up to capacity bytes into got; 0 bytes at the end of the file.
    int read(char *into, std::size_t capacity, std::size_t &got);
    // Every byte, or the error.
    int write(const char *bytes, std::size_t count);
    // Until the bytes written are on the disk.
    int flush();
    // Closing may report a failure of its own; closing a closed file does nothing.
    int close();

    // Whether the open file is an ordinary file, not a folder, a pipe or a device.
    bool isOrdinaryFile() const;

    bool isOpen() const { return m_handle != Closed; }

private:
    static constexpr std::intptr_t Closed = -1;
    std::intptr_t m_handle = Closed;
};

// Puts from in the place of to in one step: to is either the old or the new file.
int replaceFile(const std::filesystem::path &from, const std::filesystem::path &to);
// Removes a file; a failure is not reported, as callers only clean up.
void removeFile(const std::filesystem::path &path);
// Makes a replace inside dir survive a power cut, where the system needs telling.
void syncDirectory(const std::filesystem::path &dir);

unsigned long currentProcessId();
// Whether no process with this number runs on this computer any more.
bool processHasEnded(unsigned long id);

// From this size on, memory for a read asks for huge pages where the system has
// them; below it ordinary pages are as quick and huge pages would waste memory.
constexpr std::size_t HugePageWorthBytes = 4 * 1024 * 1024;

// Zeroed memory of its own for a large read, nullptr when there is none; large
// blocks may be backed by huge pages where the system has them.
void *allocatePages(std::size_t bytes);
void freePages(void *memory, std::size_t bytes);

// The words for an error, worded alike on every system ("Permission denied").
std::string systemErrorText(int error);
// The same words for an error that std::filesystem reports, which on Windows
// may carry the system's own code rather than an errno value.
std::string systemErrorText(const std::error_code &error);
