#include "QuestionSequence.h"

#include "core/DefaultBank.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <numeric>
#include <set>
#include <stdexcept>
#include <tuple>

namespace {

// Arithmetic plus two multiple-choice subjects with five slots per level and no
// question in use yet.
TestBank SmallBank()
{
    TestBank bank;
    bank.SubjectMax = 2;
    bank.Subjects = {{"Arithmetic", false}, {"Spelling", false}, {"Geography", false}};
    bank.QuestionBank.resize(3);
    bank.Limits.resize(3);
    for (SubjectLimits &limits : bank.Limits)
        limits.LastQuestion.fill(-1);
    ResizeQuestionSlots(bank, 4);
    return bank;
}

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

std::vector<int> SortedSlice(const std::vector<int> &values, std::size_t from, std::size_t size)
{
    std::vector<int> slice(values.begin() + from, values.begin() + from + size);
    std::sort(slice.begin(), slice.end());
    return slice;
}

std::vector<int> Iota(int from, int size)
{
    std::vector<int> values(static_cast<std::size_t>(size));
    std::iota(values.begin(), values.end(), from);
    return values;
}

using Triple = std::tuple<int, int, int>;

Triple Numbers(const ArithmeticProblem &problem)
{
    return {problem.Number1, problem.Number2, problem.Answer};
}

} // namespace

TEST(ArithmeticQuestions, EachOperandValueOnceInEveryRound)
{
    for (std::uint32_t seed = 1; seed <= 5; ++seed) {
        TestBank bank = SmallBank();
        bank.ArithOps[3] = "x";
        SetRanges(bank, 3, 'x', 4, 10, 0, 4);
        QuestionSequence sequence;
        sequence.StartArithmetic(bank, 3);
        RandomSource random(seed);
        std::vector<int> firsts, seconds;
        for (int i = 0; i < 35; ++i) {
            const ArithmeticProblem problem = sequence.NextArithmetic(bank, 3, random);
            firsts.push_back(problem.Number1);
            seconds.push_back(problem.Number2);
        }
        for (std::size_t round = 0; round < 5; ++round)
            EXPECT_EQ(SortedSlice(firsts, round * 7, 7), Iota(4, 7)) << "seed " << seed;
        for (std::size_t round = 0; round < 7; ++round)
            EXPECT_EQ(SortedSlice(seconds, round * 5, 5), Iota(0, 5)) << "seed " << seed;
    }
}

TEST(ArithmeticQuestions, OperationsRepeatInOrderAndRestartWithEachTest)
{
    TestBank bank = SmallBank();
    bank.ArithOps[2] = "+-x/";
    // Ranges of one value each, at the ends of the list (0 and 30).
    SetRanges(bank, 2, '+', 0, 0, 30, 30);
    SetRanges(bank, 2, '-', 30, 30, 0, 0);
    SetRanges(bank, 2, 'x', 30, 30, 0, 0);
    SetRanges(bank, 2, '/', 30, 30, 30, 30);
    // Subtraction and division are an addition and a multiplication read backwards.
    const std::vector<Triple> expected = {{0, 30, 30}, {30, 30, 0}, {30, 0, 0}, {900, 30, 30}};
    QuestionSequence sequence;
    RandomSource random(1);
    sequence.StartArithmetic(bank, 2);
    for (int i = 0; i < 10; ++i) {
        const ArithmeticProblem problem = sequence.NextArithmetic(bank, 2, random);
        EXPECT_EQ(problem.symbol, "+-x/"[i % 4]);
        EXPECT_EQ(Numbers(problem), expected[i % 4]);
    }
    bank.ArithOps[2] = "+-";
    for (int test = 0; test < 3; ++test) {
        sequence.StartArithmetic(bank, 2);
        std::string symbols;
        for (int i = 0; i <= test; ++i)
            symbols += sequence.NextArithmetic(bank, 2, random).symbol;
        EXPECT_EQ(symbols, std::string("+-+").substr(0, symbols.size()));
    }
}

TEST(ArithmeticQuestions, SwitchNumbersSwapsEverySecondQuestionAcrossTests)
{
    TestBank bank = SmallBank();
    for (const int level : {1, 2}) {
        bank.ArithOps[level] = "+-";
        SetRanges(bank, level, '+', 1, 1, 9, 9);
        SetRanges(bank, level, '-', 1, 1, 9, 9);
    }
    bank.ArithSwitch[1][SwitchNumbers] = true;
    QuestionSequence sequence;
    RandomSource random(5);
    const auto drawn = [&](int level, int count) {
        sequence.StartArithmetic(bank, level);
        std::vector<Triple> problems;
        for (int i = 0; i < count; ++i)
            problems.push_back(Numbers(sequence.NextArithmetic(bank, level, random)));
        return problems;
    };
    using T = Triple;
    EXPECT_EQ(drawn(1, 3), (std::vector<T>{{9, 1, 10}, {10, 1, 9}, {9, 1, 10}}));
    EXPECT_EQ(drawn(1, 2), (std::vector<T>{{1, 9, 10}, {10, 9, 1}})) << "the swap carries on";
    EXPECT_EQ(drawn(2, 4), (std::vector<T>{{1, 9, 10}, {10, 1, 9}, {1, 9, 10}, {10, 1, 9}}));
}

