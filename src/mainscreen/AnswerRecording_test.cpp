// What the main screen records in the answer history: every answer of a test
// exactly as shown, with its time, for both kinds of subject; practice rounds
// marked as practice; and a damaged or unusable history told once while the
// tests go on.
#include "MainScreenFixture_test.h"

#include "core/History.h"
#include "core/Sqlite.h"
#include "testsupport/HistoryRows.h"

#include <algorithm>
#include <fstream>

namespace {

constexpr int Geography = 2;

// "3 x _ = 12", as the history's CSV writes a problem.
std::string problemText(const QLineEdit &n1, const QString &sign, const QLineEdit &n2,
                        const QLineEdit &answer)
{
    const auto shown = [](const QLineEdit &box) {
        return box.text().isEmpty() ? std::string("_") : box.text().toStdString();
    };
    const std::string op = sign == QString(QChar(0x2212)) ? "-" : sign.toStdString();
    return shown(n1) + " " + op + " " + shown(n2) + " = " + shown(answer);
}

} // namespace

class AnswerRecordingTest : public MainScreenTest {
protected:
    std::string problemOnScreen() const
    {
        return problemText(*box("txtNum1"), text("lblOp"), *box("txtNum2"), *box("txtAnswer"));
    }
    std::vector<CsvRow> rows() { return historyRows(*session.history); }
};

TEST_F(AnswerRecordingTest, ATimedTestRecordsEveryAnswerAsShownWithItsTime)
{
    startUp();
    ASSERT_TRUE(session.history && session.history->isOn());
    chooseLevel(5); // every operation, the blank moving from box to box
    screen->startTest();
    const std::vector<bool> rights = {true, false, true};
    std::vector<CsvRow> expected;
    for (std::size_t i = 0; i < rights.size(); ++i) {
        const std::string question = problemOnScreen();
        const std::string right = std::to_string(rightEntry());
        const std::string typed = std::to_string(rightEntry() + (rights[i] ? 0 : 1));
        clock.advance(1200 + 1000 * static_cast<int>(i)); // 1.2 s, 2.2 s, 3.2 s
        typeAnswer(rights[i]);
        expected.push_back({"Ann", "2026-11-25T10:15:00", "Arithmetic", "5", question, typed, right,
                            rights[i] ? "yes" : "no", std::to_string(1 + i) + ".2", "no"});
    }
    clock.advance(900); // the question on the screen at Stop has no answer
    screen->stopTest();
    EXPECT_EQ(rows(), expected);

    const std::vector<TestSummary> tests = session.history->queries().tests(0, 0, 5);
    ASSERT_EQ(tests.size(), 1u);
    EXPECT_EQ(std::make_tuple(tests[0].score, tests[0].rights, tests[0].wrongs, tests[0].seconds,
                              tests[0].ending, tests[0].practice),
              std::make_tuple(1, 2, 1, session.bank.limits[0].seconds, TestEnding::Stopped, false));

    // A multiple-choice test the next day, run to its end: the question as the
    // bank holds it, the answer chosen and the right one, as their texts.
    clock.setLocalTime({2026, 11, 26, 9, 30, 0});
    combo("cmbSubject")->setCurrentIndex(Geography);
    chooseLevel(2);
    screen->startTest();
    const std::string asked = shownText(*label("lblQuestion_Multi")).toStdString();
    std::vector<std::string> shownChoices;
    for (int index = 0; index < 4; ++index)
        shownChoices.push_back(shownText(*answerButton(index)).toStdString());
    clock.advance(4000);
    choose(false);
    const std::string rightAnswer = text("lblLastQuestion_Multi1").toStdString();
    // choose(false) takes the first wrong answer in the order shown.
    const std::string chosen =
        *std::find_if(shownChoices.begin(), shownChoices.end(),
                      [&](const std::string &choice) { return choice != rightAnswer; });
    tick(session.bank.limits[Geography].seconds);

    const std::vector<CsvRow> all = rows();
    ASSERT_EQ(all.size(), 4u);
    ASSERT_EQ(asked.back(), '?');
    EXPECT_EQ(all.back(),
              (CsvRow{"Ann", "2026-11-26T09:30:00", "Geography", "2",
                      asked.substr(0, asked.size() - 1), chosen, rightAnswer, "no", "4.0", "no"}));
    const std::vector<TestSummary> geography = session.history->queries().tests(0, Geography, 2);
    ASSERT_EQ(geography.size(), 1u);
    EXPECT_EQ(std::make_tuple(geography[0].score, geography[0].ending),
              std::make_tuple(-1, TestEnding::RanOut));
    EXPECT_TRUE(prompt.shown().empty());
}

