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
TestBank smallBank()
{
    TestBank bank;
    for (const char *name : {"Arithmetic", "Spelling", "Geography"})
        addSubject(bank, name);
    resizeQuestionSlots(bank, 4);
    return bank;
}

// Puts questions in slots 0..count-1 of the level, named after the level and
// slot: "Q6.2" with the answers "A6.2" (the right one) to "D6.2".
void setQuestions(TestBank &bank, int subject, int level, int count)
{
    for (int slot = 0; slot < count; ++slot) {
        const std::string id = std::to_string(level) + "." + std::to_string(slot);
        bank.questionBank[subject].items()[level][slot] = {"Q" + id, "A" + id, "B" + id, "C" + id,
                                                           "D" + id};
    }
    bank.limits[subject].lastQuestion[level] = count - 1;
}

// One value of what was drawn, cut into rounds of the given size.
template <typename Drawn>
std::vector<std::multiset<int>> rounds(const std::vector<Drawn> &drawn, int Drawn::*value,
                                       std::size_t size)
{
    std::vector<std::multiset<int>> rounds(drawn.size() / size);
    for (std::size_t i = 0; i < rounds.size() * size; ++i)
        rounds[i / size].insert(drawn[i].*value);
    return rounds;
}

std::multiset<int> span(int low, int high)
{
    std::multiset<int> values;
    while (low <= high)
        values.insert(low++);
    return values;
}

} // namespace

TEST(ArithmeticQuestions, OperationsInOrderSwitchesCarryOnAndEachOperandOnceInEveryRound)
{
    TestBank bank = smallBank();
    // Level, operation, and the low and high ends of the first and the second
    // number. Ranges are cut to the list of operands, 0..30, and one with high
    // below low stands for its low end.
    const std::tuple<int, char, int, int, int, int> ranges[] = {
        {1, '+', 1, 1, 9, 9},   {1, '-', 1, 1, 9, 9},    {2, '+', 0, 0, 30, 30},
        {2, '-', 30, 30, 0, 0}, {2, 'x', 33, 40, 12, 3}, {2, '/', 30, 30, 30, 30},
        {4, '+', -5, 40, 2, 6}};
    for (const auto &[level, symbol, low1, high1, low2, high2] : ranges) {
        const int op = operationIndex(symbol);
        std::tie(bank.arithLow1[level][op], bank.arithHigh1[level][op], bank.arithLow2[level][op],
                 bank.arithHigh2[level][op]) = std::tie(low1, high1, low2, high2);
    }
    bank.arithOps[1] = "+-";
    bank.arithSwitch[1] = {true, true};
    bank.arithOps[2] = "+-?x/ "; // characters that are no operation are passed over
    bank.arithOps[4] = "";       // asks addition
    QuestionSequence sequence;
    RandomSource random(5);
    std::vector<ArithmeticProblem> drawn;
    // Runs a test; gives its problems as the child sees them, the box to fill
    // in bracketed: "9+[1]=10 10-1=[9]".
    const auto test = [&](int level, int count) {
        sequence.startArithmetic(bank, level);
        drawn.clear();
        std::string shown;
        for (int i = 0; i < count; ++i) {
            const ArithmeticProblem &p =
                drawn.emplace_back(sequence.nextArithmetic(bank, level, random));
            std::string boxes[] = {std::to_string(p.number1), std::to_string(p.number2),
                                   std::to_string(p.answer)};
            boxes[static_cast<int>(p.blank)] = "[" + boxes[static_cast<int>(p.blank)] + "]";
            shown += (i ? " " : "") + boxes[0] + p.symbol + boxes[1] + "=" + boxes[2];
        }
        return shown;
    };
    // Level 1 swaps the numbers of every second problem and moves the blank on;
    // each test starts with the first operation again.
    EXPECT_EQ(test(1, 3), "9+[1]=10 10-1=[9] [9]+1=10");
    EXPECT_EQ(test(1, 3), "1+[9]=10 10-9=[1] [1]+9=10");
    // Subtraction and division are an addition and a multiplication read
    // backwards; a level without the switches leaves both where they were.
    EXPECT_EQ(test(2, 5), "0+30=[30] 30-30=[0] 30x12=[360] 900/30=[30] 0+30=[30]");
    EXPECT_EQ(test(1, 2), "9+[1]=10 10-1=[9]");
    // Each operand value once in every round; every test starts a fresh round.
    for (int run = 0; run < 2; ++run) {
        EXPECT_EQ(test(4, 42).find_first_of("-x/"), std::string::npos) << "additions only";
        EXPECT_EQ(rounds(drawn, &ArithmeticProblem::number1, 31), std::vector(1, span(0, 30)));
        EXPECT_EQ(rounds(drawn, &ArithmeticProblem::number2, 5), std::vector(8, span(2, 6)));
    }
    EXPECT_THROW(sequence.startArithmetic(bank, 13), std::out_of_range);

    // The default table gives whole answers, never negative, at every level.
    bank = TestBank();
    buildDefaultTests(bank);
    for (int level = 0; level < LevelCount; ++level) {
        test(level, 300);
        for (const ArithmeticProblem &p : drawn)
            ASSERT_TRUE(std::min({p.number1, p.number2, p.answer}) >= 0 &&
                        isRightArithmetic(std::to_string(p.number1), p.symbol,
                                          std::to_string(p.number2), std::to_string(p.answer)))
                << p.number1 << p.symbol << p.number2 << "=" << p.answer;
    }
}

