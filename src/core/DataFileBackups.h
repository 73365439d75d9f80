// The backups of the two data files: what each copy holds, read without
// decoding every question, and how a restored copy takes the place of the
// roster or the bank in memory.
#pragma once

#include "core/Backups.h"
#include "core/DataPaths.h"
#include "core/FileError.h"
#include "core/Students.h"
#include "core/TestBank.h"

#include <cstdint>
#include <filesystem>

// The most all copies of the Tests file may take together (the three newest
// are kept even past it).
constexpr std::uint64_t TestsBackupBytes = 1'000'000'000;

// Adds the Students and the Tests file to backups.
void addDataFileSources(Backups &backups, const DataPaths &paths,
                        std::uint64_t testsMaxBytes = TestsBackupBytes);

// "27 students, 6 subjects"; the number of subjects is the width of the records.
BackupSummary summariseStudentsCopy(const std::filesystem::path &copy);
// "8 subjects, 512 questions": the questions in use of every multiple-choice
// subject, counted from the file's counts.
BackupSummary summariseTestsCopy(const std::filesystem::path &copy);

// A copy read as the data file would be at start-up, into tables of its own.
// A missing copy is Failed, never a first run.
LoadResult readStudentsCopy(const std::filesystem::path &copy, const TestBank &bank,
                            StudentRecords &into);
LoadResult readTestsCopy(const std::filesystem::path &copy, TestBank &into);

// A restored roster takes the place of the one in memory. The current subject
// and level stay; the current student stays when the roster still reaches that
// far, otherwise it is the one the copy marks current.
void adoptRoster(StudentRecords &records, StudentRecords restored);
// A restored bank takes the place of the one in memory. Every student's results
// are split at the new number of subjects as loading the Students file would
// split them, so none is lost; the current subject is kept within the bank.
void adoptBank(TestBank &bank, TestBank restored, StudentRecords &records);
