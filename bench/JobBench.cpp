// The command-line jobs on the large data set, run as a teacher's script runs
// them: the program itself as a child process, reading the data folder and
// writing the CSV or the PDF report. Their peak memory is set against the
// program's own at start-up on the same data.
#include "BenchData.h"
#include "Figures.h"

#include <QCoreApplication>

#include <benchmark/benchmark.h>

#include <cerrno>
#include <chrono>
#include <cstdio>
#include <fcntl.h>
#include <filesystem>
#include <optional>
#include <spawn.h>
#include <string>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

extern char **environ;

namespace {

constexpr double CsvGoalMs = 1000;
constexpr double ReportGoalMs = 10000;
constexpr double WorksheetGoalMs = 1000;
constexpr double ExtraMemoryMB = 100;

struct JobRun {
    Sample time;
    double peakMB = 0;
};

std::string sibling(const char *program)
{
    return (QCoreApplication::applicationDirPath() + QLatin1Char('/') + QLatin1String(program))
        .toStdString();
}

// Runs the command under tavrino_peak_of, whose last line of output gives the
// command's peak memory, CPU time and exit status.
std::optional<JobRun> runMeasured(const std::vector<std::string> &command)
{
    std::vector<std::string> full = {sibling("tavrino_peak_of")};
    full.insert(full.end(), command.begin(), command.end());
    int pipeEnds[2];
    if (::pipe2(pipeEnds, O_CLOEXEC) != 0)
        return std::nullopt;
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, pipeEnds[1], STDOUT_FILENO);
    std::vector<char *> argv;
    for (const std::string &part : full)
        argv.push_back(const_cast<char *>(part.c_str()));
    argv.push_back(nullptr);

    const auto started = std::chrono::steady_clock::now();
    pid_t pid = 0;
    const int spawned = posix_spawn(&pid, argv[0], &actions, nullptr, argv.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    ::close(pipeEnds[1]);
    if (spawned != 0) {
        ::close(pipeEnds[0]);
        return std::nullopt;
    }
    std::string output;
    char buffer[4096];
    for (;;) {
        const ssize_t got = ::read(pipeEnds[0], buffer, sizeof buffer);
        if (got > 0)
            output.append(buffer, static_cast<std::size_t>(got));
        else if (got == 0 || errno != EINTR)
            break;
    }
    ::close(pipeEnds[0]);
    int status = 0;
    if (::waitpid(pid, &status, 0) != pid || !WIFEXITED(status) || WEXITSTATUS(status) != 0)
        return std::nullopt;
    const double wall =
        std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - started)
            .count();

    const std::size_t lastLine = output.rfind('\n', output.size() - 2);
    long peakKilobytes = 0;
    double user = 0;
    double system = 0;
    int exitStatus = -1;
    const char *line = output.c_str() + (lastLine == std::string::npos ? 0 : lastLine + 1);
    if (std::sscanf(line, "%ld %lf %lf %d", &peakKilobytes, &user, &system, &exitStatus) != 4 ||
        exitStatus != 0)
        return std::nullopt;
    return JobRun{{wall, user + system}, static_cast<double>(peakKilobytes) / 1024.0};
}

// The program's peak at start-up on the same data, up to the Students screen
// painted (the start-up benchmark's probe), as the floor of the jobs' memory.
const std::vector<Sample> &startUpPeaks()
{
    static const std::vector<Sample> peaks = [] {
        std::vector<Sample> runs;
        const std::string data = BenchData::instance().paths().dataDir.string();
        for (int run = 0; run < 3; ++run)
            if (const std::optional<JobRun> measured =
                    runMeasured({sibling("tavrino_startup_probe"), data}))
                runs.push_back({measured->peakMB, std::nullopt});
        return runs;
    }();
    return peaks;
}

void measureJob(benchmark::State &state, const char *option, const char *file,
                const std::string &name, double goalMs, const std::string &prefix,
                const std::vector<std::string> &settings = {})
{
    const DataPaths &paths = BenchData::instance().paths();
    const std::filesystem::path out =
        std::filesystem::temp_directory_path() / ("tavrino-bench-jobs-" + std::to_string(::getpid()));
    std::filesystem::create_directories(out);
    std::vector<std::string> command = {TAVRINO_PROGRAM, "--data-dir", paths.dataDir.string(),
                                        option, (out / file).string()};
    command.insert(command.end(), settings.begin(), settings.end());
    const std::vector<Sample> &floorPeaks = startUpPeaks();
    runMeasured(command); // from a warm page cache, as the start-up probe was

    std::vector<Sample> times;
    std::vector<Sample> peaks;
    for (auto _ : state) {
        const std::optional<JobRun> run = runMeasured(command);
        if (!run || floorPeaks.empty()) {
            state.SkipWithError("a job run failed");
            break;
        }
        state.SetIterationTime(run->time.value / 1000);
        times.push_back(run->time);
        peaks.push_back({run->peakMB, std::nullopt});
    }
    std::filesystem::remove_all(out);
    if (times.empty())
        return;
    std::vector<double> floorValues;
    for (const Sample &peak : floorPeaks)
        floorValues.push_back(peak.value);
    reportUnder(state, name + (settings.empty() ? ", 1000 students x 50 subjects" : ""), times,
                goalMs, {}, "ms", prefix + "time_");
    reportUnder(state, "Peak memory, " + name + " (floor: start-up)", peaks,
                median(floorValues) + ExtraMemoryMB, floorPeaks, "MB", prefix + "memory_");
}

void BM_ExportCsvJob(benchmark::State &state)
{
    measureJob(state, "--export-csv", "class.csv", "CSV export job", CsvGoalMs, "csv_");
}

void BM_ReportPdfJob(benchmark::State &state)
{
    measureJob(state, "--report-pdf", "class.pdf", "PDF report job", ReportGoalMs, "pdf_");
}

// Reads the large Tests file for Spelling, 1,000 questions a level; the class is
// not read.
void BM_WorksheetJob(benchmark::State &state)
{
    measureJob(state, "--worksheet", "sheet.pdf",
               "Worksheet job, 200 problems with key, large bank", WorksheetGoalMs, "sheet_",
               {"--subject", "Spelling", "--level", "6", "--count", "200", "--seed", "1"});
}

} // namespace

BENCHMARK(BM_ExportCsvJob)->UseManualTime()->Iterations(7)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ReportPdfJob)->UseManualTime()->Iterations(3)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_WorksheetJob)->UseManualTime()->Iterations(7)->Unit(benchmark::kMillisecond);
