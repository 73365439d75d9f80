#include "fluency/FactGrid.h"

#include "core/HistoryFixture_test.h"

#include <gtest/gtest.h>

namespace {

// A bank whose level 4 asks + and × from 0..12 twice over, and − and ÷ built from 1..10 and 0..9.
TestBank tablesBank()
{
    TestBank bank;
    bank.arithOps[4] = "+-x/";
    for (std::size_t op = 0; op < 4; ++op) {
        const bool backwards = op == 1 || op == 3;
        bank.arithLow1[4][op] = backwards ? 1 : 0;
        bank.arithHigh1[4][op] = backwards ? 10 : 12;
        bank.arithLow2[4][op] = 0;
        bank.arithHigh2[4][op] = backwards ? 9 : 12;
    }
    return bank;
}

const FactCell &cellAt(const FactGrid &grid, std::int64_t row, std::int64_t column)
{
    const auto r = std::find(grid.rowNumbers.begin(), grid.rowNumbers.end(), row);
    const auto c = std::find(grid.columnNumbers.begin(), grid.columnNumbers.end(), column);
    EXPECT_NE(r, grid.rowNumbers.end());
    EXPECT_NE(c, grid.columnNumbers.end());
    return grid.rows[std::size_t(r - grid.rowNumbers.begin())]
                    [std::size_t(c - grid.columnNumbers.begin())];
}

class FactGridTest : public HistoryTest {
protected:
    // One Arithmetic test at level 4 of the problems as shown, each right and
    // taking two seconds.
    void answerProblems(const std::vector<ArithmeticAnswer> &problems)
    {
        HistoryRecorder &recorder = history->recorder();
        recorder.beginTest({0, ArithmeticSubject, 4, 60, false});
        for (const ArithmeticAnswer &problem : problems) {
            clock.advance(2000);
            recorder.recordArithmetic(problem);
        }
        recorder.endTest({0, int(problems.size()), 0, false});
    }
};

TEST_F(FactGridTest, AFactIsItsNumbersAndOperationWhereverTheBlankWas)
{
    open();
    answerProblems({
        {7, 8, 56, 2, 2, "56", true}, // 7 × 8 = _
        {7, 8, 56, 2, 1, "8", true},  // 7 × _ = 56
        {7, 8, 56, 2, 0, "7", true},  // _ × 8 = 56
        {8, 7, 56, 2, 2, "56", true}, // 8 × 7 is a fact of its own
        {12, 5, 7, 1, 0, "12", true}, // _ − 5 = 7
        {12, 5, 7, 1, 2, "7", true},  // 12 − 5 = _
        {12, 7, 5, 1, 1, "7", true},  // 12 − _ = 5, the other fact of the family
        {56, 7, 8, 3, 1, "7", true},  // 56 ÷ _ = 8
        {3, 4, 7, 0, 2, "7", true},
    });
    const std::vector<FactGrid> grids = makeFactGrids(tablesBank(), history->queries().facts(0));
    ASSERT_EQ(grids.size(), 4u);
    for (int op = 0; op < 4; ++op)
        EXPECT_EQ(grids[std::size_t(op)].operation, op);

    const FactGrid &times = grids[2];
    ASSERT_TRUE(times.table);
    EXPECT_EQ(cellAt(times, 7, 8).tally.answers, 3);
    EXPECT_EQ(cellAt(times, 8, 7).tally.answers, 1);
    EXPECT_EQ(cellAt(times, 7, 7).tally.answers, 0);
    EXPECT_EQ(cellAt(times, 7, 7).mastery, Mastery::Untried);

    // Subtraction stands where its addition stands: the number taken away, then the answer.
    const FactGrid &minus = grids[1];
    const FactCell &twelveTakeFive = cellAt(minus, 5, 7);
    EXPECT_EQ(twelveTakeFive.number1, 12);
    EXPECT_EQ(twelveTakeFive.number2, 5);
    EXPECT_EQ(twelveTakeFive.tally.answers, 2);
    EXPECT_EQ(cellAt(minus, 7, 5).tally.answers, 1);
    const FactCell &untried = cellAt(minus, 3, 9);
    EXPECT_EQ(untried.number1, 12);
    EXPECT_EQ(untried.number2, 3);

    const FactCell &division = cellAt(grids[3], 7, 8);
    EXPECT_EQ(division.number1, 56);
    EXPECT_EQ(division.tally.answers, 1);
}

TEST_F(FactGridTest, TablesSpanTheLevelsNumbersAndCountWhatIsKnown)
{
    open();
    answerProblems({{7, 8, 56, 2, 2, "56", true}, {6, 9, 54, 2, 2, "54", true}});
    const std::vector<FactGrid> grids = makeFactGrids(tablesBank(), history->queries().facts(0));
    ASSERT_EQ(grids.size(), 1u);
    const FactGrid &times = grids.front();
    EXPECT_EQ(times.rowNumbers.front(), 0);
    EXPECT_EQ(times.rowNumbers.back(), 12);
    EXPECT_EQ(times.columnNumbers.size(), 13u);
    EXPECT_EQ(times.summary(), "2 of 169 multiplication facts known");

    // Division never divides by zero: its rows start at one even when the level draws zero.
    TestBank fromZero = tablesBank();
    fromZero.arithLow1[4][3] = 0;
    answerProblems({{56, 7, 8, 3, 2, "8", true}});
    const FactGrid division = makeFactGrids(fromZero, history->queries().facts(0)).back();
    EXPECT_EQ(division.operation, 3);
    EXPECT_EQ(division.rowNumbers.front(), 1);
    EXPECT_EQ(division.summary(), "1 of 100 division facts known");
}

TEST_F(FactGridTest, PastTwentyTheFactsTriedAreListedByTheirFirstNumber)
{
    TestBank bank = tablesBank();
    bank.arithHigh2[4][0] = 25;
    open();
    answerProblems(
        {{3, 25, 28, 0, 2, "28", true}, {3, 4, 7, 0, 2, "7", true}, {9, 9, 18, 0, 2, "18", true}});
    const FactGrid grid = makeFactGrids(bank, history->queries().facts(0)).front();
    EXPECT_FALSE(grid.table);
    EXPECT_EQ(grid.rowNumbers, (std::vector<std::int64_t>{3, 9}));
    ASSERT_EQ(grid.rows.size(), 2u);
    ASSERT_EQ(grid.rows[0].size(), 2u);
    EXPECT_EQ(grid.rows[0][0].number2, 4);
    EXPECT_EQ(grid.rows[0][1].number2, 25);
    EXPECT_EQ(grid.summary(), "3 of the 3 addition facts tried known");
}

} // namespace
