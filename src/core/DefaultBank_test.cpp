#include "core/DefaultBank.h"

#include "core/CoreTesting.h"

#include <gtest/gtest.h>

namespace {

struct Cell {
    int32_t low1, high1, low2, high2;
};

Cell CellOf(const TestBank &bank, int row, char symbol)
{
    const int op = OperationIndex(symbol);
    return {bank.ArithLow1[row][op], bank.ArithHigh1[row][op], bank.ArithLow2[row][op],
            bank.ArithHigh2[row][op]};
}

void ExpectCell(const TestBank &bank, int row, char symbol, Cell expected)
{
    const Cell cell = CellOf(bank, row, symbol);
    EXPECT_EQ(cell.low1, expected.low1) << "row " << row << " " << symbol;
    EXPECT_EQ(cell.high1, expected.high1) << "row " << row << " " << symbol;
    EXPECT_EQ(cell.low2, expected.low2) << "row " << row << " " << symbol;
    EXPECT_EQ(cell.high2, expected.high2) << "row " << row << " " << symbol;
}

} // namespace

TEST(DefaultBank, HasSixSubjectsTwelveSlotsAndThirtySeconds)
{
    const TestBank bank = DefaultTestBank();
    EXPECT_EQ(bank.SubjectMax, 5);
    EXPECT_EQ(bank.QuestionMax, 11);
    const std::vector<std::string> names = {"Arithmetic", "Spelling", "Geography",
                                            "History",    "Music",    "Science"};
    ASSERT_EQ(bank.Subjects.size(), 6u);
    ASSERT_EQ(bank.QuestionBank.size(), 6u);
    ASSERT_EQ(bank.Limits.size(), 6u);
    for (int s = 0; s <= 5; ++s) {
        EXPECT_EQ(bank.Subjects[s].Name, names[s]);
        EXPECT_EQ(bank.Subjects[s].AdjacentLevels, s != 0);
        EXPECT_EQ(bank.Limits[s].Seconds, 30);
        const int32_t last = s == 0 ? -1 : (s == 1 ? 11 : 5);
        for (int level = 0; level < LevelCount; ++level) {
            EXPECT_EQ(bank.Limits[s].LastQuestion[level], last) << names[s] << " " << level;
            EXPECT_EQ(bank.QuestionBank[s].Items()[level].size(), 12u);
        }
    }
    // Arithmetic's slots and the slots above 5 of the six-question subjects stay empty.
    EXPECT_EQ(bank.QuestionBank[0].Items()[0][0].Answer, "");
    EXPECT_EQ(bank.QuestionBank[3].Items()[12][6].Text, "");
}

TEST(DefaultBank, ArithmeticTableHoldsTheDefaultRangesAndOperations)
{
    const TestBank bank = DefaultTestBank();
    const std::array<std::string, LevelCount> ops = {"+", "+-x", "+-x/", "x/", "x/", "+-x/", "x",
                                                     "x", "x",   "x",    "x",  "x",  "x"};
    EXPECT_EQ(bank.ArithOps, ops);

    ExpectCell(bank, 0, '+', {0, 1, 0, 4});
    ExpectCell(bank, 0, '-', {0, 0, 0, 0});
    ExpectCell(bank, 0, '/', {1, 1, 1, 1});
    // Kept although level 1 does not ask divisions.
    ExpectCell(bank, 1, '/', {1, 1, 1, 1});
    ExpectCell(bank, 1, 'x', {0, 2, 0, 2});
    ExpectCell(bank, 2, '-', {6, 12, 6, 12});
    ExpectCell(bank, 2, '/', {1, 3, 1, 3});
    ExpectCell(bank, 3, '+', {0, 0, 0, 0});
    ExpectCell(bank, 3, '/', {5, 10, 5, 10});
    ExpectCell(bank, 4, 'x', {6, 12, 6, 12});
    ExpectCell(bank, 5, '+', {15, 30, 15, 30});
    ExpectCell(bank, 5, '/', {6, 12, 6, 12});
    for (int level = 6; level <= 12; ++level) {
        ExpectCell(bank, level, 'x', {level, level, 2, 12});
        ExpectCell(bank, level, '/', {1, 1, 1, 1});
        ExpectCell(bank, level, '+', {0, 0, 0, 0});
    }
    for (int row = LevelCount; row < RangeRowCount; ++row) {
        for (const char symbol : OpSymbols) {
            ExpectCell(bank, row, symbol, {0, 0, 0, 0});
        }
    }
    for (int level = 0; level < LevelCount; ++level) {
        const bool on = level >= 1 && level <= 5;
        EXPECT_EQ(bank.ArithSwitch[level][SwitchNumbers], on) << level;
        EXPECT_EQ(bank.ArithSwitch[level][SwitchBlanks], on) << level;
    }
}

TEST(DefaultBank, RevertingAllDropsAddedSubjectsAndGrownSlots)
{
    TestBank bank = DefaultTestBank();
    bank.Subjects.push_back({"Latin", false});
    bank.QuestionBank.emplace_back();
    bank.Limits.push_back({});
    bank.SubjectMax = 6;
    ResizeQuestionSlots(bank, 20);
    bank.QuestionBank[2].Items()[0][15].Text = "mine";
    bank.Subjects[1].AdjacentLevels = false;

    BuildDefaultTests(bank);
    EXPECT_EQ(bank.SubjectMax, 5);
    EXPECT_EQ(bank.Subjects.size(), 6u);
    EXPECT_EQ(bank.QuestionBank.size(), 6u);
    EXPECT_EQ(bank.Limits.size(), 6u);
    EXPECT_EQ(bank.QuestionMax, 11);
    EXPECT_EQ(bank.QuestionBank[2].Items()[0].size(), 12u);
    EXPECT_TRUE(bank.Subjects[1].AdjacentLevels);
}

