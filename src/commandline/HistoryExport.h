// The answer history as CSV for the command line, read without changing
// anything in the data folder.
#pragma once

#include <filesystem>
#include <optional>
#include <ostream>
#include <string>

// Writes every recorded answer to out. Where the program left a write-ahead log
// beside the history (it is running, or was killed), the log holds answers the
// file does not, and SQLite would make its shared-memory file beside the two to
// read it: then the pair is copied to a temporary folder and the copy is read.
// On failure, a one-line message naming the history file and the cause.
std::optional<std::string> exportHistoryReadOnly(const std::filesystem::path &dataDir,
                                                 std::ostream &out);

// The same into a file, which is replaced only once the whole CSV is written.
std::optional<std::string> saveHistoryCsv(const std::filesystem::path &dataDir,
                                          const std::filesystem::path &file);
