// Reading and writing the Tests file, which holds the whole test bank.
#pragma once

#include "FileError.h"
#include "TestBank.h"

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

// Writes the bank atomically; on failure the previous file is left as it was.
std::optional<FileError> saveTests(const TestBank &bank, const std::filesystem::path &path);

// Fills the bank from the file. A missing file builds the defaults in memory
// (nothing is written). A damaged file leaves the bank unchanged and returns Failed.
LoadResult loadTests(TestBank &bank, const std::filesystem::path &path);

// The same two steps on bytes in memory, for tests and tools that must not touch
// the disk; path only names the file in the errors. encodeTestsFile leaves bytes
// as they were when it fails.
std::optional<FileError> encodeTestsFile(const TestBank &bank, const std::filesystem::path &path,
                                         std::string &bytes);
LoadResult decodeTestsFile(TestBank &bank, std::string_view bytes,
                           const std::filesystem::path &path);
