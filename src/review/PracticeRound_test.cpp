#include "PracticeRound.h"
#include "ReviewLines.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

ArithmeticProblem sum(int number1, int number2, MathBox blank = MathBox::Answer)
{
    ArithmeticProblem p;
    p.number1 = number1;
    p.number2 = number2;
    p.answer = number1 + number2;
    p.switchBlanks = true;
    p.blank = blank;
    return p;
}

// A record of sums, each answered right or wrong as given.
TestRecord sums(const std::vector<std::pair<ArithmeticProblem, bool>> &answers)
{
    TestRecord record;
    record.start(ArithmeticSubject);
    for (const auto &[problem, right] : answers) {
        record.questionShown(problem);
        record.questionAnswered({"0", 0, right});
    }
    return record;
}

std::string shown(const PracticeRound &round)
{
    return problemText(std::get<ArithmeticProblem>(round.current()));
}

} // namespace

TEST(PracticeRound, AWrongAnswerBringsTheQuestionBackTwoLaterUntilItIsRight)
{
    const ArithmeticProblem a = sum(1, 1), b = sum(2, 2), c = sum(3, 3), d = sum(4, 4);
    PracticeRound round(sums({{a, false}, {b, false}, {c, false}, {d, false}}));
    EXPECT_EQ(round.questionCount(), 4);

    // The child's answers, in turn, to whatever the round shows.
    const std::vector<bool> answers = {false, true, true, false, false, true, true};
    std::vector<std::string> asked;
    for (const bool right : answers) {
        ASSERT_FALSE(round.isOver());
        asked.push_back(shown(round));
        round.answer(right);
    }
    EXPECT_TRUE(round.isOver());
    EXPECT_EQ(asked, (std::vector<std::string>{"1 + 1 = 2", "2 + 2 = 4", "3 + 3 = 6", "1 + 1 = 2",
                                               "4 + 4 = 8", "1 + 1 = 2", "4 + 4 = 8"}))
        << "1 + 1 comes back after two others; with fewer left, after those there are";
    EXPECT_EQ(round.praise(), "Well done! You got all 4 right in the end.");
}

TEST(PracticeRound, EachMissedQuestionIsPractisedOnceAsItWasFirstShown)
{
    // 2 + 2 missed twice, once right; 5 + 5 right; the last one left unanswered.
    TestRecord record = sums({{sum(2, 2), false},
                              {sum(5, 5), true},
                              {sum(2, 2, MathBox::Number1), false},
                              {sum(2, 2), false},
                              {sum(2, 2), true}});
    record.questionShown(sum(7, 7));
    PracticeRound round(record);
    ASSERT_EQ(round.questionCount(), 2)
        << "the same problem with another blank is another question";
    EXPECT_EQ(std::get<ArithmeticProblem>(round.current()).blank, MathBox::Answer);
    round.answer(true);
    EXPECT_EQ(std::get<ArithmeticProblem>(round.current()).blank, MathBox::Number1);
    EXPECT_EQ(round.progressText(), "1 question to go");
    round.answer(true);
    EXPECT_TRUE(round.isOver());
    EXPECT_EQ(round.praise(), "Well done! You got both right the first time.");

    // A multiple-choice question comes back with its answers in the order the
    // child first missed it in, though the test showed it again in another.
    MultipleChoiceProblem first;
    first.level = 3;
    first.question = 5;
    first.choices = {"Nile", "Congo", "Niger", "Zambezi"};
    MultipleChoiceProblem again = first;
    again.choices = {"Congo", "Zambezi", "Nile", "Niger"};
    MultipleChoiceProblem other = first;
    other.question = 6;
    TestRecord choices;
    choices.start(2);
    for (const MultipleChoiceProblem &q : {first, other, again}) {
        choices.questionShown(q);
        choices.questionAnswered({"", 1, false});
    }
    PracticeRound choiceRound(choices);
    EXPECT_EQ(choiceRound.questionCount(), 2);
    EXPECT_EQ(std::get<MultipleChoiceProblem>(choiceRound.current()).choices, first.choices);
    choiceRound.answer(false);
    choiceRound.answer(true);
    EXPECT_EQ(std::get<MultipleChoiceProblem>(choiceRound.current()).choices, first.choices);
    choiceRound.answer(true);
    EXPECT_TRUE(choiceRound.isOver());

    // Nothing missed: nothing to practise.
    EXPECT_TRUE(PracticeRound(sums({{sum(1, 2), true}})).isOver());
    PracticeRound one(sums({{sum(1, 2), false}}));
    EXPECT_EQ(one.progressText(), "1 question to go");
    one.answer(false);
    EXPECT_EQ(shown(one), "1 + 2 = 3") << "the only question left comes back at once";
    one.answer(true);
    EXPECT_EQ(one.praise(), "Well done! You got it right in the end.");
}
