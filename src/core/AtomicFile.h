// Replacing a data file in one step, so that a save that fails part-way never
// damages or shortens the file that was there before.
#pragma once

#include "core/FileError.h"

#include <cerrno>
#include <cstddef>
#include <filesystem>
#include <functional>
#include <optional>
#include <string_view>

// The bytes go to a temporary file in the same directory, are flushed to disk and
// the temporary file is renamed over path. On any failure the temporary file is
// removed, path is left as it was and the error names path and the cause.
std::optional<FileError> writeFileAtomically(const std::filesystem::path &path,
                                             std::string_view bytes);

// Removes the temporary files of path left behind by processes of this computer
// that were killed while saving. Only for a caller that keeps every other copy
// of the program out of the directory: a copy on another computer has process
// numbers that mean nothing here, and its save under way would be cut short.
void removeStaleTemporaries(const std::filesystem::path &path);

// Makes a file's content in pieces and hands each, in file order, to write.
using ContentMaker = std::function<void(const std::function<void(std::string_view)> &write)>;

// The size of the pieces a save makes: large enough that the system calls to
// write them cost little beside the copying (with 64 KB pieces they added a
// quarter to the save of a large class), small enough that a save never holds
// more than a fraction of a megabyte beside the data.
constexpr std::size_t SavePieceBytes = 256 * 1024;

// The same for content made while it is written, so that a large file is never
// held whole in memory. An exception that make throws passes on, after the
// temporary file is removed and with path left as it was.
std::optional<FileError> writeFileAtomically(const std::filesystem::path &path,
                                             const ContentMaker &make);

// Injected write faults count pieces of this size, so a test can fail a later write.
constexpr std::size_t AtomicWriteChunk = 4096;

// The steps of a save, in the order they happen.
enum class SaveStep { Create, Write, Flush, Close, Rename };

struct SaveFault {
    SaveStep step = SaveStep::Create;
    int error = EIO;            // the errno the failing step reports
    std::size_t writeIndex = 0; // with SaveStep::Write: which write fails, 0 for the first
};

// For tests: while an instance lives, every save fails at the given step.
class InjectedSaveFault {
public:
    explicit InjectedSaveFault(const SaveFault &fault);
    ~InjectedSaveFault();
    InjectedSaveFault(const InjectedSaveFault &) = delete;
    InjectedSaveFault &operator=(const InjectedSaveFault &) = delete;
};
