#include "SpokenQuestion.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <string>
#include <vector>

namespace {

MultipleChoiceProblem choiceProblem(const std::string &label, const std::string &rightAnswer,
                                    const std::array<std::string, 4> &choices)
{
    MultipleChoiceProblem problem;
    problem.label = label;
    problem.rightAnswer = rightAnswer;
    problem.choices = choices;
    return problem;
}

} // namespace

TEST(SpokenQuestion, NumbersAreSaidInWords)
{
    const std::vector<std::pair<std::int64_t, std::string>> cases = {
        {0, "zero"},
        {7, "seven"},
        {13, "thirteen"},
        {20, "twenty"},
        {21, "twenty-one"},
        {99, "ninety-nine"},
        {100, "one hundred"},
        {105, "one hundred five"},
        {900, "nine hundred"},
        {1000, "one thousand"},
        {1012, "one thousand twelve"},
        {30'040, "thirty thousand forty"},
        {1'000'000, "one million"},
        {-7, "negative seven"},
        {-300, "negative three hundred"},
        {std::numeric_limits<std::int32_t>::max(),
         "two billion one hundred forty-seven million four hundred eighty-three thousand six "
         "hundred forty-seven"},
        {std::numeric_limits<std::int64_t>::min(),
         "negative nine quintillion two hundred twenty-three quadrillion three hundred "
         "seventy-two trillion thirty-six billion eight hundred fifty-four million seven "
         "hundred seventy-five thousand eight hundred eight"},
    };
    for (const auto &[number, words] : cases)
        EXPECT_EQ(numberInWords(number), words) << number;
}

TEST(SpokenQuestion, ArithmeticSaysTheBlankAsWhatForEveryOperationAndBox)
{
    struct Case {
        char symbol;
        std::int32_t number1, number2, answer;
        MathBox blank;
        const char *said;
    };
    const std::vector<Case> cases = {
        {'+', 7, 5, 12, MathBox::Number2, "Seven plus what equals twelve?"},
        {'+', 7, 5, 12, MathBox::Number1, "What plus five equals twelve?"},
        {'+', 7, 5, 12, MathBox::Answer, "Seven plus five equals what?"},
        {'-', 12, 5, 7, MathBox::Answer, "Twelve minus five equals what?"},
        {'-', 3, 10, -7, MathBox::Number1, "What minus ten equals negative seven?"},
        {'x', 30, 30, 900, MathBox::Number2, "Thirty times what equals nine hundred?"},
        {'x', 0, 4, 0, MathBox::Answer, "Zero times four equals what?"},
        {'/', 24, 6, 4, MathBox::Number1, "What divided by six equals four?"},
        {'/', 24, 6, 4, MathBox::Answer, "Twenty-four divided by six equals what?"},
    };
    for (const Case &c : cases) {
        ArithmeticProblem problem;
        problem.operation = operationIndex(c.symbol);
        problem.symbol = c.symbol;
        problem.number1 = c.number1;
        problem.number2 = c.number2;
        problem.answer = c.answer;
        problem.blank = c.blank;
        EXPECT_EQ(spokenArithmetic(problem), c.said);
    }
}

TEST(SpokenQuestion, SpellingSaysTheClueThenTheWordAndNeverTheOtherSpellings)
{
    const std::array<std::string, 4> people = {"peple", "people", "poeple", "pepole"};
    EXPECT_EQ(spokenSpelling(choiceProblem("", "people", people)), "Spell: people.");

    const std::array<std::string, 4> cat = {"kat", "cet", "catt", "cat"};
    EXPECT_EQ(spokenSpelling(choiceProblem("An animal that meows:", "cat", cat)),
              "An animal that meows. Spell: cat.");
    // A clue that runs into its word ends where the word would go.
    EXPECT_EQ(spokenSpelling(choiceProblem("Not hot, but:", "cool", {})),
              "Not hot, but. Spell: cool.");
    // A clue typed as a question keeps its question mark; spaces typed around
    // the texts are not read.
    EXPECT_EQ(spokenSpelling(choiceProblem("  What does a cat say?  :", " meow ", {})),
              "What does a cat say? Spell: meow.");
    // An empty slot has nothing to spell.
    EXPECT_EQ(spokenSpelling(choiceProblem("", "", {})), "");
}

TEST(SpokenQuestion, MultipleChoiceSaysTheQuestionThenTheAnswersInButtonOrder)
{
    EXPECT_EQ(spokenChoices(choiceProblem("Which is the largest ocean?", "Pacific",
                                          {"Atlantic", "Pacific", "Arctic", "Indian"})),
              "Which is the largest ocean? Atlantic. Pacific. Arctic. Or Indian.");
    // Answers that end a sentence of their own are not given a second stop.
    EXPECT_EQ(spokenChoices(choiceProblem("What is the capital of the USA?", "Washington D.C.",
                                          {"Washington D.C.", "New York", "Boston!", "Why?"})),
              "What is the capital of the USA? Washington D.C. New York. Boston! Or Why?");
    // A question without text and blank answers leave only what can be said.
    EXPECT_EQ(spokenChoices(choiceProblem("?", "1492", {"1492", "", "1776", " "})),
              "1492. Or 1776.");
    EXPECT_EQ(spokenChoices(choiceProblem("Name a color?", "red", {"", "red", "", ""})),
              "Name a color? red.");
}
