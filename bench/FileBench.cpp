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

std::filesystem::path Beside(const std::filesystem::path &file, const char *name)
{
    return file.parent_path() / name;
}

void BM_LoadTests(benchmark::State &state)
{
    const std::filesystem::path &path = BenchData::instance().paths().TestsPath;
    std::vector<Sample> loads;
    std::vector<Sample> floors;
    for (auto _ : state) {
        floors.push_back(Measure([&] { benchmark::DoNotOptimize(ReadFloor(path)); }));
        // A fresh bank, as at start-up; dropping it afterwards is not part of loading.
        auto bank = std::make_unique<TestBank>();
        LoadResult result;
        loads.push_back(Measure([&] { result = LoadTests(*bank, path); }));
        state.SetIterationTime(loads.back().value / 1000);
        if (result.status != LoadResult::Status::Loaded)
            state.SkipWithError("the Tests file did not load");
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) *
                            static_cast<int64_t>(BenchData::instance().testsBytes()));
    ReportAgainstFloor(state, "LoadTests, large bank", loads, floors, LoadTestsFactor);
}

void BM_SaveTests(benchmark::State &state)
{
    BenchData &data = BenchData::instance();
    const TestBank &bank = data.session().bank;
    const std::string bytes = FileBytes(data.paths().TestsPath);
    const auto target = Beside(data.paths().TestsPath, "saved_Tests.dat");
    const auto floorTarget = Beside(data.paths().TestsPath, "floor_Tests.dat");
    std::vector<Sample> saves;
    std::vector<Sample> floors;
    for (auto _ : state) {
        floors.push_back(Measure([&] { WriteFloor(floorTarget, bytes); }));
        std::optional<FileError> error;
        saves.push_back(Measure([&] { error = SaveTests(bank, target); }));
        state.SetIterationTime(saves.back().value / 1000);
        if (error)
            state.SkipWithError(error->message().c_str());
    }
    if (FileBytes(target) != bytes)
        state.SkipWithError("the saved Tests file differs from the loaded one");
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) *
                            static_cast<int64_t>(bytes.size()));
    ReportAgainstFloor(state, "SaveTests, large bank", saves, floors, SaveTestsFactor);
}

void BM_LoadStudents(benchmark::State &state)
{
    BenchData &data = BenchData::instance();
    const TestBank &bank = data.session().bank;
    const std::filesystem::path &path = data.paths().StudentsPath;
    std::vector<Sample> loads;
    std::vector<Sample> floors;
    for (auto _ : state) {
        floors.push_back(Measure([&] { benchmark::DoNotOptimize(ReadFloor(path)); }));
        auto records = std::make_unique<StudentRecords>();
        LoadResult result;
        loads.push_back(Measure([&] { result = LoadStudents(*records, bank, path); }));
        state.SetIterationTime(loads.back().value / 1000);
        if (result.status != LoadResult::Status::Loaded || records->Students.size() != 1000)
            state.SkipWithError("the Students file did not load");
    }
    ReportUnder(state, "LoadStudents, 1000 students x 50 subjects", loads, StudentsFileMs, floors);
}

void BM_SaveStudents(benchmark::State &state)
{
    BenchData &data = BenchData::instance();
    const StudentRecords &records = data.session().records;
    const std::string bytes = FileBytes(data.paths().StudentsPath);
    const auto target = Beside(data.paths().StudentsPath, "saved_Students.dat");
    const auto floorTarget = Beside(data.paths().StudentsPath, "floor_Students.dat");
    std::vector<Sample> saves;
    std::vector<Sample> floors;
    for (auto _ : state) {
        floors.push_back(Measure([&] { WriteFloor(floorTarget, bytes); }));
        std::optional<FileError> error;
        saves.push_back(Measure([&] { error = SaveStudents(records, target); }));
        state.SetIterationTime(saves.back().value / 1000);
        if (error)
            state.SkipWithError(error->message().c_str());
    }
    if (FileBytes(target) != bytes)
        state.SkipWithError("the saved Students file differs from the loaded one");
    ReportUnder(state, "SaveStudents, 1000 students x 50 subjects", saves, StudentsFileMs, floors);
}

} // namespace

BENCHMARK(BM_LoadTests)->UseManualTime()->Iterations(7)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_SaveTests)->UseManualTime()->Iterations(5)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_LoadStudents)->UseManualTime()->Iterations(41)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_SaveStudents)->UseManualTime()->Iterations(41)->Unit(benchmark::kMillisecond);
