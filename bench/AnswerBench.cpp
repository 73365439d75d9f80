// One answer on the main screen during a test: the answer is judged, counted
// and shown, and the next question is drawn and put on the widgets.
#include "BenchData.h"
#include "Figures.h"
#include "ScreenTiming.h"
#include "core/Students.h"
#include "mainscreen/MainScreen.h"
#include "quiz/Random.h"

#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTimer>

#include <benchmark/benchmark.h>

#include <string>
#include <vector>

namespace {

constexpr double AnswerMs = 1;
constexpr double FrameMs = 16;
// Level 2 asks all four operations with the blank moving between the boxes.
constexpr int ArithmeticLevel = 2;
// A built-in subject that also draws from the neighbouring levels.
constexpr int MultipleChoiceSubject = SpellingSubject;
constexpr int MultipleChoiceLevel = 6;

// The main screen after start-up, with a test running in the given subject and
// level. The Students screen is replaced by what its close does.
class RunningTest {
public:
    RunningTest(Session &session, int subject, int level)
        : m_session(session), m_screen(session, m_random)
    {
        m_screen.setOtherScreens({[this, level] { return chooseStudent(level); }, [] {}, [] {}});
        m_screen.show();
        settleWindows();
        m_screen.firstActivation();
        child<QComboBox>("cmbSubject")->setCurrentIndex(subject);
        child<QRadioButton>(("optLevel" + std::to_string(level)).c_str())->click();
        child<QPushButton>("cmdStartTest")->click();
        // The clock would end the test part-way through the runs.
        child<QTimer>("Timer1")->stop();
        settleWindows();
    }
    ~RunningTest()
    {
        m_screen.stopTest();
        m_screen.hide();
    }

    template <typename W> W *child(const char *name)
    {
        return m_screen.findChild<W *>(QLatin1String(name));
    }
    MainScreen &screen() { return m_screen; }

private:
    bool chooseStudent(int level)
    {
        StudentRecords &records = m_session.records;
        records.currentStudent = 0;
        records.currentStudentName = trimName(records.students[0].name);
        records.currentLevel = level;
        return true;
    }

    Session &m_session;
    RandomSource m_random;
    MainScreen m_screen;
};

void BM_AnswerArithmetic(benchmark::State &state)
{
    RunningTest test(BenchData::instance().session(), ArithmeticSubject, ArithmeticLevel);
    QLineEdit *number1 = test.child<QLineEdit>("txtNum1");
    QLineEdit *number2 = test.child<QLineEdit>("txtNum2");
    QLineEdit *answer = test.child<QLineEdit>("txtAnswer");
    std::vector<Sample> steps;
    std::vector<Sample> frames;
    for (auto _ : state) {
        // The child types into the box left empty and presses Enter.
        QLineEdit *blank = number1->text().isEmpty()   ? number1
                           : number2->text().isEmpty() ? number2
                                                       : answer;
        blank->setText(QStringLiteral("7"));
        const StepTimes times =
            timeStepAndFrame([&] { test.screen().onAnswerBoxKey(*blank, Qt::Key_Return); });
        state.SetIterationTime(times.step.value / 1000);
        steps.push_back(times.step);
        frames.push_back(times.frame);
    }
    reportUnder(state, "One answer, Arithmetic", steps, AnswerMs, {}, "ms", "answer_");
    reportUnder(state, "One answer, Arithmetic + frame drawn", frames, FrameMs, {}, "ms", "frame_");
}

void BM_AnswerMultipleChoice(benchmark::State &state)
{
    RunningTest test(BenchData::instance().session(), MultipleChoiceSubject, MultipleChoiceLevel);
    std::vector<QRadioButton *> options;
    for (int index = 0; index < 4; ++index)
        options.push_back(test.child<QRadioButton>(("optAnswer" + std::to_string(index)).c_str()));
    std::vector<Sample> steps;
    std::vector<Sample> frames;
    int choice = 0;
    for (auto _ : state) {
        choice = (choice + 1) % 4;
        options[static_cast<std::size_t>(choice)]->setChecked(true);
        const StepTimes times =
            timeStepAndFrame([&] { test.screen().onAnswerKey(Qt::Key_Return); });
        state.SetIterationTime(times.step.value / 1000);
        steps.push_back(times.step);
        frames.push_back(times.frame);
    }
    reportUnder(state, "One answer, multiple choice", steps, AnswerMs, {}, "ms", "answer_");
    reportUnder(state, "One answer, multiple choice + frame drawn", frames, FrameMs, {}, "ms",
                "frame_");
}

} // namespace

BENCHMARK(BM_AnswerArithmetic)->UseManualTime()->Iterations(301)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_AnswerMultipleChoice)->UseManualTime()->Iterations(301)->Unit(benchmark::kMicrosecond);