TEST(ArithmeticQuestions, BlankMovesOnlyWithSwitchBlanksAndCarriesOn)
{
    TestBank bank = SmallBank();
    bank.ArithOps[1] = bank.ArithOps[2] = "+";
    bank.ArithSwitch[1][SwitchBlanks] = true;
    QuestionSequence sequence;
    RandomSource random(2);
    const auto blanks = [&](int level, int count) {
        sequence.StartArithmetic(bank, level);
        std::vector<MathBox> boxes;
        for (int i = 0; i < count; ++i) {
            const ArithmeticProblem problem = sequence.NextArithmetic(bank, level, random);
            EXPECT_EQ(problem.switchBlanks, level == 1);
            boxes.push_back(problem.blank);
        }
        return boxes;
    };
    using B = MathBox;
    EXPECT_EQ(blanks(1, 4), (std::vector<B>{B::Number2, B::Answer, B::Number1, B::Number2}));
    EXPECT_EQ(blanks(2, 2), (std::vector<B>{B::Answer, B::Answer}));
    EXPECT_EQ(blanks(1, 2), (std::vector<B>{B::Answer, B::Number1}));
}

TEST(ArithmeticQuestions, DamagedSettingsStayInsideTheListOfNumbers)
{
    TestBank bank = SmallBank();
    SetRanges(bank, 4, '+', -5, 40, 12, 3); // below 0, above 30, low above high
    SetRanges(bank, 4, 'x', 33, 40, 31, 99);
    QuestionSequence sequence;
    RandomSource random(9);
    for (const char *ops : {"", "?x "}) { // an empty operations text asks addition
        bank.ArithOps[4] = ops;
        sequence.StartArithmetic(bank, 4);
        std::set<int> firsts;
        for (int i = 0; i < 62; ++i) {
            const ArithmeticProblem p = sequence.NextArithmetic(bank, 4, random);
            EXPECT_EQ(p.symbol, *ops ? 'x' : '+');
            EXPECT_TRUE(p.Number1 >= 0 && p.Number1 <= 30 && p.Number2 >= 0 && p.Number2 <= 30)
                << p.Number1 << " " << p.symbol << " " << p.Number2;
            firsts.insert(p.Number1);
        }
        EXPECT_EQ(firsts.size(), *ops ? 1u : 31u);
    }
    EXPECT_THROW(sequence.StartArithmetic(bank, 13), std::out_of_range);
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
            ASSERT_GE(std::min({p.Number1, p.Number2, p.Answer}), 0) << "level " << level;
            // A division is a whole multiplication read backwards.
            ASSERT_TRUE(p.symbol != '/' || p.Number2 > 0) << "level " << level;
            const int result = p.symbol == '+'   ? p.Number1 + p.Number2
                               : p.symbol == '-' ? p.Number1 - p.Number2
                               : p.symbol == 'x' ? p.Number1 * p.Number2
                                                 : p.Number2 * p.Answer;
            ASSERT_EQ(result, p.symbol == '/' ? p.Number1 : p.Answer) << "level " << level;
        }
    }
}

TEST(MultipleChoiceQuestions, EachQuestionOnceInEveryRoundNeverOpeningWithTheLast)
{
    const AnswerPositionTable positions = MakeAnswerPositionTable();
    for (const int count : {2, 5})
        for (std::uint32_t seed = 1; seed <= 4; ++seed) {
            TestBank bank = SmallBank();
            SetQuestions(bank, 2, 6, count);
            QuestionSequence sequence;
            sequence.StartMultipleChoice(bank);
            RandomSource random(seed);
            std::vector<int> drawn;
            for (int i = 0; i < 20 * count; ++i)
                drawn.push_back(
                    sequence.NextMultipleChoice(bank, 2, 6, random, positions).question);
            for (std::size_t round = 0; round < 20; ++round) {
                const std::size_t first = round * static_cast<std::size_t>(count);
                EXPECT_EQ(SortedSlice(drawn, first, static_cast<std::size_t>(count)),
                          Iota(0, count));
                EXPECT_TRUE(round == 0 || drawn[first] != drawn[first - 1]) << "seed " << seed;
            }
        }
}

