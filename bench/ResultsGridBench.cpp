// The results grid of the Students screen refreshed as a student is selected:
// one subject's scores of 1,000 students, and one student's scores in 50 subjects.
#include "BenchData.h"
#include "Figures.h"
#include "ScreenTiming.h"
#include "students/StudentsScreen.h"

#include <QComboBox>
#include <QListWidget>
#include <QRadioButton>

#include <benchmark/benchmark.h>

#include <string>
#include <vector>

namespace {

constexpr double FrameMs = 16;
// An added subject: its scores are those of any other.
constexpr int SubjectShown = 17;

void resultsGridRefresh(benchmark::State &state, bool byStudent)
{
    Session &session = BenchData::instance().session();
    StudentsScreen screen(session);
    screen.setHelpOpener([](QWidget *) {});
    if (!screen.loadRoster()) {
        state.SkipWithError("the Students screen did not load");
        return;
    }
    screen.show();
    settleWindows();
    screen.findChild<QComboBox *>(QStringLiteral("cmbSubject"))->setCurrentIndex(SubjectShown);
    screen
        .findChild<QRadioButton *>(byStudent ? QStringLiteral("optByStudent")
                                             : QStringLiteral("optBySubject"))
        ->click();
    settleWindows();

    QListWidget *list = screen.findChild<QListWidget *>(QStringLiteral("List1"));
    const int students = list->count();
    int student = 0;
    std::vector<Sample> steps;
    std::vector<Sample> frames;
    for (auto _ : state) {
        // Far enough each time that the grid scrolls to the newly highlighted rows.
        student = (student + 337) % students;
        const StepTimes times = timeStepAndFrame([&] { list->setCurrentRow(student); });
        state.SetIterationTime(times.frame.value / 1000);
        steps.push_back(times.step);
        frames.push_back(times.frame);
    }
    const std::string mode = byStudent ? "Results grid, student mode, 50 subjects"
                                       : "Results grid, subject mode, 1000 students";
    reportUnder(state, mode + ": fill step", steps, FrameMs, {}, "ms", "step_");
    reportUnder(state, mode + ": fill step + frame drawn", frames, FrameMs, {}, "ms", "frame_");
    screen.hide();
}

void BM_ResultsGridBySubject(benchmark::State &state)
{
    resultsGridRefresh(state, false);
}

void BM_ResultsGridByStudent(benchmark::State &state)
{
    resultsGridRefresh(state, true);
}

} // namespace

BENCHMARK(BM_ResultsGridBySubject)->UseManualTime()->Iterations(61)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ResultsGridByStudent)->UseManualTime()->Iterations(61)->Unit(benchmark::kMillisecond);
