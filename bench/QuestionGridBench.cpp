// The question grid of the Tests screen: filled with a subject's 13 x 1,000
// questions, and one question added at the end of a full level, which grows
// the slot bound of every subject.
#include "BenchData.h"
#include "Figures.h"
#include "ScreenTiming.h"
#include "core/TestsFile.h"
#include "editor/QuestionEditor.h"

#include <QAbstractItemModel>
#include <QTableView>

#include <benchmark/benchmark.h>

#include <string>
#include <vector>

namespace {

constexpr double FrameMs = 16;
constexpr double AddQuestionMs = 50;
constexpr int SubjectEdited = FirstAddedSubject + 3;

// The editor over an added subject, shown as on the Tests screen.
class ShownEditor {
public:
    explicit ShownEditor(Session &session) : m_session(session), m_editor(session)
    {
        m_session.records.currentSubject = SubjectEdited;
        m_editor.resize(1000, 640);
        m_editor.show();
        m_editor.showSubject();
        settleWindows();
    }
    ~ShownEditor() { m_editor.hide(); }

    QuestionEditor &editor() { return m_editor; }
    int rows() const
    {
        return m_editor.findChild<QTableView *>(QStringLiteral("Grid1"))->model()->rowCount();
    }

private:
    Session &m_session;
    QuestionEditor m_editor;
};

void BM_PopulateGrid(benchmark::State &state)
{
    Session &session = BenchData::instance().session();
    ShownEditor shown(session);
    if (shown.rows() != LevelCount * (session.bank.questionMax + 1)) {
        state.SkipWithError("the subject does not hold 13 full levels");
        return;
    }
    std::vector<Sample> steps;
    std::vector<Sample> frames;
    for (auto _ : state) {
        const StepTimes times = timeStepAndFrame([&] { shown.editor().fillGrid(); });
        state.SetIterationTime(times.frame.value / 1000);
        steps.push_back(times.step);
        frames.push_back(times.frame);
    }
    reportUnder(state, "PopulateGrid, 13 x 1000 questions", steps, FrameMs, {}, "ms", "step_");
    reportUnder(state, "PopulateGrid, 13 x 1000 questions + frame drawn", frames, FrameMs, {}, "ms",
                "frame_");
}

// Takes the added question back. Shrinking frees what the growth took, so
// each run pays for the growth anew.
void undoAdd(TestBank &bank, int32_t questionMax, int32_t lastQuestion, int level)
{
    bank.limits[SubjectEdited].lastQuestion[level] = lastQuestion;
    resizeQuestionSlots(bank, questionMax);
}

// Adding a question at the end of a full level grows every subject by a slot.
// A subject whose questions nobody has asked for since loading grows without
// being decoded; one that was decoded gives each level another slot.
// Both cases are measured: the bank as loaded with only the edited subject
// decoded, as after opening the Tests screen, and every subject decoded, as
// after an adult has gone through all fifty in one session.
void addQuestionGrowingAllSubjects(benchmark::State &state, bool decodeAll)
{
    BenchData &data = BenchData::instance();
    Session &session = data.session();
    TestBank &bank = session.bank;
    if (!loadTests(bank, data.paths().testsPath).ok()) {
        state.SkipWithError("the Tests file did not load");
        return;
    }
    if (decodeAll) {
        for (const SubjectQuestions &subject : bank.questionBank)
            benchmark::DoNotOptimize(subject.items());
    }
    ShownEditor shown(session);
    constexpr int level = LevelCount - 1;
    const int32_t questionMax = bank.questionMax;
    const int32_t lastQuestion = bank.limits[SubjectEdited].lastQuestion[level];
    if (lastQuestion != questionMax) {
        state.SkipWithError("the level is not full");
        return;
    }
    std::vector<Sample> steps;
    std::vector<Sample> frames;
    for (auto _ : state) {
        // The last row belongs to the last level: the new question goes there.
        shown.editor().selectRow(shown.rows() - 1);
        QCoreApplication::processEvents();
        const StepTimes times = timeStepAndFrame([&] { shown.editor().addQuestion(); });
        state.SetIterationTime(times.frame.value / 1000);
        steps.push_back(times.step);
        frames.push_back(times.frame);
        if (bank.questionMax != questionMax + 1)
            state.SkipWithError("adding did not grow the slot bound");
        undoAdd(bank, questionMax, lastQuestion, level);
        shown.editor().fillGrid();
    }
    const std::string name = std::string("Add question to a full level (grows 50 subjects), ") +
                             (decodeAll ? "every subject decoded" : "bank as loaded");
    const std::string prefix = decodeAll ? "decoded_" : "";
    reportUnder(state, name, steps, AddQuestionMs, {}, "ms", prefix + "step_");
    reportUnder(state, name + " + frame drawn", frames, AddQuestionMs, {}, "ms", prefix + "frame_");
}

void BM_AddQuestionToLoadedBank(benchmark::State &state)
{
    addQuestionGrowingAllSubjects(state, false);
}

void BM_AddQuestionWithEverySubjectDecoded(benchmark::State &state)
{
    addQuestionGrowingAllSubjects(state, true);
}

} // namespace

BENCHMARK(BM_PopulateGrid)->UseManualTime()->Iterations(41)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_AddQuestionToLoadedBank)
    ->UseManualTime()
    ->Iterations(9)
    ->Unit(benchmark::kMillisecond);
BENCHMARK(BM_AddQuestionWithEverySubjectDecoded)
    ->UseManualTime()
    ->Iterations(9)
    ->Unit(benchmark::kMillisecond);
