#include "core/HistoryFixture_test.h"

#include <sys/wait.h>
#include <unistd.h>

namespace {

using HistoryRecording = HistoryTest;

constexpr int Multiply = 2;

std::vector<std::pair<bool, int>> rightAndMs(const ArithmeticFact &fact)
{
    std::vector<std::pair<bool, int>> answers;
    for (const FactAnswer &answer : fact.recent)
        answers.emplace_back(answer.right, answer.milliseconds);
    return answers;
}

} // namespace

TEST_F(HistoryRecording, AnArithmeticTestKeepsEachAnswerAsShownAndItsFacts)
{
    open();
    HistoryRecorder &recorder = history->recorder();
    recorder.beginTest({1, 0, 3, 60, false});
    // 7 x 8 with the blank in each box, then the numbers the other way round.
    const std::vector<ArithmeticAnswer> answers = {
        {7, 8, 56, Multiply, 2, "56", true},  {7, 8, 56, Multiply, 1, "9", false},
        {7, 8, 56, Multiply, 0, "07", true},  {8, 7, 56, Multiply, 2, "56", true},
        {7, 8, 56, Multiply, 2, "56", true},  {7, 8, 56, Multiply, 2, "56", true},
        {7, 8, 56, Multiply, 2, "-56", false}};
    for (std::size_t i = 0; i < answers.size(); ++i) {
        clock.advance(1000 + 250 * std::int64_t(i));
        recorder.recordArithmetic(answers[i]);
    }
    recorder.endTest({3, 5, 2, true});

    const std::vector<TestSummary> tests = history->queries().tests(1, 0, 3);
    ASSERT_EQ(tests.size(), 1u);
    EXPECT_EQ(isoLocalTime(tests[0].started), "2026-11-25T10:15:00");
    EXPECT_EQ(std::tie(tests[0].level, tests[0].seconds, tests[0].score, tests[0].rights,
                       tests[0].wrongs, tests[0].practice),
              std::make_tuple(3, 60, 3, 5, 2, false));
    EXPECT_EQ(tests[0].ending, TestEnding::Stopped);
    EXPECT_TRUE(history->queries().tests(0, 0, 3).empty());
    EXPECT_TRUE(history->queries().tests(1, 0, 4).empty());

    // 7 x 8 keeps its latest five answers, whatever the blank; 8 x 7 is a fact of its own.
    const std::vector<ArithmeticFact> facts = history->queries().facts(1);
    ASSERT_EQ(facts.size(), 2u);
    EXPECT_EQ(std::tie(facts[0].operation, facts[0].number1, facts[0].number2),
              std::make_tuple(Multiply, std::int64_t(7), std::int64_t(8)));
    EXPECT_EQ(rightAndMs(facts[0]),
              (std::vector<std::pair<bool, int>>{
                  {false, 2500}, {true, 2250}, {true, 2000}, {true, 1500}, {false, 1250}}));
    EXPECT_EQ(facts[0].recent[0].level, 3);
    EXPECT_EQ(facts[1].number1, 8);
    EXPECT_EQ(rightAndMs(facts[1]), (std::vector<std::pair<bool, int>>{{true, 1750}}));

    EXPECT_EQ(csvRows(), (std::vector<std::string>{
                             "Bob,2026-11-25T10:15:00,Arithmetic,3,7 x 8 = _,56,56,yes,1.0,no",
                             "Bob,2026-11-25T10:15:00,Arithmetic,3,7 x _ = 56,9,8,no,1.3,no",
                             "Bob,2026-11-25T10:15:00,Arithmetic,3,_ x 8 = 56,07,7,yes,1.5,no",
                             "Bob,2026-11-25T10:15:00,Arithmetic,3,8 x 7 = _,56,56,yes,1.8,no",
                             "Bob,2026-11-25T10:15:00,Arithmetic,3,7 x 8 = _,56,56,yes,2.0,no",
                             "Bob,2026-11-25T10:15:00,Arithmetic,3,7 x 8 = _,56,56,yes,2.3,no",
                             "Bob,2026-11-25T10:15:00,Arithmetic,3,7 x 8 = _,-56,56,no,2.5,no",
                         }));
}

