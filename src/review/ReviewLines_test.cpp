#include "ReviewLines.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

const std::string Minus = "\xE2\x88\x92"; // the minus sign the main screen draws

ArithmeticProblem problem(char symbol, int number1, int number2, int answer,
                          MathBox blank = MathBox::Answer)
{
    ArithmeticProblem p;
    p.operation = operationIndex(symbol);
    p.symbol = symbol;
    p.number1 = number1;
    p.number2 = number2;
    p.answer = answer;
    p.switchBlanks = blank != MathBox::Answer;
    p.blank = blank;
    return p;
}

MultipleChoiceProblem question(const std::string &text, const std::string &right,
                               std::array<std::string, 4> choices)
{
    MultipleChoiceProblem q;
    q.text = text;
    q.label = text + "?";
    q.rightAnswer = right;
    q.choices = choices;
    for (int i = 0; i < 4; ++i)
        if (choices[static_cast<std::size_t>(i)] == right)
            q.answerPosition = i;
    return q;
}

GivenAnswer typed(const std::string &text, bool right)
{
    return {text, 0, right};
}

GivenAnswer chose(int button, bool right)
{
    return {"", button, right};
}

// The one line a record of a single question gives.
std::string lineFor(int subject, const AskedQuestion &asked,
                    const std::optional<GivenAnswer> &answer)
{
    TestRecord record;
    record.start(subject);
    record.questionShown(asked);
    if (answer)
        record.questionAnswered(*answer);
    const std::vector<ReviewLine> lines = reviewLines(record);
    return lines.size() == 1 ? lines[0].text : "(" + std::to_string(lines.size()) + " lines)";
}

} // namespace

TEST(ReviewLines, AnArithmeticLineGivesTheRightEquationAndWhatTheChildWrote)
{
    struct Case {
        ArithmeticProblem asked;
        std::optional<GivenAnswer> answer;
        std::string line;
    };
    const std::vector<Case> cases = {
        {problem('x', 7, 8, 56), typed("54", false), "7 x 8 = 56, you wrote 54"},
        {problem('x', 7, 8, 56), typed(" 54 ", false), "7 x 8 = 56, you wrote 54"},
        // Where a number was asked, the child's equation shows which one.
        {problem('x', 7, 8, 56, MathBox::Number1), typed("6", false),
         "7 x 8 = 56, you wrote 6 x 8 = 56"},
        {problem('-', 12, 5, 7, MathBox::Number2), typed("6", false),
         "12 " + Minus + " 5 = 7, you wrote 12 " + Minus + " 6 = 7"},
        {problem('/', 56, 8, 7), typed("abc", false), "56 / 8 = 7, you wrote abc"},
        // Right: the equation as the child made it, which the judge accepted.
        {problem('+', 3, 4, 7), typed("7", true), "3 + 4 = 7"},
        {problem('x', 0, 9, 0, MathBox::Number2), typed("5", true), "0 x 5 = 0"},
        {problem('+', 3, 4, 7, MathBox::Number1), std::nullopt, "3 + 4 = 7, not answered"},
    };
    for (const Case &c : cases)
        EXPECT_EQ(lineFor(ArithmeticSubject, c.asked, c.answer), c.line) << c.line;
}

TEST(ReviewLines, AMultipleChoiceLineIsWordedFromTheQuestionText)
{
    constexpr int Geography = 2;
    const MultipleChoiceProblem france =
        question("Capital of France", "Paris", {"Lyon", "Paris", "Nice", "Lille"});
    EXPECT_EQ(lineFor(Geography, france, chose(0, false)),
              "Capital of France: Paris, you chose Lyon");
    EXPECT_EQ(lineFor(Geography, france, chose(3, false)),
              "Capital of France: Paris, you chose Lille");
    EXPECT_EQ(lineFor(Geography, france, chose(1, true)), "Capital of France: Paris");
    EXPECT_EQ(lineFor(Geography, france, std::nullopt), "Capital of France: Paris, not answered");

    // A text typed with its own mark keeps it, and gets no colon after it.
    const MultipleChoiceProblem asked = question("Which is the largest ocean?", "Pacific",
                                                 {"Indian", "Arctic", "Pacific", "Atlantic"});
    EXPECT_EQ(lineFor(Geography, asked, chose(1, false)),
              "Which is the largest ocean? Pacific, you chose Arctic");

    // Without a text: Spelling asks for the word, any other subject for the answer.
    const MultipleChoiceProblem word =
        question("", "surprise", {"surpris", "suprise", "surprise", "surprice"});
    EXPECT_EQ(lineFor(SpellingSubject, word, chose(1, false)),
              "The correct spelling is surprise, you chose suprise");
    EXPECT_EQ(lineFor(SpellingSubject, word, chose(2, true)), "The correct spelling is surprise");
    EXPECT_EQ(lineFor(6, word, chose(0, false)),
              "The correct answer is surprise, you chose surpris");
    // A Spelling level with clues words it like any question.
    const MultipleChoiceProblem clue =
        question("An animal that meows", "cat", {"cet", "kat", "cat", "catt"});
    EXPECT_EQ(lineFor(SpellingSubject, clue, chose(1, false)),
              "An animal that meows: cat, you chose kat");
}

TEST(ReviewLines, MissedComeFirstThenRightThenTheUnansweredEachInTheOrderAsked)
{
    TestRecord record;
    record.start(ArithmeticSubject);
    const std::vector<std::pair<ArithmeticProblem, GivenAnswer>> asked = {
        {problem('+', 1, 1, 2), typed("2", true)},  {problem('+', 2, 2, 4), typed("5", false)},
        {problem('+', 3, 3, 6), typed("6", true)},  {problem('+', 4, 4, 8), typed("9", false)},
        {problem('+', 2, 2, 4), typed("3", false)},
    };
    for (const auto &[p, answer] : asked) {
        record.questionShown(p);
        record.questionAnswered(answer);
        record.questionAnswered(typed("99", true)); // a second answer to one question is no answer
    }
    record.questionShown(problem('+', 5, 5, 10));

    std::vector<std::string> spoken;
    for (const ReviewLine &line : reviewLines(record))
        spoken.push_back(line.spoken);
    EXPECT_EQ(spoken, (std::vector<std::string>{
                          "Missed: 2 + 2 = 4, you wrote 5",
                          "Missed: 4 + 4 = 8, you wrote 9",
                          "Missed: 2 + 2 = 4, you wrote 3",
                          "Right: 1 + 1 = 2",
                          "Right: 3 + 3 = 6",
                          "Not answered: 5 + 5 = 10, not answered",
                      }));
    EXPECT_EQ(reviewLines(record).front().mark, ReviewMark::Missed);
    EXPECT_EQ(reviewLines(record).back().mark, ReviewMark::NotAnswered);
    EXPECT_EQ(record.answeredCount(), 5);
    EXPECT_EQ(reviewCaption(record), "Review (3 missed)");
    EXPECT_EQ(reviewHeading(record), "You missed 3 of 5. They come first.");

    // A new test forgets the last one's questions.
    record.start(SpellingSubject);
    EXPECT_TRUE(reviewLines(record).empty());
    record.questionAnswered(chose(0, false));
    EXPECT_EQ(record.answeredCount(), 0) << "an answer with no question shown is ignored";
    record.questionShown(question("", "said", {"said", "sed", "siad", "sayd"}));
    record.questionAnswered(chose(0, true));
    EXPECT_EQ(reviewCaption(record), "Review");
    EXPECT_EQ(reviewHeading(record), "Your answer was right.");
}
