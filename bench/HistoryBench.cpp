// The answer history at the scale of a school year (HistoryData.h): one answer
// recorded with its commit, one student's progress, the whole CSV, the file's
// size per answer, opening the history with that file and without any, and
// the Students screen's Progress view drawn from it; the fluency views' grids, class
// view and class report pages made from it.
#include "BenchData.h"
#include "Figures.h"
#include "HistoryData.h"
#include "core/DefaultBank.h"
#include "core/History.h"
#include "core/HistoryClock.h"
#include "fluency/ClassOverview.h"
#include "fluency/FactGrid.h"
#include "reports/ClassHistoryLists.h"
#include "reports/ClassReportPainter.h"
#include "students/ProgressDialog.h"
#include "ui/Session.h"

#include <QBuffer>
#include <QComboBox>
#include <QPdfWriter>
#include <QPixmap>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <iostream>
#include <memory>
#include <streambuf>
#include <unistd.h>

namespace fs = std::filesystem;

namespace {

constexpr double AnswerMedianMs = 1;
constexpr double AnswerP99Ms = 5;
constexpr double ProgressMs = 100;
constexpr double CsvMs = 30'000;
constexpr double BytesPerAnswerLimit = 100;
constexpr double OpenWithinMs = 10;
// What the fluency views read for a whole class, against the goal set for their class view.
constexpr double ClassFactsMs = 1000;
constexpr double FactGridMs = 100;
// The class report's PDF job has 10 s and takes about 4.4 s without these pages.
constexpr double ReportHistoryPagesMs = 5000;

// A copy of the cached history for this run, since some benchmarks record into
// it; removed at the end.
class HistoryCopy {
public:
    static HistoryCopy &instance()
    {
        static HistoryCopy copy;
        return copy;
    }
    ~HistoryCopy()
    {
        std::error_code ignored;
        fs::remove_all(m_root, ignored);
    }

    const fs::path &cached() const { return m_cached; }
    const fs::path &dataDir() const { return m_dataDir; }
    const std::vector<std::string> &students() const { return m_students; }
    const std::vector<std::string> &subjects() const { return m_subjects; }

    // A history open on the copy, matched as at start-up.
    std::unique_ptr<History> open(HistoryClock &clock) const
    {
        auto history = std::make_unique<History>(m_dataDir, clock);
        history->roster().matchRoster(m_students);
        history->subjects().matchSubjects(m_subjects);
        return history;
    }

private:
    HistoryCopy()
        : m_root(fs::temp_directory_path() /
                 ("tavrino-history-bench-" + std::to_string(::getpid()))),
          m_dataDir(m_root / "data"), m_students(historyStudentNames()),
          m_subjects(historySubjectNames())
    {
        std::cerr << "Finding or writing the large history (minutes the first time) ..."
                  << std::endl;
        m_cached = cachedLargeHistory();
        fs::create_directories(m_dataDir);
        fs::copy_file(m_cached, m_dataDir / "Tavrino_History.db");
    }

