// The Students screen and the answer history: the history following students
// through renames, adds and deletes of others, a delete erasing only that
// student's history once the roster is saved, a Students file changed outside
// the program, and Progress with the history that matches no student.
#include "StudentsScreenFixture_test.h"

#include "ProgressDialog.h"
#include "UnmatchedHistoryDialog.h"
#include "core/History.h"
#include "testsupport/HistoryRows.h"
#include "ui/ClassHistory.h"

#include <QAbstractItemModel>
#include <QChartView>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QLineSeries>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QTableView>

#include <algorithm>
#include <map>

namespace {

// How many answers each student has in the history, by the names the CSV gives.
std::map<std::string, int> answersByStudent(History &history)
{
    std::map<std::string, int> counts;
    for (const std::string &name : historyColumn(historyRows(history), "Student"))
        ++counts[name];
    return counts;
}

// The answers in the tests of the student at position in Arithmetic at level 1.
int answersOf(History &history, int student)
{
    int answers = 0;
    for (const TestSummary &test : history.queries().tests(student, 0, 1))
        answers += test.rights + test.wrongs;
    return answers;
}

} // namespace

class StudentsHistoryTest : public StudentsScreenTest {
protected:
    // Opens the history as start-up does and the screen on the roster.
    std::unique_ptr<StudentsScreen> openWithHistory()
    {
        openHistory(session);
        return openScreen();
    }
    History &history() { return *session.history; }
    // A test of `answers` right answers in Arithmetic at level 1.
    void recordTest(int student, int answers)
    {
        recordArithmeticTest(history(), student, 1, std::vector<bool>(answers, true));
    }
};

TEST_F(StudentsHistoryTest, HistoryFollowsRenamesAndOthersAddedOrDeletedAndADeleteErasesOnSave)
{
    writeRoster({"Ann", "Ben", "Cat"});
    auto screen = openWithHistory();
    for (int student = 0; student < 3; ++student)
        recordTest(student, student + 1);

    auto *list = child<QListWidget>(*screen, "List1");
    list->setCurrentRow(1);
    child<QLineEdit>(*screen, "txtStudent")->setText(QStringLiteral("Benjamin"));
    child<QPushButton>(*screen, "cmdAddStudent")->click();
    child<QLineEdit>(*screen, "txtStudent")->setText(QStringLiteral("Dan"));
    recordTest(3, 4);

    list->setCurrentRow(0);
    prompt.answerConfirm(true);
    child<QPushButton>(*screen, "cmdDelete")->click();
    ASSERT_EQ(lines(*screen), (std::vector<std::string>{"Benjamin", "Cat", "Dan"}));
    // Until the roster is saved Ann's answers are kept, and each student's
    // history is found at the new place.
    EXPECT_EQ(historyRows(history()).size(), 10u);
    EXPECT_EQ(
        std::make_tuple(answersOf(history(), 0), answersOf(history(), 1), answersOf(history(), 2)),
        std::make_tuple(2, 3, 4));

    // Resets clear the totals only.
    for (const char *reset : {"cmdResetTotals_Student", "cmdResetTotals_All"}) {
        prompt.answerConfirm(true);
        child<QPushButton>(*screen, reset)->click();
    }
    EXPECT_EQ(historyRows(history()).size(), 10u);

    child<QPushButton>(*screen, "cmdClose")->click();
    EXPECT_EQ(answersByStudent(history()),
              (std::map<std::string, int>{{"Benjamin", 2}, {"Cat", 3}, {"Dan", 4}}));
    EXPECT_TRUE(history().roster().unmatchedStudents().empty()) << "Ann's history is gone";

    // Opened again, the saved roster is the history's: a new test goes to the right place.
    screen = openScreen();
    recordTest(1, 5);
    EXPECT_EQ(answersByStudent(history())["Cat"], 8);
}

