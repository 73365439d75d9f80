// Reading and writing the Students file: the roster, every result, the last
// chosen subject and how the results grid was last shown.
#pragma once

#include "FileError.h"
#include "Students.h"
#include "TestBank.h"

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

// Writes the roster atomically; on failure the previous file is left as it was.
std::optional<FileError> saveStudents(const StudentRecords &records,
                                      const std::filesystem::path &path);

// Fills showByStudent, currentSubject, currentSubjectName and Students from the
// file. Every student gets results for exactly the bank's subjects: a record
// saved with fewer is widened with zeros, one saved with more keeps the rest in
// extraResults. When the file is missing (a first run) it creates one nameless
// current student, saves at once and returns Missing (or Failed when that save
// failed). A damaged file leaves the records unchanged and returns Failed.
LoadResult loadStudents(StudentRecords &records, const TestBank &bank,
                        const std::filesystem::path &path);

// The same two steps on bytes in memory, for tests and tools that must not touch
// the disk; path only names the file in the errors. encodeStudentsFile leaves
// bytes as they were when it fails; decodeStudentsFile never reports Missing.
std::optional<FileError> encodeStudentsFile(const StudentRecords &records,
                                            const std::filesystem::path &path, std::string &bytes);
LoadResult decodeStudentsFile(StudentRecords &records, const TestBank &bank, std::string_view bytes,
                              const std::filesystem::path &path);