TEST(DefaultBank, RevertingOneSubjectKeepsUserSlotsBeyondTheDefaults)
{
    const TestBank fresh = DefaultTestBank();
    TestBank bank = DefaultTestBank();
    constexpr int history = 3;
    std::vector<Question> &level3 = bank.QuestionBank[history].Items()[3];
    for (int slot = 6; slot <= 9; ++slot) {
        level3[slot] = {"q" + std::to_string(slot), "a", "b", "c", "d"};
    }
    level3[0].Text = "changed by the user";
    bank.Limits[history].LastQuestion[3] = 9;
    bank.Limits[history].Seconds = 45;
    bank.Subjects[history].AdjacentLevels = false;
    bank.QuestionBank[2].Items()[3][0].Text = "Geography stays";

    DefaultHistory(bank);
    EXPECT_EQ(bank.Limits[history].LastQuestion[3], 5);
    EXPECT_EQ(bank.Limits[history].Seconds, 30);
    for (int slot = 0; slot <= 5; ++slot) {
        EXPECT_TRUE(SameQuestion(level3[slot], fresh.QuestionBank[history].Items()[3][slot]));
    }
    for (int slot = 6; slot <= 9; ++slot) {
        EXPECT_EQ(level3[slot].Text, "q" + std::to_string(slot));
    }
    EXPECT_FALSE(bank.Subjects[history].AdjacentLevels);
    EXPECT_EQ(bank.QuestionBank[2].Items()[3][0].Text, "Geography stays");

    // Spelling fills all twelve slots; a bank read with fewer slots grows to hold them.
    ResizeQuestionSlots(bank, 3);
    DefaultSpelling(bank);
    EXPECT_EQ(bank.QuestionMax, 11);
    EXPECT_EQ(bank.Limits[1].LastQuestion[12], 11);
    EXPECT_TRUE(
        SameQuestion(bank.QuestionBank[1].Items()[12][11], fresh.QuestionBank[1].Items()[12][11]));
    EXPECT_EQ(bank.QuestionBank[history].Items()[3][6].Text, "");
}

TEST(DefaultBank, RevertingArithmeticLeavesTheOtherSubjectsAlone)
{
    const TestBank fresh = DefaultTestBank();
    TestBank bank = DefaultTestBank();
    bank.ArithOps[3] = "+";
    bank.ArithLow1[6][2] = 3;
    bank.ArithHigh2[20][1] = 99;
    bank.ArithSwitch[0][SwitchBlanks] = true;
    bank.Limits[0].Seconds = 120;
    bank.Subjects[0].AdjacentLevels = true;
    bank.Limits[1].Seconds = 60;
    bank.QuestionBank[1].Items()[0][0].Answer = "kitten";

    DefaultArithmetic(bank);
    EXPECT_EQ(bank.ArithOps, fresh.ArithOps);
    EXPECT_EQ(bank.ArithLow1, fresh.ArithLow1);
    EXPECT_EQ(bank.ArithHigh2, fresh.ArithHigh2);
    EXPECT_EQ(bank.ArithSwitch, fresh.ArithSwitch);
    EXPECT_EQ(bank.Limits[0].Seconds, 30);
    EXPECT_TRUE(bank.Subjects[0].AdjacentLevels);
    EXPECT_EQ(bank.Limits[1].Seconds, 60);
    EXPECT_EQ(bank.QuestionBank[1].Items()[0][0].Answer, "kitten");
}

TEST(TestBank, LevelsAndOperationsHaveTheirNamesAndContent)
{
    EXPECT_EQ(LevelText(0), "K");
    EXPECT_EQ(LevelText(1), "1");
    EXPECT_EQ(LevelText(12), "12");
    EXPECT_EQ(OperationIndex('+'), 0);
    EXPECT_EQ(OperationIndex('x'), 2);
    EXPECT_EQ(OperationIndex('/'), 3);
    EXPECT_EQ(OperationIndex('*'), -1);
    EXPECT_EQ(OperationIndex('X'), -1);

    TestBank bank = DefaultTestBank();
    EXPECT_TRUE(LevelHasQuestions(bank, 0, 6));
    bank.ArithOps[6].clear();
    EXPECT_FALSE(LevelHasQuestions(bank, 0, 6));
    EXPECT_TRUE(LevelHasQuestions(bank, 2, 0));
    // LastQuestion 0 is one question, even with five empty texts.
    bank.Limits[2].LastQuestion[0] = 0;
    EXPECT_TRUE(LevelHasQuestions(bank, 2, 0));
    bank.Limits[2].LastQuestion[0] = -1;
    EXPECT_FALSE(LevelHasQuestions(bank, 2, 0));
    EXPECT_FALSE(LevelHasQuestions(bank, 6, 0));
    EXPECT_FALSE(LevelHasQuestions(bank, 1, 13));
    EXPECT_FALSE(LevelHasQuestions(bank, 1, -1));
}
