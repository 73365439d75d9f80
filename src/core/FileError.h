// What went wrong with a data file, worded for the person at the screen.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>

struct FileError {
    enum class Kind {
        Unreadable, // could not be opened or read
        Damaged,    // read, but its contents do not form a valid file
        Unwritable, // saving failed; the previous file is untouched
        TooLong,    // a text is longer than the file format can hold
    };

    Kind kind = Kind::Unreadable;
    std::string path;
    std::string cause;                   // e.g. "Permission denied", "the file ends too early"
    std::optional<std::uint64_t> offset; // byte offset of the damage, when known

    // One or two sentences naming the file and the cause.
    std::string message() const;
};

// The outcome of a load: the file was read, it was missing, or the error says why not.
struct LoadResult {
    enum class Status { Loaded, Missing, Failed };
    Status status = Status::Loaded;
    std::optional<FileError> error;

    bool ok() const { return status != Status::Failed; }
};

// A save refused before anything was written, because the data in memory would
// make a file that could not be read back; what names the data.
FileError refusedSave(const std::filesystem::path &path, const std::string &what,
                      const std::string &problem);

// A save refused because a text is longer than the file format can hold.
FileError tooLongText(const std::filesystem::path &path, const std::string &which);
