// A worksheet of 200 problems made and written as a PDF in the benchmark's own
// process: the problems drawn, the pages laid out and drawn, the file's bytes
// produced. Arithmetic at a level of four operations, and multiple choice from
// Spelling in the large bank (1,000 questions a level, its neighbours included).
#include "BenchData.h"
#include "Figures.h"
#include "worksheets/Worksheet.h"
#include "worksheets/WorksheetPdf.h"

#include <QBuffer>

#include <benchmark/benchmark.h>

#include <string>
#include <vector>

namespace {

constexpr double SheetMs = 1000;

void measureSheet(benchmark::State &state, int subject, int level, const std::string &name)
{
    const TestBank &bank = BenchData::instance().session().bank;
    // The subject's questions decoded beforehand, as after its first test.
    benchmark::DoNotOptimize(bank.questionBank[static_cast<std::size_t>(subject)].items());
    std::uint32_t seed = 1;
    std::vector<Sample> samples;
    for (auto _ : state) {
        const WorksheetSettings settings{MaxWorksheetCount, true, seed++};
        QBuffer pdf;
        pdf.open(QIODevice::WriteOnly);
        bool written = false;
        samples.push_back(measure([&] {
            written = writeWorksheetPdf(pdf, makeWorksheet(bank, subject, level, settings));
        }));
        state.SetIterationTime(samples.back().value / 1000);
        if (!written) {
            state.SkipWithError("the worksheet was not written");
            break;
        }
    }
    reportUnder(state, name, samples, SheetMs);
}

void BM_WorksheetArithmetic(benchmark::State &state)
{
    measureSheet(state, ArithmeticSubject, 5,
                 "Worksheet of 200 problems with its key, Arithmetic level 5, as PDF");
}

void BM_WorksheetMultipleChoice(benchmark::State &state)
{
    measureSheet(state, SpellingSubject, 6,
                 "Worksheet of 200 problems with its key, Spelling level 6, as PDF");
}

} // namespace

BENCHMARK(BM_WorksheetArithmetic)->UseManualTime()->Iterations(11)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_WorksheetMultipleChoice)
    ->UseManualTime()
    ->Iterations(11)
    ->Unit(benchmark::kMillisecond);
