// Start-up to the Students screen shown with the large data set, against a
// Qt Widgets program that shows one empty dialog; both run as child
// processes, in turn, and their peak memory is taken as well. And start-up
// with the large answer history beside the files, against the same without it.
#include "BenchData.h"
#include "Figures.h"
#include "HistoryData.h"

#include <QCoreApplication>

#include <benchmark/benchmark.h>

#include <cerrno>
#include <chrono>
#include <cstdio>
#include <fcntl.h>
#include <filesystem>
#include <iostream>
#include <optional>
#include <spawn.h>
#include <string>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

extern char **environ;

namespace {

constexpr double StartUpFactor = 1.5;
constexpr double FileSizeFactor = 3;
constexpr double BytesPerMB = 1024.0 * 1024.0;
constexpr double HistoryWithinMs = 10;

struct ChildRun {
    Sample shown;      // from just before the process is started to its window painted
    double peakMB = 0; // its peak resident memory
};

std::string sibling(const char *program)
{
    return (QCoreApplication::applicationDirPath() + QLatin1Char('/') + QLatin1String(program))
        .toStdString();
}

double milliseconds(const timeval &time)
{
    return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_usec) / 1e3;
}

int64_t monotonicNanoseconds()
{
    return std::chrono::duration_cast<std::chrono::nanoseconds>(
               std::chrono::steady_clock::now().time_since_epoch())
        .count();
}

// Runs the program; its standard output carries the clock reading taken when
// its window had been painted.
std::optional<ChildRun> runChild(const std::vector<std::string> &command)
{
    int pipeEnds[2];
    if (::pipe2(pipeEnds, O_CLOEXEC) != 0)
        return std::nullopt;
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, pipeEnds[1], STDOUT_FILENO);
    std::vector<char *> argv;
    for (const std::string &part : command)
        argv.push_back(const_cast<char *>(part.c_str()));
    argv.push_back(nullptr);

    const int64_t started = monotonicNanoseconds();
    pid_t pid = 0;
    const int spawned = posix_spawn(&pid, argv[0], &actions, nullptr, argv.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    ::close(pipeEnds[1]);
    if (spawned != 0) {
        ::close(pipeEnds[0]);
        return std::nullopt;
    }

    std::string output;
    char buffer[256];
    for (;;) {
        const ssize_t got = ::read(pipeEnds[0], buffer, sizeof buffer);
        if (got > 0)
            output.append(buffer, static_cast<std::size_t>(got));
        else if (got == 0 || errno != EINTR)
            break;
    }
    ::close(pipeEnds[0]);

    // The child's own VmHWM, not wait4's maxrss: a process started with vfork,
    // as posix_spawn does, inherits the parent's peak in that figure.
    int status = 0;
    long long shownAt = 0;
    long peakKilobytes = 0;
    rusage usage{};
    if (::wait4(pid, &status, 0, &usage) != pid || !WIFEXITED(status) || WEXITSTATUS(status) != 0 ||
        std::sscanf(output.c_str(), "%lld %ld", &shownAt, &peakKilobytes) != 2)
        return std::nullopt;
    ChildRun run;
    run.shown.value = static_cast<double>(shownAt - started) / 1e6;
    // Its CPU time runs to its end, which follows the painting at once.
    run.shown.cpu = milliseconds(usage.ru_utime) + milliseconds(usage.ru_stime);
    run.peakMB = static_cast<double>(peakKilobytes) * 1024.0 / BytesPerMB;
    return run;
}