    fs::path m_root;
    fs::path m_dataDir;
    fs::path m_cached;
    std::vector<std::string> m_students;
    std::vector<std::string> m_subjects;
};

// Counts what is written to it and keeps nothing, so the CSV is measured apart
// from the disk it would be written to.
class CountingBuffer : public std::streambuf {
public:
    std::size_t bytes = 0;

protected:
    std::streamsize xsputn(const char *, std::streamsize count) override
    {
        bytes += std::size_t(count);
        return count;
    }
    int_type overflow(int_type c) override
    {
        ++bytes;
        return c;
    }
};

void reportFigure(benchmark::State &state, const std::string &name, double value,
                  std::optional<double> floor, double limit, const std::string &goal,
                  const std::string &unit, int runs, const std::string &counter)
{
    Figure figure;
    figure.name = name;
    figure.value = value;
    figure.unit = unit;
    figure.floor = floor;
    figure.limit = limit;
    figure.goal = goal;
    figure.runs = runs;
    state.counters[counter] = value;
    recordFigure(figure);
}

double percentile(std::vector<double> values, double fraction)
{
    std::sort(values.begin(), values.end());
    const auto rank = static_cast<std::size_t>(std::ceil(fraction * double(values.size())));
    return values[std::min(values.size(), std::max<std::size_t>(rank, 1)) - 1];
}

// Answers as a test gives them, half Arithmetic and half multiple choice, the
// questions of the latter mostly asked before.
void BM_HistoryRecordAnswer(benchmark::State &state)
{
    ManualClock clock({2027, 7, 1, 9, 0, 0});
    const std::unique_ptr<History> history = HistoryCopy::instance().open(clock);
    HistoryRecorder &recorder = history->recorder();
    std::vector<Sample> samples;
    // The end of a test is where the log is copied into the file when it is due.
    std::vector<double> ends;
    int student = 0;
    for (auto _ : state) {
        student = (student + 37) % 1000;
        recorder.beginTest({student, 0, 4, 30, false});
        for (int i = 0; i < 20; ++i) {
            clock.advance(1400);
            const ArithmeticAnswer sum{i % 13, 7, i % 13 * 7, 2, i % 3, std::to_string(i % 13 * 7),
                                       true};
            samples.push_back(measure([&] { recorder.recordArithmetic(sum); }));
        }
        ends.push_back(measure([&] { recorder.endTest({20, 20, 0, false}); }).value);
        recorder.beginTest({student, 1, 4, 30, false});
        for (int i = 0; i < 20; ++i) {
            clock.advance(2100);
            const int question = (student * 20 + i) % 60;
            const ChoiceAnswer choice{"How is it spelt, question " + std::to_string(question),
                                      {"right", "wrong one", "wrong two", "wrong three"},
                                      0,
                                      i % 4};
            samples.push_back(measure([&] { recorder.recordChoice(choice); }));
        }
        ends.push_back(measure([&] { recorder.endTest({0, 5, 15, false}); }).value);
        state.SetIterationTime(samples.back().value / 1000);
    }
    if (!history->isOn())
        state.SkipWithError("the history turned itself off");
    reportUnder(state, "History: one answer recorded and committed, median", samples,
                AnswerMedianMs);
    std::vector<double> wall;
    for (const Sample &sample : samples)
        wall.push_back(sample.value);
    reportFigure(state, "History: one answer recorded and committed, 99th percentile",
                 percentile(wall, 0.99), std::nullopt, AnswerP99Ms, "under 5.00 ms", "ms",
                 int(samples.size()), "p99_ms");
    state.counters["max_ms"] = *std::max_element(wall.begin(), wall.end());
    state.counters["end_median_ms"] = median(ends);
    state.counters["end_max_ms"] = *std::max_element(ends.begin(), ends.end());
}

// The Progress view of one student: every test in Arithmetic at the level the
// student took most; beside it what the fluency views read for the same student.
void BM_HistoryProgress(benchmark::State &state)
{
    ManualClock clock;
    const std::unique_ptr<History> history = HistoryCopy::instance().open(clock);
    HistoryQueries &queries = history->queries();
    std::vector<Sample> progress, facts, scores;
    std::size_t tests = 0;
    int student = 0;
    for (auto _ : state) {
        student = (student + 101) % 1000;
        int level = 0;
        std::size_t most = 0;
        for (int candidate = 0; candidate < 13; ++candidate) {
            const std::size_t count = queries.tests(student, 0, candidate).size();
            if (count > most) {
                most = count;
                level = candidate;
            }
        }
        progress.push_back(measure([&] { tests += queries.tests(student, 0, level).size(); }));
        facts.push_back(measure([&] { benchmark::DoNotOptimize(queries.facts(student)); }));
        scores.push_back(measure([&] { benchmark::DoNotOptimize(queries.recentScores(student)); }));
        state.SetIterationTime(progress.back().value / 1000);
    }
    state.counters["tests_shown"] = double(tests) / double(progress.size());
    reportUnder(state, "History: one student's progress (Arithmetic, one level)", progress,
                ProgressMs);
    reportUnder(state, "History: one student's facts, latest five answers each", facts, ProgressMs,
                {}, "ms", "facts_");
    reportUnder(state, "History: one student's latest scores in every subject", scores, ProgressMs,
                {}, "ms", "scores_");
}

// The facts of every student of the class, as a class view of fluency needs them.
void BM_HistoryClassFacts(benchmark::State &state)
{
    ManualClock clock;
    const std::unique_ptr<History> history = HistoryCopy::instance().open(clock);
    std::vector<Sample> samples;
    for (auto _ : state) {
        std::size_t facts = 0;
        samples.push_back(measure([&] {
            for (int student = 0; student < 1000; ++student)
                facts += history->queries().facts(student).size();
        }));
        state.counters["facts"] = double(facts);
        state.SetIterationTime(samples.back().value / 1000);
    }
    reportUnder(state, "History: facts of all 1000 students", samples, ClassFactsMs);
}

void BM_HistoryCsv(benchmark::State &state)
{
    ManualClock clock;
    const std::unique_ptr<History> history = HistoryCopy::instance().open(clock);
    std::vector<Sample> samples;
    for (auto _ : state) {
        CountingBuffer buffer;
        std::ostream out(&buffer);
        bool written = false;
        samples.push_back(measure([&] { written = history->exportCsv(out); }));
        if (!written)
            state.SkipWithError("the CSV was not written");
        state.counters["MB"] = double(buffer.bytes) / 1e6;
        state.SetIterationTime(samples.back().value / 1000);
    }
    reportUnder(state, "History: CSV of all 10 million answers", samples, CsvMs);
}

void BM_HistoryBytesPerAnswer(benchmark::State &state)
{
    const HistorySize size;
    double bytes = 0;
    for (auto _ : state)
        bytes = double(fs::file_size(HistoryCopy::instance().cached()));
    state.counters["file_MB"] = bytes / 1e6;
    reportFigure(state, "History: file size per answer (10 million answers)",
                 bytes / double(size.answers), std::nullopt, BytesPerAnswerLimit, "under 100 B",
                 "B", 1, "bytes_per_answer");
}

// Opening the history and matching the roster and the bank, as start-up will:
// with the large file, against a folder without one (where a new file is made).
void BM_HistoryOpen(benchmark::State &state)
{
    const HistoryCopy &copy = HistoryCopy::instance();
    ManualClock clock;
    std::vector<Sample> with, without;
    int fresh = 0;
    for (auto _ : state) {
        const fs::path empty = copy.dataDir().parent_path() / ("empty-" + std::to_string(fresh++));
        fs::create_directories(empty);
        std::unique_ptr<History> history;
        without.push_back(measure([&] {
            history = std::make_unique<History>(empty, clock);
            history->roster().matchRoster(copy.students());
            history->subjects().matchSubjects(copy.subjects());
        }));
        history.reset();
        fs::remove_all(empty);
        with.push_back(measure([&] { history = copy.open(clock); }));
        history.reset();
        state.SetIterationTime(with.back().value / 1000);
    }
    std::vector<double> withMs, withoutMs;
    for (std::size_t i = 0; i < with.size(); ++i) {
        withMs.push_back(with[i].value);
        withoutMs.push_back(without[i].value);
    }
    const double floor = median(withoutMs);
    reportFigure(state, "History: open and match 1000 students, 10 million answers", median(withMs),
                 floor, floor + OpenWithinMs, "within 10 ms of floor", "ms", int(with.size()),
                 "open_ms");
    state.counters["without_ms"] = floor;
}

// The Progress view as the teacher opens it: the dialog made for one student in
// Arithmetic at the level the student took most, switched to all tests and
// painted, chart and table.
void BM_HistoryProgressView(benchmark::State &state)
{
    const HistoryCopy &copy = HistoryCopy::instance();
    ManualClock clock;
    SilentPrompt prompt;
    Session session(DataPaths::in(copy.dataDir()), prompt, clock);
    buildDefaultTests(session.bank);
    for (std::size_t subject = session.bank.subjects.size(); subject < copy.subjects().size();
         ++subject)
        addSubject(session.bank, copy.subjects()[subject]);
    for (const std::string &name : copy.students()) {
        Student &student =
            session.records.students.emplace_back(newStudent(session.bank.subjectMax));
        student.name = name;
    }
    session.history = copy.open(clock);
    HistoryQueries &queries = session.history->queries();

    std::vector<Sample> shown;
    std::size_t tests = 0;
    int student = 0;
    for (auto _ : state) {
        student = (student + 101) % 1000;
        int level = 0;
        std::size_t most = 0;
        for (int candidate = 0; candidate < LevelCount; ++candidate) {
            const std::size_t count = queries.tests(student, 0, candidate).size();
            if (count > most) {
                most = count;
                level = candidate;
            }
        }
        session.records.currentSubject = 0;
        shown.push_back(measure([&] {
            ProgressDialog dialog(session, student, level);
            dialog.findChild<QComboBox *>(QStringLiteral("cmbSpan"))->setCurrentIndex(2);
            tests += dialog.shownTests().size();
            benchmark::DoNotOptimize(dialog.grab());
        }));
        state.SetIterationTime(shown.back().value / 1000);
    }
    state.counters["tests_shown"] = double(tests) / double(shown.size());
    reportUnder(state, "History: Progress view of one student, drawn", shown, ProgressMs, {}, "ms",
                "view_");
}

// The bank the large history was recorded with: the built-in subjects and the added ones.
TestBank historyBank()
{
    TestBank bank;
    buildDefaultTests(bank);
    const std::vector<std::string> names = HistoryCopy::instance().subjects();
    for (std::size_t i = bank.subjects.size(); i < names.size(); ++i)
        addSubject(bank, names[i]);
    return bank;
}

// The Facts view of one student: the latest answers to every fact, laid out in grids.
void BM_FluencyFactGrid(benchmark::State &state)
{
    ManualClock clock;
    const std::unique_ptr<History> history = HistoryCopy::instance().open(clock);
    const TestBank bank = historyBank();
    std::vector<Sample> samples;
    int student = 0;
    for (auto _ : state) {
        student = (student + 101) % 1000;
        samples.push_back(measure([&] {
            benchmark::DoNotOptimize(makeFactGrids(bank, history->queries().facts(student)));
        }));
        state.SetIterationTime(samples.back().value / 1000);
    }
    reportUnder(state, "Fluency: one student's fact grids", samples, FactGridMs);
}

// Who needs help, for the whole class: every student's latest scores in every
// subject and facts not yet known.
void BM_FluencyClassView(benchmark::State &state)
{
    ManualClock clock;
    const std::unique_ptr<History> history = HistoryCopy::instance().open(clock);
    std::vector<Sample> samples;
    for (auto _ : state) {
        std::size_t rows = 0;
        samples.push_back(measure([&] {
            rows = makeClassOverview(history->queries(), HistoryCopy::instance().students(),
                                     HistoryCopy::instance().subjects())
                       .size();
        }));
        state.counters["rows"] = double(rows);
        state.SetIterationTime(samples.back().value / 1000);
    }
    reportUnder(state, "Fluency: who needs help, 1000 students", samples, ClassFactsMs);
}

// The class report's pages from the history: made from the database and drawn
// into a PDF, as the report job adds them to its own.
void BM_FluencyReportPages(benchmark::State &state)
{
    ManualClock clock;
    const std::unique_ptr<History> history = HistoryCopy::instance().open(clock);
    const TestBank bank = historyBank();
    std::vector<Sample> samples;
    for (auto _ : state) {
        int pages = 0;
        samples.push_back(measure([&] {
            ClassReport report;
            addHistoryLists(
                report, history->queries(), bank, HistoryCopy::instance().students(),
                [](LocalSeconds seconds) { return isoLocalTime(seconds).substr(0, 10); });
            QBuffer pdf;
            pdf.open(QIODevice::WriteOnly);
            QPdfWriter writer(&pdf);
            ClassReportPainter painter(writer, report);
            painter.paint();
            pages = painter.pageCount();
        }));
        state.counters["pages"] = double(pages);
        state.SetIterationTime(samples.back().value / 1000);
    }
    reportUnder(state, "Fluency: class report's history pages (made and drawn)", samples,
                ReportHistoryPagesMs);
}

} // namespace

BENCHMARK(BM_HistoryBytesPerAnswer)->UseManualTime()->Iterations(1)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_HistoryOpen)->UseManualTime()->Iterations(21)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_HistoryRecordAnswer)->UseManualTime()->Iterations(50)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_HistoryProgress)->UseManualTime()->Iterations(41)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_HistoryProgressView)->UseManualTime()->Iterations(21)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_HistoryClassFacts)->UseManualTime()->Iterations(3)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_FluencyFactGrid)->UseManualTime()->Iterations(41)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_FluencyClassView)->UseManualTime()->Iterations(3)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_FluencyReportPages)->UseManualTime()->Iterations(3)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_HistoryCsv)->UseManualTime()->Iterations(3)->Unit(benchmark::kMillisecond);