TEST_F(StudentsHistoryTest, AStudentsFileChangedOutsideIsMatchedByNameAndTheRestCanBeGivenOrDeleted)
{
    writeRoster({"Ann", "Ben", "Cat", "Dot"});
    auto screen = openWithHistory();
    for (int student = 0; student < 4; ++student)
        recordTest(student, student + 1);
    screen->closeScreen();
    screen.reset();

    // A file from another computer: Cat written otherwise and first, Ann
    // second, Ben and Dot gone and a new student in their place.
    writeRoster({"CAT", "Ann", "Zed"});
    screen = openScreen();
    EXPECT_EQ(
        std::make_tuple(answersOf(history(), 0), answersOf(history(), 1), answersOf(history(), 2)),
        std::make_tuple(3, 1, 0));

    // Progress of Zed at Arithmetic level 1 offers the history not matched.
    child<QComboBox>(*screen, "cmbSubject")->setCurrentIndex(0);
    child<QListWidget>(*screen, "List1")->setCurrentRow(2);
    child<QRadioButton>(*screen, "optLevel1")->click();
    std::vector<std::string> listed;
    std::size_t shownInProgress = 0;
    screen->setProgressShower([&](ProgressDialog &progress) {
        EXPECT_TRUE(progress.shownTests().empty());
        progress.setNotMatchedShower([&](UnmatchedHistoryDialog &dialog) {
            for (const UnmatchedStudent &each : dialog.listed())
                listed.push_back(each.name + ":" + std::to_string(each.tests));
            auto *lines = dialog.findChild<QListWidget *>(QStringLiteral("lstNotMatched"));
            auto *students = dialog.findChild<QComboBox *>(QStringLiteral("cmbGiveTo"));
            ASSERT_TRUE(lines && students);
            // Ben's history to Zed; a cancelled delete keeps Dot's, a confirmed one erases it.
            lines->setCurrentRow(0);
            students->setCurrentIndex(2);
            prompt.answerConfirm(true);
            dialog.giveToStudent();
            ASSERT_EQ(dialog.listed().size(), 1u);
            lines->setCurrentRow(0);
            prompt.answerConfirm(false);
            dialog.deleteHistory();
            EXPECT_EQ(dialog.listed().size(), 1u);
            prompt.answerConfirm(true);
            dialog.deleteHistory();
            EXPECT_TRUE(dialog.listed().empty());
        });
        progress.findChild<QPushButton *>(QStringLiteral("cmdNotMatched"))->click();
        // Back in Progress, Zed's tests are shown: Ben's one.
        shownInProgress = progress.shownTests().size();
    });
    child<QPushButton>(*screen, "cmdProgress")->click();
    EXPECT_EQ(listed, (std::vector<std::string>{"Ben:1", "Dot:1"}));
    EXPECT_EQ(shownInProgress, 1u);
    EXPECT_EQ(answersByStudent(history()),
              (std::map<std::string, int>{{"Ann", 1}, {"CAT", 3}, {"Zed", 2}}));
}