// Runs the program on dataDir and the floor in turn and reports the start-up
// time and the peak memory, each against the floor's.
void startUpAgainstFloor(benchmark::State &state, const DataPaths &paths, const std::string &label)
{
    const std::vector<std::string> tavrino = {sibling("tavrino_startup_probe"),
                                              paths.dataDir.string()};
    const std::vector<std::string> floor = {sibling("tavrino_floor_dialog")};
    // One run of each first, so that both start from a warm page cache.
    runChild(floor);
    runChild(tavrino);

    std::vector<Sample> times;
    std::vector<Sample> floorTimes;
    std::vector<Sample> peaks;
    std::vector<Sample> floorPeaks;
    for (auto _ : state) {
        const std::optional<ChildRun> floorRun = runChild(floor);
        const std::optional<ChildRun> run = runChild(tavrino);
        if (!floorRun || !run) {
            state.SkipWithError("a start-up run failed");
            return;
        }
        state.SetIterationTime(run->shown.value / 1000);
        times.push_back(run->shown);
        floorTimes.push_back(floorRun->shown);
        peaks.push_back({run->peakMB, std::nullopt});
        floorPeaks.push_back({floorRun->peakMB, std::nullopt});
    }
    reportAgainstFloor(state, "Start-up to Students screen shown, " + label, times, floorTimes,
                       StartUpFactor, "ms", "start_");

    const double filesMB = static_cast<double>(std::filesystem::file_size(paths.testsPath) +
                                               std::filesystem::file_size(paths.studentsPath)) /
                           BytesPerMB;
    std::vector<double> floorPeakValues;
    for (const Sample &peak : floorPeaks)
        floorPeakValues.push_back(peak.value);
    const double floorPeak = median(floorPeakValues);
    char files[32];
    std::snprintf(files, sizeof files, "%.1f", filesMB);
    reportUnder(state, "Peak memory at start-up, " + label + " (files " + files + " MB)", peaks,
                floorPeak + FileSizeFactor * filesMB, floorPeaks, "MB", "memory_");
}

void BM_StartUpLargeData(benchmark::State &state)
{
    startUpAgainstFloor(state, BenchData::instance().paths(), "large data");
}

// The same class and subjects with a bank of ordinary size (12 questions per
// level): what start-up costs apart from the large bank.
void BM_StartUpClassSizeBank(benchmark::State &state)
{
    startUpAgainstFloor(state, BenchData::instance().ordinaryBankPaths(),
                        "1000 students, 12 questions per level");
}

// The class of 1,000 students with an ordinary bank, once with the history of 10
// million answers beside its files and once with the empty history its first
// start made; both folders run in turn, after one start of each.
void BM_StartUpLargeHistory(benchmark::State &state)
{
    namespace fs = std::filesystem;
    const DataPaths &ordinary = BenchData::instance().ordinaryBankPaths();
    const fs::path root = ordinary.dataDir.parent_path() / "start-up-history";
    const auto classIn = [&](const char *name) {
        const fs::path dataDir = root / name / "data";
        fs::create_directories(dataDir);
        fs::copy_file(ordinary.testsPath, DataPaths::in(dataDir).testsPath);
        fs::copy_file(ordinary.studentsPath, DataPaths::in(dataDir).studentsPath);
        return dataDir;
    };
    const fs::path with = classIn("with");
    const fs::path without = classIn("without");
    std::cerr << "Finding or writing the large history (minutes the first time) ..." << std::endl;
    fs::copy_file(cachedLargeHistory(), with / "Tavrino_History.db");

    const std::vector<std::string> withHistory = {sibling("tavrino_startup_probe"), with.string()};
    const std::vector<std::string> withoutHistory = {sibling("tavrino_startup_probe"),
                                                     without.string()};
    runChild(withoutHistory);
    runChild(withHistory);
    std::vector<Sample> times;
    std::vector<Sample> floorTimes;
    for (auto _ : state) {
        const std::optional<ChildRun> floorRun = runChild(withoutHistory);
        const std::optional<ChildRun> run = runChild(withHistory);
        if (!floorRun || !run) {
            state.SkipWithError("a start-up run failed");
            break;
        }
        state.SetIterationTime(run->shown.value / 1000);
        times.push_back(run->shown);
        floorTimes.push_back(floorRun->shown);
    }
    std::error_code ignored;
    fs::remove_all(root, ignored);
    if (times.empty())
        return;
    std::vector<double> floorValues;
    for (const Sample &sample : floorTimes)
        floorValues.push_back(sample.value);
    reportUnder(state, "Start-up to Students screen shown, with a history of 10 million answers",
                times, median(floorValues) + HistoryWithinMs, floorTimes, "ms", "history_");
}

} // namespace

BENCHMARK(BM_StartUpLargeData)->UseManualTime()->Iterations(7)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_StartUpClassSizeBank)->UseManualTime()->Iterations(7)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_StartUpLargeHistory)->UseManualTime()->Iterations(15)->Unit(benchmark::kMillisecond);
