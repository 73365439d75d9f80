// Loading and saving both data files of the large data set, each against the
// floor of reading or durably writing the same bytes.
#include "BenchData.h"
#include "Figures.h"
#include "FileFloor.h"
#include "core/StudentsFile.h"
#include "core/TestsFile.h"

#include <benchmark/benchmark.h>

#include <memory>
#include <vector>

namespace {

constexpr double LoadTestsFactor = 4;
constexpr double SaveTestsFactor = 3;
constexpr double StudentsFileMs = 5;
// The pause before a test's first question or a subject shown on the Tests
// screen: within a frame, like every other step on the screens.
constexpr double FirstUseMs = 16;

std::filesystem::path beside(const std::filesystem::path &file, const char *name)
{
    return file.parent_path() / name;
}

// Loading reads and checks the whole file but decodes a subject's questions
// only when they are first asked for, so the figure is given three ways: the
// load itself, the first use of one subject, and the load with every question
// decoded, which is what a load cost before questions were decoded on demand.
void BM_LoadTests(benchmark::State &state)
{
    const std::filesystem::path &path = BenchData::instance().paths().testsPath;
    std::vector<Sample> loads;
    std::vector<Sample> firstUses;
    std::vector<Sample> wholeLoads;
    std::vector<Sample> floors;
    for (auto _ : state) {
        floors.push_back(measure([&] { benchmark::DoNotOptimize(readFloor(path)); }));
        // A fresh bank, as at start-up; dropping it afterwards is not part of loading.
        auto bank = std::make_unique<TestBank>();
        LoadResult result;
        loads.push_back(measure([&] { result = loadTests(*bank, path); }));
        state.SetIterationTime(loads.back().value / 1000);
        if (result.status != LoadResult::Status::Loaded) {
            state.SkipWithError("the Tests file did not load");
            break;
        }
        firstUses.push_back(measure(
            [&] { benchmark::DoNotOptimize(bank->questionBank[FirstAddedSubject].items()); }));
        const Sample rest = measure([&] {
            for (const SubjectQuestions &questions : bank->questionBank)
                benchmark::DoNotOptimize(questions.items());
        });
        wholeLoads.push_back(loads.back() + firstUses.back() + rest);
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) *
                            static_cast<int64_t>(BenchData::instance().testsBytes()));
    reportAgainstFloor(state, "LoadTests, large bank (questions decoded on first use)", loads,
                       floors, LoadTestsFactor);
    reportUnder(state, "First use of a subject: 13 x 1000 questions decoded", firstUses, FirstUseMs,
                {}, "ms", "first_use_");
    reportAgainstFloor(state, "LoadTests, large bank, every question decoded", wholeLoads, floors,
                       LoadTestsFactor, "ms", "decoded_");
}

// Questions nobody has changed since loading are written back as they were
// read, so the save is measured twice: the bank as loaded, and the bank with
// every question decoded, as after editing every subject.
void BM_SaveTests(benchmark::State &state)
{
    BenchData &data = BenchData::instance();
    const std::filesystem::path &path = data.paths().testsPath;
    TestBank asLoaded;
    if (!loadTests(asLoaded, path).ok()) {
        state.SkipWithError("the Tests file did not load");
        return;
    }
    TestBank decoded = asLoaded;
    for (const SubjectQuestions &questions : decoded.questionBank)
        benchmark::DoNotOptimize(questions.items());

    const std::string bytes = wholeFile(path);
    const auto target = beside(path, "saved_Tests.dat");
    const auto floorTarget = beside(path, "floor_Tests.dat");
    std::vector<Sample> saves;
    std::vector<Sample> decodedSaves;
    std::vector<Sample> floors;
    for (auto _ : state) {
        floors.push_back(measure([&] { writeFloor(floorTarget, bytes); }));
        std::optional<FileError> error;
        saves.push_back(measure([&] { error = saveTests(asLoaded, target); }));
        decodedSaves.push_back(measure([&] {
            if (!error)
                error = saveTests(decoded, target);
        }));
        state.SetIterationTime(decodedSaves.back().value / 1000);
        if (error)
            state.SkipWithError(error->message().c_str());
    }
    if (wholeFile(target) != bytes)
        state.SkipWithError("the saved Tests file differs from the loaded one");
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) *
                            static_cast<int64_t>(bytes.size()));
    reportAgainstFloor(state, "SaveTests, large bank as loaded", saves, floors, SaveTestsFactor);
    reportAgainstFloor(state, "SaveTests, large bank, every question decoded", decodedSaves, floors,
                       SaveTestsFactor, "ms", "decoded_");
}

void BM_LoadStudents(benchmark::State &state)
{
    BenchData &data = BenchData::instance();
    const TestBank &bank = data.session().bank;
    const std::filesystem::path &path = data.paths().studentsPath;
    std::vector<Sample> loads;
    std::vector<Sample> floors;
    for (auto _ : state) {
        floors.push_back(measure([&] { benchmark::DoNotOptimize(readFloor(path)); }));
        auto records = std::make_unique<StudentRecords>();
        LoadResult result;
        loads.push_back(measure([&] { result = loadStudents(*records, bank, path); }));
        state.SetIterationTime(loads.back().value / 1000);
        if (result.status != LoadResult::Status::Loaded || records->students.size() != 1000)
            state.SkipWithError("the Students file did not load");
    }
    reportUnder(state, "LoadStudents, 1000 students x 50 subjects", loads, StudentsFileMs, floors);
}

void BM_SaveStudents(benchmark::State &state)
{
    BenchData &data = BenchData::instance();
    const StudentRecords &records = data.session().records;
    const std::string bytes = wholeFile(data.paths().studentsPath);
    const auto target = beside(data.paths().studentsPath, "saved_Students.dat");
    const auto floorTarget = beside(data.paths().studentsPath, "floor_Students.dat");
    std::vector<Sample> saves;
    std::vector<Sample> floors;
    for (auto _ : state) {
        floors.push_back(measure([&] { writeFloor(floorTarget, bytes); }));
        std::optional<FileError> error;
        saves.push_back(measure([&] { error = saveStudents(records, target); }));
        state.SetIterationTime(saves.back().value / 1000);
        if (error)
            state.SkipWithError(error->message().c_str());
    }
    if (wholeFile(target) != bytes)
        state.SkipWithError("the saved Students file differs from the loaded one");
    reportUnder(state, "SaveStudents, 1000 students x 50 subjects", saves, StudentsFileMs, floors);
}

} // namespace

BENCHMARK(BM_LoadTests)->UseManualTime()->Iterations(7)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_SaveTests)->UseManualTime()->Iterations(5)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_LoadStudents)->UseManualTime()->Iterations(41)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_SaveStudents)->UseManualTime()->Iterations(41)->Unit(benchmark::kMillisecond);