TEST(MultipleChoiceQuestions, EachQuestionOnceInEveryRoundNeverOpeningWithTheLastAnswersInPlace)
{
    const AnswerPositionTable positions = makeAnswerPositionTable();
    const std::set<std::array<std::int16_t, 4>> orders(positions.begin(), positions.end());
    EXPECT_EQ(orders.size(), 24u);
    for (const auto &order : orders)
        EXPECT_EQ(std::set<int>(order.begin(), order.end()), (std::set<int>{0, 1, 2, 3}));
    std::set<int> buttons;
    for (const int count : {1, 2, 5})
        for (std::uint32_t seed = 1; seed <= 4; ++seed) {
            TestBank bank = smallBank();
            setQuestions(bank, 2, 6, count);
            QuestionSequence sequence;
            sequence.startMultipleChoice(bank);
            RandomSource random(seed);
            std::vector<MultipleChoiceProblem> drawn;
            for (int i = 0; i < 20 * count; ++i) {
                const MultipleChoiceProblem &p =
                    drawn.emplace_back(sequence.nextMultipleChoice(bank, 2, 6, random, positions));
                const std::string id = "6." + std::to_string(p.question);
                EXPECT_EQ(std::tie(p.level, p.label, p.rightAnswer),
                          std::make_tuple(6, "Q" + id + "?", "A" + id));
                EXPECT_EQ(p.choices[static_cast<std::size_t>(p.answerPosition)], p.rightAnswer);
                buttons.insert(p.answerPosition);
            }
            EXPECT_EQ(rounds(drawn, &MultipleChoiceProblem::question, count),
                      std::vector(20, span(0, count - 1)));
            // A lone question repeats; otherwise no round opens with the last one.
            for (int first = count; count > 1 && first < 20 * count; first += count)
                EXPECT_NE(drawn[first].question, drawn[first - 1].question) << "seed " << seed;
        }
    EXPECT_EQ(buttons.size(), 4u) << "the right answer is on every button now and then";
}

TEST(MultipleChoiceQuestions, AnswersGoWhereTheRowSaysAndOddOrAdjacentLevelsAreDrawnSafely)
{
    TestBank bank = smallBank();
    setQuestions(bank, 2, 3, 1);
    AnswerPositionTable reversed{};
    for (int row = 0; row < AnswerPositionRows; ++row)
        fillSequence(reversed, row, 3, 2, 1, 0);
    EXPECT_THROW(fillSequence(reversed, 24, 0, 1, 2, 3), std::out_of_range);
    EXPECT_THROW(fillSequence(reversed, -1, 0, 1, 2, 3), std::out_of_range);
    QuestionSequence sequence;
    sequence.startMultipleChoice(bank);
    RandomSource random(4);
    const auto draw = [&](int subject, int level) {
        return sequence.nextMultipleChoice(bank, subject, level, random, reversed);
    };
    const MultipleChoiceProblem placed = draw(2, 3);
    EXPECT_EQ(placed.choices, (std::array<std::string, 4>{"D3.0", "C3.0", "B3.0", "A3.0"}));
    EXPECT_EQ(placed.answerPosition, 3);
    const MultipleChoiceProblem empty = draw(2, 4);
    EXPECT_EQ(std::tie(empty.question, empty.label, empty.choices),
              std::make_tuple(0, std::string("?"), std::array<std::string, 4>{}));
    EXPECT_EQ(draw(1, 4).label, "") << "Spelling without a clue";

    // Damaged counts: lastQuestion beyond the slots held, a level without even slot 0.
    bank.limits[2].lastQuestion[5] = 1000;
    bank.questionBank[2].items()[6].clear();
    bank.limits[2].lastQuestion[6] = 3;
    for (int i = 0; i < 20; ++i) {
        EXPECT_LE(draw(2, 5).question, 4);
        EXPECT_EQ(draw(2, 6).question, 0);
    }

    // A subject added after the start, then with adjacent levels: one step down
    // or up at most, never to a level without questions.
    addSubject(bank, "Added after the start");
    for (int level = 0; level < LevelCount; ++level)
        setQuestions(bank, 3, level, 3);
    std::vector<MultipleChoiceProblem> drawn;
    for (int i = 0; i < 6; ++i)
        drawn.push_back(draw(3, 7));
    EXPECT_EQ(rounds(drawn, &MultipleChoiceProblem::question, 3), std::vector(2, span(0, 2)));
    EXPECT_THROW(draw(4, 7), std::out_of_range);
    bank.subjects[3].adjacentLevels = true;
    const auto drawnLevels = [&](int level) {
        std::set<int> levels;
        for (int i = 0; i < 200; ++i)
            levels.insert(draw(3, level).level);
        return levels;
    };
    using S = std::set<int>;
    EXPECT_EQ(drawnLevels(0), (S{0, 1}));
    EXPECT_EQ(drawnLevels(12), (S{11, 12}));
    EXPECT_EQ(drawnLevels(5), (S{4, 5, 6}));
    bank.limits[3].lastQuestion[1] = -1;
    EXPECT_EQ(drawnLevels(0), (S{0}));
    EXPECT_EQ(drawnLevels(2), (S{2, 3}));
    bank.subjects[3].adjacentLevels = false;
    EXPECT_EQ(drawnLevels(5), (S{5}));
}
