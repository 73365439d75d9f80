// The floors of the file benchmarks: the least any program must spend to read
// or to durably replace a file of the same bytes.
#pragma once

#include <cstddef>
#include <filesystem>
#include <string>
#include <string_view>

// Opens the file, reads it whole with one read call into a buffer of its size
// and closes it. Returns the number of bytes read.
std::size_t readFloor(const std::filesystem::path &path);

// Replaces target as a careful save must: the bytes go to a temporary file in
// one write call, which is flushed to disk (fsync), closed and renamed over
// target; then the directory is flushed so the rename itself is durable.
void writeFloor(const std::filesystem::path &target, std::string_view bytes);

// The whole content of a file (for handing the same bytes to writeFloor).
std::string wholeFile(const std::filesystem::path &path);