TEST_F(HistoryRecording, AChoiceTestKeepsTheChoicesInTheOrderShown)
{
    open();
    HistoryRecorder &recorder = history->recorder();
    recorder.beginTest({0, 1, 0, 30, true});
    clock.advance(4000);
    recorder.recordChoice({"Spell it", {"cat", "kat", "cet", "catt"}, 0, 0});
    // The same question, its choices in another order; the wrong one chosen.
    clock.advance(3000);
    recorder.recordChoice({"Spell it", {"catt", "kat", "cat", "cet"}, 2, 1});
    clock.advance(2000);
    recorder.recordChoice({"Spell \"it\", quick", {"dog", "dgo", "dgo", "odg"}, 0, 2});
    recorder.endTest({-1, 1, 2, false});

    EXPECT_EQ(csvRows(), (std::vector<std::string>{
                             "Ann,2026-11-25T10:15:00,Spelling,K,Spell it,cat,cat,yes,4.0,yes",
                             "Ann,2026-11-25T10:15:00,Spelling,K,Spell it,kat,cat,no,3.0,yes",
                             "Ann,2026-11-25T10:15:00,Spelling,K,\"Spell \"\"it\"\", quick\","
                             "dgo,dog,no,2.0,yes",
                         }));
    // Both showings are one question, asked twice and missed once.
    const std::vector<MissedQuestion> missed =
        history->queries().missedQuestions(0, 1, std::nullopt, 10);
    ASSERT_EQ(missed.size(), 2u);
    EXPECT_EQ(
        std::tie(missed[0].question, missed[0].rightAnswer, missed[0].asked, missed[0].missed),
        std::make_tuple(std::string("Spell \"it\", quick"), std::string("dog"), 1, 1));
    EXPECT_EQ(std::tie(missed[1].question, missed[1].asked, missed[1].missed),
              std::make_tuple(std::string("Spell it"), 2, 1));
    EXPECT_TRUE(history->queries().missedQuestions(0, 1, 1, 10).empty());
    EXPECT_EQ(history->queries().classMissedQuestions(1, 0, 1).size(), 1u);
    EXPECT_TRUE(history->queries().facts(0).empty());
}

TEST_F(HistoryRecording, AProgramKilledMidTestLosesNoAnswerGiven)
{
    history.reset();
    const pid_t child = ::fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
        HistoryRecorder &recorder = open().recorder();
        recorder.beginTest({2, 0, 1, 30, false});
        recorder.recordArithmetic({2, 3, 5, 0, 2, "5", true});
        recorder.recordArithmetic({2, 4, 6, 0, 2, "7", false});
        recorder.recordArithmetic({2, 5, 7, 0, 2, "7", true});
        ::_exit(0); // no destructor runs, as when the program is killed
    }
    int status = 0;
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    ASSERT_TRUE(WIFEXITED(status));

    open();
    const std::vector<TestSummary> tests = history->queries().tests(2, 0, 1);
    ASSERT_EQ(tests.size(), 1u);
    EXPECT_EQ(tests[0].ending, TestEnding::Interrupted);
    EXPECT_EQ(std::tie(tests[0].score, tests[0].rights, tests[0].wrongs), std::make_tuple(1, 2, 1));
    EXPECT_EQ(csvRows().size(), 3u);
    // Nor does a test left running when the next one begins.
    history->recorder().beginTest({2, 0, 1, 30, false});
    history->recorder().recordArithmetic({1, 1, 2, 0, 2, "3", false});
    history->recorder().beginTest({2, 0, 1, 30, false});
    EXPECT_EQ(history->queries().tests(2, 0, 1).back().score, -1);
}

TEST_F(HistoryRecording, TestsOnTwoDaysAndTheLatestScores)
{
    open();
    clock.setLocalTime({2026, 11, 24, 9, 0, 0});
    takeTest(0, 0, 2, {true, true, false});
    clock.setLocalTime({2026, 11, 25, 14, 30, 0});
    takeTest(0, 0, 2, {true, true, true, true});
    takeTest(0, 0, 2, {false}, true);

    HistoryQueries &queries = history->queries();
    const std::vector<TestSummary> tests = queries.tests(0, 0, 2);
    ASSERT_EQ(tests.size(), 3u);
    EXPECT_EQ(isoLocalTime(tests[0].started), "2026-11-24T09:00:00");
    EXPECT_EQ(isoLocalTime(tests[1].started), "2026-11-25T14:30:00");
    EXPECT_EQ(std::tie(tests[0].score, tests[1].score, tests[2].practice),
              std::make_tuple(1, 4, true));
    const LocalSeconds day25 = toLocalSeconds({2026, 11, 25});
    EXPECT_EQ(queries.tests(0, 0, 2, {day25, std::nullopt}).size(), 2u);
    EXPECT_EQ(queries.tests(0, 0, 2, {std::nullopt, day25}).size(), 1u);

    // Scores of the latest ten tests per subject, oldest first, practice left out.
    for (int score = 1; score <= 10; ++score)
        takeTest(0, 3, 5, std::vector<bool>(std::size_t(score), true));
    const std::vector<SubjectScores> scores = queries.recentScores(0);
    ASSERT_EQ(scores.size(), 2u);
    EXPECT_EQ(scores[0].subject, 0);
    EXPECT_EQ(scores[0].scores, (std::vector<int>{1, 4}));
    EXPECT_EQ(scores[1].subject, 3);
    EXPECT_EQ(scores[1].scores, (std::vector<int>{1, 2, 3, 4, 5, 6, 7, 8, 9, 10}));
    const LocalSeconds lastStarted = clock.localMilliseconds() / 1000;
    takeTest(0, 3, 6, std::vector<bool>(11, true));
    EXPECT_EQ(queries.recentScores(0)[1].scores.front(), 2);
    EXPECT_EQ(queries.recentScores(0)[1].scores.back(), 11);
    EXPECT_EQ(queries.recentScores(0)[1].lastTest, lastStarted);
}