TEST_F(AnswerRecordingTest, PracticeRoundsAreRecordedAsPracticeAndCountInNoScore)
{
    startUp();
    chooseLevel(1);
    screen->startTest();
    const std::string missed = problemOnScreen();
    typeAnswer(false);
    typeAnswer(true);
    screen->stopTest();
    button("cmdReview")->click();

    clock.advance(60'000);
    button("cmdPractise")->click();
    ASSERT_EQ(problemOnScreen(), missed);
    clock.advance(2500);
    typeAnswer(true); // the round is over: its one question answered right

    const std::vector<CsvRow> all = rows();
    ASSERT_EQ(all.size(), 3u);
    EXPECT_EQ(historyColumn(all, "Practice"), (std::vector<std::string>{"no", "no", "yes"}));
    EXPECT_EQ(all[2][4], missed);
    EXPECT_EQ(all[2][7], "yes");
    EXPECT_EQ(all[2][8], "2.5");
    const std::vector<TestSummary> tests = session.history->queries().tests(0, 0, 1);
    ASSERT_EQ(tests.size(), 2u);
    EXPECT_FALSE(tests[0].practice);
    EXPECT_TRUE(tests[1].practice);
    EXPECT_EQ(tests[1].ending, TestEnding::RanOut) << "finished, not stopped";
    // The latest scores the fluency views read leave practice out.
    const std::vector<SubjectScores> scores = session.history->queries().recentScores(0);
    ASSERT_EQ(scores.size(), 1u);
    EXPECT_EQ(scores[0].scores, std::vector<int>{0});

    // A round stopped part-way is recorded as stopped.
    button("cmdPractise")->click();
    button("cmdStopPractice")->click();
    const std::vector<TestSummary> after = session.history->queries().tests(0, 0, 1);
    ASSERT_EQ(after.size(), 3u);
    EXPECT_EQ(std::make_tuple(after[2].practice, after[2].ending, after[2].rights),
              std::make_tuple(true, TestEnding::Stopped, 0));
}

TEST_F(AnswerRecordingTest, ADamagedHistoryIsToldOnceAndANewOneRecordsTheTests)
{
    std::ofstream(dir.path() / "Tavrino_History.db", std::ios::binary) << "not a database";
    startUp();
    ASSERT_EQ(prompt.shown().size(), 1u);
    const QString told = prompt.shown()[0].text;
    EXPECT_TRUE(told.contains("is damaged") && told.contains("Tavrino_History.damaged.db")) << told;
    EXPECT_TRUE(std::filesystem::exists(dir.path() / "Tavrino_History.damaged.db"));

    screen->startTest();
    typeAnswer(true);
    screen->stopTest();
    EXPECT_EQ(rows().size(), 1u);
    EXPECT_EQ(scoresOnDisk(0, 0), "1|1");
    screen->openStudentsScreen();
    EXPECT_EQ(prompt.shown().size(), 1u) << "told once";
}

TEST_F(AnswerRecordingTest, AHistoryThatCannotBeUsedIsToldOnceAndTestsGoOnWithTheirScores)
{
    // A history written by a newer Tavrino is left alone: nothing is recorded.
    {
        const History made(dir.path(), clock);
    }
    SqliteDatabase(dir.path() / "Tavrino_History.db", SqliteDatabase::Access::ReadWrite)
        .execute("PRAGMA user_version = 99");
    startUp();
    ASSERT_EQ(prompt.shown().size(), 1u);
    EXPECT_TRUE(prompt.shown()[0].text.contains("newer version")) << prompt.shown()[0].text;
    screen->startTest();
    typeAnswer(true);
    typeAnswer(true);
    screen->stopTest();
    EXPECT_EQ(scoresOnDisk(0, 0), "2|2");
    EXPECT_EQ(prompt.shown().size(), 1u);
}

TEST_F(AnswerRecordingTest, PractisingWeakFactsAsksTheMissedFactFirstAndRecordsItAsPractice)
{
    startUp();
    chooseLevel(1);
    screen->startTest();
    typeAnswer(false);
    typeAnswer(false); // each fact wrong in its only answer: not yet known
    screen->stopTest();
    button("cmdReview")->click();
    ASSERT_TRUE(shown("cmdPractiseWeak"));
    const std::vector<TestSummary> before = session.history->queries().tests(0, 0, 1);
    const QString scores = scoresOnDisk(0, 1);

    button("cmdPractiseWeak")->click();
    ASSERT_TRUE(shown("fraPractice"));
    const std::string first = problemOnScreen();
    // The facts the test missed come first; which of the two is the weaker is a tie.
    const std::vector<CsvRow> answered = rows();
    EXPECT_TRUE(first == answered[0][4] || first == answered[1][4]) << first;
    typeAnswer(false); // wrong: it comes back later in the round
    typeAnswer(true);
    typeAnswer(true);
    EXPECT_EQ(problemOnScreen(), first);
    button("cmdStopPractice")->click();

    const std::vector<TestSummary> after = session.history->queries().tests(0, 0, 1);
    ASSERT_EQ(after.size(), before.size() + 1);
    EXPECT_TRUE(after.back().practice);
    EXPECT_EQ(after.back().wrongs, 1);
    EXPECT_EQ(after.back().rights, 2);
    EXPECT_EQ(scoresOnDisk(0, 1), scores);
}
