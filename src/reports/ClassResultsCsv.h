// The class's results for spreadsheets: one CSV row per student, subject and
// level, in roster order, bank order and level order (K, 1..12).
#pragma once

#include "core/FileError.h"
#include "core/Students.h"
#include "core/TestBank.h"

#include <filesystem>
#include <optional>
#include <ostream>

// Writes the UTF-8 byte-order mark, the header "Student,Subject,Level,Last,High"
// and the rows. Only the bank's subjects are written: a student with results for
// more subjects has the extra ones left out, one with fewer shows zeros. Returns
// false when the stream failed.
bool writeClassResultsCsv(std::ostream &out, const TestBank &bank, const StudentRecords &records);

// The same into a file, replaced in one step so that a failed export never leaves
// half a file; the error names the file.
std::optional<FileError> saveClassResultsCsv(const std::filesystem::path &path,
                                             const TestBank &bank, const StudentRecords &records);