TEST(MultipleChoiceQuestions,
     SingleQuestionRepeatsEmptyOrDamagedLevelsShowSlotZeroAddedSubjectsAreDrawn)
{
    TestBank bank = SmallBank();
    SetQuestions(bank, 2, 3, 1);
    SetQuestions(bank, 1, 0, 1);
    const AnswerPositionTable positions = MakeAnswerPositionTable();
    QuestionSequence sequence;
    sequence.StartMultipleChoice(bank);
    RandomSource random(4);
    for (int i = 0; i < 5; ++i) {
        const MultipleChoiceProblem problem =
            sequence.NextMultipleChoice(bank, 2, 3, random, positions);
        EXPECT_EQ(std::tie(problem.question, problem.label, problem.rightAnswer),
                  std::make_tuple(0, std::string("Q3.0?"), std::string("A3.0")));
    }
    EXPECT_EQ(sequence.NextMultipleChoice(bank, 1, 0, random, positions).label, "Q0.0:");
    const MultipleChoiceProblem empty = sequence.NextMultipleChoice(bank, 2, 4, random, positions);
    EXPECT_EQ(std::tie(empty.question, empty.label, empty.rightAnswer),
              std::make_tuple(0, std::string("?"), std::string()));
    EXPECT_EQ(empty.choices, (std::array<std::string, 4>{}));
    EXPECT_EQ(sequence.NextMultipleChoice(bank, 1, 4, random, positions).label, "");

    // Damaged counts: LastQuestion beyond the slots held, a level without even slot 0.
    bank.Limits[2].LastQuestion[5] = 1000;
    bank.QuestionBank[2].Items()[6].clear();
    bank.Limits[2].LastQuestion[6] = 3;
    for (int i = 0; i < 20; ++i) {
        EXPECT_LE(sequence.NextMultipleChoice(bank, 2, 5, random, positions).question, 4);
        EXPECT_EQ(sequence.NextMultipleChoice(bank, 2, 6, random, positions).question, 0);
    }

    // A subject added after the start is drawn like the others.
    bank.Subjects.push_back({"Added", false});
    bank.QuestionBank.emplace_back();
    bank.Limits.emplace_back();
    ResizeQuestionSlots(bank, 4);
    SetQuestions(bank, 3, 7, 2);
    std::vector<int> drawn;
    for (int i = 0; i < 6; ++i)
        drawn.push_back(sequence.NextMultipleChoice(bank, 3, 7, random, positions).question);
    EXPECT_EQ(SortedSlice(drawn, 0, 6), (std::vector<int>{0, 0, 0, 1, 1, 1}));
    EXPECT_THROW(sequence.NextMultipleChoice(bank, 4, 7, random, positions), std::out_of_range);
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
    EXPECT_EQ(drawnLevels(0), (std::set<int>{0, 1}));
    EXPECT_EQ(drawnLevels(12), (std::set<int>{11, 12}));
    EXPECT_EQ(drawnLevels(5), (std::set<int>{4, 5, 6}));
    bank.Limits[2].LastQuestion[1] = -1;
    bank.Limits[2].LastQuestion[11] = -1;
    EXPECT_EQ(drawnLevels(0), (std::set<int>{0}));
    EXPECT_EQ(drawnLevels(12), (std::set<int>{12}));
    EXPECT_EQ(drawnLevels(2), (std::set<int>{2, 3}));
    bank.Subjects[2].AdjacentLevels = false;
    EXPECT_EQ(drawnLevels(5), (std::set<int>{5}));
}

TEST(MultipleChoiceQuestions, AnswersArePlacedByARowOfTheTable)
{
    TestBank bank = SmallBank();
    SetQuestions(bank, 2, 0, 4);
    const AnswerPositionTable positions = MakeAnswerPositionTable();
    QuestionSequence sequence;
    sequence.StartMultipleChoice(bank);
    RandomSource random(8);
    std::set<int> buttons;
    for (int i = 0; i < 200; ++i) {
        const MultipleChoiceProblem p = sequence.NextMultipleChoice(bank, 2, 0, random, positions);
        const std::string id = "0." + std::to_string(p.question);
        EXPECT_EQ(p.rightAnswer, "A" + id);
        EXPECT_EQ(p.choices[static_cast<std::size_t>(p.answerPosition)], p.rightAnswer);
        EXPECT_TRUE(std::is_permutation(
            p.choices.begin(), p.choices.end(),
            std::array<std::string, 4>{"A" + id, "B" + id, "C" + id, "D" + id}.begin()));
        buttons.insert(p.answerPosition);
    }
    EXPECT_EQ(buttons.size(), 4u);

    AnswerPositionTable reversed{};
    reversed.fill({3, 2, 1, 0});
    const MultipleChoiceProblem p = sequence.NextMultipleChoice(bank, 2, 0, random, reversed);
    const std::string id = "0." + std::to_string(p.question);
    EXPECT_EQ(p.choices, (std::array<std::string, 4>{"D" + id, "C" + id, "B" + id, "A" + id}));
    EXPECT_EQ(p.answerPosition, 3);
}
