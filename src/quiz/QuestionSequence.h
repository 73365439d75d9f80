// Drawing the questions of a running test: Arithmetic problems generated from
// the level's settings, multiple-choice questions drawn from the bank, neither
// repeating a value or question until all have been used.
#pragma once

#include "AnswerPositions.h"
#include "Random.h"
#include "core/TestBank.h"

#include <array>
#include <cstdint>
#include <string>
#include <vector>

// The boxes of an Arithmetic problem; the blank one is where the child types.
enum class MathBox { Number1 = 0, Number2 = 1, Answer = 2 };

struct ArithmeticProblem {
    int operation = 0; // index into OpSymbols
    char symbol = '+';
    std::int32_t number1 = 0;
    std::int32_t number2 = 0;
    std::int32_t answer = 0;
    // With switch blanks on, the box left empty moves from question to question
    // and the boxes change style; otherwise the answer box is the blank one.
    bool switchBlanks = false;
    MathBox blank = MathBox::Answer;
};

struct MultipleChoiceProblem {
    int level = 0;                      // the level the question was drawn from
    int question = 0;                   // its slot at that level
    std::string text;                   // the question as the bank holds it
    std::string label;                  // the question text followed by its mark
    std::array<std::string, 4> choices; // the texts of answer buttons 0..3
    int answerPosition = 0;             // the button that carries the right answer
    std::string rightAnswer;
};

// The state a test keeps from question to question.
class QuestionSequence {
public:
    // Reads the level's switches, rewinds the operations text and forgets every
    // operand drawn so far. The numbers-swapped toggle and blank counter carry on.
    void startArithmetic(const TestBank &bank, int level);
    // Forgets every question drawn so far, for every subject and level.
    void startMultipleChoice(const TestBank &bank);

    ArithmeticProblem nextArithmetic(const TestBank &bank, int level, RandomSource &random);
    MultipleChoiceProblem nextMultipleChoice(const TestBank &bank, int subject, int level,
                                             RandomSource &random,
                                             const AnswerPositionTable &positions);

private:
    // Operand values are limited to 0..30: one used-flag per value and operation.
    static constexpr std::int32_t HighestOperand = 30;
    using OperandFlags = std::array<std::array<bool, OperationCount>, HighestOperand + 1>;

    static std::int32_t drawOperand(OperandFlags &used, int operation, std::int32_t low,
                                    std::int32_t high, RandomSource &random);
    std::vector<bool> &questionFlags(int subject, int level, int count);

    std::int32_t m_opsPosition = 1; // 1-based read position in the level's operations text
    OperandFlags m_number1Used{};
    OperandFlags m_number2Used{};
    bool m_switchNumbers = false;
    bool m_numbersSwapped = false;
    bool m_switchBlanks = false;
    std::int32_t m_blankCounter = 0;
    // [subject][level][question]
    std::vector<std::array<std::vector<bool>, LevelCount>> m_questionUsed;
    std::int32_t m_previousQuestion = 0;
};
