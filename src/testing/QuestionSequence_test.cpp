// Drawing Arithmetic problems from a level's ranges and operations, and
// multiple-choice questions from the bank with their answers placed by a row
// of the answer-position table.
#include "QuestionSequence.h"

#include "Judge.h"
#include "core/DefaultBank.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <set>
#include <stdexcept>
#include <string>
#include <tuple>
#include <vector>

namespace {

// Arithmetic and two multiple-choice subjects with five slots at every level,
// holding only the empty question a new subject has at level K.
TestBank SmallBank()
{
    TestBank bank;
    for (const char *name : {"Arithmetic", "Spelling", "Geography"})
        AddSubject(bank, name);
    ResizeQuestionSlots(bank, 4);
    return bank;
}

// Puts questions in slots 0..count-1 of the level, named after the level and
// slot: "Q6.2" with the answers "A6.2" (the right one) to "D6.2".
void SetQuestions(TestBank &bank, int subject, int level, int count)
{
    for (int slot = 0; slot < count; ++slot) {
        const std::string id = std::to_string(level) + "." + std::to_string(slot);
        bank.QuestionBank[subject].Items()[level][slot] = {"Q" + id, "A" + id, "B" + id, "C" + id,
                                                           "D" + id};
    }
    bank.Limits[subject].LastQuestion[level] = count - 1;
}

void SetRanges(TestBank &bank, int level, char symbol, int low1, int high1, int low2, int high2)
{
    const int op = OperationIndex(symbol);
    bank.ArithLow1[level][op] = low1;
    bank.ArithHigh1[level][op] = high1;
    bank.ArithLow2[level][op] = low2;
    bank.ArithHigh2[level][op] = high2;
}

// A problem as the child sees it, the box to fill in bracketed: "9+[1]=10".
std::string Shown(const ArithmeticProblem &p)
{
    std::string boxes[] = {std::to_string(p.Number1), std::to_string(p.Number2),
                           std::to_string(p.Answer)};
    std::string &blank = boxes[static_cast<int>(p.blank)];
    blank = "[" + blank + "]";
    return boxes[0] + p.symbol + boxes[1] + "=" + boxes[2];
}

// The values drawn, cut into rounds of the given size.
std::vector<std::multiset<int>> Rounds(const std::vector<int> &values, std::size_t size)
{
    std::vector<std::multiset<int>> rounds;
    for (std::size_t from = 0; from + size <= values.size(); from += size)
        rounds.emplace_back(values.begin() + from, values.begin() + from + size);
    return rounds;
}

std::multiset<int> Span(int low, int high)
{
    std::multiset<int> values;
    for (int value = low; value <= high; ++value)
        values.insert(value);
    return values;
}

} // namespace

TEST(ArithmeticQuestions, EachOperandValueOnceInEveryRoundAndDamagedRangesStayInTheList)
{
    TestBank bank = SmallBank();
    SetRanges(bank, 4, '+', -5, 40, 2, 6);  // beyond both ends of the list of 0..30
    SetRanges(bank, 4, 'x', 33, 40, 12, 3); // a range with high below low is its low end
    // One sequence for all: each test starts from a fresh list of operands.
    QuestionSequence sequence;
    for (std::uint32_t seed = 1; seed <= 3; ++seed) {
        RandomSource random(seed);
        bank.ArithOps[4] = ""; // asks addition
        sequence.StartArithmetic(bank, 4);
        std::vector<int> firsts, seconds;
        for (int i = 0; i < 42; ++i) {
            const ArithmeticProblem problem = sequence.NextArithmetic(bank, 4, random);
            ASSERT_EQ(problem.symbol, '+');
            firsts.push_back(problem.Number1);
            seconds.push_back(problem.Number2);
        }
        EXPECT_EQ(Rounds(firsts, 31), std::vector(1, Span(0, 30))) << "seed " << seed;
        EXPECT_EQ(Rounds(seconds, 5), std::vector(8, Span(2, 6))) << "seed " << seed;
        bank.ArithOps[4] = "?x "; // characters that are no operation are passed over
        sequence.StartArithmetic(bank, 4);
        for (int i = 0; i < 3; ++i)
            EXPECT_EQ(Shown(sequence.NextArithmetic(bank, 4, random)), "30x12=[360]");
    }
    EXPECT_THROW(sequence.StartArithmetic(bank, 13), std::out_of_range);
}

