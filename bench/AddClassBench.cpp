// Add Class on the Students screen of a class of 1,000: 1,000 names pasted into
// the dialog, added, and the screen refreshed, its grid showing every student's
// scores in one subject (the grid that grows with the class).
#include "BenchData.h"
#include "Figures.h"
#include "ScreenTiming.h"
#include "students/AddClassDialog.h"
#include "students/StudentsScreen.h"

#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>

#include <benchmark/benchmark.h>

#include <string>
#include <vector>

namespace {

constexpr double AddClassMs = 1000;
constexpr int NamesPasted = 1000;

QString pastedNames()
{
    QString text;
    for (int i = 1; i <= NamesPasted; ++i)
        text += QStringLiteral("New Pupil %1\n").arg(i);
    return text;
}

void BM_AddClass(benchmark::State &state)
{
    Session &session = BenchData::instance().session();
    const QString pasted = pastedNames();
    std::vector<Sample> steps;
    std::vector<Sample> frames;
    for (auto _ : state) {
        // A fresh screen on the class as saved; it is never closed, so the file
        // keeps its 1,000 students for the next run.
        StudentsScreen screen(session);
        screen.setHelpOpener([](QWidget *) {});
        if (!screen.loadRoster()) {
            state.SkipWithError("the Students screen did not load");
            return;
        }
        const std::size_t before = session.records.students.size();
        screen.setAddClassRunner([&](AddClassDialog &dialog) {
            dialog.findChild<QPlainTextEdit *>(QStringLiteral("txtNames"))->insertPlainText(pasted);
            dialog.findChild<QPushButton *>(QStringLiteral("cmdAdd"))->click();
            return dialog.result() == QDialog::Accepted;
        });
        screen.show();
        screen.findChild<QRadioButton *>(QStringLiteral("optBySubject"))->click();
        settleWindows();

        const StepTimes times = timeStepAndFrame([&] { screen.addClass(); });
        state.SetIterationTime(times.frame.value / 1000);
        steps.push_back(times.step);
        frames.push_back(times.frame);
        if (session.records.students.size() != before + NamesPasted) {
            state.SkipWithError("the class was not added");
            return;
        }
        screen.hide();
    }
    const std::string name = "Add Class: 1000 names pasted into a class of 1000";
    reportUnder(state, name, steps, AddClassMs, {}, "ms", "step_");
    reportUnder(state, name + " + frame drawn", frames, AddClassMs, {}, "ms", "frame_");
}

} // namespace

BENCHMARK(BM_AddClass)->UseManualTime()->Iterations(21)->Unit(benchmark::kMillisecond);