TEST_F(StudentsHistoryTest, ProgressShowsTheScoresOfTheChosenSpanWithTheHighAndSaysWhenThereAreNone)
{
    writeRoster({"Ann", "Ben"});
    auto screen = openWithHistory();
    // Ann at Arithmetic level 1: one test over a year ago, one in the last year,
    // two in the last month (one of them a practice round, which has no score),
    // and tests of Ben's and at another level that Progress leaves out.
    const auto testOn = [&](const CivilTime &day, int student, int level, int rights, int wrongs,
                            bool practice = false) {
        clock.setLocalTime(day);
        HistoryRecorder &recorder = history().recorder();
        recorder.beginTest({student, 0, level, 60, practice});
        for (int i = 0; i < rights + wrongs; ++i)
            recorder.recordArithmetic({2, 3, 5, 0, 2, i < rights ? "5" : "6", i < rights});
        recorder.endTest({rights - wrongs, rights, wrongs, false});
    };
    testOn({2025, 6, 2, 9, 0, 0}, 0, 1, 4, 0);
    testOn({2026, 3, 10, 9, 0, 0}, 0, 1, 6, 1);
    testOn({2026, 11, 2, 9, 30, 0}, 0, 1, 9, 2);
    testOn({2026, 11, 3, 9, 30, 0}, 0, 1, 3, 0, true);
    testOn({2026, 11, 4, 9, 30, 0}, 0, 2, 12, 0);
    testOn({2026, 11, 4, 9, 30, 0}, 1, 1, 12, 0);
    clock.setLocalTime({2026, 11, 25, 14, 0, 0});

    child<QComboBox>(*screen, "cmbSubject")->setCurrentIndex(0);
    child<QListWidget>(*screen, "List1")->setCurrentRow(0);
    child<QRadioButton>(*screen, "optLevel1")->click();
    const int high = session.records.students[0].results[0].high[1];

    std::map<int, std::vector<int>> scoresBySpan;
    std::vector<std::string> dates;
    std::vector<qreal> highLine;
    qsizetype scorePoints = 0;
    screen->setProgressShower([&](ProgressDialog &progress) {
        auto *spans = progress.findChild<QComboBox *>(QStringLiteral("cmbSpan"));
        EXPECT_EQ(progress.high(), high);
        for (int span = 0; span < spans->count(); ++span) {
            spans->setCurrentIndex(span);
            for (const TestSummary &test : progress.shownTests())
                scoresBySpan[span].push_back(test.score);
        }
        // Last year: the table and the chart hold the same tests.
        spans->setCurrentIndex(1);
        const QAbstractItemModel *table =
            progress.findChild<QTableView *>(QStringLiteral("grdProgress"))->model();
        for (int row = 0; row < table->rowCount(); ++row)
            dates.push_back(table->index(row, 0).data().toString().toStdString() + " " +
                            table->index(row, 1).data().toString().toStdString());
        const QChart *chart =
            progress.findChild<QChartView *>(QStringLiteral("chtProgress"))->chart();
        for (QAbstractSeries *series : chart->series()) {
            const auto *line = qobject_cast<QLineSeries *>(series);
            ASSERT_TRUE(line);
            if (line->name() == QStringLiteral("Score"))
                scorePoints = line->count();
            else
                for (const QPointF &point : line->points())
                    highLine.push_back(point.y());
        }
    });
    child<QPushButton>(*screen, "cmdProgress")->click();
    EXPECT_EQ(scoresBySpan,
              (std::map<int, std::vector<int>>{{0, {7}}, {1, {5, 7}}, {2, {4, 5, 7}}}));
    EXPECT_EQ(dates, (std::vector<std::string>{"10 Mar 2026, 09:00 5", "2 Nov 2026, 09:30 7"}));
    EXPECT_EQ(scorePoints, 2);
    EXPECT_EQ(highLine, (std::vector<qreal>{qreal(high), qreal(high)}));

    // Ben has no test in Arithmetic at level 3: a sentence instead of the figures.
    child<QListWidget>(*screen, "List1")->setCurrentRow(1);
    child<QRadioButton>(*screen, "optLevel3")->click();
    QString sentence;
    bool figuresShown = true;
    screen->setProgressShower([&](ProgressDialog &progress) {
        const auto *noTests = progress.findChild<QLabel *>(QStringLiteral("lblNoTests"));
        sentence = noTests->isHidden() ? QString() : noTests->text();
        figuresShown = progress.findChild<QChartView *>(QStringLiteral("chtProgress"))
                           ->parentWidget()
                           ->isVisibleTo(&progress);
    });
    child<QPushButton>(*screen, "cmdProgress")->click();
    EXPECT_EQ(sentence,
              QStringLiteral("Ben has taken no Arithmetic tests at Level 3 in the last year."));
    EXPECT_FALSE(figuresShown);
}
