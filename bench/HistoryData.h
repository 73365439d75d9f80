// A large answer history for measuring the history database: a class of 1,000
// students and a school year of their tests, 10 million answers in all. Made
// through the history's own recording calls from a fixed seed, and written once
// to a cache file that later runs reuse, since making it takes minutes.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

struct HistorySize {
    int students = 1000;
    std::int64_t answers = 10'000'000; // shared evenly among the students
    std::uint32_t seed = 20261125;
};

// The roster and the bank's subjects the history was recorded with, in order.
std::vector<std::string> historyStudentNames(const HistorySize &size = {});
std::vector<std::string> historySubjectNames();

// Records the whole history into dataDir/Tavrino_History.db, which must not exist.
// progress, when given, is told how many answers are done now and then.
void writeLargeHistory(const std::filesystem::path &dataDir, const HistorySize &size = {},
                       void (*progress)(std::int64_t answers) = nullptr);

// The cached history for this size (written first when missing), under
// $TAVRINO_BENCH_DIR or the system's temporary directory. Its name carries the
// schema version and the size, so a stale cache is never used.
std::filesystem::path cachedLargeHistory(const HistorySize &size = {});
