// The test bank and the roster of a data folder, read for a job without
// creating, moving or changing anything in the folder.
#pragma once

#include "core/Students.h"
#include "core/TestBank.h"

#include <filesystem>
#include <optional>
#include <string>

struct ClassData {
    TestBank bank;
    StudentRecords records;
};

// Reads the Tests file alone, for a job that needs no students. A missing file
// gives the built-in bank, as at start-up; on failure, the message the program shows.
std::optional<std::string> readBankOnly(const std::filesystem::path &dataDir, TestBank &bank);

// Reads both files. A missing Tests file gives the built-in bank, as at start-up;
// a missing Students file gives a class without students. On failure, the
// message the program shows for the file (or for a folder that is not there).
std::optional<std::string> readClassData(const std::filesystem::path &dataDir, ClassData &data);
