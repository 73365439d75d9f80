// The backups at scale: the first save of the large Tests file in a run with
// its backup, the backup a class's Students file adds to the end of a test,
// and the Backups dialog opened over sixty copies of each file.
#include "BenchData.h"
#include "Figures.h"
#include "FileFloor.h"
#include "ScreenTiming.h"
#include "backups/BackupsDialog.h"
#include "core/BackupNames.h"
#include "core/Backups.h"
#include "core/DataFileBackups.h"
#include "core/HistoryClock.h"
#include "core/StudentsFile.h"
#include "core/TestsFile.h"

#include <QTreeWidget>

#include <benchmark/benchmark.h>

#include <filesystem>
#include <string>
#include <vector>

namespace fs = std::filesystem;

namespace {

constexpr double FirstTestsSaveMs = 500;
constexpr double StudentsBackupMs = 5;
constexpr double DialogMs = 500;
constexpr int CopiesOfEach = 60;
constexpr int ClassSize = 30;

// A data folder of the benchmark's own beside the large data set, emptied first.
DataPaths freshFolder(const char *name)
{
    const fs::path dir = BenchData::instance().paths().dataDir.parent_path() / name / "data";
    std::error_code ignored;
    fs::remove_all(dir, ignored);
    fs::create_directories(dir);
    return DataPaths::in(dir);
}

// One day later each time, so that the keeping rule removes as much as it
// would on a school day, and the copy is never named as the one before.
void nextDay(ManualClock &clock)
{
    clock.advance(86'400'000);
}

// The Tests file of the large bank is saved with a test length changed since
// its newest copy: the file is as long as the copy and differs only near its
// end, so the comparison reads both almost whole before the copy is made. The
// folder already holds copies up to its byte limit, so every backup also
// removes the oldest.
void BM_FirstTestsSaveWithBackup(benchmark::State &state)
{
    const DataPaths paths = freshFolder("backups-tests");
    TestBank bank;
    if (!loadTests(bank, BenchData::instance().paths().testsPath).ok()) {
        state.SkipWithError("the Tests file did not load");
        return;
    }
    ManualClock clock;
    int32_t &seconds = bank.limits[SpellingSubject].seconds;
    const auto saveChanged = [&] {
        seconds = seconds % 900 + 31;
        return saveTests(bank, paths.testsPath);
    };
    // The folder filled to its limit, as after weeks of use.
    saveChanged();
    const std::uintmax_t fileBytes = fs::file_size(paths.testsPath);
    for (std::uintmax_t held = 0; held <= TestsBackupBytes; held += fileBytes) {
        nextDay(clock);
        Backups backups(paths.backupsDir, clock);
        addDataFileSources(backups, paths);
        if (backups.backUp(DataFile::Tests).status != BackupOutcome::Status::Made ||
            saveChanged()) {
            state.SkipWithError("the folder could not be filled");
            return;
        }
    }

    const std::string bytes = wholeFile(paths.testsPath);
    const fs::path floorTarget = paths.dataDir / "floor_Tests.dat";
    std::vector<Sample> firstSaves;
    std::vector<Sample> backupsAlone;
    std::vector<Sample> floors;
    for (auto _ : state) {
        floors.push_back(measure([&] { writeFloor(floorTarget, bytes); }));
        nextDay(clock);
        // A new run: the next save is its first.
        Backups backups(paths.backupsDir, clock);
        addDataFileSources(backups, paths);
        BackupOutcome outcome;
        std::optional<FileError> error;
        const Sample backup =
            measure([&] { outcome = backups.backUpBeforeFirstSave(DataFile::Tests); });
        const Sample save = measure([&] { error = saveChanged(); });
        backupsAlone.push_back(backup);
        firstSaves.push_back(backup + save);
        state.SetIterationTime(firstSaves.back().value / 1000);
        if (outcome.status != BackupOutcome::Status::Made || error) {
            state.SkipWithError("the backup or the save failed");
            break;
        }
    }
    Backups after(paths.backupsDir, clock);
    addDataFileSources(after, paths);
    std::uintmax_t held = 0;
    for (const Backup &copy : after.list())
        held += copy.bytes;
    state.counters["copies_MB"] = static_cast<double>(held) / 1e6;
    reportUnder(state, "First save of the large Tests file in a run, with its backup", firstSaves,
                FirstTestsSaveMs);
    reportUnder(state, "  its backup: compare, copy, flush, remove the oldest", backupsAlone,
                FirstTestsSaveMs, floors, "ms", "backup_");
}

// A class of thirty: the end of a test saves the Students file, and the first
// save in a run is preceded by its backup. Every run's first save is the
// Students screen's at start-up, so a test's end finds the backup made and
// only checks; the backup itself is measured too. The folder holds as many copies as
// the keeping rule ever keeps, 59: thirty from today and the newest of each of
// the 29 days before. Each backup then also removes one.
void BM_StudentsBackupAtATestsEnd(benchmark::State &state)
{
    const DataPaths paths = freshFolder("backups-students");
    StudentRecords records = BenchData::instance().session().records;
    records.students.resize(ClassSize);
    ManualClock clock;
    const auto saveChanged = [&] {
        records.students[0].results[0].high[0] += 1;
        return saveStudents(records, paths.studentsPath);
    };
    const auto backUpLater = [&](std::int64_t milliseconds) {
        clock.advance(milliseconds);
        Backups backups(paths.backupsDir, clock);
        addDataFileSources(backups, paths);
        return !saveChanged() &&
               backups.backUp(DataFile::Students).status == BackupOutcome::Status::Made;
    };
    for (int i = 0; i < CopiesOfEach; ++i) {
        if (!backUpLater(i < CopiesOfEach / 2 ? 86'400'000 : 60'000)) {
            state.SkipWithError("the folder could not be filled");
            return;
        }
    }
    const std::string bytes = wholeFile(paths.studentsPath);
    const fs::path floorTarget = paths.dataDir / "floor_Students.dat";
    std::vector<Sample> backupsAlone;
    std::vector<Sample> laterChecks;
    std::vector<Sample> saves;
    std::vector<Sample> floors;
    for (auto _ : state) {
        floors.push_back(measure([&] { writeFloor(floorTarget, bytes); }));
        clock.advance(60'000);
        Backups backups(paths.backupsDir, clock);
        addDataFileSources(backups, paths);
        if (saveChanged()) {
            state.SkipWithError("the Students file could not be saved");
            break;
        }
        BackupOutcome outcome;
        backupsAlone.push_back(
            measure([&] { outcome = backups.backUpBeforeFirstSave(DataFile::Students); }));
        saves.push_back(measure([&] { saveChanged(); }));
        // The next save of the run, as at the end of a test.
        BackupOutcome later;
        laterChecks.push_back(
            measure([&] { later = backups.backUpBeforeFirstSave(DataFile::Students); }));
        state.SetIterationTime(backupsAlone.back().value / 1000);
        if (outcome.status != BackupOutcome::Status::Made ||
            later.status != BackupOutcome::Status::Done) {
            state.SkipWithError("the backup failed");
            break;
        }
    }
    Backups after(paths.backupsDir, clock);
    addDataFileSources(after, paths);
    state.counters["copies"] = static_cast<double>(after.list().size());
    state.counters["file_KB"] = static_cast<double>(fs::file_size(paths.studentsPath)) / 1e3;
    state.counters["save_ms"] = median([&] {
        std::vector<double> values;
        for (const Sample &save : saves)
            values.push_back(save.value);
        return values;
    }());
    reportUnder(state, "Backup of a class's Students file (30 students), when one is made",
                backupsAlone, StudentsBackupMs, floors);
    reportUnder(state, "  at a test's end, the Students screen having saved at start-up",
                laterChecks, StudentsBackupMs, {}, "ms", "later_");
}

// Sixty copies of each file: the Students file of 1,000 students and the
// Tests file of the same subjects with 12 questions a level (sixty copies of
// the large bank would pass the 1 GB the Tests copies may take). Timed from
// the dialog's construction until it is painted, and until every copy's
// summary has been read.
void BM_BackupsDialog(benchmark::State &state)
{
    const DataPaths source = BenchData::instance().ordinaryBankPaths();
    const DataPaths paths = freshFolder("backups-dialog");
    fs::create_directories(paths.backupsDir);
    const LocalSeconds start = toLocalSeconds({2026, 9, 1, 8, 0, 0});
    for (int i = 0; i < CopiesOfEach; ++i) {
        for (const auto &[from, stem] : {std::pair{source.studentsPath, "Tavrino_Students"},
                                         std::pair{source.testsPath, "Tavrino_Tests"}}) {
            const fs::path to =
                paths.backupsDir / backupFileName({stem, ".dat", start + i * 86'400, 1});
            if (copyFileAtomically(from, to)) {
                state.SkipWithError("the copies could not be made");
                return;
            }
        }
    }
    SilentPrompt prompt;
    Session session(paths, prompt);

    std::vector<Sample> opens;
    std::vector<Sample> allRead;
    for (auto _ : state) {
        Sample opened;
        Sample rest;
        {
            std::unique_ptr<BackupsDialog> dialog;
            opened = measure([&] {
                dialog = std::make_unique<BackupsDialog>(session);
                dialog->show();
                QCoreApplication::processEvents();
            });
            rest = measure([&] {
                while (dialog->readNextSummary()) {
                }
                QCoreApplication::processEvents();
            });
            if (dialog->findChild<QTreeWidget *>()->topLevelItemCount() != 2 * CopiesOfEach)
                state.SkipWithError("the dialog does not list every copy");
        }
        opens.push_back(opened);
        allRead.push_back(opened + rest);
        state.SetIterationTime(opened.value / 1000);
    }
    reportUnder(state, "Backups dialog shown, 60 copies of each file", opens, DialogMs);
    reportUnder(state, "Backups dialog, every copy's summary read", allRead, DialogMs, {}, "ms",
                "all_");
}

} // namespace

BENCHMARK(BM_FirstTestsSaveWithBackup)
    ->UseManualTime()
    ->Iterations(5)
    ->Unit(benchmark::kMillisecond);
BENCHMARK(BM_StudentsBackupAtATestsEnd)
    ->UseManualTime()
    ->Iterations(41)
    ->Unit(benchmark::kMillisecond);
BENCHMARK(BM_BackupsDialog)->UseManualTime()->Iterations(7)->Unit(benchmark::kMillisecond);
