// A large, realistic data set for measuring the program and for trying its
// screens at scale: a full class, many subjects and a bank of long levels.
#pragma once

#include "core/DataPaths.h"
#include "core/FileError.h"
#include "core/Students.h"
#include "core/TestBank.h"

#include <cstdint>
#include <filesystem>
#include <optional>

struct LargeDataSetSize {
    int students = 1000;
    int subjects = 50;            // the six built-in ones and the rest added
    int questionsPerLevel = 1000; // in every multiple-choice subject and level
    int shortestText = 10;
    int longestText = 60;
    std::uint32_t seed = 20261122; // the same seed always gives the same bytes
};

// The bank: Arithmetic as built in, every other subject holding
// questionsPerLevel questions at every level (so questionMax is one less).
TestBank makeLargeTestBank(const LargeDataSetSize &size = {});

// The roster for that bank, with scores in every subject and level.
StudentRecords makeLargeRoster(const TestBank &bank, const LargeDataSetSize &size = {});

// Writes both files into dataDir (created when missing), as the program saves
// them. The first failure is returned.
std::optional<FileError> writeLargeDataSet(const std::filesystem::path &dataDir,
                                           const LargeDataSetSize &size = {});