TEST(ArithmeticQuestions, OperationsComeInOrderAndSwitchesSwapNumbersAndMoveTheBlankAcrossTests)
{
    TestBank bank = SmallBank();
    bank.ArithOps[1] = "+-";
    SetRanges(bank, 1, '+', 1, 1, 9, 9);
    SetRanges(bank, 1, '-', 1, 1, 9, 9);
    bank.ArithSwitch[1] = {true, true};
    // One value per range, at the ends of the list (0 and 30).
    bank.ArithOps[2] = "+-x/";
    SetRanges(bank, 2, '+', 0, 0, 30, 30);
    SetRanges(bank, 2, '-', 30, 30, 0, 0);
    SetRanges(bank, 2, 'x', 30, 30, 0, 0);
    SetRanges(bank, 2, '/', 30, 30, 30, 30);
    QuestionSequence sequence;
    RandomSource random(5);
    const auto test = [&](int level, int count) {
        sequence.StartArithmetic(bank, level);
        std::vector<std::string> shown;
        for (int i = 0; i < count; ++i)
            shown.push_back(Shown(sequence.NextArithmetic(bank, level, random)));
        return shown;
    };
    using V = std::vector<std::string>;
    // Level 1 swaps the numbers of every second problem and moves the blank on;
    // each test starts with the first operation again.
    EXPECT_EQ(test(1, 3), (V{"9+[1]=10", "10-1=[9]", "[9]+1=10"}));
    EXPECT_EQ(test(1, 3), (V{"1+[9]=10", "10-9=[1]", "[1]+9=10"}));
    // Subtraction and division are an addition and a multiplication read
    // backwards; a level without the switches leaves both where they were.
    EXPECT_EQ(test(2, 5), (V{"0+30=[30]", "30-30=[0]", "30x0=[0]", "900/30=[30]", "0+30=[30]"}));
    EXPECT_EQ(test(1, 2), (V{"9+[1]=10", "10-1=[9]"}));
}

TEST(ArithmeticQuestions, DefaultTableGivesWholeNonNegativeAnswersAtEveryLevel)
{
    TestBank bank;
    BuildDefaultTests(bank);
    QuestionSequence sequence;
    RandomSource random(2024);
    for (int level = 0; level < LevelCount; ++level) {
        sequence.StartArithmetic(bank, level);
        for (int i = 0; i < 300; ++i) {
            const ArithmeticProblem p = sequence.NextArithmetic(bank, level, random);
            ASSERT_NE(bank.ArithOps[level].find(p.symbol), std::string::npos);
            ASSERT_GE(std::min({p.Number1, p.Number2, p.Answer}), 0) << Shown(p);
            // Holds exactly, without a division by zero.
            ASSERT_TRUE(IsRightArithmetic(std::to_string(p.Number1), p.symbol,
                                          std::to_string(p.Number2), std::to_string(p.Answer)))
                << Shown(p);
        }
    }
}

TEST(MultipleChoiceQuestions, EachQuestionOnceInEveryRoundNeverOpeningWithTheLastAnswersInPlace)
{
    const AnswerPositionTable positions = MakeAnswerPositionTable();
    const std::set<std::array<std::int16_t, 4>> orders(positions.begin(), positions.end());
    EXPECT_EQ(orders.size(), 24u);
    for (const auto &order : orders)
        EXPECT_EQ(std::set<int>(order.begin(), order.end()), (std::set<int>{0, 1, 2, 3}));
    std::set<int> buttons;
    for (const std::size_t count : {2, 5})
        for (std::uint32_t seed = 1; seed <= 4; ++seed) {
            TestBank bank = SmallBank();
            SetQuestions(bank, 2, 6, static_cast<int>(count));
            QuestionSequence sequence;
            sequence.StartMultipleChoice(bank);
            RandomSource random(seed);
            std::vector<int> drawn;
            for (std::size_t i = 0; i < 20 * count; ++i) {
                const MultipleChoiceProblem p =
                    sequence.NextMultipleChoice(bank, 2, 6, random, positions);
                drawn.push_back(p.question);
                EXPECT_EQ(p.rightAnswer, "A6." + std::to_string(p.question));
                EXPECT_EQ(p.choices[static_cast<std::size_t>(p.answerPosition)], p.rightAnswer);
                buttons.insert(p.answerPosition);
            }
            EXPECT_EQ(Rounds(drawn, count), std::vector(20, Span(0, static_cast<int>(count) - 1)));
            for (std::size_t first = count; first < drawn.size(); first += count)
                EXPECT_NE(drawn[first], drawn[first - 1]) << "seed " << seed << " at " << first;
        }
    EXPECT_EQ(buttons.size(), 4u) << "the right answer is on every button now and then";
}

TEST(MultipleChoiceQuestions,
     OneQuestionRepeatsEmptyOrDamagedLevelsGiveSlotZeroAddedSubjectsAreUsed)
{
    TestBank bank = SmallBank();
    SetQuestions(bank, 2, 3, 1);
    SetQuestions(bank, 1, 0, 1);
    const AnswerPositionTable positions = MakeAnswerPositionTable();
    QuestionSequence sequence;
    sequence.StartMultipleChoice(bank);
    RandomSource random(4);
    const auto draw = [&](int subject, int level) {
        return sequence.NextMultipleChoice(bank, subject, level, random, positions);
    };
    for (int i = 0; i < 3; ++i) {
        const MultipleChoiceProblem problem = draw(2, 3);
        EXPECT_EQ(std::tie(problem.question, problem.label, problem.rightAnswer),
                  std::make_tuple(0, std::string("Q3.0?"), std::string("A3.0")));
    }
    // The answers go to the buttons as the row drawn says.
    AnswerPositionTable reversed{};
    for (int row = 0; row < AnswerPositionRows; ++row)
        FillSequence(reversed, row, 3, 2, 1, 0);
    EXPECT_THROW(FillSequence(reversed, 24, 0, 1, 2, 3), std::out_of_range);
    EXPECT_THROW(FillSequence(reversed, -1, 0, 1, 2, 3), std::out_of_range);
    const MultipleChoiceProblem placed = sequence.NextMultipleChoice(bank, 2, 3, random, reversed);
    EXPECT_EQ(placed.choices, (std::array<std::string, 4>{"D3.0", "C3.0", "B3.0", "A3.0"}));
    EXPECT_EQ(placed.answerPosition, 3);
    EXPECT_EQ(draw(1, 0).label, "Q0.0:") << "a Spelling clue";
    const MultipleChoiceProblem empty = draw(2, 4);
    EXPECT_EQ(std::tie(empty.question, empty.label, empty.choices),
              std::make_tuple(0, std::string("?"), std::array<std::string, 4>{}));
    EXPECT_EQ(draw(1, 4).label, "") << "Spelling without a clue";

    // Damaged counts: LastQuestion beyond the slots held, a level without even slot 0.
    bank.Limits[2].LastQuestion[5] = 1000;
    bank.QuestionBank[2].Items()[6].clear();
    bank.Limits[2].LastQuestion[6] = 3;
    for (int i = 0; i < 20; ++i) {
        EXPECT_LE(draw(2, 5).question, 4);
        EXPECT_EQ(draw(2, 6).question, 0);
    }

    AddSubject(bank, "Added after the start");
    SetQuestions(bank, 3, 7, 2);
    std::vector<int> drawn;
    for (int i = 0; i < 6; ++i)
        drawn.push_back(draw(3, 7).question);
    EXPECT_EQ(Rounds(drawn, 2), std::vector(3, Span(0, 1)));
    EXPECT_THROW(draw(4, 7), std::out_of_range);
}

TEST(MultipleChoiceQuestions, AdjacentLevelsStayWithinOneStepAndSkipEmptyLevels)
{
    TestBank bank = SmallBank();
    bank.Subjects[2].AdjacentLevels = true;
    for (int level = 0; level < LevelCount; ++level)
        SetQuestions(bank, 2, level, 3);
    const AnswerPositionTable positions = MakeAnswerPositionTable();
    RandomSource random(6);
    const auto drawnLevels = [&](int level) {
        QuestionSequence sequence;
        sequence.StartMultipleChoice(bank);
        std::set<int> levels;
        for (int i = 0; i < 200; ++i)
            levels.insert(sequence.NextMultipleChoice(bank, 2, level, random, positions).level);
        return levels;
    };
    using S = std::set<int>;
    EXPECT_EQ(drawnLevels(0), (S{0, 1}));
    EXPECT_EQ(drawnLevels(12), (S{11, 12}));
    EXPECT_EQ(drawnLevels(5), (S{4, 5, 6}));
    bank.Limits[2].LastQuestion[1] = bank.Limits[2].LastQuestion[11] = -1;
    EXPECT_EQ(drawnLevels(0), (S{0}));
    EXPECT_EQ(drawnLevels(12), (S{12}));
    EXPECT_EQ(drawnLevels(2), (S{2, 3}));
    bank.Subjects[2].AdjacentLevels = false;
    EXPECT_EQ(drawnLevels(5), (S{5}));
}
